// SPDX-License-Identifier: MIT
#include "excellon_tools.h"

#include <QRegularExpression>
#include <cmath>

namespace brox {

namespace {

constexpr size_t maxTools = 1000;
constexpr auto caseless = QRegularExpression::CaseInsensitiveOption;

bool isPlated(const QString& word)
{
    return !word.startsWith('N', Qt::CaseInsensitive);
}

} // namespace

void ExcellonComments::read(const QString& comment, NumberReader& numbers)
{
    static const QRegularExpression type(
        QStringLiteral("^\\s*TYPE\\s*=\\s*(NON[-_ ]?PLATED|PLATED)\\b"), caseless);
    constexpr qsizetype fewestLetters = 5; // "#@!TD"
    const QString text = comment.trimmed();
    if (text.size() < fewestLetters) {
        return;
    }
    if (text.startsWith(QLatin1String("#@!"))) {
        mAttributes.read(text.sliced(3).trimmed());
    } else if (const auto match = type.match(text); match.hasMatch()) {
        mSection = isPlated(match.captured(1));
    } else if (!readRemark(text, numbers) && !readRange(text) && !readDrillSizes(text)
        && !readWholeFile(text)) {
        readFormat(text, numbers);
    }
}

void ExcellonComments::endHeader()
{
    if (!mInBody) {
        mInBody = true;
        mSection.reset();
    }
}

HoleFacts ExcellonComments::definedFacts() const
{
    HoleFacts facts = mAttributes.ofTool();
    if (!mInBody && !facts.plated) {
        facts.plated = mSection;
    }
    return facts;
}

/** "T08 Holesize 8. = 128.000000 Tolerance = +5.000000/-5.000000 NON_PLATED MILS Quantity = 2",
 *  perhaps without the number of the tool. */
bool ExcellonComments::readRemark(const QString& comment, NumberReader& numbers)
{
    static const QRegularExpression remark(
        QStringLiteral("^(?:T(\\d{1,6})\\s+)?Holesize\\s+(\\d{1,6})\\.?\\s*=\\s*([.\\d]+)"
                       "(?:\\s+Tolerance\\s*=\\s*\\+([.\\d]+)\\s*/\\s*-([.\\d]+))?"
                       "\\s+(?:(NON[-_ ]?PLATED|PLATED|OPTIONAL)\\s+)?([A-Z]+)"
                       "(?:\\s+Quantity\\s*=\\s*(\\d+))?"),
        caseless);
    const auto match = remark.match(comment);
    if (!match.hasMatch()) {
        return false;
    }
    const double unit = unitOf(match.captured(7));
    const bool inch = unit == sizePerMil || unit == sizePerInch;
    numbers.tell({inch ? Units::Inch : Units::Metric, {}, {}}, Origin::Guess);
    ToolRemark told;
    told.size = match.captured(3).toDouble() * unit;
    told.tolerance = {match.captured(4).toDouble() * unit, match.captured(5).toDouble() * unit};
    if (match.captured(6).contains(QLatin1String("PLATED"), Qt::CaseInsensitive)) {
        told.facts.plated = isPlated(match.captured(6));
    }
    bool isNumber = false;
    const qint64 quantity = match.captured(8).toLongLong(&isNumber);
    told.quantity = isNumber ? quantity : -1;
    const int number = match.captured(match.captured(1).isEmpty() ? 2 : 1).toInt();
    if (!mRemarks.contains(number)) {
        mOrder.push_back(number);
    }
    mRemarks[number] = told;
    return true;
}

/** "NON-PLATED HOLES START AT T1", "THROUGH (PLATED) HOLES START AT T100" */
bool ExcellonComments::readRange(const QString& comment)
{
    static const QRegularExpression range(
        QStringLiteral("\\b(NON[-_ ]?PLATED|PLATED)\\b.*START AT T(\\d{1,6})"), caseless);
    const auto match = range.match(comment);
    if (match.hasMatch()) {
        mRanges[match.captured(2).toInt()] = isPlated(match.captured(1));
    }
    return match.hasMatch();
}

/** "SIZES ARE DRILL SIZES, NOT FINISHED SIZES: do not add plating to them again",
 *  "T01 drill 0.350 mm, bit 0.35, hits 96" */
bool ExcellonComments::readDrillSizes(const QString& comment)
{
    static const QRegularExpression sizes(
        QStringLiteral("\\b(?:sizes|diameters) are (?:the )?(?:drill|drilled|tool) "
                       "(?:sizes|diameters)\\b|\\b(?:drill|drilled|tool) (?:sizes|diameters),? "
                       "not finished\\b"),
        caseless);
    static const QRegularExpression bit(
        QStringLiteral("^T(\\d{1,6}) drill \\S+ (?:mm|inch), bit (.+), (?:hits|slots) \\d"));
    if (const auto match = bit.match(comment); match.hasMatch()) {
        mBits[match.captured(1).toInt()] = match.captured(2);
        return true;
    }
    const bool isMatch = comment.contains(sizes);
    mHasDrillSizes = mHasDrillSizes || isMatch;
    return isMatch;
}

/** "Layer: PTH_Through_Via", "Layer: Drill NPTH", "Contents: Thru / Drill / Non-Plated" */
bool ExcellonComments::readWholeFile(const QString& comment)
{
    static const QRegularExpression layer(
        QStringLiteral("^Layer\\s*:\\s*(?:.*[^A-Z])?(NPTH|PTH)((?:_[A-Z\\d]+)*)(?![A-Z])"),
        caseless);
    static const QRegularExpression contents(
        QStringLiteral("^Contents\\s*:.*/\\s*(Non[-_ ]?Plated|Plated)\\s*$"), caseless);
    if (const auto match = layer.match(comment); match.hasMatch()) {
        mFile.plated = isPlated(match.captured(1));
        // Where files are named after what they go through, vias have files of their own.
        const bool isVia = match.captured(2).endsWith(QLatin1String("_Via"), Qt::CaseInsensitive);
        if (!match.captured(2).isEmpty()) {
            mFile.use = isVia ? HoleFacts::Use::Via : HoleFacts::Use::Other;
        }
        return true;
    }
    if (const auto match = contents.match(comment); match.hasMatch()) {
        mFile.plated = isPlated(match.captured(1));
        return true;
    }
    return false;
}

/** "FILE_FORMAT=2:5", "FORMAT={3:3/ absolute / metric / suppress leading zeros}",
 *  "Format  : 2.4 / Absolute / Inch / Trailing" */
void ExcellonComments::readFormat(const QString& comment, NumberReader& numbers)
{
    static const QRegularExpression digits(
        QStringLiteral("\\bFORMAT\\s*[=:]\\s*\\{?\\s*([-\\d])\\s*[:.]\\s*([-\\d])"), caseless);
    static const QRegularExpression fileFormat(
        QStringLiteral("FILE_FORMAT\\s*[=:]\\s*(\\d)\\s*[:.]\\s*(\\d)"), caseless);
    auto match = fileFormat.match(comment);
    if (!match.hasMatch()) {
        match = digits.match(comment);
    }
    if (!match.hasMatch()) {
        return;
    }
    NumberFormat told;
    if (match.captured(1) != QLatin1String("-") && match.captured(2) != QLatin1String("-")) {
        told.digits = Digits{match.captured(1).toInt(), match.captured(2).toInt()};
    }
    static const QRegularExpression unit(QStringLiteral("/\\s*(inch|metric|MM)\\b"), caseless);
    if (const auto named = unit.match(comment); named.hasMatch()) {
        const bool inch = named.captured(1).startsWith('i', Qt::CaseInsensitive);
        told.units = inch ? Units::Inch : Units::Metric;
    }
    static const QRegularExpression leftOut(
        QStringLiteral("(?:suppress|/)\\s*(leading|trailing)\\b"), caseless);
    if (const auto named = leftOut.match(comment); named.hasMatch()) {
        const bool leading = named.captured(1).startsWith('l', Qt::CaseInsensitive);
        told.zeros = leading ? Zeros::Trailing : Zeros::Leading;
    } else if (comment.contains(QLatin1String("keep zeros"), Qt::CaseInsensitive)) {
        told.zeros = Zeros::Trailing;
    }
    numbers.tell(told, Origin::Comment);
}

const ToolRemark* ExcellonComments::remark(int number) const
{
    const auto found = mRemarks.constFind(number);
    return found == mRemarks.constEnd() ? nullptr : &*found;
}

HoleFacts ExcellonComments::factsOf(int number) const
{
    HoleFacts facts;
    if (const ToolRemark* told = remark(number)) {
        facts = told->facts;
    }
    // The range with the highest beginning that the number reaches.
    const auto range = mRanges.upper_bound(number);
    if (range != mRanges.begin() && !facts.plated) {
        facts.plated = std::prev(range)->second;
    }
    facts.complete(mFile);
    facts.complete(mAttributes.ofFile());
    return facts;
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
        mAt.fail(BoardText::tr("no comment specifies the size of the tool that follows the stop"));
    }
    select(order[mNext++]);
}

/** What a list has said of the numbers, and where they are read otherwise. */
void ExcellonTools::noteListed(const NumberReader& numbers)
{
    const NumberFormat read = numbers.format();
    const NumberFormat& listed = mListed.format;
    if (numbers.uses(Origin::List)) {
        mNotes.add(QT_TRANSLATE_NOOP("BoardText", "its numbers are read as %1, by %2"),
            {textOf(read), mListed.formatList});
    }
    if (mListed.isIncremental) {
        mNotes.add(QT_TRANSLATE_NOOP("BoardText", "its places are incremental, by %1"),
            {mListed.formatList});
    }
    const auto differ = [](const auto& a, const auto& b) { return a && b && *a != *b; };
    const bool hasBare = numbers.longest() > 0; // numbers without a point
    if (differ(read.units, listed.units) || (hasBare && differ(read.digits, listed.digits))
        || (hasBare && differ(read.zeros, listed.zeros))) {
        mNotes.add(
            QT_TRANSLATE_NOOP("BoardText", "its numbers are read as %1 where %2 specifies %3"),
            {textOf(read), mListed.formatList, textOf(listed)});
    }
}

void ExcellonTools::finish(const NumberReader& numbers)
{
    noteListed(numbers);
    for (size_t i = 0; i < mCanvas.tools().size(); ++i) {
        DrillTool& tool = mCanvas.tool(i);
        tool.units = tool.units ? tool.units : numbers.units();
        tool.facts.complete(mComments.factsOf(tool.number));
        tool.bit = mComments.bit(tool.number);
        if (const ToolRemark* remark = mComments.remark(tool.number)) {
            if (remark->quantity >= 0) {
                tool.specifiedHits = remark->quantity;
            }
            take(i, *remark, {});
            compare(i, *remark, BoardText::tr("a comment"));
        }
        const auto listed = mListed.tools.find(tool.number);
        if (listed != mListed.tools.end()) {
            take(i, listed->second, mListed.list);
            compare(i, listed->second, mListed.list);
        }
    }
}

/** What the tool does not have yet, with notes if it is that of a list. */
void ExcellonTools::take(size_t index, const ToolRemark& remark, const QString& list)
{
    DrillTool& tool = mCanvas.tool(index);
    const auto note = [&](const char* kind) {
        if (!list.isEmpty() && mCanvas.hits(index) > 0) {
            mNotes.add(kind, {tool.name, list});
        }
    };
    if (tool.diameter == 0 && remark.size > 0) {
        note(QT_TRANSLATE_NOOP("BoardText", "the size of %1 is that of %2"));
        tool.units = Units::Metric;
        tool.diameter = remark.size / sizePerMillimetre;
    }
    if (!tool.tolerance && remark.tolerance && tool.units) {
        note(QT_TRANSLATE_NOOP("BoardText", "the tolerance of %1 is that of %2"));
        const double unit = brox::sizeOf(*tool.units);
        tool.tolerance = {remark.tolerance->plus / unit, remark.tolerance->minus / unit};
    }
    if (!tool.facts.plated && remark.facts.plated) {
        note(QT_TRANSLATE_NOOP("BoardText", "the plating of %1 is that of %2"));
        tool.facts.plated = remark.facts.plated;
    } else if (remark.facts.plated && tool.facts.plated != remark.facts.plated) {
        note(*tool.facts.plated ? QT_TRANSLATE_NOOP("BoardText", "%1 is plated, but not by %2")
                                : QT_TRANSLATE_NOOP("BoardText", "%1 is not plated, but is by %2"));
    }
}

void ExcellonTools::compare(size_t index, const ToolRemark& remark, const QString& by)
{
    const DrillTool& tool = mCanvas.tool(index);
    const qint64 hits = mCanvas.hits(index);
    constexpr Size tolerance = sizePerMil / 2; // diameters may be rounded
    const Size size = hits > 0 ? mCanvas.sizeOf(tool) : 0;
    if (remark.size > 0 && size > 0 && std::abs(size - remark.size) > tolerance) {
        mNotes.add(QT_TRANSLATE_NOOP("BoardText", "%1 has %2 mm where %3 says %4 mm"),
            {tool.name, QString::number(double(size) / sizePerMillimetre), by,
                QString::number(remark.size / sizePerMillimetre)});
    }
    if (remark.quantity >= 0 && hits != remark.quantity) {
        mNotes.add(QT_TRANSLATE_NOOP("BoardText", "holes of %1: %2 where %3 says %4"),
            {tool.name, QString::number(hits), by, QString::number(remark.quantity)});
    }
}

} // namespace brox
