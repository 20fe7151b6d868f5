// SPDX-License-Identifier: MIT
#include "step_tabs.h"

#include "host_session.h"
#include "viewer_tables.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QTableWidget>
#include <algorithm>
#include <exception>

namespace brox {

namespace {

constexpr int rowMargin = 8; ///< pixels of a row beside its text
constexpr int handleWidth = 6;
constexpr int modelsWidth = 150;

/** Gives the table of a viewer's tools the focus. */
void focusTools(const QWidget* page)
{
    if (auto* jobTable = page->findChild<QTableWidget*>("jobDrillDataTableWidget")) {
        jobTable->setFocus();
    }
}

/** The width of a table without any scrolling. */
int fullWidth(const QTableWidget* table)
{
    return table->verticalHeader()->sizeHint().width() + table->horizontalHeader()->length()
        + table->verticalScrollBar()->sizeHint().width() + 2 * table->frameWidth();
}

/** To be seen on light and on dark windows. */
QColor handleColour(const QPalette& palette)
{
    const QColor window = palette.color(QPalette::Window);
    const QColor text = palette.color(QPalette::WindowText);
    const auto mixed = [](int most, int some) { return (3 * most + some) / 4; };
    return {mixed(window.red(), text.red()), mixed(window.green(), text.green()),
        mixed(window.blue(), text.blue())};
}

/** What who can't see a viewer hears of its parts. */
void nameParts(const QWidget* viewer)
{
    const std::pair<const char*, QString> names[] = {
        {"broxModelTableWidget", StepTabs::tr("Models")},
        {"amountsTableWidget", StepTabs::tr("Amounts by type of hole")},
        {"dhsLineEdit", StepTabs::tr("Formula of the drill size")},
        {"testerTableWidget", StepTabs::tr("Test bench")},
        {"jobDrillDataTableWidget", StepTabs::tr("Drill tools of the step")},
        {"drillBitsTableWidget", StepTabs::tr("Drill bits")}};
    for (const auto& [name, text] : names) {
        if (auto* part = viewer->findChild<QWidget*>(name)) {
            part->setAccessibleName(text);
        }
    }
}

/** Gives the parts of a viewer the room that they need: rows as high as their text, all types of
 *  holes in sight, and the wider table of the two beside each other gets what the other leaves. */
void fitParts(QWidget* viewer)
{
    for (auto* table : viewer->findChildren<QTableWidget*>()) {
        table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + rowMargin);
    }
    if (const auto* amounts = viewer->findChild<QTableWidget*>("amountsTableWidget")) {
        amounts->parentWidget()->setMaximumWidth(fullWidth(amounts));
        if (auto* caption = amounts->parentWidget()->findChild<QLabel*>()) {
            caption->setAlignment(Qt::AlignLeft | Qt::AlignVCenter); // its beginning stays in sight
            caption->setToolTip(caption->text());
        }
    }
    if (const auto* formula = viewer->findChild<QLineEdit*>("dhsLineEdit")) {
        for (auto* caption : formula->parentWidget()->findChildren<QLabel*>()) {
            caption->setMaximumWidth(QWIDGETSIZE_MAX); // in other languages and fonts it is longer
        }
    }
    for (auto* splitter : viewer->findChildren<QSplitter*>()) {
        splitter->setHandleWidth(handleWidth);
        splitter->setStyleSheet(QStringLiteral("QSplitter::handle { background: %1; margin: 2px; }")
                                    .arg(handleColour(splitter->palette()).name()));
        QList<int> sizes = splitter->sizes();
        if (sizes.size() == 2) {
            const bool isWide = splitter->orientation() == Qt::Horizontal;
            const int all = qMax(sizes[0] + sizes[1], isWide ? viewer->width() : viewer->height());
            if (isWide) {
                splitter->widget(0)->setMinimumWidth(modelsWidth);
            }
            sizes[0] = isWide ? modelsWidth : splitter->widget(0)->sizeHint().height();
            sizes[1] = all - sizes[0];
            splitter->setSizes(sizes);
        }
    }
}

} // namespace

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
    if (const int tab = tabOf(step); tab >= 0) {
        setCurrentIndex(tab);
        return;
    }
    mSession.viewer(step); // without it there is no tab
    auto* page = new QScrollArea;
    page->setFrameShape(QFrame::NoFrame);
    page->setWidgetResizable(true);
    page->setProperty("step", QVariant::fromValue(step));
    const int tab = addTab(page, titleOf(step));
    fill(tab);
    setCurrentIndex(tab);
    focusTools(page);
}

/** Puts a step's viewer into its tab. */
void StepTabs::fill(int tab)
{
    const size_t step = stepOf(tab);
    QWidget* viewer = mSession.viewer(step);
    // Below a share of the size that the viewer comes with its parts are cut: a small screen, or
    // one with a large scale, scrolls instead.
    viewer->setMinimumSize(viewer->width(), viewer->height() / 2);
    static_cast<QScrollArea*>(widget(tab))->setWidget(viewer);
    fitParts(viewer);
    nameParts(viewer);
    // The Tab key leads out of a table, for hands without a mouse.
    for (auto* table : viewer->findChildren<QTableWidget*>()) {
        table->setTabKeyNavigation(false);
    }
    if (auto* bits = viewer->findChild<QTableWidget*>("drillBitsTableWidget")) {
        new TableFilter(bits);
    }
    auto* jobTable = new JobTable(viewer, mSession.draft(step));
    connect(jobTable, &JobTable::typeChosen, this,
        [this](const QString& layer, const Tool& tool, std::optional<HoleType> type) {
            // Later: the viewer that asks will be closed for it.
            QMetaObject::invokeMethod(
                this, [=, this] { emit typeChosen(layer, tool, type); }, Qt::QueuedConnection);
        });
}

std::vector<size_t> StepTabs::openSteps() const
{
    std::vector<size_t> steps;
    for (int tab = 0; tab < count(); ++tab) {
        steps.push_back(stepOf(tab));
    }
    return steps;
}

void StepTabs::reopen(int tab, const QString& model)
{
    if (!static_cast<QScrollArea*>(widget(tab))->widget()) {
        fill(tab);
    }
    if (mSession.models(stepOf(tab)).contains(model)) {
        mSession.selectModel(stepOf(tab), model);
    }
}

void StepTabs::remake(const std::function<void()>& change)
{
    QStringList models;
    for (const size_t step : openSteps()) {
        models << mSession.selectedModel(step);
    }
    std::exception_ptr failure;
    try {
        for (const size_t step : openSteps()) {
            mSession.closeForAnother(step);
        }
        change();
    } catch (...) {
        failure = std::current_exception(); // the viewers come back all the same
    }
    for (int tab = 0; tab < count(); ++tab) {
        reopen(tab, models[tab]);
    }
    if (count() > 0) {
        focusTools(currentWidget());
    }
    markUnsaved();
    if (failure) {
        std::rethrow_exception(failure);
    }
}

bool StepTabs::changeFiles(const std::function<void()>& change)
{
    const std::vector<size_t> steps = openSteps();
    if (!std::ranges::all_of(steps, [this](size_t step) { return mSession.canClose(step); })) {
        return false;
    }
    change();
    for (const size_t step : steps) {
        reread(step);
    }
    return true;
}

void StepTabs::reread(size_t step)
{
    const QString model = mSession.selectedModel(step);
    mSession.closeViewer(step);
    reopen(tabOf(step), model);
    markUnsaved();
}

JobTable* StepTabs::jobTable() const
{
    return currentWidget() ? currentWidget()->findChild<JobTable*>() : nullptr;
}

QStringList StepTabs::rereadFiles()
{
    QStringList names;
    for (const size_t step : openSteps()) {
        if (mSession.isOlder(step) && !mSession.hasUnsaved(step)) {
            reread(step);
            names << mSession.draft(step).boardStep().name;
        }
    }
    return names;
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
    const Board& board = *mSession.draft(step).board;
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
    return std::ranges::any_of(
        openSteps(), [this](size_t step) { return mSession.hasUnsaved(step); });
}

/** Below 0: the step is not open. */
int StepTabs::tabOf(size_t step) const
{
    const std::vector<size_t> steps = openSteps();
    const auto found = std::ranges::find(steps, step);
    return found == steps.end() ? -1 : int(found - steps.begin());
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

} // namespace brox
