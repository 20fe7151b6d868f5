// SPDX-License-Identifier: MIT
#ifndef COMPARISON_H
#define COMPARISON_H

#include "compared_board.h"

#include <map>

namespace brox {

/** What differs between two boards, described as the way from the first to the other. */
enum class DifferenceKind
{
    Whole, ///< the other is the board mirrored, turned or scaled, and nothing else
    Added,
    Removed,
    Moved, ///< same size, up to half a millimetre
    Resized, ///< also slots of another length
    Plating,
    Tolerance, ///< where both boards specify one
    Layer ///< other copper layers that holes begin and end at, where both boards specify them
};

/** All hits of a tool that differ in one way. */
struct BoardDifference
{
    DifferenceKind kind = DifferenceKind::Added;
    std::optional<ComparedTool> from; ///< null: Whole, Added
    std::optional<ComparedTool> to; ///< null: Whole, Removed
    bool isWholeTool = false; ///< no other hits of this tool
    qint64 count = 0; ///< hits
    std::vector<Place> places; ///< on the first board, of each hit, by y and x; empty: Whole
    std::vector<Place> movedTo; ///< Moved: for each of the places
    Size lengthBefore = 0; ///< Resized: of the first slot from end to end of its middle; 0: a hole
    Size lengthAfter = 0;
};

struct Comparison
{
    QString other; ///< name of the other board's job
    std::vector<BoardDifference> differences; ///< by kind, then by tool of the first board
    Place move; ///< of the first board, for holes to lie on those of the other
    std::optional<Placement> whole; ///< set if there is the one difference Whole
    std::optional<Placement> nearly; ///< what would explain all but a tenth of the hits
    qint64 holes = 0; ///< of the first board
    qint64 slotPaths = 0;
    qint64 copies = 1; ///< of one board that the other is
    qint64 turnedCopies = 0; ///< of these, turned or mirrored
    std::vector<Place> besideCopies; ///< holes that only the panel has; no differences
    bool isOtherPanel = false; ///< the other has the copies; places are then those of the other
    qint64 assumedPlating = 0; ///< hits whose plating differs, but one board only assumes it
    qint64 drilledAndFinished = 0; ///< hits with a drill size on one board, finished on the other

    bool differs() const { return !differences.empty(); }
};

constexpr Size defaultWithin = sizePerMillimetre / 100;
constexpr Size leastWithin = sizePerMicron;
constexpr Size mostWithin = sizePerMillimetre / 2;

/** Compares the holes and slots of two steps with all that they repeat; contours and back drills
 *  are not compared, nor are tolerances and spans that one board does not specify.
 *
 * @param within      tolerance of places, from leastWithin to mostWithin
 * @param drillSizes  by layer: whether the first board has drill sizes there, whatever it specifies
 * @throws PanelError
 */
Comparison compareBoards(const Board& board, size_t step, const Board& other, size_t otherStep,
    Size within = defaultWithin, const std::map<QString, bool>& drillSizes = {});

/** "factor 10", "factor 1/25.4", "mirrored", "quarter turn", "half turn", "mirrored, quarter
 *  turn". */
QString wholeWord(const Placement& whole);

/** "added" and so on; the words of all outputs. */
QString differenceWord(DifferenceKind kind);

} // namespace brox

#endif
