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
    // A viewer has a size below which its parts would be cut; a small screen scrolls instead.
    auto* page = new QScrollArea;
    page->setFrameShape(QFrame::NoFrame);
    page->setWidgetResizable(true);
    page->setWidget(viewer);
    page->setProperty("step", QVariant::fromValue(step));
    setCurrentIndex(addTab(page, titleOf(step).replace('&', "&&")));
    if (auto* jobTable = viewer->findChild<QTableWidget*>("jobDrillDataTableWidget")) {
        jobTable->setFocus();
    }
}

/** Tells the steps of two boards apart, and two steps of one name. */
QString StepTabs::titleOf(size_t step) const
{
    const Board& board = mSession.board();
    const QString title = QStringLiteral("%1: %2").arg(board.job, board.steps[step].name);
    const auto isNamesake = [&](const Step& other) { return other.name == board.steps[step].name; };
    const auto begin = board.steps.begin();
    const auto before = std::count_if(begin, begin + qsizetype(step), isNamesake);
    return before == 0 ? title : QStringLiteral("%1 (%2)").arg(title).arg(before + 1);
}

std::optional<size_t> StepTabs::currentStep() const
{
    return currentIndex() < 0 ? std::optional<size_t>() : stepOf(currentIndex());
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
