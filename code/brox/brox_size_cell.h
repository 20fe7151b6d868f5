// SPDX-License-Identifier: MIT
#ifndef BROX_SIZE_CELL_H
#define BROX_SIZE_CELL_H

class QTableWidgetItem;

/** Cells that the host's delegate edits: Qt::UserRole holds a size in host size units, the true
 *  value, and Qt::DisplayRole the number that the user reads, in the units of the step. A null
 *  cell is no cell. */

/** Shows the size that a cell holds; leaves the cell alone if it holds none. */
void showSize(QTableWidgetItem* cell, int stepId);

/** The size that a cell shows; 0 if it shows no number, or one that the host can't convert. */
int shownSize(const QTableWidgetItem* cell, int stepId);

#endif
