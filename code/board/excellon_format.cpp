// SPDX-License-Identifier: MIT
#include "excellon_format.h"

#include "board_text.h"

#include <algorithm>
#include <cmath>

namespace brox {

namespace {

constexpr size_t maxDigits = 15; ///< that a double holds exactly

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

double powerOfTen(int exponent)
{
    static constexpr double powers[] = {
        1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    return exponent < 0 ? 1 / powers[-exponent] : powers[exponent];
}

} // namespace

ExcellonFormat::ExcellonFormat(std::string_view sample)
    : mSample(takeSample(sample))
{ }

/** Looks at the absolute numbers of X and Y that have no point. */
ExcellonFormat::Sample ExcellonFormat::takeSample(std::string_view text)
{
    Sample sample;
    bool atLineStart = true;
    bool skip = false;
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '\n' || c == '\r') {
            atLineStart = true;
            skip = false;
            continue;
        }
        // Comments and the distances of repeats tell nothing of the places.
        skip = skip || c == ';' || (atLineStart && (c == 'R' || c == 'T' || c == '('));
        atLineStart = false;
        if (skip || (c != 'X' && c != 'Y')) {
            continue;
        }
        size_t at = i + 1;
        at += at < text.size() && (text[at] == '+' || text[at] == '-');
        const size_t start = at;
        while (at < text.size() && isDigit(text[at])) {
            ++at;
        }
        const size_t digits = at - start;
        const bool isWhole = at < text.size() && text[at] != '.';
        if (digits == 0 || !isWhole) {
            continue;
        }
        const bool isZero = text.substr(start, digits).find_first_not_of('0') == text.npos;
        if (isZero && digits == 1) {
            continue;
        }
        sample.shortest = sample.empty() ? digits : std::min(sample.shortest, digits);
        sample.longest = std::max(sample.longest, digits);
        sample.leadingZeros = sample.leadingZeros || (text[start] == '0' && !isZero);
    }
    return sample;
}

void ExcellonFormat::setDigits(int before, int after)
{
    const bool isKnown = mBefore != 0 || mAfter != 0;
    mDigitsGuessed = mDigitsGuessed || (isKnown && (mBefore != before || mAfter != after));
    mBefore = before;
    mAfter = after;
}

void ExcellonFormat::setZeros(Zeros zeros)
{
    mZerosGuessed = mZerosGuessed || (mZeros != Zeros::Unknown && mZeros != zeros);
    mZeros = zeros;
}

/** Guesses what nothing has told. */
void ExcellonFormat::settle()
{
    mSettled = true;
    const bool sameLength = mSample.shortest == mSample.longest;
    if (mZeros == Zeros::Unknown) {
        mZeros = mSample.leadingZeros && !sameLength ? Zeros::LeadingKept : Zeros::TrailingKept;
        mZerosGuessed = true;
    }
    if (mBefore == 0 && mAfter == 0) {
        mBefore = isInch() ? 2 : 3;
        mAfter = isInch() ? 4 : 3;
        // Longer numbers have more decimals; no board is wider than the digits before them.
        if (mSample.longest == 7) {
            ++mAfter;
        } else if (mSample.longest > 7) {
            // Who tells that leading zeros are kept writes as many digits before as after it.
            mBefore += mZerosGuessed ? 1 : 2;
            mAfter = int(std::min<size_t>(mSample.longest, 10)) - mBefore;
        }
        mDigitsGuessed = true;
    }
}

std::optional<qint64> ExcellonFormat::read(std::string_view number)
{
    bool negative = false;
    if (!number.empty() && (number[0] == '+' || number[0] == '-')) {
        negative = number[0] == '-';
        number.remove_prefix(1);
    }
    qint64 value = 0;
    size_t digits = 0;
    int decimals = -1; // no point yet
    for (const char c : number) {
        if (c == '.' && decimals < 0) {
            decimals = 0;
        } else if (isDigit(c) && digits < maxDigits) {
            value = value * 10 + (c - '0');
            ++digits;
            decimals += decimals >= 0;
        } else {
            return std::nullopt;
        }
    }
    if (digits == 0) {
        return std::nullopt;
    }
    if (!mSettled) {
        settle();
    }
    if (decimals < 0) {
        decimals = mZeros == Zeros::LeadingKept ? int(digits) - mBefore : mAfter;
        const bool isFull = int(digits) == mBefore + mAfter;
        mGuessUsed = mGuessUsed || (value != 0 && (mDigitsGuessed || (mZerosGuessed && !isFull)));
    }
    mUnitsGuessed = mUnitsGuessed || (!units() && value != 0);
    const double unit = isInch() ? sizePerInch : sizePerMillimetre;
    const double size = double(value) * unit / powerOfTen(decimals);
    if (size > 9e18) {
        return std::nullopt; // no board, and nothing that an integer holds
    }
    return std::llround(negative ? -size : size);
}

QString ExcellonFormat::guess() const
{
    if (!mGuessUsed && !mUnitsGuessed) {
        return {};
    }
    const QString zeros = mZeros == Zeros::LeadingKept ? BoardText::tr("trailing zeros left out")
                                                       : BoardText::tr("leading zeros left out");
    const QString digits = QStringLiteral("%1:%2, %3").arg(mBefore).arg(mAfter).arg(zeros);
    const QString unit =
        mLikelyUnits == Units::Inch ? BoardText::tr("inches, ") : BoardText::tr("millimetres, ");
    return mUnitsGuessed ? unit + digits : digits;
}

} // namespace brox
