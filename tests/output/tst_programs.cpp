// SPDX-License-Identifier: MIT
#include "drill_map.h"
#include "drill_program.h"
#include "excellon_reader.h"
#include "file_set.h"
#include "ipc2581_reader.h"
#include "map_scene.h"
#include "map_shapes.h"
#include "pdf_pages.h"

#include <QBuffer>
#include <QDir>
#include <QPainter>
#include <QSvgRenderer>
#include <QTemporaryDir>
#include <QTest>
#include <QTextDocument>
#include <map>
#include <set>

using namespace brox;

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
    if (size < 0.5) {
        made.typeAssumed = true;
        made.tolerance = Tolerance{mm / 20, mm / 10};
    }
    made.holes = std::move(holes);
    made.slotPaths = std::move(slotPaths);
    return made;
}

/** A panel of a board, once as it is and once mirrored and turned, with every construct. */
Board everything()
{
    using enum Segment::Shape;
    Layer drill{"Drill: A/B", Span{"B", "T"}, {}, {}, {}, {}};
    drill.tools.push_back(tool(HoleType::Via, 0.3, {at(1, 1), at(5, 2), at(1.00005, -3.2)}));
    drill.tools.push_back(tool(HoleType::Plated, 0.35, {at(1, 2)}));
    drill.tools.push_back(tool(HoleType::Plated, 1, {at(0, 0)},
        {{at(2, 2), {{Line, at(4, 2), {}}, {Clockwise, at(4, 4), at(4, 3)}}},
            {at(10, 0), {{CounterClockwise, at(12, 2), at(12, 0)}}},
            {at(20, 0), {{Clockwise, at(20, 0), at(21, 0)}}}, {at(0, 9), {}}}));
    drill.tools.push_back(tool(HoleType::NonPlated, 3.2, {at(-0.5, 0.00001)}));
    drill.contours.push_back({HoleType::NonPlated, {at(0, 0), {{Line, at(1, 1), {}}}}});
    drill.backDrills.push_back(tool(HoleType::NonPlated, 0.6, {at(1, 1), at(5, 2)}));
    Layer other{
        "drill_ a_b", Span{"a,b", "c"}, {tool(HoleType::Plated, 0.5, {at(7, 7)})}, {}, {}, {}};

    Board board;
    board.job = QString::fromUtf8("Jöb\x07");
    board.copperLayers = QStringList{"T", "2", "3", "B"};
    board.steps.resize(2);
    board.steps[0] = {"pcb", {drill, other}, {}, {}, 0};
    board.steps[0].outline.push_back({at(-9, -9), {{Line, at(30, 20), {}}}});
    board.steps[1].name = "panel";
    board.steps[1].repeats = {
        {0, at(100, 0), 1, 1, 0, 0, 0, false}, {0, at(200, 0), 2, 1, 50 * mm, 0, 90, true}};
    board.mainStep = 1;
    return board;
}

/** Plated holes are drilled 0.1 mm larger; 0.3 and 0.35 share a bit. */
Drill drillFor(const DraftRow& row)
{
    if (row.finishedSize < mm / 2) {
        return {4 * mm / 10, "0.40", {PlanFlag::OutOfTolerance}};
    }
    return {row.finishedSize + (row.isPlated() ? mm / 10 : 0), {}, {}};
}

DrillPlan planOf(const Board& board, size_t step, Units units = Units::Metric,
    const std::function<Drill(const DraftRow&)>& drill = drillFor)
{
    DrillDraft draft = draftStep(Job(board), step);
    draft.units = units;
    std::vector<Drill> drills;
    std::transform(draft.rows.begin(), draft.rows.end(), std::back_inserter(drills), drill);
    return makePlan(draft, {"ENIG", {}, true, false, false, {}}, drills);
}

/** A sample's board; drill files are those of the same name. */
Board readSample(const QString& pattern)
{
    Board board;
    board.steps.emplace_back().name = "pcb";
    for (const QFileInfo& file : QDir(SAMPLES_DIR).entryInfoList({pattern})) {
        QFile device(file.filePath());
        if (!device.open(QFile::ReadOnly)) {
            return {};
        }
        if (file.suffix() == "xml") {
            return readIpc2581(device, file.filePath());
        }
        board.steps[0].layers.push_back(readExcellon(device, file.filePath()).layer);
    }
    return board;
}

/** What is drilled: of each tool its size and where it goes, slots by the points of their paths;
 *  sorted, in units of what a program's last digit may move. */
using Drilled = std::vector<std::pair<Size, std::vector<std::pair<Size, Size>>>>;

struct Rounding
{
    Units units;
    Size operator()(Size size) const
    {
        return units == Units::Inch ? Size(std::lround(size / 101.6))
                                    : Size(std::lround(size / 40.0));
    }
};

void add(Drilled& drilled, Rounding round, Size size, const std::vector<Place>& holes,
    const std::vector<Path>& slotPaths)
{
    const auto point = [&](Place place) { return std::pair(round(place.x), round(place.y)); };
    for (const Place& hole : holes) {
        drilled.push_back({round(size), {point(hole)}});
    }
    for (const Path& path : slotPaths) {
        std::vector<std::pair<Size, Size>> points{point(path.start), point(path.end())};
        // An arc may come back in two parts, which share the centre.
        for (const Segment& segment : path.segments) {
            const bool isLine = segment.shape == Segment::Shape::Line;
            if (const auto next = point(isLine ? segment.to : segment.centre);
                points.back() != next) {
                points.push_back(next);
            }
        }
        drilled.push_back({round(size), points});
    }
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
        Board board = everything();
        board.steps[0].layers[0].tools[2].slotPaths[0].segments.push_back(
            {Segment::Shape::Clockwise, at(4.00001, 4), at(4, 3)}); // shorter than a digit
        QTemporaryDir folder;
        FileSet files;
        addDrillPrograms(planOf(board, step, units), folder.filePath("programs"), files);
        files.commit();
        QByteArray written;
        for (const QString& path : files.paths()) {
            written += "== " + QFileInfo(path).fileName().toUtf8() + '\n' + content(path);
        }
        written.replace(VERSION, "VERSION");
        QCOMPARE(filesIn(folder.filePath("programs")).size(), files.paths().size());
        const QString expected =
            QStringLiteral(EXPECTED_DIR "/%1.txt").arg(QTest::currentDataTag());
        QVERIFY2(written == content(expected), written);
    }

    void readsBack_data()
    {
        QTest::addColumn<QString>("files");
        QTest::addRow("every construct") << QString();
        for (const char* files :
            {"backplane.xml", "controller.xml", "sensor.xml", "breakout-*.drl"}) {
            QTest::addRow("%s", files) << files;
        }
    }

    /** What is written drills, hole for hole, what was read, in drill sizes. */
    void readsBack()
    {
        QFETCH(QString, files);
        const Board board = files.isEmpty() ? everything() : readSample(files);
        QVERIFY(!board.steps.empty());
        for (size_t step = 0; step < board.steps.size(); ++step) {
            for (const Units units : {Units::Metric, Units::Inch}) {
                const DrillPlan plan = planOf(board, step, units);
                const std::vector<RowPlaces> places = placesOf(plan);
                for (const Program& program : plan.programs) {
                    Drilled read;
                    Drilled written;
                    for (const ProgramTool& tool : program.tools) {
                        for (const size_t row : tool.rows) {
                            add(read, {units}, *tool.size, places[row].holes,
                                places[row].slotPaths);
                        }
                    }
                    QBuffer device;
                    device.setData(programText(plan, program, places));
                    device.open(QBuffer::ReadOnly);
                    for (const Tool& tool : readExcellon(device, "x.drl").layer.tools) {
                        QCOMPARE(tool.type == HoleType::NonPlated, !program.isPlated);
                        add(written, {units}, tool.finishedSize, tool.holes, tool.slotPaths);
                    }
                    std::sort(read.begin(), read.end());
                    std::sort(written.begin(), written.end());
                    QVERIFY(!read.empty());
                    QVERIFY(read == written);
                }
            }
        }
    }

    /** A large program reports how far it is, and ends when the user wants no more of it. */
    void canBeCancelled()
    {
        Board board;
        board.steps.emplace_back().layers.emplace_back().tools = {
            tool(HoleType::Plated, 1, std::vector<Place>(20'000))};
        for (int i = 0; i < 20'000; ++i) {
            board.steps[0].layers[0].tools[0].holes[size_t(i)] = at(i % 100, i / 100);
        }
        const QTemporaryDir folder;
        FileSet files;
        QList<qint64> reports;
        const auto progress = [&](qint64 done, qint64 total) {
            reports << done << total;
            return done == 0;
        };
        const DrillPlan plan = planOf(board, 0, Units::Metric);
        QVERIFY_EXCEPTION_THROWN(
            addDrillPrograms(plan, folder.path(), files, progress), BoardCancelled);
        QCOMPARE(reports.last(2), QList<qint64>({10'000, 20'000}));
    }

    /** Each hole and slot is found on the map where it is drilled, and painted nowhere else. */
    void map()
    {
        Board board = everything();
        board.steps[0].layers[0].tools.pop_back(); // it overlaps another
        const DrillPlan plan = planOf(board, 1);
        const std::vector<RowPlaces> places = placesOf(plan);
        MapScene scene(plan);
        QImage image(800, 600, QImage::Format_RGB32);
        QCOMPARE(scene.extent().toAlignedRect(), QRect(91, -20, 168, 50)); // of the outlines
        const double scale = 700 / scene.extent().width();
        const MapView view{scale, QPointF(image.rect().center()) - scale * scene.extent().center()};
        for (size_t row = 0; row < places.size(); ++row) {
            const auto finds = [&](QPointF at, const Place& place, double reach = 0.01) {
                const auto hit = scene.hitAt(at, reach);
                return hit && hit->row == row && hit->place == place;
            };
            for (size_t other = 0; other < places.size(); ++other) {
                scene.setShown(other, other == row);
            }
            scene.paint(image, view, {Qt::white, Qt::white, Qt::white, Qt::white});
            QPainter painter(&image);
            const auto wipe = [&](const QRectF& area) {
                const QRectF dots(view.toImage(area.topLeft()), view.toImage(area.bottomRight()));
                const QRect box = dots.toAlignedRect().adjusted(-8, -8, 8, 8);
                const QImage part = image.copy(box);
                painter.fillRect(box, Qt::white);
                return part != image.copy(box);
            };
            const double radius = toMillimetres(*plan.rows[row].drillSize) / 2;
            for (const Place& hole : places[row].holes) {
                const QPointF at = toMap(hole);
                QVERIFY(
                    finds(at, hole, 50) && finds(at + QPointF(0.6 * radius, 0.6 * radius), hole));
                QVERIFY(!finds(at - QPointF(1.1 * radius, 0), hole));
                QVERIFY(wipe({at, at}));
            }
            for (const Path& path : places[row].slotPaths) {
                const QPainterPath middle = toMap(path);
                QVERIFY(finds(toMap(path.end()), path.start));
                QVERIFY(path.segments.empty() || finds(middle.pointAtPercent(0.4), path.start));
                for (const Segment& segment : path.segments) {
                    QVERIFY(segment.shape == Segment::Shape::Line
                        || !finds(toMap(segment.centre), path.start));
                }
                const QPointF start = toMap(path.start);
                QVERIFY(wipe(path.segments.empty() ? QRectF(start, start) : middle.boundingRect()));
            }
            painter.end();
            QImage blank = image;
            blank.fill(Qt::white);
            QVERIFY(image == blank);
            QVERIFY(!scene.hitAt({110.586, -1.414}, 0.01)); // where the long arc has its gap
            // What lies across the right border does not come in at the left.
            scene.paint(image, {scale, view.origin + QPointF(800 - view.toImage({101, -1}).x(), 0)},
                {Qt::white, Qt::white, Qt::white, Qt::white});
            QVERIFY(image.copy(0, 0, 20, 600) == blank.copy(0, 0, 20, 600));
            scene.setShown(row, false);
            QVERIFY(!scene.hitAt(toMap(Place{100 * mm, 0}), 1e6));
        }
    }

    /** Vectors and dots are one picture, on the sheets below the first too. */
    void onePicture()
    {
        const QTemporaryDir folder;
        const DrillPlan plan = planOf(everything(), 1);
        FileSet files;
        for (const char* name : {"map.png", "map.svg"}) {
            addDrillMap(plan, folder.filePath(name), files);
        }
        files.commit();
        QImage dots(folder.filePath("map.png"));
        QImage vectors(dots.size(), QImage::Format_RGB32);
        QVERIFY(dots.height() > dots.width()); // two sheets
        QSvgRenderer svg(folder.filePath("map.svg"));
        QPainter painter(&vectors);
        svg.render(&painter);
        painter.end();
        for (QImage* image : {&dots, &vectors}) {
            *image = image->scaledToWidth(300, Qt::SmoothTransformation)
                         .convertToFormat(QImage::Format_Grayscale8);
        }
        for (int y = 0; y < dots.height(); ++y) {
            for (int x = 0; x < dots.width(); ++x) {
                QVERIFY(std::abs(qGray(dots.pixel(x, y)) - qGray(vectors.pixel(x, y))) < 40);
            }
        }
    }

    /** A small hole has a symbol that can be read, but where there is no room for it. */
    void symbols()
    {
        for (const auto& [distance, least, most] :
            {std::tuple(0.4, 1, 4), std::tuple(9.0, 9, 16)}) {
            Board board;
            board.steps.resize(1);
            board.steps[0].layers.resize(1);
            board.steps[0].layers[0].tools = {
                tool(HoleType::Via, 0.3, {at(0, 0), at(distance, 0)})};
            QImage image(100, 100, QImage::Format_RGB32);
            MapScene(planOf(board, 0))
                .paint(image, {5, {50, 50}}, {Qt::white, Qt::white, Qt::white, Qt::white});
            int inked = 0;
            for (int y = 0; y < 100; ++y) {
                inked += image.pixel(50, y) != qRgb(255, 255, 255) ? 1 : 0;
            }
            QVERIFY2(inked >= least && inked <= most, qPrintable(QString::number(inked)));
        }
    }

    void looks()
    {
        for (size_t i = 0; i < 100; ++i) {
            QVERIFY(toolColour(i, true) != toolColour(i, false));
            for (size_t other = 0; other < i; ++other) {
                QVERIFY(toolSymbol(i) != toolSymbol(other));
            }
        }
    }

    /** Copies of a step go by columns and rows, each with its own distance. */
    void grid()
    {
        Board board = everything();
        board.steps[1].repeats = {{0, at(100, 0), 2, 3, 10 * mm, 20 * mm, 0, false}};
        QCOMPARE(placesOf(planOf(board, 1))[1].holes,
            std::vector<Place>(
                {at(101, 2), at(111, 2), at(101, 22), at(111, 22), at(101, 42), at(111, 42)}));
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
        const DrillPlan plan = planOf(board, 0, Units::Metric, [&](const DraftRow& row) {
            return int(row.tool) == withoutSize ? Drill() : Drill{row.finishedSize, {}, {}};
        });
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

    /** Each row of a table is on one page, below its head; each has a colour of its own here. */
    void pages()
    {
        QString html("<h2>x</h2><table cellspacing='4'><thead><tr><th bgcolor='#ff0000'>x</th></tr>"
                     "</thead>");
        constexpr int rowCount = 60;
        for (int i = 1; i <= rowCount; ++i) {
            html +=
                QStringLiteral("<tr><td bgcolor='%1'><font color='#ffffff'>%2x</font></td></tr>")
                    .arg(QColor(0, 0, i).name(), QStringLiteral("x<br>").repeated(i % 7));
        }
        QTextDocument text;
        text.setTextWidth(300);
        text.setHtml(html + "</table>");
        const TextPages pages(text, 200);
        QVERIFY(pages.count() > rowCount / 10);
        std::map<QRgb, int> pagesOf;
        for (int page = 0; page < pages.count(); ++page) {
            QImage image(300, 200, QImage::Format_RGB32);
            image.fill(Qt::white);
            QPainter painter(&image);
            pages.paint(painter, page);
            std::set<QRgb> seen;
            for (int dot = 0; dot < image.width() * image.height(); ++dot) {
                seen.insert(image.pixel(dot % image.width(), dot / image.width()));
            }
            for (const QRgb colour : seen) {
                ++pagesOf[colour];
            }
        }
        QCOMPARE(pagesOf[qRgb(255, 0, 0)], pages.count());
        for (int i = 1; i <= rowCount; ++i) {
            QCOMPARE(pagesOf[qRgb(0, 0, i)], 1);
        }
    }

    /** One file of several that finds no place takes back the others. */
    void putsBack()
    {
        QTemporaryDir folder;
        const auto path = [&](const char* name) { return folder.filePath(name); };
        const QFile::Permissions own = QFile::ReadOwner | QFile::WriteOwner;
        for (int i = 0; i < 2; ++i) {
            FileSet files;
            files.add(path("old"), "old");
            files.commit();
            QVERIFY(i == 0 || !(QFile::permissions(path("old")) & QFile::ReadOther));
            QVERIFY(QFile::setPermissions(path("old"), own));
        }
        QCOMPARE(filesIn(folder.path()), QStringList("old"));
        try {
            FileSet files;
            for (const char* name : {"old", "made/new", "folder"}) {
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

    /** Two sets in one folder never mix. */
    void waits()
    {
        QTemporaryDir folder;
        FileSet first;
        first.add(folder.filePath("a"), "a");
        FileSet second;
        QVERIFY_EXCEPTION_THROWN(second.add(folder.filePath("b"), "b"), OutputError);
        first.commit();
        second.add(folder.filePath("b"), "b");
    }

    void afterKill_data()
    {
        QTest::addColumn<QStringList>("left"); // by a process that was killed
        QTest::addColumn<QString>("note");
        QTest::addColumn<QByteArray>("old"); // what is then in a file that was there
        QTest::newRow("while it wrote")
            << QStringList{"new/old"} << "nothing of it was written" << QByteArray("old");
        QTest::newRow("while it placed") << QStringList{"released/old", "old/old"}
                                         << "put in place now: old" << QByteArray("new");
        QTest::newRow("at its end")
            << QStringList{"old/old", "released/"} << "" << QByteArray("old");
        QTest::newRow("before a change")
            << QStringList{"released/old", "released/x"}
            << "put in place now: x; changed since, so left as they are: old" << QByteArray("old");
    }

    /** What a killed process leaves is finished or cleared by the next that writes there. */
    void afterKill()
    {
        QFETCH(const QStringList, left);
        QFETCH(const QString, note);
        QTemporaryDir folder;
        const auto write = [&](const QString& name, const QByteArray& content, int age) {
            QFile file(folder.filePath(name));
            QDir().mkpath(QFileInfo(file).path());
            QVERIFY(name.endsWith('/')
                || (file.open(QFile::WriteOnly) && file.write(content) == content.size()));
            file.flush();
            file.setFileTime(
                QDateTime::currentDateTime().addSecs(-age), QFile::FileModificationTime);
        };
        const bool isChanged = note.contains("changed");
        write("old", "old", isChanged ? 0 : 200);
        for (const QString& name : left) {
            write(".brox-writing/" + name, "new", 100);
        }
        FileSet files;
        files.add(folder.filePath("another"), "another");
        files.commit();
        QTEST(content(folder.filePath("old")), "old");
        QCOMPARE(files.notes().join(""),
            note.isEmpty() ? "" : folder.path() + ": an earlier run was broken off; " + note);
        QVERIFY(!QFileInfo::exists(folder.filePath(".brox-writing")));
    }
};

QTEST_MAIN(ProgramsTest)
#include "tst_programs.moc"
