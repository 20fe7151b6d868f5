// SPDX-License-Identifier: MIT
#ifndef DRILL_TABLE_H
#define DRILL_TABLE_H

#include "drill_plan.h"
#include "findings.h"

class QIODevice;

namespace brox {

/** A plan as the command line prints it. */

/** Columns side by side, numbers to the right. */
QString planText(const DrillPlan& plan);

/** Names of the columns as comma-separated values.
 *
 * @param units   in which the sizes are shown
 * @param before  a column that comes before the plan's; empty: none
 */
QString planCsvHeader(Units units, const QString& before = {});

/** Rows as comma-separated values.
 *
 * @param before  what stands in the column before; null: there is no such column
 */
QString planCsvRows(const DrillPlan& plan, Units units, const QString& before = {});

/** Findings as the command line prints them, in English. */

/** The findings, the accepted ones, and what could not be checked. */
QString findingsText(const DrillPlan& plan, const CheckFindings& findings);

/** Findings as comma-separated values with the names of the columns; accepted ones as another
 *  such table behind a blank line, with reason and day. */
QString findingsCsv(const DrillPlan& plan, const CheckFindings& findings);

/** Lines on what could not be checked, what serves nothing and the like. */
QStringList findingsNotes(const CheckFindings& findings);

/** Writes all of a plan as JSON; the members are described in the page on file formats.
 *
 * @param findings    null: those members are missing
 * @param withPlaces  also where the holes and slots are
 * @throws PanelError
 */
void writePlanJson(QIODevice& file, const DrillPlan& plan, const CheckFindings* findings = nullptr,
    bool withPlaces = false);

} // namespace brox

#endif
