// SPDX-License-Identifier: MIT
#ifndef COPIES_H
#define COPIES_H

#include "compared_board.h"

namespace brox {

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
