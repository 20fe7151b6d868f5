// SPDX-License-Identifier: MIT
#include "excellon_reader.h"

#include "excellon_machine.h"
#include "excellon_tools.h"

#include <span>

namespace brox {

namespace {

QString shownCode(char letter, int number)
{
    return QStringLiteral("%1%2").arg(QChar(letter)).arg(number, 2, 10, QChar('0'));
}

/** Runs a program and keeps what it would drill and rout.
 *
 * What may drill holes and is not understood ends the reading: a missing hole is as bad as a wrong
 * one.
 */
class ExcellonProgram
{
public:
    ExcellonProgram(const QString& name, std::string_view sample, const DrillOptions& options)
        : mAt{name, 0}
        , mNumbers(sample)
        , mListed(options.listed)
        , mCanvas(mAt, options.drilled)
        , mTools(mAt, mComments, mListed, mCanvas, mNotes)
        , mHead(mAt, mCanvas)
    {
        mHead.setIncremental(mListed.isIncremental);
        mNumbers.tell(mListed.format, Origin::List);
        mNumbers.tell(options.fileFormat, Origin::User);
        if (options.chosen) {
            mNumbers.choose(*options.chosen, options.chosenBy);
        }
    }

    /** One line without its end; lines count from 1. */
    void readLine(std::string_view line);

    /** What the lines come to. To be called once, at the file's end. */
    DrillFile finish();

private:
    enum class Pattern
    {
        None,
        Open,
        Repeated
    };
    using P = ExcellonProgram;
    using Shape = Segment::Shape;
    using Mode = ExcellonHead::Mode;
    struct Command
    {
        int code;
        void (*run)(P& program, Words& words); ///< null: drills nothing
        bool refusesPlace = false; ///< in its line
    };

    [[noreturn]] void fail(const QString& message) const { mAt.fail(message); }

    bool readKeyword(std::string_view line);
    void readFormatFields(std::string_view fields);
    void readComment(std::string_view text, bool isAlone);
    void readCommands(std::string_view line);
    void selectUnnumbered(const Words& words);
    int usualDecimals() const;
    void run(char letter, std::span<const Command> commands, int code, Words& words);
    void beginBody();
    void setUnits(Units units);
    void setUnitsByCode(Units units);

    void cut(Shape shape);
    void lift(Words& words);
    void setOrigin(Words& words);
    void end();
    void beginPattern();
    void endPattern();
    void repeatPattern(Words& words);
    void endRepeats();
    [[noreturn]] void refuseTurn() const;

    static const Command preparations[];
    static const Command miscellaneous[];

    FileLine mAt;
    NumberReader mNumbers;
    std::optional<Units> mUnits; ///< that the program has set so far
    ExcellonComments mComments;
    const ListedTools& mListed;
    DrillCanvas mCanvas;
    ExcellonTools mTools;
    ExcellonHead mHead;
    Notes mNotes;
    bool mNumbersTools = false; ///< there was a tool's number
    bool mUnitsByCode = false; ///< by M71 or M72 alone
    bool mInHeader = false;
    bool mEnded = false;
    bool mMayEnd = false; ///< the last line was one that ends some programs
    qint64 mStopLine = 0; ///< line of an M00 that nothing has followed yet; 0: none
    Pattern mPattern = Pattern::None;
};

const ExcellonProgram::Command ExcellonProgram::preparations[] = {
    {0, [](P& p, Words&) { p.mHead.setMode(Mode::Move); }},
    {1, [](P& p, Words&) { p.cut(Shape::Line); }},
    {2, [](P& p, Words&) { p.cut(Shape::Clockwise); }},
    {3, [](P& p, Words&) { p.cut(Shape::CounterClockwise); }},
    {4, [](P&, Words& words) { words.hasPlace = false; }}, // the time of a pause
    {5, [](P& p, Words&) { p.mHead.setMode(Mode::Drill); }},
    {32, nullptr}, // cycles follow the other commands of their line
    {33, nullptr},
    {40, [](P& p, Words&) { p.mHead.setCompensated(false); }},
    {41, [](P& p, Words&) { p.mHead.setCompensated(true); }},
    {42, [](P& p, Words&) { p.mHead.setCompensated(true); }},
    {81, [](P& p, Words&) { p.mHead.setMode(Mode::Drill); }},
    {84, nullptr},
    {85, nullptr},
    {87, nullptr},
    {90, [](P& p, Words&) { p.mHead.setIncremental(false); }},
    {91, [](P& p, Words&) { p.mHead.setIncremental(true); }},
    {92, [](P& p, Words& words) { p.setOrigin(words); }},
    {93, [](P& p, Words& words) { p.setOrigin(words); }},
};

const ExcellonProgram::Command ExcellonProgram::miscellaneous[] = {
    {0,
        [](P& p, Words&) {
            p.end();
            p.mStopLine = p.mAt.line; // the end unless more follows
        },
        true},
    {1, [](P& p, Words&) { p.endPattern(); }, true},
    {2, [](P& p, Words& words) { p.repeatPattern(words); }},
    {6, nullptr, true}, // stops
    {8, [](P& p, Words&) { p.endRepeats(); }},
    {9, nullptr, true},
    {14, [](P& p, Words&) { p.cut(Shape::Line); }}, // down, with a depth or without
    {15, [](P& p, Words&) { p.cut(Shape::Line); }},
    {16, [](P& p, Words& words) { p.lift(words); }},
    {17, [](P& p, Words& words) { p.lift(words); }},
    {18, nullptr}, // a message
    {25, [](P& p, Words&) { p.beginPattern(); }},
    {30,
        [](P& p, Words&) {
            p.end();
            p.mEnded = true;
        },
        true},
    {48, [](P& p, Words&) { p.mInHeader = true; }},
    {60, nullptr}, // a scale of the whole, clamps
    {61, nullptr},
    {62, nullptr},
    {70, [](P& p, Words&) { p.refuseTurn(); }},
    {71, [](P& p, Words&) { p.setUnitsByCode(Units::Metric); }},
    {72, [](P& p, Words&) { p.setUnitsByCode(Units::Inch); }},
    {80, [](P& p, Words&) { p.refuseTurn(); }},
    {90, [](P& p, Words&) { p.refuseTurn(); }},
    {95, [](P& p, Words&) { p.beginBody(); }},
};

void ExcellonProgram::readLine(std::string_view line)
{
    ++mAt.line;
    const size_t comment = line.find(';');
    if (comment != line.npos) {
        readComment(line.substr(comment + 1), trimmed(line.substr(0, comment)).empty());
        line = line.substr(0, comment);
    }
    line = trimmed(line.substr(0, line.find('(')));
    if (line.empty()) {
        return;
    }
    std::string upper(line);
    for (char& c : upper) {
        c = c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c;
    }
    line = upper;
    if (line == "%") {
        if (mInHeader) {
            beginBody(); // elsewhere it only stops the tape's rewinding
        }
        return;
    }
    if (mEnded) {
        fail(BoardText::tr("%1 after the program's end").arg(shown(line)));
    }
    if (mStopLine != 0 && mNumbersTools) {
        mNotes.add(QT_TRANSLATE_NOOP("BoardText",
                       "M00 in line %1 is taken for a stop: the program goes on behind it"),
            {QString::number(mStopLine)});
    }
    mStopLine = 0;
    if (line != "/" && !readKeyword(line)) {
        if (line[0] == '/') {
            line = trimmed(line.substr(1));
            mNotes.add(
                QT_TRANSLATE_NOOP("BoardText",
                    "line %1 begins with a slash, by which operators may skip it; it counts"),
                {QString::number(mAt.line)});
        }
        readCommands(line);
    }
}

/** A place that was taken out of the program may be missed. */
void ExcellonProgram::readComment(std::string_view text, bool isAlone)
{
    mComments.read(QString::fromUtf8(text.data(), qsizetype(text.size())), mNumbers);
    const std::string_view place = trimmed(text);
    if (isAlone && place.size() > 1 && (place[0] == 'X' || place[0] == 'Y')
        && place.find_first_not_of("XYG+-.0123456789") == place.npos
        && place.find_first_of("0123456789") != place.npos) {
        mNotes.add(QT_TRANSLATE_NOOP(
                       "BoardText", "the comment in line %1 is a place, which is not drilled"),
            {QString::number(mAt.line)});
    }
}

/** Units, and what else sets up the machine and drills nothing, such as "FMAT,2". */
bool ExcellonProgram::readKeyword(std::string_view line)
{
    const size_t comma = std::min(line.find(','), line.size());
    const std::string_view name = trimmed(line.substr(0, comma));
    const std::string_view fields = line.substr(std::min(comma + 1, line.size()));
    const bool isCode = (name == "M71" || name == "M72") && comma < line.size();
    if (name == "METRIC" || name == "INCH" || isCode) {
        setUnits(name == "INCH" || name == "M72" ? Units::Inch : Units::Metric);
        readFormatFields(fields);
        return true;
    }
    if (name == "ICI") {
        const bool isOn = trimmed(fields) == "ON";
        if (!isOn && trimmed(fields) != "OFF") {
            fail(BoardText::tr("ICI is neither ON nor OFF"));
        }
        mHead.setIncremental(isOn);
        return true;
    }
    const bool isWord =
        std::all_of(name.begin(), name.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
    const bool isSetup = isWord && name.size() > (comma < line.size() ? 0U : 1U);
    return !mHead.hasWorked() && (isSetup || name == "OM48" || name.starts_with("R,T"));
}

/** "LZ", "TZ", "000.000" in any order. */
void ExcellonProgram::readFormatFields(std::string_view fields)
{
    while (!fields.empty()) {
        const size_t comma = std::min(fields.find(','), fields.size());
        const std::string_view field = trimmed(fields.substr(0, comma));
        fields = fields.substr(std::min(comma + 1, fields.size()));
        const size_t point = field.find('.');
        NumberFormat told;
        if (field == "LZ" || field == "TZ") {
            told.zeros = field == "LZ" ? Zeros::Leading : Zeros::Trailing;
        } else if (point != field.npos && field.find_first_not_of("0.") == field.npos
            && field.size() <= 12) {
            told.digits = Digits{int(point), int(field.size() - point - 1)};
        }
        mNumbers.tell(told, Origin::File);
    }
}

void ExcellonProgram::readCommands(std::string_view line)
{
    mMayEnd = false;
    Words words = splitLine(line, mNumbers, mAt);
    if (words.diameter && !words.tool) {
        fail(BoardText::tr("a diameter without a tool"));
    }
    if (words.diameter) {
        mTools.define(*words.tool, *words.diameter, mUnits, mInHeader);
    }
    mNumbersTools = mNumbersTools || words.tool;
    if (words.tool && !mInHeader) {
        mHead.endCut();
        beginBody();
        mTools.select(*words.tool);
    }
    selectUnnumbered(words);
    const bool hadPlace = words.hasPlace;
    if (words.radius) {
        mHead.setRadius(*words.radius);
    }
    if ((words.i || words.j) && !hadPlace) {
        fail(BoardText::tr("the centre of an arc without its end"));
    }
    for (const int code : words.preparations) {
        run('G', preparations, code, words);
    }
    // The tool moves before it goes down or up.
    const bool lifts = words.hasAny({16, 17});
    const bool lowers = words.hasAny({14, 15});
    if (words.hasPlace && mHead.mode() == Mode::Move && (words.has(0) || lowers)) {
        mHead.moveTo(words);
        words.hasPlace = false;
    } else if (words.hasPlace && mHead.mode() == Mode::Cut && lifts) {
        mHead.cutTo(words);
    }
    for (const int code : words.miscellaneous) {
        run('M', miscellaneous, code, words);
    }
    if (mInHeader && (words.canned != 0 || words.hasPlace)) {
        fail(BoardText::tr("the header does not end: no % or M95 before a place"));
    }
    if (words.canned != 0) {
        mHead.addCycle(words);
    } else if (words.hasPlace) {
        mHead.goTo(words);
    } else if (words.repeats > 0 && !hadPlace) {
        fail(BoardText::tr("a repeat without a distance"));
    }
}

/** In a program without numbers of tools, comments list them in order, and stops part them. */
void ExcellonProgram::selectUnnumbered(const Words& words)
{
    if (!mNumbersTools && !mInHeader && !mCanvas.isSelected() && !mComments.remarkOrder().empty()
        && (words.hasPlace || words.canned != 0)) {
        beginBody();
        mTools.selectNext();
    }
}

/** Of the programs whose habit it is to write neither them nor points. */
int ExcellonProgram::usualDecimals() const
{
    if (!mComments.remarkOrder().empty()) {
        return 5;
    }
    const bool isUsual = mTools.decimals() == 4 || mTools.decimals() == 5;
    return mUnitsByCode && isUsual ? mTools.decimals() : 0;
}

void ExcellonProgram::run(char letter, std::span<const Command> commands, int code, Words& words)
{
    const auto known = std::find_if(commands.begin(), commands.end(),
        [&](const Command& command) { return command.code == code; });
    if (known == commands.end()) { // may drill holes that we would miss
        fail(BoardText::tr("unknown command ") + shownCode(letter, code));
    }
    if (known->refusesPlace && words.hasPlace) {
        fail(BoardText::tr("coordinates beside %1").arg(shownCode(letter, code)));
    }
    if (known->run) {
        known->run(*this, words);
    }
}

void ExcellonProgram::cut(Shape shape)
{
    if (mInHeader) {
        fail(BoardText::tr("the header does not end: no % or M95 before a place"));
    }
    mHead.beginCut(shape);
}

void ExcellonProgram::lift(Words& words)
{
    mHead.setMode(Mode::Up);
    words.hasPlace = false;
}

/** Only moves the whole. */
void ExcellonProgram::setOrigin(Words& words)
{
    if (!words.place().isNull()) {
        if (mHead.hasWorked()) {
            fail(BoardText::tr("the origin is set after the first hole"));
        }
        // Other files of the board may have another one.
        mNotes.add(QT_TRANSLATE_NOOP("BoardText",
                       "places are counted from an origin of their own, set in line %1"),
            {QString::number(mAt.line)});
    }
    words.hasPlace = false;
}

void ExcellonProgram::end()
{
    mHead.endCut();
    if (!mNumbersTools) {
        mCanvas.deselect();
    }
}

void ExcellonProgram::beginPattern()
{
    if (mPattern == Pattern::Open) {
        fail(BoardText::tr("a pattern within a pattern"));
    }
    mHead.endCut();
    mCanvas.beginPattern();
    mPattern = Pattern::Open;
}

/** Without M25 the pattern begins with the program or where the last repeats ended. */
void ExcellonProgram::endPattern()
{
    mHead.endCut();
    mHead.forgetHole();
    mCanvas.endPattern();
    mPattern = Pattern::Repeated;
}

void ExcellonProgram::repeatPattern(Words& words)
{
    if (words.hasPlace) {
        if (mPattern != Pattern::Repeated) {
            fail(BoardText::tr("no pattern to repeat"));
        }
        mCanvas.repeatPattern(words.place(), qMax(1, words.repeats));
        words.hasPlace = false;
    } else if (mPattern == Pattern::Repeated) {
        mMayEnd = true; // the end of the repeats, or of the program after all
    } else {
        mHead.endCut();
        mEnded = true;
    }
}

void ExcellonProgram::endRepeats()
{
    if (mPattern == Pattern::Open) {
        fail(BoardText::tr("the pattern is not ended by M01"));
    }
    mHead.endCut();
    mCanvas.beginPattern();
    mPattern = Pattern::None;
}

void ExcellonProgram::beginBody()
{
    mInHeader = false;
    mComments.endHeader();
}

void ExcellonProgram::refuseTurn() const
{
    fail(BoardText::tr("a pattern that is turned or mirrored is not read"));
}

void ExcellonProgram::setUnitsByCode(Units units)
{
    mUnitsByCode = true;
    setUnits(units);
}

void ExcellonProgram::setUnits(Units units)
{
    if (mUnits && *mUnits != units) {
        mNotes.add(QT_TRANSLATE_NOOP("BoardText", "the units change in line %1"),
            {QString::number(mAt.line)});
    }
    mUnits = units;
    mNumbers.tell({units, {}, {}}, Origin::File);
    mTools.setUnits(units);
}

DrillFile ExcellonProgram::finish()
{
    if (mInHeader) {
        fail(BoardText::tr("the header does not end; the file is cut off"));
    }
    if (!mEnded && !mMayEnd && mStopLine == 0) {
        fail(BoardText::tr("the program does not end; the file is cut off"));
    }
    mTools.finish(mNumbers);
    DrillFile file = mCanvas.finish(mComments.attributes(), mNumbers, usualDecimals(), mNotes);
    file.layer.hasDrillSizes = mComments.hasDrillSizes();
    return file;
}

} // namespace

DrillFile readExcellon(QIODevice& device, const QString& name, const DrillOptions& options)
{
    LineReader lines(device, name, options);
    ExcellonProgram program(name, lines.beginning(), options);
    while (const auto line = lines.next()) {
        program.readLine(*line);
    }
    return program.finish();
}

} // namespace brox
