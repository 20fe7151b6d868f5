// SPDX-License-Identifier: MIT
#include "main_window.h"

#include "board_reader.h"
#include "error_bar.h"
#include "export_menu.h"
#include "host_session.h"
#include "log_dock.h"
#include "map_dock.h"
#include "recent_boards.h"
#include "rules_dialog.h"
#include "step_tabs.h"

#include <QActionGroup>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QMimeData>
#include <QProgressDialog>
#include <QScreen>
#include <QSettings>
#include <QStackedWidget>
#include <QStatusBar>

namespace brox {

namespace {

constexpr int progressSteps = 1000;
constexpr int longReading = 500; ///< milliseconds after which the progress is shown
constexpr int readingTime = 10'000; ///< milliseconds that a message of the status bar stands

constexpr QSize likedSize(1000, 1000);
constexpr double shareOfScreen = 0.9; // the rest is for frames, which no screen tells of

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

QStringList localFiles(const QMimeData* data)
{
    QStringList paths;
    for (const QUrl& url : data->urls()) {
        if (url.isLocalFile()) {
            paths << url.toLocalFile();
        }
    }
    return paths;
}

} // namespace

MainWindow::MainWindow(HostSession& session)
    : mSession(session)
    , mErrorBar(new ErrorBar)
    , mPages(new QStackedWidget)
    , mHint(new QLabel)
    , mTabs(new StepTabs(session))
    , mLog(new LogDock(this))
    , mMap(new MapDock(session, *mTabs, this))
    , mExport(new ExportMenu(session, *mTabs, this))
    , mContent(new QLabel)
{
    createPages();
    addDockWidget(Qt::BottomDockWidgetArea, mLog);
    addDockWidget(Qt::RightDockWidgetArea, mMap);
    mMap->hide();
    connect(mMap->toggleViewAction(), &QAction::triggered, this, &MainWindow::makeRoomForMap);
    createMenus();
    mContent->setObjectName("contentLabel");
    statusBar()->addPermanentWidget(mContent);
    setAcceptDrops(true);

    connect(&session, &HostSession::logged, this, &MainWindow::tell);
    connect(mExport, &ExportMenu::exported, this,
        [this](const QString& message) { statusBar()->showMessage(message, readingTime); });
    connect(mExport, &ExportMenu::failed, this,
        [this](const QString& message) { guard([&] { throw HostError(message); }); });
    connect(&session, &HostSession::modelRenamed, this,
        [this](const QString& step, const QString& oldName, const QString& newName) {
            statusBar()->showMessage(
                tr("Step %1: model \"%2\" is now \"%3\"").arg(step, oldName, newName), readingTime);
        });
    connect(&session, &HostSession::modelDeleted, this,
        [this](const QString& step, const QString& name) {
            statusBar()->showMessage(
                tr("Step %1: model \"%2\" is deleted").arg(step, name), readingTime);
        });
    connect(&session.guard(), &DataGuard::saved, this, [this](const QString& path) {
        statusBar()->showMessage(tr("%1 saved").arg(path), readingTime);
    });
    followStep();
    resize(likedSize);
}

MainWindow::~MainWindow()
{
    delete mMap; // which looks at the steps when it is hidden
    delete mTabs; // a viewer that ends may have something to tell this window
}

/** The map goes beside the viewer, as far as the screen has room. */
void MainWindow::makeRoomForMap(bool isShown)
{
    if (isShown && !isMaximized() && !isFullScreen() && !mMap->isFloating()) {
        const int most = screen()->availableGeometry().right() + 1 - frameGeometry().left();
        resize(qMax(width(), qMin(width() + mMap->sizeHint().width(), most)), height());
    }
}

void MainWindow::createPages()
{
    mHint->setAlignment(Qt::AlignCenter);
    mPages->addWidget(mHint);
    mPages->addWidget(mTabs);
    connect(mTabs, &QTabWidget::tabCloseRequested, this,
        [this](int tab) { guard([&] { mTabs->closeTab(tab); }); });
    connect(mTabs, &StepTabs::stepChanged, this, &MainWindow::followStep);
    connect(mTabs, &StepTabs::typeChosen, this,
        [this](const QString& layer, const Tool& tool, std::optional<HoleType> type) {
            guard([&] {
                Job job = mJob;
                job.chooseType(layer, tool, type);
                mTabs->remake([&] { setJob(std::move(job)); });
            });
        });

    auto* centre = new QWidget;
    auto* layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(mErrorBar);
    layout->addWidget(mPages, 1);
    setCentralWidget(centre);
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

void MainWindow::chooseBoard()
{
    const QStringList last = mBoardPaths.isEmpty() ? RecentBoards::latest() : mBoardPaths;
    const QStringList paths =
        QFileDialog::getOpenFileNames(this, tr("Open Board"), QFileInfo(last.value(0)).path(),
            tr("Boards (*.xml *.cvg *.drl *.xln *.xnc *.drd *.exc *.ncd *.nc *.tap *.txt);;"
               "IPC-2581 (*.xml *.cvg);;All files (*)"));
    if (!paths.isEmpty()) {
        guard([&] { openBoard(paths); });
    }
}

bool MainWindow::openBoard(const QStringList& paths, const std::function<size_t()>& chooseStep)
{
    QProgressDialog dialog(
        tr("Reading %1").arg(RecentBoards::name(paths)), tr("Cancel"), 0, progressSteps, this);
    dialog.setWindowModality(Qt::WindowModal);
    dialog.setMinimumDuration(longReading);
    dialog.setValue(0);
    Board board;
    try {
        ReadOptions options = mReadOptions;
        options.progress = [&](qint64 done, qint64 total) {
            // The last step would close the dialog before the end.
            dialog.setValue(total > 0 ? int((progressSteps - 1) * done / total) : 0);
            return !dialog.wasCanceled();
        };
        board = readBoard(paths, options);
    } catch (const BoardCancelled&) {
        return false;
    }
    dialog.reset();
    if (!mTabs->closeAll()) {
        return false;
    }
    setJob(Job(std::move(board), mJob.rules));
    mBoardPaths.clear();
    for (const QString& path : paths) {
        mBoardPaths << QFileInfo(path).absoluteFilePath();
    }
    if (mRemember) {
        RecentBoards::add(mBoardPaths);
    }
    listSteps();
    followStep();
    mTabs->openStep(chooseStep ? chooseStep() : mJob.board->mainStep);
    tellNotes();
    return true;
}

/** Gives the job's steps to the host, whose viewers are closed. Of the same board they keep the
 *  units that the user has chosen. */
void MainWindow::setJob(Job job)
{
    std::vector<DrillDraft> drafts = job.drafts();
    for (size_t i = 0; job.board == mJob.board && i < drafts.size(); ++i) {
        drafts[i].units = mSession.draft(i).units;
    }
    mSession.setSteps(std::move(drafts));
    mJob = std::move(job);
}

void MainWindow::setRules(const ShopRules& rules)
{
    Job job = mJob;
    job.rules = rules;
    mTabs->remake([&] { setJob(std::move(job)); });
}

/** What the reader has to say, and what was assumed, for the log. */
void MainWindow::tellNotes()
{
    for (const QString& note : mJob.board->notes) {
        mLog->add("NOTE", note);
    }
    if (const std::optional<size_t> step = mTabs->currentStep()) {
        const QString assumed = assumedText(mSession.draft(*step));
        if (!assumed.isEmpty()) {
            mLog->add("NOTE", assumed);
        }
    }
}

void MainWindow::lockRules(bool locked)
{
    mRulesAction->setEnabled(!locked);
}

void MainWindow::editRules()
{
    RulesDialog dialog(mJob.rules, this);
    if (dialog.exec() == QDialog::Accepted && dialog.rules() != mJob.rules) {
        Job job = mJob;
        job.rules = dialog.rules();
        mTabs->remake([&] {
            job.rules.save(mSession.dataDir());
            setJob(std::move(job));
        });
        followStep();
    }
}

/** Menus, title and status bar tell of the step in front, or that there is none. */
void MainWindow::followStep()
{
    const std::optional<size_t> step = mTabs->currentStep();
    mPages->setCurrentWidget(step ? static_cast<QWidget*>(mTabs) : mHint);
    mHint->setText(mBoardPaths.isEmpty() ? tr("Open a board to set up its drill tools.")
                                         : tr("Choose a step of the board in the menu Step."));
    setWindowTitle(mBoardPaths.isEmpty()
            ? tr("brox workbench")
            : tr("%1[*] - brox workbench").arg(RecentBoards::name(mBoardPaths)));
    setWindowModified(mTabs->hasUnsaved());
    mUnits->setEnabled(step.has_value());
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

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!localFiles(event->mimeData()).isEmpty()) {
        event->acceptProposedAction();
    }
}

void MainWindow::dropEvent(QDropEvent* event)
{
    const QStringList paths = localFiles(event->mimeData());
    event->acceptProposedAction();
    // Boxes would keep the program waiting that the files are dragged from.
    QMetaObject::invokeMethod(
        this, [this, paths] { guard([&] { openBoard(paths); }); }, Qt::QueuedConnection);
}

} // namespace brox
