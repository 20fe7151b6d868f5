// SPDX-License-Identifier: MIT
#include "bits_list.h"

#include "data_file.h"

#include <QCoreApplication>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <cmath>

namespace brox {

namespace {

class ReadySetText
{
    Q_DECLARE_TR_FUNCTIONS(ReadySet)
};

constexpr double millimetresPerInch = 25.4;
constexpr double largest = 200; ///< millimetres, as the editor of bits takes them
constexpr qsizetype designationLength = 7; ///< what a host gets whole

/** Number drills #1 to #80, in ten-thousandths of an inch. */
constexpr int numberDrills[] = {2280, 2210, 2130, 2090, 2055, 2040, 2010, 1990, 1960, 1935, //
    1910, 1890, 1850, 1820, 1800, 1770, 1730, 1695, 1660, 1610, //
    1590, 1570, 1540, 1520, 1495, 1470, 1440, 1405, 1360, 1285, //
    1200, 1160, 1130, 1110, 1100, 1065, 1040, 1015, 995, 980, //
    960, 935, 890, 860, 820, 810, 785, 760, 730, 700, //
    670, 635, 595, 550, 520, 465, 430, 420, 410, 400, //
    390, 380, 370, 360, 350, 330, 320, 310, 292, 280, //
    260, 250, 240, 225, 210, 200, 180, 160, 145, 135};

/** Letter drills A to Z, in thousandths of an inch. */
constexpr int letterDrills[] = {234, 238, 242, 246, 250, 257, 261, 266, 272, 277, 281, 290, 295,
    302, 316, 323, 332, 339, 348, 358, 368, 377, 386, 397, 404, 413};

DrillBit inchBit(const QString& designation, double inches)
{
    return {designation, inches * millimetresPerInch, inches};
}

DrillBits starterSet()
{
    return bitsFromXml(DataFile::defaults(DataFile::Kind::Bits));
}

DrillBits metricSet()
{
    DrillBits bits;
    for (int size = 10; size <= 650; size += 5) { // hundredths of a millimetre
        bits << DrillBit{
            QString::number(size / 100.0, 'f', 2), size / 100.0, size / 100.0 / millimetresPerInch};
    }
    return bits;
}

DrillBits numberAndLetterSet()
{
    DrillBits bits;
    for (size_t number = std::size(numberDrills); number > 0; --number) {
        bits << inchBit(QStringLiteral("#%1").arg(number), numberDrills[number - 1] / 10000.0);
    }
    for (int i = 0; i < int(std::size(letterDrills)); ++i) {
        bits << inchBit(QString(QChar('A' + i)), letterDrills[i] / 1000.0);
    }
    return bits;
}

QString numberText(double number)
{
    return QString::number(number, 'g', 6); // as many digits as the module keeps
}

/** Cells of a line; those in quotation marks may hold the separator. */
QStringList cellsOf(const QString& line, QChar separator)
{
    QStringList cells(QString{});
    bool isQuoted = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QChar c = line[i];
        if (c == '"' && isQuoted && i + 1 < line.size() && line[i + 1] == '"') {
            cells.last() += line[++i];
        } else if (c == '"') {
            isQuoted = !isQuoted;
        } else if (c == separator && !isQuoted) {
            cells << QString();
        } else {
            cells.last() += c;
        }
    }
    for (QString& cell : cells) {
        cell = cell.trimmed();
    }
    return cells;
}

QString csvCell(QString text)
{
    return text.contains(QRegularExpression(QStringLiteral("[\",\r\n]")))
        ? '"' + text.replace('"', "\"\"") + '"'
        : text;
}

/** Reads lines of cells by the names in the first. */
class CsvReader
{
public:
    DrillBits read(const QByteArray& csv)
    {
        QString text = QString::fromUtf8(csv);
        if (text.startsWith(QChar::ByteOrderMark)) {
            text.remove(0, 1);
        }
        DrillBits bits;
        for (QString line : text.split('\n')) {
            ++mLine;
            line.remove('\r');
            if (line.trimmed().isEmpty()) {
                continue;
            }
            if (mColumns.isEmpty()) {
                readHeader(line);
            } else {
                bits << bitOf(cellsOf(line, mSeparator));
            }
        }
        if (mColumns.isEmpty()) {
            fail(ReadySetText::tr("no header such as designation,mm,inch,approved"));
        }
        return bits;
    }

private:
    [[noreturn]] void fail(const QString& what) const
    {
        throw BitsError(QStringLiteral("%1: %2").arg(mLine).arg(what));
    }

    void readHeader(const QString& line)
    {
        mSeparator = line.contains(';') ? ';' : line.contains('\t') ? '\t' : ',';
        const QStringList known{"designation", "mm", "inch", "approved"};
        const QStringList names = cellsOf(line.toLower(), mSeparator);
        for (qsizetype i = 0; i < names.size(); ++i) {
            if (!known.contains(names[i]) || mColumns.contains(names[i])) {
                fail(ReadySetText::tr("\"%1\" is an unknown or repeated column; there are: %2")
                         .arg(names[i], known.join(", ")));
            }
            mColumns[names[i]] = i;
        }
        if (!mColumns.contains("designation")
            || !(mColumns.contains("mm") || mColumns.contains("inch"))) {
            fail(ReadySetText::tr("the columns designation and mm or inch are needed"));
        }
    }

    QString cell(const QStringList& cells, const char* column) const
    {
        const auto at = mColumns.find(column);
        return at == mColumns.end() ? QString() : cells.value(*at);
    }

    std::optional<double> size(const QStringList& cells, const char* column, double most) const
    {
        QString text = cell(cells, column);
        if (text.isEmpty()) {
            return std::nullopt;
        }
        if (mSeparator != ',') {
            text.replace(',', '.');
        }
        bool isNumber = false;
        const double number = text.toDouble(&isNumber);
        if (!isNumber || !(number >= 0 && number <= most)) {
            fail(ReadySetText::tr("\"%1\" is no size from 0 to %2 %3")
                     .arg(cell(cells, column))
                     .arg(most, 0, 'g', 4)
                     .arg(QLatin1String(column)));
        }
        return number;
    }

    bool isApproved(const QStringList& cells) const
    {
        const QString text = cell(cells, "approved").toLower();
        if (text.isEmpty() || text == "yes" || text == "true" || text == "1") {
            return true;
        }
        if (text != "no" && text != "false" && text != "0") {
            fail(ReadySetText::tr("\"%1\" is neither yes nor no").arg(text));
        }
        return false;
    }

    DrillBit bitOf(const QStringList& cells) const
    {
        if (cells.size() > mColumns.size()) {
            fail(ReadySetText::tr("more cells than the header has"));
        }
        const auto mm = size(cells, "mm", largest);
        const auto inch = size(cells, "inch", largest / millimetresPerInch);
        if (!mm && !inch) {
            fail(ReadySetText::tr("a bit without a size"));
        }
        return {cell(cells, "designation"), mm ? *mm : *inch * millimetresPerInch,
            inch ? *inch : *mm / millimetresPerInch, isApproved(cells)};
    }

    qsizetype mLine = 0;
    QChar mSeparator;
    QMap<QString, qsizetype> mColumns;
};

const QString readyPrefix = QStringLiteral("ready:");

DrillBits readySet(const QString& key)
{
    QStringList keys;
    for (const ReadySet& set : readySets()) {
        if (key == QLatin1String(set.key)) {
            return set.bits();
        }
        keys << readyPrefix + QLatin1String(set.key);
    }
    throw BitsError(DataFile::tr("no ready set \"%1\"; there are: %2").arg(key, keys.join(", ")));
}

} // namespace

DrillBits bitsFromXml(const QByteArray& bytes)
{
    DrillBits bits;
    QXmlStreamReader xml(bytes);
    while (xml.readNextStartElement() || !xml.atEnd()) {
        if (xml.isStartElement() && xml.name() == QLatin1String("Drill")) {
            const QXmlStreamAttributes attributes = xml.attributes();
            bits << DrillBit{attributes.value("designation").toString(),
                attributes.value("millimeters").toDouble(), attributes.value("inches").toDouble(),
                attributes.value("approved") == QLatin1String("yes")};
        }
    }
    return bits;
}

QByteArray bitsToXml(const DrillBits& bits)
{
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    xml.writeStartElement("DrillSizeTable");
    for (const DrillBit& bit : bits) {
        xml.writeEmptyElement("Drill");
        xml.writeAttribute("designation", bit.designation);
        xml.writeAttribute("millimeters", numberText(bit.millimetres));
        xml.writeAttribute("inches", numberText(bit.inches));
        xml.writeAttribute("approved", bit.approved ? "yes" : "no");
    }
    xml.writeEndElement();
    return bytes + '\n';
}

DrillBits bitsFromCsv(const QByteArray& csv)
{
    return CsvReader().read(csv);
}

QByteArray bitsToCsv(const DrillBits& bits)
{
    QString text = QStringLiteral("designation,mm,inch,approved\n");
    for (const DrillBit& bit : bits) {
        text += QStringLiteral("%1,%2,%3,%4\n")
                    .arg(csvCell(bit.designation), numberText(bit.millimetres),
                        numberText(bit.inches), bit.approved ? "yes" : "no");
    }
    return text.toUtf8();
}

QStringList doubtsAbout(const DrillBits& bits)
{
    QStringList doubts;
    QMap<QString, int> counts;
    int unused = 0;
    for (const DrillBit& bit : bits) {
        ++counts[bit.designation];
        unused += bit.millimetres <= 0 && bit.inches <= 0;
    }
    for (auto i = counts.cbegin(); i != counts.cend(); ++i) {
        if (i.key().isEmpty()) {
            doubts << ReadySetText::tr("%n bit(s) without a designation", "", i.value());
            continue;
        }
        if (i.value() > 1) {
            doubts
                << ReadySetText::tr("%n bits have the designation %1", "", i.value()).arg(i.key());
        }
        if (i.key().toLocal8Bit().size() > designationLength) {
            doubts << ReadySetText::tr("%1 is longer than the %2 characters that a host takes")
                          .arg(i.key())
                          .arg(designationLength);
        }
    }
    if (unused > 0) {
        doubts << ReadySetText::tr("%n bit(s) without a size, which no job uses", "", unused);
    }
    return doubts;
}

const QList<ReadySet>& readySets()
{
    static const QList<ReadySet> sets{
        {"starter", QT_TRANSLATE_NOOP("ReadySet", "Metric and number drills (as delivered)"),
            starterSet},
        {"metric", QT_TRANSLATE_NOOP("ReadySet", "Metric, 0.10 to 6.50 mm in steps of 0.05 mm"),
            metricSet},
        {"inch", QT_TRANSLATE_NOOP("ReadySet", "Number and letter drills (#80 to Z)"),
            numberAndLetterSet}};
    return sets;
}

DrillBits readBits(const QString& name)
{
    if (name.startsWith(readyPrefix)) {
        return readySet(name.mid(readyPrefix.size()));
    }
    QFile file(name);
    if (!file.open(QFile::ReadOnly)) {
        throw BitsError(QStringLiteral("%1: %2").arg(name, file.errorString()));
    }
    try {
        const DrillBits bits = bitsFromCsv(file.readAll());
        if (bits.isEmpty()) {
            throw BitsError(DataFile::tr("1: no bits"));
        }
        return bits;
    } catch (const BitsError& error) {
        throw BitsError(QStringLiteral("%1:%2").arg(name, error.message()));
    }
}

DrillBits savedBits(const QString& dataDir)
{
    const DataFile file(dataDir, DataFile::Kind::Bits);
    const DataFile::Content content = file.read();
    if (!content.fault.isEmpty()) {
        throw BitsError(QStringLiteral("%1: %2").arg(file.path(), content.fault));
    }
    return bitsFromXml(content.bytes);
}

void replaceBits(const QString& dataDir, const DrillBits& bits)
{
    const DataFile file(dataDir, DataFile::Kind::Bits);
    const QString error = Backups(dataDir).replace(file, bitsToXml(bits));
    if (!error.isEmpty()) {
        throw BitsError(QStringLiteral("%1: %2").arg(file.path(), error));
    }
}

} // namespace brox
