// SPDX-License-Identifier: MIT
#include "clearance.h"
#include "fewest_tools.h"
#include "findings.h"
#include "geometry.h"
#include "plan_checks.h"

#include <QDate>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <bit>
#include <ctime>
#include <set>

using namespace brox;

namespace {

constexpr Size mm = sizePerMillimetre;

Size mms(double size)
{
    return Size(std::lround(size * mm));
}

Place at(double x, double y)
{
    return {mms(x), mms(y)};
}

Path way(Place from, std::vector<Place> stops)
{
    Path path{from, {}};
    for (const Place& stop : stops) {
        path.segments.push_back({Segment::Shape::Line, stop, {}});
    }
    return path;
}

/** A tool whose drill size is given: what a model makes of it is none of the checks' business. */
struct Bored
{
    HoleType type = HoleType::Plated;
    double size = 1;
    std::vector<Place> holes;
    std::vector<Path> slotPaths = {};
    std::optional<double> tolerance = 0.1; ///< either way
    int layer = 0;
    double drillSize = 0; ///< 0: as finished
    qint64 specifiedHits = -1;
};

struct Blank
{
    std::vector<Bored> tools;
    std::vector<Span> spans = {};
    std::optional<double> thickness = 1.6;
    std::vector<Path> outline = {
        way(at(-50, -50), {at(50, -50), at(50, 50), at(-50, 50), at(-50, -50)})};
    std::vector<Repeat> copies = {}; ///< in a panel without an outline
};

DrillDraft draftOf(const Blank& blank)
{
    Board board;
    board.steps.resize(blank.copies.empty() ? 1 : 2);
    board.thickness = blank.thickness ? std::optional(mms(*blank.thickness)) : std::nullopt;
    Step& step = board.steps[0];
    step.outline = blank.outline;
    int number = 0;
    for (const Bored& bored : blank.tools) {
        while (int(step.layers.size()) <= bored.layer) {
            Layer& layer = step.layers.emplace_back();
            layer.name = QStringLiteral("layer %1").arg(step.layers.size());
            if (step.layers.size() <= blank.spans.size()) {
                layer.span = blank.spans[step.layers.size() - 1];
            }
        }
        Tool& tool = step.layers[size_t(bored.layer)].tools.emplace_back();
        tool.number = ++number;
        tool.type = bored.type;
        tool.finishedSize = mms(bored.size);
        tool.holes = bored.holes;
        tool.slotPaths = bored.slotPaths;
        if (bored.tolerance) {
            tool.tolerance = {mms(*bored.tolerance), mms(*bored.tolerance)};
        }
        if (bored.specifiedHits >= 0) {
            tool.specifiedHits = bored.specifiedHits;
        }
    }
    if (!blank.copies.empty()) {
        board.steps[1].repeats = blank.copies;
        board.mainStep = 1;
    }
    const size_t main = board.mainStep;
    return draftStep(Job(std::move(board), ShopRules{{}, 0, ShopRules::starter().checks}), main);
}

DrillPlan planOf(const Blank& blank)
{
    const DrillDraft draft = draftOf(blank);
    std::vector<Drill> drills;
    for (const DraftRow& row : draft.rows) {
        const Bored& bored = blank.tools[size_t(draft.tool(row).tool->number - 1)];
        drills.push_back(
            {bored.drillSize > 0 ? mms(bored.drillSize) : row.finishedSize, {}, {}, {}, {}});
    }
    return makePlan(draft, {}, drills);
}

/** Two of the size of a millimetre with so much between them. */
Blank twoHoles(double gap, int layer = 0)
{
    return {{{.holes = {at(0, 0)}},
        {.type = HoleType::NonPlated, .holes = {at(1 + gap, 0)}, .layer = layer}}};
}

Blank one(Bored bored)
{
    return {{std::move(bored)}};
}

Blank with(Blank blank, auto change)
{
    change(blank);
    return blank;
}

QStringList wordsOf(const CheckFindings& findings)
{
    QStringList words;
    for (const CheckFinding& finding : findings.list) {
        words << checkWord(finding.check);
    }
    return words;
}

/** The smallest number of bits, and for it the smallest sum, by trying all sets. */
std::pair<int, qint64> bestOfAll(const std::vector<BitNeed>& needs, const std::vector<Size>& sizes)
{
    std::pair<int, qint64> best{INT_MAX, 0};
    for (unsigned set = 0; set < 1U << sizes.size(); ++set) {
        qint64 sum = 0;
        bool serves = true;
        for (const BitNeed& need : needs) {
            qint64 nearest = -1;
            for (size_t i = 0; i < sizes.size(); ++i) {
                const qint64 distance = std::abs(sizes[i] - need.result);
                if ((set >> i & 1) && sizes[i] >= need.low && sizes[i] <= need.high
                    && (nearest < 0 || distance < nearest)) {
                    nearest = distance;
                }
            }
            serves = serves && nearest >= 0;
            sum += nearest * need.hits;
        }
        if (serves) {
            best = std::min(best, {std::popcount(set), sum});
        }
    }
    return best;
}

struct Random
{
    QRandomGenerator generator{7};

    Size upTo(int most) { return Size(generator.bounded(most + 1)); }

    std::vector<Size> sizes(size_t count, int most)
    {
        std::set<Size> sizes;
        while (sizes.size() < count) {
            sizes.insert(1 + upTo(most - 1));
        }
        return {sizes.begin(), sizes.end()};
    }

    /** Needs that have a bit in their range. */
    std::vector<BitNeed> needs(
        size_t count, int most, int tolerance, const std::vector<Size>& sizes)
    {
        std::vector<BitNeed> needs;
        while (needs.size() < count) {
            const qint64 result = upTo(most);
            const BitNeed need{
                result, result - upTo(tolerance), result + upTo(tolerance), upTo(20)};
            const auto bit = std::ranges::lower_bound(sizes, need.low);
            if (bit != sizes.end() && *bit <= need.high) {
                needs.push_back(need);
            }
        }
        return needs;
    }
};

} // namespace

class TestChecks : public QObject
{
    Q_OBJECT

private slots:
    void findings_data();
    void findings();
    void skipped();
    void acceptances();
    void nearPairs();
    void outline();
    void doubledHits();
    void fewestBits();
    void fewestBitsSpeed();
    void mergedDrills();
};

void TestChecks::findings_data()
{
    QTest::addColumn<Blank>("blank");
    QTest::addColumn<QStringList>("words");
    const auto row = [](const char* name, Blank blank, QStringList words = {}) {
        QTest::addRow("%s", name) << std::move(blank) << std::move(words);
    };
    using enum HoleType;
    row("one place", twoHoles(-1.0005), {"same-place"});
    row("one place, near miss", twoHoles(-0.9985), {"overlap"});
    row("overlap", twoHoles(-0.001), {"overlap"});
    row("too near", twoHoles(0), {"too-near"});
    row("too near, barely", twoHoles(0.249), {"too-near"});
    row("too near, near miss", twoHoles(0.25));
    row("as drilled", with(twoHoles(0.3), [](Blank& blank) { blank.tools[0].drillSize = 1.102; }),
        {"too-near"});
    row("in copies",
        {{{.size = 1, .holes = {at(49.45, 0)}}, {.size = 0.9, .holes = {at(-49.4, 0)}}}, {}, 1.6,
            {}, {{0, at(0, 0), 2, 1, mms(100), 0, 0, false}}},
        {"too-near"});
    row("spans that meet",
        with(twoHoles(-0.5, 1),
            [](Blank& blank) {
                blank.spans = {{"1", "4"}, {"2", "3"}};
            }),
        {"overlap"});
    row("spans that do not", with(twoHoles(-0.5, 1), [](Blank& blank) {
        blank.spans = {{"1", "2"}, {"3", "4"}};
    }));
    row("stacked", with(twoHoles(-1, 1), [](Blank& blank) {
        blank.spans = {{"1", "2"}, {"2", "4"}};
    }));
    row("one tool twice at a place", one({.holes = {at(0, 0), at(0, 0), at(0.0005, 0)}}));
    row("one tool beside itself", one({.holes = {at(0, 0), at(0.5, 0)}}), {"overlap"});
    row("slot and hole",
        {{{.size = 1, .holes = {at(20, 1.24)}},
            {.size = 1, .holes = {}, .slotPaths = {way(at(0, 0), {at(40, 0)})}}}},
        {"too-near"});
    row("slot and hole, near miss",
        {{{.size = 1, .holes = {at(20, 1.25)}},
            {.size = 1, .holes = {}, .slotPaths = {way(at(0, 0), {at(40, 0)})}}}});
    row("slots that cross",
        one({.holes = {}, .slotPaths = {way(at(0, 0), {at(8, 0)}), way(at(4, -9), {at(4, 9)})}}),
        {"overlap"});
    row("slot that crosses itself",
        one({.holes = {},
            .slotPaths = {way(at(0, 0), {at(8, 0), at(8, 4), at(4, 4), at(4, -4)})}}));
    row("hits of one slot",
        one({.holes = {at(0, 0), at(3, 0)}, .slotPaths = {way(at(0, 0), {at(8, 0)})}}), {"skip"});
    row("outside", one({.holes = {at(49.4, 9), at(49.501, 0), at(80, 0)}}),
        {"outside", "outside", "edge"});
    row("in a cut-out",
        with(one({.holes = {at(0, 0)}}),
            [](Blank& blank) {
                blank.outline.push_back(
                    {at(3, 0), {{Segment::Shape::Clockwise, at(3, 0), at(0, 0)}}});
            }),
        {"outside"});
    row("edge of a round board",
        with(one({.holes = {at(0, 9.201)}}),
            [](Blank& blank) {
                blank.outline = {
                    {at(10, 0), {{Segment::Shape::CounterClockwise, at(10, 0), at(0, 0)}}}};
            }),
        {"edge"});
    row("edge, near miss", with(one({.holes = {at(0, 9.199), at(49.2, 0)}}), [](Blank& blank) {
        blank.outline.push_back(
            {at(0, 10), {{Segment::Shape::CounterClockwise, at(0, 10), at(0, 20)}}});
    }));
    row("slot over the edge", one({.holes = {}, .slotPaths = {way(at(0, 0), {at(60, 0)})}}),
        {"outside"});
    row("too large", one({.size = 6.351, .holes = {at(0, 0)}}), {"too-large"});
    row("too large, near miss", one({.size = 6.35, .holes = {at(0, 0)}}));
    row("short slot", one({.holes = {}, .slotPaths = {way(at(0, 0), {at(0.99, 0)})}}),
        {"short-slot"});
    row("short slot, near miss",
        one({.holes = {}, .slotPaths = {way(at(0, 0), {at(0.5, 0), at(0.5, 0.5)})}}));
    row("aspect", one({.size = 0.159, .holes = {at(0, 0)}}), {"aspect"});
    row("aspect, near miss", one({.size = 0.16, .holes = {at(0, 0)}}));
    row("plated window", one({.holes = {at(0, 0)}, .tolerance = 0.0745}), {"window"});
    row("plated window, near miss", one({.holes = {at(0, 0)}, .tolerance = 0.075}));
    row("press-fit window", one({.type = PressFit, .holes = {at(0, 0)}, .tolerance = 0.049}),
        {"window"});
    row("non-plated window, near miss",
        one({.type = NonPlated, .holes = {at(0, 0)}, .tolerance = 0.05}));
    row("slot window",
        one({.type = NonPlated,
            .holes = {},
            .slotPaths = {way(at(0, 0), {at(5, 0)})},
            .tolerance = 0.099}),
        {"window"});
    row("via without a window", one({.type = Via, .holes = {at(0, 0)}, .tolerance = 0}));
    row("closing", one({.type = Via, .holes = {at(0, 0)}, .drillSize = 0.999}), {"closing"});
    row("closing, near miss",
        {{{.type = NonPlated, .holes = {at(0, 0)}, .drillSize = 0.9}, {.holes = {at(9, 0)}}}});
    row("count", one({.holes = {at(0, 0), at(9, 0)}, .specifiedHits = 3}), {"count"});
    row("count, near miss",
        one({.holes = {at(0, 0)}, .slotPaths = {way(at(9, 0), {at(19, 0)})}, .specifiedHits = 2}));
    const auto files = [](double factor, double x = 0) {
        return Blank{
            {{.holes = {at(-20, -20), at(20, 20)}},
                {.holes = {at(x - 19 / factor, -18 / factor), at(x + 20 / factor, 17 / factor)},
                    .layer = 1}},
            {}, {}, {}};
    };
    row("a tenth", files(10), {"scale"});
    row("inches for millimetres", files(25.4), {"scale"});
    row("a thousandth", files(1000), {"overlap", "scale"});
    row("a fifth", files(5));
    row("some holes close together", files(10, 5));
}

void TestChecks::findings()
{
    QFETCH(Blank, blank);
    QFETCH(QStringList, words);
    if (words == QStringList{"skip"}) { // pilot hits stand on the slot, and too near to each other
        blank.tools[0].holes = {at(0, 0), at(8, 0)};
        words.clear();
    }
    const CheckFindings findings = checkPlan(planOf(blank));
    QCOMPARE(wordsOf(findings), words);
    for (const CheckFinding& finding : findings.list) {
        QVERIFY(!finding.places.empty());
    }
}

void TestChecks::skipped()
{
    Blank blank = twoHoles(0);
    blank.thickness.reset();
    blank.outline.clear();
    blank.tools[0].tolerance.reset();
    const auto skippedOf = [](const CheckFindings& findings) {
        QStringList words;
        for (const SkippedCheck& skipped : findings.skipped) {
            words << checkWord(skipped.check);
        }
        return words;
    };
    QCOMPARE(
        skippedOf(checkPlan(planOf(blank))), QStringList({"outside", "edge", "aspect", "window"}));
    DrillPlan plan = planOf(blank);
    plan.thickness = mm;
    QCOMPARE(skippedOf(checkPlan(plan)), QStringList({"outside", "edge", "window"}));
    plan.limits = {};
    QCOMPARE(wordsOf(checkPlan(plan)), QStringList());
    QCOMPARE(skippedOf(checkPlan(plan)),
        QStringList(
            {"too-near", "outside", "edge", "too-large", "short-slot", "aspect", "window"}));
}

void TestChecks::acceptances()
{
    QTemporaryDir folder;
    CheckFindings findings = checkPlan(planOf(twoHoles(0.1)));
    const QString id = findings.list.at(0).id;
    Blank changed = twoHoles(0.1);
    changed.tools[0].drillSize = 1.05; // measures less at the same places
    QCOMPARE(checkPlan(planOf(changed)).list.at(0).id, id);

    const auto load = [&](const QString& text) {
        QFile file(folder.filePath("accepted"));
        [[maybe_unused]] const bool isOpen = file.open(QFile::WriteOnly);
        file.write(text.toUtf8());
        file.close();
        return Acceptances::load(file.fileName());
    };
    const QDate today(2026, 5, 3);
    CheckFindings accepted = findings;
    load("# ours\n\n" + id + "; as agreed, by mail; 2026-05-03\nedge-1,old,2026-06-01\n")
        .apply(accepted, today);
    QVERIFY(accepted.list.empty());
    QCOMPARE(accepted.accepted.at(0).reason, "as agreed, by mail");
    QCOMPARE(accepted.notes, QStringList("accepted, but not found: edge-1"));
    load(id + " late 2026-05-02\n").apply(findings, today);
    QCOMPARE(findings.list.size(), size_t(1));
    QCOMPARE(findings.notes, QStringList("accepted until 2026-05-02, no longer: " + id));
    QVERIFY_THROWS_EXCEPTION(RulesError, load(id + " 2026-05-02"));
    QVERIFY_THROWS_EXCEPTION(RulesError, load(id + "; why; 2026-02-30"));
}

/** The grid against all pairs. */
void TestChecks::nearPairs()
{
    Random random;
    for (int round = 0; round < 50; ++round) {
        std::vector<std::vector<Place>> holes(3);
        const std::vector<Path> none;
        std::vector<DrilledRow> rows;
        for (size_t i = 0; i < holes.size(); ++i) {
            for (int hole = 0; hole < 60; ++hole) {
                holes[i].push_back({random.upTo(40) * 20'000, random.upTo(100'000'000) / 10});
            }
            rows.push_back({&holes[i], &none, 1 + random.upTo(i == 0 ? 3'000'000 : 300'000), i});
        }
        constexpr double limit = 100'000;
        std::multiset<double> found;
        findNear(rows, limit, [&](const NearPair& pair) {
            found.insert(pair.gap);
            return true;
        });
        std::multiset<double> expected;
        for (size_t i = 0; i < rows.size(); ++i) {
            for (size_t j = 0; j <= i; ++j) {
                for (size_t a = 0; a < holes[i].size(); ++a) {
                    for (size_t b = 0; b < (i == j ? a : holes[j].size()); ++b) {
                        const double gap = distance(pointOf(holes[i][a]), pointOf(holes[j][b]))
                            - (double(rows[i].drillSize) + rows[j].drillSize) / 2;
                        if (gap < limit && !(i == j && isSamePlace(holes[i][a], holes[j][b]))) {
                            expected.insert(gap);
                        }
                    }
                }
            }
        }
        QVERIFY(found == expected);
    }
}

/** Cells of the grid against all lines, where places lie straight below corners too. */
void TestChecks::outline()
{
    Random random;
    std::vector<Place> corners;
    for (int i = 0; i < 20; ++i) {
        corners.push_back(at(4 * i, i % 2 ? 0 : -10));
        corners.push_back(at(4 * i + 4, i % 2 ? 0 : -10));
    }
    corners.insert(corners.end(), {at(80, 40), at(0, 60), at(0, -10)});
    const Path comb = way(at(0, -10), corners);
    const OutlineDistance distances({comb}, mm);
    QVERIFY(distances.isUsable());
    for (int i = 0; i < 20'000; ++i) {
        const Place place{(random.upTo(180) - 10) * mm / 2, (random.upTo(160) - 30) * mm / 2 + 1};
        const QPointF point = pointOf(place);
        double least = 1e99;
        bool isInside = false;
        for (const Line& line : linesOf(comb)) {
            least = std::min(least, distance(point, line));
            if ((line.a.y() > point.y()) != (line.b.y() > point.y())) {
                isInside ^= line.a.x()
                        + (point.y() - line.a.y()) / (line.b.y() - line.a.y())
                            * (line.b.x() - line.a.x())
                    > point.x();
            }
        }
        const double measured = distances.signedDistance({point, point});
        QVERIFY(least == 0 || (measured > 0) == isInside);
        QVERIFY(least >= mm ? std::abs(measured) >= mm : std::abs(std::abs(measured) - least) < 1);
        QVERIFY(std::abs(std::abs(distances.exactDistance({point, point})) - least) < 1);
    }
}

void TestChecks::doubledHits()
{
    Random random;
    std::vector<Place> holes;
    for (int i = 0; i < 2000; ++i) {
        holes.push_back({random.upTo(6000) - 3000, random.upTo(6000) - 3000});
    }
    std::vector<Place> kept = holes;
    const qint64 dropped = dropDoubled(kept);
    QCOMPARE(dropped, qint64(holes.size() - kept.size()));
    const auto isNear = [](Place hole) {
        return [hole](Place other) { return isSamePlace(hole, other); };
    };
    for (const Place& hole : holes) {
        QVERIFY(std::ranges::any_of(kept, isNear(hole)));
    }
    for (const Place& hole : kept) {
        QCOMPARE(std::ranges::count_if(kept, isNear(hole)), 1);
    }
    const Path slot = way(at(0, 0), {at(5, 0)});
    const Path back = way(at(5, 0), {at(0, 0)});
    const Path arc{at(0, 0), {{Segment::Shape::Clockwise, at(5, 0), at(2.5, 0)}}};
    std::vector<const Path*> slotPaths{&slot, &arc, &back, &arc};
    QCOMPARE(dropDoubled(slotPaths), 2);
}

void TestChecks::fewestBits()
{
    Random random;
    for (int round = 0; round < 2000; ++round) {
        const std::vector<Size> sizes = random.sizes(1 + size_t(random.upTo(8)), 30);
        const std::vector<BitNeed> needs = random.needs(size_t(random.upTo(7)), 30, 8, sizes);
        const FewestBits fewest = brox::fewestBits(needs, sizes);
        const std::set<size_t> used(fewest.bits.begin(), fewest.bits.end());
        qint64 sum = 0;
        for (size_t i = 0; i < needs.size(); ++i) {
            const Size size = sizes[fewest.bits[i]];
            QVERIFY(size >= needs[i].low && size <= needs[i].high);
            sum += std::abs(size - needs[i].result) * needs[i].hits;
        }
        QVERIFY(std::pair(int(used.size()), sum) == bestOfAll(needs, sizes));
        QCOMPARE(fewest.apart.size(), used.size());
        std::vector<BitNeed> apart;
        for (const size_t need : fewest.apart) {
            apart.push_back(needs[need]);
        }
        QCOMPARE(bestOfAll(apart, sizes).first, int(apart.size()));
    }
}

void TestChecks::fewestBitsSpeed()
{
    Random random;
    for (const int tolerance : {50, 500, 3000}) {
        const std::vector<Size> sizes = random.sizes(500, 6500);
        const std::vector<BitNeed> needs = random.needs(1000, 6500, tolerance, sizes);
        const clock_t begin = clock();
        brox::fewestBits(needs, sizes);
        const double seconds = double(clock() - begin) / CLOCKS_PER_SEC;
        QVERIFY2(seconds < 0.05, qPrintable(QString::number(seconds)));
    }
}

/** What keeps its bit, and what takes the bit of what keeps its own. */
void TestChecks::mergedDrills()
{
    using enum HoleType;
    const std::vector<Place> hole{at(0, 0)};
    const DrillDraft draft = draftOf({{{.size = 1, .holes = hole},
        {.size = 1.1, .holes = {at(5, 0), at(6, 0)}, .tolerance = 0.05},
        {.type = PressFit, .size = 0.95, .holes = hole}, {.size = 1.19, .holes = hole},
        {.size = 3, .holes = hole}, {.type = NonPlated, .size = 1, .holes = hole}}});
    const std::vector<Drill> given = {{mms(1), "1.00", {}, mms(1), {}},
        {mms(1.1), "1.10", {}, mms(1.1), {}}, {mms(0.95), "0.95", {}, mms(0.95), {}},
        {mms(1.5), "1.50", {PlanFlag::OutOfTolerance}, mms(1.19), {}},
        {mms(3), {}, {PlanFlag::NoBit}, mms(3), {}}, {mms(1), "1.00", {}, mms(1), {}}};
    const std::vector<TableBit> bits{
        {mms(0.95), "0.95"}, {mms(1), "1.00"}, {mms(1.05), "1.05"}, {mms(1.1), "1.10"}};
    const auto merged = [&](bool withPressFit) {
        std::vector<Drill> drills = given;
        const size_t apart = brox::mergeDrills(draft, bits, withPressFit, drills).size();
        const DrillPlan plan = makePlan(draft, {}, drills);
        QStringList texts{QStringLiteral("%1 of %2, %3 apart")
                              .arg(plan.toolCount())
                              .arg(plan.toolsBefore())
                              .arg(apart)};
        for (const PlanRow& row : plan.rows) {
            texts << (QStringList(row.bit) + flagTexts(row)).join(' ');
        }
        return texts;
    };
    QCOMPARE(merged(false),
        QStringList({"5 of 6, 5 apart", "0.95 merged (was 1.00)", "1.10", "0.95",
            "1.50 out-of-tolerance", " no-bit", "1.00"}));
    QCOMPARE(merged(true),
        QStringList({"4 of 6, 4 apart", "1.05 merged (was 1.00)", "1.05 merged (was 1.10)",
            "1.05 merged (was 0.95)", "1.50 out-of-tolerance", " no-bit", "1.00"}));
}

QTEST_APPLESS_MAIN(TestChecks)
#include "tst_checks.moc"
