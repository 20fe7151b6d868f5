// SPDX-License-Identifier: MIT
#ifndef TEXT_TABLE_H
#define TEXT_TABLE_H

#include "board.h"

#include <QJsonArray>
#include <vector>

class QIODevice;

namespace brox {

/** What the tables of the command line share; no text drives a terminal. */

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

/** Lists of places in JSON, written one by one: as values they would take more memory than all else
 *  together. */
class LongLists
{
public:
    explicit LongLists(Units units)
        : mUnits(units)
    { }

    /** Stands for a list until it is written, as the member "places" of an object that may be
     *  anywhere in the document. Holes come before slots.
     *
     * @param holes, slotPaths  outlive the lists; may be null
     */
    QString add(const std::vector<Place>* holes, const std::vector<Path>* slotPaths);

    void write(QIODevice& file, const QJsonObject& json) const;

private:
    void writeList(QIODevice& file, size_t index) const;

    Units mUnits;
    std::vector<std::pair<const std::vector<Place>*, const std::vector<Path>*>> mLists;
};

} // namespace brox

#endif
