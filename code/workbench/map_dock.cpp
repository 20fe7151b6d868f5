// SPDX-License-Identifier: MIT
#include "map_dock.h"

#include "host_session.h"
#include "live_plan.h"
#include "map_shapes.h"
#include "messages.h"
#include "plan_text.h"

#include <QHeaderView>
#include <QMenu>
#include <QPainter>
#include <QSignalBlocker>
#include <QTableWidget>
#include <algorithm>

namespace brox {

namespace {

constexpr int rowRole = Qt::UserRole;
constexpr int symbolSize = 16;

QString stepKey(const DrillPlan& plan)
{
    return plan.board->job + '\n' + plan.boardStep().name;
}

/** A tool's symbol as the map has it. */
QIcon symbolIcon(size_t tool, const QPalette& palette)
{
    constexpr double radius = 0.38 * symbolSize;
    QPixmap picture(symbolSize, symbolSize);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(toolColour(tool, palette.color(QPalette::Base).lightness() < 128), 1.5));
    painter.drawPath(
        QTransform(radius, 0, 0, radius, symbolSize / 2.0, symbolSize / 2.0).map(toolSymbol(tool)));
    return picture;
}

} // namespace

MapDock::MapDock(HostSession& session, LivePlan& plan, QWidget* parent)
    : QDockWidget(parent)
    , mSession(session)
    , mLive(plan)
{
    ui.setupUi(this);
    ui.toolTreeWidget->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    ui.toolTreeWidget->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    connect(ui.fitPushButton, &QPushButton::clicked, ui.mapWidget, &MapWidget::fit);
    connect(ui.toolTreeWidget, &QTreeWidget::itemChanged, this, &MapDock::followTree);
    connect(ui.toolTreeWidget, &QTreeWidget::currentItemChanged, this,
        [this](const QTreeWidgetItem* item) {
            if (const QVariant row = item ? item->data(0, rowRole) : QVariant(); row.isValid()) {
                selectRow(row.toInt());
            }
        });
    ui.toolTreeWidget->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(ui.toolTreeWidget, &QWidget::customContextMenuRequested, this, &MapDock::offerSizes);
    connect(ui.mapWidget, &MapWidget::picked, this, &MapDock::describeHole);
    connect(ui.mapWidget, &MapWidget::missed, this, [this] { ui.holeLabel->clear(); });
    connect(&mLive, &LivePlan::changed, this, &MapDock::followPlan);
    connect(this, &QDockWidget::visibilityChanged, this, [this] {
        if (!isVisible() || !mLive.current()) { // of which all that follow it hear
            followPlan();
        }
    });
}

void MapDock::showPlace(Place place)
{
    show();
    ui.mapWidget->showPlace(place);
}

/** On a layer's entry. */
void MapDock::offerSizes(const QPoint& at)
{
    const QTreeWidgetItem* item = ui.toolTreeWidget->itemAt(at);
    if (!item || item->parent() || !mPlan) {
        return;
    }
    const QString name = item->text(0);
    const auto layer = std::ranges::find(mPlan->layers, name, &StepLayer::name);
    if (layer == mPlan->layers.end()) {
        return;
    }
    QMenu menu;
    menu.setObjectName("layerSizesMenu");
    QAction* drilled = menu.addAction(tr("These Are &Drill Sizes"));
    drilled->setCheckable(true);
    drilled->setChecked(layer->hasDrillSizes);
    const bool areDrillSizes = !layer->hasDrillSizes;
    if (menu.exec(ui.toolTreeWidget->viewport()->mapToGlobal(at))) {
        emit sizesChosen(name, areDrillSizes);
    }
}

void MapDock::changeEvent(QEvent* event)
{
    QDockWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        QMetaObject::invokeMethod(this, &MapDock::followPlan, Qt::QueuedConnection); // colours
    }
}

/** Shows the step in front; without a step, or while nobody sees the dock, nothing. */
void MapDock::followPlan()
{
    const DrillPlan* plan = mLive.plan();
    if (!plan || !isVisible()) {
        return clear(mLive.fault());
    }
    try {
        auto* table =
            mSession.viewer(plan->step)->findChild<QTableWidget*>("jobDrillDataTableWidget");
        if (table != mTable) {
            followViewer(table);
        }
        showPlan(*plan);
        followTable();
    } catch (const std::exception& error) {
        clear(QString::fromUtf8(error.what()));
    }
}

void MapDock::selectRow(int row)
{
    if (mTable && row < mTable->rowCount()) {
        mTable->setCurrentCell(row, 0);
        mTable->selectRow(row);
    }
}

void MapDock::followViewer(QTableWidget* table)
{
    if (mTable) {
        mTable->disconnect(this);
    }
    mTable = table;
    if (table) {
        connect(table, &QTableWidget::itemSelectionChanged, this, &MapDock::followTable);
    }
}

void MapDock::clear(const QString& reason)
{
    mPlan.reset();
    ui.toolTreeWidget->clear();
    ui.holeLabel->setText(reason);
    ui.mapWidget->setScene(nullptr, false);
}

void MapDock::showPlan(DrillPlan plan)
{
    const bool isSame =
        mPlan && stepKey(*mPlan) == stepKey(plan) && mPlan->rows.size() == plan.rows.size();
    QSet<size_t> off;
    for (QTreeWidgetItemIterator i(ui.toolTreeWidget); isSame && *i; ++i) {
        const QVariant row = (*i)->data(0, rowRole);
        if (row.isValid() && (*i)->checkState(0) == Qt::Unchecked) {
            off << row.value<size_t>();
        }
    }
    auto scene = std::make_unique<MapScene>(plan);
    mPlan = std::move(plan);
    QString hint = tr("Click a hole to see what drills it.");
    if (alarmingRows(*mPlan) > 0) {
        hint += ' ' + tr("Holes to check have amber rings, findings red ones.");
    }
    ui.holeLabel->setText(hint);
    fillTree(*scene, off);
    ui.mapWidget->setScene(std::move(scene), isSame);
    for (const size_t row : off) {
        ui.mapWidget->setShown(row, false);
    }
}

void MapDock::fillTree(const MapScene& scene, const QSet<size_t>& off)
{
    const QSignalBlocker quiet(ui.toolTreeWidget);
    ui.toolTreeWidget->clear();
    ui.toolTreeWidget->headerItem()->setText(2, tr("DHS [%1]").arg(unitName(mPlan->units)));
    std::vector<QTreeWidgetItem*> layers(mPlan->layers.size());
    for (size_t i = 0; i < mPlan->rows.size(); ++i) {
        const PlanRow& row = mPlan->rows[i];
        QTreeWidgetItem*& layer = layers[row.layer];
        if (!layer) {
            layer = new QTreeWidgetItem(ui.toolTreeWidget, {mPlan->layers[row.layer].name});
            layer->setFlags(layer->flags() | Qt::ItemIsUserCheckable | Qt::ItemIsAutoTristate);
            layer->setCheckState(0, Qt::Checked);
            layer->setExpanded(true);
        }
        auto* item = new QTreeWidgetItem(layer,
            {spoken(typeWord(row.type, row.isSlot)), row.bit,
                row.drillSize ? sizeText(*row.drillSize, mPlan->units) : QString(),
                QLocale().toString(row.count)});
        item->setData(0, rowRole, QVariant::fromValue(i));
        item->setIcon(0, symbolIcon(scene.toolOf(i), palette()));
        item->setToolTip(0, plainTip(flagTexts(row).join('\n')));
        item->setCheckState(0, off.contains(i) ? Qt::Unchecked : Qt::Checked);
        item->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
        item->setTextAlignment(3, Qt::AlignRight | Qt::AlignVCenter);
    }
}

void MapDock::followTree(QTreeWidgetItem* item)
{
    const QVariant row = item->data(0, rowRole);
    if (row.isValid()) {
        ui.mapWidget->setShown(row.value<size_t>(), item->checkState(0) == Qt::Checked);
    }
}

void MapDock::followTable()
{
    QSet<size_t> rows;
    if (mTable) {
        for (const QModelIndex& index : mTable->selectionModel()->selectedIndexes()) {
            rows << size_t(index.row());
        }
    }
    ui.mapWidget->highlight(rows);
}

void MapDock::describeHole(size_t row, Place place)
{
    selectRow(int(row));
    ui.holeLabel->setText(
        tr("%1\nat X %2, Y %3")
            .arg(rowText(mPlan->rows[row]), placeText(place.x), placeText(place.y)));
}

/** A coordinate in millimetres or inches. */
QString MapDock::placeText(Size size) const
{
    const bool isInch = mPlan->units == Units::Inch;
    return QStringLiteral("%1 %2")
        .arg(double(size) / (isInch ? sizePerInch : sizePerMillimetre), 0, 'f', isInch ? 4 : 3)
        .arg(isInch ? tr("inch") : tr("mm"));
}

QString MapDock::rowText(const PlanRow& row) const
{
    const auto size = [this](Size value) { return sizeText(value, mPlan->units); };
    QStringList parts{QStringLiteral("%1, %2").arg(
                          mPlan->layers[row.layer].name, spoken(typeWord(row.type, row.isSlot))),
        tr("finished %1 +%2 -%3 %4")
            .arg(size(row.finishedSize), size(row.tolerance.plus), size(row.tolerance.minus),
                unitName(mPlan->units)),
        row.drillSize ? tr("drill %1 %2").arg(size(*row.drillSize), unitName(mPlan->units))
                      : tr("no drill size"),
        row.bit.isEmpty() ? tr("no bit") : tr("bit %1").arg(row.bit)};
    for (const PlanFlag flag : row.flags) {
        parts << spoken(flagWord(flag));
    }
    if (row.replaced) {
        parts << tr("instead of %1").arg(row.replaced->bit);
    }
    return parts.join("; ");
}

} // namespace brox
