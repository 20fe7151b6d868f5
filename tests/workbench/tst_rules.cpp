// SPDX-License-Identifier: MIT
#include "board_reader.h"
#include "data_start.h"
#include "host_session.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>

using namespace brox;

/** The rules of the shop, and what they do to boards. */
class RulesTest : public QObject
{
    Q_OBJECT

private:
    static QString changed(const QString& tolerances)
    {
        ShopRules rules;
        rules.changeTolerances(tolerances);
        QStringList lines;
        for (const ToleranceRule& rule : rules.tolerances) {
            lines << typeKey(rule.type) + toleranceText(rule.tolerance);
        }
        return lines.join(' ');
    }

    /** A row to a line, such as "V-0.1/+0.1 mm tolerance-assumed". */
    static QStringList told(const Board& board, const ShopRules& rules)
    {
        QStringList lines;
        for (const DraftRow& row : draftStep(Job(board, rules), 0).rows) {
            lines << typeWord(row.type, row.isSlot) + toleranceText(row.tolerance);
            for (const PlanFlag flag : row.flags) {
                lines.last() += ' ' + flagWord(flag);
            }
        }
        return lines;
    }

private slots:
    void readsOptions()
    {
        QCOMPARE(changed("plated=-0.05/+0.10"), "plated-0.05/+0.1 mm");
        QCOMPARE(changed("Unplated=+1mil/-2mil, pressfit=+-0.5"),
            "nonplated-0.0508/+0.0254 mm press-fit-0.5/+0.5 mm");
        QCOMPARE(changed("via=-1/+2mil,none,plated=-1/+2mil"), "plated-0.0254/+0.0508 mm");
        QCOMPARE(changed("via=+-1,via=none"), "");
        for (const char* wrong :
            {"", "0.1", "vias=+-1", "via=-1/-2", "via=1", "via=+-1e9", "via=+-x"}) {
            QVERIFY_EXCEPTION_THROWN(changed(wrong), RulesError);
        }
    }

    void readsItsFile()
    {
        ShopRules rules = ShopRules::starter();
        rules.viasUpTo = 18 * sizePerMil;
        rules.tolerances.push_back({HoleType::Via, 7, {13, 14}});
        rules.sort();
        rules.checks = {7, {}, {}, {}, 8.5, {{WindowKind::Slot, 3}}};
        QVERIFY(ShopRules::fromJson(rules.toJson()) == rules);
        constexpr const char* wrong[][2] = {{"{", "1: "}, {"{\n\n}}", "3: "}, {"[]", " no list"},
            {R"({"tolerances": [], "via": 1})", " unknown member \"via\""},
            {R"({"tolerances": [{"type": "plate"}]})", " tolerances[0].type: no type \"plate\""},
            {R"({"tolerances": [{"type": "via", "minus": -1}]})", " tolerances[0].minus: "},
            {R"({"tolerances": [{"type": "via", "minus": 0, "plus": 0}, {"type": "via",)"
             R"( "minus": 1, "plus": 1}]})",
                " tolerances: two for via from 0 mm"},
            {R"({"tolerances": [], "viasUpTo": "1"})", " viasUpTo: "},
            {R"({"tolerances": [], "checks": []})", " checks: no object"},
            {R"({"tolerances": [], "checks": {"edge": 1}})", " checks: unknown member \"edge\""},
            {R"({"tolerances": [], "checks": {"aspectRatio": 0}})", " checks.aspectRatio: "},
            {R"({"tolerances": [], "checks": {"smallestWindow": {"slot": -1}}})",
                " checks.smallestWindow.slot: "}};
        for (const auto& [json, error] : wrong) {
            try {
                ShopRules::fromJson(json);
                QFAIL(json);
            } catch (const RulesError& failure) {
                QVERIFY2(QString(failure.what()).startsWith(error), failure.what());
            }
        }
    }

    void actOnABoard()
    {
        Board board;
        Layer& layer = board.steps.emplace_back().layers.emplace_back();
        Tool tool;
        tool.finishedSize = sizePerMillimetre;
        tool.holes.resize(1);
        tool.slotPaths.resize(1);
        layer.tools = {tool, tool, tool};
        layer.tools[1].tolerance = Tolerance();
        layer.tools[2].functionTold = true;
        ShopRules rules;
        rules.changeTolerances("plated=+-2,via=+-1");
        rules.tolerances.push_back({HoleType::Plated, sizePerMillimetre, {sizePerMillimetre, 0}});
        rules.sort();
        rules.viasUpTo = sizePerMillimetre;
        const QString slot = "Plated slot-1/+0 mm tolerance-assumed";
        QCOMPARE(told(board, rules),
            QStringList({"Via-1/+1 mm tolerance-assumed type-assumed", "Via-0/+0 mm type-assumed",
                "Plated-1/+0 mm tolerance-assumed", slot, "Plated slot-0/+0 mm", slot}));
        layer.tools[2].type = HoleType::Via; // now the board distinguishes vias
        QCOMPARE(told(board, rules).last(), slot);
        rules.tolerances.clear();
        QCOMPARE(told(board, rules).first(), "Plated-0/+0 mm");
    }

    /** Sizes, bits and flags are those that the viewer shows, also of edits and other rules. */
    void planIsWhatTheViewerShows()
    {
        QTemporaryDir data;
        DataStart::fill(data.path());
        HostSession session(data.path());
        Job job(readBoard({SAMPLES_DIR "/breakout-PTH.drl"}));
        ShopRules fine;
        fine.changeTolerances("plated=+-0.001");
        for (const ShopRules& rules : {ShopRules::starter(), ShopRules(), fine}) {
            job.rules = rules;
            session.setSteps(job.drafts());
            const auto* table =
                session.viewer(0)->findChild<QTableWidget*>("jobDrillDataTableWidget");
            const DrillPlan plan = session.plan(session.draft(0), 0);
            QCOMPARE(table->rowCount(), 7);
            QCOMPARE(table->item(5, 0)->text(), "breakout-PTH");
            QCOMPARE(table->item(6, 0)->text(), "breakout-PTH slots");
            for (int i = 0; i < 7; ++i) {
                const PlanRow& row = plan.rows[size_t(i)];
                const auto size = [&](int column) {
                    return table->item(i, column)->data(Qt::UserRole).toInt();
                };
                QCOMPARE(row.finishedSize, size(3));
                QCOMPARE(row.tolerance, Tolerance({size(4), size(5)}));
                QCOMPARE(*row.drillSize, size(6));
                QCOMPARE(row.bit, table->item(i, 7)->text());
                QCOMPARE(row.flags.contains(PlanFlag::OutOfTolerance),
                    table->item(i, 7)->foreground().color() == Qt::red);
            }
            QCOMPARE(alarmingRows(plan), rules == ShopRules::starter() ? 0 : 1);
            session.closeViewer(0);
        }
        QCOMPARE(session.draft(0).rows.back().count, 3);
    }
};

QTEST_MAIN(RulesTest)
#include "tst_rules.moc"
