// SPDX-License-Identifier: MIT
#ifndef READING_H
#define READING_H

#include "number_format.h"

#include <QByteArray>
#include <QCoreApplication>
#include <functional>
#include <string_view>

class QIODevice;

namespace brox {

/** What all readers of board files share. A reader reads a device from where it stands to its end,
 *  in one pass, so that pipes and files in archives are read like others. */

/** What boards and their readers say to the user, in the language of the program. */
class BoardText
{
    Q_DECLARE_TR_FUNCTIONS(BoardText)
};

/** A name as it may be shown anywhere: what would break a line, drive a terminal or turn the
 *  direction of writing is given by a sign or a code. */
QString printable(const QString& text);

/** What is wrong with a board file, as one line "file:line: message"; line 0 is left out. */
class BoardError : public Error
{
public:
    BoardError(const QString& file, qint64 line, const QString& message)
        : Error(printable(line > 0
                ? QStringLiteral("%1:%2: %3").arg(file, QString::number(line), message.simplified())
                : QStringLiteral("%1: %2").arg(file, message.simplified())))
    { }
};

/** A drill file that specifies no units, where the options give none either. */
class UnitsUnknown : public BoardError
{
    using BoardError::BoardError;
};

/** The user has broken off the reading. */
class BoardCancelled : public std::exception
{ };

/** Told every now and then how much of a file is read, in bytes; total is 0 if unknown.
 *  The reading ends with BoardCancelled when it gives false. */
using Progress = std::function<bool(qint64 done, qint64 total)>;

/** Why the steps are no board: what they have without a hole and a slot; empty if they are one. */
QString lackText(const std::vector<Step>& steps);

/** The most holes that a board is read or spread to, in the memory that a program may take. */
constexpr qint64 maxHoles = 50'000'000;

/** How many holes take as much memory as a slot or a contour. */
constexpr qint64 weightOf(size_t segments)
{
    return 5 + 3 * qint64(segments);
}

/** Why a board, or something of it, is too large. */
QString tooManyHoles();

/** The largest hole or slot that a reader takes for one. */
constexpr double maxDiameter = 500.0 * sizePerMillimetre;

struct ReadOptions
{
    NumberFormat fileFormat; ///< by the user, of drill files that do not specify theirs
    bool isStrict = false; ///< no file of an order may be unreadable
    Progress progress;
};

/** Cuts a device into chunks, and reports the progress behind each. */
class ChunkReader
{
public:
    /** All of them live longer than the reader.
     *
     * @param name  path for messages
     */
    ChunkReader(QIODevice& device, const QString& name, const ReadOptions& options);

    /** The next bytes, as many as a chunk has but for the last; valid until the next call. Empty
     *  at the end.
     *
     * @throws BoardError  for a device that can't be read
     * @throws BoardCancelled
     */
    std::string_view next();

private:
    QIODevice& mDevice;
    const QString& mName;
    const Progress& mProgress;
    QByteArray mChunk;
    qint64 mDone = 0;
};

/** Cuts a device into lines, which end with a line feed, a carriage return or both; a byte order
 *  mark at the beginning is left out. */
class LineReader
{
public:
    /** As those of ChunkReader. */
    LineReader(QIODevice& device, const QString& name, const ReadOptions& options);

    /** The first chunk, as long as no line has been taken. */
    std::string_view beginning() const { return mChunk; }

    /** The next line without its end, valid until the next call; null at the device's end.
     *
     * @throws BoardError  also for a line of more than 4096 bytes
     * @throws BoardCancelled
     */
    std::optional<std::string_view> next();

private:
    const QString& mName;
    ChunkReader mChunks;
    std::string_view mChunk; ///< what is left of it
    std::string mLine;
    qint64 mCount = 0;
    bool mAfterReturn = false;
};

} // namespace brox

#endif
