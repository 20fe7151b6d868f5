// SPDX-License-Identifier: MIT
#include "drill_program.h"

#include "doubled_hits.h"
#include "file_set.h"
#include "plan_text.h"
#include "sweep.h"

#include <QDir>
#include <QSet>
#include <algorithm>
#include <charconv>
#include <cmath>

namespace brox {

namespace {

constexpr int longestName = 240; ///< bytes of UTF-8; file systems take 255
constexpr qsizetype longestComment = 200;

/** What coordinates are counted in: the last digit that is written. */
struct Resolution
{
    const char* keyword;
    const char* unit;
    int decimals;
    qint64 numerator; ///< steps of the last digit in denominator host units
    qint64 denominator;

    qint64 round(qint64 size) const
    {
        const qint64 scaled = size * numerator;
        return (scaled + (scaled < 0 ? -denominator : denominator) / 2) / denominator;
    }
};

constexpr Resolution metric{"METRIC", "mm", 4, 1, 40};
constexpr Resolution inch{"INCH", "inch", 5, 10, 1016};

/** A place as a program has it, in steps of the last digit, with room for what lies opposite of it.
 */
struct Coordinates
{
    qint64 x;
    qint64 y;
};

QString plainLine(const QString& text)
{
    QString line = text.simplified().left(longestComment);
    for (QChar& letter : line) {
        letter = letter.isPrint() || letter.isSurrogate() ? letter : QChar('?');
    }
    return line;
}

/** Writes the lines of a program. */
class Writer
{
public:
    explicit Writer(const Resolution& resolution)
        : mResolution(resolution)
    { }

    void line(const QByteArray& text) { mText += text + '\n'; }
    void comment(const QString& text) { line("; " + plainLine(text).toUtf8()); }
    void indented(const QString& text) { line(";   " + plainLine(text).toUtf8()); }

    /** A size with three decimals, or as many as it needs. */
    QByteArray size(Size value) const
    {
        QByteArray text;
        appendNumber(text, mResolution.round(value));
        while (text.endsWith('0') && text.size() - text.indexOf('.') > 4) {
            text.chop(1);
        }
        return text;
    }

    QByteArray sizeWithUnit(Size value) const { return size(value) + ' ' + mResolution.unit; }

    Coordinates inDigits(Place place) const
    {
        return {mResolution.round(place.x), mResolution.round(place.y)};
    }

    void hole(Place place) { move("", inDigits(place)); }

    void slot(const Path& path)
    {
        Place from = path.start;
        move("G00", inDigits(from));
        line("M15");
        if (path.segments.empty()) { // the tool goes down and up
            move("G01", inDigits(from));
        }
        for (const Segment& segment : path.segments) {
            segment.shape == Segment::Shape::Line ? move("G01", inDigits(segment.to))
                                                  : arc(segment, from);
            from = segment.to;
        }
        line("M16");
    }

    QByteArray text() const { return mText; }
    void reserve(qint64 bytes) { mText.reserve(bytes); }

private:
    void appendNumber(QByteArray& text, qint64 value) const
    {
        char digits[24];
        const auto end = std::to_chars(digits, digits + sizeof digits, std::abs(value)).ptr;
        const auto count = int(end - digits);
        const int zeros = std::max(0, mResolution.decimals + 1 - count); // one before the point
        char number[32];
        char* at = number;
        *at = '-';
        at += value < 0;
        at = std::fill_n(at, zeros, '0');
        at = std::copy(digits, end, at);
        std::copy_backward(at - mResolution.decimals, at, at + 1);
        at[-mResolution.decimals] = '.';
        text.append(number, at + 1 - number);
    }

    void appendAxes(char horizontal, char vertical, Coordinates point)
    {
        mText += horizontal;
        appendNumber(mText, point.x);
        mText += vertical;
        appendNumber(mText, point.y);
    }

    void move(const char* command, Coordinates to)
    {
        mText += command;
        appendAxes('X', 'Y', to);
        mText += '\n';
    }

    /** Centres stay exact where a radius would leave them to a square root. */
    void arcTo(bool clockwise, Coordinates from, Coordinates to, Coordinates centre)
    {
        if (from.x == to.x
            && from.y == to.y) { // shorter than a digit; as an arc it would be a circle
            return move("G01", to);
        }
        mText += clockwise ? "G02" : "G03";
        appendAxes('X', 'Y', to);
        appendAxes('I', 'J', {centre.x - from.x, centre.y - from.y});
        mText += '\n';
    }

    /** An arc of more than half a circle goes by the point opposite to its start. The board's own
     *  places show that: with the program's digits the ends of a short arc may be one. */
    void arc(const Segment& segment, Place from)
    {
        const Place to = segment.to;
        const double fromX = double(from.x) - segment.centre.x;
        const double fromY = double(from.y) - segment.centre.y;
        const double toX = double(to.x) - segment.centre.x;
        const double toY = double(to.y) - segment.centre.y;
        checkArc(std::hypot(fromX, fromY), std::hypot(toX, toY));

        const bool clockwise = segment.shape == Segment::Shape::Clockwise;
        const double turn = fromX * toY - fromY * toX;
        const bool isFull = from.x == to.x && from.y == to.y;
        const Coordinates centre = inDigits(segment.centre);
        Coordinates start = inDigits(from);
        if (isFull || (clockwise ? turn > 0 : turn < 0)) {
            const Coordinates opposite{2 * centre.x - start.x, 2 * centre.y - start.y};
            arcTo(clockwise, start, opposite, centre);
            start = opposite;
        }
        arcTo(clockwise, start, inDigits(to), centre);
    }

    /** No machine can follow an arc that does not keep its distance. */
    static void checkArc(double first, double last)
    {
        const double tolerance =
            first / 100 + 50 * double(sizePerMicron); // old files have few digits
        if (std::abs(first - last) > tolerance) {
            throw OutputError(
                PlanText::tr("an arc whose ends are not equally far from its centre"));
        }
    }

    const Resolution& mResolution;
    QByteArray mText;
};

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

QString rowText(const PlanRow& row, const Writer& writer)
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

/** The numbers of the layers that a pair goes by, the upper first; null if only names are told. */
std::optional<std::pair<int, int>> numbersOf(const Board& board, const Span& span)
{
    const auto number = [&](const QString& layer) {
        const int known = int(board.copperLayers.indexOf(layer)) + 1;
        return known > 0 ? known : layer.toInt();
    };
    const auto [first, last] = std::minmax({number(span.from), number(span.to)});
    return first > 0 ? std::optional(std::pair(first, last)) : std::nullopt;
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
        if (const auto pair = layer.span ? numbersOf(*plan.board, *layer.span) : std::nullopt) {
            first = std::min(first, pair->first);
            last = std::max(last, pair->second);
        }
    }
    const int ends = int(own.first == first) + int(own.second == last);
    return ends == 2 ? ",PTH" : ends == 1 ? ",Blind" : ",Buried";
}

/** Tells readers, ours among them, what is plated. */
void writePlating(Writer& writer, const DrillPlan& plan, const Program& program)
{
    const std::optional<Span>& span = plan.layers[program.layer].span;
    if (!span) {
        writer.line(program.isPlated ? ";TYPE=PLATED" : ";TYPE=NON_PLATED");
        return;
    }
    const QString plating = program.isPlated ? "Plated" : "NonPlated";
    if (const auto numbers = numbersOf(*plan.board, *span)) {
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
void writeOrigin(Writer& writer, const DrillPlan& plan, size_t layer)
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

void writeHead(Writer& writer, const Resolution& resolution, const DrillPlan& plan,
    const Program& program, const std::vector<ToolHits>& hits)
{
    writer.line("M48");
    writer.comment(QStringLiteral("Drill program by brox %1").arg(OUTPUT_VERSION));
    writer.comment("SIZES ARE DRILL SIZES, NOT FINISHED SIZES: do not add plating to them again");
    writeOrigin(writer, plan, program.layer);
    writer.comment(program.isPlated ? "Drilled before plating" : "Not plated");
    writer.comment("Model: " + plan.model.name + " (" + fileState(plan.model) + ")");
    writer.comment(QStringLiteral("Units: %1").arg(resolution.unit));
    if (program.toolsBefore > program.toolCount()) {
        writer.comment(QStringLiteral("Fewest tools: %1 instead of %2")
                           .arg(program.toolCount())
                           .arg(program.toolsBefore));
    }
    writePlating(writer, plan, program);
    writer.line(resolution.keyword);
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

void writeTool(Writer& writer, const ProgramTool& tool, const ToolHits& hits)
{
    const std::vector<Place>& holes = hits.holes;
    const std::vector<const Path*>& slotPaths = hits.slotPaths;
    std::vector<Place> slotStarts;
    for (const Path* path : slotPaths) {
        slotStarts.push_back(path->start);
    }
    writer.line(toolName(tool));
    for (const std::uint32_t index : sweepOrder(holes)) {
        writer.hole(holes[index]);
    }
    for (const std::uint32_t index : sweepOrder(slotStarts)) {
        writer.slot(*slotPaths[index]);
    }
    if (!slotPaths.empty()) {
        writer.line("G05");
    }
}

const Resolution& resolutionOf(const DrillPlan& plan)
{
    return plan.units == Units::Inch ? inch : metric;
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
                PlanText::tr("layer \"%1\": the board tells no size of T%2, \"%3\"")
                    .arg(plan.layers[row.layer].name, QString::number(plan.tool(row).tool->number),
                        spoken(typeWord(row.type, row.isSlot))));
        }
        if (!row.drillSize || resolutionOf(plan).round(*row.drillSize) <= 0) {
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

QByteArray programText(
    const DrillPlan& plan, const Program& program, const std::vector<RowPlaces>& places)
{
    constexpr qint64 bytesOfHole = 24;
    Writer writer(resolutionOf(plan));
    std::vector<ToolHits> hits;
    qint64 count = 0;
    for (const ProgramTool& tool : program.tools) {
        hits.push_back(hitsOf(tool, places));
        count += tool.hits();
    }
    writer.reserve(count * bytesOfHole);
    writeHead(writer, resolutionOf(plan), plan, program, hits);
    writer.line("G90");
    writer.line("G05");
    for (size_t i = 0; i < program.tools.size(); ++i) {
        writeTool(writer, program.tools[i], hits[i]);
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
    for (size_t i = 0; i < plan.programs.size(); ++i) {
        tell(progress, qint64(i), qint64(plan.programs.size()));
        files.add(QDir(folder).filePath(names[qsizetype(i)]),
            programText(plan, plan.programs[i], places));
    }
}

QStringList stalePrograms(const DrillPlan& plan, const QString& folder)
{
    constexpr qint64 mostOfHead = 16384;
    QList<QByteArray> origins;
    for (size_t layer = 0; layer < plan.layers.size(); ++layer) {
        Writer writer(resolutionOf(plan));
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
            && std::any_of(origins.begin(), origins.end(), isIn)) {
            stale << info.filePath();
        }
    }
    return stale;
}

} // namespace brox
