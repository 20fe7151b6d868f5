// SPDX-License-Identifier: MIT
#include "drill_map.h"

#include "file_set.h"
#include "map_shapes.h"
#include "plan_text.h"

#include <QPaintEngine>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace brox {

namespace {

constexpr double margin = 100; // of a sheet; all in tenths of a millimetre
constexpr double titleHeight = 150;
constexpr double legendWidth = 760;
constexpr double likedRowHeight = 52;
constexpr double scaleHeight = 90;
constexpr double likedSymbol = 9;
constexpr double thinLine = 1.5;
constexpr double contourLine = 1.2;
constexpr QColor contourGrey(0x90, 0x90, 0x90);

QFont fontOf(double height, bool bold = false)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(std::max(1, int(height)));
    font.setBold(bold);
    return font;
}

void write(QPainter& painter, const QRectF& area, int alignment, const QString& text)
{
    const QFontMetricsF metrics(painter.font(), painter.device());
    painter.drawText(area, alignment | Qt::TextSingleLine,
        metrics.elidedText(text, Qt::ElideRight, area.width()));
}

/** Columns of the legend: where they begin, as a share of its width, and how they are aligned. */
struct Column
{
    double begin;
    double end;
    int alignment;
};
constexpr Column symbolColumn{0, 0.09, Qt::AlignHCenter};
constexpr Column toolColumn{0.1, 0.2, Qt::AlignLeft};
constexpr Column platingColumn{0.2, 0.31, Qt::AlignLeft};
constexpr Column bitColumn{0.32, 0.47, Qt::AlignLeft};
constexpr Column sizeColumn{0.47, 0.66, Qt::AlignRight};
constexpr Column hitsColumn{0.67, 0.85, Qt::AlignRight};
constexpr Column slotsColumn{0.86, 1, Qt::AlignRight};

QRectF cellOf(const QRectF& row, const Column& column)
{
    return {row.left() + column.begin * row.width(), row.top(),
        (column.end - column.begin) * row.width(), row.height()};
}

void writeCell(QPainter& painter, const QRectF& row, const Column& column, const QString& text)
{
    write(painter, cellOf(row, column), column.alignment | Qt::AlignVCenter, text);
}

QPen linePen(const QColor& colour, double lineWidth)
{
    return QPen(colour, lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

/** Every second, fifth, tenth ... millimetre or tenth of an inch. */
double roundLength(double atMost, double unit)
{
    const double power = std::pow(10, std::floor(std::log10(atMost / unit)));
    for (const double step : {5.0, 2.0}) {
        if (step * power * unit <= atMost) {
            return step * power * unit;
        }
    }
    return power * unit;
}

/** Areas that a tool cuts with its symbols, on their way to the paper. */
class ToolInk
{
public:
    ToolInk(QPainter& painter, const QColor& colour)
        : mPainter(painter)
        , mColour(colour)
    { }

    void add(const QPainterPath& area, const QPainterPath& symbol)
    {
        mAreas.addPath(area);
        mSymbols.addPath(symbol);
    }

    int elementCount() const { return mAreas.elementCount(); }

    /** @param symbolRadius  by which the lines have their width */
    void paint(double symbolRadius)
    {
        const double line = std::clamp(0.16 * symbolRadius, 0.2, 2.5);
        QColor tint = mColour;
        tint.setAlphaF(0.18F);
        mAreas.setFillRule(Qt::WindingFill);
        mPainter.setBrush(tint);
        mPainter.setPen(linePen(mColour, 0.6 * line));
        mPainter.drawPath(mAreas);
        mPainter.setBrush(Qt::NoBrush);
        mPainter.setPen(linePen(mColour, line));
        mPainter.drawPath(mSymbols);
        mAreas.clear();
        mSymbols.clear();
    }

private:
    QPainter& mPainter;
    QColor mColour;
    QPainterPath mAreas;
    QPainterPath mSymbols;
};

} // namespace

/** How the board lies on the sheet. */
class DrillMap::View
{
public:
    View(const QRectF& extent, const QRectF& area, double room)
    {
        mScale = std::min(area.width() / std::max(extent.width(), 1e-3),
            area.height() / std::max(extent.height(), 1e-3));
        mOrigin = area.center() - mScale * extent.center();
        mRoom = room * mScale;
    }

    double scale() const { return mScale; } ///< units of the sheet to the millimetre
    QPointF map(QPointF point) const { return mScale * point + mOrigin; }
    QPainterPath map(const QPainterPath& path) const
    {
        return QTransform(mScale, 0, 0, mScale, mOrigin.x(), mOrigin.y()).map(path);
    }
    double symbol(double holeRadius) const { return symbolRadius(holeRadius, mRoom, likedSymbol); }

private:
    double mScale;
    double mRoom;
    QPointF mOrigin;
};

DrillMap::DrillMap(const DrillPlan& plan)
    : mPlan(plan)
    , mPlaces(placesOf(plan))
    , mOutlines(outlinesOf(plan))
    , mContours(contoursOf(plan))
    , mExtent(extentOf(plan, mPlaces, mOutlines, mContours).united(marksOf(plan).extent()))
{
    size_t look = 0;
    for (const Program& program : plan.programs) {
        if (mSheets.empty() || mSheets.back().layer != program.layer) {
            mSheets.push_back({program.layer, {}});
        }
        for (const ProgramTool& tool : program.tools) {
            mSheets.back().entries.push_back({&program, &tool, look++});
        }
    }
}

QString DrillMap::title(size_t sheet) const
{
    const StepLayer& layer = mPlan.layers[mSheets[sheet].layer];
    return layer.span
        ? PlanText::tr("%1 (%2 to %3)").arg(layer.name, layer.span->from, layer.span->to)
        : layer.name;
}

double DrillMap::layerRoom(const Sheet& sheet) const
{
    std::vector<RowPlaces> places;
    for (const Entry& entry : sheet.entries) {
        for (const size_t row : entry.tool->rows) {
            places.push_back({mPlaces[row].holes, {}});
        }
    }
    const double room = roomBetween(places);
    return room > 0 ? room : 1000;
}

void DrillMap::paint(QPainter& painter, size_t index, const Progress& progress) const
{
    Count count{progress, 0, 0};
    for (size_t i = 0; i < mSheets.size(); ++i) {
        for (const Entry& entry : mSheets[i].entries) {
            (i < index ? count.done : count.total) += entry.tool->hits();
        }
    }
    count.total += count.done;
    tell(progress, count.done, count.total);
    const Sheet& sheet = mSheets[index];
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF all = QRectF(0, 0, width, height).marginsRemoved({margin, margin, margin, margin});
    painter.setPen(linePen(Qt::black, thinLine));
    paintTitle(painter, index);
    const QRectF body = all.adjusted(0, titleHeight, 0, 0);
    const QRectF legend(body.right() - legendWidth, body.top(), legendWidth, body.height());
    paintLegend(painter, sheet, legend);
    paintBoard(painter, sheet, body.adjusted(0, 0, -legendWidth - margin / 2, 0), count);
    painter.restore();
}

void DrillMap::paintTitle(QPainter& painter, size_t sheet) const
{
    painter.setPen(Qt::black);
    const QRectF head(margin, margin, width - 2 * margin, 72);
    painter.setFont(fontOf(56, true));
    write(painter, head, Qt::AlignLeft | Qt::AlignTop,
        PlanText::tr("Drill map, layer %1").arg(title(sheet)));
    painter.setFont(fontOf(32));
    write(painter, head.translated(0, 72), Qt::AlignLeft | Qt::AlignTop,
        PlanText::tr("Board %1, step %2, model %3%4. Circles have the drill size; sizes in %5.")
            .arg(mPlan.board->job, mPlan.boardStep().name, mPlan.model.name,
                PlanText::tr(" (%1)").arg(spoken(fileState(mPlan.model))), unitName(mPlan.units)));
}

void DrillMap::paintLegend(QPainter& painter, const Sheet& sheet, const QRectF& area) const
{
    const std::vector<Path>& contours = mContours[sheet.layer];
    const double rows = double(sheet.entries.size()) + (contours.empty() ? 1 : 2);
    const double rowHeight = std::min(likedRowHeight, area.height() / rows);
    QRectF row(area.left(), area.top(), area.width(), rowHeight);
    painter.setPen(Qt::black);
    painter.setFont(fontOf(0.5 * rowHeight, true));
    writeCell(painter, row, toolColumn, PlanText::tr("Tool", "map legend"));
    writeCell(painter, row, bitColumn, PlanText::tr("Bit"));
    writeCell(painter, row, sizeColumn, PlanText::tr("Drill size"));
    writeCell(painter, row, hitsColumn, PlanText::tr("Hits"));
    writeCell(painter, row, slotsColumn, PlanText::tr("Slots", "map legend"));
    painter.setPen(linePen(Qt::black, thinLine));
    painter.drawLine(row.bottomLeft(), row.bottomRight());
    painter.setFont(fontOf(0.56 * rowHeight));
    for (const Entry& entry : sheet.entries) {
        row.translate(0, rowHeight);
        paintLegendRow(painter, entry, row);
    }
    if (!contours.empty()) {
        paintContourRow(painter, contours.size(), row.translated(0, rowHeight));
    }
}

void DrillMap::paintContourRow(QPainter& painter, size_t count, const QRectF& row) const
{
    const QRectF symbol = cellOf(row, symbolColumn);
    painter.setPen(linePen(contourGrey, contourLine));
    painter.drawLine(
        QPointF(symbol.left(), symbol.center().y()), QPointF(symbol.right(), symbol.center().y()));
    painter.setPen(Qt::black);
    writeCell(painter, row, {toolColumn.begin, slotsColumn.end, Qt::AlignLeft},
        PlanText::tr("contours, not drilled: %1").arg(count));
}

void DrillMap::paintLegendRow(QPainter& painter, const Entry& entry, const QRectF& row) const
{
    const auto& [program, tool, look] = entry;
    const double radius = 0.3 * row.height();
    const QPointF centre = cellOf(row, symbolColumn).center();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(linePen(toolColour(look, false), 0.15 * radius));
    painter.drawPath(
        QTransform(radius, 0, 0, radius, centre.x(), centre.y()).map(toolSymbol(look)));
    painter.setPen(Qt::black);
    const auto number = [](qint64 count) { return count > 0 ? QString::number(count) : QString(); };
    writeCell(painter, row, toolColumn,
        tool->number > 0 ? QStringLiteral("T%1").arg(tool->number, 2, 10, QChar('0')) : QString());
    writeCell(painter, row, platingColumn, program->isPlated ? "PTH" : "NPTH");
    writeCell(painter, row, bitColumn, tool->bit);
    writeCell(painter, row, sizeColumn,
        tool->size ? sizeText(*tool->size, mPlan.units) : PlanText::tr("no size"));
    writeCell(painter, row, hitsColumn, number(tool->holes));
    writeCell(painter, row, slotsColumn, number(tool->slotPaths));
}

void DrillMap::paintBoard(
    QPainter& painter, const Sheet& sheet, const QRectF& area, Count& count) const
{
    const View view(mExtent, area.adjusted(20, 0, -20, -scaleHeight), layerRoom(sheet));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(linePen(QColor(0x60, 0x60, 0x60), 2.5));
    for (const Path& outline : mOutlines) {
        painter.drawPath(view.map(toMap(outline)));
    }
    painter.setPen(linePen(contourGrey, contourLine));
    for (const Path& contour : mContours[sheet.layer]) {
        painter.drawPath(view.map(toMap(contour)));
    }
    for (const Entry& entry : sheet.entries) {
        paintTool(painter, entry, view, count);
    }
    paintComparison(painter, sheet, view, area);
    paintScale(painter, view, area);
}

void DrillMap::paintComparison(
    QPainter& painter, const Sheet& sheet, const View& view, const QRectF& area) const
{
    const ComparisonMarks marks = marksOf(mPlan, mPlan.layers[sheet.layer].name);
    if (marks.isEmpty()) {
        return;
    }
    paintMarks(
        painter, marks, [&view](Place place) { return view.map(toMap(place)); }, area, 14);
    painter.setPen(Qt::black);
    painter.setFont(fontOf(28));
    write(painter, QRectF(area.center().x(), area.bottom() - 40, area.width() / 2, 40),
        Qt::AlignRight | Qt::AlignVCenter,
        PlanText::tr("Compared with %1: %2").arg(mPlan.comparison->other, marksText(marks)));
}

/** Many circles in one path, and their symbols in another: files stay small, and PDF readers fast.
 *  In images a path costs more than its parts. */
void DrillMap::paintTool(
    QPainter& painter, const Entry& entry, const View& view, Count& count) const
{
    const bool isImage = painter.paintEngine()->type() == QPaintEngine::Raster;
    const int mostElements = isImage ? 1000 : 100'000;
    const QPainterPath unitSymbol = toolSymbol(entry.look);
    ToolInk ink(painter, toolColour(entry.look, false));
    for (const size_t row : entry.tool->rows) {
        const Size size = shownSize(mPlan.rows[row]);
        const double radius = view.scale() * toMillimetres(size) / 2;
        const double symbol = view.symbol(radius);
        const auto add = [&](const QPainterPath& area, QPointF at) {
            ink.add(area, QTransform(symbol, 0, 0, symbol, at.x(), at.y()).map(unitSymbol));
            ++count.done;
            if (ink.elementCount() >= mostElements) {
                ink.paint(symbol);
                tell(count.progress, count.done, count.total);
            }
        };
        for (const Place& hole : mPlaces[row].holes) {
            const QPointF at = view.map(toMap(hole));
            QPainterPath circle;
            circle.addEllipse(at, radius, radius);
            add(circle, at);
        }
        for (const Path& path : mPlaces[row].slotPaths) {
            const QPainterPath middle = toMap(path);
            add(view.map(slotArea(path, size)),
                view.map(
                    middle.length() > 0 ? middle.pointAtPercent(0.5) : middle.currentPosition()));
        }
        ink.paint(symbol);
    }
}

void DrillMap::paintScale(QPainter& painter, const View& view, const QRectF& area) const
{
    const bool isInch = mPlan.units == Units::Inch;
    const double unit = isInch ? 25.4 : 1;
    const double length = roundLength(0.25 * area.width() / view.scale(), unit);
    const QPointF begin(area.left() + 20, area.bottom() - 20);
    const QPointF end = begin + QPointF(length * view.scale(), 0);
    painter.setPen(linePen(Qt::black, thinLine));
    painter.drawLine(begin, end);
    for (const QPointF& tick : {begin, end}) {
        painter.drawLine(tick + QPointF(0, -12), tick + QPointF(0, 12));
    }
    painter.setFont(fontOf(28));
    write(painter, QRectF(end.x() + 20, end.y() - 20, 600, 40), Qt::AlignLeft | Qt::AlignVCenter,
        PlanText::tr("%1 %2, scale %3:1")
            .arg(QString::number(length / unit, 'g', 6),
                isInch ? PlanText::tr("inch") : QStringLiteral("mm"),
                QString::number(view.scale() / 10, 'g', 3)));
}

} // namespace brox
