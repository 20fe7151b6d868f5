// SPDX-License-Identifier: MIT
#ifndef BROX_DIALOGS_H
#define BROX_DIALOGS_H

#include "zeb_utils.h"

#include <QApplication>
#include <QMessageBox>
#include <QString>

#include <functional>

/** An arrow for the life of this object, since the host may have a busy cursor up. */
class ArrowCursor
{
public:
    ArrowCursor() { QApplication::setOverrideCursor(Qt::ArrowCursor); }
    ~ArrowCursor() { QApplication::restoreOverrideCursor(); }
    Q_DISABLE_COPY_MOVE(ArrowCursor)
};

/** Shows a box under an arrow cursor, gives the button that the user chose, and deletes the box.
 *
 * The host may delete the box's parent meanwhile, and with it the box and the caller: that is a
 * Cancel, after which the caller touches nothing of its own.
 */
int execUnderArrow(QMessageBox* box);

/** Tells the user of a failure, and ends the busy cursor that the failed work has left. */
void showFailure(const char* message);

/** Runs a user's command, which may end in an exception. */
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

/** May the owner of data close? Asks the user if they are unsaved.
 *
 * A discard throws nothing away: it is the host, or Qt, that ends the owner, or does not.
 *
 * @param titleKey, textKey  keys of the question's texts
 * @param save               saves, and tells whether nothing is left unsaved
 * @return false also if the host has deleted the owner meanwhile
 */
bool confirmClose(QWidget* owner, const char* titleKey, const char* textKey, bool isUnsaved,
    const std::function<bool()>& save);

/** What a dialog for loading one of the module's files says. */
struct LoadDialogTexts
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
QString chooseFileToLoad(QWidget* parent, const LoadDialogTexts& texts, const QString& fileName,
    const QString& lastFile);

#endif
