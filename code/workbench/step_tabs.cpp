// SPDX-License-Identifier: MIT
#include "step_tabs.h"

#include "host_session.h"

#include <QScrollArea>
#include <QTabBar>
#include <QTableWidget>
#include <algorithm>

StepTabs::StepTabs(HostSession& session)
    : mSession(session)
{
    setTabsClosable(true);
    setMovable(true);
    setDocumentMode(true);
    connect(this, &QTabWidget::currentChanged, this, &StepTabs::stepChanged);
    connect(&session.guard(), &DataGuard::unsavedChanged, this, &StepTabs::markUnsaved);
}

StepTabs::~StepTabs()
{
    disconnect();
    while (count() > 0) {
        discard(0);
    }
}

void StepTabs::openStep(size_t step)
{
    for (int tab = 0; tab < count(); ++tab) {
        if (stepOf(tab) == step) {
            setCurrentIndex(tab);
            return;
        }
    }
    QWidget* viewer = mSession.viewer(step);
    // Below a share of the size that the viewer comes with its parts are cut: a small screen, or
    // one with a large scale, scrolls instead.
    viewer->setMinimumSize(viewer->width(), viewer->height() / 2);
    auto* page = new QScrollArea;
    page->setFrameShape(QFrame::NoFrame);
    page->setWidgetResizable(true);
    page->setWidget(viewer);
    page->setProperty("step", QVariant::fromValue(step));
    setCurrentIndex(addTab(page, titleOf(step)));
    if (auto* jobTable = viewer->findChild<QTableWidget*>("jobDrillDataTableWidget")) {
        jobTable->setFocus();
    }
}

void StepTabs::markUnsaved()
{
    for (int tab = 0; tab < count(); ++tab) {
        setTabText(tab, titleOf(stepOf(tab)));
    }
    emit stepChanged();
}

/** Tells apart the steps of two boards, and two steps of one name; bears the unsaved mark. */
QString StepTabs::titleOf(size_t step) const
{
    const Board& board = mSession.board();
    QString title = QStringLiteral("%1: %2").arg(board.job, board.steps[step].name);
    const auto isNamesake = [&](const Step& other) { return other.name == board.steps[step].name; };
    const auto begin = board.steps.begin();
    const auto before = std::count_if(begin, begin + qsizetype(step), isNamesake);
    if (before > 0) {
        title += QStringLiteral(" (%1)").arg(before + 1);
    }
    if (mSession.hasUnsaved(step)) {
        title += " *";
    }
    return title.replace('&', "&&");
}

std::optional<size_t> StepTabs::currentStep() const
{
    return currentIndex() < 0 ? std::optional<size_t>() : stepOf(currentIndex());
}

bool StepTabs::hasUnsaved() const
{
    for (int tab = 0; tab < count(); ++tab) {
        if (mSession.hasUnsaved(stepOf(tab))) {
            return true;
        }
    }
    return false;
}

size_t StepTabs::stepOf(int tab) const
{
    return widget(tab)->property("step").value<size_t>();
}

void StepTabs::discard(int tab)
{
    QWidget* page = widget(tab);
    mSession.closeViewer(stepOf(tab));
    delete page; // which takes its tab along
}

void StepTabs::closeTab(int tab)
{
    if (tab >= 0 && mSession.canClose(stepOf(tab))) {
        discard(tab);
    }
}

bool StepTabs::closeAll()
{
    for (int tab = 0; tab < count(); ++tab) {
        setCurrentIndex(tab);
        if (!mSession.canClose(stepOf(tab))) {
            return false;
        }
    }
    while (count() > 0) {
        discard(0);
    }
    return true;
}
