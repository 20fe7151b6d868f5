// SPDX-License-Identifier: MIT
#include "boxes.h"
#include "data_start.h"
#include "drill_table.h"
#include "host_session.h"
#include "live_plan.h"
#include "main_window.h"
#include "viewer_tables.h"

#include <QAction>
#include <QCheckBox>
#include <QDockWidget>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QtTest>

using namespace brox;

namespace {

const char program[] = "M48\nMETRIC\nT1C0.3\nT2C0.8\n%\n"
                       "T1\nX0.0Y0.0\nX20.0Y40.0\nT2\nX10.0Y20.0\nM30\n";

} // namespace

/** What the window shows is what it writes, whichever way something was edited. */
class TruthTest : public QObject
{
    Q_OBJECT

private:
    template <typename Widget>
    Widget* child(const char* name) const
    {
        return mWindow->findChild<Widget*>(name);
    }
    QTableWidget* tools() const { return child<QTableWidget>("jobDrillDataTableWidget"); }
    QTableWidget* bits() const { return child<QTableWidget>("drillBitsTableWidget"); }
    int bit(const QString& designation) const
    {
        return bits()->findItems(designation, Qt::MatchExactly).first()->row();
    }
    void write(const QString& name, const QByteArray& content) const
    {
        QFile file(mFolder->filePath(name));
        QVERIFY(file.open(QFile::WriteOnly));
        file.write(content);
    }
    QByteArray content(const QString& name) const
    {
        QFile file(mFolder->filePath(name));
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }
    void exportTable(const QString& name)
    {
        QTimer::singleShot(0, this, [=, this] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            auto* edit = dialog->findChild<QLineEdit*>("fileNameEdit");
            edit->setText(mFolder->filePath(name));
            QTest::keyClick(edit, Qt::Key_Return);
        });
        for (QAction* action : mWindow->findChildren<QAction*>()) {
            if (action->text() == "&Table...") {
                action->trigger();
            }
        }
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
        exportTable(name);
        QStringList cells;
        for (const QString& line : QString::fromUtf8(content(name)).split('\n').mid(1)) {
            if (!line.isEmpty()) {
                cells << line.section(',', 6, 6) + ' ' + line.section(',', 7, 7);
            }
        }
        return cells;
    }

    std::unique_ptr<QTemporaryDir> mFolder;
    std::unique_ptr<HostSession> mSession;
    std::unique_ptr<MainWindow> mWindow;

private slots:
    void init()
    {
        cleanup();
        mFolder = std::make_unique<QTemporaryDir>();
        QCoreApplication::setOrganizationName("brox");
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, mFolder->path());
        DataStart::fill(mFolder->path());
        mSession = std::make_unique<HostSession>(mFolder->path());
        mWindow = std::make_unique<MainWindow>(*mSession);
        mWindow->loadRules([&] { return loadRules(mFolder->path()); });
        mWindow->show();
        write("a.drl", program);
        QVERIFY(mWindow->openBoard({mFolder->filePath("a.drl")}));
        child<QDockWidget>("mapDock")->show();
        QTRY_COMPARE(legend(), shown());
        QCOMPARE(shown(), QStringList({"400 0.40", "900 0.90"}));
    }

    void cleanup()
    {
        mWindow.reset();
        mSession.reset();
    }

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
            mWindow->loadRules([&] { return rules; });
        });
        row("type", "800 0.80", [this] {
            Tool tool = *mSession->draft(0).layers[0].tools[1].tool;
            emit mWindow->findChild<JobTable*>()->typeChosen("a", tool, HoleType::NonPlated);
        });
        row("units", "35.433 0.90", [this] { mSession->setUnits(0, Units::Inch); });
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
        if (QTest::currentDataTag() == QByteArray("save by others")) {
            QTRY_VERIFY(shown().last().startsWith("95"));
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
            return fileState(
                mWindow->findChild<QDockWidget*>() ? planOf(*mSession, 0).model : DrillModel());
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
