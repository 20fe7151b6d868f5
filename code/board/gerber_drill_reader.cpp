// SPDX-License-Identifier: MIT
#include "gerber_drill_reader.h"

#include "board_text.h"
#include "excellon_comments.h"
#include "panel.h"
#include "slot_shape.h"

#include <QFileInfo>
#include <algorithm>
#include <cmath>
#include <string_view>
#include <unordered_map>

namespace brox {

namespace {

constexpr size_t maxCommandLength = 1 << 16;

QString shown(std::string_view text)
{
    return '"' + QString::fromLatin1(text.data(), qMin<qsizetype>(qsizetype(text.size()), 40))
        + '"';
}

std::optional<double> toNumber(std::string_view text)
{
    bool ok = false;
    const double number =
        QByteArrayView(text.data(), qsizetype(text.size())).trimmed().toDouble(&ok);
    return ok && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

/** Old commands that mirror, scale, turn or move all places. */
bool movesPlaces(std::string_view text)
{
    constexpr std::string_view harmless[] = {
        "MIA0B0", "SFA1B1", "SFA1.0B1.0", "OFA0B0", "OFA0.0B0.0", "IR0", "ASAXBY"};
    constexpr std::string_view names[] = {"MI", "SF", "OF", "IR", "AS"};
    return std::any_of(std::begin(names), std::end(names), [&](std::string_view name) {
        return text.starts_with(name);
    }) && std::find(std::begin(harmless), std::end(harmless), text) == std::end(harmless);
}

/** Runs the commands of a file, one after the other. */
class GerberDrill
{
public:
    explicit GerberDrill(const QString& name)
        : mName(name)
        , mFormat({})
    { }

    void countLine() { ++mLine; }
    void command(std::string_view text);
    void extended(std::string_view text);
    DrillFile finish();
    [[noreturn]] void fail(const QString& message) const
    {
        throw BoardError(mName, mLine, message);
    }

private:
    struct Aperture
    {
        char shape = 0; ///< C, O, R; 0 for a macro and others
        double width = 0;
        double height = 0;
        Tool tool; ///< with all that it makes
        HoleFacts facts;
    };

    void defineAperture(std::string_view text);
    void setFormat(std::string_view text);
    void operate(int code, const Place& to, const std::optional<Place>& centre);
    void flash(const Place& at);
    void draw(const Place& to, const std::optional<Place>& centre);
    void endPath();
    Aperture& aperture();

    QString mName;
    qint64 mLine = 1;
    ExcellonFormat mFormat; ///< its numbers are written in the same way
    ExcellonComments mAttributes; ///< and its attributes are the same
    std::unordered_map<int, Aperture> mApertures;
    std::vector<int> mOrder; ///< of the apertures' definition
    std::vector<Contour> mContours;
    int mCurrent = -1;
    Place mAt;
    Segment::Shape mShape = Segment::Shape::Line;
    int mLastOperation = 0;
    bool mQuadrants = false; ///< arcs lie in one, their centres are given without a sign
    bool mInRegion = false;
    bool mEnded = false;
    Path mPath;
};

void GerberDrill::extended(std::string_view text)
{
    if (text.starts_with("FS")) {
        setFormat(text);
    } else if (text.starts_with("MO")) {
        if (text != "MOIN" && text != "MOMM") {
            fail(BoardText::tr("unknown units: ") + shown(text));
        }
        mFormat.setUnits(text == "MOIN" ? Units::Inch : Units::Metric);
    } else if (text.starts_with("ADD")) {
        defineAperture(text.substr(3));
    } else if (text.starts_with("TF.") || text.starts_with("TA.") || text.starts_with("TD")) {
        mAttributes.read("#@! " + QString::fromUtf8(text.data(), qsizetype(text.size())), mFormat);
    } else if (text.starts_with("SR") && text != "SR" && text != "SRX1Y1"
        && !text.starts_with("SRX1Y1I")) {
        fail(BoardText::tr("steps and repeats are not read"));
    } else if (text.starts_with("AB") || movesPlaces(text)) {
        fail(BoardText::tr("%1 is not read: it moves what is drilled").arg(shown(text)));
    } else if (text.starts_with("LPC") || text.starts_with("LM") || text.starts_with("LR")
        || text.starts_with("LS")) {
        if (text != "LMN" && text != "LR0" && text != "LR0.0" && text != "LS1" && text != "LS1.0") {
            fail(BoardText::tr("%1 has no meaning in a drill file").arg(shown(text)));
        }
    }
}

/** "FSLAX46Y46": only absolute numbers with leading zeros left out are left in use. */
void GerberDrill::setFormat(std::string_view text)
{
    const size_t x = std::min(text.find('X'), text.size());
    const std::string_view digits = text.substr(x).substr(0, 3);
    const std::string_view other = text.substr(std::min(x + 3, text.size())).substr(0, 3);
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    if (digits.size() < 3 || !isDigit(digits[1]) || !isDigit(digits[2]) || other.size() < 3
        || other[0] != 'Y' || other.substr(1) != digits.substr(1) || text.find('I') < x) {
        fail(BoardText::tr("unknown format of numbers: ") + shown(text));
    }
    mFormat.setZeros(text.find('T') < x ? ExcellonFormat::Zeros::LeadingKept
                                        : ExcellonFormat::Zeros::TrailingKept);
    mFormat.setDigits(digits[1] - '0', digits[2] - '0');
}

void GerberDrill::defineAperture(std::string_view text)
{
    const size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
    const auto number = toNumber(text.substr(0, digits));
    if (!number || *number < 10 || *number > 1e6 || !mFormat.units()) {
        fail(mFormat.units() ? BoardText::tr("no aperture: ") + shown(text)
                             : BoardText::tr("an aperture before the units"));
    }
    const std::string_view definition = text.substr(digits);
    const double unit = mFormat.units() == Units::Inch ? sizePerInch : sizePerMillimetre;
    const size_t comma = definition.find(',');
    Aperture aperture;
    if (comma == 1 && std::string_view("COR").find(definition[0]) != std::string_view::npos) {
        std::string_view sizes = definition.substr(2);
        const size_t x = std::min(sizes.find('X'), sizes.size());
        const auto width = toNumber(sizes.substr(0, x));
        sizes = sizes.substr(std::min(x + 1, sizes.size()));
        const auto height = toNumber(sizes.substr(0, sizes.find('X')));
        aperture.shape = definition[0];
        aperture.width = width.value_or(0) * unit;
        aperture.height = aperture.shape == 'C' ? aperture.width : height.value_or(0) * unit;
    }
    const int code = int(*number);
    Tool& tool = aperture.tool;
    aperture.facts = mAttributes.attributes();
    tool.number = code;
    if (const auto told = mAttributes.tolerance()) {
        const auto size = [&](double value) {
            return Size(std::round(std::min(value * unit, maxDiameter)));
        };
        const Tolerance tolerance{size(told->second), size(told->first)};
        tool.tolerance = tolerance == Tolerance{} ? std::nullopt : std::optional(tolerance);
    }
    if (mApertures.contains(code)) {
        fail(BoardText::tr("aperture D%1 is defined twice").arg(code));
    }
    mOrder.push_back(code);
    mApertures[code] = std::move(aperture);
}

void GerberDrill::command(std::string_view text)
{
    if (mEnded || text.empty() || text.starts_with("G04") || text.starts_with("G4 ")) {
        if (const size_t mark = text.find("#@!"); mark != text.npos && !mEnded) {
            extended(text.substr(std::min(text.find_first_not_of(' ', mark + 3), text.size())));
        }
        return;
    }
    Place to = mAt;
    std::optional<qint64> i;
    std::optional<qint64> j;
    int operation = 0;
    bool hasPlace = false;
    const auto coordinate = [&](std::string_view digits) {
        const auto value = mFormat.read(digits);
        if (!value || *value != Size(*value)) {
            fail(BoardText::tr("no coordinate: ") + shown(digits));
        }
        return Size(*value);
    };
    while (!text.empty()) {
        const char letter = text[0];
        const size_t end = std::min(text.find_first_not_of("+-0123456789", 1), text.size());
        const std::string_view digits = text.substr(1, end - 1);
        text.remove_prefix(end);
        const int code = int(std::clamp(toNumber(digits).value_or(-1), -1.0, 1e9));
        switch (letter) {
        case 'X':
            to.x = coordinate(digits);
            hasPlace = true;
            break;
        case 'Y':
            to.y = coordinate(digits);
            hasPlace = true;
            break;
        case 'I':
            i = coordinate(digits);
            break;
        case 'J':
            j = coordinate(digits);
            break;
        case 'D':
            if (code >= 10) {
                endPath();
                mCurrent = code;
            } else {
                operation = code;
            }
            break;
        case 'G':
            if (code >= 1 && code <= 3) {
                mShape = code == 1 ? Segment::Shape::Line
                    : code == 2    ? Segment::Shape::Clockwise
                                   : Segment::Shape::CounterClockwise;
            } else if (code == 36 || code == 37) {
                endPath();
                mInRegion = code == 36;
            } else if (code == 70 || code == 71) {
                mFormat.setUnits(code == 70 ? Units::Inch : Units::Metric);
            } else if (code == 74 || code == 75) {
                mQuadrants = code == 74;
            } else if (code == 91) {
                fail(BoardText::tr("incremental places are not read"));
            }
            break; // G54, G90 and the like
        case 'M':
            endPath();
            mEnded = code == 2 || code == 0 || code == 30;
            break;
        case ' ':
        case '\t':
            break;
        default:
            fail(BoardText::tr("no command of a Gerber file: %1").arg(QChar(letter)));
        }
    }
    if (operation == 0 && hasPlace) {
        operation = mLastOperation;
    }
    if (operation != 0) {
        std::optional<Place> centre;
        if (i || j) {
            const qint64 x = mAt.x + i.value_or(0);
            const qint64 y = mAt.y + j.value_or(0);
            if (x != Size(x) || y != Size(y)) {
                fail(BoardText::tr("the centre of an arc lies further than 5 m from the origin"));
            }
            centre = Place{Size(x), Size(y)};
        }
        operate(operation, to, centre);
    }
}

void GerberDrill::operate(int code, const Place& to, const std::optional<Place>& centre)
{
    mLastOperation = code;
    switch (code) {
    case 1:
        draw(to, centre);
        break;
    case 2:
        endPath();
        break;
    case 3:
        endPath();
        flash(to);
        break;
    default:
        fail(BoardText::tr("unknown operation D%1").arg(code, 2, 10, QChar('0')));
    }
    mAt = to;
}

GerberDrill::Aperture& GerberDrill::aperture()
{
    const auto found = mApertures.find(mCurrent);
    if (found == mApertures.end()) {
        fail(BoardText::tr("aperture D%1 is not defined").arg(mCurrent));
    }
    return found->second;
}

void GerberDrill::flash(const Place& at)
{
    Aperture& with = aperture();
    if (with.shape == 'C') {
        with.tool.holes.push_back(at);
        return;
    }
    if (with.shape != 'O') {
        fail(BoardText::tr("aperture D%1 is not round, so what it flashes is no hole")
                 .arg(mCurrent));
    }
    SlotShape oval = ovalSlot(Size(std::lround(with.width)), Size(std::lround(with.height)));
    const Transform move(at, 0, false);
    with.tool.slotPaths.push_back(move.map(oval.middle));
}

void GerberDrill::draw(const Place& to, const std::optional<Place>& centre)
{
    if (!mInRegion && aperture().shape != 'C') {
        fail(BoardText::tr("aperture D%1 is not round, so what it draws is no slot").arg(mCurrent));
    }
    if (mPath.segments.empty()) {
        mPath.start = mAt;
    }
    if (mShape != Segment::Shape::Line && (!centre || mQuadrants)) {
        fail(mQuadrants ? BoardText::tr("arcs of a single quadrant (G74) are not read")
                        : BoardText::tr("an arc without a centre"));
    }
    mPath.segments.push_back({mShape, to, mShape == Segment::Shape::Line ? Place{} : *centre});
}

void GerberDrill::endPath()
{
    if (mPath.segments.empty()) {
        return;
    }
    Path path = std::exchange(mPath, {});
    if (mInRegion) {
        mContours.push_back({HoleType::Plated, std::move(path)});
    } else {
        aperture().tool.slotPaths.push_back(std::move(path));
    }
}

DrillFile GerberDrill::finish()
{
    if (!mEnded) {
        fail(BoardText::tr("the file does not end with M02; it is cut off"));
    }
    DrillFile file;
    const HoleFacts whole = mAttributes.fallback(0, QFileInfo(mName).fileName());
    for (const int code : mOrder) {
        Aperture& aperture = mApertures[code];
        Tool& tool = aperture.tool;
        if (tool.holes.empty() && tool.slotPaths.empty()) {
            continue;
        }
        const HoleFacts facts = aperture.facts.type ? aperture.facts : whole;
        tool.type = facts.type.value_or(HoleType::Plated);
        tool.typeAssumed = !facts.type;
        tool.functionTold = aperture.facts.functionTold || facts.functionTold;
        const double size = std::round(std::min(aperture.width, aperture.height));
        if (size < 1 || size > maxDiameter) {
            fail((size < 1 ? BoardText::tr("aperture D%1: %2 mm is too small for a drill")
                           : BoardText::tr(
                               "aperture D%1: %2 mm is too large for a drill, the most are 500 mm"))
                     .arg(code)
                     .arg(size / sizePerMillimetre));
        }
        tool.finishedSize = Size(size);
        (aperture.facts.backDrill ? file.layer.backDrills : file.layer.tools)
            .push_back(std::move(tool));
    }
    for (Contour& contour : mContours) {
        contour.type = whole.type == HoleType::NonPlated ? HoleType::NonPlated : HoleType::Plated;
    }
    file.layer.contours = std::move(mContours);
    file.layer.span = mAttributes.span();
    file.layer.assumedFormat = mFormat.guess();
    file.units = mFormat.units();
    return file;
}

/** Cuts the bytes into commands, which end with a star; those between percent signs are extended.
 */
class CommandCutter
{
public:
    explicit CommandCutter(GerberDrill& drill)
        : mDrill(drill)
    { }

    void take(std::string_view chunk)
    {
        for (const char c : chunk) {
            if (c == '\n') {
                mDrill.countLine();
            } else if (c == '%') {
                mExtended = !mExtended;
                mText.clear();
            } else if (c == '*') {
                mExtended ? mDrill.extended(mText) : mDrill.command(mText);
                mText.clear();
            } else if (c != '\r' && !(mText.empty() && c == ' ')) {
                mText += c;
                if (mText.size() > maxCommandLength) {
                    mDrill.fail(BoardText::tr("a command that does not end"));
                }
            }
        }
    }

private:
    GerberDrill& mDrill;
    std::string mText;
    bool mExtended = false;
};

} // namespace

DrillFile readGerberDrill(QIODevice& device, const QString& name, const ReadOptions& options)
{
    GerberDrill drill(name);
    CommandCutter cutter(drill);
    ChunkReader chunks(device, name, options);
    for (std::string_view chunk = chunks.next(); !chunk.empty(); chunk = chunks.next()) {
        cutter.take(chunk);
    }
    DrillFile file = drill.finish();
    file.layer.name = QFileInfo(name).completeBaseName();
    return file;
}

} // namespace brox
