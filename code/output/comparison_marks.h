// SPDX-License-Identifier: MIT
#ifndef COMPARISON_MARKS_H
#define COMPARISON_MARKS_H

#include "drill_plan.h"

#include <QRectF>
#include <functional>

class QPainter;

namespace brox {

/** What maps show of a comparison: a green plus where a hole is added, a red cross where one is
 *  removed, a line where one has moved, with a ring at the end. */
struct ComparisonMarks
{
    std::vector<Place> added;
    std::vector<Place> removed;
    std::vector<std::pair<Place, Place>> moved; ///< from and to

    bool isEmpty() const { return added.empty() && removed.empty() && moved.empty(); }

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
