// SPDX-License-Identifier: MIT
#include "main_window.h"

#include "data_start.h"
#include "file_menus.h"
#include "findings_dock.h"
#include "host_session.h"
#include "live_plan.h"
#include "map_dock.h"
#include "messages.h"
#include "open_board.h"
#include "open_job.h"
#include "rules_dialog.h"
#include "start_page.h"
#include "step_tabs.h"
#include "viewer_tables.h"
#include "window_filter.h"

#include <QActionGroup>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QScreen>
#include <QSettings>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolButton>

namespace brox {

namespace {

constexpr QSize likedSize(1000, 1000);
constexpr int findingsHeight = 170; // leaves room for the viewer on a small screen
constexpr double shareOfScreen = 0.9; // the rest is for frames, which no screen reports

const char geometryKey[] = "geometry";
const char stateKey[] = "state";

/** The status bar's text on a step. */
QString contentText(const DrillDraft& draft)
{
    int holes = 0;
    int slotPaths = 0;
    for (const DraftRow& row : draft.rows) {
        (row.isSlot ? slotPaths : holes) += int(row.count);
    }
    QStringList parts{
        MainWindow::tr("Step %1: %2, %3, %4")
            .arg(draft.boardStep().name, MainWindow::tr("%Ln tool(s)", "", int(draft.rows.size())),
                MainWindow::tr("%Ln hole(s)", "", holes),
                MainWindow::tr("%Ln slot(s)", "", slotPaths))};
    parts << assumedText(draft) << leftOut(draft);
    parts.removeAll(QString());
    return parts.join("; ");
}

} // namespace

MainWindow::MainWindow(HostSession& session)
    : mFilter(new WindowFilter(this))
    , mSession(session)
    , mErrorBar(new ErrorBar)
    , mPages(new QStackedWidget)
    , mHint(new QLabel)
    , mStart(new StartPage)
    , mTabs(new StepTabs(session))
    , mLog(new LogDock(this))
    , mOpen(std::make_unique<OpenJob>(session, *mTabs))
    , mLive(std::make_unique<LivePlan>(session, *mTabs))
    , mMap(new MapDock(session, *mLive, this))
    , mFindings(new FindingsDock(*mLive, this))
    , mExport(new ExportMenu(*mLive, this))
    , mContent(new QLabel)
    , mFound(new QPushButton)
    , mToCheck(new QPushButton)
    , mOlderBar(new NoticeBar("olderBar", QStyle::SP_MessageBoxWarning))
    , mRulesBar(new NoticeBar("rulesBar", QStyle::SP_MessageBoxCritical))
    , mWatch(session.dataDir())
{
    connect(mFilter, &WindowFilter::dropped, this, &MainWindow::open);
    createPages();
    addDockWidget(Qt::BottomDockWidgetArea, mLog);
    addDockWidget(Qt::RightDockWidgetArea, mMap);
    mMap->hide();
    addDockWidget(Qt::BottomDockWidgetArea, mFindings);
    mFindings->hide();
    connect(mFindings, &FindingsDock::chosen, mMap, &MapDock::showPlace);
    connect(mFindings, &FindingsDock::found, this,
        [this](const QString& numbers, const std::vector<Place>& places) {
            mFound->setText(QString(numbers).replace('&', "&&"));
            mFound->setVisible(!numbers.isEmpty());
            mMap->ring(places);
        });
    connect(mMap, &MapDock::sizesChosen, this, [this](const QString& layer, bool areDrillSizes) {
        guard([&] { mOpen->change([&](Job& job) { job.drillSizes[layer] = areDrillSizes; }); });
    });
    connect(mMap->toggleViewAction(), &QAction::triggered, this, &MainWindow::makeRoomForMap);
    createMenus();
    createStatusBar();
    connect(mLive.get(), &LivePlan::changed, this, &MainWindow::followPlan);
    connect(&mWatch, &DataWatch::changed, this, [this] { guard([&] { followDataFolder(); }); });
    setAcceptDrops(true);

    followSession();
    followStep();
    resize(likedSize);
}

MainWindow::~MainWindow()
{
    mLive->disconnect();
    delete mFindings;
    delete mMap; // which looks at the steps when it is hidden
    delete mTabs; // a viewer that ends may still call this window
}

/** Table and status bar say what the plan does. */
void MainWindow::followPlan()
{
    const DrillPlan* plan = mLive->plan();
    const int toCheck = plan ? int(alarmingRows(*plan)) : 0;
    mToCheck->setVisible(toCheck > 0);
    mToCheck->setText(tr("%Ln row(s) to check", "", toCheck));
    if (JobTable* table = mTabs->jobTable(); table && plan) {
        table->follow(*plan);
    }
    const QString error = mOpen->keepChoices();
    if (!error.isEmpty()) {
        report("ERROR", error);
    }
    mForget->setEnabled(mOpen->isChosen());
    mOlderBar->setVisible(plan && plan->model.isOlder);
}

/** Rules, models or bits on disk may be others now: another step or another program has saved. */
void MainWindow::followDataFolder()
{
    if (mLoadRules && readRules()) {
        statusBar()->showMessage(
            tr("The rules of the shop were saved by others; read again"), messageTime);
    }
    const QStringList reread = mTabs->rereadFiles();
    if (!reread.isEmpty()) {
        statusBar()->showMessage(
            tr("Models or bits were saved by others; read again: %1").arg(reread.join(", ")),
            messageTime);
    }
    mLive->recalculate();
}

/** Gives up the edits of the step in front for what others have saved. */
void MainWindow::rereadStep()
{
    if (const std::optional<size_t> step = mTabs->currentStep(); step && mSession.canClose(*step)) {
        mTabs->reread(*step);
        mLive->recalculate();
    }
}

/** The map goes beside the viewer, as far as the screen has room. */
void MainWindow::makeRoomForMap(bool isShown)
{
    if (isShown && !isMaximized() && !isFullScreen() && !mMap->isFloating()) {
        const QRect room = screen()->availableGeometry();
        const int frame = frameGeometry().width() - width();
        const int wanted =
            qMax(width(), qMin(width() + mMap->sizeHint().width(), room.width() - frame));
        const int left = qMin(frameGeometry().left(), room.right() + 1 - frame - wanted);
        resize(wanted, height());
        move(qMax(left, room.left()), frameGeometry().top());
    }
}

void MainWindow::report(const QString& level, const QString& text)
{
    mLog->add(level, text);
    if (level == "ERROR") {
        mErrorBar->showError(text);
    }
}

void MainWindow::guard(const std::function<void()>& work)
{
    try {
        work();
    } catch (const std::exception& error) {
        showFailure(QString::fromUtf8(error.what()));
    }
}

void MainWindow::remember()
{
    mRemember = true;
    resize(likedSize.boundedTo(screen()->availableSize() * shareOfScreen));
    const QSettings settings;
    restoreGeometry(settings.value(geometryKey).toByteArray());
    restoreState(settings.value(stateKey).toByteArray());
    mLog->hide(); // until there is an entry
}

void MainWindow::reopenLastBoard()
{
    const QStringList paths = RecentBoards::latest();
    if (RecentBoards::exists(paths)) {
        guard([&] { openBoard(paths); });
    }
}

/** The board whose folder a dialog begins in. */
QStringList MainWindow::lastPaths() const
{
    return mBoardPaths.isEmpty() ? RecentBoards::latest() : mBoardPaths;
}

void MainWindow::chooseBoard()
{
    open(chooseBoardFiles(this, tr("Open Board"), lastPaths()));
}

void MainWindow::chooseFolder()
{
    open(chooseBoardFolder(this, tr("Open Folder"), lastPaths()));
}

void MainWindow::compareWith(const QStringList& paths)
{
    if (paths.isEmpty()) {
        return;
    }
    guard([&] {
        std::optional<Board> other = openBoardFiles(this, paths, mReadOptions);
        if (!other) {
            return;
        }
        for (const QString& note : other->notes) {
            mLog->add("NOTE", note);
        }
        const QScopeGuard arrow([] { QGuiApplication::restoreOverrideCursor(); });
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        mLive->compareWith(
            std::make_shared<const Board>(std::move(*other)), RecentBoards::name(paths));
        showFindings();
        mMap->show();
    });
    mEndComparison->setEnabled(mLive->isComparing());
}

void MainWindow::showFindings()
{
    mFindings->show();
    mFindings->raise();
    resizeDocks({mFindings}, {findingsHeight}, Qt::Vertical);
}

void MainWindow::endComparison()
{
    if (mLive->isComparing()) {
        mLive->compareWith(nullptr);
    }
    mEndComparison->setEnabled(false);
}

void MainWindow::open(const QStringList& paths)
{
    if (!paths.isEmpty()) {
        guard([&] { openBoard(paths); });
    }
}

bool MainWindow::openBoard(const QStringList& paths, const std::function<size_t()>& chooseStep)
{
    std::optional<Board> board = openBoardFiles(this, paths, mReadOptions);
    if (!board) {
        return false;
    }
    if (!mTabs->closeAll()) {
        return false;
    }
    endComparison();
    const QString choices = mOpen->open(std::move(*board), mRemember);
    if (!choices.isEmpty()) {
        mLog->add("NOTE", choices);
        statusBar()->showMessage(choices, messageTime);
    }
    mBoardPaths.clear();
    for (const QString& path : paths) {
        mBoardPaths << QFileInfo(path).absoluteFilePath();
    }
    mExport->setBoardFolder(QFileInfo(mBoardPaths.first()).absolutePath());
    if (mRemember) {
        RecentBoards::add(mBoardPaths);
    }
    listSteps();
    followStep();
    mTabs->openStep(chooseStep ? chooseStep() : job().board->mainStep);
    logNotes();
    return true;
}

/** What the reader has to say, and what was assumed, for the log. */
void MainWindow::logNotes()
{
    for (const QString& note : job().board->notes) {
        mLog->add("NOTE", note);
    }
    if (const std::optional<size_t> step = mTabs->currentStep()) {
        const QString assumed = assumedText(mSession.draft(*step));
        if (!assumed.isEmpty()) {
            mLog->add("NOTE", assumed);
        }
    }
}

void MainWindow::loadRules(std::function<ShopRules()> load)
{
    mLoadRules = std::move(load);
    readRules();
}

/** @return whether the rules are others than before */
bool MainWindow::readRules()
{
    QString fault;
    bool areOthers = false;
    try {
        const ShopRules rules = mLoadRules();
        areOthers = rules != job().rules;
        if (areOthers) {
            mOpen->change([&](Job& job) { job.rules = rules; });
            followStep();
        }
    } catch (const RulesError& error) {
        fault = tr("%1; nothing is exported until the rules of the shop can be read")
                    .arg(QString::fromUtf8(error.what()));
        mLog->add("ERROR", fault);
    }
    mRulesBar->setText(fault);
    mRulesBar->setVisible(!fault.isEmpty());
    mRulesAction->setEnabled(fault.isEmpty());
    mExport->refuse(fault);
    return areOthers;
}

void MainWindow::editRules()
{
    const std::optional<size_t> step = mTabs->currentStep();
    RulesDialog dialog(job().rules, step ? mSession.draft(*step).units : Units::Metric, this);
    if (dialog.exec() == QDialog::Accepted && dialog.rules() != job().rules) {
        const DataFile file(mSession.dataDir(), DataFile::Kind::Rules);
        const QString error = Backups(mSession.dataDir()).replace(file, dialog.rules().toJson());
        if (!error.isEmpty()) {
            throw HostError(tr("%1 could not be saved: %2").arg(file.path(), error));
        }
        loadRules([dataDir = mSession.dataDir()] { return brox::loadRules(dataDir); });
    }
}

/** Viewers hear of what is restored as of any other save. */
void MainWindow::restoreBackup()
{
    const QString dataDir = mSession.dataDir();
    RestoreDialog dialog(dataDir, this);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    if (dialog.kind() == DataFile::Kind::Rules) {
        loadRules([dataDir] { return brox::loadRules(dataDir); });
    }
    statusBar()->showMessage(
        tr("%1 is restored").arg(DataFile(dataDir, dialog.kind()).path()), messageTime);
}

/** By the viewer's own button, which also enters what is being typed. */
void MainWindow::saveModels()
{
    if (const std::optional<size_t> step = mTabs->currentStep()) {
        mSession.viewer(*step)->findChild<QToolButton*>("saveToolButton")->click();
    }
}

/** Menus, title and status bar show the step in front, or that there is none. */
void MainWindow::followStep()
{
    const std::optional<size_t> step = mTabs->currentStep();
    mPages->setCurrentWidget(step   ? static_cast<QWidget*>(mTabs)
            : mBoardPaths.isEmpty() ? static_cast<QWidget*>(mStart)
                                    : mHint);
    setWindowTitle(mBoardPaths.isEmpty()
            ? tr("brox workbench")
            : tr("%1[*] - brox workbench")
                  .arg(RecentBoards::name(mBoardPaths).replace("[*]", "[*][*]")));
    setWindowModified(mTabs->hasUnsaved());
    mUnits->setEnabled(step.has_value());
    mSave->setEnabled(step.has_value());
    mDuplicate->setEnabled(step.has_value());
    mCloseStep->setEnabled(step.has_value());
    mExport->setEnabled(step.has_value());
    mCompareMenu->setEnabled(step.has_value());
    mContent->setText(step ? contentText(mSession.draft(*step)) : QString());
    if (step) {
        (mSession.draft(*step).units == Units::Inch ? mInch : mMetric)->setChecked(true);
    }
}

void MainWindow::setUnits(QAction* action)
{
    if (const std::optional<size_t> step = mTabs->currentStep()) {
        mSession.setUnits(*step, action == mInch ? Units::Inch : Units::Metric);
    }
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    bool closed = false;
    guard([&] { closed = mTabs->closeAll(); });
    if (!closed) {
        event->ignore();
        return;
    }
    if (mRemember) {
        QSettings settings;
        settings.setValue(geometryKey, saveGeometry());
        settings.setValue(stateKey, saveState());
    }
    event->accept();
}

} // namespace brox
