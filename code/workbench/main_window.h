// SPDX-License-Identifier: MIT
#ifndef MAIN_WINDOW_H
#define MAIN_WINDOW_H

#include "live_plan.h"
#include "open_job.h"
#include "reading.h"

#include <QMainWindow>
#include <QStringList>
#include <functional>
#include <memory>

class QAction;
class QLabel;
class QPushButton;

namespace brox {

class ErrorBar;
class ExportMenu;
class FindingsDock;
class HostSession;
class LogDock;
class MapDock;
class NoticeBar;
class StepTabs;
class WindowFilter;

namespace Ui {
class MainWindow;
}

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

    /** Opens the board of the last time if it is still there; what is wrong with it is shown in a
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
    OpenJob& openJob() { return *mOpen; }
    const Job& job() const { return mOpen->job(); }

    /** Reads another board and compares what is open with it, until another board is opened. */
    void compareWith(const QStringList& paths);

    /** How boards are read from now on. */
    void setReadOptions(const ReadOptions& options) { mReadOptions = options; }

    /** Takes over the rules of the shop, now and whenever their file has changed; while they can't
     *  be read nothing is exported.
     *
     * @param load  throws RulesError
     */
    void loadRules(std::function<ShopRules()> load);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void setUpCentre();
    void setUpDocks();
    void setUpMenus();
    void setUpCommands();
    void setUpStatusBar();
    void followSession();
    void listSteps();
    void listRecentBoards();

    QStringList lastPaths() const;
    void showFindings();
    void endComparison();
    bool readRules();
    void loadSavedRules();
    void open(const QStringList& paths);
    void editRules();
    void restoreBackup();
    void saveModels();
    void duplicateModel();
    void turnTabs(int by);
    void setUnits(QAction* action);
    void makeRoomForMap(bool isShown);
    void goToNextToCheck();
    void followStep();
    void followPlan();
    void followDataFolder();
    void rereadStep();
    void logNotes();
    void report(const QString& level, const QString& text);
    void say(const QString& message);

    WindowFilter* mFilter; ///< first: it looks at all that is made after it
    std::unique_ptr<Ui::MainWindow> mUi;
    HostSession& mSession;
    ErrorBar* mErrorBar;
    StepTabs* mTabs;
    LogDock* mLog;
    std::unique_ptr<OpenJob> mOpen;
    std::unique_ptr<LivePlan> mLive;
    MapDock* mMap;
    FindingsDock* mFindings;
    ExportMenu* mExport;
    QLabel* mContent;
    QPushButton* mFound; ///< how many findings there are
    QPushButton* mToCheck;
    NoticeBar* mOlderBar; ///< the step in front has edits of what others have saved since
    NoticeBar* mRulesBar; ///< the rules of the shop can't be read
    std::function<ShopRules()> mLoadRules;
    DataWatch mWatch;
    QStringList mBoardPaths;
    ReadOptions mReadOptions;
    bool mRemember = false;
};

} // namespace brox

#endif
