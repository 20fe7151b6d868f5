// SPDX-License-Identifier: MIT
#ifndef EXCELLON_PROGRAM_H
#define EXCELLON_PROGRAM_H

#include "excellon_comments.h"
#include "reading.h"

#include <string_view>
#include <unordered_map>

namespace brox {

/** Runs an Excellon or XNC program, a drilling machine's, and keeps what it would drill and rout.
 *
 * What may drill holes and is not understood ends the reading: a missing hole is as bad as a wrong
 * one.
 */
class ExcellonProgram
{
public:
    /** @param name    path for messages; its last part may tell the plating
     *  @param sample  the file's beginning, see ExcellonFormat
     *  @param units   of a file that tells none */
    ExcellonProgram(const QString& name, std::string_view sample, std::optional<Units> units);

    /** One line without its end; lines count from 1.
     *
     * @throws BoardError
     */
    void readLine(std::string_view line);

    /** What the lines come to. To be called once, at the file's end.
     *
     * @throws BoardError  also for a file that is cut off
     */
    DrillFile finish();

private:
    struct DrillTool
    {
        int number = 0;
        qint64 line = 0;
        double diameter = 0; ///< in the file's units
        std::string text; ///< of the diameter, for messages
        HoleFacts facts;
        std::optional<std::pair<double, double>> tolerance;
        std::optional<Units> units; ///< at its definition; null: those of the file
    };

    /** How much a tool has made. */
    struct Extent
    {
        size_t holes = 0;
        size_t slotPaths = 0;
        size_t contours = 0;
    };

    /** A tool as it is selected: the same drill may make plated holes and unplated ones. */
    struct Use
    {
        size_t tool = 0;
        std::optional<HoleType> type; ///< told where it was selected
        std::vector<Place> holes;
        std::vector<Path> slotPaths;
        std::vector<Path> contours;
        Extent patternBegin; ///< of the pattern that is repeated
        Extent patternEnd;

        Extent end() const { return {holes.size(), slotPaths.size(), contours.size()}; }
    };

    struct Words;
    enum class Mode
    {
        Drill,
        Move,
        Cut,
        Up ///< after a cut
    };
    enum class Pattern
    {
        None,
        Open,
        Repeated
    };
    struct Point
    {
        qint64 x = 0;
        qint64 y = 0;
    };

    [[noreturn]] void fail(qint64 line, const QString& message) const;
    [[noreturn]] void fail(const QString& message) const { fail(mLine, message); }

    bool readKeyword(std::string_view line);
    Words split(std::string_view line);
    void readCommands(std::string_view line);
    void preparation(int code, Words& words);
    void miscellaneous(int code, Words& words);

    int number(char letter, std::string_view digits) const;
    qint64 coordinate(char letter, std::string_view digits);
    Point target(const std::optional<qint64>& x, const std::optional<qint64>& y) const;
    Place place(const Point& point) const;
    void beginBody();

    void setUnits(Units units);
    void readFormatFields(std::string_view fields);
    void defineTool(int number, std::string_view diameter);
    void selectTool(int number);
    Use& use(const char* what);

    void count(qint64 more);
    void addHoles(const Words& words);
    void moveTo(const Words& words);
    void cutTo(const Words& words);
    void beginCut();
    void endCut();
    void addCannedSlot(const Words& words);
    void addCircle(const Point& centre, qint64 radius, std::vector<Path>& to);
    Segment segmentTo(const Point& to, const Words& words) const;
    Place arcCentre(const Point& to, const Words& words) const;

    void beginPattern();
    void endPattern();
    void repeatPattern(const Point& by, int times);
    Place moved(const Place& from) const;
    Path moved(const Path& from);

    Size sizeOf(const DrillTool& tool) const;
    std::optional<Tolerance> toleranceOf(const DrillTool& tool) const;
    HoleFacts factsOf(const Use& use) const;
    void addTo(Layer& layer, Use& use, QStringList& notes) const;
    void compareRemarks(QStringList& notes) const;

    QString mName;
    qint64 mLine = 0;

    ExcellonFormat mFormat;
    std::optional<Units> mUnits; ///< that the file has told so far
    ExcellonComments mComments;
    std::vector<DrillTool> mTools;
    std::unordered_map<int, size_t> mToolOfNumber;
    std::vector<Use> mUses;
    std::optional<size_t> mUse; ///< the selected one
    std::vector<Path> mContours;

    bool mInHeader = false;
    bool mInBody = false;
    bool mEnded = false;
    bool mMayEnd = false; ///< the last line was one that ends some programs
    qint64 mStopLine = 0; ///< line of an M00 that nothing has followed yet; 0: none
    QStringList mNotes; ///< for the user
    bool mIncremental = false;
    bool mHasPlaces = false;
    bool mAfterHole = false; ///< which a repeat would copy
    qint64 mDrilled = 0;
    Mode mMode = Mode::Drill;
    Segment::Shape mShape = Segment::Shape::Line;
    bool mCompensated = false; ///< the cutter runs beside the path
    bool mCutting = false;
    bool mCutCompensated = false; ///< it was when the cut began
    Path mCut;
    Point mAt;
    Pattern mPattern = Pattern::None;
    Point mPatternAt; ///< how far the last repeat has moved
};

} // namespace brox

#endif
