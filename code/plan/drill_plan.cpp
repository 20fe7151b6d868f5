// SPDX-License-Identifier: MIT
#include "drill_plan.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>

namespace brox {

namespace {

/** A tool of a repeated step with a row that its holes, or its slots, belong to. */
struct RowTool
{
    size_t row;
    const Tool* tool;
};

/** Finds the rows of tools, whatever step these are of. */
class RowFinder
{
public:
    explicit RowFinder(const DrillPlan& plan)
        : mPlan(plan)
    {
        for (size_t i = 0; i < plan.rows.size(); ++i) {
            mRows.emplace(likenessOf(*plan.tool(plan.rows[i]).tool), i);
        }
    }

    std::vector<RowTool> rowToolsOf(const Step& step) const
    {
        std::vector<RowTool> found;
        for (const Layer& layer : step.layers) {
            for (const Tool& tool : layer.tools) {
                const auto [begin, end] = mRows.equal_range(likenessOf(tool));
                for (auto like = begin; like != end; ++like) {
                    const PlanRow& row = mPlan.rows[like->second];
                    if (mPlan.layers[row.layer].name == layer.name
                        && mPlan.tool(row).tool->isLike(tool)) {
                        found.push_back({like->second, &tool});
                    }
                }
            }
        }
        return found;
    }

private:
    const DrillPlan& mPlan;
    std::unordered_multimap<size_t, size_t> mRows; ///< by their tools' likeness
};

/** Sorts the rows into programs and numbers the tools. */
void addPrograms(DrillPlan& plan)
{
    using Cutter = std::pair<std::optional<Size>, QString>; // no size before any
    std::map<std::pair<size_t, bool>, std::map<Cutter, ProgramTool>> programs;
    std::map<std::pair<size_t, bool>, std::set<Cutter>> before;
    for (size_t i = 0; i < plan.rows.size(); ++i) {
        const PlanRow& row = plan.rows[i];
        ProgramTool& tool = programs[{row.layer, !row.isPlated()}][{row.drillSize, row.bit}];
        tool.size = row.drillSize;
        tool.bit = row.bit;
        tool.rows.push_back(i);
        if (row.drillSize) {
            before[{row.layer, !row.isPlated()}].insert(row.replaced
                    ? Cutter(row.replaced->size, row.replaced->bit)
                    : Cutter(row.drillSize, row.bit));
        }
        (row.isSlot ? tool.slotPaths : tool.holes) += row.count;
    }
    for (auto& [file, tools] : programs) {
        Program& program = plan.programs.emplace_back(
            Program{file.first, !file.second, {}, int(before[file].size())});
        int last = 0;
        for (auto& [cutter, tool] : tools) {
            tool.number = tool.size ? ++last : 0;
            for (const size_t row : tool.rows) {
                plan.rows[row].programTool = tool.number;
            }
            program.tools.push_back(std::move(tool));
        }
    }
}

} // namespace

QString fileState(const DrillModel& model)
{
    // Edits of what was read before others saved are both; a save would ask about that.
    return model.isOlder ? QT_TRANSLATE_NOOP("PlanText", "older than the file")
        : model.unsaved  ? QT_TRANSLATE_NOOP("PlanText", "unsaved edits")
                         : QT_TRANSLATE_NOOP("PlanText", "saved");
}

int DrillPlan::toolCount() const
{
    int count = 0;
    for (const Program& program : programs) {
        count += program.toolCount();
    }
    return count;
}

int DrillPlan::toolsBefore() const
{
    int count = 0;
    for (const Program& program : programs) {
        count += program.toolsBefore;
    }
    return count;
}

DrillPlan makePlan(const DrillDraft& draft, DrillModel model, const std::vector<Drill>& drills)
{
    DrillPlan plan{draft, std::move(model), {}, {}, {}};
    for (size_t i = 0; i < draft.rows.size(); ++i) {
        const Drill& drill = drills.at(i);
        PlanRow& row =
            plan.rows.emplace_back(PlanRow{draft.rows[i], drill.size, drill.bit, drill.replaced});
        row.flags += drill.flags;
        std::ranges::sort(row.flags);
    }
    addPrograms(plan);
    return plan;
}

Comparison compareStep(const PlannedStep& step, const Board& other, Size within)
{
    const auto named = std::ranges::find(other.steps, step.boardStep().name, &Step::name);
    const bool isMain = step.step == step.board->mainStep || named == other.steps.end();
    return compareBoards(*step.board, step.step, other,
        isMain ? other.mainStep : size_t(named - other.steps.begin()), within, drillSizesOf(step));
}

QStringList flagTexts(const PlanRow& row)
{
    QStringList texts;
    for (const PlanFlag flag : row.flags) {
        texts << flagWord(flag);
        if (flag == PlanFlag::Merged && row.replaced) {
            texts.last() += QStringLiteral(" (was %1)").arg(row.replaced->bit);
        }
    }
    return texts;
}

bool isAlarming(const PlanRow& row)
{
    return std::ranges::any_of(row.flags, [](PlanFlag flag) { return isAlarming(flag); });
}

qsizetype alarmingRows(const DrillPlan& plan)
{
    return std::ranges::count_if(plan.rows, [](const PlanRow& row) { return isAlarming(row); });
}

void forEachTool(const DrillPlan& plan,
    const std::function<void(size_t, const Tool&, const Step&, const Transform&)>& visit)
{
    const RowFinder rows(plan);
    std::map<const Step*, std::vector<RowTool>> known; // a panel may repeat a step a million times
    forEachCopy(*plan.board, plan.step, [&](const Step& step, const Transform& where) {
        const auto [tools, isNew] = known.try_emplace(&step);
        if (isNew) {
            tools->second = rows.rowToolsOf(step);
        }
        for (const RowTool& each : tools->second) {
            visit(each.row, *each.tool, step, where);
        }
    });
}

std::vector<RowPlaces> placesOf(const DrillPlan& plan)
{
    std::vector<RowPlaces> places(plan.rows.size());
    for (size_t i = 0; i < plan.rows.size(); ++i) {
        const PlanRow& row = plan.rows[i];
        row.isSlot ? places[i].slotPaths.reserve(size_t(row.count))
                   : places[i].holes.reserve(size_t(row.count));
    }
    forEachTool(plan, [&](size_t row, const Tool& tool, const Step&, const Transform& where) {
        if (plan.rows[row].isSlot) {
            for (const Path& path : tool.slotPaths) {
                places[row].slotPaths.push_back(where.map(path));
            }
        } else {
            for (const Place& hole : tool.holes) {
                places[row].holes.push_back(where.map(hole));
            }
        }
    });
    return places;
}

std::vector<Path> outlinesOf(const PlannedStep& planned)
{
    std::vector<Path> outlines;
    forEachCopy(*planned.board, planned.step, [&](const Step& step, const Transform& where) {
        for (const Path& outline : step.outline) {
            outlines.push_back(where.map(outline));
        }
    });
    return outlines;
}

std::vector<std::vector<Path>> contoursOf(const PlannedStep& planned)
{
    std::map<QString, size_t> layers;
    for (size_t i = 0; i < planned.layers.size(); ++i) {
        layers.emplace(planned.layers[i].name, i);
    }
    std::vector<std::vector<Path>> contours(planned.layers.size());
    forEachCopy(*planned.board, planned.step, [&](const Step& step, const Transform& where) {
        for (const Layer& layer : step.layers) {
            for (const Contour& contour : layer.contours) {
                contours[layers.at(layer.name)].push_back(where.map(contour.outline));
            }
        }
    });
    return contours;
}

} // namespace brox
