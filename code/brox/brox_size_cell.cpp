// SPDX-License-Identifier: MIT
#include "brox_size_cell.h"

#include "brox_step_data.h"
#include "zeb_gui.h"

#include <QTableWidget>

namespace {

constexpr int textLength = 112; // the most that the host writes

bool readSize(const QTableWidgetItem* cell, int* size)
{
    bool isSize = false;
    if (cell) {
        *size = cell->data(Qt::UserRole).toInt(&isSize);
    }
    return isSize;
}

void showText(QTableWidgetItem* cell, int size, int stepId)
{
    char text[textLength + 1] = {};
    if (brox__proxy_size_to_str(stepId, size, text) == 0) {
        cell->setData(Qt::DisplayRole, QString::fromLocal8Bit(text));
    }
}

} // namespace

void showSizeAsText(QTableWidgetItem* cell, int stepId)
{
    int size = 0;
    if (readSize(cell, &size)) {
        showText(cell, size, stepId);
    }
}

void setSizeAsText(QTableWidgetItem* cell, int size, int stepId)
{
    cell->setData(Qt::UserRole, size);
    showText(cell, size, stepId);
}

int heldSize(const QTableWidgetItem* cell)
{
    int size = 0;
    readSize(cell, &size);
    return size;
}

void NumberCells::attach(QTableWidget* table)
{
    mTable = table;
    mDelegate = new DoubleDelegate(table->parent());
    table->setItemDelegate(mDelegate);
}

void NumberCells::setStepId(int stepId)
{
    mStepId = stepId;
    mDelegate->setStepId(stepId);
}

void NumberCells::refresh(int row, int column, int stepId) const
{
    QTableWidgetItem* cell = mTable->item(row, column);
    int size = 0;
    double number = 0.0;
    if (readSize(cell, &size) && brox__proxy_size_to_double(stepId, size, &number) == 0) {
        cell->setData(Qt::DisplayRole, number);
    }
}

int NumberCells::shownSize(int row, int column) const
{
    const QTableWidgetItem* cell = mTable->item(row, column);
    if (!cell) {
        return 0;
    }
    bool isNumber = false;
    const double number = cell->data(Qt::DisplayRole).toDouble(&isNumber);
    int size = 0;
    return isNumber && brox__proxy_double_to_size(mStepId, number, &size) == 0 ? size : 0;
}
