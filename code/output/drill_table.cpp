// SPDX-License-Identifier: MIT
#include "drill_table.h"

#include "comparison_text.h"
#include "text_table.h"

namespace brox {

namespace {

QStringList columns(Units units)
{
    const auto size = [units](const char* name) {
        return QStringLiteral("%1 [%2]").arg(
            QLatin1String(name), units == Units::Inch ? "mil" : "micron");
    };
    return {"Layer", "Type", "Count", size("FHS"), size("-Tol"), size("+Tol"), size("DHS"), "Bit",
        "Tool", "Flags"};
}

bool isNumber(qsizetype column)
{
    return (column >= 2 && column <= 6) || column == 8;
}

QStringList cells(const DrillPlan& plan, const PlanRow& row, Units units)
{
    return {plan.layers[row.layer].name, typeWord(row.type, row.isSlot), QString::number(row.count),
        sizeText(row.finishedSize, units), sizeText(row.tolerance.minus, units),
        sizeText(row.tolerance.plus, units),
        row.drillSize ? sizeText(*row.drillSize, units) : QString(), row.bit,
        row.programTool > 0 ? QString::number(row.programTool) : QString(),
        flagTexts(row).join(' ')};
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

/** A slot as its points; an arc has its centre between two of them. */
QJsonArray pathJson(const Path& path, Units units)
{
    QJsonArray json{QJsonObject{{"to", placeJson(path.start, units)}}};
    for (const Segment& segment : path.segments) {
        QJsonObject part{{"to", placeJson(segment.to, units)}};
        if (segment.shape != Segment::Shape::Line) {
            part["centre"] = placeJson(segment.centre, units);
            part["clockwise"] = segment.shape == Segment::Shape::Clockwise;
        }
        json << part;
    }
    return json;
}

QJsonArray placesJson(const RowPlaces& places, Units units)
{
    QJsonArray json;
    for (const Place& hole : places.holes) {
        json << placeJson(hole, units);
    }
    for (const Path& path : places.slotPaths) {
        json << pathJson(path, units);
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
    QList<QStringList> rows = {columns(plan.units)};
    for (const PlanRow& row : plan.rows) {
        rows << cells(plan, row, plan.units);
    }
    std::vector<bool> numbers;
    for (qsizetype i = 0; i < rows.first().size(); ++i) {
        numbers.push_back(isNumber(i));
    }
    return alignedText(std::move(rows), numbers);
}

QString planCsvHeader(Units units, const QString& before)
{
    const QStringList names = columns(units);
    return csvHeader(before.isEmpty() ? names : QStringList(before) + names);
}

QString planCsvRows(const DrillPlan& plan, Units units, const QString& before)
{
    QString text;
    for (const PlanRow& row : plan.rows) {
        QStringList line = cells(plan, row, units);
        if (!before.isNull()) {
            line.prepend(before);
        }
        text += csvLine(line);
    }
    return text;
}

QJsonObject planJson(const DrillPlan& plan, bool withPlaces)
{
    const std::vector<RowPlaces> places = withPlaces ? placesOf(plan) : std::vector<RowPlaces>();
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
            row["places"] = placesJson(places[i], plan.units);
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
        json["comparison"] = comparisonJson(*plan.comparison, plan.units, withPlaces);
    }
    return json;
}

} // namespace brox
