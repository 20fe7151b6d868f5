// SPDX-License-Identifier: MIT
#ifndef BROX_SIZE_H
#define BROX_SIZE_H

#include <algorithm>
#include <cmath>
#include <limits>

/** A number of host size units as a size, its fraction cut off.
 *
 * What is no number is 0, and what no size can hold is the nearest size there is: such a value
 * stands out in a table, which a wrapped one might not.
 */
inline int sizeFrom(double units)
{
    if (std::isnan(units)) {
        return 0;
    }
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return int(std::clamp(units, lowest, highest));
}

#endif
