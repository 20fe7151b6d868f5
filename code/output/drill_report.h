// SPDX-License-Identifier: MIT
#ifndef DRILL_REPORT_H
#define DRILL_REPORT_H

#include "drill_plan.h"
#include "reading.h"

namespace brox {

class FileSet;

/** Adds a document on a plan to hand on: board and model, table, programs, what is left out, maps.
 *
 * By the path's suffix it is a page of HTML that needs no other file, or a PDF.
 *
 * @param progress  receives how many holes and slots of how many are painted
 * @throws OutputError  also for another suffix
 * @throws PanelError, BoardCancelled
 */
void addDrillReport(
    const DrillPlan& plan, const QString& path, FileSet& files, const Progress& progress = {});

} // namespace brox

#endif
