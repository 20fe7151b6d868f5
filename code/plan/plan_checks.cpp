// SPDX-License-Identifier: MIT
#include "plan_checks.h"

#include "clearance.h"
#include "geometry.h"

#include <QCryptographicHash>
#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

namespace brox {

namespace {

/** How far distances may be off: places are rounded, and lines stand for arcs. */
constexpr double distanceError = sizePerMicron / 2.0;
constexpr double ratioError = 1e-6;

/** A search for near pairs ends after so many. */
constexpr qint64 mostPairs = 1'000'000;

/** The layers of copper that a layer's holes begin and end at, by their order in the board. */
struct Depth
{
    int first = std::numeric_limits<int>::min();
    int last = std::numeric_limits<int>::max();
    bool operator==(const Depth&) const = default;
};

/** Of each layer; what is not known goes through the whole board. */
std::vector<Depth> depthsOf(const DrillPlan& plan)
{
    std::vector<Depth> depths(plan.layers.size());
    for (size_t i = 0; i < depths.size(); ++i) {
        const auto numbers = copperNumbers(*plan.board, plan.layers[i].span);
        if (numbers && numbers->first != numbers->second) {
            depths[i] = {numbers->first, numbers->second};
        }
    }
    return depths;
}

/** Makes the checks one after the other. */
class Checker
{
public:
    explicit Checker(const DrillPlan& plan)
        : mPlan(plan)
        , mLimits(plan.limits)
        , mPlaces(placesOf(plan))
        , mDepths(depthsOf(plan))
    { }

    CheckFindings run()
    {
        skipWhole();
        checkNear();
        checkOutlines();
        checkRows();
        checkCounts();
        checkScales();
        for (const auto& [check, count] : mCounts) {
            if (count > qint64(mostListed)) {
                mFindings.notes << PlanText::tr("%1: %2 more, not listed")
                                       .arg(checkWord(check))
                                       .arg(count - qint64(mostListed));
            }
        }
        sortFindings();
        return std::move(mFindings);
    }

private:
    void add(Check check, std::vector<size_t> rows, std::vector<Place> places, double measured,
        double limit, size_t layer)
    {
        if (++mCounts[check] <= qint64(mostListed)) {
            CheckFinding finding{
                check, layer, std::move(rows), std::move(places), measured, limit, {}};
            finding.id = idOf(finding);
            mFindings.list.push_back(std::move(finding));
        }
    }

    void addOfRow(Check check, size_t row, Place place, double measured, double limit)
    {
        add(check, {row}, {place}, measured, limit, mPlan.rows[row].layer);
    }

    /** Programs number their tools anew with each model, so the files' own tools count. */
    QString idOf(const CheckFinding& finding) const
    {
        QStringList parts{checkWord(finding.check), mPlan.layers[finding.layer].name};
        for (const size_t index : finding.rows) {
            const PlanRow& row = mPlan.rows[index];
            const Tool& tool = *mPlan.tool(row).tool;
            parts << QStringLiteral("%1 %2 %3 %4")
                         .arg(mPlan.layers[row.layer].name)
                         .arg(tool.number)
                         .arg(tool.finishedSize)
                         .arg(row.isSlot);
        }
        for (const Place& place : finding.places) {
            parts << QStringLiteral("%1 %2")
                         .arg(std::lround(double(place.x) / sizePerMicron))
                         .arg(std::lround(double(place.y) / sizePerMicron));
        }
        const QByteArray hash =
            QCryptographicHash::hash(parts.join('\n').toUtf8(), QCryptographicHash::Sha1);
        return checkWord(finding.check) + '-' + QString::fromLatin1(hash.toHex().left(10));
    }

    void skip(Check check, const QString& reason)
    {
        const bool isKnown = std::ranges::any_of(mFindings.skipped,
            [check](const SkippedCheck& skipped) { return skipped.check == check; });
        if (!isKnown) {
            mFindings.skipped.push_back({check, reason});
        }
    }

    /** Checks that can't be made of all rows. */
    void skipWhole()
    {
        const auto count =
            std::ranges::count_if(mPlan.rows, [](const PlanRow& row) { return !row.drillSize; });
        if (count > 0) {
            for (const Check check :
                {Check::SamePlace, Check::Overlap, Check::TooNear, Check::Outside, Check::Edge,
                    Check::TooLarge, Check::ShortSlot, Check::Aspect, Check::Closing}) {
                skip(check, PlanText::tr("tools without a drill size: %1").arg(count));
            }
        }
        for (const auto& [check, hasLimit] :
            {std::pair(Check::TooNear, mLimits.holeToHole.has_value()),
                std::pair(Check::Edge, mLimits.holeToEdge.has_value()),
                std::pair(Check::TooLarge, mLimits.largestDrill.has_value()),
                std::pair(Check::ShortSlot, mLimits.shortestSlot.has_value()),
                std::pair(Check::Aspect, mLimits.aspectRatio.has_value()),
                std::pair(Check::Window, !mLimits.windows.empty())}) {
            if (!hasLimit) {
                skip(check, PlanText::tr("the shop has no limit"));
            }
        }
        if (!mPlan.thickness) {
            skip(Check::Aspect, PlanText::tr("the board specifies no thickness"));
        }
    }

    void checkNear()
    {
        std::vector<DrilledRow> drilled;
        std::vector<size_t> indices; // of the drilled rows
        for (size_t i = 0; i < mPlan.rows.size(); ++i) {
            const PlanRow& row = mPlan.rows[i];
            if (row.drillSize) {
                const size_t tool =
                    (row.layer * 2 + size_t(row.isPlated())) << 32 | size_t(row.programTool);
                drilled.push_back({&mPlaces[i].holes, &mPlaces[i].slotPaths, *row.drillSize, tool,
                    mDepths[row.layer].first, mDepths[row.layer].last});
                indices.push_back(i);
            }
        }
        const double limit = mLimits.holeToHole.value_or(0);
        qint64 pairs = 0;
        const NearResult result =
            findNear(drilled, std::max(0.0, limit - distanceError), [&](NearPair pair) {
                pair.rows[0] = indices[pair.rows[0]];
                pair.rows[1] = indices[pair.rows[1]];
                addPair(pair, limit);
                return ++pairs < mostPairs;
            });
        mFindings.doubledHits = result.doubledHits;
        if (!result.isComplete) {
            mFindings.notes << PlanText::tr(
                "too many holes are too near to each other: not all were looked at");
        }
    }

    void addPair(const NearPair& pair, double limit)
    {
        const auto add = [&](Check check, double measured, double most) {
            this->add(check, {pair.rows[0], pair.rows[1]}, {pair.places[0], pair.places[1]},
                measured, most, mPlan.rows[pair.rows[0]].layer);
        };
        if (pair.areConcentric) {
            add(Check::SamePlace, distance(pair.places[0], pair.places[1]), samePlace);
        } else if (pair.gap < -distanceError) {
            add(Check::Overlap, pair.gap, 0);
        } else if (pair.gap < limit - distanceError) {
            add(Check::TooNear, pair.gap, limit);
        }
    }

    /** What a step has is checked against its own outline, or else against that of the plan's
     *  step. */
    void checkOutlines()
    {
        Size largest = 0;
        for (const PlanRow& row : mPlan.rows) {
            largest = std::max(largest, row.drillSize.value_or(0));
        }
        const double reach = largest / 2.0 + mLimits.holeToEdge.value_or(0) + distanceError;
        std::map<const Step*, OutlineDistance> outlines;
        const auto outlineOf = [&](const Step& step) -> const OutlineDistance& {
            return outlines.try_emplace(&step, step.outline, reach).first->second;
        };
        forEachTool(
            mPlan, [&](size_t row, const Tool& tool, const Step& step, const Transform& where) {
                const bool isOwn = !step.outline.empty();
                const OutlineDistance& outline = outlineOf(isOwn ? step : mPlan.boardStep());
                if (!outline.isUsable()) {
                    const QString reason = isOwn || !mPlan.boardStep().outline.empty()
                        ? PlanText::tr("the outline is open, or too intricate")
                        : PlanText::tr("the board specifies no outline");
                    skip(Check::Outside, reason);
                    skip(Check::Edge, reason);
                } else if (mPlan.rows[row].drillSize) {
                    checkTool(row, tool, outline, isOwn ? Transform() : where, where);
                }
            });
    }

    /** @param toOutline  from the tool's step to that of the outline */
    void checkTool(size_t row, const Tool& tool, const OutlineDistance& outline,
        const Transform& toOutline, const Transform& where)
    {
        const double radius = *mPlan.rows[row].drillSize / 2.0;
        const double limit = mLimits.holeToEdge.value_or(0);
        const auto check = [&](Place place, const std::vector<Line>& lines) {
            const auto least = [&](auto distanceOf) {
                double distance = std::numeric_limits<double>::infinity();
                for (const Line& line : lines) {
                    distance = std::min(distance, (outline.*distanceOf)(line));
                }
                return distance - radius;
            };
            const double gap = least(&OutlineDistance::signedDistance);
            if (gap < -distanceError) {
                addOfRow(Check::Outside, row, where.map(place),
                    least(&OutlineDistance::exactDistance), 0);
            } else if (gap < limit - distanceError) {
                addOfRow(Check::Edge, row, where.map(place), gap, limit);
            }
        };
        if (mPlan.rows[row].isSlot) {
            for (const Path& path : tool.slotPaths) {
                check(path.start, linesOf(toOutline.map(path)));
            }
            return;
        }
        std::vector<Line> lines(1);
        for (const Place& hole : tool.holes) {
            const QPointF point = pointOf(toOutline.map(hole));
            lines.front() = {point, point};
            check(hole, lines);
        }
    }

    void checkRows()
    {
        Depth whole{1, int(mPlan.board->copperLayers.size())};
        for (const Depth& depth : mDepths) {
            if (depth != Depth{}) {
                whole = {std::min(whole.first, depth.first), std::max(whole.last, depth.last)};
            }
        }
        for (size_t i = 0; i < mPlan.rows.size(); ++i) {
            const PlanRow& row = mPlan.rows[i];
            checkWindow(i);
            if (!row.drillSize) {
                continue;
            }
            const auto size = double(*row.drillSize);
            if (mLimits.largestDrill && size > *mLimits.largestDrill + distanceError) {
                addOfRow(Check::TooLarge, i, firstPlace(i), size, *mLimits.largestDrill);
            }
            checkShortSlots(i);
            checkClosing(i);
            if (mDepths[row.layer] != Depth{} && mDepths[row.layer] != whole) {
                skip(Check::Aspect,
                    PlanText::tr("depth of layer %1").arg(mPlan.layers[row.layer].name));
            } else if (mPlan.thickness && mLimits.aspectRatio) {
                const double ratio = *mPlan.thickness / size;
                if (ratio > *mLimits.aspectRatio + ratioError) {
                    addOfRow(Check::Aspect, i, firstPlace(i), ratio, *mLimits.aspectRatio);
                }
            }
        }
    }

    void checkWindow(size_t index)
    {
        const PlanRow& row = mPlan.rows[index];
        const auto found = mLimits.windows.find(windowKind(row.type, row.isSlot));
        const std::optional<Tolerance>& tolerance = mPlan.tool(row).tool->tolerance;
        if (found == mLimits.windows.end()) {
            return;
        }
        if (!tolerance) {
            skip(Check::Window, PlanText::tr("the board does not specify all tolerances"));
        } else {
            const double window = double(tolerance->minus) + tolerance->plus;
            if (window < found->second - distanceError) {
                addOfRow(Check::Window, index, firstPlace(index), window, found->second);
            }
        }
    }

    void checkShortSlots(size_t index)
    {
        const PlanRow& row = mPlan.rows[index];
        for (const Path& path : mPlaces[index].slotPaths) {
            const double ratio = lengthOf(path) / *row.drillSize + 1; // with its round ends
            if (mLimits.shortestSlot && ratio < *mLimits.shortestSlot - ratioError) {
                addOfRow(Check::ShortSlot, index, path.start, ratio, *mLimits.shortestSlot);
            }
        }
    }

    void checkClosing(size_t index)
    {
        const PlanRow& row = mPlan.rows[index];
        if (!row.isPlated()) {
            return;
        }
        if (row.finishedSize == 0) {
            skip(Check::Closing, PlanText::tr("files with drill sizes specify no finished sizes"));
        } else if (*row.drillSize < row.finishedSize - distanceError) {
            addOfRow(Check::Closing, index, firstPlace(index), *row.drillSize, row.finishedSize);
        }
    }

    void checkCounts()
    {
        forEachTool(mPlan, [&](size_t row, const Tool& tool, const Step&, const Transform& where) {
            // Of a tool with holes and slots both rows come by.
            if (!tool.specifiedHits || (mPlan.rows[row].isSlot && !tool.holes.empty())) {
                return;
            }
            const qint64 hits = qint64(tool.holes.size()) + qint64(tool.slotPaths.size());
            if (*tool.specifiedHits != hits) {
                const Place place =
                    tool.holes.empty() ? tool.slotPaths.front().start : tool.holes.front();
                addOfRow(
                    Check::Count, row, where.map(place), double(hits), double(*tool.specifiedHits));
            }
        });
    }

    struct FileExtent : Extent
    {
        Place first;

        double size() const { return std::hypot(width(), height()); }
    };

    /** Of each layer that is a file with tools of its own. */
    std::map<size_t, FileExtent> extentsOfFiles() const
    {
        std::map<size_t, FileExtent> extents;
        for (size_t i = 0; i < mPlan.rows.size(); ++i) {
            if (mPlan.tool(mPlan.rows[i]).tool->number > 0) {
                FileExtent& extent = extents[mPlan.rows[i].layer];
                extent.first = extent.count == 0 ? firstPlace(i) : extent.first;
                for (const Place& hole : mPlaces[i].holes) {
                    extent.add(hole);
                }
                for (const Path& path : mPlaces[i].slotPaths) {
                    extent.add(path.start);
                    extent.add(path.end());
                }
            }
        }
        std::erase_if(extents, [](const auto& each) { return !(each.second.size() > 0); });
        return extents;
    }

    /** Some holes may well lie close together on a large board. What is a file of another scale
     *  lies, enlarged, where the rest does. */
    void checkScales()
    {
        const std::map<size_t, FileExtent> extents = extentsOfFiles();
        const auto largest = std::ranges::max_element(
            extents, {}, [](const auto& each) { return each.second.size(); });
        for (const auto& [layer, extent] : extents) {
            const double ratio = largest->second.size() / extent.size();
            for (const double factor : {10.0, 25.4, 1000.0}) {
                const double room = largest->second.size() * 0.15;
                const Extent& all = largest->second;
                const bool isWithin = extent.low.x * factor > all.low.x - room
                    && extent.high.x * factor < all.high.x + room
                    && extent.low.y * factor > all.low.y - room
                    && extent.high.y * factor < all.high.y + room;
                if (ratio > factor * 0.85 && ratio < factor * 1.15 && isWithin) {
                    add(Check::Scale, {}, {extent.first}, ratio, factor, layer);
                    break;
                }
            }
        }
    }

    Place firstPlace(size_t row) const
    {
        const RowPlaces& places = mPlaces[row];
        return !places.holes.empty()    ? places.holes.front()
            : !places.slotPaths.empty() ? places.slotPaths.front().start
                                        : Place{};
    }

    void sortFindings()
    {
        const auto key = [](const CheckFinding& finding) {
            return std::tie(finding.check, finding.layer, finding.rows, finding.places);
        };
        std::ranges::sort(mFindings.list, {}, key);
        // Hits that are there twice have findings of their own.
        const auto twins = std::ranges::unique(mFindings.list, {}, key);
        mFindings.list.erase(twins.begin(), twins.end());
        std::ranges::sort(mFindings.skipped, {}, &SkippedCheck::check);
    }

    const DrillPlan& mPlan;
    const CheckLimits& mLimits;
    const std::vector<RowPlaces> mPlaces; ///< of each row
    const std::vector<Depth> mDepths; ///< of each layer
    std::map<Check, qint64> mCounts;
    CheckFindings mFindings;
};

} // namespace

CheckFindings checkPlan(const DrillPlan& plan, QDate today)
{
    CheckFindings findings = Checker(plan).run();
    if (plan.acceptances) {
        plan.acceptances->apply(findings, today);
    }
    return findings;
}

} // namespace brox
