// SPDX-License-Identifier: MIT
#include "brox_looks.h"

#include "brox_step_data.h"

#include <QApplication>
#include <QHeaderView>
#include <QPalette>
#include <QResource>

#include <algorithm>
#include <cmath>
#include <limits>

BroxIcons::BroxIcons()
    : mFile(QStringLiteral("%1/all/brox_viewer_qrc.rcc")
                .arg(QString::fromLocal8Bit(zeb__sarn_get_epath())))
{
    if (!QResource::registerResource(mFile)) {
        zeb__log_write("ERROR", "Unable to load BROX resource file");
    }
}

BroxIcons::~BroxIcons()
{
    QResource::unregisterResource(mFile);
}

QColor textColor(const QWidget* widget, bool isGood)
{
    return isGood ? QApplication::palette(widget).color(QPalette::Text) : QColor(Qt::red);
}

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
    bool isSize = false;
    const int size = cell ? cell->data(Qt::UserRole).toInt(&isSize) : 0;
    double number = 0.0;
    if (isSize && brox__proxy_size_to_double(stepId, size, &number) == 0) {
        cell->setData(Qt::DisplayRole, number);
    }
}

int shownSize(const QTableWidgetItem* cell, int stepId)
{
    bool isNumber = false;
    const double number = cell ? cell->data(Qt::DisplayRole).toDouble(&isNumber) : 0.0;
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
