// SPDX-License-Identifier: MIT
#include "brox_tester.h"

#include "brox_looks.h"
#include "zeb_gui.h"

#include <QScrollBar>

namespace {

enum Column
{
    FhsColumn,
    MinTolColumn,
    MaxTolColumn,
    DhsColumn,
    DrillDesColumn,
    ColumnCount
};

constexpr int columnWidth = 60;

QTableWidgetItem* newReadOnlyCell()
{
    auto* cell = new QTableWidgetItem;
    cell->setFlags(cell->flags() & ~Qt::ItemIsEditable);
    return cell;
}

} // namespace

BroxTester::BroxTester(QWidget* parent, Qt::WindowFlags f)
    : QWidget(parent, f)
{
    ui.setupUi(this);
    initTable();
}

void BroxTester::setStepId(int stepId)
{
    mStepId = stepId;
    if (auto* delegate = qobject_cast<DoubleDelegate*>(ui.testerTableWidget->itemDelegate())) {
        delegate->setStepId(stepId);
    }
}

void BroxTester::retest()
{
    for (int row = 0; row < ui.testerTableWidget->rowCount(); ++row) {
        const int fhs = cellValue(row, FhsColumn);
        const int minTol = cellValue(row, MinTolColumn);
        const int maxTol = cellValue(row, MaxTolColumn);
        if (fhs != 0 || minTol != 0 || maxTol != 0) {
            announceRow(row, fhs, minTol, maxTol);
        }
    }
}

void BroxTester::setTestResult(int stepId, DrillTypeManager::DrillType type, int dhs,
    const QString& drillDes, bool outOfTolRange, bool)
{
    if (type == DrillTypeManager::Undefined) {
        return;
    }
    const int row = findRow(type);
    QTableWidgetItem* dhsCell = ui.testerTableWidget->item(row, DhsColumn);
    if (!dhsCell) {
        return;
    }
    dhsCell->setData(Qt::UserRole, dhs);
    refreshCell(stepId, row, DhsColumn);

    if (QTableWidgetItem* desCell = ui.testerTableWidget->item(row, DrillDesColumn)) {
        desCell->setForeground(textColor(ui.testerTableWidget, !outOfTolRange));
        desCell->setText(drillDes);
    }
}

void BroxTester::refreshUnits(int stepId)
{
    for (int row = 0; row < ui.testerTableWidget->rowCount(); ++row) {
        for (int col = FhsColumn; col <= DhsColumn; ++col) {
            refreshCell(stepId, row, col);
        }
    }
}

QScrollBar* BroxTester::testerScrollBar() const
{
    return ui.testerTableWidget->verticalScrollBar();
}

void BroxTester::setTesterScrollValue(int value)
{
    if (QScrollBar* scrollBar = testerScrollBar()) {
        scrollBar->setValue(value);
        ui.testerTableWidget->viewport()->update();
    }
}

void BroxTester::on_testerTableWidget_itemChanged(QTableWidgetItem* item)
{
    if (!item || item->row() < 0 || item->column() < FhsColumn || item->column() > MaxTolColumn) {
        return;
    }
    const int row = item->row();
    item->setData(Qt::UserRole, cellValue(row, item->column()));

    const int fhs = cellValue(row, FhsColumn);
    const int minTol = cellValue(row, MinTolColumn);
    const int maxTol = cellValue(row, MaxTolColumn);
    const QTableWidgetItem* fhsCell = ui.testerTableWidget->item(row, FhsColumn);
    if (fhs == 0 && fhsCell && fhsCell->text().isEmpty()) {
        ui.testerTableWidget->item(row, DhsColumn)->setText(QString());
        ui.testerTableWidget->item(row, DrillDesColumn)->setText(QString());
        return;
    }
    announceRow(row, fhs, minTol, maxTol);
}

void BroxTester::initTable()
{
    QTableWidget* table = ui.testerTableWidget;
    table->setItemDelegate(new DoubleDelegate(this));

    const DrillTypeManager* manager = DrillTypeManager::instance();
    table->setRowCount(manager->drillTypeCount());
    for (int row = 0; row < table->rowCount(); ++row) {
        // The header is hidden; its text is the row's key.
        table->setVerticalHeaderItem(
            row, new QTableWidgetItem(manager->drillTypeName(DrillTypeManager::DrillType(row))));
        table->setItem(row, DhsColumn, newReadOnlyCell());
        table->setItem(row, DrillDesColumn, newReadOnlyCell());
    }
    for (int column = 0; column < ColumnCount; ++column) {
        table->setColumnWidth(column, columnWidth);
    }
}

void BroxTester::announceRow(int row, int fhs, int minTol, int maxTol)
{
    if (const QTableWidgetItem* header = ui.testerTableWidget->verticalHeaderItem(row)) {
        emit testValuesChanged(
            DrillTypeManager::instance()->drillTypeFromName(header->text()), fhs, minTol, maxTol);
    }
}

int BroxTester::findRow(DrillTypeManager::DrillType type) const
{
    const QString name = DrillTypeManager::instance()->drillTypeName(type);
    for (int row = 0; row < ui.testerTableWidget->rowCount(); ++row) {
        const QTableWidgetItem* header = ui.testerTableWidget->verticalHeaderItem(row);
        if (header && header->text() == name) {
            return row;
        }
    }
    return -1;
}

void BroxTester::refreshCell(int stepId, int row, int col)
{
    showSize(ui.testerTableWidget->item(row, col), stepId);
}

int BroxTester::cellValue(int row, int col) const
{
    return shownSize(ui.testerTableWidget->item(row, col), mStepId);
}
