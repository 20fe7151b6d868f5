// SPDX-License-Identifier: MIT
#ifndef DRILL_COMMENTS_H
#define DRILL_COMMENTS_H

#include "number_format.h"

#include <QHash>
#include <map>
#include <vector>

namespace brox {

/** What a hole is for, as far as it is specified. */
struct HoleFacts
{
    enum class Use
    {
        Unknown,
        Via,
        PressFit,
        Mechanical,
        Other ///< but no via
    };
    std::optional<bool> plated;
    Use use = Use::Unknown;
    bool isBackDrill = false;

    /** Takes what is not known yet from one that stands for more than this hole. */
    void complete(const HoleFacts& other);

    HoleType type() const;
    bool isTypeAssumed() const { return !plated && use != Use::Via && use != Use::PressFit; }
};

/** Magnitudes, in the units of whatever they belong to. */
struct ToldTolerance
{
    double plus = 0;
    double minus = 0;
};

/** The attributes of the open image format, which Gerber and Excellon files share. */
class HoleAttributes
{
public:
    /** @param attribute  such as "TF.FileFunction,Plated,1,4,PTH"; others are passed over */
    void read(const QString& attribute);

    const HoleFacts& ofFile() const { return mFile; }
    const std::optional<Span>& span() const { return mSpan; }

    /** Of a tool that is defined here. */
    const HoleFacts& ofTool() const { return mTool; }
    const std::optional<ToldTolerance>& tolerance() const { return mTolerance; }

private:
    void readFileFunction(const QStringList& fields);
    void readAperFunction(const QStringList& fields);
    void readTolerance(const QStringList& fields);

    HoleFacts mFile;
    std::optional<Span> mSpan;
    HoleFacts mTool;
    std::optional<ToldTolerance> mTolerance;
};

/** What the name of a drill file says. */
HoleFacts factsOfName(const QString& fileName);

/** Host sizes to a unit by its name, such as "MM", "MILLIMETER" or "inch"; others are mils. */
double unitOf(const QString& name);

/** What a comment or a list says of one tool by its number; sizes in host units, not rounded. */
struct ToolRemark
{
    HoleFacts facts;
    double size = 0; ///< 0: unspecified
    std::optional<ToldTolerance> tolerance;
    qint64 quantity = -1; ///< of hits; -1: unspecified
};

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

} // namespace brox

#endif
