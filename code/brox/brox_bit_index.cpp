// SPDX-License-Identifier: MIT
#include "brox_bit_index.h"

#include <algorithm>
#include <cstdlib>

BitChoice nearestBit(const BitIndex& index, int dhs, qint64 lower, qint64 upper)
{
    constexpr qint64 lowest = std::numeric_limits<int>::min();
    constexpr qint64 highest = std::numeric_limits<int>::max();
    BitChoice choice{index.constEnd()};
    // One search finds all that are examined. The first bit above the range lies below it as well
    // if its ends are in the wrong order; then there is none.
    const qint64 start = std::min(lower, upper + 1);
    if (start > highest) {
        return choice;
    }
    for (auto bit = index.lowerBound(int(std::max(start, lowest))); bit != index.constEnd();
         ++bit) {
        const qint64 distance = std::abs(qint64(dhs) - bit.key());
        if (bit.key() >= lower && distance < choice.distance) {
            choice = {bit, distance};
        }
        if (bit.key() > upper) {
            break;
        }
    }
    return choice;
}

void insertSize(BitIndex& index, int size, const QString& designation)
{
    if (size > 0) {
        index.insert(size, designation);
    }
}

void removeSize(BitIndex& index, int size)
{
    if (size > 0) {
        index.remove(size);
    }
}

void moveSize(BitIndex& index, int size, const QString& designation)
{
    index.remove(index.key(designation));
    index.insert(size, designation);
}

void compact(BitIndex& index)
{
    index = QMap(index.toStdMap());
}
