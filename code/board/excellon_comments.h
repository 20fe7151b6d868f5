// SPDX-License-Identifier: MIT
#ifndef EXCELLON_COMMENTS_H
#define EXCELLON_COMMENTS_H

#include "excellon_format.h"

#include <QHash>
#include <vector>

namespace brox {

/** What a hole is for, as far as it is told. */
struct HoleFacts
{
    std::optional<HoleType> type; ///< null: plating is not told
    bool functionTold = false; ///< told to be a via, or no via
    bool backDrill = false;
};

/** What a comment tells of one tool by its number. */
struct ToolRemark
{
    HoleFacts facts;
    Size size = 0;
    std::optional<Tolerance> tolerance;
    qint64 quantity = -1; ///< of hits; -1: not told
};

/** What the comments of an Excellon or XNC file tell of its holes and places. Programs write no
 *  plating, vias or tolerances otherwise. */
class ExcellonComments
{
public:
    /** @param comment  without the mark of comments
     *  @param format   gets digits, zeros and units that the comment tells */
    void read(const QString& comment, ExcellonFormat& format);

    /** From here on a comment on plating concerns tools that are selected, not defined. */
    void endHeader();

    /** Of a tool that is defined here. */
    const HoleFacts& attributes() const { return mAttributes; }
    std::optional<HoleType> definedType() const { return mInBody ? std::nullopt : mSection; }

    /** Plus and minus in the file's units, of a tool that is defined here. */
    std::optional<std::pair<double, double>> tolerance() const { return mTolerance; }

    /** Of a tool that is selected here; null: that of its definition. */
    std::optional<HoleType> selectedType() const { return mInBody ? mSection : std::nullopt; }

    const ToolRemark* remark(int number) const;

    /** What is known of a tool for which nothing else is told, by its number, the comments on the
     *  whole file and the file's name; known at the file's end. */
    HoleFacts fallback(int number, const QString& fileName) const;

    std::optional<Span> span() const { return mSpan; }

private:
    void readAttribute(const QString& attribute);
    void readFileFunction(const QStringList& fields);
    void readAperFunction(const QStringList& fields);
    bool readRemark(const QString& comment, ExcellonFormat& format);
    bool readRange(const QString& comment);
    bool readWholeFile(const QString& comment);
    static void readFormat(const QString& comment, ExcellonFormat& format);

    HoleFacts mFile;
    std::optional<Span> mSpan;
    bool mInBody = false;
    std::optional<HoleType> mSection;
    HoleFacts mAttributes;
    std::optional<std::pair<double, double>> mTolerance;
    QHash<int, ToolRemark> mRemarks;
    std::vector<std::pair<int, HoleType>> mRanges; ///< first number and type
};

} // namespace brox

#endif
