// SPDX-License-Identifier: MIT
#include "ipc2581_shapes.h"

#include "lines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <ranges>

namespace brox {

namespace {

constexpr qint64 maxSegments = 10'000'000; ///< of all polygons
constexpr int maxReferences = 8; ///< from primitive to primitive
constexpr auto line = Segment::Shape::Line;

std::string idOf(const Ipc2581Attributes& attributes)
{
    const char* id = attributes.value("id");
    return id ? id : "";
}

Size rounded(double size)
{
    return Size(std::lround(size));
}

void lineTo(Path& path, const Place& place)
{
    path.segments.push_back({line, place, {}});
}

void close(Path& path)
{
    if (!path.isClosed()) {
        lineTo(path, path.start);
    }
}

Segment arcTo(const Place& end, const Ipc2581Attributes& attributes)
{
    return {attributes.isTrue("clockwise") ? Segment::Shape::Clockwise
                                           : Segment::Shape::CounterClockwise,
        end, attributes.place("centerX", "centerY")};
}

using Cuts = std::array<Size, 4>; ///< of a rectangle's corners

/** A rectangle about the origin, with corners that are cut or rounded off. */
class Cutter
{
public:
    Cutter(double width, double height)
        : mX(rounded(width / 2))
        , mY(rounded(height / 2))
    { }

    Cuts cuts(const Ipc2581Attributes& attributes, const char* cut) const
    {
        const Size size = std::min(rounded(attributes.extent(cut)), std::min(mX, mY));
        Cuts all{};
        constexpr const char* names[] = {"lowerRight", "upperRight", "upperLeft", "lowerLeft"};
        std::ranges::transform(names, all.begin(),
            [&](const char* name) { return attributes.isTrue(name, true) ? size : 0; });
        return all;
    }

    /** Whether the corners are so round that two of them make an end. */
    bool isOval(const Cuts& cuts) const
    {
        return 2 * std::ranges::min(cuts) >= 2 * std::min(mX, mY) - sizePerMicron;
    }

    Path path(const Cuts& cuts, bool isRound) const
    {
        const Place corners[] = {
            {mX, Size(-mY)}, {mX, mY}, {Size(-mX), mY}, {Size(-mX), Size(-mY)}};
        Path path;
        path.start = {Size(-mX + cuts[3]), Size(-mY)};
        for (size_t i = 0; i < cuts.size(); ++i) {
            const Place& corner = corners[i];
            const Place centre{Size(corner.x + (corner.x > 0 ? -cuts[i] : cuts[i])),
                Size(corner.y + (corner.y > 0 ? -cuts[i] : cuts[i]))};
            Place before{centre.x, corner.y};
            Place after{corner.x, centre.y};
            if (i % 2 == 1) { // from up to left, and from down to right
                before = {corner.x, centre.y};
                after = {centre.x, corner.y};
            }
            if (before != path.end()) {
                lineTo(path, before);
            }
            if (isRound && cuts[i] > 0) {
                path.segments.push_back({Segment::Shape::CounterClockwise, after, centre});
            } else if (cuts[i] > 0) {
                lineTo(path, after);
            }
        }
        return path;
    }

private:
    Size mX; ///< half of the width
    Size mY;
};

constexpr int linesToTurn = 32;
constexpr size_t fewestLines = 9; ///< of a polygon that stands for two half circles

/** The direction in which an outline is longest, as a unit vector. */
QPointF longDirection(const std::vector<Line>& lines)
{
    double length = 0;
    QPointF centre;
    for (const Line& each : lines) {
        length += distance(each.a, each.b);
        centre += (each.a + each.b) / 2 * distance(each.a, each.b);
    }
    if (length == 0) {
        return {1, 0};
    }
    centre /= length;
    double xx = 0;
    double xy = 0;
    double yy = 0;
    for (const Line& each : lines) {
        const QPointF from = (each.a + each.b) / 2 - centre;
        const double weight = distance(each.a, each.b);
        xx += from.x() * from.x() * weight;
        xy += from.x() * from.y() * weight;
        yy += from.y() * from.y() * weight;
    }
    const double angle = std::atan2(2 * xy, xx - yy) / 2;
    return {std::cos(angle), std::sin(angle)};
}

/** Recognises a straight slot by its outline, wherever it lies and however it is turned: two half
 *  circles, exact or of many short lines, and the lines between them; or a circle. */
std::optional<Ipc2581Opening> recogniseSlot(const Path& outline)
{
    const std::vector<Line> lines = linesOf(outline, linesToTurn);
    if (!outline.isClosed() || lines.size() < fewestLines) {
        return std::nullopt;
    }
    const QPointF along = longDirection(lines);
    const QPointF across(-along.y(), along.x());
    const auto ends = [&](const QPointF& direction) {
        const auto [least, most] =
            std::ranges::minmax(lines | std::views::transform([&](const Line& each) {
                return QPointF::dotProduct(each.a, direction);
            }));
        return std::pair(least, most);
    };
    const auto [left, right] = ends(along);
    const auto [bottom, top] = ends(across);
    const double width = top - bottom;
    if (width < 1 || width > std::numeric_limits<Size>::max()) {
        return std::nullopt;
    }
    const double half = std::max(0.0, (right - left - width) / 2);
    const QPointF centre = along * ((left + right) / 2) + across * ((bottom + top) / 2);
    const Line middle{centre - along * half, centre + along * half};
    // Short lines run within the circle that they stand for, and files round.
    const double tolerance = std::max(4.0 * sizePerMicron, width * 0.015);
    const auto isOnSlot = [&](const QPointF& point) {
        return std::abs(distance(point, middle) - width / 2) <= tolerance;
    };
    if (!std::ranges::all_of(lines, [&](const Line& each) {
            return isOnSlot(each.b) && isOnSlot((each.a + each.b) / 2);
        })) {
        return std::nullopt;
    }
    const auto placeOf = [](const QPointF& point) {
        return Place{rounded(point.x()), rounded(point.y())};
    };
    Ipc2581Opening slot{rounded(width), {placeOf(middle.a), {}}};
    if (half > sizePerMicron) {
        lineTo(slot.path, placeOf(middle.b));
    }
    return slot;
}

} // namespace

Path rectanglePath(Place lowerLeft, Place upperRight)
{
    Path path{lowerLeft, {}};
    for (const Place& corner : {Place{upperRight.x, lowerLeft.y}, upperRight,
             Place{lowerLeft.x, upperRight.y}, lowerLeft}) {
        lineTo(path, corner);
    }
    return path;
}

void Ipc2581Shapes::beginEntry(const Ipc2581Attributes& attributes)
{
    mEntry = idOf(attributes);
    begin();
}

void Ipc2581Shapes::endEntry(Shapes& shapes)
{
    end();
    shapes[mEntry] = std::exchange(mShape, {});
}

/** All of the shape has been read: however often it is referred to, it is looked at once. */
void Ipc2581Shapes::end()
{
    if (mShape.kind == Kind::Stroke && mShape.lineWidth >= 1) {
        mShape.opening.width = rounded(mShape.lineWidth);
    } else if (mShape.kind == Kind::Stroke || mShape.kind == Kind::Outline) {
        mShape.opening = recogniseSlot(mShape.opening.path).value_or(mShape.opening);
    }
}

void Ipc2581Shapes::keepLine(const Ipc2581Attributes& attributes)
{
    mLineWidths[mEntry] = attributes.extent("lineWidth");
}

/** @return false for a cut-out of the shape, or a second part of it */
bool Ipc2581Shapes::add(Kind kind, Ipc2581Opening opening)
{
    if (mShape.kind != Kind::None) {
        mShape.isCompound = true;
        return false;
    }
    mShape.kind = kind;
    mShape.opening = std::move(opening);
    return true;
}

/** Along x if it is wider than high, else along y; a round hole if it is as wide as high. */
void Ipc2581Shapes::addSlot(double width, double height)
{
    const Size x = rounded(width);
    const Size y = rounded(height);
    const Size half = std::abs(x - y) / 2;
    const Place end = x >= y ? Place{half, 0} : Place{0, half};
    Path middle{{-end.x, -end.y}, {}};
    if (half > 0) {
        lineTo(middle, end);
    }
    add(Kind::Opening, {std::min(x, y), middle});
}

void Ipc2581Shapes::addCircle(const Ipc2581Attributes& attributes)
{
    const double diameter = attributes.extent("diameter");
    addSlot(diameter, diameter);
}

void Ipc2581Shapes::addOval(const Ipc2581Attributes& attributes)
{
    addSlot(attributes.extent("width"), attributes.extent("height"));
}

void Ipc2581Shapes::addRectangle(const Ipc2581Attributes& attributes)
{
    addContour(Cutter(attributes.extent("width"), attributes.extent("height")).path({}, false));
}

void Ipc2581Shapes::addRoundRectangle(const Ipc2581Attributes& attributes)
{
    const Cutter rectangle(attributes.extent("width"), attributes.extent("height"));
    const Cuts cuts = rectangle.cuts(attributes, "radius");
    if (rectangle.isOval(cuts)) {
        addOval(attributes);
    } else {
        addContour(rectangle.path(cuts, true));
    }
}

void Ipc2581Shapes::addCutRectangle(const Ipc2581Attributes& attributes)
{
    const Cutter rectangle(attributes.extent("width"), attributes.extent("height"));
    addContour(rectangle.path(rectangle.cuts(attributes, "chamfer"), false));
}

void Ipc2581Shapes::addCorners(const Ipc2581Attributes& attributes)
{
    addContour(rectanglePath(attributes.place("lowerLeftX", "lowerLeftY"),
        attributes.place("upperRightX", "upperRightY")));
}

/** A polygon in an ellipse. @param first  corner, in degrees */
void Ipc2581Shapes::addInscribed(double width, double height, int corners, double first)
{
    Path path;
    for (int i = 0; i < corners; ++i) {
        const double angle = (first + 360.0 * i / corners) * std::numbers::pi / 180;
        const Place corner{
            rounded(width / 2 * std::cos(angle)), rounded(height / 2 * std::sin(angle))};
        if (i == 0) {
            path.start = corner;
        } else {
            lineTo(path, corner);
        }
    }
    close(path);
    addContour(path);
}

void Ipc2581Shapes::addDiamond(const Ipc2581Attributes& attributes)
{
    addInscribed(attributes.extent("width"), attributes.extent("height"), 4, 0);
}

void Ipc2581Shapes::addEllipse(const Ipc2581Attributes& attributes)
{
    addInscribed(attributes.extent("width"), attributes.extent("height"), 64, 0);
}

void Ipc2581Shapes::addHexagon(const Ipc2581Attributes& attributes)
{
    const double length = attributes.extent("length");
    addInscribed(length, length, 6, 0);
}

void Ipc2581Shapes::addOctagon(const Ipc2581Attributes& attributes)
{
    const double length = attributes.extent("length");
    addInscribed(length, length, 8, 22.5);
}

void Ipc2581Shapes::addTriangle(const Ipc2581Attributes& attributes)
{
    const Size x = rounded(attributes.extent("base") / 2);
    const Size y = rounded(attributes.extent("height") / 2);
    Path path{{Size(-x), Size(-y)}, {}};
    lineTo(path, {x, Size(-y)});
    lineTo(path, {0, y});
    close(path);
    addContour(path);
}

void Ipc2581Shapes::addLine(const Ipc2581Attributes& attributes)
{
    Path path{attributes.place("startX", "startY"), {}};
    lineTo(path, attributes.place("endX", "endY"));
    add(Kind::Stroke, {{}, path});
}

void Ipc2581Shapes::addArc(const Ipc2581Attributes& attributes)
{
    add(Kind::Stroke,
        {{},
            {attributes.place("startX", "startY"),
                {arcTo(attributes.place("endX", "endY"), attributes)}}});
}

void Ipc2581Shapes::addStandardReference(const Ipc2581Attributes& attributes)
{
    if (add(Kind::StandardReference, {})) {
        mShape.reference = idOf(attributes);
    }
}

void Ipc2581Shapes::addUserReference(const Ipc2581Attributes& attributes)
{
    if (add(Kind::UserReference, {})) {
        mShape.reference = idOf(attributes);
    }
}

void Ipc2581Shapes::setLineWidth(const Ipc2581Attributes& attributes)
{
    mShape.lineWidth = attributes.extent("lineWidth");
}

void Ipc2581Shapes::setLineReference(const Ipc2581Attributes& attributes)
{
    const auto found = mLineWidths.find(idOf(attributes));
    mShape.lineWidth = found == mLineWidths.end() ? 0 : found->second;
}

void Ipc2581Shapes::startPolygon(const Ipc2581Attributes& attributes)
{
    mPolygon = {attributes.place("x", "y"), {}};
}

void Ipc2581Shapes::addSegment(const Segment& segment)
{
    if (++mSegments > maxSegments) {
        mPass.fail(BoardText::tr("more than %1 lines and arcs of shapes").arg(maxSegments));
    }
    mPolygon.segments.push_back(segment);
}

void Ipc2581Shapes::addCorner(const Ipc2581Attributes& attributes)
{
    addSegment({line, attributes.place("x", "y"), {}});
}

void Ipc2581Shapes::addCurve(const Ipc2581Attributes& attributes)
{
    addSegment(arcTo(attributes.place("x", "y"), attributes));
}

void Ipc2581Shapes::endOutline()
{
    close(mPolygon);
    add(Kind::Outline, {{}, takePolygon()});
}

void Ipc2581Shapes::endPolyline()
{
    add(Kind::Stroke, {{}, takePolygon()});
}

/** The shape that a reference leads to; null if it leads nowhere. */
const Ipc2581Shapes::Shape* Ipc2581Shapes::resolved() const
{
    const Shape* at = &mShape;
    for (int i = 0; i < maxReferences; ++i) {
        if (at->isCompound) {
            mPass.fail(BoardText::tr("a slot of several shapes, or of a moved one"));
        }
        const bool isUser = at->kind == Kind::UserReference;
        if (!isUser && at->kind != Kind::StandardReference) {
            return at;
        }
        const Shapes& shapes = isUser ? mUserShapes : mStandardShapes;
        const auto found = shapes.find(at->reference);
        if (found == shapes.end()) {
            return nullptr;
        }
        at = &found->second;
    }
    return nullptr;
}

Ipc2581Opening Ipc2581Shapes::opening()
{
    end();
    const Shape* shape = resolved();
    if (!shape || shape->kind == Kind::None) {
        mPass.fail(mShape.reference.empty()
                ? BoardText::tr("a slot without a shape")
                : BoardText::tr("no shape \"%1\" for this slot")
                      .arg(QString::fromStdString(mShape.reference).left(40)));
    }
    return shape->opening;
}

} // namespace brox
