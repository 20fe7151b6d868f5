// SPDX-License-Identifier: MIT
#include "drill_program.h"

#include "excellon_writer.h"
#include "file_set.h"
#include "geometry.h"
#include "plan_text.h"

#include <QDir>
#include <QSet>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numeric>

namespace brox {

namespace {

constexpr int longestName = 240; ///< bytes of UTF-8; file systems take 255

/** "hits 12, slots 2" */
QString hitsText(qint64 holes, qint64 slotPaths)
{
    QStringList parts;
    if (holes > 0) {
        parts << QStringLiteral("hits %1").arg(holes);
    }
    if (slotPaths > 0) {
        parts << QStringLiteral("slots %1").arg(slotPaths);
    }
    return parts.join(", ");
}

QString rowText(const PlanRow& row, const ExcellonWriter& writer)
{
    QString text = typeWord(row.type, row.isSlot);
    if (row.finishedSize > 0) {
        text += ", finished " + QString::fromLatin1(writer.sizeWithUnit(row.finishedSize)) + ", ";
        text += row.tolerance == Tolerance{}
            ? QStringLiteral("no tolerance")
            : QStringLiteral("tolerance +%1/-%2")
                  .arg(QString::fromLatin1(writer.size(row.tolerance.plus)),
                      QString::fromLatin1(writer.size(row.tolerance.minus)));
    }
    text += ", " + (row.isSlot ? hitsText(0, row.count) : hitsText(row.count, 0));
    for (const QString& flag : flagTexts(row)) {
        text += ", " + flag;
    }
    return text;
}

/** The tool's number with two digits. */
QByteArray toolName(const ProgramTool& tool)
{
    return 'T' + QByteArray::number(tool.number).rightJustified(2, '0');
}

/** What a pair of layers is to the board, as far as numbers of layers show. */
QString spanLabel(const DrillPlan& plan, const Program& program, const std::pair<int, int>& own)
{
    if (!program.isPlated) {
        return QStringLiteral(",NPTH");
    }
    int first = plan.board->copperLayers.isEmpty() ? own.first : 1;
    int last = std::max(own.second, int(plan.board->copperLayers.size()));
    for (const StepLayer& layer : plan.layers) {
        if (const auto pair = copperNumbers(*plan.board, layer.span)) {
            first = std::min(first, pair->first);
            last = std::max(last, pair->second);
        }
    }
    const int ends = int(own.first == first) + int(own.second == last);
    return ends == 2 ? ",PTH" : ends == 1 ? ",Blind" : ",Buried";
}

/** Tells readers, ours among them, what is plated. */
void writePlating(ExcellonWriter& writer, const DrillPlan& plan, const Program& program)
{
    const std::optional<Span>& span = plan.layers[program.layer].span;
    if (!span) {
        writer.line(program.isPlated ? ";TYPE=PLATED" : ";TYPE=NON_PLATED");
        return;
    }
    const QString plating = program.isPlated ? "Plated" : "NonPlated";
    if (const auto numbers = copperNumbers(*plan.board, span)) {
        writer.comment(QStringLiteral("#@! TF.FileFunction,%1,%2,%3%4")
                           .arg(plating)
                           .arg(numbers->first)
                           .arg(numbers->second)
                           .arg(spanLabel(plan, program, *numbers)));
        return;
    }
    const auto field = [](QString name) { return name.replace(',', '_'); };
    writer.comment(QStringLiteral("#@! TF.FileFunction,%1,%2,%3%4")
                       .arg(plating, field(span->from), field(span->to),
                           program.isPlated ? QString() : QStringLiteral(",NPTH")));
}

/** By which a later export knows the program again. */
void writeOrigin(ExcellonWriter& writer, const DrillPlan& plan, size_t layer)
{
    writer.comment("Board: " + plan.board->job);
    writer.comment("Step: " + plan.boardStep().name);
    writer.comment("Drilled layer: " + plan.layers[layer].name);
}

/** Where a tool drills. */
struct ToolHits
{
    std::vector<Place> holes;
    std::vector<const Path*> slotPaths;
    qint64 doubled = 0; ///< hits left out, since the tool has been there
};

ToolHits hitsOf(const ProgramTool& tool, const std::vector<RowPlaces>& places)
{
    ToolHits hits;
    for (const size_t row : tool.rows) {
        hits.holes.insert(hits.holes.end(), places[row].holes.begin(), places[row].holes.end());
        for (const Path& path : places[row].slotPaths) {
            hits.slotPaths.push_back(&path);
        }
    }
    hits.doubled = dropDoubled(hits.holes) + dropDoubled(hits.slotPaths);
    return hits;
}

/** Random places in strips three deep are visited in about the least travel that strips allow. */
constexpr double depthOfStrip = 3;

struct Stop
{
    quint64 along; ///< strip, then how far along it
    Size across;
    std::uint32_t index;

    auto operator<=>(const Stop&) const = default;
};

/** Keeps the order of numbers, so that the least is 0. */
quint32 ascending(Size size)
{
    return quint32(size) ^ 0x80000000U;
}

using Axis = Size Place::*;

std::vector<std::uint32_t> stripOrder(const std::vector<Place>& places, Axis across, Axis along)
{
    const auto span = [&places](Axis axis) {
        const auto [least, most] = std::ranges::minmax_element(places, {}, axis);
        return std::pair((*least).*axis, qint64((*most).*axis) - (*least).*axis + 1);
    };
    const auto [least, width] = span(across);
    const qint64 height = span(along).second;
    const double count = double(places.size());
    const double ideal = std::sqrt(count * double(width) / double(height) / depthOfStrip);
    const auto strips = qint64(std::clamp(ideal, 1.0, count));

    std::vector<Stop> stops;
    stops.reserve(places.size());
    for (const Place& place : places) {
        const auto strip = quint64((qint64(place.*across) - least) * strips / width);
        const quint32 up = ascending(place.*along);
        stops.push_back({strip << 32 | (strip % 2 == 0 ? up : ~up), place.*across,
            std::uint32_t(stops.size())});
    }
    std::ranges::sort(stops);
    std::vector<std::uint32_t> order;
    order.reserve(stops.size());
    for (const Stop& stop : stops) {
        order.push_back(stop.index);
    }
    return order;
}

/** Both axes of a machine move at once. */
qint64 travel(const std::vector<Place>& places, const std::vector<std::uint32_t>& order)
{
    qint64 way = 0;
    for (size_t i = 1; i < order.size(); ++i) {
        const Place& from = places[order[i - 1]];
        const Place& to = places[order[i]];
        way += std::max(std::abs(qint64(to.x) - from.x), std::abs(qint64(to.y) - from.y));
    }
    return way;
}

/** The order in which a machine visits places with little travel: up one strip of the board and
 *  down the next, or across, or as they are given, whichever is shortest. Strips are so wide that
 *  a few places lie side by side. The same places in the same order always give the same.
 *
 * @return indices of the places
 */
std::vector<std::uint32_t> sweepOrder(const std::vector<Place>& places)
{
    std::vector<std::uint32_t> best(places.size());
    std::iota(best.begin(), best.end(), 0U);
    if (places.empty()) {
        return best;
    }
    qint64 least = travel(places, best);
    for (const auto& [across, along] :
        {std::pair(&Place::x, &Place::y), std::pair(&Place::y, &Place::x)}) {
        std::vector<std::uint32_t> order = stripOrder(places, across, along);
        if (const qint64 way = travel(places, order); way < least) {
            least = way;
            best = std::move(order);
        }
    }
    return best;
}

qint64 hitsOf(const Program& program)
{
    return std::accumulate(program.tools.begin(), program.tools.end(), qint64(0),
        [](qint64 sum, const ProgramTool& tool) { return sum + tool.hits(); });
}

void writeHead(ExcellonWriter& writer, const DrillPlan& plan, const Program& program,
    const std::vector<ToolHits>& hits)
{
    writer.line("M48");
    writer.comment(QStringLiteral("Drill program by brox %1").arg(OUTPUT_VERSION));
    writer.comment("SIZES ARE DRILL SIZES, NOT FINISHED SIZES: do not add plating to them again");
    writeOrigin(writer, plan, program.layer);
    writer.comment(program.isPlated ? "Drilled before plating" : "Not plated");
    writer.comment("Model: " + plan.model.name + " (" + fileState(plan.model) + ")");
    writer.comment(QStringLiteral("Units: %1").arg(writer.unit()));
    if (program.toolsBefore > program.toolCount()) {
        writer.comment(QStringLiteral("Fewest tools: %1 instead of %2")
                           .arg(program.toolCount())
                           .arg(program.toolsBefore));
    }
    writePlating(writer, plan, program);
    writer.line(writer.unitCommand());
    for (size_t i = 0; i < program.tools.size(); ++i) {
        const ProgramTool& tool = program.tools[i];
        writer.comment(
            QStringLiteral("%1 drill %2, %3, %4")
                .arg(QString::fromLatin1(toolName(tool)),
                    QString::fromLatin1(writer.sizeWithUnit(*tool.size)),
                    tool.bit.isEmpty() ? QStringLiteral("no bit") : "bit " + tool.bit,
                    hitsText(qint64(hits[i].holes.size()), qint64(hits[i].slotPaths.size()))));
        if (hits[i].doubled > 0) {
            writer.indented(QStringLiteral("hits left out, since the tool has been there: %1")
                                .arg(hits[i].doubled));
        }
        for (const size_t row : tool.rows) {
            writer.indented(rowText(plan.rows[row], writer));
        }
        writer.line(toolName(tool) + 'C' + writer.size(*tool.size));
    }
    writer.line("%");
}

/** Reports how many hits of a program are written. */
class Count
{
public:
    Count(const Progress& progress, qint64 total)
        : mProgress(progress)
        , mTotal(total)
    { }

    void add()
    {
        constexpr qint64 step = 10'000;
        if (++mDone % step == 0) {
            report();
        }
    }
    void report() const { tell(mProgress, mDone, mTotal); }

private:
    const Progress& mProgress;
    qint64 mDone = 0;
    qint64 mTotal;
};

void writeTool(ExcellonWriter& writer, const ProgramTool& tool, const ToolHits& hits, Count& count)
{
    const std::vector<Place>& holes = hits.holes;
    const std::vector<const Path*>& slotPaths = hits.slotPaths;
    std::vector<Place> slotStarts;
    for (const Path* path : slotPaths) {
        slotStarts.push_back(path->start);
    }
    writer.line(toolName(tool));
    count.report(); // many hits take a moment to be put in order
    for (const std::uint32_t index : sweepOrder(holes)) {
        writer.hole(holes[index]);
        count.add();
    }
    for (const std::uint32_t index : sweepOrder(slotStarts)) {
        writer.slot(*slotPaths[index]);
        count.add();
    }
    if (!slotPaths.empty()) {
        writer.line("G05");
    }
}

void checkRows(const DrillPlan& plan)
{
    if (plan.rows.empty()) {
        throw OutputError(
            PlanText::tr("step \"%1\": no holes, so no drill program").arg(plan.boardStep().name));
    }
    for (const PlanRow& row : plan.rows) {
        if (row.finishedSize == 0 && !row.drillSize) {
            throw OutputError(
                PlanText::tr("layer \"%1\": the board specifies no size of T%2, \"%3\"")
                    .arg(plan.layers[row.layer].name, QString::number(plan.tool(row).tool->number),
                        spoken(typeWord(row.type, row.isSlot))));
        }
        if (!row.drillSize || !ExcellonWriter(plan.units).canWrite(*row.drillSize)) {
            throw OutputError(
                PlanText::tr("layer \"%1\": the tool \"%2\" of %3 %4 has no drill size by model "
                             "\"%5\" and its formula")
                    .arg(plan.layers[row.layer].name, spoken(typeWord(row.type, row.isSlot)),
                        sizeText(row.finishedSize, plan.units), unitName(plan.units),
                        plan.model.name));
        }
    }
}

void checkTools(const DrillPlan& plan)
{
    for (const Program& program : plan.programs) {
        if (program.tools.size() > programToolLimit) {
            throw OutputError(
                PlanText::tr("layer \"%1\", %2: %3 tools; a drill program holds at most %4")
                    .arg(plan.layers[program.layer].name,
                        program.isPlated ? PlanText::tr("plated") : PlanText::tr("non-plated"))
                    .arg(program.tools.size())
                    .arg(programToolLimit));
        }
    }
}

/** A part of a file's name. */
QString nameOf(const QString& text)
{
    QString name = text.simplified();
    for (QChar& letter : name) {
        const bool isFine = (letter.isPrint() || letter.isSurrogate())
            && !QStringLiteral("/\\:*?\"<>|").contains(letter);
        letter = isFine ? letter : QChar('_');
    }
    return name;
}

/** As many whole characters as fit into a file's name beside its end. */
QString cut(QString stem, const QString& end)
{
    while ((stem + end).toUtf8().size() > longestName) {
        stem.chop(stem.back().isLowSurrogate() ? 2 : 1);
    }
    return stem + end;
}

} // namespace

QStringList programNames(const DrillPlan& plan)
{
    QStringList names;
    QSet<QString> taken;
    for (const Program& program : plan.programs) {
        const QString stem = QStringList{nameOf(plan.board->job), nameOf(plan.boardStep().name),
            nameOf(plan.layers[program.layer].name)}
                                 .join('-');
        const QString end = program.isPlated ? "-plated.drl" : "-nonplated.drl";
        QString name = cut(stem, end);
        for (int i = 2; taken.contains(name.toCaseFolded()); ++i) {
            name = cut(stem, QStringLiteral("_%1%2").arg(i).arg(end));
        }
        taken.insert(name.toCaseFolded());
        names << name;
    }
    return names;
}

QByteArray programText(const DrillPlan& plan, const Program& program,
    const std::vector<RowPlaces>& places, const Progress& progress)
{
    constexpr qint64 bytesOfHole = 24;
    ExcellonWriter writer(plan.units);
    std::vector<ToolHits> hits;
    for (const ProgramTool& tool : program.tools) {
        hits.push_back(hitsOf(tool, places));
    }
    Count count(progress, hitsOf(program));
    writer.reserve(hitsOf(program) * bytesOfHole);
    writeHead(writer, plan, program, hits);
    writer.line("G90");
    writer.line("G05");
    for (size_t i = 0; i < program.tools.size(); ++i) {
        writeTool(writer, program.tools[i], hits[i], count);
    }
    writer.line("M30");
    return writer.text();
}

void addDrillPrograms(
    const DrillPlan& plan, const QString& folder, FileSet& files, const Progress& progress)
{
    checkRows(plan);
    checkTools(plan);
    const std::vector<RowPlaces> places = placesOf(plan);
    const QStringList names = programNames(plan);
    qint64 total = 0;
    for (const Program& program : plan.programs) {
        total += hitsOf(program);
    }
    qint64 before = 0;
    const Progress ofAll = [&](qint64 done, qint64) {
        tell(progress, before + done, total);
        return true;
    };
    for (size_t i = 0; i < plan.programs.size(); ++i) {
        ofAll(0, 0);
        files.add(QDir(folder).filePath(names[qsizetype(i)]),
            programText(plan, plan.programs[i], places, ofAll));
        before += hitsOf(plan.programs[i]);
    }
}

QStringList stalePrograms(const DrillPlan& plan, const QString& folder)
{
    constexpr qint64 mostOfHead = 16384;
    QList<QByteArray> origins;
    for (size_t layer = 0; layer < plan.layers.size(); ++layer) {
        ExcellonWriter writer(plan.units);
        writeOrigin(writer, plan, layer);
        origins << '\n' + writer.text();
    }
    const QStringList names = programNames(plan);
    QStringList stale;
    for (const QFileInfo& info : QDir(folder).entryInfoList({"*.drl"}, QDir::Files)) {
        QFile file(info.filePath());
        if (names.contains(info.fileName()) || !file.open(QFile::ReadOnly)) {
            continue;
        }
        const QByteArray head = file.read(mostOfHead);
        const auto isIn = [&](const QByteArray& origin) { return head.contains(origin); };
        if (head.startsWith("M48\n; Drill program by brox ")
            && std::ranges::any_of(origins, isIn)) {
            stale << info.filePath();
        }
    }
    return stale;
}

} // namespace brox
