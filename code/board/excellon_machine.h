// SPDX-License-Identifier: MIT
#ifndef EXCELLON_MACHINE_H
#define EXCELLON_MACHINE_H

#include "drill_canvas.h"

#include <QVarLengthArray>
#include <algorithm>

namespace brox {

/** The drilling machine that an Excellon or XNC program runs on: its words and its head. */

/** The commands of one line of a program, without the order that they stand in. */
struct Words
{
    QVarLengthArray<int, 8> preparations; ///< numbers of G
    QVarLengthArray<int, 8> miscellaneous; ///< numbers of M
    std::optional<int> tool;
    std::optional<std::string_view> diameter;
    std::optional<double> x; ///< the first place of the line
    std::optional<double> y;
    std::optional<double> x2; ///< the one behind G84, G85 and G87
    std::optional<double> y2;
    std::optional<double> i;
    std::optional<double> j;
    std::optional<double> radius;
    int repeats = 0; ///< 0: no repeat
    bool repeatIsLast = false; ///< it stands behind a place
    int canned = 0; ///< number of the cycle: 84, 85, 87, 32, 33
    bool hasPlace = false; ///< coordinates that mean something yet

    bool has(int preparation) const { return preparations.contains(preparation); }
    bool hasAny(std::initializer_list<int> codes) const
    {
        return std::any_of(
            codes.begin(), codes.end(), [this](int code) { return miscellaneous.contains(code); });
    }
    QPointF place() const { return {x.value_or(0), y.value_or(0)}; }
};

/** Takes a line apart.
 *
 * @param line  in capitals, without a comment; the words may point into it
 * @throws BoardError
 */
Words splitLine(std::string_view line, NumberReader& numbers, const FileLine& at);

/** Without blanks on both sides. */
std::string_view trimmed(std::string_view text);

/** The head: where the tool is, and whether it drills, moves or cuts. All of it throws BoardErrors.
 */
class ExcellonHead
{
public:
    /** All of them outlive the head. */
    ExcellonHead(const FileLine& at, DrillCanvas& canvas)
        : mAt(at)
        , mCanvas(canvas)
    { }

    enum class Mode
    {
        Drill,
        Move,
        Cut,
        Up ///< after a cut
    };
    Mode mode() const { return mMode; }
    bool hasWorked() const { return mHasWorked; }

    void setIncremental(bool is) { mIncremental = is; }
    void setCompensated(bool is) { mCompensated = is; }
    void setMode(Mode mode);

    /** Tool down; however many lines and arcs follow, it is one slot. */
    void beginCut(Segment::Shape shape);
    void endCut();

    /** A repeat can't follow: something else than a hole has been made. */
    void forgetHole() { mAfterHole = false; }

    /** Drills, moves or cuts, as the mode is. */
    void goTo(const Words& words);
    void moveTo(const Words& words);

    /** Of the arcs that follow without one. */
    void setRadius(double radius) { mRadius = radius; }
    void cutTo(const Words& words);
    void addCycle(const Words& words);

private:
    QPointF target(const std::optional<double>& x, const std::optional<double>& y) const;
    void need(const char* what);
    void drill(const Words& words);
    void addCircle(const QPointF& centre, double radius, bool isSlot);
    QPointF arcCentre(const QPointF& to, const Words& words) const;

    const FileLine& mAt;
    DrillCanvas& mCanvas;
    QPointF mHere;
    Mode mMode = Mode::Drill;
    Segment::Shape mShape = Segment::Shape::Line;
    double mRadius = 0;
    bool mIncremental = false;
    bool mCompensated = false; ///< the cutter runs beside the path
    bool mCutCompensated = false; ///< it did when the cut began
    bool mAfterHole = false; ///< which a repeat would copy
    bool mHasWorked = false; ///< there were places
};

} // namespace brox

#endif
