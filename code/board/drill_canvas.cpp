// SPDX-License-Identifier: MIT
#include "drill_canvas.h"

#include "lines.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>
#include <numeric>

namespace brox {

namespace {

/** What the name of a drill file says. */
HoleFacts factsOfName(const QString& fileName)
{
    static const QRegularExpression unplated(
        QStringLiteral("npth|non[-_ ]?plated|unplated"), QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression plated(
        QStringLiteral("(?<![a-z])pth(?![a-z])|(?<![a-z])plated"),
        QRegularExpression::CaseInsensitiveOption);
    HoleFacts facts;
    static const QRegularExpression vias(
        QStringLiteral("(?<![a-z])vias?(?:\\.[^.]*)?$"), QRegularExpression::CaseInsensitiveOption);
    if (fileName.contains(vias)) {
        facts.use = HoleFacts::Use::Via;
    }
    if (fileName.contains(unplated)) {
        facts.plated = false;
    } else if (fileName.contains(plated)) {
        facts.plated = true;
    }
    return facts;
}

void addContours(Layer& layer, std::vector<Path>& outlines, HoleType type)
{
    const bool isUnplated = type == HoleType::NonPlated;
    for (Path& outline : outlines) {
        layer.contours.push_back(
            {isUnplated ? HoleType::NonPlated : HoleType::Plated, std::move(outline)});
    }
}

} // namespace

void HoleFacts::complete(const HoleFacts& other)
{
    plated = plated ? plated : other.plated;
    use = use != Use::Unknown ? use : other.use;
    isBackDrill = isBackDrill || other.isBackDrill;
}

HoleType HoleFacts::type() const
{
    // Without any hint a hole counts as plated: most are. It is a guess, and marked as one.
    if (!plated.value_or(use != Use::Mechanical)) {
        return HoleType::NonPlated;
    }
    return use == Use::Via     ? HoleType::Via
        : use == Use::PressFit ? HoleType::PressFit
                               : HoleType::Plated;
}

void HoleAttributes::read(const QString& attribute)
{
    QStringList fields = attribute.split(',');
    for (QString& field : fields) {
        field = field.trimmed().remove('*').toUpper();
    }
    const QString name = fields.takeFirst();
    if (name == QLatin1String("TF.FILEFUNCTION")) {
        readFileFunction(fields);
    } else if (name == QLatin1String("TA.APERFUNCTION")) {
        readAperFunction(fields);
    } else if (name == QLatin1String("TA.DRILLTOLERANCE")) {
        readTolerance(fields);
    }
    const bool all = name == QLatin1String("TD");
    if (all || name == QLatin1String("TD.APERFUNCTION")) {
        mTool = {};
    }
    if (all || name == QLatin1String("TD.DRILLTOLERANCE")) {
        mTolerance.reset();
    }
}

void HoleAttributes::readFileFunction(const QStringList& fields)
{
    if (fields.contains(QLatin1String("NONPLATED"))) {
        mFile.plated = false;
    } else if (fields.contains(QLatin1String("PLATED"))) {
        mFile.plated = true;
    } // of mixed plating the tools specify it
    QStringList layers;
    for (const QString& field : fields) {
        bool isNumber = false;
        field.toInt(&isNumber);
        if (isNumber) {
            layers << field;
        }
    }
    if (layers.size() == 2) {
        mSpan = Span{layers[0], layers[1]};
    }
}

void HoleAttributes::readAperFunction(const QStringList& fields)
{
    using Use = HoleFacts::Use;
    static const std::pair<const char*, Use> uses[] = {{"VIADRILL", Use::Via},
        {"PRESSFIT", Use::PressFit}, {"COMPONENTPRESSFITDRILL", Use::PressFit},
        {"COMPONENTDRILL", Use::Other}, {"CASTELLATEDDRILL", Use::Other},
        {"MECHANICALDRILL", Use::Mechanical}};
    const auto has = [&](const char* field) { return fields.contains(QLatin1String(field)); };
    mTool = {};
    if (has("NONPLATED") || has("NPTH")) {
        mTool.plated = false;
    } else if (has("PLATED") || has("PTH")) {
        mTool.plated = true;
    }
    mTool.isBackDrill = has("BACKDRILL");
    for (const auto& [field, use] : uses) {
        if (mTool.use == Use::Unknown && has(field)) {
            mTool.use = use;
        }
    }
}

/** One number stands for both. */
void HoleAttributes::readTolerance(const QStringList& fields)
{
    bool isPlus = false;
    bool isMinus = false;
    const double plus = std::abs(fields.value(0).toDouble(&isPlus));
    const double minus = std::abs(fields.value(fields.size() - 1).toDouble(&isMinus));
    mTolerance.reset();
    if (isPlus && isMinus && std::isfinite(plus) && std::isfinite(minus)) {
        mTolerance = {plus, minus};
    }
}

void Notes::add(const char* kind, const QStringList& values)
{
    const auto known = std::ranges::find(mNotes, std::string_view(kind), &Note::kind);
    if (known != mNotes.end()) {
        ++known->count;
        return;
    }
    QString text = BoardText::tr(kind);
    for (const QString& value : values) {
        text = text.arg(value);
    }
    mNotes.push_back({kind, text, 1});
}

QStringList Notes::texts() const
{
    QStringList texts;
    for (const Note& note : mNotes) {
        texts << (note.count == 1
                ? note.text
                : BoardText::tr("%1 (and %2 more like it)").arg(note.text).arg(note.count - 1));
    }
    return texts;
}

size_t DrillCanvas::addTool(DrillTool tool)
{
    mTools.push_back(std::move(tool));
    mHits.push_back(0);
    return mTools.size() - 1;
}

void DrillCanvas::select(size_t tool, std::optional<bool> plating)
{
    const size_t key = tool * 3 + (plating ? 1 + size_t(*plating) : 0);
    const auto [known, isNew] = mUseOf.try_emplace(key, mUses.size());
    if (isNew) {
        mUses.push_back({tool, plating, {}, {}, {}, -1});
    }
    mUse = known->second;
}

/** The selected one, which is about to make something. */
DrillCanvas::Use& DrillCanvas::use()
{
    Use& use = mUses[*mUse];
    if (use.pattern != mPattern) {
        use.pattern = mPattern;
        mParts.push_back({*mUse, use.end(), {}});
    }
    return use;
}

void DrillCanvas::count(qint64 more)
{
    mDrilled += more;
    if (mDrilled > maxHoles) {
        mAt.fail(tooManyHoles());
    }
}

Place DrillCanvas::rounded(const QPointF& point)
{
    constexpr double most = std::numeric_limits<Size>::max();
    const double x = std::round(point.x());
    const double y = std::round(point.y());
    if (std::abs(x) > most || std::abs(y) > most) {
        mFarLine = mFarLine != 0 ? mFarLine : mAt.line;
    }
    return {Size(std::clamp(x, -most, most)), Size(std::clamp(y, -most, most))};
}

Place DrillCanvas::placed(const QPointF& point)
{
    mFrom = {std::min(mFrom.x(), point.x()), std::min(mFrom.y(), point.y())};
    mTo = {std::max(mTo.x(), point.x()), std::max(mTo.y(), point.y())};
    return rounded(point);
}

void DrillCanvas::drill(const QPointF& at)
{
    count(1);
    Use& by = use();
    by.holes.push_back(placed(at));
    ++mHits[by.tool];
}

void DrillCanvas::beginPath(const QPointF& at)
{
    count(weightOf(0));
    mPath = Path{placed(at), {}};
}

void DrillCanvas::lineTo(const QPointF& to)
{
    count(weightOf(1) - weightOf(0));
    mPath->segments.push_back({Segment::Shape::Line, placed(to), {}});
}

void DrillCanvas::arcTo(Segment::Shape shape, const QPointF& to, const QPointF& centre)
{
    // A place that was moved fits no arc; finish() decides what is to become of such a file.
    const double radius = distance(pointOf(mPath->end()), centre);
    const double tolerance = radius / 100 + 50 * double(sizePerMicron); // old files have few digits
    if (mFarLine == 0 && std::abs(radius - distance(to, centre)) > tolerance) {
        mAt.fail(BoardText::tr("an arc whose ends are not equally far from its centre"));
    }
    count(weightOf(1) - weightOf(0));
    mPath->segments.push_back({shape, placed(to), rounded(centre)});
}

Path DrillCanvas::takePath()
{
    Path path = std::move(*mPath);
    mPath.reset();
    return path;
}

void DrillCanvas::endAsSlot()
{
    Use& by = use();
    by.slotPaths.push_back(takePath());
    ++mHits[by.tool];
}

void DrillCanvas::endAsContour()
{
    use().contours.push_back(takePath());
}

void DrillCanvas::endAsRegion()
{
    mRegions.push_back(takePath());
}

void DrillCanvas::beginPattern()
{
    ++mPattern;
    mParts.clear();
    mRepeated.clear();
    mMove = {};
}

void DrillCanvas::endPattern()
{
    mRepeated = mParts;
    for (PatternPart& part : mRepeated) {
        part.end = mUses[part.use].end();
    }
    mMove = {};
}

/** Each repeat is moved against the last. */
void DrillCanvas::repeatPattern(const QPointF& by, int times)
{
    for (const auto& [index, begin, end] : mRepeated) {
        count(times * qint64(end.holes - begin.holes));
        mHits[mUses[index].tool] +=
            times * qint64(end.holes - begin.holes + end.slotPaths - begin.slotPaths);
    }
    for (int i = 0; i < times && !mRepeated.empty(); ++i) {
        mMove += by;
        for (const auto& [index, begin, end] : mRepeated) {
            Use& use = mUses[index];
            for (size_t hole = begin.holes; hole < end.holes; ++hole) {
                use.holes.push_back(moved(use.holes[hole]));
            }
            for (size_t slot = begin.slotPaths; slot < end.slotPaths; ++slot) {
                use.slotPaths.push_back(moved(use.slotPaths[slot]));
            }
            for (size_t contour = begin.contours; contour < end.contours; ++contour) {
                use.contours.push_back(moved(use.contours[contour]));
            }
        }
    }
}

Place DrillCanvas::moved(const Place& from)
{
    return placed(mMove + QPointF(from.x, from.y));
}

Path DrillCanvas::moved(const Path& from)
{
    count(weightOf(from.segments.size()));
    Path path{moved(from.start), from.segments};
    for (Segment& segment : path.segments) {
        segment.to = moved(segment.to);
        if (segment.shape != Segment::Shape::Line) {
            segment.centre = moved(segment.centre);
        }
    }
    return path;
}

Size DrillCanvas::sizeOf(const DrillTool& tool) const
{
    if (tool.diameter == 0) {
        return 0;
    }
    if (!tool.units) {
        throw UnitsUnknown(mAt.name, tool.line,
            BoardText::tr("nothing specifies whether %1 is in millimetres or inches; "
                          "--file-units inch or metric does")
                .arg(tool.name));
    }
    const double size = std::round(tool.diameter * brox::sizeOf(*tool.units));
    if (size < 1 || size > maxDiameter) {
        mAt.fail(tool.line,
            (size < 1 ? BoardText::tr("tool %1: %2 %3 is too small")
                      : BoardText::tr("tool %1: %2 %3 is too large, the most are 500 mm"))
                .arg(tool.name)
                .arg(tool.diameter)
                .arg(tool.units == Units::Inch ? "inch" : "mm"));
    }
    return Size(size);
}

void DrillCanvas::addTo(Layer& layer, Use& use, const HoleFacts& file, Notes& notes) const
{
    const DrillTool& drill = mTools[use.tool];
    HoleFacts facts;
    facts.plated = use.plating;
    facts.complete(drill.facts);
    const std::optional<bool> ownPlating = facts.plated;
    facts.complete(file);
    const HoleType type = facts.type();
    addContours(layer, use.contours, type);
    if (use.holes.empty() && use.slotPaths.empty()) {
        return;
    }
    if (ownPlating && file.plated && ownPlating != file.plated) {
        notes.add(*ownPlating
                ? QT_TRANSLATE_NOOP("BoardText",
                    "%1 is specified as plated, and taken so, in a file of non-plated holes")
                : QT_TRANSLATE_NOOP("BoardText",
                    "%1 is specified as non-plated, and taken so, in a file of plated holes"),
            {drill.name});
    }
    Tool tool;
    tool.number = drill.number;
    tool.type = type;
    tool.typeAssumed = facts.isTypeAssumed();
    tool.functionTold = facts.use != HoleFacts::Use::Unknown;
    tool.finishedSize = sizeOf(drill);
    if (drill.tolerance && drill.units) {
        const auto size = [unit = brox::sizeOf(*drill.units)](double told) {
            return Size(std::round(std::min(told * unit, maxDiameter)));
        };
        const Tolerance told{size(drill.tolerance->minus), size(drill.tolerance->plus)};
        tool.tolerance = told == Tolerance{} ? std::nullopt : std::optional(told);
    }
    const qint64 hits = qint64(use.holes.size()) + qint64(use.slotPaths.size());
    if (hits == mHits[use.tool]) { // all that the comment is about
        tool.specifiedHits = drill.specifiedHits;
    }
    tool.bit = drill.bit;
    tool.holes = std::move(use.holes);
    tool.slotPaths = std::move(use.slotPaths);
    if (tool.finishedSize == 0 && !tool.holes.empty()) {
        mAt.fail(drill.line, BoardText::tr("tool %1 has no diameter").arg(drill.name));
    }
    if (tool.finishedSize == 0) {
        notes.add(QT_TRANSLATE_NOOP(
                      "BoardText", "the file does not specify the width of the slots of %1"),
            {drill.name});
    }
    (facts.isBackDrill ? layer.backDrills : layer.tools).push_back(std::move(tool));
}

Layer DrillCanvas::takeLayer(const HoleFacts& file, Notes& notes)
{
    std::ranges::stable_sort(mUses, {}, &Use::tool);
    Layer layer;
    for (Use& use : mUses) {
        addTo(layer, use, file, notes);
    }
    addContours(layer, mRegions, file.type());
    return layer;
}

DrillFile DrillCanvas::finish(
    const HoleAttributes& attributes, const NumberReader& numbers, int usualDecimals, Notes& notes)
{
    const QFileInfo name(mAt.name);
    HoleFacts facts = attributes.ofFile();
    facts.complete(factsOfName(name.fileName()));
    for (DrillTool& tool : mTools) {
        tool.units = tool.units ? tool.units : numbers.units();
    }
    DrillFile drill;
    drill.layer = takeLayer(facts, notes);
    drill.layer.name = name.completeBaseName();
    drill.layer.span = attributes.span();
    drill.layer.assumedFormat = numbers.guess();
    drill.units = numbers.units();
    drill.drilled = mDrilled;
    drill.format = numbers.format();
    drill.extent = mTo.x() < mFrom.x() ? QRectF() : QRectF(mFrom, mTo);
    if (numbers.isContradicted()) {
        notes.add(QT_TRANSLATE_NOOP("BoardText",
                      "its numbers have %1 digits, more than the %2:%3 that it specifies"),
            {QString::number(numbers.longest()), QString::number(numbers.toldDigits()->before),
                QString::number(numbers.toldDigits()->after)});
    }
    if (numbers.needsDigits()) {
        const qint64 hits = std::accumulate(mHits.begin(), mHits.end(), qint64(0));
        drill.choices = weighFormats(drill.format,
            {drill.extent.width(), drill.extent.height(),
                std::max({0.0, mTo.x(), mTo.y(), -mFrom.x(), -mFrom.y()}),
                mFarLine != 0 ? 0 : usualSpacing(drill.layer), hits, numbers.longest(),
                usualDecimals});
        drill.farLine = mFarLine;
    } else if (mFarLine != 0) {
        mAt.fail(mFarLine, BoardText::tr("a place further than 5 m from the origin"));
    }
    drill.notes = notes.texts();
    return drill;
}

} // namespace brox
