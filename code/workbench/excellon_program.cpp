// SPDX-License-Identifier: MIT
#include "excellon_program.h"

#include <QFile>
#include <QFileInfo>
#include <QVarLengthArray>
#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int chunkSize = 1 << 16; ///< bytes between two reports of progress
constexpr int maxLineLength = 4096;
constexpr size_t maxTools = 1000;
constexpr int maxRepeats = 10000;
/** What drills nothing: stops, messages, a scale of the whole, a pattern turned or mirrored. */
constexpr int harmlessMiscellaneous[] = {6, 9, 18, 45, 47, 60, 61, 62, 70, 80, 90};
constexpr double maxDiameter = 100 * 400000.0; ///< 100 mm in host size units

QString quoted(QByteArrayView text)
{
    QString told = QString::fromUtf8(text.first(qMin<qsizetype>(text.size(), 40)));
    for (QChar& letter : told) {
        letter = letter.isPrint() ? letter : QChar('?');
    }
    return '"' + told + '"';
}

QByteArrayView takeNumber(QByteArrayView& line)
{
    qsizetype length = 0;
    while (length < line.size() && QByteArrayView("+-.0123456789").contains(line[length])) {
        ++length;
    }
    const QByteArrayView number = line.first(length);
    line = line.sliced(length).trimmed();
    return number;
}

bool isNumber(QByteArrayView text)
{
    bool ok = false;
    return std::isfinite(text.toDouble(&ok)) && ok;
}

} // namespace

/** The commands of one line, without the order that they stand in. */
struct ExcellonProgram::Words
{
    QVarLengthArray<int, 8> preparations; ///< numbers of G
    QVarLengthArray<int, 8> miscellaneous; ///< numbers of M
    std::optional<int> tool;
    std::optional<QByteArrayView> diameter;
    int repeats = 0; ///< 0: no repeat
    bool hasPlace = false; ///< coordinates that mean a hole
    bool isSlot = false;
};

void ExcellonProgram::read(const Progress& progress)
{
    QFile file(mPath);
    if (!file.open(QIODevice::ReadOnly)) {
        fail(1, file.errorString());
    }
    QByteArray line;
    bool afterReturn = false;
    const auto endLine = [&] {
        ++mLine;
        if (mLine == 1 && line.startsWith("\xef\xbb\xbf")) {
            line.remove(0, 3);
        }
        readLine(line);
        line.resize(0);
    };
    while (!file.atEnd()) {
        const QByteArray chunk = file.read(chunkSize);
        if (chunk.isEmpty()) {
            fail(mLine + 1, file.errorString());
        }
        if (progress && !progress(file.pos(), file.size())) {
            throw BoardCancelled();
        }
        for (const char letter : chunk) {
            if (letter == '\r' || (letter == '\n' && !afterReturn)) {
                endLine();
            } else if (letter != '\n') {
                line += letter;
            }
            if (line.size() > maxLineLength) {
                fail(mLine + 1, QStringLiteral("the line is longer than %1").arg(maxLineLength));
            }
            afterReturn = letter == '\r';
        }
    }
    if (!line.isEmpty() || mLine == 0) {
        endLine();
    }
    finish();
}

void ExcellonProgram::readLine(QByteArray line)
{
    const qsizetype comment = line.indexOf(';');
    if (comment >= 0) {
        mAttributes.readComment(line.sliced(comment + 1));
        line.truncate(comment);
    }
    line = line.trimmed().toUpper();
    if (line.isEmpty() || line.startsWith('(')) {
        return;
    }
    if (line == "%") {
        mInHeader = false; // elsewhere it only stops the tape's rewinding
        return;
    }
    if (mEnded) {
        fail(QStringLiteral("%1 after the program's end").arg(quoted(line)));
    }
    if (!readKeyword(line)) {
        readCommands(line);
    }
}

/** Units, and what else sets up the machine and drills nothing, such as "FMAT,2". */
bool ExcellonProgram::readKeyword(QByteArrayView line)
{
    const qsizetype comma = line.indexOf(',');
    const QByteArrayView name = line.first(comma < 0 ? line.size() : comma);
    if (name == "METRIC" || name == "INCH") {
        setUnits(name == "INCH" ? Units::Inch : Units::Metric);
        return true;
    }
    const bool isWord = name.size() > (comma < 0 ? 1 : 0)
        && std::all_of(name.begin(), name.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
    return !mStarted && (isWord || name == "OM48");
}

void ExcellonProgram::readCommands(QByteArrayView line)
{
    const QByteArrayView all = line;
    Words words;
    mMayEnd = false;
    while (!line.isEmpty()) {
        const char letter = line[0];
        line = line.sliced(1);
        const QByteArrayView value = takeNumber(line);
        switch (letter) {
        case 'X':
        case 'Y':
            // An axis without a number stands for 0 beside one with a number.
            if (!value.isEmpty() && !isNumber(value)) {
                fail(QStringLiteral("%1%2 is no coordinate").arg(letter).arg(quoted(value)));
            }
            words.hasPlace = words.hasPlace || !value.isEmpty();
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
        case 'G':
            words.preparations.append(number(letter, value));
            break;
        case 'M':
            words.miscellaneous.append(number(letter, value));
            if (words.miscellaneous.last() == 45 || words.miscellaneous.last() == 47) {
                line = {}; // a message to the operator
            }
            break;
        default:
            // Depths, feeds, speeds, arcs and line numbers are nothing to us.
            if (!QByteArrayView("ABFHIJNSUZ").contains(letter) || !isNumber(value)) {
                fail(QStringLiteral("no command of a drill file: %1").arg(quoted(all)));
            }
        }
    }
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
    for (int code : words.miscellaneous) {
        miscellaneous(code, words);
    }
    if (words.isSlot) {
        addSlot();
    } else if (words.hasPlace) {
        addHoles(qMax(1, words.repeats));
    } else if (words.repeats > 0 && !hadPlace) {
        fail(QStringLiteral("a repeat without a distance"));
    }
}

void ExcellonProgram::preparation(int code, Words& words)
{
    switch (code) {
    case 0:
        mMode = Mode::Move;
        mCutting = false;
        words.hasPlace = false;
        break;
    case 1:
    case 2:
    case 3:
        cut();
        words.hasPlace = false;
        break;
    case 5:
    case 81:
        mMode = Mode::Drill;
        mCutting = false;
        break;
    case 32: // circles that are routed
    case 33:
    case 84: // a circle of many overlapping holes
    case 85:
    case 87:
        words.isSlot = true;
        break;
    case 92: // sets the origin
    case 93:
        words.hasPlace = false;
        break;
    case 40: // the side of a routed path that the cutter is on
    case 41:
    case 42:
    case 90: // absolute or incremental coordinates
    case 91:
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
        mEnded = true;
        break;
    case 1:
        // Without M25 the pattern begins with the program or where the last one ended.
        eachCounter([](Counter& counter) { counter.endPattern(); });
        mPattern = Pattern::Repeated;
        break;
    case 2:
        if (words.hasPlace) {
            repeatPattern(qMax(1, words.repeats));
        } else if (mPattern == Pattern::Repeated) {
            mMayEnd = true; // the end of the repeats, or of the program after all
        } else {
            mEnded = true;
        }
        words.hasPlace = false;
        break;
    case 25:
        if (mPattern == Pattern::Open) {
            fail(QStringLiteral("a pattern within a pattern"));
        }
        eachCounter([](Counter& counter) { counter.beginPattern(); });
        mPattern = Pattern::Open;
        break;
    case 8:
        if (mPattern == Pattern::Open) {
            fail(QStringLiteral("the pattern is not ended by M01"));
        }
        eachCounter([](Counter& counter) { counter.beginPattern(); });
        mPattern = Pattern::None;
        break;
    case 14: // tool down, with or without depth
    case 15:
        cut();
        break;
    case 16: // tool up
    case 17:
        mMode = Mode::Up;
        mCutting = false;
        words.hasPlace = false;
        break;
    case 48:
        mInHeader = true;
        break;
    case 95:
        mInHeader = false;
        break;
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

void ExcellonProgram::finish() const
{
    if (mInHeader) {
        fail(QStringLiteral("the header does not end; the file is cut off"));
    }
    if (!mEnded && !mMayEnd) {
        fail(QStringLiteral("the program does not end; the file is cut off"));
    }
}

int ExcellonProgram::number(char letter, QByteArrayView digits) const
{
    bool ok = false;
    const int value = digits.toInt(&ok);
    if (!ok || value < 0) {
        fail(QStringLiteral("%1 with no whole number: %2").arg(letter).arg(quoted(digits)));
    }
    return value;
}

void ExcellonProgram::setUnits(Units units)
{
    mUnits = units;
    for (DrillTool& tool : mTools) {
        if (tool.size == 0) {
            setSize(tool);
        }
    }
}

void ExcellonProgram::setSize(DrillTool& tool) const
{
    const double size = std::round(tool.diameter * (mUnits == Units::Inch ? 10160000.0 : 400000.0));
    if (size < 1 || size > maxDiameter) {
        fail(tool.line,
            QStringLiteral("%1 is too %2 for a drill")
                .arg(tool.diameter)
                .arg(size < 1 ? "small" : "large"));
    }
    tool.size = int(size);
}

void ExcellonProgram::defineTool(int number, QByteArrayView diameter)
{
    bool ok = false;
    DrillTool tool{number, mLine, diameter.toDouble(&ok), 0, mAttributes.toolType(), {}};
    const QString told = QStringLiteral("diameter %1 ").arg(quoted(diameter));
    if (!ok || number == 0) {
        fail(number == 0 ? QStringLiteral("T0 means no tool") : told + "is no number");
    }
    if (tool.diameter <= 0) {
        fail(told + "is not above 0");
    }
    // More digits would leave open where the point is thought to be.
    if (diameter.size() > 1 && !diameter.contains('.')) {
        fail(told + "has no decimal point");
    }
    if (mUnits) {
        setSize(tool);
    }
    const auto known = mToolOfNumber.constFind(number);
    if (known != mToolOfNumber.constEnd()) {
        DrillTool& old = mTools[*known];
        if (old.size == tool.size && old.diameter == tool.diameter) {
            return;
        }
        if (old.holes.count == 0) {
            old = tool;
            return;
        }
    }
    if (mTools.size() == maxTools) {
        fail(QStringLiteral("more than %1 tools").arg(maxTools));
    }
    mToolOfNumber[number] = mTools.size();
    mTools.push_back(tool);
}

void ExcellonProgram::selectTool(int number)
{
    mStarted = true;
    mTool.reset();
    if (number == 0) {
        return;
    }
    const auto known = mToolOfNumber.constFind(number);
    if (known == mToolOfNumber.constEnd()) {
        fail(QStringLiteral("tool T%1 has no diameter").arg(number));
    }
    if (mTools[*known].size == 0) {
        fail(QStringLiteral("nothing tells whether T%1 is in millimetres or inches").arg(number));
    }
    mTool = *known;
}

void ExcellonProgram::count(Counter& counter, qint64 more) const
{
    if (!counter.add(more)) {
        fail(QStringLiteral("too many holes"));
    }
}

void ExcellonProgram::addHoles(qint64 number)
{
    if (mMode == Mode::Move || mMode == Mode::Cut) {
        return;
    }
    if (mInHeader) {
        fail(QStringLiteral("a hole in the header"));
    }
    if (mMode == Mode::Up) {
        fail(QStringLiteral("neither a hole (G05) nor a routed path"));
    }
    if (!mTool) {
        fail(QStringLiteral("a hole before a tool is selected"));
    }
    count(mTools[*mTool].holes, number);
}

void ExcellonProgram::addSlot()
{
    if (!mTool) {
        fail(QStringLiteral("a slot before a tool is selected"));
    }
    count(mSlots, 1);
}

/** The tool is down; however many lines and arcs follow, it is one slot. */
void ExcellonProgram::cut()
{
    mMode = Mode::Cut;
    if (!mCutting) {
        addSlot();
        mCutting = true;
    }
}

void ExcellonProgram::eachCounter(const std::function<void(Counter&)>& act)
{
    for (DrillTool& tool : mTools) {
        act(tool.holes);
    }
    act(mSlots);
}

void ExcellonProgram::repeatPattern(qint64 times)
{
    if (mPattern != Pattern::Repeated) {
        fail(QStringLiteral("no pattern to repeat"));
    }
    eachCounter([&](Counter& counter) { count(counter, times * counter.pattern); });
}

std::vector<Tool> ExcellonProgram::tools() const
{
    const HoleType fileType = mAttributes.fileType(QFileInfo(mPath).fileName());
    std::vector<Tool> tools;
    for (const DrillTool& tool : mTools) {
        if (tool.holes.count > 0) {
            tools.push_back({tool.type.value_or(fileType), 0, 0, tool.size, tool.holes.count});
        }
    }
    return tools;
}
