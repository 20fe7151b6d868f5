// SPDX-License-Identifier: MIT
#ifndef BACKUPS_H
#define BACKUPS_H

#include "data_file.h"
#include "staging.h"

#include <QDateTime>
#include <memory>
#include <optional>

namespace brox {

/** Former contents of a data folder's files, in its folder "backups", and the replacement of a file
 *  that makes one first.
 *
 * The last ten contents of each file are kept, each once, under the file's name, a running number
 * and the time when it was last seen (UTC). The number gives the order: a clock may be wrong.
 * Other files in the folder are nobody's business.
 */
class Backups
{
public:
    explicit Backups(const QString& dataDir);

    /** To be held from the look at a file to the end of its replacement, by one workbench at a
     *  time.
     *
     * @return null if another one keeps it
     */
    std::unique_ptr<FileLock> lock() const;

    /** Keeps a content, or numbers it anew if it is there.
     *
     * @return what went wrong, or an empty text: it is on the disk then
     */
    QString keep(DataFile::Kind kind, const QByteArray& bytes);

    /** Replaces a file whose content is kept, reads it back and keeps the new content.
     *
     * A file that can't be read is moved among the backups. What was there before is there again
     * if the file is broken afterwards.
     *
     * @param before         what is there
     * @param inPlaceAtNeed  as of DataFile::write
     * @return what went wrong, or an empty text
     */
    QString replace(const DataFile& file, const DataFile::Content& before, const QByteArray& bytes,
        bool inPlaceAtNeed);

    /** The whole of a replacement, its backup included, that needs no question. */
    QString replace(const DataFile& file, const QByteArray& bytes);

    struct Backup
    {
        QString path;
        qint64 number = 0; ///< 0: of a time when they had none
        QDateTime time;

        QByteArray bytes() const;
    };

    /** The latest first. */
    QList<Backup> all(DataFile::Kind kind) const;

    /** The latest that would be read. */
    std::optional<Backup> newestGood(DataFile::Kind kind) const;

private:
    QString newPath(DataFile::Kind kind) const;

    QString mDataDir;
    QString mFolder;
};

} // namespace brox

#endif
