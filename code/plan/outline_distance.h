// SPDX-License-Identifier: MIT
#ifndef OUTLINE_DISTANCE_H
#define OUTLINE_DISTANCE_H

#include "geometry.h"

namespace brox {

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
    ExactPoint centreOf(int column, int row) const;
    void markInside();
    void listNear();
    template <typename Visit>
    void forEachCellNear(const Line& line, const Visit& visit) const;

    bool mIsUsable = true;
    double mReach;
    std::vector<Line> mLines;
    ExactPoint mLow; ///< of the grid
    double mWidth = 1; ///< of a cell
    double mHeight = 1;
    std::vector<bool> mIsInside; ///< of each cell's centre, row by row
    std::vector<std::uint32_t> mBegins; ///< of each cell in mNear, and the end
    std::vector<std::uint32_t> mNear; ///< the lines in reach of each cell
};

} // namespace brox

#endif
