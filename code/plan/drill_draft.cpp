// SPDX-License-Identifier: MIT
#include "drill_draft.h"

#include <algorithm>

namespace brox {

namespace {

bool specifiesVias(const Board& board)
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

/** Applies rules and choices to the tools of one step. */
class Drafter
{
public:
    Drafter(const Job& job, DrillDraft& draft)
        : mJob(job)
        , mDraft(draft)
        , mSpecifiesVias(specifiesVias(*job.board))
    { }

    void addRows(size_t layer, bool areSlots)
    {
        const std::vector<StepTool>& tools = mDraft.layers[layer].tools;
        for (size_t i = 0; i < tools.size(); ++i) {
            const qint64 count = areSlots ? tools[i].slotPaths : tools[i].holes;
            if (count > 0) {
                DraftRow& row = mDraft.rows.emplace_back();
                row.layer = layer;
                row.tool = i;
                row.isSlot = areSlots;
                row.finishedSize = tools[i].tool->finishedSize;
                row.count = count;
                decide(row, *tools[i].tool);
            }
        }
    }

private:
    void decide(DraftRow& row, const Tool& tool) const
    {
        QStringList decisions;
        const bool isTypeAssumed = decideType(row, tool, decisions);
        decideTolerance(row, tool, decisions);
        if (isTypeAssumed) {
            row.flags << PlanFlag::TypeAssumed;
        }
        if (mDraft.layers[row.layer].formatDoubtful) {
            row.flags << PlanFlag::DigitsDoubtful;
        }
        row.rule = decisions.join("; ");
    }

    /** Whether the type is a guess. */
    bool decideType(DraftRow& row, const Tool& tool, QStringList& decisions) const
    {
        const TypeChoice* choice = choiceFor(row, tool);
        const bool isViaByRule = !choice && becomesVia(row, tool);
        row.type = choice ? choice->type : isViaByRule ? HoleType::Via : tool.type;
        if (row.isSlot && row.type != HoleType::NonPlated) {
            row.type = HoleType::Plated;
        }
        if (choice) {
            decisions << PlanText::tr("%1 by the user").arg(spoken(typeKey(row.type)));
        } else if (isViaByRule) {
            decisions << PlanText::tr("via by the rule for small plated holes");
        }
        return !choice && (tool.typeAssumed || isViaByRule);
    }

    void decideTolerance(DraftRow& row, const Tool& tool, QStringList& decisions) const
    {
        const ToleranceRule* rule = tool.tolerance || row.finishedSize <= 0
            ? nullptr
            : mJob.rules.find(row.type, row.finishedSize);
        row.tolerance = rule ? rule->tolerance : tool.tolerance.value_or(Tolerance());
        if (rule) {
            row.flags << PlanFlag::ToleranceAssumed;
            decisions << PlanText::tr("%1 by the rule for %2")
                             .arg(toleranceText(row.tolerance), spoken(typeKey(row.type)));
        }
    }

    const TypeChoice* choiceFor(const DraftRow& row, const Tool& tool) const
    {
        const auto found =
            std::find_if(mJob.choices.begin(), mJob.choices.end(), [&](const TypeChoice& choice) {
                return choice.layer == mDraft.layers[row.layer].name && choice.tool.isLike(tool);
            });
        return found == mJob.choices.end() ? nullptr : &*found;
    }

    bool becomesVia(const DraftRow& row, const Tool& tool) const
    {
        return !mSpecifiesVias && !tool.functionTold && !row.isSlot && tool.type == HoleType::Plated
            && row.finishedSize <= mJob.rules.viasUpTo;
    }

    const Job& mJob;
    DrillDraft& mDraft;
    bool mSpecifiesVias;
};

} // namespace

Job::Job(Board ownBoard, ShopRules shopRules)
    : board(std::make_shared<const Board>(std::move(ownBoard)))
    , rules(std::move(shopRules))
{ }

void Job::chooseType(const QString& layer, const Tool& tool, std::optional<HoleType> type)
{
    choices.removeIf([&](const TypeChoice& choice) {
        return choice.layer == layer && choice.tool.isLike(tool);
    });
    if (type) {
        choices << TypeChoice{layer, tool, *type};
    }
}

std::vector<DrillDraft> Job::drafts() const
{
    std::vector<DrillDraft> drafts;
    for (size_t step = 0; step < board->steps.size(); ++step) {
        drafts.push_back(draftStep(*this, step));
    }
    return drafts;
}

DrillDraft draftStep(const Job& job, size_t step)
{
    DrillDraft draft;
    draft.board = job.board;
    draft.step = step;
    draft.units = job.board->units;
    draft.rules = job.rules.lines();
    draft.layers = gatherLayers(*job.board, step);
    Drafter drafter(job, draft);
    for (size_t layer = 0; layer < draft.layers.size(); ++layer) {
        drafter.addRows(layer, false);
        drafter.addRows(layer, true);
    }
    return draft;
}

QString assumedText(const DrillDraft& draft)
{
    QStringList parts;
    const auto add = [&](PlanFlag flag, const QString& text) {
        const auto count = std::count_if(draft.rows.begin(), draft.rows.end(),
            [flag](const DraftRow& row) { return row.flags.contains(flag); });
        if (count > 0) {
            parts << text.arg(count);
        }
    };
    add(PlanFlag::TypeAssumed, PlanText::tr("types (tools: %1)"));
    add(PlanFlag::ToleranceAssumed, PlanText::tr("tolerances (tools: %1)"));
    QStringList formats;
    for (const StepLayer& layer : draft.layers) {
        if (!layer.assumedFormat.isEmpty()) {
            formats << QStringLiteral("%1 (%2)").arg(layer.name, layer.assumedFormat);
        }
    }
    if (!formats.isEmpty()) {
        parts << PlanText::tr("digits of %1").arg(formats.join(", "));
    }
    return parts.isEmpty() ? QString() : PlanText::tr("assumed: %1").arg(parts.join(", "));
}

QStringList leftOut(const PlannedStep& step)
{
    qint64 contours = 0;
    qint64 backDrills = 0;
    for (const StepLayer& layer : step.layers) {
        contours += layer.contours;
        for (const StepTool& tool : layer.backDrills) {
            backDrills += tool.holes;
        }
    }
    QStringList lines;
    const auto add = [&lines](qint64 count, const QString& text) {
        if (count > 0) {
            lines << text.arg(count);
        }
    };
    add(contours, PlanText::tr("contours left out: %1 (no slots of one width)"));
    add(backDrills, PlanText::tr("back drills left out: %1 (the fabricator chooses their tools)"));
    add(holesLeftOut(*step.board, step.step),
        PlanText::tr("holes left out: %1 (on layers that are not drilled)"));
    return lines;
}

} // namespace brox
