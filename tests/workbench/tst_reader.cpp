// SPDX-License-Identifier: MIT
#include "board_text.h"
#include "ipc2581_reader.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

QByteArray hole(const char* status, const char* diameter, const char* more = "")
{
    return QByteArray("<Hole name='H' platingStatus='") + status + "' diameter='" + diameter
        + "' x='1' y='2' " + more + "/>\n";
}

QByteArray feature(const char* layer, const QByteArray& holes)
{
    return QByteArray("<LayerFeature layerRef='") + layer + "'><Set net='A'>\n" + holes
        + "</Set></LayerFeature>\n";
}

QByteArray step(const char* name, const QByteArray& content)
{
    return QByteArray("<Step name='") + name + "'>\n" + content + "</Step>\n";
}

/** A file with layers D of drills, R of routs and C of copper; the first step stands in line 7. */
QByteArray file(const QByteArray& steps, const char* units = "MILLIMETER")
{
    return QByteArray("<IPC-2581 revision='B' xmlns='http://webstds.ipc.org/2581'>\n"
                      "<Content><StepRef name='main'/></Content>\n"
                      "<Ecad name='job'><CadHeader units='")
        + units
        + "'/><CadData>\n"
          "<Layer name='D' layerFunction='DRILL'><Span fromLayer='C' toLayer='C'/></Layer>\n"
          "<Layer name='R' layerFunction='ROUT'/>\n"
          "<Layer name='C' layerFunction='CONDUCTOR'/>\n"
        + steps + "</CadData></Ecad>\n</IPC-2581>\n";
}

QByteArray repeat(const char* step, const char* more = "")
{
    return QByteArray("<StepRepeat stepRef='") + step + "' x='0' y='0' " + more + "/>\n";
}

} // namespace

class ReaderTest : public QObject
{
    Q_OBJECT

private slots:
    void reads_data();
    void reads();
    void refuses_data();
    void refuses();
    void refusesWhatIsNoFile();
    void groupsAMillionHoles();
    void canBeCancelled();

private:
    QString write(const QByteArray& content)
    {
        QFile to(mFolder.filePath("board.xml"));
        if (!to.open(QIODevice::WriteOnly) || to.write(content) != content.size()) {
            qFatal("no test file");
        }
        return to.fileName();
    }

    QTemporaryDir mFolder;
};

void ReaderTest::reads_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("expected");

    const QByteArray via = hole("VIA", "0.3");
    const QByteArray plain = file(step("main", feature("D", via)));
    const QString plainTold = "main/D: V120000-0+0x1";

    QTest::newRow("tolerances left out") << plain << plainTold;
    QTest::newRow("prefixed namespace") << QByteArray(plain)
                                               .replace("xmlns=", "xmlns:i=")
                                               .replace("</", "</i:")
                                               .replace('<', "<i:")
                                               .replace("<i:/i:", "</i:")
                                        << plainTold;
    QTest::newRow("no namespace") << QByteArray(plain).replace("xmlns", "x") << plainTold;
    QTest::newRow("declaration, comment, byte order mark")
        << "\xef\xbb\xbf<?xml version='1.0' encoding='UTF-8'?><!-- by hand -->" + plain
        << plainTold;
    QTest::newRow("micron") << file(step("main", feature("D", hole("VIA", "300"))), "MICRON")
                            << plainTold;
    QTest::newRow("inch, rounded half up")
        << file(step("main", feature("D", hole("PLATED", "0.03", "plusTol='0.00000005'"))), "inch")
        << "main/D: P304800-0+1x1";
    QTest::newRow("order of first appearance, all of the key counts")
        << file(step("main",
               feature("D",
                   hole("PLATED", "1", "plusTol='0.1' minusTol='0.05'") + hole("NONPLATED", "1")
                       + hole("PLATED", "1.0", "plusTol='1e-1' minusTol='0.05'")
                       + hole("PLATED", "1", "plusTol='0.1'"))
                   + feature("E", via) + feature("D", hole("NONPLATED", "1"))))
        << "main/D: P400000-20000+40000x2 N400000-0+0x2 P400000-0+40000x1\nmain/E: V120000-0+0x1";
    QTest::newRow("revision C's vias")
        << file(step("main", feature("D", via + hole("VIA_CAPPED", "0.3"))))
        << "main/D: V120000-0+0x2";
    QTest::newRow("slots and stacks are no tools, copper repeats holes") << file(step("main",
        "<PadStackDef name='p'><PadstackHoleDef diameter='x'/></PadStackDef>"
            + feature("R", "<SlotCavity name='s'><Oval/></SlotCavity><Slot/>" + via)
            + feature("C", via))) << "main/R: V120000-0+0x1\nmain without 2 slots, 1 holes";
    QTest::newRow("panel before its board")
        << file(step("main", repeat("b", "nx='2' ny='3'") + repeat("b") + feature("D", via))
               + step("b", feature("D", via + hole("PLATED", "1") + "<Slot/>")))
        << "main/D: V120000-0+0x8 P400000-0+0x7\nmain without 7 slots, 0 holes\n"
           "b/D: V120000-0+0x1 P400000-0+0x1\nb without 1 slots, 0 holes";
}

void ReaderTest::reads()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, expected);
    try {
        const Board board = readIpc2581(write(content));
        QCOMPARE(told(board), expected);
        QCOMPARE(board.job, "job");
        QCOMPARE(board.steps[board.mainStep].name, "main");
    } catch (const BoardError& error) {
        QFAIL(error.what());
    }
}

void ReaderTest::refuses_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("expected"); // what follows the file's name, or its beginning

    const QByteArray via = hole("VIA", "0.3");
    const QByteArray plain = file(step("main", feature("D", via)));
    const auto withHole = [](const QByteArray& bad) {
        return file(step("main", feature("D", hole("VIA", "0.3") + bad)));
    };

    QTest::newRow("empty") << QByteArray() << ":1: ";
    QTest::newRow("binary") << QByteArray("\x7f"
                                          "ELF\0\0\1\2",
        8) << ":1: ";
    QTest::newRow("cut off") << plain.left(plain.size() - 20) << ":12: ";
    QTest::newRow("not well-formed") << QByteArray(plain).replace("</Set>", "</Sat>") << ":10: ";
    QTest::newRow("something after the end") << plain + "<more/>"
                                             << ":14: ";
    QTest::newRow("other root") << QByteArray("\n<svg/>") << ":2: no IPC-2581 file";
    QTest::newRow("no hole") << file(step("main", feature("C", via))) << ":14: the file has no";
    QTest::newRow("unknown units") << file("", "CUBIT") << ":3: unknown units \"CUBIT\"";
    QTest::newRow("no units") << QByteArray(plain).replace("CadHeader", "Header")
                              << ":9: no CadHeader";
    QTest::newRow("no diameter") << withHole("<Hole platingStatus='VIA'/>")
                                 << ":10: a hole without";
    QTest::newRow("no status") << withHole("<Hole diameter='1'/>") << ":10: a hole without plating";
    QTest::newRow("unknown status") << withHole(hole("GLUED", "1")) << ":10: unknown platingStatus";
    QTest::newRow("too many boards") << file(step("main", repeat("a", "nx='9999' ny='9999'"))
        + step("a", repeat("b", "nx='9999'")) + step("b", feature("D", via)))
                                     << ":8: too many holes";
    QTest::newRow("no number of repeats")
        << file(step("main", repeat("b", "nx='0'")) + step("b", feature("D", via)))
        << ":8: nx=\"0\" is no number from";
    QTest::newRow("unknown step to repeat")
        << file(step("main", feature("D", via) + repeat("b"))) << ":11: no step \"b\"";
    QTest::newRow("steps in a circle")
        << file(step("main", feature("D", via) + repeat("b")) + step("b", repeat("main")))
        << ":11: step \"b\" repeats itself";
    QTest::newRow("step twice") << file(step("main", "") + step("main", "")) << ":9: a second step";
    QTest::newRow("deep") << file(QByteArray(2000, 'a').replace("a", "<a>"))
                          << ":7: elements are nested";
    QTest::newRow("entities that grow")
        << "<!DOCTYPE x [<!ENTITY a 'aaaaaaaaaa'><!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;'>"
           "<!ENTITY c '&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;'><!ENTITY d '&c;&c;&c;&c;&c;&c;&c;&c;&c;'>"
           "<!ENTITY e '&d;&d;&d;&d;&d;&d;&d;&d;&d;'>]>"
            + QByteArray(plain).replace("net='A'", "net='&e;'")
        << ":8: ";

    const char* const numbers[] = {"", "x", "1,5", "0x10", "nan", "inf", "-1", "1e9"};
    for (const char* number : numbers) {
        QTest::addRow("diameter '%s'", number) << withHole(hole("VIA", number)) << ":10: diameter=";
        QTest::addRow("tolerance '%s'", number)
            << withHole(hole("VIA", "1", ("plusTol='" + QByteArray(number) + "'").constData()))
            << ":10: plusTol=";
    }
    QTest::newRow("diameter 0") << withHole(hole("VIA", "0.0")) << ":10: diameter=";
}

void ReaderTest::refuses()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, expected);
    const QString path = write(content);
    try {
        readIpc2581(path);
        QFAIL("a bad file was read");
    } catch (const BoardError& error) {
        QVERIFY2(error.message().startsWith(path + expected), error.what());
        QVERIFY(!error.message().contains('\n'));
    }
}

void ReaderTest::refusesWhatIsNoFile()
{
    QVERIFY_EXCEPTION_THROWN(readIpc2581(mFolder.path()), BoardError);
    QVERIFY_EXCEPTION_THROWN(readIpc2581(mFolder.filePath("none")), BoardError);
}

void ReaderTest::groupsAMillionHoles()
{
    QByteArray holes;
    for (int i = 0; i < 1000; ++i) {
        holes += hole("VIA", QByteArray::number(1 + i % 500).constData());
    }
    QByteArray features;
    for (int i = 0; i < 1000; ++i) {
        features += feature("D", holes);
    }
    const QString path = write(file(step("main", features), "MICRON"));
    QElapsedTimer timer;
    timer.start();
    const Board board = readIpc2581(path);
    qInfo("%lld holes a second", 1000000000 / qMax<qint64>(1, timer.elapsed()));
    QCOMPARE(board.steps[0].layers[0].tools.size(), size_t(500));
    QCOMPARE(board.steps[0].layers[0].tools[499].count, 2000);
}

void ReaderTest::canBeCancelled()
{
    const QString path =
        write(file(step("main", feature("D", QByteArray(50000, ' ').replace(" ", "<Pad/>")))));
    qint64 most = 0;
    const auto progress = [&](qint64 done, qint64 total) {
        most = total;
        return done < total / 2;
    };
    QVERIFY_EXCEPTION_THROWN(readIpc2581(path, progress), BoardCancelled);
    QCOMPARE(most, QFileInfo(path).size());
}

QTEST_GUILESS_MAIN(ReaderTest)
#include "tst_reader.moc"
