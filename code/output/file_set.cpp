// SPDX-License-Identifier: MIT
#include "file_set.h"

#include "plan_text.h"

#include <QDir>
#include <QFileInfo>
#include <filesystem>
#include <unistd.h>

namespace brox {

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
    if (!device.open(QFile::WriteOnly | QFile::NewOnly)) {
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
    } catch (const std::filesystem::filesystem_error& error) {
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
    } catch (const std::filesystem::filesystem_error&) { }
}

QStringList FileSet::paths() const
{
    QStringList paths;
    for (const std::unique_ptr<File>& file : mFiles) {
        paths << file->path;
    }
    return paths;
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
