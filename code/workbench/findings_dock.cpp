// SPDX-License-Identifier: MIT
#include "findings_dock.h"

#include "drill_table.h"
#include "live_plan.h"
#include "plan_checks.h"

#include <QEvent>

namespace brox {

namespace {

constexpr int restOfEdits = 150; ///< milliseconds
constexpr int placeRole = Qt::UserRole;

enum Column
{
    FindingColumn,
    LayerColumn,
    ToolsColumn,
    PlaceColumn,
    MeasuredColumn,
    LimitColumn,
    IdColumn
};

} // namespace

FindingsDock::FindingsDock(LivePlan& plan, QWidget* parent)
    : QDockWidget(parent)
    , mPlan(plan)
{
    ui.setupUi(this);
    mTimer.setSingleShot(true);
    mTimer.setInterval(restOfEdits);
    connect(&mTimer, &QTimer::timeout, this, &FindingsDock::check);
    connect(&plan, &LivePlan::changed, &mTimer, qOverload<>(&QTimer::start));
    const auto show = [this](const QTreeWidgetItem* item) {
        if (item) {
            const QPoint place = item->data(0, placeRole).toPoint();
            emit chosen({place.x(), place.y()});
        }
    };
    connect(ui.findingsTreeWidget, &QTreeWidget::currentItemChanged, this, show);
    connect(ui.findingsTreeWidget, &QTreeWidget::itemClicked, this, show);
}

void FindingsDock::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        ui.retranslateUi(this);
        mTimer.start();
    }
    QDockWidget::changeEvent(event);
}

void FindingsDock::check()
{
    ui.findingsTreeWidget->clear();
    ui.notesLabel->clear();
    QString numbers;
    std::vector<Place> places;
    if (const DrillPlan* plan = mPlan.plan()) {
        try {
            const CheckFindings findings = checkPlan(*plan);
            fill(*plan, findings);
            for (const CheckFinding& finding : findings.list) {
                places.insert(places.end(), finding.places.begin(), finding.places.end());
            }
            numbers = findings.list.empty()
                ? tr("no findings")
                : tr("findings: %1 (hard: %2)").arg(findings.list.size()).arg(findings.hardCount());
        } catch (const std::exception& error) {
            ui.notesLabel->setText(QString::fromUtf8(error.what()));
        }
    }
    emit found(numbers, places);
}

void FindingsDock::fill(const DrillPlan& plan, const CheckFindings& findings)
{
    for (const CheckFinding& finding : findings.list) {
        addFinding(plan, finding, isHard(finding.check) ? tr("must not be drilled") : QString());
    }
    for (const AcceptedFinding& accepted : findings.accepted) {
        addFinding(plan, accepted.finding,
            tr("accepted until %1: %2").arg(accepted.until.toString(Qt::ISODate), accepted.reason));
    }
    ui.notesLabel->setText(findingsNotes(findings).join('\n'));
    for (int column = FindingColumn; column <= IdColumn; ++column) {
        ui.findingsTreeWidget->resizeColumnToContents(column);
    }
}

void FindingsDock::addFinding(
    const DrillPlan& plan, const CheckFinding& finding, const QString& comment)
{
    const Place place = finding.places.front();
    const auto size = [&plan](Size value) { return sizeText(value, plan.units); };
    auto* item = new QTreeWidgetItem(ui.findingsTreeWidget,
        {checkText(finding.check), plan.layers[finding.layer].name, findingTools(plan, finding),
            QStringLiteral("%1, %2").arg(size(place.x), size(place.y)),
            measureText(finding.check, finding.measured, plan.units),
            measureText(finding.check, finding.limit, plan.units), finding.id});
    item->setData(0, placeRole, QPoint(place.x, place.y));
    item->setToolTip(0, comment);
    QFont font = item->font(FindingColumn);
    font.setBold(isHard(finding.check));
    font.setItalic(!comment.isEmpty() && !isHard(finding.check));
    item->setFont(FindingColumn, font);
}

} // namespace brox
