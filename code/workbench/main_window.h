// SPDX-License-Identifier: MIT
#ifndef MAIN_WINDOW_H
#define MAIN_WINDOW_H

#include <QMainWindow>
#include <QStringList>
#include <functional>

class HostSession;
class QAction;
class QActionGroup;
class QPlainTextEdit;
class QStackedWidget;
class QTabWidget;

/** The host's window: the viewers of a board's steps as tabs, and the host's log. */
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /** @param session  outlives the window */
    explicit MainWindow(HostSession& session);

    /** Viewers that are still open are closed without a question. */
    ~MainWindow() override;

    /** Takes geometry and dock of the last time, and keeps them and the board for the next. */
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

    /** Shows a step's viewer, which is opened if there is none yet.
     *
     * @throws HostError
     */
    void openStep(size_t step);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void createActions();
    void createLog();
    void guard(const std::function<void()>& work);

    static QStringList lastBoard();
    void chooseBoard();
    void listSteps();
    void setUnits(QAction* action);
    void closeTab(int index);
    bool closeAllTabs();
    void followCurrentTab();
    size_t stepOf(int tab) const;

    HostSession& mSession;
    QStackedWidget* mPages;
    QTabWidget* mTabs;
    QMenu* mStepMenu = nullptr;
    QActionGroup* mUnits = nullptr;
    QAction* mInch = nullptr;
    QAction* mMetric = nullptr;
    QAction* mCloseStep = nullptr;
    QPlainTextEdit* mLog = nullptr;
    QStringList mBoardPaths;
    bool mRemember = false;
};

#endif
