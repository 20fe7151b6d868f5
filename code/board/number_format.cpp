// SPDX-License-Identifier: MIT
#include "number_format.h"

#include "reading.h"

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

QString textOf(const NumberFormat& format)
{
    QStringList parts;
    if (format.units) {
        parts << (format.units == Units::Inch ? BoardText::tr("inches")
                                              : BoardText::tr("millimetres"));
    }
    if (format.digits) {
        parts << QStringLiteral("%1:%2").arg(format.digits->before).arg(format.digits->after);
    }
    if (format.zeros) {
        parts << (format.zeros == Zeros::Leading ? BoardText::tr("trailing zeros left out")
                                                 : BoardText::tr("leading zeros left out"));
    }
    return parts.join(QStringLiteral(", "));
}

double unitOf(const QString& name)
{
    const QString unit = name.toUpper();
    if (unit.startsWith(QLatin1String("MM")) || unit.startsWith(QLatin1String("MILLIM"))) {
        return sizePerMillimetre;
    }
    if (unit.startsWith(QLatin1String("MIC"))) {
        return sizePerMicron;
    }
    return unit.startsWith(QLatin1String("IN")) ? sizePerInch : sizePerMil;
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
    return textOf({mUnitsGuessed ? mUnits.value : std::nullopt, mDigits.value, mZeros.value});
}

namespace {

// Natural logarithms of how likely something is; the figures are estimates, tried on real boards.
constexpr double impossible = -100;
constexpr double clear = 0.8; ///< by how much the first must be likelier than the second
constexpr double habit = 2.5;

/** How far a size is from the usual one, by its ratio. */
double unlikeliness(double size, double usual, double spread)
{
    const double distance = std::log(size / usual) / spread;
    return -distance * distance / 2;
}

/** No board is 4 mm or 1.6 m wide. */
double weightOfExtent(double extent, qint64 holes)
{
    constexpr double least = 4.5 * sizePerMillimetre;
    constexpr double usual = 80.0 * sizePerMillimetre;
    constexpr double most = 1500.0 * sizePerMillimetre;
    if (extent > most) {
        return impossible;
    }
    if (holes <= 2) { // which may lie close together on any board
        return extent > usual ? unlikeliness(extent, usual, 0.9) : 0;
    }
    return extent < least ? impossible / 2 : unlikeliness(extent, usual, 0.9);
}

/** Boards lie where they were drawn, which is not far from the origin. */
double weightOfReach(double reach)
{
    constexpr double usual = 600.0 * sizePerMillimetre;
    return reach > usual ? std::max(-8.0, unlikeliness(reach, usual, 0.3)) : 0;
}

/** Holes lie at least their diameter apart; few of them may lie far apart. */
double weightOfSpacing(double spacing, qint64 holes)
{
    constexpr double usual = 3.5;
    if (spacing <= 0 || (spacing > usual && holes < 30)) {
        return 0;
    }
    return std::max(-8.0, unlikeliness(spacing, usual, spacing < usual ? 0.8 : 1.2));
}

double weightOfDigits(const FormatChoice& choice, const FormatEvidence& evidence)
{
    const Digits& digits = *choice.format.digits;
    const bool inch = choice.format.units == Units::Inch;
    double weight = 0;
    if (choice.format.zeros == Zeros::Leading) {
        weight = digits.before == (inch ? 2 : 3) ? 0
            : digits.before == (inch ? 3 : 4)    ? -1.5
                                                 : -2.5;
    } else {
        const int usual = inch ? 4 : 3;
        const double weights[] = {0, -1, -2.5, -4};
        weight = weights[std::min(std::abs(digits.after - usual), 3)];
        weight += digits.after < usual ? -0.5 : 0;
        weight += !inch && digits.after == 5 ? 0.5 : 0;
    }
    return weight + (digits.after == evidence.usualDecimals ? habit : 0);
}

} // namespace

QString FormatChoice::text() const
{
    return QStringLiteral("%1:%2 (%3 x %4 mm)")
        .arg(format.digits->before)
        .arg(format.digits->after)
        .arg(width / sizePerMillimetre, 0, 'g', 4)
        .arg(height / sizePerMillimetre, 0, 'g', 4);
}

double usualSpacing(const Layer& layer)
{
    constexpr size_t fewest = 8;
    constexpr size_t most = 20000;
    constexpr size_t neighbours = 300; ///< to both sides
    struct Hole
    {
        Place at;
        Size size;
    };
    std::vector<Hole> holes;
    for (const Tool& tool : layer.tools) {
        for (const Place& at : tool.holes) {
            if (tool.finishedSize > 0 && holes.size() < most) {
                holes.push_back({at, tool.finishedSize});
            }
        }
    }
    if (holes.size() < fewest) {
        return 0;
    }
    std::ranges::sort(holes, {}, &Hole::at);
    std::vector<double> spacings;
    for (size_t i = 0; i < holes.size(); ++i) {
        double nearest = 0; // squared
        const size_t end = std::min(holes.size(), i + neighbours);
        for (size_t other = i - std::min(i, neighbours); other < end; ++other) {
            const double dx = double(holes[i].at.x) - holes[other].at.x;
            const double dy = double(holes[i].at.y) - holes[other].at.y;
            const double distance = dx * dx + dy * dy;
            // A hole at the same place is the same one, drilled again.
            if (distance > 0 && (nearest == 0 || distance < nearest)) {
                nearest = distance;
            }
        }
        if (nearest > 0) {
            spacings.push_back(std::sqrt(nearest) / holes[i].size);
        }
    }
    if (spacings.size() < fewest) {
        return 0;
    }
    const auto middle = spacings.begin() + qsizetype(spacings.size() / 2);
    std::nth_element(spacings.begin(), middle, spacings.end());
    return *middle;
}

std::vector<FormatChoice> weighFormats(const NumberFormat& read, const FormatEvidence& evidence)
{
    const bool isLeading = read.zeros == Zeros::Leading;
    const bool inch = read.units == Units::Inch;
    const int before = inch ? 2 : 3; // if trailing zeros are written, it only shows
    std::vector<FormatChoice> choices;
    for (int digits = isLeading ? 1 : 2; digits <= (isLeading ? 5 : 6); ++digits) {
        FormatChoice choice{read, 0, 0, 0};
        const int longest = int(evidence.longest);
        choice.format.digits = isLeading ? Digits{digits, std::max(inch ? 4 : 3, longest - digits)}
                                         : Digits{std::max(before, longest - digits), digits};
        const double scale =
            std::pow(10, isLeading ? digits - read.digits->before : read.digits->after - digits);
        choice.width = evidence.width * scale;
        choice.height = evidence.height * scale;
        choice.weight = weightOfExtent(choice.extent(), evidence.holes)
            + weightOfReach(evidence.reach * scale)
            + weightOfSpacing(evidence.spacing * scale, evidence.holes)
            + weightOfDigits(choice, evidence);
        choices.push_back(choice);
    }
    return choices;
}

void sortFormats(std::vector<std::vector<FormatChoice>>& files, double told)
{
    if (files.empty()) {
        return;
    }
    std::vector<double> weights(files.front().size());
    for (const std::vector<FormatChoice>& choices : files) {
        for (size_t i = 0; i < weights.size(); ++i) {
            const double extent = choices[i].extent();
            weights[i] += choices[i].weight;
            if (told > 0 && extent > 0) {
                weights[i] += std::max(-6.0, unlikeliness(extent, told, 0.7));
            }
        }
    }
    for (std::vector<FormatChoice>& choices : files) {
        for (size_t i = 0; i < weights.size(); ++i) {
            choices[i].weight = weights[i];
        }
        std::stable_sort(choices.begin(), choices.end(),
            [](const FormatChoice& a, const FormatChoice& b) { return a.weight > b.weight; });
    }
}

bool isDoubtful(const std::vector<FormatChoice>& choices)
{
    return choices.size() > 1 && choices[0].weight - choices[1].weight < clear;
}

} // namespace brox
