// SPDX-License-Identifier: MIT
#include "commands.h"
#include "options.h"

#include <QApplication>
#include <QDir>
#include <unistd.h>

using namespace brox;

int main(int argc, char** argv)
{
    QCoreApplication::setOrganizationName("brox");
    QCoreApplication::setApplicationName("brox-workbench");
    QCoreApplication::setApplicationVersion(WORKBENCH_VERSION);
    QGuiApplication::setDesktopFileName("brox-workbench"); // for the icon of its windows

    Options options;
    options.parser.parse(Options::parsable(QStringList(argv, argv + argc)));
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
    options.parser.process(Options::parsable(QApplication::arguments()));
    if (noWindows && options.wantsWindow()) {
        return fail("no display to open a window on; --table and --csv need none");
    }
    try {
        return run(options);
    } catch (const std::bad_alloc&) {
        return fail(QStringLiteral("%1: it takes more memory than there is")
                        .arg(options.parser.positionalArguments().join(QStringLiteral(", "))));
    } catch (const std::exception& error) {
        return fail(QString::fromUtf8(error.what()));
    }
}
