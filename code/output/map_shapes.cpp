// SPDX-License-Identifier: MIT
#include "map_shapes.h"

#include <QPainter>
#include <QPainterPathStroker>
#include <QtMath>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>
#include <set>

namespace brox {

namespace {

/** Chosen to differ in brightness too, for those who see no red or no green. */
constexpr QRgb coloursOnLight[] = {
    0x0072b2, 0xd55e00, 0x009e73, 0xb0478f, 0x000000, 0xc98a00, 0x3fa0d8, 0x7a4a2b};
constexpr QRgb coloursOnDark[] = {
    0x56b4e9, 0xff8c42, 0x2fcf9f, 0xe59ac6, 0xf0f0f0, 0xe6b800, 0x8fa8ff, 0xc9a183};

/** Spokes of a symbol, a bit each: north is the lowest, then clockwise by 45 degrees. */
constexpr std::array<quint8, 13> spokeSets = {
    0x55, 0xaa, 0xff, 0x44, 0x11, 0x22, 0x88, 0x29, 0x92, 0x54, 0x45, 0x15, 0x51};

/** Corners of the outlines in degrees from north, clockwise. */
const std::vector<std::vector<double>>& outlines()
{
    static const std::vector<std::vector<double>> corners = {{}, {45, 135, 225, 315},
        {0, 90, 180, 270}, {0, 120, 240}, {60, 180, 300}, {30, 90, 150, 210, 270, 330},
        {315, 45, 225, 135}, {315, 135, 45, 225}};
    return corners;
}

QPointF onCircle(double degrees, double radius = 1)
{
    const double angle = qDegreesToRadians(degrees);
    return {radius * std::sin(angle), -radius * std::cos(angle)};
}

QRectF toMap(const Extent& extent)
{
    return QRectF(brox::toMap(extent.low), brox::toMap(extent.high)).normalized();
}

void arcTo(QPainterPath& path, const Segment& segment)
{
    const QPointF centre = toMap(segment.centre);
    const QPointF from = path.currentPosition() - centre;
    const QPointF to = toMap(segment.to) - centre;
    const double radius = std::hypot(from.x(), from.y());
    const double start = qRadiansToDegrees(std::atan2(-from.y(), from.x()));
    const double end = qRadiansToDegrees(std::atan2(-to.y(), to.x()));
    const bool clockwise = segment.shape == Segment::Shape::Clockwise;
    double sweep = std::remainder(end - start, 360);
    if (clockwise ? sweep >= 0 : sweep <= 0) {
        sweep += clockwise ? -360 : 360;
    }
    path.arcTo(
        QRectF(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius), start, sweep);
}

} // namespace

QPainterPath toMap(const Path& path)
{
    QPainterPath drawn(toMap(path.start));
    for (const Segment& segment : path.segments) {
        if (segment.shape == Segment::Shape::Line) {
            drawn.lineTo(toMap(segment.to));
        } else {
            arcTo(drawn, segment);
        }
    }
    return drawn;
}

QPainterPath slotArea(const Path& path, Size width)
{
    const QPainterPath middle = toMap(path);
    const double radius = toMillimetres(width) / 2;
    if (middle.length() <= 0) {
        QPainterPath circle;
        circle.addEllipse(middle.currentPosition(), radius, radius);
        return circle;
    }
    // The stroker's curves are as smooth as dots need: a dot is a micron here.
    constexpr double dots = 1000;
    QPainterPathStroker stroker;
    stroker.setWidth(2 * radius * dots);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    const QPainterPath area = stroker.createStroke(QTransform::fromScale(dots, dots).map(middle));
    return QTransform::fromScale(1 / dots, 1 / dots).map(area.simplified());
}

Size shownSize(const PlanRow& row)
{
    return row.drillSize.value_or(row.finishedSize);
}

QColor toolColour(size_t index, bool onDark)
{
    static_assert(std::size(coloursOnLight) == std::size(coloursOnDark));
    const size_t colour = index % std::size(coloursOnLight);
    return QColor(onDark ? coloursOnDark[colour] : coloursOnLight[colour]);
}

QPainterPath toolSymbol(size_t index)
{
    const size_t shape = index % outlines().size();
    const size_t round = index / outlines().size() % spokeSets.size();
    QPainterPath symbol;
    if (shape > 0) {
        QPolygonF corners;
        for (const double degrees : outlines()[shape]) {
            corners << onCircle(degrees);
        }
        symbol.addPolygon(corners);
        symbol.closeSubpath();
    }
    // Outlines come without spokes first; without an outline there are spokes at once.
    const int spokes = shape == 0 ? spokeSets[round] : round == 0 ? 0 : spokeSets[round - 1];
    for (int i = 0; i < 8; ++i) {
        if (spokes >> i & 1) {
            symbol.moveTo(0, 0);
            symbol.lineTo(onCircle(45 * i, shape == 0 ? 1 : 0.6));
        }
    }
    return symbol;
}

double symbolRadius(double holeRadius, double room, double liked)
{
    constexpr double inHole = 0.7;
    if (inHole * holeRadius >= liked) {
        return std::min(inHole * holeRadius, 2 * liked);
    }
    return std::max(inHole * holeRadius, std::min(liked, 0.45 * room));
}

namespace {

using HoleLists = std::vector<const std::vector<Place>*>;

/** Of a hole to the nearest one that is not at its place, in millimetres. */
double distanceToNearest(Place hole, const HoleLists& lists)
{
    double best = std::numeric_limits<double>::max();
    for (const std::vector<Place>* holes : lists) {
        for (const Place& other : *holes) {
            const double dx = double(other.x) - hole.x;
            const double dy = double(other.y) - hole.y;
            const double squared = dx * dx + dy * dy;
            best = squared > 0 && squared < best ? squared : best;
        }
    }
    return std::sqrt(best) / sizePerMillimetre;
}

} // namespace

double roomBetween(const std::vector<RowPlaces>& places, std::vector<size_t> rows)
{
    constexpr double share = 0.1; ///< of the holes may have less room
    constexpr size_t mostCompared = 10'000'000;
    constexpr size_t mostSamples = 500;
    if (rows.empty()) {
        rows.resize(places.size());
        std::iota(rows.begin(), rows.end(), size_t(0));
    }
    HoleLists lists;
    size_t count = 0;
    for (const size_t row : rows) {
        lists.push_back(&places[row].holes);
        count += places[row].holes.size();
    }
    if (count < 2) {
        return 0;
    }
    const size_t samples = std::clamp<size_t>(mostCompared / count, 1, mostSamples);
    const size_t stride = std::max<size_t>(1, count / samples);
    std::vector<double> nearest;
    size_t next = 0;
    for (const std::vector<Place>* holes : lists) {
        for (; next < holes->size(); next += stride) {
            nearest.push_back(distanceToNearest((*holes)[next], lists));
        }
        next -= holes->size();
    }
    const auto chosen = nearest.begin() + std::ptrdiff_t(share * double(nearest.size()));
    std::nth_element(nearest.begin(), chosen, nearest.end());
    return *chosen;
}

QPen linePen(const QColor& colour, double lineWidth)
{
    return QPen(colour, lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

QRectF extentOf(const DrillPlan& plan, const std::vector<RowPlaces>& places,
    const std::vector<Path>& outlines, const std::vector<std::vector<Path>>& contours)
{
    QRectF extent;
    const auto add = [&](const QRectF& area) {
        extent = extent.isNull() ? area : extent.united(area);
    };
    for (size_t i = 0; i < places.size(); ++i) {
        const double radius = std::max(1e-3, toMillimetres(shownSize(plan.rows[i])) / 2);
        const QMarginsF margins(radius, radius, radius, radius);
        if (!places[i].holes.empty()) {
            add(toMap(extentOf(places[i].holes)).marginsAdded(margins));
        }
        for (const Path& path : places[i].slotPaths) {
            // Qt gives a path of one point no place.
            const QRectF way = path.segments.empty() ? QRectF(toMap(path.start), QSizeF())
                                                     : toMap(path).boundingRect();
            add(way.marginsAdded(margins));
        }
    }
    for (const Path& outline : outlines) {
        add(toMap(outline).boundingRect());
    }
    for (const std::vector<Path>& layer : contours) {
        for (const Path& contour : layer) {
            add(toMap(contour).boundingRect());
        }
    }
    return extent;
}

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
            mPainter.setPen(linePen(colour, width * mRadius));
            mPainter.drawPath(mPath);
        }
        mPath.clear();
    }

    QPainter& mPainter;
    QColor mColour;
    double mRadius;
    QPainterPath mPath;
};

/** Lets one of many marks through that lie on each other but for a part of their size. */
class MarkFilter
{
public:
    MarkFilter(const QRectF& area, double radius)
        : mArea(area.adjusted(-radius, -radius, radius, radius))
        , mCell(radius / 4)
    { }

    /** Of a mark that goes from one place to another, or to the same. */
    bool isSeen(QPointF from, QPointF at)
    {
        const QPointF cell = (at - mArea.topLeft()) / mCell;
        return (mArea.contains(from) || mArea.contains(at))
            && mTaken.emplace(qint64(cell.x()), qint64(cell.y())).second;
    }

private:
    QRectF mArea;
    double mCell;
    std::set<std::pair<qint64, qint64>> mTaken;
};

void addLine(QPainterPath& path, QPointF from, QPointF to)
{
    path.moveTo(from);
    path.lineTo(to);
}

bool hasLayer(const DrillPlan& plan, const QString& name)
{
    return std::ranges::any_of(
        plan.layers, [&](const StepLayer& layer) { return layer.name == name; });
}

} // namespace

QRectF ComparisonMarks::extent() const
{
    Extent extent;
    for (const BoardDifference* difference : differences) {
        for (const std::vector<Place>* places : {&difference->places, &difference->movedTo}) {
            for (const Place& place : *places) {
                extent.add(place);
            }
        }
    }
    return extent.count == 0 ? QRectF() : toMap(extent).adjusted(-1, -1, 1, 1);
}

ComparisonMarks marksOf(const DrillPlan& plan, const QString& layer)
{
    ComparisonMarks marks{plan.comparison, {}};
    if (!plan.comparison || plan.comparison->isOtherPanel) {
        return marks;
    }
    for (const BoardDifference& difference : plan.comparison->differences) {
        const DifferenceKind kind = difference.kind;
        if (kind == DifferenceKind::Added || kind == DifferenceKind::Removed
            || kind == DifferenceKind::Moved) {
            const QString& own = (difference.from ? difference.from : difference.to)->layer;
            if (layer.isNull() || own == layer || !hasLayer(plan, own)) {
                marks.differences.push_back(&difference);
            }
        }
    }
    return marks;
}

void paintMarks(QPainter& painter, const ComparisonMarks& marks,
    const std::function<QPointF(Place)>& at, const QRectF& seen, double radius)
{
    const auto paintKind = [&](DifferenceKind kind, const QColor& colour, const auto& addMark) {
        MarkFilter filter(seen, radius);
        Strokes strokes(painter, colour, radius);
        for (const BoardDifference* difference : marks.differences) {
            for (size_t i = 0; difference->kind == kind && i < difference->places.size(); ++i) {
                const QPointF from = at(difference->places[i]);
                const QPointF to = difference->movedTo.empty() ? from : at(difference->movedTo[i]);
                if (filter.isSeen(from, to)) {
                    addMark(strokes, from, to);
                }
            }
        }
    };
    painter.save();
    paintKind(DifferenceKind::Moved, QColor(0x1f, 0x4e, 0xd8),
        [radius](Strokes& strokes, QPointF from, QPointF to) {
            addLine(strokes.path(), from, to);
            strokes.path().addEllipse(to, radius / 2, radius / 2);
        });
    paintKind(DifferenceKind::Removed, QColor(0xd0, 0x10, 0x10),
        [radius](Strokes& strokes, QPointF middle, QPointF) {
            const QPointF arm(0.7 * radius, 0.7 * radius);
            const QPointF other(arm.x(), -arm.y());
            addLine(strokes.path(), middle - arm, middle + arm);
            addLine(strokes.path(), middle - other, middle + other);
        });
    paintKind(DifferenceKind::Added, QColor(0x00, 0x8a, 0x2e),
        [radius](Strokes& strokes, QPointF middle, QPointF) {
            addLine(strokes.path(), middle - QPointF(radius, 0), middle + QPointF(radius, 0));
            addLine(strokes.path(), middle - QPointF(0, radius), middle + QPointF(0, radius));
        });
    painter.restore();
}

QString marksText(const ComparisonMarks& marks)
{
    QStringList parts;
    const auto add = [&](DifferenceKind kind, const QString& text) {
        size_t count = 0;
        for (const BoardDifference* difference : marks.differences) {
            count += difference->kind == kind ? difference->places.size() : 0;
        }
        if (count > 0) {
            parts << text.arg(count);
        }
    };
    add(DifferenceKind::Added, PlanText::tr("added: %1 (plus)"));
    add(DifferenceKind::Removed, PlanText::tr("removed: %1 (cross)"));
    add(DifferenceKind::Moved, PlanText::tr("moved: %1 (line)"));
    return parts.join(QStringLiteral(", "));
}

} // namespace brox
