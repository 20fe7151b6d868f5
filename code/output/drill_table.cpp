// SPDX-License-Identifier: MIT
#include "drill_table.h"

#include "comparison_text.h"
#include "text_table.h"

#include <algorithm>

namespace brox {

namespace {

/** Without rows. */
Table planTable(Units units)
{
    const auto size = [units](const char* name) {
        return Table::Column{QStringLiteral("%1 [%2]").arg(
                                 QLatin1String(name), units == Units::Inch ? "mil" : "micron"),
            true};
    };
    return {{{"Layer"}, {"Type"}, {"Count", true}, size("FHS"), size("-Tol"), size("+Tol"),
                size("DHS"), {"Bit"}, {"Tool", true}, {"Flags"}},
        {}};
}

QList<QStringList> cellsOf(const DrillPlan& plan, Units units)
{
    QList<QStringList> rows;
    for (const PlanRow& row : plan.rows) {
        rows << QStringList{plan.layers[row.layer].name, typeWord(row.type, row.isSlot),
            QString::number(row.count), sizeText(row.finishedSize, units),
            sizeText(row.tolerance.minus, units), sizeText(row.tolerance.plus, units),
            row.drillSize ? sizeText(*row.drillSize, units) : QString(), row.bit,
            row.programTool > 0 ? QString::number(row.programTool) : QString(),
            flagTexts(row).join(' ')};
    }
    return rows;
}

QJsonObject layerJson(const StepLayer& layer, Units units)
{
    QJsonArray backDrills;
    for (const StepTool& tool : layer.backDrills) {
        backDrills << QJsonObject{
            {"finishedSize", sizeNumber(tool.tool->finishedSize, units)}, {"count", tool.holes}};
    }
    QJsonObject json{{"name", layer.name}, {"contours", layer.contours}, {"backDrills", backDrills},
        {"assumedFormat", layer.assumedFormat}, {"drillSizes", layer.hasDrillSizes}};
    if (layer.span) {
        json["span"] = QJsonArray{layer.span->from, layer.span->to};
    }
    return json;
}

QJsonObject rowJson(const DrillPlan& plan, const PlanRow& row)
{
    const auto size = [&plan](Size value) { return sizeNumber(value, plan.units); };
    QJsonArray flags;
    for (const PlanFlag flag : row.flags) {
        flags << flagWord(flag);
    }
    QJsonObject json{{"layer", plan.layers[row.layer].name},
        {"type", typeWord(row.type, row.isSlot)}, {"slots", row.isSlot}, {"count", row.count},
        {"fileTool", plan.tool(row).tool->number}, {"finishedSize", size(row.finishedSize)},
        {"minusTolerance", size(row.tolerance.minus)}, {"plusTolerance", size(row.tolerance.plus)},
        {"drillSize", row.drillSize ? QJsonValue(size(*row.drillSize)) : QJsonValue()},
        {"bit", row.bit},
        {"tool", row.programTool > 0 ? QJsonValue(row.programTool) : QJsonValue()},
        {"flags", flags}, {"rule", row.rule}};
    if (row.replaced) {
        json["was"] =
            QJsonObject{{"drillSize", size(row.replaced->size)}, {"bit", row.replaced->bit}};
    }
    return json;
}

} // namespace

QString planText(const DrillPlan& plan)
{
    Table table = planTable(plan.units);
    table.rows = cellsOf(plan, plan.units);
    return alignedText(table);
}

QString planCsvHeader(Units units, const QString& before)
{
    Table table = planTable(units);
    if (!before.isEmpty()) {
        table.columns.prepend({before});
    }
    return csvText(table);
}

QString planCsvRows(const DrillPlan& plan, Units units, const QString& before)
{
    QList<QStringList> rows = cellsOf(plan, units);
    for (QStringList& row : rows) {
        if (!before.isNull()) {
            row.prepend(before);
        }
    }
    return csvRows(rows);
}

namespace {

const QList<Table::Column> findingColumns{{"Finding"}, {"Hard"}, {"Layer"}, {"Tools"}, {"X", true},
    {"Y", true}, {"Measured", true}, {"Limit", true}, {"Id"}};

QStringList cells(const DrillPlan& plan, const CheckFinding& finding)
{
    const Place place = finding.places.empty() ? Place{} : finding.places.front();
    return {checkWord(finding.check), isHard(finding.check) ? "yes" : "no",
        plan.layers[finding.layer].name, findingTools(plan, finding), sizeText(place.x, plan.units),
        sizeText(place.y, plan.units), measureText(finding.check, finding.measured, plan.units),
        measureText(finding.check, finding.limit, plan.units), finding.id};
}

Table tableOf(const DrillPlan& plan, const std::vector<CheckFinding>& findings)
{
    Table table{findingColumns, {}};
    for (const CheckFinding& finding : findings) {
        table.rows << cells(plan, finding);
    }
    return table;
}

Table tableOf(const DrillPlan& plan, const std::vector<AcceptedFinding>& findings)
{
    Table table{findingColumns + QList<Table::Column>{{"Reason"}, {"Until"}}, {}};
    for (const AcceptedFinding& each : findings) {
        table.rows << cells(plan, each.finding)
                + QStringList{each.reason, each.until.toString(Qt::ISODate)};
    }
    return table;
}

double number(Check check, double value, Units units)
{
    return measuresSizes(check) ? sizeNumber(value, units) : value;
}

QJsonObject findingJson(const DrillPlan& plan, const CheckFinding& finding)
{
    QJsonArray tools;
    QJsonArray layers;
    for (const size_t row : finding.rows) {
        tools << plan.rows[row].programTool;
        layers << plan.layers[plan.rows[row].layer].name;
    }
    QJsonArray places;
    for (const Place& place : finding.places) {
        places << placeJson(place, plan.units);
    }
    return {{"rule", checkWord(finding.check)}, {"hard", isHard(finding.check)},
        {"layer", plan.layers[finding.layer].name}, {"tools", tools}, {"layers", layers},
        {"places", places}, {"measured", number(finding.check, finding.measured, plan.units)},
        {"limit", number(finding.check, finding.limit, plan.units)}, {"id", finding.id}};
}

QStringList skippedLines(const CheckFindings& findings)
{
    // Checks that share a reason share a line.
    QList<std::pair<QString, QStringList>> reasons;
    for (const SkippedCheck& skipped : findings.skipped) {
        auto known = std::ranges::find_if(
            reasons, [&](const auto& reason) { return reason.first == skipped.reason; });
        if (known == reasons.end()) {
            known = reasons.insert(reasons.end(), {skipped.reason, {}});
        }
        known->second << spoken(checkWord(skipped.check));
    }
    QStringList lines;
    for (const auto& [reason, checks] : reasons) {
        lines << PlanText::tr("not checked: %1 (%2)").arg(checks.join(", "), reason);
    }
    return lines;
}

} // namespace

QString findingsText(const DrillPlan& plan, const CheckFindings& findings)
{
    QString text = findings.list.empty() ? QStringLiteral("no findings\n")
                                         : alignedText(tableOf(plan, findings.list));
    if (!findings.accepted.empty()) {
        text += "\naccepted:\n" + alignedText(tableOf(plan, findings.accepted));
    }
    const QStringList notes = findingsNotes(findings);
    return text + (notes.isEmpty() ? QString() : '\n' + notes.join('\n') + '\n');
}

QString findingsCsv(const DrillPlan& plan, const CheckFindings& findings)
{
    return csvText(tableOf(plan, findings.list))
        + (findings.accepted.empty() ? QString()
                                     : '\n' + csvText(tableOf(plan, findings.accepted)));
}

QStringList findingsNotes(const CheckFindings& findings)
{
    QStringList lines = skippedLines(findings) + findings.notes;
    if (findings.doubledHits > 0) {
        lines << PlanText::tr("hits of a tool at places that it has been to: %1 (drilled once)")
                     .arg(findings.doubledHits);
    }
    return lines;
}

namespace {

void addFindings(QJsonObject& json, const DrillPlan& plan, const CheckFindings& findings)
{
    QJsonArray list;
    for (const CheckFinding& finding : findings.list) {
        list << findingJson(plan, finding);
    }
    QJsonArray accepted;
    for (const AcceptedFinding& each : findings.accepted) {
        QJsonObject finding = findingJson(plan, each.finding);
        finding["reason"] = each.reason;
        finding["until"] = each.until.toString(Qt::ISODate);
        accepted << finding;
    }
    QJsonArray skipped;
    for (const SkippedCheck& each : findings.skipped) {
        skipped << checkWord(each.check);
    }
    json["findings"] = list;
    json["acceptedFindings"] = accepted;
    json["skippedChecks"] = skipped;
    json["checkNotes"] = QJsonArray::fromStringList(findingsNotes(findings));
    json["doubledHits"] = findings.doubledHits;
}

} // namespace

void writePlanJson(
    QIODevice& file, const DrillPlan& plan, const CheckFindings* findings, bool withPlaces)
{
    const std::vector<RowPlaces> places = withPlaces ? placesOf(plan) : std::vector<RowPlaces>();
    LongLists lists(plan.units);
    QJsonArray amounts;
    for (const ModelAmount& amount : plan.model.amounts) {
        amounts << QJsonObject{{"holeType", amount.holeType},
            {"amount", sizeNumber(amount.amount, plan.units)},
            {"largeFrom", sizeNumber(amount.largeFrom, plan.units)},
            {"largeAmount", sizeNumber(amount.largeAmount, plan.units)}};
    }
    QJsonArray layers;
    for (const StepLayer& layer : plan.layers) {
        layers << layerJson(layer, plan.units);
    }
    QJsonArray rows;
    for (size_t i = 0; i < plan.rows.size(); ++i) {
        QJsonObject row = rowJson(plan, plan.rows[i]);
        if (withPlaces) {
            row["places"] = lists.add(&places[i].holes, &places[i].slotPaths);
        }
        rows << row;
    }
    QJsonObject json{{"job", plan.board->job}, {"step", plan.boardStep().name},
        {"unit", plan.units == Units::Inch ? "mil" : "micron"}, {"model", plan.model.name},
        {"formula", plan.model.formula}, {"usesBits", plan.model.usesBits},
        {"unsaved", plan.model.unsaved}, {"modelsFile", fileState(plan.model)},
        {"amounts", amounts}, {"rules", QJsonArray::fromStringList(plan.rules)}, {"layers", layers},
        {"rows", rows}, {"tools", plan.toolCount()}, {"toolsBefore", plan.toolsBefore()},
        {"leftOut", QJsonArray::fromStringList(leftOut(plan))},
        {"notes", QJsonArray::fromStringList(plan.board->notes)}};
    if (plan.comparison) {
        json["comparison"] =
            comparisonJson(*plan.comparison, plan.units, withPlaces ? &lists : nullptr);
    }
    if (findings) {
        addFindings(json, plan, *findings);
    }
    lists.write(file, json);
}

} // namespace brox
