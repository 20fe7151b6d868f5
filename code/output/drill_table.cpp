// SPDX-License-Identifier: MIT
#include "drill_table.h"

#include "drill_plan.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <algorithm>

namespace brox {

namespace {

QString flagsText(const PlanRow& row)
{
    QStringList words;
    for (const PlanFlag flag : row.flags) {
        words << flagWord(flag);
    }
    return words.join(' ');
}

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
        row.programTool > 0 ? QString::number(row.programTool) : QString(), flagsText(row)};
}

/** A cell that a spreadsheet does not take for a formula. */
QString literal(const QString& cell)
{
    bool isNumeric = false;
    cell.toDouble(&isNumeric);
    const bool isFormula =
        !isNumeric && !cell.isEmpty() && QStringLiteral("=+-@").contains(cell.front());
    return isFormula ? '\'' + cell : cell;
}

QString csvLine(QStringList line)
{
    static const QRegularExpression special(QStringLiteral("[\",\r\n]"));
    for (QString& cell : line) {
        if (cell.contains(special)) {
            cell = '"' + cell.replace('"', "\"\"") + '"';
        }
    }
    return line.join(',') + '\n';
}

/** A size in the plan's units, with all its digits. */
double number(Size size, Units units)
{
    return size / double(units == Units::Inch ? sizePerMil : sizePerMicron);
}

QJsonObject layerJson(const StepLayer& layer, Units units)
{
    QJsonArray backDrills;
    for (const StepTool& tool : layer.backDrills) {
        backDrills << QJsonObject{
            {"finishedSize", number(tool.tool->finishedSize, units)}, {"count", tool.holes}};
    }
    QJsonObject json{{"name", layer.name}, {"contours", layer.contours}, {"backDrills", backDrills},
        {"assumedFormat", layer.assumedFormat}};
    if (layer.span) {
        json["span"] = QJsonArray{layer.span->from, layer.span->to};
    }
    return json;
}

QJsonArray placeJson(Place place, Units units)
{
    return {number(place.x, units), number(place.y, units)};
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
    const auto size = [&plan](Size value) { return number(value, plan.units); };
    QJsonArray flags;
    for (const PlanFlag flag : row.flags) {
        flags << flagWord(flag);
    }
    return {{"layer", plan.layers[row.layer].name}, {"type", typeWord(row.type, row.isSlot)},
        {"slots", row.isSlot}, {"count", row.count}, {"fileTool", plan.tool(row).tool->number},
        {"finishedSize", size(row.finishedSize)}, {"minusTolerance", size(row.tolerance.minus)},
        {"plusTolerance", size(row.tolerance.plus)},
        {"drillSize", row.drillSize ? QJsonValue(size(*row.drillSize)) : QJsonValue()},
        {"bit", row.bit},
        {"tool", row.programTool > 0 ? QJsonValue(row.programTool) : QJsonValue()},
        {"flags", flags}, {"rule", row.rule}};
}

} // namespace

QString planText(const DrillPlan& plan)
{
    QList<QStringList> rows = {columns(plan.units)};
    for (const PlanRow& row : plan.rows) {
        rows << cells(plan, row, plan.units);
    }
    QList<qsizetype> widths(rows.first().size(), 0);
    for (QStringList& row : rows) {
        for (qsizetype i = 0; i < row.size(); ++i) {
            row[i] = row[i].simplified();
            widths[i] = qMax(widths[i], row[i].size());
        }
    }
    QString text;
    for (const QStringList& row : rows) {
        QString line;
        for (qsizetype i = 0; i < row.size(); ++i) {
            line +=
                (isNumber(i) ? row[i].rightJustified(widths[i]) : row[i].leftJustified(widths[i]))
                + "  ";
        }
        while (line.endsWith(' ')) {
            line.chop(1);
        }
        text += line + '\n';
    }
    return text;
}

QString planCsvHeader(Units units, const QString& before)
{
    const QStringList names = columns(units);
    return csvLine(before.isEmpty() ? names : QStringList(before) + names);
}

QString planCsvRows(const DrillPlan& plan, Units units, const QString& before)
{
    QString text;
    for (const PlanRow& row : plan.rows) {
        QStringList line = cells(plan, row, units);
        if (!before.isNull()) {
            line.prepend(before);
        }
        std::transform(line.begin(), line.end(), line.begin(), literal);
        text += csvLine(line);
    }
    return text;
}

QByteArray planJson(const DrillPlan& plan, bool withPlaces)
{
    const std::vector<RowPlaces> places = withPlaces ? placesOf(plan) : std::vector<RowPlaces>();
    QJsonArray amounts;
    for (const ModelAmount& amount : plan.model.amounts) {
        amounts << QJsonObject{{"holeType", amount.holeType},
            {"amount", number(amount.amount, plan.units)},
            {"largeFrom", number(amount.largeFrom, plan.units)},
            {"largeAmount", number(amount.largeAmount, plan.units)}};
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
    const QJsonObject json{{"job", plan.board->job}, {"step", plan.boardStep().name},
        {"unit", plan.units == Units::Inch ? "mil" : "micron"}, {"model", plan.model.name},
        {"formula", plan.model.formula}, {"usesBits", plan.model.usesBits},
        {"unsaved", plan.model.unsaved}, {"modelsFile", fileState(plan.model)},
        {"amounts", amounts}, {"rules", QJsonArray::fromStringList(plan.rules)}, {"layers", layers},
        {"rows", rows}, {"leftOut", QJsonArray::fromStringList(leftOut(plan))},
        {"notes", QJsonArray::fromStringList(plan.board->notes)}};
    return QJsonDocument(json).toJson();
}

} // namespace brox
