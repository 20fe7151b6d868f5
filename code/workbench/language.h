// SPDX-License-Identifier: MIT
#ifndef LANGUAGE_H
#define LANGUAGE_H

#include <QString>
#include <QStringList>

namespace brox {

/** The first language of the system's that there is a catalogue for. */
QString systemLanguage();

/** The catalogue of the module's texts in a language; null for "en" or none, which need none.
 *
 * @throws HostError  if there is no such language
 */
QString moduleCatalogue(const QString& language);

/** Lets windows speak a language from now on: the workbench's texts, Qt's own, dates and counts. */
void speak(const QString& language);

/** Where a file lies that comes with the program: in the build tree, else as installed. */
QString sharePath(const QString& name);

/** "did you mean ENIG?", or "there are: ENIG, HASL" if no name is near. */
QString hintFor(const QString& name, const QStringList& known);

} // namespace brox

#endif
