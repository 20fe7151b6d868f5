// SPDX-License-Identifier: MIT
#include "ipc2581_reader.h"

#include "tool_collector.h"

#include <QFile>
#include <QXmlStreamReader>
#include <cmath>
#include <limits>

namespace {

constexpr int maxElementDepth = 1000;
constexpr int maxRepeatDepth = 64;
constexpr int maxRepeats = 10000; ///< in one direction of a panel
constexpr int tokensPerProgress = 4096;

/** A step that repeats another, as panels do. */
struct Repeat
{
    QString step;
    qint64 times;
    qint64 line;
};

/** One pass over one file; each function reads the element that has just begun, to its end. */
class Reader
{
public:
    Reader(const QString& path, const Progress& progress)
        : mPath(path)
        , mFile(path)
        , mProgress(progress)
    { }

    Board read();

private:
    [[noreturn]] void fail(qint64 line, const QString& message) const
    {
        throw BoardError(mPath, line, message);
    }
    [[noreturn]] void fail(const QString& message) const { fail(mXml.lineNumber(), message); }

    QXmlStreamReader::TokenType next();
    bool nextChild();
    void skip();
    bool is(const char* name) const { return mXml.name() == QLatin1String(name); }
    QString text(const char* attribute) const
    {
        return mXml.attributes().value(QLatin1String(attribute)).toString();
    }
    int size(const char* attribute, bool required) const;
    int repeats(const char* attribute) const;
    HoleType holeType() const;

    void readRoot();
    void readContent();
    void readEcad();
    void readCadHeader();
    void readCadData();
    void readStep();
    Repeat readStepRepeat();
    void readLayerFeature(ToolCollector& collector);
    void addHole(ToolCollector& collector, size_t layer) const;

    void addRepeats(size_t step, int depth);
    void finish();

    QString mPath;
    QFile mFile;
    Progress mProgress;
    QXmlStreamReader mXml;
    int mDepth = 0;
    int mTokens = 0;

    Board mBoard;
    QString mMainStep;
    double mUnit = 0; ///< the file's unit in host size units; 0: not told yet
    QHash<QString, QString> mLayerFunctions;
    QHash<QString, size_t> mSteps;
    std::vector<std::vector<Repeat>> mRepeats; ///< for each step, until they are added
};

QXmlStreamReader::TokenType Reader::next()
{
    if (++mTokens % tokensPerProgress == 0) {
        mTokens = 0;
        if (mProgress && !mProgress(mFile.pos(), mFile.size())) {
            throw BoardCancelled();
        }
    }
    const auto token = mXml.readNext();
    if (mXml.hasError()) {
        fail(mXml.errorString());
    }
    if (token == QXmlStreamReader::StartElement && ++mDepth > maxElementDepth) {
        fail(QStringLiteral("elements are nested more than %1 deep").arg(maxElementDepth));
    }
    if (token == QXmlStreamReader::EndElement) {
        --mDepth;
    }
    return token;
}

/** Goes to the next child of the current element; false at the element's end. */
bool Reader::nextChild()
{
    for (;;) {
        switch (next()) {
        case QXmlStreamReader::StartElement:
            return true;
        case QXmlStreamReader::EndElement:
        case QXmlStreamReader::EndDocument:
            return false;
        default:
            break;
        }
    }
}

void Reader::skip()
{
    const int end = mDepth - 1;
    while (mDepth > end) {
        next();
    }
}

int Reader::size(const char* attribute, bool required) const
{
    const QStringView value = mXml.attributes().value(QLatin1String(attribute));
    if (value.isNull() && !required) {
        return 0;
    }
    if (value.isNull()) {
        fail(QStringLiteral("a hole without %1").arg(QLatin1String(attribute)));
    }
    bool ok = false;
    const double number = value.trimmed().toDouble(&ok);
    // The text is made for a failure only: this runs for each hole.
    const auto failOf = [&](const char* what) {
        fail(QStringLiteral("%1=\"%2\" %3")
                 .arg(QLatin1String(attribute), value.left(40), QLatin1String(what)));
    };
    if (!ok || !std::isfinite(number)) {
        failOf("is no number");
    }
    if (number < 0) {
        failOf("is negative");
    }
    const double hostSize = std::round(number * mUnit);
    if (hostSize > std::numeric_limits<int>::max()) {
        failOf("is too large");
    }
    if (required && hostSize < 1) {
        failOf("is no size of a hole");
    }
    return int(hostSize);
}

int Reader::repeats(const char* attribute) const
{
    const QStringView value = mXml.attributes().value(QLatin1String(attribute));
    if (value.isNull()) {
        return 1;
    }
    bool ok = false;
    const int number = value.trimmed().toInt(&ok);
    if (!ok || number < 1 || number > maxRepeats) {
        fail(QStringLiteral("%1=\"%2\" is no number from 1 to %3")
                 .arg(QLatin1String(attribute), value.left(40))
                 .arg(maxRepeats));
    }
    return number;
}

HoleType Reader::holeType() const
{
    const QXmlStreamAttributes attributes = mXml.attributes();
    const QStringView status = attributes.value(QLatin1String("platingStatus"));
    const auto isStatus = [status](const char* name) {
        return status.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
    };
    if (isStatus("PLATED")) {
        return HoleType::Plated;
    }
    if (isStatus("NONPLATED")) {
        return HoleType::NonPlated;
    }
    // Revision C tells vias apart by what closes them, such as VIA_CAPPED.
    if (isStatus("VIA") || status.startsWith(QLatin1String("VIA_"), Qt::CaseInsensitive)) {
        return HoleType::Via;
    }
    // Plating decides the drill size, so a guess would make scrap.
    fail(status.isEmpty() ? QStringLiteral("a hole without platingStatus")
                          : QStringLiteral("unknown platingStatus \"%1\"").arg(status.left(40)));
}

Board Reader::read()
{
    if (!mFile.open(QIODevice::ReadOnly)) {
        fail(1, mFile.errorString());
    }
    mXml.setDevice(&mFile);
    while (next() != QXmlStreamReader::EndDocument) {
        if (mXml.isStartElement()) {
            if (!is("IPC-2581")) {
                fail(QStringLiteral("no IPC-2581 file: the root element is \"%1\"")
                         .arg(mXml.name().left(40)));
            }
            readRoot();
        }
    }
    finish();
    return std::move(mBoard);
}

void Reader::readRoot()
{
    while (nextChild()) {
        if (is("Content")) {
            readContent();
        } else if (is("Ecad")) {
            readEcad();
        } else {
            skip();
        }
    }
}

void Reader::readContent()
{
    while (nextChild()) {
        if (is("StepRef") && mMainStep.isEmpty()) {
            mMainStep = text("name");
        }
        skip();
    }
}

void Reader::readEcad()
{
    mBoard.job = text("name");
    while (nextChild()) {
        if (is("CadHeader")) {
            readCadHeader();
        } else if (is("CadData")) {
            readCadData();
        } else {
            skip();
        }
    }
}

void Reader::readCadHeader()
{
    const QString units = text("units").toUpper();
    if (units == QLatin1String("MILLIMETER")) {
        mUnit = 400000;
    } else if (units == QLatin1String("MICRON")) {
        mUnit = 400;
    } else if (units == QLatin1String("INCH")) {
        mUnit = 10160000;
    } else {
        fail(QStringLiteral("unknown units \"%1\"; known are MILLIMETER, MICRON and INCH")
                 .arg(units.left(40)));
    }
    mBoard.units = units == QLatin1String("INCH") ? Units::Inch : Units::Metric;
    skip();
}

void Reader::readCadData()
{
    while (nextChild()) {
        if (is("Step")) {
            readStep();
            continue;
        }
        if (is("Layer")) {
            mLayerFunctions.insert(text("name"), text("layerFunction").toUpper());
        }
        skip();
    }
}

void Reader::readStep()
{
    const QString name = text("name");
    if (mSteps.contains(name)) {
        fail(QStringLiteral("a second step \"%1\"").arg(name));
    }
    mSteps.insert(name, mBoard.steps.size());

    ToolCollector collector(name);
    std::vector<Repeat> repeatedSteps;
    while (nextChild()) {
        if (is("LayerFeature")) {
            readLayerFeature(collector);
        } else if (is("StepRepeat")) {
            repeatedSteps.push_back(readStepRepeat());
        } else {
            skip();
        }
    }
    mBoard.steps.push_back(collector.take());
    mRepeats.push_back(std::move(repeatedSteps));
}

Repeat Reader::readStepRepeat()
{
    const Repeat repeat{text("stepRef"), qint64(repeats("nx")) * repeats("ny"), mXml.lineNumber()};
    skip();
    return repeat;
}

void Reader::readLayerFeature(ToolCollector& collector)
{
    const QString layerName = text("layerRef");
    const QString function = mLayerFunctions.value(layerName);
    // A round hole on a layer of routs is drilled too; an undeclared layer gets the benefit of
    // the doubt. On layers of copper and the like, holes only repeat what the drill layers say.
    const bool drilled = function.isEmpty() || function == QLatin1String("DRILL")
        || function == QLatin1String("ROUT");
    const size_t layer = collector.layer(layerName);

    const int end = mDepth - 1;
    while (mDepth > end) {
        if (next() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (is("Hole")) {
            if (drilled) {
                addHole(collector, layer);
            } else {
                ++collector.step().holesLeftOut;
            }
        } else if (is("SlotCavity") || is("Slot")) {
            ++collector.step().slotsLeftOut;
        }
    }
}

void Reader::addHole(ToolCollector& collector, size_t layer) const
{
    if (mUnit == 0) {
        fail(QStringLiteral("no CadHeader tells the units of this hole"));
    }
    const Tool tool{
        holeType(), size("minusTol", false), size("plusTol", false), size("diameter", true), 1};
    if (!collector.add(layer, tool)) {
        fail(QStringLiteral("too many holes"));
    }
}

/** Adds the holes of the steps that a step repeats to its own. */
void Reader::addRepeats(size_t index, int depth)
{
    if (mRepeats[index].empty()) {
        return;
    }
    ToolCollector collector(mBoard.steps[index].name);
    const auto addStep = [&](const Step& step, qint64 times) {
        bool ok = true;
        for (const Layer& layer : step.layers) {
            const size_t to = collector.layer(layer.name);
            for (Tool tool : layer.tools) {
                tool.count *= times;
                ok = collector.add(to, tool) && ok;
            }
        }
        Step& sum = collector.step();
        sum.slotsLeftOut += step.slotsLeftOut * times;
        sum.holesLeftOut += step.holesLeftOut * times;
        const qint64 most = std::numeric_limits<int>::max();
        return ok && sum.slotsLeftOut <= most && sum.holesLeftOut <= most;
    };

    addStep(mBoard.steps[index], 1);
    for (const Repeat& repeat : mRepeats[index]) {
        const auto found = mSteps.constFind(repeat.step);
        if (found == mSteps.constEnd()) {
            fail(repeat.line, QStringLiteral("no step \"%1\" to repeat").arg(repeat.step));
        }
        // Also the end of steps that repeat each other in a circle.
        if (depth == maxRepeatDepth) {
            fail(repeat.line,
                QStringLiteral("step \"%1\" repeats itself, or repeats are nested too deeply")
                    .arg(repeat.step));
        }
        addRepeats(*found, depth + 1);
        if (!addStep(mBoard.steps[*found], repeat.times)) {
            fail(repeat.line, QStringLiteral("too many holes"));
        }
    }
    mBoard.steps[index] = collector.take();
    mRepeats[index].clear();
}

void Reader::finish()
{
    bool hasHoles = false;
    for (size_t i = 0; i < mBoard.steps.size(); ++i) {
        addRepeats(i, 0);
        hasHoles = hasHoles || !mBoard.steps[i].layers.empty();
    }
    if (!hasHoles) {
        fail(QStringLiteral("the file has no drilled hole"));
    }
    mBoard.mainStep = mSteps.value(mMainStep, 0);
}

} // namespace

Board readIpc2581(const QString& path, const Progress& progress)
{
    return Reader(path, progress).read();
}
