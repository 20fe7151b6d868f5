// SPDX-License-Identifier: MIT
#include "findings_dock.h"

#include "comparison_text.h"
#include "drill_table.h"
#include "live_plan.h"
#include "messages.h"
#include "plan_checks.h"

#include <QLocale>

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

QString placeText(Place place, Units units)
{
    return QStringLiteral("%1, %2").arg(sizeText(place.x, units), sizeText(place.y, units));
}

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
        const QVariant place = item ? item->data(0, placeRole) : QVariant();
        if (place.isValid()) {
            emit chosen({place.toPoint().x(), place.toPoint().y()});
        }
    };
    connect(ui.findingsTreeWidget, &QTreeWidget::currentItemChanged, this, show);
    connect(ui.findingsTreeWidget, &QTreeWidget::itemClicked, this, show);
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
            numbers = findings.list.empty() ? tr("no findings")
                                            : tr("%Ln finding(s)", "", int(findings.list.size()));
            if (findings.hardCount() > 0) {
                numbers += tr(" (%Ln hard)", "", int(findings.hardCount()));
            }
            if (plan->comparison) {
                numbers += tr("; %1: %2")
                               .arg(plan->comparison->other,
                                   comparisonSummary(*plan->comparison, Tongue::User));
            }
        } catch (const std::exception& error) {
            ui.notesLabel->setText(QString::fromUtf8(error.what()));
        }
    }
    emit found(numbers, places);
}

void FindingsDock::fill(const DrillPlan& plan, const CheckFindings& findings)
{
    const QString unit = QStringLiteral(" [%1]").arg(unitName(plan.units));
    ui.findingsTreeWidget->headerItem()->setText(PlaceColumn, tr("Place") + unit);
    QStringList notes = findingsNotes(findings);
    if (plan.comparison) {
        addDifferences(plan);
        notes = QStringList(tr("Compared with %1: %2")
                                .arg(plan.comparison->other,
                                    comparisonSummary(*plan.comparison, Tongue::User)))
            + comparisonNotes(*plan.comparison, plan.units, Tongue::User) + notes;
    }
    for (const CheckFinding& finding : findings.list) {
        addFinding(plan, finding, isHard(finding.check) ? tr("must not be drilled") : QString());
    }
    for (const AcceptedFinding& accepted : findings.accepted) {
        addFinding(plan, accepted.finding,
            tr("accepted until %1: %2").arg(accepted.until.toString(Qt::ISODate), accepted.reason));
    }
    ui.notesLabel->setText(notes.join('\n'));
    for (int column = FindingColumn; column <= IdColumn; ++column) {
        ui.findingsTreeWidget->resizeColumnToContents(column);
    }
}

QTreeWidgetItem* FindingsDock::addRow(const QStringList& texts, const std::vector<Place>& places)
{
    auto* item = new QTreeWidgetItem(ui.findingsTreeWidget, texts);
    if (!places.empty()) {
        item->setData(0, placeRole, QPoint(places[0].x, places[0].y));
    }
    return item;
}

/** Places of a panel's copies lie on another board than the one on the map. */
void FindingsDock::addDifferences(const DrillPlan& plan)
{
    for (const BoardDifference& difference : plan.comparison->differences) {
        const DifferenceTexts texts =
            differenceTexts(*plan.comparison, difference, plan.units, Tongue::User);
        const QString count = difference.count > 1
            ? QStringLiteral(" (%1)").arg(QLocale().toString(difference.count))
            : QString();
        const auto& places = difference.places;
        addRow({texts.kind + count, texts.layer, texts.tool,
                   places.empty() ? QString() : placeText(places[0], plan.units), texts.detail},
            plan.comparison->isOtherPanel ? std::vector<Place>() : places);
    }
}

void FindingsDock::addFinding(
    const DrillPlan& plan, const CheckFinding& finding, const QString& comment)
{
    const QString unit = measuresSizes(finding.check) ? ' ' + unitName(plan.units) : QString();
    const auto measure = [&](double value) {
        return measureText(finding.check, value, plan.units) + unit;
    };
    QTreeWidgetItem* item =
        addRow({checkText(finding.check), plan.layers[finding.layer].name,
                   findingTools(plan, finding), placeText(finding.places.front(), plan.units),
                   measure(finding.measured), measure(finding.limit), finding.id},
            finding.places);
    item->setToolTip(0, plainTip(comment));
    QFont font = item->font(FindingColumn);
    font.setBold(isHard(finding.check));
    font.setItalic(!comment.isEmpty() && !isHard(finding.check));
    item->setFont(FindingColumn, font);
}

} // namespace brox
