// SPDX-License-Identifier: MIT
#include "drill_comments.h"

#include <QRegularExpression>
#include <cmath>

namespace brox {

namespace {

constexpr auto caseless = QRegularExpression::CaseInsensitiveOption;

bool isPlated(const QString& word)
{
    return !word.startsWith('N', Qt::CaseInsensitive);
}

} // namespace

double unitOf(const QString& name)
{
    const QString unit = name.toUpper();
    if (unit.startsWith(QLatin1String("MM")) || unit.startsWith(QLatin1String("MILLIM"))) {
        return sizePerMillimetre;
    }
    if (unit.startsWith(QLatin1String("MIC"))) {
        return sizePerMicron;
    }
    return unit.startsWith(QLatin1String("IN")) ? sizePerInch : sizePerMil;
}

void HoleFacts::complete(const HoleFacts& other)
{
    plated = plated ? plated : other.plated;
    use = use != Use::Unknown ? use : other.use;
    isBackDrill = isBackDrill || other.isBackDrill;
}

HoleType HoleFacts::type() const
{
    // Without any hint a hole counts as plated: most are. It is a guess, and marked as one.
    if (!plated.value_or(use != Use::Mechanical)) {
        return HoleType::NonPlated;
    }
    return use == Use::Via     ? HoleType::Via
        : use == Use::PressFit ? HoleType::PressFit
                               : HoleType::Plated;
}

void HoleAttributes::read(const QString& attribute)
{
    QStringList fields = attribute.split(',');
    for (QString& field : fields) {
        field = field.trimmed().remove('*').toUpper();
    }
    const QString name = fields.takeFirst();
    if (name == QLatin1String("TF.FILEFUNCTION")) {
        readFileFunction(fields);
    } else if (name == QLatin1String("TA.APERFUNCTION")) {
        readAperFunction(fields);
    } else if (name == QLatin1String("TA.DRILLTOLERANCE")) {
        readTolerance(fields);
    }
    const bool all = name == QLatin1String("TD");
    if (all || name == QLatin1String("TD.APERFUNCTION")) {
        mTool = {};
    }
    if (all || name == QLatin1String("TD.DRILLTOLERANCE")) {
        mTolerance.reset();
    }
}

void HoleAttributes::readFileFunction(const QStringList& fields)
{
    if (fields.contains(QLatin1String("NONPLATED"))) {
        mFile.plated = false;
    } else if (fields.contains(QLatin1String("PLATED"))) {
        mFile.plated = true;
    } // of mixed plating the tools specify it
    QStringList layers;
    for (const QString& field : fields) {
        bool isNumber = false;
        field.toInt(&isNumber);
        if (isNumber) {
            layers << field;
        }
    }
    if (layers.size() == 2) {
        mSpan = Span{layers[0], layers[1]};
    }
}

void HoleAttributes::readAperFunction(const QStringList& fields)
{
    using Use = HoleFacts::Use;
    static const std::pair<const char*, Use> uses[] = {{"VIADRILL", Use::Via},
        {"PRESSFIT", Use::PressFit}, {"COMPONENTPRESSFITDRILL", Use::PressFit},
        {"COMPONENTDRILL", Use::Other}, {"CASTELLATEDDRILL", Use::Other},
        {"MECHANICALDRILL", Use::Mechanical}};
    const auto has = [&](const char* field) { return fields.contains(QLatin1String(field)); };
    mTool = {};
    if (has("NONPLATED") || has("NPTH")) {
        mTool.plated = false;
    } else if (has("PLATED") || has("PTH")) {
        mTool.plated = true;
    }
    mTool.isBackDrill = has("BACKDRILL");
    for (const auto& [field, use] : uses) {
        if (mTool.use == Use::Unknown && has(field)) {
            mTool.use = use;
        }
    }
}

/** One number stands for both. */
void HoleAttributes::readTolerance(const QStringList& fields)
{
    bool isPlus = false;
    bool isMinus = false;
    const double plus = std::abs(fields.value(0).toDouble(&isPlus));
    const double minus = std::abs(fields.value(fields.size() - 1).toDouble(&isMinus));
    mTolerance.reset();
    if (isPlus && isMinus && std::isfinite(plus) && std::isfinite(minus)) {
        mTolerance = {plus, minus};
    }
}

HoleFacts factsOfName(const QString& fileName)
{
    static const QRegularExpression unplated(
        QStringLiteral("npth|non[-_ ]?plated|unplated"), caseless);
    static const QRegularExpression plated(
        QStringLiteral("(?<![a-z])pth(?![a-z])|(?<![a-z])plated"), caseless);
    HoleFacts facts;
    static const QRegularExpression vias(QStringLiteral("(?<![a-z])vias?(?:\\.[^.]*)?$"), caseless);
    if (fileName.contains(vias)) {
        facts.use = HoleFacts::Use::Via;
    }
    if (fileName.contains(unplated)) {
        facts.plated = false;
    } else if (fileName.contains(plated)) {
        facts.plated = true;
    }
    return facts;
}

void ExcellonComments::read(const QString& comment, NumberReader& numbers)
{
    static const QRegularExpression type(
        QStringLiteral("^\\s*TYPE\\s*=\\s*(NON[-_ ]?PLATED|PLATED)\\b"), caseless);
    const QString text = comment.trimmed();
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

} // namespace brox
