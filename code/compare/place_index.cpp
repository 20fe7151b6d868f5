// SPDX-License-Identifier: MIT
#include "place_index.h"

#include <bit>

namespace brox {

namespace {

/** Few holes lie nearer to each other. */
constexpr Size leastCell = sizePerMillimetre / 2;

} // namespace

PlaceIndex::PlaceIndex(const std::vector<Place>& places, Size reach)
    : mReach(reach)
    , mCellShift(int(std::bit_width(quint64(std::max(qint64(reach) * 2, qint64(leastCell))) - 1)))
    , mEntries(places.size())
{
    const int bits = std::max(1, int(std::bit_width(places.size())) - 2 * blockBits);
    mHashShift = 64 - bits;
    mBegins.assign((size_t(1) << (bits + 2 * blockBits)) + 1, 0);
    std::vector<std::uint32_t> buckets;
    buckets.reserve(places.size());
    for (const Place& place : places) {
        const size_t bucket =
            bucketOf(qint64(place.x) >> mCellShift, qint64(place.y) >> mCellShift);
        buckets.push_back(std::uint32_t(bucket));
        ++mBegins[bucket + 1];
    }
    for (size_t i = 1; i < mBegins.size(); ++i) {
        mBegins[i] += mBegins[i - 1];
    }
    std::vector<std::uint32_t> next(mBegins.begin(), mBegins.end() - 1);
    for (size_t i = 0; i < places.size(); ++i) {
        mEntries[next[buckets[i]]++] = {places[i], std::uint32_t(i)};
    }
}

} // namespace brox
