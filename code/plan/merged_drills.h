// SPDX-License-Identifier: MIT
#ifndef MERGED_DRILLS_H
#define MERGED_DRILLS_H

#include "drill_plan.h"

namespace brox {

/** A drill bit of the table. */
struct TableBit
{
    Size size = 0;
    QString designation;
};

/** Lets the rows of each program share as few bits as their tolerances allow; of the sets of that
 *  number the one that is nearest to what the formula gives.
 *
 * Rows without a bit in range keep what they have, and press-fit rows too, unless asked for.
 * What changes is flagged.
 *
 * @param bits    those that may be used, by rising size, no two alike
 * @param drills  one for each row of the draft
 * @return rows of which no two of one program can share a tool, as many as it has tools: the reason
 *         why there are no fewer
 */
std::vector<size_t> mergeDrills(const DrillDraft& draft, const std::vector<TableBit>& bits,
    bool withPressFit, std::vector<Drill>& drills);

} // namespace brox

#endif
