// SPDX-License-Identifier: MIT
#ifndef MAP_SHAPES_H
#define MAP_SHAPES_H

#include "drill_plan.h"

#include <QColor>
#include <QPainterPath>
#include <QPen>
#include <QRectF>
#include <functional>

class QPainter;

namespace brox {

/** What maps on paper and on the screen draw: places, slots, and how tools look. Maps count in
 *  millimetres with y downwards. */

constexpr double toMillimetres(Size size)
{
    return double(size) / sizePerMillimetre;
}

inline QPointF toMap(Place place)
{
    return {toMillimetres(place.x), -toMillimetres(place.y)};
}

QPainterPath toMap(const Path& path);

/** The area that a slot's cutter takes away. */
QPainterPath slotArea(const Path& path, Size width);

/** What a map shows of a row: the drill size, or without one the finished size. */
Size shownSize(const PlanRow& row);

/** The colour of a tool; neighbours in the list differ for colour-blind people too. They repeat. */
QColor toolColour(size_t index, bool onDark);

/** The lines of a tool's symbol, which reaches from -1 to 1. No two of the first 104 are the
 *  same, so that they distinguish tools without any colour. */
QPainterPath toolSymbol(size_t index);

/** How large a symbol is drawn on a hole: inside of a large one, around a small one as far as
 *  the neighbours leave room. All in one unit.
 *
 * @param room   the usual distance from hole to hole
 * @param liked  radius at which a symbol is easily read
 */
double symbolRadius(double holeRadius, double room, double liked);

/** The distance in millimetres that most holes keep from their next one; 0 if there are none.
 *
 * @param rows  whose holes count; empty: all
 */
double roomBetween(const std::vector<RowPlaces>& places, std::vector<size_t> rows = {});

/** A pen with round ends and corners. */
QPen linePen(const QColor& colour, double lineWidth);

/** What holes, slots, outlines and contours take; empty if there is nothing. */
QRectF extentOf(const DrillPlan& plan, const std::vector<RowPlaces>& places,
    const std::vector<Path>& outlines, const std::vector<std::vector<Path>>& contours);

/** What maps show of a comparison: a green plus where a hole is added, a red cross where one is
 *  removed, a line where one has moved, with a ring at the end. */
struct ComparisonMarks
{
    std::shared_ptr<const Comparison> comparison;
    std::vector<const BoardDifference*> differences; ///< those of it that are marked

    bool isEmpty() const { return differences.empty(); }

    /** In millimetres with y downwards; empty without marks. */
    QRectF extent() const;
};

/** Of one layer, or of all. What is added on a layer that the board has not is on all of them.
 *  Empty without a comparison, and if its places are those of another board. */
ComparisonMarks marksOf(const DrillPlan& plan, const QString& layer = {});

/** @param at      where a place lies on the painter's device
 *  @param seen    only marks there are painted
 *  @param radius  of a mark
 */
void paintMarks(QPainter& painter, const ComparisonMarks& marks,
    const std::function<QPointF(Place)>& at, const QRectF& seen, double radius);

/** "added: 2 (plus)" and so on, in the language of the program; empty without marks. */
QString marksText(const ComparisonMarks& marks);

} // namespace brox

#endif
