// SPDX-License-Identifier: MIT
#include "geometry.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <tuple>

namespace brox {

double lengthOf(const Path& path)
{
    double length = 0;
    for (const Line& line : linesOf(path)) {
        length += distance(line.a, line.b);
    }
    return length;
}

namespace {

bool isLine(const Path& path)
{
    return path.segments.size() == 1 && path.segments[0].shape == Segment::Shape::Line;
}

/** Sorts paths; a single line is the same in both directions. */
struct PathOrder
{
    static std::pair<Place, Place> ends(const Path& path)
    {
        const bool isTurned = isLine(path) && path.end() < path.start;
        return isTurned ? std::pair(path.end(), path.start) : std::pair(path.start, path.end());
    }

    bool operator()(const Path* a, const Path* b) const
    {
        if (ends(*a) != ends(*b)) {
            return ends(*a) < ends(*b);
        }
        const auto key = [](const Segment& segment) {
            return std::tuple(segment.shape, segment.to, segment.centre);
        };
        return !(isLine(*a) && isLine(*b))
            && std::ranges::lexicographical_compare(a->segments, b->segments, {}, key, key);
    }
};

} // namespace

/** In strips as wide as two hits may be apart: what is at one place is in one strip, or in two that
 *  are neighbours. */
qint64 dropDoubled(std::vector<Place>& places)
{
    std::vector<Place> holes = places;
    const auto strip = [](Place hole) { return (qint64(hole.x) + (1LL << 31)) / samePlace; };
    std::ranges::sort(holes,
        [&](Place a, Place b) { return std::pair(strip(a), a.y) < std::pair(strip(b), b.y); });
    size_t kept = 0;
    size_t before = 0; // the first of the last strip that may be at the place
    for (const Place& hole : holes) {
        const auto isPast = [&](Place other) {
            return strip(other) < strip(hole) - 1
                || (strip(other) == strip(hole) - 1
                    && qint64(other.y) < qint64(hole.y) - samePlace);
        };
        while (before < kept && isPast(holes[before])) {
            ++before;
        }
        bool isDoubled = false;
        for (size_t i = before; i < kept && strip(holes[i]) < strip(hole) && !isDoubled
             && qint64(holes[i].y) <= qint64(hole.y) + samePlace;
             ++i) {
            isDoubled = isSamePlace(hole, holes[i]);
        }
        for (size_t i = kept; i-- > 0 && strip(holes[i]) == strip(hole) && !isDoubled
             && qint64(holes[i].y) >= qint64(hole.y) - samePlace;) {
            isDoubled = isSamePlace(hole, holes[i]);
        }
        if (!isDoubled) {
            holes[kept++] = hole;
        }
    }
    const auto dropped = qint64(holes.size() - kept);
    if (dropped > 0) {
        holes.resize(kept);
        places = std::move(holes);
    }
    return dropped;
}

qint64 dropDoubled(std::vector<const Path*>& slotPaths)
{
    std::set<const Path*, PathOrder> known;
    return qint64(
        std::erase_if(slotPaths, [&](const Path* path) { return !known.insert(path).second; }));
}

namespace {

constexpr int side = 256; ///< cells
constexpr size_t mostNear = 8'000'000; ///< lines in all cells together
constexpr double longestStretch = 4.0 * sizePerMillimetre;

/** Where a line that is not level passes a height. */
double xAt(const Line& line, double y)
{
    return line.a.x() + (y - line.a.y()) / (line.b.y() - line.a.y()) * (line.b.x() - line.a.x());
}

double yAt(const Line& line, double x)
{
    return line.a.y() + (x - line.a.x()) / (line.b.x() - line.a.x()) * (line.b.y() - line.a.y());
}

bool isBetween(double a, double b, double value)
{
    return (a > value) != (b > value);
}

} // namespace

OutlineDistance::OutlineDistance(const std::vector<Path>& outline, double reach)
    : mReach(reach + longestStretch)
{
    for (const Path& path : outline) {
        const std::vector<Line> lines = linesOf(path);
        mLines.insert(mLines.end(), lines.begin(), lines.end());
        mIsUsable = mIsUsable && path.isClosed();
    }
    mIsUsable = mIsUsable && !mLines.empty();
    if (!mIsUsable) {
        return;
    }
    mLow = mLines.front().a;
    QPointF high = mLow;
    for (const Line& line : mLines) { // each end is the beginning of another
        mLow = {std::min(mLow.x(), line.a.x()), std::min(mLow.y(), line.a.y())};
        high = {std::max(high.x(), line.a.x()), std::max(high.y(), line.a.y())};
    }
    // Not whole, so that centres of cells lie on no line.
    const double room = mReach + 0.357;
    mLow -= QPointF(room, room);
    mWidth = (high.x() + room - mLow.x()) / side;
    mHeight = (high.y() + room - mLow.y()) / side;
    markInside();
    listNear();
}

QPointF OutlineDistance::centreOf(int column, int row) const
{
    return {mLow.x() + (column + 0.5) * mWidth, mLow.y() + (row + 0.5) * mHeight};
}

void OutlineDistance::markInside()
{
    mIsInside.resize(size_t(side) * side);
    for (int row = 0; row < side; ++row) {
        const double y = centreOf(0, row).y();
        std::vector<double> crossings;
        for (const Line& line : mLines) {
            if (isBetween(line.a.y(), line.b.y(), y)) {
                crossings.push_back(xAt(line, y));
            }
        }
        std::ranges::sort(crossings);
        for (int column = 0; column < side; ++column) {
            const auto behind = std::ranges::upper_bound(crossings, centreOf(column, row).x());
            mIsInside[size_t(row) * side + size_t(column)] = (behind - crossings.begin()) % 2 != 0;
        }
    }
}

/** Row by row: of a slanting line only the stretch beside the row counts. */
template <typename Visit>
void OutlineDistance::forEachCellNear(const Line& line, const Visit& visit) const
{
    const auto index = [](double cells) { return int(std::clamp(cells, 0.0, side - 1.0)); };
    const auto [low, high] = std::minmax({line.a.y(), line.b.y()});
    const int last = index((high + mReach - mLow.y()) / mHeight);
    for (int row = index((low - mReach - mLow.y()) / mHeight); row <= last; ++row) {
        const double bottom = mLow.y() + row * mHeight - mReach;
        const double top = bottom + mHeight + 2 * mReach;
        const bool isLevel = low == high;
        const double first = isLevel ? line.a.x() : xAt(line, std::clamp(bottom, low, high));
        const double second = isLevel ? line.b.x() : xAt(line, std::clamp(top, low, high));
        const int end = index((std::max(first, second) + mReach - mLow.x()) / mWidth);
        int column = index((std::min(first, second) - mReach - mLow.x()) / mWidth);
        for (; column <= end; ++column) {
            visit(size_t(row) * side + size_t(column));
        }
    }
}

void OutlineDistance::listNear()
{
    mBegins.assign(size_t(side) * side + 1, 0);
    size_t count = 0;
    for (const Line& line : mLines) {
        forEachCellNear(line, [&](size_t cell) {
            ++mBegins[cell + 1];
            ++count;
        });
        if (count > mostNear) {
            mIsUsable = false;
            return;
        }
    }
    std::partial_sum(mBegins.begin(), mBegins.end(), mBegins.begin());
    mNear.resize(count);
    std::vector<std::uint32_t> next(mBegins.begin(), mBegins.end() - 1);
    for (std::uint32_t i = 0; i < mLines.size(); ++i) {
        forEachCellNear(mLines[i], [&](size_t cell) { mNear[next[cell]++] = i; });
    }
}

double OutlineDistance::signedDistance(const Line& line) const
{
    const double length = distance(line.a, line.b);
    if (length <= 2 * longestStretch) {
        return shortDistance(line);
    }
    const QPointF middle = (line.a + line.b) / 2;
    const double first = signedDistance({line.a, middle});
    const double second = signedDistance({middle, line.b});
    return (first > 0) == (second > 0) ? (std::abs(first) < std::abs(second) ? first : second) : 0;
}

double OutlineDistance::shortDistance(const Line& line) const
{
    const QPointF middle = (line.a + line.b) / 2;
    const double column = std::floor((middle.x() - mLow.x()) / mWidth);
    const double row = std::floor((middle.y() - mLow.y()) / mHeight);
    if (!(column >= 0 && column < side && row >= 0 && row < side)) {
        return -mReach;
    }
    const size_t cell = size_t(row) * side + size_t(column);
    const QPointF centre = centreOf(int(column), int(row));
    // From the cell's centre level to below the middle, then up or down to it.
    bool isInside = mIsInside[cell];
    double least = mReach;
    for (std::uint32_t i = mBegins[cell]; i < mBegins[cell + 1]; ++i) {
        const Line& edge = mLines[mNear[i]];
        least = std::min(least, distance(line, edge));
        if (isBetween(edge.a.y(), edge.b.y(), centre.y())) {
            const double x = xAt(edge, centre.y());
            isInside ^= (x <= middle.x()) != (x <= centre.x());
        }
        if (isBetween(edge.a.x(), edge.b.x(), middle.x())) {
            const double y = yAt(edge, middle.x());
            isInside ^= (y <= middle.y()) != (y <= centre.y());
        }
    }
    return isInside ? least : -least;
}

double OutlineDistance::exactDistance(const Line& line) const
{
    const double near = signedDistance(line);
    if (std::abs(near) < mReach - longestStretch) {
        return near;
    }
    double least = std::numeric_limits<double>::infinity();
    for (const Line& edge : mLines) {
        least = std::min(least, distance(line, edge));
    }
    return near < 0 ? -least : least;
}

} // namespace brox
