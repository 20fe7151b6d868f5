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

/** Shows a box under an arrow cursor and gives the button that the user chose. */
int execUnderArrow(QMessageBox& box);

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

/** May data's owner close? Asks the user if there are unsaved data.
 *
 * A discard throws nothing away: it is the host, or Qt, that ends the owner, or does not.
 *
 * @param titleKey, textKey  keys of the question's texts
 * @param dataChanged        read again after save: a save that did not come about leaves it true
 */
bool confirmClose(QWidget* parent, const char* titleKey, const char* textKey,
    const bool& dataChanged, const std::function<void()>& save);

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
 */
QString chooseFileToLoad(QWidget* parent, const LoadDialogTexts& texts, const QString& fileName,
    const QString& lastFile);

#endif
