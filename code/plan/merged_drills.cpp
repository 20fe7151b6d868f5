// SPDX-License-Identifier: MIT
#include "merged_drills.h"

#include "fewest_bits.h"

#include <algorithm>
#include <map>
#include <set>

namespace brox {

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
