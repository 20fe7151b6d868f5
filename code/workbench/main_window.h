// SPDX-License-Identifier: MIT
#ifndef MAIN_WINDOW_H
#define MAIN_WINDOW_H

#include <QMainWindow>
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

    /** The board of the last time; empty if there is none any more. */
    static QString lastBoard();

    /** Reads a board and opens its main step in place of what is open.
     *
     * @return false if the user has broken it off; the old board stays then
     * @throws BoardError, HostError
     */
    bool openBoard(const QString& path);

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
    QString mBoardPath;
    bool mRemember = false;
};

#endif
