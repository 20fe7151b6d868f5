// SPDX-License-Identifier: MIT
#ifndef FORMAT_GUESS_H
#define FORMAT_GUESS_H

#include "number_format.h"

#include <algorithm>

namespace brox {

/** Weighs the ways to read numbers whose digits nobody tells, by the board that each of them makes:
 *  its extent, how close its holes lie, and the habits of the program that wrote it. */

/** What a file comes to if its numbers are read in one of the ways. */
struct FormatEvidence
{
    double width = 0; ///< of all places, in host size units
    double height = 0;
    double reach = 0; ///< of the farthest from the origin, along an axis
    double spacing = 0; ///< from hole to hole in diameters; 0: not known
    qint64 holes = 0; ///< and slots
    size_t longest = 0; ///< digits of the longest number without a point
    int usualDecimals = 0; ///< of the program that wrote it, by other signs; 0: not known
};

/** One of the ways. */
struct FormatChoice
{
    NumberFormat format;
    double width = 0; ///< of all places, in host size units
    double height = 0;
    double weight = 0; ///< natural logarithm of how likely it is, but for a constant

    double extent() const { return std::max(width, height); }

    /** "2:4 (100 x 80 mm)" */
    QString text() const;
};

/** From hole to hole in diameters, where most holes lie; 0 if there are too few of known size. */
double usualSpacing(const Layer& layer);

/** The ways to read a file, by their digits.
 *
 * @param read      as the file has been read; all of it set
 * @param evidence  what the file came to then
 */
std::vector<FormatChoice> weighFormats(const NumberFormat& read, const FormatEvidence& evidence);

/** Sorts the ways to read files that one program wrote alike, the likeliest of all files first.
 *
 * @param files  the ways of each file, by their digits
 * @param told   the larger side of what the board's other files drill, in host size units; 0: none
 */
void sortFormats(std::vector<std::vector<FormatChoice>>& files, double told);

/** Whether another way is nearly as likely as the first. */
bool isDoubtful(const std::vector<FormatChoice>& choices);

} // namespace brox

#endif
