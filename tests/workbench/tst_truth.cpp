// SPDX-License-Identifier: MIT
#include "board_window.h"
#include "boxes.h"
#include "drill_table.h"
#include "live_plan.h"
#include "viewer_tables.h"

#include <QCheckBox>
#include <QDockWidget>
#include <QPushButton>
#include <QTreeWidget>

using namespace brox;

/** What the window shows is what it writes, whichever way something was edited. */
class TruthTest : public BoardWindow
{
    Q_OBJECT

private:
    QTableWidget* bits() const { return child<QTableWidget>("drillBitsTableWidget"); }
    int bit(const QString& designation) const
    {
        return bits()->findItems(designation, Qt::MatchExactly).first()->row();
    }
    /** Drill sizes and bits by the table, the legend of the map and an exported file. */
    QStringList shown() const
    {
        QStringList cells;
        for (int row = 0; row < tools()->rowCount(); ++row) {
            const Size size = tools()->item(row, 6)->data(Qt::UserRole).toInt();
            cells << sizeText(size, mSession->draft(0).units) + ' ' + tools()->item(row, 7)->text();
        }
        return cells;
    }
    QStringList legend() const
    {
        QStringList cells;
        const QTreeWidgetItem* layer = child<QTreeWidget>("toolTreeWidget")->topLevelItem(0);
        for (int row = 0; layer && row < layer->childCount(); ++row) {
            cells << layer->child(row)->text(2) + ' ' + layer->child(row)->text(1);
        }
        return cells;
    }
    QStringList exported()
    {
        static int number = 0;
        const QString name = QStringLiteral("%1.csv").arg(++number);
        exportAs("Table...", path(name));
        QStringList cells;
        for (const QString& line : QString::fromUtf8(content(name)).split('\n').mid(1)) {
            if (!line.isEmpty()) {
                cells << line.section(',', 6, 6) + ' ' + line.section(',', 7, 7);
            }
        }
        return cells;
    }

private slots:
    void init()
    {
        openWindow();
        child<QDockWidget>("mapDock")->show();
        QTRY_COMPARE(legend(), shown());
        QCOMPARE(shown(), QStringList({"400 0.40", "900 0.90"}));
    }

    void cleanup() { closeWindow(); }

    void edits_data()
    {
        QTest::addColumn<std::function<void()>>("edit");
        QTest::addColumn<QString>("second"); ///< what the second tool is drilled with then
        const auto row = [](const char* name, const char* second, std::function<void()> edit) {
            QTest::newRow(name) << edit << QString(second);
        };
        row("amount", "1000 1.00", [this] {
            child<QTableWidget>("amountsTableWidget")->item(0, 0)->setData(Qt::DisplayRole, 200.0);
        });
        row("formula", "800 0.80", [this] {
            child<QLineEdit>("dhsLineEdit")->selectAll();
            QTest::keyClicks(child<QLineEdit>("dhsLineEdit"), "F");
        });
        row("no bits", "900 ", [this] { child<QCheckBox>("useBitFileCheckBox")->click(); });
        row("model", "914.4 #64", [this] { mSession->selectModel(0, "HASL"); });
        row("size of a bit", "905 0.90", [this] { bits()->item(bit("0.90"), 1)->setText("905"); });
        row("designation of a bit", "900 nine",
            [this] { bits()->item(bit("0.90"), 0)->setText("nine"); });
        row("bit out", "889 #65", [this] {
            bits()->item(bit("0.90"), 3)->setCheckState(Qt::Unchecked);
            bits()->selectRow(bit("#64"));
            mWindow->findChild<QAction*>("actionDelete_Size")->trigger();
        });
        row("rules", "914.4 #64", [this] {
            ShopRules rules;
            rules.changeTolerances("plated=-0.05/+0.10");
            mWindow->loadRules([rules] { return rules; });
        });
        row("type", "800 0.80", [this] {
            Tool tool = *mSession->draft(0).layers[0].tools[1].tool;
            emit mWindow->findChild<JobTable*>()->typeChosen("a", tool, HoleType::NonPlated);
        });
        row("units", "35.433 0.90", [this] { mSession->setUnits(0, Units::Inch); });
        row("rules by others", "914.4 #64", [this] {
            write("brox/shop_rules.json",
                content("brox/shop_rules.json").replace("\"minus\": 0.1", "\"minus\": 0.05"));
        });
        row("save by others", "950 0.95", [this] {
            write("brox/brox.xml",
                content("brox/brox.xml").replace("amount=\"40000\"", "amount=\"60000\""));
        });
        row("unsaved edits and rules", "1100.5 1.10", [this] {
            child<QTableWidget>("amountsTableWidget")->item(0, 0)->setData(Qt::DisplayRole, 300.0);
            bits()->item(bit("1.10"), 1)->setText("1100.5");
            mWindow->loadRules([&] { return ShopRules(); });
        });
    }

    void edits()
    {
        QFETCH(std::function<void()>, edit);
        const Boxes noBoxes;
        edit();
        if (QByteArray(QTest::currentDataTag()).endsWith("by others")) {
            QTRY_VERIFY(!shown().last().startsWith("900"));
        }
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        const QStringList table = shown();
        QCOMPARE(legend(), table);
        QCOMPARE(exported(), table);
        QTEST(table.last(), "second");
        QCOMPARE(noBoxes.seen, QStringList());
    }

    void tellsTheStateOfTheFiles()
    {
        const auto state = [this] {
            return fileState(mSession->plan(mSession->draft(0), 0).model);
        };
        QCOMPARE(state(), "saved");
        child<QCheckBox>("useBitFileCheckBox")->click();
        QCOMPARE(state(), "unsaved edits");
        write("brox/brox.xml", content("brox/brox.xml") + "\n");
        QCOMPARE(state(), "older than the file");
        QTRY_VERIFY(child<QWidget>("olderBar")->isVisible());
        Boxes boxes({"Discard"});
        child<QWidget>("olderBar")->findChild<QPushButton*>()->click();
        QVERIFY(boxes.areAnswered());
        QCOMPARE(state(), "saved");
        QVERIFY(!child<QWidget>("olderBar")->isVisible());
    }

    void flagsWhatIsNotApproved()
    {
        write("brox/brox_drill_bits.xml",
            content("brox/brox_drill_bits.xml").replace("approved=\"yes\"", "approved=\"no\""));
        auto* button = child<QPushButton>("toCheckButton");
        QTRY_COMPARE(button->text(), "2 row(s) to check");
        tools()->setCurrentCell(0, 0);
        button->click();
        QCOMPARE(tools()->currentRow(), 1);
        QVERIFY(tools()->item(1, 7)->toolTip().startsWith("unapproved-bit"));
    }
};

QTEST_MAIN(TruthTest)
#include "tst_truth.moc"
