// SPDX-License-Identifier: MIT
#include "hole_matching.h"

#include <QSet>
#include <algorithm>
#include <cmath>
#include <limits>

namespace brox {

namespace {

constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

bool isSameWay(const Path& a, const Path& b, Size within)
{
    const auto isNear = [within](Place own, Place other) { return distance(own, other) <= within; };
    return isNear(a.start, b.start)
        && std::ranges::equal(
            a.segments, b.segments, [&](const Segment& own, const Segment& other) {
                return own.shape == other.shape && isNear(own.to, other.to)
                    && (own.shape == Segment::Shape::Line || isNear(own.centre, other.centre));
            });
}

Path reversed(const Path& path)
{
    using enum Segment::Shape;
    Path back{path.end(), {}};
    for (size_t i = path.segments.size(); i-- > 0;) {
        Segment segment = path.segments[i];
        segment.to = i > 0 ? path.segments[i - 1].to : path.start;
        segment.shape = segment.shape == Line ? Line
            : segment.shape == Clockwise      ? CounterClockwise
                                              : Clockwise;
        back.segments.push_back(segment);
    }
    return back;
}

bool isStraight(const Path& path)
{
    return path.segments.size() == 1 && path.segments[0].shape == Segment::Shape::Line;
}

/** Of a place from the line through both ends of a path. */
double distanceFromLine(Place place, const Path& line)
{
    const Place end = line.end();
    const double dx = double(end.x) - line.start.x;
    const double dy = double(end.y) - line.start.y;
    const double cross =
        dx * (double(place.y) - line.start.y) - dy * (double(place.x) - line.start.x);
    return std::abs(cross) / std::hypot(dx, dy);
}

bool isOnLine(const Path& a, const Path& b, Size within)
{
    return isStraight(a) && isStraight(b) && !a.isClosed() && !b.isClosed()
        && distanceFromLine(b.start, a) <= within && distanceFromLine(b.end(), a) <= within;
}

/** How the slots of two boards relate. */
enum class SlotRelation
{
    Alike, ///< the same way, in either direction
    OfOtherLength, ///< straight, and one on the other
    Different
};

SlotRelation slotRelation(const Path& a, const Path& b, Size within)
{
    if (isSameWay(a, b, within) || isSameWay(a, reversed(b), within)) {
        return SlotRelation::Alike;
    }
    return isOnLine(a, b, within) ? SlotRelation::OfOtherLength : SlotRelation::Different;
}

/** The spans of a board's tools, numbered; -1 for a tool without one. */
std::vector<int> numberSpans(const ComparedBoard& board, std::vector<Span>& spans)
{
    std::vector<int> numbers;
    for (const ComparedTool& tool : board.tools) {
        if (!tool.span || tool.hits == 0) {
            numbers.push_back(-1);
            continue;
        }
        const auto found = std::ranges::find(spans, *tool.span);
        numbers.push_back(int(found - spans.begin()));
        if (found == spans.end()) {
            spans.push_back(*tool.span);
        }
    }
    return numbers;
}

QSet<QString> layerNames(const std::vector<Span>& spans)
{
    QSet<QString> names;
    for (const Span& span : spans) {
        names << span.from << span.to;
    }
    return names;
}

bool areNumbers(const QSet<QString>& names)
{
    return std::all_of(names.begin(), names.end(), [](const QString& name) {
        bool isNumber = false;
        name.toInt(&isNumber);
        return isNumber;
    });
}

} // namespace

SpanMap::SpanMap(const ComparedBoard& board, const ComparedBoard& other, const PlaceIndex& index)
{
    std::vector<Span> spans;
    std::vector<Span> others;
    mOfTool = numberSpans(board, spans);
    mOfOtherTool = numberSpans(other, others);
    mPartner.assign(spans.size(), -1);
    const QSet<QString> names = layerNames(spans);
    const QSet<QString> otherNames = layerNames(others);
    if (!names.intersects(otherNames) || areNumbers(names) != areNumbers(otherNames)) {
        pairByPlaces(board, other, index, others.size());
        return;
    }
    for (size_t i = 0; i < spans.size(); ++i) {
        const Span turned{spans[i].to, spans[i].from};
        const auto found = std::ranges::find_if(
            others, [&](const Span& each) { return each == spans[i] || each == turned; });
        mPartner[i] = found == others.end() ? -1 : int(found - others.begin());
    }
}

void SpanMap::pairByPlaces(
    const ComparedBoard& board, const ComparedBoard& other, const PlaceIndex& index, size_t others)
{
    std::vector<qint64> common(mPartner.size() * others, 0);
    const size_t stride = board.hits() / 50'000 + 1;
    for (size_t i = 0; !common.empty() && i < board.hits(); i += stride) {
        const int own = mOfTool[board.toolOf[i]];
        index.visit(board.places[i], [&](std::uint32_t hit) {
            const int span = mOfOtherTool[other.toolOf[hit]];
            if (own >= 0 && span >= 0 && isSameSize(board.tool(i).size, other.tool(hit).size)) {
                ++common[size_t(own) * others + size_t(span)];
            }
        });
    }
    while (!common.empty()) {
        const auto most = std::ranges::max_element(common);
        if (*most == 0) {
            return;
        }
        const size_t own = size_t(most - common.begin()) / others;
        const size_t span = size_t(most - common.begin()) % others;
        mPartner[own] = int(span);
        for (size_t i = 0; i < others; ++i) {
            common[own * others + i] = 0;
        }
        for (size_t i = 0; i < mPartner.size(); ++i) {
            common[i * others + span] = 0;
        }
    }
}

HoleMatcher::HoleMatcher(
    const ComparedBoard& board, const ComparedBoard& other, const PlaceIndex& index, Size within)
    : mBoard(board)
    , mOther(other)
    , mIndex(index)
    , mWithin(within)
    , mSpans(board, other, index)
    , mIsTaken(other.hits(), 0)
{ }

bool HoleMatcher::isNear(Place a, Place b) const
{
    return distance(a, b) <= mWithin;
}

HitDifference HoleMatcher::difference(std::uint32_t hit, std::uint32_t other) const
{
    const ComparedTool& own = mBoard.tool(hit);
    const ComparedTool& others = mOther.tool(other);
    HitDifference difference;
    difference.size = !isSameSize(own.size, others.size);
    difference.plating =
        own.isPlated != others.isPlated && !own.platingAssumed && !others.platingAssumed;
    difference.span = mSpans.differ(mBoard, hit, mOther, other);
    difference.slot = own.isSlot != others.isSlot;
    if (own.isSlot && others.isSlot) {
        const SlotRelation relation =
            slotRelation(mBoard.slotPath(hit), mOther.slotPath(other), mWithin);
        difference.slot = relation == SlotRelation::Different;
        difference.size = difference.size || relation == SlotRelation::OfOtherLength;
    }
    return difference;
}

HoleMatching HoleMatcher::match()
{
    pairAlike();
    pairUnlike();
    for (size_t i = 0; i < mIsTaken.size(); ++i) {
        if (!mIsTaken[i]) {
            mMatching.added.push_back(std::uint32_t(i));
        }
    }
    dropRepeatedOthers();
    pairMoved();
    return std::move(mMatching);
}

void HoleMatcher::pairAlike()
{
    mMatching.inPlace.reserve(std::min(mBoard.hits(), mOther.hits()));
    for (size_t i = 0; i < mBoard.hits(); ++i) {
        const auto hit = std::uint32_t(i);
        std::uint32_t best = none;
        double least = mWithin;
        bool isRepeated = false;
        mIndex.visit(mBoard.places[i], [&](std::uint32_t other) {
            const double way = distance(mBoard.places[i], mOther.places[other]);
            if (way > least || difference(hit, other).any()) {
                return;
            }
            if (mIsTaken[other]) {
                isRepeated = true;
            } else {
                best = other;
                least = way;
            }
        });
        if (best != none) {
            mIsTaken[best] = 1;
            mMatching.inPlace.push_back({hit, best});
        } else if (!isRepeated) {
            mMatching.removed.push_back(hit);
        }
    }
}

/** What lies at one place with the fewest differences is one hole that has changed. */
void HoleMatcher::pairUnlike()
{
    std::vector<std::uint32_t> left;
    for (const std::uint32_t hit : mMatching.removed) {
        std::uint32_t best = none;
        int least = std::numeric_limits<int>::max();
        mIndex.visit(mBoard.places[hit], [&](std::uint32_t other) {
            const HitDifference differs = difference(hit, other);
            if (mIsTaken[other] || differs.slot
                || !isNear(mBoard.places[hit], mOther.places[other])) {
                return;
            }
            const int cost = int(differs.size) + 2 * int(differs.plating) + 4 * int(differs.span);
            if (cost < least) {
                least = cost;
                best = other;
            }
        });
        if (best == none) {
            left.push_back(hit);
        } else {
            mIsTaken[best] = 1;
            mMatching.inPlace.push_back({hit, best});
        }
    }
    mMatching.removed = std::move(left);
}

void HoleMatcher::dropRepeatedOthers()
{
    if (mMatching.added.empty()) {
        return;
    }
    const PlaceIndex own(mBoard.places, mWithin);
    std::erase_if(mMatching.added, [&](std::uint32_t other) {
        bool isRepeated = false;
        own.visit(mOther.places[other], [&](std::uint32_t hit) {
            isRepeated = isRepeated
                || (isNear(mBoard.places[hit], mOther.places[other])
                    && !difference(hit, other).any());
        });
        return isRepeated;
    });
}

bool HoleMatcher::isMoved(std::uint32_t hit, std::uint32_t other) const
{
    const HitDifference differs = difference(hit, other);
    if (mBoard.tool(hit).isSlot != mOther.tool(other).isSlot || differs.plating || differs.span
        || !isSameSize(mBoard.tool(hit).size, mOther.tool(other).size)) {
        return false;
    }
    if (!mBoard.tool(hit).isSlot || !differs.slot) {
        return true;
    }
    const Place from = mBoard.places[hit];
    const Place to = mOther.places[other];
    const Transform shift({to.x - from.x, to.y - from.y}, 0, false);
    return slotRelation(shift.map(mBoard.slotPath(hit)), mOther.slotPath(other), mWithin)
        == SlotRelation::Alike;
}

void HoleMatcher::pairMoved()
{
    struct Candidate
    {
        double way;
        std::uint32_t removed; ///< index in the list
        std::uint32_t added;
        auto operator<=>(const Candidate&) const = default;
    };
    if (mMatching.removed.empty() || mMatching.added.empty()) {
        return;
    }
    std::vector<Place> places;
    for (const std::uint32_t other : mMatching.added) {
        places.push_back(mOther.places[other]);
    }
    // Places are rounded, so half a millimetre may come out a little longer.
    constexpr Size reach = farthestMove + sizeRounding;
    constexpr size_t mostOfHit = 4;
    const PlaceIndex index(places, reach);
    std::vector<Candidate> candidates;
    candidates.reserve(mMatching.removed.size() * mostOfHit); // takes no memory that is not used
    std::vector<Candidate> ofHit;
    for (size_t i = 0; i < mMatching.removed.size(); ++i) {
        const std::uint32_t hit = mMatching.removed[i];
        ofHit.clear();
        index.visit(mBoard.places[hit], [&](std::uint32_t added) {
            const double way = distance(mBoard.places[hit], places[added]);
            if (way <= reach && isMoved(hit, mMatching.added[added])) {
                ofHit.push_back({way, std::uint32_t(i), added});
            }
        });
        std::ranges::sort(ofHit);
        ofHit.resize(std::min(ofHit.size(), mostOfHit));
        candidates.insert(candidates.end(), ofHit.begin(), ofHit.end());
    }
    std::ranges::sort(candidates);
    constexpr std::uint32_t paired = none;
    for (const Candidate& candidate : candidates) {
        std::uint32_t& removed = mMatching.removed[candidate.removed];
        std::uint32_t& added = mMatching.added[candidate.added];
        if (removed != paired && added != paired) {
            mMatching.moved.push_back({removed, added});
            removed = added = paired;
        }
    }
    std::erase(mMatching.removed, paired);
    std::erase(mMatching.added, paired);
}

} // namespace brox
