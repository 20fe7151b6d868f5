// SPDX-License-Identifier: MIT
#include "excellon_reader.h"

#include "excellon_program.h"
#include "tool_collector.h"

#include <QDir>
#include <QFileInfo>
#include <limits>

namespace {

/** What the files' names have in common, up to a mark between words; else their folder. */
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

/** Names of the layers: short, but no two alike. */
QStringList layerNames(const QStringList& paths)
{
    QStringList names;
    QStringList files;
    for (const QString& path : paths) {
        const QFileInfo file(path);
        if (files.contains(file.canonicalFilePath())) {
            throw BoardError(path, 1, QStringLiteral("the file is named twice"));
        }
        files << file.canonicalFilePath();
        QString name = file.completeBaseName();
        for (const QString& longer : {file.fileName(), file.filePath(), files.last()}) {
            name = names.contains(name) ? longer : name;
        }
        names << name;
    }
    return names;
}

} // namespace

Board readExcellon(const QStringList& paths, const Progress& progress)
{
    qint64 total = 0;
    for (const QString& path : paths) {
        total += QFileInfo(path).size();
    }
    const QStringList names = layerNames(paths);
    ToolCollector collector(QStringLiteral("pcb"));
    std::optional<Units> units;
    qint64 before = 0;
    qint64 line = 1;
    for (qsizetype i = 0; i < paths.size(); ++i) {
        ExcellonProgram program(paths[i]);
        qint64 size = 0;
        program.read([&](qint64 done, qint64 ofFile) {
            size = ofFile;
            return !progress || progress(before + done, total);
        });
        before += size;
        units = units ? units : program.units();

        const size_t layer = collector.layer(names[i]);
        bool ok = true;
        for (const Tool& tool : program.tools()) {
            ok = collector.add(layer, tool) && ok;
        }
        collector.step().slotsLeftOut += program.slotCount();
        if (!ok || collector.step().slotsLeftOut > std::numeric_limits<int>::max()) {
            throw BoardError(paths[i], program.lines(), QStringLiteral("too many holes"));
        }
        line = program.lines();
    }
    Board board;
    board.job = jobName(paths);
    board.units = units.value_or(Units::Metric);
    board.steps.push_back(collector.take());
    if (board.steps[0].layers.empty()) {
        throw BoardError(paths.last(), line,
            paths.size() == 1 ? QStringLiteral("the file has no drilled hole")
                              : QStringLiteral("no file has a drilled hole"));
    }
    return board;
}
