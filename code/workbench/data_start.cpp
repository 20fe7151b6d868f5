// SPDX-License-Identifier: MIT
#include "data_start.h"

#include "question.h"

#include <QDir>
#include <QLocale>

namespace brox {

DataStart::DataStart(const QString& dataDir)
    : mDataDir(dataDir)
    , mBackups(dataDir)
    , mLock(QDir(dataDir).absoluteFilePath("workbench.lock"))
{
    mLock.setStaleLockTime(0); // it goes with its process, however long that lives
}

bool DataStart::lock()
{
    if (mLock.tryLock(0)) {
        clearUp();
        return true;
    }
    if (mLock.error() != QLockFile::LockFailedError) {
        return true; // a folder that can't be written in needs no lock
    }
    qint64 process = 0;
    QString host;
    QString program;
    mLock.getLockInfo(&process, &host, &program);
    return ask(tr("Another workbench is open on %1 (process %2 on %3).")
                   .arg(mDataDir)
                   .arg(process)
                   .arg(host),
               tr("Neither sees what the other changes until it opens a step. A save over what the "
                  "other has saved is asked about first."),
               {tr("Open"), tr("Quit")})
        == 0;
}

/** Takes away what saves have left that were killed: names with six letters behind. */
void DataStart::clearUp() const
{
    for (const char* folder : {"brox", "backups"}) {
        QDir dir(QDir(mDataDir).filePath(folder));
        for (const QString& name : dir.entryList({"brox*.xml.??????"}, QDir::Files)) {
            dir.remove(name);
        }
    }
}

void DataStart::repair()
{
    for (DataFile::Kind kind : DataFile::kinds) {
        const DataFile file(mDataDir, kind);
        const DataFile::Content content = file.read();
        if (!content.fault.isEmpty()) {
            offerBackup(file, content);
        }
    }
}

void DataStart::offerBackup(const DataFile& file, const DataFile::Content& content)
{
    const QString text = tr("%1 can't be read: %2").arg(file.path(), content.fault);
    const auto backup = mBackups.newestGood(file.kind());
    if (!backup) {
        ask(text,
            tr("There is no backup of it. It is not touched until you save, and then you are "
               "asked."),
            {tr("Close")});
        return;
    }
    const QString time = QLocale().toString(backup->time.toLocalTime(), QLocale::ShortFormat);
    if (ask(text,
            tr("Restore: the backup of %1 takes its place, and what stands there goes to the "
               "backups.\nLeave: it is not touched until you save, and then you are asked.")
                .arg(time),
            {tr("Restore"), tr("Leave")})
        != 0) {
        return;
    }
    const QString error = restore(file, content, backup->bytes);
    if (!error.isEmpty()) {
        ask(tr("%1 can't be restored: %2").arg(file.path(), error), {}, {tr("Close")});
    }
}

/** Gives what went wrong, or an empty text. */
QString DataStart::restore(
    const DataFile& file, const DataFile::Content& content, const QByteArray& bytes)
{
    if (!content.bytes.isNull()) {
        const QString error = mBackups.keep(file.kind(), content.bytes);
        if (!error.isEmpty()) {
            return error;
        }
    } else if (mBackups.take(file).isNull()) {
        return tr("it can't be moved to the backups");
    }
    return file.write(bytes);
}

} // namespace brox
