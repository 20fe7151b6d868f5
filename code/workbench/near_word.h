// SPDX-License-Identifier: MIT
#ifndef NEAR_WORD_H
#define NEAR_WORD_H

#include <QStringList>

namespace brox {

/** The one of some names that a misspelt one stands for; empty if none is near. */
QString nearWord(const QString& name, const QStringList& known);

/** "did you mean ENIG?", or "there are: ENIG, HASL" if no name is near. */
QString hintFor(const QString& name, const QStringList& known);

} // namespace brox

#endif
