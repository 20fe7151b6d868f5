// SPDX-License-Identifier: MIT
#include "tool_list.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>

namespace brox {

namespace {

QRegularExpression pattern(const char* text)
{
    return QRegularExpression(QLatin1String(text),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::MultilineOption);
}

/** The lists of a program: by a line that only they have, and the facts in them. What a group of a
 *  pattern is called is what it means:
 *
 *  begin         a new section, of other files
 *  file          a drill file that the section is about
 *  from, to      the layers that its holes begin and end at
 *  before, after digits of numbers
 *  units         of places; coordinates: absolute or incremental
 *  leftOut       the zeros that are
 *  sizes         the unit of sizes that stand without one
 *  tool, size, unit, plus, minus, both, hits, plating: a tool's; tolerances to one side or both
 */
struct Kind
{
    QRegularExpression mark;
    std::vector<QRegularExpression> facts;
    double inchUnit = 0; ///< of sizes without a unit where places are in inches; 0: none is meant
};

const std::vector<Kind>& kinds()
{
    static const std::vector<Kind> all{
        {pattern(R"(^ *Drill Station Info File:)"), // EAGLE
            {pattern(R"(coordinate format (?<before>\d)\.(?<after>\d) +(?<units>inch|mm)\b)"),
                pattern(
                    R"(^ *T(?<tool>\d{1,6}) +(?<size>[.\d]+) *(?<unit>inch|mm|mil)[ \t]+(?<hits>\d+))"),
                pattern(R"(^ *Plotfiles:\s+(?<file>\S.*?) *$)")}},
        {pattern(R"(^ *NCDrill File Report For:)"), // Altium, Protel
            {pattern(R"(^ *(?<begin>Layer Pair) *: *(?<from>.+?) +to +(?<to>.+?) *$)"),
                pattern(R"(^ *ASCII\b[^:\n]*\bFile *: *(?<file>\S.*?) *$)"),
                pattern(
                    R"(^ *T(?<tool>\d{1,6})[ \t]+(?<size>[.\d]+) *(?<unit>mm|mils?|inch)\b)"
                    R"((?: *\([^)\n]*\))?)"
                    R"((?:\s+\+ */ *-(?<both>[.\d]+)|\s+\+(?<plus>[.\d]+)[^-\n]*-(?<minus>[.\d]+))?)"
                    R"([^\n]*?[ \t](?<hits>\d+)(?:[ \t]+(?<plating>N?PTH)\b)?(?:\s|$))")}},
        {pattern(R"(^ *INTEGER-PLACES\b|\bNC DRILL Log\b|^ *Size +Plating +Tool\b)"), // Allegro
            {pattern(R"(^ *INTEGER-PLACES +(?<before>\d)\b)"),
                pattern(R"(^ *DECIMAL-PLACES +(?<after>\d)\b)"),
                pattern(R"(^ *FORMAT +(?<before>\d)\.(?<after>\d)\b)"),
                pattern(R"(^ *OUTPUT-UNITS +(?<units>\w+))"),
                pattern(R"(^ *COORDINATES +(?<coordinates>\w+))"),
                pattern(R"(^ *SUPPRESS-(?<leftOut>LEAD|TRAIL)-ZEROES +YES\b)"),
                pattern(R"(^ *(?<size>\d+\.\d+)[ \t]+(?<plating>[PN])\w*[ \t]+T(?<tool>\d{1,6})\b)"
                        R"((?:[ \t]+(?<plus>[.\d]+)[ \t]+(?<minus>[.\d]+))?)")},
            sizePerMil},
        {pattern(R"(\* +DRILL LIST +\*)"), // Zuken
            {pattern(R"(^ *(?<begin>Output Data) *: *(?<file>\S.*?) *$)"),
                pattern(R"(^ *Coordinate Format *: *(?<before>\d)V(?<after>\d))"),
                pattern(R"(^ *Zero Suppress *: *(?<leftOut>Lead|Trail))"),
                pattern(R"(^ *Unit *: *(?<units>(?<sizes>\w+)))"),
                pattern(R"(^ *Inc\. / Abs\. *: *(?<coordinates>\w+))"),
                pattern(R"(^ *From-To *: *(?<from>\d+) *(?:-|to) *(?<to>\d+))"),
                pattern(
                    R"(^\| *\d+ *\| *\w+ *\| *T(?<tool>\d{1,6}) *\| *\w+ *\| *(?<size>\d*\.\d+) *\|)"
                    R"((?:.*\| *(?<plating>(?:Non[-_ ]?)?Plated) *\|)?)")}},
        // A table with headings: FAB 3000, OrCAD, PADS, Xpedition and others.
        {pattern(R"(\bNC Tools Report\b|^(?>.*?\bTool\b).*\b(?:Size|Diam\w*)\b)"),
            {pattern(R"(^ *Units? *: *(?<sizes>\w+))"),
                pattern(R"(\b(?:Size|Diam\w*) *[\[(](?<sizes>inch|in|mil|mm)\w*[\])])"),
                pattern(R"(^ *T?(?<tool>\d{1,6})[ \t]+(?<size>\d*\.\d+) *(?<unit>mm|mils?|inch)?\b)"
                        R"((?:.*\s(?<plating>N?PTH|(?:Non[-_ ]?)?Plated)\b)?)")}}};
    return all;
}

const Kind* kindOf(const QString& text)
{
    const auto found = std::ranges::find_if(
        kinds(), [&](const Kind& kind) { return kind.mark.match(text).hasMatch(); });
    return found == kinds().end() ? nullptr : &*found;
}

/** Without lines that no list has and patterns would take long for. */
QString textOf(QByteArrayView content)
{
    static const QRegularExpression longLine = pattern(R"(^.{300,}$)");
    const QByteArrayView some = content.first(qMin(content.size(), maxListSize));
    return QString::fromUtf8(some).remove('\r').remove(longLine);
}

/** In order of appearance. */
std::vector<QRegularExpressionMatch> factsOf(const Kind& kind, const QString& text)
{
    std::vector<QRegularExpressionMatch> facts;
    for (const QRegularExpression& fact : kind.facts) {
        for (auto match = fact.globalMatch(text); match.hasNext();) {
            facts.push_back(match.next());
        }
    }
    std::ranges::stable_sort(facts, {}, [](const auto& fact) { return fact.capturedStart(); });
    return facts;
}

/** The last part of a path of whatever system. */
QString fileName(const QString& path)
{
    return path.sliced(std::max(path.lastIndexOf('/'), path.lastIndexOf('\\')) + 1);
}

QString withoutSuffix(const QString& file)
{
    return QFileInfo(file.toLower()).completeBaseName();
}

void complete(NumberFormat& format, const NumberFormat& other)
{
    format.units = format.units ? format.units : other.units;
    format.digits = format.digits ? format.digits : other.digits;
    format.zeros = format.zeros ? format.zeros : other.zeros;
}

} // namespace

bool isToolList(QByteArrayView beginning)
{
    const QString text = textOf(beginning);
    const Kind* kind = kindOf(text);
    const auto saysMuch = [](const QRegularExpressionMatch& fact) {
        return fact.hasCaptured(u"tool") || fact.hasCaptured(u"before")
            || fact.hasCaptured(u"after");
    };
    return kind && std::ranges::any_of(factsOf(*kind, text), saysMuch);
}

void ToolLists::add(QByteArrayView content, const QString& name)
{
    const QString text = textOf(content);
    const Kind* kind = kindOf(text);
    if (!kind) {
        return;
    }
    Section section;
    section.list = fileName(name);
    section.stems << withoutSuffix(section.list);
    section.inchUnit = kind->inchUnit;
    const Section empty = section;
    for (const QRegularExpressionMatch& fact : factsOf(*kind, text)) {
        if (!fact.captured(u"begin").isEmpty()) {
            mSections.push_back(std::exchange(section, empty));
        }
        take(section, fact);
    }
    mSections.push_back(std::move(section));
}

void ToolLists::take(Section& section, const QRegularExpressionMatch& fact)
{
    const auto word = [&](QStringView group) { return fact.captured(group).toUpper(); };
    if (fact.hasCaptured(u"tool")) {
        takeTool(section, fact);
        return;
    }
    if (fact.hasCaptured(u"file")) {
        if (section.files.isEmpty()) {
            section.stems.clear();
        }
        section.files << fileName(fact.captured(u"file")).toLower();
        section.stems << withoutSuffix(section.files.last());
    }
    if (fact.hasCaptured(u"from")) {
        section.span = Span{fact.captured(u"from"), fact.captured(u"to")};
    }
    Digits digits = section.format.digits.value_or(Digits{});
    digits.before = fact.hasCaptured(u"before") ? word(u"before").toInt() : digits.before;
    digits.after = fact.hasCaptured(u"after") ? word(u"after").toInt() : digits.after;
    if (digits != Digits{}) {
        section.format.digits = digits;
    }
    if (fact.hasCaptured(u"units")) {
        const bool isMetric = word(u"units").startsWith('M');
        section.format.units = isMetric ? Units::Metric : Units::Inch;
    }
    if (fact.hasCaptured(u"leftOut")) {
        const bool isLeading = word(u"leftOut").startsWith('L');
        section.format.zeros = isLeading ? Zeros::Trailing : Zeros::Leading;
    }
    section.isIncremental = section.isIncremental || word(u"coordinates").startsWith(u"INC");
    if (fact.hasCaptured(u"sizes")) {
        section.unit = unitOf(word(u"sizes"));
    }
    if (fact.hasCaptured(u"plating")) {
        section.plated = !word(u"plating").startsWith('N');
    }
}

void ToolLists::takeTool(Section& section, const QRegularExpressionMatch& fact)
{
    double unit = fact.hasCaptured(u"unit") ? unitOf(fact.captured(u"unit")) : section.unit;
    section.hasBareSizes = unit == 0;
    if (section.hasBareSizes && section.inchUnit > 0) {
        unit = 1; // known when all lists are
    }
    const auto size = [&](QStringView group) { return fact.captured(group).toDouble() * unit; };
    ToolRemark remark;
    remark.size = size(u"size");
    const bool isSame = fact.hasCaptured(u"both");
    const ToldTolerance tolerance{
        size(isSame ? u"both" : u"plus"), size(isSame ? u"both" : u"minus")};
    if (tolerance.plus > 0 || tolerance.minus > 0) { // else nobody has set one
        remark.tolerance = tolerance;
    }
    if (fact.hasCaptured(u"hits")) {
        remark.quantity = fact.captured(u"hits").toLongLong();
    }
    remark.facts.plated = section.plated;
    if (fact.hasCaptured(u"plating")) {
        remark.facts.plated = !fact.captured(u"plating").startsWith('N', Qt::CaseInsensitive);
    }
    const auto [known, isNew] = section.tools.emplace(fact.captured(u"tool").toInt(), remark);
    if (!isNew && known->second.size != remark.size) { // of two files, and nobody knows which
        known->second = {};
    }
}

std::vector<const ToolLists::Section*> ToolLists::sectionsOf(
    const QString& drillFile, bool isOnly) const
{
    const auto those = [this](const auto& isMeant) {
        std::vector<const Section*> sections;
        for (const Section& section : mSections) {
            if (isMeant(section)) {
                sections.push_back(&section);
            }
        }
        return sections;
    };
    const QString name = fileName(drillFile).toLower();
    std::vector<const Section*> sections =
        those([&](const Section& section) { return section.files.contains(name); });
    if (sections.empty()) {
        const QString stem = withoutSuffix(name);
        sections = those([&](const Section& section) { return section.stems.contains(stem); });
        if (sections.size() > 1) {
            sections.clear();
        }
    }
    if (sections.empty() && isOnly) {
        sections = those([](const Section& section) { return section.files.isEmpty(); });
    }
    return sections;
}

ListedTools ToolLists::about(const QString& drillFile, bool isOnly) const
{
    ListedTools listed;
    const auto takeFormat = [&](const Section& section) {
        const bool isNew = !listed.format.units && !listed.format.digits && !listed.format.zeros;
        complete(listed.format, section.format);
        listed.isIncremental = listed.isIncremental || section.isIncremental;
        if (isNew) {
            listed.formatList = section.list;
        }
    };
    const std::vector<const Section*> sections = sectionsOf(drillFile, isOnly);
    std::ranges::for_each(sections, [&](const Section* section) { takeFormat(*section); });
    for (const Section& section : mSections) {
        if (section.files.isEmpty()) {
            takeFormat(section);
        }
    }
    for (const Section* section : sections) {
        listed.list =
            listed.list.isEmpty() && !section->tools.empty() ? section->list : listed.list;
        listed.span = listed.span ? listed.span : section->span;
        for (auto [number, remark] : section->tools) {
            if (section->hasBareSizes) {
                const double unit = !listed.format.units   ? 0
                    : listed.format.units == Units::Metric ? sizePerMillimetre
                                                           : section->inchUnit;
                remark.size *= unit;
                if (unit == 0) {
                    remark.tolerance.reset();
                } else if (remark.tolerance) {
                    remark.tolerance = {
                        remark.tolerance->plus * unit, remark.tolerance->minus * unit};
                }
            }
            listed.tools.emplace(number, remark);
        }
    }
    return listed;
}

} // namespace brox
