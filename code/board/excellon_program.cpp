// SPDX-License-Identifier: MIT
#include "excellon_program.h"

#include <QFileInfo>
#include <QVarLengthArray>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

constexpr size_t maxTools = 1000;
constexpr int maxRepeats = 10000;
/** Holes and slots' segments, so that a few repeats of repeats do not fill the memory. */
constexpr qint64 maxDrilled = 50'000'000;
constexpr double maxDiameter = 500.0 * sizePerMillimetre;
/** What drills nothing: tool changes and stops, messages, clamps, a scale of the whole. */
constexpr int harmlessMiscellaneous[] = {6, 9, 18, 60, 61, 62};

QString shown(std::string_view text)
{
    QString told = QString::fromUtf8(text.data(), qMin<qsizetype>(qsizetype(text.size()), 40));
    for (QChar& letter : told) {
        letter = letter.isPrint() ? letter : QChar('?');
    }
    return '"' + told + '"';
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\f\v\x1a";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

std::string_view takeNumber(std::string_view& line)
{
    const size_t length = std::min(line.find_first_not_of("+-.0123456789"), line.size());
    const std::string_view number = line.substr(0, length);
    line = trimmed(line.substr(length));
    return number;
}

/** Also one with a plus, which std::from_chars refuses. */
std::optional<double> toNumber(std::string_view text)
{
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    double value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value, std::chars_format::fixed);
    const bool ok = error == std::errc() && stop == end && std::isfinite(value);
    return ok ? std::optional(value) : std::nullopt;
}

bool isWord(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
}

} // namespace

/** The commands of one line, without the order that they stand in. */
struct ExcellonProgram::Words
{
    QVarLengthArray<int, 8> preparations; ///< numbers of G
    QVarLengthArray<int, 8> miscellaneous; ///< numbers of M
    std::optional<int> tool;
    std::optional<std::string_view> diameter;
    std::optional<qint64> x; ///< the first place of the line
    std::optional<qint64> y;
    std::optional<qint64> x2; ///< the one behind G84, G85 and G87
    std::optional<qint64> y2;
    std::optional<qint64> i;
    std::optional<qint64> j;
    std::optional<qint64> radius;
    int repeats = 0; ///< 0: no repeat
    int canned = 0; ///< number of the cycle: 84, 85, 87, 32, 33
    bool hasPlace = false; ///< coordinates that mean something yet

    bool has(int code) const
    {
        return std::find(preparations.begin(), preparations.end(), code) != preparations.end();
    }
    bool hasCode(int code) const
    {
        return std::find(miscellaneous.begin(), miscellaneous.end(), code) != miscellaneous.end();
    }
};

ExcellonProgram::ExcellonProgram(
    const QString& name, std::string_view sample, std::optional<Units> units)
    : mName(name)
    , mFormat(sample)
{
    mFormat.setFallbackUnits(units);
}

void ExcellonProgram::fail(qint64 line, const QString& message) const
{
    throw BoardError(mName, line, message);
}

void ExcellonProgram::readLine(std::string_view line)
{
    ++mLine;
    const size_t comment = line.find(';');
    if (comment != line.npos) {
        const std::string_view text = line.substr(comment + 1);
        mComments.read(QString::fromUtf8(text.data(), qsizetype(text.size())), mFormat);
        line = line.substr(0, comment);
    }
    line = trimmed(line);
    if (line.empty() || line[0] == '(') {
        return;
    }
    std::string upper;
    const auto isLower = [](char c) { return c >= 'a' && c <= 'z'; };
    if (std::any_of(line.begin(), line.end(), isLower)) {
        upper = line;
        for (char& c : upper) {
            c = isLower(c) ? char(c - 'a' + 'A') : c;
        }
        line = upper;
    }
    if (line == "%") {
        if (mInHeader) {
            beginBody(); // elsewhere it only stops the tape's rewinding
        }
        return;
    }
    if (mEnded) {
        fail(shown(line) + QStringLiteral(" after the program's end"));
    }
    if (line != "/" && !readKeyword(line)) {
        // A block behind a slash is skipped by operators who ask for it; drilled otherwise.
        readCommands(line[0] == '/' ? trimmed(line.substr(1)) : line);
    }
}

/** Units, and what else sets up the machine and drills nothing, such as "FMAT,2". */
bool ExcellonProgram::readKeyword(std::string_view line)
{
    const size_t comma = std::min(line.find(','), line.size());
    const std::string_view name = trimmed(line.substr(0, comma));
    const std::string_view fields = line.substr(std::min(comma + 1, line.size()));
    if (name == "METRIC" || name == "INCH") {
        setUnits(name == "INCH" ? Units::Inch : Units::Metric);
        readFormatFields(fields);
        return true;
    }
    if ((name == "M71" || name == "M72") && comma < line.size()) {
        setUnits(name == "M72" ? Units::Inch : Units::Metric);
        readFormatFields(fields);
        return true;
    }
    if (name == "ICI") {
        mIncremental = trimmed(fields) == "ON";
        if (!mIncremental && trimmed(fields) != "OFF") {
            fail(QStringLiteral("ICI is neither ON nor OFF"));
        }
        return true;
    }
    const bool isSetup = isWord(name) && name.size() > (comma < line.size() ? 0U : 1U);
    return !mHasPlaces && (isSetup || name == "OM48" || name.starts_with("R,T"));
}

/** "LZ", "TZ", "000.000" in any order. */
void ExcellonProgram::readFormatFields(std::string_view fields)
{
    while (!fields.empty()) {
        const size_t comma = std::min(fields.find(','), fields.size());
        const std::string_view field = trimmed(fields.substr(0, comma));
        fields = fields.substr(std::min(comma + 1, fields.size()));
        const size_t point = field.find('.');
        if (field == "LZ") {
            mFormat.setZeros(ExcellonFormat::Zeros::LeadingKept);
        } else if (field == "TZ") {
            mFormat.setZeros(ExcellonFormat::Zeros::TrailingKept);
        } else if (point != field.npos && field.find_first_not_of("0.") == field.npos
            && field.size() <= 12) {
            mFormat.setDigits(int(point), int(field.size() - point - 1));
        }
    }
}

ExcellonProgram::Words ExcellonProgram::split(std::string_view line)
{
    const std::string_view all = line;
    Words words;
    while (!line.empty()) {
        const char letter = line[0];
        line.remove_prefix(1);
        const std::string_view value = takeNumber(line);
        switch (letter) {
        case 'X':
        case 'Y': {
            const bool second = words.canned == 84 || words.canned == 85 || words.canned == 87;
            auto& axis =
                letter == 'X' ? (second ? words.x2 : words.x) : (second ? words.y2 : words.y);
            // An axis without a number stands for 0 beside one with a number.
            axis = value.empty() ? 0 : coordinate(letter, value);
            words.hasPlace = words.hasPlace || !value.empty();
            break;
        }
        case 'I':
            words.i = coordinate(letter, value);
            break;
        case 'J':
            words.j = coordinate(letter, value);
            break;
        case 'A':
            words.radius = coordinate(letter, value);
            break;
        case 'T':
            words.tool = number(letter, value);
            break;
        case 'C':
            words.diameter = value;
            break;
        case 'R':
            words.repeats = number(letter, value);
            if (words.repeats < 1 || words.repeats > maxRepeats) {
                fail(QStringLiteral("R%1 is no number from 1 to %2")
                         .arg(words.repeats)
                         .arg(maxRepeats));
            }
            break;
        case 'G': {
            const int code = number(letter, value);
            words.preparations.append(code);
            if (code == 84 || code == 85 || code == 87 || code == 32 || code == 33) {
                words.canned = code;
            }
            break;
        }
        case 'M':
            words.miscellaneous.append(number(letter, value));
            if (words.miscellaneous.last() == 45 || words.miscellaneous.last() == 47) {
                words.miscellaneous.removeLast();
                line = {}; // a message to the operator
            }
            break;
        default:
            // Depths, feeds, speeds and line numbers are nothing to us.
            if (std::string_view("BFHNSUZ").find(letter) == std::string_view::npos
                || !(value.empty() || toNumber(value))) {
                fail(QStringLiteral("no command of a drill file: ") + shown(all));
            }
        }
    }
    return words;
}

void ExcellonProgram::readCommands(std::string_view line)
{
    mMayEnd = false;
    Words words = split(line);
    if (words.diameter && !words.tool) {
        fail(QStringLiteral("a diameter without a tool"));
    }
    if (words.diameter) {
        defineTool(*words.tool, *words.diameter);
    }
    if (words.tool && !mInHeader) {
        selectTool(*words.tool);
    }
    const bool hadPlace = words.hasPlace;
    for (int code : words.preparations) {
        preparation(code, words);
    }
    // The tool moves before it goes down or up.
    const bool lifts = words.hasCode(16) || words.hasCode(17);
    const bool lowers = words.hasCode(14) || words.hasCode(15);
    if (words.hasPlace && mMode == Mode::Move && (words.has(0) || lowers)) {
        moveTo(words);
        words.hasPlace = false;
    } else if (words.hasPlace && mMode == Mode::Cut && lifts) {
        cutTo(words);
    }
    for (int code : words.miscellaneous) {
        miscellaneous(code, words);
    }
    if (words.canned != 0) {
        addCannedSlot(words);
    } else if (!words.hasPlace) {
        if (words.repeats > 0 && !hadPlace) {
            fail(QStringLiteral("a repeat without a distance"));
        }
    } else if (mMode == Mode::Move) {
        moveTo(words);
    } else if (mMode == Mode::Cut) {
        cutTo(words);
    } else {
        addHoles(words);
    }
}

void ExcellonProgram::preparation(int code, Words& words)
{
    switch (code) {
    case 0:
        endCut();
        mMode = Mode::Move;
        break;
    case 1:
    case 2:
    case 3:
        mShape = code == 1 ? Segment::Shape::Line
            : code == 2    ? Segment::Shape::Clockwise
                           : Segment::Shape::CounterClockwise;
        beginCut();
        break;
    case 5:
    case 81:
        endCut();
        mMode = Mode::Drill;
        break;
    case 32: // circles that are routed
    case 33:
    case 84: // a circle of many overlapping holes
    case 85:
    case 87:
        break;
    case 4: // a pause; its time is written as a place
        words.hasPlace = false;
        break;
    case 92: // sets the origin, which only moves the whole
    case 93:
        if (mHasPlaces && (words.x.value_or(0) != 0 || words.y.value_or(0) != 0)) {
            fail(QStringLiteral("the origin is set after the first hole"));
        }
        words.hasPlace = false;
        break;
    case 40: // the side of a routed path that the cutter is on
        mCompensated = false;
        break;
    case 41:
    case 42:
        mCompensated = true;
        break;
    case 90:
        mIncremental = false;
        break;
    case 91:
        mIncremental = true;
        break;
    default: // may drill holes that we would miss
        fail(QStringLiteral("unknown command G%1").arg(code, 2, 10, QChar('0')));
    }
}

void ExcellonProgram::miscellaneous(int code, Words& words)
{
    switch (code) {
    case 0:
    case 30:
        if (words.hasPlace) {
            fail(QStringLiteral("coordinates beside the program's end"));
        }
        endCut();
        mEnded = true;
        break;
    case 1:
        if (words.hasPlace) {
            fail(QStringLiteral("coordinates beside the pattern's end"));
        }
        // Without M25 the pattern begins with the program or where the last one ended.
        endPattern();
        break;
    case 2:
        if (words.hasPlace) {
            repeatPattern({words.x.value_or(0), words.y.value_or(0)}, qMax(1, words.repeats));
        } else if (mPattern == Pattern::Repeated) {
            mMayEnd = true; // the end of the repeats, or of the program after all
        } else {
            endCut();
            mEnded = true;
        }
        words.hasPlace = false;
        break;
    case 25:
        if (mPattern == Pattern::Open) {
            fail(QStringLiteral("a pattern within a pattern"));
        }
        beginPattern();
        mPattern = Pattern::Open;
        break;
    case 8:
        if (mPattern == Pattern::Open) {
            fail(QStringLiteral("the pattern is not ended by M01"));
        }
        beginPattern();
        mPattern = Pattern::None;
        break;
    case 14: // tool down, with or without depth
    case 15:
        mShape = Segment::Shape::Line;
        beginCut();
        break;
    case 16: // tool up
    case 17:
        endCut();
        mMode = Mode::Up;
        words.hasPlace = false;
        break;
    case 48:
        mInHeader = true;
        break;
    case 95:
        beginBody();
        break;
    case 70:
    case 80:
    case 90:
        fail(QStringLiteral("a pattern that is turned or mirrored (M%1) is not read").arg(code));
    case 71:
        setUnits(Units::Metric);
        break;
    case 72:
        setUnits(Units::Inch);
        break;
    default:
        if (std::find(std::begin(harmlessMiscellaneous), std::end(harmlessMiscellaneous), code)
            == std::end(harmlessMiscellaneous)) {
            fail(QStringLiteral("unknown command M%1").arg(code, 2, 10, QChar('0')));
        }
    }
}

void ExcellonProgram::beginBody()
{
    mInHeader = false;
    mInBody = true;
    mComments.endHeader();
}

int ExcellonProgram::number(char letter, std::string_view digits) const
{
    int value = -1;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value);
    if (error != std::errc() || stop != end || value < 0) {
        fail(QStringLiteral("%1 with no whole number: %2").arg(QChar(letter)).arg(shown(digits)));
    }
    return value;
}

qint64 ExcellonProgram::coordinate(char letter, std::string_view digits)
{
    const auto value = mFormat.read(digits);
    if (!value) {
        fail(QStringLiteral("%1%2 is no coordinate").arg(QChar(letter)).arg(shown(digits)));
    }
    // Far beyond every place, but sums of it still fit.
    constexpr qint64 far = qint64(1) << 40;
    return std::clamp(*value, -far, far);
}

/** Where a place of the program lies. */
ExcellonProgram::Point ExcellonProgram::target(
    const std::optional<qint64>& x, const std::optional<qint64>& y) const
{
    if (mIncremental) {
        return {mAt.x + x.value_or(0), mAt.y + y.value_or(0)};
    }
    return {x.value_or(mAt.x), y.value_or(mAt.y)};
}

Place ExcellonProgram::place(const Point& point) const
{
    if (point.x != Size(point.x) || point.y != Size(point.y)) {
        fail(QStringLiteral("a place further than 5 m from the origin"));
    }
    return {Size(point.x), Size(point.y)};
}

void ExcellonProgram::setUnits(Units units)
{
    mUnits = units;
    mFormat.setUnits(units);
    for (DrillTool& tool : mTools) {
        tool.units = tool.units ? tool.units : units;
    }
}

void ExcellonProgram::defineTool(int number, std::string_view diameter)
{
    const QString told = QStringLiteral("diameter %1 ").arg(shown(diameter));
    const auto value = toNumber(diameter);
    if (!value) {
        fail(told + QStringLiteral("is no number"));
    }
    if (*value <= 0) {
        fail(told + QStringLiteral("is not above 0"));
    }
    // More digits would leave open where the point is thought to be.
    if (diameter.size() > 1 && diameter.find('.') == diameter.npos) {
        fail(told + QStringLiteral("has no decimal point"));
    }
    DrillTool tool{number, mLine, *value, std::string(diameter), mComments.attributes(),
        mComments.tolerance(), mUnits};
    if (!tool.facts.type) {
        tool.facts.type = mComments.definedType();
    }
    if (tool.units) {
        sizeOf(tool); // what is wrong with it is told where it stands
    }
    const auto known = mToolOfNumber.find(number);
    if (known != mToolOfNumber.end()) {
        DrillTool& old = mTools[known->second];
        if (old.diameter == tool.diameter && old.units == tool.units) {
            if (mInHeader && tool.facts.type && old.facts.type != tool.facts.type) {
                old.facts.type.reset(); // told to be both
            }
            return;
        }
        const bool isUsed = std::any_of(mUses.begin(), mUses.end(), [&](const Use& use) {
            return use.tool == known->second && (!use.holes.empty() || !use.slotPaths.empty());
        });
        if (!isUsed) {
            old = tool;
            return;
        }
    }
    if (mTools.size() == maxTools) {
        fail(QStringLiteral("more than %1 tools").arg(maxTools));
    }
    mToolOfNumber[number] = mTools.size();
    mTools.push_back(std::move(tool));
}

void ExcellonProgram::selectTool(int number)
{
    endCut();
    if (!mInBody) {
        beginBody();
    }
    mUse.reset();
    auto known = mToolOfNumber.find(number);
    // "T0103" is tool 1 with the values of register 3.
    if (known == mToolOfNumber.end() && number > 100) {
        known = mToolOfNumber.find(number / 100);
    }
    if (known == mToolOfNumber.end() && number == 0) {
        return; // the tool goes back
    }
    if (known == mToolOfNumber.end()) {
        // A remark may tell its size; routers of some programs are told by no one.
        mTools.push_back({number, mLine, 0, {}, mComments.attributes(), {}, {}});
        known = mToolOfNumber.emplace(number, mTools.size() - 1).first;
    }
    const size_t tool = known->second;
    const std::optional<HoleType> type = mComments.selectedType();
    const auto same = std::find_if(mUses.begin(), mUses.end(),
        [&](const Use& use) { return use.tool == tool && use.type == type; });
    mUse = size_t(same - mUses.begin());
    if (same == mUses.end()) {
        mUses.push_back({tool, type, {}, {}, {}, {}, {}});
    }
}

/** The selected tool, to make something with. */
ExcellonProgram::Use& ExcellonProgram::use(const char* what)
{
    if (mInHeader) {
        fail(QStringLiteral("%1 in the header").arg(QLatin1String(what)));
    }
    if (!mUse) {
        fail(QStringLiteral("%1 before a tool is selected").arg(QLatin1String(what)));
    }
    mHasPlaces = true;
    return mUses[*mUse];
}

void ExcellonProgram::count(qint64 more)
{
    mDrilled += more;
    if (mDrilled > maxDrilled) {
        fail(QStringLiteral("too many holes and slots, the most are %1").arg(maxDrilled));
    }
}

void ExcellonProgram::addHoles(const Words& words)
{
    if (mMode == Mode::Up) {
        fail(QStringLiteral("neither a hole (G05) nor a routed path"));
    }
    Use& to = use("a hole");
    const DrillTool& tool = mTools[to.tool];
    if (tool.diameter == 0 && !mComments.remark(tool.number)) {
        fail(QStringLiteral("tool T%1 has no diameter").arg(tool.number));
    }
    count(qMax(1, words.repeats));
    if (words.repeats == 0) {
        mAt = target(words.x, words.y);
        to.holes.push_back(place(mAt));
        mAfterHole = true;
        return;
    }
    if (!mAfterHole) {
        fail(QStringLiteral("a repeat that follows no hole"));
    }
    for (int i = 0; i < words.repeats; ++i) {
        mAt = {mAt.x + words.x.value_or(0), mAt.y + words.y.value_or(0)};
        to.holes.push_back(place(mAt));
    }
}

void ExcellonProgram::moveTo(const Words& words)
{
    mHasPlaces = true;
    mAfterHole = false;
    mAt = target(words.x, words.y);
    place(mAt);
}

/** The tool goes down; however many lines and arcs follow, it is one slot. */
void ExcellonProgram::beginCut()
{
    mMode = Mode::Cut;
    if (!mCutting) {
        use("a slot");
        count(1);
        mCutting = true;
        mAfterHole = false;
        mCutCompensated = mCompensated;
        mCut = {place(mAt), {}};
    }
}

void ExcellonProgram::endCut()
{
    if (!mCutting) {
        return;
    }
    mCutting = false;
    mMode = Mode::Up;
    Use& to = mUses[*mUse];
    // Beside the path the cutter makes an outline whose width is not the tool's.
    (mCutCompensated ? to.contours : to.slotPaths).push_back(std::exchange(mCut, {}));
}

void ExcellonProgram::cutTo(const Words& words)
{
    if (words.repeats > 0) {
        fail(QStringLiteral("a repeat within a routed path"));
    }
    const Point to = target(words.x, words.y);
    count(1);
    mCut.segments.push_back(segmentTo(to, words));
    mAt = to;
}

Segment ExcellonProgram::segmentTo(const Point& to, const Words& words) const
{
    if (mShape == Segment::Shape::Line) {
        return {mShape, place(to), {}};
    }
    return {mShape, place(to), arcCentre(to, words)};
}

/** From I and J, which lead from the beginning to it, or from a radius. */
Place ExcellonProgram::arcCentre(const Point& to, const Words& words) const
{
    if (words.i || words.j) {
        return place({mAt.x + words.i.value_or(0), mAt.y + words.j.value_or(0)});
    }
    if (!words.radius || *words.radius == 0) {
        fail(QStringLiteral("an arc without a centre or radius"));
    }
    const double radius = std::abs(double(*words.radius));
    const double dx = double(to.x - mAt.x);
    const double dy = double(to.y - mAt.y);
    const double chord = std::hypot(dx, dy);
    // The last digit of a half circle's radius may be rounded down.
    if (chord == 0 || chord / 2 > radius * 1.01 + sizePerMicron) {
        fail(QStringLiteral("no arc of this radius reaches from here to there"));
    }
    const double height = std::sqrt(std::max(0.0, radius * radius - chord * chord / 4));
    // A radius leads to the arc of at most 180 degrees: the centre of a clockwise one lies to the
    // right of the chord.
    const double side = mShape == Segment::Shape::Clockwise ? 1 : -1;
    const double x = double(mAt.x) + dx / 2 + side * dy / chord * height;
    const double y = double(mAt.y) + dy / 2 - side * dx / chord * height;
    return place({std::llround(x), std::llround(y)});
}

void ExcellonProgram::addCannedSlot(const Words& words)
{
    endCut();
    if (words.repeats > 0) {
        fail(QStringLiteral("a repeat of a slot"));
    }
    count(1);
    mAfterHole = false;
    const Point first = target(words.x, words.y);
    if (words.canned == 32 || words.canned == 33) {
        addCircle(first, words.radius.value_or(0), use("a circle").slotPaths);
        return;
    }
    if (words.canned == 84) {
        // The circle's diameter stands where a second place would.
        addCircle(first, std::abs(words.x2.value_or(0)) / 2, use("a circle").contours);
        return;
    }
    if (!words.x2 && !words.y2) {
        fail(QStringLiteral("a slot without an end"));
    }
    Use& to = use("a slot");
    mAt = first;
    const Place start = place(mAt);
    mAt = target(words.x2, words.y2);
    to.slotPaths.push_back({start, {{Segment::Shape::Line, place(mAt), {}}}});
}

void ExcellonProgram::addCircle(const Point& centre, qint64 radius, std::vector<Path>& to)
{
    if (radius <= 0) {
        fail(QStringLiteral("a routed circle without a size"));
    }
    mAt = centre;
    const Place start = place({centre.x + radius, centre.y});
    to.push_back({start, {{Segment::Shape::Clockwise, start, place(centre)}}});
}

void ExcellonProgram::beginPattern()
{
    endCut();
    for (Use& use : mUses) {
        use.patternBegin = use.end();
    }
    mPatternAt = {};
}

void ExcellonProgram::endPattern()
{
    endCut();
    for (Use& use : mUses) {
        use.patternEnd = use.end();
    }
    mPattern = Pattern::Repeated;
    mPatternAt = {};
    mAfterHole = false;
}

/** Each repeat is moved against the last. */
void ExcellonProgram::repeatPattern(const Point& by, int times)
{
    if (mPattern != Pattern::Repeated) {
        fail(QStringLiteral("no pattern to repeat"));
    }
    for (const Use& use : mUses) {
        count(times * qint64(use.patternEnd.holes - use.patternBegin.holes));
    }
    for (int i = 0; i < times; ++i) {
        mPatternAt = {mPatternAt.x + by.x, mPatternAt.y + by.y};
        for (Use& use : mUses) {
            const auto& [holes, slotPaths, contours] = use.patternBegin;
            for (size_t hole = holes; hole < use.patternEnd.holes; ++hole) {
                use.holes.push_back(moved(use.holes[hole]));
            }
            for (size_t slot = slotPaths; slot < use.patternEnd.slotPaths; ++slot) {
                use.slotPaths.push_back(moved(use.slotPaths[slot]));
            }
            for (size_t contour = contours; contour < use.patternEnd.contours; ++contour) {
                use.contours.push_back(moved(use.contours[contour]));
            }
        }
    }
}

Place ExcellonProgram::moved(const Place& from) const
{
    return place({from.x + mPatternAt.x, from.y + mPatternAt.y});
}

Path ExcellonProgram::moved(const Path& from)
{
    count(1 + qint64(from.segments.size()));
    Path path{moved(from.start), from.segments};
    for (Segment& segment : path.segments) {
        segment.to = moved(segment.to);
        if (segment.shape != Segment::Shape::Line) {
            segment.centre = moved(segment.centre);
        }
    }
    return path;
}

/** The finished size; 0 if no one tells it. */
Size ExcellonProgram::sizeOf(const DrillTool& tool) const
{
    if (tool.diameter == 0) {
        const ToolRemark* remark = mComments.remark(tool.number);
        return remark && remark->size <= maxDiameter ? remark->size : 0;
    }
    const auto units = tool.units ? tool.units : mFormat.units();
    if (!units) {
        fail(tool.line,
            QStringLiteral("nothing tells whether T%1 is in millimetres or inches; "
                           "--file-units inch or metric does")
                .arg(tool.number));
    }
    const bool inch = units == Units::Inch;
    const double size = std::round(tool.diameter * (inch ? sizePerInch : sizePerMillimetre));
    if (size < 1 || size > maxDiameter) {
        fail(tool.line,
            QStringLiteral("tool T%1: %2 %3 is too %4")
                .arg(tool.number)
                .arg(QString::fromStdString(tool.text), inch ? "inch" : "mm",
                    size < 1 ? QStringLiteral("small")
                             : QStringLiteral("large, the most are 500 mm")));
    }
    return Size(size);
}

std::optional<Tolerance> ExcellonProgram::toleranceOf(const DrillTool& tool) const
{
    if (tool.tolerance) {
        const auto units = tool.units ? tool.units : mFormat.units();
        const double unit = units == Units::Inch ? sizePerInch : sizePerMillimetre;
        const auto size = [&](double number) {
            return Size(std::round(std::min(number * unit, maxDiameter)));
        };
        const Tolerance told{size(tool.tolerance->second), size(tool.tolerance->first)};
        return told == Tolerance{} ? std::nullopt : std::optional(told);
    }
    const ToolRemark* remark = mComments.remark(tool.number);
    return remark ? remark->tolerance : std::nullopt;
}

/** From the nearest to the farthest that tells the plating. */
HoleFacts ExcellonProgram::factsOf(const Use& use) const
{
    const DrillTool& tool = mTools[use.tool];
    if (use.type) {
        return {use.type, false, tool.facts.backDrill};
    }
    HoleFacts facts = tool.facts;
    if (facts.type) {
        return facts;
    }
    const ToolRemark* remark = mComments.remark(tool.number);
    const HoleFacts other = remark && remark->facts.type
        ? remark->facts
        : mComments.fallback(tool.number, QFileInfo(mName).fileName());
    facts.type = other.type;
    facts.functionTold = facts.functionTold || other.functionTold;
    return facts;
}

void ExcellonProgram::addTo(Layer& layer, Use& use, QStringList& notes) const
{
    const DrillTool& drill = mTools[use.tool];
    const HoleFacts facts = factsOf(use);
    for (Path& contour : use.contours) {
        const bool unplated = facts.type == HoleType::NonPlated;
        layer.contours.push_back(
            {unplated ? HoleType::NonPlated : HoleType::Plated, std::move(contour)});
    }
    if (use.holes.empty() && use.slotPaths.empty()) {
        return;
    }
    if (!use.holes.empty() && sizeOf(drill) == 0) {
        fail(drill.line, QStringLiteral("tool T%1 has no diameter").arg(drill.number));
    }
    Tool tool;
    tool.number = drill.number;
    // Without any hint a hole counts as plated: most are. It is a guess, and told to be one.
    tool.type = facts.type.value_or(HoleType::Plated);
    tool.typeAssumed = !facts.type;
    tool.functionTold = facts.functionTold;
    tool.finishedSize = sizeOf(drill);
    tool.tolerance = toleranceOf(drill);
    tool.holes = std::move(use.holes);
    tool.slotPaths = std::move(use.slotPaths);
    if (tool.finishedSize == 0) {
        notes << QStringLiteral("the file does not tell the width of the slots of T%1")
                     .arg(drill.number);
    }
    (facts.backDrill ? layer.backDrills : layer.tools).push_back(std::move(tool));
}

void ExcellonProgram::compareQuantities(QStringList& notes) const
{
    for (size_t i = 0; i < mTools.size(); ++i) {
        const ToolRemark* remark = mComments.remark(mTools[i].number);
        if (!remark || remark->quantity < 0) {
            continue;
        }
        qint64 hits = 0;
        for (const Use& use : mUses) {
            hits += use.tool == i ? qint64(use.holes.size() + use.slotPaths.size()) : 0;
        }
        if (hits != remark->quantity) {
            notes << QStringLiteral("T%1 drills %2 holes where a comment tells %3")
                         .arg(mTools[i].number)
                         .arg(hits)
                         .arg(remark->quantity);
        }
    }
}

DrillFile ExcellonProgram::finish()
{
    if (mInHeader) {
        fail(QStringLiteral("the header does not end; the file is cut off"));
    }
    if (!mEnded && !mMayEnd) {
        fail(QStringLiteral("the program does not end; the file is cut off"));
    }
    DrillFile file;
    compareQuantities(file.notes);
    // In the order of their definition, which is how programs list them.
    std::stable_sort(
        mUses.begin(), mUses.end(), [](const Use& a, const Use& b) { return a.tool < b.tool; });
    for (Use& use : mUses) {
        addTo(file.layer, use, file.notes);
    }
    file.layer.span = mComments.span();
    file.layer.assumedFormat = mFormat.guess();
    file.units = mFormat.units();
    return file;
}
