// SPDX-License-Identifier: MIT
#include "ipc2581_steps.h"

#include <algorithm>

namespace brox {

namespace {

constexpr int maxRepeatDepth = 64;

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
    const size_t hash = qHashMulti(likenessOf(like), mCurrent, isBackDrill);
    for (auto at = mTools.constFind(hash); at != mTools.cend() && at.key() == hash; ++at) {
        if (*at < tools.size() && tools[*at].isLike(like)) { // another layer may have the hash
            return tools[*at];
        }
    }
    mTools.insert(hash, tools.size());
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

void Ipc2581Openings::count(qint64 weight)
{
    mCount += weight;
    if (mCount > maxHoles) {
        mPass.fail(tooManyHoles());
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
    mSetPlacement = {};
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
    mSetPlacement.x += attributes.length("x");
    mSetPlacement.y += attributes.length("y");
}

void Ipc2581Openings::turnSet(const Ipc2581Attributes& attributes)
{
    checkSet("Xform");
    readTurn(mSetPlacement, attributes);
}

void Ipc2581Openings::locate(const Ipc2581Attributes& attributes)
{
    mOwnPlacement.x += attributes.length("x");
    mOwnPlacement.y += attributes.length("y");
    mHasPlace = true;
}

void Ipc2581Openings::turn(const Ipc2581Attributes& attributes)
{
    readTurn(mOwnPlacement, attributes);
}

void Ipc2581Openings::readTurn(Placement& to, const Ipc2581Attributes& attributes) const
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
        mPass.fail(BoardText::tr("no CadHeader specifies the units of this hole"));
    }
    const char* plating = attributes.value("platingStatus");
    mOwnPlacement = {};
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
    // Revision C distinguishes vias by what closes them, such as VIA_CAPPED.
    if (qstricmp(plating, "VIA") == 0 || qstrnicmp(plating, "VIA_", 4) == 0) {
        return HoleType::Via;
    }
    mPass.fail(
        BoardText::tr("unknown platingStatus \"%1\"").arg(QString::fromUtf8(plating).left(40)));
}

void Ipc2581Openings::beginHole(const Ipc2581Attributes& attributes)
{
    begin(attributes, false);
    mTool.finishedSize = attributes.diameter();
    const char* type = attributes.value("type");
    mIsSquare = type && qstricmp(type, "SQUARE") == 0;
    mHasPlace = attributes.value("x") && attributes.value("y");
    mOwnPlacement.x = attributes.length("x");
    mOwnPlacement.y = attributes.length("y");
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
    if (mSetPlacement.scale != 1 || mOwnPlacement.scale != 1) {
        mPass.fail(BoardText::tr("a hole that is scaled"));
    }
    const bool isPlain = mOwnPlacement.turnsNothing() && mSetPlacement.isIdentity();
    const Place at = isPlain ? mPass.place(mOwnPlacement.x, mOwnPlacement.y) : placed(Path{}).start;
    count(1);
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
    count(weightOf(opening.path.segments.size()));
    if (!opening.width) {
        const bool isUnplated = mTool.type == HoleType::NonPlated;
        mCollector.layer(mLayer).contours.push_back(
            {isUnplated ? HoleType::NonPlated : HoleType::Plated, placed(opening.path)});
        return;
    }
    const double scale = mOwnPlacement.scale * mSetPlacement.scale;
    mTool.finishedSize = mPass.place(*opening.width * scale, 0).x;
    if (mTool.finishedSize < 1) {
        mPass.fail(BoardText::tr("a slot without a width"));
    }
    mCollector.tool(mTool, mBackDrilled).slotPaths.push_back(placed(opening.path));
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
    count(1);
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
    if (!mPads.layers().empty() || mPadError) {
        takePads(drillLayers, leftOut);
    }
    return mCollector.take();
}

void Ipc2581Openings::takePads(const QHash<Span, QString>& drillLayers, qint64& leftOut)
{
    std::vector<Place> drilled = drilledPlaces();
    if (drilled.empty()) {
        drillPads(drillLayers);
    }
    std::ranges::sort(drilled);
    for (const Layer& pads : mPads.take()) {
        for (const Tool& tool : pads.tools) {
            leftOut += std::ranges::count_if(tool.holes,
                [&](const Place& hole) { return !std::ranges::binary_search(drilled, hole); });
        }
    }
    mPadError.reset();
}

Transform Ipc2581Openings::transform(const Placement& placement) const
{
    const Transform turned(mPass.place(placement.x, placement.y), placement.rotation,
        placement.mirror, placement.scale);
    return turned * Transform(mPass.place(placement.xOffset, placement.yOffset), 0, false);
}

/** First by the hole's or slot's own position, then by that of its set. */
Path Ipc2581Openings::placed(const Path& path) const
{
    try {
        return (transform(mSetPlacement) * transform(mOwnPlacement)).map(path);
    } catch (const PanelError& error) {
        mPass.fail(error.message());
    }
}

void Ipc2581Steps::begin(const QString& name)
{
    if (mStepOfName.contains(name)) {
        mPass.fail(BoardText::tr("a second step \"%1\"").arg(name));
    }
    mStepOfName.insert(name, mSteps.size());
    mSteps.emplace_back().name = name;
    mDatums.emplace_back();
}

void Ipc2581Steps::addRepeat(const Ipc2581Attributes& attributes)
{
    if (mPass.unit() == 0) {
        mPass.fail(BoardText::tr("no CadHeader specifies the units of this repeat"));
    }
    if (mRepeats.size() == copiesLimit) {
        mPass.fail(BoardText::tr("more than %1 repeats of steps").arg(copiesLimit));
    }
    const Place grid = attributes.place("dx", "dy");
    mRepeats.push_back({mSteps.size() - 1, attributes.text("stepRef"),
        Repeat{0, attributes.place("x", "y"), attributes.repeats("nx"), attributes.repeats("ny"),
            grid.x, grid.y, attributes.number("angle"), attributes.isTrue("mirror")},
        mPass.line()});
}

/** Moves a repeat so that the datum of the step, and not its origin, lies where it should. */
void Ipc2581Steps::placeDatum(Repeat& repeat)
{
    const Place datum = mDatums[repeat.step];
    if (datum != Place{}) {
        const Place turned = Transform({}, repeat.angle, repeat.mirror).map(datum);
        repeat.at = mPass.place(double(repeat.at.x) - turned.x, double(repeat.at.y) - turned.y);
        mPlacedByDatum.insert(repeat.step);
    }
}

void Ipc2581Steps::checkCircles(size_t step, std::vector<char>& state, int depth) const
{
    enum : char
    {
        Unseen,
        Open,
        Done
    };
    if (state[step] == Done) {
        return;
    }
    if (state[step] == Open || depth == maxRepeatDepth) {
        const auto named = std::find_if(mRepeats.begin(), mRepeats.end(),
            [&](const NamedRepeat& each) { return each.repeat.step == step; });
        mPass.fail(named == mRepeats.end() ? 1 : named->line,
            BoardText::tr("step \"%1\" repeats itself, or repeats are nested too deeply")
                .arg(mSteps[step].name));
    }
    state[step] = Open;
    for (const Repeat& repeat : mSteps[step].repeats) {
        checkCircles(repeat.step, state, depth + 1);
    }
    state[step] = Done;
}

void Ipc2581Steps::finish(Board& board, const QString& mainStep)
{
    for (NamedRepeat& named : mRepeats) {
        const auto found = mStepOfName.constFind(named.step);
        if (found == mStepOfName.constEnd()) {
            mPass.fail(named.line, BoardText::tr("no step \"%1\" to repeat").arg(named.step));
        }
        named.repeat.step = *found;
        placeDatum(named.repeat);
        mSteps[named.owner].repeats.push_back(named.repeat);
    }
    for (const size_t step : mPlacedByDatum) {
        board.notes << BoardText::tr(
            "copies of step \"%1\" are placed by its datum, which is not its origin")
                           .arg(mSteps[step].name);
    }
    std::vector<char> state(mSteps.size(), 0);
    for (size_t i = 0; i < mSteps.size(); ++i) {
        checkCircles(i, state, 0);
    }
    if (mSteps.size() > 1 && !mStepOfName.contains(mainStep)) {
        board.notes << BoardText::tr("the file does not name its main step; \"%1\" is taken")
                           .arg(mSteps.front().name);
    }
    board.steps = std::move(mSteps);
    board.mainStep = mStepOfName.value(mainStep, 0);
}

} // namespace brox
