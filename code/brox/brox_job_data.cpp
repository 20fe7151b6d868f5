// SPDX-License-Identifier: MIT
#include "brox_job_data.h"

#include "brox_looks.h"
#include "brox_step_data.h"
#include "brox_viewer.h"
#include "qor_data.h"

namespace {

enum Column
{
    LayerColumn,
    TypeColumn,
    CountColumn,
    FhsColumn,
    MinTolColumn,
    MaxTolColumn,
    DhsColumn,
    DrillDesColumn,
    ColumnCount
};

constexpr int columnWidth = 70;
constexpr int nameSize = 65;
constexpr int textSize = 113; // one more than the host writes

QString nameOf(int id)
{
    char name[nameSize] = {};
    qor__data_id2name(id, name);
    return QString::fromLocal8Bit(name);
}

QString jobNameOf(int stepId)
{
    char name[nameSize] = {};
    qor__data_id2parent(stepId, 0, name);
    return QString::fromLocal8Bit(name);
}

/** The size that a cell holds; 0 if it holds none. */
int sizeOf(const QTableWidgetItem* cell)
{
    return cell ? cell->data(Qt::UserRole).toInt() : 0;
}

} // namespace

BroxJobData::BroxJobData(QWidget* parent, Qt::WindowFlags f)
    : QWidget(parent, f)
{
    ui.setupUi(this);
}

void BroxJobData::loadDrillData(int stepId, BroxViewer* viewer)
{
    mViewer = viewer;
    ui.jobNameLabel->setText(jobNameOf(stepId));
    ui.stepNameLabel->setText(nameOf(stepId));

    drill_size_info* infos = nullptr;
    int count = 0;
    if (brox__proxy_get_drill_sizes(stepId, &infos, &count) != 0) {
        return;
    }
    fillTable(stepId, infos, count);
    if (infos) {
        zeb__mem_free(infos, 1, "brox_job_data", __LINE__);
    }
    for (int column = 0; column < ColumnCount; ++column) {
        ui.jobDrillDataTableWidget->setColumnWidth(column, columnWidth);
    }
    connect(mViewer, &BroxViewer::dataChanged, this, &BroxJobData::broxViewer_dataChanged);
}

void BroxJobData::recalculate(int stepId)
{
    const int rowCount = ui.jobDrillDataTableWidget->rowCount();
    if (!mViewer || rowCount == 0) {
        return;
    }
    for (int row = 0; row < rowCount; ++row) {
        recalculateRow(stepId, row);
    }
    ui.recalcPushButton->setEnabled(false);
}

void BroxJobData::refreshUnits(int stepId)
{
    for (int row = 0; row < ui.jobDrillDataTableWidget->rowCount(); ++row) {
        for (int col = FhsColumn; col <= DhsColumn; ++col) {
            refreshCell(stepId, row, col);
        }
    }
}

void BroxJobData::on_recalcPushButton_clicked(bool)
{
    emit recalcRequired();
}

void BroxJobData::broxViewer_dataChanged(bool changed)
{
    ui.recalcPushButton->setEnabled(changed);
}

void BroxJobData::fillTable(int stepId, const drill_size_info* infos, int count)
{
    QTableWidget* table = ui.jobDrillDataTableWidget;
    table->reset();
    table->setRowCount(count);
    QString layerName;
    for (int row = 0; row < count; ++row) {
        const drill_size_info& info = infos[row];
        if (row == 0 || info.layer_id != infos[row - 1].layer_id) {
            layerName = nameOf(info.layer_id);
        }
        const auto drillType = DrillTypeManager::DrillType(info.drill_type);
        table->setItem(row, LayerColumn, new QTableWidgetItem(layerName));
        auto* type = new QTableWidgetItem(DrillTypeManager::instance()->drillTypeName(drillType));
        type->setData(Qt::UserRole, QVariant::fromValue(drillType));
        table->setItem(row, TypeColumn, type);
        auto* holes = new QTableWidgetItem;
        holes->setData(Qt::DisplayRole, info.count);
        holes->setData(Qt::UserRole, info.count);
        table->setItem(row, CountColumn, holes);
        setSize(stepId, row, FhsColumn, info.fhs);
        setSize(stepId, row, MinTolColumn, info.min_tol);
        setSize(stepId, row, MaxTolColumn, info.max_tol);
        table->setItem(row, DhsColumn, new QTableWidgetItem);
        table->setItem(row, DrillDesColumn, new QTableWidgetItem);
    }
}

void BroxJobData::setSize(int stepId, int row, int col, int size)
{
    auto* cell = new QTableWidgetItem;
    cell->setData(Qt::UserRole, size);
    ui.jobDrillDataTableWidget->setItem(row, col, cell);
    refreshCell(stepId, row, col);
}

void BroxJobData::refreshCell(int stepId, int row, int col)
{
    QTableWidgetItem* cell = ui.jobDrillDataTableWidget->item(row, col);
    if (!cell) {
        return;
    }
    bool isSize = false;
    const int size = cell->data(Qt::UserRole).toInt(&isSize);
    char text[textSize] = {};
    if (isSize && brox__proxy_size_to_str(stepId, size, text) == 0) {
        cell->setData(Qt::DisplayRole, QString::fromLocal8Bit(text));
    }
}

void BroxJobData::recalculateRow(int stepId, int row)
{
    QTableWidget* table = ui.jobDrillDataTableWidget;
    const auto drillType =
        table->item(row, TypeColumn)->data(Qt::UserRole).value<DrillTypeManager::DrillType>();
    int dhs = 0;
    QString drillDes;
    bool success = false;
    bool outOfTolRange = false;
    bool exactMatch = false;
    mViewer->calcDrillSize(drillType, sizeOf(table->item(row, FhsColumn)),
        sizeOf(table->item(row, MinTolColumn)), sizeOf(table->item(row, MaxTolColumn)), &dhs,
        &drillDes, &success, &outOfTolRange, &exactMatch);

    table->item(row, DhsColumn)->setData(Qt::UserRole, dhs);
    refreshCell(stepId, row, DhsColumn);
    QTableWidgetItem* desCell = table->item(row, DrillDesColumn);
    desCell->setForeground(textColor(table, !outOfTolRange));
    desCell->setText(drillDes);
}
