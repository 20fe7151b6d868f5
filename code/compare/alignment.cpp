// SPDX-License-Identifier: MIT
#include "alignment.h"

#include "hole_matching.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

namespace brox {

namespace {

constexpr size_t sampleSize = 2000;
constexpr size_t mostPairs = 300'000; ///< of holes that vote for the move from one to the other
constexpr size_t mostTried = 16; ///< moves by extents, and as many by pairs

bool isNear(Place a, Place b, Size within)
{
    const double dx = double(a.x) - b.x;
    const double dy = double(a.y) - b.y;
    return dx * dx + dy * dy <= double(within) * within;
}

/** Whether a hit of another board of the same size lies where a place is. */
bool hasLike(const ComparedTool& tool, Place place, const ComparedBoard& other,
    const PlaceIndex& index, Size within)
{
    bool has = false;
    index.visit(place, [&](std::uint32_t hit) {
        const ComparedTool& others = other.tool(hit);
        has = has
            || (others.isSlot == tool.isSlot && isSameSize(others.size, tool.size)
                && isNear(other.places[hit], place, within));
    });
    return has;
}

/** Null if the place lies where no number of 32 bits reaches. */
std::optional<Place> moved(Place place, Place move)
{
    Place to;
    if (__builtin_add_overflow(place.x, move.x, &to.x)
        || __builtin_add_overflow(place.y, move.y, &to.y)) {
        return {};
    }
    return to;
}

/** The hits of one kind and size of a board. */
struct SizeClass
{
    Extent extent;
    std::vector<Place> first; ///< as many as may vote
};

/** Part of a large tool votes too: both boards may have the holes in one order. */
constexpr size_t mostOfClass = 500;

/** Sizes that are one but for rounding get one number, on both boards. */
std::vector<int> classes(
    const ComparedBoard& board, const ComparedBoard& other, std::vector<int>& ofOther)
{
    std::map<std::pair<bool, Size>, int> numbers;
    for (const ComparedBoard* each : {&board, &other}) {
        for (const ComparedTool& tool : each->tools) {
            numbers[{tool.isSlot, tool.size}] = 0;
        }
    }
    int number = -1;
    std::optional<std::pair<bool, Size>> last;
    for (auto& [key, own] : numbers) {
        if (!last || last->first != key.first || !isSameSize(last->second, key.second)) {
            ++number;
        }
        own = number;
        last = key;
    }
    const auto ofTools = [&](const ComparedBoard& each) {
        std::vector<int> list;
        for (const ComparedTool& tool : each.tools) {
            list.push_back(numbers.at({tool.isSlot, tool.size}));
        }
        return list;
    };
    ofOther = ofTools(other);
    return ofTools(board);
}

std::map<int, SizeClass> gathered(const ComparedBoard& board, const std::vector<int>& classOfTool)
{
    std::map<int, SizeClass> sums;
    std::vector<SizeClass*> ofTool;
    for (const int number : classOfTool) {
        ofTool.push_back(&sums[number]);
    }
    for (size_t i = 0; i < board.hits(); ++i) {
        SizeClass& sum = *ofTool[board.toolOf[i]];
        sum.extent.add(board.places[i]);
        if (sum.first.size() < mostOfClass) {
            sum.first.push_back(board.places[i]);
        }
    }
    return sums;
}

/** Collects moves that take a hole to a hole; the right one comes up again and again. */
class Voting
{
public:
    Voting(const ComparedBoard& board, const ComparedBoard& other)
    {
        std::vector<int> ofOther;
        const std::vector<int> ofBoard = classes(board, other, ofOther);
        const std::map<int, SizeClass> own = gathered(board, ofBoard);
        const std::map<int, SizeClass> others = gathered(other, ofOther);
        voteByExtent(extentOf(board.places), extentOf(other.places));
        std::multimap<size_t, std::pair<const SizeClass*, const SizeClass*>> byPairs;
        for (const auto& [number, sum] : own) {
            const auto found = others.find(number);
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
        std::sort(votes.begin(), votes.end(), [&](Place a, Place b) { return cell(a) < cell(b); });
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
        Place move;
        if (!__builtin_sub_overflow(to.x, from.x, &move.x)
            && !__builtin_sub_overflow(to.y, from.y, &move.y)) {
            votes.push_back(move);
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
            const std::optional<Place> place = moved(mBoard.places[hit], move);
            if (place && hasLike(mBoard.tool(hit), *place, mOther, mIndex, mWithin)) {
                sum += 1;
            } else if (place && liesOnAny(*place)) {
                sum += 0.5;
            }
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
            const std::optional<Place> place = moved(mBoard.places[hit], move);
            if (!place) {
                continue;
            }
            mIndex.visit(*place, [&](std::uint32_t other) {
                const Place to = mOther.places[other];
                if (isNear(to, *place, mWithin)) {
                    xs.push_back(Size(qint64(to.x) - mBoard.places[hit].x));
                    ys.push_back(Size(qint64(to.y) - mBoard.places[hit].y));
                }
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

    bool liesOnAny(Place place) const
    {
        bool lies = false;
        mIndex.visit(place, [&](std::uint32_t other) {
            lies = lies || isNear(mOther.places[other], place, mWithin);
        });
        return lies;
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

} // namespace brox
