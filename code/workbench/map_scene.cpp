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
constexpr double mostRim = 16; ///< by which symbols and rings reach beyond a hole
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

/** Calls with those of places, which are sorted by y, that lie in a rectangle. */
template <typename Visit>
void visitWithin(const std::vector<Place>& places, Place low, Place high, const Visit& call)
{
    const auto begin = std::ranges::lower_bound(places, low.y, {}, &Place::y);
    const auto end = std::ranges::upper_bound(begin, places.end(), high.y, {}, &Place::y);
    for (const Place& place : std::ranges::subrange(begin, end)) {
        if (place.x >= low.x && place.x <= high.x) {
            call(place);
        }
    }
}

} // namespace

/** How the holes of a row look at a scale; all in dots. */
struct MapScene::Look
{
    const Row& row;
    const MapColours& colours;
    double radius; ///< of the circle
    double symbolRadius; ///< 0: too small for a symbol
    QPainterPath symbol; ///< of radius 1
    QColor colour;

    void paint(QPainter& painter, const QPainterPath& area, QPointF middle) const
    {
        painter.setBrush(Qt::NoBrush);
        if (row.isHighlighted) {
            painter.setPen(pen(colours.highlight, 5));
            painter.drawPath(area);
        }
        if (row.isToCheck) {
            painter.setPen(pen(colours.ring, 2));
            painter.drawEllipse(
                area.boundingRect().marginsAdded({ringMargin, ringMargin, ringMargin, ringMargin}));
        }
        painter.setPen(pen(colour, 1));
        if (symbolRadius <= 0) {
            painter.setBrush(colour); // which alone has to be seen
        }
        painter.drawPath(area);
        if (symbolRadius > 0) {
            painter.setPen(pen(colour, 1.3));
            painter.drawPath(
                QTransform(symbolRadius, 0, 0, symbolRadius, middle.x(), middle.y()).map(symbol));
        }
    }

    QImage stamp() const
    {
        const double rim = row.isToCheck ? ringMargin + 2 : row.isHighlighted ? 4 : 1;
        const int side = 2 * int(std::ceil(std::max(radius, symbolRadius) + rim)) + 1;
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

    bool isLarge() const { return radius > mostStamped; }

    /** Whether a hole is but a dot or two. */
    bool isDot() const { return symbolRadius <= 0 && radius < leastCircle && !row.isToCheck; }
    int dotSide() const { return row.isHighlighted ? 4 : radius < leastCircle / 2 ? 1 : 2; }
    QColor dotColour() const
    {
        return row.isHighlighted ? colours.highlight : row.isToCheck ? colours.ring : colour;
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

    Look lookOf(const Row& row, double room) const
    {
        const double radius = row.radius * mView.scale;
        const double symbol = symbolRadius(radius, room * mView.scale, likedSymbol);
        return {row, mColours, radius, symbol < leastSymbol ? 0 : symbol, toolSymbol(row.tool),
            toolColour(row.tool, mColours.isDark)};
    }

    /** How many stamps the holes of a row need if they are painted well. */
    qint64 stampCount(const Look& look) const
    {
        qint64 count = 0;
        if (!look.isLarge() && !look.isDot()) {
            visit(look.row, [&](const Place&) { ++count; });
        }
        return count;
    }

    void paint(const Look& look, bool quickly)
    {
        if (look.isLarge()) {
            paintLarge(look);
        } else if (quickly || look.isDot()) {
            paintDots(look);
        } else {
            paintStamps(look);
        }
        paintSlots(look);
    }

    /** Lets a painter draw on the image; it must end before dots are painted. */
    void begin(QPainter& painter)
    {
        painter.begin(&mImage);
        painter.setRenderHint(QPainter::Antialiasing);
    }

private:
    void paintStamps(const Look& look)
    {
        QPainter painter;
        begin(painter);
        const QImage stamp = look.stamp();
        visitDots(look.row, [&](int x, int y) {
            painter.drawImage(x - stamp.width() / 2, y - stamp.height() / 2, stamp);
        });
    }

    /** Fills squares without a painter, which would take several times as long for a million. */
    void paintDots(const Look& look)
    {
        const int width = mImage.width();
        const int height = mImage.height();
        const int side = look.dotSide();
        const QRgb colour = look.dotColour().rgb();
        auto* dots = reinterpret_cast<QRgb*>(mImage.bits());
        visitDots(look.row, [&](int x, int y) {
            const int left = std::max(0, x - side / 2);
            const int right = std::min(width, x - side / 2 + side);
            const int bottom = std::min(height, y - side / 2 + side);
            for (int line = std::max(0, y - side / 2); line < bottom; ++line) {
                QRgb* const row = dots + qptrdiff(line) * width;
                std::fill(row + left, row + std::max(left, right), colour);
            }
        });
    }

    void paintLarge(const Look& look)
    {
        QPainter painter;
        begin(painter);
        const double radius = look.row.radius;
        visit(look.row, [&](const Place& place) {
            QPainterPath circle;
            circle.addEllipse(toMap(place), radius, radius);
            look.paint(painter, transform().map(circle), mView.toImage(toMap(place)));
        });
    }

    void paintSlots(const Look& look)
    {
        if (look.row.slotAreas.empty()) {
            return;
        }
        QPainter painter;
        begin(painter);
        for (const Slot& slot : look.row.slotAreas) {
            if (sees(slot.bounds)) {
                look.paint(
                    painter, transform().map(slot.area), mView.toImage(slot.bounds.center()));
            }
        }
    }

    /** Calls with the dots of the image, or just beside it, that the holes of a row lie on. */
    template <typename Visit>
    void visitDots(const Row& row, const Visit& call) const
    {
        const double scale = mView.scale / sizePerMillimetre;
        visit(row, [&](const Place& place) {
            call(int(place.x * scale + mView.origin.x()), int(-place.y * scale + mView.origin.y()));
        });
    }

    /** Calls with the holes of a row that can be seen, or symbols and rings about them. */
    template <typename Visit>
    void visit(const Row& row, const Visit& call) const
    {
        const double rim = row.radius + mostRim / mView.scale;
        const QRectF area = mVisible.marginsAdded({rim, rim, rim, rim});
        // On the map y points down.
        visitWithin(row.holes, {toSize(area.left()), toSize(-area.bottom())},
            {toSize(area.right()), toSize(-area.top())}, call);
    }

    QImage& mImage;
    const MapView& mView;
    const MapColours& mColours;
    QRectF mVisible;
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
        std::ranges::sort(places[i].holes, {}, &Place::y);
        Row& row = mRows.emplace_back(Row{0, toMillimetres(size) / 2, true, false,
            isAlarming(plan.rows[i]), std::move(places[i].holes), {}});
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
    std::vector<Look> looks;
    qint64 stamps = 0;
    // What is highlighted comes last, so that nothing hides it.
    for (const bool highlighted : {false, true}) {
        for (const Row& row : mRows) {
            if (row.isShown && row.isHighlighted == highlighted) {
                looks.push_back(canvas.lookOf(row, mRoom));
                stamps += canvas.stampCount(looks.back());
            }
        }
    }
    for (const Look& look : looks) {
        canvas.paint(look, stamps > mostStamps);
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
        visitWithin(row.holes, {toSize(map.x() - far), toSize(-map.y() - far)},
            {toSize(map.x() + far), toSize(-map.y() + far)}, [&](const Place& place) {
                const QPointF away = toMap(place) - map;
                const double gap = std::hypot(away.x(), away.y()) - row.radius;
                if (gap < nearest) {
                    nearest = gap;
                    hit = {i, place};
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
