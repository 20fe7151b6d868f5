// SPDX-License-Identifier: MIT
#include "fewest_tools.h"

#include <algorithm>
#include <limits>
#include <map>
#include <numeric>
#include <set>

namespace brox {

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();

/** A way through the bits, from before the first to behind the last, each step from one chosen bit
 *  to the next. A need between two that follow each other goes to one of these, so that the cost of
 *  a set is the sum of its steps', and the best set is a shortest way. */
class Search
{
public:
    Search(const std::vector<BitNeed>& needs, const std::vector<Size>& sizes)
        : mNeeds(needs)
        , mSizes(sizes.size() + 2)
        , mFirst(mSizes.size())
        , mBefore(mSizes.size())
        , mBehind(mSizes.size())
    {
        std::ranges::copy(sizes, mSizes.begin() + 1);
        mSizes.front() = -infinite;
        mSizes.back() = infinite;
        findFirst(needs);
        countBits();
        std::ranges::sort(mNeeds, {}, &BitNeed::result);
    }

    /** The sizes of the best set. */
    std::vector<double> best() const
    {
        const size_t last = mSizes.size() - 1;
        std::vector<double> costs(mSizes.size(), infinite);
        std::vector<size_t> from(mSizes.size());
        costs[0] = 0;
        for (size_t to = 1; to <= last; ++to) {
            for (size_t i = mFirst[to]; isUseful(to) && i < to; ++i) {
                if (isUseful(i) && mBefore[i] + 1 == mBefore[to] && costs[i] < costs[to]) {
                    const double cost = costs[i] + stepCost(i, to, costs[to] - costs[i]);
                    if (cost < costs[to]) {
                        costs[to] = cost;
                        from[to] = i;
                    }
                }
            }
        }
        std::vector<double> chosen;
        for (size_t i = from[last]; i > 0; i = from[i]) {
            chosen.insert(chosen.begin(), mSizes[i]);
        }
        return chosen;
    }

private:
    /** Of each bit the first one that may go before it, so that no need between gets none. */
    void findFirst(std::vector<BitNeed> needs)
    {
        std::ranges::sort(needs, {}, &BitNeed::high);
        double highestLow = -infinite; // of the needs that lie wholly before the bit
        auto need = needs.begin();
        for (size_t i = 1; i < mSizes.size(); ++i) {
            for (; need != needs.end() && double(need->high) < mSizes[i]; ++need) {
                highestLow = std::max(highestLow, double(need->low));
            }
            mFirst[i] = size_t(std::ranges::lower_bound(mSizes, highestLow) - mSizes.begin());
        }
    }

    /** The fewest bits on the way to each bit, and from it to the end. */
    void countBits()
    {
        for (size_t i = 1; i < mSizes.size(); ++i) {
            mBefore[i] = mBefore[mFirst[i]] + 1;
        }
        size_t next = mSizes.size() - 1;
        for (size_t i = next; i-- > 0;) {
            while (mFirst[next] > i) {
                --next;
            }
            mBehind[i] = mBehind[next] + 1;
        }
    }

    /** Whether a smallest set may hold a bit. */
    bool isUseful(size_t bit) const { return mBefore[bit] + mBehind[bit] == mBefore.back(); }

    /** @param most  the exact sum doesn't matter above it */
    double stepCost(size_t from, size_t to, double most) const
    {
        const double left = mSizes[from];
        const double right = mSizes[to];
        const auto result = [](const BitNeed& need) { return double(need.result); };
        double cost = 0;
        for (auto need = std::ranges::lower_bound(mNeeds, left, {}, result);
             need != mNeeds.end() && result(*need) < right && cost < most; ++need) {
            const double toLeft = double(need->low) <= left ? result(*need) - left : infinite;
            const double toRight = double(need->high) >= right ? right - result(*need) : infinite;
            cost += double(need->hits) * std::min(toLeft, toRight);
        }
        return cost;
    }

    std::vector<BitNeed> mNeeds; ///< by rising result
    std::vector<double> mSizes; ///< of the bits, with an end on either side
    std::vector<size_t> mFirst;
    std::vector<size_t> mBefore;
    std::vector<size_t> mBehind;
};

/** The sizes that are in the range of a need. */
std::vector<Size> usableSizes(const std::vector<BitNeed>& needs, const std::vector<Size>& sizes)
{
    std::vector<int> begins(sizes.size() + 1);
    const auto index = [&](auto found) { return size_t(found - sizes.begin()); };
    for (const BitNeed& need : needs) {
        ++begins[index(std::ranges::lower_bound(sizes, need.low))];
        --begins[index(std::ranges::upper_bound(sizes, need.high))];
    }
    std::vector<Size> usable;
    int open = 0;
    for (size_t i = 0; i < sizes.size(); ++i) {
        open += begins[i];
        if (open > 0) {
            usable.push_back(sizes[i]);
        }
    }
    return usable;
}

/** The nearest of some sizes that is in the range of a need. */
Size nearestSize(const BitNeed& need, const std::vector<double>& chosen)
{
    const auto above = std::ranges::lower_bound(chosen, double(need.result));
    const bool isBelow = above != chosen.begin() && *(above - 1) >= double(need.low);
    const bool isAbove = above != chosen.end() && *above <= double(need.high);
    const bool takesBelow =
        isBelow && (!isAbove || double(need.result) - *(above - 1) <= *above - double(need.result));
    return Size(takesBelow ? *(above - 1) : *above);
}

/** Goes upwards, and each time nothing serves a need yet takes the highest bit that does. */
std::vector<size_t> needsApart(const std::vector<BitNeed>& needs, const std::vector<Size>& sizes)
{
    std::vector<size_t> order(needs.size());
    std::iota(order.begin(), order.end(), size_t(0));
    std::ranges::stable_sort(order, {}, [&](size_t i) { return needs[i].high; });
    std::vector<size_t> apart;
    double last = -infinite;
    for (const size_t i : order) {
        if (double(needs[i].low) > last) {
            apart.push_back(i);
            last = double(*(std::ranges::upper_bound(sizes, needs[i].high) - 1));
        }
    }
    return apart;
}

} // namespace

FewestBits fewestBits(const std::vector<BitNeed>& needs, const std::vector<Size>& sizes)
{
    const std::vector<double> chosen = Search(needs, usableSizes(needs, sizes)).best();
    FewestBits fewest;
    for (const BitNeed& need : needs) {
        const auto bit = std::ranges::lower_bound(sizes, nearestSize(need, chosen));
        fewest.bits.push_back(size_t(bit - sizes.begin()));
    }
    fewest.apart = needsApart(needs, sizes);
    return fewest;
}

namespace {

/** Merges the tools of one program. */
class Merger
{
public:
    Merger(const DrillDraft& draft, const std::vector<TableBit>& bits, bool withPressFit,
        std::vector<Drill>& drills)
        : mDraft(draft)
        , mBits(bits)
        , mWithPressFit(withPressFit)
        , mDrills(drills)
    {
        for (const TableBit& bit : bits) {
            mSizes.push_back(bit.size);
        }
    }

    /** @return rows that can't share a tool */
    std::vector<size_t> merge(const std::vector<size_t>& rows)
    {
        std::vector<BitNeed> needs;
        std::vector<size_t> rowOfNeed;
        std::set<std::pair<Size, QString>> others; // tools that nothing can share
        std::vector<size_t> apart;
        for (const size_t row : rows) {
            const Drill& drill = mDrills[row];
            if (const std::optional<BitNeed> need = needOf(row)) {
                needs.push_back(*need);
                rowOfNeed.push_back(row);
            } else if (drill.size && others.insert({*drill.size, drill.bit}).second) {
                apart.push_back(row);
            }
        }
        const FewestBits fewest = fewestBits(needs, mSizes);
        for (size_t i = 0; i < needs.size(); ++i) {
            take(rowOfNeed[i], mBits[fewest.bits[i]]);
        }
        for (const size_t need : fewest.apart) {
            apart.push_back(rowOfNeed[need]);
        }
        return apart;
    }

private:
    std::optional<BitNeed> needOf(size_t index) const
    {
        const DraftRow& row = mDraft.rows[index];
        const Drill& drill = mDrills[index];
        if (!drill.size || !drill.formulaSize || drill.bit.isEmpty()) {
            return std::nullopt;
        }
        const qint64 result = *drill.formulaSize;
        const BitNeed need{
            result, result - row.tolerance.minus, result + row.tolerance.plus, row.count};
        const auto bit = std::ranges::lower_bound(mSizes, need.low);
        const bool hasBit = bit != mSizes.end() && *bit <= need.high;
        const bool isInRange = !drill.flags.contains(PlanFlag::OutOfTolerance);
        if (hasBit && isInRange && (row.type != HoleType::PressFit || mWithPressFit)) {
            return need;
        }
        const bool isOfTable = std::ranges::binary_search(mSizes, *drill.size);
        return isOfTable ? std::optional(BitNeed{*drill.size, *drill.size, *drill.size, 0})
                         : std::nullopt;
    }

    void take(size_t row, const TableBit& bit)
    {
        Drill& drill = mDrills[row];
        if (*drill.size != bit.size) {
            drill.replaced = ReplacedDrill{*drill.size, drill.bit};
            drill.size = bit.size;
            drill.bit = bit.designation;
            drill.flags.removeAll(PlanFlag::UnapprovedBit);
            drill.flags << PlanFlag::Merged;
        }
    }

    const DrillDraft& mDraft;
    const std::vector<TableBit>& mBits;
    const bool mWithPressFit;
    std::vector<Drill>& mDrills;
    std::vector<Size> mSizes;
};

} // namespace

std::vector<size_t> mergeDrills(const DrillDraft& draft, const std::vector<TableBit>& bits,
    bool withPressFit, std::vector<Drill>& drills)
{
    std::map<std::pair<size_t, bool>, std::vector<size_t>> programs;
    for (size_t i = 0; i < draft.rows.size(); ++i) {
        programs[{draft.rows[i].layer, draft.rows[i].isPlated()}].push_back(i);
    }
    Merger merger(draft, bits, withPressFit, drills);
    std::vector<size_t> apart;
    for (const auto& [file, rows] : programs) {
        const std::vector<size_t> more = merger.merge(rows);
        apart.insert(apart.end(), more.begin(), more.end());
    }
    std::ranges::sort(apart);
    return apart;
}

} // namespace brox
