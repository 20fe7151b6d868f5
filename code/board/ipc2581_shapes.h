// SPDX-License-Identifier: MIT
#ifndef IPC2581_SHAPES_H
#define IPC2581_SHAPES_H

#include "ipc2581_xml.h"

#include <string>
#include <unordered_map>

namespace brox {

/** What a shape cuts out about its own origin: a slot of one width, or a contour. */
struct Ipc2581Opening
{
    std::optional<Size> width; ///< of a slot; null: a contour
    Path path; ///< of a slot the way of the tool's middle, a point for a round hole; or the outline
};

Path rectanglePath(Place lowerLeft, Place upperRight);

/** Builds the primitives of an IPC-2581 file and keeps those of its dictionaries. */
class Ipc2581Shapes
{
public:
    explicit Ipc2581Shapes(const Ipc2581Pass& pass)
        : mPass(pass)
    { }

    // Dictionaries.
    void beginEntry(const Ipc2581Attributes& attributes);
    void endStandardEntry() { endEntry(mStandardShapes); }
    void endUserEntry() { endEntry(mUserShapes); }
    void keepLine(const Ipc2581Attributes& attributes); ///< for the entry

    void begin() { mShape = {}; }

    // Primitives.
    void addCircle(const Ipc2581Attributes& attributes);
    void addOval(const Ipc2581Attributes& attributes);
    void addRectangle(const Ipc2581Attributes& attributes);
    void addRoundRectangle(const Ipc2581Attributes& attributes);
    void addCutRectangle(const Ipc2581Attributes& attributes);
    void addCorners(const Ipc2581Attributes& attributes); ///< of a rectangle
    void addDiamond(const Ipc2581Attributes& attributes);
    void addEllipse(const Ipc2581Attributes& attributes);
    void addHexagon(const Ipc2581Attributes& attributes);
    void addOctagon(const Ipc2581Attributes& attributes);
    void addTriangle(const Ipc2581Attributes& attributes);
    void addLine(const Ipc2581Attributes& attributes);
    void addArc(const Ipc2581Attributes& attributes);
    void addStandardReference(const Ipc2581Attributes& attributes);
    void addUserReference(const Ipc2581Attributes& attributes);

    void setLineWidth(const Ipc2581Attributes& attributes);
    void setLineReference(const Ipc2581Attributes& attributes);

    /** A part of the entry lies somewhere of its own. */
    void movePart() { mShape.isCompound = true; }

    // Polygons.
    void beginPolygon() { mPolygon = {}; }
    void startPolygon(const Ipc2581Attributes& attributes);
    void addCorner(const Ipc2581Attributes& attributes);
    void addCurve(const Ipc2581Attributes& attributes);
    Path takePolygon() { return std::exchange(mPolygon, {}); }
    void endOutline();
    void endPolyline();

    /** What the shape that was read cuts out, by the dictionaries if it refers to them. */
    Ipc2581Opening opening();

private:
    enum class Kind
    {
        None,
        Stroke, ///< a path, perhaps of a width
        Outline, ///< perhaps that of a slot
        Opening, ///< known to be a slot, or to be none
        StandardReference,
        UserReference
    };
    struct Shape
    {
        Kind kind = Kind::None;
        Ipc2581Opening opening;
        double lineWidth = 0; ///< of a stroke; 0: unspecified
        std::string reference;
        bool isCompound = false; ///< of several parts, or of one that is moved: not understood
    };
    using Shapes = std::unordered_map<std::string, Shape>;

    void endEntry(Shapes& shapes);
    void end();
    void addSegment(const Segment& segment);
    bool add(Kind kind, Ipc2581Opening opening);
    void addContour(Path outline) { add(Kind::Opening, {{}, std::move(outline)}); }
    void addSlot(double width, double height);
    void addInscribed(double width, double height, int corners, double first);
    const Shape* resolved() const;

    const Ipc2581Pass& mPass;
    Shapes mStandardShapes;
    Shapes mUserShapes;
    std::unordered_map<std::string, double> mLineWidths;
    std::string mEntry;
    Shape mShape;
    Path mPolygon;
    qint64 mSegments = 0; ///< of all polygons
};

} // namespace brox

#endif
