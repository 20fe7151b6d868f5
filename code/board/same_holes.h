// SPDX-License-Identifier: MIT
#ifndef SAME_HOLES_H
#define SAME_HOLES_H

#include "board.h"

namespace brox {

/** Leaves out what several drill files of an order have in common, so that it is drilled once.
 *
 * Where all holes and slots of one layer are in another one of the same pair of copper layers, the
 * layer that tells more of them keeps them; the smaller one if both tell as much.
 *
 * @return notes for the user
 */
QStringList leaveOutRepeats(std::vector<Layer>& layers);

} // namespace brox

#endif
