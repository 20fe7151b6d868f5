// SPDX-License-Identifier: MIT
#include "excellon_machine.h"

#include <charconv>
#include <cmath>

namespace brox {

namespace {

constexpr int maxRepeats = 10000;

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

/** Gives the words of a line their meaning, one after the other. */
class LineSplitter
{
public:
    LineSplitter(std::string_view line, NumberReader& numbers, const FileLine& at)
        : mLine(line)
        , mNumbers(numbers)
        , mAt(at)
    { }

    Words split()
    {
        std::string_view rest = mLine;
        while (!rest.empty() && !mIsMessage) {
            const char letter = rest[0];
            rest.remove_prefix(1);
            take(letter, takeNumber(rest));
        }
        return std::move(mWords);
    }

private:
    /** What stands twice is the beginning of another line, whose end is lost. */
    void refuseTwice(char letter)
    {
        constexpr std::string_view letters = "XYIJATCR";
        if (letter == 'T' && mWords.hasPlace) {
            mAt.fail(BoardText::tr("a tool behind a place: ") + shown(mLine));
        }
        const size_t index = letters.find(letter);
        if (index == letters.npos) {
            return;
        }
        const unsigned bit = 1U << (index + (isSecond() ? letters.size() : 0));
        if ((mSeen & bit) != 0) {
            mAt.fail(BoardText::tr("a word stands twice: ") + shown(mLine));
        }
        mSeen |= bit;
    }

    void take(char letter, std::string_view value)
    {
        refuseTwice(letter);
        switch (letter) {
        case 'X':
            takeAxis(letter, value, isSecond() ? mWords.x2 : mWords.x);
            break;
        case 'Y':
            takeAxis(letter, value, isSecond() ? mWords.y2 : mWords.y);
            break;
        case 'I':
            mWords.i = coordinate(letter, value);
            break;
        case 'J':
            mWords.j = coordinate(letter, value);
            break;
        case 'A':
            mWords.radius = coordinate(letter, value);
            break;
        case 'T':
            mWords.tool = number(value);
            break;
        case 'C':
            mWords.diameter = value;
            break;
        case 'R':
            takeRepeats(number(value));
            break;
        case 'G':
            mWords.preparations.append(number(value));
            takeCycle(mWords.preparations.last());
            break;
        case 'M':
            takeMiscellaneous(number(value));
            break;
        default:
            // Depths, feeds, speeds and line numbers are nothing to us.
            if (std::string_view("BFHNSUZ").find(letter) == std::string_view::npos
                || !(value.empty() || toNumber(value))) {
                refuse();
            }
        }
    }

    bool isSecond() const
    {
        return mWords.canned == 84 || mWords.canned == 85 || mWords.canned == 87;
    }

    /** An axis without a number stands for 0 beside one with a number. */
    void takeAxis(char letter, std::string_view value, std::optional<double>& axis)
    {
        axis = value.empty() ? 0 : coordinate(letter, value);
        mWords.hasPlace = mWords.hasPlace || !value.empty();
    }

    void takeRepeats(int repeats)
    {
        if (repeats < 1 || repeats > maxRepeats) {
            mAt.fail(BoardText::tr("R%1 is no number from 1 to %2").arg(repeats).arg(maxRepeats));
        }
        mWords.repeats = repeats;
        mWords.repeatIsLast = mWords.hasPlace;
    }

    void takeCycle(int code)
    {
        if (code == 84 || code == 85 || code == 87 || code == 32 || code == 33) {
            mWords.canned = code;
        }
    }

    void takeMiscellaneous(int code)
    {
        mIsMessage = code == 45 || code == 47; // to the operator
        if (!mIsMessage) {
            mWords.miscellaneous.append(code);
        }
    }

    [[noreturn]] void refuse() const
    {
        mAt.fail(BoardText::tr("no command of a drill file: ") + shown(mLine));
    }

    int number(std::string_view digits) const
    {
        int value = -1;
        const char* end = digits.data() + digits.size();
        const auto [stop, error] = std::from_chars(digits.data(), end, value);
        if (error != std::errc() || stop != end || value < 0) {
            refuse();
        }
        return value;
    }

    double coordinate(char letter, std::string_view digits)
    {
        if (digits.empty()) { // the line is of words
            refuse();
        }
        const auto value = mNumbers.read(digits);
        if (!value) {
            mAt.fail(BoardText::tr("%1%2 is no coordinate").arg(QChar(letter)).arg(shown(digits)));
        }
        return *value;
    }

    std::string_view mLine;
    NumberReader& mNumbers;
    const FileLine& mAt;
    Words mWords;
    unsigned mSeen = 0; ///< letters so far
    bool mIsMessage = false;
};

} // namespace

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\f\v\x1a";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

Words splitLine(std::string_view line, NumberReader& numbers, const FileLine& at)
{
    return LineSplitter(line, numbers, at).split();
}

/** Where a place of the program lies. */
QPointF ExcellonHead::target(const std::optional<double>& x, const std::optional<double>& y) const
{
    if (mIncremental) {
        return mHere + QPointF(x.value_or(0), y.value_or(0));
    }
    return {x.value_or(mHere.x()), y.value_or(mHere.y())};
}

/** A selected tool, to make something with that BoardText knows. */
void ExcellonHead::need(const char* what)
{
    if (!mCanvas.isSelected()) {
        mAt.fail(BoardText::tr("%1 before a tool is selected").arg(BoardText::tr(what)));
    }
    mHasWorked = true;
}

void ExcellonHead::setMode(Mode mode)
{
    endCut();
    mMode = mode;
}

void ExcellonHead::goTo(const Words& words)
{
    if (mMode == Mode::Move) {
        moveTo(words);
    } else if (mMode == Mode::Cut) {
        cutTo(words);
    } else {
        drill(words);
    }
}

void ExcellonHead::drill(const Words& words)
{
    if (mMode == Mode::Up) {
        mAt.fail(BoardText::tr("neither a hole (G05) nor a routed path"));
    }
    need(QT_TRANSLATE_NOOP("BoardText", "a hole"));
    if (words.repeats == 0) {
        mHere = target(words.x, words.y);
        mCanvas.drill(mHere);
        mAfterHole = true;
        return;
    }
    if (words.repeatIsLast) {
        mAt.fail(BoardText::tr("a place before a repeat in one line"));
    }
    if (!mAfterHole) {
        mAt.fail(BoardText::tr("a repeat that follows no hole"));
    }
    for (int i = 0; i < words.repeats; ++i) {
        mHere += words.place();
        mCanvas.drill(mHere);
    }
}

void ExcellonHead::moveTo(const Words& words)
{
    mHasWorked = true;
    mAfterHole = false;
    mHere = target(words.x, words.y);
    mCanvas.rounded(mHere);
}

void ExcellonHead::beginCut(Segment::Shape shape)
{
    mMode = Mode::Cut;
    mShape = shape;
    if (!mCanvas.hasPath()) {
        need(QT_TRANSLATE_NOOP("BoardText", "a slot"));
        mAfterHole = false;
        mCutCompensated = mCompensated;
        mCanvas.beginPath(mHere);
    }
}

void ExcellonHead::endCut()
{
    if (!mCanvas.hasPath()) {
        return;
    }
    mMode = Mode::Up;
    // Beside the path the cutter makes an outline whose width is not the tool's.
    mCutCompensated ? mCanvas.endAsContour() : mCanvas.endAsSlot();
}

void ExcellonHead::cutTo(const Words& words)
{
    if (words.repeats > 0) {
        mAt.fail(BoardText::tr("a repeat within a routed path"));
    }
    const QPointF to = target(words.x, words.y);
    if (mShape == Segment::Shape::Line) {
        mCanvas.lineTo(to);
    } else {
        mCanvas.arcTo(mShape, to, arcCentre(to, words));
    }
    mHere = to;
}

/** From I and J, which lead from the beginning to it, or from a radius. */
QPointF ExcellonHead::arcCentre(const QPointF& to, const Words& words) const
{
    if (words.i || words.j) {
        return mHere + QPointF(words.i.value_or(0), words.j.value_or(0));
    }
    if (mRadius == 0) {
        mAt.fail(BoardText::tr("an arc without a centre or radius"));
    }
    const double radius = std::abs(mRadius);
    const QPointF way = to - mHere;
    const double chord = std::hypot(way.x(), way.y());
    // The last digit of a half circle's radius may be rounded down.
    if (chord < 1 || chord / 2 > radius * 1.01 + sizePerMicron) {
        mAt.fail(BoardText::tr("no arc of this radius reaches from here to there"));
    }
    const double height = std::sqrt(std::max(0.0, radius * radius - chord * chord / 4));
    // A radius leads to the arc of at most 180 degrees: the centre of a clockwise one lies to the
    // right of the chord.
    const double side = mShape == Segment::Shape::Clockwise ? 1 : -1;
    return mHere + way / 2 + QPointF(way.y(), -way.x()) * (side * height / chord);
}

void ExcellonHead::addCycle(const Words& words)
{
    endCut();
    if (words.repeats > 0) {
        mAt.fail(BoardText::tr("a repeat of a slot"));
    }
    mAfterHole = false;
    const QPointF first = target(words.x, words.y);
    if (words.canned == 32 || words.canned == 33) {
        addCircle(first, words.radius.value_or(0), !mCompensated);
        return;
    }
    if (words.canned == 84) {
        // The circle's diameter stands where a second place would.
        addCircle(first, std::abs(words.x2.value_or(0)) / 2, false);
        return;
    }
    if (!words.x2 && !words.y2) {
        mAt.fail(BoardText::tr("a slot without an end"));
    }
    need(QT_TRANSLATE_NOOP("BoardText", "a slot"));
    mHere = first;
    mCanvas.beginPath(mHere);
    mHere = target(words.x2, words.y2);
    mCanvas.lineTo(mHere);
    mCanvas.endAsSlot();
}

void ExcellonHead::addCircle(const QPointF& centre, double radius, bool isSlot)
{
    need(QT_TRANSLATE_NOOP("BoardText", "a circle"));
    if (radius <= 0) {
        mAt.fail(BoardText::tr("a routed circle without a size"));
    }
    mHere = centre;
    const QPointF start(centre + QPointF(radius, 0));
    mCanvas.beginPath(start);
    mCanvas.arcTo(Segment::Shape::Clockwise, start, centre);
    isSlot ? mCanvas.endAsSlot() : mCanvas.endAsContour();
}

} // namespace brox
