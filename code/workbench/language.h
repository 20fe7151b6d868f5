// SPDX-License-Identifier: MIT
#ifndef LANGUAGE_H
#define LANGUAGE_H

#include <QString>

namespace brox {

/** The languages that there are catalogues for, by code, such as "de"; "en" is always one. */
QStringList languages();

/** The first language of the system's that there is a catalogue for. */
QString systemLanguage();

/** The catalogue of the module's texts in a language; null for "en" or none, which need none.
 *
 * @throws HostError  if there is no such language
 */
QString moduleCatalogue(const QString& language);

/** Lets windows speak a language from now on: the workbench's texts and Qt's own. */
void speak(const QString& language);

} // namespace brox

#endif
