// SPDX-License-Identifier: MIT
#ifndef SWEEP_H
#define SWEEP_H

#include "board.h"

namespace brox {

/** The order in which a machine visits places with little travel: up one strip of the board and
 *  down the next, or across, or as they are given, whichever is shortest. Strips are so wide that
 *  a few places lie side by side. The same places in the same order always give the same.
 *
 * @return indices of the places
 */
std::vector<std::uint32_t> sweepOrder(const std::vector<Place>& places);

} // namespace brox

#endif
