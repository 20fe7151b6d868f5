// SPDX-License-Identifier: MIT
#ifndef FEWEST_BITS_H
#define FEWEST_BITS_H

#include "board.h"

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

} // namespace brox

#endif
