// SPDX-License-Identifier: MIT
#ifndef NUMBER_FORMAT_H
#define NUMBER_FORMAT_H

#include "board.h"

#include <algorithm>
#include <string_view>

namespace brox {

/** How the places of a drill file are written: units, digits and zeros, as far as they are
 *  specified, and what is likely otherwise. */

/** Digits of a number without a point, before and after where it would stand. */
struct Digits
{
    int before = 0;
    int after = 0;
    bool operator==(const Digits&) const = default;
};

/** Which zeros of a number without a point are written; the others are left out. */
enum class Zeros
{
    Leading,
    Trailing ///< or all
};

/** Where a format comes from, the weakest first. */
enum class Origin
{
    Guess,
    List, ///< a file beside the drill file
    User, ///< for files that do not specify it
    Comment, ///< of the drill file
    File
};

/** As far as it is specified. */
struct NumberFormat
{
    std::optional<Units> units;
    std::optional<Digits> digits;
    std::optional<Zeros> zeros;
};

/** "inches, 2:4, leading zeros left out", as far as it is specified. */
QString textOf(const NumberFormat& format);

/** A text without a limit, also one with a plus; null for what is no number. */
std::optional<double> toNumber(std::string_view text);

/** A part of a file as messages show it. */
QString shown(std::string_view text);

/** Host sizes to the unit. */
inline double sizeOf(Units units)
{
    return units == Units::Inch ? sizePerInch : sizePerMillimetre;
}

/** Host sizes to a unit by its name, such as "MM", "MILLIMETER" or "inch"; others are mils. */
double unitOf(const QString& name);

/** Reads the numbers of places.
 *
 * What nobody specifies is guessed from a sample of the file when the first number needs it, and
 * then reported by guess().
 */
class NumberReader
{
public:
    /** @param sample  the beginning of the file, as far as it is known beforehand */
    explicit NumberReader(std::string_view sample = {});

    /** Takes what no stronger origin has specified. What a file specifies twice and differently is
     * a guess. */
    void tell(const NumberFormat& format, Origin origin);

    /** Takes digits and zeros that what results has shown to be likely, whatever the file
     * specifies. */
    void choose(const NumberFormat& format, Origin origin);

    /** Told, never guessed. */
    std::optional<Units> units() const;

    /** In host size units, neither rounded nor limited; null for a text that is no number or has
     *  more digits than any place. */
    std::optional<double> read(std::string_view number);

    /** How the numbers are read; all of it is set once there was a number. */
    NumberFormat format() const { return {mUnits.value, mDigits.value, mZeros.value}; }

    /** Whether the numbers read so far depend on what this origin has specified. */
    bool uses(Origin origin) const
    {
        return mUnits.origin == origin
            || (mLongest > 0 && (mDigits.origin == origin || mZeros.origin == origin));
    }

    /** Whether nothing specifies the digits that numbers need, or what does is wrong. */
    bool needsDigits() const { return mLongest > 0 && (mDigits.isGuess() || isContradicted()); }

    /** Told digits that are fewer than those of the numbers. */
    bool isContradicted() const
    {
        return mTold && mLongest > size_t(mTold->before) + size_t(mTold->after);
    }
    const std::optional<Digits>& toldDigits() const { return mTold; }

    /** Digits of the longest number without a point; 0: there is none but 0. */
    size_t longest() const { return mLongest; }

    /** What had to be guessed for the numbers read so far, such as "2:4, leading zeros left out";
     *  empty if all was specified. */
    QString guess() const;

private:
    /** Of the numbers of X and Y that have no point. */
    struct Sample
    {
        size_t shortest = 0; ///< digits; 0: there is no such number
        size_t longest = 0;
        bool hasLeadingZeros = false;
    };
    template <class Value>
    struct Told
    {
        std::optional<Value> value;
        Origin origin = Origin::Guess;
        bool isDoubtful = false; ///< specified twice and differently
        void tell(const std::optional<Value>& other, Origin by);
        bool isGuess() const { return isDoubtful || origin == Origin::Guess; }
    };

    static Sample takeSample(std::string_view text);
    void settle();

    Sample mSample;
    Told<Units> mUnits;
    Told<Digits> mDigits;
    Told<Zeros> mZeros;
    std::optional<Digits> mTold; ///< digits by the file or a file beside it
    size_t mLongest = 0;
    bool mChosen = false;
    bool mSettled = false;
    bool mGuessUsed = false;
    bool mUnitsGuessed = false;
};

/** Weighs the ways to read numbers whose digits nothing specifies, by the board that each of them
 * makes: its extent, how close its holes lie, and the habits of the program that wrote it. */

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
