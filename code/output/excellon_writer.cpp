// SPDX-License-Identifier: MIT
#include "excellon_writer.h"

#include "file_set.h"
#include "plan_text.h"
#include "reading.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace brox {

namespace {

constexpr qsizetype longestComment = 200;

QByteArray plainLine(const QString& text)
{
    return printable(text.simplified().left(longestComment)).toUtf8();
}

/** No machine can follow an arc that does not keep its distance. */
void checkArc(double first, double last)
{
    const double tolerance = first / 100 + 50 * double(sizePerMicron); // old files have few digits
    if (std::abs(first - last) > tolerance) {
        throw OutputError(PlanText::tr("an arc whose ends are not equally far from its centre"));
    }
}

} // namespace

constexpr ExcellonWriter::Resolution ExcellonWriter::metric{"METRIC", "mm", 4, 1, 40};
constexpr ExcellonWriter::Resolution ExcellonWriter::inch{"INCH", "inch", 5, 10, 1016};

qint64 ExcellonWriter::Resolution::round(qint64 size) const
{
    const qint64 scaled = size * numerator;
    return (scaled + (scaled < 0 ? -denominator : denominator) / 2) / denominator;
}

ExcellonWriter::ExcellonWriter(Units units)
    : mResolution(units == Units::Inch ? inch : metric)
{ }

void ExcellonWriter::comment(const QString& text)
{
    line("; " + plainLine(text));
}

void ExcellonWriter::indented(const QString& text)
{
    line(";   " + plainLine(text));
}

QByteArray ExcellonWriter::size(Size value) const
{
    QByteArray text;
    appendNumber(text, mResolution.round(value));
    while (text.endsWith('0') && text.size() - text.indexOf('.') > 4) {
        text.chop(1);
    }
    return text;
}

void ExcellonWriter::slot(const Path& path)
{
    Place from = path.start;
    move("G00", inDigits(from));
    line("M15");
    if (path.segments.empty()) { // the tool goes down and up
        move("G01", inDigits(from));
    }
    for (const Segment& segment : path.segments) {
        segment.shape == Segment::Shape::Line ? move("G01", inDigits(segment.to))
                                              : arc(segment, from);
        from = segment.to;
    }
    line("M16");
}

ExcellonWriter::Coordinates ExcellonWriter::inDigits(Place place) const
{
    return {mResolution.round(place.x), mResolution.round(place.y)};
}

void ExcellonWriter::appendNumber(QByteArray& text, qint64 value) const
{
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof digits, std::abs(value)).ptr;
    const auto count = int(end - digits);
    const int zeros = std::max(0, mResolution.decimals + 1 - count); // one before the point
    char number[32];
    char* at = number;
    *at = '-';
    at += value < 0;
    at = std::fill_n(at, zeros, '0');
    at = std::copy(digits, end, at);
    std::copy_backward(at - mResolution.decimals, at, at + 1);
    at[-mResolution.decimals] = '.';
    text.append(number, at + 1 - number);
}

void ExcellonWriter::appendAxes(char horizontal, char vertical, Coordinates point)
{
    mText += horizontal;
    appendNumber(mText, point.x);
    mText += vertical;
    appendNumber(mText, point.y);
}

void ExcellonWriter::move(const char* command, Coordinates to)
{
    mText += command;
    appendAxes('X', 'Y', to);
    mText += '\n';
}

/** Centres stay exact where a radius would leave them to a square root. */
void ExcellonWriter::arcTo(bool clockwise, Coordinates from, Coordinates to, Coordinates centre)
{
    if (from.x == to.x && from.y == to.y) { // shorter than a digit; as an arc it would be a circle
        return move("G01", to);
    }
    mText += clockwise ? "G02" : "G03";
    appendAxes('X', 'Y', to);
    appendAxes('I', 'J', {centre.x - from.x, centre.y - from.y});
    mText += '\n';
}

/** An arc of more than half a circle goes by the point opposite to its start. The board's own
 *  places show that: with the program's digits the ends of a short arc may be one. */
void ExcellonWriter::arc(const Segment& segment, Place from)
{
    const Place to = segment.to;
    const double fromX = double(from.x) - segment.centre.x;
    const double fromY = double(from.y) - segment.centre.y;
    const double toX = double(to.x) - segment.centre.x;
    const double toY = double(to.y) - segment.centre.y;
    checkArc(std::hypot(fromX, fromY), std::hypot(toX, toY));

    const bool clockwise = segment.shape == Segment::Shape::Clockwise;
    const double turn = fromX * toY - fromY * toX;
    const bool isFull = from.x == to.x && from.y == to.y;
    const Coordinates centre = inDigits(segment.centre);
    Coordinates start = inDigits(from);
    if (isFull || (clockwise ? turn > 0 : turn < 0)) {
        const Coordinates opposite{2 * centre.x - start.x, 2 * centre.y - start.y};
        arcTo(clockwise, start, opposite, centre);
        start = opposite;
    }
    arcTo(clockwise, start, inDigits(to), centre);
}

} // namespace brox
