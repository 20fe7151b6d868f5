// SPDX-License-Identifier: MIT
#ifndef BROX_BIT_INDEX_H
#define BROX_BIT_INDEX_H

#include <QString>

#include <vector>

/** A drill bit as a lookup finds it. */
struct Bit
{
    int size; ///< in host size units
    QString designation;
};

/** The drill bits by size in host size units; one size has one bit.
 *
 * They are read far more often than changed, so they lie in a row and not in a tree: among many
 * bits a walk down a tree waits for memory at each step.
 */
class BitIndex
{
public:
    /** Takes many bits in the place of all others; of those of one size the last stands. */
    void assign(std::vector<Bit> bits);

    /** Brings a bit in; of two of one size the later stands. */
    void insert(int size, const QString& designation);
    void remove(int size);

    /** Moves a designation to another size. If several sizes hold it, the lowest gives way; if
     *  none does, that of a new bit, 0. */
    void move(int size, const QString& designation);

    /** Finds the bit nearest to a drill hole size; of two that are equally near the smaller wins.
     *
     * The bits of the range and the first one above it are examined. The ends of the range may be
     * beyond what a size can be, and in the wrong order.
     *
     * @return the bit, valid until the next change, or null if there is none
     */
    const Bit* nearest(int dhs, qint64 lower, qint64 upper) const;

private:
    std::vector<Bit> mBits; ///< by size
};

#endif
