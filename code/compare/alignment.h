// SPDX-License-Identifier: MIT
#ifndef ALIGNMENT_H
#define ALIGNMENT_H

#include "compared_board.h"

namespace brox {

/** How a board lies on another one: once, or again and again. */

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

/** Finds a board again and again on a panel: turned by quarters and mirrored too.
 *
 * A copy may lack one hole in ten. Copies do not overlap.
 *
 * @return where the copies lie; empty if these are less than two, or if they are not all: what the
 *         panel has besides comes to half a board or more
 */
std::vector<Placement> findCopies(
    const ComparedBoard& board, const ComparedBoard& panel, Size within);

/** Which places of a panel lie beside its copies: outside of what their holes take, and not at the
 *  same place of each copy. One for each place. */
std::vector<bool> liesBeside(const std::vector<Place>& places, const ComparedBoard& board,
    const std::vector<Placement>& copies, Size within);

} // namespace brox

#endif
