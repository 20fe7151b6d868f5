// SPDX-License-Identifier: MIT
#include "backups.h"

#include "file_set.h"

#include <QDir>
#include <QRegularExpression>
#include <algorithm>

namespace brox {

namespace {

constexpr qsizetype maxBackups = 10;
constexpr int patience = 2000; ///< milliseconds that another workbench may take for a save
const char timeFormat[] = "yyyyMMdd'T'HHmmss.zzz'Z'";

QFileInfo nameOf(DataFile::Kind kind)
{
    return QFileInfo(DataFile::nameOf(kind));
}

} // namespace

Backups::Backups(const QString& dataDir)
    : mDataDir(dataDir)
    , mFolder(QDir(dataDir).absoluteFilePath("backups"))
{ }

std::unique_ptr<FileLock> Backups::lock() const
{
    auto lock = std::make_unique<FileLock>();
    // A folder that can't be written in needs no lock.
    const bool isBusy =
        lock->take(QDir(mDataDir).filePath("saving.lock"), patience) == FileLock::Result::Busy;
    return isBusy ? nullptr : std::move(lock);
}

QString Backups::keep(DataFile::Kind kind, const QByteArray& bytes)
{
    for (const Backup& backup : all(kind)) {
        if (QFileInfo(backup.path).size() == bytes.size() && backup.bytes() == bytes) {
            QFile::rename(backup.path, newPath(kind)); // in vain: it is kept under its old number
            return {};
        }
    }
    const QString path = newPath(kind);
    try {
        FileSet files;
        files.add(path, bytes);
        files.commit();
    } catch (const OutputError& error) {
        return error.reason();
    }
    for (const Backup& backup : all(kind).mid(maxBackups)) {
        QFile::remove(backup.path);
    }
    return {};
}

QString Backups::replace(const DataFile& file, const DataFile::Content& before,
    const QByteArray& bytes, bool inPlaceAtNeed)
{
    const bool isMoved = before.exists && before.bytes.isNull();
    const QString moved = newPath(file.kind());
    if (isMoved && !(QDir().mkpath(mFolder) && QFile::rename(file.path(), moved))) {
        return DataFile::tr("it can't be moved to the backups");
    }
    QString fault = file.write(bytes, inPlaceAtNeed);
    if (fault.isEmpty() && file.readUnchecked().bytes != bytes) {
        fault = DataFile::tr("what was read back is not what was saved");
    }
    if (fault.isEmpty()) {
        keep(file.kind(), bytes); // in vain: the next save tries again
        return {};
    }
    const DataFile::Content after = file.read();
    if (isMoved && !after.exists) {
        QFile::rename(moved, file.path());
    } else if (!before.bytes.isNull() && !after.fault.isEmpty() && after.bytes != before.bytes) {
        file.write(before.bytes, true);
    }
    return fault;
}

QString Backups::replace(const DataFile& file, const QByteArray& bytes)
{
    const std::unique_ptr<FileLock> held = lock();
    if (!held) {
        return DataFile::tr("another workbench is saving");
    }
    const DataFile::Content before = file.readUnchecked();
    if (!before.bytes.isNull()) {
        const QString error = keep(file.kind(), before.bytes);
        if (!error.isEmpty()) {
            return DataFile::tr("no backup could be made: %1").arg(error);
        }
    }
    return replace(file, before, bytes, false);
}

QByteArray Backups::Backup::bytes() const
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QList<Backups::Backup> Backups::all(DataFile::Kind kind) const
{
    const QRegularExpression form(
        QStringLiteral("^%1-(?:(\\d{6,12})-)?(\\d{8}T\\d{6}\\.\\d{3}Z)\\.%2$")
            .arg(nameOf(kind).completeBaseName(), nameOf(kind).suffix()));
    QList<Backup> backups;
    for (const QFileInfo& file : QDir(mFolder).entryInfoList(QDir::Files | QDir::Hidden)) {
        const QRegularExpressionMatch match = form.match(file.fileName());
        QDateTime time = QDateTime::fromString(match.captured(2), timeFormat);
        time.setTimeSpec(Qt::UTC);
        if (match.hasMatch() && time.isValid()) {
            backups << Backup{file.filePath(), match.captured(1).toLongLong(), time};
        }
    }
    std::sort(backups.begin(), backups.end(), [](const Backup& a, const Backup& b) {
        return std::pair(a.number, a.time) > std::pair(b.number, b.time);
    });
    return backups;
}

std::optional<Backups::Backup> Backups::newestGood(DataFile::Kind kind) const
{
    for (const Backup& backup : all(kind)) {
        if (DataFile::faultOf(kind, backup.bytes()).isEmpty()) {
            return backup;
        }
    }
    return {};
}

/** A name behind all that are there. */
QString Backups::newPath(DataFile::Kind kind) const
{
    const QList<Backup> backups = all(kind);
    const QString name =
        QStringLiteral("%1-%2-%3.%4")
            .arg(nameOf(kind).completeBaseName())
            .arg(backups.isEmpty() ? 1 : backups.first().number + 1, 6, 10, QChar('0'))
            .arg(QDateTime::currentDateTimeUtc().toString(timeFormat), nameOf(kind).suffix());
    return QDir(mFolder).filePath(name);
}

} // namespace brox
