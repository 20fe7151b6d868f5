// SPDX-License-Identifier: MIT
#include "clearance.h"

#include "compared_board.h"
#include "geometry.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <tuple>

namespace brox {

namespace {

/** Longer lines are cut: a grid finds short ones faster. */
constexpr double longestPiece = 4.0 * sizePerMillimetre;
constexpr int mostPieces = 1000; ///< of a line

/** A stretch of a slot. */
struct Piece
{
    Place a;
    Place b;
    std::uint32_t row;
    std::uint32_t slot; ///< index in the row

    Line line() const { return {pointOf(a), pointOf(b)}; }
};

/** A hole, or a piece of a slot, in the grid; 12 bytes, since there may be millions. */
struct Item
{
    Place centre;
    std::uint32_t area; ///< a row: one of its holes; else behind the rows, a piece
};

Place rounded(const QPointF& point)
{
    return {Size(std::lround(point.x())), Size(std::lround(point.y()))};
}

/** What has the same key is the same hole or slot: row, slot or none, place. */
using HitKey = std::tuple<size_t, qint64, Size, Size>;

class NearSearch
{
public:
    NearSearch(const std::vector<DrilledRow>& rows, double limit,
        const std::function<bool(const NearPair&)>& visit)
        : mRows(rows)
        , mLimit(limit)
        , mVisit(visit)
    { }

    NearResult run()
    {
        for (const DrilledRow& row : mRows) {
            mReach.push_back(row.drillSize / 2.0);
        }
        cutSlots();
        fillGrid();
        dropDoubledItems();
        for (std::uint32_t i = 0; i < mItems.size() && mResult.isComplete; ++i) {
            lookAround(i);
        }
        for (const auto& [keys, pair] : mSlotPairs) {
            if (!isHitOfSlot(keys.first, keys.second, pair) && !mVisit(pair)) {
                mResult.isComplete = false;
                break;
            }
        }
        return mResult;
    }

private:
    void cutSlots()
    {
        std::map<size_t, std::vector<const Path*>> ofTool;
        for (const DrilledRow& row : mRows) {
            for (const Path& path : *row.slotPaths) {
                ofTool[row.tool].push_back(&path);
            }
        }
        for (auto& [tool, paths] : ofTool) {
            mResult.doubledHits += dropDoubled(paths);
            std::ranges::sort(paths);
        }
        for (std::uint32_t row = 0; row < mRows.size(); ++row) {
            const std::vector<Path>& paths = *mRows[row].slotPaths;
            for (std::uint32_t slot = 0; slot < paths.size(); ++slot) {
                if (std::ranges::binary_search(ofTool[mRows[row].tool], &paths[slot])) {
                    for (const Line& line : linesOf(paths[slot])) {
                        cutLine(line, row, slot);
                    }
                }
            }
        }
    }

    void cutLine(const Line& line, std::uint32_t row, std::uint32_t slot)
    {
        const double length = distance(line.a, line.b);
        const int count = std::clamp(int(std::ceil(length / longestPiece)), 1, mostPieces);
        const auto at = [&](double part) { return rounded(line.a + part * (line.b - line.a)); };
        for (int i = 0; i < count; ++i) {
            mPieces.push_back({at(double(i) / count), at(double(i + 1) / count), row, slot});
            // One more, since the middle is rounded.
            mReach.push_back(mReach[row] + length / count / 2 + 1);
        }
    }

    template <typename Visit>
    void forEachItem(const Visit& visit) const
    {
        for (std::uint32_t row = 0; row < mRows.size(); ++row) {
            for (const Place& hole : *mRows[row].holes) {
                visit(Item{hole, row});
            }
        }
        auto area = std::uint32_t(mRows.size());
        for (const Piece& piece : mPieces) {
            visit(Item{rounded((pointOf(piece.a) + pointOf(piece.b)) / 2), area++});
        }
    }

    void fillGrid()
    {
        size_t count = mPieces.size();
        for (const DrilledRow& row : mRows) {
            count += row.holes->size();
        }
        if (count == 0) {
            return;
        }
        Extent extent;
        forEachItem([&](const Item& item) { extent.add(item.centre); });
        mLow = extent.low;
        const double width = double(extent.width()) + 1;
        const double height = double(extent.height()) + 1;
        const double cells = double(count) / itemsInCell + 1;
        mColumns = int(std::clamp(std::sqrt(cells * width / height), 1.0, cells));
        mLines = int(std::clamp(cells / mColumns, 1.0, cells));
        mColumnScale = mColumns / width;
        mLineScale = mLines / height;

        mBegins.assign(size_t(mColumns) * size_t(mLines) + 1, 0);
        forEachItem([&](const Item& item) { ++mBegins[cellOf(item.centre) + 1]; });
        std::partial_sum(mBegins.begin(), mBegins.end(), mBegins.begin());
        mItems.resize(count);
        // Each cell's begin runs to its end, which is the begin of the next.
        forEachItem([&](const Item& item) { mItems[mBegins[cellOf(item.centre)]++] = item; });
        std::copy_backward(mBegins.begin(), mBegins.end() - 1, mBegins.end());
        mBegins[0] = 0;
    }

    int columnOf(double x) const
    {
        return int(std::clamp((x - mLow.x) * mColumnScale, 0.0, mColumns - 1.0));
    }
    int lineOf(double y) const
    {
        return int(std::clamp((y - mLow.y) * mLineScale, 0.0, mLines - 1.0));
    }
    size_t cellOf(Place place) const
    {
        return size_t(lineOf(place.y)) * size_t(mColumns) + size_t(columnOf(place.x));
    }

    bool isHole(std::uint32_t area) const { return area < mRows.size(); }
    const Piece& piece(std::uint32_t area) const { return mPieces[area - mRows.size()]; }
    const DrilledRow& rowOf(std::uint32_t area) const
    {
        return mRows[isHole(area) ? area : piece(area).row];
    }

    /** Within each cell, so that a million hits at one place are no million million pairs. */
    void dropDoubledItems()
    {
        const auto isBefore = [this](const Item& a, const Item& b) {
            if (a.centre != b.centre) {
                return std::tie(a.centre.y, a.centre.x) < std::tie(b.centre.y, b.centre.x);
            }
            return std::tuple(isHole(a.area), rowOf(a.area).tool, a.area)
                < std::tuple(isHole(b.area), rowOf(b.area).tool, b.area);
        };
        const auto isDoubled = [this](const Item& a, const Item& b) {
            return a.centre == b.centre && isHole(a.area) && isHole(b.area)
                && rowOf(a.area).tool == rowOf(b.area).tool;
        };
        std::uint32_t kept = 0;
        for (size_t cell = 0; cell + 1 < mBegins.size(); ++cell) {
            const auto begin = mItems.begin() + mBegins[cell];
            const auto end = mItems.begin() + mBegins[cell + 1];
            std::sort(begin, end, isBefore);
            mBegins[cell] = kept;
            for (auto item = begin; item != end; ++item) {
                if (kept > mBegins[cell] && isDoubled(mItems[kept - 1], *item)) {
                    ++mResult.doubledHits;
                } else {
                    mItems[kept++] = *item;
                }
            }
        }
        mBegins.back() = kept;
        mItems.resize(kept);
    }

    /** The larger looks for the smaller, so that one large hole makes not all look far. */
    void lookAround(std::uint32_t index)
    {
        const Item item = mItems[index];
        const double reach = mReach[item.area];
        const double far = 2 * reach + mLimit;
        const double x = item.centre.x;
        const double y = item.centre.y;
        const int left = columnOf(x - far);
        const int right = columnOf(x + far);
        const int last = lineOf(y + far);
        for (int line = lineOf(y - far); line <= last; ++line) {
            const size_t cells = size_t(line) * size_t(mColumns);
            const std::uint32_t end = mBegins[cells + size_t(right) + 1];
            for (std::uint32_t i = mBegins[cells + size_t(left)]; i < end; ++i) {
                const Item& other = mItems[i];
                const double dx = x - other.centre.x;
                const double dy = y - other.centre.y;
                const double square = dx * dx + dy * dy;
                if (square >= far * far) {
                    continue;
                }
                const double otherReach = mReach[other.area];
                const double sum = reach + otherReach + mLimit;
                if (square < sum * sum
                    && (otherReach < reach || (otherReach == reach && i > index))) {
                    compare(item, other);
                    if (!mResult.isComplete) {
                        return;
                    }
                }
            }
        }
    }

    void compare(const Item& item, const Item& other)
    {
        const DrilledRow& row = rowOf(item.area);
        const DrilledRow& otherRow = rowOf(other.area);
        if (row.firstLayer >= otherRow.lastLayer || otherRow.firstLayer >= row.lastLayer) {
            return;
        }
        const bool areHoles = isHole(item.area) && isHole(other.area);
        NearPair pair;
        pair.areConcentric = areHoles && isSamePlace(item.centre, other.centre);
        if (pair.areConcentric && row.tool == otherRow.tool) {
            ++mResult.doubledHits;
            return;
        }
        HitKey keys[2] = {keyOf(item), keyOf(other)};
        pair.gap = distance(lineOf(item), lineOf(other))
            - (double(row.drillSize) + otherRow.drillSize) / 2;
        if (pair.gap >= mLimit || keys[0] == keys[1]) {
            return;
        }
        if (keys[1] < keys[0]) {
            std::swap(keys[0], keys[1]);
        }
        for (const int i : {0, 1}) {
            const auto [rowIndex, slot, placeX, placeY] = keys[i];
            pair.rows[i] = rowIndex;
            pair.places[i] = {placeX, placeY};
        }
        if (areHoles) {
            mResult.isComplete = mVisit(pair);
            return;
        }
        // Pieces of one slot may all be near.
        const auto [known, isNew] = mSlotPairs.try_emplace({keys[0], keys[1]}, pair);
        known->second.gap = std::min(known->second.gap, pair.gap);
        mResult.isComplete = mSlotPairs.size() < mostSlotPairs;
    }

    /** Whether a slot is drilled by hits, too. */
    bool isHitOfSlot(const HitKey& a, const HitKey& b, const NearPair& pair) const
    {
        const DrilledRow& row = mRows[pair.rows[0]];
        const bool isOneHole = (std::get<1>(a) < 0) != (std::get<1>(b) < 0);
        return isOneHole && row.tool == mRows[pair.rows[1]].tool
            && pair.gap + row.drillSize <= samePlace;
    }

    Line lineOf(const Item& item) const
    {
        return isHole(item.area) ? Line{pointOf(item.centre), pointOf(item.centre)}
                                 : piece(item.area).line();
    }

    HitKey keyOf(const Item& item) const
    {
        if (isHole(item.area)) {
            return {item.area, -1, item.centre.x, item.centre.y};
        }
        const Piece& own = piece(item.area);
        const Place start = (*mRows[own.row].slotPaths)[own.slot].start;
        return {own.row, own.slot, start.x, start.y};
    }

    static constexpr double itemsInCell = 2;
    static constexpr size_t mostSlotPairs = 200'000;

    const std::vector<DrilledRow>& mRows;
    const double mLimit;
    const std::function<bool(const NearPair&)>& mVisit;
    std::vector<double> mReach; ///< of each area, from its centre
    std::vector<Piece> mPieces;
    Place mLow;
    int mColumns = 1;
    int mLines = 1;
    double mColumnScale = 1;
    double mLineScale = 1;
    std::vector<std::uint32_t> mBegins{0}; ///< of each cell, line by line, and the end
    std::vector<Item> mItems; ///< by cell
    std::map<std::pair<HitKey, HitKey>, NearPair> mSlotPairs;
    NearResult mResult;
};

} // namespace

NearResult findNear(const std::vector<DrilledRow>& rows, double limit,
    const std::function<bool(const NearPair&)>& visit)
{
    return NearSearch(rows, limit, visit).run();
}

} // namespace brox
