// SPDX-License-Identifier: MIT
#include "backups.h"

#include <QDir>

namespace brox {

namespace {

constexpr qsizetype maxBackups = 10;
const char timeFormat[] = "yyyyMMdd'T'HHmmss.zzz'Z'";

/** What the names of a file's backups begin with: "brox-" for brox.xml. */
QString prefixOf(DataFile::Kind kind)
{
    return QFileInfo(DataFile::nameOf(kind)).completeBaseName() + '-';
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

Backups::Backups(const QString& dataDir)
    : mFolder(QDir(dataDir).absoluteFilePath("backups"))
{ }

QString Backups::keep(DataFile::Kind kind, const QByteArray& bytes)
{
    for (const QString& path : pathsOf(kind)) {
        if (QFileInfo(path).size() == bytes.size() && contentOf(path) == bytes) {
            QFile::rename(path, newPath(kind)); // in vain: it is kept under its old date
            return {};
        }
    }
    const QString error = writeDurably(newPath(kind), bytes);
    if (error.isEmpty()) {
        dropOldest(kind);
    }
    return error;
}

QString Backups::take(const DataFile& file)
{
    const QString path = newPath(file.kind());
    return QDir().mkpath(mFolder) && QFile::rename(file.path(), path) ? path : QString();
}

std::optional<Backups::Backup> Backups::newestGood(DataFile::Kind kind) const
{
    for (const QString& path : pathsOf(kind)) {
        const QByteArray bytes = contentOf(path);
        if (DataFile::faultOf(kind, bytes).isEmpty()) {
            const QString time = QFileInfo(path).completeBaseName().mid(prefixOf(kind).size());
            QDateTime dateTime = QDateTime::fromString(time, timeFormat);
            dateTime.setTimeSpec(Qt::UTC);
            return Backup{dateTime, bytes};
        }
    }
    return {};
}

QStringList Backups::pathsOf(DataFile::Kind kind) const
{
    const QDir folder(mFolder);
    QStringList paths;
    for (const QString& name : folder.entryList(
             {prefixOf(kind) + "*.xml"}, QDir::Files | QDir::Hidden, QDir::Name | QDir::Reversed)) {
        paths << folder.filePath(name);
    }
    return paths;
}

/** A name of this moment, or of the next one that is not taken. */
QString Backups::newPath(DataFile::Kind kind) const
{
    const QDir folder(mFolder);
    QDateTime time = QDateTime::currentDateTimeUtc();
    QString path;
    do {
        path = folder.filePath(prefixOf(kind) + time.toString(timeFormat) + ".xml");
        time = time.addMSecs(1);
    } while (QFileInfo::exists(path));
    return path;
}

void Backups::dropOldest(DataFile::Kind kind)
{
    const QStringList paths = pathsOf(kind);
    for (const QString& path : paths.mid(maxBackups)) {
        QFile::remove(path);
    }
}

} // namespace brox
