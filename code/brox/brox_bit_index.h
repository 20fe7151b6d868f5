// SPDX-License-Identifier: MIT
#ifndef BROX_BIT_INDEX_H
#define BROX_BIT_INDEX_H

#include <QMap>
#include <QString>

#include <optional>
#include <vector>

/** A drill bit as a lookup finds it. */
struct Bit
{
    int size; ///< in host size units
    QString designation;
};

/** The drill bits by size in host size units; one size has one bit. */
class BitIndex
{
public:
    void clear();

    /** Brings a bit in; of two of one size the later stands. */
    void insert(int size, const QString& designation);
    void remove(int size);

    /** Moves a designation to another size. If several sizes hold it, the lowest gives way. */
    void move(int size, const QString& designation);

    /** Finds the bit nearest to a drill hole size; of two that are equally near the smaller wins.
     *
     * The bits of the range and the first one above it are examined. The ends of the range may be
     * beyond what a size can be, and in the wrong order.
     */
    std::optional<Bit> nearest(int dhs, qint64 lower, qint64 upper) const;

private:
    QMap<int, QString> mBits;

    // The same bits as lookups read them, until an edit. Among many bits a walk down the map would
    // wait for memory at each step, and its nodes lie among the cells of the bits' table.
    mutable std::vector<int> mSizes;
    mutable std::vector<QString> mDesignations;
};

#endif
