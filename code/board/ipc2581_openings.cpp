// SPDX-License-Identifier: MIT
#include "ipc2581_openings.h"

#include "board_text.h"
#include "panel.h"

namespace brox {

namespace {

/** The attributes of a hole, found in one go: a board may have millions. */
struct HoleTexts
{
    explicit HoleTexts(const XmlAttributes& attributes)
    {
        attributes.forEach([this](const char* name, const char* value) {
            const auto keep = [&](const char* known, const char*& text) {
                if (std::strcmp(name, known) == 0) {
                    text = value;
                }
            };
            switch (name[0]) {
            case 'x':
                keep("x", x);
                break;
            case 'y':
                keep("y", y);
                break;
            case 'd':
                keep("diameter", diameter);
                break;
            case 'm':
                keep("minusTol", minus);
                break;
            case 'p':
                keep("plusTol", plus);
                keep("platingStatus", plating);
                break;
            case 't':
                keep("type", type);
                break;
            default:
                break;
            }
        });
    }

    const char* diameter = nullptr;
    const char* plating = nullptr;
    const char* plus = nullptr;
    const char* minus = nullptr;
    const char* x = nullptr;
    const char* y = nullptr;
    const char* type = nullptr;
};

} // namespace

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

void Ipc2581Openings::placeSet(std::string_view name, const XmlAttributes& attributes)
{
    if (mSetStarted) {
        mValues.fail(BoardText::tr("a set's %1 behind its holes")
                         .arg(QString::fromUtf8(name.data(), qsizetype(name.size()))));
    }
    read(name, attributes, mSetPosition);
}

void Ipc2581Openings::placeOpening(std::string_view name, const XmlAttributes& attributes)
{
    read(name, attributes, mOwnPosition);
    mHasPlace = mHasPlace || name == "Location";
}

void Ipc2581Openings::read(
    std::string_view name, const XmlAttributes& attributes, Position& to) const
{
    const auto length = [&](const char* which) {
        return mValues.numberOr(attributes, which, 0) * mUnit;
    };
    if (name == "Location") {
        to.x += length("x");
        to.y += length("y");
    } else if (name == "Xform") {
        to.xOffset = length("xOffset");
        to.yOffset = length("yOffset");
        to.rotation = mValues.numberOr(attributes, "rotation", 0);
        to.scale = mValues.numberOr(attributes, "scale", 1);
        to.mirror = mValues.isTrue(attributes, "mirror");
        if (!(to.scale > 0)) {
            mValues.fail(
                BoardText::tr("scale=\"%1\" is no scale").arg(attributes.text("scale").left(40)));
        }
    }
}

/** Of a hole or a slot: what both have. */
void Ipc2581Openings::begin(
    const char* plating, const char* minus, const char* plus, bool mayAssume)
{
    if (mUnit == 0) {
        mValues.fail(BoardText::tr("no CadHeader tells the units of this hole"));
    }
    mOwnPosition = {};
    mTool.typeAssumed = mayAssume && (!plating || !*plating);
    mTool.type = mTool.typeAssumed ? HoleType::Plated : typeOf(plating);
    mTool.functionTold = mTool.type == HoleType::Via;
    const Tolerance tolerance{minus ? mValues.size(minus, "minusTol", mUnit) : 0,
        plus ? mValues.size(plus, "plusTol", mUnit) : 0};
    mTool.tolerance = tolerance;
    mToleranceTold = mToleranceTold || tolerance != Tolerance{};
}

HoleType Ipc2581Openings::typeOf(const char* plating) const
{
    constexpr std::pair<const char*, HoleType> statuses[] = {
        {"PLATED", HoleType::Plated}, {"VIA", HoleType::Via}, {"NONPLATED", HoleType::NonPlated}};
    if (plating) {
        for (const auto& [status, type] : statuses) {
            if (std::strcmp(plating, status) == 0) {
                return type;
            }
        }
        for (const auto& [status, type] : statuses) {
            if (qstricmp(plating, status) == 0) {
                return type;
            }
        }
        // Revision C tells vias apart by what closes them, such as VIA_CAPPED.
        if (qstrnicmp(plating, "VIA_", 4) == 0) {
            return HoleType::Via;
        }
    }
    // Plating decides the drill size, so a guess would make scrap.
    mValues.fail(!plating || !*plating ? BoardText::tr("a hole without platingStatus")
                                       : BoardText::tr("unknown platingStatus \"%1\"")
                                             .arg(QString::fromUtf8(plating).left(40)));
}

void Ipc2581Openings::beginHole(const XmlAttributes& attributes)
{
    const HoleTexts texts(attributes);
    begin(texts.plating, texts.minus, texts.plus, false);
    if (!texts.diameter) {
        mValues.fail(BoardText::tr("a hole without diameter"));
    }
    mTool.finishedSize = mValues.holeSize(texts.diameter, "diameter", mUnit);
    mIsSquare = texts.type && qstricmp(texts.type, "SQUARE") == 0;
    mHasPlace = texts.x && texts.y;
    mOwnPosition.x = texts.x ? mValues.number(texts.x, "x") * mUnit : 0;
    mOwnPosition.y = texts.y ? mValues.number(texts.y, "y") * mUnit : 0;
}

void Ipc2581Openings::endHole()
{
    mSetStarted = true;
    if (!mHasPlace) {
        mValues.fail(BoardText::tr("a hole without x and y"));
    }
    if (mIsSquare) {
        Ipc2581Shape square;
        square.kind = Ipc2581Shape::Kind::Rectangle;
        square.width = square.height = mTool.finishedSize;
        add(*openingOf(square));
        return;
    }
    if (mSetPosition.scale != 1 || mOwnPosition.scale != 1) {
        mValues.fail(BoardText::tr("a hole that is scaled"));
    }
    const bool isPlain = mOwnPosition.turnsNothing() && mSetPosition.isIdentity();
    const Place at = isPlain ? mValues.place(mOwnPosition.x, mOwnPosition.y) : placed(Path{}).start;
    mCollector.tool(mTool, mBackDrilled).holes.push_back(at);
}

void Ipc2581Openings::beginSlot(const XmlAttributes& attributes)
{
    // Some exporters tell no plating of slots. It is a guess then, and told to be one.
    begin(attributes.value("platingStatus"), attributes.value("minusTol"),
        attributes.value("plusTol"), true);
    mShapes.beginShape();
}

void Ipc2581Openings::endSlot()
{
    mSetStarted = true;
    add(mShapes.opening());
}

void Ipc2581Openings::add(const Ipc2581Opening& opening)
{
    if (!opening.slot) {
        const bool unplated = mTool.type == HoleType::NonPlated;
        mCollector.layer(mLayer).contours.push_back(
            {unplated ? HoleType::NonPlated : HoleType::Plated, placed(opening.contour)});
        return;
    }
    const double scale = mOwnPosition.scale * mSetPosition.scale;
    mTool.finishedSize = mValues.place(opening.slot->width * scale, 0).x;
    if (mTool.finishedSize < 1) {
        mValues.fail(BoardText::tr("a slot without a width"));
    }
    mCollector.tool(mTool, mBackDrilled).slotPaths.push_back(placed(opening.slot->middle));
}

Path Ipc2581Openings::moved(const Path& path, const Position& position) const
{
    const Transform turn({}, position.rotation, position.mirror);
    const auto map = [&](const Place& place) {
        const Place turned = turn.map(mValues.place((place.x + position.xOffset) * position.scale,
            (place.y + position.yOffset) * position.scale));
        return mValues.place(turned.x + position.x, turned.y + position.y);
    };
    // The turn also says which way arcs run.
    Path result = turn.map(path);
    result.start = map(path.start);
    for (size_t i = 0; i < path.segments.size(); ++i) {
        result.segments[i].to = map(path.segments[i].to);
        if (path.segments[i].shape != Segment::Shape::Line) {
            result.segments[i].centre = map(path.segments[i].centre);
        }
    }
    return result;
}

/** Of the file: first the hole's or slot's own position, then that of its set. */
Path Ipc2581Openings::placed(const Path& path) const
{
    try {
        const Path own = mOwnPosition.isIdentity() ? path : moved(path, mOwnPosition);
        return mSetPosition.isIdentity() ? own : moved(own, mSetPosition);
    } catch (const PanelError& error) {
        mValues.fail(QString::fromUtf8(error.what()));
    }
}

} // namespace brox
