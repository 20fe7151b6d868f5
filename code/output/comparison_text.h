// SPDX-License-Identifier: MIT
#ifndef COMPARISON_TEXT_H
#define COMPARISON_TEXT_H

#include "comparison.h"

#include <QJsonObject>

namespace brox {

class LongLists;

/** What a comparison comes to, in words. Sizes and places are in mils or microns. */

enum class Tongue
{
    English, ///< for other programs
    User ///< the language of the program
};

/** Texts of a difference as tables have them. */
struct DifferenceTexts
{
    QString kind; ///< "added" and so on
    QString layer; ///< of the board, or of the other one for what is added; empty: the whole
    QString tool; ///< number in its file; empty: there is none
    QString detail;
};

DifferenceTexts differenceTexts(
    const Comparison& comparison, const BoardDifference& difference, Units units, Tongue tongue);

/** What was found out before all differences, a line each: copies, move, guesses. */
QStringList comparisonNotes(const Comparison& comparison, Units units, Tongue tongue);

/** "no difference: 120 holes, 3 slots"; empty if there are some. */
QString sameText(const Comparison& comparison, Tongue tongue);

/** All of it: what is compared, notes, and a line for each difference. */
QStringList comparisonLines(const Comparison& comparison, Units units, Tongue tongue);

/** One line: "factor 10", "differences: 3 (added, moved)", or that there is none. */
QString comparisonSummary(const Comparison& comparison, Tongue tongue);

/** Finding,Layer,Tool,Count,X,Y,Detail: nothing but the header if all is the same. */
QString comparisonCsv(const Comparison& comparison, Units units);

/** The member "comparison" of what --json prints.
 *
 * @param lists  takes all places; null: only the first ones are there
 */
QJsonObject comparisonJson(const Comparison& comparison, Units units, LongLists* lists);

} // namespace brox

#endif
