// SPDX-License-Identifier: MIT
#ifndef GEOMETRY_H
#define GEOMETRY_H

#include "lines.h"

namespace brox {

/** Distances on a board, in host size units. */

/** The length of a path. */
double lengthOf(const Path& path);

/** Hits of a tool at places that it has been to: files have them, and drills break by them. */

/** Two hits are at one place if their centres are no further apart. */
constexpr Size samePlace = sizePerMicron;

inline bool isSamePlace(Place a, Place b)
{
    const qint64 dx = qint64(a.x) - b.x;
    const qint64 dy = qint64(a.y) - b.y;
    return dx * dx + dy * dy <= qint64(samePlace) * samePlace;
}

/** Takes holes away that are at the place of another; if there are any, the order changes.
 *
 * @return how many
 */
qint64 dropDoubled(std::vector<Place>& places);

/** Takes slots away that lie exactly on another, either way round; the others keep their order. */
qint64 dropDoubled(std::vector<const Path*>& slotPaths);

/** How near to the edge of a board holes and slots are, however many. All in host size units. */
class OutlineDistance
{
public:
    /** @param outline  closed paths; what is within an odd number of them is board
     *  @param reach    up to which distances matter
     */
    OutlineDistance(const std::vector<Path>& outline, double reach);

    /** No: there is no path, one is open, or there are too many lines for a search. */
    bool isUsable() const { return mIsUsable; }

    /** The distance of a hole's centre, or of a stretch of a slot's middle, from the edge: negative
     *  outside, 0 where it lies on the edge or crosses it, and exact below the reach only. */
    double signedDistance(const Line& line) const;

    /** The same, exact everywhere and slow. */
    double exactDistance(const Line& line) const;

private:
    double shortDistance(const Line& line) const;
    QPointF centreOf(int column, int row) const;
    void markInside();
    void listNear();
    template <typename Visit>
    void forEachCellNear(const Line& line, const Visit& visit) const;

    bool mIsUsable = true;
    double mReach;
    std::vector<Line> mLines;
    QPointF mLow; ///< of the grid
    double mWidth = 1; ///< of a cell
    double mHeight = 1;
    std::vector<bool> mIsInside; ///< of each cell's centre, row by row
    std::vector<std::uint32_t> mBegins; ///< of each cell in mNear, and the end
    std::vector<std::uint32_t> mNear; ///< the lines in reach of each cell
};

} // namespace brox

#endif
