// SPDX-License-Identifier: MIT
#ifndef SLOT_SHAPE_H
#define SLOT_SHAPE_H

#include "board.h"

namespace brox {

/** An outline that is a slot of one width: what a round tool makes on a straight way. */
struct SlotShape
{
    Size width = 0;
    Path middle; ///< a line; a point for a round hole
};

/** Recognises a slot by its outline: two half circles, exact or of many short lines, and the lines
 *  between them.
 *
 * @param outline  closed
 * @return null for every other shape, such as one with corners
 */
std::optional<SlotShape> recogniseSlot(const Path& outline);

/** The middle of an oval about a place, that lies along x before it is turned. */
SlotShape ovalSlot(Size width, Size height);

} // namespace brox

#endif
