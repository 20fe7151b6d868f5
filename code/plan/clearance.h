// SPDX-License-Identifier: MIT
#ifndef CLEARANCE_H
#define CLEARANCE_H

#include "board.h"

#include <functional>

namespace brox {

/** Which drilled areas of a step come near to each other. All in host size units. */

/** What the drill of a row takes away: circles about holes, and the ways of a cutter. */
struct DrilledRow
{
    const std::vector<Place>* holes = nullptr; ///< not null
    const std::vector<Path>* slotPaths = nullptr; ///< not null
    Size drillSize = 0;
    size_t tool = 0; ///< the same for rows that one tool of one program drills
    int firstLayer = 0; ///< of copper; areas meet where the stretches between the layers overlap
    int lastLayer = 1;
};

/** Two holes or slots that are nearer to each other than a limit. */
struct NearPair
{
    size_t rows[2] = {};
    Place places[2]; ///< the centre of a hole, the start of a slot
    double gap = 0; ///< from edge to edge; below 0 they overlap
    bool areConcentric = false; ///< holes at one place
};

struct NearResult
{
    qint64 doubledHits = 0; ///< hits at places that their tool has been to
    bool isComplete = true; ///< no: broken off, since there are too many pairs
};

/** Finds all pairs of holes and slots whose gap is below a limit. Hits of one tool at one place
 *  count as one, and hits of a slot's tool on the middle of the slot as part of it.
 *
 * @param limit  0: only pairs that overlap
 * @param visit  gets each pair once, that of the lower row, then of the lower place first; breaks
 *               the search off by giving false
 */
NearResult findNear(const std::vector<DrilledRow>& rows, double limit,
    const std::function<bool(const NearPair&)>& visit);

} // namespace brox

#endif
