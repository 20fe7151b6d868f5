// SPDX-License-Identifier: MIT
#ifndef DATA_START_H
#define DATA_START_H

#include "data_file.h"

#include <QCoreApplication>
#include <QDialog>
#include <QLockFile>
#include <QStringList>
#include <memory>

namespace brox {

/** A data folder that a window works on: marked as in use, and looked after before its first
 *  use. */
class DataStart
{
    Q_DECLARE_TR_FUNCTIONS(DataStart)

public:
    explicit DataStart(const QString& dataDir);

    /** Puts the default models, bits and rules into a data folder where it has none; a file that is
     *  there is never touched.
     *
     * @param dataDir  made if missing
     * @throws HostError
     */
    static void fill(const QString& dataDir);

    /** Takes the folder's lock; if another workbench has it, asks the user.
     *
     * @return false if the user does not want to go on
     */
    bool lock();

    /** What killed saves had left, and what became of it: a line each. */
    const QStringList& notes() const { return mNotes; }

    /** Reports files that are broken, and puts the latest good backup or the defaults in their
     *  place if the user wants that. */
    void repair();

private:
    void clearUp();
    void offerBackup(const DataFile& file, const DataFile::Content& content);

    QString mDataDir;
    Backups mBackups;
    QLockFile mLock;
    QStringList mNotes;
};

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
