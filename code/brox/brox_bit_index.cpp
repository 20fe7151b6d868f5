// SPDX-License-Identifier: MIT
#include "brox_bit_index.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <utility>

void BitIndex::assign(std::vector<Bit> bits)
{
    // Last before first, so that of each size the last is the one that is kept.
    std::ranges::reverse(bits);
    std::ranges::stable_sort(bits, {}, &Bit::size);
    const auto doubles = std::ranges::unique(bits, {}, &Bit::size);
    bits.erase(doubles.begin(), doubles.end());
    mBits = std::move(bits);
}

void BitIndex::insert(int size, const QString& designation)
{
    const auto bit = std::ranges::lower_bound(mBits, size, {}, &Bit::size);
    if (bit != mBits.end() && bit->size == size) {
        bit->designation = designation;
    } else {
        mBits.insert(bit, {size, designation});
    }
}

void BitIndex::remove(int size)
{
    const auto bits = std::ranges::equal_range(mBits, size, {}, &Bit::size);
    mBits.erase(bits.begin(), bits.end());
}

void BitIndex::move(int size, const QString& designation)
{
    const auto old = std::ranges::find(mBits, designation, &Bit::designation);
    remove(old == mBits.end() ? 0 : old->size);
    insert(size, designation);
}

const Bit* BitIndex::nearest(int dhs, qint64 lower, qint64 upper) const
{
    const auto first = std::ranges::lower_bound(mBits, lower, {}, &Bit::size);
    // From there the first bit above the range is a few steps away, unless the ends of the range
    // are in the wrong order.
    const auto isAbove = [upper](const Bit& bit) { return bit.size > upper; };
    const auto limit = lower <= upper
        ? std::find_if(first, mBits.end(), isAbove)
        : std::ranges::upper_bound(mBits.begin(), first, upper, {}, &Bit::size);
    const Bit* nearest = nullptr;
    qint64 best = std::numeric_limits<int>::max();
    for (auto bit = first; bit != mBits.end() && bit <= limit; ++bit) {
        const qint64 distance = std::abs(qint64(dhs) - bit->size);
        if (distance < best) {
            best = distance;
            nearest = &*bit;
        }
    }
    return nearest;
}
