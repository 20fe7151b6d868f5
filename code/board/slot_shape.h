// SPDX-License-Identifier: MIT
#ifndef SLOT_SHAPE_H
#define SLOT_SHAPE_H

#include "board.h"

namespace brox {

/** A slot of one width: what a round tool cuts on its way. */
struct SlotShape
{
    Size width = 0;
    Path middle; ///< the way of the tool's middle; a point for a round hole
};

/** Recognises a straight slot by its outline, wherever it lies and however it is turned: two half
 *  circles, exact or of many short lines, and the lines between them; or a circle.
 *
 * @return null for every other path, such as one with corners or one that is not closed
 */
std::optional<SlotShape> recogniseSlot(const Path& outline);

/** The slot that an oval about the origin is: along x if it is wider than high, else along y. One
 *  that is as wide as high is a round hole. Both sizes are not negative. */
SlotShape ovalSlot(Size width, Size height);

} // namespace brox

#endif
