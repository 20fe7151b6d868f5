// SPDX-License-Identifier: MIT
#ifndef IPC2581_OPENINGS_H
#define IPC2581_OPENINGS_H

#include "ipc2581_shape_reader.h"
#include "layer_collector.h"

namespace brox {

/** The holes and slots of a step's layers, in sets that may lie somewhere of their own. */
class Ipc2581Openings
{
public:
    Ipc2581Openings(const Ipc2581Values& values, Ipc2581ShapeReader& shapes)
        : mValues(values)
        , mShapes(shapes)
    { }

    /** Of the design, in host sizes. */
    void setUnit(double unit) { mUnit = unit; }

    void beginLayer(const QString& name, const std::optional<Span>& span, bool isBackDrilled);

    void beginSet();
    void setBackDrilled() { mBackDrilled = true; } ///< the rest of the set
    void placeSet(std::string_view name, const XmlAttributes& attributes);

    void beginHole(const XmlAttributes& attributes);
    void beginSlot(const XmlAttributes& attributes);

    /** Location or Xform of the hole or slot. */
    void placeOpening(std::string_view name, const XmlAttributes& attributes);

    void endHole();
    void endSlot();

    /** The layers of a step that got anything. */
    std::vector<Layer> take() { return mCollector.take(); }

    /** Whether a hole or slot so far has a tolerance that is not 0. */
    bool isToleranceTold() const { return mToleranceTold; }

private:
    /** Location and Xform, which stand side by side. */
    struct Position
    {
        double x = 0;
        double y = 0;
        double xOffset = 0;
        double yOffset = 0;
        double rotation = 0;
        double scale = 1;
        bool mirror = false;

        bool turnsNothing() const
        {
            return xOffset == 0 && yOffset == 0 && rotation == 0 && scale == 1 && !mirror;
        }
        bool isIdentity() const { return x == 0 && y == 0 && turnsNothing(); }
    };

    void begin(const char* plating, const char* minus, const char* plus, bool mayAssume);
    HoleType typeOf(const char* plating) const;
    void read(std::string_view name, const XmlAttributes& attributes, Position& to) const;
    void add(const Ipc2581Opening& opening);
    Path moved(const Path& path, const Position& position) const;
    Path placed(const Path& path) const;

    const Ipc2581Values& mValues;
    Ipc2581ShapeReader& mShapes;
    double mUnit = 0; ///< 0: not told yet
    LayerCollector mCollector;
    bool mToleranceTold = false;

    QString mLayer;
    bool mLayerBackDrilled = false;
    bool mBackDrilled = false;
    Position mSetPosition;
    bool mSetStarted = false; ///< a hole of the set has been added
    Position mOwnPosition; ///< of the hole or slot
    bool mHasPlace = false; ///< the hole
    Tool mTool; ///< of the hole or slot
    bool mIsSquare = false;
};

} // namespace brox

#endif
