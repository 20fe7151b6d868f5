// SPDX-License-Identifier: MIT
#include "file_set.h"

#include "plan_text.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace brox {

namespace {

constexpr int patience = 1000; ///< milliseconds that others may take for their files
constexpr int pause = 20; ///< milliseconds between two looks at a lock

const char stagingName[] = ".brox-writing";
const char newPart[] = "new";
const char releasedPart[] = "released"; ///< new files that count
const char oldPart[] = "old"; ///< second names of the files that are replaced

constexpr QDir::Filters anyFile = QDir::Files | QDir::Hidden | QDir::System;

fs::path native(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

/** A rename is only on the disk when its folder is. */
void syncFolder(const QString& path)
{
    const int folder =
        open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        fsync(folder);
        close(folder);
    }
}

/** Whether a file may take a place: a killed process must not undo what was done since. */
bool mayReplace(const QFileInfo& file, const QFileInfo& place)
{
    return !place.exists() || (place.isFile() && place.lastModified() <= file.lastModified());
}

} // namespace

OutputError::OutputError(const QString& path, const QString& reason)
    : OutputError(PlanText::tr("%1: can't be written: %2").arg(path, reason))
{
    mReason = reason;
}

FileLock::Result FileLock::take(const QString& path, int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    for (;;) {
        const int file =
            open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
        if (file < 0) {
            return Result::Impossible;
        }
        // Where the file system knows no locks there is none, and no second process to fear.
        const bool isBusy = flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
        struct stat status = {};
        if (!isBusy && fstat(file, &status) == 0 && status.st_nlink > 0) {
            mFile = file;
            mPath = path;
            return Result::Taken;
        }
        close(file); // its last owner may have removed it meanwhile
        if (isBusy && deadline.hasExpired()) {
            return Result::Busy;
        }
        if (isBusy) {
            QThread::msleep(pause);
        }
    }
}

void FileLock::release()
{
    if (mFile >= 0) {
        QFile::remove(mPath); // while it is locked, so that it is no other's
        close(mFile);
        mFile = -1;
    }
}

/** The folder ".brox-writing" beside the places of files, in which they are made ready.
 *
 * release() is the moment from which on the new files count: what a killed process has released is
 * put in place by the next one that stages in the same folder, and everything else that it left is
 * cleared away. One process at a time has the folder. Functions throw
 * std::filesystem::filesystem_error.
 */
class FileSet::Staging
{
public:
    /** Takes the folder and sees to what a killed process left in it.
     *
     * @param folder  exists
     * @throws OutputError  if it can't be made, or another process keeps it
     */
    explicit Staging(const QString& folder)
        : mFolder(folder)
        , mPath(QDir(folder).filePath(stagingName))
    {
        try {
            lock();
            finish();
            clear();
            fs::create_directory(native(inside(newPart)));
            fs::create_directory(native(inside(oldPart)));
        } catch (const fs::filesystem_error& error) {
            throw OutputError(mFolder, QString::fromStdString(error.code().message()));
        }
    }

    /** Clears the folder away, unless released files are left in it. */
    ~Staging()
    {
        if (QDir(inside(releasedPart)).isEmpty(anyFile)) {
            try {
                clear();
            } catch (const fs::filesystem_error&) {
                // The next one tries again.
            }
        }
        mLock.release();
        QDir().rmdir(mPath); // in vain if another has taken it by now
    }
    Q_DISABLE_COPY_MOVE(Staging)

    /** What a killed process had left and what became of it, in one line; empty: nothing. */
    QString note() const { return mNote; }

    /** Where a new file is to be written, by its name. */
    QString pathOfNew(const QString& name) const { return inside(newPart, name); }

    /** Gives the file that bears a name by now a second one, if there is such a file. */
    void keepOld(const QString& name) const
    {
        const QString place = QDir(mFolder).filePath(name);
        if (!QFileInfo::exists(place)) {
            return;
        }
        std::error_code error;
        fs::create_hard_link(native(place), native(inside(oldPart, name)), error);
        if (error) { // the file system knows no second names
            fs::copy_file(native(place), native(inside(oldPart, name)));
        }
    }

    void release() const
    {
        syncFolder(inside(newPart));
        fs::rename(native(inside(newPart)), native(inside(releasedPart)));
        syncFolder(mPath);
    }

    /** Puts a released file in its place. */
    void place(const QString& name) const
    {
        fs::rename(native(inside(releasedPart, name)), native(QDir(mFolder).filePath(name)));
    }

    /** Takes it back; what was there before is there again. */
    void putBack(const QString& name) const
    {
        const fs::path place = native(QDir(mFolder).filePath(name));
        // Should it end here, the next one finishes the new files, of which none may be missing.
        fs::rename(place, native(inside(releasedPart, name)));
        if (QFileInfo::exists(inside(oldPart, name))) {
            fs::rename(native(inside(oldPart, name)), place);
        }
    }

    /** Released files that were all put back count no more. */
    void withdraw() const
    {
        if (QFileInfo::exists(inside(releasedPart))) {
            fs::rename(native(inside(releasedPart)), native(inside(newPart)));
        }
    }

    /** Files that are in place are so on the disk too. */
    void sync() const { syncFolder(mFolder); }

private:
    void lock()
    {
        for (;;) {
            fs::create_directory(native(mPath));
            switch (mLock.take(inside("lock"), patience)) {
            case FileLock::Result::Taken:
                return;
            case FileLock::Result::Busy:
                throw OutputError(mFolder, PlanText::tr("another program is writing there"));
            case FileLock::Result::Impossible:
                // Its last owner may just have taken the folder away.
                if (errno != ENOENT) {
                    throw OutputError(mFolder, qt_error_string());
                }
            }
        }
    }

    /** Puts in place what a killed process had released. */
    void finish()
    {
        QStringList placed;
        QStringList dropped;
        for (const QFileInfo& file : QDir(inside(releasedPart)).entryInfoList(anyFile)) {
            const bool fits = mayReplace(file, QFileInfo(QDir(mFolder).filePath(file.fileName())));
            if (fits) {
                place(file.fileName());
            }
            (fits ? placed : dropped) << file.fileName();
        }
        QStringList parts{PlanText::tr("%1: an earlier run was broken off").arg(mFolder)};
        if (!placed.isEmpty()) {
            sync();
            parts << PlanText::tr("put in place now: %1").arg(placed.join(", "));
        }
        if (!dropped.isEmpty()) {
            parts << PlanText::tr("changed since, so left as they are: %1").arg(dropped.join(", "));
        }
        if (parts.size() == 1 && !QDir(inside(newPart)).isEmpty(anyFile)) {
            parts << PlanText::tr("nothing of it was written");
        }
        mNote = parts.size() == 1 ? QString() : parts.join("; ");
    }

    void clear() const
    {
        for (const char* part : {releasedPart, newPart, oldPart}) {
            fs::remove_all(native(inside(part)));
        }
    }

    QString inside(const char* part, const QString& name = {}) const
    {
        return mPath + '/' + QLatin1String(part) + (name.isEmpty() ? QString() : '/' + name);
    }

    QString mFolder;
    QString mPath;
    FileLock mLock;
    QString mNote;
};

QString FileSet::tidy(const QString& folder)
{
    return QFileInfo::exists(QDir(folder).filePath(stagingName)) ? Staging(folder).note()
                                                                 : QString();
}

namespace {

/** Where a file is to be: a link stays one, and the file that it leads to is replaced. */
QString targetOf(const QString& name)
{
    const QFileInfo info(name);
    const QString target = info.isSymLink() ? info.canonicalFilePath() : QString();
    return target.isEmpty() ? name : target;
}

} // namespace

void tell(const Progress& progress, qint64 done, qint64 total)
{
    if (progress && !progress(done, total)) {
        throw BoardCancelled();
    }
}

FileSet::FileSet() = default;

FileSet::~FileSet()
{
    mStagings.clear();
    for (const QString& folder : mMade) {
        QDir().rmdir(folder); // if nothing came into it
    }
}

QIODevice& FileSet::open(const QString& name)
{
    const QString path = targetOf(name);
    const QFileInfo info(path);
    if (info.isDir()) {
        throw OutputError(path, PlanText::tr("it is a folder"));
    }
    if (info.exists() && !info.isFile()) {
        throw OutputError(path, PlanText::tr("it is no file"));
    }
    if (info.exists() && !info.isWritable()) {
        throw OutputError(path, PlanText::tr("it is protected"));
    }
    makeFolder(info.absolutePath());
    const QString folder = info.dir().canonicalPath();
    auto staging = mStagings.find(folder);
    if (staging == mStagings.end()) {
        staging = mStagings.emplace(folder, std::make_unique<Staging>(folder)).first;
        mNotes << staging->second->note();
        mNotes.removeAll(QString());
    }
    if (!mPlaces.insert(QDir(folder).filePath(info.fileName())).second) {
        throw OutputError(path, PlanText::tr("it is named twice"));
    }
    auto file = std::make_unique<File>();
    file->path = path;
    file->name = info.fileName();
    file->staging = staging->second.get();
    QFile& device = mFiles.emplace_back(std::move(file))->device;
    device.setFileName(staging->second->pathOfNew(info.fileName()));
    if (!device.open(QFile::ReadWrite | QFile::NewOnly)) {
        throw OutputError(path, device.errorString());
    }
    if (info.exists()) {
        device.setPermissions(info.permissions());
    }
    return device;
}

/** More than the last part of a path that is missing is a path that is misspelt. */
void FileSet::makeFolder(const QString& folder)
{
    if (QFileInfo::exists(folder)) {
        return;
    }
    const QString parent = QFileInfo(folder).path();
    if (!QFileInfo(parent).isDir()) {
        throw OutputError(folder, PlanText::tr("there is no folder %1").arg(parent));
    }
    if (!QDir().mkdir(folder)) {
        throw OutputError(folder, PlanText::tr("the folder can't be made"));
    }
    mMade << folder;
}

void FileSet::add(const QString& name, const QByteArray& content)
{
    open(name).write(content);
    finish(*mFiles.back());
}

/** Sees to it that a file is whole and on the disk. */
void FileSet::finish(File& file)
{
    if (!file.device.isOpen()) {
        return;
    }
    // Some file systems find out at the end that they are full.
    const bool isWhole = file.device.flush() && file.device.error() == QFile::NoError;
    if (!isWhole || fsync(file.device.handle()) != 0) {
        throw OutputError(file.path, isWhole ? qt_error_string() : file.device.errorString());
    }
    file.device.close();
}

void FileSet::commit()
{
    for (const std::unique_ptr<File>& file : mFiles) {
        finish(*file);
    }
    try {
        placeAll();
    } catch (const OutputError&) {
        putBackAll();
        throw;
    }
    for (const auto& [folder, staging] : mStagings) {
        staging->sync();
    }
    mStagings.clear();
    mMade.clear();
}

void FileSet::placeAll()
{
    QString path;
    try {
        for (const std::unique_ptr<File>& file : mFiles) {
            path = file->path;
            file->staging->keepOld(file->name);
        }
        for (const auto& [folder, staging] : mStagings) {
            path = folder;
            staging->release();
        }
        for (const std::unique_ptr<File>& file : mFiles) {
            path = file->path;
            file->staging->place(file->name);
            file->isPlaced = true;
        }
    } catch (const fs::filesystem_error& error) {
        throw OutputError(path, QString::fromStdString(error.code().message()));
    }
}

/** Where that fails too, the new files stay released, and the next set finishes them. */
void FileSet::putBackAll()
{
    try {
        for (auto file = mFiles.rbegin(); file != mFiles.rend(); ++file) {
            if ((*file)->isPlaced) {
                (*file)->staging->putBack((*file)->name);
            }
        }
        for (const auto& [folder, staging] : mStagings) {
            staging->withdraw();
        }
    } catch (const fs::filesystem_error&) { }
}

QStringList FileSet::paths() const
{
    QStringList paths;
    for (const std::unique_ptr<File>& file : mFiles) {
        paths << file->path;
    }
    return paths;
}

bool hasGivenDate()
{
    bool isNumber = false;
    qEnvironmentVariable("SOURCE_DATE_EPOCH").toLongLong(&isNumber);
    return isNumber;
}

QDate outputDate()
{
    return hasGivenDate() ? QDateTime::fromSecsSinceEpoch(
               qEnvironmentVariable("SOURCE_DATE_EPOCH").toLongLong(), Qt::UTC)
                                .date()
                          : QDate::currentDate();
}

QString writeFile(const QString& path, const QByteArray& content)
{
    try {
        FileSet files;
        files.add(path, content);
        files.commit();
        return {};
    } catch (const OutputError& error) {
        return error.reason();
    }
}

} // namespace brox
