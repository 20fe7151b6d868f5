// SPDX-License-Identifier: MIT
#include "copies.h"

#include "alignment.h"
#include "hole_matching.h"

#include <algorithm>
#include <numeric>
#include <tuple>

namespace brox {

namespace {

constexpr double leastShare = 0.9; ///< of a board's hits that its copy has
constexpr size_t sampleSize = 50;
constexpr qint64 mostTries = 1'000'000; ///< places at which a board is looked for

/** In the order in which copies are looked for, so that those side by side are not mistaken. */
bool comesFirst(Place a, Place b, bool backwards)
{
    return backwards ? std::tie(b.y, b.x) < std::tie(a.y, a.x)
                     : std::tie(a.y, a.x) < std::tie(b.y, b.x);
}

/** Of the tool that the panel has the fewest hits of, the one that comes first: the copies of a
 *  board are looked for by it. */
std::optional<size_t> anchorOf(
    const ComparedBoard& board, const ComparedBoard& panel, bool backwards)
{
    const auto hitsOnPanel = [&panel](const ComparedTool& tool) {
        qint64 sum = 0;
        for (const ComparedTool& other : panel.tools) {
            const bool isLike = other.isSlot == tool.isSlot && isSameSize(other.size, tool.size);
            sum += isLike ? other.hits : 0;
        }
        return sum;
    };
    std::vector<qint64> hits;
    for (const ComparedTool& tool : board.tools) {
        hits.push_back(tool.hits > 0 ? hitsOnPanel(tool) : 0);
    }
    const auto isRarer = [](qint64 a, qint64 b) { return a > 1 && (b < 2 || a < b); };
    const auto rarest = std::min_element(hits.begin(), hits.end(), isRarer);
    if (rarest == hits.end() || *rarest < 2) {
        return {};
    }
    const ComparedTool& tool = board.tools[size_t(rarest - hits.begin())];
    std::optional<size_t> anchor;
    for (size_t i = 0; i < board.hits(); ++i) {
        const ComparedTool& own = board.tool(i);
        if (own.isSlot == tool.isSlot && isSameSize(own.size, tool.size)
            && (!anchor || comesFirst(board.places[i], board.places[*anchor], backwards))) {
            anchor = i;
        }
    }
    return anchor;
}

class CopyFinder
{
public:
    CopyFinder(const ComparedBoard& board, const ComparedBoard& panel, Size within)
        : mBoard(board)
        , mPanel(panel)
        , mIndex(panel.places, within)
        , mIsCovered(panel.hits(), 0)
    { }

    std::vector<Placement> find()
    {
        // A copy that lacks the hole it is looked for by may have the last one.
        for (const bool backwards : {false, true}) {
            for (const bool isMirrored : {false, true}) {
                for (int turns = 0; turns < 4 && !isAll(); ++turns) {
                    findTurned({isMirrored, turns, 1, {}}, backwards);
                }
            }
        }
        return mCopies.size() > 1 && isAll() ? mCopies : std::vector<Placement>();
    }

private:
    bool isAll() const { return (qint64(mPanel.hits()) - mCovered) * 2 < qint64(mBoard.hits()); }

    void findTurned(Placement where, bool backwards)
    {
        ComparedBoard turned = mBoard.withoutHits();
        const std::optional<size_t> anchor =
            turned.addHits(mBoard, where) ? anchorOf(turned, mPanel, backwards) : std::nullopt;
        if (!anchor) {
            return;
        }
        const Place from = turned.places[*anchor];
        for (const size_t hit : placesOfAnchor(turned.tool(*anchor), backwards)) {
            const Place to = mPanel.places[hit];
            if (mIsCovered[hit] || ++mTries > mostTries
                || __builtin_sub_overflow(to.x, from.x, &where.move.x)
                || __builtin_sub_overflow(to.y, from.y, &where.move.y)) {
                continue;
            }
            if (liesAt(turned, where.move, sampleSize)
                && liesAt(turned, where.move, turned.hits())) {
                cover(turned, where.move);
                mCopies.push_back(where);
            }
        }
    }

    /** Hits of the panel that are like the anchor. */
    std::vector<size_t> placesOfAnchor(const ComparedTool& tool, bool backwards) const
    {
        std::vector<size_t> hits;
        for (size_t i = 0; i < mPanel.hits(); ++i) {
            if (mPanel.tool(i).isSlot == tool.isSlot
                && isSameSize(mPanel.tool(i).size, tool.size)) {
                hits.push_back(i);
            }
        }
        std::sort(hits.begin(), hits.end(), [&](size_t a, size_t b) {
            return comesFirst(mPanel.places[a], mPanel.places[b], backwards);
        });
        return hits;
    }

    /** Whether enough of some hits, taken from all over the board, are on the panel. */
    bool liesAt(const ComparedBoard& board, Place move, size_t count) const
    {
        count = std::min(count, board.hits());
        const auto mayLack = size_t(double(count) * (1 - leastShare) + 1e-9);
        size_t lacking = 0;
        for (size_t i = 0; i < count && lacking <= mayLack; ++i) {
            const size_t hit = i * board.hits() / count;
            lacking += uncovered(board, hit, move) ? 0 : 1;
        }
        return lacking <= mayLack;
    }

    std::optional<std::uint32_t> uncovered(const ComparedBoard& board, size_t hit, Place move) const
    {
        std::optional<std::uint32_t> found;
        const std::optional<Place> place = Placement{false, 0, 1, move}.map(board.places[hit]);
        if (place) {
            mIndex.visit(*place, [&](std::uint32_t other) {
                const ComparedTool& others = mPanel.tool(other);
                // Another size at the place is a change of the hole, which the copy has.
                if (!mIsCovered[other] && board.tool(hit).isSlot == others.isSlot
                    && (!found || isSameSize(board.tool(hit).size, others.size))) {
                    found = other;
                }
            });
        }
        return found;
    }

    void cover(const ComparedBoard& board, Place move)
    {
        for (size_t i = 0; i < board.hits(); ++i) {
            if (const auto hit = uncovered(board, i, move)) {
                mIsCovered[*hit] = 1;
                ++mCovered;
            }
        }
    }

    const ComparedBoard& mBoard;
    const ComparedBoard& mPanel;
    const PlaceIndex mIndex;
    std::vector<char> mIsCovered; ///< of the panel's hits
    qint64 mCovered = 0;
    qint64 mTries = 0;
    std::vector<Placement> mCopies;
};

/** Where a place of the panel lies on a board whose copy lies there. */
std::optional<Place> onBoard(Place place, const Placement& copy)
{
    Place moved;
    if (__builtin_sub_overflow(place.x, copy.move.x, &moved.x)
        || __builtin_sub_overflow(place.y, copy.move.y, &moved.y)) {
        return {};
    }
    const auto turned = Placement{false, (4 - copy.quarterTurns) % 4, 1, {}}.map(moved);
    return turned ? Placement{copy.isMirrored, 0, 1, {}}.map(*turned) : std::nullopt;
}

bool isWithin(Place place, const Extent& extent, Size more)
{
    return qint64(place.x) >= qint64(extent.low.x) - more
        && qint64(place.x) <= qint64(extent.high.x) + more
        && qint64(place.y) >= qint64(extent.low.y) - more
        && qint64(place.y) <= qint64(extent.high.y) + more;
}

} // namespace

std::vector<bool> liesBeside(const std::vector<Place>& places, const ComparedBoard& board,
    const std::vector<Placement>& copies, Size within)
{
    const Extent extent = extentOf(board.places);
    std::vector<Place> outside;
    std::vector<size_t> indices;
    for (size_t i = 0; i < places.size(); ++i) {
        const bool isInside = std::any_of(copies.begin(), copies.end(), [&](const Placement& copy) {
            const std::optional<Place> place = onBoard(places[i], copy);
            return place && isWithin(*place, extent, sizePerMillimetre);
        });
        if (!isInside) {
            outside.push_back(places[i]);
            indices.push_back(i);
        }
    }
    const PlaceIndex index(outside, within);
    const auto isOutside = [&](std::optional<Place> place) {
        bool is = false;
        if (place) {
            index.visit(*place, [&is](std::uint32_t) { is = true; });
        }
        return is;
    };
    std::vector<bool> beside(places.size(), false);
    for (size_t i = 0; i < outside.size(); ++i) {
        beside[indices[i]] = std::none_of(copies.begin(), copies.end(), [&](const Placement& copy) {
            const std::optional<Place> place = onBoard(outside[i], copy);
            return place && std::all_of(copies.begin(), copies.end(), [&](const Placement& other) {
                return isOutside(other.map(*place));
            });
        });
    }
    return beside;
}

std::vector<Placement> findCopies(
    const ComparedBoard& board, const ComparedBoard& panel, Size within)
{
    return CopyFinder(board, panel, within).find();
}

} // namespace brox
