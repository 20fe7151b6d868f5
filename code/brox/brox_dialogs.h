// SPDX-License-Identifier: MIT
#ifndef BROX_DIALOGS_H
#define BROX_DIALOGS_H

#include "zeb_utils.h"

#include <QMessageBox>
#include <QString>

/** Shows a box under an arrow cursor, since the host may have a busy cursor up; gives the button
 *  that the user chose, and deletes the box.
 *
 * The host may delete the box's parent meanwhile, and with it the box and the caller: that is a
 * Cancel, after which the caller touches nothing of its own.
 */
int execUnderArrow(QMessageBox* box);

/** Tells the user of a failure, and ends the busy cursor that the failed work has left. */
void showFailure(const char* message);

/** Runs work that may end in an exception, and shows its failure. */
template <typename Work>
void guarded(Work work)
{
    try {
        work();
    } catch (const InternalException& exception) {
        showFailure(exception.getMessage());
    } catch (...) {
        showFailure(InternalException::getDefaultMsg());
    }
}

/** Enters what stands in an open cell of a table.
 *
 * The cell's delegate does so when its editor loses the focus, which a tool button or shortcut does
 * not take: the part takes it. Without an open cell the focus stays where it is.
 */
void enterOpenCell(QWidget* part);

/** Runs a user's command, guarded; what stands in an open cell is entered first. */
template <typename Work>
void command(QWidget* part, Work work)
{
    guarded([&] {
        enterOpenCell(part);
        work();
    });
}

/** Asks what is to become of unsaved data; gives Save, Discard or Cancel. */
int askUnsaved(QWidget* parent, const QString& title, const QString& text);

/** What a dialog for loading one of the module's files says. */
struct BroxLoadDialogTexts
{
    QString name; ///< plain name of what is chosen, for the host's dialog
    QString fileKind;
    QString allFiles;
    QString title;
};

/** Lets the user choose a file to load; gives its absolute path, or a null text.
 *
 * @param fileName  what the file is called by default
 * @param lastFile  the file that was last written, where the dialog then starts; may be empty
 * @return null also if the host has deleted the parent meanwhile
 */
QString chooseFileToLoad(QWidget* parent, const BroxLoadDialogTexts& texts, const QString& fileName,
    const QString& lastFile);

#endif
