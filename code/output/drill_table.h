// SPDX-License-Identifier: MIT
#ifndef DRILL_TABLE_H
#define DRILL_TABLE_H

#include "drill_plan.h"

#include <QJsonObject>

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

/** All of a plan; the members are described in the page on file formats.
 *
 * @param withPlaces  also where the holes and slots are
 * @throws PanelError
 */
QJsonObject planJson(const DrillPlan& plan, bool withPlaces = false);

} // namespace brox

#endif
