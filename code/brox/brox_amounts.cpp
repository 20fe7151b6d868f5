// SPDX-License-Identifier: MIT
#include "brox_amounts.h"

#include "brox_looks.h"
#include "zeb_gui.h"

#include <QScopedValueRollback>
#include <QScrollBar>

namespace {

enum Column
{
    AmountColumn,
    OversizedColumn,
    OsAmountColumn,
    ColumnCount
};

constexpr int columnWidth = 70;

} // namespace

BroxAmounts::BroxAmounts(QWidget* parent, Qt::WindowFlags f)
    : QWidget(parent, f)
{
    ui.setupUi(this);
    initTable();
}

void BroxAmounts::setStepId(int stpid)
{
    mStepId = stpid;
    if (auto* delegate = qobject_cast<DoubleDelegate*>(ui.amountsTableWidget->itemDelegate())) {
        delegate->setStepId(stpid);
    }
}

void BroxAmounts::setBroxModel(BroxModel* model)
{
    const QScopedValueRollback updating(mUpdating, true);
    ui.amountsTableWidget->clearContents();
    if (!model) {
        return;
    }
    for (int i = 0; i < model->holeTypeCount(); ++i) {
        auto drillType = DrillTypeManager::Undefined;
        int amount = 0;
        int oversized = 0;
        int osAmount = 0;
        model->holeType(i)->getAmounts(&drillType, &amount, &oversized, &osAmount);
        const auto row = mDrillTypeRows.constFind(drillType);
        if (row != mDrillTypeRows.constEnd()) {
            setCell(*row, AmountColumn, amount);
            setCell(*row, OversizedColumn, oversized);
            setCell(*row, OsAmountColumn, osAmount);
        }
    }
}

void BroxAmounts::refreshUnits(int stpid)
{
    // No guard here: a number that changes with the units goes through itemChanged like an edit.
    // The last report of a row has all its cells in the new units, so the model ends right.
    for (int row = 0; row < ui.amountsTableWidget->rowCount(); ++row) {
        for (int column = 0; column < ColumnCount; ++column) {
            refreshCell(stpid, row, column);
        }
    }
}

QScrollBar* BroxAmounts::amountsScrollBar() const
{
    return ui.amountsTableWidget->verticalScrollBar();
}

void BroxAmounts::setAmountsScrollValue(int value)
{
    if (QScrollBar* scrollBar = amountsScrollBar()) {
        scrollBar->setValue(value);
        ui.amountsTableWidget->viewport()->update();
    }
}

void BroxAmounts::on_amountsTableWidget_itemChanged(QTableWidgetItem* item)
{
    if (mUpdating || !item || item->row() < 0 || item->column() < 0) {
        return;
    }
    const int row = item->row();
    {
        const QScopedValueRollback updating(mUpdating, true);
        item->setData(Qt::UserRole, cellValue(row, item->column()));
    }
    const int amount = cellValue(row, AmountColumn);
    const int oversized = cellValue(row, OversizedColumn);
    const int osAmount = cellValue(row, OsAmountColumn);
    if (const QTableWidgetItem* header = ui.amountsTableWidget->verticalHeaderItem(row)) {
        emit amountsChanged(DrillTypeManager::instance()->drillTypeFromName(header->text()), amount,
            oversized, osAmount);
    }
}

void BroxAmounts::initTable()
{
    const QScopedValueRollback updating(mUpdating, true);
    QTableWidget* table = ui.amountsTableWidget;
    table->setItemDelegate(new DoubleDelegate(this));

    const DrillTypeManager* manager = DrillTypeManager::instance();
    table->setRowCount(manager->drillTypeCount());
    mDrillTypeRows.clear();
    for (int row = 0; row < table->rowCount(); ++row) {
        const auto drillType = DrillTypeManager::DrillType(row);
        table->setVerticalHeaderItem(row, new QTableWidgetItem(manager->drillTypeName(drillType)));
        mDrillTypeRows.insert(drillType, row);
    }
    for (int column = 0; column < ColumnCount; ++column) {
        table->setColumnWidth(column, columnWidth);
    }
}

void BroxAmounts::setCell(int row, int column, int value)
{
    QTableWidget* table = ui.amountsTableWidget;
    if (row < 0 || row >= table->rowCount() || column < 0 || column >= table->columnCount()) {
        return;
    }
    if (!table->item(row, column)) {
        table->setItem(row, column, new QTableWidgetItem(QString()));
    }
    table->item(row, column)->setData(Qt::UserRole, value);
    refreshCell(mStepId, row, column);
}

void BroxAmounts::refreshCell(int stpid, int row, int column)
{
    showSize(ui.amountsTableWidget->item(row, column), stpid);
}

int BroxAmounts::cellValue(int row, int column) const
{
    return shownSize(ui.amountsTableWidget->item(row, column), mStepId);
}
