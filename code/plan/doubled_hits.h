// SPDX-License-Identifier: MIT
#ifndef DOUBLED_HITS_H
#define DOUBLED_HITS_H

#include "board.h"

namespace brox {

/** Hits of a tool at places that it has been to: files have them, and drills break by them. */

/** Two hits are at one place if their centres are no further apart. */
constexpr Size samePlace = sizePerMicron;

inline bool isSamePlace(Place a, Place b)
{
    const qint64 dx = qint64(a.x) - b.x;
    const qint64 dy = qint64(a.y) - b.y;
    return dx * dx + dy * dy <= qint64(samePlace) * samePlace;
}

/** Takes holes away that are at the place of another; if there are any, the order changes.
 *
 * @return how many
 */
qint64 dropDoubled(std::vector<Place>& places);

/** Takes slots away that lie exactly on another, either way round; the others keep their order. */
qint64 dropDoubled(std::vector<const Path*>& slotPaths);

} // namespace brox

#endif
