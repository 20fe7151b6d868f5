// SPDX-License-Identifier: MIT
#include "map_scene.h"

#include "map_shapes.h"
#include "stamp.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <limits>

namespace brox {

namespace {

constexpr double likedSymbol = 6; ///< dots at which a symbol is easily read
constexpr double leastSymbol = 2.5; ///< dots below which it is a blot
constexpr double leastCircle = 1.2;
constexpr double mostStamped = 100; ///< radius of a circle that is kept as a picture
constexpr qint64 mostCost = 10'000'000; ///< of all stamps of a picture; more would take too long

Size toSize(double millimetres)
{
    constexpr double most = std::numeric_limits<Size>::max();
    return Size(std::clamp(millimetres * sizePerMillimetre, -most, most));
}

QPen pen(const QColor& colour, double lineWidth)
{
    return QPen(colour, lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

} // namespace

/** How the holes of a tool look at a scale; all in dots. */
struct MapScene::ToolLook
{
    double radius; ///< of the circle
    double symbolRadius; ///< 0: too small for a symbol
    QPainterPath symbol; ///< of radius 1
    QColor colour;
    bool isHighlighted;
    QColor highlight;

    void paint(QPainter& painter, const QPainterPath& area, QPointF middle) const
    {
        if (isHighlighted) {
            painter.setBrush(Qt::NoBrush);
            painter.setPen(pen(highlight, 5));
            painter.drawPath(area);
        }
        // Without a symbol the colour alone has to be seen.
        painter.setBrush(symbolRadius > 0 ? QBrush(Qt::NoBrush) : QBrush(colour));
        painter.setPen(pen(colour, 1));
        painter.drawPath(area);
        if (symbolRadius > 0) {
            const double size = symbolRadius;
            painter.setBrush(Qt::NoBrush);
            painter.setPen(pen(colour, 1.3));
            painter.drawPath(QTransform(size, 0, 0, size, middle.x(), middle.y()).map(symbol));
        }
    }

    double reach() const { return std::max(radius, symbolRadius) + (isHighlighted ? 4 : 1); }

    Stamp stamp() const
    {
        const int side = 2 * int(std::ceil(reach())) + 1;
        QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        const QPointF middle(side / 2.0, side / 2.0);
        QPainterPath circle;
        circle.addEllipse(middle, radius, radius);
        paint(painter, circle, middle);
        painter.end();
        return Stamp(picture);
    }

    /** Of a hole that is a dot or two. */
    Stamp dot() const
    {
        return isHighlighted ? Stamp(highlight, 4)
                             : Stamp(colour, radius < leastCircle / 2 ? 1 : 2);
    }
};

/** An image with what painting on it needs. */
class MapScene::Canvas
{
public:
    Canvas(QImage& image, const MapPosition& view, const MapColours& colours)
        : mImage(image)
        , mView(view)
        , mColours(colours)
        , mVisible(view.toMap({0, 0}), view.toMap({double(image.width()), double(image.height())}))
    {
        image.fill(colours.paper);
    }

    const MapPosition& view() const { return mView; }
    const MapColours& colours() const { return mColours; }

    bool sees(const QRectF& map) const
    {
        constexpr double line = 1e-6; // without height it would intersect nothing
        return mVisible.intersects(map.marginsAdded({line, line, line, line}));
    }

    QTransform transform() const
    {
        return {mView.scale, 0, 0, mView.scale, mView.origin.x(), mView.origin.y()};
    }

    ToolLook lookOf(size_t tool, bool highlighted, double radius, double room) const
    {
        const double symbol = symbolRadius(radius * mView.scale, room * mView.scale, likedSymbol);
        return {radius * mView.scale, symbol < leastSymbol ? 0 : symbol, toolSymbol(tool),
            toolColour(tool, mColours.isDark), highlighted, mColours.highlight};
    }

    /** How many holes may be seen. */
    qint64 countOf(const HoleGrid& holes, double radius) const
    {
        qint64 count = 0;
        visit(holes, radius, [&](std::span<const Place> some) { count += qint64(some.size()); });
        return count;
    }

    void putAll(const HoleGrid& holes, double radius, const Stamp& stamp)
    {
        const double scale = mView.scale / sizePerMillimetre;
        const QSize size = mImage.size();
        const double right = size.width() + mostStamped;
        const double bottom = size.height() + mostStamped;
        auto* dots = reinterpret_cast<QRgb*>(mImage.bits());
        visit(holes, radius, [&](std::span<const Place> some) {
            for (const Place& place : some) {
                const double x = place.x * scale + mView.origin.x();
                const double y = -place.y * scale + mView.origin.y();
                if (x > -mostStamped && x < right && y > -mostStamped && y < bottom) {
                    stamp.put(size, dots, int(x), int(y));
                }
            }
        });
    }

    void paintLarge(const HoleGrid& holes, double radius, const ToolLook& look)
    {
        QPainter painting;
        begin(painting);
        visit(holes, radius, [&](std::span<const Place> some) {
            for (const Place& place : some) {
                const QRectF bounds(
                    toMap(place) - QPointF(radius, radius), QSizeF(2 * radius, 2 * radius));
                if (sees(bounds)) {
                    QPainterPath circle;
                    circle.addEllipse(bounds);
                    look.paint(painting, transform().map(circle), mView.toImage(toMap(place)));
                }
            }
        });
    }

    /** Lets a painter draw on the image; it must end before stamps are put. */
    void begin(QPainter& painter)
    {
        painter.begin(&mImage);
        painter.setRenderHint(QPainter::Antialiasing);
    }

private:
    /** Calls with stretches of a grid's holes that can be seen. */
    template <typename Visit>
    void visit(const HoleGrid& holes, double radius, const Visit& call) const
    {
        const QRectF area = mVisible.marginsAdded({radius, radius, radius, radius});
        // On the map y points down.
        holes.visit({toSize(area.left()), toSize(-area.bottom())},
            {toSize(area.right()), toSize(-area.top())}, call);
    }

    QImage& mImage;
    const MapPosition& mView;
    const MapColours& mColours;
    QRectF mVisible;
};

/** A row on its way to the image. */
class MapScene::Layer
{
public:
    Layer(const Row& row, const ToolLook& look)
        : mRow(row)
        , mLook(look)
    { }

    /** What the holes cost if they are painted well. */
    qint64 prepare(const Canvas& canvas)
    {
        const qint64 count = canvas.countOf(mRow.holes, mRow.radius);
        mIsLarge = mLook.radius > mostStamped;
        const bool isDot = mLook.symbolRadius <= 0 && mLook.radius < leastCircle;
        if (count > 0 && !mIsLarge) {
            mStamp = isDot ? mLook.dot() : mLook.stamp();
            return count * mStamp->cost();
        }
        return 0;
    }

    void paint(Canvas& canvas, bool quickly) const
    {
        if (mStamp) {
            canvas.putAll(mRow.holes, mRow.radius, quickly ? mLook.dot() : *mStamp);
        } else if (mIsLarge) {
            canvas.paintLarge(mRow.holes, mRow.radius, mLook);
        }
        if (mRow.slotAreas.empty()) {
            return;
        }
        QPainter painter;
        canvas.begin(painter);
        for (const Slot& slot : mRow.slotAreas) {
            if (canvas.sees(slot.bounds)) {
                mLook.paint(painter, canvas.transform().map(slot.area),
                    canvas.view().toImage(slot.bounds.center()));
            }
        }
    }

private:
    const Row& mRow;
    ToolLook mLook;
    std::optional<Stamp> mStamp;
    bool mIsLarge = false;
};

MapScene::MapScene(const DrillPlan& plan)
{
    std::vector<RowPlaces> places = placesOf(plan);
    const std::vector<Path> outlines = outlinesOf(plan);
    mExtent = extentOf(plan, places, outlines);
    mRoom = roomBetween(places);
    for (const Path& outline : outlines) {
        mOutlines.push_back(toMap(outline));
    }
    for (size_t i = 0; i < places.size(); ++i) {
        const Size size = shownSize(plan.rows[i]);
        Row& row = mRows.emplace_back(
            Row{0, toMillimetres(size) / 2, true, false, HoleGrid(places[i].holes), {}});
        for (const Path& path : places[i].slotPaths) {
            const QPainterPath area = slotArea(path, size);
            row.slotAreas.push_back({path.start, area, area.boundingRect()});
        }
    }
    size_t number = 0;
    for (const Program& program : plan.programs) {
        for (const ProgramTool& tool : program.tools) {
            for (const size_t row : tool.rows) {
                mRows[row].tool = number;
            }
            ++number;
        }
    }
}

void MapScene::paint(QImage& image, const MapPosition& view, const MapColours& colours) const
{
    Canvas canvas(image, view, colours);
    paintOutlines(canvas);
    std::vector<Layer> layers;
    qint64 cost = 0;
    // What is highlighted comes last, so that nothing hides it.
    for (const bool highlighted : {false, true}) {
        for (const Row& row : mRows) {
            if (row.isShown && row.isHighlighted == highlighted) {
                layers.emplace_back(row, canvas.lookOf(row.tool, highlighted, row.radius, mRoom));
                cost += layers.back().prepare(canvas);
            }
        }
    }
    for (const Layer& layer : layers) {
        layer.paint(canvas, cost > mostCost);
    }
}

void MapScene::paintOutlines(Canvas& canvas) const
{
    QPainter painter;
    canvas.begin(painter);
    painter.setTransform(canvas.transform());
    QPen line = pen(canvas.colours().outline, 1.5);
    line.setCosmetic(true);
    painter.setPen(line);
    for (const QPainterPath& outline : mOutlines) {
        if (canvas.sees(outline.boundingRect())) {
            painter.drawPath(outline);
        }
    }
}

std::optional<MapScene::Hit> MapScene::hitAt(QPointF map, double reach) const
{
    std::optional<Hit> hit;
    double nearest = reach;
    for (size_t i = 0; i < mRows.size(); ++i) {
        const Row& row = mRows[i];
        if (!row.isShown) {
            continue;
        }
        const double far = row.radius + reach;
        row.holes.visit({toSize(map.x() - far), toSize(-map.y() - far)},
            {toSize(map.x() + far), toSize(-map.y() + far)}, [&](std::span<const Place> some) {
                for (const Place& place : some) {
                    const QPointF away = toMap(place) - map;
                    const double gap = std::hypot(away.x(), away.y()) - row.radius;
                    if (gap < nearest) {
                        nearest = gap;
                        hit = {i, place};
                    }
                }
            });
        for (const Slot& slot : row.slotAreas) {
            if (nearest > 0 && slot.area.contains(map)) {
                nearest = 0;
                hit = {i, slot.start};
            }
        }
    }
    return hit;
}

} // namespace brox
