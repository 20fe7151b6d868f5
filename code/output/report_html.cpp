// SPDX-License-Identifier: MIT
#include "report_html.h"

#include "drill_program.h"

namespace {

enum class Align
{
    Left,
    Right
};

struct Column
{
    QString title;
    Align align = Align::Left;
};

QString escaped(const QString& text)
{
    return text.toHtmlEscaped();
}

QString heading(const QString& text)
{
    return "<h2>" + escaped(text) + "</h2>\n";
}

QString alert(const QString& text)
{
    return "<b style=\"color:red\">" + escaped(text) + "</b>";
}

QString cell(const char* tag, const QString& html, Align align)
{
    return QStringLiteral("<%1%2>%3</%1>")
        .arg(QLatin1String(tag),
            QLatin1String(align == Align::Right ? " align=\"right\"" : " align=\"left\""),
            html.isEmpty() ? QStringLiteral("&nbsp;") : html);
}

/** A table whose cells are HTML. */
QString table(const QList<Column>& columns, const QList<QStringList>& rows)
{
    QString html = "<table border=\"1\" cellspacing=\"0\" cellpadding=\"3\" "
                   "style=\"border-collapse:collapse\">\n<thead><tr>";
    for (const Column& column : columns) {
        html += cell("th", escaped(column.title), column.align);
    }
    html += "</tr></thead>\n<tbody>\n";
    for (const QStringList& row : rows) {
        html += "<tr>";
        for (qsizetype i = 0; i < row.size(); ++i) {
            html += cell("td", row[i], columns[i].align);
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

    Column column(const QString& name) const
    {
        return {QStringLiteral("%1 [%2]").arg(name, mUnits == Units::Inch ? "mil" : "micron"),
            Align::Right};
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
        words << (isAlarming(flag) ? alert(flagWord(flag)) : escaped(flagWord(flag)));
    }
    return words.join(' ');
}

QString factsHtml(const DrillPlan& plan)
{
    const auto row = [](const char* name, const QString& text) {
        return QStringList{QStringLiteral("<b>%1</b>").arg(name), escaped(text)};
    };
    QString html = "<table cellspacing=\"0\" cellpadding=\"3\">\n";
    for (const QStringList& cells :
        {row("Board", plan.board->job), row("Step", plan.boardStep().name),
            row("Model", plan.model), row("Formula", plan.formula),
            row("Bits", plan.usesBits ? "rounded to bits of the table" : "not used"),
            row("Units", plan.units == Units::Inch ? "mil" : "micron"),
            row("Written by", QStringLiteral("brox " OUTPUT_VERSION))}) {
        html += "<tr>" + cell("td", cells[0], Align::Left) + cell("td", cells[1], Align::Left)
            + "</tr>\n";
    }
    html += "</table>\n";
    if (plan.unsaved) {
        html += "<p>" + alert("Model or bits have edits that are not saved.") + "</p>\n";
    }
    return html;
}

QString amountsHtml(const DrillPlan& plan, const Sizes& sizes)
{
    QList<QStringList> rows;
    for (const PlanAmount& amount : plan.amounts) {
        const bool hasLarge = amount.largeFrom > 0;
        rows << QStringList{escaped(amount.holeType), sizes.text(amount.amount),
            hasLarge ? sizes.text(amount.largeFrom) : QString(),
            hasLarge ? sizes.text(amount.largeAmount) : QString()};
    }
    return rows.isEmpty() ? QString()
                          : heading("Amounts")
            + table({{"Hole type"}, sizes.column("Amount"), sizes.column("Large from"),
                        sizes.column("Amount if large")},
                rows);
}

QString rulesHtml(const DrillPlan& plan)
{
    return plan.rules.isEmpty() ? QString() : heading("Rules of the shop") + list(plan.rules);
}

QString rowsHtml(const DrillPlan& plan, const Sizes& sizes)
{
    QList<QStringList> rows;
    for (const PlanRow& row : plan.rows) {
        rows << QStringList{escaped(plan.layers[row.layer].name), typeWord(row.type, row.isSlot),
            QString::number(row.count), sizes.text(row.finishedSize),
            sizes.text(row.tolerance.minus), sizes.text(row.tolerance.plus),
            sizes.text(row.drillSize), isAlarming(row) ? alert(row.bit) : escaped(row.bit),
            row.programTool > 0 ? QString::number(row.programTool) : QString(), flagsHtml(row),
            escaped(row.rule)};
    }
    return heading("Drill table")
        + table({{"Layer"}, {"Type"}, {"Count", Align::Right}, sizes.column("FHS"),
                    sizes.column("-Tol"), sizes.column("+Tol"), sizes.column("DHS"), {"Bit"},
                    {"Tool", Align::Right}, {"Flags"}, {"Decided by"}},
            rows);
}

QString programHtml(const Program& program, const QString& name, const Sizes& sizes)
{
    QList<QStringList> rows;
    qint64 holes = 0;
    qint64 slotPaths = 0;
    for (const ProgramTool& tool : program.tools) {
        holes += tool.holes;
        slotPaths += tool.slotPaths;
        rows << QStringList{tool.number > 0
                ? QStringLiteral("T%1").arg(tool.number, 2, 10, QChar('0'))
                : alert("no size"),
            escaped(tool.bit), sizes.text(tool.size), QString::number(tool.holes),
            QString::number(tool.slotPaths)};
    }
    rows << QStringList{"<b>Total</b>", {}, {}, QStringLiteral("<b>%1</b>").arg(holes),
        QStringLiteral("<b>%1</b>").arg(slotPaths)};
    return "<h3>" + escaped(name) + "</h3>\n"
        + table({{"Tool"}, {"Bit"}, sizes.column("Drill size"), {"Hits", Align::Right},
                    {"Slots", Align::Right}},
            rows);
}

QString programsHtml(const DrillPlan& plan, const Sizes& sizes)
{
    QString html = heading("Drill programs");
    const std::vector<Program> programs = programsOf(plan);
    const QStringList names = programNames(plan, programs);
    for (size_t i = 0; i < programs.size(); ++i) {
        html += programHtml(programs[i], names[qsizetype(i)], sizes);
    }
    return html;
}

QString notesHtml(const DrillPlan& plan)
{
    QStringList lines = leftOut(plan);
    for (const StepLayer& layer : plan.layers) {
        if (!layer.assumedFormat.isEmpty()) {
            lines << QStringLiteral("layer %1: digits of coordinates assumed to be %2")
                         .arg(layer.name, layer.assumedFormat);
        }
    }
    lines += plan.board->notes;
    return heading("Left out and noted") + (lines.isEmpty() ? "<p>Nothing.</p>\n" : list(lines));
}

} // namespace

QString reportHtml(const DrillPlan& plan)
{
    const Sizes sizes(plan);
    return QStringLiteral("<h1>Drill report: %1, step %2</h1>\n")
               .arg(escaped(plan.board->job), escaped(plan.boardStep().name))
        + factsHtml(plan) + amountsHtml(plan, sizes) + rulesHtml(plan) + rowsHtml(plan, sizes)
        + programsHtml(plan, sizes) + notesHtml(plan);
}
