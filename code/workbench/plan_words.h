// SPDX-License-Identifier: MIT
#ifndef PLAN_WORDS_H
#define PLAN_WORDS_H

#include <QString>

/** A word of plans as windows say it, in their language. Tables, programs and reports say it in
 *  English. */
QString spoken(const QString& word);

#endif
