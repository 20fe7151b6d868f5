// SPDX-License-Identifier: MIT
#ifndef DATA_START_H
#define DATA_START_H

#include "backups.h"
#include "data_file.h"

#include <QCoreApplication>
#include <QLockFile>
#include <QString>

namespace brox {

/** A data folder that a window works on: told to be in use, and looked after before its first
 *  use. */
class DataStart
{
    Q_DECLARE_TR_FUNCTIONS(DataStart)

public:
    explicit DataStart(const QString& dataDir);

    /** Takes the folder's lock; if another workbench has it, asks the user.
     *
     * @return false if the user does not want to go on
     */
    bool lock();

    /** Tells of files that are broken, and puts back the latest good backup if the user wants it.
     */
    void repair();

private:
    void clearUp() const;
    void offerBackup(const DataFile& file, const DataFile::Content& content);
    QString restore(
        const DataFile& file, const DataFile::Content& content, const QByteArray& bytes);

    QString mDataDir;
    Backups mBackups;
    QLockFile mLock;
};

} // namespace brox

#endif
