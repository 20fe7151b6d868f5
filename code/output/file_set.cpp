// SPDX-License-Identifier: MIT
#include "file_set.h"

#include "plan_text.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <filesystem>
#include <unistd.h>

namespace brox {

namespace fs = std::filesystem;

namespace {

fs::path native(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

OutputError failure(const QString& path, const QString& reason)
{
    return OutputError(PlanText::tr("%1: can't be written: %2").arg(path, reason));
}

/** A name beside a file that nothing has yet; short, since the file's own may be at the limit. */
QString freeName(const QString& path)
{
    const QDir folder = QFileInfo(path).absoluteDir();
    for (int i = 0;; ++i) {
        const QString name =
            folder.filePath(QStringLiteral(".brox-%1-%2.part").arg(getpid()).arg(i));
        // A link that leads nowhere does not "exist".
        if (!QFileInfo::exists(name) && !QFileInfo(name).isSymLink()) {
            return name;
        }
    }
}

void write(QFile& file, const QByteArray& content, const QString& path)
{
    if (!file.open(QFile::WriteOnly | QFile::NewOnly)) {
        throw failure(path, file.errorString());
    }
    // Some file systems find out at the end that they are full.
    if (file.write(content) != content.size() || !file.flush() || fsync(file.handle()) != 0) {
        throw failure(
            path, file.error() == QFile::NoError ? qt_error_string() : file.errorString());
    }
}

/** Where a file is to be: a link stays one, and the file that it leads to is replaced. */
QString targetOf(const QString& name)
{
    const QFileInfo info(name);
    const QString target = info.isSymLink() ? info.canonicalFilePath() : QString();
    return target.isEmpty() ? name : target;
}

/** A second name for a file, or a copy where the file system knows no second names. */
void keep(const fs::path& file, const fs::path& backup)
{
    std::error_code error;
    fs::create_hard_link(file, backup, error);
    if (error) {
        fs::copy_file(file, backup);
    }
}

} // namespace

void tell(const Progress& progress, qint64 done, qint64 total)
{
    if (progress && !progress(done, total)) {
        throw BoardCancelled();
    }
}

FileSet::~FileSet()
{
    for (const File& file : mFiles) {
        QFile::remove(file.temporary);
    }
}

void FileSet::add(const QString& name, const QByteArray& content)
{
    const QString path = targetOf(name);
    const QFileInfo info(path);
    if (info.isDir()) {
        throw failure(path, PlanText::tr("it is a folder"));
    }
    if (info.exists() && !info.isFile()) {
        throw failure(path, PlanText::tr("it is no file"));
    }
    if (!QDir().mkpath(info.absolutePath())) {
        throw failure(path, PlanText::tr("its folder can't be made"));
    }
    const QString place = QDir(info.absoluteDir().canonicalPath()).filePath(info.fileName());
    if (!mPlaces.insert(place).second) {
        throw failure(path, PlanText::tr("it is named twice"));
    }
    mFiles.push_back({path, freeName(path), {}, false});
    QFile file(mFiles.back().temporary);
    write(file, content, path);
    if (info.exists()) {
        file.setPermissions(info.permissions());
    }
}

void FileSet::place(File& file)
{
    try {
        if (QFileInfo::exists(file.path)) {
            const QString backup = freeName(file.path);
            keep(native(file.path), native(backup));
            file.backup = backup;
        }
        fs::rename(native(file.temporary), native(file.path));
        file.isPlaced = true;
    } catch (const fs::filesystem_error& error) {
        throw failure(file.path, QString::fromStdString(error.code().message()));
    }
}

void FileSet::putBack(File& file)
{
    std::error_code error; // nothing more can be done about it
    if (file.isPlaced && file.backup.isEmpty()) {
        fs::remove(native(file.path), error);
    } else if (file.isPlaced) {
        fs::rename(native(file.backup), native(file.path), error);
        file.backup.clear(); // if that failed, it is all there is of the old file
    }
    file.isPlaced = false;
    if (!file.backup.isEmpty()) {
        QFile::remove(file.backup);
    }
}

void FileSet::commit()
{
    try {
        for (File& file : mFiles) {
            place(file);
        }
    } catch (const OutputError&) {
        std::for_each(mFiles.rbegin(), mFiles.rend(), putBack);
        throw;
    }
    for (const File& file : mFiles) {
        if (!file.backup.isEmpty()) {
            QFile::remove(file.backup);
        }
    }
}

QStringList FileSet::paths() const
{
    QStringList paths;
    for (const File& file : mFiles) {
        paths << file.path;
    }
    return paths;
}

} // namespace brox
