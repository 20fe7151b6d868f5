// SPDX-License-Identifier: MIT
#ifndef FINDING_TABLE_H
#define FINDING_TABLE_H

#include "findings.h"

#include <QJsonObject>

namespace brox {

/** CheckFindings as the command line prints them, in English. */

/** The findings, the accepted ones, and what could not be checked. */
QString findingsText(const DrillPlan& plan, const CheckFindings& findings);

/** CheckFindings as comma-separated values with the names of the columns; accepted ones as another
 *  such table behind a blank line, with reason and day. */
QString findingsCsv(const DrillPlan& plan, const CheckFindings& findings);

/** Lines on what could not be checked, what serves nothing and the like. */
QStringList findingsNotes(const CheckFindings& findings);

/** Adds the members that tell of findings. */
void addFindings(QJsonObject& json, const DrillPlan& plan, const CheckFindings& findings);

} // namespace brox

#endif
