// SPDX-License-Identifier: MIT
#include "board_reader.h"
#include "panel.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <clocale>
#include <sys/stat.h>

using namespace brox;

namespace {

/** A place in millimetres, as drill files have it. */
QString told(const Place& place)
{
    return QStringLiteral("%1,%2").arg(place.x / 4e5, 0, 'g', 9).arg(place.y / 4e5, 0, 'g', 9);
}

QString told(const Path& path)
{
    QString text = '~' + told(path.start);
    for (const Segment& segment : path.segments) {
        const bool isArc = segment.shape != Segment::Shape::Line;
        text += ">()"[int(segment.shape)] + told(segment.to)
            + (isArc ? '*' + told(segment.centre) : QString());
    }
    return text;
}

/** Type, size, tolerances in millimetres, then places: "P0.8-0.1+0.2 1,1 2,1 ~0,0>5,0". A type
 *  that was guessed has a question mark; of many holes the number is given. */
QString told(const Tool& tool)
{
    QString text = "PNVF"[int(tool.type)] + QString(tool.typeAssumed ? "?" : "")
        + QString::number(tool.finishedSize / 4e5, 'g', 9);
    if (tool.tolerance) {
        text += QStringLiteral("-%1+%2")
                    .arg(tool.tolerance->minus / 4e5)
                    .arg(tool.tolerance->plus / 4e5);
    }
    if (tool.holes.size() > 12) {
        return text + QStringLiteral(" x%1").arg(tool.holes.size());
    }
    for (const Place& hole : tool.holes) {
        text += ' ' + told(hole);
    }
    for (const Path& path : tool.slotPaths) {
        text += ' ' + told(path);
    }
    return text;
}

QString told(const Board& board)
{
    QStringList lines;
    for (const Step& step : board.steps) {
        for (const Layer& layer : step.layers) {
            QStringList parts;
            for (const Tool& tool : layer.tools) {
                parts << told(tool);
            }
            for (const Tool& tool : layer.backDrills) {
                parts << "back" + told(tool).sliced(1);
            }
            for (const Contour& contour : layer.contours) {
                parts << "PN"[int(contour.type)] + told(contour.outline);
            }
            const QString span = layer.span ? layer.span->from + '-' + layer.span->to : QString();
            lines << step.name + '/' + layer.name + span + ": " + parts.join("; ");
            if (!layer.assumedFormat.isEmpty()) {
                lines.last() += " [" + layer.assumedFormat + ']';
            }
        }
        for (const Repeat& repeat : step.repeats) {
            lines << step.name + '*' + board.steps[repeat.step].name + ' ' + told(repeat.at);
        }
    }
    return (lines + board.notes).join('\n');
}

/** A drill program, of a tool of 0.8 mm if nothing else is said; its body then begins in line 5. */
QByteArray program(const QByteArray& body, const QByteArray& header = "METRIC\nT1C0.8")
{
    return "M48\n" + header + "\n%\n" + body + "\nM30\n";
}

/** Holes of a drill program in a square, so many to a side and so far from each other. */
QByteArray square(int side, int pitch)
{
    QByteArray lines;
    for (int i = 0; i < side * side; ++i) {
        lines += "X" + QByteArray::number(i % side * pitch) + "Y"
            + QByteArray::number(i / side * pitch) + '\n';
    }
    return lines;
}

QByteArray hole(const QByteArray& status, const QByteArray& diameter, const QByteArray& more = {})
{
    return "<Hole platingStatus='" + status + "' diameter='" + diameter + "' x='1' y='2' " + more
        + "/>\n";
}

QByteArray feature(const QByteArray& layer, const QByteArray& holes)
{
    return "<LayerFeature layerRef='" + layer + "'><Set>" + holes + "</Set></LayerFeature>\n";
}

QByteArray slot(const QByteArray& shape)
{
    return "<SlotCavity platingStatus='PLATED'>" + shape + "</SlotCavity>";
}

/** A file of layers D of drills, R of routs, B of back drills and C of copper; a step's content
 *  begins in line 10. */
QByteArray ipc2581(const QByteArray& mainStep, const QByteArray& units = "MILLIMETER")
{
    return QByteArray(
               R"(<IPC-2581 xmlns='http://webstds.ipc.org/2581'><Content><StepRef name='main'/>
<DictionaryLineDesc units='MILLIMETER'><EntryLineDesc id='w'>
<LineDesc lineWidth='.5'/></EntryLineDesc></DictionaryLineDesc>
<DictionaryStandard units='INCH'><EntryStandard id='o'><Oval width='.4' height='.1'/></EntryStandard>
</DictionaryStandard><DictionaryUser units='INCH'><EntryUser id='o'><UserSpecial><Circle diameter='.1'/></UserSpecial></EntryUser></DictionaryUser></Content><Ecad name='job'><CadHeader units='UNITS'>
<Spec name='bd'><Backdrill type='START_LAYER'/></Spec></CadHeader><CadData>
<Layer name='D' layerFunction='DRILL'><Span fromLayer='TOP' toLayer='BOT'/></Layer>
<Layer name='R' layerFunction='ROUT'/><Layer name='C' layerFunction='CONDUCTOR'/>
<Layer name='B' layerFunction='DRILL'><SpecRef id='bd'/></Layer><Step name='main'>
)")
               .replace("UNITS", units)
        + mainStep + "</Step></CadData></Ecad></IPC-2581>\n";
}

/** A Gerber drill file; its body begins in line 5. */
QByteArray gerber(const QByteArray& body)
{
    return "%FSLAX34Y34*%%MOMM*%\n%TF.FileFunction,Plated,1,2,PTH,Drill*%\n"
           "%TA.AperFunction,ViaDrill*%\n%ADD10C,0.3*%%TD*%%ADD11O,1X3*%%ADD12R,1X1*%\n"
        + body + "\nM02*\n";
}

} // namespace

class ReadersTest : public QObject
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
    QString outcome(const QStringList& paths, const ReadOptions& options = {}) const
    {
        QString text;
        try {
            text = told(readBoard(paths, options));
        } catch (const BoardError& error) {
            text = error.message();
        }
        return text.remove(mFolder.path() + '/');
    }

    static void row(const QByteArray& name, const QByteArray& content, const QString& expected)
    {
        QTest::newRow(name.constData()) << content << expected;
    }

    static void addDrillFiles()
    {
        const QByteArray plain = program("T1\nX1.Y1.");
        row("carriage returns", QByteArray(plain).replace('\n', '\r'), "P?0.8 1,1");
        row("lower case, blanks, byte order mark, no last end",
            "\xef\xbb\xbf" + plain.toLower().replace("x", "x ").replace("\n", "  \r\n\n").trimmed(),
            "P?0.8 1,1");
        row("tools alike stay two, unused ones none, order of definition, axes kept",
            program("T3\nX1.\nT2\nY-1.5\nX+2.Y.5\nT1\nX1.Y1.", "METRIC\nT1C1\nT2C1\nT3C.80\nT4C2."),
            "P?1 1,1; P?1 1,-1.5 2,0.5; P?0.8 1,0");
        row("inch, units after the tools, trailing zeros left out",
            program("T1\nX0254Y01", "FMAT,2\nT01F00S00C0.0310H500Z-1.\nINCH,LZ"),
            "P?0.7874 64.516,25.4 [2:4, trailing zeros left out]");
        row("seven digits have one decimal more", program("T1\nX1234567", "METRIC\nT1C.8"),
            "P?0.8 123.4567,0 [3:4, leading zeros left out]");
        row("a slot of no specified width", program("T9\nG00X1.\nM15\nG01X2.\nM16"),
            "P?0 ~1,0>2,0\nfile: the file does not specify the width of the slots of T9");
        row("units with fields", program("T1\nX1000Y2", "M71,TZ,0000.00\nT1C0.8"), "P?0.8 10,0.02");
        row("digits by a comment", program("T1\nX1000", ";FILE_FORMAT=4:4\nMETRIC,LZ\nT1C1."),
            "P?1 1000,0");
        row("zeros specified twice", program("T1\nX123", "METRIC,LZ,TZ,000.000\nT1C1."),
            "P?1 0.123,0 [3:3, leading zeros left out]");
        row("suppressed zeros by a comment",
            program("T1\nX1",
                "; FORMAT={3:3/ absolute / metric / suppress trailing zeros}\nMETRIC\nT1C1."),
            "P?1 100,0");
        row("zeros guessed from the file", program("T1\nX001Y0155\nX00123Y01", "INCH\nT1C.1"),
            "P?2.54 2.54,39.37 3.1242,25.4 [2:4, trailing zeros left out]");
        row("incremental places", program("T1\nX1.Y1.\nG91\nX1.Y1.\nX1.\nG90\nX9."),
            "P?0.8 1,1 2,2 3,2 9,2");
        row("incremental by the header", program("T1\nX1.\nX1.", "METRIC\nICI,ON\nT1C0.8"),
            "P?0.8 1,0 2,0");
        row("no header, a tool by the number 0", "%\nM72\nG90\nT0C0.1\nX1.Y1.\nT9\nX2.\nM00",
            ":6: tool T9 has no diameter");
        row("tool 0 with a diameter, and none",
            program("T0\nX1.\nT1\nX2.\nT0", "METRIC\nT0C1.\nT1C2."), "P?1 1,0; P?2 2,0");
        row("another diameter", program("T1\nX1.\nT1C0.8\nX1.13\nT1C0.29\nX3."),
            "P?0.8 1,0 1.13,0; P?0.29 3,0");
        row("units that change",
            program("T1\nX1.\nT2\nX2.",
                "INCH\n;#@! TA.DrillTolerance,.001,.002\nT1C.02\n;#@! TD\nMETRIC\nT2C2."),
            "P?0.508-0.0508+0.0254 1,0; P?2 2,0\nfile: the units change in line 6");
        row("back drills",
            program("T1\nX1.\nT2\nX2.",
                "METRIC\n; #@! TA.AperFunction,NonPlated,BackDrill\nT1C1.\n; #@! TD\nT2C2."),
            "P?2 2,0; back1 1,0");
        row("repeats", program("T1X1.Y1.\nR02X2.\nR1Y1.\nX0."), "P?0.8 1,1 3,1 5,1 5,2 0,2");
        row("pattern, each repeat from the last",
            program("T1\nX9.\nM25\nX1.\nX2.Y0.G85X3.\nM01\nM02X10.\nM02Y10.\nM08\nX4."),
            "P?0.8 9,0 1,0 11,0 11,10 4,0 ~2,0>3,0 ~12,0>13,0 ~12,10>13,10");
        row("pattern without a beginning", program("T1\nX1.\nM01\nM02X5.R2\nM02"),
            "P?0.8 1,0 6,0 11,0");
        row("M01 and M00 before the end are stops",
            program("T1\nX1.\nM00\nX2.\nM01\nM02").replace("M30", ""),
            "P?0.8 1,0 2,0\nfile: M00 in line 7 is taken for a stop: the program goes on behind "
            "it");
        row("routed paths, arcs by radius and by centre",
            program("T1\nG00X0.Y0.\nM15\nG01X2.\nG03X4.Y2.A2.\nM16\nG00X9.\nM15\nG02X9.Y2.I1.J0.\n"
                    "M17\nG05\nX5."),
            "P?0.8 5,2 ~0,0>2,0)4,2*2,2 ~9,2(9,2*10,2");
        row("path without tool down; a cutter beside its path makes a contour",
            program("T1\nG00X1.Y1.\nG01X2.\nG00X5.\nG41\nM15\nG01X3.\nG40\nM16\nG00X7.\nG01X8."),
            "P?0.8 ~1,1>2,1 ~7,1>8,1; P~5,1>3,1");
        row("tool down and up beside places", program("T1\nG00X1.Y1.M15\nG01X2.M16\nG05\nX9."),
            "P?0.8 9,1 ~1,1>2,1");
        row("a pattern repeats contours too", program("T1\nX9.\nM25\nX1.Y0.G84X2.\nM01\nM02X5."),
            "P?0.8 9,0; P~2,0(2,0*1,0; P~7,0(7,0*6,0");
        row("units by a comment",
            program("T1\nX1000", "; FORMAT={3:3/ absolute / metric / keep zeros}\nT1C1."),
            "P?1 1,0");
        row("a skipped block, comments, what sets the machine up",
            program("(a)\n/\nT0103\n/X3.\nT1M06\nM09 ; X1Y1\nM47,X5Y5 "
                    "GO\nG93X0Y0\nN10X1.Y1.F10\n%\nM18",
                "METRIC\nVER,1\nR,H\nDETECT,ON\nATC,ON\nT1C0.8"),
            "P?0.8 3,0 1,1\n"
            "file: line 12 begins with a slash, by which operators may skip it; it counts");

        row("a radius that holds for the arcs that follow, a comment that is a place",
            program("T1\nG00X0.Y0.\nM15\nG03X4.Y0.A2.\nX0.Y0.\nM16\n;X1.Y1."),
            "P?0.8 ~0,0)4,0*2,0)0,0*2,0\n"
            "file: the comment in line 11 is a place, which is not drilled");
        row("digits by the decimals of sizes, and by the board that results",
            program("T1\n" + square(6, 25400), "M72\nT1C0.03937"),
            "P?0.9999975 x36 [2:5, leading zeros left out]");
        row("digits: no board is 4 mm wide", program("T1\n" + square(6, 200), "INCH\nT1C.02"),
            "P?0.508 x36 [2:3, leading zeros left out]");
        row("digits: false ones are not believed",
            program("T1\n" + square(20, 2000), ";FILE_FORMAT=2:2\nINCH\nT1C.04"),
            "P?1.016 x400 [2:4, leading zeros left out]\n"
            "file: its numbers have 5 digits, more than the 2:2 that it specifies");
        row("digits: doubtful", program("T1\n" + square(2, 150000), "INCH\nT1C.04"),
            "P?1.016 0,0 38.1,0 0,38.1 38.1,38.1 [2:5 (38.1 x 38.1 mm) or as likely "
            "2:4 (381 x 381 mm); --digits decides]");
        row("tools without numbers, listed by comments in order",
            ";   Holesize 1. = 8.0 Tolerance = +0/-0 PLATED MILS Quantity = 1\n"
            ";   Holesize 2. = 40.0 NON_PLATED MILS\n%\nG90\nX0100000Y0100000\nM00\n"
            "X0200000Y0100000\nM30\n",
            "P0.2032 25.4,25.4; N1.016 50.8,25.4 [inches, 2:5, leading zeros left out]");

        QByteArray tools;
        for (int i = 1; i < 100000; ++i) {
            tools += "T" + QByteArray::number(i) + "\n";
        }
        row("tools that nothing defines", program(tools), ":11004: more than 1000 tools");
        row("a list of tools", "NC Tools Report\nUnits: Millimeter\n1\t0.1999\n",
            ":1: no drill file: it is a list of tools");
        row("empty", "", ":1: no drill file: it is an empty file");
        row("tape", "\x80\x01\x02\x80\x04\x80\x80", ":1: no drill file: it is a tape in EIA code");
        row("job file", "{ \"Header\": 1 }", ":1: no drill file: it is a job file");
        row("copper", "%FSLAX34Y34*%\n%ADD10C,1*%\nD10*\nX1D03*\nM02*\n",
            ":1: no drill file: it is a Gerber file");
        row("long line", "M48\n;" + QByteArray(5000, 'x') + '\n', ":2: the line is longer");
        row("cut off in the header", plain.left(18), ":3: the header does not end");
        row("cut off in the body", plain.chopped(4), ":6: the program does not end");
        row("more after the end", QByteArray(plain + "X1\n").replace("\n", "\r\n"),
            ":8: \"X1\" after the program's end");
        row("no units", program("T1\nX1.", "T1C0.8"),
            ":2: nothing specifies whether T1 is in millimetres or inches; --file-units");
        row("too large in later units", program("T1\nX1.", "T1C90.\nINCH"),
            ":2: tool T1: 90 inch is too large, the most are 500 mm");
        constexpr const char* refused[][2] = {{"T1\nX1G82", ":6: unknown command G82"},
            {"X1.G85X2.", ":5: a slot before a tool"}, {"M50", ":5: unknown command M50"},
            {"X1V1", ":5: no command of a drill file: \"X1V1\""},
            {"T1\nX1.2.3", ":6: X\"1.2.3\" is no coordinate"},
            {"METRIC TZ", ":5: no command of a drill file: \"METRIC TZ\""},
            {"T1\nR5", ":6: a repeat without a distance"}, {"T1\nX0\nX1R2Y1", ":7: a place before"},
            {"T1M06X1", ":5: coordinates beside M06"},
            {"T1\nR5X1.", ":6: a repeat that follows no"},
            {"T1\nG00X1.\nM15\nT1\nX2.", ":9: neither a hole"},
            {"T1\nX0\nM25\nR9999X0\nM01\nM02X0R9999", ":10: too many holes and slots"},
            {"T1\nX0G85X1.\nM01\nM02X0R999\nM01\nM02X0R9999",
                ":10: too many holes and slots, the most are 50000000 holes; a slot counts as 8"},
            {"T1\nM25\nX1.\nM02X1.", ":8: no pattern to repeat"},
            {"T1\nM25\nX1.\nM01\nM02X1.M80", ":9: a pattern that is turned or mirrored"},
            {"T1\nM15\nM16\nX1.", ":8: neither a hole"}, {"T1\nX6000.", ":6: a place further than"},
            {"T1\nX1.\nG92X2.", ":7: the origin is set after the first hole"},
            {"T1\nG02X5.A1.", ":6: no arc of this radius"},
            {"T1\nG02X5.I1.", ":6: an arc whose ends"},
            {"T1\nX1.Y1.X2.Y2.", ":6: a word stands twice"}, {"T1\nX1.T2", ":6: a tool behind"},
            {"T1C0.8C1.", ":5: a word stands twice"},
            {"T1\nG00X1.\nM15\nG02I1.", ":8: the centre of an arc without its end"},
            {"T2C0.", ":5: diameter \"0.\" is not above 0"},
            {"T2C080", ":5: diameter \"080\" has no decimal point"}, {"", ":1: no drilled hole"}};
        for (const auto& [body, error] : refused) {
            row(error, program(body), error);
        }
    }

    static void addGerberFiles()
    {
        row("Gerber: flashes, strokes, obrounds, regions",
            gerber(
                "D10*\nX10000Y0D03*\nX20000D03*\nX0Y0D02*\nG01*\nX0Y50000D01*\nG75*\n"
                "G03X0Y70000I0J10000D01*\nD11*\nX0Y0D03*\nG01*\nG36*\nX0Y0D02*\nX10000D01*\nX0D01*"
                "\nG37*"),
            "1-2: V0.3 1,0 2,0 ~0,0>0,5)0,7*0,6; P1 ~0,-1>0,1; P~0,0>1,0>0,0");
        row("Gerber: inches by an old command, back drills, nothing plated",
            gerber("G70*\nD10*\nX10000Y0D03*\nG36*\nX0D02*\nX10000D01*\nX0D01*\nG37*\nD11*\nD03*")
                .replace("Plated", "NonPlated")
                .replace("ViaDrill", "BackDrill"),
            "1-2: N1 ~0,-1>0,1; back0.3 25.4,0; N~0,0>25.4,0>0,0");
        row("Gerber: a square hole", gerber("D12*\nX0Y0D03*"), ":6: aperture D12 is not round");
        row("Gerber: a lost end", gerber("D10*\nX0Y0D03X1Y1D03*"), ":6: a word stands twice");
        row("Gerber: percent signs in comments", gerber("D10*\nG04 5 %*\nX10000Y0D03*\nG04 6 %*"),
            "1-2: V0.3 1,0");
        row("Gerber: an unknown command", gerber("%KO*%"), ":5: unknown command \"KO\"");
        row("Gerber: what is for parts is not plated in a file that is not",
            gerber("D10*\nX10000Y0D03*").replace("Plated", "NonPlated").replace("Via", "Component"),
            "1-2: N0.3 1,0");
        row("Gerber: copies", gerber("%SRX1Y10I0J1*%"), ":5: \"SRX1Y10I0J1\" changes what");
        row("Gerber: format", "%FSLAX34Y35*%\n%ADD10C,1*%\nX1D03*\n" + gerber(""),
            ":1: unknown format");
        row("Gerber: cut off", gerber("D10*\nX0Y0D03*").chopped(5), ":7: the file does not end");
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
            "main/DTOP-BOT: V0.3 1,2");
        row("inch, rounded half up",
            ipc2581(feature("D", hole("PLATED", "0.03", "plusTol='0.00000005'")), "inch"),
            "main/DTOP-BOT: P0.762-0+2.5e-06 25.4,50.8");
        row("order of first appearance, all of the key counts, vias by what closes them",
            ipc2581(feature("D",
                        hole("PLATED", "1", "plusTol='1e-1' minusTol='0.05'")
                            + hole("NONPLATED", "+1") + hole("PLATED", "1", "plusTol='0.1'"))
                + feature("R", via) + feature("D", hole("VIA_CAPPED", "0.3"))),
            "main/DTOP-BOT: P1-0.05+0.1 1,2; N1-0+0 1,2; P1-0+0.1 1,2; V0.3-0+0 1,2\n"
            "main/R: V0.3-0+0 1,2");
        row("back drills, holes of copper and stacks",
            ipc2581("<PadStackDef><PadstackHoleDef diameter='x'/></PadStackDef>" + feature("B", via)
                + feature("C", via) + feature("D", via + "<SpecRef id='bd'/>" + via)),
            "main/B: back0.3 1,2\nmain/DTOP-BOT: V0.3 1,2; back0.3 1,2");
        row("copies are placed by their datum",
            ipc2581("<StepRepeat stepRef='a' x='10' angle='90' mirror='1'/></Step>"
                    "<Step name='a'><Datum x='1' y='2'/>"
                + feature("D", via)),
            "main*a 12,1\na/DTOP-BOT: V0.3 1,2\n"
            "copies of step \"a\" are placed by its datum, which is not its origin");
        row("sets that are turned and moved",
            ipc2581(feature("D",
                "<Location x='10' y='0'/><Xform rotation='90' mirror='TRUE'/>" + via + "</Set><Set>"
                    + via)),
            "main/DTOP-BOT: V0.3 8,-1 1,2");
        row("slots: of a dictionary, turned, rounded, drawn",
            ipc2581(feature("R",
                slot("<Location x='20' y='1'/><Xform rotation='90' scale='.5'/>"
                     "<StandardPrimitiveRef id='o'/>")
                    + slot("<UserPrimitiveRef id='o'/>")
                    + slot("<RectRound width='1' height='3' radius='0.5'/>")
                    + slot(
                        "<Outline><Polygon><PolyBegin x='0' y='0'/><PolyStepSegment x='4' y='0'/>"
                        "<PolyStepCurve x='4' y='2' centerX='4' centerY='1' clockwise='false'/>"
                        "<PolyStepSegment x='0' y='2'/>"
                        "<PolyStepCurve x='0' y='0' centerX='0' centerY='1' clockwise='false'/>"
                        "</Polygon></Outline>")
                    + slot("<Polyline><PolyBegin x='0' y='0'/><PolyStepSegment x='1' y='0'/>"
                           "<LineDescRef id='w'/></Polyline>"))),
            "main/R: P1.27 ~20,-0.905>20,2.905; P2.54 ~0,0; P1 ~0,-1>0,1; P2 ~0,1>4,1; P0.5 "
            "~0,0>1,0");
        row("a slot without a plating status",
            ipc2581(feature("R", "<SlotCavity><Oval width='3' height='1'/></SlotCavity>")),
            "main/R: P?1 ~-1,0>1,0");
        row("a slot with corners is a contour",
            ipc2581(feature("R",
                slot("<RectRound width='2' height='1' radius='1' upperLeft='false'/>")
                    + slot(
                        "<Outline><Polygon><PolyBegin x='0' y='0'/><PolyStepSegment x='2' y='0'/>"
                        "<PolyStepSegment x='2' y='1'/><PolyStepSegment x='0' y='1'/>"
                        "</Polygon></Outline>")
                    + hole("PLATED", "1", "type='SQUARE'") + via)),
            "main/R: V0.3 1,2; P~-0.5,-0.5>0.5,-0.5)1,0*0.5,0)0.5,0.5*0.5,0>-1,0.5>-1,0)-0.5,-0.5*"
            "-0.5,0; P~0,0>2,0>2,1>0,1>0,0; "
            "P~0.5,1.5>1.5,1.5>1.5,2.5>0.5,2.5>0.5,1.5");

        const QByteArray stack =
            "<PadStack><LayerHole platingStatus='VIA' diameter='0.3' x='1' y='2'>"
            "<Span fromLayer='BOT' toLayer='TOP'/></LayerHole></PadStack>";
        row("holes of pad stacks alone", ipc2581(stack), "main/DTOP-BOT: V0.3 1,2");
        row("holes of pad stacks once more", ipc2581(stack + feature("R", via)),
            "main/R: V0.3 1,2");

        row("names that would drive a terminal",
            QByteArray(plain).replace("name='main'", "name='m&#10;\u009b31m'"),
            QStringLiteral("m\u240a<U+009b>31m/DTOP-BOT: V0.3 1,2"));
        row("entities of another file",
            "<!DOCTYPE IPC-2581 SYSTEM 'x.dtd'>" + QByteArray(plain).replace("'2'", "'2&y;'"),
            ":1: \"x.dtd\" stands for text of another file");
        row("parameter entities",
            "<!DOCTYPE IPC-2581 [<!ENTITY % p ''>%p;]>"
                + QByteArray(plain).replace("'2'", "'2&y;'"),
            ":1: \"p\" stands for text");
        row("a long comment", "<!--" + QByteArray(3 << 20, ' ') + "-->" + plain,
            ":1: a tag or a comment of more than 1 MiB");
        row("cut off", plain.chopped(20), ":12: the XML does not end; the file is cut off");
        row("not well-formed", QByteArray(plain).replace("</Set>", "</Sat>"),
            ":11: no well-formed XML: ");
        row("other root", "\n<svg/>", ":2: no IPC-2581 file");
        row("contours alone", ipc2581(feature("R", slot("<Octagon length='2'/>"))),
            ":12: no drilled hole and no slot; contours: 1, back drills: 0");
        row("unknown units", ipc2581("", "CUBIT"), ":5: unknown units \"CUBIT\"");
        row("too many boards",
            ipc2581("<StepRepeat stepRef='a' nx='9999' ny='9999'/></Step><Step name='a'>"
                    "<StepRepeat stepRef='b' nx='9999'/></Step><Step name='b'>"
                + feature("D", via)),
            ":13: too many holes");
        for (const QByteArray number : {"", "1,5", "0x10", "nan", "inf", "-1", "1e9"}) {
            row(number, ipc2581(feature("D", hole("VIA", number))), ":10: diameter=");
        }
        const QByteArray refused[][2] = {
            {feature("D", hole("VIA", "0.0")), ":10: diameter=\"0.0\" is no size"},
            {feature("D", "<Hole diameter='1'/>"), ":10: a hole without platingStatus"},
            {feature("D", hole("GLUED", "1")), ":10: unknown platingStatus"},
            {feature("R", slot("")), ":10: a slot without a shape"},
            {feature("R", slot("<UserPrimitiveRef id='x'/>")), ":10: no shape \"x\""},
            {feature("D", "<Hole platingStatus='VIA' diameter='1' x='1'/>"),
                ":10: a hole without x"},
            {feature("D", hole("VIA", "1", "minusTol='-.1'")), ":10: minusTol=\"-.1\" is negative"},
            {"<StepRepeat nx='0'/>", ":10: nx=\"0\" is no number from"},
            {"<StepRepeat mirror='yes'/>", ":10: mirror=\"yes\" is neither true"},
            {"<StepRepeat stepRef='b'/>", ":10: no step \"b\" to repeat"},
            {"<StepRepeat stepRef='main'/>", ":10: step \"main\" repeats itself"},
            {"</Step><Step name='main'>", ":10: a second step"},
            {QByteArray("<a>").repeated(2000), ":10: elements are nested"}};
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
        addGerberFiles();
        addPanels();
    }

    void reads()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, expected);
        const QString got = outcome({write("file", content)})
                                .remove(QRegularExpression("^(pcb/file(: )?|file(?=:))"));
        QCOMPARE(expected.startsWith(':') ? got.left(expected.size()) : got, expected);
    }

    void platingAndTolerances()
    {
        constexpr struct
        {
            const char* comments;
            const char* tool;
            const char* note = "";
        } cases[] = {{"; #@! TF.FileFunction,Plated,1,4,PTH", "1-4: P0.8"},
            {"; #@! TF.FileFunction,NonPlated,1,2,NPTH\n; #@! TA.AperFunction,Plated,PTH,ViaDrill",
                "1-2: V0.8",
                "\nboard.drl: T1 is specified as plated, and taken so, in a file of non-plated "
                "holes"},
            {"; #@! TF.FileFunction,MixedPlating,1,2\n;#@! TA.AperFunction,ComponentDrill,PressFit",
                "1-2: F0.8"},
            {"; #@! TA.AperFunction,NonPlated,NPTH,ViaDrill\n"
             "; #@! TA.DrillTolerance,0.02,0.01\n; #@! TD",
                ": P?0.8"},
            {"; #@! TA.DrillTolerance,0.02,0.01\n; #@! TA.AperFunction,NonPlated,NPTH",
                ": N0.8-0.01+0.02"},
            {";TYPE=NON_PLATED\n; type=plated", ": P0.8"},
            {";TYPE=PLATED\nT5C1.\n;TYPE=NON_PLATED", ": N0.8"},
            {";T1 Holesize 1. = 0.81 Tolerance = +0.1/-0.2 NON_PLATED MM Quantity = 1",
                ": N0.8-0.2+0.1"},
            {"; PLATED HOLES START AT T0\n; NON-PLATED HOLES START AT T1\n"
             "; THROUGH (PLATED) HOLES START AT T100",
                ": N0.8"},
            {";Layer: NPTH_Through", ": N0.8"}, {";Layer: PTH_Inner1_Inner2_Via", ": V0.8"},
            {";Layer: Drill PTH", ": P0.8"}, {";TYPE=PLATED\n;Layer: PTH_Through_Via", ": V0.8"},
            {"; #@! TF.FileFunction,NonPlated,1,2,NPTH\n; #@! TA.AperFunction,ComponentDrill",
                "1-2: N0.8"},
            {"; #@! TA.AperFunction,ComponentDrill", ": P?0.8"},
            {"; Contents: Thru / Drill / Non-Plated", ": N0.8"},
            {";T1 Holesize 1. = .0315 Tolerance = +2/-1 OPTIONAL INCHES", ": P?0.8-25.4+50.8"}};
        for (const auto& [comments, tool, note] : cases) {
            const QByteArray header = QByteArray("METRIC\n") + comments + "\nT1C0.8";
            QCOMPARE(outcome({write("board.drl", program("T1\nX1.Y1.", header))}),
                QLatin1String("pcb/board") + tool + " 1,1" + note);
        }
        const QByteArray below = program("T1\n;TYPE=PLATED\nT1\nX1.\n;TYPE=NON_PLATED\nT1\nX2.",
            ";TYPE=NON_PLATED\nMETRIC\nT1C0.8");
        QCOMPARE(outcome({write("below.drl", below)}), "pcb/below: P0.8 1,0; N0.8 2,0");
        const QByteArray remark = program("T1\nX1.\nX1.G85X2.\nT2\nX3.",
            ";T1 Holesize 1. = 10.0 Tolerance = +0/-0 PLATED MILS Quantity = 3\nINCH\nT2C.1\n"
            ";T2 Holesize 2. = 50.0 Tolerance = +0/-0 PLATED MILS");
        QCOMPARE(outcome({write("remark.drl", remark)}),
            "pcb/remark: P2.54 76.2,0; P0.254 25.4,0 ~25.4,0>50.8,0\n"
            "remark.drl: T2 has 2.54 mm where a comment says 1.27 mm\n"
            "remark.drl: holes of T1: 2 where a comment says 3");
        QCOMPARE(outcome({write("a-NPTH.drl", program("T1\nX1."))}), "pcb/a-NPTH: N0.8 1,0");
    }

    void joinsDrillFiles()
    {
        const QString metric = write("j/board-PTH.drl", program("T1\nX1.\nX1.Y1.G85X2."));
        const QString inch = write("j/board-NPTH.drl", program("T1\nX1.", "INCH\nT1C0.1"));
        const QString none = write("j/board-blind.drl", program("", "METRIC"));
        QCOMPARE(outcome({inch, none, metric}),
            "pcb/board-NPTH: N2.54 25.4,0\npcb/board-PTH: P0.8 1,0 ~1,1>2,1\n"
            "j/board-blind.drl: nothing to drill");
        const Board board = readBoard({inch, metric});
        QVERIFY(board.units == Units::Inch && board.job == "board");
        QCOMPARE(readBoard({metric, write("j/plated.drl", program("T1\nX1."))}).job, "j");
        const QString unitless = write("u.drl", program("T1\nX1.", "T1C0.1"));
        QCOMPARE(outcome({unitless}, {{Units::Inch, {}, {}}, false, {}}), "pcb/u: P?2.54 25.4,0");

        // What is whole in other files is drilled once, as the file has it that says more.
        write("o/all.drl", program("T1\nX1.\nX2.\nT2\nX3.Y0.G85X4.", "METRIC\nT1C0.8\nT2C1."));
        write("o/all-PTH.drl", program("T2\nX4.Y0.G85X3.\nT1\nX2.", "METRIC\nT1C0.8\nT2C1."));
        write("o/all-NPTH.drl", program("T1\nX1."));
        write("o/all.drd.0102", program("T1\nX2.Y2."));
        write("o/all.drd.0203", program("T1\nX2.Y2."));
        write("o/bom.csv", "Y1,8 MHz\nX1,jack\n");
        write("o/weak.txt", "X1.Y1.\nX2.Y2.\nno more\n");
        const QString order = outcome({mFolder.filePath("o")});
        QVERIFY2(
            order.startsWith("pcb/all-NPTH: N0.8 1,0\npcb/all-PTH: P0.8 2,0; P1 ~4,0>3,0\n"
                             "pcb/all.drd.01021-2: P?0.8 2,2\npcb/all.drd.02032-3: P?0.8 2,2\n"),
            qPrintable(order));
        QVERIFY2(order.contains("all: left out, it drills the same as"), qPrintable(order));
        QVERIFY2(order.contains("not read: o/weak.txt:1: "), qPrintable(order));
        QVERIFY(outcome({mFolder.filePath("o")}, {{}, true, {}}).startsWith("o/weak.txt:1: "));

        const QString xml = write("j/board.xml", ipc2581(""));
        const QString again = mFolder.filePath("j/../j/board-PTH.drl");
        QVERIFY(outcome({metric, again}).contains(": the file is named twice"));
        QVERIFY(outcome({metric, xml}).startsWith("j/board.xml:1: no drill file"));
        QVERIFY(outcome({metric, mFolder.filePath("gone")}).startsWith("gone: "));
    }

    void outlines()
    {
        const auto outline = [](const QByteArray& from, const QByteArray& to) {
            return "%FSLAX34Y34*%\n%MOMM*%\n%TF.FileFunction,Profile,NP*%\n%ADD10C,0.1*%\nD10*\nX"
                + from + 'Y' + from + "D02*\nX" + to + "D01*\nY" + to + "D01*\nM02*\n";
        };
        const QByteArray drilled = program("T1\nX10.Y10.\nX90.Y60.");
        const QString factor =
            "the holes cover 80 x 50 mm, the outline in o.gbr 10 x 10 mm; 0.1 times as large they "
            "would fit";
        const std::pair<QByteArray, QString> cases[] = {{outline("0", "1000000"), ""},
            {outline("50000", "905000"), ""}, {outline("0", "100000"), factor},
            {outline("-1000000", "-100000"),
                "the holes lie beside the outline in o.gbr; -105, -90 mm would move them to its "
                "middle"},
            {outline("0", "700000"),
                "the holes cover 80 x 50 mm, and reach beyond the outline in o.gbr"}};
        for (const auto& [content, note] : cases) {
            write("outline/d.drl", drilled);
            write("outline/o.gbr", content);
            const Board board = readBoard({mFolder.filePath("outline")});
            QCOMPARE(board.notes.mid(2).join('\n'), note);
        }
        write("outline/d.drl", program("T1\n" + square(2, 150000), "INCH\nT1C.04"));
        write("outline/o.gbr", outline("0", "400000"));
        const QString likely = outcome({mFolder.filePath("outline")});
        QVERIFY2(likely.contains(" 38.1,38.1 [2:5, leading zeros left out]"), qPrintable(likely));
    }

    /** Sizes, digits, zeros, plating, tolerances and layers by the lists of each program. */
    void listsOfTools()
    {
        const QByteArray bare = "%\nT01\nX100000Y050000\nX200000\nT02\nX100000\nM30\n";
        const QByteArray sized = program("T1\nX1.\nT2\nX2.G85X3.", "METRIC\nT1C0.8\nT2C1.");
        const struct
        {
            const char* name;
            QByteArray list;
            QList<std::pair<QString, QByteArray>> files;
            QString board; ///< without what was taken
        } cases[] = {
            {"a.dri",
                "Drill Station Info File: a.dri\n"
                " Device : Excellon drill station, coordinate format 2.5 inch\n"
                "Drills used:\n T01   0.0400inch   2\n T02   0.1000inch   3\n"
                "Plotfiles:\n\n C:\\out\\a.drd\n",
                {{"a.drd", bare}},
                "pcb/a: P?1.016 25.4,12.7 50.8,12.7; P?2.54 25.4,12.7 [2:5, leading zeros left "
                "out]\n"
                "a.drd: its numbers are read as inches, 2:5, leading zeros left out, by a.dri\n"
                "a.drd: the size of T1 is that of a.dri (and 1 more like it)\n"
                "a.drd: holes of T2: 1 where a.dri says 3"},
            {"b.DRR",
                "NCDrill File Report For: b.PcbDoc\nLayer Pair : Top to Bottom\n"
                "ASCII Plated RoundHoles File : b-Plated.TXT\nASCII SlotHoles File : b-Slots.TXT\n"
                "T1  32mil (0.813mm)  +/-4mil (0.1mm)  Round  1  NPTH  1.0inch (25mm)\n"
                "T2  1mm (39.4mil)  +0.1mm -0.05mm  Slot  1  PTH  1.0inch (25mm)\n"
                "Layer Pair : Top to Mid 1\nASCII RoundHoles File : b.TX2\n"
                "T1  0.5mm (19.685mil)  Round  2    1.0inch (25mm)\n",
                {{"b-Slots.TXT", sized}, {"b.TX2", program("T1\nX9.\nX8.", "METRIC\nT01F00S00")}},
                "pcb/b-SlotsTop-Bottom: N0.8-0.1016+0.1016 1,0; P1-0.05+0.1 ~2,0>3,0\n"
                "pcb/bTop-Mid 1: P?0.5 9,0 8,0\n"
                "b-Slots.TXT: the tolerance of T1 is that of b.DRR (and 1 more like it)\n"
                "b-Slots.TXT: the plating of T1 is that of b.DRR (and 1 more like it)\n"
                "b-Slots.TXT: T1 has 0.8 mm where b.DRR says 0.8128 mm\n"
                "b.TX2: the size of T1 is that of b.DRR"},
            {"ncdrill.log",
                "NC DRILL Log\nFORMAT 3.5\nOUTPUT-UNITS METRIC\nCOORDINATES INCREMENTAL\n"
                "SUPPRESS-LEAD-ZEROES NO\nSUPPRESS-TRAIL-ZEROES YES\n"
                " Size  Plating  Tool  + Tolerance  - Tolerance\n"
                "0.5000  P  T01  0.100000  0.050000\n1.5000  N  T02  0.000000  0.000000\n",
                {{"c.drl", bare}},
                "pcb/c: P0.5-0.05+0.1 100,50 300,50; N1.5 400,50\n"
                "c.drl: its numbers are read as millimetres, 3:5, trailing zeros left out, by "
                "ncdrill.log\n"
                "c.drl: its places are incremental, by ncdrill.log\n"
                "c.drl: the size of T1 is that of ncdrill.log (and 1 more like it)\n"
                "c.drl: the tolerance of T1 is that of ncdrill.log\n"
                "c.drl: the plating of T1 is that of ncdrill.log (and 1 more like it)"},
            {"nc_tools_auto.txt", " Size  Plating  Tool\n40.0000  P  T01\n100.0000  N  T02\n",
                {{"d.drl", bare},
                    {"nc_param.txt", "INTEGER-PLACES 2\nDECIMAL-PLACES 5\nOUTPUT-UNITS ENGLISH\n"}},
                "pcb/d: P1.016 25.4,12.7 50.8,12.7; N2.54 25.4,12.7 [2:5, leading zeros left out]\n"
                "d.drl: its numbers are read as inches, 2:5, leading zeros left out, by "
                "nc_param.txt\n"
                "d.drl: the size of T1 is that of nc_tools_auto.txt (and 1 more like it)\n"
                "d.drl: the plating of T1 is that of nc_tools_auto.txt (and 1 more like it)"},
            {"e.fdl",
                "*****  DRILL LIST  *****\n Output Data : C:/out/e.drl\n From-To : 1 - 4\n"
                " Unit : inch\n Coordinate Format : 3V4\n Zero Suppress : Leading Zero Suppress\n"
                "|   1 | Round | T01  | Round |   0.0200 | ------ | Via | Non-Plated |\n",
                {{"e.drl", program("T1\nX12500", ";FILE_FORMAT=2:4\nINCH,TZ\nT1C.5")}},
                "pcb/e1-4: N12.7 31.75,0\n"
                "e.drl: its numbers are read as inches, 2:4, leading zeros left out where e.fdl "
                "specifies inches, 3:4, leading zeros left out\n"
                "e.drl: the plating of T1 is that of e.fdl\n"
                "e.drl: T1 has 12.7 mm where e.fdl says 0.508 mm"},
            {"list.rep", "Tool  Size (inch)  Count\nT1  0.0400  2\nT2  0.1000  1\n",
                {{"f.drl", "M72\n" + bare}, {"g.drl", "M72\n" + bare}},
                "f.drl:3: tool T1 has no diameter"}};
        for (const auto& [name, list, files, board] : cases) {
            const QString folder = QStringLiteral("l/%1").arg(name);
            write(folder + '/' + name, list);
            for (const auto& [file, content] : files) {
                write(folder + '/' + file, content);
            }
            QString got = outcome({mFolder.filePath(folder)}).remove(folder + '/');
            got.remove(QRegularExpression(
                "^(taken|lists of tools): .*\n?", QRegularExpression::MultilineOption));
            QCOMPARE(got, board);
        }
    }

    /** What lies in a folder and in archives of it. */
    void archives()
    {
        write("a/order/b.drl", program("T1\nX1."));
        write("a/order/copy.drl", program("T1\nX1."));
        write("a/order/top.gbr", "%FSLAX34Y34*%\n%ADD10C,1*%\nM02*\n");
        write("a/order/readme.txt", "T and X\n");
        write("a/order/drill.gbr", gerber("D10*\nX1Y1D03*"));
        const QString folder = mFolder.filePath("a/order");
        for (const char* pack : {"gzip -kn a/order/b.drl", "tar cf a/order.tar a/order",
                 "tar cf two.tar --hard-dereference a/order a/order",
                 "python3 -m zipfile -c a/order.zip a/order/"}) {
            QProcess process;
            process.setWorkingDirectory(mFolder.path());
            process.startCommand(pack);
            QVERIFY(process.waitForFinished() && process.exitCode() == 0);
        }
        const QString drilled = "pcb/b: P?0.8 1,0";
        for (const char* name : {"a/order", "a/order.tar", "a/order.zip"}) {
            const QString got = outcome({mFolder.filePath(name)});
            QVERIFY2(got.startsWith(drilled + "\ntaken: a/order"), qPrintable(got));
            QVERIFY2(got.contains("top.gbr (a Gerber file)"), qPrintable(got));
            QVERIFY2(got.contains("b.drl.gz (an archive within a"), qPrintable(got));
            QVERIFY2(got.contains("drill.gbr (there are Excellon files)"), qPrintable(got));
            QVERIFY2(got.contains("copy: left out, it drills the same as b"), qPrintable(got));
        }
        QCOMPARE(readBoard({mFolder.filePath("a/order.zip")}).job, "order");
        const QString pipe = mFolder.filePath("a/pipe");
        QCOMPARE(::mkfifo(qPrintable(pipe), 0600), 0);
        QProcess writer;
        writer.setWorkingDirectory(mFolder.path());
        writer.start("sh", {"-c", "(head -c 2 a/order.zip; tail -c +3 a/order.zip) > a/pipe"});
        QVERIFY(outcome({pipe}).startsWith(drilled));
        QVERIFY(writer.waitForFinished());
        QVERIFY(outcome({mFolder.filePath("a/order/b.drl.gz")}).startsWith(drilled));
        write("a/order/board.xml", ipc2581(feature("D", hole("VIA", "0.3"))));
        QVERIFY(outcome({folder}).startsWith("main/DTOP-BOT: V0.3 1,2"));
        QVERIFY(outcome({mFolder.filePath("two.tar")}).startsWith("two.tar:1: two files"));
        write("a/order/second.xml", ipc2581(""));
        QVERIFY(outcome({folder}).contains("an IPC-2581 file is a board of its own"));
        QVERIFY(outcome({write("cut.zip", "PK\x03\x04 and no more")}).startsWith("cut.zip:1: "));
    }

    /** Whatever is wrong with what lies around the files. */
    void hostileArchives()
    {
        const QDir folder(mFolder.filePath("h"));
        write("h/order/L\u00f6cher-NPTH.drl", program("T1\nX1."));
        write("h/order/last.txt", QByteArray(900, 'x'));
        write("h/pack.py", R"(import gzip, io, os, tarfile
os.symlink("last.txt", "order/link.drl"); os.symlink("gone", "order/dangling"); os.mkfifo("order/pipe")
with tarfile.open("order.tar", "w", format=tarfile.PAX_FORMAT) as tar: tar.add("order")
data = open("order.tar", "rb").read()
open("cut.tar", "wb").write(data.rstrip(b"\0") + bytes(-len(data.rstrip(b"\0")) % 512))
packed = gzip.compress(data, mtime=0)
open("sum.tgz", "wb").write(packed[:-8] + bytes([packed[-8] ^ 1]) + packed[-7:])
open("short.tgz", "wb").write(packed[:-4])
open("thrice.gz", "wb").write(gzip.compress(gzip.compress(gzip.compress(data))))
def pack(name, files, size):
    with tarfile.open(name, "w:gz") as tar:
        for i in range(files):
            entry = tarfile.TarInfo(str(i)); entry.size = size
            tar.addfile(entry, io.BytesIO(bytes(size)))
pack("many.tgz", 10001, 0)
pack("large.tgz", 1, 100 << 20))");
        QProcess packer;
        packer.setWorkingDirectory(folder.path());
        packer.start("python3", {"pack.py"});
        QVERIFY(packer.waitForFinished() && packer.exitCode() == 0);

        const std::string locale = std::setlocale(LC_ALL, nullptr);
        std::setlocale(LC_ALL, "C");
        const QString tar = outcome({folder.filePath("order.tar")});
        std::setlocale(LC_ALL, locale.c_str());
        for (const QString& got : {tar, outcome({folder.filePath("order")})}) {
            QVERIFY2(got.startsWith("pcb/L\u00f6cher-NPTH: N0.8 1,0"), qPrintable(got));
            QVERIFY2(got.contains("link.drl (a link)"), qPrintable(got));
            QVERIFY2(got.contains("dangling (a link)"), qPrintable(got));
            QVERIFY2(got.contains("pipe (a pipe or a device)"), qPrintable(got));
        }
        constexpr const char* refused[][2] = {{"cut.tar", "the archive has no end"},
            {"sum.tgz", "the archive can't be read: it is damaged, incorrect data check"},
            {"short.tgz", "the archive can't be read: it is cut off"},
            {"many.tgz", "more than 10000 files"},
            {"large.tgz", "it unpacks to more than 4 GiB or 1000 times its size"},
            {"thrice.gz", "nothing of a board in it"}};
        for (const auto& [name, why] : refused) {
            const QString got = outcome({folder.filePath(name)});
            QVERIFY2(got.contains(why), qPrintable(got));
        }
        for (int i = 0; i <= 10000; ++i) {
            write(QStringLiteral("h/full/%1").arg(i), {});
        }
        QVERIFY(outcome({folder.filePath("full")}).contains("more than 10000 files"));
        for (int i = 0; i <= 8; ++i) {
            write(QStringLiteral("h/lists/%1").arg(i),
                "Tool Size\n1 0.1\n" + QByteArray(1 << 20, '\n'));
        }
        write("h/lists/a.drl", program("T1\nX1."));
        QVERIFY(outcome({folder.filePath("lists")}).contains("lists of tools have more than 8"));
        QProcess writer;
        writer.setWorkingDirectory(folder.path());
        writer.start("sh", {"-c", "(printf 'PK\\003\\004'; head -c 257M /dev/zero) > order/pipe"});
        QVERIFY(outcome({folder.filePath("order/pipe")}).contains("more than 256 MiB"));
        QVERIFY(writer.waitForFinished());
    }

    void largePanels()
    {
        const auto panel = [&](const QByteArray& columns, int holes) {
            return readBoard({write("panel.xml",
                ipc2581("<StepRepeat stepRef='a' nx='" + columns
                    + "' ny='1000'/></Step><Step name='a'>"
                    + feature("D", hole("VIA", "0.3").repeated(holes))))});
        };
        const auto nothing = [](const Step&, const Transform&) {};
        QVERIFY_EXCEPTION_THROWN(
            forEachCopy(panel("1000", 1), 0, nothing), PanelError); // and itself
        QVERIFY_EXCEPTION_THROWN(forEachCopy(panel("1", 50001), 0, nothing), PanelError);
        forEachCopy(panel("1", 50000), 0, nothing);
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
            const Board board = readBoard({path}, {{}, false, all});
            QCOMPARE(board.steps[0].layers[0].tools[0].holes.size(), size_t(50000));
            QVERIFY(most > content.size() / 2);
            const auto half = [](qint64 done, qint64 total) { return done < total / 2; };
            QVERIFY_EXCEPTION_THROWN(readBoard({path}, {{}, false, half}), BoardCancelled);
        }
    }
};

QTEST_GUILESS_MAIN(ReadersTest)
#include "tst_readers.moc"
