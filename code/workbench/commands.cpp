// SPDX-License-Identifier: MIT
#include "commands.h"

#include "board_reader.h"
#include "data_file.h"
#include "data_start.h"
#include "default_data.h"
#include "language.h"
#include "main_window.h"
#include "options.h"
#include "printing.h"

#include <QApplication>
#include <QFileInfo>
#include <QStandardPaths>

namespace brox {

namespace {

/** The shop's rules with the changes of this run. */
ShopRules shopRules(const Options& options, const QString& dataDir)
{
    ShopRules rules = ShopRules::load(dataDir);
    const auto change = [&options](const QCommandLineOption& option, const auto& apply) {
        for (const QString& value : options.parser.values(option)) {
            try {
                apply(value);
            } catch (const RulesError& error) {
                throw RulesError(QStringLiteral("--%1: %2")
                                     .arg(option.names().first(), QString::fromUtf8(error.what())));
            }
        }
    };
    change(options.tolerance, [&](const QString& value) { rules.changeTolerances(value); });
    change(options.viasUpTo, [&](const QString& value) { rules.changeViasUpTo(value); });
    return rules;
}

/** The chosen step with the chosen units and model. */
size_t setUpStep(const Options& options, HostSession& session, const Board& board)
{
    const size_t step = chosenStep(options, board);
    if (options.isSet(options.units)) {
        session.setUnits(step, unitsOf(options, options.units));
    }
    if (options.isSet(options.model)) {
        session.selectModel(step, options.value(options.model));
    }
    return step;
}

int showWindow(const Options& options, HostSession& session, const QStringList& paths)
{
    DataStart start(session.dataDir());
    if (!start.lock()) {
        return 0;
    }
    MainWindow window(session);
    window.setReadOptions(readOptions(options));
    window.remember();
    window.show();
    start.repair();
    window.guard([&] {
        window.lockRules(true); // until it is known that their file is whole
        window.setRules(shopRules(options, session.dataDir()));
        window.lockRules(false);
    });
    if (paths.isEmpty()) {
        window.reopenLastBoard();
    } else {
        // A box tells what is wrong: who starts it from the desktop sees nothing else. Units are
        // set before there is a viewer: it takes a change for an edit.
        window.guard([&] {
            window.openBoard(
                paths, [&] { return setUpStep(options, session, *window.job().board); });
        });
    }
    return QApplication::exec();
}

int takeScreenshot(const Options& options, HostSession& session, const QStringList& paths)
{
    MainWindow window(session);
    window.setRules(shopRules(options, session.dataDir()));
    window.setReadOptions(readOptions(options));
    if (!paths.isEmpty()) {
        window.openBoard(paths, [&] { return setUpStep(options, session, *window.job().board); });
    }
    window.show();
    QApplication::processEvents();
    const QString image = options.value(options.screenshot);
    return window.grab().save(image, "PNG") ? 0 : fail(image + ": the image can't be written");
}

/** Makes the data folder ready. A window tells of broken files itself. */
void prepareData(const Options& options, const QString& dataDir)
{
    const bool isNew = !QFileInfo::exists(dataDir);
    QStringList missing;
    for (const DataFile::Kind kind : DataFile::kinds) {
        const QString path = DataFile(dataDir, kind).path();
        if (!QFileInfo::exists(path)) {
            missing << path;
        }
    }
    const QString error = createDefaultData(dataDir);
    if (!error.isEmpty()) {
        throw HostError(error);
    }
    if (isNew && options.isSet(options.data)) {
        warn(QStringLiteral("made the data folder %1").arg(dataDir));
    }
    // A shop that lost its models should not take those to start with for its own.
    if (missing.size() == 1) {
        warn(QStringLiteral("%1 was missing and holds what a new one does").arg(missing[0]));
    }
    const QString complaints = DataFile::complaints(dataDir);
    if (!options.wantsWindow() && !complaints.isEmpty()) {
        throw HostError(complaints);
    }
}

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

/** The reason why options don't go together; empty: they do. */
QString contradiction(const Options& options)
{
    const bool hasBoards = options.isSet(options.boards);
    const QStringList paths = options.parser.positionalArguments();
    if (hasBoards && (!options.isSet(options.csv) || !paths.isEmpty())) {
        return QStringLiteral("--boards goes with --csv, and instead of a board");
    }
    if (hasBoards && options.writesFiles()) {
        return QStringLiteral("--boards writes no files");
    }
    if (options.wantsPlan() && !hasBoards && paths.isEmpty()) {
        return QStringLiteral("a board file is needed");
    }
    if (options.isSet(options.strict) && !options.wantsPlan()) {
        return QStringLiteral("--strict needs --table, --csv, --json or files to write");
    }
    if (options.isSet(options.places) && !options.isSet(options.json)) {
        return QStringLiteral("--places goes with --json");
    }
    QStringList ways = given(options,
        {&options.table, &options.csv, &options.json, &options.models, &options.screenshot});
    if (options.isSet(options.models) || options.isSet(options.screenshot)) {
        ways += given(options, {&options.drillPrograms, &options.report, &options.map});
    }
    return ways.size() > 1 ? QStringLiteral("%1 does not go with %2").arg(ways[0], ways[1])
                           : QString();
}

/** What is named by nothing; empty: all names are names. */
QString emptyName(const Options& options, const QString& dataDir)
{
    if (dataDir.isEmpty()) {
        return QStringLiteral("the name of the data folder is empty");
    }
    if (options.isSet(options.drillPrograms) && options.value(options.drillPrograms).isEmpty()) {
        return QStringLiteral("the name of the folder of drill programs is empty");
    }
    return options.parser.positionalArguments().contains(QString())
        ? QStringLiteral("the name of a board is empty")
        : QString();
}

} // namespace

int run(const Options& options)
{
    if (const QString reason = contradiction(options); !reason.isEmpty()) {
        return fail(reason);
    }
    if (options.isSet(options.units)) {
        unitsOf(options, options.units); // before anything is read or made
    }
    const QStringList paths = options.parser.positionalArguments();
    const QString dataDir = options.isSet(options.data)
        ? options.value(options.data)
        : QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    if (const QString reason = emptyName(options, dataDir); !reason.isEmpty()) {
        return fail(reason);
    }
    // What is printed is for scripts too, and always English.
    const bool prints = options.wantsPlan() || options.isSet(options.models);
    Board board;
    if (prints && !paths.isEmpty()) {
        board = readBoard(paths, readOptions(options));
    }
    prepareData(options, dataDir);
    const QString language = options.isSet(options.language) ? options.value(options.language)
        : prints                                             ? QString()
                                                             : systemLanguage();
    HostSession session(dataDir, moduleCatalogue(language));
    if (!prints) {
        speak(language);
    }
    if (options.wantsWindow()) {
        return showWindow(options, session, paths);
    }
    if (!prints) {
        return takeScreenshot(options, session, paths);
    }
    QObject::connect(&session, &HostSession::logged, [](const QString& level, const QString& text) {
        if (level == "ERROR") {
            warn(text);
        }
    });
    const ShopRules rules = shopRules(options, dataDir);
    openCalculator(session);
    if (options.isSet(options.models)) {
        return printModels(session);
    }
    return options.isSet(options.boards)
        ? printBoards(options, session, rules)
        : printPlan(options, session, Job(std::move(board), rules));
}

} // namespace brox
