// SPDX-License-Identifier: MIT
#include "board_reader.h"
#include "board_text.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

/** A program of two tools in millimetres; its body begins in line 6. */
QByteArray file(const QByteArray& body, const QByteArray& header = "METRIC\nT1C0.8\nT02F200S65C1.")
{
    return "M48\n" + header + "\n%\n" + body + "\nM30\n";
}

QByteArray typed(const QByteArray& comment)
{
    return file("T1\nX1Y1", "METRIC\n" + comment + "\nT1C0.8");
}

} // namespace

class ExcellonTest : public QObject
{
    Q_OBJECT

private slots:
    void reads_data();
    void reads();
    void refuses_data();
    void refuses();
    void joinsFiles();
    void namesLayersAndJob_data();
    void namesLayersAndJob();
    void countsAMillionHoles();
    void canBeCancelled();

private:
    QString write(const QString& name, const QByteArray& content)
    {
        const QString path = mFolder.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile to(path);
        if (!to.open(QIODevice::WriteOnly) || to.write(content) != content.size()) {
            qFatal("no test file");
        }
        return path;
    }

    QTemporaryDir mFolder;
};

void ExcellonTest::reads_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("expected"); // without the layer's name

    const QString one = "P320000-0+0x1";
    const QString two = "P320000-0+0x2";
    const QByteArray plain = file("T1\nX1Y1");
    QTest::newRow("plain") << plain << one;
    QTest::newRow("carriage returns") << QByteArray(plain).replace('\n', '\r') << one;
    QTest::newRow("both ends of lines") << QByteArray(plain).replace("\n", "\r\n") << one;
    QTest::newRow("lower case, blanks, byte order mark, no last end")
        << "\xef\xbb\xbf" + plain.toLower().replace("\n", "  \n\n").trimmed() << one;
    QTest::newRow("order of the definitions, tools alike are one, unused ones none") << file(
        "T3\nX1\nT2\nY-1.5\nX+2Y.5\nT1\nX1Y1",
        "METRIC,TZ,000.000\nT1C0.8\nT2C1\nT3C.80\nT4C2.") << "P320000-0+0x2 P400000-0+0x2";
    QTest::newRow("inch, units after the tools, other fields around the diameter")
        << file("T1\nX016Y0158", "FMAT,2\nICI,OFF\nDETECT,ON\nT01F00S00C0.0310H500Z-1.\nINCH,LZ")
        << "P314960-0+0x1";
    QTest::newRow("no header") << QByteArray("%\nM72\nG90\nT1C0.1\nX1Y1\nT0\nM71\nT2C1.0\nX1\nM00")
                               << "P1016000-0+0x1 P400000-0+0x1";
    QTest::newRow("header ends by M95") << QByteArray(plain).replace('%', "M95") << one;
    QTest::newRow("a tool gets another diameter")
        << file("T1\nX1Y1\nT1C0.8\nX2\nT1C0.9\nX3") << "P320000-0+0x2 P360000-0+0x1";
    QTest::newRow("repeats") << file("T1X1Y1\nR05X2.\nR2Y1") << "P320000-0+0x8";
    QTest::newRow("pattern") << file("T1\nX1\nM25\nX1\nT2\nX2\nX3\nM01\nM02X10\nM02Y10M80\nM08\nX4")
                             << "P320000-0+0x4 P400000-0+0x7";
    QTest::newRow("grid: the row of a pattern is repeated as one")
        << file("T1\nM25\nX1\nX2Y1G85X3\nM01\nM02X5R2\nM02\nM01\nM02XY5R3\nM02\nM08")
        << "P320000-0+0x12 without 12";
    QTest::newRow("pattern without a beginning, another after it")
        << file("T1\nX1\nM01\nM02X5\nM08\nX1\nX2\nM01\nM02Y5\nM08") << "P320000-0+0x6";
    QTest::newRow("optional stop, then M02 ends")
        << QByteArray(plain).replace("M30", "M01\nM02") << one;
    QTest::newRow("slots and routed paths") << file(
        "T1\nX1Y1\nX1Y2G85X3Y2\nG00X1Y1\nM15\nG01X2\nX3\nG03X2Y2A1.\nM16\nG00X9\nX8\nM15\n"
        "G02X1Y2I1J2\nM17\nG05\nX5Y5") << two + " without 3";
    QTest::newRow("path without tool down or up")
        << file("T2\nG00X1Y1\nG01X2\nY3\nG00X5\nG01X3\nG05\nT1\nX1") << one + " without 2";
    QTest::newRow("harmless commands, comments")
        << file("(by hand)\nG90\nT1M06\nM09 ; X1Y1\nM47,X5Y5 PRESS GO\nG93X0Y0\nN10X1Y1F10\n%\nM18")
        << one;

    const char* const attributes[][3] = {
        {"file is plated", "; #@! TF.FileFunction,Plated,1,4,PTH", "P"},
        {"file is not plated", ";#@! TF.FileFunction,NonPlated,1,2,NPTH", "N"},
        {"file is mixed", "; #@! TF.FileFunction,MixedPlating,1,2", "P"},
        {"via", "; #@! TA.AperFunction,Plated,PTH,ViaDrill", "V"},
        {"component", "; #@! TA.AperFunction,Plated,PTH,ComponentDrill", "P"},
        {"press-fit", "; #@! TA.AperFunction,Plated,PTH,ComponentPressFitDrill", "F"},
        {"press-fit's other name", "; #@! TA.AperFunction,ComponentDrill,PressFit", "F"},
        {"tool is not plated", "; #@! TA.AperFunction,NonPlated,NPTH,ComponentDrill", "N"},
        {"tool before file",
            "; #@! TF.FileFunction,NonPlated,1,2,NPTH\n; #@! TA.AperFunction,Plated,PTH,ViaDrill",
            "V"},
        {"attribute is deleted", "; #@! TA.AperFunction,NonPlated,NPTH,ViaDrill\n; #@! TD", "P"},
        {"section is plated", ";TYPE=NON_PLATED\n; type=plated", "P"},
        {"section is not plated", ";TYPE=PLATED\nT5C1.\n;TYPE=NON_PLATED", "N"},
    };
    for (const auto& [name, comment, type] : attributes) {
        QTest::newRow(name) << typed(comment) << type + one.sliced(1);
    }
}

void ExcellonTest::reads()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, expected);
    try {
        const Board board = readBoard({write("a.drl", content)});
        const QString text = told(board)
                                 .remove("pcb/a: ")
                                 .replace("\npcb without", " without")
                                 .remove(" slots, 0 holes");
        QCOMPARE(text, expected);
    } catch (const BoardError& error) {
        QFAIL(error.what());
    }
}

void ExcellonTest::refuses_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("expected"); // what follows the file's name, or its beginning

    const auto row = [](const char* name, const QByteArray& content, const char* expected) {
        QTest::newRow(name) << content << expected;
    };
    const QByteArray plain = file("T1\nX1Y1");
    row("empty", "", ":1: the program does not end");
    row("binary", QByteArray("\x7f\0ELF\1\2\n\0", 9), ":1: no command of a drill file: \"??ELF");
    row("text", "Dear board house,\n", ":1: no command");
    row("other format", "G04 layer 1*\n%FSLAX46Y46*%\n", ":1: no command");
    row("long line", "M48\n;" + QByteArray(5000, 'x') + '\n', ":2: the line is longer");
    row("cut off in the header", plain.left(18), ":3: the header does not end");
    row("header goes on", QByteArray(plain).replace("%\n", ""), ":6: a hole in the header");
    row("cut off in the body", plain.chopped(4), ":7: the program does not end");
    row("cut off in a pattern", file("T1\nX1\nM01\nM02X5\n").chopped(5),
        ":9: the program does not");
    row("more after the end", plain + "X1\n", ":9: \"X1\" after the program's end");
    row("no hole", file("T1\nX1Y1G85X2Y1"), ":8: the file has no drilled hole");
    row("no tool", file("X1Y1"), ":6: a hole before a tool");
    row("tool put back", file("T1\nX1\nT0\nX1"), ":9: a hole before a tool");
    row("slot without tool", file("X1Y1G85X2"), ":6: a slot before a tool");
    row("unknown tool", file("T3"), ":6: tool T3 has no diameter");
    row("no units", file("T1\nX1", "T1C0.8"), ":4: nothing tells whether T1");
    row("unknown G", file("T1\nG82X1Y1"), ":7: unknown command G82");
    row("unknown M", file("T1\nM50"), ":7: unknown command M50");
    row("drilled text", file("T1\nM97,TEXT"), ":7: no command of a drill file");
    row("misspelled", file("T1\nX1V1"), ":7: no command of a drill file: \"X1V1\"");
    row("keyword among holes", file("T1\nX1\nBLKD"), ":8: no command");
    row("no coordinate", file("T1\nX1.2.3"), ":7: X\"1.2.3\" is no coordinate");
    row("no coordinates at all", file("T1\nR5"), ":7: a repeat without a distance");
    row("no repeat", file("T1\nR0X1"), ":7: R0 is no number from");
    row("too many repeats", file("T1\nR10001X1"), ":7: R10001 is no");
    row("huge number", file("T1\nR99999999999X1"), ":7: R with no whole");
    row("no pattern", file("T1\nM02X1"), ":7: no pattern to repeat");
    row("open pattern", file("T1\nM25\nX1\nM02X1"), ":9: no pattern to repeat");
    row("pattern without end", file("T1\nM25\nX1\nM08"), ":9: the pattern is not ended");
    row("nested pattern", file("T1\nM25\nM25"), ":8: a pattern within");
    row("place with the tool up", file("T1\nM15\nM16\nX1"), ":9: neither a hole");
    row("place beside the end", file("T1\nX1Y1M30"), ":7: coordinates beside");
    QByteArray grid("T1\nM25\nX1\n");
    for (int i = 0; i < 3; ++i) {
        grid += "M01\nM02X1R10000\n";
    }
    row("too many holes", file(grid), ":14: too many holes");
    QByteArray tools("METRIC");
    for (int i = 1; i <= 1001; ++i) {
        tools += "\nT" + QByteArray::number(i) + "C1.";
    }
    row("too many tools", file("", tools), ":1003: more than 1000 tools");

    const char* const diameters[][2] = {{"", "\"\" is no number"}, {"x", "\"\" is no number"},
        {".", "\".\" is no"}, {"1.0.0", "\"1.0.0\" is no"}, {"1,5", ""},
        {"0.", "\"0.\" is not above 0"}, {"-0.8", "\"-0.8\" is not"},
        {"080", "\"080\" has no decimal point"}, {"1e9", ""}, {"101.", "101 is too large"},
        {"0.000001", "1e-06 is too small"}};
    for (const auto& [diameter, message] : diameters) {
        QTest::addRow("diameter '%s'", diameter)
            << file("", QByteArray("METRIC\nT1C") + diameter)
            << (*message ? QStringLiteral(":3: ") : QStringLiteral(":3: no command"))
                + (*message == '"' ? "diameter " : "") + message;
    }
    row("too large by units that come later", file("", "T1C9.\nINCH"), ":2: 9 is too large");
    row("T0 with a diameter", file("", "METRIC\nT0C1."), ":3: T0 means no tool");
    row("diameter without tool", file("C1."), ":6: a diameter without a tool");
}

void ExcellonTest::refuses()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, expected);
    const QString path = write("a.drl", content);
    try {
        readBoard({path});
        QFAIL("a bad file was read");
    } catch (const BoardError& error) {
        QVERIFY2(error.message().startsWith(path + expected), error.what());
        QVERIFY(!error.message().contains('\n'));
    }
}

void ExcellonTest::joinsFiles()
{
    const QString metric = write("j/board-PTH.drl", file("T1\nX1\nX1Y1G85X2"));
    const QString inch = write("j/board-NPTH.drl", file("T1\nX1", "INCH\nT1C0.1"));
    const QString none = write("j/board-blind.drl", file("", "METRIC"));
    const Board board = readBoard({inch, none, metric});
    QCOMPARE(told(board),
        "pcb/board-NPTH: N1016000-0+0x1\npcb/board-PTH: P320000-0+0x1\n"
        "pcb without 1 slots, 0 holes");
    QCOMPARE(board.units, Units::Inch);
    QCOMPARE(readBoard({none, metric}).units, Units::Metric);

    const QString xml = write("j/board.xml", "\n <IPC-2581/>");
    const auto refused = [](const QStringList& paths) {
        try {
            readBoard(paths);
        } catch (const BoardError& error) {
            return error.message();
        }
        return QString();
    };
    const QString again = mFolder.filePath("j/../j/board-PTH.drl");
    QVERIFY(refused({metric, again}).startsWith(again + ":1: the file is named twice"));
    QVERIFY(refused({none, write("j/other", file(""))}).contains(":7: no file has a drilled hole"));
    QVERIFY(refused({metric, xml}).startsWith(xml + ":1: no drill file"));
    QVERIFY(refused({metric, mFolder.filePath("gone")}).contains("gone:1: "));
    QVERIFY(refused({metric, mFolder.path()}).startsWith(mFolder.path() + ":1: "));
}

void ExcellonTest::namesLayersAndJob_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QString>("layers"); // first the job

    const auto row = [](const QStringList& files, const char* layers) {
        QTest::newRow(layers) << files << layers;
    };
    row({"f/power.v2.drl"}, "power.v2: power.v2");
    row({"f/power-PTH.drl", "f/power-NPTH.drl"}, "power: power-PTH power-NPTH");
    row({"f/power.drl", "f/power_np.drl"}, "power: power power_np");
    row({"f/plated.drl", "f/plugged.drl"}, "f: plated plugged");
    row({"f/a.drl", "f/a.txt"}, "a: a a.txt");
}

void ExcellonTest::namesLayersAndJob()
{
    QFETCH(QStringList, files);
    for (QString& name : files) {
        name = write(name, file("T1\nX1"));
    }
    const Board board = readBoard(files);
    QStringList names;
    for (const Layer& layer : board.steps[0].layers) {
        names << layer.name;
    }
    QTEST(board.job + ": " + names.join(' '), "layers");
}

void ExcellonTest::countsAMillionHoles()
{
    const QByteArray holes = QByteArray("X001.250Y-02.5\r\n").repeated(1000000);
    const QString path = write("a.drl", file("T1\n" + holes));
    QElapsedTimer timer;
    timer.start();
    const Board board = readBoard({path});
    qInfo("%lld holes a second", 1000000000 / qMax<qint64>(1, timer.elapsed()));
    QCOMPARE(board.steps[0].layers[0].tools[0].count, 1000000);
}

void ExcellonTest::canBeCancelled()
{
    const QString path = write("a.drl", file("T1\n" + QByteArray("X1\n").repeated(100000)));
    qint64 most = 0;
    const auto progress = [&](qint64 done, qint64 total) {
        most = total;
        return done < total / 2;
    };
    QVERIFY_EXCEPTION_THROWN(readBoard({path}, progress), BoardCancelled);
    QCOMPARE(most, QFileInfo(path).size());
}

QTEST_GUILESS_MAIN(ExcellonTest)
#include "tst_excellon.moc"
