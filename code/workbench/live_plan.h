// SPDX-License-Identifier: MIT
#ifndef LIVE_PLAN_H
#define LIVE_PLAN_H

#include "drill_plan.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QSet>
#include <QTimer>
#include <map>
#include <optional>

namespace brox {

class HostSession;
class StepTabs;

/** What the step in front comes to: the one plan that the window shows and writes.
 *
 * After every edit, once per turn of the event loop, the viewers' own tables are calculated anew
 * and then the plan, so that table, map, status bar and each export say the same. Only while a
 * number or a name is being typed into a cell does all of it wait: calculating would end the
 * typing.
 */
class LivePlan : public QObject
{
    Q_OBJECT

public:
    /** @param session, tabs  outlive the plan */
    LivePlan(HostSession& session, const StepTabs& tabs);

    /** The plan as it was calculated last; null: no step is open, or fault() says why there is
     *  none. */
    const DrillPlan* plan() const { return mPlan ? &*mPlan : nullptr; }
    const QString& fault() const { return mFault; }

    /** The plan of this moment. What is being typed counts as entered. */
    const DrillPlan* current();

    /** The plan as it was calculated last, but with rows that share bits; null: there is none.
     *
     * @throws HostError, PanelError
     */
    std::optional<DrillPlan> withFewestTools();

    /** Compares the plan with another board from now on; null: with none.
     *
     * @param name  of the other board, should its job have the name of this one's
     * @throws PanelError  and it is compared with none
     */
    void compareWith(std::shared_ptr<const Board> other, const QString& name = {});
    bool isComparing() const { return mOther != nullptr; }

    /** Calculates all anew, whether something was edited or not. */
    void recalculate();

signals:
    void changed();

private:
    DrillPlan planned(size_t step, bool withFewestTools);
    void refresh();
    void refreshUnlessTyping();

    HostSession& mSession;
    const StepTabs& mTabs;
    QTimer mTimer;
    QSet<size_t> mEdited; ///< steps whose viewers show what was before an edit
    bool mIsTyping = false; ///< a refresh waits for the end of it
    std::shared_ptr<const Board> mOther; ///< that the plan is compared with; null: none
    QString mOtherName;
    std::map<std::pair<size_t, std::map<QString, bool>>, std::shared_ptr<const Comparison>>
        mComparisons; ///< by step and by what its sizes are
    std::optional<DrillPlan> mPlan;
    QString mFault;
};

/** Hears of changes to the files of a data folder, whoever made them. */
class DataWatch : public QObject
{
    Q_OBJECT

public:
    explicit DataWatch(const QString& dataDir);

signals:
    /** Some file may have changed; a series of changes is reported once. */
    void changed();

private:
    void watch();

    QString mFolder;
    QFileSystemWatcher mWatcher;
    QTimer mTimer;
};

} // namespace brox

#endif
