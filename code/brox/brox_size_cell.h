// SPDX-License-Identifier: MIT
#ifndef BROX_SIZE_CELL_H
#define BROX_SIZE_CELL_H

class DoubleDelegate;
class QTableWidget;
class QTableWidgetItem;

/** Cells that show a size: Qt::UserRole holds the size in host size units, the true value, and
 *  Qt::DisplayRole what the user reads, in the units of the step. A null cell is no cell. */

/** Shows the size that a cell holds as the host's text. */
void showSizeAsText(QTableWidgetItem* cell, int stepId);

/** Gives a cell a size and shows it as the host's text. */
void setSizeAsText(QTableWidgetItem* cell, int size, int stepId);

/** The size that a cell holds; 0 if it holds none. */
int heldSize(const QTableWidgetItem* cell);

/** The cells of a table that shows sizes as numbers, which the host's delegate edits. */
class NumberCells
{
public:
    /** Gives a table its delegate. */
    void attach(QTableWidget* table);
    void setStepId(int stepId);

    /** Shows the size that a cell holds. */
    void refresh(int row, int column, int stepId) const;

    /** The size that a cell shows; 0 if it shows no number, or one that the host can't convert. */
    int shownSize(int row, int column) const;

private:
    QTableWidget* mTable = nullptr;
    DoubleDelegate* mDelegate = nullptr;
    int mStepId = -1;
};

#endif
