// SPDX-License-Identifier: MIT
#include "board_window.h"
#include "boxes.h"

#include <QDockWidget>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTreeWidget>

using namespace brox;

/** The window of a user. */
class MainWindowTest : public BoardWindow
{
    Q_OBJECT

private:
    /** Where the next key goes. */
    static QWidget* target()
    {
        for (QWidget* widget : {QApplication::activePopupWidget(), QApplication::focusWidget()}) {
            if (widget) {
                return widget;
            }
        }
        return QApplication::activeWindow();
    }

    /** What a window manager does. */
    void activate()
    {
        mWindow->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(mWindow.get()));
    }

    static void press(const char* keys)
    {
        for (int i = 0; i < QKeySequence(keys).count(); ++i) {
            const QKeyCombination key = QKeySequence(keys)[uint(i)];
            QTest::keyClick(target(), key.key(), key.keyboardModifiers());
            QCoreApplication::processEvents(); // an editor commits later
        }
    }

    static void type(const QString& text) { QTest::keyClicks(target(), text); }

    /** Presses Tab until a widget has the focus. */
    static void tabTo(const char* name)
    {
        for (int i = 0; i < 50 && target()->objectName() != name; ++i) {
            press("Tab");
        }
        QCOMPARE(target()->objectName(), name);
    }

    QString units() const
    {
        return mTabs->currentWidget()->findChild<QLabel*>("unitsLabel")->text();
    }
    QString tab() const { return mTabs->tabText(mTabs->currentIndex()); }
    QString status() const { return mWindow->statusBar()->currentMessage(); }

    QTabWidget* mTabs = nullptr;

private slots:
    void init()
    {
        openWindow();
        mTabs = mWindow->findChild<QTabWidget*>();
        activate();
    }

    void cleanup() { closeWindow(); }

    void aDayByKeyboard()
    {
        inDialog<QFileDialog>([](QFileDialog* dialog) {
            dialog->selectFile(SAMPLES_DIR "/sensor.xml");
            auto* name = dialog->findChild<QLineEdit*>("fileNameEdit");
            name->setText(SAMPLES_DIR "/sensor.xml"); // typing brings up a list of files
            QTest::keyClick(name, Qt::Key_Return);
        });
        press("Ctrl+O");
        activate();
        QCOMPARE(tab(), "sensor: panel");
        QCOMPARE(target()->objectName(), "jobDrillDataTableWidget");
        QVERIFY(
            child<QLabel>("contentLabel")->text().remove(',').contains("1276 hole(s) 12 slot(s)"));
        press("Alt+S, 1");
        QCOMPARE(tab(), "sensor: board");
        press("Ctrl+I");
        QCOMPARE(units(), "Mils");
        press("Ctrl+M");
        QCOMPARE(units(), "Microns");
        press("Ctrl+Tab");
        QCOMPARE(tab(), "sensor: panel");
        QCOMPARE(units(), "Microns");

        tabTo("broxModelTableWidget");
        press("F2");
        type("Gold");
        press("Return");
        QCOMPARE(status(), "Step panel: model \"ENIG\" is now \"Gold\"");
        QCOMPARE(tab(), "sensor: panel *");
        QVERIFY(mWindow->isWindowModified());
        tabTo("saveToolButton");
        press("Space");
        QVERIFY(status().endsWith("brox.xml saved"));
        QVERIFY(content("brox/brox.xml").contains("Gold"));
        QCOMPARE(tab(), "sensor: panel");

        tabTo("openBitFileToolButton");
        press("Space");
        QCOMPARE(QApplication::activeWindow()->objectName(), "BitsFileEditor");
        QApplication::activeWindow()->findChild<QTableWidget*>()->setFocus();
        press("Ctrl+N");
        QCOMPARE(tab(), "sensor: panel *");
        press("Ctrl+S");
        QVERIFY(status().endsWith("brox_drill_bits.xml saved"));
        QVERIFY(content("brox/brox_drill_bits.xml").contains("designation=\"\""));
        press("Ctrl+N");

        // A discard closes the bits, but they stay. Then the user keeps them; then the models of
        // the other step; then all may go.
        Boxes boxes({"Discard", "Cancel", "Discard", "Cancel", "Discard", "Discard"});
        press("Ctrl+F4");
        for (const char* keys : {"Ctrl+W", "Ctrl+Q", "Ctrl+Q"}) {
            QVERIFY(mWindow->isVisible() && mTabs->count() == 2);
            activate();
            press(keys);
        }
        QVERIFY2(boxes.areAnswered(), qPrintable(boxes.seen.join('\n')));
        QVERIFY(!mWindow->isVisible());
    }

    /** Findings stand in the dock and the status bar, a click leads to the map, and a layer that is
     *  drilled as it is has no row in the viewer. */
    void listsFindings()
    {
        mWindow->openBoard({SAMPLES_DIR "/faults.xml"});
        const auto* found = child<QPushButton>("foundButton");
        QTRY_COMPARE(found->text(), "10 finding(s) (3 hard)");
        auto* dock = child<QDockWidget>("findingsDock");
        auto* map = child<QDockWidget>("mapDock");
        auto* tree = child<QTreeWidget>("findingsTreeWidget");
        dock->show();
        QCOMPARE(tree->topLevelItemCount(), 10);
        QVERIFY(!map->isVisible());
        tree->setCurrentItem(tree->topLevelItem(1));
        QVERIFY(map->isVisible());

        QCOMPARE(tools()->rowCount(), 8);
        mWindow->openJob().change([](Job& job) { job.drillSizes["drill"] = true; });
        QCOMPARE(tools()->rowCount(), 1);
        QTRY_VERIFY(found->text() != "10 finding(s) (3 hard)");
    }

    void opensWhatIsDropped()
    {
        const auto drop = [](QWidget* on, const char* file) {
            QMimeData data;
            data.setUrls({QUrl::fromLocalFile(QString(SAMPLES_DIR "/") + file)});
            const Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction;
            QDragEnterEvent enter({}, actions, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(on, &enter);
            QVERIFY(enter.isAccepted());
            QDropEvent event({}, actions, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(on, &event);
            QVERIFY(event.dropAction() == Qt::CopyAction && event.isAccepted());
            QCoreApplication::processEvents();
        };
        drop(mWindow.get(), "sensor.xml");
        drop(child<QLineEdit>("dhsLineEdit"), "controller.xml");
        QCOMPARE(mTabs->count(), 1);
        Boxes boxes({"OK"});
        drop(mWindow.get(), "make_boards.py");
        QVERIFY(boxes.areAnswered());
        QCOMPARE(tab(), "controller: board");
    }

    void showsErrors()
    {
        QVERIFY(QFile::resize(path("brox/brox.xml"), 0));
        QVERIFY(!child<QWidget>("logDock")->isVisible());
        mWindow->openBoard({SAMPLES_DIR "/sensor.xml"});
        QVERIFY(child<QWidget>("logDock")->isVisible());
        QVERIFY(child<QLabel>("errorLabel")->text().contains("brox.xml"));
        QTest::mouseClick(child<QLabel>("errorLabel"), Qt::LeftButton);
        QVERIFY(!child<QWidget>("errorBar")->isVisible());
    }
};

QTEST_MAIN(MainWindowTest)
#include "tst_main_window.moc"
