// SPDX-License-Identifier: MIT
#include "excellon_machine.h"

#include <charconv>
#include <cmath>

namespace brox {

namespace {

constexpr int maxRepeats = 10000;
constexpr size_t maxTools = 1000;

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
            mWords.tool = number(letter, value);
            break;
        case 'C':
            mWords.diameter = value;
            break;
        case 'R':
            takeRepeats(number(letter, value));
            break;
        case 'G':
            mWords.preparations.append(number(letter, value));
            takeCycle(mWords.preparations.last());
            break;
        case 'M':
            takeMiscellaneous(number(letter, value));
            break;
        default:
            // Depths, feeds, speeds and line numbers are nothing to us.
            if (std::string_view("BFHNSUZ").find(letter) == std::string_view::npos
                || !(value.empty() || toNumber(value))) {
                mAt.fail(BoardText::tr("no command of a drill file: ") + shown(mLine));
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

    int number(char letter, std::string_view digits) const
    {
        int value = -1;
        const char* end = digits.data() + digits.size();
        const auto [stop, error] = std::from_chars(digits.data(), end, value);
        if (error != std::errc() || stop != end || value < 0) {
            mAt.fail(
                BoardText::tr("%1 with no whole number: %2").arg(QChar(letter)).arg(shown(digits)));
        }
        return value;
    }

    double coordinate(char letter, std::string_view digits)
    {
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

void ExcellonTools::define(
    int number, std::string_view diameter, std::optional<Units> units, bool inHeader)
{
    const auto value = toNumber(diameter);
    if (!value) {
        mAt.fail(BoardText::tr("diameter %1 is no number").arg(shown(diameter)));
    }
    if (*value <= 0) {
        mAt.fail(BoardText::tr("diameter %1 is not above 0").arg(shown(diameter)));
    }
    // More digits would leave open where the point is thought to be.
    if (diameter.size() > 1 && diameter.find('.') == diameter.npos) {
        mAt.fail(BoardText::tr("diameter %1 has no decimal point").arg(shown(diameter)));
    }
    const int decimals = int(diameter.size() - std::min(diameter.find('.') + 1, diameter.size()));
    mDecimals = mDecimals.value_or(decimals) == decimals ? decimals : 0;
    DrillTool tool{QStringLiteral("T%1").arg(number), number, mAt.line, *value, units,
        mComments.attributes().tolerance(), mComments.definedFacts()};
    if (units) {
        mCanvas.sizeOf(tool); // what is wrong with it is reported where it stands
    }
    const auto known = mToolOf.find(number);
    if (known != mToolOf.end()) {
        DrillTool& old = mCanvas.tool(known->second);
        if (old.diameter == tool.diameter && old.units == tool.units) {
            if (inHeader && tool.facts.plated && old.facts.plated != tool.facts.plated) {
                old.facts.plated.reset(); // specified to be both
            }
            return;
        }
        if (mCanvas.hits(known->second) == 0) {
            mNotes.add(QT_TRANSLATE_NOOP("BoardText",
                           "T%1 has one diameter in line %2 and another in line %3, which counts"),
                {QString::number(number), QString::number(old.line), QString::number(mAt.line)});
            old = std::move(tool);
            return;
        }
    }
    mToolOf[number] = add(std::move(tool));
}

size_t ExcellonTools::add(DrillTool tool)
{
    if (mCanvas.tools().size() == maxTools) {
        mAt.fail(BoardText::tr("more than %1 tools").arg(maxTools));
    }
    return mCanvas.addTool(std::move(tool));
}

void ExcellonTools::setUnits(Units units)
{
    for (DrillTool& tool : mCanvas.tools()) {
        tool.units = tool.units ? tool.units : units;
    }
}

void ExcellonTools::select(int number)
{
    mCanvas.deselect();
    auto known = mToolOf.find(number);
    // "T0103" is tool 1 with the values of register 3.
    if (known == mToolOf.end() && number > 100) {
        known = mToolOf.find(number / 100);
    }
    if (known == mToolOf.end() && number == 0) {
        return; // the tool goes back
    }
    if (known == mToolOf.end()) {
        // A remark may give its size; that of a router some programs never specify.
        const size_t tool = add({QStringLiteral("T%1").arg(number), number, mAt.line, 0, {}, {},
            mComments.attributes().ofTool()});
        known = mToolOf.emplace(number, tool).first;
    }
    mCanvas.select(known->second, mComments.selectedPlating());
}

void ExcellonTools::selectNext()
{
    const std::vector<int>& order = mComments.remarkOrder();
    if (mNext == order.size()) {
        mAt.fail(BoardText::tr("no comment tells the size of the tool that follows the stop"));
    }
    select(order[mNext++]);
}

void ExcellonTools::finish(std::optional<Units> units)
{
    for (size_t i = 0; i < mCanvas.tools().size(); ++i) {
        DrillTool& tool = mCanvas.tool(i);
        tool.units = tool.units ? tool.units : units;
        tool.facts.complete(mComments.factsOf(tool.number));
        tool.bit = mComments.bit(tool.number);
        if (const ToolRemark* remark = mComments.remark(tool.number)) {
            if (remark->quantity >= 0) {
                tool.specifiedHits = remark->quantity;
            }
            take(tool, *remark);
            compare(i, *remark, BoardText::tr("a comment"));
        }
        const auto listed = mListed.tools.find(tool.number);
        if (listed != mListed.tools.end()) {
            noteListed(i, listed->second);
            take(tool, listed->second);
            compare(i, listed->second, mListed.list);
        }
    }
}

/** What the tool does not have yet. */
void ExcellonTools::take(DrillTool& tool, const ToolRemark& remark)
{
    if (tool.diameter == 0 && remark.size > 0) {
        tool.units = Units::Metric;
        tool.diameter = remark.size / sizePerMillimetre;
    }
    if (!tool.tolerance && remark.tolerance && tool.units) {
        const double unit = brox::sizeOf(*tool.units);
        tool.tolerance = {remark.tolerance->plus / unit, remark.tolerance->minus / unit};
    }
    tool.facts.plated = tool.facts.plated ? tool.facts.plated : remark.facts.plated;
}

void ExcellonTools::noteListed(size_t index, const ToolRemark& remark)
{
    const DrillTool& tool = mCanvas.tool(index);
    const QStringList names{tool.name, mListed.list};
    if (mCanvas.hits(index) == 0) {
        return;
    }
    if (tool.diameter == 0 && remark.size > 0) {
        mNotes.add(QT_TRANSLATE_NOOP("BoardText", "the size of %1 is that of %2"), names);
    }
    if (!tool.tolerance && remark.tolerance && tool.units) {
        mNotes.add(QT_TRANSLATE_NOOP("BoardText", "the tolerance of %1 is that of %2"), names);
    }
    if (!tool.facts.plated && remark.facts.plated) {
        mNotes.add(QT_TRANSLATE_NOOP("BoardText", "the plating of %1 is that of %2"), names);
    } else if (remark.facts.plated && tool.facts.plated != remark.facts.plated) {
        mNotes.add(*tool.facts.plated
                ? QT_TRANSLATE_NOOP("BoardText", "%1 is plated, but not by %2")
                : QT_TRANSLATE_NOOP("BoardText", "%1 is not plated, but is by %2"),
            names);
    }
}

void ExcellonTools::compare(size_t index, const ToolRemark& remark, const QString& by)
{
    const DrillTool& tool = mCanvas.tool(index);
    const qint64 hits = mCanvas.hits(index);
    constexpr Size tolerance = sizePerMil / 2; // diameters may be rounded
    const Size size = hits > 0 ? mCanvas.sizeOf(tool) : 0;
    if (remark.size > 0 && size > 0 && std::abs(size - remark.size) > tolerance) {
        mNotes.add(QT_TRANSLATE_NOOP("BoardText", "%1 has %2 mm where %3 tells %4 mm"),
            {tool.name, QString::number(double(size) / sizePerMillimetre), by,
                QString::number(remark.size / sizePerMillimetre)});
    }
    if (remark.quantity >= 0 && hits != remark.quantity) {
        mNotes.add(QT_TRANSLATE_NOOP("BoardText", "%1 drills %2 holes where %3 tells %4"),
            {tool.name, QString::number(hits), by, QString::number(remark.quantity)});
    }
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
