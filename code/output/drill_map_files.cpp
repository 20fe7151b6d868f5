// SPDX-License-Identifier: MIT
#include "drill_map.h"
#include "file_set.h"
#include "plan_text.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <algorithm>
#include <cmath>

namespace brox {

namespace {

constexpr double dotsPerUnit = 0.8; ///< of an image: 200 dots to the inch
constexpr double mostDots = 100e6;
constexpr int dotsPerInch = 254; ///< of vectors, so that a dot is a unit of a sheet

/** Paints sheets one below the other. */
void paintColumn(
    QPainter& painter, const DrillMap& map, size_t first, size_t count, const Progress& progress)
{
    for (size_t i = 0; i < count; ++i) {
        map.paint(painter, first + i, progress);
        painter.translate(0, DrillMap::height);
    }
}

QByteArray asSvg(
    const DrillMap& map, size_t first, size_t count, const QString& title, const Progress& progress)
{
    const QSize size(DrillMap::width, DrillMap::height * int(count));
    QByteArray svg;
    QBuffer buffer(&svg);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setTitle(title.toHtmlEscaped()); // it is written as it is
    generator.setDescription({});
    generator.setResolution(dotsPerInch);
    generator.setSize(size);
    generator.setViewBox(QRect({}, size));
    QPainter painter(&generator);
    painter.fillRect(QRect({}, size), Qt::white);
    paintColumn(painter, map, first, count, progress);
    painter.end();
    return svg;
}

QByteArray asPng(const DrillMap& map, const Progress& progress)
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
    QByteArray png;
    QBuffer buffer(&png);
    return image.save(&buffer, "PNG") ? png : QByteArray();
}

QByteArray asPdf(const DrillMap& map, const QString& title, const Progress& progress)
{
    QByteArray pdf;
    QBuffer buffer(&pdf);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(title);
    writer.setCreator(QStringLiteral("brox " OUTPUT_VERSION));
    writer.setResolution(dotsPerInch);
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape, {}));
    QPainter painter(&writer);
    for (size_t i = 0; i < map.sheetCount(); ++i) {
        if (i > 0) {
            writer.newPage();
        }
        map.paint(painter, i, progress);
    }
    painter.end();
    return pdf;
}

} // namespace

QByteArray sheetAsSvg(const DrillMap& map, size_t sheet, const Progress& progress)
{
    const QByteArray svg = asSvg(map, sheet, 1, map.title(sheet), progress);
    return svg.sliced(svg.indexOf("<svg"));
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
    files.add(path,
        suffix == "svg"       ? asSvg(map, 0, map.sheetCount(), title, progress)
            : suffix == "pdf" ? asPdf(map, title, progress)
                              : asPng(map, progress));
}

} // namespace brox
