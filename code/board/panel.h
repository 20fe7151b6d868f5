// SPDX-License-Identifier: MIT
#ifndef PANEL_H
#define PANEL_H

#include "board.h"

#include <functional>

namespace brox {

/** A step with the steps that it repeats: what it comes to, and where everything lies. */

/** A panel that is too large to be spread, described in one line. */
class PanelError : public Error
{
    using Error::Error;
};

/** Most copies of steps that a step is spread to. */
constexpr qint64 copiesLimit = 1'000'000;

/** A tool of a step together with those of repeated steps that are like it. */
struct StepTool
{
    const Tool* tool = nullptr; ///< the first of them; lies in the board
    qint64 holes = 0; ///< repeats included
    qint64 slotPaths = 0;
};

struct StepLayer
{
    QString name;
    std::optional<Span> span;
    std::vector<StepTool> tools;
    std::vector<StepTool> backDrills;
    qint64 contours = 0;
    QString assumedFormat;
    bool formatDoubtful = false;
    bool hasDrillSizes = false;
};

/** @throws PanelError  if a step with all it repeats has more holes than a host can count, slots
 * and contours by their weight */
void checkCounts(const Board& board);

/** The layers of a step and of all it repeats, by name; nothing is spread.
 *
 * Pointers in it lie in the board, whose counts have been checked.
 */
std::vector<StepLayer> gatherLayers(const Board& board, size_t step);

/** Holes of a step and of all it repeats that lie on layers that are not drilled; 2^31 stands for
 *  all numbers that are larger. */
qint64 holesLeftOut(const Board& board, size_t step);

/** Where a copy lies: scaled about its origin, then perhaps mirrored, then turned, then moved. */
class Transform
{
public:
    Transform() = default; ///< nothing changes

    /** @param angle   degrees, counter-clockwise
     *  @param mirror  left and right are exchanged
     */
    Transform(Place move, double angle, bool mirror, double scale = 1);

    /** Both in one: what it maps goes through the inner one first. */
    Transform operator*(const Transform& inner) const;

    /** @throws PanelError  if the place lies where no number of 32 bits reaches */
    Place map(Place place) const;
    Path map(const Path& path) const;

private:
    double mXx = 1; ///< x to x
    double mYx = 0; ///< y to x
    double mXy = 0; ///< x to y
    double mYy = 1; ///< y to y
    double mX = 0;
    double mY = 0;
};

/** Visits a step and every copy of the steps that it repeats, the outer before the inner.
 *
 * @throws PanelError  before the first visit, if there are too many copies, holes and slots
 */
void forEachCopy(const Board& board, size_t step,
    const std::function<void(const Step& copied, const Transform& where)>& visit);

} // namespace brox

#endif
