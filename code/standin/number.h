// SPDX-License-Identifier: MIT
#ifndef STANDIN_NUMBER_H
#define STANDIN_NUMBER_H

#include <charconv>
#include <string>

namespace brox {

/** Host sizes to one mil (units 0) or one micron (any other units). */
inline double sizesPerUnit(int units)
{
    return units == 0 ? 10160.0 : 400.0;
}

/** A number with at most so many decimals, without trailing zeros or an exponent. */
inline std::string decimalText(double number, int decimals)
{
    char buffer[512]; // the longest double has 309 digits before the point
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::fixed, decimals);
    std::string text(buffer, end.ptr);
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') {
            text.pop_back();
        }
    }
    return text == "-0" ? "0" : text;
}

} // namespace brox

#endif
