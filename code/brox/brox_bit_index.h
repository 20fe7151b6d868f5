// SPDX-License-Identifier: MIT
#ifndef BROX_BIT_INDEX_H
#define BROX_BIT_INDEX_H

#include <QString>

#include <optional>
#include <string>
#include <vector>

/** A drill bit as a lookup finds it. */
struct Bit
{
    int size; ///< in host size units
    QString designation;
};

/** The drill bits by size in host size units; one size has one bit.
 *
 * A flat map: they are read far more often than changed, so they lie in a row and not in a tree.
 * Among many bits a lookup waits for memory. So the sizes lie apart, and the designations are
 * strings that hold up to seven characters, as many as a host takes, within themselves; the data of
 * a QString lie elsewhere, each in another page.
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
     * @return nothing if there is none in the range and none above it
     */
    std::optional<Bit> nearest(int dhs, qint64 lower, qint64 upper) const;

private:
    std::vector<int> mSizes; ///< rising
    std::vector<std::u16string> mDesignations; ///< each at the place of its size
};

#endif
