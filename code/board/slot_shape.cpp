// SPDX-License-Identifier: MIT
#include "slot_shape.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace brox {

namespace {

struct Point
{
    double x = 0;
    double y = 0;
};

constexpr int arcParts = 32; ///< of a full circle
constexpr size_t fewestCorners = 10; ///< of a polygon that stands for two half circles

void addArc(std::vector<Point>& points, Place from, const Segment& arc)
{
    const double radius = std::hypot(double(from.x) - arc.centre.x, double(from.y) - arc.centre.y);
    const double start = std::atan2(double(from.y) - arc.centre.y, double(from.x) - arc.centre.x);
    const double end = std::atan2(double(arc.to.y) - arc.centre.y, double(arc.to.x) - arc.centre.x);
    const bool clockwise = arc.shape == Segment::Shape::Clockwise;
    double sweep = clockwise ? start - end : end - start;
    constexpr double full = 2 * std::numbers::pi;
    sweep = sweep <= 1e-9 ? sweep + full : sweep;
    const int parts = std::max(2, int(std::ceil(sweep / full * arcParts)));
    for (int i = 1; i <= parts; ++i) {
        const double angle = start + (clockwise ? -sweep : sweep) * i / parts;
        points.push_back(
            {arc.centre.x + radius * std::cos(angle), arc.centre.y + radius * std::sin(angle)});
    }
}

std::vector<Point> corners(const Path& outline)
{
    std::vector<Point> points{{double(outline.start.x), double(outline.start.y)}};
    Place from = outline.start;
    for (const Segment& segment : outline.segments) {
        if (segment.shape == Segment::Shape::Line) {
            points.push_back({double(segment.to.x), double(segment.to.y)});
        } else {
            addArc(points, from, segment);
        }
        from = segment.to;
    }
    return points;
}

/** The direction in which an outline is longest, as a unit vector. */
Point longDirection(const std::vector<Point>& points)
{
    double length = 0;
    Point centre;
    const auto eachEdge = [&](const auto& visit) {
        for (size_t i = 1; i < points.size(); ++i) {
            const Point middle{
                (points[i].x + points[i - 1].x) / 2, (points[i].y + points[i - 1].y) / 2};
            visit(middle, std::hypot(points[i].x - points[i - 1].x, points[i].y - points[i - 1].y));
        }
    };
    eachEdge([&](const Point& middle, double edge) {
        length += edge;
        centre.x += middle.x * edge;
        centre.y += middle.y * edge;
    });
    if (length == 0) {
        return {1, 0};
    }
    centre = {centre.x / length, centre.y / length};
    double xx = 0;
    double xy = 0;
    double yy = 0;
    eachEdge([&](const Point& middle, double edge) {
        const double dx = middle.x - centre.x;
        const double dy = middle.y - centre.y;
        xx += dx * dx * edge;
        xy += dx * dy * edge;
        yy += dy * dy * edge;
    });
    const double angle = std::atan2(2 * xy, xx - yy) / 2;
    return {std::cos(angle), std::sin(angle)};
}

Place rounded(const Point& point)
{
    return {Size(std::lround(point.x)), Size(std::lround(point.y))};
}

} // namespace

std::optional<SlotShape> recogniseSlot(const Path& outline)
{
    const std::vector<Point> points = corners(outline);
    if (!outline.isClosed() || points.size() < fewestCorners) {
        return std::nullopt;
    }
    const Point along = longDirection(points);
    const Point across{-along.y, along.x};
    const auto extent = [&](const Point& direction) {
        const auto [least, most] =
            std::minmax_element(points.begin(), points.end(), [&](const Point& a, const Point& b) {
                return a.x * direction.x + a.y * direction.y
                    < b.x * direction.x + b.y * direction.y;
            });
        return std::pair(least->x * direction.x + least->y * direction.y,
            most->x * direction.x + most->y * direction.y);
    };
    const auto [left, right] = extent(along);
    const auto [bottom, top] = extent(across);
    const double width = top - bottom;
    if (width < 1 || width > std::numeric_limits<Size>::max()) {
        return std::nullopt;
    }
    const double half = std::max(0.0, (right - left - width) / 2);
    const double middle = (left + right) / 2;
    const double height = (bottom + top) / 2;
    // Short lines run within the circle that they stand for, and files round.
    const double tolerance = std::max(4.0 * sizePerMicron, width * 0.015);
    for (size_t i = 1; i < points.size(); ++i) {
        for (const double part : {0.5, 1.0}) {
            const Point point{points[i - 1].x + (points[i].x - points[i - 1].x) * part,
                points[i - 1].y + (points[i].y - points[i - 1].y) * part};
            const double u = point.x * along.x + point.y * along.y - middle;
            const double v = point.x * across.x + point.y * across.y - height;
            const double distance = std::hypot(u - std::clamp(u, -half, half), v);
            if (std::abs(distance - width / 2) > tolerance) {
                return std::nullopt;
            }
        }
    }
    const auto at = [&](double u) {
        return rounded({along.x * u + across.x * height, along.y * u + across.y * height});
    };
    SlotShape slot{Size(std::lround(width)), {at(middle - half), {}}};
    if (half > sizePerMicron) {
        slot.middle.segments.push_back({Segment::Shape::Line, at(middle + half), {}});
    }
    return slot;
}

SlotShape ovalSlot(Size width, Size height)
{
    const bool lies = width >= height;
    const Size half = (lies ? width - height : height - width) / 2;
    const Place end = lies ? Place{half, 0} : Place{0, half};
    SlotShape slot{std::min(width, height), {{-end.x, -end.y}, {}}};
    if (half > 0) {
        slot.middle.segments.push_back({Segment::Shape::Line, end, {}});
    }
    return slot;
}

} // namespace brox
