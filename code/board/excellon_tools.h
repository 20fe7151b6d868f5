// SPDX-License-Identifier: MIT
#ifndef EXCELLON_TOOLS_H
#define EXCELLON_TOOLS_H

#include "drill_canvas.h"

#include <QHash>
#include <map>
#include <vector>

namespace brox {

/** What the comments of an Excellon or XNC file say of its holes and places. Programs write no
 *  plating, vias or tolerances otherwise. */
class ExcellonComments
{
public:
    /** @param comment  without the mark of comments
     *  @param numbers  gets digits, zeros and units that the comment specifies */
    void read(const QString& comment, NumberReader& numbers);

    /** From here on a comment on plating concerns tools that are selected, not defined. */
    void endHeader();

    const HoleAttributes& attributes() const { return mAttributes; }

    /** Of a tool that is defined here. */
    HoleFacts definedFacts() const;

    /** Of a tool that is selected here; null: that of its definition. */
    std::optional<bool> selectedPlating() const { return mInBody ? mSection : std::nullopt; }

    const ToolRemark* remark(int number) const;

    /** Numbers of the tools with remarks, as these follow each other. */
    const std::vector<int>& remarkOrder() const { return mOrder; }

    /** Whether the file's sizes are said to be those of drills, to which no plating is added. */
    bool hasDrillSizes() const { return mHasDrillSizes; }

    /** The bit of a tool of a file with drill sizes; empty: none is named. */
    QString bit(int number) const { return mHasDrillSizes ? mBits.value(number) : QString(); }

    /** Of a tool by its number, its remark, and the comments on the whole file; known at the
     *  file's end. */
    HoleFacts factsOf(int number) const;

private:
    bool readRemark(const QString& comment, NumberReader& numbers);
    bool readRange(const QString& comment);
    bool readDrillSizes(const QString& comment);
    bool readWholeFile(const QString& comment);
    static void readFormat(const QString& comment, NumberReader& numbers);

    HoleAttributes mAttributes;
    HoleFacts mFile;
    bool mInBody = false;
    std::optional<bool> mSection; ///< plated or not
    QHash<int, ToolRemark> mRemarks;
    std::vector<int> mOrder; ///< of the remarks
    QHash<int, QString> mBits; ///< by the tool's number
    bool mHasDrillSizes = false;
    std::map<int, bool> mRanges; ///< plated or not, from this number on
};

/** The magazine: which number is which tool. All of it throws BoardErrors. */
class ExcellonTools
{
public:
    /** All of them outlive the tools. */
    ExcellonTools(const FileLine& at, const ExcellonComments& comments, const ListedTools& listed,
        DrillCanvas& canvas, Notes& notes)
        : mAt(at)
        , mComments(comments)
        , mListed(listed)
        , mCanvas(canvas)
        , mNotes(notes)
    { }

    /** @param units  of the diameter; null: not known yet */
    void define(int number, std::string_view diameter, std::optional<Units> units, bool inHeader);

    /** Of the tools that were defined before the units. */
    void setUnits(Units units);

    void select(int number);

    /** For a program that numbers no tools: the next one that comments list. */
    void selectNext();

    /** Decimals that the diameters of all defined tools have; 0 if they differ. */
    int decimals() const { return mDecimals.value_or(0); }

    /** Adds to the tools what comments and lists say of them, and compares; at the file's end. */
    void finish(const NumberReader& numbers);

private:
    size_t add(DrillTool tool);
    void noteListed(const NumberReader& numbers);
    void take(size_t index, const ToolRemark& remark, const QString& list);
    void compare(size_t index, const ToolRemark& remark, const QString& by);

    const FileLine& mAt;
    const ExcellonComments& mComments;
    const ListedTools& mListed;
    DrillCanvas& mCanvas;
    Notes& mNotes;
    std::unordered_map<int, size_t> mToolOf; ///< by number
    std::optional<int> mDecimals;
    size_t mNext = 0; ///< of the remarks
};

} // namespace brox

#endif
