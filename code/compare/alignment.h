// SPDX-License-Identifier: MIT
#ifndef ALIGNMENT_H
#define ALIGNMENT_H

#include "compared_board.h"

namespace brox {

/** How far a board lies on another one. */
struct Alignment
{
    Place move; ///< of the board
    double share = 0; ///< of the hits, by a sample, that lie on hits of their size then, 0 to 1
};

/** Finds how a board has to be moved to lie on another one.
 *
 * A move is taken only if it at least halves the number of hits that lie on none: a few holes that
 * moved don't move the board.
 *
 * @param index   of the other board's places; its reach is at least the tolerance
 * @param within  tolerance of places
 */
Alignment align(
    const ComparedBoard& board, const ComparedBoard& other, const PlaceIndex& index, Size within);

} // namespace brox

#endif
