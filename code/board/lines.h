// SPDX-License-Identifier: MIT
#ifndef LINES_H
#define LINES_H

#include "board.h"

#include <QPointF>
#include <cmath>

namespace brox {

/** Paths as straight lines, and how far these are apart; in host size units, not rounded. */

/** A straight line from a to b, which may be one point. */
struct Line
{
    QPointF a;
    QPointF b;
};

inline QPointF pointOf(Place place)
{
    return {double(place.x), double(place.y)};
}

inline double distance(const QPointF& a, const QPointF& b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

double distance(const QPointF& point, const Line& line);

/** 0 where they cross. */
double distance(const Line& line, const Line& other);

/** How far lines that stand for an arc stay within it, if they may be as many as it takes. */
constexpr double arcDeviation = sizePerMicron / 4.0;

/** A path as lines; one without segments is a line of one point.
 *
 * @param mostToTurn  how many lines may stand for a full circle; as many as there are by default
 *                    deviate by no more than 5 millionths of its radius
 */
std::vector<Line> linesOf(const Path& path, int mostToTurn = 1000);

} // namespace brox

#endif
