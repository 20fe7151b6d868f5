// SPDX-License-Identifier: MIT
#include "board_reader.h"

#include "board_files.h"
#include "board_text.h"
#include "excellon_reader.h"
#include "file_kind.h"
#include "gerber_drill_reader.h"
#include "ipc2581_reader.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

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

/** A name for a layer: short, but of no other. */
QString layerName(const QString& path, const std::vector<Layer>& others)
{
    const QFileInfo file(path);
    QString name = file.completeBaseName();
    for (const QString& longer : {file.fileName(), path, file.absoluteFilePath()}) {
        const bool taken = std::any_of(
            others.begin(), others.end(), [&](const Layer& other) { return other.name == name; });
        name = taken ? longer : name;
    }
    return name;
}

bool isEmpty(const Layer& layer)
{
    return layer.tools.empty() && layer.backDrills.empty() && layer.contours.empty();
}

bool drillTheSame(const Layer& a, const Layer& b)
{
    const auto same = [](const Tool& left, const Tool& right) {
        return left.isLike(right) && left.holes == right.holes && left.slotPaths == right.slotPaths;
    };
    return std::equal(a.tools.begin(), a.tools.end(), b.tools.begin(), b.tools.end(), same);
}

/** A board of drill files: one step, a layer a file. */
class DrillBoard
{
public:
    explicit DrillBoard(const ReadOptions& options)
        : mOptions(options)
    { }

    void add(BoardFile& file)
    {
        const auto device = file.open();
        DrillFile drill = file.kind == FileKind::GerberDrill
            ? readGerberDrill(*device, file.name, mOptions)
            : readExcellon(*device, file.name, mOptions);
        for (const QString& note : drill.notes) {
            mBoard.notes << QStringLiteral("%1: %2").arg(file.name, note);
        }
        mUnits = mUnits ? mUnits : drill.units;
        if (isEmpty(drill.layer)) {
            mBoard.notes << BoardText::tr("%1: nothing to drill").arg(file.name);
            return;
        }
        std::vector<Layer>& layers = mStep.layers;
        const auto twin = std::find_if(layers.begin(), layers.end(),
            [&](const Layer& other) { return file.isFound && drillTheSame(other, drill.layer); });
        if (twin != layers.end()) {
            mBoard.notes << BoardText::tr("%1: left out, it drills the same as %2")
                                .arg(file.name, twin->name);
            return;
        }
        drill.layer.name = layerName(file.name, layers);
        layers.push_back(std::move(drill.layer));
    }

    Board finish(const QString& job, const QString& lastFile)
    {
        const bool hasTools = std::any_of(mStep.layers.begin(), mStep.layers.end(),
            [](const Layer& layer) { return !layer.tools.empty(); });
        if (!hasTools) {
            throw BoardError(lastFile, 1, noHoleText(mStep.layers));
        }
        mStep.name = QStringLiteral("pcb");
        mBoard.job = job;
        mBoard.units = mUnits.value_or(Units::Metric);
        mBoard.steps.push_back(std::move(mStep));
        return std::move(mBoard);
    }

private:
    const ReadOptions& mOptions;
    Board mBoard;
    Step mStep;
    std::optional<Units> mUnits;
};

/** What was taken from an archive or a folder and what was not, for the user. */
QStringList takenText(const BoardFiles& files)
{
    if (!files.isSearched) {
        return {};
    }
    QStringList taken;
    for (const BoardFile& file : files.taken) {
        taken << file.name;
    }
    QStringList lines{BoardText::tr("taken: ") + taken.join(QStringLiteral(", "))};
    if (!files.left.isEmpty()) {
        lines << BoardText::tr("not taken: ") + files.left.join(QStringLiteral(", "));
    }
    return lines;
}

} // namespace

Board readBoard(const QStringList& paths, const ReadOptions& options)
{
    BoardFiles files = findBoardFiles(paths);
    const QStringList notes = takenText(files);
    Board board;
    if (files.taken.front().kind == FileKind::Xml) {
        BoardFile& file = files.taken.front();
        board = readIpc2581(*file.open(), file.name, options);
    } else {
        qint64 before = 0;
        ReadOptions whole = options;
        DrillBoard drills(whole);
        QStringList names;
        for (BoardFile& file : files.taken) {
            qint64 size = 0;
            if (options.progress) {
                whole.progress = [&](qint64 done, qint64) {
                    size = done;
                    return options.progress(before + done, files.totalSize);
                };
            }
            drills.add(file);
            before += size;
            names << file.name;
        }
        const bool isOne = files.isSearched && paths.size() == 1 && QFileInfo::exists(paths[0]);
        board = drills.finish(
            isOne ? QFileInfo(QDir(paths[0]).absolutePath()).completeBaseName() : jobName(names),
            names.last());
    }
    board.notes = notes + board.notes;
    return board;
}

} // namespace brox
