// SPDX-License-Identifier: MIT
#include "drill_plan.h"

#include "plan_text.h"

#include <algorithm>
#include <map>
#include <set>

namespace brox {

namespace {

using ProgramTool = std::pair<Size, QString>; ///< drill size and bit

/** The drills of a file: one for each layer and plating. */
std::map<std::pair<size_t, bool>, std::set<ProgramTool>> drillsByFile(const DrillPlan& plan)
{
    std::map<std::pair<size_t, bool>, std::set<ProgramTool>> drills;
    for (const PlanRow& row : plan.rows) {
        if (row.drillSize) {
            drills[{row.layer, row.isPlated()}].insert({*row.drillSize, row.bit});
        }
    }
    return drills;
}

} // namespace

QString flagWord(PlanFlag flag)
{
    switch (flag) {
    case PlanFlag::OutOfTolerance:
        return QT_TRANSLATE_NOOP("PlanText", "out-of-tolerance");
    case PlanFlag::NoBit:
        return QT_TRANSLATE_NOOP("PlanText", "no-bit");
    case PlanFlag::NoSize:
        return QT_TRANSLATE_NOOP("PlanText", "no-size");
    case PlanFlag::ToleranceAssumed:
        return QT_TRANSLATE_NOOP("PlanText", "tolerance-assumed");
    case PlanFlag::TypeAssumed:
        return QT_TRANSLATE_NOOP("PlanText", "type-assumed");
    }
    return {};
}

bool isAlarming(PlanFlag flag)
{
    return flag == PlanFlag::OutOfTolerance || flag == PlanFlag::NoBit || flag == PlanFlag::NoSize;
}

bool isAlarming(const PlanRow& row)
{
    return std::any_of(
        row.flags.begin(), row.flags.end(), [](PlanFlag flag) { return isAlarming(flag); });
}

QString typeWord(HoleType type, bool isSlot)
{
    if (isSlot) {
        return type == HoleType::NonPlated ? QT_TRANSLATE_NOOP("PlanText", "Non-plated slot")
                                           : QT_TRANSLATE_NOOP("PlanText", "Plated slot");
    }
    switch (type) {
    case HoleType::Plated:
        return QT_TRANSLATE_NOOP("PlanText", "Plated");
    case HoleType::NonPlated:
        return QT_TRANSLATE_NOOP("PlanText", "Non-plated");
    case HoleType::Via:
        return QT_TRANSLATE_NOOP("PlanText", "Via");
    case HoleType::PressFit:
        return QT_TRANSLATE_NOOP("PlanText", "Press-fit");
    }
    return {};
}

QString sizeText(Size size, Units units)
{
    const double unit = units == Units::Inch ? sizePerMil : sizePerMicron;
    QString text = QString::number(size / unit, 'f', 3);
    while (text.endsWith('0')) {
        text.chop(1);
    }
    return text.endsWith('.') ? text.chopped(1) : text;
}

QString unitName(Units units)
{
    return units == Units::Inch ? PlanText::tr("mil") : PlanText::tr("micron");
}

void numberProgramTools(DrillPlan& plan)
{
    const auto drills = drillsByFile(plan);
    for (PlanRow& row : plan.rows) {
        if (row.drillSize) {
            const std::set<ProgramTool>& file = drills.at({row.layer, row.isPlated()});
            const auto own = file.find({*row.drillSize, row.bit});
            row.programTool = int(std::distance(file.begin(), own)) + 1;
        }
    }
}

QStringList leftOut(const DrillPlan& plan)
{
    qint64 contours = 0;
    qint64 backDrills = 0;
    for (const StepLayer& layer : plan.layers) {
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
    add(holesLeftOut(*plan.board, plan.step),
        PlanText::tr("holes left out: %1 (on layers that are not drilled)"));
    return lines;
}

} // namespace brox
