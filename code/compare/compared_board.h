// SPDX-License-Identifier: MIT
#ifndef COMPARED_BOARD_H
#define COMPARED_BOARD_H

#include "board.h"
#include "panel.h"

#include <algorithm>
#include <cmath>

namespace brox {

/** Sizes that differ by no more are one size, written in inches here and in millimetres there. */
constexpr Size sizeRounding = sizePerMil / 10;

inline bool isSameSize(Size a, Size b)
{
    return std::abs(qint64(a) - b) <= sizeRounding;
}

inline double distance(Place a, Place b)
{
    return std::hypot(double(a.x) - b.x, double(a.y) - b.y);
}

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
    bool isDrilled = false; ///< its size is that of a drill, not of a finished hole

    bool isLike(const ComparedTool& other) const
    {
        return layer == other.layer && number == other.number && isSlot == other.isSlot
            && isPlated == other.isPlated && platingAssumed == other.platingAssumed
            && size == other.size && tolerance == other.tolerance && isDrilled == other.isDrilled;
    }
    bool hasSameSize(const ComparedTool& other) const
    {
        return isSlot == other.isSlot && isSameSize(size, other.size);
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

/** The move that takes one place to another; null if it is too long. */
std::optional<Place> moveFrom(Place from, Place to);

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

    /** All of it wherever a copy of it lies; null if one lies too far off. */
    std::optional<ComparedBoard> placed(const std::vector<Placement>& copies) const;
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

/** Finds those of many places that lie within a fixed reach of one, however they are spread. */
class PlaceIndex
{
public:
    /** @param reach  above 0 */
    PlaceIndex(const std::vector<Place>& places, Size reach);

    /** Calls with the index of each place in a square of twice the reach, at times twice. Of
     *  places crowded as no board has them only some are shown. */
    template <typename Visit>
    void visit(Place at, const Visit& visit) const;

private:
    /** A place has so many neighbours at most. */
    static constexpr std::uint32_t crowd = 256;

    struct Entry
    {
        Place at;
        std::uint32_t index;
    };

    /** Cells of a block lie side by side, as what is asked for one after the other does. */
    size_t bucketOf(qint64 column, qint64 line) const
    {
        const quint64 hash = quint64(column >> blockBits) * 0x9E3779B97F4A7C15U
            + quint64(line >> blockBits) * 0xC2B2AE3D27D4EB4FU;
        const quint64 block = (hash ^ (hash >> 29)) * 0xBF58476D1CE4E5B9U >> mHashShift;
        constexpr qint64 inBlock = (1 << blockBits) - 1;
        return size_t(
            block << (2 * blockBits) | quint64((line & inBlock) << blockBits | (column & inBlock)));
    }

    static constexpr int blockBits = 3;
    Size mReach;
    int mCellShift = 0; ///< cells are a power of two wide, at least twice the reach
    int mHashShift = 63;
    std::vector<std::uint32_t> mBegins; ///< of each bucket, and the end
    std::vector<Entry> mEntries; ///< by bucket
};

template <typename Visit>
void PlaceIndex::visit(Place at, const Visit& visit) const
{
    const qint64 left = (qint64(at.x) - mReach) >> mCellShift;
    const qint64 right = (qint64(at.x) + mReach) >> mCellShift;
    const qint64 low = (qint64(at.y) - mReach) >> mCellShift;
    const qint64 high = (qint64(at.y) + mReach) >> mCellShift;
    for (qint64 column = left; column <= right; ++column) {
        for (qint64 line = low; line <= high; ++line) {
            const size_t bucket = bucketOf(column, line);
            const std::uint32_t begin = mBegins[bucket];
            const std::uint32_t end = std::min(mBegins[bucket + 1], begin + crowd);
            for (std::uint32_t i = begin; i < end; ++i) {
                const Entry& entry = mEntries[i];
                const qint64 dx = qint64(entry.at.x) - at.x;
                const qint64 dy = qint64(entry.at.y) - at.y;
                if (dx >= -mReach && dx <= mReach && dy >= -mReach && dy <= mReach) {
                    visit(entry.index);
                }
            }
        }
    }
}

} // namespace brox

#endif
