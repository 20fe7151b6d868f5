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
    mSizes.clear();
    mDesignations.clear();
    mSizes.reserve(bits.size());
    mDesignations.reserve(bits.size());
    for (const Bit& bit : bits) {
        mSizes.push_back(bit.size);
        mDesignations.push_back(bit.designation.toStdU16String());
    }
}

void BitIndex::insert(int size, const QString& designation)
{
    const auto place = std::ranges::lower_bound(mSizes, size);
    const auto designated = mDesignations.begin() + (place - mSizes.begin());
    if (place != mSizes.end() && *place == size) {
        *designated = designation.toStdU16String();
    } else {
        mDesignations.insert(designated, designation.toStdU16String());
        mSizes.insert(place, size);
    }
}

void BitIndex::remove(int size)
{
    const auto place = std::ranges::lower_bound(mSizes, size);
    if (place != mSizes.end() && *place == size) {
        mDesignations.erase(mDesignations.begin() + (place - mSizes.begin()));
        mSizes.erase(place);
    }
}

void BitIndex::move(int size, const QString& designation)
{
    const auto old = std::ranges::find(mDesignations, designation.toStdU16String());
    remove(old == mDesignations.end() ? 0 : mSizes[std::size_t(old - mDesignations.begin())]);
    insert(size, designation);
}

std::optional<Bit> BitIndex::nearest(int dhs, qint64 lower, qint64 upper) const
{
    const auto first = std::ranges::lower_bound(mSizes, lower);
    // From there the first bit above the range is a few steps away, unless the ends of the range
    // are in the wrong order.
    const auto isAbove = [upper](int size) { return size > upper; };
    const auto limit = lower <= upper ? std::find_if(first, mSizes.end(), isAbove)
                                      : std::ranges::upper_bound(mSizes.begin(), first, upper);
    auto nearest = mSizes.end();
    qint64 best = std::numeric_limits<int>::max();
    for (auto size = first; size != mSizes.end() && size <= limit; ++size) {
        const qint64 distance = std::abs(qint64(dhs) - *size);
        if (distance < best) {
            best = distance;
            nearest = size;
        }
    }
    if (nearest == mSizes.end()) {
        return {};
    }
    const std::u16string& designation = mDesignations[std::size_t(nearest - mSizes.begin())];
    return Bit{*nearest, QString::fromStdU16String(designation)};
}
