// SPDX-License-Identifier: MIT
#include "lines.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace brox {

namespace {

double cross(const QPointF& origin, const QPointF& a, const QPointF& b)
{
    const QPointF first = a - origin;
    const QPointF second = b - origin;
    return first.x() * second.y() - first.y() * second.x();
}

bool doCross(const Line& line, const Line& other)
{
    const auto areApart = [](double first, double second) {
        return (first > 0 && second < 0) || (first < 0 && second > 0);
    };
    return areApart(cross(line.a, line.b, other.a), cross(line.a, line.b, other.b))
        && areApart(cross(other.a, other.b, line.a), cross(other.a, other.b, line.b));
}

void addArc(Place from, const Segment& arc, int mostToTurn, std::vector<Line>& lines)
{
    constexpr double fullTurn = 2 * std::numbers::pi;
    const QPointF centre = pointOf(arc.centre);
    const QPointF first = pointOf(from) - centre;
    const QPointF last = pointOf(arc.to) - centre;
    const double firstRadius = std::hypot(first.x(), first.y());
    const double lastRadius = std::hypot(last.x(), last.y());
    const double begin = std::atan2(first.y(), first.x());
    double turn = std::atan2(last.y(), last.x()) - begin;
    if (arc.shape == Segment::Shape::Clockwise) {
        turn -= turn >= 0 ? fullTurn : 0;
    } else {
        turn += turn <= 0 ? fullTurn : 0;
    }
    const double radius = std::max({firstRadius, lastRadius, 1.0});
    const double step =
        std::max(2 * std::acos(std::max(0.0, 1 - arcDeviation / radius)), fullTurn / mostToTurn);
    const int count = std::max(1, int(std::ceil(std::abs(turn) / step)));
    QPointF before = pointOf(from);
    for (int i = 1; i <= count; ++i) {
        const double part = double(i) / count;
        // In files with few digits the ends may not be equally far from the centre.
        const double reach = firstRadius + (lastRadius - firstRadius) * part;
        const double angle = begin + turn * part;
        const QPointF next = i == count
            ? pointOf(arc.to)
            : centre + reach * QPointF(std::cos(angle), std::sin(angle));
        lines.push_back({before, next});
        before = next;
    }
}

} // namespace

double distance(const QPointF& point, const Line& line)
{
    const QPointF along = line.b - line.a;
    const double square = QPointF::dotProduct(along, along);
    const double reach = QPointF::dotProduct(point - line.a, along);
    const double part = square > 0 ? std::clamp(reach / square, 0.0, 1.0) : 0;
    return distance(point, line.a + part * along);
}

double distance(const Line& line, const Line& other)
{
    return doCross(line, other) ? 0
                                : std::min({distance(line.a, other), distance(line.b, other),
                                    distance(other.a, line), distance(other.b, line)});
}

std::vector<Line> linesOf(const Path& path, int mostToTurn)
{
    std::vector<Line> lines;
    Place from = path.start;
    for (const Segment& segment : path.segments) {
        if (segment.shape == Segment::Shape::Line) {
            lines.push_back({pointOf(from), pointOf(segment.to)});
        } else {
            addArc(from, segment, mostToTurn, lines);
        }
        from = segment.to;
    }
    if (lines.empty()) {
        lines.push_back({pointOf(from), pointOf(from)});
    }
    return lines;
}

} // namespace brox
