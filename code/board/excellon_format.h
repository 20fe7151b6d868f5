// SPDX-License-Identifier: MIT
#ifndef EXCELLON_FORMAT_H
#define EXCELLON_FORMAT_H

#include "board.h"

#include <string_view>

namespace brox {

/** How the places of an Excellon file are written: units, digits and zeros.
 *
 * What the file tells is set; what it does not tell is guessed from a sample of it when the first
 * number needs it, and then told by guess().
 */
class ExcellonFormat
{
public:
    enum class Zeros
    {
        Unknown,
        LeadingKept, ///< LZ: trailing zeros are missing
        TrailingKept, ///< TZ: leading zeros are missing
        AllKept
    };

    /** @param sample  the beginning of the file, as far as it is known beforehand */
    explicit ExcellonFormat(std::string_view sample);

    void setUnits(Units units) { mUnits = units; }

    /** For a file that tells none. */
    void setFallbackUnits(std::optional<Units> units) { mFallbackUnits = units; }

    /** What a guess may go by. */
    void setLikelyUnits(Units units) { mLikelyUnits = units; }

    /** Told by the file or by the fallback, never guessed. */
    std::optional<Units> units() const { return mUnits ? mUnits : mFallbackUnits; }

    /** What is told twice and differently is a guess, too. */
    void setDigits(int before, int after);
    void setZeros(Zeros zeros);

    /** A number of a place in host size units, without a limit.
     *
     * @return null for a text that is no number or has more digits than any place
     */
    std::optional<qint64> read(std::string_view number);

    /** What had to be guessed for the numbers read so far, such as "2:4, leading zeros left out";
     *  empty if all was told. */
    QString guess() const;

private:
    struct Sample
    {
        size_t shortest = 0; ///< digits of a number; 0: there is none without a point
        size_t longest = 0;
        bool leadingZeros = false;
        bool empty() const { return longest == 0; }
    };

    static Sample takeSample(std::string_view text);
    void settle();
    bool isInch() const { return units().value_or(mLikelyUnits) == Units::Inch; }

    Sample mSample;
    std::optional<Units> mUnits;
    std::optional<Units> mFallbackUnits;
    Units mLikelyUnits = Units::Inch;
    int mBefore = 0; ///< digits before the point; 0 and 0 after it: not known
    int mAfter = 0;
    Zeros mZeros = Zeros::Unknown;
    bool mSettled = false;
    bool mDigitsGuessed = false;
    bool mZerosGuessed = false;
    bool mGuessUsed = false;
    bool mUnitsGuessed = false;
};

} // namespace brox

#endif
