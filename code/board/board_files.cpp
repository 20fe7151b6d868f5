// SPDX-License-Identifier: MIT
#include "board_files.h"

#include "board_archive.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>

namespace brox {

namespace {

constexpr int maxFolderFiles = 10000;
constexpr qint64 maxKeptSize = qint64(16) << 20; ///< of a file of an archive in memory
constexpr qint64 maxAllKept = qint64(256) << 20;

/** So surely that it may be taken unasked. */
bool isOfBoard(FileKind kind)
{
    using enum FileKind;
    return kind == DrillProgram || kind == LikelyProgram || kind == GerberDrill || kind == ToolList
        || kind == Ipc2581;
}

bool isOutlineName(const QString& name)
{
    static const QRegularExpression usual(
        QStringLiteral("edge[-_. ]?cuts|outline|profile|\\.(?:gko|gm1|oln)$"),
        QRegularExpression::CaseInsensitiveOption);
    return QFileInfo(name).fileName().contains(usual);
}

/** Waits for a pipe until it has given that much or has ended. */
QByteArray readAtMost(QIODevice& device, qint64 size)
{
    QByteArray bytes;
    while (bytes.size() < size) {
        const QByteArray more = device.read(qMin<qint64>(size - bytes.size(), fileKindBytes));
        if (more.isEmpty()) {
            break;
        }
        bytes += more;
    }
    return bytes;
}

class Finder
{
public:
    BoardFiles find(const QStringList& paths)
    {
        for (const QString& path : paths) {
            addPath(path);
        }
        choose(paths);
        return std::move(mFiles);
    }

private:
    void addPath(const QString& path)
    {
        const QFileInfo info(path);
        if (path == QLatin1String("-")) {
            addStream(BoardText::tr("standard input"),
                [](QFile& file) { return file.open(stdin, QIODevice::ReadOnly); });
        } else if (info.isDir()) {
            addFolder(path);
        } else if (info.exists() && !info.isFile()) {
            addStream(path, [&](QFile& file) {
                file.setFileName(path);
                return file.open(QIODevice::ReadOnly);
            });
        } else {
            checkTwice(info, path);
            addFile(path, path, false);
        }
    }

    void checkTwice(const QFileInfo& info, const QString& path)
    {
        if (mCanonical.contains(info.canonicalFilePath()) && info.exists()) {
            throw BoardError(path, 0, BoardText::tr("the file is named twice"));
        }
        mCanonical << info.canonicalFilePath();
    }

    void addFile(const QString& path, const QString& name, bool isFound)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            throw BoardError(path, 0, file.errorString());
        }
        const QByteArray beginning = file.peek(fileKindBytes);
        const FileKind kind = fileKind(beginning);
        if (kind == FileKind::Archive) {
            if (isFound) {
                leave(name, BoardText::tr("an archive within a folder"));
            } else {
                addArchive({path, {}});
            }
            return;
        }
        add(name, kind, isFound, file.size(), [path] {
            auto opened = std::make_shared<QFile>(path);
            if (!opened->open(QIODevice::ReadOnly)) {
                throw BoardError(path, 0, opened->errorString());
            }
            return opened;
        });
    }

    /** A pipe gives its content only once. */
    void addStream(const QString& name, const std::function<bool(QFile&)>& open)
    {
        auto file = std::make_shared<QFile>();
        if (!open(*file)) {
            throw BoardError(name, 0, file->errorString());
        }
        file->startTransaction();
        const QByteArray beginning = readAtMost(*file, fileKindBytes);
        file->rollbackTransaction();
        const FileKind kind = fileKind(beginning);
        if (kind != FileKind::Archive) {
            add(name, kind, false, 0, [file, kind] {
                if (file->isTransactionStarted()) {
                    file->rollbackTransaction();
                }
                if (!isXml(kind)) { // drill files may be read again
                    file->startTransaction();
                }
                return file;
            });
            return;
        }
        QByteArray content = readAtMost(*file, maxPipedSize + 1);
        if (content.size() > maxPipedSize) {
            throw BoardError(name, 1,
                BoardText::tr("an archive of more than %1 MiB can't be read from a pipe")
                    .arg(maxPipedSize >> 20));
        }
        addArchive({name, std::make_shared<const QByteArray>(std::move(content))});
    }

    void addFolder(const QString& path)
    {
        mFiles.isSearched = true;
        for (const QString& file : filesIn(path)) {
            addFile(file, file, true);
        }
    }

    /** All but hidden ones, sorted. Qt would leave out what it can't enter or name, and a board
     *  would lack a layer. */
    QStringList filesIn(const QString& path)
    {
        namespace fs = std::filesystem;
        QStringList files;
        try {
            fs::recursive_directory_iterator at(QFile::encodeName(path).toStdString());
            for (; at != fs::recursive_directory_iterator(); ++at) {
                const std::string name = at->path().string();
                const QString file = QFile::decodeName(name.c_str());
                const fs::file_type type = at->symlink_status().type();
                if (at->path().filename().string().starts_with('.')) {
                    at.disable_recursion_pending();
                } else if (QFile::encodeName(file) != name.c_str()) {
                    throw BoardError(file, 1, BoardText::tr("the name is not written in UTF-8"));
                } else if (type == fs::file_type::regular) {
                    files << file;
                } else if (type == fs::file_type::symlink) {
                    leave(file, BoardText::tr("a link"));
                } else if (type != fs::file_type::directory) {
                    leave(file, BoardText::tr("a pipe or a device"));
                }
                if (files.size() + mFiles.left.size() > maxFolderFiles) {
                    throw BoardError(
                        path, 1, BoardText::tr("more than %1 files").arg(maxFolderFiles));
                }
            }
        } catch (const fs::filesystem_error& error) {
            throw BoardError(path, 0, QString::fromStdString(error.code().message()));
        }
        files.sort();
        return files;
    }

    /** Files of usual sizes are kept: whoever reads one later has to unpack all before it. */
    void addArchive(const Archive& archive)
    {
        mFiles.isSearched = true;
        struct Entry
        {
            FileKind kind;
            std::shared_ptr<const QByteArray> content; ///< null: not kept
        };
        std::map<QString, Entry> entries; // by name
        const auto nameOf =
            [&](const QString& entry) { // one that is only packed, in a pipe, has no other
                return entry == archive.path ? entry : archive.path + '/' + entry;
            };
        ArchiveReader reader(archive);
        while (reader.next()) {
            if (!reader.otherKind().isEmpty()) {
                leave(nameOf(reader.name()), reader.otherKind());
                continue;
            }
            QByteArray content = reader.read(fileKindBytes);
            Entry entry{fileKind(content), nullptr};
            const bool isTaken = isOfBoard(entry.kind);
            if (isTaken) {
                content += reader.read(maxKeptSize + 1 - content.size());
                if (content.size() <= maxKeptSize && mKept + content.size() <= maxAllKept) {
                    mKept += content.size();
                    entry.content = std::make_shared<const QByteArray>(std::move(content));
                }
            }
            if (!entries.emplace(reader.name(), std::move(entry)).second && isTaken) {
                throw BoardError(archive.path, 1,
                    BoardText::tr("two files in it are called %1").arg(reader.name()));
            }
        }
        for (const auto& [inside, entry] : entries) {
            const QString name = nameOf(inside);
            if (entry.kind == FileKind::Archive) {
                leave(name, BoardText::tr("an archive within an archive"));
            } else if (entry.content) {
                add(name, entry.kind, true, entry.content->size(), [content = entry.content] {
                    auto buffer = std::make_shared<QBuffer>();
                    buffer->setData(*content);
                    buffer->open(QIODevice::ReadOnly);
                    return buffer;
                });
            } else {
                add(name, entry.kind, true, 0,
                    [archive, inside = inside] { return openArchiveEntry(archive, inside); });
            }
        }
    }

    void add(const QString& name, FileKind kind, bool isFound, qint64 size,
        std::function<std::shared_ptr<QIODevice>()> open)
    {
        BoardFile file{name, kind, isFound, size, std::move(open)};
        const bool isProfile = kind == FileKind::GerberProfile;
        if (kind == FileKind::ToolList) {
            mFiles.lists.push_back(std::move(file));
        } else if (isOfBoard(kind) || (!isFound && (isXml(kind) || isDrillProgram(kind)))) {
            mCandidates.push_back(std::move(file));
        } else if (!isFound) {
            refuse(file);
        } else if (isProfile || (kind == FileKind::Gerber && isOutlineName(name))) {
            leave(name, BoardText::tr("an outline"));
            if (isProfile || !mFiles.outline) { // what a file specifies goes before its name
                mFiles.outline = std::move(file);
            }
        } else {
            leave(name, kindText(kind));
        }
    }

    [[noreturn]] static void refuse(const BoardFile& file)
    {
        throw BoardError(
            file.name, 1, BoardText::tr("no drill file: it is ") + kindText(file.kind));
    }

    void leave(const QString& name, const QString& why)
    {
        mFiles.left << QStringLiteral("%1 (%2)").arg(name, why);
    }

    void choose(const QStringList& paths)
    {
        const auto has = [this](auto isMeant) {
            return std::ranges::any_of(mCandidates, isMeant, &BoardFile::kind);
        };
        if (has(isXml)) {
            chooseIpc2581();
        } else if (has(isDrillProgram)) {
            leaveRepeats();
        }
        mFiles.taken.insert(mFiles.taken.end(), std::make_move_iterator(mCandidates.begin()),
            std::make_move_iterator(mCandidates.end()));
        countSizes();
        if (mFiles.taken.empty()) {
            for (const BoardFile& list : mFiles.lists) {
                if (!list.isFound) {
                    refuse(list);
                }
                leave(list.name, kindText(list.kind));
            }
            throw BoardError(paths.value(0), 0,
                BoardText::tr("nothing of a board in it: %1")
                    .arg(mFiles.left.isEmpty() ? BoardText::tr("it is empty")
                                               : mFiles.left.join(QStringLiteral(", "))));
        }
    }

    void countSizes()
    {
        if (std::ranges::find(mFiles.taken, 0, &BoardFile::size) == mFiles.taken.end()) {
            for (const BoardFile& file : mFiles.taken) {
                mFiles.totalSize += file.size;
            }
        }
    }

    void chooseIpc2581()
    {
        const auto first = std::ranges::find_if(mCandidates, isXml, &BoardFile::kind);
        for (auto it = mCandidates.begin(); it != mCandidates.end(); ++it) {
            if (it == first) {
                continue;
            }
            if (!it->isFound || (isXml(it->kind) && first->isFound)) {
                throw BoardError(first->name, 1,
                    BoardText::tr("no drill file; an IPC-2581 file is a board of its own, open "
                                  "it alone"));
            }
            if (isXml(it->kind)) {
                leave(it->name, BoardText::tr("there is an IPC-2581 file"));
            } else {
                mFiles.besides.push_back(std::move(*it));
            }
        }
        mFiles.taken.push_back(std::move(*first));
        mCandidates.clear();
    }

    void leaveRepeats()
    {
        std::erase_if(mCandidates, [this](const BoardFile& file) {
            const bool repeats = file.isFound && file.kind == FileKind::GerberDrill;
            if (repeats) {
                leave(file.name, BoardText::tr("there are Excellon files"));
            }
            return repeats;
        });
    }

    BoardFiles mFiles;
    std::vector<BoardFile> mCandidates;
    QStringList mCanonical;
    qint64 mKept = 0; ///< bytes
};

} // namespace

BoardFiles findBoardFiles(const QStringList& paths)
{
    return Finder().find(paths);
}

} // namespace brox
