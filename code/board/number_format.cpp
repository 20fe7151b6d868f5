// SPDX-License-Identifier: MIT
#include "number_format.h"

#include "board_text.h"

#include <algorithm>
#include <charconv>
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

std::optional<double> toNumber(std::string_view text)
{
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    double value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value, std::chars_format::fixed);
    const bool ok = error == std::errc() && stop == end && std::isfinite(value);
    return ok ? std::optional(value) : std::nullopt;
}

QString shown(std::string_view text)
{
    QString told = QString::fromUtf8(text.data(), qMin<qsizetype>(qsizetype(text.size()), 40));
    for (QChar& letter : told) {
        letter = letter.isPrint() ? letter : QChar('?');
    }
    return '"' + told + '"';
}

template <class Value>
void NumberReader::Told<Value>::tell(const std::optional<Value>& other, Origin by)
{
    if (!other || by < origin) {
        return;
    }
    isDoubtful = isDoubtful || (value && *value != *other && origin >= Origin::Comment);
    value = other;
    origin = by;
}

NumberReader::NumberReader(std::string_view sample)
    : mSample(takeSample(sample))
{ }

NumberReader::Sample NumberReader::takeSample(std::string_view text)
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
        // Comments and the distances of repeats say nothing of the places.
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
        sample.shortest = sample.longest == 0 ? digits : std::min(sample.shortest, digits);
        sample.longest = std::max(sample.longest, digits);
        sample.hasLeadingZeros = sample.hasLeadingZeros || (text[start] == '0' && !isZero);
    }
    return sample;
}

void NumberReader::tell(const NumberFormat& format, Origin origin)
{
    mUnits.tell(format.units, origin);
    if (format.digits && origin != Origin::User) {
        mTold = format.digits;
    }
    if (!mChosen) {
        mDigits.tell(format.digits, origin);
        mZeros.tell(format.zeros, origin);
    }
}

void NumberReader::choose(const NumberFormat& format, Origin origin)
{
    mChosen = true;
    mDigits = {format.digits, origin, false};
    if (format.zeros) {
        mZeros = {format.zeros, origin, false};
    }
}

std::optional<Units> NumberReader::units() const
{
    return mUnits.origin == Origin::Guess ? std::nullopt : mUnits.value;
}

/** Guesses what nobody has specified. */
void NumberReader::settle()
{
    mSettled = true;
    const bool sameLength = mSample.shortest == mSample.longest;
    if (!mZeros.value) {
        mZeros.value = mSample.hasLeadingZeros && !sameLength ? Zeros::Leading : Zeros::Trailing;
    }
    mUnits.value = mUnits.value.value_or(Units::Inch);
    if (!mDigits.value) {
        Digits digits = *mUnits.value == Units::Inch ? Digits{2, 4} : Digits{3, 3};
        // Longer numbers have more decimals; no board is wider than the digits before them.
        if (mSample.longest == 7) {
            ++digits.after;
        } else if (mSample.longest > 7) {
            // Who says that leading zeros are kept writes as many digits before as after it.
            digits.before += mZeros.isGuess() ? 1 : 2;
            digits.after = int(std::min<size_t>(mSample.longest, 10)) - digits.before;
        }
        mDigits.value = digits;
    }
}

std::optional<double> NumberReader::read(std::string_view number)
{
    bool isNegative = false;
    if (!number.empty() && (number[0] == '+' || number[0] == '-')) {
        isNegative = number[0] == '-';
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
        const auto [before, after] = *mDigits.value;
        decimals = *mZeros.value == Zeros::Leading ? int(digits) - before : after;
        const bool isFull = int(digits) == before + after;
        mLongest = value != 0 ? std::max(mLongest, digits) : mLongest;
        mDigitsNeeded = mDigitsNeeded || value != 0;
        mGuessUsed =
            mGuessUsed || (value != 0 && (mDigits.isGuess() || (mZeros.isGuess() && !isFull)));
    }
    mUnitsGuessed = mUnitsGuessed || (value != 0 && mUnits.origin == Origin::Guess);
    const double size = double(value) * sizeOf(*mUnits.value) / powerOfTen(decimals);
    return isNegative ? -size : size;
}

QString NumberReader::guess() const
{
    if (!mGuessUsed && !mUnitsGuessed) {
        return {};
    }
    const QString zeros = *mZeros.value == Zeros::Leading ? BoardText::tr("trailing zeros left out")
                                                          : BoardText::tr("leading zeros left out");
    const QString digits =
        QStringLiteral("%1:%2, %3").arg(mDigits.value->before).arg(mDigits.value->after).arg(zeros);
    const QString unit =
        *mUnits.value == Units::Inch ? BoardText::tr("inches, ") : BoardText::tr("millimetres, ");
    return mUnitsGuessed ? unit + digits : digits;
}

} // namespace brox
