// SPDX-License-Identifier: MIT
#include "findings.h"

#include <algorithm>

namespace brox {

QString checkWord(Check check)
{
    switch (check) {
    case Check::SamePlace:
        return QStringLiteral("same-place");
    case Check::Overlap:
        return QStringLiteral("overlap");
    case Check::TooNear:
        return QStringLiteral("too-near");
    case Check::Outside:
        return QStringLiteral("outside");
    case Check::Edge:
        return QStringLiteral("edge");
    case Check::TooLarge:
        return QStringLiteral("too-large");
    case Check::ShortSlot:
        return QStringLiteral("short-slot");
    case Check::Aspect:
        return QStringLiteral("aspect");
    case Check::Window:
        return QStringLiteral("window");
    case Check::Closing:
        return QStringLiteral("closing");
    case Check::Count:
        return QStringLiteral("count");
    case Check::Scale:
        return QStringLiteral("scale");
    }
    return {};
}

QString checkText(Check check)
{
    switch (check) {
    case Check::SamePlace:
        return PlanText::tr("different tools at one place");
    case Check::Overlap:
        return PlanText::tr("drilled areas overlap");
    case Check::TooNear:
        return PlanText::tr("too near to each other");
    case Check::Outside:
        return PlanText::tr("not within the outline");
    case Check::Edge:
        return PlanText::tr("too near to the edge");
    case Check::TooLarge:
        return PlanText::tr("drill too large");
    case Check::ShortSlot:
        return PlanText::tr("slot too short for its width");
    case Check::Aspect:
        return PlanText::tr("hole too deep for its drill");
    case Check::Window:
        return PlanText::tr("tolerance too narrow");
    case Check::Closing:
        return PlanText::tr("drill smaller than the plated hole");
    case Check::Count:
        return PlanText::tr("other number of hits than a comment");
    case Check::Scale:
        return PlanText::tr("other scale than the other files");
    }
    return {};
}

bool isHard(Check check)
{
    switch (check) {
    case Check::SamePlace:
    case Check::Overlap:
    case Check::Outside:
    case Check::Count:
    case Check::Scale:
        return true;
    default:
        return false;
    }
}

bool measuresSizes(Check check)
{
    switch (check) {
    case Check::ShortSlot:
    case Check::Aspect:
    case Check::Count:
    case Check::Scale:
        return false;
    default:
        return true;
    }
}

qsizetype CheckFindings::hardCount() const
{
    return std::ranges::count_if(
        list, [](const CheckFinding& finding) { return isHard(finding.check); });
}

QString measureText(Check check, double value, Units units)
{
    if (measuresSizes(check)) {
        return sizeText(Size(std::clamp(value, -2e9, 2e9)), units);
    }
    return QString::number(value, 'g', check == Check::Count ? 12 : 4);
}

QString findingTools(const DrillPlan& plan, const CheckFinding& finding)
{
    QStringList tools;
    for (const size_t index : finding.rows) {
        const PlanRow& row = plan.rows[index];
        const QString number = QString::number(row.programTool);
        tools << (row.layer == finding.layer
                ? number
                : QStringLiteral("%1/%2").arg(plan.layers[row.layer].name, number));
    }
    return tools.join(' ');
}

} // namespace brox
