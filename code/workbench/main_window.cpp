// SPDX-License-Identifier: MIT
#include "main_window.h"

#include "board_reader.h"
#include "host_session.h"

#include <QActionGroup>
#include <QCloseEvent>
#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QSettings>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>

namespace {

constexpr int logLines = 5000;
constexpr int progressSteps = 1000;
constexpr int longReading = 500; ///< milliseconds after which the progress is shown

const char geometryKey[] = "geometry";
const char stateKey[] = "state";
const char boardKey[] = "board";

QString boardName(const QStringList& paths)
{
    const QString first = QFileInfo(paths[0]).fileName();
    return paths.size() == 1 ? first
                             : MainWindow::tr("%1 and %2 more").arg(first).arg(paths.size() - 1);
}

QString contentText(const Step& step)
{
    qint64 tools = 0;
    qint64 holes = 0;
    for (const Layer& layer : step.layers) {
        tools += qint64(layer.tools.size());
        for (const Tool& tool : layer.tools) {
            holes += tool.count;
        }
    }
    return MainWindow::tr("Step %1: %2 tools, %3 holes, %4 slots left out")
        .arg(step.name)
        .arg(tools)
        .arg(holes)
        .arg(step.slotsLeftOut);
}

} // namespace

MainWindow::MainWindow(HostSession& session)
    : mSession(session)
    , mPages(new QStackedWidget)
    , mTabs(new QTabWidget)
{
    auto* hint = new QLabel(tr("Open a board to set up its drill tools."));
    hint->setAlignment(Qt::AlignCenter);
    mPages->addWidget(hint);
    mPages->addWidget(mTabs);
    setCentralWidget(mPages);

    mTabs->setTabsClosable(true);
    mTabs->setMovable(true);
    mTabs->setDocumentMode(true);
    connect(mTabs, &QTabWidget::tabCloseRequested, this, &MainWindow::closeTab);
    connect(mTabs, &QTabWidget::currentChanged, this, &MainWindow::followCurrentTab);

    createActions();
    createLog();
    connect(&session, &HostSession::modelRenamed, this,
        [this](const QString& step, const QString& oldName, const QString& newName) {
            statusBar()->showMessage(
                tr("Step %1: model \"%2\" is now \"%3\"").arg(step, oldName, newName));
        });
    connect(&session, &HostSession::modelDeleted, this,
        [this](const QString& step, const QString& name) {
            statusBar()->showMessage(tr("Step %1: model \"%2\" is deleted").arg(step, name));
        });
    listSteps();
    followCurrentTab();
    setWindowTitle(tr("brox workbench"));
    resize(1000, 1000);
}

MainWindow::~MainWindow()
{
    mTabs->disconnect(this);
    while (mTabs->count() > 0) {
        mSession.closeViewer(stepOf(0));
    }
}

void MainWindow::createActions()
{
    QMenu* file = menuBar()->addMenu(tr("&File"));
    QAction* open = file->addAction(tr("&Open Board..."), this, &MainWindow::chooseBoard);
    open->setShortcut(QKeySequence::Open);
    mCloseStep =
        file->addAction(tr("&Close Step"), this, [this] { closeTab(mTabs->currentIndex()); });
    mCloseStep->setShortcut(QKeySequence::Close);
    file->addSeparator();
    QAction* quit = file->addAction(tr("&Quit"), this, &QWidget::close);
    // The standard key for it is empty outside of desktops that define one.
    quit->setShortcut(Qt::CTRL | Qt::Key_Q);

    mStepMenu = menuBar()->addMenu(tr("&Step"));

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

void MainWindow::createLog()
{
    mLog = new QPlainTextEdit;
    mLog->setReadOnly(true);
    mLog->setMaximumBlockCount(logLines);
    auto* dock = new QDockWidget(tr("Log"));
    dock->setObjectName("logDock");
    dock->setWidget(mLog);
    addDockWidget(Qt::BottomDockWidgetArea, dock);
    resizeDocks({dock}, {90}, Qt::Vertical);
    menuBar()->addMenu(tr("&View"))->addAction(dock->toggleViewAction());
    dock->toggleViewAction()->setText(tr("&Log"));
    connect(
        &mSession, &HostSession::logged, mLog, [this](const QString& level, const QString& text) {
            mLog->appendPlainText(level + ": " + text);
        });
}

/** Runs a user's command; what can't be done is told in a box. */
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
    const QSettings settings;
    restoreGeometry(settings.value(geometryKey).toByteArray());
    restoreState(settings.value(stateKey).toByteArray());
}

void MainWindow::reopenLastBoard()
{
    const QStringList paths = lastBoard();
    const auto isFile = [](const QString& path) { return QFileInfo(path).isFile(); };
    if (!paths.isEmpty() && std::all_of(paths.begin(), paths.end(), isFile)) {
        guard([&] { openBoard(paths); });
    }
}

QStringList MainWindow::lastBoard()
{
    return QSettings().value(boardKey).toStringList();
}

void MainWindow::chooseBoard()
{
    const QStringList last = mBoardPaths.isEmpty() ? lastBoard() : mBoardPaths;
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
    const QString name = boardName(paths);
    QProgressDialog dialog(tr("Reading %1").arg(name), tr("Cancel"), 0, progressSteps, this);
    dialog.setWindowModality(Qt::WindowModal);
    dialog.setMinimumDuration(longReading);
    dialog.setValue(0);
    Board board;
    try {
        board = readBoard(paths, [&](qint64 done, qint64 total) {
            // The last step would close the dialog before the end.
            dialog.setValue(total > 0 ? int((progressSteps - 1) * done / total) : 0);
            return !dialog.wasCanceled();
        });
    } catch (const BoardCancelled&) {
        return false;
    }
    dialog.reset();
    if (!closeAllTabs()) {
        return false;
    }
    mSession.setBoard(std::move(board));
    mBoardPaths.clear();
    for (const QString& path : paths) {
        mBoardPaths << QFileInfo(path).absoluteFilePath();
    }
    if (mRemember) {
        QSettings().setValue(boardKey, mBoardPaths);
    }
    setWindowTitle(tr("%1 - brox workbench").arg(name));
    listSteps();
    openStep(chooseStep ? chooseStep() : mSession.board().mainStep);
    return true;
}

void MainWindow::listSteps()
{
    mStepMenu->clear();
    const std::vector<Step>& steps = mSession.board().steps;
    for (size_t i = 0; i < steps.size(); ++i) {
        const QString name = QString(steps[i].name).replace('&', "&&");
        QAction* action =
            mStepMenu->addAction(i < 9 ? QStringLiteral("&%1 %2").arg(i + 1).arg(name) : name);
        connect(action, &QAction::triggered, this, [this, i] { guard([&] { openStep(i); }); });
    }
    mStepMenu->setEnabled(!steps.empty());
}

void MainWindow::openStep(size_t step)
{
    QWidget* viewer = mSession.viewer(step);
    if (mTabs->indexOf(viewer) < 0) {
        const QString name = mSession.board().steps[step].name;
        const int tab = mTabs->addTab(viewer, QString(name).replace('&', "&&"));
        mTabs->tabBar()->setTabData(tab, QVariant::fromValue(step));
    }
    mTabs->setCurrentWidget(viewer);
    followCurrentTab();
}

size_t MainWindow::stepOf(int tab) const
{
    return mTabs->tabBar()->tabData(tab).value<size_t>();
}

/** Menus and status bar tell of the step whose viewer is in front. */
void MainWindow::followCurrentTab()
{
    const int tab = mTabs->currentIndex();
    mPages->setCurrentIndex(tab < 0 ? 0 : 1);
    mUnits->setEnabled(tab >= 0);
    mCloseStep->setEnabled(tab >= 0);
    // A tab that is just being added has no step yet.
    if (tab >= 0 && mTabs->tabBar()->tabData(tab).isValid()) {
        const size_t step = stepOf(tab);
        (mSession.units(step) == Units::Inch ? mInch : mMetric)->setChecked(true);
        statusBar()->showMessage(contentText(mSession.board().steps[step]));
    }
}

void MainWindow::setUnits(QAction* action)
{
    mSession.setUnits(stepOf(mTabs->currentIndex()), action == mInch ? Units::Inch : Units::Metric);
}

void MainWindow::closeTab(int index)
{
    guard([&] {
        if (mSession.canClose(stepOf(index))) {
            mSession.closeViewer(stepOf(index));
            followCurrentTab();
        }
    });
}

/** Closes all steps, or none if the user wants to keep one. */
bool MainWindow::closeAllTabs()
{
    for (int i = 0; i < mTabs->count(); ++i) {
        mTabs->setCurrentIndex(i);
        if (!mSession.canClose(stepOf(i))) {
            return false;
        }
    }
    while (mTabs->count() > 0) {
        mSession.closeViewer(stepOf(0));
    }
    followCurrentTab();
    return true;
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    bool closed = false;
    guard([&] { closed = closeAllTabs(); });
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
