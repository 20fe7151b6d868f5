// SPDX-License-Identifier: MIT
#include "doubled_hits.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace brox {

namespace {

bool isBefore(Place a, Place b)
{
    return std::tie(a.x, a.y) < std::tie(b.x, b.y);
}

/** Sorts paths; a single line is the same in both directions. */
struct PathOrder
{
    static std::pair<Place, Place> ends(const Path& path)
    {
        const bool isTurned = path.segments.size() == 1
            && path.segments[0].shape == Segment::Shape::Line && isBefore(path.end(), path.start);
        return isTurned ? std::pair(path.end(), path.start) : std::pair(path.start, path.end());
    }

    bool operator()(const Path* a, const Path* b) const
    {
        const auto endsOfA = ends(*a);
        const auto endsOfB = ends(*b);
        if (endsOfA.first != endsOfB.first) {
            return isBefore(endsOfA.first, endsOfB.first);
        }
        if (endsOfA.second != endsOfB.second) {
            return isBefore(endsOfA.second, endsOfB.second);
        }
        if (a->segments.size() == 1 && b->segments.size() == 1
            && a->segments[0].shape == Segment::Shape::Line
            && b->segments[0].shape == Segment::Shape::Line) {
            return false;
        }
        return std::ranges::lexicographical_compare(
            a->segments, b->segments, [](const Segment& first, const Segment& second) {
                const auto key = [](const Segment& segment) {
                    return std::tuple(segment.shape, segment.to.x, segment.to.y, segment.centre.x,
                        segment.centre.y);
                };
                return key(first) < key(second);
            });
    }
};

} // namespace

/** In strips as wide as two hits may be apart: what is at one place is in one strip, or in two that
 *  are neighbours. */
qint64 dropDoubled(std::vector<Place>& places)
{
    std::vector<Place> holes = places;
    const auto strip = [](Place hole) { return (qint64(hole.x) + (1LL << 31)) / samePlace; };
    std::ranges::sort(holes,
        [&](Place a, Place b) { return std::pair(strip(a), a.y) < std::pair(strip(b), b.y); });
    size_t kept = 0;
    size_t before = 0; // the first of the last strip that may be at the place
    for (const Place& hole : holes) {
        const auto isPast = [&](Place other) {
            return strip(other) < strip(hole) - 1
                || (strip(other) == strip(hole) - 1
                    && qint64(other.y) < qint64(hole.y) - samePlace);
        };
        while (before < kept && isPast(holes[before])) {
            ++before;
        }
        bool isDoubled = false;
        for (size_t i = before; i < kept && strip(holes[i]) < strip(hole) && !isDoubled
             && qint64(holes[i].y) <= qint64(hole.y) + samePlace;
             ++i) {
            isDoubled = isSamePlace(hole, holes[i]);
        }
        for (size_t i = kept; i-- > 0 && strip(holes[i]) == strip(hole) && !isDoubled
             && qint64(holes[i].y) >= qint64(hole.y) - samePlace;) {
            isDoubled = isSamePlace(hole, holes[i]);
        }
        if (!isDoubled) {
            holes[kept++] = hole;
        }
    }
    const auto dropped = qint64(holes.size() - kept);
    if (dropped > 0) {
        holes.resize(kept);
        places = std::move(holes);
    }
    return dropped;
}

qint64 dropDoubled(std::vector<const Path*>& slotPaths)
{
    std::set<const Path*, PathOrder> known;
    return qint64(
        std::erase_if(slotPaths, [&](const Path* path) { return !known.insert(path).second; }));
}

} // namespace brox
