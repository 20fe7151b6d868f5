// SPDX-License-Identifier: MIT
#include "brox_bit_index.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

void BitIndex::clear()
{
    mBits.clear();
    mSizes.clear();
}

void BitIndex::insert(int size, const QString& designation)
{
    mBits.insert(size, designation);
    mSizes.clear();
}

void BitIndex::remove(int size)
{
    mBits.remove(size);
    mSizes.clear();
}

void BitIndex::move(int size, const QString& designation)
{
    remove(mBits.key(designation));
    insert(size, designation);
}

std::optional<Bit> BitIndex::nearest(int dhs, qint64 lower, qint64 upper) const
{
    if (mSizes.empty()) {
        mDesignations.assign(mBits.begin(), mBits.end());
        mSizes.assign(mBits.keyBegin(), mBits.keyEnd());
    }
    // One search finds all that are examined. The first bit above the range lies below it as well
    // if its ends are in the wrong order; then there is none.
    auto size = std::lower_bound(mSizes.begin(), mSizes.end(), std::min(lower, upper + 1));
    auto nearest = mSizes.end();
    qint64 best = std::numeric_limits<int>::max();
    for (; size != mSizes.end(); ++size) {
        const qint64 distance = std::abs(qint64(dhs) - *size);
        if (*size >= lower && distance < best) {
            best = distance;
            nearest = size;
        }
        if (*size > upper) {
            break;
        }
    }
    if (nearest == mSizes.end()) {
        return std::nullopt;
    }
    return Bit{*nearest, mDesignations[std::size_t(nearest - mSizes.begin())]};
}
