// SPDX-License-Identifier: MIT
#include "commands.h"
#include "data_start.h"
#include "host_session.h"
#include "language.h"
#include "main_window.h"
#include "messages.h"
#include "open_board.h"
#include "options.h"

#include <QApplication>
#include <QDir>
#include <QStandardPaths>
#include <algorithm>
#include <unistd.h>

using namespace brox;

namespace {

/** The chosen step with the chosen units and model. */
size_t setUpStep(const Options& options, HostSession& session, MainWindow& window)
{
    const size_t step = chosenStep(options, *window.job().board);
    window.openJob().change([&](Job& job) { applyChoices(options, job); });
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
    for (const QString& note : start.notes()) {
        emit session.logged("NOTE", note);
    }
    start.repair();
    window.loadRules([&] { return shopRules(options, session.dataDir()); });
    if (paths.isEmpty()) {
        window.reopenLastBoard();
    } else {
        // A box says what is wrong: who starts it from the desktop sees nothing else. Units are
        // set before there is a viewer: it takes a change for an edit.
        attempt(
            [&] { window.openBoard(paths, [&] { return setUpStep(options, session, window); }); });
    }
    return QApplication::exec();
}

int takeScreenshot(const Options& options, HostSession& session, const QStringList& paths)
{
    const ShopRules rules = shopRules(options, session.dataDir());
    MainWindow window(session);
    window.loadRules([&] { return rules; });
    window.setReadOptions(readOptions(options));
    if (!paths.isEmpty()) {
        window.openBoard(paths, [&] { return setUpStep(options, session, window); });
    }
    window.show();
    QApplication::processEvents();
    const QString image = options.value(options.screenshot);
    return window.grab().save(image, "PNG") ? 0 : fail(image + ": the image can't be written");
}

/** Makes the data folder ready. A window reports broken files itself. */
void prepareData(const Options& options, const QString& dataDir)
{
    const bool isNew = !QFileInfo::exists(dataDir);
    QStringList missing;
    for (const DataFile::Kind kind : DataFile::moduleKinds) {
        const QString path = DataFile(dataDir, kind).path();
        if (!QFileInfo::exists(path)) {
            missing << path;
        }
    }
    DataStart::fill(dataDir);
    if (isNew && options.isSet(options.data)) {
        warn(QStringLiteral("made the data folder %1").arg(dataDir));
    }
    // A shop that lost its models should not take those to start with for its own.
    if (missing.size() == 1) {
        warn(QStringLiteral("%1 was missing and now has the defaults").arg(missing[0]));
    }
    const QString complaints = DataFile::complaints(dataDir);
    if (!options.wantsWindow() && !complaints.isEmpty()) {
        throw HostError(complaints);
    }
    if (options.wantsPlan()) {
        const QStringList lost = DataFile::lostAmounts(dataDir);
        std::ranges::for_each(lost, warn);
    }
}

/** Lets the program speak the language that is asked for, or the system's.
 *
 * @return the catalogue of the module's texts
 */
QString chooseLanguage(const Options& options, bool prints)
{
    // What is printed is for scripts too, and English; reports and maps are for people.
    const bool isForPeople = !prints
        || (options.isSet(options.language)
            && (options.isSet(options.report) || options.isSet(options.map)));
    const QString language = options.isSet(options.language) ? options.value(options.language)
        : prints                                             ? QString()
                                                             : systemLanguage();
    const QString catalogue = moduleCatalogue(language);
    speak(isForPeople ? language : QStringLiteral("en")); // English, too, has plural forms
    return catalogue;
}

/** Does what the command line asks for; the exit status. */
int run(const Options& options)
{
    if (const QString reason = contradiction(options); !reason.isEmpty()) {
        return fail(reason);
    }
    if (options.isSet(options.units)) {
        unitsOf(options, options.units); // before anything is read or made
    }
    toolsAtMost(options);
    const QStringList paths = options.positionalArguments();
    const QString dataDir = options.isSet(options.data)
        ? options.value(options.data)
        : QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    const bool prints =
        options.wantsPlan() || options.isSet(options.models) || options.exchangesBits();
    const QString catalogue = chooseLanguage(options, prints);
    Board board;
    if (prints && !paths.isEmpty()) {
        board = readOrder(paths, readOptions(options));
    }
    prepareData(options, dataDir);
    if (options.exchangesBits()) {
        return exchangeBits(options, dataDir);
    }
    HostSession session(dataDir, catalogue);
    if (options.wantsWindow()) {
        return showWindow(options, session, paths);
    }
    if (!prints) {
        return takeScreenshot(options, session, paths);
    }
    QObject::connect(&session, &HostSession::logged, [](const QString& level, const QString& text) {
        if (level == "ERROR") {
            complain(text);
        }
    });
    const ShopRules rules = shopRules(options, dataDir);
    return options.isSet(options.models) ? printModels(session)
        : options.isSet(options.boards)  ? printBoards(options, session, rules)
                                         : printPlan(options, session, std::move(board), rules);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication::setOrganizationName("brox");
    QCoreApplication::setApplicationName("brox-workbench");
    QCoreApplication::setApplicationVersion(WORKBENCH_VERSION);
    QGuiApplication::setDesktopFileName("brox-workbench"); // for the icon of its windows

    Options options;
    options.parse(Options::parsable(QStringList(argv, argv + argc)));
    const bool hasDisplay =
        qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    // Without a display only a window that is to stay is impossible.
    const bool noWindows = !hasDisplay && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
    const bool onlyPrints = !options.wantsWindow() && !options.isSet(options.screenshot);
    if (noWindows || onlyPrints) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR")) {
            // Qt would take the like, and say so on standard error with each board.
            const QString folder =
                QDir::temp().filePath(QStringLiteral("runtime-%1").arg(getuid()));
            qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder));
        }
    }

    QApplication app(argc, argv);
    options.process(Options::parsable(QApplication::arguments()));
    if (noWindows && options.wantsWindow()) {
        return fail("no display to open a window on; --table and --csv need none");
    }
    try {
        return run(options);
    } catch (const std::bad_alloc&) {
        return fail(QStringLiteral("%1: it takes more memory than there is")
                        .arg(options.positionalArguments().join(QStringLiteral(", "))));
    } catch (const std::exception& error) {
        return fail(QString::fromUtf8(error.what()));
    }
}
