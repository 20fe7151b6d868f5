// SPDX-License-Identifier: MIT
#ifndef IPC2581_SHAPE_READER_H
#define IPC2581_SHAPE_READER_H

#include "ipc2581_shape.h"
#include "ipc2581_values.h"

namespace brox {

/** Builds the primitives of an IPC-2581 file and keeps those of its dictionaries. */
class Ipc2581ShapeReader
{
public:
    /** What the elements within one are. */
    enum class Inside
    {
        Nothing,
        Shape,
        Polygon
    };

    explicit Ipc2581ShapeReader(const Ipc2581Values& values)
        : mValues(values)
    { }

    /** Of the primitives from here on, in host sizes. */
    void setUnit(double unit) { mUnit = unit; }

    void setUserDictionary(bool isUser) { mEntryIsUser = isUser; }
    void beginEntry(const XmlAttributes& attributes);
    void endEntry();
    void addLine(const XmlAttributes& attributes); ///< to the dictionary, for the entry

    void beginShape() { mShape = {}; }

    /** An element of a shape: a primitive, or what only holds some. */
    Inside startPart(std::string_view name, const XmlAttributes& attributes);

    /** A part of the entry lies somewhere of its own. */
    void movePart() { mShape.isCompound = true; }

    void beginPolygon() { mShape.path = {}; }
    void addCorner(std::string_view name, const XmlAttributes& attributes);
    void endPolygon();

    Path takePath() { return std::exchange(mShape.path, {}); }

    /** What the shape that was read cuts out, by the dictionaries if it refers to them. */
    Ipc2581Opening opening() const;

private:
    bool begin(Ipc2581Shape::Kind kind);
    Inside addPolygon(Ipc2581Shape::Kind kind);
    bool addSimple(std::string_view name, const XmlAttributes& attributes);
    bool addReference(std::string_view name, const XmlAttributes& attributes);
    bool readLineWidth(std::string_view name, const XmlAttributes& attributes);
    const Ipc2581Shape* resolved() const;
    Place place(const XmlAttributes& attributes, const char* x, const char* y) const;
    Segment arcTo(Place end, const XmlAttributes& attributes) const;

    const Ipc2581Values& mValues;
    double mUnit = 0;
    Ipc2581Shapes mStandardShapes;
    Ipc2581Shapes mUserShapes;
    std::unordered_map<std::string, double> mLineWidths;
    bool mEntryIsUser = false;
    std::string mEntry;
    Ipc2581Shape mShape;
};

} // namespace brox

#endif
