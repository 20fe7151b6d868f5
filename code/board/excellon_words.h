// SPDX-License-Identifier: MIT
#ifndef EXCELLON_WORDS_H
#define EXCELLON_WORDS_H

#include "excellon_program.h"

#include <QVarLengthArray>
#include <algorithm>

namespace brox {

/** A line of a drill program, taken apart. */

/** A part of a line as messages show it. */
QString shown(std::string_view text);

/** Also one with a plus, which std::from_chars refuses. */
std::optional<double> toNumber(std::string_view text);

/** The commands of one line, without the order that they stand in. */
struct ExcellonProgram::Words
{
    QVarLengthArray<int, 8> preparations; ///< numbers of G
    QVarLengthArray<int, 8> miscellaneous; ///< numbers of M
    std::optional<int> tool;
    std::optional<std::string_view> diameter;
    std::optional<qint64> x; ///< the first place of the line
    std::optional<qint64> y;
    std::optional<qint64> x2; ///< the one behind G84, G85 and G87
    std::optional<qint64> y2;
    std::optional<qint64> i;
    std::optional<qint64> j;
    std::optional<qint64> radius;
    int repeats = 0; ///< 0: no repeat
    bool repeatIsLast = false; ///< it stands behind a place
    int canned = 0; ///< number of the cycle: 84, 85, 87, 32, 33
    bool hasPlace = false; ///< coordinates that mean something yet

    bool has(int code) const
    {
        return std::find(preparations.begin(), preparations.end(), code) != preparations.end();
    }
    bool hasCode(int code) const
    {
        return std::find(miscellaneous.begin(), miscellaneous.end(), code) != miscellaneous.end();
    }
};

} // namespace brox

#endif
