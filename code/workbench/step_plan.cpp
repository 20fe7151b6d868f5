// SPDX-License-Identifier: MIT
#include "step_plan.h"

#include "plan_text.h"

#include <algorithm>

namespace brox {

namespace {

/** What rule or user decided about a tool, one line; empty: nothing. */
QString ruleText(const PlanRow& row)
{
    const QString type = spoken(typeKey(row.type));
    QStringList acted;
    if (row.typeBy == TypeBy::User) {
        acted << PlanText::tr("%1 by the user").arg(type);
    } else if (row.typeBy == TypeBy::ViaRule) {
        acted << PlanText::tr("via by the rule for small plated holes");
    }
    if (row.flags.contains(PlanFlag::ToleranceAssumed)) {
        acted << PlanText::tr("%1 by the rule for %2").arg(toleranceText(row.tolerance), type);
    }
    return acted.join("; ");
}

/** What a host takes for a name, in bytes. */
constexpr qsizetype nameLength = 64;

bool tellsVias(const Board& board)
{
    const auto isVia = [](const Tool& tool) { return tool.type == HoleType::Via; };
    for (const Step& step : board.steps) {
        for (const Layer& layer : step.layers) {
            if (std::any_of(layer.tools.begin(), layer.tools.end(), isVia)) {
                return true;
            }
        }
    }
    return false;
}

/** Applies the rules of a shop to the tools of one step. */
class Drafter
{
public:
    Drafter(DrillPlan& plan, const ShopRules& rules, const QList<TypeChoice>& choices)
        : mPlan(plan)
        , mRules(rules)
        , mChoices(choices)
        , mTellsVias(tellsVias(*plan.board))
    { }

    void addRows(size_t layer, bool areSlots)
    {
        const std::vector<StepTool>& tools = mPlan.layers[layer].tools;
        for (size_t i = 0; i < tools.size(); ++i) {
            const qint64 count = areSlots ? tools[i].slotPaths : tools[i].holes;
            if (count > 0) {
                PlanRow& row = mPlan.rows.emplace_back();
                row.layer = layer;
                row.tool = i;
                row.isSlot = areSlots;
                row.finishedSize = tools[i].tool->finishedSize;
                row.count = count;
                rule(row, *tools[i].tool);
            }
        }
    }

private:
    void rule(PlanRow& row, const Tool& tool) const
    {
        bool isAssumed = tool.typeAssumed;
        row.type = tool.type;
        if (const TypeChoice* choice = choiceFor(row, tool)) {
            row.type = choice->type;
            isAssumed = false;
            row.typeBy = TypeBy::User;
        } else if (isViaByRule(row, tool)) {
            row.type = HoleType::Via;
            isAssumed = true;
            row.typeBy = TypeBy::ViaRule;
        }
        if (row.isSlot && row.type != HoleType::NonPlated) {
            row.type = HoleType::Plated;
        }
        if (tool.tolerance) {
            row.tolerance = *tool.tolerance;
        } else if (const ToleranceRule* assumed =
                       row.finishedSize > 0 ? mRules.find(row.type, row.finishedSize) : nullptr) {
            row.tolerance = assumed->tolerance;
            row.flags << PlanFlag::ToleranceAssumed;
        }
        if (isAssumed) {
            row.flags << PlanFlag::TypeAssumed;
        }
        row.rule = ruleText(row);
    }

    const TypeChoice* choiceFor(const PlanRow& row, const Tool& tool) const
    {
        const auto found =
            std::find_if(mChoices.begin(), mChoices.end(), [&](const TypeChoice& choice) {
                return choice.layer == mPlan.layers[row.layer].name && choice.tool.isLike(tool);
            });
        return found == mChoices.end() ? nullptr : &*found;
    }

    bool isViaByRule(const PlanRow& row, const Tool& tool) const
    {
        return !mTellsVias && !tool.functionTold && !row.isSlot && tool.type == HoleType::Plated
            && row.finishedSize <= mRules.viasUpTo;
    }

    DrillPlan& mPlan;
    const ShopRules& mRules;
    const QList<TypeChoice>& mChoices;
    bool mTellsVias;
};

QString shortened(QString name, const QString& end)
{
    while ((name + end).toUtf8().size() > nameLength) {
        name.chop(1);
    }
    return name + end;
}

qsizetype countFlag(const DrillPlan& plan, PlanFlag flag)
{
    return std::count_if(plan.rows.begin(), plan.rows.end(),
        [flag](const PlanRow& row) { return row.flags.contains(flag); });
}

} // namespace

DrillPlan draftPlan(
    const Board& board, size_t step, const ShopRules& rules, const QList<TypeChoice>& choices)
{
    DrillPlan plan;
    plan.board = &board;
    plan.step = step;
    plan.units = board.units;
    plan.rules = rules.lines();
    plan.layers = gatherLayers(board, step);
    Drafter drafter(plan, rules, choices);
    for (size_t layer = 0; layer < plan.layers.size(); ++layer) {
        drafter.addRows(layer, false);
        drafter.addRows(layer, true);
    }
    return plan;
}

QString hostLayerName(const DrillPlan& plan, const PlanRow& row)
{
    const QString& name = plan.layers[row.layer].name;
    if (!row.isSlot) {
        return name;
    }
    QString own = shortened(name, QStringLiteral(" slots"));
    const auto isTaken = [&](const StepLayer& layer) { return layer.name == own; };
    for (int i = 2; std::any_of(plan.layers.begin(), plan.layers.end(), isTaken); ++i) {
        own = shortened(name, QStringLiteral(" slots %1").arg(i));
    }
    return own;
}

QString assumedText(const DrillPlan& plan)
{
    QStringList parts;
    const auto add = [&](PlanFlag flag, const QString& text) {
        if (const qsizetype count = countFlag(plan, flag); count > 0) {
            parts << text.arg(count);
        }
    };
    add(PlanFlag::TypeAssumed, PlanText::tr("types (tools: %1)"));
    add(PlanFlag::ToleranceAssumed, PlanText::tr("tolerances (tools: %1)"));
    QStringList formats;
    for (const StepLayer& layer : plan.layers) {
        if (!layer.assumedFormat.isEmpty()) {
            formats << QStringLiteral("%1 (%2)").arg(layer.name, layer.assumedFormat);
        }
    }
    if (!formats.isEmpty()) {
        parts << PlanText::tr("digits of %1").arg(formats.join(", "));
    }
    return parts.isEmpty() ? QString() : PlanText::tr("assumed: %1").arg(parts.join(", "));
}

int strictRows(const DrillPlan& plan)
{
    return int(std::count_if(
        plan.rows.begin(), plan.rows.end(), [](const PlanRow& row) { return isAlarming(row); }));
}

} // namespace brox
