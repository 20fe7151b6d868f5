// SPDX-License-Identifier: MIT
#ifndef EXCELLON_WRITER_H
#define EXCELLON_WRITER_H

#include "board.h"

namespace brox {

/** Writes the lines of a drill program: what sizes, places and ways look like in it. */
class ExcellonWriter
{
public:
    explicit ExcellonWriter(Units units);

    const char* unit() const { return mResolution.unit; } ///< "mm" or "inch"
    const char* unitCommand() const { return mResolution.command; }

    /** A size with three decimals, or as many as it needs. */
    QByteArray size(Size value) const;
    QByteArray sizeWithUnit(Size value) const { return size(value) + ' ' + unit(); }

    /** No: it is less than half of the last digit. */
    bool canWrite(Size value) const { return mResolution.round(value) > 0; }

    void line(const QByteArray& text) { mText += text + '\n'; }
    void comment(const QString& text);
    void indented(const QString& text); ///< a comment that belongs to the one before

    void hole(Place place) { move("", inDigits(place)); }

    /** @throws OutputError  for an arc that no machine can follow */
    void slot(const Path& path);

    QByteArray text() const { return mText; }
    void reserve(qint64 bytes) { mText.reserve(bytes); }

private:
    /** What coordinates are counted in: the last digit that is written. */
    struct Resolution
    {
        const char* command;
        const char* unit;
        int decimals;
        qint64 numerator; ///< steps of the last digit in denominator host units
        qint64 denominator;

        qint64 round(qint64 size) const;
    };

    /** A place in steps of the last digit, with room for what lies opposite of it. */
    struct Coordinates
    {
        qint64 x;
        qint64 y;
    };

    static const Resolution metric;
    static const Resolution inch;

    Coordinates inDigits(Place place) const;
    void appendNumber(QByteArray& text, qint64 value) const;
    void appendAxes(char horizontal, char vertical, Coordinates point);
    void move(const char* command, Coordinates to);
    void arcTo(bool clockwise, Coordinates from, Coordinates to, Coordinates centre);
    void arc(const Segment& segment, Place from);

    const Resolution& mResolution;
    QByteArray mText;
};

} // namespace brox

#endif
