// SPDX-License-Identifier: MIT
#ifndef HOLE_GRID_H
#define HOLE_GRID_H

#include "board.h"

#include <span>

namespace brox {

/** Finds those of many places that lie in a part of the board. */
class HoleGrid
{
public:
    explicit HoleGrid(const std::vector<Place>& places);

    /** Calls with stretches of places, as spans: all within a rectangle, and some around it. */
    template <typename Visit>
    void visit(Place low, Place high, const Visit& visit) const;

private:
    static constexpr qint64 placesInCell = 32;

    qint64 columnOf(qint64 x) const { return (x - mLow.x) * mColumns / mWidth; }
    qint64 lineOf(qint64 y) const { return (y - mLow.y) * mLines / mHeight; }

    Place mLow;
    Place mHigh;
    qint64 mWidth = 1;
    qint64 mHeight = 1;
    qint64 mColumns = 1;
    qint64 mLines = 1;
    std::vector<std::uint32_t> mBegins; ///< of each cell, line by line, and the end
    std::vector<Place> mPlaces; ///< by cell
};

template <typename Visit>
void HoleGrid::visit(Place low, Place high, const Visit& visit) const
{
    if (mPlaces.empty() || low.x > mHigh.x || high.x < mLow.x || low.y > mHigh.y
        || high.y < mLow.y) {
        return;
    }
    const qint64 left = columnOf(std::max(low.x, mLow.x));
    const qint64 right = columnOf(std::min(high.x, mHigh.x));
    const qint64 last = lineOf(std::min(high.y, mHigh.y));
    for (qint64 line = lineOf(std::max(low.y, mLow.y)); line <= last; ++line) {
        const std::uint32_t begin = mBegins[size_t(line * mColumns + left)];
        const std::uint32_t end = mBegins[size_t(line * mColumns + right + 1)];
        visit(std::span(mPlaces.data() + begin, mPlaces.data() + end));
    }
}

} // namespace brox

#endif
