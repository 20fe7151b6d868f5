// SPDX-License-Identifier: MIT
#include "same_holes.h"

#include "board_text.h"

#include <algorithm>
#include <tuple>

namespace brox {

namespace {

/** A hole, or a slot by a number that stands for its path. */
struct Item
{
    Size size = 0;
    Place at;
    size_t path = 0; ///< 0: a hole
    auto key() const { return std::tuple(size, at.x, at.y, path); }
    bool operator<(const Item& other) const { return key() < other.key(); }
    bool operator==(const Item& other) const { return key() == other.key(); }
};

size_t hashOf(const Path& path)
{
    size_t hash = 1;
    for (const Segment& segment : path.segments) {
        hash = qHashMulti(hash, int(segment.shape), segment.to.x, segment.to.y, segment.centre.x,
            segment.centre.y);
    }
    return hash | 1U;
}

Item itemOf(const Tool& tool, const Place& hole)
{
    return {tool.finishedSize, hole, 0};
}

/** A straight slot is the same from both ends. */
Item itemOf(const Tool& tool, const Path& slot)
{
    const auto less = [](const Place& a, const Place& b) {
        return std::pair(a.x, a.y) < std::pair(b.x, b.y);
    };
    if (slot.segments.size() == 1 && slot.segments[0].shape == Segment::Shape::Line
        && less(slot.end(), slot.start)) {
        return {
            tool.finishedSize, slot.end(), hashOf({{}, {{Segment::Shape::Line, slot.start, {}}}})};
    }
    return {tool.finishedSize, slot.start, hashOf(slot)};
}

/** What a layer drills, sorted, each once. */
std::vector<Item> itemsOf(const Layer& layer)
{
    std::vector<Item> items;
    for (const Tool& tool : layer.tools) {
        for (const Place& hole : tool.holes) {
            items.push_back(itemOf(tool, hole));
        }
        for (const Path& slot : tool.slotPaths) {
            items.push_back(itemOf(tool, slot));
        }
    }
    std::sort(items.begin(), items.end());
    items.erase(std::unique(items.begin(), items.end()), items.end());
    return items;
}

/** How much a layer tells of its tools. */
int knowledge(const Layer& layer)
{
    const auto all = [&](auto told) {
        return int(std::all_of(layer.tools.begin(), layer.tools.end(), told));
    };
    return 2 * all([](const Tool& tool) { return !tool.typeAssumed; })
        + all([](const Tool& tool) { return tool.functionTold; });
}

/** Whether one tells that its holes are plated and the other that they are not. */
bool contradict(const Layer& a, const Layer& b)
{
    const auto all = [](const Layer& layer, bool plated) {
        return std::all_of(layer.tools.begin(), layer.tools.end(), [&](const Tool& tool) {
            return !tool.typeAssumed && (tool.type != HoleType::NonPlated) == plated;
        });
    };
    return (all(a, true) && all(b, false)) || (all(a, false) && all(b, true));
}

bool isSamePair(const Layer& a, const Layer& b)
{
    return !a.span || !b.span || a.span == b.span;
}

/** Takes items out of a layer, and tools that have nothing left. */
void remove(Layer& layer, const std::vector<Item>& items)
{
    for (Tool& tool : layer.tools) {
        const auto isIn = [&](const auto& thing) {
            return std::binary_search(items.begin(), items.end(), itemOf(tool, thing));
        };
        std::erase_if(tool.holes, isIn);
        std::erase_if(tool.slotPaths, isIn);
    }
    std::erase_if(
        layer.tools, [](const Tool& tool) { return tool.holes.empty() && tool.slotPaths.empty(); });
}

bool haveSameContours(const Layer& a, const Layer& b)
{
    return std::equal(a.contours.begin(), a.contours.end(), b.contours.begin(), b.contours.end(),
        [](const Contour& left, const Contour& right) { return left.outline == right.outline; });
}

class Repeats
{
public:
    explicit Repeats(std::vector<Layer>& layers)
        : mLayers(layers)
    {
        for (const Layer& layer : layers) {
            mItems.push_back(itemsOf(layer));
        }
    }

    QStringList leaveOut()
    {
        for (size_t part = 0; part < mLayers.size(); ++part) {
            for (size_t whole = 0; whole < mLayers.size(); ++whole) {
                if (part != whole && isPart(part, whole)) {
                    keepIn(part, whole);
                }
            }
        }
        std::erase_if(mLayers, [](const Layer& layer) {
            return layer.tools.empty() && layer.backDrills.empty() && layer.contours.empty();
        });
        return mNotes;
    }

private:
    bool isPart(size_t part, size_t whole) const
    {
        const std::vector<Item>& a = mItems[part];
        const std::vector<Item>& b = mItems[whole];
        return !a.empty() && a.size() <= b.size() && isSamePair(mLayers[part], mLayers[whole])
            && std::includes(b.begin(), b.end(), a.begin(), a.end())
            && !contradict(mLayers[part], mLayers[whole]);
    }

    void keepIn(size_t part, size_t whole)
    {
        const bool isLess = knowledge(mLayers[part]) < knowledge(mLayers[whole]);
        // Of two that are the same the first stays.
        const bool isSame = mItems[part].size() == mItems[whole].size();
        const bool leavesPart = isLess
            || (isSame && part > whole && knowledge(mLayers[part]) == knowledge(mLayers[whole]));
        const size_t less = leavesPart ? part : whole;
        const size_t more = leavesPart ? whole : part;
        const std::vector<Item> shared = mItems[part];
        remove(mLayers[less], shared);
        mItems[less] = itemsOf(mLayers[less]);
        if (mItems[less].empty() && haveSameContours(mLayers[less], mLayers[more])) {
            mLayers[less].contours.clear();
        }
        mNotes << (mItems[less].empty()
                ? BoardText::tr("%1: left out, it drills the same as %2")
                : BoardText::tr("%1: holes and slots that %2 drills too are left out: %3"))
                      .arg(mLayers[less].name, mLayers[more].name);
        if (!mItems[less].empty()) {
            mNotes.last() = mNotes.last().arg(shared.size());
        }
    }

    std::vector<Layer>& mLayers;
    std::vector<std::vector<Item>> mItems; ///< of the layers
    QStringList mNotes;
};

} // namespace

QStringList leaveOutRepeats(std::vector<Layer>& layers)
{
    return layers.size() > 1 ? Repeats(layers).leaveOut() : QStringList();
}

} // namespace brox
