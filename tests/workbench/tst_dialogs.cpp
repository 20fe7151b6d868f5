// SPDX-License-Identifier: MIT
#include "board_window.h"
#include "boxes.h"
#include "start_page.h"
#include "step_tabs.h"

#include <QAccessible>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QStatusBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QToolButton>
#include <QToolTip>
#include <QTreeWidget>
#include <cmath>

using namespace brox;

/** What a user does to a board in dialogs, menus and the map. */
class DialogsTest : public BoardWindow
{
    Q_OBJECT

private:
    /** The cells of a tool from its type to its drill size. */
    QString tool(int row) const
    {
        QStringList cells;
        for (int column = 1; column < 7; ++column) {
            cells << tools()->item(row, column)->text();
        }
        return cells.join(' ');
    }

private slots:
    void init()
    {
        openWindow();
        QCOMPARE(tool(1), "Pth 1 800 100 100 900");
    }

    void cleanup() { closeWindow(); }

    void map()
    {
        ShopRules rules;
        rules.changeTolerances("plated=-0.05/+0.10");
        mWindow->loadRules([rules] { return rules; });
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
            "b, Plated; finished 800 +100 -50 micron; drill 914.4 micron; bit #64; "
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
        QVERIFY(!action("Forget Choices for This Board")->isEnabled());
        const QString name(64, 'n'); // as long as a host takes
        QVERIFY(tools()->item(1, 1)->font().italic() && tools()->item(1, 4)->font().italic());
        QVERIFY(tools()->item(1, 1)->toolTip().endsWith("\nThe board does not specify the type."));
        mSession->selectModel(0, "HASL");
        chooseType("Non-plated");
        QCOMPARE(tool(1), "NPth 1 800 50 50 850");
        QCOMPARE(tool(0), "Pth 2 300 100 100 400");
        QVERIFY(tools()->item(1, 1)->font().italic() && tools()->item(1, 4)->font().italic());
        QCOMPARE(tools()->item(1, 1)->toolTip(),
            "nonplated by the user; -0.05/+0.05 mm by the rule for nonplated");
        chooseType("Press-fit");
        QCOMPARE(tool(1), "PressFit 1 800 50 50 950");
        chooseType("As Specified by the Board", true);
        QCOMPARE(checked, "Press-fit");
        QCOMPARE(tool(1), "Pth 1 800 100 100 914.4");
        QVERIFY(tools()->item(1, 1)->font().italic());
        open(name + ".drl");
        QCOMPARE(tools()->item(1, 0)->text(), name);
        chooseType("Via");
        open(name + ".drl");
        QCOMPARE(tool(1), "Via 1 800 100 100 850"); // kept with the board
        mWindow->openJob().change([&](Job& job) { job.drillSizes[name] = true; });
        QCOMPARE(tools()->rowCount(), 0); // what is drilled as it is, no host gets
        QCoreApplication::processEvents();
        open(name + ".drl");
        QCOMPARE(tools()->rowCount(), 0);
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
            dialog->findChild<QDoubleSpinBox*>("aspectRatioBox")->setValue(8.5);
            dialog->findChild<QDoubleSpinBox*>("holeToEdgeBox")->setValue(0);
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
            "plated: -0.1/+0.3 mm where the board specifies no tolerance\nnonplated: -0.05/"));
        QCOMPARE(mWindow->job().rules.viasUpTo, Size(0.3 * sizePerMillimetre));
        CheckLimits limits = ShopRules::starter().checks;
        limits.aspectRatio = 8.5;
        limits.holeToEdge.reset();
        QVERIFY(mWindow->job().rules.checks == limits);
        const QByteArray whole = content("brox/shop_rules.json");
        write("brox/shop_rules.json", whole.chopped(2));
        auto* bar = child<QWidget>("rulesBar");
        QTRY_VERIFY(bar->isVisible());
        QVERIFY(!action("Shop Rules...")->isEnabled());
        const Boxes boxes({"OK", "OK"});
        choose("Table...");
        QVERIFY(boxes.seen.value(0).contains("; nothing is exported until"));
        write("brox/shop_rules.json", whole);
        QTRY_VERIFY(!bar->isVisible());
        exportAs("Table...", path("mended"));
        QVERIFY(!content("mended.csv").isEmpty());
        child<QToolButton>("deleteToolButton")->click();
        QCOMPARE(mWindow->statusBar()->currentMessage(), "Step pcb: model \"Gold\" is deleted");
    }

    void exports()
    {
        ShopRules rules;
        rules.changeTolerances("plated=-0.001/+0.031");
        mWindow->loadRules([rules] { return rules; });
        open("b.drl");
        const QString path = mFolder->filePath("out/x");
        QVERIFY(QDir(mFolder->path()).mkdir("out"));
        exportAs("Table...", path);
        QVERIFY(content("out/x.csv").startsWith("Layer,Type,Count,FHS [micron],"));
        QCOMPARE(mWindow->statusBar()->currentMessage(),
            "Written with model ENIG: " + path + ".csv (1 row(s) to check)");
        QCOMPARE(exportAs("Table...", path + ".json"), mFolder->filePath("out/b-pcb"));
        QVERIFY(content("out/x.json").contains("\"bit\": \"#64\""));
        exportAs("Table...", path + ".txt");
        QVERIFY(content("out/x.txt").contains("b      Plated      1 "));
        exportAs("Map...", path);
        QVERIFY(content("out/x.svg").contains("Drill map, layer b"));
        exportAs("Map...", path, 2);
        QVERIFY(content("out/x.png").startsWith("\x89PNG"));
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
            "Written with model ENIG: " + mFolder->filePath("out/b-pcb-b-plated.drl")
                + " (models and bits: unsaved edits)");
        for (const char* name : {"out/stale.drl", "out/b-pcb-b-nonplated.drl"}) {
            QVERIFY(
                QFile::copy(mFolder->filePath("out/b-pcb-b-plated.drl"), mFolder->filePath(name)));
        }
        QFile(mFolder->filePath("out/stale.drl")).resize(10); // another's
        boxes.add({"Cancel", "Overwrite", "Keep", "Overwrite", "Remove"});
        for (const int left : {3, 3, 2}) {
            exportAs("Drill Programs...", mFolder->filePath("out"));
            QCOMPARE(QDir(mFolder->filePath("out")).entryList({"*.drl"}).size(), left);
        }
        QVERIFY2(boxes.areAnswered(), qPrintable(boxes.seen.join(' ')));
    }

    void compares()
    {
        write("b.drl", QByteArray(program).replace("X10.0Y20.0", "X11.0Y20.0\nX12.0Y20.0"));
        auto* found = child<QPushButton>("foundButton");
        auto* tree = child<QTreeWidget>("findingsTreeWidget");
        mWindow->compareWith({path("b.drl")});
        QTRY_COMPARE(found->text(), "no findings; b: differences: 2 (added, removed)");
        QVERIFY(tree->isVisible() && child<QWidget>("mapWidget")->isVisible());
        const QTreeWidgetItem* added = tree->topLevelItem(0);
        QCOMPARE(added->text(0) + added->text(3) + added->text(4),
            "added (2)11000, 20000800 micron, plated");
        exportAs("Report...", path("r"));
        QVERIFY(content("r.html").contains("Compared with b"));
        choose("End Comparison");
        QTRY_COMPARE(found->text(), "no findings");
        mWindow->compareWith({path("a.drl")});
        QTRY_VERIFY(found->text().contains("no difference: 3 holes"));
        Boxes boxes({"OK"});
        mWindow->compareWith({path("none.drl")});
        QVERIFY(boxes.areAnswered() && action("End Comparison")->isEnabled());
        open("a.drl");
        QTRY_COMPARE(found->text(), "no findings");
        QVERIFY(!action("End Comparison")->isEnabled());
    }

    /** The box has what the board's sides are in each of the units. */
    void asksForUnits()
    {
        write("u.drl", "M48\nT1C0.05\n%\nT1\nX1.0Y1.0\nX5.0Y3.0\nM30\n");
        for (const char* units :
            {"Inch (4.00 \u00d7 2.00 inch)", "Millimetre (4.0 \u00d7 2.0 mm)"}) {
            Boxes boxes({units});
            QVERIFY(mWindow->openBoard({path("u.drl")}));
            QVERIFY2(boxes.areAnswered(), units);
            QCOMPARE(tools()->item(0, 3)->text(), "50");
        }
        Boxes boxes({"Cancel"});
        QVERIFY(!mWindow->openBoard({path("u.drl")}));
    }

    /** A name of a file, a step, a layer or a model is no markup, wherever it is shown. */
    void namesAreText()
    {
        const auto markup = [] {
            QStringList found;
            for (const QWidget* widget : QApplication::allWidgets()) {
                const auto* label = qobject_cast<const QLabel*>(widget);
                if (label && label->text().contains("<img")
                    && label->textFormat() != Qt::PlainText) {
                    found << widget->objectName();
                }
            }
            return found;
        };
        QFile sample(SAMPLES_DIR "/faults.xml");
        QVERIFY(sample.open(QFile::ReadOnly));
        write("<img src=x>.xml",
            sample.readAll()
                .replace("\"faults\"", "\"&lt;img src=x>\"")
                .replace("\"board\"", "\"&lt;img src=y>\"")
                .replace("\"drill\"", "\"&lt;img src=z>\""));
        write("brox/brox.xml", content("brox/brox.xml").replace("\"ENIG\"", "\"&lt;img src=m>\""));
        QVERIFY(mWindow->openBoard({path("<img src=x>.xml")}));
        mWindow->compareWith({path("<img src=x>.xml")});
        child<QWidget>("mapDock")->show();
        QTRY_VERIFY(child<QPushButton>("foundButton")->text().contains("<img"));
        QVERIFY(child<QLabel>("contentLabel")->text().contains("<img src=y>"));
        QCOMPARE(markup().join(", "), "");
        auto* model = child<QLabel>("broxModelNameLabel");
        QHelpEvent help(QEvent::ToolTip, {}, {});
        QApplication::sendEvent(model, &help);
        QCOMPARE(model->toolTip(), "<img src=m>");
        QVERIFY(QToolTip::text().startsWith("<p>&lt;img"));
        inDialog<QMessageBox>([&](QMessageBox* box) {
            QVERIFY(box->text().contains("<img"));
            QCOMPARE(markup().join(", "), "");
            box->accept();
        });
        mWindow->compareWith({path("<img src=none>")});
        choose("Close Step");
        QCOMPARE(markup().join(", "), "");
    }

    /** Who can't see a control hears what it is for. */
    void controlsHaveNames()
    {
        const auto nameless = [](const QWidget* window) {
            QStringList found;
            for (QWidget* widget : window->findChildren<QWidget*>()) {
                const bool isControl = qobject_cast<QAbstractButton*>(widget)
                    || qobject_cast<QLineEdit*>(widget) || qobject_cast<QComboBox*>(widget)
                    || qobject_cast<QAbstractSpinBox*>(widget)
                    || qobject_cast<QAbstractItemView*>(widget)
                    || qobject_cast<QPlainTextEdit*>(widget) || widget->objectName() == "mapWidget";
                const bool isPart = qobject_cast<QAbstractSpinBox*>(widget->parentWidget())
                    || qobject_cast<QComboBox*>(widget->parentWidget());
                if (isControl && !isPart && !widget->isHidden()
                    && widget->focusPolicy() != Qt::NoFocus
                    && QAccessible::queryAccessibleInterface(widget)
                           ->text(QAccessible::Name)
                           .isEmpty()) {
                    found << widget->objectName();
                }
            }
            return found;
        };
        QCOMPARE(nameless(mWindow.get()).join(", "), "");
        for (const char* dialog :
            {"Shop Rules...", "Restore Backup or Defaults...", "Keyboard Shortcuts..."}) {
            inDialog<QDialog>([&](QDialog* shown) {
                QCOMPARE(nameless(shown).join(", "), "");
                shown->reject();
            });
            choose(dialog);
        }
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
        QCOMPARE(names().first(), "&1 i and 1 more file(s) gone");

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
        tabs.resize(200, 200); // which scrolls instead of cutting parts off
        tabs.show();
        QCOMPARE(mSession->viewer(1)->size(), QSize(675, 785 / 2));
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
