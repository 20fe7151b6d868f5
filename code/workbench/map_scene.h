// SPDX-License-Identifier: MIT
#ifndef MAP_SCENE_H
#define MAP_SCENE_H

#include "board.h"
#include "drill_plan.h"
#include "map_shapes.h"

#include <QColor>
#include <QImage>
#include <QPainterPath>
#include <optional>
#include <vector>

namespace brox {

/** Where the board lies on an image. */
struct MapView
{
    double scale = 1; ///< dots to the millimetre
    QPointF origin; ///< dot at which the step has its datum

    QPointF toImage(QPointF map) const { return scale * map + origin; }
    QPointF toMap(QPointF image) const { return (image - origin) / scale; }
};

struct MapColours
{
    QColor paper;
    QColor outline;
    QColor highlight;
    QColor ring; ///< about rows to check
    bool isDark = false; ///< the paper
};

/** A plan's holes as a screen shows them: a picture of a million in a few milliseconds. Those of
 *  rows to check have rings. */
class MapScene
{
public:
    /** A place of a row, or where a slot begins. */
    struct Hit
    {
        size_t row;
        Place place;
    };

    /** Of the plan nothing is kept.
     *  @throws PanelError
     */
    explicit MapScene(const DrillPlan& plan);

    /** What is drilled and the outline, in millimetres with y downwards. */
    QRectF extent() const { return mExtent; }

    size_t rowCount() const { return mRows.size(); }
    void setShown(size_t row, bool isShown) { mRows[row].isShown = isShown; }
    void setHighlighted(size_t row, bool is) { mRows[row].isHighlighted = is; }

    /** The number of the row's tool for toolSymbol and toolColour. */
    size_t toolOf(size_t row) const { return mRows[row].tool; }

    /** Fills an image of the format RGB32. */
    void paint(QImage& image, const MapView& view, const MapColours& colours) const;

    /** The shown hole or slot at a point of the map, or next to it within a reach. */
    std::optional<Hit> hitAt(QPointF map, double reach) const;

private:
    struct Slot
    {
        Place start;
        QPainterPath area;
        QRectF bounds;
    };
    struct Row
    {
        size_t tool = 0;
        double radius = 0; ///< millimetres
        bool isShown = true;
        bool isHighlighted = false;
        bool isToCheck = false;
        std::vector<Place> holes; ///< from the bottom to the top
        std::vector<Slot> slotAreas;
    };
    struct Look;
    class Canvas;

    static void paintLines(
        Canvas& canvas, const std::vector<QPainterPath>& lines, double lineWidth);
    void paintComparison(Canvas& canvas) const;

    double mRoom = 0; ///< millimetres between holes
    QRectF mExtent;
    std::vector<Row> mRows;
    std::vector<QPainterPath> mOutlines;
    std::vector<QPainterPath> mContours; ///< milled, not drilled
    ComparisonMarks mMarks;
};

} // namespace brox

#endif
