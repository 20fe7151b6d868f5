// SPDX-License-Identifier: MIT
#include "alignment.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <tuple>

namespace brox {

namespace {

constexpr size_t sampleSize = 2000;
constexpr size_t mostPairs = 300'000; ///< of holes that vote for the move from one to the other
constexpr size_t mostTried = 16; ///< moves by extents, and as many by pairs

/** The hits of one kind and size of a board. */
struct SizeClass
{
    Extent extent;
    std::vector<Place> first; ///< as many as may vote
};

/** Part of a large tool votes too: both boards may have the holes in one order. */
constexpr size_t mostOfClass = 500;

using Drill = std::pair<bool, Size>; ///< whether it is that of slots, and its size

/** To each drill of both boards the smallest of those that are one but for rounding. */
std::map<Drill, Drill> smallestAlike(const ComparedBoard& board, const ComparedBoard& other)
{
    std::map<Drill, Drill> drills;
    for (const ComparedBoard* each : {&board, &other}) {
        for (const ComparedTool& tool : each->tools) {
            drills[{tool.isSlot, tool.size}] = {};
        }
    }
    const std::pair<const Drill, Drill>* last = nullptr;
    for (auto& each : drills) {
        const Drill& own = each.first;
        const bool isAlike =
            last && last->first.first == own.first && isSameSize(last->first.second, own.second);
        each.second = isAlike ? last->second : own;
        last = &each;
    }
    return drills;
}

std::map<Drill, SizeClass> gathered(
    const ComparedBoard& board, const std::map<Drill, Drill>& smallest)
{
    std::map<Drill, SizeClass> classes;
    std::vector<SizeClass*> ofTool;
    for (const ComparedTool& tool : board.tools) {
        ofTool.push_back(&classes[smallest.at({tool.isSlot, tool.size})]);
    }
    for (size_t i = 0; i < board.hits(); ++i) {
        SizeClass& own = *ofTool[board.toolOf[i]];
        own.extent.add(board.places[i]);
        if (own.first.size() < mostOfClass) {
            own.first.push_back(board.places[i]);
        }
    }
    return classes;
}

/** Collects moves that take a hole to a hole; the right one comes up again and again. */
class Voting
{
public:
    Voting(const ComparedBoard& board, const ComparedBoard& other)
    {
        const std::map<Drill, Drill> smallest = smallestAlike(board, other);
        const std::map<Drill, SizeClass> own = gathered(board, smallest);
        const std::map<Drill, SizeClass> others = gathered(other, smallest);
        voteByExtent(extentOf(board.places), extentOf(other.places));
        std::multimap<size_t, std::pair<const SizeClass*, const SizeClass*>> byPairs;
        for (const auto& [drill, sum] : own) {
            const auto found = others.find(drill);
            if (found != others.end()) {
                voteByExtent(sum.extent, found->second.extent);
                byPairs.insert(
                    {sum.first.size() * found->second.first.size(), {&sum, &found->second}});
            }
        }
        for (const auto& [pairs, sums] : byPairs) {
            if (mByPairs.size() + pairs <= mostPairs) {
                voteByPairs(sums.first->first, sums.second->first);
            }
        }
    }

    /** The most frequent moves, to a tolerance. */
    std::vector<Place> ranked(Size within)
    {
        std::vector<Place> moves = ranked(mByExtents, within);
        const std::vector<Place> others = ranked(mByPairs, within);
        moves.insert(moves.end(), others.begin(), others.end());
        return moves;
    }

private:
    using Votes = std::vector<Place>;

    static std::vector<Place> ranked(Votes& votes, Size within)
    {
        const auto cell = [within](Place vote) {
            return std::pair(
                std::floor(double(vote.x) / within), std::floor(double(vote.y) / within));
        };
        std::ranges::sort(votes, {}, cell);
        std::vector<std::pair<std::ptrdiff_t, Place>> counts;
        for (auto it = votes.begin(); it != votes.end();) {
            const auto end =
                std::find_if(it, votes.end(), [&](Place vote) { return cell(vote) != cell(*it); });
            counts.push_back({end - it, it[(end - it) / 2]});
            it = end;
        }
        const size_t count = std::min(counts.size(), mostTried);
        std::partial_sort(counts.begin(), counts.begin() + std::ptrdiff_t(count), counts.end(),
            [](const auto& a, const auto& b) { return a.first > b.first; });
        std::vector<Place> moves;
        for (size_t i = 0; i < count; ++i) {
            moves.push_back(counts[i].second);
        }
        return moves;
    }

    static void vote(Votes& votes, Place from, Place to)
    {
        if (const std::optional<Place> move = moveFrom(from, to)) {
            votes.push_back(*move);
        }
    }

    void voteByExtent(const Extent& own, const Extent& other)
    {
        if (own.count > 0 && other.count > 0) {
            vote(mByExtents, own.low, other.low);
            vote(mByExtents, own.high, other.high);
            vote(mByExtents, {own.low.x, own.high.y}, {other.low.x, other.high.y});
            vote(mByExtents, {own.high.x, own.low.y}, {other.high.x, other.low.y});
        }
    }

    void voteByPairs(const std::vector<Place>& own, const std::vector<Place>& others)
    {
        for (const Place& from : own) {
            for (const Place& to : others) {
                vote(mByPairs, from, to);
            }
        }
    }

    Votes mByExtents;
    Votes mByPairs;
};

/** Tries moves on hits from all over the board. */
class Trial
{
public:
    Trial(const ComparedBoard& board, const ComparedBoard& other, const PlaceIndex& index,
        Size within)
        : mBoard(board)
        , mOther(other)
        , mIndex(index)
        , mWithin(within)
    {
        const size_t count = std::min(board.hits(), sampleSize);
        for (size_t i = 0; i < count; ++i) {
            mSample.push_back(i * board.hits() / count);
        }
    }

    /** Hits that lie on hits of their size; those on hits of another size count by half. */
    double score(Place move) const
    {
        double sum = 0;
        for (const size_t hit : mSample) {
            double best = 0;
            forEachNear(hit, move, [&](std::uint32_t other) {
                best = mBoard.tool(hit).hasSameSize(mOther.tool(other)) ? 1 : std::max(best, 0.5);
            });
            sum += best;
        }
        return sum;
    }

    /** The most that any move can score. */
    double best() const
    {
        const double count = double(mSample.size());
        return mOther.hits() < mBoard.hits() ? count * double(mOther.hits()) / double(mBoard.hits())
                                             : count;
    }

    double share(Place move) const
    {
        return mSample.empty() ? 0 : score(move) / double(mSample.size());
    }

    /** The move that takes most hits right on those of the other board. */
    Place refined(Place move) const
    {
        std::vector<Size> xs;
        std::vector<Size> ys;
        for (const size_t hit : mSample) {
            forEachNear(hit, move, [&](std::uint32_t other) {
                xs.push_back(Size(qint64(mOther.places[other].x) - mBoard.places[hit].x));
                ys.push_back(Size(qint64(mOther.places[other].y) - mBoard.places[hit].y));
            });
        }
        return xs.empty() ? move : Place{median(xs), median(ys)};
    }

private:
    static Size median(std::vector<Size>& values)
    {
        const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
        std::nth_element(values.begin(), middle, values.end());
        return *middle;
    }

    /** Visits the hits of the other board that a hit lies on after a move. */
    template <typename Visit>
    void forEachNear(size_t hit, Place move, const Visit& visit) const
    {
        const auto place = Placement{false, 0, 1, move}.map(mBoard.places[hit]);
        if (place) {
            mIndex.visit(*place, [&](std::uint32_t other) {
                if (distance(mOther.places[other], *place) <= mWithin) {
                    visit(other);
                }
            });
        }
    }

    const ComparedBoard& mBoard;
    const ComparedBoard& mOther;
    const PlaceIndex& mIndex;
    Size mWithin;
    std::vector<size_t> mSample; ///< hits of the board
};

} // namespace

Alignment align(
    const ComparedBoard& board, const ComparedBoard& other, const PlaceIndex& index, Size within)
{
    const Trial trial(board, other, index, within);
    const double unmoved = trial.score({});
    if (unmoved >= trial.best()) {
        return {{}, trial.share({})};
    }
    Place best;
    double most = unmoved;
    for (const Place& move : Voting(board, other).ranked(within)) {
        for (const Place& each : {move, trial.refined(move)}) {
            if (const double score = trial.score(each); score > most) {
                most = score;
                best = each;
            }
        }
    }
    if (most - unmoved < (trial.best() - unmoved) / 2) {
        best = {};
    }
    return {best, trial.share(best)};
}

namespace {

constexpr double leastShare = 0.9; ///< of a board's hits that its copy has
constexpr size_t copySample = 50;
constexpr qint64 mostSearched = 1'000'000; ///< places at which a board is looked for

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
            sum += other.hasSameSize(tool) ? other.hits : 0;
        }
        return sum;
    };
    std::vector<qint64> hits;
    for (const ComparedTool& tool : board.tools) {
        hits.push_back(tool.hits > 0 ? hitsOnPanel(tool) : 0);
    }
    const auto isRarer = [](qint64 a, qint64 b) { return a > 1 && (b < 2 || a < b); };
    const auto rarest = std::ranges::min_element(hits, isRarer);
    if (rarest == hits.end() || *rarest < 2) {
        return {};
    }
    const ComparedTool& tool = board.tools[size_t(rarest - hits.begin())];
    std::optional<size_t> anchor;
    for (size_t i = 0; i < board.hits(); ++i) {
        if (board.tool(i).hasSameSize(tool)
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
        const std::optional<ComparedBoard> turned = mBoard.placed({where});
        const std::optional<size_t> anchor =
            turned ? anchorOf(*turned, mPanel, backwards) : std::nullopt;
        if (!anchor) {
            return;
        }
        const Place from = turned->places[*anchor];
        for (const size_t hit : placesOfAnchor(turned->tool(*anchor), backwards)) {
            const std::optional<Place> move = moveFrom(from, mPanel.places[hit]);
            if (mIsCovered[hit] || ++mTries > mostSearched || !move) {
                continue;
            }
            where.move = *move;
            if (liesAt(*turned, where.move, copySample)
                && liesAt(*turned, where.move, turned->hits())) {
                cover(*turned, where.move);
                mCopies.push_back(where);
            }
        }
    }

    /** Hits of the panel that are like the anchor. */
    std::vector<size_t> placesOfAnchor(const ComparedTool& tool, bool backwards) const
    {
        std::vector<size_t> hits;
        for (size_t i = 0; i < mPanel.hits(); ++i) {
            if (mPanel.tool(i).hasSameSize(tool)) {
                hits.push_back(i);
            }
        }
        std::ranges::sort(hits, [&](size_t a, size_t b) {
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
    const std::optional<Place> moved = moveFrom(copy.move, place);
    const auto turned =
        moved ? Placement{false, (4 - copy.quarterTurns) % 4, 1, {}}.map(*moved) : std::nullopt;
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
        const bool isInside = std::ranges::any_of(copies, [&](const Placement& copy) {
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
        beside[indices[i]] = std::ranges::none_of(copies, [&](const Placement& copy) {
            const std::optional<Place> place = onBoard(outside[i], copy);
            return place && std::ranges::all_of(copies, [&](const Placement& other) {
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
