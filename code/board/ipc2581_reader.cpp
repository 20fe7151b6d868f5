// SPDX-License-Identifier: MIT
#include "ipc2581_reader.h"

#include "ipc2581_shape.h"
#include "layer_collector.h"

#include <QSet>
#include <charconv>
#include <cmath>
#include <cstring>
#include <expat.h>
#include <limits>
#include <memory>
#include <string_view>

namespace {

constexpr size_t maxElementDepth = 1000;
constexpr int maxRepeatDepth = 64;
constexpr int maxRepeats = 10000; ///< in one direction of a panel
constexpr int maxReferences = 8; ///< from primitive to primitive
constexpr double maxSize = std::numeric_limits<Size>::max();

/** What an element is, by the way to it. Elements of no interest are skipped with all in them. */
enum class Element
{
    Document,
    Root,
    Content,
    StandardDictionary,
    UserDictionary,
    LineDictionary, ///< with its entries
    Entry,
    Ecad,
    CadHeader,
    Spec,
    CadData,
    LayerDeclaration,
    Step,
    Profile,
    LayerFeature,
    Set,
    Hole,
    SlotCavity,
    Shape, ///< inside of an entry, a slot or a profile, or a part of one
    Polygon,
    Leaf, ///< nothing in it matters
    Skip
};

/** Attributes of an element by local name. */
class Attributes
{
public:
    explicit Attributes(const XML_Char** list)
        : mList(list)
    { }

    const char* value(const char* name) const
    {
        for (const XML_Char** at = mList; *at; at += 2) {
            if (**at == *name && std::strcmp(*at, name) == 0) {
                return at[1];
            }
        }
        return nullptr;
    }

    QString text(const char* name) const { return QString::fromUtf8(value(name)); }

private:
    const XML_Char** mList;
};

struct NamedRepeat
{
    size_t owner;
    QString step;
    Repeat repeat;
    qint64 line;
};

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

    bool isIdentity() const
    {
        return x == 0 && y == 0 && xOffset == 0 && yOffset == 0 && rotation == 0 && scale == 1
            && !mirror;
    }
};

/** One pass over one file by expat. */
class Reader
{
public:
    Reader(QIODevice& device, const QString& name, const ReadOptions& options)
        : mDevice(device)
        , mName(name)
        , mOptions(options)
        , mParser(XML_ParserCreate(nullptr), XML_ParserFree)
    { }

    Board read();

private:
    [[noreturn]] void fail(qint64 line, const QString& message) const
    {
        throw BoardError(mName, line, message);
    }
    [[noreturn]] void fail(const QString& message) const { fail(line(), message); }
    qint64 line() const { return qint64(XML_GetCurrentLineNumber(mParser.get())); }

    static void XMLCALL onStart(void* reader, const XML_Char* name, const XML_Char** attributes);
    static void XMLCALL onEnd(void* reader, const XML_Char* name);
    void parse(std::string_view bytes, bool last);
    void start(std::string_view name, const Attributes& attributes);
    void end(Element element);

    Element startTop(std::string_view name, const Attributes& attributes);
    Element startContent(std::string_view name, const Attributes& attributes);
    Element startEcad(std::string_view name, const Attributes& attributes);
    Element startCadData(std::string_view name, const Attributes& attributes);
    Element startStep(std::string_view name, const Attributes& attributes);
    Element startFeature(Element parent, std::string_view name, const Attributes& attributes);
    Element startShape(std::string_view name, const Attributes& attributes);
    Element startPolygon(std::string_view name, const Attributes& attributes);
    bool readLineWidth(std::string_view name, const Attributes& attributes);

    Place shapePlace(const Attributes& attributes, const char* x, const char* y) const;
    Segment arcTo(Place end, const Attributes& attributes) const;
    double unitOf(const Attributes& attributes) const;
    double number(const char* text, const char* name) const;
    double numberOr(const Attributes& attributes, const char* name, double other) const;
    double length(const Attributes& attributes, const char* name) const;
    Size sizeOf(const Attributes& attributes, const char* name, bool required) const;
    int repeats(const Attributes& attributes, const char* name) const;
    Place place(double x, double y) const;
    void position(std::string_view name, const Attributes& attributes, Position& to) const;
    HoleType holeType(const Attributes& attributes) const;
    void readUnits(const Attributes& attributes);
    void beginStep(const Attributes& attributes);
    void addRepeat(const Attributes& attributes);
    void beginLayerFeature(const Attributes& attributes);
    void endStep();
    void beginOpening(const Attributes& attributes, bool isSlot);
    void addHole();
    void addSlotCavity();
    void addOpening(const Ipc2581Opening& opening);
    const Ipc2581Shape* resolved(const Ipc2581Shape& shape) const;
    Place placed(const Place& place) const;
    Path placed(const Path& path) const;

    void resolveRepeats();
    void placeDatum(NamedRepeat& named);
    void checkCircles(size_t step, std::vector<char>& state, int depth) const;
    void dropEmptyTolerances();
    void checkHoles() const;
    void finish();

    QIODevice& mDevice;
    QString mName;
    const ReadOptions& mOptions;
    std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> mParser;
    std::exception_ptr mFailure; ///< may not cross expat's frames
    std::vector<Element> mPath{Element::Document};

    Board mBoard;
    QString mMainStep;
    double mUnit = 0; ///< the file's unit in host sizes; 0: not told yet
    double mShapeUnit = 0; ///< of the dictionary or the design
    QHash<QString, QString> mLayerFunctions;
    QHash<QString, Span> mSpans;
    QString mDeclaredLayer;
    QString mSpec;
    QSet<QString> mBackDrillSpecs;
    QSet<QString> mBackDrillLayers;
    QHash<QString, size_t> mSteps;
    QHash<size_t, Place> mDatums; ///< by step; a repeat places this point
    std::vector<NamedRepeat> mRepeats;

    Ipc2581Shapes mStandardShapes;
    Ipc2581Shapes mUserShapes;
    std::unordered_map<std::string, double> mLineWidths;
    bool mEntryIsUser = false;
    std::string mEntry;
    Ipc2581Shape mShape;

    LayerCollector mCollector;
    bool mDrilled = false; ///< the layer of the features is
    bool mBackDrilled = false;
    QString mLayer;
    Position mSetPosition;
    bool mSetStarted = false; ///< a hole of the set has been added
    Position mOwnPosition; ///< of the hole or slot
    Tool mTool; ///< of the hole or slot
    bool mSquare = false;
    bool mToleranceTold = false; ///< one that is not 0
};

std::string idOf(const Attributes& attributes)
{
    const char* id = attributes.value("id");
    return id ? id : "";
}

std::string_view localName(const XML_Char* name)
{
    const std::string_view whole = name;
    const size_t colon = whole.find(':');
    return colon == whole.npos ? whole : whole.substr(colon + 1);
}

void XMLCALL Reader::onStart(void* reader, const XML_Char* name, const XML_Char** attributes)
{
    auto* self = static_cast<Reader*>(reader);
    if (self->mFailure) {
        return;
    }
    try {
        if (self->mPath.size() > maxElementDepth) {
            self->fail(
                QStringLiteral("elements are nested more than %1 deep").arg(maxElementDepth));
        }
        self->start(localName(name), Attributes(attributes));
    } catch (...) {
        self->mFailure = std::current_exception();
        XML_StopParser(self->mParser.get(), XML_FALSE);
    }
}

void XMLCALL Reader::onEnd(void* reader, const XML_Char*)
{
    auto* self = static_cast<Reader*>(reader);
    if (self->mFailure) {
        return;
    }
    const Element element = self->mPath.back();
    self->mPath.pop_back();
    if (element == Element::Skip || element == Element::Leaf) {
        return;
    }
    try {
        self->end(element);
    } catch (...) {
        self->mFailure = std::current_exception();
        XML_StopParser(self->mParser.get(), XML_FALSE);
    }
}

void Reader::start(std::string_view name, const Attributes& attributes)
{
    Element element = Element::Skip;
    const Element parent = mPath.back();
    switch (parent) {
    case Element::Document:
    case Element::Root:
        element = startTop(name, attributes);
        break;
    case Element::Content:
    case Element::StandardDictionary:
    case Element::UserDictionary:
    case Element::LineDictionary:
        element = startContent(name, attributes);
        break;
    case Element::Ecad:
    case Element::CadHeader:
    case Element::Spec:
        element = startEcad(name, attributes);
        break;
    case Element::CadData:
    case Element::LayerDeclaration:
        element = startCadData(name, attributes);
        break;
    case Element::Step:
        element = startStep(name, attributes);
        break;
    case Element::LayerFeature:
    case Element::Set:
    case Element::Hole:
        element = startFeature(parent, name, attributes);
        break;
    case Element::SlotCavity:
        if (name == "Location" || name == "Xform") {
            position(name, attributes, mOwnPosition);
            element = Element::Leaf;
            break;
        }
        [[fallthrough]];
    case Element::Entry:
    case Element::Profile:
    case Element::Shape:
        element = startShape(name, attributes);
        break;
    case Element::Polygon:
        element = startPolygon(name, attributes);
        break;
    case Element::Leaf:
    case Element::Skip:
        break;
    }
    mPath.push_back(element);
}

void Reader::end(Element element)
{
    switch (element) {
    case Element::Entry:
        (mEntryIsUser ? mUserShapes : mStandardShapes)[mEntry] = std::exchange(mShape, {});
        break;
    case Element::Polygon:
        if (mPath.back() == Element::Profile) {
            mBoard.steps.back().outline.push_back(std::move(mShape.path));
            mShape = {};
        } else if (mShape.kind == Ipc2581Shape::Kind::Outline && !mShape.path.isClosed()) {
            mShape.path.segments.push_back({Segment::Shape::Line, mShape.path.start, {}});
        }
        break;
    case Element::Hole:
        addHole();
        break;
    case Element::SlotCavity:
        addSlotCavity();
        break;
    case Element::Step:
        endStep();
        break;
    default:
        break;
    }
}

Element Reader::startTop(std::string_view name, const Attributes& attributes)
{
    if (mPath.back() == Element::Document) {
        if (name != "IPC-2581") {
            fail(QStringLiteral("no IPC-2581 file: the root element is \"%1\"")
                     .arg(QString::fromUtf8(name.data(), qsizetype(name.size())).left(40)));
        }
        return Element::Root;
    }
    if (name == "Content") {
        return Element::Content;
    }
    if (name == "Ecad") {
        mBoard.job = attributes.text("name");
        return Element::Ecad;
    }
    return Element::Skip;
}

Element Reader::startContent(std::string_view name, const Attributes& attributes)
{
    if (name == "StepRef") {
        if (mMainStep.isEmpty()) {
            mMainStep = attributes.text("name");
        }
        return Element::Leaf;
    }
    if (name == "DictionaryStandard" || name == "DictionaryUser") {
        mShapeUnit = unitOf(attributes);
        return name == "DictionaryUser" ? Element::UserDictionary : Element::StandardDictionary;
    }
    if (name == "DictionaryLineDesc") {
        mShapeUnit = unitOf(attributes);
        return Element::LineDictionary;
    }
    if (name == "EntryLineDesc") {
        mEntry = idOf(attributes);
        return Element::LineDictionary;
    }
    if (name == "LineDesc") {
        mLineWidths[mEntry] = length(attributes, "lineWidth");
        return Element::Leaf;
    }
    if (name == "EntryStandard" || name == "EntryUser") {
        mEntryIsUser = name == "EntryUser";
        mEntry = idOf(attributes);
        mShape = {};
        return Element::Entry;
    }
    return Element::Skip;
}

Element Reader::startEcad(std::string_view name, const Attributes& attributes)
{
    if (name == "CadHeader") {
        readUnits(attributes);
        return Element::CadHeader;
    }
    if (name == "CadData") {
        mShapeUnit = mUnit;
        return Element::CadData;
    }
    if (name == "Spec") {
        mSpec = attributes.text("name");
        return Element::Spec;
    }
    if (name == "Backdrill") {
        mBackDrillSpecs.insert(mSpec);
    }
    return Element::Leaf;
}

Element Reader::startCadData(std::string_view name, const Attributes& attributes)
{
    if (name == "Layer") {
        mDeclaredLayer = attributes.text("name");
        const QString function = attributes.text("layerFunction").toUpper();
        mLayerFunctions.insert(mDeclaredLayer, function);
        if (function.contains(QLatin1String("BACKDRILL"))) {
            mBackDrillLayers.insert(mDeclaredLayer);
        }
        return Element::LayerDeclaration;
    }
    if (name == "Step") {
        beginStep(attributes);
        return Element::Step;
    }
    if (name == "Span") {
        mSpans.insert(mDeclaredLayer, {attributes.text("fromLayer"), attributes.text("toLayer")});
    } else if (name == "SpecRef" && mBackDrillSpecs.contains(attributes.text("id"))) {
        mBackDrillLayers.insert(mDeclaredLayer);
    }
    return Element::Leaf;
}

Element Reader::startStep(std::string_view name, const Attributes& attributes)
{
    if (name == "LayerFeature") {
        beginLayerFeature(attributes);
        return Element::LayerFeature;
    }
    if (name == "Profile") {
        mShape = {};
        return Element::Profile;
    }
    if (name == "StepRepeat") {
        addRepeat(attributes);
    } else if (name == "Datum") {
        mDatums[mBoard.steps.size() - 1] =
            place(numberOr(attributes, "x", 0) * mUnit, numberOr(attributes, "y", 0) * mUnit);
    }
    return Element::Skip;
}

Element Reader::startFeature(Element parent, std::string_view name, const Attributes& attributes)
{
    if (parent == Element::Hole) {
        position(name, attributes, mOwnPosition);
        return Element::Leaf;
    }
    if (name == "Hole") {
        if (!mDrilled) {
            ++mBoard.steps.back().holesLeftOut;
            return Element::Leaf;
        }
        beginOpening(attributes, false);
        mTool.finishedSize = sizeOf(attributes, "diameter", true);
        mSquare = qstricmp(attributes.value("type"), "SQUARE") == 0;
        const char* x = attributes.value("x");
        const char* y = attributes.value("y");
        mOwnPosition.x = x ? number(x, "x") * mUnit : 0;
        mOwnPosition.y = y ? number(y, "y") * mUnit : 0;
        return Element::Hole;
    }
    if (name == "SlotCavity" || name == "Slot") {
        if (!mDrilled) {
            ++mBoard.steps.back().holesLeftOut;
            return Element::Skip;
        }
        beginOpening(attributes, true);
        mShape = {};
        return Element::SlotCavity;
    }
    if (name == "Set") {
        mSetPosition = {};
        mSetStarted = false;
        mBackDrilled = mBackDrillLayers.contains(mLayer);
        return Element::Set;
    }
    if (name == "SpecRef" && mBackDrillSpecs.contains(attributes.text("id"))) {
        mBackDrilled = true; // for the rest of the set
    }
    if (parent == Element::Set && (name == "Location" || name == "Xform")) {
        if (mSetStarted && mDrilled) {
            fail(QStringLiteral("a set's %1 behind its holes")
                     .arg(QString::fromUtf8(name.data(), qsizetype(name.size()))));
        }
        position(name, attributes, mSetPosition);
        return Element::Leaf;
    }
    return Element::Skip;
}

/** Inside of an entry or a slot: primitives, and what only holds them. */
Element Reader::startShape(std::string_view name, const Attributes& attributes)
{
    using Kind = Ipc2581Shape::Kind;
    const auto make = [&](Kind kind, const char* width, const char* height) {
        if (mShape.kind == Kind::None) {
            mShape.kind = kind;
            mShape.width = length(attributes, width);
            mShape.height = height ? length(attributes, height) : mShape.width;
        }
        return Element::Leaf;
    };
    const auto refer = [&](Kind kind) {
        if (mShape.kind == Kind::None) {
            mShape.kind = kind;
            mShape.reference = idOf(attributes);
        }
        return Element::Leaf;
    };
    if (name == "Polygon" || name == "Cutout" || name == "Polyline") {
        if (mPath.back() == Element::Profile) {
            mShape.path = {};
            return Element::Polygon;
        }
        if (mShape.kind != Kind::None) {
            return Element::Skip; // a cut-out of the shape, or a second part of it
        }
        mShape.kind = name == "Polyline" ? Kind::Stroke : Kind::Outline;
        return Element::Polygon;
    }
    if (name == "Circle") {
        return make(Kind::Circle, "diameter", nullptr);
    }
    if (name == "Oval") {
        return make(Kind::Oval, "width", "height");
    }
    if (name == "RectCenter" || name == "RectCham") {
        return make(Kind::Rectangle, "width", "height");
    }
    if (name == "RectRound") {
        make(Kind::Rectangle, "width", "height");
        // Corners that are half as wide as the shape are round ends.
        const double radius = numberOr(attributes, "radius", 0) * mShapeUnit;
        if (mShape.kind == Kind::Rectangle
            && radius * 2 >= std::min(mShape.width, mShape.height) - sizePerMicron) {
            mShape.kind = Kind::Oval;
        }
        return Element::Leaf;
    }
    if ((name == "Line" || name == "Arc") && mShape.kind == Kind::None) {
        mShape.kind = Kind::Stroke;
        const Place end = shapePlace(attributes, "endX", "endY");
        mShape.path = {shapePlace(attributes, "startX", "startY"),
            {name == "Line" ? Segment{Segment::Shape::Line, end, {}} : arcTo(end, attributes)}};
        return Element::Shape; // with the line's width
    }
    if (name == "RectCorner" && mShape.kind == Kind::None) {
        mShape.kind = Kind::Outline;
        mShape.path = rectanglePath(shapePlace(attributes, "lowerLeftX", "lowerLeftY"),
            shapePlace(attributes, "upperRightX", "upperRightY"));
        return Element::Leaf;
    }
    if (readLineWidth(name, attributes)) {
        return Element::Leaf;
    }
    if (name == "StandardPrimitiveRef") {
        return refer(Kind::StandardReference);
    }
    if (name == "UserPrimitiveRef") {
        return refer(Kind::UserReference);
    }
    const bool holds = name == "Outline" || name == "Contour" || name == "UserSpecial"
        || name == "Features" || name == "Feature";
    return holds ? Element::Shape : Element::Skip;
}

Element Reader::startPolygon(std::string_view name, const Attributes& attributes)
{
    Path& path = mShape.path;
    if (name == "PolyBegin") {
        path = {shapePlace(attributes, "x", "y"), {}};
    } else if (name == "PolyStepSegment") {
        path.segments.push_back({Segment::Shape::Line, shapePlace(attributes, "x", "y"), {}});
    } else if (name == "PolyStepCurve") {
        path.segments.push_back(arcTo(shapePlace(attributes, "x", "y"), attributes));
    } else {
        readLineWidth(name, attributes);
    }
    return Element::Leaf;
}

/** @return whether the element tells the width of a stroke, itself or by the dictionary */
bool Reader::readLineWidth(std::string_view name, const Attributes& attributes)
{
    if (name == "LineDesc") {
        mShape.lineWidth = length(attributes, "lineWidth");
        return true;
    }
    if (name == "LineDescRef") {
        const auto found = mLineWidths.find(idOf(attributes));
        mShape.lineWidth = found == mLineWidths.end() ? 0 : found->second;
        return true;
    }
    return false;
}

Place Reader::shapePlace(const Attributes& attributes, const char* x, const char* y) const
{
    return place(numberOr(attributes, x, 0) * mShapeUnit, numberOr(attributes, y, 0) * mShapeUnit);
}

Segment Reader::arcTo(Place end, const Attributes& attributes) const
{
    const char* clockwise = attributes.value("clockwise");
    const bool isClockwise = clockwise && std::string_view(clockwise) == "true";
    return {isClockwise ? Segment::Shape::Clockwise : Segment::Shape::CounterClockwise, end,
        shapePlace(attributes, "centerX", "centerY")};
}

double Reader::unitOf(const Attributes& attributes) const
{
    const QString units = attributes.text("units").toUpper();
    if (units == QLatin1String("MILLIMETER") || units.isEmpty()) {
        return sizePerMillimetre;
    }
    if (units == QLatin1String("MICRON")) {
        return sizePerMicron;
    }
    if (units == QLatin1String("INCH")) {
        return sizePerInch;
    }
    fail(QStringLiteral("unknown units \"%1\"; known are MILLIMETER, MICRON and INCH")
             .arg(units.left(40)));
}

void Reader::readUnits(const Attributes& attributes)
{
    const QString units = attributes.text("units");
    if (units.isEmpty()) {
        fail(QStringLiteral("unknown units \"\"; known are MILLIMETER, MICRON and INCH"));
    }
    mUnit = unitOf(attributes);
    mBoard.units = mUnit == sizePerInch ? Units::Inch : Units::Metric;
}

double Reader::number(const char* text, const char* name) const
{
    double value = 0;
    const auto reads = [&](std::string_view digits) {
        const char* end = digits.data() + digits.size();
        const auto [stop, error] = std::from_chars(digits.data(), end, value);
        return error == std::errc() && stop == end && std::isfinite(value);
    };
    if (reads(text)) {
        return value;
    }
    const QByteArray trimmed = QByteArrayView(text).trimmed().toByteArray();
    if (!reads(trimmed.constData() + trimmed.startsWith('+'))) {
        fail(QStringLiteral("%1=\"%2\" is no number")
                 .arg(QLatin1String(name), QString::fromUtf8(text).left(40)));
    }
    return value;
}

double Reader::numberOr(const Attributes& attributes, const char* name, double other) const
{
    const char* text = attributes.value(name);
    return text ? number(text, name) : other;
}

/** Of a primitive, in host sizes. */
double Reader::length(const Attributes& attributes, const char* name) const
{
    const double value = numberOr(attributes, name, 0) * mShapeUnit;
    if (!(value >= 0 && value <= maxSize)) {
        fail(QStringLiteral("%1=\"%2\" is no size of a shape")
                 .arg(QLatin1String(name), attributes.text(name).left(40)));
    }
    return value;
}

Size Reader::sizeOf(const Attributes& attributes, const char* name, bool required) const
{
    const char* text = attributes.value(name);
    if (!text && !required) {
        return 0;
    }
    if (!text) {
        fail(QStringLiteral("a hole without %1").arg(QLatin1String(name)));
    }
    const auto failOf = [&](const char* what) {
        fail(QStringLiteral("%1=\"%2\" %3")
                 .arg(QLatin1String(name), QString::fromUtf8(text).left(40), QLatin1String(what)));
    };
    const double value = number(text, name);
    if (value < 0) {
        failOf("is negative");
    }
    const double hostSize = std::round(value * mUnit);
    if (hostSize > maxSize) {
        failOf("is too large");
    }
    if (required && hostSize < 1) {
        failOf("is no size of a hole");
    }
    return Size(hostSize);
}

int Reader::repeats(const Attributes& attributes, const char* name) const
{
    const char* text = attributes.value(name);
    if (!text) {
        return 1;
    }
    bool ok = false;
    const int times = QByteArrayView(text).trimmed().toInt(&ok);
    if (!ok || times < 1 || times > maxRepeats) {
        fail(QStringLiteral("%1=\"%2\" is no number from 1 to %3")
                 .arg(QLatin1String(name), QString::fromUtf8(text).left(40))
                 .arg(maxRepeats));
    }
    return times;
}

Place Reader::place(double x, double y) const
{
    x = std::round(x);
    y = std::round(y);
    if (!(std::abs(x) <= maxSize && std::abs(y) <= maxSize)) {
        fail(QStringLiteral("a place further than 5 m from the origin"));
    }
    return {Size(x), Size(y)};
}

void Reader::position(std::string_view name, const Attributes& attributes, Position& to) const
{
    if (name == "Location") {
        to.x += numberOr(attributes, "x", 0) * mUnit;
        to.y += numberOr(attributes, "y", 0) * mUnit;
    } else if (name == "Xform") {
        to.xOffset = numberOr(attributes, "xOffset", 0) * mUnit;
        to.yOffset = numberOr(attributes, "yOffset", 0) * mUnit;
        to.rotation = numberOr(attributes, "rotation", 0);
        to.scale = numberOr(attributes, "scale", 1);
        const char* mirror = attributes.value("mirror");
        to.mirror = mirror && std::string_view(mirror) == "true";
        if (!(to.scale > 0)) {
            fail(QStringLiteral("scale=\"%1\" is no scale").arg(attributes.text("scale").left(40)));
        }
    }
}

HoleType Reader::holeType(const Attributes& attributes) const
{
    const char* status = attributes.value("platingStatus");
    if (qstricmp(status, "PLATED") == 0) {
        return HoleType::Plated;
    }
    if (qstricmp(status, "NONPLATED") == 0) {
        return HoleType::NonPlated;
    }
    // Revision C tells vias apart by what closes them, such as VIA_CAPPED.
    if (qstricmp(status, "VIA") == 0 || (status && qstrnicmp(status, "VIA_", 4) == 0)) {
        return HoleType::Via;
    }
    // Plating decides the drill size, so a guess would make scrap.
    fail(!status || !*status ? QStringLiteral("a hole without platingStatus")
                             : QStringLiteral("unknown platingStatus \"%1\"")
                                   .arg(attributes.text("platingStatus").left(40)));
}

void Reader::beginStep(const Attributes& attributes)
{
    const QString name = attributes.text("name");
    if (mSteps.contains(name)) {
        fail(QStringLiteral("a second step \"%1\"").arg(name));
    }
    mSteps.insert(name, mBoard.steps.size());
    mBoard.steps.emplace_back().name = name;
}

void Reader::addRepeat(const Attributes& attributes)
{
    if (mUnit == 0) {
        fail(QStringLiteral("no CadHeader tells the units of this repeat"));
    }
    const auto at = [&](const char* name) { return numberOr(attributes, name, 0) * mUnit; };
    const char* mirror = attributes.value("mirror");
    Repeat repeat;
    repeat.at = place(at("x"), at("y"));
    const Place grid = place(at("dx"), at("dy"));
    repeat.dx = grid.x;
    repeat.dy = grid.y;
    repeat.columns = repeats(attributes, "nx");
    repeat.rows = repeats(attributes, "ny");
    repeat.angle = numberOr(attributes, "angle", 0);
    repeat.mirror = mirror && std::string_view(mirror) == "true";
    mRepeats.push_back({mBoard.steps.size() - 1, attributes.text("stepRef"), repeat, line()});
}

void Reader::beginLayerFeature(const Attributes& attributes)
{
    mLayer = attributes.text("layerRef");
    const QString function = mLayerFunctions.value(mLayer);
    mBackDrilled = mBackDrillLayers.contains(mLayer);
    // A round hole on a layer of routs is drilled too; an undeclared layer gets the benefit of
    // the doubt. On layers of copper and the like, holes only repeat what the drill layers say.
    mDrilled = function.isEmpty() || function == QLatin1String("DRILL")
        || function == QLatin1String("ROUT") || mBackDrilled;
    if (mDrilled) {
        Layer& layer = mCollector.layer(mLayer);
        if (const auto span = mSpans.constFind(mLayer); span != mSpans.constEnd()) {
            layer.span = *span;
        }
    }
}

void Reader::endStep()
{
    mBoard.steps.back().layers = mCollector.take();
}

/** Of a hole or a slot: what both have. */
void Reader::beginOpening(const Attributes& attributes, bool isSlot)
{
    if (mUnit == 0) {
        fail(QStringLiteral("no CadHeader tells the units of this hole"));
    }
    mOwnPosition = {};
    mSquare = false;
    // Some exporters tell no plating of slots. It is a guess then, and told to be one.
    const char* status = attributes.value("platingStatus");
    mTool.typeAssumed = isSlot && (!status || !*status);
    mTool.type = mTool.typeAssumed ? HoleType::Plated : holeType(attributes);
    mTool.functionTold = mTool.type == HoleType::Via;
    mTool.tolerance =
        Tolerance{sizeOf(attributes, "minusTol", false), sizeOf(attributes, "plusTol", false)};
    mTool.finishedSize = 0;
    mToleranceTold = mToleranceTold || *mTool.tolerance != Tolerance{};
}

Path moved(const Path& path, const Position& position, const auto& toPlace)
{
    const Transform turn({}, position.rotation, position.mirror);
    const auto map = [&](const Place& place) {
        const Place turned = turn.map(toPlace((place.x + position.xOffset) * position.scale,
            (place.y + position.yOffset) * position.scale));
        return toPlace(turned.x + position.x, turned.y + position.y);
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
Path Reader::placed(const Path& path) const
{
    const auto toPlace = [this](double x, double y) { return place(x, y); };
    try {
        const Path own = mOwnPosition.isIdentity() ? path : moved(path, mOwnPosition, toPlace);
        return mSetPosition.isIdentity() ? own : moved(own, mSetPosition, toPlace);
    } catch (const PanelError& error) {
        fail(QString::fromUtf8(error.what()));
    }
}

Place Reader::placed(const Place& place) const
{
    return placed(Path{place, {}}).start;
}

void Reader::addHole()
{
    mSetStarted = true;
    if (mSquare) {
        Ipc2581Shape square;
        square.kind = Ipc2581Shape::Kind::Rectangle;
        square.width = square.height = mTool.finishedSize;
        addOpening(*openingOf(square));
        return;
    }
    const bool isPlain = mOwnPosition.rotation == 0 && !mOwnPosition.mirror
        && mOwnPosition.xOffset == 0 && mOwnPosition.yOffset == 0 && mSetPosition.isIdentity();
    const Place at = isPlain ? place(mOwnPosition.x, mOwnPosition.y) : placed(Place{});
    if (mSetPosition.scale != 1 || mOwnPosition.scale != 1) {
        fail(QStringLiteral("a hole that is scaled"));
    }
    mCollector.tool(mTool, mBackDrilled).holes.push_back(at);
}

/** The shape that a reference leads to; null if it leads nowhere. */
const Ipc2581Shape* Reader::resolved(const Ipc2581Shape& shape) const
{
    const Ipc2581Shape* at = &shape;
    for (int i = 0; i < maxReferences; ++i) {
        const bool user = at->kind == Ipc2581Shape::Kind::UserReference;
        if (!user && at->kind != Ipc2581Shape::Kind::StandardReference) {
            return at;
        }
        const Ipc2581Shapes& shapes = user ? mUserShapes : mStandardShapes;
        const auto found = shapes.find(at->reference);
        if (found == shapes.end()) {
            return nullptr;
        }
        at = &found->second;
    }
    return nullptr;
}

void Reader::addSlotCavity()
{
    mSetStarted = true;
    const Ipc2581Shape* shape = resolved(mShape);
    const auto opening = shape ? openingOf(*shape) : std::nullopt;
    if (!opening) {
        fail(mShape.reference.empty()
                ? QStringLiteral("a slot without a shape")
                : QStringLiteral("no shape \"%1\" for this slot")
                      .arg(QString::fromStdString(mShape.reference).left(40)));
    }
    addOpening(*opening);
}

void Reader::addOpening(const Ipc2581Opening& opening)
{
    if (!opening.slot) {
        const bool unplated = mTool.type == HoleType::NonPlated;
        mCollector.layer(mLayer).contours.push_back(
            {unplated ? HoleType::NonPlated : HoleType::Plated, placed(opening.contour)});
        return;
    }
    const double scale = mOwnPosition.scale * mSetPosition.scale;
    mTool.finishedSize = place(opening.slot->width * scale, 0).x;
    if (mTool.finishedSize < 1) {
        fail(QStringLiteral("a slot without a width"));
    }
    mCollector.tool(mTool, mBackDrilled).slotPaths.push_back(placed(opening.slot->middle));
}

void Reader::resolveRepeats()
{
    for (NamedRepeat& named : mRepeats) {
        const auto found = mSteps.constFind(named.step);
        if (found == mSteps.constEnd()) {
            fail(named.line, QStringLiteral("no step \"%1\" to repeat").arg(named.step));
        }
        named.repeat.step = *found;
        placeDatum(named);
        mBoard.steps[named.owner].repeats.push_back(named.repeat);
    }
    std::vector<char> state(mBoard.steps.size(), 0);
    for (size_t i = 0; i < mBoard.steps.size(); ++i) {
        checkCircles(i, state, 0);
    }
}

/** Moves a repeat so that the datum of the step, and not its origin, lies where it is told to. */
void Reader::placeDatum(NamedRepeat& named)
{
    const Place datum = mDatums.value(named.repeat.step);
    if (datum == Place{}) {
        return;
    }
    const Place turned = Transform({}, named.repeat.angle, named.repeat.mirror).map(datum);
    named.repeat.at =
        place(double(named.repeat.at.x) - turned.x, double(named.repeat.at.y) - turned.y);
    const QString note =
        QStringLiteral("copies of step \"%1\" are placed by its datum, which is not its origin")
            .arg(named.step);
    if (!mBoard.notes.contains(note)) {
        mBoard.notes << note;
    }
}

void Reader::checkCircles(size_t step, std::vector<char>& state, int depth) const
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
        fail(named == mRepeats.end() ? 1 : named->line,
            QStringLiteral("step \"%1\" repeats itself, or repeats are nested too deeply")
                .arg(mBoard.steps[step].name));
    }
    state[step] = Open;
    for (const Repeat& repeat : mBoard.steps[step].repeats) {
        checkCircles(repeat.step, state, depth + 1);
    }
    state[step] = Done;
}

/** Exporters that know no tolerances write 0 and 0 for each hole: then none is told. */
void Reader::dropEmptyTolerances()
{
    if (mToleranceTold) {
        return;
    }
    for (Step& step : mBoard.steps) {
        for (Layer& layer : step.layers) {
            for (std::vector<Tool>* tools : {&layer.tools, &layer.backDrills}) {
                for (Tool& tool : *tools) {
                    tool.tolerance.reset();
                }
            }
        }
    }
}

void Reader::checkHoles() const
{
    std::vector<Layer> layers;
    for (const Step& step : mBoard.steps) {
        for (const Layer& layer : step.layers) {
            if (!layer.tools.empty()) {
                return;
            }
            layers.push_back(layer);
        }
    }
    fail(noHoleText(layers));
}

void Reader::finish()
{
    resolveRepeats();
    dropEmptyTolerances();
    checkHoles();
    mBoard.mainStep = mSteps.value(mMainStep, 0);
    for (size_t i = 0; i < mBoard.steps.size(); ++i) {
        try {
            gatherLayers(mBoard, i);
        } catch (const PanelError& error) {
            fail(QString::fromUtf8(error.what()));
        }
    }
}

void Reader::parse(std::string_view bytes, bool last)
{
    const XML_Status status = XML_Parse(mParser.get(), bytes.data(), int(bytes.size()), last);
    if (mFailure) {
        std::rethrow_exception(mFailure);
    }
    if (status != XML_STATUS_OK) {
        fail(QString::fromUtf8(XML_ErrorString(XML_GetErrorCode(mParser.get()))));
    }
}

Board Reader::read()
{
    if (!mParser) {
        throw std::bad_alloc();
    }
    XML_SetUserData(mParser.get(), this);
    XML_SetElementHandler(mParser.get(), onStart, onEnd);
    ChunkReader chunks(mDevice, mName, mOptions);
    for (std::string_view chunk = chunks.next(); !chunk.empty(); chunk = chunks.next()) {
        parse(chunk, false);
    }
    parse({}, true);
    finish();
    return std::move(mBoard);
}

} // namespace

Board readIpc2581(QIODevice& device, const QString& name, const ReadOptions& options)
{
    return Reader(device, name, options).read();
}
