// SPDX-License-Identifier: MIT
#ifndef STEP_PLAN_H
#define STEP_PLAN_H

#include "drill_plan.h"
#include "shop_rules.h"

namespace brox {

/** A type that the user has chosen for a tool, for this board only. */
struct TypeChoice
{
    QString layer;
    Tool tool; ///< without holes and slots; those that are like it are meant
    HoleType type = HoleType::Plated;
};

/** A step's tools after the rules of the shop, without drills yet.
 *
 * Rows come by layer, holes before slots, then by tool: the order in which a host's layers hold
 * them. Layers and pointers lie in the board, which outlives the plan.
 *
 * @throws PanelError
 */
DrillPlan draftPlan(
    const Board& board, size_t step, const ShopRules& rules, const QList<TypeChoice>& choices = {});

/** A row's tool as a host's layer has it: all slots of a layer are on another one. */
QString hostLayerName(const DrillPlan& plan, const PlanRow& row);

/** What was assumed in a step, as one line with counts; empty: nothing. */
QString assumedText(const DrillPlan& plan);

/** How many rows are flagged so that they must not be drilled unseen. */
int strictRows(const DrillPlan& plan);

} // namespace brox

#endif
