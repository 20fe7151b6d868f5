// SPDX-License-Identifier: MIT
#ifndef FEWEST_TOOLS_H
#define FEWEST_TOOLS_H

#include "drill_plan.h"

namespace brox {

/** What a row asks of its bit: any size from low to high, the nearer to the result the better.
 *  Host size units; low <= result <= high. */
struct BitNeed
{
    qint64 result = 0; ///< what the formula gives
    qint64 low = 0;
    qint64 high = 0;
    qint64 hits = 0;
};

struct FewestBits
{
    std::vector<size_t> bits; ///< of each need: index of its bit

    /** As many needs as there are different bits, no two of which could share one: the reason why
     *  there are no fewer. Indices, by rising size. */
    std::vector<size_t> apart;
};

/** The smallest set of bits that has one for each need; of the sets of that number the one with
 *  the least sum of hits times distance from the result. Of two bits that are equally near, a need
 *  gets the smaller one.
 *
 * @param sizes  of the bits, rising, no two alike; each need has one in its range
 */
FewestBits fewestBits(const std::vector<BitNeed>& needs, const std::vector<Size>& sizes);

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
