// SPDX-License-Identifier: MIT
#include "drill_board.h"

#include "excellon_reader.h"
#include "gerber_drill_reader.h"

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

double largerSide(const QRectF& extent)
{
    return std::max(extent.width(), extent.height());
}

/** "100 x 80" */
QString sidesText(const QRectF& extent)
{
    return QStringLiteral("%1 x %2")
        .arg(extent.width() / sizePerMillimetre, 0, 'g', 4)
        .arg(extent.height() / sizePerMillimetre, 0, 'g', 4);
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

/** A hole, or a slot by a number that stands for its path. */
struct Item
{
    Size size = 0;
    Place at;
    std::uint32_t path = 0; ///< 0: a hole
    auto operator<=>(const Item&) const = default;
};

std::uint32_t hashOf(const Path& path)
{
    size_t hash = 1;
    for (const Segment& segment : path.segments) {
        hash = qHashMulti(hash, int(segment.shape), segment.to.x, segment.to.y, segment.centre.x,
            segment.centre.y);
    }
    return std::uint32_t(hash) | 1U;
}

Item itemOf(const Tool& tool, const Place& hole)
{
    return {tool.finishedSize, hole, 0};
}

/** A straight slot is the same from both ends. */
Item itemOf(const Tool& tool, const Path& slot)
{
    if (slot.segments.size() == 1 && slot.segments[0].shape == Segment::Shape::Line
        && slot.end() < slot.start) {
        return {
            tool.finishedSize, slot.end(), hashOf({{}, {{Segment::Shape::Line, slot.start, {}}}})};
    }
    return {tool.finishedSize, slot.start, hashOf(slot)};
}

/** What a layer drills, sorted, each once. */
std::vector<Item> itemsOf(const Layer& layer)
{
    size_t count = 0;
    for (const Tool& tool : layer.tools) {
        count += tool.holes.size() + tool.slotPaths.size();
    }
    std::vector<Item> items;
    items.reserve(count);
    for (const Tool& tool : layer.tools) {
        for (const Place& hole : tool.holes) {
            items.push_back(itemOf(tool, hole));
        }
        for (const Path& slot : tool.slotPaths) {
            items.push_back(itemOf(tool, slot));
        }
    }
    std::sort(items.begin(), items.end());
    items.erase(std::unique(items.begin(), items.end()), items.end());
    return items;
}

/** How much a layer says of its tools. */
int knowledge(const Layer& layer)
{
    const auto all = [&](auto told) {
        return int(std::all_of(layer.tools.begin(), layer.tools.end(), told));
    };
    return 2 * all([](const Tool& tool) { return !tool.typeAssumed; })
        + all([](const Tool& tool) { return tool.functionTold; });
}

/** Whether one says that its holes are plated and the other that they are not. */
bool contradict(const Layer& a, const Layer& b)
{
    const auto all = [](const Layer& layer, bool plated) {
        return std::all_of(layer.tools.begin(), layer.tools.end(), [&](const Tool& tool) {
            return !tool.typeAssumed && (tool.type != HoleType::NonPlated) == plated;
        });
    };
    return (all(a, true) && all(b, false)) || (all(a, false) && all(b, true));
}

bool isSamePair(const Layer& a, const Layer& b)
{
    return !a.span || !b.span || a.span == b.span;
}

/** Takes items out of a layer, and tools that have nothing left. */
void remove(Layer& layer, const std::vector<Item>& items)
{
    for (Tool& tool : layer.tools) {
        const auto isIn = [&](const auto& thing) {
            return std::binary_search(items.begin(), items.end(), itemOf(tool, thing));
        };
        std::erase_if(tool.holes, isIn);
        std::erase_if(tool.slotPaths, isIn);
    }
    std::erase_if(
        layer.tools, [](const Tool& tool) { return tool.holes.empty() && tool.slotPaths.empty(); });
}

bool haveSameContours(const Layer& a, const Layer& b)
{
    return std::equal(a.contours.begin(), a.contours.end(), b.contours.begin(), b.contours.end(),
        [](const Contour& left, const Contour& right) { return left.outline == right.outline; });
}

class Repeats
{
public:
    explicit Repeats(std::vector<Layer>& layers)
        : mLayers(layers)
    {
        for (const Layer& layer : layers) {
            mItems.push_back(itemsOf(layer));
        }
    }

    QStringList leaveOut()
    {
        for (size_t part = 0; part < mLayers.size(); ++part) {
            for (size_t whole = 0; whole < mLayers.size(); ++whole) {
                if (part != whole && isPart(part, whole)) {
                    keepIn(part, whole);
                }
            }
        }
        std::erase_if(mLayers, isEmpty);
        return mNotes;
    }

private:
    bool isPart(size_t part, size_t whole) const
    {
        const std::vector<Item>& a = mItems[part];
        const std::vector<Item>& b = mItems[whole];
        return !a.empty() && a.size() <= b.size() && isSamePair(mLayers[part], mLayers[whole])
            && std::includes(b.begin(), b.end(), a.begin(), a.end())
            && !contradict(mLayers[part], mLayers[whole]);
    }

    void keepIn(size_t part, size_t whole)
    {
        const bool isLess = knowledge(mLayers[part]) < knowledge(mLayers[whole]);
        // Of two that are the same the first stays.
        const bool isSame = mItems[part].size() == mItems[whole].size();
        const bool leavesPart = isLess
            || (isSame && part > whole && knowledge(mLayers[part]) == knowledge(mLayers[whole]));
        const size_t less = leavesPart ? part : whole;
        const size_t more = leavesPart ? whole : part;
        const size_t shared = mItems[part].size();
        remove(mLayers[less], mItems[part]);
        mItems[less] = itemsOf(mLayers[less]);
        if (mItems[less].empty() && haveSameContours(mLayers[less], mLayers[more])) {
            mLayers[less].contours.clear();
        }
        mNotes << (mItems[less].empty()
                ? BoardText::tr("%1: left out, it drills the same as %2")
                : BoardText::tr("%1: holes and slots that %2 drills too are left out: %3"))
                      .arg(mLayers[less].name, mLayers[more].name);
        if (!mItems[less].empty()) {
            mNotes.last() = mNotes.last().arg(shared);
        }
    }

    std::vector<Layer>& mLayers;
    std::vector<std::vector<Item>> mItems; ///< of the layers
    QStringList mNotes;
};

/** Leaves out what several drill files of an order have in common, so that it is drilled once.
 *
 * Where all holes and slots of one layer are in another one of the same pair of copper layers, the
 * layer that says more of them keeps them; the smaller one if both say as much.
 *
 * @return notes for the user
 */
QStringList leaveOutRepeats(std::vector<Layer>& layers)
{
    return layers.size() > 1 ? Repeats(layers).leaveOut() : QStringList();
}

} // namespace

DrillBoard::DrillBoard(const ReadOptions& options, const BoardFiles& order, bool isSingle)
    : mOptions(options)
    , mIsSingle(isSingle)
{
    qint64 size = 0;
    for (const BoardFile& list : order.lists) {
        const QByteArray content = list.open()->read(maxListSize);
        size += content.size();
        if (size > maxListsSize) {
            throw BoardError(list.name, 0,
                BoardText::tr("the lists of tools have more than %1 MiB").arg(maxListsSize >> 20));
        }
        mLists.add(content, list.name);
    }
    if (order.outline) {
        readOutline(*order.outline);
    }
}

/** What draws it would rout slots if it were a drill file; their extent is all that counts. */
void DrillBoard::readOutline(const BoardFile& file)
{
    try {
        mOutline = readGerberDrill(*file.open(), file.name).extent;
        mOutlineFile = QFileInfo(file.name).fileName();
    } catch (const BoardError& error) {
        mBoard.notes << BoardText::tr("not compared: ") + error.message();
    }
}

void DrillBoard::read(Entry& entry)
{
    const auto device = entry.file->open();
    const QString& name = entry.file->name;
    entry.drill = entry.file->kind == FileKind::GerberDrill
        ? readGerberDrill(*device, name, entry.options)
        : readExcellon(*device, name, entry.options);
    std::optional<Span>& span = entry.drill.layer.span;
    span = span ? span : entry.options.listed.span;
    span = span ? span : spanOfName(name);
}

void DrillBoard::add(const BoardFile& file, const Progress& progress)
{
    const qint64 drilled = mEntries.empty() ? 0 : mEntries.back().drill.drilled;
    Entry& entry = mEntries.emplace_back();
    entry.file = &file;
    entry.options.listed = mLists.about(file.name, mIsSingle);
    entry.options.fileFormat = mOptions.fileFormat;
    entry.options.progress = progress;
    entry.options.drilled = drilled;
    try {
        read(entry);
    } catch (const UnitsUnknown&) { // which the user can give
        throw;
    } catch (const BoardError& error) {
        if (mOptions.isStrict || !file.isFound || file.kind != FileKind::LikelyProgram) {
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
    double told = largerSide(mOutline);
    std::map<std::pair<Units, Zeros>, std::vector<Entry*>> alike; // one program wrote them
    for (Entry& entry : mEntries) {
        if (entry.drill.choices.empty()) {
            told = std::max(told, largerSide(entry.drill.extent));
        } else if (mOptions.fileFormat.digits) { // given by the user, and falsely by the file
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

/** Short names, but each keeps what distinguishes it from the others. */
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
    QString shared = mEntries.empty() ? QString() : mEntries.front().file->name;
    for (const Entry& entry : mEntries) {
        shared.truncate(
            std::ranges::mismatch(std::as_const(shared), entry.file->name).in1 - shared.cbegin());
    }
    // A folder stays before each path, so that none is like a short name.
    const qsizetype common = shared.lastIndexOf('/', shared.lastIndexOf('/') - 1) + 1;
    for (Entry& entry : mEntries) { // standard input and a file may still have one name
        QString& own = entry.drill.layer.name;
        own = own.isEmpty() ? entry.file->name : own;
        own.remove(0, own == entry.file->name ? common : 0);
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

/** Holes that lie within the outline say nothing, as long as they are not all in a corner. */
void DrillBoard::compareOutline()
{
    QRectF holes;
    for (const Entry& entry : mEntries) {
        holes = holes.united(entry.drill.extent);
    }
    if (mOutline.isNull() || holes.isNull()) {
        return;
    }
    constexpr double margin = sizePerMillimetre;
    const QRectF outline = mOutline.adjusted(-margin, -margin, margin, margin);
    const bool isWithin = outline.contains(holes);
    if (isWithin && largerSide(holes) > largerSide(mOutline) / 5) {
        return;
    }
    for (const double factor : {10.0, 25.4, 100.0, 1 / 10.0, 1 / 25.4, 1 / 100.0, 1 / 1000.0}) {
        const QRectF scaled(holes.topLeft() * factor, holes.size() * factor);
        if (outline.contains(scaled) && largerSide(scaled) > largerSide(mOutline) / 2) {
            mBoard.notes << BoardText::tr(
                "the holes cover %1 mm, the outline in %2 %3 mm; %4 times "
                "as large they would fit")
                                .arg(sidesText(holes), mOutlineFile, sidesText(mOutline))
                                .arg(factor, 0, 'g', 3);
            return;
        }
    }
    const QRectF common = holes.intersected(mOutline);
    if (!isWithin && holes.width() <= outline.width() && holes.height() <= outline.height()
        && common.width() * common.height() < holes.width() * holes.height() / 2) {
        const QPointF move = (mOutline.center() - holes.center()) / sizePerMillimetre;
        mBoard.notes << BoardText::tr(
            "the holes lie beside the outline in %1; %2, %3 mm would move them to its middle")
                            .arg(mOutlineFile)
                            .arg(move.x(), 0, 'g', 4)
                            .arg(move.y(), 0, 'g', 4);
    } else if (!isWithin) {
        mBoard.notes << BoardText::tr("the holes cover %1 mm, and reach beyond the outline in %2")
                            .arg(sidesText(holes), mOutlineFile);
    }
}

Board DrillBoard::finish(const QString& job)
{
    if (mEntries.empty() && mError) {
        throw BoardError(*mError);
    }
    settleFormats();
    compareOutline();
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
    mBoard.job = job;
    mBoard.units = units.value_or(Units::Metric);
    mBoard.steps.push_back(std::move(step));
    if (const QString lack = lackText(mBoard.steps); !lack.isEmpty()) {
        throw BoardError(mEntries.back().file->name, 1, lack);
    }
    return std::move(mBoard);
}

} // namespace brox
