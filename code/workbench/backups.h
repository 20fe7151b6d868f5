// SPDX-License-Identifier: MIT
#ifndef BACKUPS_H
#define BACKUPS_H

#include "data_file.h"

#include <QDateTime>
#include <optional>

namespace brox {

/** Former contents of a data folder's files, in its folder "backups": the last ten of each file,
 *  each content once, under the file's name and the time when it was last seen (UTC). */
class Backups
{
public:
    explicit Backups(const QString& dataDir);

    /** Keeps a content, or dates it anew if it is there.
     *
     * @return what went wrong, or an empty text: it is on the disk then
     */
    QString keep(DataFile::Kind kind, const QByteArray& bytes);

    /** Moves a file that can't be copied among the backups.
     *
     * @return its new path; null if that failed
     */
    QString take(const DataFile& file);

    struct Backup
    {
        QDateTime time;
        QByteArray bytes;
    };

    /** The latest that the module would read. */
    std::optional<Backup> newestGood(DataFile::Kind kind) const;

private:
    QStringList pathsOf(DataFile::Kind kind) const; ///< the latest first
    QString newPath(DataFile::Kind kind) const;
    void dropOldest(DataFile::Kind kind);

    QString mFolder;
};

} // namespace brox

#endif
