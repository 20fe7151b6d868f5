// SPDX-License-Identifier: MIT
#ifndef BOARD_H
#define BOARD_H

#include <QHashFunctions>
#include <QString>
#include <QStringList>
#include <compare>
#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <vector>

namespace brox {

/** A board's drill data, as a reader hands them over: what the files specify, and of each guess
 * that it is one. Rules of a shop act later and change nothing here. */

/** What went wrong, described in one line for the user. */
class Error : public std::runtime_error
{
public:
    explicit Error(const QString& message)
        : std::runtime_error(message.toStdString())
    { }

    QString message() const { return QString::fromUtf8(what()); }
};

/** A length or coordinate in host size units: 400 to the micron, 10160 to the mil. */
using Size = std::int32_t;

constexpr Size sizePerMicron = 400;
constexpr Size sizePerMil = 10160;
constexpr Size sizePerMillimetre = 1000 * sizePerMicron;
constexpr Size sizePerInch = 1000 * sizePerMil;

enum class Units
{
    Inch = 0,
    Metric = 1
};

enum class HoleType
{
    Plated,
    NonPlated,
    Via,
    PressFit
};

/** A point of a step, x to the right and y upwards. A board may have millions. */
struct Place
{
    Size x = 0;
    Size y = 0;
    auto operator<=>(const Place&) const = default; ///< from left to right
    bool operator==(const Place&) const = default;
};
static_assert(sizeof(Place) == 8);

/** A line or an arc of at most a full circle, from where the last segment ended. */
struct Segment
{
    enum class Shape
    {
        Line,
        Clockwise,
        CounterClockwise
    };
    Shape shape = Shape::Line;
    Place to;
    Place centre; ///< of an arc; an arc that ends where it begins is a full circle
    bool operator==(const Segment&) const = default;
};

struct Path
{
    Place start;
    std::vector<Segment> segments;

    Place end() const { return segments.empty() ? start : segments.back().to; }
    bool isClosed() const { return !segments.empty() && end() == start; }
    bool operator==(const Path&) const = default;
};

/** By how much a finished hole may be smaller and larger than its size; magnitudes. */
struct Tolerance
{
    Size minus = 0;
    Size plus = 0;
    bool operator==(const Tolerance&) const = default;
};

/** All holes and slots of a layer that are alike. */
struct Tool
{
    int number = 0; ///< in its file; 0: files of this format number no tools
    HoleType type = HoleType::Plated;
    bool typeAssumed = false; ///< nothing specifies whether it is plated
    bool functionTold = false; ///< specified to be a via, or to be something else
    Size finishedSize = 0; ///< of the holes, and the width of the slots
    std::optional<Tolerance> tolerance; ///< null: unspecified
    std::vector<Place> holes;
    std::vector<Path> slotPaths; ///< the middle of the slots
    std::optional<qint64> specifiedHits = {}; ///< holes and slots by a comment
    QString bit = {}; ///< that a comment names with a drill size; empty: none

    /** The same but for holes and slots. */
    bool isLike(const Tool& other) const
    {
        return number == other.number && type == other.type && typeAssumed == other.typeAssumed
            && functionTold == other.functionTold && finishedSize == other.finishedSize
            && tolerance == other.tolerance && bit == other.bit;
    }
};

/** A hash of what isLike() compares. */
inline size_t likenessOf(const Tool& tool)
{
    const Tolerance tolerance = tool.tolerance.value_or(Tolerance{});
    return qHashMulti(
        0, tool.number, int(tool.type), tool.finishedSize, tolerance.minus, tolerance.plus);
}

/** A routed outline that is no slot of one width. */
struct Contour
{
    HoleType type = HoleType::NonPlated; ///< plated or not
    Path outline;
};

/** The copper layers that holes begin and end at, by the names or numbers that the file has. */
struct Span
{
    QString from;
    QString to;
    bool operator==(const Span&) const = default;
};

inline size_t qHash(const Span& span, size_t seed = 0)
{
    return qHashMulti(seed, span.from, span.to);
}

struct Layer
{
    QString name;
    std::optional<Span> span;
    std::vector<Tool> tools; ///< those with holes or slots, as the file orders them
    std::vector<Tool> backDrills; ///< drilled to take plating away; their type means nothing
    std::vector<Contour> contours;
    QString assumedFormat; ///< digits that had to be guessed, such as "2:4"; empty: specified
    bool formatDoubtful = false; ///< other digits are nearly as likely
    bool hasDrillSizes = false; ///< its tools' sizes are those of drills, not of finished holes
};

/** Copies of a step in a grid, as panels have them. */
struct Repeat
{
    size_t step = 0; ///< index in the board; no step repeats itself, however indirectly
    Place at; ///< where the origin of the first copy lies
    int columns = 1;
    int rows = 1;
    Size dx = 0; ///< from column to column
    Size dy = 0; ///< from row to row
    double angle = 0; ///< of each copy about its origin, degrees counter-clockwise
    bool mirror = false; ///< left and right exchanged, before it is turned
};

struct Step
{
    QString name;
    std::vector<Layer> layers; ///< those with any content, in order of first appearance
    std::vector<Repeat> repeats;
    std::vector<Path> outline; ///< empty if the board specifies none
    qint64 holesLeftOut = 0; ///< holes on layers that are neither drilled nor routed
};

struct Board
{
    QString job;
    Units units = Units::Metric;
    std::vector<Step> steps;
    size_t mainStep = 0; ///< index of the step that the file is about
    QStringList copperLayers = {}; ///< from the top to the bottom; empty: not specified by name
    std::optional<Size> thickness = {}; ///< of the board; null: not specified
    QString file; ///< name of the file, without its folder; empty: drill files
    std::shared_ptr<const Board> drillFiles; ///< that came with the file, not taken; null: none
    bool isContradicted = false; ///< by other files of its order; the notes have it
    QStringList notes; ///< lines for the user: files taken and not, counts that differ and such
};

} // namespace brox

#endif
