// SPDX-License-Identifier: MIT
#ifndef TEXT_TABLE_H
#define TEXT_TABLE_H

#include "board.h"

#include <QJsonArray>

namespace brox {

/** What the tables of the command line share. */

/** A line of comma-separated values; what a spreadsheet would take for a formula begins with an
 *  apostrophe. */
QString csvLine(QStringList cells);

/** The same for the names of columns, which stay as they are. */
QString csvHeader(QStringList cells);

/** Columns side by side.
 *
 * @param rows      the names of the columns first
 * @param isNumber  of each column: whether it stands to the right
 */
QString alignedText(QList<QStringList> rows, const std::vector<bool>& isNumber);

/** A size in some units, with all its digits. */
double sizeNumber(double size, Units units);

/** [x, y] */
QJsonArray placeJson(Place place, Units units);

} // namespace brox

#endif
