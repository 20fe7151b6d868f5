// SPDX-License-Identifier: MIT
#ifndef PLACE_INDEX_H
#define PLACE_INDEX_H

#include "board.h"

#include <algorithm>
#include <vector>

namespace brox {

/** Finds those of many places that lie within a fixed reach of one, however they are spread. */
class PlaceIndex
{
public:
    /** @param reach  above 0 */
    PlaceIndex(const std::vector<Place>& places, Size reach);

    /** Calls with the index of each place in a square of twice the reach, at times twice. Of
     *  places crowded as no board has them only some are shown. */
    template <typename Visit>
    void visit(Place at, const Visit& visit) const;

private:
    /** A place has so many neighbours at most. */
    static constexpr std::uint32_t crowd = 256;

    struct Entry
    {
        Place at;
        std::uint32_t index;
    };

    /** Cells of a block lie side by side, as what is asked for one after the other does. */
    size_t bucketOf(qint64 column, qint64 line) const
    {
        const quint64 hash = quint64(column >> blockBits) * 0x9E3779B97F4A7C15U
            + quint64(line >> blockBits) * 0xC2B2AE3D27D4EB4FU;
        const quint64 block = (hash ^ (hash >> 29)) * 0xBF58476D1CE4E5B9U >> mHashShift;
        constexpr qint64 inBlock = (1 << blockBits) - 1;
        return size_t(
            block << (2 * blockBits) | quint64((line & inBlock) << blockBits | (column & inBlock)));
    }

    static constexpr int blockBits = 3;
    Size mReach;
    int mCellShift = 0; ///< cells are a power of two wide, at least twice the reach
    int mHashShift = 63;
    std::vector<std::uint32_t> mBegins; ///< of each bucket, and the end
    std::vector<Entry> mEntries; ///< by bucket
};

template <typename Visit>
void PlaceIndex::visit(Place at, const Visit& visit) const
{
    const qint64 left = (qint64(at.x) - mReach) >> mCellShift;
    const qint64 right = (qint64(at.x) + mReach) >> mCellShift;
    const qint64 low = (qint64(at.y) - mReach) >> mCellShift;
    const qint64 high = (qint64(at.y) + mReach) >> mCellShift;
    for (qint64 column = left; column <= right; ++column) {
        for (qint64 line = low; line <= high; ++line) {
            const size_t bucket = bucketOf(column, line);
            const std::uint32_t begin = mBegins[bucket];
            const std::uint32_t end = std::min(mBegins[bucket + 1], begin + crowd);
            for (std::uint32_t i = begin; i < end; ++i) {
                const Entry& entry = mEntries[i];
                const qint64 dx = qint64(entry.at.x) - at.x;
                const qint64 dy = qint64(entry.at.y) - at.y;
                if (dx >= -mReach && dx <= mReach && dy >= -mReach && dy <= mReach) {
                    visit(entry.index);
                }
            }
        }
    }
}

} // namespace brox

#endif
