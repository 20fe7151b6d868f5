// SPDX-License-Identifier: MIT
#include "ipc2581_shape_reader.h"

#include "board_text.h"

#include <algorithm>

namespace brox {

using Kind = Ipc2581Shape::Kind;

namespace {

constexpr int maxReferences = 8; ///< from primitive to primitive

std::string idOf(const XmlAttributes& attributes)
{
    const char* id = attributes.value("id");
    return id ? id : "";
}

} // namespace

void Ipc2581ShapeReader::beginEntry(const XmlAttributes& attributes)
{
    mEntry = idOf(attributes);
    mShape = {};
}

void Ipc2581ShapeReader::endEntry()
{
    (mEntryIsUser ? mUserShapes : mStandardShapes)[mEntry] = std::exchange(mShape, {});
}

void Ipc2581ShapeReader::addLine(const XmlAttributes& attributes)
{
    mLineWidths[mEntry] = mValues.length(attributes, "lineWidth", mUnit);
}

/** @return false for a cut-out of the shape, or a second part of it */
bool Ipc2581ShapeReader::begin(Kind kind)
{
    const bool isFirst = mShape.kind == Kind::None;
    if (isFirst) {
        mShape.kind = kind;
    } else {
        mShape.isCompound = true;
    }
    return isFirst;
}

Ipc2581ShapeReader::Inside Ipc2581ShapeReader::addPolygon(Kind kind)
{
    return begin(kind) ? Inside::Polygon : Inside::Nothing;
}

Ipc2581ShapeReader::Inside Ipc2581ShapeReader::startPart(
    std::string_view name, const XmlAttributes& attributes)
{
    if (name == "Polygon" || name == "Cutout") {
        return addPolygon(Kind::Outline);
    }
    if (name == "Polyline") {
        return addPolygon(Kind::Stroke);
    }
    if (name == "Line" || name == "Arc") {
        if (!begin(Kind::Stroke)) {
            return Inside::Nothing;
        }
        const Place end = place(attributes, "endX", "endY");
        mShape.path = {place(attributes, "startX", "startY"),
            {name == "Line" ? Segment{Segment::Shape::Line, end, {}} : arcTo(end, attributes)}};
        return Inside::Shape; // with the line's width
    }
    const bool isPart = addSimple(name, attributes) || addReference(name, attributes)
        || readLineWidth(name, attributes);
    const bool holds = name == "Outline" || name == "Contour" || name == "UserSpecial"
        || name == "Features" || name == "Feature";
    return holds && !isPart ? Inside::Shape : Inside::Nothing;
}

/** Primitives that are told by their sizes alone. */
bool Ipc2581ShapeReader::addSimple(std::string_view name, const XmlAttributes& attributes)
{
    const auto make = [&](Kind kind, const char* width, const char* height) {
        const bool isFirst = begin(kind);
        if (isFirst) {
            mShape.width = mValues.length(attributes, width, mUnit);
            mShape.height = mValues.length(attributes, height, mUnit);
        }
        return isFirst;
    };
    if (name == "Circle") {
        make(Kind::Circle, "diameter", "diameter");
    } else if (name == "Oval") {
        make(Kind::Oval, "width", "height");
    } else if (name == "RectCenter" || name == "RectCham" || name == "Diamond"
        || name == "Ellipse") {
        make(Kind::Rectangle, "width", "height"); // no slot, whatever it is exactly
    } else if (name == "Octagon" || name == "Hexagon") {
        make(Kind::Rectangle, "length", "length");
    } else if (name == "Triangle") {
        make(Kind::Rectangle, "base", "height");
    } else if (name == "RectRound") {
        // Corners that are half as wide as the shape are round ends.
        const auto isRound = [&](const char* corner) {
            return !attributes.value(corner) || mValues.isTrue(attributes, corner);
        };
        if (make(Kind::Rectangle, "width", "height")
            && mValues.length(attributes, "radius", mUnit) * 2
                >= std::min(mShape.width, mShape.height) - sizePerMicron
            && isRound("upperLeft") && isRound("upperRight") && isRound("lowerLeft")
            && isRound("lowerRight")) {
            mShape.kind = Kind::Oval;
        }
    } else if (name == "RectCorner") {
        if (begin(Kind::Outline)) {
            mShape.path = rectanglePath(place(attributes, "lowerLeftX", "lowerLeftY"),
                place(attributes, "upperRightX", "upperRightY"));
        }
    } else {
        return false;
    }
    return true;
}

bool Ipc2581ShapeReader::addReference(std::string_view name, const XmlAttributes& attributes)
{
    const bool isUser = name == "UserPrimitiveRef";
    if (!isUser && name != "StandardPrimitiveRef") {
        return false;
    }
    if (begin(isUser ? Kind::UserReference : Kind::StandardReference)) {
        mShape.reference = idOf(attributes);
    }
    return true;
}

/** @return whether the element tells the width of a stroke, itself or by the dictionary */
bool Ipc2581ShapeReader::readLineWidth(std::string_view name, const XmlAttributes& attributes)
{
    if (name == "LineDesc") {
        mShape.lineWidth = mValues.length(attributes, "lineWidth", mUnit);
        return true;
    }
    if (name == "LineDescRef") {
        const auto found = mLineWidths.find(idOf(attributes));
        mShape.lineWidth = found == mLineWidths.end() ? 0 : found->second;
        return true;
    }
    return false;
}

void Ipc2581ShapeReader::addCorner(std::string_view name, const XmlAttributes& attributes)
{
    Path& path = mShape.path;
    if (name == "PolyBegin") {
        path = {place(attributes, "x", "y"), {}};
    } else if (name == "PolyStepSegment") {
        path.segments.push_back({Segment::Shape::Line, place(attributes, "x", "y"), {}});
    } else if (name == "PolyStepCurve") {
        path.segments.push_back(arcTo(place(attributes, "x", "y"), attributes));
    } else {
        readLineWidth(name, attributes);
    }
}

void Ipc2581ShapeReader::endPolygon()
{
    if (mShape.kind == Kind::Outline && !mShape.path.isClosed()) {
        mShape.path.segments.push_back({Segment::Shape::Line, mShape.path.start, {}});
    }
}

/** The shape that a reference leads to; null if it leads nowhere. */
const Ipc2581Shape* Ipc2581ShapeReader::resolved() const
{
    const Ipc2581Shape* at = &mShape;
    for (int i = 0; i < maxReferences; ++i) {
        if (at->isCompound) {
            mValues.fail(BoardText::tr("a slot of several shapes, or of a moved one"));
        }
        const bool isUser = at->kind == Kind::UserReference;
        if (!isUser && at->kind != Kind::StandardReference) {
            return at;
        }
        const Ipc2581Shapes& shapes = isUser ? mUserShapes : mStandardShapes;
        const auto found = shapes.find(at->reference);
        if (found == shapes.end()) {
            return nullptr;
        }
        at = &found->second;
    }
    return nullptr;
}

Ipc2581Opening Ipc2581ShapeReader::opening() const
{
    const Ipc2581Shape* shape = resolved();
    const auto opening = shape ? openingOf(*shape) : std::nullopt;
    if (!opening) {
        mValues.fail(mShape.reference.empty()
                ? BoardText::tr("a slot without a shape")
                : BoardText::tr("no shape \"%1\" for this slot")
                      .arg(QString::fromStdString(mShape.reference).left(40)));
    }
    return *opening;
}

Place Ipc2581ShapeReader::place(const XmlAttributes& attributes, const char* x, const char* y) const
{
    return mValues.place(
        mValues.numberOr(attributes, x, 0) * mUnit, mValues.numberOr(attributes, y, 0) * mUnit);
}

Segment Ipc2581ShapeReader::arcTo(Place end, const XmlAttributes& attributes) const
{
    return {mValues.isTrue(attributes, "clockwise") ? Segment::Shape::Clockwise
                                                    : Segment::Shape::CounterClockwise,
        end, place(attributes, "centerX", "centerY")};
}

} // namespace brox
