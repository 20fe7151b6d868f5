// SPDX-License-Identifier: MIT
#ifndef DRILL_PLAN_H
#define DRILL_PLAN_H

#include "comparison.h"
#include "drill_draft.h"

namespace brox {

/** What a model makes of a step: all that tables, drill programs, maps and reports show. */

struct ModelAmount
{
    QString holeType; ///< as the models file names it, such as "Pth"
    Size amount = 0;
    Size largeFrom = 0; ///< finished size from which largeAmount applies; 0: none
    Size largeAmount = 0;
};

/** The drill tool model that drills were calculated by. */
struct DrillModel
{
    QString name;
    QString formula;
    bool usesBits = false;
    bool unsaved = false; ///< model or bits have edits that no file holds yet
    bool isOlder = false; ///< the files have been saved by others since model and bits were read
    QList<ModelAmount> amounts;
};

/** "saved", "unsaved edits" or "older than the file": how a model and its bits stand to their
 * files. */
QString fileState(const DrillModel& model);

/** What a row would be drilled with, did it not share the bit of others. */
struct ReplacedDrill
{
    Size size = 0;
    QString bit;
};

/** What a row is drilled with. */
struct Drill
{
    std::optional<Size> size; ///< null: none, and PlanFlag::NoSize
    QString bit; ///< designation; empty if none was chosen
    QList<PlanFlag> flags; ///< in any order
    std::optional<Size> formulaSize = {}; ///< before a bit took its place; null: bits are not used
    std::optional<ReplacedDrill> replaced = {}; ///< with PlanFlag::Merged
};

/** A row of the draft with its drill. */
struct PlanRow : DraftRow
{
    std::optional<Size> drillSize; ///< null: PlanFlag::NoSize
    QString bit; ///< designation; empty if none was chosen
    std::optional<ReplacedDrill> replaced = {}; ///< with PlanFlag::Merged
    int programTool = 0; ///< its number in its program, from 1; 0: no size, so none
};

/** A drill, or a cutter of slots: the rows of one program that share size and bit. */
struct ProgramTool
{
    int number = 0; ///< from 1; 0: the model gives no size
    std::optional<Size> size;
    QString bit; ///< empty if none was chosen
    std::vector<size_t> rows; ///< indices in DrillPlan::rows
    qint64 holes = 0;
    qint64 slotPaths = 0;

    qint64 hits() const { return holes + slotPaths; }
};

/** What one file drills: all plated, or all non-plated, holes of a layer. */
struct Program
{
    size_t layer = 0; ///< index in PlannedStep::layers
    bool isPlated = true;
    std::vector<ProgramTool> tools; ///< by number; one without a size comes first
    int toolsBefore = 0; ///< those that have a size, had none been merged

    int toolCount() const { return tools.empty() ? 0 : tools.back().number; }
};

/** A step with its drills and their programs. It holds on to its board. */
struct DrillPlan : PlannedStep
{
    DrillModel model;
    std::vector<PlanRow> rows; ///< those of the draft
    std::vector<Program> programs; ///< by layer, plated before non-plated
    std::shared_ptr<const Comparison> comparison; ///< with another board; null: none was asked for

    /** Of all programs. */
    int toolCount() const;
    int toolsBefore() const;
};

/** Completes a draft: the only way in which plans come about.
 *
 * Tools of a program are numbered from 1, by rising drill size and then by bit. Rows of one size
 * and bit share a tool, holes and slots alike.
 *
 * @param drills  one for each row of the draft
 */
DrillPlan makePlan(const DrillDraft& draft, DrillModel model, const std::vector<Drill>& drills);

/** Compares a step with the step of the same name of another board; main steps with each other.
 *
 * @param within  tolerance of places
 * @throws PanelError
 */
Comparison compareStep(const PlannedStep& step, const Board& other, Size within = defaultWithin);

/** The flags of a row as tables have them: "tolerance-assumed", "merged (was 0.95)". */
QStringList flagTexts(const PlanRow& row);

/** Whether no one should drill a row before having looked. */
bool isAlarming(const PlanRow& row);

/** How many of a plan's rows are alarming. */
qsizetype alarmingRows(const DrillPlan& plan);

/** Where the holes of a row, or the middles of its slots, are in the step; repeats included. */
struct RowPlaces
{
    std::vector<Place> holes;
    std::vector<Path> slotPaths;
};

/** Visits the tools of a step and of every copy of the steps that it repeats: the holes of a tool,
 *  or its slots, with the row that they belong to.
 *
 * @throws PanelError
 */
void forEachTool(const DrillPlan& plan,
    const std::function<void(
        size_t row, const Tool& tool, const Step& step, const Transform& where)>& visit);

/** Spreads a plan's step: the places of each row.
 *
 * @throws PanelError
 */
std::vector<RowPlaces> placesOf(const DrillPlan& plan);

/** The outlines of a step and of all that it repeats.
 *
 * @throws PanelError
 */
std::vector<Path> outlinesOf(const PlannedStep& step);

/** The contours of each layer of a step and of all that it repeats: milled, not drilled.
 *
 * @throws PanelError
 */
std::vector<std::vector<Path>> contoursOf(const PlannedStep& step);

} // namespace brox

#endif
