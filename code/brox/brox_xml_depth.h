// SPDX-License-Identifier: MIT
#ifndef BROX_XML_DEPTH_H
#define BROX_XML_DEPTH_H

#include <QByteArray>
#include <QString>

/** Whether the elements of an XML text nest deeper than a document of ours ever would.
 *
 * A document object model is destroyed by recursion, so a file of many thousand levels would
 * exhaust the stack; it has to be refused before it is built. A text that is no XML is not
 * judged here.
 *
 * @param error         what the log says of it
 * @param line, column  where the level is that is one too many, from 1 on
 */
bool nestsTooDeeply(const QByteArray& xml, QString* error, int* line, int* column);

#endif
