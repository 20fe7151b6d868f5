// SPDX-License-Identifier: MIT
#include "printing.h"

#include "board_reader.h"
#include "drill_table.h"
#include "options.h"
#include "writing.h"

#include <QFile>
#include <algorithm>
#include <cstdio>

namespace brox {

namespace {

int print(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    const size_t written = fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
    const bool isWhole = written == size_t(bytes.size()) && fflush(stdout) == 0;
    return isWhole ? 0 : fail("the output can't be written");
}

/** A line about one board of several; many lines begin with the board's name by themselves.
 *
 * @param name  empty: there is one board
 */
QString named(const QString& name, const QString& line)
{
    return name.isEmpty() || line.startsWith(name + ':') ? line : name + ": " + line;
}

/** What the reader has to say, and what was assumed: for people, so on standard error.
 *
 * @param name  of the board where there are several; else empty
 */
void warnOf(const DrillDraft& draft, const QString& name)
{
    QStringList lines = draft.board->notes;
    lines << assumedText(draft);
    lines.removeAll(QString());
    for (const QString& line : lines) {
        warn(named(name, line));
    }
}

/** The names in a file, or in standard input for "-". */
QStringList readList(const QString& path)
{
    QFile file(path);
    const bool isOpen =
        path == "-" ? file.open(stdin, QFile::ReadOnly) : file.open(QFile::ReadOnly);
    if (!isOpen) {
        throw HostError(QStringLiteral("%1: %2").arg(path, file.errorString()));
    }
    QStringList names;
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.contains('\0')) {
            throw HostError(QStringLiteral("%1: a list has a name a line").arg(path));
        }
        names << QString::fromLocal8Bit(line).trimmed();
    }
    names.removeAll(QString());
    return names;
}

} // namespace

void warn(const QString& message)
{
    fprintf(stderr, "%s\n", message.toUtf8().constData());
}

int fail(const QString& message)
{
    warn(message);
    return 1;
}

Units unitsOf(const Options& options, const QCommandLineOption& option)
{
    const QString units = options.value(option);
    if (units != "inch" && units != "metric") {
        throw HostError(QStringLiteral("no units \"%1\"; there are: inch, metric").arg(units));
    }
    return units == "inch" ? Units::Inch : Units::Metric;
}

ReadOptions readOptions(const Options& options)
{
    ReadOptions reading;
    if (options.isSet(options.fileUnits)) {
        reading.fileUnits = unitsOf(options, options.fileUnits);
    }
    return reading;
}

size_t chosenStep(const Options& options, const Board& board)
{
    if (!options.isSet(options.step)) {
        return board.mainStep;
    }
    QStringList names;
    for (size_t i = 0; i < board.steps.size(); ++i) {
        if (board.steps[i].name == options.value(options.step)) {
            return i;
        }
        names << board.steps[i].name;
    }
    throw HostError(HostSession::tr("no step \"%1\"; there are: %2")
                        .arg(options.value(options.step), names.join(", ")));
}

/** A job of two empty steps, one for each of the units. Boards of any number are calculated by
 *  their viewers: making a viewer takes longer than reading a board. */
void openCalculator(HostSession& session)
{
    Board board;
    board.job = board.steps.emplace_back().name = QStringLiteral("inch");
    board.steps.emplace_back().name = QStringLiteral("metric");
    std::vector<DrillDraft> drafts = Job(std::move(board)).drafts();
    drafts[0].units = Units::Inch;
    session.setSteps(std::move(drafts));
}

DrillDraft draftOf(const Options& options, const Job& job)
{
    DrillDraft draft = draftStep(job, chosenStep(options, *job.board));
    if (options.isSet(options.units)) {
        draft.units = unitsOf(options, options.units);
    }
    return draft;
}

DrillPlan planOf(const Options& options, HostSession& session, const DrillDraft& draft)
{
    const size_t step = draft.units == Units::Inch ? 0 : 1;
    if (options.isSet(options.model)
        && session.selectedModel(step) != options.value(options.model)) {
        session.selectModel(step, options.value(options.model));
    }
    DrillModel model = session.model(step);
    if (model.name.isEmpty()) {
        throw HostError(
            "no drill tool model is selected; the models file may be empty or unreadable");
    }
    return makePlan(draft, std::move(model), session.drills(draft, step));
}

int statusOf(const Options& options, const DrillPlan& plan, const QString& name)
{
    const QString before = name.isEmpty() ? QString() : name + ": ";
    const auto without = std::count_if(plan.rows.begin(), plan.rows.end(),
        [](const PlanRow& row) { return !row.drillSize && row.finishedSize > 0; });
    if (without > 0) {
        warn(before
            + QStringLiteral("tools without a drill size by model \"%1\" and its formula: %2")
                  .arg(plan.model.name)
                  .arg(without));
    }
    if (const qsizetype flagged = alarmingRows(plan);
        options.isSet(options.strict) && flagged > 0) {
        warn(before
            + QStringLiteral("tools that are flagged out-of-tolerance, no-bit or no-size: %1")
                  .arg(flagged));
        return strictStatus;
    }
    return without > 0 ? 1 : 0;
}

int printPlan(const Options& options, HostSession& session, const Job& job)
{
    const DrillDraft draft = draftOf(options, job);
    const DrillPlan plan = planOf(options, session, draft);
    const QStringList left = leftOut(plan);
    const bool isRefused = options.isSet(options.strict) && alarmingRows(plan) > 0;
    const QStringList written = isRefused ? QStringList() : writeFiles(options, plan);
    int status = 0;
    if (options.isSet(options.json)) {
        status = print(QString::fromUtf8(planJson(plan, options.isSet(options.places))));
    } else if (options.isSet(options.csv)) {
        status = print(planCsvHeader(plan.units) + planCsvRows(plan, plan.units));
        for (const QString& line : left) {
            warn(line);
        }
    } else if (!options.isSet(options.table)) {
        status = print(written.isEmpty() ? QString() : written.join('\n') + '\n');
        for (const QString& line : left) {
            warn(line);
        }
    } else {
        const QString end = left.isEmpty() ? QString() : '\n' + left.join('\n') + '\n';
        status = print(
            QStringLiteral("%1, step %2, model %3\n\n%4%5")
                .arg(job.board->job, plan.boardStep().name, plan.model.name, planText(plan), end));
    }
    warnOf(draft, {});
    return qMax(status, statusOf(options, plan, {}));
}

/** Boards one after the other. Sizes are told in the units of the first, or those asked for, so
 *  that a column has one unit; each board is calculated in its own. */
int printBoards(const Options& options, HostSession& session, const ShopRules& rules)
{
    std::optional<Units> units;
    bool hasFailed = false;
    bool isStrict = false;
    for (const QString& name : readList(options.value(options.boards))) {
        try {
            const DrillDraft draft =
                draftOf(options, Job(readBoard({name}, readOptions(options)), rules));
            const DrillPlan plan = planOf(options, session, draft);
            QString text;
            if (!units) {
                units = plan.units;
                text = planCsvHeader(*units, "Board");
            }
            if (print(text + planCsvRows(plan, *units, name)) != 0) {
                return 1;
            }
            for (const QString& line : leftOut(plan)) {
                warn(named(name, line));
            }
            warnOf(draft, name);
            const int status = statusOf(options, plan, name);
            isStrict = isStrict || status == strictStatus;
            hasFailed = hasFailed || status == 1;
        } catch (const std::exception& error) {
            warn(named(name, QString::fromUtf8(error.what())));
            hasFailed = true;
        }
    }
    return hasFailed ? 1 : isStrict ? strictStatus : 0;
}

int printModels(HostSession& session)
{
    QString text;
    for (const QString& model : session.models(0)) {
        text += model + '\n';
    }
    return print(text);
}

} // namespace brox
