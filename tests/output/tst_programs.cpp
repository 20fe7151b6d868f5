// SPDX-License-Identifier: MIT
#include "drill_program.h"
#include "file_set.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr Size mm = sizePerMillimetre;

constexpr Place at(double x, double y)
{
    return {Size(x * mm), Size(y * mm)};
}

Tool tool(HoleType type, double size, std::vector<Place> holes, std::vector<Path> slotPaths = {})
{
    Tool made;
    made.type = type;
    made.finishedSize = Size(size * mm);
    made.holes = std::move(holes);
    made.slotPaths = std::move(slotPaths);
    return made;
}

/** A panel of a board, once as it is and once mirrored and turned, with every construct. */
Board everything()
{
    using enum Segment::Shape;
    Layer drill{"Drill: A/B", Span{"1", "4"}, {}, {}, {}, {}};
    drill.tools.push_back(tool(HoleType::Via, 0.3, {at(1, 1), at(5, 2), at(1.00005, -3.2)}));
    drill.tools.push_back(tool(HoleType::Plated, 0.35, {at(1, 2)}));
    drill.tools.push_back(tool(HoleType::Plated, 1, {at(0, 0)},
        {{at(2, 2), {{Line, at(4, 2), {}}, {Clockwise, at(4, 4), at(4, 3)}}},
            {at(10, 0), {{CounterClockwise, at(12, 2), at(12, 0)}}},
            {at(20, 0), {{Clockwise, at(20, 0), at(21, 0)}}}, {at(0, 9), {}}}));
    drill.tools.push_back(tool(HoleType::NonPlated, 3.2, {at(-0.5, 0.00001)}));
    drill.contours.push_back({HoleType::NonPlated, {at(0, 0), {{Line, at(1, 1), {}}}}});
    drill.backDrills.push_back(tool(HoleType::NonPlated, 0.6, {at(1, 1), at(5, 2)}));
    Layer other{"drill_ a_b", {}, {tool(HoleType::Plated, 0.5, {at(7, 7)})}, {}, {}, {}};

    Board board;
    board.job = QString::fromUtf8("Jöb");
    board.steps.resize(2);
    board.steps[0] = {"pcb", {drill, other}, {}, {}, 0};
    board.steps[1].name = "panel";
    board.steps[1].repeats = {
        {0, at(100, 0), 1, 1, 0, 0, 0, false}, {0, at(200, 0), 2, 1, 50 * mm, 0, 90, true}};
    board.mainStep = 1;
    return board;
}

/** Plated holes are drilled 0.1 mm larger; 0.3 and 0.35 share a bit. */
DrillPlan planOf(const Board& board, size_t step, Units units = Units::Metric)
{
    DrillPlan plan;
    plan.board = &board;
    plan.step = step;
    plan.units = units;
    plan.model = "ENIG";
    plan.layers = gatherLayers(board, step);
    for (size_t layer = 0; layer < plan.layers.size(); ++layer) {
        for (size_t i = 0; i < plan.layers[layer].tools.size(); ++i) {
            const StepTool& tool = plan.layers[layer].tools[i];
            for (const bool isSlot : {false, true}) {
                PlanRow row;
                row.layer = layer;
                row.tool = i;
                row.isSlot = isSlot;
                row.type = tool.tool->type;
                row.finishedSize = tool.tool->finishedSize;
                row.count = isSlot ? tool.slotPaths : tool.holes;
                row.drillSize = row.finishedSize + (row.isPlated() ? mm / 10 : 0);
                if (row.finishedSize < mm / 2) {
                    row.drillSize = 4 * mm / 10;
                    row.bit = "0.40";
                    row.tolerance = {mm / 20, mm / 10};
                    row.flags = {PlanFlag::OutOfTolerance, PlanFlag::TypeAssumed};
                }
                if (row.count > 0) {
                    plan.rows.push_back(row);
                }
            }
        }
    }
    numberProgramTools(plan);
    return plan;
}

QByteArray content(const QString& path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("no file");
}

QStringList filesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

} // namespace

class ProgramsTest : public QObject
{
    Q_OBJECT

private slots:
    /** All programs of a plan, one after the other, are those of a written-out file. */
    void bytes_data()
    {
        QTest::addColumn<size_t>("step");
        QTest::addColumn<Units>("units");
        QTest::addRow("board.metric") << size_t(0) << Units::Metric;
        QTest::addRow("panel.inch") << size_t(1) << Units::Inch;
    }

    void bytes()
    {
        QFETCH(size_t, step);
        QFETCH(Units, units);
        const Board board = everything();
        QTemporaryDir folder;
        FileSet files;
        addDrillPrograms(planOf(board, step, units), folder.filePath("new/programs"), files);
        files.commit();
        QByteArray written;
        for (const QString& path : files.paths()) {
            written += "== " + QFileInfo(path).fileName().toUtf8() + '\n' + content(path);
        }
        written.replace(VERSION, "VERSION");
        QCOMPARE(filesIn(folder.filePath("new/programs")).size(), files.paths().size());
        const QString expected =
            QStringLiteral(EXPECTED_DIR "/%1.txt").arg(QTest::currentDataTag());
        QVERIFY2(written == content(expected), written);
    }

    void refuses_data()
    {
        QTest::addColumn<int>("toolCount");
        QTest::addColumn<int>("withoutSize");
        QTest::addColumn<QString>("message");
        QTest::addRow("no holes") << 0 << -1 << "step \"s\": no holes, so no drill program";
        QTest::addRow("no size") << 99 << 98
                                 << "layer \"L\": the tool \"Plated\" of 990 micron has no drill "
                                    "size by model \"ENIG\" and its formula";
        QTest::addRow("99 tools") << 99 << -1 << "";
        QTest::addRow("100 tools")
            << 100 << -1 << "layer \"L\", plated: 100 tools; a drill program holds at most 99";
    }

    void refuses()
    {
        QFETCH(int, toolCount);
        QFETCH(int, withoutSize);
        Board board;
        board.steps.emplace_back().name = "s";
        board.steps[0].layers.push_back({"L", {}, {}, {}, {}, {}});
        for (int i = 1; i <= toolCount; ++i) {
            board.steps[0].layers[0].tools.push_back(tool(HoleType::Plated, 0.01 * i, {{}}));
        }
        DrillPlan plan = planOf(board, 0);
        for (PlanRow& row : plan.rows) {
            row.drillSize = row.finishedSize;
        }
        numberProgramTools(plan);
        if (withoutSize >= 0) {
            plan.rows[size_t(withoutSize)].drillSize.reset();
        }
        FileSet files;
        QString message;
        QTemporaryDir folder;
        try {
            addDrillPrograms(plan, folder.path(), files);
        } catch (const OutputError& error) {
            message = error.what();
        }
        QTEST(message, "message");
        QCOMPARE(filesIn(folder.path()).isEmpty(), !message.isEmpty());
    }

    /** One file of several that finds no place takes back the others. */
    void putsBack()
    {
        QTemporaryDir folder;
        const auto path = [&](const char* name) { return folder.filePath(name); };
        {
            FileSet files;
            files.add(path("old"), "old");
            files.commit();
        }
        try {
            FileSet files;
            for (const char* name : {"old", "new", "folder"}) {
                files.add(path(name), "new");
            }
            QDir(folder.path()).mkdir("folder"); // meanwhile
            files.commit();
            QFAIL("a folder was replaced");
        } catch (const OutputError& error) {
            QVERIFY(QString(error.what()).startsWith(path("folder") + ": can't be written: "));
        }
        QCOMPARE(filesIn(folder.path()), QStringList({"folder", "old"}));
        QCOMPARE(content(path("old")), "old");
    }
};

QTEST_GUILESS_MAIN(ProgramsTest)
#include "tst_programs.moc"
