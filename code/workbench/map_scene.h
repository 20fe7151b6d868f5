// SPDX-License-Identifier: MIT
#ifndef MAP_SCENE_H
#define MAP_SCENE_H

#include "board.h"
#include "drill_plan.h"
#include "map_shapes.h"

#include <QColor>
#include <QImage>
#include <QPainterPath>
#include <span>

namespace brox {

/** Finds those of many places that lie in a part of the board. */
class HoleGrid
{
public:
    explicit HoleGrid(const std::vector<Place>& places);

    /** Calls with stretches of places, as spans: all within a rectangle, and some around it. */
    template <typename Visit>
    void visit(Place low, Place high, const Visit& visit) const;

private:
    static constexpr qint64 placesInCell = 32;

    qint64 columnOf(qint64 x) const { return (x - mLow.x) * mColumns / mWidth; }
    qint64 lineOf(qint64 y) const { return (y - mLow.y) * mLines / mHeight; }

    Place mLow;
    Place mHigh;
    qint64 mWidth = 1;
    qint64 mHeight = 1;
    qint64 mColumns = 1;
    qint64 mLines = 1;
    std::vector<std::uint32_t> mBegins; ///< of each cell, line by line, and the end
    std::vector<Place> mPlaces; ///< by cell
};

template <typename Visit>
void HoleGrid::visit(Place low, Place high, const Visit& visit) const
{
    if (mPlaces.empty() || low.x > mHigh.x || high.x < mLow.x || low.y > mHigh.y
        || high.y < mLow.y) {
        return;
    }
    const qint64 left = columnOf(std::max(low.x, mLow.x));
    const qint64 right = columnOf(std::min(high.x, mHigh.x));
    const qint64 last = lineOf(std::min(high.y, mHigh.y));
    for (qint64 line = lineOf(std::max(low.y, mLow.y)); line <= last; ++line) {
        const std::uint32_t begin = mBegins[size_t(line * mColumns + left)];
        const std::uint32_t end = mBegins[size_t(line * mColumns + right + 1)];
        visit(std::span(mPlaces.data() + begin, mPlaces.data() + end));
    }
}

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
        HoleGrid holes;
        std::vector<Slot> slotAreas;
    };
    struct ToolLook;
    class Canvas;
    class Layer;

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
