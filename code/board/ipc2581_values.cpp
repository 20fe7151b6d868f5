// SPDX-License-Identifier: MIT
#include "ipc2581_values.h"

#include "board_text.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace brox {

namespace {

constexpr int maxRepeats = 10000; ///< in one direction of a panel
constexpr double maxSize = std::numeric_limits<Size>::max();

/** A number such as "-12.345", read fast: boards have millions. Its digits and the power of ten
 *  are exact, so that the quotient is what std::from_chars gives.
 *
 * @return null for all others
 */
std::optional<double> readPlain(const char* text)
{
    static constexpr double powers[] = {
        1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const bool isNegative = *text == '-';
    text += isNegative;
    qint64 digits = 0;
    size_t count = 0;
    size_t decimals = 0;
    bool isBehindPoint = false;
    for (; count < std::size(powers); ++text) {
        if (*text >= '0' && *text <= '9') {
            digits = digits * 10 + (*text - '0');
            ++count;
            decimals += isBehindPoint;
        } else if (*text == '.' && !isBehindPoint) {
            isBehindPoint = true;
        } else {
            break;
        }
    }
    if (*text != '\0' || count == 0 || count == std::size(powers)) {
        return std::nullopt;
    }
    const double value = double(digits) / powers[decimals];
    return isNegative ? -value : value;
}

bool isSize(double number)
{
    return std::abs(number) <= maxSize;
}

/** Halves away from 0; std::round is a call. */
Size rounded(double size)
{
    return Size(size + std::copysign(0.5, size));
}

bool readNumber(std::string_view digits, double& value)
{
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value);
    return error == std::errc() && stop == end && std::isfinite(value);
}

} // namespace

void Ipc2581Values::fail(const char* name, const char* text, const QString& what) const
{
    fail(QStringLiteral("%1=\"%2\" %3")
             .arg(QLatin1String(name), QString::fromUtf8(text).left(40), what));
}

double Ipc2581Values::number(const char* text, const char* name) const
{
    if (const auto plain = readPlain(text)) {
        return *plain;
    }
    double value = 0;
    if (readNumber(text, value)) {
        return value;
    }
    const QByteArray trimmed = QByteArrayView(text).trimmed().toByteArray();
    if (!readNumber(trimmed.constData() + trimmed.startsWith('+'), value)) {
        fail(name, text, BoardText::tr("is no number"));
    }
    return value;
}

double Ipc2581Values::numberOr(
    const XmlAttributes& attributes, const char* name, double other) const
{
    const char* text = attributes.value(name);
    return text ? number(text, name) : other;
}

double Ipc2581Values::unitOf(const XmlAttributes& attributes) const
{
    const QString units = attributes.text("units").toUpper();
    if (units.isEmpty()) {
        return 0;
    }
    if (units == QLatin1String("MILLIMETER")) {
        return sizePerMillimetre;
    }
    if (units == QLatin1String("MICRON")) {
        return sizePerMicron;
    }
    if (units == QLatin1String("INCH")) {
        return sizePerInch;
    }
    fail(BoardText::tr("unknown units \"%1\"; known are MILLIMETER, MICRON and INCH")
             .arg(units.left(40)));
}

double Ipc2581Values::length(const XmlAttributes& attributes, const char* name, double unit) const
{
    const double value = numberOr(attributes, name, 0) * unit;
    if (!(value >= 0 && value <= maxSize)) {
        fail(name, attributes.value(name), BoardText::tr("is no size of a shape"));
    }
    return value;
}

Size Ipc2581Values::size(const char* text, const char* name, double unit) const
{
    const double value = number(text, name);
    if (value < 0) {
        fail(name, text, BoardText::tr("is negative"));
    }
    const double hostSize = value * unit;
    if (!isSize(hostSize)) {
        fail(name, text, BoardText::tr("is too large"));
    }
    return rounded(hostSize);
}

Size Ipc2581Values::holeSize(const char* text, const char* name, double unit) const
{
    const Size hole = size(text, name, unit);
    if (hole < 1) {
        fail(name, text, BoardText::tr("is no size of a hole"));
    }
    if (hole > maxDiameter) {
        fail(name, text, BoardText::tr("is too large for a hole, the most are 500 mm"));
    }
    return hole;
}

int Ipc2581Values::repeats(const XmlAttributes& attributes, const char* name) const
{
    const char* text = attributes.value(name);
    if (!text) {
        return 1;
    }
    bool ok = false;
    const int times = QByteArrayView(text).trimmed().toInt(&ok);
    if (!ok || times < 1 || times > maxRepeats) {
        fail(name, text, BoardText::tr("is no number from 1 to %1").arg(maxRepeats));
    }
    return times;
}

bool Ipc2581Values::isTrue(const XmlAttributes& attributes, const char* name) const
{
    const QByteArray value = QByteArray(attributes.value(name)).trimmed().toLower();
    if (value == "true" || value == "1") {
        return true;
    }
    if (!value.isEmpty() && value != "false" && value != "0") {
        fail(name, value, BoardText::tr("is neither true nor false"));
    }
    return false;
}

Place Ipc2581Values::place(double x, double y) const
{
    if (!isSize(x) || !isSize(y)) {
        fail(BoardText::tr("a place further than 5 m from the origin"));
    }
    return {rounded(x), rounded(y)};
}

} // namespace brox
