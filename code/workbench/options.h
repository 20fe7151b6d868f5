// SPDX-License-Identifier: MIT
#ifndef OPTIONS_H
#define OPTIONS_H

#include <QCommandLineParser>

/** What the user asks for on the command line. */
struct Options
{
    Options();

    bool isSet(const QCommandLineOption& option) const { return parser.isSet(option); }
    QString value(const QCommandLineOption& option) const { return parser.value(option); }

    /** Whether a window is to stay on the screen. */
    bool wantsWindow() const
    {
        return !isSet(table) && !isSet(csv) && !isSet(models) && !isSet(screenshot) && !isSet(help)
            && !isSet(version);
    }

    QCommandLineOption table{"table", "Print the drill tools with their drill sizes."};
    QCommandLineOption csv{"csv", "The same as comma-separated values."};
    QCommandLineOption models{"models", "List the drill tool models."};
    QCommandLineOption step{"step", "Take this step instead of the main one.", "name"};
    QCommandLineOption model{"model", "Select this model in the viewer.", "name"};
    QCommandLineOption units{"units", "Units of the step: inch or metric.", "units"};
    QCommandLineOption data{"data", "Folder of models and bits; filled if empty.", "folder"};
    QCommandLineOption language{
        "language", "Language of the window: de or en; else the system's.", "language"};
    QCommandLineOption screenshot{"screenshot", "Write the window to a PNG file and end.", "file"};
    QCommandLineParser parser;
    QCommandLineOption help = parser.addHelpOption();
    QCommandLineOption version = parser.addVersionOption();
};

#endif
