// SPDX-License-Identifier: MIT
#include "drill_board.h"

#include "board_text.h"
#include "excellon_reader.h"
#include "gerber_drill_reader.h"
#include "same_holes.h"
#include "units_unknown.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <algorithm>
#include <map>

namespace brox {

namespace {

constexpr int maxReadings = 3; ///< of a file, until its format fits

bool isEmpty(const Layer& layer)
{
    return layer.tools.empty() && layer.backDrills.empty() && layer.contours.empty();
}

bool hasSameDigits(const NumberFormat& a, const NumberFormat& b)
{
    return a.zeros == Zeros::Leading ? a.digits->before == b.digits->before
                                     : a.digits->after == b.digits->after;
}

/** "board.drd.0104" drills from layer 1 to 4. */
std::optional<Span> spanOfName(const QString& name)
{
    static const QRegularExpression pair(QStringLiteral("\\.(\\d\\d)(\\d\\d)$"));
    const auto match = pair.match(name);
    const int from = match.captured(1).toInt();
    const int to = match.captured(2).toInt();
    return match.hasMatch() && from >= 1 && from < to
        ? std::optional(Span{QString::number(from), QString::number(to)})
        : std::nullopt;
}

} // namespace

void DrillBoard::read(Entry& entry)
{
    const auto device = entry.file->open();
    const QString& name = entry.file->name;
    entry.drill = entry.file->kind == FileKind::GerberDrill
        ? readGerberDrill(*device, name, entry.options)
        : readExcellon(*device, name, entry.options);
    if (!entry.drill.layer.span) {
        entry.drill.layer.span = spanOfName(name);
    }
}

void DrillBoard::add(const BoardFile& file, const Progress& progress)
{
    const qint64 drilled = mEntries.empty() ? 0 : mEntries.back().drill.drilled;
    Entry& entry = mEntries.emplace_back();
    entry.file = &file;
    entry.options.fileFormat = mOptions.fileFormat;
    entry.options.progress = progress;
    entry.options.drilled = drilled;
    try {
        read(entry);
    } catch (const UnitsUnknown&) { // which the user can tell
        throw;
    } catch (const BoardError& error) {
        if (mOptions.isStrict || !file.isFound || file.isSurelyDrilled) {
            throw;
        }
        mBoard.notes << BoardText::tr("not read: ") + error.message();
        mError = mError ? mError : error;
        mEntries.pop_back();
    }
}

/** Puts the likeliest formats first. */
void DrillBoard::rankFormats()
{
    double told = 0;
    std::map<std::pair<Units, Zeros>, std::vector<Entry*>> alike; // one program wrote them
    for (Entry& entry : mEntries) {
        if (entry.drill.choices.empty()) {
            told = std::max(told, entry.drill.extent);
        } else if (mOptions.fileFormat.digits) { // told by the user, and falsely by the file
            entry.options.chosen = mOptions.fileFormat;
            entry.options.chosenBy = Origin::User;
        } else {
            alike[{*entry.drill.format.units, *entry.drill.format.zeros}].push_back(&entry);
        }
    }
    for (auto& [key, entries] : alike) {
        std::vector<std::vector<FormatChoice>> choices;
        for (const Entry* entry : entries) {
            choices.push_back(entry->drill.choices);
        }
        sortFormats(choices, told);
        for (size_t i = 0; i < entries.size(); ++i) {
            entries[i]->drill.choices = choices[i];
            entries[i]->options.chosen = choices[i].front().format;
        }
    }
}

/** Reads files again whose numbers look better in another format; whether there were any. */
bool DrillBoard::readAgain()
{
    bool isChanged = false;
    for (Entry& entry : mEntries) {
        if (entry.options.chosen && !hasSameDigits(*entry.options.chosen, entry.drill.format)) {
            entry.options.progress = mOptions.progress; // begins anew
            read(entry);
            isChanged = true;
        }
    }
    return isChanged;
}

void DrillBoard::settleFormats()
{
    rankFormats();
    for (int i = 1; i < maxReadings && readAgain(); ++i) {
        rankFormats();
    }
    for (Entry& entry : mEntries) {
        DrillFile& drill = entry.drill;
        if (drill.farLine != 0) {
            throw BoardError(entry.file->name, drill.farLine,
                BoardText::tr("a place further than 5 m from the origin"));
        }
        const auto read = std::find_if(drill.choices.begin(), drill.choices.end(),
            [&](const FormatChoice& choice) { return hasSameDigits(choice.format, drill.format); });
        const bool isLikeliest = read == drill.choices.begin();
        if (drill.layer.assumedFormat.isEmpty() || read == drill.choices.end()
            || (isLikeliest && !isDoubtful(drill.choices))) {
            continue;
        }
        std::rotate(drill.choices.begin(), read, read + 1);
        drill.layer.formatDoubtful = true;
        drill.layer.assumedFormat = BoardText::tr("%1 or as likely %2; --digits decides")
                                        .arg(drill.choices[0].text(), drill.choices[1].text());
    }
}

/** Short names, but each keeps what tells it from the others. */
void DrillBoard::nameLayers()
{
    using Name = QString (*)(const QString& path);
    constexpr Name names[] = {
        [](const QString& path) { return QFileInfo(path).completeBaseName(); },
        [](const QString& path) { return QFileInfo(path).fileName(); },
        [](const QString& path) { return path; }};
    for (const Name name : names) {
        QSet<QString> seen;
        QSet<QString> shared;
        for (const Entry& entry : mEntries) {
            const QString own = name(entry.file->name);
            (seen.contains(own) ? shared : seen) << own;
        }
        for (Entry& entry : mEntries) {
            QString& own = entry.drill.layer.name;
            own = name == names[0] || own.isEmpty() ? name(entry.file->name) : own;
            if (shared.contains(own)) {
                own.clear();
            }
        }
    }
    for (Entry& entry : mEntries) { // standard input and a file may still have one name
        QString& own = entry.drill.layer.name;
        own = own.isEmpty() ? entry.file->name : own;
    }
}

void DrillBoard::addNotes(const Entry& entry)
{
    for (const QString& note : entry.drill.notes) {
        mBoard.notes << QStringLiteral("%1: %2").arg(entry.file->name, note);
    }
    if (isEmpty(entry.drill.layer)) {
        mBoard.notes << BoardText::tr("%1: nothing to drill").arg(entry.file->name);
    }
}

Board DrillBoard::finish(const QString& job)
{
    if (mEntries.empty() && mError) {
        throw BoardError(*mError);
    }
    settleFormats();
    nameLayers();
    Step step;
    step.name = QStringLiteral("pcb");
    std::optional<Units> units;
    for (Entry& entry : mEntries) {
        addNotes(entry);
        units = units ? units : entry.drill.units;
        if (!isEmpty(entry.drill.layer)) {
            step.layers.push_back(std::move(entry.drill.layer));
        }
    }
    mBoard.notes << leaveOutRepeats(step.layers);
    const bool hasTools = std::any_of(step.layers.begin(), step.layers.end(),
        [](const Layer& layer) { return !layer.tools.empty(); });
    if (!hasTools) {
        throw BoardError(mEntries.back().file->name, 1, noHoleText(step.layers));
    }
    mBoard.job = job;
    mBoard.units = units.value_or(Units::Metric);
    mBoard.steps.push_back(std::move(step));
    return std::move(mBoard);
}

} // namespace brox
