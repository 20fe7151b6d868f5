// SPDX-License-Identifier: MIT
#ifndef TEXT_TABLE_H
#define TEXT_TABLE_H

#include "board.h"

#include <QJsonArray>
#include <vector>

class QIODevice;

namespace brox {

/** Tables as the command line and reports have them; no text drives a terminal. */

struct Table
{
    struct Column
    {
        QString title;
        bool isNumber = false; ///< stands to the right
        bool wraps = true; ///< where lines are as long as the paper allows
    };

    QList<Column> columns;
    QList<QStringList> rows;
};

/** Columns side by side. */
QString alignedText(const Table& table);

/** Comma-separated values; what a spreadsheet would take for a formula begins with an apostrophe,
 *  but for the names of columns, which stay as they are. */
QString csvText(const Table& table);
QString csvRows(const QList<QStringList>& rows);

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
