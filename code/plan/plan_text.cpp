// SPDX-License-Identifier: MIT
#include "plan_text.h"

namespace brox {

QString flagWord(PlanFlag flag)
{
    switch (flag) {
    case PlanFlag::OutOfTolerance:
        return QT_TRANSLATE_NOOP("PlanText", "out-of-tolerance");
    case PlanFlag::NoBit:
        return QT_TRANSLATE_NOOP("PlanText", "no-bit");
    case PlanFlag::NoSize:
        return QT_TRANSLATE_NOOP("PlanText", "no-size");
    case PlanFlag::UnapprovedBit:
        return QT_TRANSLATE_NOOP("PlanText", "unapproved-bit");
    case PlanFlag::ToleranceAssumed:
        return QT_TRANSLATE_NOOP("PlanText", "tolerance-assumed");
    case PlanFlag::TypeAssumed:
        return QT_TRANSLATE_NOOP("PlanText", "type-assumed");
    case PlanFlag::DigitsDoubtful:
        return QT_TRANSLATE_NOOP("PlanText", "digits-doubtful");
    case PlanFlag::AsDrilled:
        return QT_TRANSLATE_NOOP("PlanText", "as-drilled");
    case PlanFlag::Merged:
        return QT_TRANSLATE_NOOP("PlanText", "merged");
    }
    return {};
}

bool isAlarming(PlanFlag flag)
{
    return flag == PlanFlag::OutOfTolerance || flag == PlanFlag::NoBit || flag == PlanFlag::NoSize
        || flag == PlanFlag::UnapprovedBit || flag == PlanFlag::DigitsDoubtful;
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

QString typeKey(HoleType type)
{
    switch (type) {
    case HoleType::Plated:
        return QT_TRANSLATE_NOOP("PlanText", "plated");
    case HoleType::NonPlated:
        return QT_TRANSLATE_NOOP("PlanText", "nonplated");
    case HoleType::Via:
        return QT_TRANSLATE_NOOP("PlanText", "via");
    case HoleType::PressFit:
        return QT_TRANSLATE_NOOP("PlanText", "press-fit");
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

} // namespace brox
