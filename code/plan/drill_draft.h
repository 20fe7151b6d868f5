// SPDX-License-Identifier: MIT
#ifndef DRILL_DRAFT_H
#define DRILL_DRAFT_H

#include "panel.h"
#include "plan_text.h"
#include "shop_rules.h"

#include <map>
#include <memory>

namespace brox {

/** What a board's steps ask to be drilled, after the rules of the shop and the user's choices, and
 *  before any model has given drills. */

class Acceptances;

/** A type that the user has chosen for a tool, for this board only. */
struct TypeChoice
{
    QString layer;
    Tool tool; ///< without holes and slots; those that are like it are meant
    HoleType type = HoleType::Plated;
};

/** The holes, or the slots, of a tool. */
struct DraftRow
{
    size_t layer = 0; ///< index in PlannedStep::layers
    size_t tool = 0; ///< index in that layer's tools
    bool isSlot = false;
    HoleType type = HoleType::Plated; ///< after the rules
    bool isTypeChosen = false; ///< by the user, and another than the board's
    Tolerance tolerance; ///< after the rules; 0 and 0 where none applies
    Size finishedSize = 0; ///< 0: the board specifies none
    qint64 count = 0; ///< repeats included
    QList<PlanFlag> flags; ///< in the order of the enumeration
    QString rule; ///< what rule or user decided about the tool, one line; empty: nothing

    /** Whether the tool's size is that of a drill, to which nothing is added. */
    bool isAsDrilled() const { return flags.contains(PlanFlag::AsDrilled); }
    bool isPlated() const { return type != HoleType::NonPlated; }
};

/** A step of a board with its layers; what draft and plan have in common. */
struct PlannedStep
{
    std::shared_ptr<const Board> board; ///< never null
    size_t step = 0; ///< index in the board
    Units units = Units::Metric; ///< in which sizes are shown
    QStringList rules; ///< the shop's rules that are in force, a line each
    std::vector<StepLayer> layers; ///< pointers in it lie in the board
    CheckLimits limits; ///< those of the shop
    std::optional<Size> thickness; ///< of the board; null: not specified
    std::shared_ptr<const Acceptances> acceptances; ///< of findings; null: none

    const Step& boardStep() const { return board->steps[step]; }
    const StepTool& tool(const DraftRow& row) const { return layers[row.layer].tools[row.tool]; }
};

struct DrillDraft : PlannedStep
{
    /** By layer, holes before slots, tool: as a host lists them. Those that are drilled as they
     *  are come last, since no host gets them. */
    std::vector<DraftRow> rows;

    size_t hostRows() const;
};

/** A board with all that is decided about it before a model is. */
struct Job
{
    explicit Job(Board board = {}, ShopRules rules = {});

    std::shared_ptr<const Board> board; ///< never null; drafts share it
    ShopRules rules;
    QList<TypeChoice> choices;
    std::optional<Size> thickness; ///< of the board, whatever it specifies
    std::shared_ptr<const Acceptances> acceptances; ///< of findings; null: none
    std::map<QString, bool> drillSizes; ///< by layer: whether it has them, whatever its file says

    /** Gives a tool of the board another type, or null: its own again. */
    void chooseType(const QString& layer, const Tool& tool, std::optional<HoleType> type);

    /** A draft of each step, in the board's units.
     *
     * @throws PanelError
     */
    std::vector<DrillDraft> drafts() const;
};

/** Applies rules and choices to the tools of one step.
 *
 * @param step  index in the job's board
 * @throws PanelError
 */
DrillDraft draftStep(const Job& job, size_t step);

/** Decides what the sizes of files are, as "drilled", "finished" or "LAYER=drilled" has it.
 *
 * @throws RulesError  for other words and for layers that the board does not have
 */
void chooseSizes(Job& job, const QString& text);

/** The numbers of the copper layers that holes begin and end at, the upper one first; null if the
 *  board specifies none, or only names that it does not order. */
std::optional<std::pair<int, int>> copperNumbers(
    const Board& board, const std::optional<Span>& span);

/** By layer: whether its sizes are those of drills, after the user's choices. */
std::map<QString, bool> drillSizesOf(const PlannedStep& step);

/** A line on a step some of whose layers have drill sizes, and others finished sizes; else empty.
 */
QString sizesText(const PlannedStep& step);

/** The name of a board's file, or those of the drill files that its layers are. */
QString sourceText(const PlannedStep& step);

/** What was assumed in a step, as one line with counts; empty: nothing. */
QString assumedText(const DrillDraft& draft);

/** What is not drilled, a line each: contours, back drills, holes on other layers. */
QStringList leftOut(const PlannedStep& step);

/** Chooses types by a text such as "drill:T3=press-fit" or "drill:0.8mm=via": for the tools of a
 *  layer that have a number in their file, or a finished size.
 *
 * @throws RulesError  also if no tool of the board is meant
 */
void chooseType(Job& job, const QString& text);

} // namespace brox

#endif
