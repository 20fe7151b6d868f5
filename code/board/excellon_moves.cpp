// SPDX-License-Identifier: MIT
#include "board_text.h"
#include "excellon_words.h"

#include <cmath>

namespace brox {

/** What the program drills and routs, and where. */

namespace {

/** Holes and slots' segments, so that a few repeats of repeats do not fill the memory. */
constexpr qint64 maxDrilled = 50'000'000;

} // namespace

/** Where a place of the program lies. */
ExcellonProgram::Point ExcellonProgram::target(
    const std::optional<qint64>& x, const std::optional<qint64>& y) const
{
    if (mIncremental) {
        return {mAt.x + x.value_or(0), mAt.y + y.value_or(0)};
    }
    return {x.value_or(mAt.x), y.value_or(mAt.y)};
}

Place ExcellonProgram::place(const Point& point) const
{
    if (point.x != Size(point.x) || point.y != Size(point.y)) {
        fail(BoardText::tr("a place further than 5 m from the origin"));
    }
    return {Size(point.x), Size(point.y)};
}

/** The selected tool, to make something with that BoardText knows. */
ExcellonProgram::Use& ExcellonProgram::use(const char* what)
{
    if (mInHeader) {
        fail(BoardText::tr("the header does not end: no % or M95 before %1")
                 .arg(BoardText::tr(what)));
    }
    if (!mUse) {
        fail(BoardText::tr("%1 before a tool is selected").arg(BoardText::tr(what)));
    }
    mHasPlaces = true;
    return mUses[*mUse];
}

void ExcellonProgram::count(qint64 more)
{
    mDrilled += more;
    if (mDrilled > maxDrilled) {
        fail(BoardText::tr("too many holes and slots, the most are %1").arg(maxDrilled));
    }
}

void ExcellonProgram::addHoles(const Words& words)
{
    if (mMode == Mode::Up) {
        fail(BoardText::tr("neither a hole (G05) nor a routed path"));
    }
    Use& to = use(QT_TRANSLATE_NOOP("BoardText", "a hole"));
    const DrillTool& tool = mTools[to.tool];
    if (tool.diameter == 0 && !mComments.remark(tool.number)) {
        fail(BoardText::tr("tool T%1 has no diameter").arg(tool.number));
    }
    count(qMax(1, words.repeats));
    if (words.repeats == 0) {
        mAt = target(words.x, words.y);
        to.holes.push_back(place(mAt));
        mAfterHole = true;
        return;
    }
    if (words.repeatIsLast) {
        fail(BoardText::tr("a place before a repeat in one line"));
    }
    if (!mAfterHole) {
        fail(BoardText::tr("a repeat that follows no hole"));
    }
    for (int i = 0; i < words.repeats; ++i) {
        mAt = {mAt.x + words.x.value_or(0), mAt.y + words.y.value_or(0)};
        to.holes.push_back(place(mAt));
    }
}

void ExcellonProgram::moveTo(const Words& words)
{
    mHasPlaces = true;
    mAfterHole = false;
    mAt = target(words.x, words.y);
    place(mAt);
}

/** The tool goes down; however many lines and arcs follow, it is one slot. */
void ExcellonProgram::beginCut()
{
    mMode = Mode::Cut;
    if (!mCutting) {
        use(QT_TRANSLATE_NOOP("BoardText", "a slot"));
        count(1);
        mCutting = true;
        mAfterHole = false;
        mCutCompensated = mCompensated;
        mCut = {place(mAt), {}};
    }
}

void ExcellonProgram::endCut()
{
    if (!mCutting) {
        return;
    }
    mCutting = false;
    mMode = Mode::Up;
    Use& to = mUses[*mUse];
    // Beside the path the cutter makes an outline whose width is not the tool's.
    (mCutCompensated ? to.contours : to.slotPaths).push_back(std::exchange(mCut, {}));
}

void ExcellonProgram::cutTo(const Words& words)
{
    if (words.repeats > 0) {
        fail(BoardText::tr("a repeat within a routed path"));
    }
    const Point to = target(words.x, words.y);
    count(1);
    mCut.segments.push_back(segmentTo(to, words));
    mAt = to;
}

Segment ExcellonProgram::segmentTo(const Point& to, const Words& words) const
{
    if (mShape == Segment::Shape::Line) {
        return {mShape, place(to), {}};
    }
    return {mShape, place(to), arcCentre(to, words)};
}

/** From I and J, which lead from the beginning to it, or from a radius. */
Place ExcellonProgram::arcCentre(const Point& to, const Words& words) const
{
    if (words.i || words.j) {
        return place({mAt.x + words.i.value_or(0), mAt.y + words.j.value_or(0)});
    }
    if (!words.radius || *words.radius == 0) {
        fail(BoardText::tr("an arc without a centre or radius"));
    }
    const double radius = std::abs(double(*words.radius));
    const double dx = double(to.x - mAt.x);
    const double dy = double(to.y - mAt.y);
    const double chord = std::hypot(dx, dy);
    // The last digit of a half circle's radius may be rounded down.
    if (chord == 0 || chord / 2 > radius * 1.01 + sizePerMicron) {
        fail(BoardText::tr("no arc of this radius reaches from here to there"));
    }
    const double height = std::sqrt(std::max(0.0, radius * radius - chord * chord / 4));
    // A radius leads to the arc of at most 180 degrees: the centre of a clockwise one lies to the
    // right of the chord.
    const double side = mShape == Segment::Shape::Clockwise ? 1 : -1;
    const double x = double(mAt.x) + dx / 2 + side * dy / chord * height;
    const double y = double(mAt.y) + dy / 2 - side * dx / chord * height;
    return place({std::llround(x), std::llround(y)});
}

void ExcellonProgram::addCannedSlot(const Words& words)
{
    endCut();
    if (words.repeats > 0) {
        fail(BoardText::tr("a repeat of a slot"));
    }
    count(1);
    mAfterHole = false;
    const Point first = target(words.x, words.y);
    if (words.canned == 32 || words.canned == 33) {
        Use& to = use(QT_TRANSLATE_NOOP("BoardText", "a circle"));
        addCircle(first, words.radius.value_or(0), mCompensated ? to.contours : to.slotPaths);
        return;
    }
    if (words.canned == 84) {
        // The circle's diameter stands where a second place would.
        addCircle(first, std::abs(words.x2.value_or(0)) / 2,
            use(QT_TRANSLATE_NOOP("BoardText", "a circle")).contours);
        return;
    }
    if (!words.x2 && !words.y2) {
        fail(BoardText::tr("a slot without an end"));
    }
    Use& to = use(QT_TRANSLATE_NOOP("BoardText", "a slot"));
    mAt = first;
    const Place start = place(mAt);
    mAt = target(words.x2, words.y2);
    to.slotPaths.push_back({start, {{Segment::Shape::Line, place(mAt), {}}}});
}

void ExcellonProgram::addCircle(const Point& centre, qint64 radius, std::vector<Path>& to)
{
    if (radius <= 0) {
        fail(BoardText::tr("a routed circle without a size"));
    }
    mAt = centre;
    const Place start = place({centre.x + radius, centre.y});
    to.push_back({start, {{Segment::Shape::Clockwise, start, place(centre)}}});
}

void ExcellonProgram::beginPattern()
{
    endCut();
    for (Use& use : mUses) {
        use.patternBegin = use.end();
    }
    mPatternAt = {};
}

void ExcellonProgram::endPattern()
{
    endCut();
    for (Use& use : mUses) {
        use.patternEnd = use.end();
    }
    mPattern = Pattern::Repeated;
    mPatternAt = {};
    mAfterHole = false;
}

/** Each repeat is moved against the last. */
void ExcellonProgram::repeatPattern(const Point& by, int times)
{
    if (mPattern != Pattern::Repeated) {
        fail(BoardText::tr("no pattern to repeat"));
    }
    for (const Use& use : mUses) {
        count(times * qint64(use.patternEnd.holes - use.patternBegin.holes));
    }
    for (int i = 0; i < times; ++i) {
        mPatternAt = {mPatternAt.x + by.x, mPatternAt.y + by.y};
        for (Use& use : mUses) {
            const auto& [holes, slotPaths, contours] = use.patternBegin;
            for (size_t hole = holes; hole < use.patternEnd.holes; ++hole) {
                use.holes.push_back(moved(use.holes[hole]));
            }
            for (size_t slot = slotPaths; slot < use.patternEnd.slotPaths; ++slot) {
                use.slotPaths.push_back(moved(use.slotPaths[slot]));
            }
            for (size_t contour = contours; contour < use.patternEnd.contours; ++contour) {
                use.contours.push_back(moved(use.contours[contour]));
            }
        }
    }
}

Place ExcellonProgram::moved(const Place& from) const
{
    return place({from.x + mPatternAt.x, from.y + mPatternAt.y});
}

Path ExcellonProgram::moved(const Path& from)
{
    count(1 + qint64(from.segments.size()));
    Path path{moved(from.start), from.segments};
    for (Segment& segment : path.segments) {
        segment.to = moved(segment.to);
        if (segment.shape != Segment::Shape::Line) {
            segment.centre = moved(segment.centre);
        }
    }
    return path;
}

} // namespace brox
