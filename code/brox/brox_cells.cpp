// SPDX-License-Identifier: MIT
#include "brox_cells.h"

#include "brox_step_data.h"

#include <QHeaderView>

#include <algorithm>
#include <cmath>
#include <limits>

int sizeFrom(double units)
{
    if (std::isnan(units)) {
        return 0;
    }
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return int(std::clamp(units, lowest, highest));
}

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

BroxSortingPause::BroxSortingPause(QTableWidget* table)
    : mTable(table)
    , mColumn(table->horizontalHeader()->sortIndicatorSection())
    , mOrder(table->horizontalHeader()->sortIndicatorOrder())
    , mPaused(table->isSortingEnabled() && mColumn >= 0 && mColumn < table->columnCount())
{
    if (mPaused) {
        table->setSortingEnabled(false);
    }
}

BroxSortingPause::~BroxSortingPause()
{
    if (mPaused) {
        mTable->setSortingEnabled(true);
        mTable->sortItems(mColumn, mOrder);
    }
}
