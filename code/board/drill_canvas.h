// SPDX-License-Identifier: MIT
#ifndef DRILL_CANVAS_H
#define DRILL_CANVAS_H

#include "reading.h"

#include <QRectF>
#include <limits>
#include <map>
#include <unordered_map>

namespace brox {

/** Where a reader is in its file, for messages. */
struct FileLine
{
    QString name; ///< path of the file
    qint64 line = 0; ///< from 1

    [[noreturn]] void fail(const QString& message) const { fail(line, message); }
    [[noreturn]] void fail(qint64 where, const QString& message) const
    {
        throw BoardError(name, where, message);
    }
};

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

/** What a comment or a list says of one tool by its number; sizes in host units, not rounded. */
struct ToolRemark
{
    HoleFacts facts;
    double size = 0; ///< 0: unspecified
    std::optional<ToldTolerance> tolerance;
    qint64 quantity = -1; ///< of hits; -1: unspecified
};

/** What lists of tools beside a drill file say of it. */
struct ListedTools
{
    QString list; ///< name of that with the tools, for messages
    std::map<int, ToolRemark> tools; ///< by number
    std::optional<Span> span;
    QString formatList; ///< name of that with the format
    NumberFormat format;
    bool isIncremental = false; ///< places are, from the beginning
};

/** What is known of one drill file before it is read. */
struct DrillOptions : ReadOptions
{
    ListedTools listed;
    std::optional<NumberFormat> chosen; ///< digits that go before those that it specifies
    Origin chosenBy = Origin::Guess;
    qint64 drilled = 0; ///< holes and slots of the board's files before it
};

/** A drill file as a layer of a board. */
struct DrillFile
{
    Layer layer; ///< named after the file
    std::optional<Units> units; ///< specified, or by the options
    QStringList notes; ///< what the user should know of it, without the file's name
    qint64 drilled = 0; ///< holes and slots, with those of the board's files before it
    QRectF extent; ///< the rectangle around what it drills, even if it is far; host size units
    NumberFormat format; ///< as its numbers were read
    std::vector<FormatChoice> choices; ///< other ways, by digits; empty if it is specified
    qint64 farLine = 0; ///< of a place that was moved into 5 m of the origin; only with choices
};

/** Notes for the user, of which those of one kind are shown once, with their number. */
class Notes
{
public:
    /** @param kind  a text that BoardText knows, with the places of the values */
    void add(const char* kind, const QStringList& values = {});

    QStringList texts() const;

private:
    struct Note
    {
        const char* kind;
        QString text; ///< of the first
        qint64 count = 0;
    };
    std::vector<Note> mNotes;
};

/** A tool as a drill file defines it. */
struct DrillTool
{
    QString name; ///< for messages, such as "T1"
    int number = 0;
    qint64 line = 0; ///< of its definition
    double diameter = 0; ///< in its units; 0: unspecified
    std::optional<Units> units; ///< null: those of the file, which may be specified later
    std::optional<ToldTolerance> tolerance; ///< in its units
    HoleFacts facts;
    std::optional<qint64> specifiedHits = {}; ///< by a comment
    QString bit = {}; ///< that a comment names with a drill size
};

/** What a drill file makes: its tools, and what each of them drills and routs.
 *
 * Places and distances come in host size units, not rounded; that is done here. Too many holes and
 * slots end the reading with a BoardError at the reader's position.
 */
class DrillCanvas
{
public:
    /** @param at       where the reader is; outlives the canvas
     *  @param drilled  holes and slots of the same board before it */
    DrillCanvas(const FileLine& at, qint64 drilled)
        : mAt(at)
        , mDrilled(drilled)
    { }

    size_t addTool(DrillTool tool);
    DrillTool& tool(size_t index) { return mTools[index]; }
    std::vector<DrillTool>& tools() { return mTools; }

    /** Holes and slots that a tool has made. */
    qint64 hits(size_t tool) const { return mHits[tool]; }

    /** From now on holes and slots are made by this tool.
     *
     * @param plating  null: as its definition has it; the same drill may make holes of both kinds
     */
    void select(size_t tool, std::optional<bool> plating = {});
    void deselect() { mUse.reset(); }
    bool isSelected() const { return mUse.has_value(); }

    void drill(const QPointF& at);

    /** A path by lines and arcs. It ends as a slot or a contour of the selected tool, or as the
     *  outline of a region, made by no tool. */
    void beginPath(const QPointF& at);
    bool hasPath() const { return mPath.has_value(); }
    void lineTo(const QPointF& to);
    void arcTo(Segment::Shape shape, const QPointF& to, const QPointF& centre);
    void endAsSlot();
    void endAsContour();
    void endAsRegion();

    /** What follows can be repeated, up to endPattern(). */
    void beginPattern();
    void endPattern();
    void repeatPattern(const QPointF& by, int times);

    /** A place further than 5 m from the origin is moved there, and its line remembered. */
    Place rounded(const QPointF& point);
    qint64 farLine() const { return mFarLine; } ///< 0: all places are near

    /** The finished size of a tool whose units are known.
     *
     * @throws BoardError  for a size that no tool has
     */
    Size sizeOf(const DrillTool& tool) const;

    /** All that was made, with tools in the order of their definition. To be called once.
     *
     * @param attributes     of the file, for tools of which nothing nearer is known
     * @param numbers        that have read the places
     * @param usualDecimals  of the program that wrote the file; 0: not known
     * @param notes          so far
     * @throws BoardError
     */
    DrillFile finish(const HoleAttributes& attributes, const NumberReader& numbers,
        int usualDecimals, Notes& notes);

private:
    /** How much a tool has made. */
    struct Count
    {
        size_t holes = 0;
        size_t slotPaths = 0;
        size_t contours = 0;
    };

    /** A tool as it is selected. */
    struct Use
    {
        size_t tool = 0;
        std::optional<bool> plating;
        std::vector<Place> holes;
        std::vector<Path> slotPaths;
        std::vector<Path> contours;
        qint64 pattern = -1; ///< the last one in which it made something

        Count end() const { return {holes.size(), slotPaths.size(), contours.size()}; }
    };

    /** What a use has made within the pattern. */
    struct PatternPart
    {
        size_t use = 0;
        Count begin;
        Count end;
    };

    void count(qint64 more);
    Place placed(const QPointF& point);
    Use& use();
    Path takePath();
    Place moved(const Place& from);
    Path moved(const Path& from);
    Layer takeLayer(const HoleFacts& file, Notes& notes);
    void addTo(Layer& layer, Use& use, const HoleFacts& file, Notes& notes) const;

    const FileLine& mAt;
    qint64 mDrilled;
    std::vector<DrillTool> mTools;
    std::vector<qint64> mHits;
    std::vector<Use> mUses;
    std::unordered_map<size_t, size_t> mUseOf; ///< by tool and plating
    std::optional<size_t> mUse; ///< the selected one
    std::optional<Path> mPath;
    std::vector<Path> mRegions;
    qint64 mPattern = 0; ///< number of the current one
    std::vector<PatternPart> mParts; ///< of the current pattern so far
    std::vector<PatternPart> mRepeated; ///< of the one that is repeated
    QPointF mMove; ///< how far the last repeat has moved
    qint64 mFarLine = 0;
    QPointF mFrom{std::numeric_limits<double>::max(), std::numeric_limits<double>::max()};
    QPointF mTo{std::numeric_limits<double>::lowest(), std::numeric_limits<double>::lowest()};
};

} // namespace brox

#endif
