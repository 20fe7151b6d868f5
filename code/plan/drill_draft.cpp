// SPDX-License-Identifier: MIT
#include "drill_draft.h"

#include <QRegularExpression>
#include <algorithm>
#include <cmath>

namespace brox {

namespace {

bool specifiesVias(const Board& board)
{
    const auto isVia = [](const Tool& tool) { return tool.type == HoleType::Via; };
    for (const Step& step : board.steps) {
        for (const Layer& layer : step.layers) {
            if (std::ranges::any_of(layer.tools, isVia)) {
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
                row.count = count;
                decide(row, *tools[i].tool);
            }
        }
    }

private:
    void decide(DraftRow& row, const Tool& tool) const
    {
        QStringList decisions;
        const bool isAsDrilled = mDraft.layers[row.layer].hasDrillSizes;
        row.finishedSize = isAsDrilled ? 0 : tool.finishedSize;
        const bool isTypeAssumed = decideType(row, tool, decisions);
        if (isAsDrilled) {
            row.flags << PlanFlag::AsDrilled;
        } else {
            decideTolerance(row, tool, decisions);
        }
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
        row.isTypeChosen = choice && choice->type != tool.type;
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
        const auto found = std::ranges::find_if(mJob.choices, [&](const TypeChoice& choice) {
            return choice.layer == mDraft.layers[row.layer].name && choice.tool.isLike(tool);
        });
        return found == mJob.choices.end() ? nullptr : &*found;
    }

    bool becomesVia(const DraftRow& row, const Tool& tool) const
    {
        return !mSpecifiesVias && !tool.functionTold && !row.isSlot && tool.type == HoleType::Plated
            && row.finishedSize > 0 && row.finishedSize <= mJob.rules.viasUpTo;
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
    draft.limits = job.rules.checks;
    draft.thickness = job.thickness ? job.thickness : job.board->thickness;
    draft.acceptances = job.acceptances;
    draft.layers = gatherLayers(*job.board, step);
    for (StepLayer& layer : draft.layers) {
        const auto chosen = job.drillSizes.find(layer.name);
        layer.hasDrillSizes = chosen == job.drillSizes.end() ? layer.hasDrillSizes : chosen->second;
    }
    Drafter drafter(job, draft);
    for (const bool areAsDrilled : {false, true}) {
        for (size_t layer = 0; layer < draft.layers.size(); ++layer) {
            if (draft.layers[layer].hasDrillSizes == areAsDrilled) {
                drafter.addRows(layer, false);
                drafter.addRows(layer, true);
            }
        }
    }
    return draft;
}

size_t DrillDraft::hostRows() const
{
    return size_t(std::ranges::count(rows, false, &DraftRow::isAsDrilled));
}

void chooseSizes(Job& job, const QString& text)
{
    const qsizetype equals = text.lastIndexOf('=');
    const QString name = equals < 0 ? QString() : text.left(equals);
    const QString word = text.sliced(equals + 1);
    if (word != "drilled" && word != "finished") {
        throw RulesError(
            PlanText::tr("\"%1\" is neither drilled nor finished, nor such as LAYER=drilled")
                .arg(text));
    }
    QStringList names;
    for (const Step& step : job.board->steps) {
        for (const Layer& layer : step.layers) {
            names << layer.name;
            if (equals < 0 || layer.name == name) {
                job.drillSizes[layer.name] = word == "drilled";
            }
        }
    }
    if (equals >= 0 && !names.contains(name)) {
        names.removeDuplicates();
        throw RulesError(
            PlanText::tr("no layer \"%1\"; there are: %2").arg(name, names.join(", ")));
    }
}

std::optional<std::pair<int, int>> copperNumbers(
    const Board& board, const std::optional<Span>& span)
{
    if (!span) {
        return std::nullopt;
    }
    bool areKnown = true;
    const auto numberOf = [&](const QString& layer) {
        const int known = int(board.copperLayers.indexOf(layer)) + 1;
        bool isNumber = known > 0;
        const int number = isNumber ? known : layer.toInt(&isNumber);
        areKnown = areKnown && isNumber;
        return number;
    };
    const std::pair<int, int> numbers = std::minmax({numberOf(span->from), numberOf(span->to)});
    return areKnown ? std::optional(numbers) : std::nullopt;
}

std::map<QString, bool> drillSizesOf(const PlannedStep& step)
{
    std::map<QString, bool> sizes;
    for (const StepLayer& layer : step.layers) {
        sizes[layer.name] = layer.hasDrillSizes;
    }
    return sizes;
}

QString sizesText(const PlannedStep& step)
{
    QStringList drilled;
    QStringList finished;
    for (const StepLayer& layer : step.layers) {
        (layer.hasDrillSizes ? drilled : finished) << layer.name;
    }
    return drilled.isEmpty() || finished.isEmpty()
        ? QString()
        : PlanText::tr("drill sizes: %1; finished sizes: %2")
              .arg(drilled.join(", "), finished.join(", "));
}

QString sourceText(const PlannedStep& step)
{
    if (!step.board->file.isEmpty()) {
        return step.board->file;
    }
    QStringList names;
    for (const StepLayer& layer : step.layers) {
        names << layer.name;
    }
    return names.join(", ");
}

QString assumedText(const DrillDraft& draft)
{
    QStringList parts;
    const auto add = [&](PlanFlag flag, const QString& text) {
        const auto count = std::ranges::count_if(
            draft.rows, [flag](const DraftRow& row) { return row.flags.contains(flag); });
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

namespace {

/** What is meant by "T3", "3", "0.8mm" or "31.5mil". */
struct Meant
{
    int number = 0; ///< 0: the size counts
    Size size = 0;

    explicit Meant(const QString& text)
    {
        static const QRegularExpression form(
            QStringLiteral("^(?:[Tt]?(\\d{1,9})|(\\d{1,3}(?:\\.\\d+)?) ?(mm|mil))$"));
        const QRegularExpressionMatch match = form.match(text);
        if (!match.hasMatch()) {
            throw RulesError(
                PlanText::tr("\"%1\" is neither a tool such as T3 nor a size such as 0.8mm")
                    .arg(text));
        }
        number = match.captured(1).toInt();
        size = Size(std::lround(match.captured(2).toDouble()
            * (match.captured(3) == "mil" ? sizePerMil : sizePerMillimetre)));
    }

    bool isLike(const Tool& tool) const
    {
        return number > 0 ? tool.number == number : tool.finishedSize == size;
    }
};

QString nameOf(const Tool& tool)
{
    return tool.number > 0
        ? QStringLiteral("T%1").arg(tool.number)
        : QStringLiteral("%1mm").arg(double(tool.finishedSize) / sizePerMillimetre);
}

} // namespace

void chooseType(Job& job, const QString& text)
{
    static const QRegularExpression form(QStringLiteral("^(.+):([^:=]+)=([^:=]+)$"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch()) {
        throw RulesError(PlanText::tr("\"%1\" is not such as LAYER:T3=press-fit").arg(text));
    }
    const HoleType type = holeTypeOf(match.captured(3).trimmed());
    const Meant meant(match.captured(2).trimmed());
    QStringList layers;
    QStringList tools;
    bool isFound = false;
    for (const Step& step : job.board->steps) {
        for (const Layer& layer : step.layers) {
            layers << layer.name;
            if (layer.name != match.captured(1)) {
                continue;
            }
            for (const Tool& tool : layer.tools) {
                tools << nameOf(tool);
                if (meant.isLike(tool)) {
                    Tool alike = tool;
                    alike.holes.clear();
                    alike.slotPaths.clear();
                    job.chooseType(layer.name, alike, type);
                    isFound = true;
                }
            }
        }
    }
    layers.removeDuplicates();
    tools.removeDuplicates();
    if (tools.isEmpty()) {
        throw RulesError(PlanText::tr("no layer \"%1\"; there are: %2")
                             .arg(match.captured(1), layers.join(", ")));
    }
    if (!isFound) {
        throw RulesError(PlanText::tr("no tool %1 in layer %2; there are: %3")
                             .arg(match.captured(2), match.captured(1), tools.join(", ")));
    }
}

} // namespace brox
