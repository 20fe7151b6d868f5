// SPDX-License-Identifier: MIT
#ifndef BROX_LOOKS_H
#define BROX_LOOKS_H

/** How the module's widgets look: the host's texts and icons, colours, and cells that hold sizes.
 */

#include "zeb_lowlevel.h"

#include <QColor>
#include <QString>
#include <QTableWidget>

/** A text key of the host, a string literal: the module key names the source, the number finds
 *  the text again, and the default text stands where there is no translation. */
#define BROX_KEY(module, text, number) "@$@#" module "@$@#GENERAL@$@#" number "@$@#" text

/** The text of a key in the user's language. */
inline QString broxText(const char* key)
{
    return QString::fromLocal8Bit(zeb__nls_nlst(key));
}

// The texts of each source: the form compiler writes its calls so, with the number from the comment
// of a form's string.
#define BROX_VIEWER_TEXT(text, number) broxText(BROX_KEY("brox_viewer", text, number))
#define BROX_MODEL_MANAGER_TEXT(text, number) broxText(BROX_KEY("brox_model_manager", text, number))
#define BROX_AMOUNTS_TEXT(text, number) broxText(BROX_KEY("brox_amounts", text, number))
#define BROX_TESTER_TEXT(text, number) broxText(BROX_KEY("brox_tester", text, number))
#define BROX_JOB_DATA_TEXT(text, number) broxText(BROX_KEY("brox_job_data", text, number))
#define BROX_DHS_TEXT(text, number) broxText(BROX_KEY("brox_dhs", text, number))
#define BROX_BITS_TABLE_TEXT(text, number) broxText(BROX_KEY("brox_bits_table", text, number))

/** The module's icons, which are at hand as long as an object of this class lives.
 *
 * They lie in a resource file of the host's; without it the log says so and there are none.
 */
class BroxIcons
{
public:
    BroxIcons();
    ~BroxIcons();
    Q_DISABLE_COPY_MOVE(BroxIcons)

private:
    QString mFile;
};

/** The colour of a widget's text: red if there is something wrong with it. */
QColor textColor(const QWidget* widget, bool isGood);

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
