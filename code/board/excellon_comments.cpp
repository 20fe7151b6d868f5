// SPDX-License-Identifier: MIT
#include "excellon_comments.h"

#include <QRegularExpression>
#include <cmath>

namespace brox {

namespace {

constexpr auto caseless = QRegularExpression::CaseInsensitiveOption;

HoleType platingOf(const QString& word)
{
    return word.startsWith('N', Qt::CaseInsensitive) ? HoleType::NonPlated : HoleType::Plated;
}

/** Host sizes to a unit that a remark names. */
double unitOf(const QString& word)
{
    const QString unit = word.toUpper();
    if (unit.startsWith(QLatin1String("MM")) || unit.startsWith(QLatin1String("MILLIM"))) {
        return sizePerMillimetre;
    }
    if (unit.startsWith(QLatin1String("MIC"))) {
        return sizePerMicron;
    }
    return unit.startsWith(QLatin1String("IN")) ? sizePerInch : sizePerMil;
}

/** A number of a remark as a size; 0 for what no drill can have. */
Size sizeOf(const QString& number, double unit)
{
    const double size = std::round(number.toDouble() * unit);
    return size >= 0 && size < 1e9 ? Size(size) : 0;
}

} // namespace

void ExcellonComments::read(const QString& comment, ExcellonFormat& format)
{
    static const QRegularExpression type(
        QStringLiteral("^\\s*TYPE\\s*=\\s*(NON[-_ ]?PLATED|PLATED)\\b"), caseless);
    const QString text = comment.trimmed();
    if (text.startsWith(QLatin1String("#@!"))) {
        readAttribute(text.sliced(3).trimmed());
    } else if (const auto match = type.match(text); match.hasMatch()) {
        mSection = platingOf(match.captured(1));
    } else if (!readRemark(text, format) && !readRange(text) && !readWholeFile(text)) {
        readFormat(text, format);
    }
}

void ExcellonComments::endHeader()
{
    if (!mInBody) {
        mInBody = true;
        mSection.reset();
    }
}

void ExcellonComments::readAttribute(const QString& attribute)
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
    } else if (name == QLatin1String("TA.DRILLTOLERANCE") && !fields.isEmpty()) {
        // One number stands for both.
        bool isPlus = false;
        bool isMinus = false;
        const double plus = std::abs(fields.first().toDouble(&isPlus));
        const double minus = std::abs(fields.last().toDouble(&isMinus));
        mTolerance.reset();
        if (isPlus && isMinus && std::isfinite(plus) && std::isfinite(minus)) {
            mTolerance = {plus, minus};
        }
    } else if (name == QLatin1String("TD")) {
        mAttributes = {};
        mTolerance.reset();
    } else if (name == QLatin1String("TD.APERFUNCTION")) {
        mAttributes = {};
    } else if (name == QLatin1String("TD.DRILLTOLERANCE")) {
        mTolerance.reset();
    }
}

void ExcellonComments::readFileFunction(const QStringList& fields)
{
    if (fields.contains(QLatin1String("NONPLATED"))) {
        mFile.type = HoleType::NonPlated;
    } else if (fields.contains(QLatin1String("PLATED"))) {
        mFile.type = HoleType::Plated;
    } // of mixed plating the tools tell
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

void ExcellonComments::readAperFunction(const QStringList& fields)
{
    const auto has = [&](const char* field) { return fields.contains(QLatin1String(field)); };
    mAttributes = {};
    if (has("NONPLATED") || has("NPTH")) {
        mAttributes.type = HoleType::NonPlated;
    } else if (has("PLATED") || has("PTH")) {
        mAttributes.type = HoleType::Plated;
    }
    mAttributes.backDrill = has("BACKDRILL");
    if (mAttributes.type == HoleType::NonPlated) {
        mAttributes.functionTold = true;
    } else if (has("VIADRILL")) {
        mAttributes.type = HoleType::Via;
        mAttributes.functionTold = true;
    } else if (has("COMPONENTDRILL") || has("PRESSFIT") || has("COMPONENTPRESSFITDRILL")
        || has("CASTELLATEDDRILL")) {
        const bool pressFit = has("PRESSFIT") || has("COMPONENTPRESSFITDRILL");
        mAttributes.type = pressFit ? HoleType::PressFit : HoleType::Plated;
        mAttributes.functionTold = true;
    } else if (has("MECHANICALDRILL") && !mAttributes.type) {
        mAttributes.type = HoleType::NonPlated;
        mAttributes.functionTold = true;
    }
}

/** "T08 Holesize 8. = 128.000000 Tolerance = +5.000000/-5.000000 NON_PLATED MILS Quantity = 2" */
bool ExcellonComments::readRemark(const QString& comment, ExcellonFormat& format)
{
    static const QRegularExpression remark(
        QStringLiteral("^T(\\d{1,6})\\s+Holesize\\s+\\S+\\s*=\\s*([.\\d]+)"
                       "\\s+Tolerance\\s*=\\s*\\+([.\\d]+)\\s*/\\s*-([.\\d]+)"
                       "\\s+(?:(NON[-_ ]?PLATED|PLATED|OPTIONAL)\\s+)?([A-Z]+)"
                       "(?:\\s+Quantity\\s*=\\s*(\\d+))?"),
        caseless);
    const auto match = remark.match(comment);
    if (!match.hasMatch()) {
        return false;
    }
    const double unit = unitOf(match.captured(6));
    const bool inch = unit == sizePerMil || unit == sizePerInch;
    format.setLikelyUnits(inch ? Units::Inch : Units::Metric);
    ToolRemark told;
    told.size = sizeOf(match.captured(2), unit);
    const Tolerance tolerance{sizeOf(match.captured(4), unit), sizeOf(match.captured(3), unit)};
    if (tolerance != Tolerance{}) {
        told.tolerance = tolerance;
    }
    if (match.captured(5).contains(QLatin1String("PLATED"), Qt::CaseInsensitive)) {
        told.facts.type = platingOf(match.captured(5));
    }
    bool isNumber = false;
    const qint64 quantity = match.captured(7).toLongLong(&isNumber);
    told.quantity = isNumber ? quantity : -1;
    mRemarks[match.captured(1).toInt()] = told;
    return true;
}

/** "NON-PLATED HOLES START AT T1", "THROUGH (PLATED) HOLES START AT T100" */
bool ExcellonComments::readRange(const QString& comment)
{
    static const QRegularExpression range(
        QStringLiteral("\\b(NON[-_ ]?PLATED|PLATED)\\b.*START AT T(\\d{1,6})"), caseless);
    const auto match = range.match(comment);
    if (match.hasMatch()) {
        mRanges.emplace_back(match.captured(2).toInt(), platingOf(match.captured(1)));
    }
    return match.hasMatch();
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
        mFile.type = platingOf(match.captured(1));
        // Where files are named after what they go through, vias have files of their own.
        mFile.functionTold = !match.captured(2).isEmpty();
        if (match.captured(2).endsWith(QLatin1String("_Via"), Qt::CaseInsensitive)) {
            mFile.type = HoleType::Via;
            mFile.functionTold = true;
        }
        return true;
    }
    if (const auto match = contents.match(comment); match.hasMatch()) {
        mFile.type = platingOf(match.captured(1));
        return true;
    }
    return false;
}

/** "FILE_FORMAT=2:5", "FORMAT={3:3/ absolute / metric / suppress leading zeros}",
 *  "Format  : 2.4 / Absolute / Inch / Trailing" */
void ExcellonComments::readFormat(const QString& comment, ExcellonFormat& format)
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
    if (match.captured(1) != QLatin1String("-") && match.captured(2) != QLatin1String("-")) {
        format.setDigits(match.captured(1).toInt(), match.captured(2).toInt());
    }
    static const QRegularExpression unit(QStringLiteral("/\\s*(inch|metric|MM)\\b"), caseless);
    if (const auto told = unit.match(comment); told.hasMatch()) {
        const bool inch = told.captured(1).startsWith('i', Qt::CaseInsensitive);
        format.setFallbackUnits(inch ? Units::Inch : Units::Metric);
    }
    static const QRegularExpression leftOut(
        QStringLiteral("(?:suppress|/)\\s*(leading|trailing)\\b"), caseless);
    if (const auto told = leftOut.match(comment); told.hasMatch()) {
        const bool leading = told.captured(1).startsWith('l', Qt::CaseInsensitive);
        format.setZeros(
            leading ? ExcellonFormat::Zeros::TrailingKept : ExcellonFormat::Zeros::LeadingKept);
    } else if (comment.contains(QLatin1String("keep zeros"), Qt::CaseInsensitive)) {
        format.setZeros(ExcellonFormat::Zeros::AllKept);
    }
}

const ToolRemark* ExcellonComments::remark(int number) const
{
    const auto found = mRemarks.constFind(number);
    return found == mRemarks.constEnd() ? nullptr : &*found;
}

HoleFacts ExcellonComments::fallback(int number, const QString& fileName) const
{
    // The range with the highest beginning that the number reaches.
    const std::pair<int, HoleType>* range = nullptr;
    for (const auto& known : mRanges) {
        if (known.first <= number && (!range || known.first >= range->first)) {
            range = &known;
        }
    }
    if (range) {
        return {range->second, false, false};
    }
    if (mFile.type) {
        return mFile;
    }
    static const QRegularExpression unplated(
        QStringLiteral("npth|non[-_ ]?plated|unplated"), caseless);
    static const QRegularExpression plated(
        QStringLiteral("(?<![a-z])pth(?![a-z])|(?<![a-z])plated"), caseless);
    if (fileName.contains(unplated)) {
        return {HoleType::NonPlated, false, false};
    }
    if (fileName.contains(plated)) {
        return {HoleType::Plated, false, false};
    }
    return {};
}

} // namespace brox
