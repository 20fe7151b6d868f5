// SPDX-License-Identifier: MIT
#include "comparison.h"

#include "alignment.h"
#include "hole_matching.h"

#include <QCoreApplication>
#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>

namespace brox {

namespace {

constexpr double wholeFactors[] = {10, 25.4, 1000};

Size lengthOf(const Path& path)
{
    const Place end = path.end();
    return Size(
        std::min(std::hypot(double(end.x) - path.start.x, double(end.y) - path.start.y), 2e9));
}

/** Sorts what a matching came to by kind and tool. */
class DifferenceList
{
public:
    /** @param move  of the board, already in its places */
    DifferenceList(const ComparedBoard& board, const ComparedBoard& other,
        const HoleMatcher& matcher, Place move)
        : mBoard(board)
        , mOther(other)
        , mMatcher(matcher)
        , mMove(move)
    { }

    void add(const HoleMatching& matching)
    {
        for (const HitPair& pair : matching.inPlace) {
            addPair(pair);
        }
        for (const HitPair& pair : matching.moved) {
            addMoved(pair);
        }
        for (const std::uint32_t hit : matching.removed) {
            addHit(difference(DifferenceKind::Removed, &mBoard.tools[mBoard.toolOf[hit]], nullptr),
                mBoard.places[hit]);
        }
        for (const std::uint32_t hit : matching.added) {
            addHit(difference(DifferenceKind::Added, nullptr, &mOther.tools[mOther.toolOf[hit]]),
                mOther.places[hit]);
        }
    }

    qint64 assumedPlating() const { return mAssumedPlating; }
    qint64 drilledAndFinished() const { return mDrilledAndFinished; }

    std::vector<BoardDifference> take()
    {
        std::vector<BoardDifference> list;
        for (auto& [key, difference] : mDifferences) {
            const ComparedTool& tool = difference.from ? *difference.from : *difference.to;
            difference.isWholeTool = difference.count == tool.hits;
            sortPlaces(difference);
            list.push_back(std::move(difference));
        }
        return list;
    }

private:
    using Key = std::tuple<DifferenceKind, const ComparedTool*, const ComparedTool*>;

    BoardDifference& difference(
        DifferenceKind kind, const ComparedTool* from, const ComparedTool* to)
    {
        const auto [found, isNew] = mDifferences.try_emplace({kind, from, to});
        if (isNew) {
            found->second.kind = kind;
            if (from) {
                found->second.from = *from;
            }
            if (to) {
                found->second.to = *to;
            }
        }
        return found->second;
    }

    Place unmoved(Place place) const
    {
        return Placement{false, 0, 1, {Size(-qint64(mMove.x)), Size(-qint64(mMove.y))}}
            .map(place)
            .value_or(place);
    }

    void addHit(BoardDifference& difference, Place place)
    {
        ++difference.count;
        difference.places.push_back(unmoved(place));
    }

    void addPair(const HitPair& pair)
    {
        const ComparedTool& from = mBoard.tool(pair.hit);
        const ComparedTool& to = mOther.tool(pair.other);
        const HitDifference differs = mMatcher.difference(pair.hit, pair.other);
        mAssumedPlating += from.isPlated != to.isPlated && !differs.plating ? 1 : 0;
        mDrilledAndFinished += from.isDrilled != to.isDrilled ? 1 : 0;
        const auto add = [&](DifferenceKind kind) -> BoardDifference& {
            BoardDifference& found = difference(kind, &from, &to);
            addHit(found, mBoard.places[pair.hit]);
            return found;
        };
        if (differs.size) {
            BoardDifference& found = add(DifferenceKind::Resized);
            if (from.isSlot && found.count == 1) {
                found.lengthBefore = lengthOf(mBoard.slotPath(pair.hit));
                found.lengthAfter = lengthOf(mOther.slotPath(pair.other));
            }
        }
        if (differs.plating) {
            add(DifferenceKind::Plating);
        }
        if (differs.span) {
            add(DifferenceKind::Layer);
        }
        if (tolerancesDiffer(from, to)) {
            add(DifferenceKind::Tolerance);
        }
    }

    static bool tolerancesDiffer(const ComparedTool& from, const ComparedTool& to)
    {
        return from.tolerance && to.tolerance
            && (!isSameSize(from.tolerance->minus, to.tolerance->minus)
                || !isSameSize(from.tolerance->plus, to.tolerance->plus));
    }

    void addMoved(const HitPair& pair)
    {
        // A slot with one end elsewhere has another length.
        if (mMatcher.difference(pair.hit, pair.other).size) {
            addPair(pair);
            return;
        }
        const ComparedTool& from = mBoard.tool(pair.hit);
        const ComparedTool& to = mOther.tool(pair.other);
        BoardDifference& moved = difference(DifferenceKind::Moved, &from, &to);
        addHit(moved, mBoard.places[pair.hit]);
        moved.movedTo.push_back(unmoved(mOther.places[pair.other]));
        if (tolerancesDiffer(from, to)) {
            addHit(difference(DifferenceKind::Tolerance, &from, &to), mBoard.places[pair.hit]);
        }
    }

    static void sortPlaces(BoardDifference& difference)
    {
        const auto byLine = [](Place place) { return std::pair(place.y, place.x); };
        if (difference.movedTo.empty()) {
            std::ranges::sort(difference.places, {}, byLine);
            return;
        }
        std::vector<std::pair<Place, Place>> moves;
        for (size_t i = 0; i < difference.places.size(); ++i) {
            moves.emplace_back(difference.places[i], difference.movedTo[i]);
        }
        std::ranges::stable_sort(moves, {}, [&](const auto& move) { return byLine(move.first); });
        std::ranges::transform(
            moves, difference.places.begin(), [](const auto& move) { return move.first; });
        std::ranges::transform(
            moves, difference.movedTo.begin(), [](const auto& move) { return move.second; });
    }

    const ComparedBoard& mBoard;
    const ComparedBoard& mOther;
    const HoleMatcher& mMatcher;
    Place mMove;
    std::map<Key, BoardDifference>
        mDifferences; ///< tools are in one list, so pointers have its order
    qint64 mAssumedPlating = 0;
    qint64 mDrilledAndFinished = 0;
};

/** Compares holes as they lie, after a move of the board. */
Comparison compareMoved(const ComparedBoard& unmoved, const ComparedBoard& other,
    const PlaceIndex& index, Size within, Place move)
{
    Comparison result;
    result.move = move;
    const auto moved =
        move == Place{} ? std::nullopt : unmoved.placed({Placement{false, 0, 1, move}});
    if (move != Place{} && !moved) {
        return result;
    }
    const ComparedBoard& board = moved ? *moved : unmoved;
    HoleMatcher matcher(board, other, index, within);
    const HoleMatching matching = matcher.match();
    DifferenceList list(board, other, matcher, move);
    list.add(matching);
    result.differences = list.take();
    result.assumedPlating = list.assumedPlating();
    result.drilledAndFinished = list.drilledAndFinished();
    return result;
}

/** Tries to explain all by one thing that was done to a whole board. */
class WholeFinder
{
public:
    WholeFinder(const ComparedBoard& board, const ComparedBoard& other, const PlaceIndex& index,
        Size within)
        : mBoard(board)
        , mOther(other)
        , mIndex(index)
        , mWithin(within)
    { }

    /** Adds to a comparison what it found. */
    void find(Comparison& result)
    {
        for (const bool isMirrored : {false, true}) {
            for (int turns = isMirrored ? 0 : 1; turns < 4; ++turns) {
                const Placement whole{isMirrored, turns, 1, {}};
                if (explain(result, whole, whole, mBoard, mOther, mIndex, mWithin)) {
                    return;
                }
            }
        }
        for (const double factor : wholeFactors) {
            // Always upwards, so that no digit is lost.
            const Placement larger{false, 0, factor, {}};
            const Placement smaller{false, 0, 1 / factor, {}};
            const Size slack = scaledTolerance(factor);
            if (isTimesAsLarge(mOther, mBoard, factor)) {
                const PlaceIndex index(mOther.places, slack);
                if (explain(result, larger, larger, mBoard, mOther, index, slack)) {
                    return;
                }
            } else if (isTimesAsLarge(mBoard, mOther, factor)) {
                const PlaceIndex index(mBoard.places, slack);
                if (explain(result, smaller, larger, mOther, mBoard, index, slack)) {
                    return;
                }
            }
        }
    }

private:
    static bool isTimesAsLarge(
        const ComparedBoard& large, const ComparedBoard& small, double factor)
    {
        const Extent larger = extentOf(large.places);
        const Extent smaller = extentOf(small.places);
        const auto size = [](const Extent& extent) {
            return double(std::max(extent.width(), extent.height()));
        };
        const double ratio = size(larger) / std::max(size(smaller), 1.0);
        return ratio > factor * 0.9 && ratio < factor * 1.1;
    }

    /** Places of the smaller board are whole microns at times. */
    Size scaledTolerance(double factor) const
    {
        const double slack = mWithin + factor * sizePerMicron / 2;
        return Size(std::min(slack, std::max<double>(mWithin, sizePerMillimetre / 4.0)));
    }

    /** @param whole   from the board to the other one
     *  @param change  what is tried: the same, or its inverse from the other one to the board */
    bool explain(Comparison& result, const Placement& whole, const Placement& change,
        const ComparedBoard& from, const ComparedBoard& to, const PlaceIndex& index, Size within)
    {
        std::optional<ComparedBoard> changed =
            couldBe(from, to, change) ? from.placed({change}) : std::nullopt;
        if (!changed) {
            return false;
        }
        const Alignment alignment = align(*changed, to, index, within);
        if (alignment.share < 0.4) { // places alone, with all sizes scaled, have a half
            return false;
        }
        const auto isExplained = [&] {
            return !compareMoved(*changed, to, index, within, alignment.move).differs();
        };
        bool isAll = isExplained();
        if (!isAll && change.factor != 1) {
            for (ComparedTool& tool : changed->tools) {
                const double size = tool.size * change.factor;
                tool.size = Size(std::min<double>(size, std::numeric_limits<Size>::max()));
            }
            isAll = isExplained();
        }
        if (isAll) {
            result.whole = whole;
        } else if (alignment.share > 0.9 && !result.nearly) {
            result.nearly = whole;
        }
        return isAll;
    }

    static bool couldBe(const ComparedBoard& from, const ComparedBoard& to, const Placement& change)
    {
        const auto isNear = [](double a, double b) { return a > b * 0.9 && a < b * 1.1; };
        if (!isNear(double(from.hits()), double(to.hits()))) {
            return false;
        }
        const Extent own = extentOf(from.places);
        const Extent other = extentOf(to.places);
        const bool isSideways = change.quarterTurns % 2 == 1;
        const auto width = double(isSideways ? own.height() : own.width());
        const auto height = double(isSideways ? own.width() : own.height());
        const double slack = 2 * double(sizePerMillimetre);
        return isNear(width * change.factor + slack, double(other.width()) + slack)
            && isNear(height * change.factor + slack, double(other.height()) + slack);
    }

    const ComparedBoard& mBoard;
    const ComparedBoard& mOther;
    const PlaceIndex& mIndex;
    Size mWithin;
};

/** Takes what the panel has beside its copies out of the differences. */
void dropBeside(Comparison& result, DifferenceKind kind, const ComparedBoard& board,
    const std::vector<Placement>& copies, Size within)
{
    for (BoardDifference& difference : result.differences) {
        if (difference.kind != kind) {
            continue;
        }
        const std::vector<bool> beside = liesBeside(difference.places, board, copies, within);
        std::vector<Place> left;
        for (size_t i = 0; i < beside.size(); ++i) {
            (beside[i] ? result.besideCopies : left).push_back(difference.places[i]);
        }
        difference.count = qint64(left.size());
        difference.places = std::move(left);
    }
    std::erase_if(result.differences,
        [](const BoardDifference& difference) { return difference.count == 0; });
}

/** Compares a panel with a board put where its copies lie. Null if it is no such panel. */
std::optional<Comparison> compareCopies(
    const ComparedBoard& board, const ComparedBoard& other, Size within)
{
    const bool isOtherPanel = other.hits() > board.hits();
    const ComparedBoard& single = isOtherPanel ? board : other;
    const ComparedBoard& panel = isOtherPanel ? other : board;
    if (single.hits() == 0 || panel.hits() * 2 < single.hits() * 3) {
        return {};
    }
    const std::vector<Placement> copies = findCopies(single, panel, within);
    const auto spread = copies.empty() ? std::nullopt : single.placed(copies);
    if (!spread) {
        return {};
    }
    const ComparedBoard& from = isOtherPanel ? *spread : panel;
    const ComparedBoard& to = isOtherPanel ? panel : *spread;
    Comparison result = compareMoved(from, to, PlaceIndex(to.places, within), within, {});
    result.copies = qint64(copies.size());
    result.turnedCopies = std::ranges::count_if(
        copies, [](const Placement& copy) { return copy.isMirrored || copy.quarterTurns != 0; });
    result.isOtherPanel = isOtherPanel;
    dropBeside(result, isOtherPanel ? DifferenceKind::Added : DifferenceKind::Removed, single,
        copies, within);
    return result;
}

Comparison compareHits(const ComparedBoard& board, const ComparedBoard& other, Size within)
{
    if (std::optional<Comparison> panel = compareCopies(board, other, within)) {
        return *panel;
    }
    const PlaceIndex index(other.places, within);
    const Place move = align(board, other, index, within).move;
    Comparison result = compareMoved(board, other, index, within, move);
    if (!result.differs()) {
        return result;
    }
    // Many boards are almost symmetric; where few holes differ, these are the shorter answer.
    const qint64 differing =
        std::accumulate(result.differences.begin(), result.differences.end(), qint64(0),
            [](qint64 sum, const BoardDifference& difference) { return sum + difference.count; });
    if (differing * 10 >= qint64(board.hits())) {
        WholeFinder(board, other, index, within).find(result);
    }
    if (differing * 2 < qint64(board.hits())) {
        result.nearly.reset();
    }
    if (result.whole) {
        BoardDifference whole;
        whole.kind = DifferenceKind::Whole;
        whole.count = qint64(board.hits());
        result.differences = {whole};
        result.move = {};
        result.nearly.reset();
    }
    return result;
}

} // namespace

Comparison compareBoards(const Board& board, size_t step, const Board& other, size_t otherStep,
    Size within, const std::map<QString, bool>& drillSizes)
{
    ComparedBoard own = comparedBoard(board, step);
    for (ComparedTool& tool : own.tools) {
        const auto chosen = drillSizes.find(tool.layer);
        tool.isDrilled = chosen == drillSizes.end() ? tool.isDrilled : chosen->second;
    }
    Comparison result = compareHits(own, comparedBoard(other, otherStep), within);
    result.other = other.job;
    result.holes = qint64(own.holes());
    result.slotPaths = qint64(own.slotPaths.size());
    return result;
}

QString wholeWord(const Placement& whole)
{
    if (whole.factor > 1) {
        return QStringLiteral("factor %1").arg(whole.factor);
    }
    if (whole.factor < 1) {
        return QStringLiteral("factor 1/%1").arg(1 / whole.factor);
    }
    QStringList words;
    if (whole.isMirrored) {
        words << QT_TRANSLATE_NOOP("PlanText", "mirrored");
    }
    if (whole.quarterTurns % 2 == 1) {
        words << QT_TRANSLATE_NOOP("PlanText", "quarter turn");
    } else if (whole.quarterTurns == 2 && !whole.isMirrored) {
        words << QT_TRANSLATE_NOOP("PlanText", "half turn");
    }
    return words.join(QStringLiteral(", "));
}

QString differenceWord(DifferenceKind kind)
{
    // By the enumeration.
    static constexpr const char* words[] = {QT_TRANSLATE_NOOP("PlanText", "whole"),
        QT_TRANSLATE_NOOP("PlanText", "added"), QT_TRANSLATE_NOOP("PlanText", "removed"),
        QT_TRANSLATE_NOOP("PlanText", "moved"), QT_TRANSLATE_NOOP("PlanText", "resized"),
        QT_TRANSLATE_NOOP("PlanText", "plating"), QT_TRANSLATE_NOOP("PlanText", "tolerance"),
        QT_TRANSLATE_NOOP("PlanText", "layer")};
    static_assert(std::size(words) == size_t(DifferenceKind::Layer) + 1);
    return QString::fromLatin1(words[size_t(kind)]);
}

} // namespace brox
