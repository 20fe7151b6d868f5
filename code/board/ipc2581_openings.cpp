// SPDX-License-Identifier: MIT
#include "ipc2581_openings.h"

#include "board_text.h"

#include <algorithm>

namespace brox {

namespace {

bool isBefore(const Place& a, const Place& b)
{
    return std::pair(a.x, a.y) < std::pair(b.x, b.y);
}

Tool withoutHoles(const Tool& tool)
{
    Tool like = tool;
    like.holes.clear();
    return like;
}

} // namespace

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

void Ipc2581Openings::countOpening()
{
    if (++mCount > maxOpenings) {
        mPass.fail(BoardText::tr("too many holes and slots, the most are %1").arg(maxOpenings));
    }
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
    countOpening();
    mCollector.tool(mTool, mBackDrilled).holes.push_back(at);
}

void Ipc2581Openings::beginSlot(const Ipc2581Attributes& attributes)
{
    // Some exporters specify no plating of slots. It is a guess then, and marked as one.
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
    countOpening();
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

void Ipc2581Openings::beginPadHole(const Ipc2581Attributes& attributes)
{
    mPadSpan.reset();
    mTool.finishedSize = 0;
    try {
        beginSet();
        beginHole(attributes);
    } catch (const BoardError& error) {
        mTool.finishedSize = 0;
        mPadError = mPadError ? mPadError : error;
    }
}

void Ipc2581Openings::setPadSpan(const Ipc2581Attributes& attributes)
{
    mPadSpan = Span{attributes.text("fromLayer"), attributes.text("toLayer")};
}

void Ipc2581Openings::endPadHole()
{
    if (mTool.finishedSize == 0 || !mHasPlace) {
        return;
    }
    countOpening();
    Layer& layer = mPads.layer(mPadSpan ? mPadSpan->from + '\n' + mPadSpan->to : QString());
    layer.span = mPadSpan;
    mPads.tool(mTool, false).holes.push_back(placed(Path{}).start);
}

std::vector<Place> Ipc2581Openings::drilledPlaces()
{
    std::vector<Place> places;
    for (const Layer& layer : mCollector.layers()) {
        for (const Tool& tool : layer.tools) {
            places.insert(places.end(), tool.holes.begin(), tool.holes.end());
        }
    }
    return places;
}

void Ipc2581Openings::drillPads(const QHash<Span, QString>& drillLayers)
{
    if (mPadError) {
        throw *mPadError;
    }
    for (Layer& pads : mPads.take()) {
        const Span told = pads.span.value_or(Span{});
        const Span other{told.to, told.from};
        const Span span = drillLayers.contains(other) ? other : told;
        const QString spare = pads.span ? span.from + '-' + span.to : QStringLiteral("PadStack");
        Layer& layer = mCollector.layer(drillLayers.value(span, spare));
        layer.span = pads.span ? std::optional(span) : layer.span;
        for (Tool& tool : pads.tools) {
            std::vector<Place>& holes = mCollector.tool(withoutHoles(tool), false).holes;
            holes.insert(holes.end(), tool.holes.begin(), tool.holes.end());
        }
    }
}

std::vector<Layer> Ipc2581Openings::take(const QHash<Span, QString>& drillLayers, qint64& leftOut)
{
    std::vector<Place> drilled = drilledPlaces();
    if (drilled.empty()) {
        drillPads(drillLayers);
    }
    std::ranges::sort(drilled, isBefore);
    for (const Layer& pads : mPads.take()) {
        for (const Tool& tool : pads.tools) {
            leftOut += std::ranges::count_if(tool.holes, [&](const Place& hole) {
                return !std::ranges::binary_search(drilled, hole, isBefore);
            });
        }
    }
    mPadError.reset();
    return mCollector.take();
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
