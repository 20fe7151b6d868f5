// SPDX-License-Identifier: MIT
#include "panel.h"

#include "reading.h"

#include <QHash>
#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numbers>
#include <unordered_map>

namespace brox {

namespace {

constexpr qint64 hostLimit = std::numeric_limits<int>::max();

/** The product, or more than any limit. */
qint64 times(qint64 number, qint64 factor)
{
    qint64 product = 0;
    return __builtin_mul_overflow(number, factor, &product) ? std::numeric_limits<qint64>::max() / 4
                                                            : product;
}

qint64 copies(const Repeat& repeat)
{
    return times(repeat.columns, repeat.rows);
}

StepLayer summed(const Layer& layer)
{
    StepLayer sum{layer.name, layer.span, {}, {}, qint64(layer.contours.size()),
        layer.assumedFormat, layer.formatDoubtful, layer.hasDrillSizes};
    for (const Tool& tool : layer.tools) {
        sum.tools.push_back({&tool, qint64(tool.holes.size()), qint64(tool.slotPaths.size())});
    }
    for (const Tool& tool : layer.backDrills) {
        sum.backDrills.push_back({&tool, qint64(tool.holes.size()), qint64(tool.slotPaths.size())});
    }
    return sum;
}

struct LikeTools
{
    size_t operator()(const Tool* tool) const { return likenessOf(*tool); }
    bool operator()(const Tool* a, const Tool* b) const { return a->isLike(*b); }
};

/** Layers of several steps, of which each is there once, and each of its tools. */
class LayerSum
{
public:
    void add(const StepLayer& layer, qint64 factor)
    {
        auto found = mIndices.constFind(layer.name);
        if (found == mIndices.constEnd()) {
            found = mIndices.insert(layer.name, mLayers.size());
            mLayers.push_back({layer.name, layer.span, {}, {}, 0, layer.assumedFormat,
                layer.formatDoubtful, layer.hasDrillSizes});
            mTools.emplace_back();
            mBackDrills.emplace_back();
        }
        StepLayer& sum = mLayers[*found];
        sum.contours += layer.contours * factor;
        add(sum.tools, mTools[*found], layer.tools, factor);
        add(sum.backDrills, mBackDrills[*found], layer.backDrills, factor);
    }

    std::vector<StepLayer> take() { return std::move(mLayers); }

private:
    using Indices = std::unordered_map<const Tool*, size_t, LikeTools, LikeTools>;

    static void add(std::vector<StepTool>& sums, Indices& indices,
        const std::vector<StepTool>& tools, qint64 factor)
    {
        for (const StepTool& each : tools) {
            const auto [found, isNew] = indices.try_emplace(each.tool, sums.size());
            if (isNew) {
                sums.push_back({each.tool, 0, 0});
            }
            sums[found->second].holes += each.holes * factor;
            sums[found->second].slotPaths += each.slotPaths * factor;
        }
    }

    std::vector<StepLayer> mLayers;
    QHash<QString, size_t> mIndices; ///< of layers by name
    std::vector<Indices> mTools; ///< by layer
    std::vector<Indices> mBackDrills;
};

/** Answers for each step once: panels of panels would ask without end otherwise. */
class Gatherer
{
public:
    explicit Gatherer(const Board& board)
        : mBoard(board)
    { }

    const std::vector<StepLayer>& layers(size_t index)
    {
        const auto known = mLayers.find(index);
        if (known != mLayers.end()) {
            return known->second;
        }
        LayerSum sum;
        for (const Layer& layer : mBoard.steps[index].layers) {
            sum.add(summed(layer), 1);
        }
        for (const Repeat& repeat : mBoard.steps[index].repeats) {
            for (const StepLayer& layer : layers(repeat.step)) {
                sum.add(layer, copies(repeat));
            }
        }
        return mLayers[index] = sum.take();
    }

private:
    const Board& mBoard;
    std::map<size_t, std::vector<StepLayer>> mLayers;
};

/** Adds up a number of a step and of all its copies, each step asked once. */
class StepSum
{
public:
    /** @param most  what is above it counts as one more */
    StepSum(const Board& board, qint64 most, std::function<qint64(const Step&)> own)
        : mBoard(board)
        , mMost(most)
        , mOwn(std::move(own))
    { }

    qint64 of(size_t index)
    {
        const auto known = mSums.find(index);
        if (known != mSums.end()) {
            return known->second;
        }
        qint64 sum = mOwn(mBoard.steps[index]);
        for (const Repeat& repeat : mBoard.steps[index].repeats) {
            sum = std::min(sum + times(of(repeat.step), copies(repeat)), mMost + 1);
        }
        return mSums[index] = sum;
    }

private:
    const Board& mBoard;
    qint64 mMost;
    std::function<qint64(const Step&)> mOwn;
    std::map<size_t, qint64> mSums;
};

/** How many holes of its own would take as much memory as all of them. */
qint64 weightOfStep(const Step& step)
{
    qint64 weight = 0;
    for (const Layer& layer : step.layers) {
        for (const std::vector<Tool>* tools : {&layer.tools, &layer.backDrills}) {
            for (const Tool& tool : *tools) {
                weight += qint64(tool.holes.size());
                for (const Path& slot : tool.slotPaths) {
                    weight += weightOf(slot.segments.size());
                }
            }
        }
        for (const Contour& contour : layer.contours) {
            weight += weightOf(contour.outline.segments.size());
        }
    }
    return weight;
}

void checkLimits(const Board& board, size_t step)
{
    StepSum weight(board, maxHoles, weightOfStep);
    StepSum copyCount(board, copiesLimit, [](const Step&) { return 1; });
    if (weight.of(step) > maxHoles || copyCount.of(step) > copiesLimit) {
        throw PanelError(
            BoardText::tr("step \"%1\" is too large: more than %2 holes, where a slot counts as %3 "
                          "or more, or more than %4 copies of steps")
                .arg(board.steps[step].name)
                .arg(maxHoles)
                .arg(weightOf(1))
                .arg(copiesLimit));
    }
}

void visitCopies(const Board& board, size_t step, const Transform& where,
    const std::function<void(const Step&, const Transform&)>& visit)
{
    visit(board.steps[step], where);
    for (const Repeat& repeat : board.steps[step].repeats) {
        for (int row = 0; row < repeat.rows; ++row) {
            for (int column = 0; column < repeat.columns; ++column) {
                // In 64 bits: a grid may reach further than a place can.
                const qint64 x = qint64(repeat.at.x) + qint64(column) * repeat.dx;
                const qint64 y = qint64(repeat.at.y) + qint64(row) * repeat.dy;
                if (x != Size(x) || y != Size(y)) {
                    throw PanelError(
                        BoardText::tr("step \"%1\" reaches too far").arg(board.steps[step].name));
                }
                visitCopies(board, repeat.step,
                    where * Transform({Size(x), Size(y)}, repeat.angle, repeat.mirror), visit);
            }
        }
    }
}

Size rounded(double coordinate)
{
    const double whole = std::round(coordinate);
    if (!(std::abs(whole) <= std::numeric_limits<Size>::max())) {
        throw PanelError(BoardText::tr("a panel reaches too far for places of 32 bits"));
    }
    return Size(whole);
}

} // namespace

void checkCounts(const Board& board)
{
    StepSum weight(board, hostLimit, weightOfStep);
    for (size_t step = 0; step < board.steps.size(); ++step) {
        if (weight.of(step) > hostLimit) {
            throw PanelError(BoardText::tr("too many holes"));
        }
    }
}

std::vector<StepLayer> gatherLayers(const Board& board, size_t step)
{
    return Gatherer(board).layers(step);
}

qint64 holesLeftOut(const Board& board, size_t step)
{
    return StepSum(board, hostLimit, [](const Step& each) { return each.holesLeftOut; }).of(step);
}

Transform::Transform(Place move, double angle, bool mirror, double scale)
    : mX(move.x)
    , mY(move.y)
{
    // Quarter turns are exact; cos(90 degrees) would not be 0.
    const double quarter = std::remainder(angle, 360.0) / 90.0;
    const bool exact = quarter == std::round(quarter);
    const double radians = quarter * std::numbers::pi / 2;
    const double cosine = scale * (exact ? std::round(std::cos(radians)) : std::cos(radians));
    const double sine = scale * (exact ? std::round(std::sin(radians)) : std::sin(radians));
    const double side = mirror ? -1 : 1;
    mXx = cosine * side;
    mYx = -sine;
    mXy = sine * side;
    mYy = cosine;
}

Transform Transform::operator*(const Transform& inner) const
{
    Transform both;
    both.mXx = mXx * inner.mXx + mYx * inner.mXy;
    both.mYx = mXx * inner.mYx + mYx * inner.mYy;
    both.mXy = mXy * inner.mXx + mYy * inner.mXy;
    both.mYy = mXy * inner.mYx + mYy * inner.mYy;
    both.mX = mXx * inner.mX + mYx * inner.mY + mX;
    both.mY = mXy * inner.mX + mYy * inner.mY + mY;
    return both;
}

Place Transform::map(Place place) const
{
    return {
        rounded(mXx * place.x + mYx * place.y + mX), rounded(mXy * place.x + mYy * place.y + mY)};
}

Path Transform::map(const Path& path) const
{
    using enum Segment::Shape;
    const bool mirrors = mXx * mYy - mYx * mXy < 0;
    Path mapped{map(path.start), {}};
    mapped.segments.reserve(path.segments.size());
    for (const Segment& segment : path.segments) {
        if (segment.shape == Line) {
            mapped.segments.push_back({Line, map(segment.to), {}});
        } else {
            const bool isClockwise = (segment.shape == Clockwise) != mirrors;
            mapped.segments.push_back(
                {isClockwise ? Clockwise : CounterClockwise, map(segment.to), map(segment.centre)});
        }
    }
    return mapped;
}

void forEachCopy(const Board& board, size_t step,
    const std::function<void(const Step&, const Transform&)>& visit)
{
    checkLimits(board, step);
    visitCopies(board, step, {}, visit);
}

} // namespace brox
