// SPDX-License-Identifier: MIT
#ifndef RESTORE_DIALOG_H
#define RESTORE_DIALOG_H

#include "backups.h"

#include <QDialog>
#include <memory>

namespace brox {

namespace Ui {
class RestoreDialog;
}

/** The backups of a data folder's files and what a new folder has; one of them can take its file's
 *  place. Viewers that are open have read the file before and know nothing of it. */
class RestoreDialog : public QDialog
{
    Q_OBJECT

public:
    explicit RestoreDialog(const QString& dataDir, QWidget* parent = nullptr);
    ~RestoreDialog() override;

    /** What the user chose. */
    DataFile::Kind kind() const { return mKind; }

    /** Restores what is selected; if that fails the dialog says why and stays. */
    void accept() override;

private:
    void list(DataFile::Kind kind, const QString& title);

    std::unique_ptr<Ui::RestoreDialog> mUi;
    QString mDataDir;
    Backups mBackups;
    DataFile::Kind mKind = DataFile::Kind::Models;
};

} // namespace brox

#endif
