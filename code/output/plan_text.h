// SPDX-License-Identifier: MIT
#ifndef PLAN_TEXT_H
#define PLAN_TEXT_H

#include <QCoreApplication>

namespace brox {

/** What plans, maps, reports and failing exports tell the user, in the language of the program. */
class PlanText
{
    Q_DECLARE_TR_FUNCTIONS(PlanText)
};

/** A word of tables in the language of the program. Tables and drill programs themselves have it in
 *  English whatever the language, since other programs read them. */
inline QString spoken(const QString& word)
{
    return PlanText::tr(word.toUtf8().constData());
}

} // namespace brox

#endif
