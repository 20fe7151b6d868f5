// SPDX-License-Identifier: MIT
#include "boxes.h"
#include "data_start.h"
#include "host_session.h"
#include "main_window.h"
#include "start_page.h"
#include "step_tabs.h"

#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSettings>
#include <QStatusBar>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeWidget>
#include <QtTest>
#include <cmath>

using namespace brox;

namespace {

/** The second tool drills one hole, in the middle of the map. */
const char program[] = "M48\nMETRIC\nT1C0.3\nT2C0.8\n%\n"
                       "T1\nX0.0Y0.0\nX20.0Y40.0\nT2\nX10.0Y20.0\nM30\n";

} // namespace

/** What a user does to a board in dialogs, menus and the map. */
class DialogsTest : public QObject
{
    Q_OBJECT

private:
    template <typename Widget>
    Widget* child(const char* name) const
    {
        return mWindow->findChild<Widget*>(name);
    }
    QTableWidget* tools() const
    {
        return mSession->viewer(0)->findChild<QTableWidget*>("jobDrillDataTableWidget");
    }
    /** The cells of a tool from its type to its drill size. */
    QString tool(int row) const
    {
        QStringList cells;
        for (int column = 1; column < 7; ++column) {
            cells << tools()->item(row, column)->text();
        }
        return cells.join(' ');
    }
    void open(const QString& name)
    {
        const QString path = mFolder->filePath(name);
        QFile file(path);
        QVERIFY(file.open(QFile::WriteOnly));
        file.write(program);
        file.close();
        QVERIFY(mWindow->openBoard({path}));
    }
    QAction* action(const QString& text) const
    {
        for (QAction* action : mWindow->findChildren<QAction*>()) {
            if (action->text().remove('&') == text) {
                return action;
            }
        }
        qFatal("There is no %s", qPrintable(text));
    }
    void choose(const QString& text) { action(text)->trigger(); }
    /** Does something in the dialog that comes up next. */
    template <typename Dialog>
    void inDialog(const std::function<void(Dialog*)>& work)
    {
        QTimer::singleShot(0, this, [=] {
            auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            work(dialog);
        });
    }
    /** Exports under a name that is typed, and gives the name that the dialog comes with. */
    QString exportAs(const QString& action, const QString& name)
    {
        QString offered;
        inDialog<QFileDialog>([&](QFileDialog* dialog) {
            auto* edit = dialog->findChild<QLineEdit*>("fileNameEdit");
            offered = dialog->directory().filePath(edit->text());
            edit->setText(name);
            QTest::keyClick(edit, Qt::Key_Return);
        });
        choose(action);
        return offered;
    }
    QByteArray content(const QString& name) const
    {
        QFile file(mFolder->filePath(name));
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::unique_ptr<QTemporaryDir> mFolder;
    std::unique_ptr<HostSession> mSession;
    std::unique_ptr<MainWindow> mWindow;

private slots:
    void init()
    {
        cleanup(); // which does not follow upon a failure in here
        mFolder = std::make_unique<QTemporaryDir>();
        QCoreApplication::setOrganizationName("brox");
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, mFolder->path());
        DataStart::fill(mFolder->path());
        mSession = std::make_unique<HostSession>(mFolder->path());
        mWindow = std::make_unique<MainWindow>(*mSession);
        mWindow->loadRules([&] { return loadRules(mFolder->path()); });
        mWindow->remember();
        mWindow->show();
        open("a.drl");
        QCOMPARE(tool(1), "Pth 1 800 100 100 900");
    }

    void cleanup()
    {
        mWindow.reset();
        mSession.reset();
    }

    void map()
    {
        ShopRules rules;
        rules.changeTolerances("plated=-0.05/+0.10");
        mWindow->loadRules([&] { return rules; });
        open("b.drl");
        auto* dock = child<QDockWidget>("mapDock");
        auto* map = child<QWidget>("mapWidget");
        auto* hole = child<QLabel>("holeLabel");
        const auto told = [&] {
            QTest::mouseClick(map, Qt::LeftButton, {}, map->rect().center());
            return hole->text();
        };
        dock->show();
        QCOMPARE(told(),
            "b, Plated; finished 800 +100 -50; drill 914.4; bit #64; "
            "tolerance-assumed; type-assumed\nat X 10.000 mm, Y 20.000 mm");
        QCOMPARE(tools()->currentRow(), 1);
        QVERIFY(tools()->item(1, 3)->isSelected() && !tools()->item(0, 3)->isSelected());
        QTest::keyClick(map, Qt::Key_Plus);
        QVERIFY(told().startsWith("b, Plated;"));
        QTest::keyClick(map, Qt::Key_Right);
        QCOMPARE(told(), "");
        QTest::mouseClick(map, Qt::LeftButton, {}, map->rect().center() - QPoint(60, 0));
        QVERIFY(hole->text().startsWith("b, Plated;"));
        QCOMPARE(told(), "");
        QTest::keyClick(map, Qt::Key_Left);
        QTest::mouseClick(map, Qt::RightButton, {}, map->rect().center());
        QCOMPARE(hole->text(), "");
        QTest::mousePress(map, Qt::LeftButton, {}, map->rect().center());
        for (const int way : {20, 40}) {
            QMouseEvent move(QEvent::MouseMove, map->rect().center() + QPoint(way, 0), {},
                Qt::NoButton, Qt::LeftButton, {});
            QApplication::sendEvent(map, &move);
        }
        QTest::mouseRelease(map, Qt::LeftButton, {}, map->rect().center() + QPoint(40, 0));
        QCOMPARE(hole->text(), ""); // it was dragged
        choose("Inch (mils)");
        QTRY_COMPARE(hole->text(), "Click a hole to see what drills it.");
        QCOMPARE(told(), "");
        choose("Metric (microns)");
        QTest::keyClick(map, Qt::Key_Home);
        QTRY_VERIFY(told().startsWith("b, Plated;"));
        mWindow->resize(mWindow->size() + QSize(90, 60));
        QVERIFY(told().startsWith("b, Plated;"));
        mWindow->resize(mWindow->size() - QSize(90, 60));
        QWheelEvent wheel({}, {}, {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(map, &wheel);
        QTest::mouseClick(map, Qt::LeftButton, {}, map->rect().center() * std::sqrt(2));
        QVERIFY(hole->text().startsWith("b, Plated;"));
        QTest::keyClick(map, Qt::Key_Home);
        const QImage second = map->grab().toImage();
        QTest::keyClick(map, Qt::Key_Plus);
        QTest::keyClick(map, Qt::Key_Minus);
        QVERIFY(map->grab().toImage() == second);
        tools()->selectRow(0);
        QVERIFY(map->grab().toImage() != second);
        tools()->selectRow(1);
        QVERIFY(map->grab().toImage() == second);

        choose("Inch (mils)");
        QTRY_VERIFY(told().endsWith("\nat X 0.3937 inch, Y 0.7874 inch"));
        auto* tree = child<QTreeWidget>("toolTreeWidget");
        QCOMPARE(tree->topLevelItem(0)->child(1)->text(2), "36");
        tree->topLevelItem(0)->child(1)->setCheckState(0, Qt::Unchecked);
        QCOMPARE(told(), "");
        QVERIFY(map->grab().toImage() != second);
        choose("Metric (microns)");
        QTRY_COMPARE(tree->topLevelItem(0)->child(1)->text(2), "914.4");
        QCOMPARE(told(), "");
        const Boxes boxes({"Discard"}); // a change of units counts as an edit
        mWindow->openBoard({SAMPLES_DIR "/sensor.xml"});
        choose("1 board");
        QTRY_COMPARE(tree->topLevelItem(0)->child(1)->text(3), "14");
    }

    void types()
    {
        QString checked;
        const auto chooseType = [&](const QString& text, bool isByKey = false) {
            QTimer::singleShot(0, this, [&, text] {
                auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
                QVERIFY(menu);
                for (QAction* action : menu->actions()) {
                    checked = action->isChecked() ? action->text() : checked;
                    if (action->text().remove('&') == text) {
                        menu->setActiveAction(action);
                    }
                }
                QTest::keyClick(menu, Qt::Key_Return);
            });
            tools()->setCurrentCell(isByKey, 0);
            emit tools()->customContextMenuRequested(
                isByKey ? QPoint(0, 5000) : tools()->visualItemRect(tools()->item(1, 1)).center());
            QCoreApplication::processEvents(); // the viewer is made anew
        };
        const QString name(64, 'n'); // as long as a host takes
        QVERIFY(tools()->item(1, 1)->font().italic() && tools()->item(1, 4)->font().italic());
        QVERIFY(tools()->item(1, 1)->toolTip().endsWith("\nThe board does not tell the type."));
        mSession->selectModel(0, "HASL");
        chooseType("Non-plated");
        QCOMPARE(tool(1), "NPth 1 800 50 50 850");
        QCOMPARE(tool(0), "Pth 2 300 100 100 400");
        QVERIFY(!tools()->item(1, 1)->font().italic() && tools()->item(1, 4)->font().italic());
        QCOMPARE(tools()->item(1, 1)->toolTip(),
            "nonplated by the user; -0.05/+0.05 mm by the rule for nonplated");
        chooseType("Press-fit");
        QCOMPARE(tool(1), "PressFit 1 800 50 50 950");
        chooseType("As the Board Has It", true);
        QCOMPARE(checked, "Press-fit");
        QCOMPARE(tool(1), "Pth 1 800 100 100 914.4");
        QVERIFY(tools()->item(1, 1)->font().italic());
        open(name + ".drl");
        QCOMPARE(tools()->item(1, 0)->text(), name);
        chooseType("Via");
        open(name + ".drl");
        QCOMPARE(tool(1), "Via 1 800 100 100 850"); // kept with the board
        choose("Forget Choices for This Board");
        QCOMPARE(tool(1), "Pth 1 800 100 100 900");
    }

    void rules()
    {
        const auto change = [](QDialog* dialog) {
            auto* table = dialog->findChild<QTableWidget*>("tolerancesTable");
            table->setCurrentCell(0, 0);
            dialog->findChild<QPushButton*>("removeButton")->click();
            dialog->findChild<QPushButton*>("addButton")->click();
            const auto box = [&](int row, int column) {
                return static_cast<QDoubleSpinBox*>(table->cellWidget(row, column));
            };
            box(3, 2)->setValue(0.1);
            box(3, 3)->setValue(0.3);
            dialog->findChild<QDoubleSpinBox*>("viasUpToBox")->setValue(0.3);
            dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
        };
        mSession->selectModel(0, "HASL");
        auto* models = mSession->viewer(0)->findChild<QTableWidget*>("broxModelTableWidget");
        models->currentItem()->setText("Gold");
        inDialog<QDialog>(change);
        choose("Shop Rules..."); // unsaved models come along
        QVERIFY(mSession->hasUnsaved(0));
        inDialog<QDialog>([](QDialog* dialog) {
            auto* table = dialog->findChild<QTableWidget*>("tolerancesTable");
            auto* vias = dialog->findChild<QDoubleSpinBox*>("viasUpToBox");
            QCOMPARE(static_cast<QDoubleSpinBox*>(table->cellWidget(0, 3))->value(), 0.3);
            QCOMPARE(vias->value(), 0.3);
            dialog->findChild<QDialogButtonBox*>()
                ->button(QDialogButtonBox::RestoreDefaults)
                ->click();
            QCOMPARE(vias->value(), 0.0);
            dialog->reject();
        });
        choose("Shop Rules...");
        QCOMPARE(tool(0), "Via 2 300 100 100 350");
        QCOMPARE(tool(1), "Pth 1 800 100 300 1016");
        QCOMPARE(mSession->selectedModel(0), "Gold");
        QVERIFY(loadRules(mFolder->path()) == mWindow->job().rules);
        QVERIFY(mWindow->job().rules.lines().join('\n').startsWith(
            "plated: -0.1/+0.3 mm where the board tells no tolerance\nnonplated: -0.05/"));
        QCOMPARE(mWindow->job().rules.viasUpTo, Size(0.3 * sizePerMillimetre));
        mWindow->loadRules([]() -> ShopRules { throw RulesError("broken"); });
        QVERIFY(!action("Shop Rules...")->isEnabled());
        const Boxes boxes({"OK", "OK"});
        exportAs("Table...", mFolder->filePath("refused"));
        QVERIFY(boxes.seen.value(0).startsWith("broken; nothing is exported"));
        QCOMPARE(content("refused.csv"), QByteArray());
        child<QToolButton>("deleteToolButton")->click();
        QCOMPARE(mWindow->statusBar()->currentMessage(), "Step pcb: model \"Gold\" is deleted");
    }

    void exports()
    {
        ShopRules rules;
        rules.changeTolerances("plated=-0.001/+0.031");
        mWindow->loadRules([&] { return rules; });
        open("b.drl");
        const QString path = mFolder->filePath("out/x");
        QVERIFY(QDir(mFolder->path()).mkdir("out"));
        exportAs("Table...", path);
        QVERIFY(content("out/x.csv").startsWith("Layer,Type,Count,FHS [micron],"));
        QCOMPARE(mWindow->statusBar()->currentMessage(),
            "Written by model ENIG: " + path + ".csv (1 row(s) to check)");
        QCOMPARE(exportAs("Table...", path + ".json"), mFolder->filePath("out/b-pcb"));
        QVERIFY(content("out/x.json").contains("\"bit\": \"#64\""));
        exportAs("Table...", path + ".txt");
        QVERIFY(content("out/x.txt").contains("b      Plated      1 "));
        exportAs("Map...", path);
        QVERIFY(content("out/x.svg").contains("Drill map, layer b"));
        exportAs("Report...", path);
        QVERIFY(content("out/x.html").contains("<h1>Drill report: b, step pcb</h1>"));
        mSession->viewer(0)->findChild<QLineEdit*>("dhsLineEdit")->selectAll();
        QTest::keyClicks(mSession->viewer(0)->findChild<QLineEdit*>("dhsLineEdit"), "F");
        Boxes boxes({"OK"});
        exportAs("Table...", mFolder->filePath("a.drl/x")); // the folder is none
        exportAs("Table...", path + "y.json");
        QVERIFY(content("out/xy.json").contains("\"unsaved\": true"));
        exportAs("Report...", path + "y");
        QCOMPARE(content("out/xy.html").count("unsaved edits"), 2); // one in the map
        exportAs("Drill Programs...", mFolder->filePath("out"));
        QVERIFY2(boxes.areAnswered(), qPrintable(boxes.seen.join(' ')));
        QVERIFY(content("out/b-pcb-b-plated.drl").contains("T02C0.800\n"));
        QVERIFY(content("out/b-pcb-b-plated.drl").contains("(unsaved edits)\n"));
        QCOMPARE(mWindow->statusBar()->currentMessage(),
            "Written by model ENIG: " + mFolder->filePath("out/b-pcb-b-plated.drl")
                + " (models and bits: unsaved edits)");
        for (const char* name : {"out/stale.drl", "out/b-pcb-b-nonplated.drl"}) {
            QVERIFY(
                QFile::copy(mFolder->filePath("out/b-pcb-b-plated.drl"), mFolder->filePath(name)));
        }
        QFile(mFolder->filePath("out/stale.drl")).resize(10); // another's
        boxes.add({"Cancel", "Overwrite", "No", "Overwrite", "Yes"});
        for (const int left : {3, 3, 2}) {
            exportAs("Drill Programs...", mFolder->filePath("out"));
            QCOMPARE(QDir(mFolder->filePath("out")).entryList({"*.drl"}).size(), left);
        }
        QVERIFY2(boxes.areAnswered(), qPrintable(boxes.seen.join(' ')));
    }

    void recentBoards()
    {
        const auto names = [this] {
            QStringList all;
            QMenu* file = mWindow->findChild<QMenuBar*>()->actions().first()->menu();
            emit file->aboutToShow();
            const QMenu* menu = file->actions().at(2)->menu();
            for (const QAction* action : menu->actions()) {
                all << action->text() + (action->isEnabled() ? "" : " gone");
            }
            return all;
        };
        open("b.drl");
        open("a.drl");
        QVERIFY(QFile::remove(mFolder->filePath("b.drl")));
        QCOMPARE(names(), QStringList({"&1 a.drl", "&2 b.drl gone"}));
        for (const char* name : {"c", "d", "e", "f", "g", "h", "i"}) {
            RecentBoards::add({name, "x"});
        }
        QCOMPARE(names().size(), 8);
        QCOMPARE(names().first(), "&1 i and 1 more gone");

        mWindow->resize(700, 600);
        child<QDockWidget>("mapDock")->show();
        open("a.drl");
        QVERIFY(mWindow->close());
        mWindow = std::make_unique<MainWindow>(*mSession);
        mWindow->remember();
        mWindow->reopenLastBoard();
        QCOMPARE(mWindow->size(), QSize(700, 600));
        QVERIFY(child<QDockWidget>("mapDock")->isVisibleTo(mWindow.get()));
        QVERIFY(mWindow->windowTitle().startsWith("a.drl"));
    }

    void tabs()
    {
        Board board;
        board.job = "job";
        board.steps.resize(2);
        board.steps[0].name = board.steps[1].name = "a&b";
        mWindow.reset();
        mSession->setSteps(Job(std::move(board)).drafts());
        StepTabs tabs(*mSession);
        for (const size_t step : {0, 1, 0, 1}) {
            tabs.openStep(step);
        }
        QCOMPARE(tabs.count(), 2);
        QCOMPARE(tabs.tabText(0), "job: a&&b");
        QCOMPARE(tabs.tabText(1), "job: a&&b (2)");
    }

    void guide()
    {
        choose("User Guide");
        auto* page = child<QDialog>("userGuide")->findChild<QTextBrowser*>();
        emit page->anchorClicked(QUrl("#the-rules-of-the-shop"));
        QCOMPARE(page->textCursor().block().text(), "The rules of the shop");
    }

    void followsTheStep()
    {
        QVERIFY(QDir(mFolder->path()).mkdir("board"));
        open("board/a.drl");
        mWindow->openBoard({mFolder->filePath("board")});
        const QString log = mWindow->findChild<QPlainTextEdit*>()->toPlainText();
        QVERIFY(log.contains("taken: ") && log.contains("assumed: types"));
        mWindow->openBoard({SAMPLES_DIR "/backplane.xml"});
        const auto actions = mWindow->findChildren<QAction*>();
        QVERIFY(std::any_of(actions.begin(), actions.end(), [](const QAction* action) {
            return action->isChecked() && action->text() == "&Inch (mils)";
        }));
        QVERIFY(child<QMenu>("exportMenu")->isEnabled());
        choose("Close Step");
        QVERIFY(!child<QMenu>("exportMenu")->isEnabled());
        mWindow->openBoard({SAMPLES_DIR "/sensor.xml"});
        choose("1 board");
        choose("Close Step");
        QCOMPARE(mWindow->findChild<StepTabs*>()->tabText(0), "sensor: panel");
        QVERIFY(exportAs("Table...", mFolder->filePath("t")).endsWith("/sensor-panel"));
    }
};

QTEST_MAIN(DialogsTest)
#include "tst_dialogs.moc"
