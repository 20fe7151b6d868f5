// SPDX-License-Identifier: MIT
#include "board_reader.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

/** A layer to a line, such as "step/layer 2xP320000-400+800", and what a step leaves out. */
QString told(const Board& board)
{
    QStringList lines;
    for (const Step& step : board.steps) {
        for (const Layer& layer : step.layers) {
            lines << step.name + '/' + layer.name;
            for (const Tool& tool : layer.tools) {
                lines.last() += QString::asprintf(
                    " %lldx%c%d", tool.count, "PNVF"[int(tool.type)], tool.finishedSize);
                if (tool.minusTol != 0 || tool.plusTol != 0) {
                    lines.last() += QString::asprintf("-%d+%d", tool.minusTol, tool.plusTol);
                }
            }
        }
        if (step.slotsLeftOut > 0 || step.holesLeftOut > 0) {
            lines << step.name + " without ";
            lines.last() += QString::asprintf("%lld, %lld", step.slotsLeftOut, step.holesLeftOut);
        }
    }
    return lines.join('\n');
}

/** A drill program, of a tool of 0.8 mm if nothing else is said; its body then begins in line 5. */
QByteArray program(const QByteArray& body, const QByteArray& header = "METRIC\nT1C0.8")
{
    return "M48\n" + header + "\n%\n" + body + "\nM30\n";
}

QByteArray hole(const QByteArray& status, const QByteArray& diameter, const QByteArray& more = {})
{
    return "<Hole platingStatus='" + status + "' diameter='" + diameter + "' " + more + "/>\n";
}

QByteArray feature(const QByteArray& layer, const QByteArray& holes)
{
    return "<LayerFeature layerRef='" + layer + "'><Set>" + holes + "</Set></LayerFeature>\n";
}

/** A file of layers D of drills, R of routs and C of copper; a step's content begins in line 8. */
QByteArray ipc2581(const QByteArray& mainStep, const QByteArray& units = "MILLIMETER")
{
    return QByteArray(R"(<IPC-2581 xmlns='http://webstds.ipc.org/2581'>
<Content><StepRef name='main'/></Content>
<Ecad name='job'><CadHeader units='UNITS'/><CadData>
<Layer name='D' layerFunction='DRILL'/>
<Layer name='R' layerFunction='ROUT'/>
<Layer name='C' layerFunction='CONDUCTOR'/>
<Step name='main'>
)")
               .replace("UNITS", units)
        + mainStep + "</Step></CadData></Ecad></IPC-2581>\n";
}

} // namespace

class BoardsTest : public QObject
{
    Q_OBJECT

private:
    QString write(const QString& name, const QByteArray& content) const
    {
        const QString path = mFolder.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
            qFatal("no test file");
        }
        return path;
    }

    /** The board in files, or why there is none. */
    QString outcome(const QStringList& paths) const
    {
        try {
            return told(readBoard(paths));
        } catch (const BoardError& error) {
            return error.message().remove(mFolder.path() + '/');
        }
    }

    static void row(const QByteArray& name, const QByteArray& content, const QString& expected)
    {
        QTest::newRow(name.constData()) << content << expected;
    }

    static void addDrillFiles()
    {
        const QByteArray plain = program("T1\nX1Y1");
        row("carriage returns", QByteArray(plain).replace('\n', '\r'), "1xP320000");
        row("both ends of lines", QByteArray(plain).replace("\n", "\r\n"), "1xP320000");
        row("lower case, blanks, byte order mark, no last end",
            "\xef\xbb\xbf" + plain.toLower().replace("\n", "  \n\n").trimmed(), "1xP320000");
        row("tools alike are one, unused ones none, order of definition",
            program(
                "T3\nX1\nT2\nY-1.5\nX+2Y.5\nT1\nX1Y1", "METRIC,TZ\nT1C0.8\nT2C1\nT3C.80\nT4C2."),
            "2xP320000 2xP400000");
        row("inch, units after the tools, fields around the diameter",
            program("T1\nX016Y0158", "FMAT,2\nT01F00S00C0.0310H500Z-1.\nINCH,LZ"), "1xP314960");
        row("no header", "%\nM72\nG90\nT1C0.1\nX1Y1\nT0\nM71\nT2C1.0\nX1\nM00",
            "1xP1016000 1xP400000");
        row("header ends by M95", QByteArray(plain).replace('%', "M95"), "1xP320000");
        row("another diameter", program("T1\nX1Y1\nT1C0.8\nX2\nT1C0.9\nX3"), "2xP320000 1xP360000");
        row("repeats", program("T1X1Y1\nR05X2.\nR2Y1"), "8xP320000");
        row("pattern", program("T1\nX1\nM25\nX1\nX2\nM01\nM02X10\nM02Y10M80\nM08\nX4"),
            "8xP320000");
        row("the row of a pattern is repeated as one",
            program("T1\nM25\nX1\nX2Y1G85X3\nM01\nM02X5R2\nM02\nM01\nM02XY5R3\nM02\nM08"),
            "12xP320000\npcb without 12, 0");
        row("pattern without a beginning, another after it",
            program("T1\nX1\nM01\nM02X5\nM08\nX1\nX2\nM01\nM02Y5\nM08"), "6xP320000");
        row("stop, then M02 ends", QByteArray(plain).replace("M30", "M01\nM02"), "1xP320000");
        row("slots and routed paths",
            program("T1\nX1Y1\nX1Y2G85X3Y2\nG00X1Y1\nM15\nG01X2\nX3\nG03X2Y2A1.\nM16\nG00X9\nX8\n"
                    "M15\nG02X1Y2I1J2\nM17\nG05\nX5Y5"),
            "2xP320000\npcb without 3, 0");
        row("path without tool down or up",
            program("T1\nG00X1Y1\nG01X2\nY3\nG00X5\nG01X3\nG05\nX1"),
            "1xP320000\npcb without 2, 0");
        row("harmless commands, comments",
            program("(a)\nG90\nT1M06\nM09 ; X1Y1\nM47,X5Y5 GO\nG93X0Y0\nN10X1Y1F10\n%\nM18"),
            "1xP320000");

        row("empty", "", ":1: the program does not end");
        row("binary", QByteArray("\x7f\0ELF\1\2\n\0", 9),
            ":1: no command of a drill file: \"??ELF");
        row("long line", "M48\n;" + QByteArray(5000, 'x') + '\n', ":2: the line is longer");
        row("cut off in the header", plain.left(18), ":3: the header does not end");
        row("header goes on", QByteArray(plain).replace("%\n", ""), ":5: a hole in the header");
        row("cut off in the body", plain.chopped(4), ":6: the program does not end");
        row("cut off in a pattern", program("T1\nX1\nM01\nM02X5\n").chopped(5),
            ":8: the program does");
        row("more after the end", plain + "X1\n", ":8: \"X1\" after the program's end");
        row("no units", program("T1\nX1", "T1C0.8"), ":4: nothing tells whether T1");
        row("too large in later units", program("", "T1C9.\nINCH"), ":2: 9 is too large");
        QByteArray tools;
        for (int i = 1; i <= 1001; ++i) {
            tools += "T" + QByteArray::number(i) + "C1.\n";
        }
        row("too many tools", program("", "METRIC\n" + tools), ":1003: more than 1000 tools");
        constexpr const char* refused[][2] = {
            {"T1\nX1Y1G85X2Y1", ":7: the file has no drilled hole"},
            {"T1\nX1\nT0\nX1", ":8: a hole before a tool"}, {"X1G85X2", ":5: a slot before a tool"},
            {"T3", ":5: tool T3 has no diameter"}, {"T1\nG82X1Y1", ":6: unknown command G82"},
            {"M50", ":5: unknown command M50"},
            {"X1V1", ":5: no command of a drill file: \"X1V1\""},
            {"T1\nX1\nBLKD", ":7: no command"}, {"X1.2.3", ":5: X\"1.2.3\" is no coordinate"},
            {"T1\nR5", ":6: a repeat without a distance"}, {"R10001X1", ":5: R10001 is no"},
            {"R99999999999X1", ":5: R with no whole"}, {"M25\nM25", ":6: a pattern within"},
            {"T1\nM25\nX1\nM02X1", ":8: no pattern to repeat"},
            {"T1\nM25\nX1\nM08", ":8: the pattern is not ended"},
            {"T1\nM15\nM16\nX1", ":8: neither a hole"}, {"T1\nX1Y1M30", ":6: coordinates beside"},
            {"T1\nM25\nX1\nM01\nM02X1R10000\nM01\nM02X1R10000\nM01\nM02X1R10000",
                ":13: too many holes"},
            {"T0C1.", ":5: T0 means no tool"}, {"C1.", ":5: a diameter without a tool"},
            {"T2C", ":5: diameter \"\" is no number"}, {"T2C1,5", ":5: no command"},
            {"T2C1.0.0", ":5: diameter \"1.0.0\" is no number"},
            {"T2C0.", ":5: diameter \"0.\" is not above 0"}, {"T2C101.", ":5: 101 is too large"},
            {"T2C080", ":5: diameter \"080\" has no decimal point"},
            {"T2C0.000001", ":5: 1e-06 is too small"}};
        for (const auto& [body, error] : refused) {
            row(error, program(body), error);
        }
    }

    static void addPanels()
    {
        const QByteArray via = hole("VIA", "0.3");
        const QByteArray plain = ipc2581(feature("D", via));
        row("prefixed namespace",
            QByteArray(plain)
                .replace("xmlns", "xmlns:i")
                .replace("<", "<i:")
                .replace("<i:/", "</i:"),
            "main/D 1xV120000");
        row("byte order mark, declaration, no namespace",
            "\xef\xbb\xbf<?xml version='1.0'?>" + QByteArray(plain).replace("xmlns", "x"),
            "main/D 1xV120000");
        row("micron", ipc2581(feature("D", hole("VIA", "300")), "MICRON"), "main/D 1xV120000");
        row("inch, rounded half up",
            ipc2581(feature("D", hole("PLATED", "0.03", "plusTol='0.00000005'")), "inch"),
            "main/D 1xP304800-0+1");
        row("order of first appearance, all of the key counts",
            ipc2581(feature("D",
                        hole("PLATED", "1", "plusTol='1e-1' minusTol='0.05'")
                            + hole("NONPLATED", "1") + hole("PLATED", "1", "plusTol='0.1'"))
                + feature("E", via) + feature("D", hole("NONPLATED", "1.0"))),
            "main/D 1xP400000-20000+40000 2xN400000 1xP400000-0+40000\nmain/E 1xV120000");
        row("vias by what closes them", ipc2581(feature("D", via + hole("VIA_CAPPED", "0.3"))),
            "main/D 2xV120000");
        row("slots and stacks are no tools, copper repeats holes",
            ipc2581("<PadStackDef><PadstackHoleDef diameter='x'/></PadStackDef>"
                + feature("R", "<SlotCavity><Oval/></SlotCavity><Slot/>" + via)
                + feature("C", via)),
            "main/R 1xV120000\nmain without 2, 1");
        row("panel before its board",
            ipc2581("<StepRepeat stepRef='b' nx='2' ny='3'/><StepRepeat stepRef='b'/>"
                + feature("D", via) + "</Step><Step name='b'>"
                + feature("D", via + hole("PLATED", "1") + "<Slot/>")),
            "main/D 8xV120000 7xP400000\nmain without 7, 0\nb/D 1xV120000 1xP400000\nb without 1, "
            "0");

        row("cut off", plain.chopped(20), ":10: ");
        row("not well-formed", QByteArray(plain).replace("</Set>", "</Sat>"), ":9: ");
        row("other root", "\n<svg/>", ":2: no IPC-2581 file");
        row("copper alone", ipc2581(feature("C", via)), ":11: the file has no drilled hole");
        row("unknown units", ipc2581("", "CUBIT"), ":3: unknown units \"CUBIT\"");
        row("units not told", QByteArray(plain).replace("CadHeader", "Header"), ":8: no CadHeader");
        row("too many boards",
            ipc2581("<StepRepeat stepRef='a' nx='9999' ny='9999'/></Step><Step name='a'>"
                    "<StepRepeat stepRef='b' nx='9999'/></Step><Step name='b'>"
                + feature("D", via)),
            ":8: too many holes");
        for (const QByteArray number : {"", "1,5", "0x10", "nan", "inf", "-1", "1e9"}) {
            row(number, ipc2581(feature("D", hole("VIA", number))), ":8: diameter=");
            const QByteArray tolerance = "plusTol='" + number + "'";
            row(tolerance, ipc2581(feature("D", hole("VIA", "1", tolerance))), ":8: plusTol=");
        }
        const QByteArray refused[][2] = {
            {feature("D", hole("VIA", "0.0")), ":8: diameter=\"0.0\" is no size"},
            {feature("D", "<Hole platingStatus='VIA'/>"), ":8: a hole without diameter"},
            {feature("D", "<Hole diameter='1'/>"), ":8: a hole without platingStatus"},
            {feature("D", hole("GLUED", "1")), ":8: unknown platingStatus"},
            {"<StepRepeat nx='0'/>", ":8: nx=\"0\" is no number from"},
            {"<StepRepeat stepRef='b'/>", ":8: no step \"b\" to repeat"},
            {"<StepRepeat stepRef='main'/>", ":8: step \"main\" repeats itself"},
            {"</Step><Step name='main'>", ":8: a second step"},
            {QByteArray("<a>").repeated(2000), ":8: elements are nested"}};
        for (const auto& [content, error] : refused) {
            row(error, ipc2581(content), error);
        }
    }

    QTemporaryDir mFolder;

private slots:
    void reads_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("expected"); // the board, or the beginning of the error
        addDrillFiles();
        addPanels();
    }

    void reads()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, expected);
        const QString got =
            outcome({write("file", content)}).remove(QRegularExpression("^(pcb/)?file *"));
        QCOMPARE(expected.startsWith(':') ? got.left(expected.size()) : got, expected);
    }

    void platingOfDrillFiles()
    {
        constexpr struct
        {
            const char* comments;
            char type;
        } cases[] = {{"; #@! TF.FileFunction,Plated,1,4,PTH", 'P'},
            {";#@! TF.FileFunction,NonPlated,1,2,NPTH", 'N'},
            {"; #@! TA.AperFunction,Plated,PTH,ViaDrill", 'V'},
            {"; #@! TA.AperFunction,Plated,PTH,ComponentPressFitDrill", 'F'},
            {"; #@! TA.AperFunction,ComponentDrill,PressFit", 'F'},
            {"; #@! TA.AperFunction,NonPlated,NPTH,ComponentDrill", 'N'},
            {"; #@! TF.FileFunction,NonPlated,1,2\n; #@! TA.AperFunction,Plated,PTH,ViaDrill", 'V'},
            {"; #@! TA.AperFunction,NonPlated,NPTH,ViaDrill\n; #@! TD", 'P'},
            {";TYPE=NON_PLATED\n; type=plated", 'P'},
            {";TYPE=PLATED\nT5C1.\n;TYPE=NON_PLATED", 'N'}};
        for (const auto& [comments, type] : cases) {
            const QByteArray header = QByteArray("METRIC\n") + comments + "\nT1C0.8";
            QCOMPARE(outcome({write("board.drl", program("T1\nX1Y1", header))}),
                QString::asprintf("pcb/board 1x%c320000", type));
        }
    }

    void joinsDrillFiles()
    {
        const QString metric = write("j/board-PTH.drl", program("T1\nX1\nX1Y1G85X2"));
        const QString inch = write("j/board-NPTH.drl", program("T1\nX1", "INCH\nT1C0.1"));
        const QString none = write("j/board-blind.drl", program("", "METRIC"));
        QCOMPARE(outcome({inch, none, metric}),
            "pcb/board-NPTH 1xN1016000\npcb/board-PTH 1xP320000\npcb without 1, 0");
        const Board board = readBoard({inch, metric});
        QVERIFY(board.units == Units::Inch && board.job == "board");
        QVERIFY(readBoard({none, metric}).units == Units::Metric);
        QCOMPARE(readBoard({metric, write("j/plated.drl", program("T1\nX1"))}).job, "j");

        const QString xml = write("j/board.xml", "\n <IPC-2581/>");
        const QString again = mFolder.filePath("j/../j/board-PTH.drl");
        QVERIFY(
            outcome({metric, again}).startsWith("j/../j/board-PTH.drl:1: the file is named twice"));
        QVERIFY(outcome({metric, xml}).startsWith("j/board.xml:1: no drill file"));
        QVERIFY(outcome({metric, mFolder.filePath("gone")}).startsWith("gone:1: "));
        QVERIFY(outcome({metric, mFolder.filePath("j")}).startsWith("j:1: "));
    }

    /** Also across the borders of the chunks that are read. */
    void tellsProgress()
    {
        const QByteArray drilled =
            program("T1\n" + QByteArray("X001.250Y-02.5\r\n").repeated(50000));
        const QByteArray panel = ipc2581(feature("D", hole("VIA", "0.3").repeated(50000)));
        for (const QByteArray& content : {drilled, panel}) {
            const QString path = write("long", content);
            qint64 most = 0;
            const auto all = [&](qint64 done, qint64 total) {
                most = done;
                return total == content.size();
            };
            QCOMPARE(readBoard({path}, all).steps[0].layers[0].tools[0].count, 50000);
            QVERIFY(most > content.size() / 2);
            const auto half = [](qint64 done, qint64 total) { return done < total / 2; };
            QVERIFY_EXCEPTION_THROWN(readBoard({path}, half), BoardCancelled);
        }
    }
};

QTEST_GUILESS_MAIN(BoardsTest)
#include "tst_boards.moc"
