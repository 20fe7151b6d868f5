// SPDX-License-Identifier: MIT
#include "default_data.h"
#include "host_session.h"
#include "main_window.h"

#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QtTest>

/** The window with a panel of boards open. */
class MainWindowTest : public QObject
{
    Q_OBJECT

private:
    bool open(const char* file) { return mWindow->openBoard({QString(SAMPLES_DIR "/") + file}); }

    void choose(const char* entry)
    {
        for (QMenu* menu : mWindow->menuBar()->findChildren<QMenu*>()) {
            for (QAction* action : menu->actions()) {
                if (action->text() == entry) {
                    return action->trigger();
                }
            }
        }
        qFatal("no %s", entry);
    }

    /** Presses a button of the message box that comes next. */
    static void answerNextBox(QMessageBox::StandardButton button)
    {
        QTimer::singleShot(0, qApp, [button] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QVERIFY(box);
            box->button(button)->click();
        });
    }

    QString units() const
    {
        return mTabs->currentWidget()->findChild<QLabel*>("unitsLabel")->text();
    }
    QTableWidgetItem* model() const
    {
        return mTabs->currentWidget()->findChild<QTableWidget*>("broxModelTableWidget")->item(0, 0);
    }
    QString tab() const { return mTabs->tabText(mTabs->currentIndex()); }
    QString status() const { return mWindow->statusBar()->currentMessage(); }
    QString content() const { return mWindow->findChild<QLabel*>("contentLabel")->text(); }

    std::unique_ptr<QTemporaryDir> mData;
    std::unique_ptr<HostSession> mSession;
    std::unique_ptr<MainWindow> mWindow;
    QTabWidget* mTabs = nullptr;

private slots:
    void init()
    {
        mData = std::make_unique<QTemporaryDir>();
        QCOMPARE(createDefaultData(mData->path()), "");
        mSession = std::make_unique<HostSession>(mData->path());
        mWindow = std::make_unique<MainWindow>(*mSession);
        mTabs = mWindow->findChild<QTabWidget*>();
        mWindow->show();
        QVERIFY(open("sensor.xml"));
    }

    void cleanup()
    {
        mWindow.reset();
        mSession.reset();
    }

    void opensStepsAsTabs()
    {
        QCOMPARE(tab(), "sensor: panel");
        QVERIFY(content().contains("1276 holes, 12 slots"));
        for (const char* step : {"&1 board", "&2 panel", "&1 board"}) {
            choose(step);
        }
        QCOMPARE(mTabs->count(), 2);
        QCOMPARE(tab(), "sensor: board");
        QVERIFY(content().contains("106 holes, 1 slots"));

        choose("&Close Step");
        QCOMPARE(mTabs->count(), 1);
        QVERIFY(open("controller.xml"));
        QCOMPARE(mTabs->count(), 1);
        QVERIFY_EXCEPTION_THROWN(open("make_boards.py"), BoardError);
        QCOMPARE(tab(), "controller: board");
    }

    void switchesUnitsOfTheStepInFront()
    {
        choose("&1 board");
        choose("&Inch (mils)");
        QCOMPARE(units(), "Mils");
        mTabs->setCurrentIndex(0);
        QCOMPARE(units(), "Microns");
    }

    void asksBeforeUnsavedModelsGo()
    {
        model()->setText("Gold");
        QCOMPARE(status(), "Step panel: model \"ENIG\" is now \"Gold\"");
        answerNextBox(QMessageBox::Cancel);
        choose("&Close Step");
        answerNextBox(QMessageBox::Cancel);
        QVERIFY(!mWindow->close());
        answerNextBox(QMessageBox::Cancel);
        QVERIFY(!open("controller.xml"));
        QCOMPARE(tab(), "sensor: panel *");

        answerNextBox(QMessageBox::Save);
        QVERIFY(mWindow->close());
        QCOMPARE(mTabs->count(), 0);
        QCOMPARE(mSession->models(0).first(), "Gold");
    }

    void showsTheLog()
    {
        QVERIFY(QFile::resize(mData->filePath("brox/brox.xml"), 0));
        choose("&1 board");
        QVERIFY(mWindow->findChild<QPlainTextEdit*>()->toPlainText().contains("ERROR"));
    }
};

QTEST_MAIN(MainWindowTest)
#include "tst_main_window.moc"
