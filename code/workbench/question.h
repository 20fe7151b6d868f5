// SPDX-License-Identifier: MIT
#ifndef QUESTION_H
#define QUESTION_H

#include <QString>
#include <QStringList>

namespace brox {

/** Puts a question over the window in front.
 *
 * @param text     what the matter is, one sentence
 * @param details  what follows from each answer
 * @param answers  texts of the buttons; the last is the default and what Escape gives
 * @return index of the answer
 */
qsizetype ask(const QString& text, const QString& details, const QStringList& answers);

} // namespace brox

#endif
