// SPDX-License-Identifier: MIT
#include "default_data.h"
#include "fixture.h"

#include <QDir>
#include <QMainWindow>
#include <QProcess>
#include <QRegularExpression>

namespace {

const QString models = QStringLiteral("brox.xml");
const QString bits = QStringLiteral("brox_drill_bits.xml");

/** An example of the page: the one whose root is that of the file. */
QByteArray example(const QString& name)
{
    const QString root = name == models ? "DrillToolModels" : "DrillSizeTable";
    QFile page(DOCS "/file-formats.md");
    const QString text = page.open(QFile::ReadOnly) ? QString::fromUtf8(page.readAll()) : QString();
    const QRegularExpression block(
        "```xml\n(<" + root + ">.*?)```", QRegularExpression::DotMatchesEverythingOption);
    return block.match(text).captured(1).toUtf8();
}

/** What xmllint says against a file; empty if it is valid. */
QByteArray complaint(const QString& name, const QByteArray& content)
{
    QProcess xmllint;
    const QString schema = QString(name).replace(".xml", ".rng");
    xmllint.start(XMLLINT, {"--noout", "--relaxng", DOCS "/schemas/" + schema, "-"});
    xmllint.write(content);
    xmllint.closeWriteChannel();
    if (!xmllint.waitForFinished()) {
        return xmllint.errorString().toUtf8();
    }
    const QByteArray output = xmllint.readAllStandardError();
    return xmllint.exitCode() == 0 ? QByteArray() : output;
}

/** What the module writes after it has read a content and one thing was added. */
QByteArray written(const QString& name, const QByteArray& content)
{
    Host host;
    host.write(name, content);
    if (name == models) {
        click(host.viewer(), "newToolButton");
        click(host.viewer(), "saveToolButton");
    } else {
        child<QAction>(host.viewer(), "actionAdd_Size")->trigger();
        child<QAction>(host.viewer(), "actionSave")->trigger();
    }
    return host.read(name) == content ? QByteArray() : host.read(name);
}

} // namespace

/** The schemas of the two files against what the module and others write. */
class FormatsTest : public QObject
{
    Q_OBJECT

private slots:
    void valid_data();
    void valid();
    void invalid_data();
    void invalid();
    void readsTheExamples();
};

void FormatsTest::valid_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");

    QTemporaryDir folder;
    createDefaultData(folder.path());
    for (const QString& name : {models, bits}) {
        QFile file(folder.filePath("brox/" + name));
        QVERIFY(file.open(QFile::ReadOnly));
        const QByteArray defaults = file.readAll();
        const auto addRow = [&](const char* what, const QByteArray& content) {
            QTest::addRow("%s: %s", qPrintable(name), what) << name << content;
        };
        addRow("of the page", example(name));
        addRow("of the workbench", defaults);
        addRow("of the workbench, saved", written(name, defaults));
    }
    QTest::newRow("odd models, saved")
        << models
        << written(models,
               modelsXml({"<!-- -->", "<DrillToolModel/>", "<DrillToolModel name=\"A\"/>",
                   modelXml("A\"&lt;", "FHS+", "YES",
                       "<HoleType name=\"pth\" amount=\"abc\"/><HoleType amount=\"-1\"/>")}));
    QTest::newRow("odd bits, saved")
        << bits
        << written(bits, bitsXml({"<!-- -->", "<Drill/>", bitXml("a", "x", "-1e-5", "maybe")}));
}

void FormatsTest::valid()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    QVERIFY(!content.isEmpty());
    QCOMPARE(complaint(name, content), QByteArray());
}

void FormatsTest::invalid_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("from"); // in the page's example
    QTest::addColumn<QString>("to");

    QTest::newRow("model without a name") << models << " name=\"ENIG\""
                                          << " name=\"\"";
    QTest::newRow("letters for a number") << models << "40000"
                                          << "40 um";
    QTest::newRow("more than 32 bits") << models << "40000"
                                       << "4000000000";
    QTest::newRow("type in small letters") << models << "Pth"
                                           << "pth";
    QTest::newRow("yes in capitals") << models << "\"yes\""
                                     << "\"YES\"";
    QTest::newRow("bit without inches") << bits << " inches=\"0.0138\""
                                        << "";
    QTest::newRow("decimal comma") << bits << "0.3429"
                                   << "0,3429";
    QTest::newRow("root in small letters") << bits << "DrillSizeTable"
                                           << "drillsizetable";
}

void FormatsTest::invalid()
{
    QFETCH(QString, name);
    QFETCH(QString, from);
    QFETCH(QString, to);
    const QString content = example(name);
    QVERIFY(content.contains(from));
    QVERIFY(!complaint(name, QString(content).replace(from, to).toUtf8()).isEmpty());
}

void FormatsTest::readsTheExamples()
{
    Host host;
    host.write(models, example(models));
    host.write(bits, example(bits));
    QCOMPARE(host.modelNames(), QStringList({"ENIG", "Unplated"}));
    const Host::Drill drill = host.drill("ENIG", 120000, 0, 0, 2);
    QCOMPARE(drill.bit, QByteArray("0.35"));
    QCOMPARE(drill.size, 140000);
    QCOMPARE(host.log, QStringList());
}

QTEST_MAIN(FormatsTest)
#include "tst_formats.moc"
