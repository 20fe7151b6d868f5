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

namespace {

QStringList sample(const char* name)
{
    return {QStringLiteral(SAMPLES_DIR "/%1.xml").arg(name)};
}

/** Presses a button of the message box that comes next. */
void answerNextBox(QMessageBox::StandardButton button)
{
    QTimer::singleShot(0, qApp, [button] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(box);
        QTest::mouseClick(box->button(button), Qt::LeftButton);
    });
}

} // namespace

class MainWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void opensStepsAsTabs();
    void switchesUnitsOfTheStepInFront();
    void tellsOfRenamedModels();
    void asksBeforeUnsavedModelsGo();
    void keepsTheBoardWhenAnotherIsBad();
    void showsTheLog();

private:
    QAction* action(const QString& menu, const QString& text) const;
    QString units() const
    {
        return mTabs->currentWidget()->findChild<QLabel*>("unitsLabel")->text();
    }
    QTableWidget* models() const
    {
        return mTabs->currentWidget()->findChild<QTableWidget*>("broxModelTableWidget");
    }

    std::unique_ptr<QTemporaryDir> mData;
    std::unique_ptr<HostSession> mSession;
    std::unique_ptr<MainWindow> mWindow;
    QTabWidget* mTabs = nullptr;
};

void MainWindowTest::init()
{
    mData = std::make_unique<QTemporaryDir>();
    QCOMPARE(createDefaultData(mData->path()), "");
    mSession = std::make_unique<HostSession>(mData->path());
    mWindow = std::make_unique<MainWindow>(*mSession);
    mWindow->show();
    mTabs = mWindow->findChild<QTabWidget*>();
    QVERIFY(mWindow->openBoard(sample("sensor")));
}

void MainWindowTest::cleanup()
{
    mWindow.reset();
    mSession.reset();
}

QAction* MainWindowTest::action(const QString& menu, const QString& text) const
{
    for (QAction* top : mWindow->menuBar()->actions()) {
        for (QAction* entry : top->menu()->actions()) {
            if (top->text() == menu && entry->text() == text) {
                return entry;
            }
        }
    }
    qFatal("no %s in %s", qPrintable(text), qPrintable(menu));
}

void MainWindowTest::opensStepsAsTabs()
{
    QCOMPARE(mTabs->count(), 1);
    QCOMPARE(mTabs->tabText(0), "panel");
    QVERIFY(mWindow->statusBar()->currentMessage().contains("1276 holes, 12 slots"));

    action("&Step", "&1 board")->trigger();
    action("&Step", "&2 panel")->trigger();
    action("&Step", "&1 board")->trigger();
    QCOMPARE(mTabs->count(), 2);
    QCOMPARE(mTabs->tabText(mTabs->currentIndex()), "board");
    QVERIFY(mWindow->statusBar()->currentMessage().contains("106 holes, 1 slots"));

    const QPointer<QWidget> viewer = mTabs->currentWidget();
    action("&File", "&Close Step")->trigger();
    QVERIFY(!viewer);
    QCOMPARE(mTabs->count(), 1);
    action("&Step", "&1 board")->trigger();
    QCOMPARE(mTabs->count(), 2);
    QCOMPARE(models()->rowCount(), 5);

    QVERIFY(mWindow->openBoard(sample("controller")));
    QCOMPARE(mTabs->count(), 1);
    QCOMPARE(mTabs->tabText(0), "board");
}

void MainWindowTest::switchesUnitsOfTheStepInFront()
{
    action("&Step", "&1 board")->trigger();
    QCOMPARE(units(), "Microns");
    action("&Units", "&Inch (mils)")->trigger();
    QCOMPARE(units(), "Mils");
    mTabs->setCurrentIndex(0);
    QCOMPARE(units(), "Microns");
    QVERIFY(action("&Units", "&Metric (microns)")->isChecked());
    mTabs->setCurrentIndex(1);
    QVERIFY(action("&Units", "&Inch (mils)")->isChecked());
    action("&Units", "&Metric (microns)")->trigger();
    QCOMPARE(units(), "Microns");
}

void MainWindowTest::tellsOfRenamedModels()
{
    models()->item(0, 0)->setText("Gold");
    QCOMPARE(mWindow->statusBar()->currentMessage(), "Step panel: model \"ENIG\" is now \"Gold\"");
}

void MainWindowTest::asksBeforeUnsavedModelsGo()
{
    models()->item(0, 0)->setText("Gold");
    answerNextBox(QMessageBox::Cancel);
    action("&File", "&Close Step")->trigger();
    QCOMPARE(mTabs->count(), 1);
    answerNextBox(QMessageBox::Cancel);
    QVERIFY(!mWindow->close());
    answerNextBox(QMessageBox::Cancel);
    QVERIFY(!mWindow->openBoard(sample("controller")));
    QCOMPARE(mTabs->tabText(0), "panel");

    answerNextBox(QMessageBox::Save);
    QVERIFY(mWindow->close());
    QCOMPARE(mTabs->count(), 0);
    QCOMPARE(mSession->models(0).first(), "Gold");
}

void MainWindowTest::keepsTheBoardWhenAnotherIsBad()
{
    QWidget* viewer = mTabs->currentWidget();
    QVERIFY_EXCEPTION_THROWN(
        mWindow->openBoard({QStringLiteral(SAMPLES_DIR "/make_boards.py")}), BoardError);
    QCOMPARE(mTabs->currentWidget(), viewer);
    QCOMPARE(mSession->board().steps.size(), size_t(2));
}

void MainWindowTest::showsTheLog()
{
    QFile models(mData->filePath("brox/brox.xml"));
    QVERIFY(models.open(QIODevice::WriteOnly));
    models.close();
    action("&Step", "&1 board")->trigger();
    QVERIFY(mWindow->findChild<QPlainTextEdit*>()->toPlainText().contains("ERROR"));
}

QTEST_MAIN(MainWindowTest)
#include "tst_main_window.moc"
