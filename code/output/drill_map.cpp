// SPDX-License-Identifier: MIT
#include "drill_map.h"

#include "file_set.h"
#include "map_paper.h"
#include "map_shapes.h"
#include "pdf_pages.h"
#include "plan_text.h"

#include <QFileInfo>
#include <QImage>
#include <QLocale>
#include <QPainter>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>

namespace brox {

namespace {

constexpr double margin = 100; // of a sheet; all in tenths of a millimetre
constexpr double titleHeight = 185;
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
constexpr Column noteColumn{toolColumn.begin, slotsColumn.end, Qt::AlignLeft};

QRectF cellOf(const QRectF& row, const Column& column)
{
    return {row.left() + column.begin * row.width(), row.top(),
        (column.end - column.begin) * row.width(), row.height()};
}

void writeCell(QPainter& painter, const QRectF& row, const Column& column, const QString& text)
{
    write(painter, cellOf(row, column), column.alignment | Qt::AlignVCenter, text);
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

const QRegularExpression trailingZeros(QStringLiteral("\\.?0+$"));

/** "2:1" or "1:2.5" */
QString ratioText(double ratio)
{
    return ratio < 1 ? "1:" + QString::number(1 / ratio, 'g', 3)
                     : QString::number(ratio, 'g', 3) + ":1";
}

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
    double radius(Size size) const { return mScale * toMillimetres(size) / 2; }
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
    , mBoardExtent(
          mOutlines.empty() ? extentOf(plan, mPlaces, {}, {}) : extentOf(plan, {}, mOutlines, {}))
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

QString DrillMap::extentText() const
{
    const bool isInch = mPlan.units == Units::Inch;
    const auto number = [isInch](double millimetres) {
        QString text = QString::number(isInch ? millimetres / 25.4 : millimetres, 'f', 3);
        text.remove(trailingZeros);
        return text == "-0" ? QStringLiteral("0") : text;
    };
    const QString text = mOutlines.empty() ? PlanText::tr("holes within %1 x %2 %3 from %4, %5")
                                           : PlanText::tr("%1 x %2 %3 from %4, %5");
    return text.arg(number(mBoardExtent.width()), number(mBoardExtent.height()),
        isInch ? PlanText::tr("inch") : QStringLiteral("mm"), number(mBoardExtent.left()),
        number(-mBoardExtent.bottom()));
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

bool DrillMap::hasDots(const Sheet& sheet, const View& view) const
{
    return std::ranges::any_of(sheet.entries, [&](const Entry& entry) {
        return std::ranges::any_of(entry.tool->rows, [&](size_t row) {
            return RowInk::areDots(view.symbol(view.radius(shownSize(mPlan.rows[row]))));
        });
    });
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
    const QRectF area = body.adjusted(0, 0, -legendWidth - margin / 2, 0);
    const View view(mExtent, area.adjusted(20, 0, -20, -scaleHeight), layerRoom(sheet));
    paintLegend(painter, sheet, view, legend);
    paintBoard(painter, sheet, view, area, count);
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
    write(painter, head.translated(0, 112), Qt::AlignLeft | Qt::AlignTop,
        PlanText::tr("File %1; extent %2; written on %3 by %4")
            .arg(sourceText(mPlan), extentText(), outputDate().toString(Qt::ISODate),
                QStringLiteral("brox " OUTPUT_VERSION)));
}

void DrillMap::paintLegend(
    QPainter& painter, const Sheet& sheet, const View& view, const QRectF& area) const
{
    const std::vector<Path>& contours = mContours[sheet.layer];
    const double rows = double(sheet.entries.size()) + 3; // with titles, contours and dots
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
        row.translate(0, rowHeight);
        paintContourRow(painter, contours.size(), row);
    }
    if (hasDots(sheet, view)) {
        writeCell(painter, row.translated(0, rowHeight), noteColumn,
            PlanText::tr("dots: holes too close for symbols"));
    }
}

void DrillMap::paintContourRow(QPainter& painter, size_t count, const QRectF& row) const
{
    const QRectF symbol = cellOf(row, symbolColumn);
    painter.setPen(linePen(contourGrey, contourLine));
    painter.drawLine(
        QPointF(symbol.left(), symbol.center().y()), QPointF(symbol.right(), symbol.center().y()));
    painter.setPen(Qt::black);
    writeCell(painter, row, noteColumn, PlanText::tr("contours, not drilled: %L1").arg(count));
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
    const auto number = [](qint64 count) {
        return count > 0 ? QLocale().toString(count) : QString();
    };
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
    QPainter& painter, const Sheet& sheet, const View& view, const QRectF& area, Count& count) const
{
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

void DrillMap::paintTool(
    QPainter& painter, const Entry& entry, const View& view, Count& count) const
{
    for (const size_t row : entry.tool->rows) {
        const Size size = shownSize(mPlan.rows[row]);
        const double radius = view.radius(size);
        RowInk ink(painter, entry.look, radius, view.symbol(radius));
        const auto paintIfFull = [&] {
            ++count.done;
            if (ink.isFull()) {
                ink.paint();
                tell(count.progress, count.done, count.total);
            }
        };
        for (const Place& hole : mPlaces[row].holes) {
            ink.addHole(view.map(toMap(hole)));
            paintIfFull();
        }
        for (const Path& path : mPlaces[row].slotPaths) {
            const QPainterPath middle = toMap(path);
            ink.addSlot(view.map(slotArea(path, size)),
                view.map(
                    middle.length() > 0 ? middle.pointAtPercent(0.5) : middle.currentPosition()));
            paintIfFull();
        }
        ink.paint();
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
        PlanText::tr("%1 %2, scale %3")
            .arg(QString::number(length / unit, 'g', 6),
                isInch ? PlanText::tr("inch") : QStringLiteral("mm"),
                ratioText(view.scale() / 10)));
}

namespace {

constexpr double dotsPerUnit = 0.8; ///< of an image: 200 dots to the inch
constexpr double mostDots = 100e6;

/** Paints sheets one below the other. */
void paintColumn(
    QPainter& painter, const DrillMap& map, size_t first, size_t count, const Progress& progress)
{
    for (size_t i = 0; i < count; ++i) {
        map.paint(painter, first + i, progress);
        painter.translate(0, DrillMap::height);
    }
}

void writeSvg(QIODevice& file, const DrillMap& map, size_t first, size_t count,
    const QString& title, const Progress& progress)
{
    const QSize size(DrillMap::width, DrillMap::height * int(count));
    SvgDevice svg(file, size, title);
    QPainter painter(&svg);
    painter.fillRect(QRect({}, size), Qt::white);
    paintColumn(painter, map, first, count, progress);
}

void writePng(QIODevice& file, const DrillMap& map, const Progress& progress)
{
    const double sheets = double(map.sheetCount());
    const double units = sheets * DrillMap::width * DrillMap::height;
    const double scale = std::min(dotsPerUnit, std::sqrt(mostDots / units));
    QImage image(
        int(DrillMap::width * scale), int(DrillMap::height * sheets * scale), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(scale, scale);
    paintColumn(painter, map, 0, map.sheetCount(), progress);
    painter.end();
    if (!image.save(&file, "PNG")) {
        throw OutputError(PlanText::tr("the image can't be made"));
    }
}

void writePdf(QIODevice& file, const DrillMap& map, const QString& title, const Progress& progress)
{
    PdfPages pdf(file, title);
    for (size_t i = 0; i < map.sheetCount(); ++i) {
        map.paint(pdf.newPage(QPageLayout::Landscape, int(map.sheetCount())), i, progress);
    }
}

} // namespace

void writeSheet(QIODevice& file, const DrillMap& map, size_t sheet, const Progress& progress)
{
    writeSvg(file, map, sheet, 1, map.title(sheet), progress);
}

void addDrillMap(
    const DrillPlan& plan, const QString& path, FileSet& files, const Progress& progress)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix != "svg" && suffix != "pdf" && suffix != "png") {
        throw OutputError(PlanText::tr("%1: a map is written as .svg, .pdf or .png").arg(path));
    }
    const DrillMap map(plan);
    if (map.sheetCount() == 0) {
        throw OutputError(
            PlanText::tr("step \"%1\": no holes, so no map").arg(plan.boardStep().name));
    }
    const QString title = PlanText::tr("Drill map of %1").arg(plan.board->job);
    QIODevice& file = files.open(path);
    if (suffix == "svg") {
        writeSvg(file, map, 0, map.sheetCount(), title, progress);
    } else if (suffix == "pdf") {
        writePdf(file, map, title, progress);
    } else {
        writePng(file, map, progress);
    }
}

} // namespace brox
