// SPDX-License-Identifier: MIT
#ifndef BROX_SORTING_H
#define BROX_SORTING_H

#include <QHeaderView>
#include <QTableWidget>

/** Keeps a table from sorting for the life of this object, so that rows stay where they are put.
 *
 * Afterwards it is sorted once, by the column and order that it was sorted by before.
 */
class BroxSortingPause
{
public:
    explicit BroxSortingPause(QTableWidget* table)
        : mTable(table)
        , mColumn(table->horizontalHeader()->sortIndicatorSection())
        , mOrder(table->horizontalHeader()->sortIndicatorOrder())
        , mPaused(table->isSortingEnabled() && mColumn >= 0 && mColumn < table->columnCount())
    {
        if (mPaused) {
            table->setSortingEnabled(false);
        }
    }

    ~BroxSortingPause()
    {
        if (mPaused) {
            mTable->setSortingEnabled(true);
            mTable->sortItems(mColumn, mOrder);
        }
    }

    Q_DISABLE_COPY_MOVE(BroxSortingPause)

private:
    QTableWidget* mTable;
    int mColumn;
    Qt::SortOrder mOrder;
    bool mPaused;
};

#endif
