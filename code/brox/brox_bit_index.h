// SPDX-License-Identifier: MIT
#ifndef BROX_BIT_INDEX_H
#define BROX_BIT_INDEX_H

#include <QMap>
#include <QString>

#include <limits>

/** Drill bits by size in host size units: their designations. One size has one bit. */
using BitIndex = QMap<int, QString>;

/** The bit that serves a drill hole, if any. */
struct BitChoice
{
    BitIndex::const_iterator bit; ///< the index's end if there is none
    qint64 distance = std::numeric_limits<int>::max(); ///< between the bit and the hole
};

/** Finds the bit nearest to a drill hole size; of two that are equally near the smaller wins.
 *
 * The bits of the range and the first one above it are examined. The ends of the range may be
 * beyond what a size can be, and in the wrong order.
 */
BitChoice nearestBit(const BitIndex& index, int dhs, qint64 lower, qint64 upper);

/** Brings a bit in or out; a size of 0 or below is that of no bit. */
void insertSize(BitIndex& index, int size, const QString& designation);
void removeSize(BitIndex& index, int size);

/** Moves a designation to another size. If several sizes hold it, the lowest gives way. */
void moveSize(BitIndex& index, int size, const QString& designation);

/** Lays the entries side by side in memory. As they came they lie among the table's cells, and a
 *  lookup among many bits would wait for memory at each step. */
void compact(BitIndex& index);

#endif
