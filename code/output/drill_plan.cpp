// SPDX-License-Identifier: MIT
#include "drill_plan.h"

#include <algorithm>
#include <map>
#include <set>

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

QString inEnglish(const QString& text)
{
    return text;
}

QString flagWord(PlanFlag flag)
{
    switch (flag) {
    case PlanFlag::OutOfTolerance:
        return QStringLiteral("out-of-tolerance");
    case PlanFlag::NoBit:
        return QStringLiteral("no-bit");
    case PlanFlag::NoSize:
        return QStringLiteral("no-size");
    case PlanFlag::ToleranceAssumed:
        return QStringLiteral("tolerance-assumed");
    case PlanFlag::TypeAssumed:
        return QStringLiteral("type-assumed");
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
        return type == HoleType::NonPlated ? QStringLiteral("Non-plated slot")
                                           : QStringLiteral("Plated slot");
    }
    switch (type) {
    case HoleType::Plated:
        return QStringLiteral("Plated");
    case HoleType::NonPlated:
        return QStringLiteral("Non-plated");
    case HoleType::Via:
        return QStringLiteral("Via");
    case HoleType::PressFit:
        return QStringLiteral("Press-fit");
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

QStringList leftOut(const DrillPlan& plan, const Say& say)
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
    const auto add = [&](qint64 count, const char* text) {
        if (count > 0) {
            lines << say(text).arg(count);
        }
    };
    add(contours, QT_TRANSLATE_NOOP("PlanWords", "contours left out: %1 (no slots of one width)"));
    add(backDrills,
        QT_TRANSLATE_NOOP(
            "PlanWords", "back drills left out: %1 (the fabricator chooses their tools)"));
    add(plan.boardStep().holesLeftOut,
        QT_TRANSLATE_NOOP("PlanWords", "holes left out: %1 (on layers that are not drilled)"));
    return lines;
}
