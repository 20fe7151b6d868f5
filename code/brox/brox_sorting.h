// SPDX-License-Identifier: MIT
#ifndef BROX_SORTING_H
#define BROX_SORTING_H

#include <QHeaderView>
#include <QTableWidget>

/** Keeps a table from sorting for the life of this object, so that rows stay where they are put.
 *
 * Afterwards it is sorted once, by the column and order of its sort indicator.
 */
class SortingPause
{
public:
    explicit SortingPause(QTableWidget* table)
        : mTable(table)
    {
        const int section = table->horizontalHeader()->sortIndicatorSection();
        mPaused = table->isSortingEnabled() && section >= 0 && section < table->columnCount();
        if (mPaused) {
            table->setSortingEnabled(false);
        }
    }

    ~SortingPause()
    {
        if (mPaused) {
            mTable->setSortingEnabled(true);
        }
    }

    Q_DISABLE_COPY_MOVE(SortingPause)

private:
    QTableWidget* mTable;
    bool mPaused;
};

#endif
