// SPDX-License-Identifier: MIT
#ifndef DRILL_PLAN_H
#define DRILL_PLAN_H

#include "panel.h"

namespace brox {

/** What a model makes of a step: all that tables, drill programs, maps and reports tell. */

/** What a user should look at before drilling; the words are those of the tables. */
enum class PlanFlag
{
    OutOfTolerance, ///< "out-of-tolerance": the bit lies outside of the hole's tolerances
    NoBit, ///< "no-bit": the model uses bits and none fits
    NoSize, ///< "no-size": model and formula give none
    ToleranceAssumed, ///< "tolerance-assumed": by a rule of the shop
    TypeAssumed ///< "type-assumed": plating or kind was a guess or a rule's
};

/** Who says what type a tool has. */
enum class TypeBy
{
    Board,
    User,
    ViaRule ///< small plated holes are vias
};

/** The holes, or the slots, of a tool with the drill that a model gives them. */
struct PlanRow
{
    size_t layer = 0; ///< index in DrillPlan::layers
    size_t tool = 0; ///< index in that layer's tools
    bool isSlot = false;
    HoleType type = HoleType::Plated; ///< after the rules
    Tolerance tolerance; ///< after the rules; 0 and 0 where none applies
    Size finishedSize = 0; ///< 0: the board tells none
    qint64 count = 0; ///< repeats included
    std::optional<Size> drillSize; ///< null: PlanFlag::NoSize
    QString bit; ///< designation; empty if none was chosen
    QList<PlanFlag> flags; ///< in the order of the enumeration
    TypeBy typeBy = TypeBy::Board;
    QString rule; ///< what rule or user decided about the tool, one line; empty: nothing
    int programTool = 0; ///< its number in the layer's program, from 1; 0: no size, so none

    bool isPlated() const { return type != HoleType::NonPlated; }
};

struct PlanAmount
{
    QString holeType; ///< as the models file names it, such as "Pth"
    Size amount = 0;
    Size largeFrom = 0; ///< finished size from which largeAmount applies; 0: none
    Size largeAmount = 0;
};

struct DrillPlan
{
    const Board* board = nullptr; ///< outlives the plan
    size_t step = 0;
    Units units = Units::Metric; ///< in which sizes are told
    QString model;
    QString formula;
    bool usesBits = false;
    bool unsaved = false; ///< model or bits have edits that no file holds yet
    QList<PlanAmount> amounts;
    QStringList rules; ///< the shop's rules that are in force, a line each
    std::vector<StepLayer> layers; ///< pointers in it lie in the board
    std::vector<PlanRow> rows; ///< by layer, holes before slots, tool: as the viewer lists them

    const StepTool& tool(const PlanRow& row) const { return layers[row.layer].tools[row.tool]; }
    const Step& boardStep() const { return board->steps[step]; }
};

/** "out-of-tolerance" and so on. */
QString flagWord(PlanFlag flag);

/** Whether no one should drill before having looked. */
bool isAlarming(PlanFlag flag);
bool isAlarming(const PlanRow& row);

/** "Plated", "Non-plated", "Via", "Press-fit"; of slots "Plated slot", "Non-plated slot". */
QString typeWord(HoleType type, bool isSlot);

/** A size as a user reads it, in mils or microns, at most three decimals and no trailing zeros. */
QString sizeText(Size size, Units units);

/** "mil" or "micron", in the language of the program. */
QString unitName(Units units);

/** Numbers the tools of the drill programs: for each layer and plating from 1, by rising drill
 *  size and then by bit. Rows of one size and bit share a tool, holes and slots alike. */
void numberProgramTools(DrillPlan& plan);

/** What the plan does not drill, a line each: contours, back drills, holes on other layers. */
QStringList leftOut(const DrillPlan& plan);

} // namespace brox

#endif
