// SPDX-License-Identifier: MIT
#include "ipc2581_openings.h"

#include "board_text.h"

namespace brox {

Layer& LayerCollector::layer(const QString& name)
{
    const auto found = mLayerOfName.constFind(name);
    if (found == mLayerOfName.constEnd()) {
        mCurrent = mLayers.size();
        mLayerOfName.insert(name, mCurrent);
        mLayers.emplace_back().name = name;
    } else {
        mCurrent = *found;
    }
    return mLayers[mCurrent];
}

Tool& LayerCollector::tool(const Tool& like, bool isBackDrill)
{
    Layer& layer = mLayers[mCurrent];
    std::vector<Tool>& tools = isBackDrill ? layer.backDrills : layer.tools;
    // Holes of one kind mostly follow each other.
    if (!tools.empty() && tools.back().isLike(like)) {
        return tools.back();
    }
    const Key key{mCurrent, isBackDrill, like};
    const auto found = mTools.constFind(key);
    if (found != mTools.constEnd()) {
        return tools[*found];
    }
    mTools.insert(key, tools.size());
    tools.push_back(like);
    return tools.back();
}

std::vector<Layer> LayerCollector::take()
{
    std::erase_if(mLayers, [](const Layer& layer) {
        return layer.tools.empty() && layer.backDrills.empty() && layer.contours.empty();
    });
    mLayerOfName.clear();
    mTools.clear();
    return std::exchange(mLayers, {});
}

void Ipc2581Openings::beginLayer(
    const QString& name, const std::optional<Span>& span, bool isBackDrilled)
{
    mLayer = name;
    mLayerBackDrilled = isBackDrilled;
    Layer& layer = mCollector.layer(name);
    layer.span = span ? span : layer.span;
    beginSet();
}

void Ipc2581Openings::beginSet()
{
    mSetPosition = {};
    mSetStarted = false;
    mBackDrilled = mLayerBackDrilled;
}

void Ipc2581Openings::checkSet(const char* element) const
{
    if (mSetStarted) {
        mPass.fail(BoardText::tr("a set's %1 behind its holes").arg(QLatin1String(element)));
    }
}

void Ipc2581Openings::locateSet(const Ipc2581Attributes& attributes)
{
    checkSet("Location");
    mSetPosition.x += attributes.length("x");
    mSetPosition.y += attributes.length("y");
}

void Ipc2581Openings::turnSet(const Ipc2581Attributes& attributes)
{
    checkSet("Xform");
    readTurn(mSetPosition, attributes);
}

void Ipc2581Openings::locate(const Ipc2581Attributes& attributes)
{
    mOwnPosition.x += attributes.length("x");
    mOwnPosition.y += attributes.length("y");
    mHasPlace = true;
}

void Ipc2581Openings::turn(const Ipc2581Attributes& attributes)
{
    readTurn(mOwnPosition, attributes);
}

void Ipc2581Openings::readTurn(Position& to, const Ipc2581Attributes& attributes) const
{
    to.xOffset = attributes.length("xOffset");
    to.yOffset = attributes.length("yOffset");
    to.rotation = attributes.number("rotation");
    to.scale = attributes.number("scale", 1);
    to.mirror = attributes.isTrue("mirror");
    if (!(to.scale > 0)) {
        mPass.fail(
            BoardText::tr("scale=\"%1\" is no scale").arg(attributes.text("scale").left(40)));
    }
}

/** Of a hole or a slot: what both have. */
void Ipc2581Openings::begin(const Ipc2581Attributes& attributes, bool mayAssume)
{
    if (mPass.unit() == 0) {
        mPass.fail(BoardText::tr("no CadHeader tells the units of this hole"));
    }
    const char* plating = attributes.value("platingStatus");
    mOwnPosition = {};
    mTool.typeAssumed = mayAssume && (!plating || !*plating);
    mTool.type = mTool.typeAssumed ? HoleType::Plated : typeOf(plating);
    mTool.functionTold = mTool.type == HoleType::Via;
    mTool.tolerance = {attributes.tolerance("minusTol"), attributes.tolerance("plusTol")};
    mToleranceTold = mToleranceTold || *mTool.tolerance != Tolerance{};
}

HoleType Ipc2581Openings::typeOf(const char* plating) const
{
    // Plating decides the drill size, so a guess would make scrap.
    if (!plating || !*plating) {
        mPass.fail(BoardText::tr("a hole without platingStatus"));
    }
    if (qstricmp(plating, "PLATED") == 0) {
        return HoleType::Plated;
    }
    if (qstricmp(plating, "NONPLATED") == 0) {
        return HoleType::NonPlated;
    }
    // Revision C tells vias apart by what closes them, such as VIA_CAPPED.
    if (qstricmp(plating, "VIA") == 0 || qstrnicmp(plating, "VIA_", 4) == 0) {
        return HoleType::Via;
    }
    mPass.fail(
        BoardText::tr("unknown platingStatus \"%1\"").arg(QString::fromUtf8(plating).left(40)));
}

void Ipc2581Openings::beginHole(const Ipc2581Attributes& attributes)
{
    begin(attributes, false);
    if (!attributes.value("diameter")) {
        mPass.fail(BoardText::tr("a hole without diameter"));
    }
    mTool.finishedSize = attributes.diameter();
    const char* type = attributes.value("type");
    mIsSquare = type && qstricmp(type, "SQUARE") == 0;
    mHasPlace = attributes.value("x") && attributes.value("y");
    mOwnPosition.x = attributes.length("x");
    mOwnPosition.y = attributes.length("y");
}

void Ipc2581Openings::endHole()
{
    mSetStarted = true;
    if (!mHasPlace) {
        mPass.fail(BoardText::tr("a hole without x and y"));
    }
    if (mIsSquare) {
        const Size half = mTool.finishedSize - mTool.finishedSize / 2;
        add({std::nullopt, rectanglePath({Size(-half), Size(-half)}, {half, half})});
        return;
    }
    if (mSetPosition.scale != 1 || mOwnPosition.scale != 1) {
        mPass.fail(BoardText::tr("a hole that is scaled"));
    }
    const bool isPlain = mOwnPosition.turnsNothing() && mSetPosition.isIdentity();
    const Place at = isPlain ? mPass.place(mOwnPosition.x, mOwnPosition.y) : placed(Path{}).start;
    mCollector.tool(mTool, mBackDrilled).holes.push_back(at);
}

void Ipc2581Openings::beginSlot(const Ipc2581Attributes& attributes)
{
    // Some exporters tell no plating of slots. It is a guess then, and told to be one.
    begin(attributes, true);
    mShapes.begin();
}

void Ipc2581Openings::endSlot()
{
    mSetStarted = true;
    add(mShapes.opening());
}

void Ipc2581Openings::add(const Ipc2581Opening& opening)
{
    if (!opening.slot) {
        const bool isUnplated = mTool.type == HoleType::NonPlated;
        mCollector.layer(mLayer).contours.push_back(
            {isUnplated ? HoleType::NonPlated : HoleType::Plated, placed(opening.contour)});
        return;
    }
    const double scale = mOwnPosition.scale * mSetPosition.scale;
    mTool.finishedSize = mPass.place(opening.slot->width * scale, 0).x;
    if (mTool.finishedSize < 1) {
        mPass.fail(BoardText::tr("a slot without a width"));
    }
    mCollector.tool(mTool, mBackDrilled).slotPaths.push_back(placed(opening.slot->middle));
}

Transform Ipc2581Openings::transform(const Position& position) const
{
    const Transform turned(
        mPass.place(position.x, position.y), position.rotation, position.mirror, position.scale);
    return turned * Transform(mPass.place(position.xOffset, position.yOffset), 0, false);
}

/** First by the hole's or slot's own position, then by that of its set. */
Path Ipc2581Openings::placed(const Path& path) const
{
    try {
        return (transform(mSetPosition) * transform(mOwnPosition)).map(path);
    } catch (const PanelError& error) {
        mPass.fail(QString::fromUtf8(error.what()));
    }
}

} // namespace brox
