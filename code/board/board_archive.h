// SPDX-License-Identifier: MIT
#ifndef BOARD_ARCHIVE_H
#define BOARD_ARCHIVE_H

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <memory>

struct archive_entry;

namespace brox {

/** Files in .zip, .tar, .7z, packed with gzip, bzip2, xz or zstd or not at all, or only packed;
 *  read without being unpacked to disk. What comes through a pipe can be read only once, so an
 *  archive that does is kept in memory as it is, packed.
 *
 * A hostile archive is refused: by the number of its entries, by how often it is packed, by what
 * it comes to unpacked, and by how many times that is its own size.
 */

constexpr int maxArchiveEntries = 10000;
constexpr int maxPackings = 2; ///< one within the other, around the files
constexpr qint64 maxUnpackedSize = qint64(4) << 30; ///< bytes
constexpr int maxUnpackedRatio = 1000; ///< counted from freeUnpackedSize on
constexpr qint64 freeUnpackedSize = qint64(64) << 20;

constexpr qint64 maxPipedSize = qint64(256) << 20; ///< bytes of an archive in memory

struct Archive
{
    QString path; ///< of the file; for messages if there is content
    std::shared_ptr<const QByteArray> content; ///< null: in the file
    std::shared_ptr<qint64> unpacked = std::make_shared<qint64>(0); ///< bytes, by all readers
};

/** Goes through an archive once, from entry to entry. All of it throws BoardError, also for an
 *  archive that is damaged or cut off. */
class ArchiveReader
{
public:
    explicit ArchiveReader(const Archive& archive);
    ~ArchiveReader();
    Q_DISABLE_COPY_MOVE(ArchiveReader)

    /** Goes to the next entry that is no folder; false behind the last one. */
    bool next();

    /** The entry's, with the folders in it, whatever the locale. A file that is only packed has
     *  the archive's own name without the suffix of the packing. */
    const QString& name() const { return mName; }

    /** What the entry is if it is no regular file, for the user; else empty. */
    const QString& otherKind() const { return mOtherKind; }

    /** The next bytes of the entry, as many as there are up to a limit. */
    QByteArray read(qint64 most);

private:
    class Unpacker;

    [[noreturn]] void refuse(const QString& why) const;
    [[noreturn]] void fail() const;
    void readEntry(archive_entry* entry);
    void skipRest();
    void count(qint64 size);
    void checkEnd(qint64 lastEntryEnd);

    Archive mArchive;
    std::unique_ptr<Unpacker> mUnpacker;
    QString mName;
    QString mOtherKind;
    bool mIsFolder = false;
    int mEntries = 0;
};

/** Opens one file of an archive for reading once from its beginning to its end.
 *
 * @param entry  as ArchiveReader names it
 * @throws BoardError
 */
std::unique_ptr<QIODevice> openArchiveEntry(const Archive& archive, const QString& entry);

} // namespace brox

#endif
