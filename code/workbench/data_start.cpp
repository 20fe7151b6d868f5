// SPDX-License-Identifier: MIT
#include "data_start.h"

#include "host_session.h"
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

void DataStart::fill(const QString& dataDir)
{
    for (const DataFile::Kind kind : DataFile::kinds) {
        const QString path = DataFile(dataDir, kind).path();
        const qsizetype length = QFile::encodeName(path).size();
        if (length > DataFile::pathLimit) {
            throw HostError(tr("%1: the path is too long: %2 bytes of at most %3")
                                .arg(path)
                                .arg(length)
                                .arg(DataFile::pathLimit));
        }
    }
    if (!QDir().mkpath(dataDir)) {
        throw HostError(tr("%1: the folder can't be made").arg(dataDir));
    }
    const std::unique_ptr<FileLock> lock = Backups(dataDir).lock(); // another may start as well
    for (const DataFile::Kind kind : DataFile::kinds) {
        const DataFile file(dataDir, kind);
        const QString error =
            QFileInfo::exists(file.path()) ? QString() : file.write(DataFile::defaults(kind));
        if (!error.isEmpty()) {
            throw HostError(QStringLiteral("%1: %2").arg(file.path(), error));
        }
    }
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

void DataStart::clearUp()
{
    for (const char* folder : {"brox", "backups"}) {
        try {
            mNotes << Staging::tidy(QDir(mDataDir).filePath(folder));
        } catch (const OutputError&) {
            // Somebody is at work there.
        }
    }
    mNotes.removeAll(QString());
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
    QString details = tr("Restore Defaults: what a new data folder has takes its place.\n"
                         "What stands there goes to the backups.")
        + '\n'
        + (file.kind() == DataFile::Kind::Rules
                ? tr("Leave: it is not touched, and nothing is exported.")
                : tr("Leave: it is not touched until you save, and then you are asked."));
    QStringList answers{tr("Restore Defaults"), tr("Leave")};
    QList<QByteArray> contents{DataFile::defaults(file.kind())};
    if (const auto backup = mBackups.newestGood(file.kind())) {
        const QString time = QLocale().toString(backup->time.toLocalTime(), QLocale::ShortFormat);
        contents.prepend(backup->bytes());
        details.prepend(tr("Restore: the backup of %1 takes its place (%2).")
                            .arg(time, DataFile::summaryOf(file.kind(), contents.first()))
            + '\n');
        answers.prepend(tr("Restore"));
    }
    const qsizetype answer =
        ask(tr("%1 can't be read: %2").arg(file.path(), content.fault), details, answers);
    if (answer < contents.size()) {
        const QString error = mBackups.replace(file, contents[answer]);
        if (!error.isEmpty()) {
            ask(tr("%1 can't be restored: %2").arg(file.path(), error), {}, {tr("Close")});
        }
    }
}

} // namespace brox
