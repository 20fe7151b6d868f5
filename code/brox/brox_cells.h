// SPDX-License-Identifier: MIT
#ifndef BROX_CELLS_H
#define BROX_CELLS_H

#include <QTableWidget>

/** A number of host size units as a size, its fraction cut off.
 *
 * What is no number is 0, and what no size can hold is the nearest size there is: such a value
 * stands out in a table, which a wrapped one might not.
 */
int sizeFrom(double units);

/** Cells that the host's delegate edits: Qt::UserRole holds a size in host size units, the true
 *  value, and Qt::DisplayRole the number that the user reads, in the units of the step. A null
 *  cell is no cell. */

/** Shows the size that a cell holds; leaves the cell alone if it holds none. */
void showSize(QTableWidgetItem* cell, int stepId);

/** The size that a cell shows; 0 if it shows no number, or one that the host can't convert. */
int shownSize(const QTableWidgetItem* cell, int stepId);

/** Keeps a table from sorting for the life of this object, so that rows stay where they are put.
 *
 * Afterwards it is sorted once, by the column and order that it was sorted by before.
 */
class BroxSortingPause
{
public:
    explicit BroxSortingPause(QTableWidget* table);
    ~BroxSortingPause();
    Q_DISABLE_COPY_MOVE(BroxSortingPause)

private:
    QTableWidget* mTable;
    int mColumn;
    Qt::SortOrder mOrder;
    bool mPaused;
};

#endif
