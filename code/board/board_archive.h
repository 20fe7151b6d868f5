// SPDX-License-Identifier: MIT
#ifndef BOARD_ARCHIVE_H
#define BOARD_ARCHIVE_H

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <functional>
#include <memory>

namespace brox {

/** Files in .zip, .tar.gz, .7z and .gz, read without being unpacked to disk. What comes through a
 *  pipe can be read only once, so an archive that does is kept in memory as it is, packed.
 *
 * A hostile archive is refused: by the number of its files, by what they come to unpacked, and by
 * how many times that is its own size.
 */

constexpr int maxArchiveEntries = 10000;
constexpr qint64 maxUnpackedSize = qint64(4) << 30; ///< bytes
constexpr int maxUnpackedRatio = 1000; ///< counted from freeUnpackedSize on
constexpr qint64 freeUnpackedSize = qint64(64) << 20;

constexpr qint64 maxPipedSize = qint64(256) << 20; ///< bytes of an archive in memory

struct Archive
{
    QString path; ///< of the file; for messages if there is content
    std::shared_ptr<const QByteArray> content; ///< null: in the file
};

/** Shows the regular files of an archive, in its order: their names with the folders in it, and
 *  fileKindBytes of their content at most. A file that is only compressed has the archive's own
 *  name without what tells the compression.
 *
 * @throws BoardError
 */
void listArchive(const Archive& archive,
    const std::function<void(const QString& name, const QByteArray& beginning)>& visit);

/** Opens one file of an archive for reading once from its beginning to its end.
 *
 * @param entry  as listArchive names it
 * @throws BoardError
 */
std::unique_ptr<QIODevice> openArchiveEntry(const Archive& archive, const QString& entry);

} // namespace brox

#endif
