// SPDX-License-Identifier: MIT
#include "ipc2581_reader.h"

#include "ipc2581_steps.h"

#include <QFileInfo>
#include <QSet>
#include <algorithm>
#include <cmath>

namespace brox {

namespace {

/** What an element stands in, as far as that decides what it means. */
enum class In
{
    Document,
    Root,
    Content,
    Lines, ///< a dictionary of them
    Shapes, ///< a dictionary of them
    Ecad,
    CadHeader,
    Spec,
    CadData,
    Declaration, ///< of a layer
    Step,
    Profile,
    PadStack,
    PadHole,
    Layer, ///< features of a layer that is drilled, perhaps in a set
    OtherLayer,
    Hole,
    Shape, ///< an entry or a slot, or a part of one
    Polygon,
    Nothing ///< of interest
};

/** Follows the file from element to element and lets others build what they are. */
class Reader final : Ipc2581Listener
{
public:
    Reader(const QString& name, const ReadOptions& options)
        : mOptions(options)
        , mPass(name)
        , mShapes(mPass)
        , mOpenings(mPass, mShapes)
        , mSteps(mPass)
    { }

    Board read(QIODevice& device)
    {
        mPass.run(device, mOptions, *this);
        finish();
        return std::move(mBoard);
    }

private:
    using Attributes = Ipc2581Attributes;

    struct Rule
    {
        In in;
        std::string_view name; ///< of the element
        In inside; ///< what its children stand in
        void (*start)(Reader& reader, const Attributes& attributes) = nullptr;
        void (*end)(Reader& reader) = nullptr;
    };
    struct Open
    {
        const Rule* rule;
        In inside;
    };
    static const Rule* findRule(In in, std::string_view name);

    bool start(std::string_view name, const Attributes& attributes) override;
    void end() override;

    // Handlers of elements, with attributes or without.
    void setJob(const Attributes& attributes) { mBoard.job = attributes.text("name"); }
    void noteStep(const Attributes& attributes);
    void setUnit(const Attributes& attributes) { mPass.setUnit(attributes.unit()); }
    void readUnits(const Attributes& attributes);
    void useUnits() { mPass.setUnit(mUnit); }
    void setSpec(const Attributes& attributes) { mSpec = attributes.text("name"); }
    void noteBackDrillSpec() { mBackDrillSpecs.insert(mSpec); }
    void declareLayer(const Attributes& attributes);
    void endLayer();
    void declareSpan(const Attributes& attributes);
    void readThickness(const Attributes& attributes);
    void declareSpec(const Attributes& attributes);
    void beginStep(const Attributes& attributes) { mSteps.begin(attributes.text("name")); }
    void endStep();
    void endProfile() { mSteps.current().outline.push_back(mShapes.takePolygon()); }
    void beginLayer(const Attributes& attributes);
    void beginHole(const Attributes& attributes);
    void beginSlot(const Attributes& attributes);
    void endSlot();
    void leaveOut() { ++mSteps.current().holesLeftOut; }
    void readSpec(const Attributes& attributes);
    void locatePart(const Attributes& attributes);
    void turnPart(const Attributes& attributes);

    template <typename Part, typename... Arguments>
    Part& partOf(void (Part::*)(Arguments...))
    {
        if constexpr (std::is_same_v<Part, Ipc2581Shapes>) {
            return mShapes;
        } else if constexpr (std::is_same_v<Part, Ipc2581Openings>) {
            return mOpenings;
        } else if constexpr (std::is_same_v<Part, Ipc2581Steps>) {
            return mSteps;
        } else {
            return *this;
        }
    }

    /** Calls a handler of whichever part, with the attributes if it takes them. */
    template <auto Handler, typename... Arguments>
    static void on(Reader& reader, const Arguments&... arguments)
    {
        auto& part = reader.partOf(Handler);
        if constexpr (std::is_invocable_v<decltype(Handler), decltype(part), const Arguments&...>) {
            (part.*Handler)(arguments...);
        } else {
            (part.*Handler)();
        }
    }

    void noteOpening();
    void dropEmptyTolerances();
    void noteUndeclared();
    void finish();

    const ReadOptions& mOptions;
    Ipc2581Pass mPass;
    Ipc2581Shapes mShapes;
    Ipc2581Openings mOpenings;
    Ipc2581Steps mSteps;
    std::vector<Open> mOpen;
    std::optional<In> mInside; ///< where the children of an element stand if not by its rule

    Board mBoard;
    QString mMainStep;
    double mUnit = 0; ///< of the design; 0: not known yet
    QHash<QString, QString> mLayerFunctions;
    QHash<QString, Span> mSpans;
    QHash<Span, QString> mDrillLayers;
    QString mDeclaredLayer;
    QString mSpec;
    QSet<QString> mBackDrillSpecs;
    QSet<QString> mBackDrillLayers;
    QString mLayer; ///< of the features
    bool mIsUndeclared = false; ///< that layer; it is taken to be drilled then
    QSet<QString> mUndeclared; ///< layers with holes
    bool mIsInSlot = false;
};

/** @return null for an element that does not matter */
const Reader::Rule* Reader::findRule(In in, std::string_view name)
{
    using O = Ipc2581Openings;
    using R = Reader;
    using S = Ipc2581Shapes;
    static constexpr Rule rules[] = {
        {In::Document, "IPC-2581", In::Root},
        {In::Root, "Content", In::Content},
        {In::Root, "Ecad", In::Ecad, on<&R::setJob>},
        {In::Content, "StepRef", In::Nothing, on<&R::noteStep>},
        {In::Content, "DictionaryLineDesc", In::Lines, on<&R::setUnit>},
        {In::Content, "DictionaryStandard", In::Shapes, on<&R::setUnit>},
        {In::Content, "DictionaryUser", In::Shapes, on<&R::setUnit>},
        {In::Lines, "EntryLineDesc", In::Lines, on<&S::beginEntry>},
        {In::Lines, "LineDesc", In::Nothing, on<&S::keepLine>},
        {In::Shapes, "EntryStandard", In::Shape, on<&S::beginEntry>, on<&S::endStandardEntry>},
        {In::Shapes, "EntryUser", In::Shape, on<&S::beginEntry>, on<&S::endUserEntry>},
        {In::Ecad, "CadHeader", In::CadHeader, on<&R::readUnits>},
        {In::Ecad, "CadData", In::CadData, on<&R::useUnits>},
        {In::CadHeader, "Spec", In::Spec, on<&R::setSpec>},
        {In::Spec, "Backdrill", In::Nothing, on<&R::noteBackDrillSpec>},
        {In::CadData, "Layer", In::Declaration, on<&R::declareLayer>, on<&R::endLayer>},
        {In::CadData, "Stackup", In::Nothing, on<&R::readThickness>},
        {In::CadData, "Step", In::Step, on<&R::beginStep>, on<&R::endStep>},
        {In::Declaration, "Span", In::Nothing, on<&R::declareSpan>},
        {In::Declaration, "SpecRef", In::Nothing, on<&R::declareSpec>},
        {In::Step, "LayerFeature", In::Layer, on<&R::beginLayer>},
        {In::Step, "PadStack", In::PadStack},
        {In::Step, "Profile", In::Profile},
        {In::Step, "StepRepeat", In::Nothing, on<&Ipc2581Steps::addRepeat>},
        {In::Step, "Datum", In::Nothing, on<&Ipc2581Steps::setDatum>},
        {In::Profile, "Polygon", In::Polygon, on<&S::beginPolygon>, on<&R::endProfile>},
        {In::Profile, "Cutout", In::Polygon, on<&S::beginPolygon>, on<&R::endProfile>},
        {In::PadStack, "LayerHole", In::PadHole, on<&O::beginPadHole>, on<&O::endPadHole>},
        {In::PadHole, "Span", In::Nothing, on<&O::setPadSpan>},
        {In::PadHole, "Location", In::Nothing, on<&O::locate>},
        {In::Layer, "Hole", In::Hole, on<&R::beginHole>, on<&O::endHole>},
        {In::Layer, "Set", In::Layer, on<&O::beginSet>},
        {In::Layer, "SlotCavity", In::Shape, on<&R::beginSlot>, on<&R::endSlot>},
        {In::Layer, "Slot", In::Shape, on<&R::beginSlot>, on<&R::endSlot>},
        {In::Layer, "SpecRef", In::Nothing, on<&R::readSpec>},
        {In::Layer, "Location", In::Nothing, on<&O::locateSet>},
        {In::Layer, "Xform", In::Nothing, on<&O::turnSet>},
        {In::OtherLayer, "Hole", In::Nothing, on<&R::leaveOut>},
        {In::OtherLayer, "Set", In::OtherLayer},
        {In::OtherLayer, "SlotCavity", In::Nothing, on<&R::leaveOut>},
        {In::OtherLayer, "Slot", In::Nothing, on<&R::leaveOut>},
        {In::Hole, "Location", In::Nothing, on<&O::locate>},
        {In::Hole, "Xform", In::Nothing, on<&O::turn>},
        {In::Shape, "Location", In::Nothing, on<&R::locatePart>},
        {In::Shape, "Xform", In::Nothing, on<&R::turnPart>},
        {In::Shape, "Outline", In::Shape},
        {In::Shape, "Contour", In::Shape},
        {In::Shape, "UserSpecial", In::Shape},
        {In::Shape, "Features", In::Shape},
        {In::Shape, "Feature", In::Shape},
        {In::Shape, "Polygon", In::Polygon, on<&S::beginPolygon>, on<&S::endOutline>},
        {In::Shape, "Cutout", In::Polygon, on<&S::beginPolygon>, on<&S::endOutline>},
        {In::Shape, "Polyline", In::Polygon, on<&S::beginPolygon>, on<&S::endPolyline>},
        {In::Shape, "Line", In::Shape, on<&S::addLine>},
        {In::Shape, "Arc", In::Shape, on<&S::addArc>},
        {In::Shape, "LineDesc", In::Nothing, on<&S::setLineWidth>},
        {In::Shape, "LineDescRef", In::Nothing, on<&S::setLineReference>},
        {In::Shape, "Circle", In::Nothing, on<&S::addCircle>},
        {In::Shape, "Oval", In::Nothing, on<&S::addOval>},
        {In::Shape, "RectCenter", In::Nothing, on<&S::addRectangle>},
        {In::Shape, "RectRound", In::Nothing, on<&S::addRoundRectangle>},
        {In::Shape, "RectCham", In::Nothing, on<&S::addCutRectangle>},
        {In::Shape, "RectCorner", In::Nothing, on<&S::addCorners>},
        {In::Shape, "Diamond", In::Nothing, on<&S::addDiamond>},
        {In::Shape, "Ellipse", In::Nothing, on<&S::addEllipse>},
        {In::Shape, "Hexagon", In::Nothing, on<&S::addHexagon>},
        {In::Shape, "Octagon", In::Nothing, on<&S::addOctagon>},
        {In::Shape, "Triangle", In::Nothing, on<&S::addTriangle>},
        {In::Shape, "StandardPrimitiveRef", In::Nothing, on<&S::addStandardReference>},
        {In::Shape, "UserPrimitiveRef", In::Nothing, on<&S::addUserReference>},
        {In::Polygon, "PolyBegin", In::Nothing, on<&S::startPolygon>},
        {In::Polygon, "PolyStepSegment", In::Nothing, on<&S::addCorner>},
        {In::Polygon, "PolyStepCurve", In::Nothing, on<&S::addCurve>},
        {In::Polygon, "LineDesc", In::Nothing, on<&S::setLineWidth>},
        {In::Polygon, "LineDescRef", In::Nothing, on<&S::setLineReference>},
    };
    static_assert(std::ranges::is_sorted(rules, {}, &Rule::in));
    auto rule = std::ranges::lower_bound(rules, in, {}, &Rule::in);
    while (rule != std::end(rules) && rule->in == in && rule->name != name) {
        ++rule;
    }
    return rule != std::end(rules) && rule->in == in ? rule : nullptr;
}

bool Reader::start(std::string_view name, const Attributes& attributes)
{
    const In in = mOpen.empty() ? In::Document : mOpen.back().inside;
    const Rule* rule = findRule(in, name);
    if (!rule) {
        if (in == In::Document) {
            mPass.fail(BoardText::tr("no IPC-2581 file: the root element is \"%1\"")
                           .arg(QString::fromUtf8(name.data(), qsizetype(name.size())).left(40)));
        }
        return false;
    }
    if (rule->start) {
        rule->start(*this, attributes);
    }
    mOpen.push_back({rule, std::exchange(mInside, std::nullopt).value_or(rule->inside)});
    return true;
}

void Reader::end()
{
    const Rule* rule = mOpen.back().rule;
    mOpen.pop_back();
    if (rule->end) {
        rule->end(*this);
    }
}

void Reader::endStep()
{
    Step& step = mSteps.current();
    step.layers = mOpenings.take(mDrillLayers, step.holesLeftOut);
}

void Reader::noteStep(const Attributes& attributes)
{
    if (mMainStep.isEmpty()) {
        mMainStep = attributes.text("name");
    }
}

void Reader::readUnits(const Attributes& attributes)
{
    const double unit = attributes.unit();
    if (unit == 0) {
        mPass.fail(BoardText::tr("unknown units \"%1\"; known are MILLIMETER, MICRON and INCH")
                       .arg(QString()));
    }
    if (mUnit != 0 && mUnit != unit) {
        mPass.fail(BoardText::tr("a second CadHeader specifies other units"));
    }
    mUnit = unit;
    mBoard.units = mUnit == sizePerInch ? Units::Inch : Units::Metric;
}

void Reader::declareLayer(const Attributes& attributes)
{
    mDeclaredLayer = attributes.text("name");
    const QString function = attributes.text("layerFunction").toUpper();
    const bool isNew = !mLayerFunctions.contains(mDeclaredLayer);
    mLayerFunctions.insert(mDeclaredLayer, function);
    if (function.contains(QLatin1String("BACKDRILL"))) {
        mBackDrillLayers.insert(mDeclaredLayer);
    }
    static const QSet<QString> copper{
        "CONDUCTOR", "CONDFILM", "CONDFOIL", "PLANE", "SIGNAL", "MIXED", "POWER_GROUND"};
    if (isNew && copper.contains(function)) {
        mBoard.copperLayers << mDeclaredLayer;
    }
}

void Reader::readThickness(const Attributes& attributes)
{
    const double thickness = attributes.length("overallThickness");
    if (thickness >= 1 && thickness < maxDiameter) {
        mBoard.thickness = Size(std::lround(thickness));
    }
}

void Reader::endLayer()
{
    if (mLayerFunctions.value(mDeclaredLayer) == QLatin1String("DRILL")
        && !mBackDrillLayers.contains(mDeclaredLayer) && mSpans.contains(mDeclaredLayer)) {
        mDrillLayers.insert(mSpans.value(mDeclaredLayer), mDeclaredLayer);
    }
}

void Reader::declareSpan(const Attributes& attributes)
{
    mSpans.insert(mDeclaredLayer, {attributes.text("fromLayer"), attributes.text("toLayer")});
}

void Reader::declareSpec(const Attributes& attributes)
{
    if (mBackDrillSpecs.contains(attributes.text("id"))) {
        mBackDrillLayers.insert(mDeclaredLayer);
    }
}

void Reader::beginLayer(const Attributes& attributes)
{
    mLayer = attributes.text("layerRef");
    const QString function = mLayerFunctions.value(mLayer);
    const bool isBackDrilled = mBackDrillLayers.contains(mLayer);
    mIsUndeclared = function.isEmpty() && !isBackDrilled;
    // A round hole on a layer of routs is drilled too; an undeclared layer gets the benefit of
    // the doubt. On layers of copper and the like, holes only repeat what the drill layers say.
    if (mIsUndeclared || function == QLatin1String("DRILL") || function == QLatin1String("ROUT")
        || isBackDrilled) {
        const auto span = mSpans.constFind(mLayer);
        mOpenings.beginLayer(
            mLayer, span == mSpans.constEnd() ? std::nullopt : std::optional(*span), isBackDrilled);
    } else {
        mInside = In::OtherLayer;
    }
}

void Reader::noteOpening()
{
    if (mIsUndeclared) {
        mUndeclared.insert(mLayer);
        mIsUndeclared = false; // once is enough
    }
}

void Reader::beginHole(const Attributes& attributes)
{
    noteOpening();
    mOpenings.beginHole(attributes);
}

void Reader::beginSlot(const Attributes& attributes)
{
    noteOpening();
    mIsInSlot = true;
    mOpenings.beginSlot(attributes);
}

void Reader::endSlot()
{
    mIsInSlot = false;
    mOpenings.endSlot();
}

void Reader::readSpec(const Attributes& attributes)
{
    if (mBackDrillSpecs.contains(attributes.text("id"))) {
        mOpenings.setBackDrilled();
    }
}

void Reader::locatePart(const Attributes& attributes)
{
    mIsInSlot ? mOpenings.locate(attributes) : mShapes.movePart();
}

void Reader::turnPart(const Attributes& attributes)
{
    mIsInSlot ? mOpenings.turn(attributes) : mShapes.movePart();
}

/** Exporters that know no tolerances write 0 and 0 for each hole: then none is specified. */
void Reader::dropEmptyTolerances()
{
    if (mOpenings.isToleranceTold()) {
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

void Reader::noteUndeclared()
{
    if (mUndeclared.isEmpty()) {
        return;
    }
    const QString layer = *std::min_element(mUndeclared.begin(), mUndeclared.end());
    mBoard.notes << (mUndeclared.size() == 1
            ? BoardText::tr("the file does not say what layer \"%1\" is for; its holes are drilled")
                  .arg(layer)
            : BoardText::tr("the file does not say what %1 layers are for, \"%2\" among them; "
                            "their holes are drilled")
                  .arg(mUndeclared.size())
                  .arg(layer));
}

void Reader::finish()
{
    mSteps.finish(mBoard, mMainStep);
    noteUndeclared();
    dropEmptyTolerances();
    try {
        checkCounts(mBoard);
    } catch (const PanelError& error) {
        mPass.fail(error.message());
    }
    if (const QString lack = lackText(mBoard.steps); !lack.isEmpty()) {
        mPass.fail(lack);
    }
}

} // namespace

Board readIpc2581(QIODevice& device, const QString& name, const ReadOptions& options)
{
    Board board = Reader(name, options).read(device);
    if (board.job.isEmpty()) {
        board.job = QFileInfo(name).completeBaseName();
    }
    return board;
}

} // namespace brox
