// SPDX-License-Identifier: MIT
#include "ipc2581_shape.h"

#include <cmath>

namespace brox {

namespace {

Size size(double number)
{
    return Size(std::lround(number));
}

Path rectangle(double width, double height)
{
    const Size x = size(width / 2);
    const Size y = size(height / 2);
    return rectanglePath({Size(-x), Size(-y)}, {x, y});
}

} // namespace

Path rectanglePath(Place lowerLeft, Place upperRight)
{
    constexpr auto line = Segment::Shape::Line;
    return {lowerLeft,
        {{line, {upperRight.x, lowerLeft.y}, {}}, {line, upperRight, {}},
            {line, {lowerLeft.x, upperRight.y}, {}}, {line, lowerLeft, {}}}};
}

std::optional<Ipc2581Opening> openingOf(const Ipc2581Shape& shape)
{
    using Kind = Ipc2581Shape::Kind;
    switch (shape.kind) {
    case Kind::Circle:
        return Ipc2581Opening{ovalSlot(size(shape.width), size(shape.width)), {}};
    case Kind::Oval:
        return Ipc2581Opening{ovalSlot(size(shape.width), size(shape.height)), {}};
    case Kind::Rectangle:
        return Ipc2581Opening{{}, rectangle(shape.width, shape.height)};
    case Kind::Stroke:
        if (shape.lineWidth < 1) {
            return Ipc2581Opening{recogniseSlot(shape.path), shape.path};
        }
        return Ipc2581Opening{SlotShape{size(shape.lineWidth), shape.path}, {}};
    case Kind::Outline:
        return Ipc2581Opening{recogniseSlot(shape.path), shape.path};
    case Kind::None:
    case Kind::StandardReference:
    case Kind::UserReference:
        break;
    }
    return std::nullopt;
}

} // namespace brox
