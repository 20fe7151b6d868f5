// SPDX-License-Identifier: MIT
#include "data_start.h"
#include "fixture.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>

#include <cmath>

using namespace brox;

namespace {

const QString models = QStringLiteral("brox.xml");
const QString bits = QStringLiteral("brox_drill_bits.xml");

QString page(const QString& name)
{
    QFile file(DOCS "/" + name);
    return file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/** The page's example of a file: the one with its root. */
QString exampleOf(const QString& name)
{
    const QString root = name == models ? "DrillToolModels" : "DrillSizeTable";
    const QRegularExpression block(
        "```xml\n(<" + root + ">.*?)```", QRegularExpression::DotMatchesEverythingOption);
    return block.match(page("file-formats.md")).captured(1);
}

bool isValid(const QString& name, const QByteArray& content)
{
    QProcess xmllint;
    const QString schema = DOCS "/schemas/" + QString(name).replace(".xml", ".rng");
    xmllint.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    xmllint.start(XMLLINT, {"--noout", "--relaxng", schema, "-"});
    xmllint.write(content);
    xmllint.closeWriteChannel();
    return xmllint.waitForFinished() && xmllint.exitCode() == 0;
}

using Row = QMap<QString, QString>; ///< cells by column

/** The rows of the guide's tables that have drill sizes. */
QList<Row> guideRows()
{
    QList<Row> rows;
    QStringList columns;
    for (QString line : page("user-guide.md").split('\n')) {
        QStringList cells = line.remove('`').split('|');
        for (QString& cell : cells) {
            cell = cell.trimmed();
        }
        if (cells.size() < 3) {
            columns.clear();
        } else if (columns.isEmpty()) {
            columns = cells;
        } else if (columns.contains("DHS") && !cells[1].startsWith("--")) {
            Row& row = rows.emplaceBack();
            for (int i = 0; i < columns.size(); ++i) {
                row[columns[i]] = cells.value(i);
            }
        }
    }
    return rows;
}

/** The bits of a row, which bear their size in microns as designation. */
QByteArray bitsOf(const QString& sizes)
{
    QByteArrayList list;
    for (const QString& size : sizes.split(", ")) {
        list << bitXml(size.toLatin1(), QByteArray::number(size.toDouble() / 1000));
    }
    return bitsXml(list);
}

} // namespace

/** What the pages say of numbers and files against what the module does. */
class ExamplesTest : public QObject
{
    Q_OBJECT

private slots:
    void guide_data()
    {
        QTest::addColumn<Row>("row");
        const QList<Row> rows = guideRows();
        QVERIFY(rows.size() > 20);
        for (const Row& row : rows) {
            QTest::addRow("%s", qPrintable(row.values().join(" "))) << row;
        }
    }

    void guide()
    {
        QFETCH(Row, row);
        const bool isInch = row.contains("FHS [mil]");
        const int unit = isInch ? 10160 : 400;
        Host host(isInch ? Host::Inch : Host::Metric);
        DataStart::fill(QDir::cleanPath(host.path("..")));
        QString content = host.read(models);
        if (row.contains("Formula")) {
            content.replace(
                QRegularExpression("text=\"[^\"]*\""), "text=\"" + row["Formula"] + '"');
        }
        if (row["Bits"] == "off") {
            content.replace("use_bit_file=\"yes\"", "use_bit_file=\"no\"");
        } else if (!row["Bits"].isEmpty()) {
            host.write(bits, bitsOf(row["Bits"]));
        }
        host.write(models, content.toUtf8());

        const QStringList hole = {
            row[isInch ? "FHS [mil]" : "FHS"], row["MIN TOL"], row["MAX TOL"]};
        const auto size = [&](int i) { return int(std::lround(hole[i].toDouble() * unit)); };
        const QStringList types = {"Pth", "Via", "Laser", "Photo", "PressFit", "NPth"};
        constexpr int toolTypes[][2] = {{0, 0}, {2, 0}, {0, 1}, {0, 2}, {0, 3}, {1, 0}};
        const int type = int(types.indexOf(row["Type"]));
        QVERIFY(type >= 0);
        const QString model = row.value("Model", "ENIG");
        const Host::Drill drill = host.drill(
            model.toUtf8(), size(0), size(1), size(2), toolTypes[type][0], toolTypes[type][1]);
        QCOMPARE(drill.status, 0);
        QCOMPARE(QString::number(double(drill.size) / unit, 'g', 5), row["DHS"]);
        QCOMPARE(QString(drill.bit), row["Drill Des."]);

        auto* list = host.table("broxModelTableWidget");
        list->setCurrentCell(findRow(list, 0, model), 0);
        auto* tester = host.table("testerTableWidget");
        for (int i = 2; i >= 0; --i) {
            typeInto(tester, type, i, hole[i].isEmpty() ? "0" : hole[i]);
        }
        QCOMPARE(cellText(tester, type, 4), row["Drill Des."]);
        const bool isRed = tester->item(type, 4)->foreground().color() == Qt::red;
        QCOMPARE(isRed && !drill.bit.isEmpty(), row["Red"] == "yes");
    }

    /** All that the module writes is valid, and not whatever one writes. */
    void schemas()
    {
        if (QByteArray(XMLLINT).endsWith("NOTFOUND")) {
            QSKIP("there is no xmllint");
        }
        Host host;
        const auto written = [&](const QString& name, const QByteArray& content) {
            host.write(name, content);
            host.endViewer();
            const bool ofModels = name == models;
            click(host.viewer(), ofModels ? "newToolButton" : "actionAdd_Size");
            click(host.viewer(), ofModels ? "saveToolButton" : "actionSave");
            return host.read(name) == content ? QByteArray() : host.read(name);
        };
        DataStart::fill(QDir::cleanPath(host.path("..")));
        for (const QString& name : {models, bits}) {
            const QByteArray defaults = host.read(name);
            QVERIFY(isValid(name, defaults));
            QVERIFY(isValid(name, written(name, defaults)));
            QVERIFY(isValid(name, exampleOf(name).toUtf8()));
        }
        QVERIFY(isValid(models,
            written(models,
                modelsXml({"<!-- -->", "<DrillToolModel/>", "<DrillToolModel name=\"A\"/>",
                    modelXml(
                        "A\"&lt;", "FHS+", "YES", "<HoleType name=\"pth\" amount=\"abc\"/>")}))));
        QVERIFY(isValid(bits,
            written(bits, bitsXml({"<!-- -->", "<Drill/>", bitXml("a", "x", "-1e-5", "maybe")}))));

        const QString changes[][3] = {{models, "name=\"ENIG\"", "name=\"\""},
            {models, "40000", "40 um"}, {models, "40000", "4000000000"}, {models, "Pth", "pth"},
            {models, "\"yes\"", "\"YES\""}, {bits, " inches=\"0.0138\"", ""},
            {bits, "0.3429", "0,3429"}};
        for (const auto& [name, from, to] : changes) {
            QVERIFY(exampleOf(name).contains(from));
            QVERIFY(!isValid(name, exampleOf(name).replace(from, to).toUtf8()));
        }
    }
};

QTEST_MAIN(ExamplesTest)
#include "tst_examples.moc"
