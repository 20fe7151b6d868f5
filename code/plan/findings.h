// SPDX-License-Identifier: MIT
#ifndef FINDINGS_H
#define FINDINGS_H

#include "drill_plan.h"

#include <QDate>

namespace brox {

/** What the checks of a plan have found; the words are those of the tables. */

enum class Check
{
    SamePlace, ///< "same-place": hits of different tools with one centre
    Overlap, ///< "overlap": drilled areas overlap
    TooNear, ///< "too-near": hole to hole
    Outside, ///< "outside": not within the outline
    Edge, ///< "edge": hole to outline
    TooLarge, ///< "too-large": the drill
    ShortSlot, ///< "short-slot": a slot for its width
    Aspect, ///< "aspect": depth to drill size
    Window, ///< "window": the range of the tolerance
    Closing, ///< "closing": the drill is smaller than the plated hole that it is for
    Count, ///< "count": a comment specifies another number of hits
    Scale ///< "scale": a file's units or digits are others than those of the rest
};

constexpr Check lastCheck = Check::Scale;

/** "same-place" and so on. */
QString checkWord(Check check);

/** What a check looks for, one line in the language of the program. */
QString checkText(Check check);

/** Whether what it finds must not be drilled. */
bool isHard(Check check);

struct CheckFinding
{
    Check check = Check::SamePlace;
    size_t layer = 0; ///< index in PlannedStep::layers, that of the first place
    std::vector<size_t> rows; ///< indices in DrillPlan::rows, by place; none: a whole layer
    std::vector<Place> places;
    double measured = 0; ///< host size units, a ratio, or a number of hits
    double limit = 0; ///< likewise
    QString id; ///< of check, tools and places, whatever was measured
};

/** Whether what a check measures are sizes. */
bool measuresSizes(Check check);

/** A check that could not be made, at least not for all rows. */
struct SkippedCheck
{
    Check check = Check::SamePlace;
    QString reason; ///< in the language of the program
};

struct AcceptedFinding
{
    CheckFinding finding;
    QString reason;
    QDate until;
};

struct CheckFindings
{
    std::vector<CheckFinding> list; ///< by check, layer and place
    std::vector<AcceptedFinding> accepted;
    std::vector<SkippedCheck> skipped; ///< at most one for each check
    QStringList notes; ///< what was not listed, acceptances that serve nothing, and such
    qint64 doubledHits = 0; ///< of a tool at places that it has been to; they are not drilled

    qsizetype hardCount() const;
};

/** What a finding measured, or its limit, as tables have it. */
QString measureText(Check check, double value, Units units);

/** The tools of a finding as their numbers in the programs, those of other layers than the first
 *  with their layer: "1 3", "2 NPTH/1". */
QString findingTools(const DrillPlan& plan, const CheckFinding& finding);

/** Findings that a shop accepts: lines of a file, each an id, a reason and the last day on
 * which it holds, between them blanks, commas or semicolons. Lines that begin with # are comments.
 *
 *     too-near-3f2a9c01d2; the customer knows, mail of 3 May; 2026-12-31
 */
class Acceptances
{
public:
    Acceptances() = default;

    /** @throws RulesError  "file:line: what" */
    static Acceptances load(const QString& path);

    /** Moves what is accepted to the findings' accepted ones, and notes what has expired and what
     *  serves no finding. */
    void apply(CheckFindings& findings, QDate today) const;

private:
    struct Line
    {
        QString id;
        QString reason;
        QDate until;
    };

    static Line parsed(const QString& line);

    std::vector<Line> mLines;
};

} // namespace brox

#endif
