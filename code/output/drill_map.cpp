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

/** "2:1" or "1:2.5" */
QString ratioText(double ratio)
{
    return ratio < 1 ? "1:" + QString::number(1 / ratio, 'g', 3)
                     : QString::number(ratio, 'g', 3) + ":1";
}

} // namespace

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
        return shortNumber(isInch ? millimetres / 25.4 : millimetres);
    };
    const QString text = mOutlines.empty() ? PlanText::tr("holes within %1 x %2 %3 from %4, %5")
                                           : PlanText::tr("%1 x %2 %3 from %4, %5");
    return text.arg(number(mBoardExtent.width()), number(mBoardExtent.height()),
        isInch ? PlanText::tr("inch") : QStringLiteral("mm"), number(mBoardExtent.left()),
        number(-mBoardExtent.bottom()));
}

class DrillMap::Painting
{
public:
    Painting(const DrillMap& map, size_t sheet, QPainter& painter, const Progress& progress)
        : mMap(map)
        , mPlan(map.mPlan)
        , mIndex(sheet)
        , mSheet(map.mSheets[sheet])
        , mPainter(painter)
        , mProgress(progress)
    {
        const QRectF body(
            margin, margin + titleHeight, width - 2 * margin, height - 2 * margin - titleHeight);
        mLegend = body.adjusted(body.width() - legendWidth, 0, 0, 0);
        mArea = body.adjusted(0, 0, -legendWidth - margin / 2, 0);
        const QRectF area = mArea.adjusted(20, 0, -20, -scaleHeight);
        mScale = std::min(area.width() / std::max(map.mExtent.width(), 1e-3),
            area.height() / std::max(map.mExtent.height(), 1e-3));
        mOrigin = area.center() - mScale * map.mExtent.center();
        std::vector<size_t> rows;
        for (const Entry& entry : mSheet.entries) {
            rows.insert(rows.end(), entry.tool->rows.begin(), entry.tool->rows.end());
        }
        const double room = roomBetween(map.mPlaces, rows);
        mRoom = mScale * (room > 0 ? room : 1000);
    }

    void paint()
    {
        for (size_t i = 0; i < mMap.mSheets.size(); ++i) {
            for (const Entry& entry : mMap.mSheets[i].entries) {
                (i < mIndex ? mDone : mTotal) += entry.tool->hits();
            }
        }
        mTotal += mDone;
        tell(mProgress, mDone, mTotal);
        mPainter.save();
        mPainter.setRenderHint(QPainter::Antialiasing);
        paintTitle();
        paintLegend();
        paintBoard();
        paintComparison();
        paintScale();
        mPainter.restore();
    }

private:
    QPointF onSheet(QPointF point) const { return mScale * point + mOrigin; }
    QPainterPath onSheet(const QPainterPath& path) const
    {
        return QTransform(mScale, 0, 0, mScale, mOrigin.x(), mOrigin.y()).map(path);
    }
    double radiusOf(size_t row) const
    {
        return mScale * toMillimetres(shownSize(mPlan.rows[row])) / 2;
    }
    double symbolOf(size_t row) const { return symbolRadius(radiusOf(row), mRoom, likedSymbol); }

    void write(const QRectF& area, int alignment, const QString& text)
    {
        const QFontMetricsF metrics(mPainter.font(), mPainter.device());
        mPainter.drawText(area, alignment | Qt::TextSingleLine,
            metrics.elidedText(text, Qt::ElideRight, area.width()));
    }

    void writeCell(const QRectF& row, const Column& column, const QString& text)
    {
        write(cellOf(row, column), column.alignment | Qt::AlignVCenter, text);
    }

    void paintTitle()
    {
        mPainter.setPen(Qt::black);
        const QRectF head(margin, margin, width - 2 * margin, 72);
        mPainter.setFont(fontOf(56, true));
        write(head, Qt::AlignLeft | Qt::AlignTop,
            PlanText::tr("Drill map, layer %1").arg(mMap.title(mIndex)));
        mPainter.setFont(fontOf(32));
        write(head.translated(0, 72), Qt::AlignLeft | Qt::AlignTop,
            PlanText::tr("Board %1, step %2, model %3%4. Circles have the drill size; sizes in %5.")
                .arg(mPlan.board->job, mPlan.boardStep().name, mPlan.model.name,
                    PlanText::tr(" (%1)").arg(spoken(fileState(mPlan.model))),
                    unitName(mPlan.units)));
        write(head.translated(0, 112), Qt::AlignLeft | Qt::AlignTop,
            PlanText::tr("File %1; extent %2; written on %3 by %4")
                .arg(sourceText(mPlan), mMap.extentText(), outputDate().toString(Qt::ISODate),
                    QStringLiteral("brox " OUTPUT_VERSION)));
    }

    void paintLegend()
    {
        const double rows = double(mSheet.entries.size()) + 3; // with titles, contours and dots
        const double rowHeight = std::min(likedRowHeight, mLegend.height() / rows);
        QRectF row(mLegend.left(), mLegend.top(), mLegend.width(), rowHeight);
        mPainter.setFont(fontOf(0.5 * rowHeight, true));
        writeCell(row, toolColumn, PlanText::tr("Tool", "map legend"));
        writeCell(row, bitColumn, PlanText::tr("Bit"));
        writeCell(row, sizeColumn, PlanText::tr("Drill size"));
        writeCell(row, hitsColumn, PlanText::tr("Hits"));
        writeCell(row, slotsColumn, PlanText::tr("Slots", "map legend"));
        mPainter.setPen(linePen(Qt::black, thinLine));
        mPainter.drawLine(row.bottomLeft(), row.bottomRight());
        mPainter.setFont(fontOf(0.56 * rowHeight));
        bool hasDots = false;
        for (const Entry& entry : mSheet.entries) {
            row.translate(0, rowHeight);
            paintLegendRow(entry, row);
            hasDots = hasDots || std::ranges::any_of(entry.tool->rows, [this](size_t each) {
                return RowInk::areDots(symbolOf(each));
            });
        }
        if (const size_t contours = mMap.mContours[mSheet.layer].size(); contours > 0) {
            row.translate(0, rowHeight);
            paintContourRow(contours, row);
        }
        if (hasDots) {
            writeCell(row.translated(0, rowHeight), noteColumn,
                PlanText::tr("dots: holes too close for symbols"));
        }
    }

    void paintContourRow(size_t count, const QRectF& row)
    {
        const QRectF symbol = cellOf(row, symbolColumn);
        mPainter.setPen(linePen(contourGrey, contourLine));
        mPainter.drawLine(QPointF(symbol.left(), symbol.center().y()),
            QPointF(symbol.right(), symbol.center().y()));
        mPainter.setPen(Qt::black);
        writeCell(row, noteColumn, PlanText::tr("contours, not drilled: %L1").arg(count));
    }

    void paintLegendRow(const Entry& entry, const QRectF& row)
    {
        const auto& [program, tool, look] = entry;
        const double radius = 0.3 * row.height();
        const QPointF centre = cellOf(row, symbolColumn).center();
        mPainter.setBrush(Qt::NoBrush);
        mPainter.setPen(linePen(toolColour(look, false), 0.15 * radius));
        mPainter.drawPath(
            QTransform(radius, 0, 0, radius, centre.x(), centre.y()).map(toolSymbol(look)));
        mPainter.setPen(Qt::black);
        const auto number = [](qint64 count) {
            return count > 0 ? QLocale().toString(count) : QString();
        };
        writeCell(row, toolColumn,
            tool->number > 0 ? QStringLiteral("T%1").arg(tool->number, 2, 10, QChar('0'))
                             : QString());
        writeCell(row, platingColumn, program->isPlated ? "PTH" : "NPTH");
        writeCell(row, bitColumn, tool->bit);
        writeCell(row, sizeColumn,
            tool->size ? sizeText(*tool->size, mPlan.units) : PlanText::tr("no size"));
        writeCell(row, hitsColumn, number(tool->holes));
        writeCell(row, slotsColumn, number(tool->slotPaths));
    }

    void paintBoard()
    {
        mPainter.setBrush(Qt::NoBrush);
        mPainter.setPen(linePen(QColor(0x60, 0x60, 0x60), 2.5));
        for (const Path& outline : mMap.mOutlines) {
            mPainter.drawPath(onSheet(toMap(outline)));
        }
        mPainter.setPen(linePen(contourGrey, contourLine));
        for (const Path& contour : mMap.mContours[mSheet.layer]) {
            mPainter.drawPath(onSheet(toMap(contour)));
        }
        for (const Entry& entry : mSheet.entries) {
            for (const size_t row : entry.tool->rows) {
                paintRow(row, entry.look);
            }
        }
    }

    void paintRow(size_t row, size_t look)
    {
        RowInk ink(mPainter, look, radiusOf(row), symbolOf(row));
        const auto paintIfFull = [&] {
            ++mDone;
            if (ink.isFull()) {
                ink.paint();
                tell(mProgress, mDone, mTotal);
            }
        };
        for (const Place& hole : mMap.mPlaces[row].holes) {
            ink.addHole(onSheet(toMap(hole)));
            paintIfFull();
        }
        for (const Path& path : mMap.mPlaces[row].slotPaths) {
            const QPainterPath middle = toMap(path);
            ink.addSlot(onSheet(slotArea(path, shownSize(mPlan.rows[row]))),
                onSheet(
                    middle.length() > 0 ? middle.pointAtPercent(0.5) : middle.currentPosition()));
            paintIfFull();
        }
        ink.paint();
    }

    void paintComparison()
    {
        const ComparisonMarks marks = marksOf(mPlan, mPlan.layers[mSheet.layer].name);
        if (marks.isEmpty()) {
            return;
        }
        paintMarks(
            mPainter, marks, [this](Place place) { return onSheet(toMap(place)); }, mArea, 14);
        mPainter.setPen(Qt::black);
        mPainter.setFont(fontOf(28));
        write(QRectF(mArea.center().x(), mArea.bottom() - 40, mArea.width() / 2, 40),
            Qt::AlignRight | Qt::AlignVCenter,
            PlanText::tr("Compared with %1: %2").arg(mPlan.comparison->other, marksText(marks)));
    }

    void paintScale()
    {
        const bool isInch = mPlan.units == Units::Inch;
        const double unit = isInch ? 25.4 : 1;
        const double length = roundLength(0.25 * mArea.width() / mScale, unit);
        const QPointF begin(mArea.left() + 20, mArea.bottom() - 20);
        const QPointF end = begin + QPointF(length * mScale, 0);
        mPainter.setPen(linePen(Qt::black, thinLine));
        mPainter.drawLine(begin, end);
        for (const QPointF& tick : {begin, end}) {
            mPainter.drawLine(tick + QPointF(0, -12), tick + QPointF(0, 12));
        }
        mPainter.setFont(fontOf(28));
        write(QRectF(end.x() + 20, end.y() - 20, 600, 40), Qt::AlignLeft | Qt::AlignVCenter,
            PlanText::tr("%1 %2, scale %3")
                .arg(QString::number(length / unit, 'g', 6),
                    isInch ? PlanText::tr("inch") : QStringLiteral("mm"), ratioText(mScale / 10)));
    }

    const DrillMap& mMap;
    const DrillPlan& mPlan;
    const size_t mIndex;
    const Sheet& mSheet;
    QPainter& mPainter;
    const Progress& mProgress;
    qint64 mDone = 0; ///< holes and slots, those of the sheets before too
    qint64 mTotal = 0;
    QRectF mLegend;
    QRectF mArea; ///< of the board and its scale
    double mScale = 1; ///< units of the sheet to the millimetre
    QPointF mOrigin; ///< of the board on the sheet
    double mRoom = 0; ///< between holes, on the sheet
};

void DrillMap::paint(QPainter& painter, size_t sheet, const Progress& progress) const
{
    Painting(*this, sheet, painter, progress).paint();
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
