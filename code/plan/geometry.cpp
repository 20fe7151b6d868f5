// SPDX-License-Identifier: MIT
#include "geometry.h"

#include <algorithm>
#include <numbers>

namespace brox {

namespace {

constexpr double fullTurn = 2 * std::numbers::pi;

double cross(ExactPoint origin, ExactPoint a, ExactPoint b)
{
    return (a.x - origin.x) * (b.y - origin.y) - (a.y - origin.y) * (b.x - origin.x);
}

bool doCross(const Line& line, const Line& other)
{
    const auto areApart = [](double first, double second) {
        return (first > 0 && second < 0) || (first < 0 && second > 0);
    };
    return areApart(cross(line.a, line.b, other.a), cross(line.a, line.b, other.b))
        && areApart(cross(other.a, other.b, line.a), cross(other.a, other.b, line.b));
}

void addArc(Place from, const Segment& arc, std::vector<Line>& lines)
{
    const ExactPoint centre = pointOf(arc.centre);
    const ExactPoint first{from.x - centre.x, from.y - centre.y};
    const ExactPoint last{arc.to.x - centre.x, arc.to.y - centre.y};
    const double firstRadius = std::hypot(first.x, first.y);
    const double lastRadius = std::hypot(last.x, last.y);
    const double begin = std::atan2(first.y, first.x);
    double turn = std::atan2(last.y, last.x) - begin;
    if (arc.shape == Segment::Shape::Clockwise) {
        turn -= turn >= 0 ? fullTurn : 0;
    } else {
        turn += turn <= 0 ? fullTurn : 0;
    }
    const double radius = std::max({firstRadius, lastRadius, 1.0});
    const double step = 2 * std::acos(std::max(0.0, 1 - arcDeviation / radius));
    const int count = std::max(1, int(std::ceil(std::abs(turn) / step)));
    ExactPoint before = pointOf(from);
    for (int i = 1; i <= count; ++i) {
        const double part = double(i) / count;
        // In files with few digits the ends may not be equally far from the centre.
        const double reach = firstRadius + (lastRadius - firstRadius) * part;
        const double angle = begin + turn * part;
        const ExactPoint next = i == count
            ? pointOf(arc.to)
            : ExactPoint{centre.x + reach * std::cos(angle), centre.y + reach * std::sin(angle)};
        lines.push_back({before, next});
        before = next;
    }
}

} // namespace

double distance(ExactPoint point, const Line& line)
{
    const double dx = line.b.x - line.a.x;
    const double dy = line.b.y - line.a.y;
    const double square = dx * dx + dy * dy;
    const double along = (point.x - line.a.x) * dx + (point.y - line.a.y) * dy;
    const double part = square > 0 ? std::clamp(along / square, 0.0, 1.0) : 0;
    return distance(point, ExactPoint{line.a.x + part * dx, line.a.y + part * dy});
}

double distance(const Line& line, const Line& other)
{
    return doCross(line, other) ? 0
                                : std::min({distance(line.a, other), distance(line.b, other),
                                    distance(other.a, line), distance(other.b, line)});
}

std::vector<Line> linesOf(const Path& path)
{
    std::vector<Line> lines;
    Place from = path.start;
    for (const Segment& segment : path.segments) {
        if (segment.shape == Segment::Shape::Line) {
            lines.push_back({pointOf(from), pointOf(segment.to)});
        } else {
            addArc(from, segment, lines);
        }
        from = segment.to;
    }
    if (lines.empty()) {
        lines.push_back({pointOf(from), pointOf(from)});
    }
    return lines;
}

double lengthOf(const Path& path)
{
    double length = 0;
    for (const Line& line : linesOf(path)) {
        length += distance(line.a, line.b);
    }
    return length;
}

} // namespace brox
