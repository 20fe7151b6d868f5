// SPDX-License-Identifier: MIT
#include "main_window.h"

#include "data_start.h"
#include "file_menus.h"
#include "findings_dock.h"
#include "host_session.h"
#include "input_filter.h"
#include "live_plan.h"
#include "map_dock.h"
#include "messages.h"
#include "open_board.h"
#include "open_job.h"
#include "rules_dialog.h"
#include "start_page.h"
#include "step_tabs.h"
#include "viewer_tables.h"

#include <QActionGroup>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolButton>

namespace brox {

namespace {

constexpr QSize likedSize(1000, 1000);
constexpr double shareOfScreen = 0.9; // the rest is for frames, which no screen reports

const char geometryKey[] = "geometry";
const char stateKey[] = "state";

QString contentText(const DrillDraft& draft)
{
    qint64 holes = 0;
    qint64 slotPaths = 0;
    for (const DraftRow& row : draft.rows) {
        (row.isSlot ? slotPaths : holes) += row.count;
    }
    QStringList parts = {MainWindow::tr("Step %1: %2 tools, %3 holes, %4 slots")
                             .arg(draft.boardStep().name)
                             .arg(draft.rows.size())
                             .arg(holes)
                             .arg(slotPaths)};
    parts << assumedText(draft) << leftOut(draft);
    parts.removeAll(QString());
    return parts.join("; ");
}

} // namespace

MainWindow::MainWindow(HostSession& session)
    : mSession(session)
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
    , mFound(new QLabel)
    , mToCheck(new QPushButton)
    , mWatch(session.dataDir())
{
    createPages();
    addDockWidget(Qt::BottomDockWidgetArea, mLog);
    addDockWidget(Qt::RightDockWidgetArea, mMap);
    mMap->hide();
    addDockWidget(Qt::BottomDockWidgetArea, mFindings);
    mFindings->hide();
    connect(mFindings, &FindingsDock::chosen, mMap, &MapDock::showPlace);
    connect(mFindings, &FindingsDock::found, this,
        [this](const QString& numbers, const std::vector<Place>& places) {
            mFound->setText(numbers);
            mMap->ring(places);
        });
    connect(mMap, &MapDock::sizesChosen, this, [this](const QString& layer, bool areDrillSizes) {
        guard([&] { mOpen->change([&](Job& job) { job.drillSizes[layer] = areDrillSizes; }); });
    });
    connect(mMap->toggleViewAction(), &QAction::triggered, this, &MainWindow::makeRoomForMap);
    createMenus();
    mContent->setObjectName("contentLabel");
    mToCheck->setObjectName("toCheckButton");
    mToCheck->setFlat(true);
    mToCheck->setToolTip(tr("Goes to the next row to check."));
    mToCheck->hide();
    statusBar()->addPermanentWidget(mToCheck);
    mFound->setObjectName("foundLabel");
    statusBar()->addPermanentWidget(mFound);
    statusBar()->addPermanentWidget(mContent);
    connect(mToCheck, &QPushButton::clicked, this, [this] {
        if (JobTable* table = mTabs->jobTable()) {
            table->goToNextToCheck();
        }
    });
    connect(mLive.get(), &LivePlan::changed, this, &MainWindow::followPlan);
    connect(&mWatch, &DataWatch::changed, this, [this] { guard([&] { followDataFolder(); }); });
    setAcceptDrops(true);
    connect(new InputFilter(this), &InputFilter::dropped, this, &MainWindow::open);

    connect(&session, &HostSession::logged, this, &MainWindow::tell);
    connect(mExport, &ExportMenu::exported, this,
        [this](const QString& message) { statusBar()->showMessage(message, messageTime); });
    connect(mExport, &ExportMenu::failed, this,
        [this](const QString& message) { guard([&] { throw HostError(message); }); });
    connect(&session, &HostSession::modelRenamed, this,
        [this](const QString& step, const QString& oldName, const QString& newName) {
            statusBar()->showMessage(
                tr("Step %1: model \"%2\" is now \"%3\"").arg(step, oldName, newName), messageTime);
        });
    connect(&session, &HostSession::modelDeleted, this,
        [this](const QString& step, const QString& name) {
            statusBar()->showMessage(
                tr("Step %1: model \"%2\" is deleted").arg(step, name), messageTime);
        });
    connect(&session.guard(), &DataGuard::saved, this, [this](const QString& path) {
        statusBar()->showMessage(tr("%1 saved").arg(path), messageTime);
    });
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
    mToCheck->setText(tr("%n row(s) to check", "", toCheck));
    if (JobTable* table = mTabs->jobTable(); table && plan) {
        table->follow(*plan);
    }
    const QString error = mOpen->keepChoices();
    if (!error.isEmpty()) {
        tell("ERROR", error);
    }
    mForget->setEnabled(mOpen->isChosen());
    mOlderBar->setVisible(plan && plan->model.isOlder);
}

/** The models or bits on disk may be others now: another step or another program has saved. */
void MainWindow::followDataFolder()
{
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

void MainWindow::createPages()
{
    mHint->setAlignment(Qt::AlignCenter);
    mHint->setText(tr("Choose a step of the board in the menu Step."));
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
    layout->addWidget(mErrorBar);
    layout->addWidget(createOlderBar());
    layout->addWidget(mPages, 1);
    setCentralWidget(centre);
}

/** Stays as long as the step in front has edits of what others have saved since. */
QWidget* MainWindow::createOlderBar()
{
    mOlderBar = new QFrame;
    mOlderBar->setObjectName("olderBar");
    mOlderBar->setFrameShape(QFrame::StyledPanel);
    auto* text =
        new QLabel(tr("Models or bits have been saved by another step or program since this "
                      "step read them. What is calculated here is older than the files."));
    text->setWordWrap(true);
    auto* button = new QPushButton(tr("Read Again..."));
    connect(button, &QPushButton::clicked, this, [this] { guard([&] { rereadStep(); }); });
    auto* layout = new QHBoxLayout(mOlderBar);
    layout->setContentsMargins(6, 3, 6, 3);
    layout->addWidget(text, 1);
    layout->addWidget(button);
    mOlderBar->hide();
    return mOlderBar;
}

void MainWindow::tell(const QString& level, const QString& text)
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
        QMessageBox::critical(this, tr("brox workbench"), QString::fromUtf8(error.what()));
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
    open(chooseBoardFiles(this, lastPaths()));
}

void MainWindow::chooseFolder()
{
    open(chooseBoardFolder(this, lastPaths()));
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
    tellNotes();
    return true;
}

/** What the reader has to say, and what was assumed, for the log. */
void MainWindow::tellNotes()
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

void MainWindow::loadRules(const std::function<ShopRules()>& load)
{
    QString fault;
    try {
        const ShopRules rules = load();
        mOpen->change([&](Job& job) { job.rules = rules; });
    } catch (const RulesError& error) {
        fault = tr("%1; nothing is exported until the rules of the shop can be read")
                    .arg(QString::fromUtf8(error.what()));
        tell("ERROR", fault);
    }
    mRulesAction->setEnabled(fault.isEmpty());
    mExport->refuse(fault);
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
        mOpen->change([&](Job& job) { job.rules = dialog.rules(); });
        followStep();
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
        loadRules([&] { return brox::loadRules(dataDir); });
        followStep();
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
            : tr("%1[*] - brox workbench").arg(RecentBoards::name(mBoardPaths)));
    setWindowModified(mTabs->hasUnsaved());
    mUnits->setEnabled(step.has_value());
    mSave->setEnabled(step.has_value());
    mDuplicate->setEnabled(step.has_value());
    mCloseStep->setEnabled(step.has_value());
    mExport->setEnabled(step.has_value());
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
