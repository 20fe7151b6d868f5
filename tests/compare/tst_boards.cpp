// SPDX-License-Identifier: MIT
#include "comparison.h"

#include <QElapsedTimer>
#include <QTest>
#include <algorithm>

using namespace brox;

namespace {

constexpr Size mm = sizePerMillimetre;

Size millimetres(const QString& text)
{
    return Size(std::lround(text.toDouble() * mm));
}

Place placeOf(const QString& text)
{
    return {millimetres(text.section(',', 0, 0)), millimetres(text.section(',', 1))};
}

/** "2 0.8 N +-0.05 1:4 0,0 3,0>5,0": number, size in mm, type, tolerance, span, hole, slot. */
Tool toolOf(const QStringList& words, std::optional<Span>& span)
{
    Tool tool;
    tool.number = words[0].toInt();
    tool.finishedSize = millimetres(words[1]);
    tool.type = words[2].startsWith('N') ? HoleType::NonPlated
        : words[2].startsWith('V')       ? HoleType::Via
                                         : HoleType::Plated;
    tool.typeAssumed = words[2].endsWith('?');
    for (const QString& word : words.mid(3)) {
        if (word.startsWith("+-")) {
            const Size tolerance = millimetres(word.mid(2));
            tool.tolerance = {tolerance, tolerance};
        } else if (word.contains(':')) {
            span = Span{word.section(':', 0, 0), word.section(':', 1)};
        } else if (word.contains('>')) {
            const Place end = placeOf(word.section('>', 1));
            tool.slotPaths.push_back(
                {placeOf(word.section('>', 0, 0)), {{Segment::Shape::Line, end, {}}}});
        } else {
            tool.holes.push_back(placeOf(word));
        }
    }
    return tool;
}

/** Tools by semicolons; each span is a layer. */
Board boardOf(const QString& text)
{
    Board board;
    board.steps.resize(1);
    std::vector<Layer>& layers = board.steps[0].layers;
    for (const QString& part : text.split(';')) {
        std::optional<Span> span;
        const Tool tool = toolOf(part.simplified().split(' '), span);
        const QString name = span ? span->from + ':' + span->to : QStringLiteral("drill");
        const auto found = std::find_if(
            layers.begin(), layers.end(), [&](const Layer& each) { return each.name == name; });
        Layer& layer =
            found == layers.end() ? layers.emplace_back(Layer{name, span, {}, {}, {}, {}}) : *found;
        layer.tools.push_back(tool);
    }
    return board;
}

QString text(Place place)
{
    return QStringLiteral("%1,%2").arg(place.x / double(mm)).arg(place.y / double(mm));
}

/** "moved 1,2; 3x; added 2 of 1 at 0,0": move, copies, differences by tool of either board. */
QString summary(const Comparison& comparison)
{
    QStringList parts;
    if (comparison.move != Place{}) {
        parts << "move " + text(comparison.move);
    }
    if (comparison.copies > 1) {
        parts << QStringLiteral("%1x").arg(comparison.copies);
    }
    for (const BoardDifference& difference : comparison.differences) {
        if (difference.kind == DifferenceKind::Whole) {
            parts << wholeWord(*comparison.whole);
            continue;
        }
        const ComparedTool& tool = difference.from ? *difference.from : *difference.to;
        parts << QStringLiteral("%1 %2%3 of %4 at %5")
                     .arg(differenceWord(difference.kind), difference.isWholeTool ? "all " : "")
                     .arg(difference.count)
                     .arg(tool.number)
                     .arg(text(difference.places[0]));
    }
    if (comparison.nearly) {
        parts << "nearly " + wholeWord(*comparison.nearly);
    }
    return parts.join("; ");
}

/** A board of all kinds without symmetry, in which nothing is near half a millimetre. */
const char* const plain = "1 0.3 V 0,0 12,1 3,8 17.5,6 9,14; 2 0.8 P 5,5 20,15.2 7,11 1.3,13;"
                          "3 3.2 N 2,2 25,17; 4 1 P 10,4>13,4 21,3>21,5";

Board changed(const Placement& where, bool withSizes = false)
{
    Board board = boardOf(plain);
    for (Tool& tool : board.steps[0].layers[0].tools) {
        for (Place& hole : tool.holes) {
            hole = *where.map(hole);
        }
        for (Path& path : tool.slotPaths) {
            path.start = *where.map(path.start);
            path.segments[0].to = *where.map(path.segments[0].to);
        }
        tool.finishedSize = withSizes ? Size(tool.finishedSize * where.factor) : tool.finishedSize;
    }
    return board;
}

QString compared(const Board& board, const Board& other, Size within = defaultWithin)
{
    return summary(compareBoards(board, board.mainStep, other, other.mainStep, within));
}

/** A panel of a board in a row, the last one turned and mirrored, or as it is. */
Board panelOf(Board board, int copies, bool turnsLast)
{
    Step panel;
    panel.name = "panel";
    panel.repeats.push_back({0, {5 * mm, 7 * mm}, copies - 1, 1, 30 * mm, 0, 0, false});
    panel.repeats.push_back(
        {0, {Size(5 + 30 * copies) * mm, 7 * mm}, 1, 1, 0, 0, turnsLast ? 90.0 : 0.0, turnsLast});
    board.steps.push_back(panel);
    board.mainStep = 1;
    return board;
}

} // namespace

/** Pairs of boards, and what is found. */
class TestBoards : public QObject
{
    Q_OBJECT

private slots:
    void holes_data();
    void holes();
    void wholeBoards_data();
    void wholeBoards();
    void panels_data();
    void panels();
    void keepsPaceWithReaders();
};

void TestBoards::holes_data()
{
    QTest::addColumn<QString>("board");
    QTest::addColumn<QString>("other");
    QTest::addColumn<QString>("expected");

    const QString rest = "; 9 0.5 P 30,0 30,10 31,21 37,2";
    const auto row = [&](const char* name, const QString& board, const QString& other,
                         const QString& expected) {
        QTest::newRow(name) << board + rest << other + rest << expected;
    };
    row("added", "1 0.8 P 0,0", "1 0.8 P 0,0 5,5 5,6", "added 2 of 1 at 5,5");
    row("whole tool added", "1 0.8 P 0,0", "1 0.8 P 0,0; 2 1 P 3,3", "added all 1 of 2 at 3,3");
    row("removed", "1 0.8 P 0,0 5,5", "1 0.8 P 0,0", "removed 1 of 1 at 5,5");
    row("hit twice", "1 0.8 P 0,0", "1 0.8 P 0,0 0,0.001 0,0", "");
    row("hit twice before", "1 0.8 P 0,0 0,0", "1 0.8 P 0,0", "");
    row("moved", "1 0.8 P 0,0 9,9", "1 0.8 P 0.3,0.4 9,9", "moved 1 of 1 at 0,0");
    row("moved too far", "1 0.8 P 0,0", "1 0.8 P 0.4,0.4",
        "added all 1 of 1 at 0.4,0.4; removed all 1 of 1 at 0,0");
    row("moved with another size", "1 0.8 P 0,0", "1 0.9 P 0.3,0",
        "added all 1 of 1 at 0.3,0; removed all 1 of 1 at 0,0");
    row("within the tolerance", "1 0.8 P 0,0", "1 0.8 P 0.006,0.007", "");
    row("resized", "1 0.8 P 0,0 1,1", "1 0.85 P 0,0; 2 0.8 P 1,1", "resized 1 of 1 at 0,0");
    row("resized as a whole", "3 0.8 P 0,0 1,1", "1 0.85 P 0,0 1,1", "resized all 2 of 3 at 0,0");
    row("in inches", "1 0.6 P 0,0", "4 0.59944 P 0,0", "");
    row("plating", "1 0.8 P 0,0", "1 0.8 N 0,0", "plating all 1 of 1 at 0,0");
    row("via and plated", "1 0.8 P 0,0", "1 0.8 V 0,0", "");
    row("plating not specified", "1 0.8 N 0,0", "1 0.8 P? 0,0", "");
    row("plating and size", "1 0.8 P 0,0", "1 0.9 N 0,0",
        "resized all 1 of 1 at 0,0; plating all 1 of 1 at 0,0");
    row("tolerance", "1 0.8 P +-0.1 0,0", "1 0.8 P +-0.05 0,0", "tolerance all 1 of 1 at 0,0");
    row("no tolerance", "1 0.8 P +-0.1 0,0", "1 0.8 P 0,0", "");
    row("layer", "1 0.1 V 1:2 0,0 1,1; 2 0.3 V 1:4 2,2",
        "1 0.1 V 1:2 1,1; 2 0.1 V 1:3 0,0; 3 0.3 V 1:4 2,2", "layer 1 of 1 at 0,0");
    row("layers by name and by number",
        "1 0.1 V TOP:L2 0,0; 2 0.1 V L2:L3 0,0 5,1; 3 0.3 V TOP:BOT 2,2",
        "1 0.1 V 1:2 0,0; 2 0.1 V 2:3 0,0 5,1; 3 0.3 V 1:4 2,2", "");
    row("span turned round", "1 0.1 V 1:2 0,0", "1 0.1 V 2:1 0,0", "");
    row("span not specified", "1 0.1 V 1:2 0,0", "1 0.1 V 0,0", "");
    row("stacked holes", "1 0.1 V 1:2 0,0; 2 0.1 V 2:3 0,0", "1 0.1 V 1:2 0,0",
        "removed all 1 of 2 at 0,0");
    row("slot backwards", "1 1 P 0,0>3,1", "1 1 P 3,1>0,0", "");
    row("slot longer", "1 1 P 0,0>3,0", "1 1 P -0.2,0>3.2,0", "resized all 1 of 1 at 1.5,0");
    row("slot longer at one end", "1 1 P 0,0>3,0", "1 1 P 0,0>3.4,0",
        "resized all 1 of 1 at 1.5,0");
    row("slot moved", "1 1 P 0,0>3,0", "1 1 P 0,0.3>3,0.3", "moved all 1 of 1 at 1.5,0");
    row("slot turned", "1 1 P 0,0>4,0", "1 1 P 2,-2>2,2",
        "added all 1 of 1 at 2,0; removed all 1 of 1 at 2,0");
    row("hole for a slot", "1 1 P 0,0>4,0", "1 1 P 2,0",
        "added all 1 of 1 at 2,0; removed all 1 of 1 at 2,0");
    row("grid moved by its pitch", "1 1 P 0,0 1,0 2,0 3,0 4,0 5,0", "1 1 P 1,0 2,0 3,0 4,0 5,0 6,0",
        "added 1 of 1 at 6,0; removed 1 of 1 at 0,0");
}

void TestBoards::holes()
{
    QFETCH(QString, board);
    QFETCH(QString, other);
    QTEST(compared(boardOf(board), boardOf(other)), "expected");
}

void TestBoards::wholeBoards_data()
{
    QTest::addColumn<Placement>("change");
    QTest::addColumn<bool>("withSizes");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QString>("nearMiss"); ///< with one hole more

    const auto row = [](const char* name, const Placement& change, const char* expected,
                         const char* nearMiss, bool withSizes = false) {
        QTest::newRow(name) << change << withSizes << expected << nearMiss;
    };
    row("itself", {}, "", "added all 1 of 7 at 6,6");
    row("moved", {false, 0, 1, {-40 * mm, 3 * mm + 17}}, "move -40,3.00004",
        "move -40,3.00004; added all 1 of 7 at 6,6");
    row("moved a little", {false, 0, 1, {mm / 4, 0}}, "move 0.25,0",
        "move 0.25,0; added all 1 of 7 at 6,6");
    row("mirrored", {true, 0, 1, {}}, "mirrored", "nearly mirrored");
    row("mirrored the other way", {true, 2, 1, {mm, mm}}, "mirrored", "nearly mirrored");
    row("turned", {false, 1, 1, {}}, "quarter turn", "nearly quarter turn");
    row("turned clockwise", {false, 3, 1, {9 * mm, 0}}, "quarter turn", "nearly quarter turn");
    row("upside down", {false, 2, 1, {}}, "half turn", "nearly half turn");
    row("both", {true, 1, 1, {}}, "mirrored, quarter turn", "nearly mirrored, quarter turn");
    row("10", {false, 0, 10, {}}, "factor 10", "nearly factor 10");
    row("10 with the sizes", {false, 0, 10, {}}, "factor 10", "", true);
    row("1/10", {false, 0, 0.1, {}}, "factor 1/10", "nearly factor 1/10");
    row("25.4", {false, 0, 25.4, {}}, "factor 25.4", "nearly factor 25.4");
    row("1/25.4", {false, 0, 1 / 25.4, {}}, "factor 1/25.4", "nearly factor 1/25.4");
    row("1/25.4 with the sizes", {false, 0, 1 / 25.4, {}}, "factor 1/25.4", "", true);
    row("1/1000", {false, 0, 0.001, {}}, "factor 1/1000", "");
    row("20", {false, 0, 20, {}}, "no", "");
}

void TestBoards::wholeBoards()
{
    QFETCH(Placement, change);
    QFETCH(bool, withSizes);
    QFETCH(QString, expected);
    QFETCH(QString, nearMiss);

    Board other = changed(change, withSizes);
    const Comparison whole = compareBoards(boardOf(plain), 0, other, 0);
    if (expected == "no") {
        QVERIFY(!whole.whole && whole.differs());
        return;
    }
    QCOMPARE(summary(whole), expected);

    Tool& more = other.steps[0].layers[0].tools.emplace_back();
    more.number = 7;
    more.finishedSize = mm;
    more.holes = {*change.map({6 * mm, 6 * mm})};
    const Comparison near = compareBoards(boardOf(plain), 0, other, 0);
    QVERIFY(!near.whole && near.differs());
    if (nearMiss.startsWith("nearly")) {
        QVERIFY(near.nearly);
        QCOMPARE("nearly " + wholeWord(*near.nearly), nearMiss);
    } else if (!nearMiss.isEmpty()) {
        QCOMPARE(summary(near), nearMiss);
    }
}

void TestBoards::panels_data()
{
    QTest::addColumn<Board>("board");
    QTest::addColumn<Board>("other");
    QTest::addColumn<QString>("expected");

    const Board single = boardOf(plain);
    QTest::newRow("panel of the other") << panelOf(single, 3, false) << single << "3x";
    QTest::newRow("board of the other") << single << panelOf(single, 4, false) << "4x";
    QTest::newRow("turned copies") << single << panelOf(single, 3, true) << "3x";
    const QString more = QString(plain) + "; 5 2 N 24,2";
    QTest::newRow("in each copy") << single << panelOf(boardOf(more), 3, true)
                                  << "3x; added all 3 of 5 at 93,-17";
    QTest::newRow("resized in each copy")
        << single << panelOf(boardOf(QString(plain).replace("0.8", "0.9")), 3, false)
        << "3x; resized all 12 of 2 at 10,12";
    QTest::newRow("beside the holes of each copy")
        << single << panelOf(boardOf(QString(plain) + "; 5 2 N 27.5,2"), 3, false)
        << "3x; added all 3 of 5 at 32.5,9";
    Board marked = panelOf(single, 2, false);
    Layer rail{"rail", {}, {}, {}, {}, {}};
    rail.tools.push_back({1, HoleType::NonPlated, false, false, 3 * mm, {}, {{mm, mm}}, {}});
    marked.steps[1].layers.push_back(rail);
    QTest::newRow("with a rail") << single << marked << "2x";
    QTest::newRow("panels of one kind")
        << panelOf(single, 3, false) << panelOf(single, 3, false) << "";
}

void TestBoards::panels()
{
    QFETCH(Board, board);
    QFETCH(Board, other);
    QTEST(compared(board, other), "expected");
}

/** A limit far above what it takes, for what would take a square of the number of holes. */
void TestBoards::keepsPaceWithReaders()
{
    Board board = boardOf("1 0.3 V 0,0");
    std::vector<Place>& holes = board.steps[0].layers[0].tools[0].holes;
    for (int i = 1; i < 1'000'000; ++i) {
        holes.push_back({Size(i % 1000) * mm / 2, Size(i / 1000) * mm / 2});
    }
    Board other = board;
    std::vector<Place>& others = other.steps[0].layers[0].tools[0].holes;
    std::reverse(others.begin(), others.end());
    others.front() = {-mm, -mm};
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(compared(board, other), "added 1 of 1 at -1,-1; removed 1 of 1 at 499.5,499.5");
    QVERIFY(timer.elapsed() < 10'000);
}

QTEST_APPLESS_MAIN(TestBoards)
#include "tst_boards.moc"
