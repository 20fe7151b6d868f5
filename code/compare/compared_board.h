// SPDX-License-Identifier: MIT
#ifndef COMPARED_BOARD_H
#define COMPARED_BOARD_H

#include "panel.h"

#include <QString>
#include <optional>
#include <vector>

namespace brox {

/** The holes, or the slots, of a tool on one layer, without their places. */
struct ComparedTool
{
    QString layer;
    std::optional<Span> span; ///< null: the board specifies none
    int number = 0; ///< in its file; 0: files of this format number no tools
    bool isSlot = false;
    bool isPlated = true;
    bool platingAssumed = false; ///< the board specifies no plating
    Size size = 0; ///< as the board specifies it
    std::optional<Tolerance> tolerance;
    qint64 hits = 0;

    bool isLike(const ComparedTool& other) const
    {
        return layer == other.layer && number == other.number && isSlot == other.isSlot
            && isPlated == other.isPlated && platingAssumed == other.platingAssumed
            && size == other.size && tolerance == other.tolerance;
    }
};

/** How a board lies on another one: mirrored, then turned, then scaled, then moved. */
struct Placement
{
    bool isMirrored = false; ///< left and right exchanged
    int quarterTurns = 0; ///< counter-clockwise, 0 to 3
    double factor = 1;
    Place move;

    /** Null if the place lies where no number of 32 bits reaches. */
    std::optional<Place> map(Place place) const;
};

/** What is compared of a board: holes and slots of a step and of all it repeats, as flat lists.
 *  A hit is a hole, or a slot at the middle between its ends; slots come behind all holes. */
struct ComparedBoard
{
    std::vector<ComparedTool> tools;
    std::vector<Place> places; ///< of the hits
    std::vector<std::uint32_t> toolOf; ///< of the hits
    std::vector<Path> slotPaths; ///< of the last hits

    size_t hits() const { return places.size(); }
    size_t holes() const { return places.size() - slotPaths.size(); }
    const ComparedTool& tool(size_t hit) const { return tools[toolOf[hit]]; }
    const Path& slotPath(size_t hit) const { return slotPaths[hit - holes()]; }

    /** Adds the hits of a board with the same tools. False, and nothing added, if one of them
     *  lies too far off. */
    bool addHits(const ComparedBoard& other, const Placement& where);

    /** The same tools without hits. */
    ComparedBoard withoutHits() const;
};

/** @throws PanelError */
ComparedBoard comparedBoard(const Board& board, size_t step);

/** The lowest and the highest coordinates of places. */
struct Extent
{
    Place low;
    Place high;
    qint64 count = 0;

    void add(Place place);
    qint64 width() const { return qint64(high.x) - low.x; }
    qint64 height() const { return qint64(high.y) - low.y; }
};

Extent extentOf(const std::vector<Place>& places);

} // namespace brox

#endif
