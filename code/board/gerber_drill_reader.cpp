// SPDX-License-Identifier: MIT
#include "gerber_drill_reader.h"

#include "drill_canvas.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <span>

namespace brox {

namespace {

constexpr size_t maxCommandLength = 1 << 20;

/** The words of a command, without the order that they stand in. */
struct GerberWords
{
    std::vector<int> preparations; ///< numbers of G
    std::optional<int> end; ///< number of M
    std::optional<int> code; ///< number of D: an operation, an aperture from 10 on
    std::optional<double> x;
    std::optional<double> y;
    std::optional<double> i;
    std::optional<double> j;
};

/** Runs the commands of a file, one after the other. */
class GerberDrill
{
public:
    GerberDrill(const QString& name, const DrillOptions& options)
        : mAt{name, 1}
        , mCanvas(mAt, options.drilled)
    {
        mNumbers.tell(options.fileFormat, Origin::User);
        if (options.chosen) {
            mNumbers.choose(*options.chosen, options.chosenBy);
        }
    }

    void countLine() { ++mAt.line; }
    void command(std::string_view text);
    void comment(std::string_view text);
    void extended(std::string_view text);
    DrillFile finish();
    [[noreturn]] void fail(const QString& message) const { mAt.fail(message); }

private:
    struct Aperture
    {
        char shape = 0; ///< C, O, R; 0 for a macro and others
        double width = 0; ///< in host size units
        double height = 0;
        size_t tool = 0; ///< in the canvas
    };
    struct Extended
    {
        std::string_view name;
        void (GerberDrill::*run)(std::string_view text);
    };

    GerberWords split(std::string_view text);
    void prepare(int code);
    void operate(int code, const QPointF& to, const std::optional<QPointF>& centre);
    void flash(const QPointF& at);
    void draw(const QPointF& to, const std::optional<QPointF>& centre);
    void endPath();
    const Aperture& aperture() const;

    void setFormat(std::string_view text);
    void setUnits(std::string_view text);
    void defineAperture(std::string_view text);
    void readAttribute(std::string_view text);
    void passOver(std::string_view) { }
    void refuse(std::string_view text);

    static const Extended extendedCommands[];

    FileLine mAt;
    NumberReader mNumbers;
    HoleAttributes mAttributes;
    DrillCanvas mCanvas;
    std::unordered_map<int, Aperture> mApertures; ///< by number
    int mCurrent = 0; ///< number of the selected one
    QPointF mHere;
    Segment::Shape mShape = Segment::Shape::Line;
    int mLastOperation = 0;
    bool mQuadrants = false; ///< arcs lie in one, their centres are given without a sign
    bool mInRegion = false;
    bool mEnded = false;
};

const GerberDrill::Extended GerberDrill::extendedCommands[] = {
    {"FS", &GerberDrill::setFormat},
    {"MO", &GerberDrill::setUnits},
    {"ADD", &GerberDrill::defineAperture},
    {"TF", &GerberDrill::readAttribute},
    {"TA", &GerberDrill::readAttribute},
    {"TD", &GerberDrill::readAttribute},
    {"TO", &GerberDrill::passOver},
    {"AM", &GerberDrill::passOver}, // what a macro flashes is refused
    {"IN", &GerberDrill::passOver}, // names
    {"LN", &GerberDrill::passOver},
    {"SR", &GerberDrill::refuse}, // copies, and what moves, turns, scales or inverts
    {"AB", &GerberDrill::refuse},
    {"MI", &GerberDrill::refuse},
    {"SF", &GerberDrill::refuse},
    {"OF", &GerberDrill::refuse},
    {"IR", &GerberDrill::refuse},
    {"AS", &GerberDrill::refuse},
    {"LP", &GerberDrill::refuse},
    {"LM", &GerberDrill::refuse},
    {"LR", &GerberDrill::refuse},
    {"LS", &GerberDrill::refuse},
    {"IP", &GerberDrill::refuse},
};

void GerberDrill::extended(std::string_view text)
{
    const auto known = std::find_if(std::begin(extendedCommands), std::end(extendedCommands),
        [&](const Extended& command) { return text.starts_with(command.name); });
    if (known == std::end(extendedCommands)) {
        fail(BoardText::tr("unknown command ") + shown(text));
    }
    if (!mEnded) {
        (this->*known->run)(text);
    }
}

/** Attributes may stand in comments. */
void GerberDrill::comment(std::string_view text)
{
    const size_t mark = text.find("#@!");
    if (mark != text.npos && !mEnded) {
        readAttribute(text.substr(std::min(text.find_first_not_of(' ', mark + 3), text.size())));
    }
}

void GerberDrill::readAttribute(std::string_view text)
{
    mAttributes.read(QString::fromUtf8(text.data(), qsizetype(text.size())));
}

void GerberDrill::setUnits(std::string_view text)
{
    if (text != "MOIN" && text != "MOMM") {
        fail(BoardText::tr("unknown units: ") + shown(text));
    }
    mNumbers.tell({text == "MOIN" ? Units::Inch : Units::Metric, {}, {}}, Origin::File);
}

/** Unless it stands for what is so without it. */
void GerberDrill::refuse(std::string_view text)
{
    constexpr std::string_view harmless[] = {"SR", "SRX1Y1", "SRX1Y1I0J0", "SRX1Y1I0.0J0.0",
        "MIA0B0", "SFA1B1", "SFA1.0B1.0", "OFA0B0", "OFA0.0B0.0", "IR0", "ASAXBY", "LPD", "LMN",
        "LR0", "LR0.0", "LS1", "LS1.0", "IPPOS"};
    if (std::ranges::find(harmless, text) == std::end(harmless)) {
        fail(BoardText::tr("%1 changes what is drilled, and is not read").arg(shown(text)));
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
    mNumbers.tell({{}, Digits{digits[1] - '0', digits[2] - '0'},
                      text.find('T') < x ? Zeros::Leading : Zeros::Trailing},
        Origin::File);
}

void GerberDrill::defineAperture(std::string_view text)
{
    int code = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data() + 3, end, code);
    if (error != std::errc() || code < 10 || code > 1'000'000) {
        fail(BoardText::tr("no aperture: ") + shown(text));
    }
    if (!mNumbers.units()) {
        fail(BoardText::tr("an aperture before the units"));
    }
    const std::string_view definition(stop, size_t(end - stop));
    const double unit = sizeOf(*mNumbers.units());
    Aperture aperture;
    if (definition.size() > 1 && definition[1] == ','
        && std::string_view("COR").find(definition[0]) != std::string_view::npos) {
        std::string_view sizes = definition.substr(2);
        const size_t x = std::min(sizes.find('X'), sizes.size());
        aperture.shape = definition[0];
        aperture.width = toNumber(sizes.substr(0, x)).value_or(0) * unit;
        sizes = sizes.substr(std::min(x + 1, sizes.size()));
        aperture.height = aperture.shape == 'C'
            ? aperture.width
            : toNumber(sizes.substr(0, sizes.find('X'))).value_or(0) * unit;
    }
    aperture.tool = mCanvas.addTool({QStringLiteral("D%1").arg(code), code, mAt.line,
        std::min(aperture.width, aperture.height) / unit, mNumbers.units(), mAttributes.tolerance(),
        mAttributes.ofTool()});
    if (!mApertures.emplace(code, aperture).second) {
        fail(BoardText::tr("aperture D%1 is defined twice").arg(code));
    }
}

GerberWords GerberDrill::split(std::string_view text)
{
    GerberWords words;
    const std::string_view all = text;
    const auto once = [&](auto& word, auto value) {
        if (word) {
            fail(BoardText::tr("a word stands twice: ") + shown(all));
        }
        word = value;
    };
    while (!text.empty()) {
        const char letter = text[0];
        const size_t end = std::min(text.find_first_not_of("+-0123456789", 1), text.size());
        const std::string_view digits = text.substr(1, end - 1);
        text.remove_prefix(end);
        int code = -1;
        std::from_chars(digits.data(), digits.data() + digits.size(), code);
        switch (letter) {
        case 'X':
        case 'Y':
        case 'I':
        case 'J': {
            const auto value = mNumbers.read(digits);
            if (!value) {
                fail(BoardText::tr("no coordinate: ") + shown(digits));
            }
            once(letter == 'X'      ? words.x
                    : letter == 'Y' ? words.y
                    : letter == 'I' ? words.i
                                    : words.j,
                *value);
            break;
        }
        case 'D':
            once(words.code, code);
            break;
        case 'G':
            words.preparations.push_back(code);
            break;
        case 'M':
            once(words.end, code);
            break;
        case ' ':
        case '\t':
            break;
        default:
            fail(BoardText::tr("no command of a Gerber file: %1").arg(QChar(letter)));
        }
    }
    return words;
}

void GerberDrill::command(std::string_view text)
{
    if (mEnded || text.empty()) {
        return;
    }
    const GerberWords words = split(text);
    for (const int code : words.preparations) {
        prepare(code);
    }
    if (words.code.value_or(0) >= 10) {
        endPath();
        mCurrent = *words.code;
    } else if (words.code || words.x || words.y) {
        const QPointF to(words.x.value_or(mHere.x()), words.y.value_or(mHere.y()));
        std::optional<QPointF> centre;
        if (words.i || words.j) {
            centre = mHere + QPointF(words.i.value_or(0), words.j.value_or(0));
        }
        operate(words.code.value_or(mLastOperation), to, centre);
    }
    if (words.end) {
        endPath();
        mEnded = *words.end == 2 || *words.end == 0 || *words.end == 30;
    }
}

void GerberDrill::prepare(int code)
{
    switch (code) {
    case 1:
    case 2:
    case 3:
        mShape = code == 1 ? Segment::Shape::Line
            : code == 2    ? Segment::Shape::Clockwise
                           : Segment::Shape::CounterClockwise;
        break;
    case 36:
    case 37:
        endPath();
        mInRegion = code == 36;
        break;
    case 70:
    case 71:
        mNumbers.tell({code == 70 ? Units::Inch : Units::Metric, {}, {}}, Origin::File);
        break;
    case 74:
    case 75:
        mQuadrants = code == 74;
        break;
    case 0:
    case 54: // old marks of what follows
    case 55:
    case 90:
        break;
    case 91:
        fail(BoardText::tr("incremental places are not read"));
    default:
        fail(
            BoardText::tr("unknown command ") + QStringLiteral("G%1").arg(code, 2, 10, QChar('0')));
    }
}

void GerberDrill::operate(int code, const QPointF& to, const std::optional<QPointF>& centre)
{
    mLastOperation = code;
    switch (code) {
    case 1:
        draw(to, centre);
        break;
    case 2:
        endPath();
        mCanvas.rounded(to);
        break;
    case 3:
        endPath();
        flash(to);
        break;
    default:
        fail(BoardText::tr("unknown operation D%1").arg(code, 2, 10, QChar('0')));
    }
    mHere = to;
}

const GerberDrill::Aperture& GerberDrill::aperture() const
{
    const auto found = mApertures.find(mCurrent);
    if (found == mApertures.end()) {
        fail(BoardText::tr("aperture D%1 is not defined").arg(mCurrent));
    }
    return found->second;
}

void GerberDrill::flash(const QPointF& at)
{
    const Aperture& with = aperture();
    mCanvas.select(with.tool);
    if (with.shape == 'C') {
        mCanvas.drill(at);
        return;
    }
    if (with.shape != 'O') {
        fail(BoardText::tr("aperture D%1 is not round, so what it flashes is no hole")
                 .arg(mCurrent));
    }
    const double half = std::abs(with.width - with.height) / 2;
    const QPointF end = with.width >= with.height ? QPointF(half, 0) : QPointF(0, half);
    mCanvas.beginPath(at - end);
    if (half > 0) {
        mCanvas.lineTo(at + end);
    }
    mCanvas.endAsSlot();
}

void GerberDrill::draw(const QPointF& to, const std::optional<QPointF>& centre)
{
    if (!mInRegion) {
        const Aperture& with = aperture();
        if (with.shape != 'C') {
            fail(BoardText::tr("aperture D%1 is not round, so what it draws is no slot")
                     .arg(mCurrent));
        }
        mCanvas.select(with.tool);
    }
    if (!mCanvas.hasPath()) {
        mCanvas.beginPath(mHere);
    }
    if (mShape == Segment::Shape::Line) {
        mCanvas.lineTo(to);
        return;
    }
    if (!centre || mQuadrants) {
        fail(mQuadrants ? BoardText::tr("arcs of a single quadrant (G74) are not read")
                        : BoardText::tr("an arc without a centre"));
    }
    mCanvas.arcTo(mShape, to, *centre);
}

void GerberDrill::endPath()
{
    if (mCanvas.hasPath()) {
        mInRegion ? mCanvas.endAsRegion() : mCanvas.endAsSlot();
    }
}

DrillFile GerberDrill::finish()
{
    if (!mEnded) {
        fail(BoardText::tr("the file does not end with M02; it is cut off"));
    }
    Notes notes;
    return mCanvas.finish(mAttributes, mNumbers, 0, notes);
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
            } else if (c == '%' && !isComment()) {
                mExtended = !mExtended;
                mInMacro = false;
                mText.clear();
            } else if (c == '*') {
                endCommand();
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
    bool isComment() const
    {
        return !mExtended && (mText.starts_with("G04") || mText.starts_with("G4 "));
    }

    void endCommand()
    {
        if (isComment()) {
            mDrill.comment(mText);
        } else if (!mExtended) {
            mDrill.command(mText);
        } else if (!mInMacro) { // whose parts end with stars, too
            mInMacro = mText.starts_with("AM");
            mDrill.extended(mText);
        }
    }

    GerberDrill& mDrill;
    std::string mText;
    bool mExtended = false;
    bool mInMacro = false;
};

} // namespace

DrillFile readGerberDrill(QIODevice& device, const QString& name, const DrillOptions& options)
{
    GerberDrill drill(name, options);
    CommandCutter cutter(drill);
    ChunkReader chunks(device, name, options);
    for (std::string_view chunk = chunks.next(); !chunk.empty(); chunk = chunks.next()) {
        cutter.take(chunk);
    }
    return drill.finish();
}

} // namespace brox
