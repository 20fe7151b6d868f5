// SPDX-License-Identifier: MIT
#include "comparison_marks.h"

#include "map_shapes.h"
#include "plan_text.h"

#include <QPainter>
#include <algorithm>

namespace brox {

namespace {

constexpr qsizetype mostElements = 1000; ///< of a path; a raster paints long ones slowly

/** Strokes of one colour on their way to the painter, with a rim that sets them off. */
class Strokes
{
public:
    Strokes(QPainter& painter, const QColor& colour, double radius)
        : mPainter(painter)
        , mColour(colour)
        , mRadius(radius)
    { }
    ~Strokes() { paint(); }
    Strokes(const Strokes&) = delete;
    Strokes& operator=(const Strokes&) = delete;

    QPainterPath& path()
    {
        if (mPath.elementCount() > mostElements) {
            paint();
        }
        return mPath;
    }

private:
    void paint()
    {
        mPainter.setBrush(Qt::NoBrush);
        for (const auto& [colour, width] :
            {std::pair(QColor(Qt::white), 0.7), std::pair(mColour, 0.35)}) {
            mPainter.setPen(
                QPen(colour, width * mRadius, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            mPainter.drawPath(mPath);
        }
        mPath.clear();
    }

    QPainter& mPainter;
    QColor mColour;
    double mRadius;
    QPainterPath mPath;
};

void addLine(QPainterPath& path, QPointF from, QPointF to)
{
    path.moveTo(from);
    path.lineTo(to);
}

bool hasLayer(const DrillPlan& plan, const QString& name)
{
    return std::any_of(plan.layers.begin(), plan.layers.end(),
        [&](const StepLayer& layer) { return layer.name == name; });
}

} // namespace

QRectF ComparisonMarks::extent() const
{
    Extent extent;
    std::for_each(added.begin(), added.end(), [&](Place place) { extent.add(place); });
    std::for_each(removed.begin(), removed.end(), [&](Place place) { extent.add(place); });
    for (const auto& [from, to] : moved) {
        extent.add(from);
        extent.add(to);
    }
    return extent.count == 0 ? QRectF()
                             : QRectF(toMap(Place{extent.low.x, extent.high.y}),
                                 toMap(Place{extent.high.x, extent.low.y}))
                                   .adjusted(-1, -1, 1, 1);
}

ComparisonMarks marksOf(const DrillPlan& plan, const QString& layer)
{
    ComparisonMarks marks;
    if (!plan.comparison || plan.comparison->isOtherPanel) {
        return marks;
    }
    for (const BoardDifference& difference : plan.comparison->differences) {
        const auto isHere = [&](const std::optional<ComparedTool>& tool) {
            return tool && (layer.isNull() || tool->layer == layer || !hasLayer(plan, tool->layer));
        };
        const std::vector<Place>& places = difference.places;
        if (difference.kind == DifferenceKind::Added && isHere(difference.to)) {
            marks.added.insert(marks.added.end(), places.begin(), places.end());
        } else if (difference.kind == DifferenceKind::Removed && isHere(difference.from)) {
            marks.removed.insert(marks.removed.end(), places.begin(), places.end());
        } else if (difference.kind == DifferenceKind::Moved && isHere(difference.from)) {
            for (size_t i = 0; i < places.size(); ++i) {
                marks.moved.emplace_back(places[i], difference.movedTo[i]);
            }
        }
    }
    return marks;
}

void paintMarks(QPainter& painter, const ComparisonMarks& marks,
    const std::function<QPointF(Place)>& at, const QRectF& seen, double radius)
{
    const QRectF area = seen.adjusted(-radius, -radius, radius, radius);
    painter.save();
    {
        Strokes lines(painter, QColor(0x1f, 0x4e, 0xd8), radius);
        for (const auto& [from, to] : marks.moved) {
            const QPointF end = at(to);
            if (area.contains(at(from)) || area.contains(end)) {
                addLine(lines.path(), at(from), end);
                lines.path().addEllipse(end, radius / 2, radius / 2);
            }
        }
    }
    {
        Strokes crosses(painter, QColor(0xd0, 0x10, 0x10), radius);
        for (const Place& place : marks.removed) {
            if (const QPointF middle = at(place); area.contains(middle)) {
                const QPointF arm(0.7 * radius, 0.7 * radius);
                const QPointF other(arm.x(), -arm.y());
                addLine(crosses.path(), middle - arm, middle + arm);
                addLine(crosses.path(), middle - other, middle + other);
            }
        }
    }
    {
        Strokes pluses(painter, QColor(0x00, 0x8a, 0x2e), radius);
        for (const Place& place : marks.added) {
            if (const QPointF middle = at(place); area.contains(middle)) {
                addLine(pluses.path(), middle - QPointF(radius, 0), middle + QPointF(radius, 0));
                addLine(pluses.path(), middle - QPointF(0, radius), middle + QPointF(0, radius));
            }
        }
    }
    painter.restore();
}

QString marksText(const ComparisonMarks& marks)
{
    QStringList parts;
    const auto add = [&](size_t count, const QString& text) {
        if (count > 0) {
            parts << text.arg(count);
        }
    };
    add(marks.added.size(), PlanText::tr("added: %1 (plus)"));
    add(marks.removed.size(), PlanText::tr("removed: %1 (cross)"));
    add(marks.moved.size(), PlanText::tr("moved: %1 (line)"));
    return parts.join(QStringLiteral(", "));
}

} // namespace brox
