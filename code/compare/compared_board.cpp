// SPDX-License-Identifier: MIT
#include "compared_board.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <map>

namespace brox {

namespace {

/** Spreads a step; tools that are alike on layers of one name become one. */
class Spreader
{
public:
    ComparedBoard spread(const Board& board, size_t step)
    {
        forEachCopy(board, step, [this](const Step& copied, const Transform& where) {
            auto own = toolsOf(copied).begin();
            for (const Layer& layer : copied.layers) {
                for (const Tool& tool : layer.tools) {
                    addHits(tool, own->first, own->second, where);
                    ++own;
                }
            }
        });
        moveSlotsBehind();
        return std::move(mBoard);
    }

private:
    using OfTool = std::pair<std::uint32_t, std::uint32_t>; ///< its holes and its slots

    /** For each step once: a panel may repeat it a million times. */
    const std::vector<OfTool>& toolsOf(const Step& step)
    {
        const auto [known, isNew] = mSteps.try_emplace(&step);
        if (isNew) {
            for (const Layer& layer : step.layers) {
                for (const Tool& tool : layer.tools) {
                    known->second.push_back(
                        {indexOf(layer, tool, false), indexOf(layer, tool, true)});
                }
            }
        }
        return known->second;
    }

    std::uint32_t indexOf(const Layer& layer, const Tool& tool, bool isSlot)
    {
        const bool isPlated = tool.type != HoleType::NonPlated;
        const ComparedTool made{layer.name, layer.span, tool.number, isSlot, isPlated,
            tool.typeAssumed, tool.finishedSize, tool.tolerance, 0, layer.hasDrillSizes};
        std::vector<ComparedTool>& tools = mBoard.tools;
        auto found = std::find_if(tools.begin(), tools.end(),
            [&](const ComparedTool& known) { return known.isLike(made); });
        if (found == tools.end()) {
            found = tools.insert(tools.end(), made);
        }
        return std::uint32_t(found - tools.begin());
    }

    void addHits(
        const Tool& tool, std::uint32_t holes, std::uint32_t slotted, const Transform& where)
    {
        for (const Place& hole : tool.holes) {
            mBoard.places.push_back(where.map(hole));
        }
        mBoard.toolOf.resize(mBoard.places.size(), holes);
        mBoard.tools[holes].hits += qint64(tool.holes.size());
        for (const Path& path : tool.slotPaths) {
            mBoard.slotPaths.push_back(where.map(path));
        }
        mToolOfSlot.resize(mBoard.slotPaths.size(), slotted);
        mBoard.tools[slotted].hits += qint64(tool.slotPaths.size());
    }

    void moveSlotsBehind()
    {
        for (const Path& path : mBoard.slotPaths) {
            const Place end = path.end();
            mBoard.places.push_back({Size((qint64(path.start.x) + end.x) / 2),
                Size((qint64(path.start.y) + end.y) / 2)});
        }
        mBoard.toolOf.insert(mBoard.toolOf.end(), mToolOfSlot.begin(), mToolOfSlot.end());
    }

    ComparedBoard mBoard;
    std::vector<std::uint32_t> mToolOfSlot;
    std::map<const Step*, std::vector<OfTool>> mSteps;
};

std::optional<Path> mapped(const Path& path, const Placement& where)
{
    using enum Segment::Shape;
    const std::optional<Place> start = where.map(path.start);
    if (!start) {
        return {};
    }
    Path made{*start, {}};
    for (const Segment& segment : path.segments) {
        const std::optional<Place> to = where.map(segment.to);
        const std::optional<Place> centre = where.map(segment.centre);
        if (!to || !centre) {
            return {};
        }
        Segment::Shape shape = segment.shape;
        if (where.isMirrored && shape != Line) {
            shape = shape == Clockwise ? CounterClockwise : Clockwise;
        }
        made.segments.push_back({shape, *to, *centre});
    }
    return made;
}

} // namespace

std::optional<Place> Placement::map(Place place) const
{
    double x = isMirrored ? -double(place.x) : double(place.x);
    double y = place.y;
    for (int i = 0; i < quarterTurns; ++i) {
        std::swap(x, y);
        x = -x;
    }
    x = std::round(x * factor + move.x);
    y = std::round(y * factor + move.y);
    const double most = std::numeric_limits<Size>::max();
    if (std::abs(x) > most || std::abs(y) > most) {
        return {};
    }
    return Place{Size(x), Size(y)};
}

ComparedBoard ComparedBoard::withoutHits() const
{
    ComparedBoard board{tools, {}, {}, {}};
    for (ComparedTool& tool : board.tools) {
        tool.hits = 0;
    }
    return board;
}

bool ComparedBoard::addHits(const ComparedBoard& other, const Placement& where)
{
    ComparedBoard sum = withoutHits();
    for (size_t i = 0; i < other.hits(); ++i) {
        const std::optional<Place> place = where.map(other.places[i]);
        const std::optional<Path> path =
            i < other.holes() ? Path() : mapped(other.slotPath(i), where);
        if (!place || !path) {
            return false;
        }
        sum.places.push_back(*place);
        if (i >= other.holes()) {
            sum.slotPaths.push_back(*path);
        }
    }
    const auto insert = [](auto& list, size_t at, const auto& more, size_t from, size_t to) {
        list.insert(list.begin() + std::ptrdiff_t(at), more.begin() + std::ptrdiff_t(from),
            more.begin() + std::ptrdiff_t(to));
    };
    const size_t before = holes();
    insert(places, hits(), sum.places, other.holes(), other.hits());
    insert(toolOf, toolOf.size(), other.toolOf, other.holes(), other.hits());
    insert(places, before, sum.places, 0, other.holes());
    insert(toolOf, before, other.toolOf, 0, other.holes());
    insert(slotPaths, slotPaths.size(), sum.slotPaths, 0, sum.slotPaths.size());
    for (size_t i = 0; i < tools.size(); ++i) {
        tools[i].hits += other.tools[i].hits;
    }
    return true;
}

ComparedBoard comparedBoard(const Board& board, size_t step)
{
    return Spreader().spread(board, step);
}

void Extent::add(Place place)
{
    low = count == 0 ? place : Place{std::min(low.x, place.x), std::min(low.y, place.y)};
    high = count == 0 ? place : Place{std::max(high.x, place.x), std::max(high.y, place.y)};
    ++count;
}

Extent extentOf(const std::vector<Place>& places)
{
    Extent extent;
    for (const Place& place : places) {
        extent.add(place);
    }
    return extent;
}

namespace {

/** Few holes lie nearer to each other. */
constexpr Size leastCell = sizePerMillimetre / 2;

} // namespace

PlaceIndex::PlaceIndex(const std::vector<Place>& places, Size reach)
    : mReach(reach)
    , mCellShift(int(std::bit_width(quint64(std::max(qint64(reach) * 2, qint64(leastCell))) - 1)))
    , mEntries(places.size())
{
    const int bits = std::max(1, int(std::bit_width(places.size())) - 2 * blockBits);
    mHashShift = 64 - bits;
    mBegins.assign((size_t(1) << (bits + 2 * blockBits)) + 1, 0);
    std::vector<std::uint32_t> buckets;
    buckets.reserve(places.size());
    for (const Place& place : places) {
        const size_t bucket =
            bucketOf(qint64(place.x) >> mCellShift, qint64(place.y) >> mCellShift);
        buckets.push_back(std::uint32_t(bucket));
        ++mBegins[bucket + 1];
    }
    for (size_t i = 1; i < mBegins.size(); ++i) {
        mBegins[i] += mBegins[i - 1];
    }
    std::vector<std::uint32_t> next(mBegins.begin(), mBegins.end() - 1);
    for (size_t i = 0; i < places.size(); ++i) {
        mEntries[next[buckets[i]]++] = {places[i], std::uint32_t(i)};
    }
}

} // namespace brox
