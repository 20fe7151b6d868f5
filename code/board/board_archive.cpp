// SPDX-License-Identifier: MIT
#include "board_archive.h"

#include "board_text.h"
#include "file_kind.h"
#include "reading.h"

#include <QFile>
#include <QFileInfo>
#include <archive.h>
#include <archive_entry.h>
#include <limits>

namespace brox {

namespace {

constexpr size_t blockSize = 1 << 16;

/** An archive at its beginning; knows how much of it has been unpacked. */
class OpenArchive
{
public:
    explicit OpenArchive(const Archive& source)
        : mSource(source)
        , mArchive(archive_read_new(), archive_read_free)
    {
        if (!mArchive) {
            throw std::bad_alloc();
        }
        archive_read_support_filter_all(mArchive.get());
        archive_read_support_format_zip(mArchive.get());
        archive_read_support_format_7zip(mArchive.get());
        archive_read_support_format_tar(mArchive.get());
        archive_read_support_format_raw(mArchive.get()); // a file that is only compressed
        if (open() < ARCHIVE_WARN) {
            fail();
        }
        mPackedSize = source.content ? source.content->size() : QFileInfo(source.path).size();
    }

    /** @return false after the last file */
    bool next(QString* name)
    {
        for (;;) {
            archive_entry* entry = nullptr;
            const int status = archive_read_next_header(mArchive.get(), &entry);
            if (status == ARCHIVE_EOF) {
                return false;
            }
            if (status < ARCHIVE_WARN) {
                fail();
            }
            if (++mEntries > maxArchiveEntries) {
                refuse(BoardText::tr("more than %1 files").arg(maxArchiveEntries));
            }
            const bool isRaw = archive_format(mArchive.get()) == ARCHIVE_FORMAT_RAW;
            if (isRaw || archive_entry_filetype(entry) == AE_IFREG) {
                *name = isRaw ? QFileInfo(mSource.path).completeBaseName() : nameOf(entry);
                return true;
            }
        }
    }

    /** @return 0 at the end of the file */
    qint64 read(char* bytes, qint64 size)
    {
        const qint64 got = archive_read_data(mArchive.get(), bytes, size_t(size));
        if (got < 0) {
            fail();
        }
        mUnpacked += got;
        const bool tooMuch = mUnpacked > maxUnpackedSize
            || (mUnpacked > freeUnpackedSize && mUnpacked / maxUnpackedRatio > mPackedSize);
        if (tooMuch) {
            refuse(BoardText::tr("it unpacks to more than %1 GiB or %2 times its size")
                       .arg(maxUnpackedSize >> 30)
                       .arg(maxUnpackedRatio));
        }
        return got;
    }

private:
    int open()
    {
        if (mSource.content) {
            return archive_read_open_memory(
                mArchive.get(), mSource.content->constData(), size_t(mSource.content->size()));
        }
        const QByteArray name = QFile::encodeName(mSource.path);
        return archive_read_open_filename(mArchive.get(), name.constData(), blockSize);
    }

    [[noreturn]] void refuse(const QString& why) const { throw BoardError(mSource.path, 1, why); }
    [[noreturn]] void fail() const
    {
        const char* text = archive_error_string(mArchive.get());
        refuse(BoardText::tr("the archive can't be read: %1")
                   .arg(text ? QString::fromLocal8Bit(text) : QString()));
    }

    static QString nameOf(archive_entry* entry)
    {
        if (const char* name = archive_entry_pathname_utf8(entry)) {
            return QString::fromUtf8(name);
        }
        return QString::fromLocal8Bit(archive_entry_pathname(entry));
    }

    Archive mSource;
    std::unique_ptr<struct archive, decltype(&archive_read_free)> mArchive;
    qint64 mPackedSize = 0;
    qint64 mUnpacked = 0;
    int mEntries = 0;
};

/** The file that an archive stands at. */
class EntryDevice : public QIODevice
{
public:
    explicit EntryDevice(std::unique_ptr<OpenArchive> archive)
        : mArchive(std::move(archive))
    {
        open(QIODevice::ReadOnly);
    }

    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 maxSize) override { return mArchive->read(data, maxSize); }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    std::unique_ptr<OpenArchive> mArchive;
};

} // namespace

void listArchive(
    const Archive& archive, const std::function<void(const QString&, const QByteArray&)>& visit)
{
    OpenArchive open(archive);
    QString name;
    QByteArray beginning;
    while (open.next(&name)) {
        beginning.resize(fileKindBytes);
        qint64 size = 0;
        while (size < fileKindBytes) {
            const qint64 got = open.read(beginning.data() + size, fileKindBytes - size);
            if (got == 0) {
                break;
            }
            size += got;
        }
        beginning.truncate(size);
        visit(name, beginning);
    }
}

std::unique_ptr<QIODevice> openArchiveEntry(const Archive& archive, const QString& entry)
{
    auto open = std::make_unique<OpenArchive>(archive);
    QString name;
    while (open->next(&name)) {
        if (name == entry) {
            return std::make_unique<EntryDevice>(std::move(open));
        }
    }
    throw BoardError(archive.path, 1, BoardText::tr("no file \"%1\" in the archive").arg(entry));
}

} // namespace brox
