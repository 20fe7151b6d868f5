// SPDX-License-Identifier: MIT
#include "commands.h"

#include "board_reader.h"
#include "data_file.h"
#include "data_start.h"
#include "default_data.h"
#include "drill_table.h"
#include "language.h"
#include "main_window.h"
#include "options.h"

#include <QApplication>
#include <QFileInfo>
#include <QStandardPaths>
#include <cstdio>

namespace {

void warn(const QString& message)
{
    fprintf(stderr, "%s\n", message.toUtf8().constData());
}

int print(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
    return fflush(stdout) == 0 ? 0 : fail("the output can't be written");
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

/** The chosen step with the chosen units and model. */
size_t setUpStep(const Options& options, HostSession& session)
{
    const size_t step = chosenStep(options, session.board());
    if (options.isSet(options.units)) {
        session.setUnits(
            step, options.value(options.units) == "inch" ? Units::Inch : Units::Metric);
    }
    if (options.isSet(options.model)) {
        session.selectModel(step, options.value(options.model));
    }
    return step;
}

QString leftOutText(const Step& step)
{
    QString text;
    if (step.slotsLeftOut > 0) {
        text += QStringLiteral("slots left out: %1 (no one tool drills a slot)\n")
                    .arg(step.slotsLeftOut);
    }
    if (step.holesLeftOut > 0) {
        text += QStringLiteral("holes left out: %1 (on layers that are not drilled)\n")
                    .arg(step.holesLeftOut);
    }
    return text;
}

int printTable(const Options& options, HostSession& session)
{
    const size_t index = setUpStep(options, session);
    const Step& step = session.board().steps[index];
    const QString model = session.selectedModel(index);
    if (model.isEmpty()) {
        return fail("no drill tool model is selected; the models file may be empty or unreadable");
    }
    const DrillTable table(session, index, model);
    const QString leftOut = leftOutText(step);
    int status = 0;
    if (options.isSet(options.csv)) {
        status = print(table.toCsv());
        fputs(leftOut.toUtf8().constData(), stderr);
    } else {
        status = print(QStringLiteral("%1, step %2, model %3\n\n%4%5%6")
                           .arg(session.board().job, step.name, model, table.toText(),
                               leftOut.isEmpty() ? "" : "\n", leftOut));
    }
    if (table.toolsWithoutDrill() > 0) {
        return fail(QStringLiteral("%1 tools have no drill size by model \"%2\" and its formula")
                        .arg(table.toolsWithoutDrill())
                        .arg(model));
    }
    return status;
}

int printModels(HostSession& session)
{
    if (session.board().steps.empty()) {
        Board board; // models are those of any step
        board.steps.emplace_back().name = QStringLiteral("models");
        session.setBoard(std::move(board));
    }
    QString text;
    for (const QString& model : session.models(session.board().mainStep)) {
        text += model + '\n';
    }
    return print(text);
}

int showWindow(const Options& options, HostSession& session, const QStringList& paths)
{
    DataStart start(session.dataDir());
    if (!start.lock()) {
        return 0;
    }
    MainWindow window(session);
    window.remember();
    window.show();
    start.repair();
    if (paths.isEmpty()) {
        window.reopenLastBoard();
    } else {
        // A box tells what is wrong: who starts it from the desktop sees nothing else. Units are
        // set before there is a viewer: it takes a change for an edit.
        window.guard([&] { window.openBoard(paths, [&] { return setUpStep(options, session); }); });
    }
    return QApplication::exec();
}

int takeScreenshot(const Options& options, HostSession& session, const QStringList& paths)
{
    MainWindow window(session);
    if (!paths.isEmpty()) {
        window.openBoard(paths, [&] { return setUpStep(options, session); });
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
    const QString error = createDefaultData(dataDir);
    if (!error.isEmpty()) {
        throw HostError(error);
    }
    if (isNew && options.isSet(options.data)) {
        warn(QStringLiteral("made the data folder %1").arg(dataDir));
    }
    const QString complaints = DataFile::complaints(dataDir);
    if (!options.wantsWindow() && !complaints.isEmpty()) {
        throw HostError(complaints);
    }
}

} // namespace

int run(const Options& options)
{
    const QStringList paths = options.parser.positionalArguments();
    const bool wantsTable = options.isSet(options.table) || options.isSet(options.csv);
    if (wantsTable && paths.isEmpty()) {
        return fail("a board file is needed");
    }
    const QString units = options.value(options.units);
    if (options.isSet(options.units) && units != "inch" && units != "metric") {
        return fail(QStringLiteral("no units \"%1\"; there are: inch, metric").arg(units));
    }

    const QString dataDir = options.isSet(options.data)
        ? options.value(options.data)
        : QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    if (dataDir.isEmpty()) {
        return fail("the name of the data folder is empty");
    }
    const bool wantsModels = options.isSet(options.models);
    Board board;
    if ((wantsTable || wantsModels) && !paths.isEmpty()) {
        board = readBoard(paths);
    }
    prepareData(options, dataDir);
    // What is printed is for scripts too, and always English.
    const bool prints = wantsTable || wantsModels;
    const QString language = options.isSet(options.language) ? options.value(options.language)
        : prints                                             ? QString()
                                                             : systemLanguage();
    HostSession session(dataDir, language);
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
            fail(text);
        }
    });
    session.setBoard(std::move(board));
    return wantsModels ? printModels(session) : printTable(options, session);
}

int fail(const QString& message)
{
    warn(message);
    return 1;
}
