// SPDX-License-Identifier: MIT
#ifndef BOARD_ARCHIVE_H
#define BOARD_ARCHIVE_H

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <memory>
#include <vector>

/** Files in .zip, .tar.gz, .7z and .gz, read without being unpacked to disk.
 *
 * A hostile archive is refused: by the number of its files, by what they come to unpacked, and by
 * how many times that is its own size.
 */

constexpr int maxArchiveEntries = 10000;
constexpr qint64 maxUnpackedSize = qint64(4) << 30; ///< bytes
constexpr int maxUnpackedRatio = 1000; ///< counted from freeUnpackedSize on
constexpr qint64 freeUnpackedSize = qint64(64) << 20;

struct ArchiveEntry
{
    QString name; ///< with its folders in the archive
    QByteArray beginning; ///< fileKindBytes at most
};

/** The regular files of an archive.
 *
 * @throws BoardError
 */
std::vector<ArchiveEntry> listArchive(const QString& path);

/** Opens one file of an archive for reading once from its beginning to its end.
 *
 * @param entry  as listArchive names it
 * @throws BoardError
 */
std::unique_ptr<QIODevice> openArchiveEntry(const QString& path, const QString& entry);

#endif
