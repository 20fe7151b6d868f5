// SPDX-License-Identifier: MIT
#ifndef BOARD_H
#define BOARD_H

#include <QString>
#include <functional>
#include <stdexcept>
#include <vector>

/** A board's drill data, as a reader hands them over. Sizes are in host size units, 400 to the
 *  micron. */

enum class HoleType
{
    Plated,
    NonPlated,
    Via,
    PressFit
};

enum class Units
{
    Inch = 0,
    Metric = 1
};

/** All holes of a layer that are alike. */
struct Tool
{
    HoleType type = HoleType::Plated;
    int minusTol = 0; ///< a magnitude
    int plusTol = 0;
    int finishedSize = 0;
    qint64 count = 0;

    bool isLike(const Tool& other) const
    {
        return type == other.type && minusTol == other.minusTol && plusTol == other.plusTol
            && finishedSize == other.finishedSize;
    }
};

struct Layer
{
    QString name;
    std::vector<Tool> tools; ///< in order of first appearance
};

struct Step
{
    QString name;
    std::vector<Layer> layers; ///< those with tools, in order of first appearance
    qint64 slotsLeftOut = 0;
    qint64 holesLeftOut = 0; ///< holes on layers that are neither drilled nor routed
};

struct Board
{
    QString job;
    Units units = Units::Metric;
    std::vector<Step> steps;
    size_t mainStep = 0; ///< index of the step that the file is about
};

/** What is wrong with a board file, as one line "file:line: message". */
class BoardError : public std::runtime_error
{
public:
    BoardError(const QString& file, qint64 line, const QString& message)
        : std::runtime_error(
            QStringLiteral("%1:%2: %3").arg(file).arg(line).arg(message.simplified()).toStdString())
    { }

    QString message() const { return QString::fromUtf8(what()); }
};

/** The user has broken off the reading. */
class BoardCancelled : public std::exception
{ };

/** Told every now and then how much of a file is read, in bytes; total is 0 if unknown.
 *  The reading ends with BoardCancelled when it gives false. */
using Progress = std::function<bool(qint64 done, qint64 total)>;

#endif
