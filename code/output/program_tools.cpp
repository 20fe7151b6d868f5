// SPDX-License-Identifier: MIT
#include "program_tools.h"

#include <algorithm>
#include <map>

namespace brox {

namespace {

/** The row of the holes and the row of the slots of a tool; beyond all rows if there is none. */
struct ToolRows
{
    size_t holes;
    size_t slotPaths;
};

/** Finds the rows of a step's tools, for each step once: a panel may repeat it a million times. */
class RowFinder
{
public:
    explicit RowFinder(const DrillPlan& plan)
        : mPlan(plan)
    {
        for (size_t i = 0; i < plan.rows.size(); ++i) {
            const PlanRow& row = plan.rows[i];
            mRows[{row.layer, row.tool, row.isSlot}] = i;
        }
    }

    /** Of each tool of each layer, one after the other. */
    const std::vector<ToolRows>& rowsOf(const Step& step)
    {
        const auto [known, isNew] = mSteps.try_emplace(&step);
        if (isNew) {
            for (const Layer& layer : step.layers) {
                const size_t index = layerOf(layer.name);
                for (const Tool& tool : layer.tools) {
                    const size_t own = mPlan.layers[index].indexOf(tool);
                    known->second.push_back({find(index, own, false), find(index, own, true)});
                }
            }
        }
        return known->second;
    }

private:
    size_t layerOf(const QString& name) const
    {
        const auto found = std::find_if(mPlan.layers.begin(), mPlan.layers.end(),
            [&](const StepLayer& layer) { return layer.name == name; });
        return size_t(found - mPlan.layers.begin());
    }

    size_t find(size_t layer, size_t tool, bool isSlot) const
    {
        const auto found = mRows.find({layer, tool, isSlot});
        return found == mRows.end() ? mPlan.rows.size() : found->second;
    }

    const DrillPlan& mPlan;
    std::map<std::tuple<size_t, size_t, bool>, size_t> mRows;
    std::map<const Step*, std::vector<ToolRows>> mSteps;
};

void addTool(
    const Tool& tool, const ToolRows& rows, const Transform& where, std::vector<RowPlaces>& places)
{
    if (rows.holes < places.size()) {
        for (const Place& hole : tool.holes) {
            places[rows.holes].holes.push_back(where.map(hole));
        }
    }
    if (rows.slotPaths < places.size()) {
        for (const Path& path : tool.slotPaths) {
            places[rows.slotPaths].slotPaths.push_back(where.map(path));
        }
    }
}

} // namespace

std::vector<Program> programsOf(const DrillPlan& plan)
{
    std::map<std::pair<size_t, bool>, std::map<int, ProgramTool>> files;
    for (size_t i = 0; i < plan.rows.size(); ++i) {
        const PlanRow& row = plan.rows[i];
        ProgramTool& tool = files[{row.layer, !row.isPlated()}][row.programTool];
        tool.number = row.programTool;
        tool.size = row.drillSize;
        tool.bit = row.bit;
        tool.rows.push_back(i);
        (row.isSlot ? tool.slotPaths : tool.holes) += row.count;
    }
    std::vector<Program> programs;
    for (auto& [file, tools] : files) {
        Program& program = programs.emplace_back();
        program.layer = file.first;
        program.isPlated = !file.second;
        for (auto& [number, tool] : tools) {
            program.tools.push_back(std::move(tool));
        }
    }
    return programs;
}

std::vector<RowPlaces> placesOf(const DrillPlan& plan)
{
    std::vector<RowPlaces> places(plan.rows.size());
    for (size_t i = 0; i < plan.rows.size(); ++i) {
        const PlanRow& row = plan.rows[i];
        row.isSlot ? places[i].slotPaths.reserve(size_t(row.count))
                   : places[i].holes.reserve(size_t(row.count));
    }
    RowFinder finder(plan);
    forEachCopy(*plan.board, plan.step, [&](const Step& step, const Transform& where) {
        auto rows = finder.rowsOf(step).begin();
        for (const Layer& layer : step.layers) {
            for (const Tool& tool : layer.tools) {
                addTool(tool, *rows++, where, places);
            }
        }
    });
    return places;
}

std::vector<Path> outlinesOf(const DrillPlan& plan)
{
    std::vector<Path> outlines;
    forEachCopy(*plan.board, plan.step, [&](const Step& step, const Transform& where) {
        for (const Path& outline : step.outline) {
            outlines.push_back(where.map(outline));
        }
    });
    return outlines;
}

} // namespace brox
