// SPDX-License-Identifier: MIT
#include "board_reader.h"

#include "board_files.h"
#include "drill_board.h"
#include "ipc2581_reader.h"

#include <QDir>
#include <QFileInfo>

namespace brox {

namespace {

/** What the names have in common, up to a mark between words; else their folder. */
QString jobName(const QStringList& paths)
{
    const QString first = QFileInfo(paths[0]).completeBaseName();
    const auto isBorder = [](const QString& name, qsizetype at) {
        return at == name.size() || !name[at].isLetterOrNumber();
    };
    qsizetype length = first.size();
    for (const QString& path : paths) {
        const QString name = QFileInfo(path).completeBaseName();
        while (length > 0
            && (!name.startsWith(first.first(length)) || !isBorder(name, length)
                || !isBorder(first, length))) {
            --length;
        }
    }
    const QString folder = QFileInfo(paths[0]).absoluteDir().dirName();
    return length > 0 ? first.first(length) : folder.isEmpty() ? first : folder;
}

QString namesOf(const std::vector<BoardFile>& files)
{
    QStringList names;
    for (const BoardFile& file : files) {
        names << file.name;
    }
    return names.join(QStringLiteral(", "));
}

/** What was taken from an archive or a folder and what was not, for the user. */
QStringList takenText(const BoardFiles& files)
{
    if (!files.isSearched) {
        return {};
    }
    QStringList lines{BoardText::tr("taken: ") + namesOf(files.taken)};
    if (!files.lists.empty()) {
        lines << BoardText::tr("lists of tools: ") + namesOf(files.lists);
    }
    if (!files.left.isEmpty()) {
        lines << BoardText::tr("not taken: ") + files.left.join(QStringLiteral(", "));
    }
    return lines;
}

void makePrintable(Board& board)
{
    board.job = printable(board.job);
    for (QString& note : board.notes) {
        note = printable(note);
    }
    for (Step& step : board.steps) {
        step.name = printable(step.name);
        for (Layer& layer : step.layers) {
            layer.name = printable(layer.name);
            if (layer.span) {
                layer.span = Span{printable(layer.span->from), printable(layer.span->to)};
            }
        }
    }
}

/** Reads the drill files that came with a board; what can't be read of them is noted. */
void addDrillFiles(Board& board, const BoardFiles& all, const ReadOptions& options)
{
    if (all.besides.empty()) {
        return;
    }
    const auto note = [&](const BoardError& error) {
        board.notes << BoardText::tr("not compared: ") + error.message();
    };
    // They are no board of their own here, and an error in them is none of the board.
    const ReadOptions quiet{options.fileFormat, false, {}};
    try {
        DrillBoard drills(quiet, all, all.besides.size() == 1);
        QStringList names;
        for (const BoardFile& file : all.besides) {
            try {
                drills.add(file, options.progress);
                names << file.name;
            } catch (const BoardError& error) {
                note(error);
            }
        }
        if (names.isEmpty()) {
            return;
        }
        Board drilled = drills.finish(BoardText::tr("drill files"));
        board.notes << BoardText::tr("compared: ") + names.join(QStringLiteral(", "))
                    << drilled.notes;
        board.drillFiles = std::make_shared<const Board>(std::move(drilled));
    } catch (const BoardError& error) {
        note(error);
    }
}

} // namespace

Board readBoard(const QStringList& paths, const ReadOptions& options)
{
    BoardFiles files = findBoardFiles(paths);
    const QStringList notes = takenText(files);
    Board board;
    if (isXml(files.taken.front().kind)) {
        BoardFile& file = files.taken.front();
        board = readIpc2581(*file.open(), file.name, options);
        board.file = QFileInfo(file.name).fileName();
        addDrillFiles(board, files, options);
    } else {
        qint64 before = 0;
        DrillBoard drills(options, files, files.taken.size() == 1);
        QStringList names;
        for (const BoardFile& file : files.taken) {
            qint64 size = 0;
            drills.add(file, [&, before](qint64 done, qint64) {
                size = done;
                return !options.progress || options.progress(before + done, files.totalSize);
            });
            before += size;
            names << file.name;
        }
        const bool isOne = files.isSearched && paths.size() == 1 && QFileInfo::exists(paths[0]);
        board = drills.finish(
            isOne ? QFileInfo(QDir(paths[0]).absolutePath()).completeBaseName() : jobName(names));
    }
    board.notes = notes + board.notes;
    makePrintable(board);
    return board;
}

} // namespace brox
