// SPDX-License-Identifier: MIT
#include "excellon_program.h"

#include "board_text.h"
#include "excellon_words.h"

#include <algorithm>
#include <charconv>

namespace brox {

namespace {

constexpr int maxRepeats = 10000;
/** What drills nothing: messages, clamps, a scale of the whole. */
constexpr int harmlessMiscellaneous[] = {18, 60, 61, 62};

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\f\v\x1a";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

std::string_view takeNumber(std::string_view& line)
{
    line = trimmed(line);
    const auto isPart = [](char c) {
        return (c >= '0' && c <= '9') || (c >= '+' && c <= '.' && c != ',');
    };
    const auto end = std::find_if_not(line.begin(), line.end(), isPart);
    const size_t length = size_t(end - line.begin());
    const std::string_view number = line.substr(0, length);
    line = trimmed(line.substr(length));
    return number;
}

bool isWord(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
}

} // namespace

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
    line = trimmed(line.substr(0, line.find('(')));
    if (line.empty()) {
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
        fail(BoardText::tr("%1 after the program's end").arg(shown(line)));
    }
    if (mStopLine != 0) {
        mNotes << BoardText::tr("M00 in line %1 is taken for a stop: the program goes on behind it")
                      .arg(mStopLine);
        mStopLine = 0;
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
            fail(BoardText::tr("ICI is neither ON nor OFF"));
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
            words.repeatIsLast = words.hasPlace;
            words.repeats = number(letter, value);
            if (words.repeats < 1 || words.repeats > maxRepeats) {
                fail(BoardText::tr("R%1 is no number from 1 to %2")
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
                fail(BoardText::tr("no command of a drill file: ") + shown(all));
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
        fail(BoardText::tr("a diameter without a tool"));
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
            fail(BoardText::tr("a repeat without a distance"));
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
        if (words.x.value_or(0) != 0 || words.y.value_or(0) != 0) {
            if (mHasPlaces) {
                fail(BoardText::tr("the origin is set after the first hole"));
            }
            // Other files of the board may have another one.
            mNotes << BoardText::tr("places are told from an origin of their own, set in line %1")
                          .arg(mLine);
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
        fail(BoardText::tr("unknown command G%1").arg(code, 2, 10, QChar('0')));
    }
}

void ExcellonProgram::miscellaneous(int code, Words& words)
{
    switch (code) {
    case 0:
    case 30:
        if (words.hasPlace) {
            fail(BoardText::tr("coordinates beside the program's end"));
        }
        endCut();
        mEnded = code == 30;
        mStopLine = code == 0 ? mLine : 0; // the end, unless more follows
        break;
    case 6:
    case 9:
        if (words.hasPlace) {
            fail(BoardText::tr("coordinates beside a stop (M%1)").arg(code, 2, 10, QChar('0')));
        }
        break;
    case 1:
        if (words.hasPlace) {
            fail(BoardText::tr("coordinates beside the pattern's end"));
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
            fail(BoardText::tr("a pattern within a pattern"));
        }
        beginPattern();
        mPattern = Pattern::Open;
        break;
    case 8:
        if (mPattern == Pattern::Open) {
            fail(BoardText::tr("the pattern is not ended by M01"));
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
        fail(BoardText::tr("a pattern that is turned or mirrored (M%1) is not read").arg(code));
    case 71:
        setUnits(Units::Metric);
        break;
    case 72:
        setUnits(Units::Inch);
        break;
    default:
        if (std::find(std::begin(harmlessMiscellaneous), std::end(harmlessMiscellaneous), code)
            == std::end(harmlessMiscellaneous)) {
            fail(BoardText::tr("unknown command M%1").arg(code, 2, 10, QChar('0')));
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
        fail(BoardText::tr("%1 with no whole number: %2").arg(QChar(letter)).arg(shown(digits)));
    }
    return value;
}

qint64 ExcellonProgram::coordinate(char letter, std::string_view digits)
{
    const auto value = mFormat.read(digits);
    if (!value) {
        fail(BoardText::tr("%1%2 is no coordinate").arg(QChar(letter)).arg(shown(digits)));
    }
    // Far beyond every place, but sums of it still fit.
    constexpr qint64 far = qint64(1) << 40;
    return std::clamp(*value, -far, far);
}

} // namespace brox
