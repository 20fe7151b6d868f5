// SPDX-License-Identifier: MIT
#include "board_text.h"
#include "excellon_words.h"

#include <QFileInfo>
#include <cmath>

namespace brox {

/** The program's tools, from their definition to what the layer has of them. */

namespace {

constexpr size_t maxTools = 1000;

} // namespace

void ExcellonProgram::setUnits(Units units)
{
    if (mUnits && *mUnits != units) {
        mNotes << BoardText::tr("the units change in line %1").arg(mLine);
    }
    mUnits = units;
    mFormat.setUnits(units);
    for (DrillTool& tool : mTools) {
        tool.units = tool.units ? tool.units : units;
    }
}

void ExcellonProgram::defineTool(int number, std::string_view diameter)
{
    const auto value = toNumber(diameter);
    if (!value) {
        fail(BoardText::tr("diameter %1 is no number").arg(shown(diameter)));
    }
    if (*value <= 0) {
        fail(BoardText::tr("diameter %1 is not above 0").arg(shown(diameter)));
    }
    // More digits would leave open where the point is thought to be.
    if (diameter.size() > 1 && diameter.find('.') == diameter.npos) {
        fail(BoardText::tr("diameter %1 has no decimal point").arg(shown(diameter)));
    }
    DrillTool tool{number, mLine, *value, std::string(diameter), mComments.attributes(),
        mComments.tolerance(), mUnits};
    if (!tool.facts.type) {
        tool.facts.type = mComments.definedType();
    }
    if (tool.units) {
        sizeOf(tool); // what is wrong with it is told where it stands
    }
    const auto known = mToolOfNumber.find(number);
    if (known != mToolOfNumber.end()) {
        DrillTool& old = mTools[known->second];
        if (old.diameter == tool.diameter && old.units == tool.units) {
            if (mInHeader && tool.facts.type && old.facts.type != tool.facts.type) {
                old.facts.type.reset(); // told to be both
            }
            return;
        }
        const bool isUsed = std::any_of(mUses.begin(), mUses.end(), [&](const Use& use) {
            return use.tool == known->second && (!use.holes.empty() || !use.slotPaths.empty());
        });
        if (!isUsed) {
            mNotes << BoardText::tr(
                "T%1 has one diameter in line %2 and another in line %3, which counts")
                          .arg(number)
                          .arg(old.line)
                          .arg(mLine);
            old = tool;
            return;
        }
    }
    if (mTools.size() == maxTools) {
        fail(BoardText::tr("more than %1 tools").arg(maxTools));
    }
    mToolOfNumber[number] = mTools.size();
    mTools.push_back(std::move(tool));
}

void ExcellonProgram::selectTool(int number)
{
    endCut();
    if (!mInBody) {
        beginBody();
    }
    mUse.reset();
    auto known = mToolOfNumber.find(number);
    // "T0103" is tool 1 with the values of register 3.
    if (known == mToolOfNumber.end() && number > 100) {
        known = mToolOfNumber.find(number / 100);
    }
    if (known == mToolOfNumber.end() && number == 0) {
        return; // the tool goes back
    }
    if (known == mToolOfNumber.end()) {
        // A remark may tell its size; routers of some programs are told by no one.
        mTools.push_back({number, mLine, 0, {}, mComments.attributes(), {}, {}});
        known = mToolOfNumber.emplace(number, mTools.size() - 1).first;
    }
    const size_t tool = known->second;
    const std::optional<HoleType> type = mComments.selectedType();
    const auto same = std::find_if(mUses.begin(), mUses.end(),
        [&](const Use& use) { return use.tool == tool && use.type == type; });
    mUse = size_t(same - mUses.begin());
    if (same == mUses.end()) {
        mUses.push_back({tool, type, {}, {}, {}, {}, {}});
    }
}

/** The finished size; 0 if no one tells it. */
Size ExcellonProgram::sizeOf(const DrillTool& tool) const
{
    if (tool.diameter == 0) {
        const ToolRemark* remark = mComments.remark(tool.number);
        return remark && remark->size <= maxDiameter ? remark->size : 0;
    }
    const auto units = tool.units ? tool.units : mFormat.units();
    if (!units) {
        fail(tool.line,
            BoardText::tr("nothing tells whether T%1 is in millimetres or inches; "
                          "--file-units inch or metric does")
                .arg(tool.number));
    }
    const bool inch = units == Units::Inch;
    const double size = std::round(tool.diameter * (inch ? sizePerInch : sizePerMillimetre));
    if (size < 1 || size > maxDiameter) {
        fail(tool.line,
            (size < 1 ? BoardText::tr("tool T%1: %2 %3 is too small")
                      : BoardText::tr("tool T%1: %2 %3 is too large, the most are 500 mm"))
                .arg(tool.number)
                .arg(QString::fromStdString(tool.text), inch ? "inch" : "mm"));
    }
    return Size(size);
}

std::optional<Tolerance> ExcellonProgram::toleranceOf(const DrillTool& tool) const
{
    if (tool.tolerance) {
        const auto units = tool.units ? tool.units : mFormat.units();
        const double unit = units == Units::Inch ? sizePerInch : sizePerMillimetre;
        const auto size = [&](double number) {
            return Size(std::round(std::min(number * unit, maxDiameter)));
        };
        const Tolerance told{size(tool.tolerance->second), size(tool.tolerance->first)};
        return told == Tolerance{} ? std::nullopt : std::optional(told);
    }
    const ToolRemark* remark = mComments.remark(tool.number);
    return remark ? remark->tolerance : std::nullopt;
}

/** From the nearest to the farthest that tells the plating. */
HoleFacts ExcellonProgram::factsOf(const Use& use) const
{
    const DrillTool& tool = mTools[use.tool];
    if (use.type) {
        return {use.type, false, tool.facts.backDrill};
    }
    HoleFacts facts = tool.facts;
    if (facts.type) {
        return facts;
    }
    const ToolRemark* remark = mComments.remark(tool.number);
    const HoleFacts other = remark && remark->facts.type
        ? remark->facts
        : mComments.fallback(tool.number, QFileInfo(mName).fileName());
    facts.type = other.type;
    facts.functionTold = facts.functionTold || other.functionTold;
    return facts;
}

void ExcellonProgram::addTo(Layer& layer, Use& use, QStringList& notes) const
{
    const DrillTool& drill = mTools[use.tool];
    const HoleFacts facts = factsOf(use);
    for (Path& contour : use.contours) {
        const bool unplated = facts.type == HoleType::NonPlated;
        layer.contours.push_back(
            {unplated ? HoleType::NonPlated : HoleType::Plated, std::move(contour)});
    }
    if (use.holes.empty() && use.slotPaths.empty()) {
        return;
    }
    if (!use.holes.empty() && sizeOf(drill) == 0) {
        fail(drill.line, BoardText::tr("tool T%1 has no diameter").arg(drill.number));
    }
    Tool tool;
    tool.number = drill.number;
    // Without any hint a hole counts as plated: most are. It is a guess, and told to be one.
    tool.type = facts.type.value_or(HoleType::Plated);
    tool.typeAssumed = !facts.type;
    tool.functionTold = facts.functionTold;
    tool.finishedSize = sizeOf(drill);
    tool.tolerance = toleranceOf(drill);
    tool.holes = std::move(use.holes);
    tool.slotPaths = std::move(use.slotPaths);
    if (tool.finishedSize == 0) {
        notes << BoardText::tr("the file does not tell the width of the slots of T%1")
                     .arg(drill.number);
    }
    (facts.backDrill ? layer.backDrills : layer.tools).push_back(std::move(tool));
}

void ExcellonProgram::compareRemarks(QStringList& notes) const
{
    for (size_t i = 0; i < mTools.size(); ++i) {
        const ToolRemark* remark = mComments.remark(mTools[i].number);
        if (!remark) {
            continue;
        }
        qint64 hits = 0;
        for (const Use& use : mUses) {
            hits += use.tool == i ? qint64(use.holes.size() + use.slotPaths.size()) : 0;
        }
        constexpr Size tolerance = sizePerMil / 2; // diameters may be rounded
        const Size size = hits > 0 ? sizeOf(mTools[i]) : 0;
        if (remark->size > 0 && size > 0 && std::abs(size - remark->size) > tolerance) {
            notes << BoardText::tr("T%1 has %2 mm where a comment tells %3 mm")
                         .arg(mTools[i].number)
                         .arg(double(size) / sizePerMillimetre)
                         .arg(double(remark->size) / sizePerMillimetre);
        }
        if (remark->quantity >= 0 && hits != remark->quantity) {
            notes << BoardText::tr("T%1 drills %2 holes where a comment tells %3")
                         .arg(mTools[i].number)
                         .arg(hits)
                         .arg(remark->quantity);
        }
    }
}

DrillFile ExcellonProgram::finish()
{
    if (mInHeader) {
        fail(BoardText::tr("the header does not end; the file is cut off"));
    }
    if (!mEnded && !mMayEnd && mStopLine == 0) {
        fail(BoardText::tr("the program does not end; the file is cut off"));
    }
    DrillFile file;
    file.notes = std::move(mNotes);
    compareRemarks(file.notes);
    // In the order of their definition, which is how programs list them.
    std::stable_sort(
        mUses.begin(), mUses.end(), [](const Use& a, const Use& b) { return a.tool < b.tool; });
    for (Use& use : mUses) {
        addTo(file.layer, use, file.notes);
    }
    file.layer.span = mComments.span();
    file.layer.assumedFormat = mFormat.guess();
    file.units = mFormat.units();
    return file;
}

} // namespace brox
