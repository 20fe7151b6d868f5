// SPDX-License-Identifier: MIT
#ifndef OPTIONS_H
#define OPTIONS_H

#include "drill_draft.h"
#include "reading.h"

#include <QCommandLineParser>

namespace brox {

/** What the user asks for on the command line. */
struct Options : QCommandLineParser
{
    Options();

    /** Arguments as the parser takes them, for which an option has a value always or never. */
    static QStringList parsable(QStringList arguments);

    /** Whether a window is to stay on the screen. */
    bool wantsWindow() const
    {
        return !wantsPlan() && !isSet(models) && !exchangesBits() && !isSet(screenshot)
            && !isSet(help) && !isSet(version);
    }

    /** Whether drill sizes are to be calculated and printed. */
    bool wantsPlan() const
    {
        return isSet(table) || isSet(csv) || isSet(json) || isSet(check) || isSet(compare)
            || writesFiles();
    }

    /** Whether the table is printed in columns. */
    bool printsTable() const
    {
        return isSet(table) || (isSet(check) && !isSet(csv) && !isSet(json) && !writesFiles());
    }

    /** Whether rows are to share tools. */
    bool wantsFewestTools() const
    {
        return isSet(fewestTools) || isSet(fewestToolsAll) || isSet(toolsAtMost);
    }

    bool exchangesBits() const { return isSet(importBits) || isSet(exportBits); }

    bool writesFiles() const { return isSet(drillPrograms) || isSet(report) || isSet(map); }

    QCommandLineOption table{"table", "Print the drill tools with their drill sizes."};
    QCommandLineOption csv{"csv", "The same as comma-separated values."};
    QCommandLineOption json{"json", "All of it as JSON."};
    QCommandLineOption places{"places", "With --json: where the holes and slots are."};
    QCommandLineOption drillPrograms{
        "drill-programs", "Write a drill program for each layer and plating.", "folder"};
    QCommandLineOption report{"report", "Write a report: .html or .pdf.", "file"};
    QCommandLineOption map{"map", "Write a drill map: .svg, .pdf or .png.", "file"};
    QCommandLineOption check{"check", "Print what a shop should look at before it drills."};
    QCommandLineOption accept{
        "accept", "With --check: ids of findings that are accepted, why and until when.", "file"};
    QCommandLineOption thickness{
        "thickness", "With --check: thickness of the board (mm), whatever it specifies.", "size"};
    QCommandLineOption fewestTools{"fewest-tools",
        "Let holes share bits within their tolerances; with =all those of press-fit too."};
    QCommandLineOption fewestToolsAll{"fewest-tools-all"};
    QCommandLineOption toolsAtMost{"tools-at-most",
        "The same, and end with status 2 if a program needs more tools.", "number"};
    QCommandLineOption compare{"compare",
        "Print what differs in another board, file, archive or folder; status 3 if it does.",
        "other"};
    QCommandLineOption compareWithin{"compare-within",
        "With --compare: tolerance of places (mm), 0.01 if it is not given.", "distance"};
    QCommandLineOption strict{"strict",
        "End with status 2, and write no file, if a tool has no size, no bit that fits or doubtful "
        "digits, or if a check finds what must not be drilled."};
    QCommandLineOption boards{
        "boards", "With --csv: all boards of a list, a name a line; - reads it.", "list"};
    QCommandLineOption models{"models", "List the drill tool models."};
    QCommandLineOption step{"step", "Take this step instead of the main one.", "name"};
    QCommandLineOption model{"model", "Select this model in the viewer.", "name"};
    QCommandLineOption units{"units", "Units of the step: inch or metric.", "units"};
    QCommandLineOption fileUnits{
        "file-units", "Units of drill files that specify none: inch or metric.", "units"};
    QCommandLineOption digits{"digits",
        "Digits of drill files that specify none, such as 2:5, or 2:5,leading or 2:5,trailing for "
        "the zeros that are kept.",
        "digits"};
    QCommandLineOption sizes{"sizes",
        "What the sizes of files are, whatever they say: drilled or finished, or such as "
        "LAYER=drilled.",
        "rule"};
    QCommandLineOption tolerance{"tolerance",
        "Tolerance where the board specifies none: none, or such as plated=-0.05/+0.10 (mm).",
        "rule"};
    QCommandLineOption viasUpTo{"vias-up-to",
        "Plated holes up to this size (mm) are vias where the board has none.", "size"};
    QCommandLineOption type{"type",
        "Type of a tool of the board, such as LAYER:T3=press-fit or LAYER:0.8mm=via; repeatable.",
        "choice"};
    QCommandLineOption importBits{"import-bits",
        "Replace the bits by a list (.csv) or by ready:starter, ready:metric or ready:inch.",
        "list"};
    QCommandLineOption exportBits{
        "export-bits", "Write the bits as comma-separated values; - for standard output.", "file"};
    QCommandLineOption data{"data", "Folder of models and bits; filled if empty.", "folder"};
    QCommandLineOption language{
        "language", "Language of the window: de or en; else the system's.", "language"};
    QCommandLineOption screenshot{"screenshot", "Write the window to a PNG file and end.", "file"};
    QCommandLineOption help = addHelpOption();
    QCommandLineOption version = addVersionOption();
};

/** The reason why options don't go together; empty: they do. */
QString contradiction(const Options& options);

/** The value of an option that takes units.
 *
 * @throws HostError  for another word than inch and metric
 */
Units unitsOf(const Options& options, const QCommandLineOption& option);

/** The number that is asked for, or any.
 *
 * @throws HostError
 */
int toolsAtMost(const Options& options);

/** How boards are to be read.
 *
 * @throws HostError
 */
ReadOptions readOptions(const Options& options);

/** The index of the step asked for; the main one if there is none.
 *
 * @throws HostError
 */
size_t chosenStep(const Options& options, const Board& board);

/** The rules in a data folder with the changes of this run.
 *
 * @throws RulesError
 */
ShopRules shopRules(const Options& options, const QString& dataDir);

/** Takes over what the options say of a board: types, sizes, thickness, acceptances.
 *
 * @throws RulesError
 */
void applyChoices(const Options& options, Job& job);

/** How far apart places may be that count as the same.
 *
 * @throws HostError
 */
Size comparisonTolerance(const Options& options);

} // namespace brox

#endif
