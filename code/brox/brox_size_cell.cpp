// SPDX-License-Identifier: MIT
#include "brox_size_cell.h"

#include "brox_step_data.h"

#include <QTableWidgetItem>

void showSize(QTableWidgetItem* cell, int stepId)
{
    if (!cell) {
        return;
    }
    bool isSize = false;
    const int size = cell->data(Qt::UserRole).toInt(&isSize);
    double number = 0.0;
    if (isSize && brox__proxy_size_to_double(stepId, size, &number) == 0) {
        cell->setData(Qt::DisplayRole, number);
    }
}

int shownSize(const QTableWidgetItem* cell, int stepId)
{
    if (!cell) {
        return 0;
    }
    bool isNumber = false;
    const double number = cell->data(Qt::DisplayRole).toDouble(&isNumber);
    int size = 0;
    return isNumber && brox__proxy_double_to_size(stepId, number, &size) == 0 ? size : 0;
}
