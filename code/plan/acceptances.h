// SPDX-License-Identifier: MIT
#ifndef ACCEPTANCES_H
#define ACCEPTANCES_H

#include "findings.h"

namespace brox {

/** CheckFindings that a shop accepts: lines of a file, each an id, a reason and the last day on
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
