// SPDX-License-Identifier: MIT
#include "main_window.h"

#include "data_start.h"
#include "file_menus.h"
#include "findings_dock.h"
#include "help.h"
#include "host_session.h"
#include "live_plan.h"
#include "map_dock.h"
#include "messages.h"
#include "open_board.h"
#include "open_job.h"
#include "rules_dialog.h"
#include "start_page.h"
#include "step_tabs.h"
#include "ui_main_window.h"
#include "viewer_tables.h"
#include "window_filter.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QGuiApplication>
#include <QScopeGuard>
#include <QScreen>
#include <QSettings>

namespace brox {

namespace {

constexpr int findingsHeight = 170; // leaves room for the viewer on a small screen
constexpr double shareOfScreen = 0.9; // the rest is for frames, which no screen reports
constexpr int messageTime = 10'000; // milliseconds that the status bar shows one

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

/** A name as the text of an action, with its number as key as far as there are digits; no letter
 *  of it is one. */
QString numbered(size_t index, QString name)
{
    name.replace('&', "&&");
    return index < 9 ? QStringLiteral("&%1 %2").arg(index + 1).arg(name) : name;
}

} // namespace

MainWindow::MainWindow(HostSession& session)
    : mFilter(new WindowFilter(this))
    , mUi(std::make_unique<Ui::MainWindow>())
    , mSession(session)
    , mErrorBar(new ErrorBar)
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
    mUi->setupUi(this);
    setUpCentre();
    setUpDocks();
    setUpMenus();
    setUpCommands();
    setUpStatusBar();
    followSession();
    connect(mFilter, &WindowFilter::dropped, this, &MainWindow::open);
    connect(mLive.get(), &LivePlan::changed, this, &MainWindow::followPlan);
    connect(&mWatch, &DataWatch::changed, this, [this] { attempt([&] { followDataFolder(); }); });
    followStep();
}

MainWindow::~MainWindow()
{
    mLive->disconnect();
    delete mFindings;
    delete mMap; // which looks at the steps when it is hidden
    delete mTabs; // a viewer that ends may still call this window
}

void MainWindow::setUpCentre()
{
    for (NoticeBar* bar : {mOlderBar, mRulesBar, static_cast<NoticeBar*>(mErrorBar)}) {
        mUi->centreLayout->insertWidget(0, bar);
    }
    mOlderBar->setText(tr("Models or bits have been saved by another step or program since this "
                          "step read them. What is calculated here is older than the files."));
    connect(mOlderBar->addButton(tr("Read Again...")), &QPushButton::clicked, this,
        [this] { attempt([&] { rereadStep(); }); });
    connect(mRulesBar->addButton(tr("Restore...")), &QPushButton::clicked, mUi->restoreAction,
        &QAction::trigger);

    mUi->pages->addWidget(mTabs);
    connect(mUi->boardLinks, &BoardLinks::chosen, this, &MainWindow::open);
    connect(mTabs, &QTabWidget::tabCloseRequested, this,
        [this](int tab) { attempt([&] { mTabs->closeTab(tab); }); });
    connect(mTabs, &StepTabs::stepChanged, this, &MainWindow::followStep);
    connect(mTabs, &StepTabs::typeChosen, this,
        [this](const QString& layer, const Tool& tool, std::optional<HoleType> type) {
            attempt([&] { mOpen->change([&](Job& job) { job.chooseType(layer, tool, type); }); });
        });
}

void MainWindow::setUpDocks()
{
    addDockWidget(Qt::BottomDockWidgetArea, mLog);
    addDockWidget(Qt::RightDockWidgetArea, mMap);
    addDockWidget(Qt::BottomDockWidgetArea, mFindings);
    mMap->hide();
    mFindings->hide();
    connect(mFindings, &FindingsDock::chosen, mMap, &MapDock::showPlace);
    connect(mFindings, &FindingsDock::found, this,
        [this](const QString& numbers, const std::vector<Place>& places) {
            mFound->setText(QString(numbers).replace('&', "&&"));
            mFound->setVisible(!numbers.isEmpty());
            mMap->ring(places);
        });
    connect(mMap, &MapDock::sizesChosen, this, [this](const QString& layer, bool areDrillSizes) {
        attempt([&] { mOpen->change([&](Job& job) { job.drillSizes[layer] = areDrillSizes; }); });
    });
    connect(mMap->toggleViewAction(), &QAction::triggered, this, &MainWindow::makeRoomForMap);
    connect(mFindings->toggleViewAction(), &QAction::triggered, this, [this](bool isShown) {
        if (isShown) {
            showFindings();
        }
    });
}

/** What the form can't say of the menus. */
void MainWindow::setUpMenus()
{
    auto* bits = new BitsMenu(
        mSession.dataDir(), [this](const auto& change) { return mTabs->changeFiles(change); },
        this);
    connect(bits, &BitsMenu::done, this, &MainWindow::say);
    mUi->fileMenu->insertMenu(mUi->rulesAction, mExport);
    mUi->fileMenu->insertMenu(mUi->rulesAction, bits);
    connect(mUi->fileMenu, &QMenu::aboutToShow, this, &MainWindow::listRecentBoards);
    // The standard keys for this differ from desktop to desktop, and may be none.
    mUi->closeStepAction->setShortcuts({Qt::CTRL | Qt::Key_W, Qt::CTRL | Qt::Key_F4});
    connect(mUi->unitsGroup, &QActionGroup::triggered, this, &MainWindow::setUnits);
    mLog->toggleViewAction()->setText(tr("&Log"));
    mMap->toggleViewAction()->setText(tr("&Drill Map"));
    mFindings->toggleViewAction()->setText(tr("&Findings"));
    mUi->viewMenu->insertActions(mUi->viewMenu->actions().constFirst(),
        {mLog->toggleViewAction(), mMap->toggleViewAction(), mFindings->toggleViewAction()});
    listSteps();
}

void MainWindow::setUpCommands()
{
    const std::pair<QAction*, std::function<void()>> commands[] = {
        {mUi->openBoardAction,
            [this] { open(chooseBoardFiles(this, tr("Open Board"), lastPaths())); }},
        {mUi->openFolderAction,
            [this] { open(chooseBoardFolder(this, tr("Open Folder"), lastPaths())); }},
        {mUi->compareBoardAction,
            [this] { compareWith(chooseBoardFiles(this, tr("Compare With"), lastPaths())); }},
        {mUi->compareFolderAction,
            [this] { compareWith(chooseBoardFolder(this, tr("Compare With"), lastPaths())); }},
        {mUi->endComparisonAction, [this] { endComparison(); }},
        {mUi->saveAction, [this] { saveModels(); }},
        {mUi->duplicateAction, [this] { duplicateModel(); }},
        {mUi->rulesAction, [this] { editRules(); }},
        {mUi->restoreAction, [this] { restoreBackup(); }},
        {mUi->forgetAction, [this] { mOpen->forgetChoices(); }},
        {mUi->closeStepAction, [this] { mTabs->closeTab(mTabs->currentIndex()); }},
        {mUi->nextTabAction, [this] { turnTabs(1); }},
        {mUi->previousTabAction, [this] { turnTabs(-1); }},
        {mUi->recalculateAction, [this] { mLive->recalculate(); }},
        {mUi->guideAction, [this] { showUserGuide(this); }},
        {mUi->shortcutsAction, [this] { showShortcuts(this); }},
        {mUi->aboutAction, [this] { showAbout(this, mSession.dataDir()); }}};
    for (const auto& [action, command] : commands) {
        connect(action, &QAction::triggered, this, [command = command] { attempt(command); });
    }
}

void MainWindow::setUpStatusBar()
{
    mContent->setObjectName("contentLabel");
    mToCheck->setObjectName("toCheckButton");
    mToCheck->setToolTip(tr("Goes to the next row to check."));
    mFound->setObjectName("foundButton");
    mFound->setToolTip(tr("Shows the findings."));
    for (QPushButton* button : {mToCheck, mFound}) {
        button->setFlat(true);
        button->hide();
        statusBar()->addPermanentWidget(button);
    }
    statusBar()->addPermanentWidget(mContent);
    connect(mToCheck, &QPushButton::clicked, this, &MainWindow::goToNextToCheck);
    connect(mFound, &QPushButton::clicked, this, &MainWindow::showFindings);
}

/** Passes on what host and exports report. */
void MainWindow::followSession()
{
    connect(&mSession, &HostSession::logged, this, &MainWindow::report);
    connect(mExport, &ExportMenu::exported, this, &MainWindow::say);
    connect(mExport, &ExportMenu::failed, this, [this](const QString& message) {
        showFailure(message);
        if (mRulesBar->isHidden()) {
            goToNextToCheck(); // which is what mostly stands in the way
        }
    });
    connect(&mSession, &HostSession::modelRenamed, this,
        [this](const QString& step, const QString& oldName, const QString& newName) {
            say(tr("Step %1: model \"%2\" is now \"%3\"").arg(step, oldName, newName));
        });
    connect(&mSession, &HostSession::modelDeleted, this,
        [this](const QString& step, const QString& name) {
            say(tr("Step %1: model \"%2\" is deleted").arg(step, name));
        });
    connect(&mSession.guard(), &DataGuard::saved, this,
        [this](const QString& path) { say(tr("%1 saved").arg(path)); });
}

void MainWindow::listRecentBoards()
{
    mUi->recentMenu->clear();
    const QList<QStringList> boards = RecentBoards::all();
    for (qsizetype i = 0; i < boards.size(); ++i) {
        QAction* action =
            mUi->recentMenu->addAction(numbered(size_t(i), RecentBoards::name(boards[i])), this,
                [this, paths = boards[i]] { open(paths); });
        action->setStatusTip(boards[i].join("  "));
        action->setEnabled(RecentBoards::exists(boards[i]));
    }
    mUi->recentMenu->setEnabled(!boards.isEmpty());
}

void MainWindow::listSteps()
{
    mUi->stepMenu->clear();
    const std::vector<Step>& steps = job().board->steps;
    for (size_t i = 0; i < steps.size(); ++i) {
        mUi->stepMenu->addAction(
            numbered(i, steps[i].name), this, [this, i] { attempt([&] { mTabs->openStep(i); }); });
    }
    mUi->stepMenu->addSeparator();
    mUi->stepMenu->addActions({mUi->nextTabAction, mUi->previousTabAction});
    mUi->stepMenu->setEnabled(!steps.empty());
}

void MainWindow::turnTabs(int by)
{
    if (const int count = mTabs->count(); count > 0) {
        mTabs->setCurrentIndex((mTabs->currentIndex() + count + by) % count);
    }
}

void MainWindow::say(const QString& message)
{
    statusBar()->showMessage(message, messageTime);
}

void MainWindow::goToNextToCheck()
{
    if (JobTable* table = mTabs->jobTable()) {
        table->goToNextToCheck();
    }
}

void MainWindow::duplicateModel()
{
    if (const std::optional<size_t> step = mTabs->currentStep()) {
        mSession.duplicateModel(*step);
    }
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
    mUi->forgetAction->setEnabled(mOpen->isChosen());
    mOlderBar->setVisible(plan && plan->model.isOlder);
}

/** Rules, models or bits on disk may be others now: another step or another program has saved. */
void MainWindow::followDataFolder()
{
    if (mLoadRules && readRules()) {
        say(tr("The rules of the shop were saved by others; read again"));
    }
    const QStringList reread = mTabs->rereadFiles();
    if (!reread.isEmpty()) {
        say(tr("Models or bits were saved by others; read again: %1").arg(reread.join(", ")));
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

void MainWindow::remember()
{
    mRemember = true;
    resize(size().boundedTo(screen()->availableSize() * shareOfScreen));
    const QSettings settings;
    restoreGeometry(settings.value(geometryKey).toByteArray());
    restoreState(settings.value(stateKey).toByteArray());
    mLog->hide(); // until there is an entry
}

void MainWindow::reopenLastBoard()
{
    const QStringList paths = RecentBoards::latest();
    if (RecentBoards::exists(paths)) {
        attempt([&] { openBoard(paths); });
    }
}

/** The board whose folder a dialog begins in. */
QStringList MainWindow::lastPaths() const
{
    return mBoardPaths.isEmpty() ? RecentBoards::latest() : mBoardPaths;
}

void MainWindow::compareWith(const QStringList& paths)
{
    if (paths.isEmpty()) {
        return;
    }
    attempt([&] {
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
        const bool isNew = mMap->isHidden();
        mMap->show();
        makeRoomForMap(isNew);
    });
    mUi->endComparisonAction->setEnabled(mLive->isComparing());
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
    mUi->endComparisonAction->setEnabled(false);
}

void MainWindow::open(const QStringList& paths)
{
    if (!paths.isEmpty()) {
        attempt([&] { openBoard(paths); });
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
        say(choices);
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

void MainWindow::loadSavedRules()
{
    loadRules([dataDir = mSession.dataDir()] { return brox::loadRules(dataDir); });
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
                    .arg(error.message());
        mLog->add("ERROR", fault);
    }
    mRulesBar->setText(fault);
    mRulesBar->setVisible(!fault.isEmpty());
    mUi->rulesAction->setEnabled(fault.isEmpty());
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
        loadSavedRules();
    }
}

/** Viewers hear of what is restored as of any other save. */
void MainWindow::restoreBackup()
{
    RestoreDialog dialog(mSession.dataDir(), this);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    if (dialog.kind() == DataFile::Kind::Rules) {
        loadSavedRules();
    }
    say(tr("%1 is restored").arg(DataFile(mSession.dataDir(), dialog.kind()).path()));
}

void MainWindow::saveModels()
{
    if (const std::optional<size_t> step = mTabs->currentStep()) {
        mSession.saveModels(*step);
    }
}

/** Menus, title and status bar show the step in front, or that there is none. */
void MainWindow::followStep()
{
    const std::optional<size_t> step = mTabs->currentStep();
    mUi->pages->setCurrentWidget(step ? static_cast<QWidget*>(mTabs)
            : mBoardPaths.isEmpty()   ? mUi->startPage
                                      : mUi->hintLabel);
    setWindowTitle(mBoardPaths.isEmpty()
            ? tr("brox workbench")
            : tr("%1[*] - brox workbench")
                  .arg(RecentBoards::name(mBoardPaths).replace("[*]", "[*][*]")));
    setWindowModified(mTabs->hasUnsaved());
    mUi->unitsGroup->setEnabled(step.has_value());
    mUi->saveAction->setEnabled(step.has_value());
    mUi->duplicateAction->setEnabled(step.has_value());
    mUi->closeStepAction->setEnabled(step.has_value());
    mExport->setEnabled(step.has_value());
    mUi->compareMenu->setEnabled(step.has_value());
    mContent->setText(step ? contentText(mSession.draft(*step)) : QString());
    if (step) {
        (mSession.draft(*step).units == Units::Inch ? mUi->inchAction : mUi->metricAction)
            ->setChecked(true);
    }
}

void MainWindow::setUnits(QAction* action)
{
    if (const std::optional<size_t> step = mTabs->currentStep()) {
        mSession.setUnits(*step, action == mUi->inchAction ? Units::Inch : Units::Metric);
    }
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    bool closed = false;
    attempt([&] { closed = mTabs->closeAll(); });
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
