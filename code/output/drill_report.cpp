// SPDX-License-Identifier: MIT
#include "drill_report.h"

#include "drill_map.h"
#include "file_set.h"
#include "plan_text.h"
#include "report_html.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QFileInfo>
#include <QPainter>
#include <QPdfWriter>
#include <QTextDocument>

namespace brox {

namespace {

constexpr int dotsPerInch = 254; ///< so that a dot is a unit of a map's sheet
constexpr int margin = 150;
constexpr int footer = 80;

/** What is read on screens and printed from there. */
const char style[] = "body{font-family:sans-serif;margin:2em;color:black;background:white}"
                     "table{margin-bottom:1em}th{background:#e8e8e8}"
                     "svg{width:100%;height:auto;page-break-inside:avoid}"
                     "@media print{body{margin:0;font-size:9pt}}";

QByteArray asHtml(const DrillPlan& plan, const DrillMap& map, const Progress& progress)
{
    QByteArray html = "<!DOCTYPE html>\n<html lang=\""
        + PlanText::tr("en", "code of the language itself").toUtf8()
        + "\">\n<head><meta charset=\"utf-8\">\n<title>" + plan.board->job.toHtmlEscaped().toUtf8()
        + "</title>\n<style>" + style + "</style></head>\n<body>\n" + reportHtml(plan).toUtf8();
    for (size_t i = 0; i < map.sheetCount(); ++i) {
        html += "<h2>" + PlanText::tr("Map of layer %1").arg(map.title(i)).toHtmlEscaped().toUtf8()
            + "</h2>\n" + sheetAsSvg(map, i, progress);
    }
    return html + "</body>\n</html>\n";
}

void paintText(QPainter& painter, QPdfWriter& writer, const QTextDocument& text)
{
    const QSizeF page = text.pageSize();
    for (int i = 0; i < text.pageCount(); ++i) {
        if (i > 0) {
            writer.newPage();
        }
        painter.save();
        painter.setFont(text.defaultFont());
        painter.drawText(QRectF(margin, margin + page.height(), page.width(), footer),
            Qt::AlignRight | Qt::AlignBottom,
            QStringLiteral("%1 / %2").arg(i + 1).arg(text.pageCount()));
        painter.translate(margin, margin - i * page.height());
        QAbstractTextDocumentLayout::PaintContext context;
        context.palette.setColor(QPalette::Text, Qt::black);
        context.clip = QRectF(0, i * page.height(), page.width(), page.height());
        painter.setClipRect(context.clip);
        text.documentLayout()->draw(&painter, context);
        painter.restore();
    }
}

QByteArray asPdf(const DrillPlan& plan, const DrillMap& map, const Progress& progress)
{
    QByteArray pdf;
    QBuffer buffer(&pdf);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(PlanText::tr("Drill report of %1").arg(plan.board->job));
    writer.setCreator(QStringLiteral("brox " OUTPUT_VERSION));
    writer.setResolution(dotsPerInch);
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, {}));

    QTextDocument text;
    text.documentLayout()->setPaintDevice(&writer);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setStyleHint(QFont::SansSerif);
    font.setPointSizeF(7.5);
    text.setDefaultFont(font);
    text.setDocumentMargin(0);
    text.setPageSize(QSizeF(writer.width() - 2 * margin, writer.height() - 2 * margin - footer));
    text.setHtml(reportHtml(plan));

    QPainter painter(&writer);
    paintText(painter, writer, text);
    for (size_t i = 0; i < map.sheetCount(); ++i) {
        writer.setPageOrientation(QPageLayout::Landscape);
        writer.newPage();
        map.paint(painter, i, progress);
    }
    painter.end();
    return pdf;
}

} // namespace

void addDrillReport(
    const DrillPlan& plan, const QString& path, FileSet& files, const Progress& progress)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix != "html" && suffix != "pdf") {
        throw OutputError(PlanText::tr("%1: a report is written as .html or .pdf").arg(path));
    }
    const DrillMap map(plan);
    files.add(path, suffix == "html" ? asHtml(plan, map, progress) : asPdf(plan, map, progress));
}

} // namespace brox
