// SPDX-License-Identifier: MIT
#include "finding_table.h"

#include "text_table.h"

#include <algorithm>

namespace brox {

namespace {

const QStringList columns{"Finding", "Hard", "Layer", "Tools", "X", "Y", "Measured", "Limit", "Id"};

QStringList cells(const DrillPlan& plan, const CheckFinding& finding)
{
    const Place place = finding.places.empty() ? Place{} : finding.places.front();
    return {checkWord(finding.check), isHard(finding.check) ? "yes" : "no",
        plan.layers[finding.layer].name, findingTools(plan, finding), sizeText(place.x, plan.units),
        sizeText(place.y, plan.units), measureText(finding.check, finding.measured, plan.units),
        measureText(finding.check, finding.limit, plan.units), finding.id};
}

QStringList acceptedCells(const DrillPlan& plan, const AcceptedFinding& accepted)
{
    return cells(plan, accepted.finding)
        + QStringList{accepted.reason, accepted.until.toString(Qt::ISODate)};
}

QString aligned(QList<QStringList> rows)
{
    return alignedText(
        std::move(rows), {false, false, false, false, true, true, true, true, false, false, false});
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
        known->second << checkWord(skipped.check);
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
    QString text;
    if (findings.list.empty()) {
        text = "no findings\n";
    } else {
        QList<QStringList> rows{columns};
        for (const CheckFinding& finding : findings.list) {
            rows << cells(plan, finding);
        }
        text = aligned(std::move(rows));
    }
    if (!findings.accepted.empty()) {
        QList<QStringList> rows{columns + QStringList{"Reason", "Until"}};
        for (const AcceptedFinding& accepted : findings.accepted) {
            rows << acceptedCells(plan, accepted);
        }
        text += "\naccepted:\n" + aligned(std::move(rows));
    }
    const QStringList notes = findingsNotes(findings);
    return text + (notes.isEmpty() ? QString() : '\n' + notes.join('\n') + '\n');
}

QString findingsCsv(const DrillPlan& plan, const CheckFindings& findings)
{
    QString text = csvHeader(columns);
    for (const CheckFinding& finding : findings.list) {
        text += csvLine(cells(plan, finding));
    }
    if (!findings.accepted.empty()) {
        text += '\n' + csvHeader(columns + QStringList{"Reason", "Until"});
        for (const AcceptedFinding& accepted : findings.accepted) {
            text += csvLine(acceptedCells(plan, accepted));
        }
    }
    return text;
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

} // namespace brox
