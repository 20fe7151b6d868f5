// SPDX-License-Identifier: MIT
#include "text_table.h"

#include <QRegularExpression>
#include <algorithm>

namespace brox {

namespace {

/** A cell that a spreadsheet does not take for a formula. */
QString literal(const QString& cell)
{
    bool isNumeric = false;
    cell.toDouble(&isNumeric);
    const bool isFormula =
        !isNumeric && !cell.isEmpty() && QStringLiteral("=+-@").contains(cell.front());
    return isFormula ? '\'' + cell : cell;
}

} // namespace

QString csvLine(QStringList cells)
{
    std::transform(cells.begin(), cells.end(), cells.begin(), literal);
    return csvHeader(std::move(cells));
}

QString csvHeader(QStringList cells)
{
    static const QRegularExpression special(QStringLiteral("[\",\r\n]"));
    for (QString& cell : cells) {
        if (cell.contains(special)) {
            cell = '"' + cell.replace('"', "\"\"") + '"';
        }
    }
    return cells.join(',') + '\n';
}

QString alignedText(QList<QStringList> rows, const std::vector<bool>& isNumber)
{
    QList<qsizetype> widths(rows.first().size(), 0);
    for (QStringList& row : rows) {
        for (qsizetype i = 0; i < row.size(); ++i) {
            row[i] = row[i].simplified();
            widths[i] = qMax(widths[i], row[i].size());
        }
    }
    QString text;
    for (const QStringList& row : rows) {
        QString line;
        for (qsizetype i = 0; i < row.size(); ++i) {
            line += (isNumber[size_t(i)] ? row[i].rightJustified(widths[i])
                                         : row[i].leftJustified(widths[i]))
                + "  ";
        }
        while (line.endsWith(' ')) {
            line.chop(1);
        }
        text += line + '\n';
    }
    return text;
}

double sizeNumber(double size, Units units)
{
    return size / double(units == Units::Inch ? sizePerMil : sizePerMicron);
}

QJsonArray placeJson(Place place, Units units)
{
    return {sizeNumber(place.x, units), sizeNumber(place.y, units)};
}

} // namespace brox
