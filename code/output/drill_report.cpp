// SPDX-License-Identifier: MIT
#include "drill_report.h"

#include "comparison_text.h"
#include "drill_map.h"
#include "drill_program.h"
#include "drill_table.h"
#include "file_set.h"
#include "pdf_pages.h"
#include "plan_checks.h"
#include "reading.h"
#include "text_table.h"

#include <QAbstractTextDocumentLayout>
#include <QFileInfo>
#include <QLocale>
#include <QTextDocument>
#include <map>

namespace brox {

namespace {

QString escaped(const QString& text)
{
    return printable(text).toHtmlEscaped();
}

/** Nobody reads on, and large tables take long to lay out. The table of findings has them all. */
constexpr qsizetype mostListedInReport = 200;

QString countText(qint64 count)
{
    return QLocale().toString(count);
}

QString heading(const QString& text)
{
    return "<h2>" + escaped(text) + "</h2>\n";
}

QString alert(const QString& text)
{
    return "<b style=\"color:red\">" + escaped(text) + "</b>";
}

QString cell(const char* tag, const QString& html, const Table::Column& column)
{
    return QStringLiteral("<%1%2%3>%4</%1>")
        .arg(QLatin1String(tag),
            QLatin1String(column.isNumber ? " align=\"right\"" : " align=\"left\""),
            QLatin1String(column.wraps ? "" : " style=\"white-space:nowrap\""),
            html.isEmpty() ? QStringLiteral("&nbsp;") : html);
}

/** A table whose cells are HTML. */
QString htmlOf(const Table& table)
{
    QString html = "<table border=\"1\" cellspacing=\"0\" cellpadding=\"3\" "
                   "style=\"border-collapse:collapse\">\n<thead><tr>";
    for (const Table::Column& column : table.columns) {
        html += cell("th", escaped(column.title), column);
    }
    html += "</tr></thead>\n<tbody>\n";
    for (const QStringList& row : table.rows) {
        html += "<tr>";
        for (qsizetype i = 0; i < row.size(); ++i) {
            html += cell("td", row[i], table.columns[i]);
        }
        html += "</tr>\n";
    }
    return html + "</tbody></table>\n";
}

QString list(const QStringList& lines)
{
    QString html = "<ul>\n";
    for (const QString& line : lines) {
        html += "<li>" + escaped(line) + "</li>\n";
    }
    return html + "</ul>\n";
}

/** Titles and texts of sizes in the plan's units. */
class Sizes
{
public:
    explicit Sizes(const DrillPlan& plan)
        : mUnits(plan.units)
    { }

    Table::Column column(const QString& name) const
    {
        return {QStringLiteral("%1 [%2]").arg(name, unitName(mUnits)), true};
    }
    QString text(Size size) const { return sizeText(size, mUnits); }
    QString text(std::optional<Size> size) const { return size ? text(*size) : QString(); }

private:
    Units mUnits;
};

QString flagsHtml(const PlanRow& row)
{
    QStringList words;
    for (const PlanFlag flag : row.flags) {
        words << (isAlarming(flag) ? alert(spoken(flagWord(flag)))
                                   : escaped(spoken(flagWord(flag))));
    }
    if (row.replaced) {
        words << escaped(PlanText::tr("(was %1)").arg(row.replaced->bit));
    }
    return words.join(' ');
}

QString factsHtml(const DrillPlan& plan, const DrillMap& map)
{
    const auto row = [](const QString& name, const QString& text) {
        return QStringList{QStringLiteral("<b>%1</b>").arg(name), escaped(text)};
    };
    QString html = "<table cellspacing=\"0\" cellpadding=\"3\">\n";
    for (const QStringList& cells :
        {row(PlanText::tr("Board"), plan.board->job), row(PlanText::tr("File"), sourceText(plan)),
            row(PlanText::tr("Step"), plan.boardStep().name),
            row(PlanText::tr("Extent"), map.extentText()),
            row(PlanText::tr("Model"), plan.model.name),
            row(PlanText::tr("Models and bits"), spoken(fileState(plan.model))),
            row(PlanText::tr("Formula"), plan.model.formula),
            row(PlanText::tr("Bits"),
                plan.model.usesBits ? PlanText::tr("rounded to bits of the table")
                                    : PlanText::tr("not used")),
            row(PlanText::tr("Units"), unitName(plan.units)),
            row(PlanText::tr("Written by"), QStringLiteral("brox " OUTPUT_VERSION)),
            row(PlanText::tr("Written on"), outputDate().toString(Qt::ISODate))}) {
        html += "<tr>" + cell("td", cells[0], {}) + cell("td", cells[1], {}) + "</tr>\n";
    }
    html += "</table>\n";
    if (plan.model.unsaved) {
        html +=
            "<p>" + alert(PlanText::tr("Model or bits have edits that are not saved.")) + "</p>\n";
    }
    if (plan.model.isOlder) {
        html += "<p>"
            + alert(PlanText::tr(
                "The files of models and bits have been saved by others since they were read."))
            + "</p>\n";
    }
    return html;
}

QString amountsHtml(const DrillPlan& plan, const Sizes& sizes)
{
    Table table{{{PlanText::tr("Hole type")}, sizes.column(PlanText::tr("Amount")),
                    sizes.column(PlanText::tr("Large from")),
                    sizes.column(PlanText::tr("Amount if large"))},
        {}};
    for (const ModelAmount& amount : plan.model.amounts) {
        const bool hasLarge = amount.largeFrom > 0;
        table.rows << QStringList{escaped(amount.holeType), sizes.text(amount.amount),
            hasLarge ? sizes.text(amount.largeFrom) : QString(),
            hasLarge ? sizes.text(amount.largeAmount) : QString()};
    }
    return table.rows.isEmpty() ? QString() : heading(PlanText::tr("Amounts")) + htmlOf(table);
}

QString rulesHtml(const DrillPlan& plan)
{
    return plan.rules.isEmpty() ? QString()
                                : heading(PlanText::tr("Rules of the shop")) + list(plan.rules);
}

QString rowsHtml(const DrillPlan& plan, const Sizes& sizes)
{
    Table table{
        {{PlanText::tr("Layer")}, {PlanText::tr("Type"), false, false},
            {PlanText::tr("Count"), true}, sizes.column(PlanText::tr("FHS")),
            sizes.column(PlanText::tr("-Tol")), sizes.column(PlanText::tr("+Tol")),
            sizes.column(PlanText::tr("DHS")), {PlanText::tr("Bit"), false, false},
            {PlanText::tr("Tool"), true}, {PlanText::tr("Flags")}, {PlanText::tr("Decided by")}},
        {}};
    for (const PlanRow& row : plan.rows) {
        table.rows << QStringList{escaped(plan.layers[row.layer].name),
            escaped(spoken(typeWord(row.type, row.isSlot))), countText(row.count),
            sizes.text(row.finishedSize), sizes.text(row.tolerance.minus),
            sizes.text(row.tolerance.plus), sizes.text(row.drillSize),
            isAlarming(row) ? alert(row.bit) : escaped(row.bit),
            row.programTool > 0 ? QString::number(row.programTool) : QString(), flagsHtml(row),
            escaped(row.rule)};
    }
    return heading(PlanText::tr("Drill table")) + htmlOf(table);
}

QString programHtml(const Program& program, const QString& name, const Sizes& sizes)
{
    Table table{
        {{PlanText::tr("Tool")}, {PlanText::tr("Bit")}, sizes.column(PlanText::tr("Drill size")),
            {PlanText::tr("Hits"), true}, {PlanText::tr("Slots"), true}},
        {}};
    qint64 holes = 0;
    qint64 slotPaths = 0;
    for (const ProgramTool& tool : program.tools) {
        holes += tool.holes;
        slotPaths += tool.slotPaths;
        table.rows << QStringList{tool.number > 0
                ? QStringLiteral("T%1").arg(tool.number, 2, 10, QChar('0'))
                : alert(PlanText::tr("no size")),
            escaped(tool.bit), sizes.text(tool.size), countText(tool.holes),
            countText(tool.slotPaths)};
    }
    table.rows << QStringList{QStringLiteral("<b>%1</b>").arg(escaped(PlanText::tr("Total"))), {},
        {}, QStringLiteral("<b>%1</b>").arg(countText(holes)),
        QStringLiteral("<b>%1</b>").arg(countText(slotPaths))};
    return "<h3>" + escaped(name) + "</h3>\n" + htmlOf(table);
}

QString programsHtml(const DrillPlan& plan, const Sizes& sizes)
{
    QString html = heading(PlanText::tr("Drill programs"));
    const QStringList names = programNames(plan);
    for (size_t i = 0; i < plan.programs.size(); ++i) {
        html += programHtml(plan.programs[i], names[qsizetype(i)], sizes);
    }
    return html;
}

QString findingsHtml(const DrillPlan& plan, const Sizes& sizes)
{
    const CheckFindings findings = checkPlan(plan, outputDate());
    const QList<Table::Column> columns{{PlanText::tr("Finding")}, {PlanText::tr("Layer")},
        {PlanText::tr("Tools")}, sizes.column(QStringLiteral("X")),
        sizes.column(QStringLiteral("Y")), {PlanText::tr("Measured"), true},
        {PlanText::tr("Limit"), true}, {PlanText::tr("Id"), false, false}};
    const auto cells = [&](const CheckFinding& finding) {
        const QString text = checkText(finding.check);
        return QStringList{isHard(finding.check) ? alert(text) : escaped(text),
            escaped(plan.layers[finding.layer].name), escaped(findingTools(plan, finding)),
            sizes.text(finding.places.front().x), sizes.text(finding.places.front().y),
            measureText(finding.check, finding.measured, plan.units),
            measureText(finding.check, finding.limit, plan.units), finding.id};
    };
    Table table{columns, {}};
    std::map<Check, qsizetype> counts;
    for (const CheckFinding& finding : findings.list) {
        if (++counts[finding.check] <= mostListedInReport) {
            table.rows << cells(finding);
        }
    }
    QStringList notes = findingsNotes(findings);
    for (const auto& [check, count] : counts) {
        if (count > mostListedInReport) {
            notes << PlanText::tr("%1: %L2 more, not in this report")
                         .arg(checkText(check))
                         .arg(count - mostListedInReport);
        }
    }
    QString html = heading(PlanText::tr("Findings"))
        + (table.rows.isEmpty() ? "<p>" + escaped(PlanText::tr("None.")) + "</p>\n"
                                : htmlOf(table));
    Table accepted{
        columns + QList<Table::Column>{{PlanText::tr("Reason")}, {PlanText::tr("Until")}}, {}};
    for (const AcceptedFinding& each : findings.accepted) {
        accepted.rows << cells(each.finding)
                + QStringList{escaped(each.reason), each.until.toString(Qt::ISODate)};
    }
    if (!accepted.rows.isEmpty()) {
        html += "<h3>" + escaped(PlanText::tr("Accepted findings")) + "</h3>\n" + htmlOf(accepted);
    }
    return html + (notes.isEmpty() ? QString() : list(notes));
}

QString comparisonHtml(const DrillPlan& plan, const Sizes& sizes)
{
    if (!plan.comparison) {
        return {};
    }
    const Comparison& comparison = *plan.comparison;
    QString html = heading(PlanText::tr("Compared with %1").arg(comparison.other));
    QStringList lines = comparisonNotes(comparison, plan.units, Tongue::User);
    lines << sameText(comparison, Tongue::User);
    lines.removeAll(QString());
    html += lines.isEmpty() ? QString() : list(lines);
    if (!comparison.differs()) {
        return html;
    }
    Table table{{{PlanText::tr("Finding")}, {PlanText::tr("Layer")}, {PlanText::tr("Tool"), true},
                    {PlanText::tr("Count"), true}, sizes.column(PlanText::tr("First X")),
                    sizes.column(PlanText::tr("First Y")), {PlanText::tr("Detail")}},
        {}};
    for (const BoardDifference& difference : comparison.differences) {
        const auto texts = differenceTexts(comparison, difference, plan.units, Tongue::User);
        const bool hasPlace = !difference.places.empty();
        table.rows << QStringList{alert(texts.kind), escaped(texts.layer), escaped(texts.tool),
            countText(difference.count), hasPlace ? sizes.text(difference.places[0].x) : QString(),
            hasPlace ? sizes.text(difference.places[0].y) : QString(), escaped(texts.detail)};
    }
    return html + htmlOf(table);
}

QString notesHtml(const DrillPlan& plan)
{
    QStringList lines = leftOut(plan);
    for (const StepLayer& layer : plan.layers) {
        if (!layer.assumedFormat.isEmpty()) {
            lines << PlanText::tr("layer %1: digits of coordinates assumed to be %2")
                         .arg(layer.name, layer.assumedFormat);
        }
    }
    lines += plan.board->notes;
    return heading(PlanText::tr("Not drilled, and notes"))
        + (lines.isEmpty() ? "<p>" + escaped(PlanText::tr("Nothing.")) + "</p>\n" : list(lines));
}

/** The body of a report up to the maps, in the HTML that browsers and text documents share.
 *  What needs a look is red, and bold for those who print it in black. */
QString reportHtml(const DrillPlan& plan, const DrillMap& map)
{
    const Sizes sizes(plan);
    return "<h1>"
        + escaped(
            PlanText::tr("Drill report: %1, step %2").arg(plan.board->job, plan.boardStep().name))
        + "</h1>\n" + factsHtml(plan, map) + amountsHtml(plan, sizes) + rulesHtml(plan)
        + rowsHtml(plan, sizes) + comparisonHtml(plan, sizes) + programsHtml(plan, sizes)
        + findingsHtml(plan, sizes) + notesHtml(plan);
}

constexpr int margin = 150; ///< of pages, in dots

/** What is read on screens and printed from there. */
const char style[] = "body{font-family:sans-serif;margin:2em;color:black;background:white}"
                     "table{margin-bottom:1em}th{background:#e8e8e8}"
                     "svg{width:100%;height:auto}tr,svg{page-break-inside:avoid}"
                     "@media print{body{margin:0;font-size:9pt}}";

void writeHtml(
    QIODevice& file, const DrillPlan& plan, const DrillMap& map, const Progress& progress)
{
    const auto write = [&file](const QString& html) { file.write(html.toUtf8()); };
    write("<!DOCTYPE html>\n<html lang=\"" + PlanText::tr("en", "code of the language itself")
        + "\">\n<head><meta charset=\"utf-8\">\n<title>" + escaped(plan.board->job)
        + "</title>\n<style>" + style + "</style></head>\n<body>\n" + reportHtml(plan, map));
    for (size_t i = 0; i < map.sheetCount(); ++i) {
        write(heading(PlanText::tr("Map of layer %1").arg(map.title(i))));
        writeSheet(file, map, i, progress);
    }
    write("</body>\n</html>\n");
}

void writePdf(QIODevice& file, const DrillPlan& plan, const DrillMap& map, const Progress& progress)
{
    PdfPages pdf(file, PlanText::tr("Drill report of %1").arg(plan.board->job));
    QTextDocument text;
    text.documentLayout()->setPaintDevice(&pdf.device());
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setStyleHint(QFont::SansSerif);
    font.setPointSizeF(7.5);
    text.setDefaultFont(font);
    text.setDocumentMargin(0);
    text.setTextWidth(pdf.device().width() - 2 * margin);
    text.setHtml(reportHtml(plan, map));
    const TextPages pages(text, pdf.device().height() - 2 * margin);
    const int count = pages.count() + int(map.sheetCount());
    for (int i = 0; i < pages.count(); ++i) {
        QPainter& painter = pdf.newPage(QPageLayout::Portrait, count);
        painter.translate(margin, margin);
        pages.paint(painter, i);
        painter.translate(-margin, -margin);
    }
    for (size_t i = 0; i < map.sheetCount(); ++i) {
        map.paint(pdf.newPage(QPageLayout::Landscape, count), i, progress);
    }
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
    QIODevice& file = files.open(path);
    if (suffix == "html") {
        writeHtml(file, plan, map, progress);
    } else {
        writePdf(file, plan, map, progress);
    }
}

} // namespace brox
