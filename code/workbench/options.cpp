// SPDX-License-Identifier: MIT
#include "options.h"

#include "comparison.h"
#include "data_file.h"
#include "drill_draft.h"
#include "findings.h"
#include "host_session.h"
#include "language.h"

#include <QRegularExpression>

#include <limits>

namespace brox {

namespace {

/** Those of some options that are given, as the user writes them. */
QStringList given(const Options& options, std::initializer_list<const QCommandLineOption*> some)
{
    QStringList names;
    for (const QCommandLineOption* option : some) {
        if (options.isSet(*option)) {
            names << "--" + option->names().first();
        }
    }
    return names;
}

/** The first of those that take one value but are given several; empty if there is none. */
QString givenTwice(const Options& options)
{
    for (const QCommandLineOption* option :
        {&options.drillPrograms, &options.report, &options.map, &options.accept, &options.thickness,
            &options.compareWithin, &options.toolsAtMost, &options.boards, &options.step,
            &options.model, &options.units, &options.fileUnits, &options.digits, &options.viasUpTo,
            &options.importBits, &options.exportBits, &options.screenshot}) {
        if (options.values(*option).size() > 1) {
            return "--" + option->names().first();
        }
    }
    return {};
}

/** Such as "2:5" or "2:5,trailing". */
NumberFormat digitsOf(const QString& text)
{
    static const QRegularExpression pattern(
        QStringLiteral("^(\\d):(\\d)(?:,(leading|trailing))?$"));
    const auto match = pattern.match(text);
    const Digits digits{match.captured(1).toInt(), match.captured(2).toInt()};
    if (!match.hasMatch() || digits == Digits{}) {
        throw HostError(
            QStringLiteral("no digits \"%1\"; such as: 2:5, 2:5,leading, 2:5,trailing").arg(text));
    }
    NumberFormat format{{}, digits, {}};
    if (match.hasCaptured(3)) {
        format.zeros = match.captured(3) == "leading" ? Zeros::Leading : Zeros::Trailing;
    }
    return format;
}

/** Takes each value of an option; what is wrong with one names the option. */
template <typename Apply>
void take(const Options& options, const QCommandLineOption& option, const Apply& apply)
{
    for (const QString& value : options.values(option)) {
        try {
            apply(value);
        } catch (const RulesError& error) {
            throw RulesError(
                QStringLiteral("--%1: %2").arg(option.names().first(), error.message()));
        }
    }
}

} // namespace

Options::Options()
{
    setApplicationDescription(
        "Opens a board and sets up its drill tools, or prints their drill sizes.");
    addPositionalArgument("board",
        "An IPC-2581 file; or all drill files of a board, Excellon (XNC) or Gerber, each a layer "
        "then; or an archive or a folder of them; or - for the standard input.",
        "[board...]");
    fewestToolsAll.setFlags(QCommandLineOption::HiddenFromHelp);
    addOptions({table, csv, json, places, drillPrograms, report, map, check, accept, thickness,
        compare, compareWithin, fewestTools, fewestToolsAll, toolsAtMost, strict, boards, models,
        step, model, units, fileUnits, digits, sizes, tolerance, viasUpTo, type, importBits,
        exportBits, data, language, screenshot});
}

QStringList Options::parsable(QStringList arguments)
{
    for (QString& argument : arguments) {
        if (argument == "--") {
            break;
        }
        if (argument == "--fewest-tools=all") {
            argument = "--fewest-tools-all";
        }
    }
    return arguments;
}

QString contradiction(const Options& options)
{
    const auto has = [&](const QCommandLineOption& option) { return options.isSet(option); };
    const auto isEmpty = [&](const QCommandLineOption& option) {
        return has(option) && options.value(option).isEmpty();
    };
    const QStringList paths = options.positionalArguments();
    const bool hasBoards = has(options.boards);
    const QString twice = givenTwice(options);
    const QString ofCheck = given(options, {&options.accept, &options.thickness}).value(0);
    const std::pair<bool, QString> faults[] = {
        {hasBoards && (!has(options.csv) || !paths.isEmpty()),
            "--boards goes with --csv, and instead of a board"},
        {hasBoards && options.writesFiles(), "--boards writes no files"},
        {options.wantsPlan() && !hasBoards && paths.isEmpty(), "a board file is needed"},
        {has(options.strict) && !options.wantsPlan(),
            "--strict needs --table, --csv, --json or files to write"},
        {hasBoards && has(options.type), "--type goes with one board"},
        {hasBoards && (has(options.check) || has(options.toolsAtMost)),
            "--check and --tools-at-most take one board"},
        {!ofCheck.isEmpty() && !has(options.check), ofCheck + " goes with --check"},
        {options.wantsFewestTools() && !options.wantsPlan(),
            "--fewest-tools and --tools-at-most need --table, --csv, --json or files to write"},
        {hasBoards && has(options.compare), "--compare takes one board"},
        {has(options.compareWithin) && !has(options.compare),
            "--compare-within goes with --compare"},
        {has(options.places) && !has(options.json), "--places goes with --json"},
        {!twice.isEmpty(), twice + " is given twice"},
        {options.values(options.compare).contains(QString()),
            "the name of the other board is empty"},
        {isEmpty(options.data), "the name of the data folder is empty"},
        {isEmpty(options.drillPrograms), "the name of the folder of drill programs is empty"},
        {paths.contains(QString()), "the name of a board is empty"}};
    for (const auto& [isFault, text] : faults) {
        if (isFault) {
            return text;
        }
    }
    QStringList ways = given(options,
        {&options.table, &options.csv, &options.json, &options.models, &options.importBits,
            &options.exportBits, &options.screenshot});
    if (has(options.models) || options.exchangesBits() || has(options.screenshot)) {
        ways += given(options,
            {&options.drillPrograms, &options.report, &options.map, &options.check,
                &options.compare});
    }
    return ways.size() > 1 ? QStringLiteral("%1 does not go with %2").arg(ways[0], ways[1])
                           : QString();
}

Units unitsOf(const Options& options, const QCommandLineOption& option)
{
    const QString units = options.value(option);
    if (units != "inch" && units != "metric") {
        throw HostError(QStringLiteral("no units \"%1\"; there are: inch, metric").arg(units));
    }
    return units == "inch" ? Units::Inch : Units::Metric;
}

int toolsAtMost(const Options& options)
{
    if (!options.isSet(options.toolsAtMost)) {
        return std::numeric_limits<int>::max();
    }
    bool isNumber = false;
    const int most = options.value(options.toolsAtMost).toInt(&isNumber);
    if (!isNumber || most < 1) {
        throw HostError(QStringLiteral("no number of tools \"%1\"; there are: 1, 2, 3 ...")
                            .arg(options.value(options.toolsAtMost)));
    }
    return most;
}

ReadOptions readOptions(const Options& options)
{
    ReadOptions reading;
    if (options.isSet(options.fileUnits)) {
        reading.fileFormat.units = unitsOf(options, options.fileUnits);
    }
    if (options.isSet(options.digits)) {
        const NumberFormat given = digitsOf(options.value(options.digits));
        reading.fileFormat.digits = given.digits;
        reading.fileFormat.zeros = given.zeros;
    }
    reading.isStrict = options.isSet(options.strict);
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
    throw HostError(
        HostSession::tr("no step \"%1\"; %2")
            .arg(options.value(options.step), hintFor(options.value(options.step), names)));
}

ShopRules shopRules(const Options& options, const QString& dataDir)
{
    ShopRules rules = loadRules(dataDir);
    take(options, options.tolerance, [&](const QString& value) { rules.changeTolerances(value); });
    take(options, options.viasUpTo, [&](const QString& value) { rules.changeViasUpTo(value); });
    return rules;
}

void applyChoices(const Options& options, Job& job)
{
    take(options, options.type, [&](const QString& value) { chooseType(job, value); });
    take(options, options.sizes, [&](const QString& value) { chooseSizes(job, value); });
    if (options.isSet(options.thickness)) {
        job.thickness = sizeOf(options.value(options.thickness));
    }
    if (options.isSet(options.accept)) {
        job.acceptances =
            std::make_shared<const Acceptances>(Acceptances::load(options.value(options.accept)));
    }
}

Size comparisonTolerance(const Options& options)
{
    if (!options.isSet(options.compareWithin)) {
        return defaultWithin;
    }
    bool isNumber = false;
    const double size =
        options.value(options.compareWithin).toDouble(&isNumber) * sizePerMillimetre;
    if (!isNumber || !(size >= leastWithin && size <= mostWithin)) {
        throw HostError(QStringLiteral("no tolerance of places \"%1\"; it is from 0.001 to 0.5 mm")
                            .arg(options.value(options.compareWithin)));
    }
    return Size(std::lround(size));
}

} // namespace brox
