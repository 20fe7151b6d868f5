// SPDX-License-Identifier: MIT
#ifndef DRILL_PROGRAM_H
#define DRILL_PROGRAM_H

#include "drill_plan.h"
#include "reading.h"

namespace brox {

class FileSet;

/** Drill programs for a machine, in the exchange subset of Excellon: absolute coordinates with a
 *  point, metric with 4 decimals and inch with 5, so that no place moves by more than 0.13 micron.
 *  Sizes are drill sizes. The same plan always gives the same bytes. */

/** Most tools in a program; their numbers have two digits. */
constexpr size_t programToolLimit = 99;

/** "JOB-STEP-LAYER-plated.drl" or "-nonplated.drl" of each of a plan's programs.
 *
 * Characters that a file system minds are replaced. No two names are the same, also where capital
 * and small letters are.
 */
QStringList programNames(const DrillPlan& plan);

/** A program's text.
 *
 * @param places    of the plan's rows
 * @param progress  receives how many hits of how many are written
 * @throws BoardCancelled
 */
QByteArray programText(const DrillPlan& plan, const Program& program,
    const std::vector<RowPlaces>& places, const Progress& progress = {});

/** Adds all programs of a plan to the files that are to be written.
 *
 * @param progress  receives how many hits of how many are written
 * @throws OutputError  naming what can't be drilled by a program: a tool without a size, too many
 *                      tools, nothing at all
 * @throws PanelError, BoardCancelled
 */
void addDrillPrograms(
    const DrillPlan& plan, const QString& folder, FileSet& files, const Progress& progress = {});

/** Programs in a folder that an earlier export of the same board, step and layers has left and the
 *  plan has no more: their paths. Who drills by them drills too much. */
QStringList stalePrograms(const DrillPlan& plan, const QString& folder);

} // namespace brox

#endif
