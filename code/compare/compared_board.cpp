// SPDX-License-Identifier: MIT
#include "compared_board.h"

#include "reading.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <map>
#include <numeric>

namespace brox {

namespace {

/** Spreads a step; tools that are alike on layers of one name become one. */
class Spreader
{
public:
    ComparedBoard spread(const Board& board, size_t step)
    {
        qint64 hits = 0;
        for (const StepLayer& layer : gatherLayers(board, step)) {
            for (const StepTool& tool : layer.tools) {
                hits += tool.holes + tool.slotPaths;
            }
        }
        mBoard.places.reserve(size_t(std::min(hits, maxHoles)));
        mBoard.toolOf.reserve(mBoard.places.capacity());
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
        auto found = std::ranges::find_if(
            tools, [&](const ComparedTool& known) { return known.isLike(made); });
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

std::optional<Place> moveFrom(Place from, Place to)
{
    Place move;
    return __builtin_sub_overflow(to.x, from.x, &move.x)
            || __builtin_sub_overflow(to.y, from.y, &move.y)
        ? std::nullopt
        : std::optional(move);
}

std::optional<ComparedBoard> ComparedBoard::placed(const std::vector<Placement>& copies) const
{
    ComparedBoard all{tools, {}, {}, {}};
    for (ComparedTool& tool : all.tools) {
        tool.hits *= qint64(copies.size());
    }
    all.places.reserve(hits() * copies.size());
    all.toolOf.reserve(hits() * copies.size());
    std::vector<Transform> transforms;
    for (const Placement& copy : copies) {
        transforms.emplace_back(copy.move, 90.0 * copy.quarterTurns, copy.isMirrored, copy.factor);
    }
    try {
        for (const auto& [from, to] : {std::pair(size_t(0), holes()), std::pair(holes(), hits())}) {
            for (const Transform& where : transforms) {
                for (size_t i = from; i < to; ++i) {
                    all.places.push_back(where.map(places[i]));
                    all.toolOf.push_back(toolOf[i]);
                }
            }
        }
        for (const Transform& where : transforms) {
            for (const Path& path : slotPaths) {
                all.slotPaths.push_back(where.map(path));
            }
        }
    } catch (const PanelError&) {
        return {};
    }
    return all;
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
    const auto bucket = [this](Place place) {
        return bucketOf(qint64(place.x) >> mCellShift, qint64(place.y) >> mCellShift);
    };
    for (const Place& place : places) {
        ++mBegins[bucket(place) + 1];
    }
    std::partial_sum(mBegins.begin(), mBegins.end(), mBegins.begin());
    // Each bucket's begin runs to its end, which is the begin of the next.
    for (size_t i = 0; i < places.size(); ++i) {
        mEntries[mBegins[bucket(places[i])]++] = {places[i], std::uint32_t(i)};
    }
    std::copy_backward(mBegins.begin(), mBegins.end() - 1, mBegins.end());
    mBegins[0] = 0;
}

} // namespace brox
