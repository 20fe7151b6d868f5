// SPDX-License-Identifier: MIT
#ifndef GEOMETRY_H
#define GEOMETRY_H

#include "board.h"

#include <cmath>

namespace brox {

/** Distances on a board, in host size units. */

struct ExactPoint
{
    double x = 0;
    double y = 0;
};

/** A straight line from a to b, which may be one point. */
struct Line
{
    ExactPoint a;
    ExactPoint b;
};

inline ExactPoint pointOf(Place place)
{
    return {double(place.x), double(place.y)};
}

inline double distance(ExactPoint a, ExactPoint b)
{
    return std::hypot(a.x - b.x, a.y - b.y);
}

double distance(ExactPoint point, const Line& line);

/** 0 where they cross. */
double distance(const Line& line, const Line& other);

/** How far lines that stand for an arc stay within it at most. */
constexpr double arcDeviation = sizePerMicron / 4.0;

/** A path as lines; one without segments is a line of one point. */
std::vector<Line> linesOf(const Path& path);

/** The length of a path. */
double lengthOf(const Path& path);

} // namespace brox

#endif
