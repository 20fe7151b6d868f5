// SPDX-License-Identifier: MIT
#include "live_plan.h"

#include "host_session.h"
#include "step_tabs.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <utility>

namespace brox {

namespace {

constexpr int settlingTime = 200; ///< milliseconds in which a save of several files is done

/** Whether the focus is in the editor of a cell. */
bool isTypingIntoCell()
{
    const QWidget* focus = QApplication::focusWidget();
    for (const QWidget* widget = focus; widget; widget = widget->parentWidget()) {
        const auto* view = qobject_cast<const QAbstractItemView*>(widget);
        if (view && view != focus && view->viewport()->isAncestorOf(focus)) {
            return true;
        }
    }
    return false;
}

} // namespace

LivePlan::LivePlan(HostSession& session, const StepTabs& tabs)
    : mSession(session)
    , mTabs(tabs)
{
    mTimer.setSingleShot(true);
    mTimer.setInterval(0);
    connect(&mTimer, &QTimer::timeout, this, &LivePlan::refreshUnlessTyping);
    connect(&session, &HostSession::edited, this, [this](size_t step) {
        mEdited << step;
        mTimer.start();
    });
    connect(&tabs, &StepTabs::stepChanged, &mTimer, qOverload<>(&QTimer::start));
    connect(qApp, &QApplication::focusChanged, this, [this] {
        if (std::exchange(mIsTyping, false)) {
            mTimer.start();
        }
    });
}

const DrillPlan* LivePlan::current()
{
    if (const std::optional<size_t> step = mTabs.currentStep()) {
        mEdited << *step; // a cell that is open may hold an edit that nobody has heard of
    }
    refresh();
    return plan();
}

std::optional<DrillPlan> LivePlan::withFewestTools()
{
    const std::optional<size_t> step = mTabs.currentStep();
    return step && mPlan ? std::optional(planned(*step, true)) : std::nullopt;
}

void LivePlan::compareWith(std::shared_ptr<const Board> other, const QString& name)
{
    mOtherName = name;
    mComparisons.clear();
    mOther = std::move(other);
    if (const std::optional<size_t> step = mTabs.currentStep(); step && mOther) {
        try {
            planned(*step, false);
        } catch (...) {
            mOther.reset();
            throw;
        }
    }
    refresh();
}

DrillPlan LivePlan::planned(size_t step, bool withFewestTools)
{
    DrillPlan plan = mSession.plan(mSession.draft(step), step,
        withFewestTools ? HostSession::Sharing::ButPressFit : HostSession::Sharing::None);
    if (mOther) {
        std::shared_ptr<const Comparison>& comparison = mComparisons[{step, drillSizesOf(plan)}];
        if (!comparison) {
            auto made = std::make_shared<Comparison>(compareStep(plan, *mOther));
            made->other = made->other == plan.board->job ? mOtherName : made->other;
            comparison = made;
        }
        plan.comparison = comparison;
    }
    return plan;
}

void LivePlan::recalculate()
{
    for (const size_t step : mTabs.openSteps()) {
        mEdited << step;
    }
    refresh();
}

void LivePlan::refreshUnlessTyping()
{
    mIsTyping = isTypingIntoCell();
    if (!mIsTyping) {
        refresh();
    }
}

void LivePlan::refresh()
{
    const QSet<size_t> edited = std::exchange(mEdited, {});
    mPlan.reset();
    mFault.clear();
    try {
        for (const size_t step : edited) {
            mSession.recalculate(step);
        }
        if (const std::optional<size_t> step = mTabs.currentStep()) {
            mPlan = planned(*step, false);
        }
    } catch (const std::exception& error) {
        mFault = QString::fromUtf8(error.what());
    }
    emit changed();
}

DataWatch::DataWatch(const QString& dataDir)
    : mFolder(QDir(dataDir).filePath("brox"))
{
    mTimer.setSingleShot(true);
    mTimer.setInterval(settlingTime);
    connect(&mWatcher, &QFileSystemWatcher::directoryChanged, &mTimer, qOverload<>(&QTimer::start));
    connect(&mWatcher, &QFileSystemWatcher::fileChanged, &mTimer, qOverload<>(&QTimer::start));
    connect(&mTimer, &QTimer::timeout, this, [this] {
        // A viewer that asks something, or is being typed into, can't be made anew now.
        if (QApplication::activeModalWidget() || QApplication::activePopupWidget()
            || isTypingIntoCell()) {
            mTimer.start();
            return;
        }
        watch(); // a file that was replaced is another one
        emit changed();
    });
    watch();
}

void DataWatch::watch()
{
    QStringList paths{mFolder};
    for (const QString& name : QDir(mFolder).entryList({"*.xml", "*.json"}, QDir::Files)) {
        paths << QDir(mFolder).filePath(name);
    }
    for (const QString& path : paths) {
        if (QFileInfo::exists(path)) {
            mWatcher.addPath(path); // one that is watched already is not added
        }
    }
}

} // namespace brox
