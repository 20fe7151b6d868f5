// SPDX-License-Identifier: MIT
#include "file_menus.h"
#include "findings_dock.h"
#include "help.h"
#include "host_session.h"
#include "live_plan.h"
#include "main_window.h"
#include "map_dock.h"
#include "messages.h"
#include "open_board.h"
#include "open_job.h"
#include "start_page.h"
#include "step_tabs.h"
#include "viewer_tables.h"

#include <QActionGroup>
#include <QBoxLayout>
#include <QCoreApplication>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QStackedWidget>
#include <QStatusBar>

namespace brox {

namespace {

/** A name as the text of an action or tab: no letter of it is a key. */
QString plain(QString name)
{
    return name.replace('&', "&&");
}

/** The same with its number as key, as far as there are digits. */
QString numbered(size_t index, const QString& name)
{
    return index < 9 ? QStringLiteral("&%1 %2").arg(index + 1).arg(plain(name)) : plain(name);
}

} // namespace

void MainWindow::createStatusBar()
{
    mContent->setObjectName("contentLabel");
    mToCheck->setObjectName("toCheckButton");
    mToCheck->setFlat(true);
    mToCheck->setToolTip(tr("Goes to the next row to check."));
    mToCheck->hide();
    statusBar()->addPermanentWidget(mToCheck);
    mFound->setObjectName("foundButton");
    mFound->setFlat(true);
    mFound->setToolTip(tr("Shows the findings."));
    mFound->hide();
    statusBar()->addPermanentWidget(mFound);
    connect(mFound, &QPushButton::clicked, this, &MainWindow::showFindings);
    statusBar()->addPermanentWidget(mContent);
    connect(mToCheck, &QPushButton::clicked, this, [this] {
        if (JobTable* table = mTabs->jobTable()) {
            table->goToNextToCheck();
        }
    });
}

/** Passes on what host and exports report. */
void MainWindow::followSession()
{
    connect(&mSession, &HostSession::logged, this, &MainWindow::report);
    connect(mExport, &ExportMenu::exported, this,
        [this](const QString& message) { statusBar()->showMessage(message, messageTime); });
    connect(mExport, &ExportMenu::failed, this, [this](const QString& message) {
        showFailure(message);
        if (JobTable* table = mTabs->jobTable(); table && mRulesBar->isHidden()) {
            table->goToNextToCheck(); // which is what mostly stands in the way
        }
    });
    connect(&mSession, &HostSession::modelRenamed, this,
        [this](const QString& step, const QString& oldName, const QString& newName) {
            statusBar()->showMessage(
                tr("Step %1: model \"%2\" is now \"%3\"").arg(step, oldName, newName), messageTime);
        });
    connect(&mSession, &HostSession::modelDeleted, this,
        [this](const QString& step, const QString& name) {
            statusBar()->showMessage(
                tr("Step %1: model \"%2\" is deleted").arg(step, name), messageTime);
        });
    connect(&mSession.guard(), &DataGuard::saved, this, [this](const QString& path) {
        statusBar()->showMessage(tr("%1 saved").arg(path), messageTime);
    });
}

void MainWindow::createPages()
{
    mHint->setAlignment(Qt::AlignCenter);
    mHint->setText(tr("Choose a step of the board from the Step menu."));
    mPages->addWidget(mHint);
    mPages->addWidget(mStart);
    connect(mStart, &StartPage::openBoardWanted, this, &MainWindow::chooseBoard);
    connect(mStart, &StartPage::openFolderWanted, this, &MainWindow::chooseFolder);
    connect(mStart, &StartPage::chosen, this, &MainWindow::open);
    mPages->addWidget(mTabs);
    connect(mTabs, &QTabWidget::tabCloseRequested, this,
        [this](int tab) { guard([&] { mTabs->closeTab(tab); }); });
    connect(mTabs, &StepTabs::stepChanged, this, &MainWindow::followStep);
    connect(mTabs, &StepTabs::typeChosen, this,
        [this](const QString& layer, const Tool& tool, std::optional<HoleType> type) {
            guard([&] { mOpen->change([&](Job& job) { job.chooseType(layer, tool, type); }); });
        });

    auto* centre = new QWidget;
    auto* layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    createBars(layout);
    layout->addWidget(mPages, 1);
    setCentralWidget(centre);
}

void MainWindow::createBars(QLayout* layout)
{
    mOlderBar->setText(tr("Models or bits have been saved by another step or program since this "
                          "step read them. What is calculated here is older than the files."));
    connect(mOlderBar->addButton(tr("Read Again...")), &QPushButton::clicked, this,
        [this] { guard([&] { rereadStep(); }); });
    connect(mRulesBar->addButton(tr("Restore...")), &QPushButton::clicked, this,
        [this] { guard([&] { restoreBackup(); }); });
    layout->addWidget(mErrorBar);
    layout->addWidget(mRulesBar);
    layout->addWidget(mOlderBar);
}

void MainWindow::createMenus()
{
    createFileMenu();
    mStepMenu = menuBar()->addMenu(tr("&Step"));
    createUnitsMenu();
    QMenu* view = menuBar()->addMenu(tr("&View"));
    view->addAction(mLog->toggleViewAction());
    mLog->toggleViewAction()->setText(tr("&Log"));
    view->addAction(mMap->toggleViewAction());
    mMap->toggleViewAction()->setText(tr("&Drill Map"));
    view->addAction(mFindings->toggleViewAction());
    mFindings->toggleViewAction()->setText(tr("&Findings"));
    connect(mFindings->toggleViewAction(), &QAction::triggered, this, [this](bool isShown) {
        if (isShown) {
            showFindings();
        }
    });
    view->addSeparator();
    QAction* recalculate =
        view->addAction(tr("&Recalculate"), this, [this] { mLive->recalculate(); });
    recalculate->setShortcut(Qt::Key_F5);
    createHelpMenu();
    listSteps();
}

void MainWindow::createFileMenu()
{
    QMenu* file = menuBar()->addMenu(tr("&File"));
    QAction* open = file->addAction(tr("&Open Board..."), this, &MainWindow::chooseBoard);
    open->setShortcut(QKeySequence::Open);
    QAction* folder = file->addAction(tr("Open &Folder..."), this, &MainWindow::chooseFolder);
    folder->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_O);
    mRecentMenu = file->addMenu(tr("Open &Recent"));
    connect(file, &QMenu::aboutToShow, this, &MainWindow::listRecentBoards);
    createCompareMenu(file);
    file->addSeparator();
    mSave = file->addAction(tr("&Save Models"), this, [this] { guard([&] { saveModels(); }); });
    mSave->setShortcut(QKeySequence::Save);
    mDuplicate = file->addAction(tr("&Duplicate Model"), this, [this] {
        guard([&] {
            if (const std::optional<size_t> step = mTabs->currentStep()) {
                mSession.duplicateModel(*step);
            }
        });
    });
    mDuplicate->setShortcut(Qt::CTRL | Qt::Key_D);
    file->addMenu(mExport);
    createBitsMenu(file);
    mRulesAction =
        file->addAction(tr("Shop R&ules..."), this, [this] { guard([&] { editRules(); }); });
    file->addAction(
        tr("Restore Bac&kup or Defaults..."), this, [this] { guard([&] { restoreBackup(); }); });
    mForget = file->addAction(tr("For&get Choices for This Board"), this,
        [this] { guard([&] { mOpen->forgetChoices(); }); });
    mForget->setStatusTip(
        tr("Takes back the types, drill sizes, models and units that were chosen."));
    mForget->setEnabled(false);
    mCloseStep = file->addAction(tr("&Close Step"), this,
        [this] { guard([&] { mTabs->closeTab(mTabs->currentIndex()); }); });
    // The standard keys for these two differ from desktop to desktop, and may be none.
    mCloseStep->setShortcuts({Qt::CTRL | Qt::Key_W, Qt::CTRL | Qt::Key_F4});
    file->addSeparator();
    QAction* quit = file->addAction(tr("&Quit"), this, &QWidget::close);
    quit->setShortcut(Qt::CTRL | Qt::Key_Q);
}

void MainWindow::createCompareMenu(QMenu* file)
{
    mCompareMenu = file->addMenu(tr("Co&mpare With"));
    mCompareMenu->addAction(tr("&Board..."), this,
        [this] { compareWith(chooseBoardFiles(this, tr("Compare With"), lastPaths())); });
    mCompareMenu->addAction(tr("&Folder..."), this,
        [this] { compareWith(chooseBoardFolder(this, tr("Compare With"), lastPaths())); });
    mCompareMenu->addSeparator();
    mEndComparison = mCompareMenu->addAction(
        tr("&End Comparison"), this, [this] { guard([&] { endComparison(); }); });
    mEndComparison->setEnabled(false);
}

void MainWindow::createBitsMenu(QMenu* file)
{
    auto* bits = new BitsMenu(
        mSession.dataDir(),
        [this](const auto& change) { return mTabs->remake(change, StepTabs::Unsaved::Ask); }, this);
    file->addMenu(bits);
    connect(bits, &BitsMenu::done, this,
        [this](const QString& message) { statusBar()->showMessage(message, messageTime); });
    connect(bits, &BitsMenu::failed, this, [](const QString& message) { showFailure(message); });
}

void MainWindow::listRecentBoards()
{
    mRecentMenu->clear();
    const QList<QStringList> boards = RecentBoards::all();
    for (qsizetype i = 0; i < boards.size(); ++i) {
        QAction* action = mRecentMenu->addAction(numbered(size_t(i), RecentBoards::name(boards[i])),
            this, [this, paths = boards[i]] { guard([&] { openBoard(paths); }); });
        action->setStatusTip(boards[i].join("  "));
        action->setEnabled(RecentBoards::exists(boards[i]));
    }
    mRecentMenu->setEnabled(!boards.isEmpty());
}

void MainWindow::createUnitsMenu()
{
    QMenu* units = menuBar()->addMenu(tr("&Units"));
    mUnits = new QActionGroup(this);
    mInch = mUnits->addAction(tr("&Inch (mils)"));
    mInch->setShortcut(Qt::CTRL | Qt::Key_I);
    mMetric = mUnits->addAction(tr("&Metric (microns)"));
    mMetric->setShortcut(Qt::CTRL | Qt::Key_M);
    for (QAction* action : mUnits->actions()) {
        action->setCheckable(true);
    }
    units->addActions(mUnits->actions());
    connect(mUnits, &QActionGroup::triggered, this, &MainWindow::setUnits);
}

void MainWindow::createHelpMenu()
{
    QMenu* help = menuBar()->addMenu(tr("&Help"));
    QAction* guide = help->addAction(tr("&User Guide"), this, [this] { showUserGuide(this); });
    guide->setShortcut(QKeySequence::HelpContents);
    help->addAction(tr("&Keyboard Shortcuts..."), this, [this] { showShortcuts(this); });
    help->addAction(tr("&About brox workbench"), this, [this] {
        QMessageBox box(this);
        box.setWindowTitle(tr("About brox workbench"));
        box.setIconPixmap(windowIcon().pixmap(64));
        box.setTextFormat(Qt::RichText);
        box.setText(
            tr("<h3>brox workbench %1</h3>"
               "<p>Sets up the drill tools of printed-circuit boards: finished hole sizes "
               "become drill sizes, by models of the plating and a table of bits.</p>"
               "<p>MIT licence. Models and bits are in<br>%2</p>")
                .arg(QCoreApplication::applicationVersion(), mSession.dataDir().toHtmlEscaped()));
        box.exec();
    });
}

void MainWindow::listSteps()
{
    mStepMenu->clear();
    const std::vector<Step>& steps = job().board->steps;
    for (size_t i = 0; i < steps.size(); ++i) {
        mStepMenu->addAction(
            numbered(i, steps[i].name), this, [this, i] { guard([&] { mTabs->openStep(i); }); });
    }
    mStepMenu->addSeparator();
    const auto turnTo = [this](int offset) {
        const int count = mTabs->count();
        if (count > 0) {
            mTabs->setCurrentIndex((mTabs->currentIndex() + count + offset) % count);
        }
    };
    QAction* next = mStepMenu->addAction(tr("&Next Tab"), this, [turnTo] { turnTo(1); });
    next->setShortcut(Qt::CTRL | Qt::Key_Tab);
    QAction* previous = mStepMenu->addAction(tr("&Previous Tab"), this, [turnTo] { turnTo(-1); });
    previous->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab);
    mStepMenu->setEnabled(!steps.empty());
}

} // namespace brox
