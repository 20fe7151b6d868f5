// SPDX-License-Identifier: MIT
#include "plan_words.h"

#include <QCoreApplication>

namespace {

/** For the catalogues; the words themselves come from elsewhere. */
[[maybe_unused]] constexpr const char* words[] = {QT_TRANSLATE_NOOP("PlanWords", "Plated"),
    QT_TRANSLATE_NOOP("PlanWords", "Non-plated"), QT_TRANSLATE_NOOP("PlanWords", "Via"),
    QT_TRANSLATE_NOOP("PlanWords", "Press-fit"), QT_TRANSLATE_NOOP("PlanWords", "Plated slot"),
    QT_TRANSLATE_NOOP("PlanWords", "Non-plated slot"), QT_TRANSLATE_NOOP("PlanWords", "plated"),
    QT_TRANSLATE_NOOP("PlanWords", "nonplated"), QT_TRANSLATE_NOOP("PlanWords", "via"),
    QT_TRANSLATE_NOOP("PlanWords", "press-fit"), QT_TRANSLATE_NOOP("PlanWords", "out-of-tolerance"),
    QT_TRANSLATE_NOOP("PlanWords", "no-bit"), QT_TRANSLATE_NOOP("PlanWords", "no-size"),
    QT_TRANSLATE_NOOP("PlanWords", "tolerance-assumed"),
    QT_TRANSLATE_NOOP("PlanWords", "type-assumed")};

} // namespace

QString spoken(const QString& word)
{
    return QCoreApplication::translate("PlanWords", word.toUtf8().constData());
}
