// SPDX-License-Identifier: MIT
#include "default_data.h"
#include "fixture.h"

#include <QDir>
#include <QRegularExpression>

#include <cmath>

namespace {

const QStringList types = {"Pth", "Via", "Laser", "Photo", "PressFit", "NPth"};

using Row = QMap<QString, QString>; ///< cells by column

/** The rows of all tables of the guide that tell of drill sizes. */
QList<Row> exampleRows()
{
    QFile page(DOCS "/user-guide.md");
    QList<Row> rows;
    QStringList columns;
    const auto lines = page.open(QFile::ReadOnly) ? page.readAll().split('\n') : QByteArrayList();
    for (const QByteArray& line : lines) {
        if (!line.startsWith('|')) {
            columns.clear();
            continue;
        }
        QStringList cells = QString::fromUtf8(line).remove('`').split('|');
        cells = cells.mid(1, cells.size() - 2).replaceInStrings(QRegularExpression("^ +| +$"), "");
        if (columns.isEmpty()) {
            columns = cells;
        } else if (columns.contains("DHS") && !cells[0].startsWith("--")) {
            Row row;
            for (int i = 0; i < columns.size(); ++i) {
                row[columns[i]] = cells.value(i);
            }
            rows.append(row);
        }
    }
    return rows;
}

/** The bits of a row, which bear their size as designation. */
QByteArray bitsOf(const QString& sizes)
{
    QByteArrayList bits;
    for (const QString& size : sizes.split(", ")) {
        bits.append(bitXml(size.toLatin1(), QByteArray::number(size.toDouble() / 1000)));
    }
    return bitsXml(bits);
}

} // namespace

/** Computes the numbers of the user guide through the host's function and in the test table. */
class GuideTest : public QObject
{
    Q_OBJECT

private slots:
    void examples_data();
    void examples();
};

void GuideTest::examples_data()
{
    QTest::addColumn<Row>("row");
    const QList<Row> rows = exampleRows();
    QVERIFY(rows.size() > 20);
    for (const Row& row : rows) {
        QTest::addRow("%s", qPrintable(row.values().join(" "))) << row;
    }
}

void GuideTest::examples()
{
    QFETCH(Row, row);
    const bool isInch = row.contains("FHS [mil]");
    const int unit = isInch ? 10160 : 400;
    const QString bits = row["Bits"];

    Host host(isInch ? Host::Inch : Host::Metric);
    QCOMPARE(createDefaultData(QDir::cleanPath(host.path(".."))), QString());
    QString models = QString::fromUtf8(host.read("brox.xml"));
    if (row.contains("Formula")) {
        models.replace(QRegularExpression("text=\"[^\"]*\""), "text=\"" + row["Formula"] + '"');
    }
    if (bits == "off") {
        models.replace("use_bit_file=\"yes\"", "use_bit_file=\"no\"");
    } else if (!bits.isEmpty()) {
        host.write("brox_drill_bits.xml", bitsOf(bits));
    }
    host.write("brox.xml", models.toUtf8());

    const QStringList hole = {row[isInch ? "FHS [mil]" : "FHS"], row["MIN TOL"], row["MAX TOL"]};
    const auto size = [&](int i) { return int(std::lround(hole[i].toDouble() * unit)); };
    const int type = int(types.indexOf(row["Type"]));
    static const QPair<int, int> toolTypes[] = {{0, 0}, {2, 0}, {0, 1}, {0, 2}, {0, 3}, {1, 0}};
    QVERIFY(type >= 0);
    const QString model = row.value("Model", "ENIG");
    const Host::Drill drill = host.drill(
        model.toUtf8(), size(0), size(1), size(2), toolTypes[type].first, toolTypes[type].second);
    QCOMPARE(drill.status, 0);
    QCOMPARE(QString::number(double(drill.size) / unit, 'g', 5), row["DHS"]);
    QCOMPARE(QString(drill.bit), row["Drill Des."]);

    auto* list = child<QTableWidget>(host.viewer(), "broxModelTableWidget");
    list->setCurrentCell(findRow(list, 0, model), 0);
    auto* tester = child<QTableWidget>(host.viewer(), "testerTableWidget");
    for (int i = 2; i >= 0; --i) {
        typeInto(tester, type, i, hole[i].isEmpty() ? "0" : hole[i]);
    }
    QCOMPARE(cellText(tester, type, 4), row["Drill Des."]);
    const bool isRed = tester->item(type, 4)->foreground().color() == Qt::red;
    QCOMPARE(isRed && !drill.bit.isEmpty(), row["Red"] == "yes");
}

QTEST_MAIN(GuideTest)
#include "tst_guide.moc"
