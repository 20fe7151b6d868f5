// SPDX-License-Identifier: MIT
#include "map_scene.h"

#include "map_shapes.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <limits>

namespace brox {

namespace {

constexpr double likedSymbol = 6; ///< dots at which a symbol is easily read
constexpr double leastSymbol = 2.5; ///< dots below which it is a blot
constexpr double leastCircle = 1.2;
constexpr double ringMargin = 5; ///< between a hole and the ring about it
constexpr double markRadius = 8; ///< of what a comparison found
constexpr double mostStamped = 100; ///< radius of a circle that is kept as a picture
constexpr qint64 mostStamps = 50'000; ///< in a frame; more would take too long and hide each other

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

HoleGrid::HoleGrid(const std::vector<Place>& places)
    : mPlaces(places.size())
{
    if (places.empty()) {
        return;
    }
    mLow = mHigh = places.front();
    for (const Place& place : places) {
        mLow = {std::min(mLow.x, place.x), std::min(mLow.y, place.y)};
        mHigh = {std::max(mHigh.x, place.x), std::max(mHigh.y, place.y)};
    }
    mWidth = qint64(mHigh.x) - mLow.x + 1;
    mHeight = qint64(mHigh.y) - mLow.y + 1;
    const qint64 cells = qint64(places.size()) / placesInCell + 1;
    const double shape = std::sqrt(double(cells) * double(mWidth) / double(mHeight));
    mColumns = std::clamp(qint64(std::min(shape, 1e9)), qint64(1), cells);
    mLines = std::max<qint64>(1, cells / mColumns);

    mBegins.assign(size_t(mColumns * mLines) + 1, 0);
    const auto cellOf = [&](const Place& place) {
        return size_t(lineOf(place.y) * mColumns + columnOf(place.x));
    };
    for (const Place& place : places) {
        ++mBegins[cellOf(place) + 1];
    }
    for (size_t i = 1; i < mBegins.size(); ++i) {
        mBegins[i] += mBegins[i - 1];
    }
    std::vector<std::uint32_t> next(mBegins.begin(), mBegins.end() - 1);
    for (const Place& place : places) {
        mPlaces[next[cellOf(place)]++] = place;
    }
}

/** How the holes of a tool look at a scale; all in dots. */
struct MapScene::ToolLook
{
    double radius; ///< of the circle
    double symbolRadius; ///< 0: too small for a symbol
    QPainterPath symbol; ///< of radius 1
    QColor colour;
    bool isHighlighted;
    bool isToCheck;
    const MapColours& colours;

    void paint(QPainter& painter, const QPainterPath& area, QPointF middle) const
    {
        if (isHighlighted) {
            painter.setBrush(Qt::NoBrush);
            painter.setPen(pen(colours.highlight, 5));
            painter.drawPath(area);
        }
        if (isToCheck) {
            painter.setBrush(Qt::NoBrush);
            painter.setPen(pen(colours.ring, 2));
            painter.drawEllipse(
                area.boundingRect().marginsAdded({ringMargin, ringMargin, ringMargin, ringMargin}));
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

    double reach() const
    {
        return std::max(radius, symbolRadius)
            + (isToCheck            ? ringMargin + 2
                    : isHighlighted ? 4
                                    : 1);
    }

    QImage stamp() const
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
        return picture;
    }

    /** Whether a hole is but a dot or two. */
    bool isDot() const { return symbolRadius <= 0 && radius < leastCircle && !isToCheck; }
    int dotSide() const { return isHighlighted ? 4 : radius < leastCircle / 2 ? 1 : 2; }
    QColor dotColour() const
    {
        return isHighlighted ? colours.highlight : isToCheck ? colours.ring : colour;
    }
};

/** An image with what painting on it needs. */
class MapScene::Canvas
{
public:
    Canvas(QImage& image, const MapView& view, const MapColours& colours)
        : mImage(image)
        , mView(view)
        , mColours(colours)
        , mVisible(view.toMap({0, 0}), view.toMap({double(image.width()), double(image.height())}))
    {
        image.fill(colours.paper);
    }

    const MapView& view() const { return mView; }
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

    ToolLook lookOf(const Row& row, double room) const
    {
        const double radius = row.radius * mView.scale;
        const double symbol = symbolRadius(radius, room * mView.scale, likedSymbol);
        return {radius, symbol < leastSymbol ? 0 : symbol, toolSymbol(row.tool),
            toolColour(row.tool, mColours.isDark), row.isHighlighted, row.isToCheck, mColours};
    }

    /** How many holes may be seen. */
    qint64 countOf(const HoleGrid& holes, double radius) const
    {
        qint64 count = 0;
        visit(holes, radius, [&](std::span<const Place> some) { count += qint64(some.size()); });
        return count;
    }

    void paintStamps(const HoleGrid& holes, double radius, const QImage& stamp)
    {
        QPainter painter;
        begin(painter);
        visitDots(holes, radius, [&](int x, int y) {
            painter.drawImage(x - stamp.width() / 2, y - stamp.height() / 2, stamp);
        });
    }

    /** Fills squares without a painter, which would take several times as long for a million. */
    void paintDots(const HoleGrid& holes, double radius, int side, QRgb colour)
    {
        const int width = mImage.width();
        const int height = mImage.height();
        auto* dots = reinterpret_cast<QRgb*>(mImage.bits());
        visitDots(holes, radius, [&](int x, int y) {
            const int left = std::max(0, x - side / 2);
            const int right = std::min(width, x - side / 2 + side);
            const int bottom = std::min(height, y - side / 2 + side);
            for (int line = std::max(0, y - side / 2); line < bottom; ++line) {
                QRgb* const row = dots + qptrdiff(line) * width;
                std::fill(row + left, row + std::max(left, right), colour);
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

    /** Lets a painter draw on the image; it must end before dots are painted. */
    void begin(QPainter& painter)
    {
        painter.begin(&mImage);
        painter.setRenderHint(QPainter::Antialiasing);
    }

private:
    /** Calls with the dots of the image, or just beside it, that holes lie on. */
    template <typename Visit>
    void visitDots(const HoleGrid& holes, double radius, const Visit& call) const
    {
        const double scale = mView.scale / sizePerMillimetre;
        const QRectF image(QPointF(-mostStamped, -mostStamped),
            QSizeF(mImage.size()) + 2 * QSizeF(mostStamped, mostStamped));
        visit(holes, radius, [&](std::span<const Place> some) {
            for (const Place& place : some) {
                const QPointF dot(
                    place.x * scale + mView.origin.x(), -place.y * scale + mView.origin.y());
                if (image.contains(dot)) {
                    call(int(dot.x()), int(dot.y()));
                }
            }
        });
    }

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
    const MapView& mView;
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

    /** How many stamps the holes need if they are painted well. */
    qint64 stampCount(const Canvas& canvas) const
    {
        return isLarge() || mLook.isDot() ? 0 : canvas.countOf(mRow.holes, mRow.radius);
    }

    void paint(Canvas& canvas, bool quickly) const
    {
        if (isLarge()) {
            canvas.paintLarge(mRow.holes, mRow.radius, mLook);
        } else if (quickly || mLook.isDot()) {
            canvas.paintDots(mRow.holes, mRow.radius, mLook.dotSide(), mLook.dotColour().rgb());
        } else {
            canvas.paintStamps(mRow.holes, mRow.radius, mLook.stamp());
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
    bool isLarge() const { return mLook.radius > mostStamped; }

    const Row& mRow;
    ToolLook mLook;
};

MapScene::MapScene(const DrillPlan& plan)
{
    std::vector<RowPlaces> places = placesOf(plan);
    const std::vector<Path> outlines = outlinesOf(plan);
    const std::vector<std::vector<Path>> contours = contoursOf(plan);
    mMarks = marksOf(plan);
    mExtent = extentOf(plan, places, outlines, contours).united(mMarks.extent());
    mRoom = roomBetween(places);
    for (const Path& outline : outlines) {
        mOutlines.push_back(toMap(outline));
    }
    for (const std::vector<Path>& layer : contours) {
        for (const Path& contour : layer) {
            mContours.push_back(toMap(contour));
        }
    }
    for (size_t i = 0; i < places.size(); ++i) {
        const Size size = shownSize(plan.rows[i]);
        Row& row = mRows.emplace_back(Row{0, toMillimetres(size) / 2, true, false,
            isAlarming(plan.rows[i]), HoleGrid(places[i].holes), {}});
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

void MapScene::paint(QImage& image, const MapView& view, const MapColours& colours) const
{
    Canvas canvas(image, view, colours);
    paintLines(canvas, mOutlines, 1.5);
    paintLines(canvas, mContours, 0.8);
    std::vector<Layer> layers;
    qint64 stamps = 0;
    // What is highlighted comes last, so that nothing hides it.
    for (const bool highlighted : {false, true}) {
        for (const Row& row : mRows) {
            if (row.isShown && row.isHighlighted == highlighted) {
                layers.emplace_back(row, canvas.lookOf(row, mRoom));
                stamps += layers.back().stampCount(canvas);
            }
        }
    }
    for (const Layer& layer : layers) {
        layer.paint(canvas, stamps > mostStamps);
    }
    paintComparison(canvas);
}

void MapScene::paintComparison(Canvas& canvas) const
{
    if (!mMarks.isEmpty()) {
        QPainter painter;
        canvas.begin(painter);
        const auto at = [&](Place place) { return canvas.view().toImage(toMap(place)); };
        paintMarks(painter, mMarks, at, painter.viewport(), markRadius);
    }
}

void MapScene::paintLines(Canvas& canvas, const std::vector<QPainterPath>& lines, double lineWidth)
{
    QPainter painter;
    canvas.begin(painter);
    painter.setTransform(canvas.transform());
    QPen line = pen(canvas.colours().outline, lineWidth);
    line.setCosmetic(true);
    painter.setPen(line);
    for (const QPainterPath& each : lines) {
        if (canvas.sees(each.boundingRect())) {
            painter.drawPath(each);
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
