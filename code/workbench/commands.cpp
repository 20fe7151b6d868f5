// SPDX-License-Identifier: MIT
#include "commands.h"

#include "bits_list.h"
#include "comparison_text.h"
#include "drill_map.h"
#include "drill_program.h"
#include "drill_report.h"
#include "drill_table.h"
#include "file_set.h"
#include "host_session.h"
#include "open_board.h"
#include "options.h"
#include "plan_checks.h"

#include <QFile>
#include <algorithm>
#include <cstdio>

namespace brox {

namespace {

/** Exit status if strict is asked for and a tool is flagged; no file may be written then. */
constexpr int strictStatus = 2;

/** Exit status if two boards differ that are compared. */
constexpr int differStatus = 3;

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

/** What the reader has to say, and what was assumed: for people, so on standard error. */
QStringList notesOf(const DrillDraft& draft)
{
    QStringList lines = draft.board->notes;
    lines << sizesText(draft) << assumedText(draft);
    lines.removeAll(QString());
    return lines;
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

/** The step asked for, in the units asked for. */
DrillDraft draftOf(const Options& options, Board board, const ShopRules& rules)
{
    Job job(std::move(board), rules);
    applyChoices(options, job);
    DrillDraft draft = draftStep(job, chosenStep(options, *job.board));
    if (options.isSet(options.units)) {
        draft.units = unitsOf(options, options.units);
    }
    return draft;
}

/** A plan with rows of which no two of one program can share a tool. */
struct MergedPlan
{
    DrillPlan plan;
    std::vector<size_t> apart; ///< indices; empty if no tools were to be merged
};

/** What a draft comes to by the options, in a session that openCalculator has readied. */
MergedPlan planOf(const Options& options, HostSession& session, const DrillDraft& draft)
{
    const size_t step = draft.units == Units::Inch ? 0 : 1;
    if (options.isSet(options.model)
        && session.selectedModel(step) != options.value(options.model)) {
        session.selectModel(step, options.value(options.model));
    }
    const auto sharing = options.isSet(options.fewestToolsAll) ? HostSession::Sharing::All
        : options.wantsFewestTools()                           ? HostSession::Sharing::ButPressFit
                                                               : HostSession::Sharing::None;
    std::vector<size_t> apart;
    DrillPlan plan = session.plan(draft, step, sharing, &apart);
    if (plan.model.name.isEmpty()) {
        throw HostError("there is no model: the models file may be empty or unreadable");
    }
    return {std::move(plan), std::move(apart)};
}

/** Why programs need more tools than are allowed, a line each. */
QStringList needlessLimit(const Options& options, const MergedPlan& merged)
{
    QStringList lines;
    const DrillPlan& plan = merged.plan;
    const int most = toolsAtMost(options);
    for (const Program& program : plan.programs) {
        if (program.toolCount() <= most) {
            continue;
        }
        lines << QStringLiteral("%1, %2: %3 tools are needed, --tools-at-most is %4; each of these "
                                "needs one of its own:")
                     .arg(plan.layers[program.layer].name,
                         program.isPlated ? "plated" : "not plated")
                     .arg(program.toolCount())
                     .arg(most);
        for (const size_t index : merged.apart) {
            const PlanRow& row = plan.rows[index];
            if (row.layer == program.layer && row.isPlated() == program.isPlated) {
                lines << QStringLiteral("  %1 %2 -%3/+%4 %5")
                             .arg(typeWord(row.type, row.isSlot),
                                 sizeText(row.finishedSize, plan.units),
                                 sizeText(row.tolerance.minus, plan.units),
                                 sizeText(row.tolerance.plus, plan.units),
                                 plan.units == Units::Inch ? "mil" : "micron");
            }
        }
    }
    return lines;
}

/** Why a plan is refused under --strict, a line each. */
QStringList objections(const Options& options, const DrillPlan& plan, qsizetype hardFindings)
{
    QStringList lines;
    if (!options.isSet(options.strict)) {
        return lines;
    }
    if (hardFindings > 0) {
        lines << QStringLiteral("findings that must not be drilled: %1").arg(hardFindings);
    }
    if (!options.isSet(options.sizes) && !sizesText(plan).isEmpty()) {
        lines << QStringLiteral("drill sizes beside finished sizes, and no --sizes");
    }
    if (const qsizetype flagged = alarmingRows(plan); flagged > 0) {
        lines << QStringLiteral("tools that are flagged out-of-tolerance, no-bit, no-size, "
                                "unapproved-bit or digits-doubtful: %1")
                     .arg(flagged);
    }
    if (plan.board->isContradicted) {
        lines << QStringLiteral("other files of the order contradict the board");
    }
    return lines;
}

/** Says what is wrong with a plan; the exit status that goes with it.
 *
 * @param refusals  why it is refused, a line each
 * @param name      of the board where there are several; else empty
 */
int statusOf(const DrillPlan& plan, const QStringList& refusals, const QString& name)
{
    const auto without = std::count_if(plan.rows.begin(), plan.rows.end(),
        [](const PlanRow& row) { return !row.drillSize && row.finishedSize > 0; });
    if (without > 0) {
        complain(named(name,
            QStringLiteral("tools without a drill size by model \"%1\" and its formula: %2")
                .arg(plan.model.name)
                .arg(without)));
    }
    for (const QString& line : refusals) {
        complain(named(name, line));
    }
    return !refusals.isEmpty() ? strictStatus : without > 0 ? 1 : 0;
}

/** Writes the files that the options ask for, all of them or none; their paths. */
QStringList writeFiles(const Options& options, const DrillPlan& plan)
{
    FileSet files;
    if (options.isSet(options.drillPrograms)) {
        addDrillPrograms(plan, options.value(options.drillPrograms), files);
    }
    if (options.isSet(options.report)) {
        addDrillReport(plan, options.value(options.report), files);
    }
    if (options.isSet(options.map)) {
        addDrillMap(plan, options.value(options.map), files);
    }
    files.commit();
    for (const QString& note : files.notes()) {
        warn(note);
    }
    if (options.isSet(options.drillPrograms)) {
        for (const QString& path : stalePrograms(plan, options.value(options.drillPrograms))) {
            warn(path + ": of an earlier export; this one has no such program");
        }
    }
    return files.paths();
}

QString linesText(const QStringList& list)
{
    return list.isEmpty() ? QString() : list.join('\n') + '\n';
}

/** The comparison that is asked for; null: none. */
std::shared_ptr<const Comparison> askedComparison(
    const Options& options, const DrillDraft& draft, QStringList& notes)
{
    if (!options.isSet(options.compare)) {
        return nullptr;
    }
    Board other = readOrder(options.values(options.compare), readOptions(options));
    notes = other.notes;
    for (const QString& sizes : options.values(options.sizes)) {
        for (Step& step : other.steps) {
            for (Layer& layer : step.layers) {
                // Without a layer's name all files are meant.
                layer.hasDrillSizes =
                    sizes.contains('=') ? layer.hasDrillSizes : sizes == "drilled";
            }
        }
    }
    return std::make_shared<const Comparison>(
        compareStep(draft, other, comparisonTolerance(options)));
}

int printJson(const DrillPlan& plan, const CheckFindings* findings, bool withPlaces)
{
    QFile file;
    const bool isOpen = file.open(stdout, QFile::WriteOnly);
    writePlanJson(file, plan, findings, withPlaces);
    const bool isWhole = isOpen && file.flush() && file.error() == QFile::NoError;
    return isWhole && fflush(stdout) == 0 ? 0 : fail("the output can't be written");
}

/** What is printed of a plan, unless it is JSON. */
QString printed(const Options& options, const DrillPlan& plan,
    const std::optional<CheckFindings>& findings, const QStringList& left,
    const QStringList& written)
{
    if (options.isSet(options.csv)) {
        return (plan.comparison ? comparisonCsv(*plan.comparison, plan.units)
                                : planCsvHeader(plan.units) + planCsvRows(plan, plan.units))
            + (findings ? '\n' + findingsCsv(plan, *findings) : QString());
    }
    const QString found = findings ? '\n' + findingsText(plan, *findings) : QString();
    const QStringList compared = plan.comparison
        ? comparisonLines(*plan.comparison, plan.units, Tongue::English)
        : QStringList();
    if (!options.printsTable()) {
        return linesText(written) + linesText(compared) + found;
    }
    QString text = QStringLiteral("%1, step %2, model %3\n\n")
                       .arg(plan.board->job, plan.boardStep().name, printable(plan.model.name))
        + planText(plan);
    for (const QStringList& lines : {left, compared}) {
        text += lines.isEmpty() ? QString() : '\n' + linesText(lines);
    }
    return text + found;
}

} // namespace

void warn(const QString& message)
{
    fprintf(stderr, "%s\n", printable(message).toUtf8().constData());
}

void complain(const QString& message)
{
    for (const QString& line : message.split('\n')) {
        warn(QStringLiteral("brox-workbench: ") + line);
    }
}

int fail(const QString& message)
{
    complain(message);
    return 1;
}

int printPlan(const Options& options, HostSession& session, Board board, const ShopRules& rules)
{
    openCalculator(session);
    const DrillDraft draft = draftOf(options, std::move(board), rules);
    MergedPlan merged = planOf(options, session, draft);
    QStringList otherNotes;
    merged.plan.comparison = askedComparison(options, draft, otherNotes);
    const DrillPlan& plan = merged.plan;
    const auto findings =
        options.isSet(options.check) ? std::optional(checkPlan(plan)) : std::nullopt;
    const QStringList refusals = objections(options, plan, findings ? findings->hardCount() : 0)
        + needlessLimit(options, merged);
    const QStringList written = refusals.isEmpty() ? writeFiles(options, plan) : QStringList();
    QStringList left = leftOut(plan);
    if (options.wantsFewestTools()) {
        left << QStringLiteral("%1 %2 instead of %3")
                    .arg(plan.toolCount())
                    .arg(plan.toolCount() == 1 ? "tool" : "tools")
                    .arg(plan.toolsBefore());
    }
    const int status = options.isSet(options.json)
        ? printJson(plan, findings ? &*findings : nullptr, options.isSet(options.places))
        : print(printed(options, plan, findings, left, written));
    QStringList notes;
    if (!options.printsTable() && !options.isSet(options.json)) {
        notes = left;
    }
    if (findings && options.isSet(options.csv)) {
        notes += findingsNotes(*findings);
    }
    notes += notesOf(draft) + otherNotes;
    for (const QString& note : notes) {
        warn(note);
    }
    const bool differs = plan.comparison && plan.comparison->differs();
    return std::max({status, statusOf(plan, refusals, {}), differs ? differStatus : 0});
}

int printBoards(const Options& options, HostSession& session, const ShopRules& rules)
{
    openCalculator(session);
    std::optional<Units> units;
    bool hasFailed = false;
    bool isStrict = false;
    for (const QString& name : readList(options.value(options.boards))) {
        try {
            const DrillDraft draft =
                draftOf(options, readOrder({name}, readOptions(options)), rules);
            const DrillPlan plan = planOf(options, session, draft).plan;
            QString text;
            if (!units) {
                units = plan.units;
                text = planCsvHeader(*units, "Board");
            }
            if (print(text + planCsvRows(plan, *units, name)) != 0) {
                return 1;
            }
            for (const QString& line : leftOut(plan) + notesOf(draft)) {
                warn(named(name, line));
            }
            const int status = statusOf(plan, objections(options, plan, 0), name);
            isStrict = isStrict || status == strictStatus;
            hasFailed = hasFailed || status == 1;
        } catch (const std::exception& error) {
            complain(named(name, QString::fromUtf8(error.what())));
            hasFailed = true;
        }
    }
    return hasFailed ? 1 : isStrict ? strictStatus : 0;
}

int printModels(HostSession& session)
{
    openCalculator(session);
    QString text;
    for (const QString& model : session.models(0)) {
        text += printable(model) + '\n';
    }
    return print(text);
}

int exchangeBits(const Options& options, const QString& dataDir)
{
    if (options.isSet(options.importBits)) {
        const DrillBits bits = readBits(options.value(options.importBits));
        replaceBits(dataDir, bits);
        for (const QString& doubt : doubtsAbout(bits)) {
            warn(doubt);
        }
        return 0;
    }
    const QByteArray csv = bitsToCsv(savedBits(dataDir));
    const QString path = options.value(options.exportBits);
    if (path == "-") {
        return print(QString::fromUtf8(csv));
    }
    const QString error = writeFile(path, csv);
    return error.isEmpty() ? 0 : fail(QStringLiteral("%1: %2").arg(path, error));
}

} // namespace brox
