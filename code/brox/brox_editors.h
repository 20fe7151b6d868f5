// SPDX-License-Identifier: MIT
#ifndef BROX_EDITORS_H
#define BROX_EDITORS_H

#include "brox_dialogs.h"

#include <functional>

class QTableWidget;
class QWidget;

/** What a user has typed into a cell and not confirmed.
 *
 * A tool button, a menu or a shortcut takes no focus, so a table's in-place editor stays open
 * while the command runs. What stands in it counts as entered before any command does anything,
 * and before the question whether a window may close is answered.
 */

/** Enters what stands in the open editors of a viewer and of its window of bits.
 *
 * @param part  any widget of the two
 * @return false if it was refused; the user knows it, and what was to be done is to be left
 */
bool enterOpenEditors(QWidget* part);

/** Enters numbers that were typed below a widget for other units than the cells now have.
 *
 * @param scale  gives new units to one old unit; asked only for a number that was typed
 */
void enterTypedNumbers(QWidget* part, const std::function<double()>& scale);

bool hasOpenEditor(const QTableWidget* table);

/** Runs a user's command after what the user has typed, and shows its failure. */
template <typename Work>
void command(QWidget* part, Work work)
{
    guarded([&] {
        if (enterOpenEditors(part)) {
            work();
        }
    });
}

/** What is entered into a table, while its owner judges it. */
class Entry
{
public:
    explicit Entry(QTableWidget* table);

    /** Whether enterOpenEditors() made the editor enter it, and tells of a refusal. */
    bool isAsked() const;

    /** Gives the table the focus back; what the user did instead of a Return is not done. */
    void refuse() const;

private:
    QTableWidget* mTable;
    bool mIsAsked;
    bool mIsMousePressed; ///< the press took the focus, and has yet to come to its widget
};

#endif
