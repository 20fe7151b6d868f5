// SPDX-License-Identifier: MIT
#ifndef MAIN_WINDOW_H
#define MAIN_WINDOW_H

#include "drill_draft.h"
#include "reading.h"

#include <QMainWindow>
#include <QStringList>
#include <functional>

class QAction;
class QActionGroup;
class QLabel;
class QStackedWidget;

namespace brox {

class ErrorBar;
class ExportMenu;
class HostSession;
class LogDock;
class MapDock;
class StepTabs;

/** The host's window: the viewers of a board's steps as tabs, and the host's log. */
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /** @param session  outlives the window */
    explicit MainWindow(HostSession& session);

    /** Viewers that are still open are closed without a question. */
    ~MainWindow() override;

    /** Takes geometry and docks of the last time, and keeps them and the board for the next. */
    void remember();

    /** Opens the board of the last time if it is still there; what is wrong with it is told in a
     *  box. */
    void reopenLastBoard();

    /** Reads a board and opens a step of it in place of what is open.
     *
     * @param paths       an IPC-2581 file or the board's drill files
     * @param chooseStep  names the step and may set it up; without it it is the main step
     * @return false if the user has broken it off; the old board stays then
     * @throws BoardError, HostError
     */
    bool openBoard(const QStringList& paths, const std::function<size_t()>& chooseStep = {});

    /** The board that is open, with the rules and choices that act on it. */
    const Job& job() const { return mJob; }

    /** Lets other rules of the shop act; there are none at first. Open viewers are made anew.
     *
     * @throws HostError, PanelError
     */
    void setRules(const ShopRules& rules);

    /** How boards are read from now on. */
    void setReadOptions(const ReadOptions& options) { mReadOptions = options; }

    /** Runs a user's command; what can't be done is told in a box. */
    void guard(const std::function<void()>& work);

    /** Keeps the rules of the shop from being edited, or no longer. */
    void lockRules(bool locked);

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void createMenus();
    void createFileMenu();
    void createUnitsMenu();
    void createHelpMenu();
    void listSteps();
    void listRecentBoards();
    void createPages();

    void setJob(Job job);
    void chooseBoard();
    void editRules();
    void setUnits(QAction* action);
    void makeRoomForMap(bool isShown);
    void followStep();
    void tellNotes();
    void tell(const QString& level, const QString& text);

    HostSession& mSession;
    Job mJob;
    ErrorBar* mErrorBar;
    QStackedWidget* mPages;
    QLabel* mHint;
    StepTabs* mTabs;
    LogDock* mLog;
    MapDock* mMap;
    ExportMenu* mExport;
    QLabel* mContent;
    QMenu* mStepMenu = nullptr;
    QMenu* mRecentMenu = nullptr;
    QActionGroup* mUnits = nullptr;
    QAction* mInch = nullptr;
    QAction* mMetric = nullptr;
    QAction* mCloseStep = nullptr;
    QAction* mRulesAction = nullptr;
    QStringList mBoardPaths;
    ReadOptions mReadOptions;
    bool mRemember = false;
};

} // namespace brox

#endif
