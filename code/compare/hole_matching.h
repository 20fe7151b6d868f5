// SPDX-License-Identifier: MIT
#ifndef HOLE_MATCHING_H
#define HOLE_MATCHING_H

#include "compared_board.h"

namespace brox {

/** A hole of the same size this near to where one is missing is that one, moved. */
constexpr Size farthestMove = sizePerMillimetre / 2;

/** Which spans of two boards are the same. Boards name copper layers, or number them. */
class SpanMap
{
public:
    /** Names in common decide; without any, what lies at the same places. */
    SpanMap(const ComparedBoard& board, const ComparedBoard& other, const PlaceIndex& index);

    /** False if one of the tools has no span. */
    bool differ(
        const ComparedBoard& board, size_t hit, const ComparedBoard& other, size_t otherHit) const
    {
        const int own = mOfTool[board.toolOf[hit]];
        const int others = mOfOtherTool[other.toolOf[otherHit]];
        return own >= 0 && others >= 0 && mPartner[size_t(own)] != others;
    }

private:
    void pairByPlaces(const ComparedBoard& board, const ComparedBoard& other,
        const PlaceIndex& index, size_t others);

    std::vector<int> mOfTool; ///< -1: none
    std::vector<int> mOfOtherTool;
    std::vector<int> mPartner; ///< the other board's span; -1: it has none like it
};

/** Hits of two boards that are one and the same hole. */
struct HitPair
{
    std::uint32_t hit;
    std::uint32_t other;
};

struct HoleMatching
{
    std::vector<HitPair> inPlace;
    std::vector<HitPair> moved; ///< same size; slots also: one end elsewhere
    std::vector<std::uint32_t> removed; ///< only the board has them
    std::vector<std::uint32_t> added; ///< only the other board has them
};

/** What a pair of hits does not agree on. */
struct HitDifference
{
    bool size = false; ///< or the length of a slot
    bool plating = false; ///< both boards specify it
    bool span = false; ///< likewise
    bool slot = false; ///< no pair: slots of different shape, or a slot and a hole
    bool any() const { return size || plating || span || slot; }
};

/** Pairs the holes and slots of two boards that lie on each other, each with one at most. */
class HoleMatcher
{
public:
    /** All of them outlive the matcher.
     *
     * @param index   of the other board's places, with that reach
     * @param within  tolerance of places
     */
    HoleMatcher(const ComparedBoard& board, const ComparedBoard& other, const PlaceIndex& index,
        Size within);

    /** A second hit of one tool at one place counts as none. */
    HoleMatching match();

    HitDifference difference(std::uint32_t hit, std::uint32_t other) const;

private:
    void pairAlike();
    void pairUnlike();
    void dropRepeatedOthers();
    void pairMoved();
    bool isMoved(std::uint32_t hit, std::uint32_t other) const;
    bool isNear(Place a, Place b) const;

    const ComparedBoard& mBoard;
    const ComparedBoard& mOther;
    const PlaceIndex& mIndex;
    Size mWithin;
    SpanMap mSpans;
    std::vector<char> mIsTaken; ///< of the other's hits
    HoleMatching mMatching;
};

} // namespace brox

#endif
