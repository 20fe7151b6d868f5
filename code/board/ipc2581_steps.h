// SPDX-License-Identifier: MIT
#ifndef IPC2581_STEPS_H
#define IPC2581_STEPS_H

#include "ipc2581_shapes.h"
#include "panel.h"

#include <QHash>
#include <set>

namespace brox {

/** Groups holes and slots by layer and tool, however many there are: files of this format number
 *  no tools. */
class LayerCollector
{
public:
    /** Begins or goes on with a layer. */
    Layer& layer(const QString& name);

    /** The tool of the current layer that is like one, made if there is none yet. */
    Tool& tool(const Tool& like, bool isBackDrill);

    /** The layers that got anything, in order of first appearance; the collector is empty then. */
    std::vector<Layer> take();

    const std::vector<Layer>& layers() const { return mLayers; }

private:
    std::vector<Layer> mLayers;
    QHash<QString, size_t> mLayerOfName;
    QMultiHash<size_t, size_t> mTools; ///< index in the layer's tools or back drills, by hash
    size_t mCurrent = 0;
};

/** The holes and slots of a step's layers, in sets that may lie somewhere of their own. */
class Ipc2581Openings
{
public:
    Ipc2581Openings(const Ipc2581Pass& pass, Ipc2581Shapes& shapes)
        : mPass(pass)
        , mShapes(shapes)
    { }

    void beginLayer(const QString& name, const std::optional<Span>& span, bool isBackDrilled);

    void beginSet();
    void setBackDrilled() { mBackDrilled = true; } ///< the rest of the set
    void locateSet(const Ipc2581Attributes& attributes); ///< by a Location
    void turnSet(const Ipc2581Attributes& attributes); ///< by an Xform

    void beginHole(const Ipc2581Attributes& attributes);
    void beginSlot(const Ipc2581Attributes& attributes);

    void locate(const Ipc2581Attributes& attributes); ///< the hole or slot
    void turn(const Ipc2581Attributes& attributes);

    void endHole();
    void endSlot();

    /** A hole of a pad stack that lies on the board: a hole of its own only if no layer of drills
     *  has the holes. What is wrong with it matters only then. */
    void beginPadHole(const Ipc2581Attributes& attributes);
    void setPadSpan(const Ipc2581Attributes& attributes);
    void endPadHole();

    /** The layers of a step that got anything.
     *
     * @param drillLayers  names, by the layers that they begin and end at
     * @param leftOut      made larger by the holes of pad stacks that are neither drilled nor
     *                     repeat others
     */
    std::vector<Layer> take(const QHash<Span, QString>& drillLayers, qint64& leftOut);

    /** Whether a hole or slot so far has a tolerance that is not 0. */
    bool isToleranceTold() const { return mToleranceTold; }

private:
    /** Location and Xform, which stand side by side. */
    struct Placement
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

    void checkSet(const char* element) const;
    void readTurn(Placement& to, const Ipc2581Attributes& attributes) const;
    void begin(const Ipc2581Attributes& attributes, bool mayAssume);
    HoleType typeOf(const char* plating) const;
    void count(qint64 weight);
    std::vector<Place> drilledPlaces();
    void takePads(const QHash<Span, QString>& drillLayers, qint64& leftOut);
    void drillPads(const QHash<Span, QString>& drillLayers);
    void add(const Ipc2581Opening& opening);
    Transform transform(const Placement& position) const;
    Path placed(const Path& path) const;

    const Ipc2581Pass& mPass;
    Ipc2581Shapes& mShapes;
    LayerCollector mCollector;
    qint64 mCount = 0; ///< holes of all steps, slots and contours by their weight
    LayerCollector mPads; ///< by span
    std::optional<Span> mPadSpan;
    std::optional<BoardError> mPadError; ///< the first
    bool mToleranceTold = false;

    QString mLayer;
    bool mLayerBackDrilled = false;
    bool mBackDrilled = false;
    Placement mSetPlacement;
    bool mSetStarted = false; ///< a hole of the set has been added
    Placement mOwnPlacement; ///< of the hole or slot
    bool mHasPlace = false; ///< the hole
    Tool mTool; ///< of the hole or slot
    bool mIsSquare = false;
};

/** The steps of an IPC-2581 file and how they repeat each other, by names until all are known. */
class Ipc2581Steps
{
public:
    explicit Ipc2581Steps(const Ipc2581Pass& pass)
        : mPass(pass)
    { }

    void begin(const QString& name);
    Step& current() { return mSteps.back(); }

    /** The point of the current step that repeats of it place; its origin if unspecified. */
    void setDatum(const Ipc2581Attributes& attributes)
    {
        mDatums.back() = attributes.place("x", "y");
    }

    /** Repeats another step in the current one. */
    void addRepeat(const Ipc2581Attributes& attributes);

    /** Gives a board the steps.
     *
     * @param mainStep  name; the first step if there is none of it
     * @throws BoardError  for repeats of unknown steps, or in circles
     */
    void finish(Board& board, const QString& mainStep);

private:
    struct NamedRepeat
    {
        size_t owner;
        QString step;
        Repeat repeat;
        qint64 line;
    };

    void placeDatum(Repeat& repeat);
    void checkCircles(size_t step, std::vector<char>& state, int depth) const;

    const Ipc2581Pass& mPass;
    std::vector<Step> mSteps;
    std::vector<Place> mDatums; ///< by step
    std::set<size_t> mPlacedByDatum;
    QHash<QString, size_t> mStepOfName;
    std::vector<NamedRepeat> mRepeats;
};

} // namespace brox

#endif
