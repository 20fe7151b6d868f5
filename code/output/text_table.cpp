// SPDX-License-Identifier: MIT
#include "text_table.h"

#include "reading.h"

#include <QIODevice>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
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
    return printable(isFormula ? '\'' + cell : cell);
}

QString csvLine(QStringList cells)
{
    static const QRegularExpression special(QStringLiteral("[\",\r\n]"));
    for (QString& cell : cells) {
        if (cell.contains(special)) {
            cell = '"' + cell.replace('"', "\"\"") + '"';
        }
    }
    return cells.join(',') + '\n';
}

QStringList titlesOf(const Table& table)
{
    QStringList titles;
    for (const Table::Column& column : table.columns) {
        titles << column.title;
    }
    return titles;
}

/** A slot as its points; an arc has its centre between two of them. */
QJsonArray pathJson(const Path& path, Units units)
{
    QJsonArray json{QJsonObject{{"to", placeJson(path.start, units)}}};
    for (const Segment& segment : path.segments) {
        QJsonObject part{{"to", placeJson(segment.to, units)}};
        if (segment.shape != Segment::Shape::Line) {
            part["centre"] = placeJson(segment.centre, units);
            part["clockwise"] = segment.shape == Segment::Shape::Clockwise;
        }
        json << part;
    }
    return json;
}

} // namespace

QString csvText(const Table& table)
{
    return csvLine(titlesOf(table)) + csvRows(table.rows);
}

QString csvRows(const QList<QStringList>& rows)
{
    QString text;
    for (QStringList cells : rows) {
        std::ranges::transform(cells, cells.begin(), literal);
        text += csvLine(std::move(cells));
    }
    return text;
}

QString alignedText(const Table& table)
{
    QList<QStringList> rows{titlesOf(table)};
    rows += table.rows;
    QList<qsizetype> widths(table.columns.size(), 0);
    for (QStringList& row : rows) {
        for (qsizetype i = 0; i < row.size(); ++i) {
            row[i] = printable(row[i].simplified());
            widths[i] = qMax(widths[i], row[i].size());
        }
    }
    QString text;
    for (const QStringList& row : rows) {
        QString line;
        for (qsizetype i = 0; i < row.size(); ++i) {
            line += (table.columns[i].isNumber ? row[i].rightJustified(widths[i])
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

QString LongLists::add(const std::vector<Place>* holes, const std::vector<Path>* slotPaths)
{
    mLists.emplace_back(holes, slotPaths);
    return QString::number(mLists.size() - 1);
}

/** No text can hold what stands for a list: its quotation marks would be escaped. */
void LongLists::write(QIODevice& file, const QJsonObject& json) const
{
    QByteArray text = QJsonDocument(json).toJson();
    for (char16_t code = 0x7f; code <= 0x9f; ++code) { // terminals obey these, and Qt keeps them
        text.replace(QString(QChar(code)).toUtf8(),
            QStringLiteral("\\u%1").arg(code, 4, 16, QChar('0')).toLatin1());
    }
    const QByteArray key("\"places\": \"");
    qsizetype written = 0;
    for (qsizetype at = text.indexOf(key); at >= 0; at = text.indexOf(key, written)) {
        const qsizetype number = at + key.size();
        const qsizetype end = text.indexOf('"', number);
        file.write(text.constData() + written, number - 1 - written);
        writeList(file, text.mid(number, end - number).toULongLong());
        written = end + 1;
    }
    file.write(text.constData() + written, text.size() - written);
}

void LongLists::writeList(QIODevice& file, size_t index) const
{
    const auto number = [this](Size size) {
        return QByteArray::number(sizeNumber(size, mUnits), 'g', QLocale::FloatingPointShortest);
    };
    const auto& [holes, slotPaths] = mLists[index];
    const char* before = "\n";
    file.write("[");
    for (size_t i = 0; holes && i < holes->size(); ++i) {
        const Place hole = (*holes)[i];
        file.write(before + ('[' + number(hole.x)) + ',' + number(hole.y) + ']');
        before = ",\n";
    }
    for (size_t i = 0; slotPaths && i < slotPaths->size(); ++i) {
        file.write(before
            + QJsonDocument(pathJson((*slotPaths)[i], mUnits)).toJson(QJsonDocument::Compact));
        before = ",\n";
    }
    file.write("\n]");
}

} // namespace brox
