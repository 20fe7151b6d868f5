// SPDX-License-Identifier: MIT
#ifndef BROX_SIZE_CELL_H
#define BROX_SIZE_CELL_H

class QTableWidgetItem;

/** Cells that show a size: Qt::UserRole holds the size in host size units, the true value, and
 *  Qt::DisplayRole what the user reads, in the units of the step. A null cell is no cell. */

/** Shows the size that a cell holds as a number, which a delegate edits. */
void showSizeAsNumber(QTableWidgetItem* cell, int stepId);

/** Shows the size that a cell holds as the host's text. */
void showSizeAsText(QTableWidgetItem* cell, int stepId);

/** Gives a cell a size and shows it as the host's text. */
void setSizeAsText(QTableWidgetItem* cell, int size, int stepId);

/** The size that a cell holds; 0 if it holds none. */
int heldSize(const QTableWidgetItem* cell);

/** The size that a cell shows; 0 if it shows no number, or one that the host can't convert. */
int shownSize(const QTableWidgetItem* cell, int stepId);

#endif
