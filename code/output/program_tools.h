// SPDX-License-Identifier: MIT
#ifndef PROGRAM_TOOLS_H
#define PROGRAM_TOOLS_H

#include "drill_plan.h"

namespace brox {

/** A plan as the drill room sees it: programs with their tools, and where each tool goes. */

/** A drill, or a cutter of slots: the rows of one program that share size and bit. */
struct ProgramTool
{
    int number = 0; ///< from 1; 0: the model gives no size
    std::optional<Size> size;
    QString bit; ///< empty if none was chosen
    std::vector<size_t> rows; ///< indices in DrillPlan::rows
    qint64 holes = 0;
    qint64 slotPaths = 0;

    qint64 hits() const { return holes + slotPaths; }
};

/** What one file drills: all plated, or all non-plated, holes of a layer. */
struct Program
{
    size_t layer = 0; ///< index in DrillPlan::layers
    bool isPlated = true;
    std::vector<ProgramTool> tools; ///< by number; one without a size comes first
};

/** The programs of a plan by layer, plated before non-plated. */
std::vector<Program> programsOf(const DrillPlan& plan);

/** Where the holes of a row, or the middles of its slots, are in the step; repeats included. */
struct RowPlaces
{
    std::vector<Place> holes;
    std::vector<Path> slotPaths;
};

/** Spreads a plan's step: the places of each row.
 *
 * @throws PanelError
 */
std::vector<RowPlaces> placesOf(const DrillPlan& plan);

/** The outlines of the step and of all that it repeats.
 *
 * @throws PanelError
 */
std::vector<Path> outlinesOf(const DrillPlan& plan);

} // namespace brox

#endif
