// SPDX-License-Identifier: MIT
#include "drill_table.h"

#include <QRegularExpression>

namespace {

QString typeName(HoleType type)
{
    switch (type) {
    case HoleType::Plated:
        return QStringLiteral("Plated");
    case HoleType::NonPlated:
        return QStringLiteral("Non-plated");
    case HoleType::Via:
        return QStringLiteral("Via");
    case HoleType::PressFit:
        return QStringLiteral("Press-fit");
    }
    return {};
}

bool isNumber(int column)
{
    return column >= 2 && column <= 6;
}

QString csvCell(QString cell)
{
    static const QRegularExpression special(QStringLiteral("[\",\r\n]"));
    return cell.contains(special) ? '"' + cell.replace('"', "\"\"") + '"' : cell;
}

} // namespace

DrillTable::DrillTable(HostSession& session, size_t step, const QString& model)
{
    const QString unit = session.units(step) == Units::Inch ? "mil" : "micron";
    const auto size = [&](const char* name) {
        return QStringLiteral("%1 [%2]").arg(QLatin1String(name), unit);
    };
    mRows << QStringList{
        "Layer", "Type", "Count", size("FHS"), size("-Tol"), size("+Tol"), size("DHS"), "Bit"};
    for (const Layer& layer : session.board().steps.at(step).layers) {
        for (const Tool& tool : layer.tools) {
            const HostSession::Drill drill = session.drill(step, model, tool);
            mToolsWithoutDrill += drill.size == 0;
            mRows << QStringList{layer.name, typeName(tool.type), QString::number(tool.count),
                session.sizeText(step, tool.finishedSize), session.sizeText(step, tool.minusTol),
                session.sizeText(step, tool.plusTol),
                drill.size == 0 ? QString() : session.sizeText(step, drill.size), drill.bit};
        }
    }
}

QString DrillTable::toText() const
{
    QList<qsizetype> widths(mRows.first().size(), 0);
    for (const QStringList& row : mRows) {
        for (qsizetype i = 0; i < row.size(); ++i) {
            widths[i] = qMax(widths[i], row[i].simplified().size());
        }
    }
    QString text;
    for (const QStringList& row : mRows) {
        QString line;
        for (qsizetype i = 0; i < row.size(); ++i) {
            const QString cell = row[i].simplified();
            line +=
                (isNumber(int(i)) ? cell.rightJustified(widths[i]) : cell.leftJustified(widths[i]))
                + "  ";
        }
        while (line.endsWith(' ')) {
            line.chop(1);
        }
        text += line + '\n';
    }
    return text;
}

QString DrillTable::toCsv() const
{
    QString csv;
    for (const QStringList& row : mRows) {
        QStringList cells;
        for (const QString& cell : row) {
            cells << csvCell(cell);
        }
        csv += cells.join(',') + '\n';
    }
    return csv;
}
