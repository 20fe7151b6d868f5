// SPDX-License-Identifier: MIT
#include "ipc2581_reader.h"

#include "board_text.h"
#include "ipc2581_openings.h"
#include "ipc2581_steps.h"
#include "panel.h"

#include <QFileInfo>
#include <QSet>
#include <algorithm>

namespace brox {

namespace {

/** What an element is, by the way to it. */
enum class Element
{
    Document,
    Root,
    Content,
    ShapeDictionary,
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
    Slot,
    Shape, ///< inside of an entry or a slot, or a part of one
    Polygon,
    Skip ///< nothing in it matters
};

/** Follows the file from element to element and lets others build what they are. */
class Reader final : XmlListener
{
public:
    Reader(const QString& name, const ReadOptions& options)
        : mOptions(options)
        , mPass(name)
        , mValues(mPass)
        , mShapes(mValues)
        , mOpenings(mValues, mShapes)
        , mSteps(mValues)
    { }

    Board read(QIODevice& device)
    {
        mPass.run(device, mOptions, *this);
        finish();
        return std::move(mBoard);
    }

private:
    bool start(std::string_view name, const XmlAttributes& attributes) override;
    void end() override;

    Element startTop(std::string_view name, const XmlAttributes& attributes);
    Element startContent(std::string_view name, const XmlAttributes& attributes);
    Element startEcad(std::string_view name, const XmlAttributes& attributes);
    Element startCadData(std::string_view name, const XmlAttributes& attributes);
    Element startStep(std::string_view name, const XmlAttributes& attributes);
    Element startFeature(std::string_view name, const XmlAttributes& attributes);
    Element startShape(std::string_view name, const XmlAttributes& attributes);

    void readUnits(const XmlAttributes& attributes);
    void declareLayer(const XmlAttributes& attributes);
    void beginLayerFeature(const XmlAttributes& attributes);
    void noteUndeclared();
    void dropEmptyTolerances();
    void finish();

    const ReadOptions& mOptions;
    XmlPass mPass;
    Ipc2581Values mValues;
    Ipc2581ShapeReader mShapes;
    Ipc2581Openings mOpenings;
    Ipc2581Steps mSteps;
    std::vector<Element> mPath{Element::Document};

    Board mBoard;
    QString mMainStep;
    double mUnit = 0; ///< the file's unit in host sizes; 0: not told yet
    QHash<QString, QString> mLayerFunctions;
    QHash<QString, Span> mSpans;
    QString mDeclaredLayer;
    QString mSpec;
    QSet<QString> mBackDrillSpecs;
    QSet<QString> mBackDrillLayers;
    QString mLayer; ///< of the features
    bool mDrilled = false; ///< that layer is
    bool mUndeclared = false; ///< that layer is taken to be drilled for want of a declaration
};

bool Reader::start(std::string_view name, const XmlAttributes& attributes)
{
    Element element = Element::Skip;
    switch (mPath.back()) {
    case Element::Document:
    case Element::Root:
        element = startTop(name, attributes);
        break;
    case Element::Content:
    case Element::ShapeDictionary:
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
        element = startFeature(name, attributes);
        break;
    case Element::Hole:
        mOpenings.placeOpening(name, attributes);
        break;
    case Element::Profile:
        mShapes.beginPolygon();
        element = name == "Polygon" || name == "Cutout" ? Element::Polygon : Element::Skip;
        break;
    case Element::Slot:
    case Element::Entry:
    case Element::Shape:
        element = startShape(name, attributes);
        break;
    case Element::Polygon:
        mShapes.addCorner(name, attributes);
        break;
    case Element::Skip:
        break;
    }
    if (element == Element::Skip) {
        return false;
    }
    mPath.push_back(element);
    return true;
}

void Reader::end()
{
    const Element element = mPath.back();
    mPath.pop_back();
    switch (element) {
    case Element::Entry:
        mShapes.endEntry();
        break;
    case Element::Polygon:
        if (mPath.back() == Element::Profile) {
            mSteps.current().outline.push_back(mShapes.takePath());
        } else {
            mShapes.endPolygon();
        }
        break;
    case Element::Hole:
        mOpenings.endHole();
        break;
    case Element::Slot:
        mOpenings.endSlot();
        break;
    case Element::Step:
        mSteps.current().layers = mOpenings.take();
        break;
    default:
        break;
    }
}

Element Reader::startTop(std::string_view name, const XmlAttributes& attributes)
{
    if (mPath.back() == Element::Document) {
        if (name != "IPC-2581") {
            mValues.fail(BoardText::tr("no IPC-2581 file: the root element is \"%1\"")
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

Element Reader::startContent(std::string_view name, const XmlAttributes& attributes)
{
    if (name == "StepRef") {
        if (mMainStep.isEmpty()) {
            mMainStep = attributes.text("name");
        }
    } else if (name == "DictionaryStandard" || name == "DictionaryUser") {
        mShapes.setUnit(mValues.unitOf(attributes));
        return Element::ShapeDictionary;
    } else if (name == "DictionaryLineDesc") {
        mShapes.setUnit(mValues.unitOf(attributes));
        return Element::LineDictionary;
    } else if (name == "EntryLineDesc") {
        mShapes.beginEntry(attributes);
        return Element::LineDictionary;
    } else if (name == "LineDesc") {
        mShapes.addLine(attributes);
    } else if (name == "EntryStandard" || name == "EntryUser") {
        mShapes.setUserDictionary(name == "EntryUser");
        mShapes.beginEntry(attributes);
        return Element::Entry;
    }
    return Element::Skip;
}

Element Reader::startEcad(std::string_view name, const XmlAttributes& attributes)
{
    if (name == "CadHeader") {
        readUnits(attributes);
        return Element::CadHeader;
    }
    if (name == "CadData") {
        mShapes.setUnit(mUnit);
        return Element::CadData;
    }
    if (name == "Spec") {
        mSpec = attributes.text("name");
        return Element::Spec;
    }
    if (name == "Backdrill") {
        mBackDrillSpecs.insert(mSpec);
    }
    return Element::Skip;
}

Element Reader::startCadData(std::string_view name, const XmlAttributes& attributes)
{
    if (name == "Layer") {
        declareLayer(attributes);
        return Element::LayerDeclaration;
    }
    if (name == "Step") {
        mSteps.begin(attributes.text("name"));
        return Element::Step;
    }
    if (name == "Span") {
        mSpans.insert(mDeclaredLayer, {attributes.text("fromLayer"), attributes.text("toLayer")});
    } else if (name == "SpecRef" && mBackDrillSpecs.contains(attributes.text("id"))) {
        mBackDrillLayers.insert(mDeclaredLayer);
    }
    return Element::Skip;
}

Element Reader::startStep(std::string_view name, const XmlAttributes& attributes)
{
    if (name == "LayerFeature") {
        beginLayerFeature(attributes);
        return Element::LayerFeature;
    }
    if (name == "Profile") {
        return Element::Profile;
    }
    if (name == "StepRepeat") {
        mSteps.addRepeat(attributes, mUnit);
    } else if (name == "Datum") {
        mSteps.setDatum(mValues.place(mValues.numberOr(attributes, "x", 0) * mUnit,
            mValues.numberOr(attributes, "y", 0) * mUnit));
    }
    return Element::Skip;
}

Element Reader::startFeature(std::string_view name, const XmlAttributes& attributes)
{
    const bool isHole = name == "Hole";
    if (isHole || name == "SlotCavity" || name == "Slot") {
        if (!mDrilled) {
            ++mSteps.current().holesLeftOut;
            return Element::Skip;
        }
        if (mUndeclared) {
            noteUndeclared();
        }
        isHole ? mOpenings.beginHole(attributes) : mOpenings.beginSlot(attributes);
        return isHole ? Element::Hole : Element::Slot;
    }
    if (name == "Set") {
        mOpenings.beginSet();
        return Element::Set;
    }
    if (name == "SpecRef" && mBackDrillSpecs.contains(attributes.text("id"))) {
        mOpenings.setBackDrilled();
    } else if (mDrilled && (name == "Location" || name == "Xform")) {
        mOpenings.placeSet(name, attributes);
    }
    return Element::Skip;
}

/** Inside of an entry or a slot: primitives, and what only holds them. */
Element Reader::startShape(std::string_view name, const XmlAttributes& attributes)
{
    if (name == "Location" || name == "Xform") {
        const bool inSlot = std::find(mPath.begin(), mPath.end(), Element::Slot) != mPath.end();
        inSlot ? mOpenings.placeOpening(name, attributes) : mShapes.movePart();
        return Element::Skip;
    }
    switch (mShapes.startPart(name, attributes)) {
    case Ipc2581ShapeReader::Inside::Shape:
        return Element::Shape;
    case Ipc2581ShapeReader::Inside::Polygon:
        return Element::Polygon;
    case Ipc2581ShapeReader::Inside::Nothing:
        break;
    }
    return Element::Skip;
}

void Reader::readUnits(const XmlAttributes& attributes)
{
    const double unit = mValues.unitOf(attributes);
    if (unit == 0) {
        mValues.fail(BoardText::tr("unknown units \"%1\"; known are MILLIMETER, MICRON and INCH")
                         .arg(QString()));
    }
    if (mUnit != 0 && mUnit != unit) {
        mValues.fail(BoardText::tr("a second CadHeader tells other units"));
    }
    mUnit = unit;
    mOpenings.setUnit(mUnit);
    mBoard.units = mUnit == sizePerInch ? Units::Inch : Units::Metric;
}

void Reader::declareLayer(const XmlAttributes& attributes)
{
    mDeclaredLayer = attributes.text("name");
    const QString function = attributes.text("layerFunction").toUpper();
    mLayerFunctions.insert(mDeclaredLayer, function);
    if (function.contains(QLatin1String("BACKDRILL"))) {
        mBackDrillLayers.insert(mDeclaredLayer);
    }
}

void Reader::beginLayerFeature(const XmlAttributes& attributes)
{
    const QString name = mLayer = attributes.text("layerRef");
    const QString function = mLayerFunctions.value(name);
    const bool isBackDrilled = mBackDrillLayers.contains(name);
    mUndeclared = function.isEmpty() && !isBackDrilled;
    // A round hole on a layer of routs is drilled too; an undeclared layer gets the benefit of
    // the doubt. On layers of copper and the like, holes only repeat what the drill layers say.
    mDrilled = function.isEmpty() || function == QLatin1String("DRILL")
        || function == QLatin1String("ROUT") || isBackDrilled;
    if (mDrilled) {
        const auto span = mSpans.constFind(name);
        mOpenings.beginLayer(
            name, span == mSpans.constEnd() ? std::nullopt : std::optional(*span), isBackDrilled);
    }
}

void Reader::noteUndeclared()
{
    const QString note =
        BoardText::tr("the file does not tell what layer \"%1\" is for; its holes are drilled")
            .arg(mLayer);
    if (!mBoard.notes.contains(note)) {
        mBoard.notes << note;
    }
}

/** Exporters that know no tolerances write 0 and 0 for each hole: then none is told. */
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

void Reader::finish()
{
    mSteps.finish(mBoard, mMainStep);
    dropEmptyTolerances();
    std::vector<Layer> empty;
    bool hasTools = false;
    for (size_t i = 0; i < mBoard.steps.size(); ++i) {
        for (const Layer& layer : mBoard.steps[i].layers) {
            hasTools = hasTools || !layer.tools.empty();
            if (layer.tools.empty()) {
                empty.push_back(layer);
            }
        }
        try {
            gatherLayers(mBoard, i);
        } catch (const PanelError& error) {
            mValues.fail(QString::fromUtf8(error.what()));
        }
    }
    if (!hasTools) {
        mValues.fail(noHoleText(empty));
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
