// SPDX-License-Identifier: MIT
#include "plan_text.h"

namespace brox {

namespace {

/** By the enumerations. */
constexpr const char* flagWords[] = {QT_TRANSLATE_NOOP("PlanText", "out-of-tolerance"),
    QT_TRANSLATE_NOOP("PlanText", "no-bit"), QT_TRANSLATE_NOOP("PlanText", "no-size"),
    QT_TRANSLATE_NOOP("PlanText", "unapproved-bit"),
    QT_TRANSLATE_NOOP("PlanText", "tolerance-assumed"),
    QT_TRANSLATE_NOOP("PlanText", "type-assumed"), QT_TRANSLATE_NOOP("PlanText", "digits-doubtful"),
    QT_TRANSLATE_NOOP("PlanText", "as-drilled"), QT_TRANSLATE_NOOP("PlanText", "merged")};
static_assert(std::size(flagWords) == size_t(PlanFlag::Merged) + 1);

constexpr const char* typeWords[] = {QT_TRANSLATE_NOOP("PlanText", "Plated"),
    QT_TRANSLATE_NOOP("PlanText", "Non-plated"), QT_TRANSLATE_NOOP("PlanText", "Via"),
    QT_TRANSLATE_NOOP("PlanText", "Press-fit")};
constexpr const char* typeKeys[] = {QT_TRANSLATE_NOOP("PlanText", "plated"),
    QT_TRANSLATE_NOOP("PlanText", "nonplated"), QT_TRANSLATE_NOOP("PlanText", "via"),
    QT_TRANSLATE_NOOP("PlanText", "press-fit")};
static_assert(std::size(typeWords) == size_t(HoleType::PressFit) + 1);
static_assert(std::size(typeKeys) == std::size(typeWords));

} // namespace

QString flagWord(PlanFlag flag)
{
    return QString::fromLatin1(flagWords[size_t(flag)]);
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
    return QString::fromLatin1(typeWords[size_t(type)]);
}

QString typeKey(HoleType type)
{
    return QString::fromLatin1(typeKeys[size_t(type)]);
}

QString shortNumber(double number)
{
    QString text = QString::number(number, 'f', 3);
    while (text.endsWith('0')) {
        text.chop(1);
    }
    if (text.endsWith('.')) {
        text.chop(1);
    }
    return text == "-0" ? QStringLiteral("0") : text;
}

QString sizeText(Size size, Units units)
{
    return shortNumber(double(size) / (units == Units::Inch ? sizePerMil : sizePerMicron));
}

QString unitName(Units units)
{
    return units == Units::Inch ? PlanText::tr("mil") : PlanText::tr("micron");
}

} // namespace brox
