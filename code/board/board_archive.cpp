// SPDX-License-Identifier: MIT
#include "board_archive.h"

#include "reading.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <archive.h>
#include <archive_entry.h>
#include <cerrno>
#include <clocale>
#include <zlib.h>

namespace brox {

namespace {

constexpr qint64 blockSize = 1 << 16;

/** What gzip has packed, with its checksums and lengths checked: libarchive's own reader of the
 *  format passes over them. */
class Gunzip : public QIODevice
{
public:
    explicit Gunzip(QIODevice& packed)
        : mPacked(packed)
    {
        constexpr int windowOfGzip = 15 + 16;
        if (inflateInit2(&mStream, windowOfGzip) != Z_OK) {
            throw std::bad_alloc();
        }
        open(QIODevice::ReadOnly);
    }
    ~Gunzip() override { inflateEnd(&mStream); }
    Q_DISABLE_COPY_MOVE(Gunzip)

    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 maxSize) override
    {
        mStream.next_out = reinterpret_cast<Bytef*>(data);
        mStream.avail_out = uInt(std::min(maxSize, blockSize));
        const uInt room = mStream.avail_out;
        while (mStream.avail_out == room && !mIsAtEnd) {
            if (!step()) {
                return -1;
            }
        }
        return room - mStream.avail_out;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    bool step()
    {
        if (mStream.avail_in == 0) {
            mBlock = mPacked.read(blockSize);
            mStream.next_in = reinterpret_cast<Bytef*>(mBlock.data());
            mStream.avail_in = uInt(mBlock.size());
        }
        if (mStream.avail_in == 0) {
            mIsAtEnd = true;
            return mIsBetween || failed(BoardText::tr("it is cut off"));
        }
        if (mIsBetween && *mStream.next_in == 0) { // tapes are filled up
            mIsAtEnd = true;
            return true;
        }
        mIsBetween = false;
        const int status = inflate(&mStream, Z_NO_FLUSH);
        if (status == Z_STREAM_END) {
            mIsBetween = true;
            inflateReset(&mStream);
            return true;
        }
        return status == Z_OK || status == Z_BUF_ERROR
            || failed(BoardText::tr("it is damaged, %1")
                          .arg(QLatin1String(mStream.msg ? mStream.msg : "")));
    }

    bool failed(const QString& why)
    {
        setErrorString(why);
        return false;
    }

    QIODevice& mPacked;
    z_stream mStream = {};
    QByteArray mBlock;
    bool mIsBetween = false; ///< two parts that are packed apart
    bool mIsAtEnd = false;
};

/** While it lives, names in archives are read and written as UTF-8. */
class Utf8Locale
{
public:
    Utf8Locale()
        : mOwn(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr))
        , mBefore(mOwn ? uselocale(mOwn) : nullptr)
    { }
    ~Utf8Locale()
    {
        if (mOwn) {
            uselocale(mBefore);
            freelocale(mOwn);
        }
    }
    Q_DISABLE_COPY_MOVE(Utf8Locale)

private:
    locale_t mOwn;
    locale_t mBefore;
};

QString nameOf(archive_entry* entry)
{
    const char* bytes = archive_entry_pathname(entry);
    if (!bytes) {
        bytes = archive_entry_pathname_utf8(entry);
    }
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString name = utf8(QByteArrayView(bytes));
    return utf8.hasError() ? QString::fromLatin1(bytes) : name;
}

} // namespace

/** The bytes of an archive on their way to libarchive. */
class ArchiveReader::Unpacker
{
public:
    explicit Unpacker(const Archive& source)
        : mArchive(archive_read_new(), archive_read_free)
    {
        if (!mArchive) {
            throw std::bad_alloc();
        }
        openDevices(source);
        archive_read_support_filter_bzip2(mArchive.get());
        archive_read_support_filter_xz(mArchive.get());
        archive_read_support_filter_zstd(mArchive.get());
        // Of a zip without its list of files, libarchive would take what it finds.
        archive_read_support_format_zip_seekable(mArchive.get());
        archive_read_support_format_7zip(mArchive.get());
        archive_read_support_format_tar(mArchive.get());
        archive_read_support_format_raw(mArchive.get()); // a file that is only packed
        archive_read_set_callback_data(mArchive.get(), this);
        archive_read_set_read_callback(mArchive.get(), readBlock);
        if (!mDevices.back()->isSequential()) {
            archive_read_set_seek_callback(mArchive.get(), seek);
        }
    }

    archive* get() const { return mArchive.get(); }
    bool isRaw() const { return archive_format(get()) == ARCHIVE_FORMAT_RAW; }
    bool isZip() const { return baseFormat() == ARCHIVE_FORMAT_ZIP; }
    bool isTar() const { return baseFormat() == ARCHIVE_FORMAT_TAR; }
    int packings() const { return int(mDevices.size()) - 1 + archive_filter_count(get()) - 1; }

    qint64 packedSize() const { return mDevices.front()->size(); }
    QIODevice& device() const { return *mDevices.back(); }

    /** Bytes of what is unpacked up to where the reading is. */
    qint64 position() const { return archive_filter_bytes(get(), 0); }

private:
    int baseFormat() const { return archive_format(get()) & ARCHIVE_FORMAT_BASE_MASK; }

    void openDevices(const Archive& source)
    {
        if (source.content) {
            auto buffer = std::make_unique<QBuffer>();
            buffer->setData(*source.content);
            mDevices.push_back(std::move(buffer));
        } else {
            mDevices.push_back(std::make_unique<QFile>(source.path));
        }
        if (!mDevices.back()->open(QIODevice::ReadOnly)) {
            throw BoardError(source.path, 1, mDevices.back()->errorString());
        }
        while (mDevices.size() <= maxPackings && mDevices.back()->peek(2) == "\x1f\x8b") {
            mDevices.push_back(std::make_unique<Gunzip>(*mDevices.back()));
        }
    }

    static la_ssize_t readBlock(archive* archive, void* unpacker, const void** bytes)
    {
        auto* self = static_cast<Unpacker*>(unpacker);
        self->mBlock.resize(blockSize);
        const qint64 size = self->device().read(self->mBlock.data(), blockSize);
        if (size < 0) {
            archive_set_error(archive, EIO, "%s", qUtf8Printable(self->device().errorString()));
        }
        *bytes = self->mBlock.constData();
        return la_ssize_t(size);
    }

    static la_int64_t seek(archive*, void* unpacker, la_int64_t offset, int whence)
    {
        QIODevice& device = static_cast<Unpacker*>(unpacker)->device();
        const qint64 from = whence == SEEK_SET ? 0
            : whence == SEEK_CUR               ? device.pos()
                                               : device.size();
        return device.seek(from + offset) ? device.pos() : ARCHIVE_FATAL;
    }

    std::vector<std::unique_ptr<QIODevice>> mDevices; ///< each unpacks the one before it
    QByteArray mBlock;
    std::unique_ptr<archive, decltype(&archive_read_free)> mArchive;
};

ArchiveReader::ArchiveReader(const Archive& archive)
    : mArchive(archive)
    , mUnpacker(std::make_unique<Unpacker>(archive))
{
    if (archive_read_open1(mUnpacker->get()) < ARCHIVE_WARN) {
        fail();
    }
    if (mUnpacker->packings() > maxPackings) {
        refuse(BoardText::tr("it is packed more than %1 times").arg(maxPackings));
    }
}

ArchiveReader::~ArchiveReader() = default;

void ArchiveReader::refuse(const QString& why) const
{
    throw BoardError(mArchive.path, 1, why);
}

void ArchiveReader::fail() const
{
    const char* text = archive_error_string(mUnpacker->get());
    refuse(BoardText::tr("the archive can't be read: %1").arg(QString::fromUtf8(text)));
}

bool ArchiveReader::next()
{
    const Utf8Locale locale;
    do {
        if (mEntries > 0) {
            if (mUnpacker->isRaw()) { // its one file is checked as far as it is read
                return false;
            }
            skipRest();
        }
        const qint64 end = mUnpacker->position();
        archive_entry* entry = nullptr;
        const int status = archive_read_next_header(mUnpacker->get(), &entry);
        if (status == ARCHIVE_EOF) {
            checkEnd(end);
            return false;
        }
        if (status < ARCHIVE_WARN) {
            fail();
        }
        if (++mEntries > maxArchiveEntries) {
            refuse(BoardText::tr("more than %1 files").arg(maxArchiveEntries));
        }
        readEntry(entry);
    } while (mIsFolder);
    return true;
}

void ArchiveReader::readEntry(archive_entry* entry)
{
    if (mUnpacker->isRaw()) {
        if (mUnpacker->packings() == 0) {
            refuse(BoardText::tr("the archive is damaged or cut off"));
        }
        mName = QFileInfo(mArchive.path).completeBaseName();
        return;
    }
    mName = nameOf(entry);
    const auto type = archive_entry_filetype(entry);
    mIsFolder = type == AE_IFDIR;
    mOtherKind = type == AE_IFLNK || archive_entry_hardlink(entry) ? BoardText::tr("a link")
        : type == AE_IFREG                                         ? QString()
                           : BoardText::tr("a pipe or a device");
}

/** Of most archives what is skipped costs as much as what is read, so it counts as much. */
void ArchiveReader::skipRest()
{
    if (mUnpacker->isZip()) {
        if (archive_read_data_skip(mUnpacker->get()) < ARCHIVE_WARN) {
            fail();
        }
        return;
    }
    while (!read(blockSize).isEmpty()) { }
}

QByteArray ArchiveReader::read(qint64 most)
{
    QByteArray bytes;
    while (bytes.size() < most) {
        const qsizetype before = bytes.size();
        const qint64 wanted = std::min(most - before, blockSize);
        bytes.resize(before + wanted);
        const qint64 got =
            archive_read_data(mUnpacker->get(), bytes.data() + before, size_t(wanted));
        if (got < 0) {
            fail();
        }
        bytes.resize(before + got);
        if (got == 0) {
            break;
        }
        count(got);
    }
    return bytes;
}

void ArchiveReader::count(qint64 size)
{
    const qint64 all = *mArchive.unpacked += size;
    if (all > maxUnpackedSize
        || (all > freeUnpackedSize && all / maxUnpackedRatio > mUnpacker->packedSize())) {
        refuse(BoardText::tr("it unpacks to more than %1 GiB or %2 times its size")
                   .arg(maxUnpackedSize >> 30)
                   .arg(maxUnpackedRatio));
    }
}

/** A tape that is cut off between two files looks whole but for the mark at its end. */
void ArchiveReader::checkEnd(qint64 lastEntryEnd)
{
    if (mUnpacker->isTar() && mUnpacker->position() == lastEntryEnd) {
        refuse(BoardText::tr("the archive has no end; it is cut off"));
    }
    QIODevice& device = mUnpacker->device();
    if (!device.isSequential()) {
        return;
    }
    QByteArray rest(blockSize, Qt::Uninitialized); // with the checksum behind it
    for (qint64 size = 1; size > 0; count(size)) {
        size = device.read(rest.data(), blockSize);
        if (size < 0) {
            refuse(BoardText::tr("the archive can't be read: %1").arg(device.errorString()));
        }
    }
}

namespace {

/** The file that an archive stands at. */
class EntryDevice : public QIODevice
{
public:
    explicit EntryDevice(std::unique_ptr<ArchiveReader> archive)
        : mArchive(std::move(archive))
    {
        open(QIODevice::ReadOnly);
    }

    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 maxSize) override
    {
        const QByteArray bytes = mArchive->read(std::min(maxSize, blockSize));
        std::copy(bytes.begin(), bytes.end(), data);
        return bytes.size();
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    std::unique_ptr<ArchiveReader> mArchive;
};

} // namespace

std::unique_ptr<QIODevice> openArchiveEntry(const Archive& archive, const QString& entry)
{
    auto reader = std::make_unique<ArchiveReader>(archive);
    while (reader->next()) {
        if (reader->name() == entry && reader->otherKind().isEmpty()) {
            return std::make_unique<EntryDevice>(std::move(reader));
        }
    }
    throw BoardError(archive.path, 1, BoardText::tr("no file \"%1\" in the archive").arg(entry));
}

} // namespace brox
