// SPDX-License-Identifier: MIT
#include "comparison_text.h"

#include "plan_text.h"
#include "text_table.h"

#include <QLocale>
#include <algorithm>
#include <cmath>

namespace brox {

namespace {

constexpr size_t placesOfLine = 3;
constexpr size_t placesOfJson = 10;

/** The words of one tongue, in some units. */
class Words
{
public:
    explicit Words(Tongue tongue, Units units = Units::Metric)
        : mUnits(units)
        , mTongue(tongue)
    { }

    QString operator()(const char* text) const { return say(text); }
    QString word(const QString& word) const { return say(word.toUtf8().constData()); }
    QString number(qint64 number) const
    {
        return mTongue == Tongue::User ? QLocale().toString(number) : QString::number(number);
    }
    QString holes(qint64 count) const
    {
        return counted(count, QT_TRANSLATE_NOOP("PlanText", "%1 hole"),
            QT_TRANSLATE_NOOP("PlanText", "%1 holes"));
    }
    QString slotPaths(qint64 count) const
    {
        return counted(count, QT_TRANSLATE_NOOP("PlanText", "%1 slot"),
            QT_TRANSLATE_NOOP("PlanText", "%1 slots"));
    }
    QString size(Size size) const { return sizeText(size, mUnits); }
    QString withUnit(const QString& sizes) const
    {
        return sizes + ' ' + (mUnits == Units::Inch ? say("mil") : say("micron"));
    }
    QString place(Place place) const { return size(place.x) + ", " + size(place.y); }

    QString plating(const ComparedTool& tool) const
    {
        return tool.isPlated ? say(QT_TRANSLATE_NOOP("PlanText", "plated"))
                             : say(QT_TRANSLATE_NOOP("PlanText", "non-plated"));
    }

    /** "800 micron, plated"; a slot by its width. */
    QString tool(const ComparedTool& tool) const
    {
        const QString size = withUnit(this->size(tool.size));
        return tool.isSlot
            ? say(QT_TRANSLATE_NOOP("PlanText", "slot %1 wide, %2")).arg(size, plating(tool))
            : QStringLiteral("%1, %2").arg(size, plating(tool));
    }

    QString change(const QString& from, const QString& to) const
    {
        return say(QT_TRANSLATE_NOOP("PlanText", "%1 to %2")).arg(from, to);
    }

    QString tolerance(const ComparedTool& tool) const
    {
        const Tolerance tolerance = tool.tolerance.value_or(Tolerance{});
        return QStringLiteral("-%1/+%2").arg(size(tolerance.minus), size(tolerance.plus));
    }

private:
    QString say(const char* text) const
    {
        return mTongue == Tongue::User ? PlanText::tr(text) : QString::fromUtf8(text);
    }
    QString counted(qint64 count, const char* one, const char* many) const
    {
        return say(count == 1 ? one : many).arg(number(count));
    }

    Units mUnits;
    Tongue mTongue;
};

QString spanText(const ComparedTool& tool)
{
    return tool.span ? QStringLiteral("%1-%2").arg(tool.span->from, tool.span->to) : QString();
}

/** All by one way, or how far at most. */
QString moveText(const BoardDifference& difference, const Words& words)
{
    double farthest = 0;
    bool isOneWay = true;
    const auto wayOf = [&](size_t i) {
        return Place{Size(qint64(difference.movedTo[i].x) - difference.places[i].x),
            Size(qint64(difference.movedTo[i].y) - difference.places[i].y)};
    };
    for (size_t i = 0; i < difference.places.size(); ++i) {
        const Place way = wayOf(i);
        farthest = std::max(farthest, std::hypot(double(way.x), double(way.y)));
        isOneWay = isOneWay && std::abs(way.x - wayOf(0).x) <= sizePerMicron
            && std::abs(way.y - wayOf(0).y) <= sizePerMicron;
    }
    return isOneWay
        ? words(QT_TRANSLATE_NOOP("PlanText", "by %1")).arg(words.withUnit(words.place(wayOf(0))))
        : words(QT_TRANSLATE_NOOP("PlanText", "by up to %1"))
              .arg(words.withUnit(words.size(Size(farthest))));
}

QString resizeText(const BoardDifference& difference, const Words& words)
{
    QStringList parts;
    const QString before = words.size(difference.from->size);
    const QString after = words.size(difference.to->size);
    if (before != after) {
        parts << words.withUnit(words.change(before, after));
    }
    // A slot reaches by half its width beyond both ends of its middle.
    const QString shortest = words.size(difference.lengthBefore + difference.from->size);
    const QString longest = words.size(difference.lengthAfter + difference.to->size);
    if (difference.lengthBefore != difference.lengthAfter && shortest != longest) {
        parts << words(QT_TRANSLATE_NOOP("PlanText", "length %1"))
                     .arg(words.withUnit(words.change(shortest, longest)));
    }
    return parts.join(QStringLiteral(", "));
}

QString wholeText(const Placement& whole, const Words& words)
{
    QStringList parts;
    for (const QString& part : wholeWord(whole).split(QStringLiteral(", "))) {
        parts << words.word(part);
    }
    QString word = parts.join(QStringLiteral(", "));
    if (whole.factor != 1) {
        word.replace(QStringLiteral("factor"), words(QT_TRANSLATE_NOOP("PlanText", "factor")));
    }
    if (whole.factor == 1 && !whole.isMirrored && whole.quarterTurns % 2 == 1) {
        return whole.quarterTurns == 1
            ? words(QT_TRANSLATE_NOOP("PlanText", "%1, counter-clockwise")).arg(word)
            : words(QT_TRANSLATE_NOOP("PlanText", "%1, clockwise")).arg(word);
    }
    return word;
}

QString detailText(
    const Comparison& comparison, const BoardDifference& difference, const Words& words)
{
    switch (difference.kind) {
    case DifferenceKind::Whole:
        return wholeText(*comparison.whole, words);
    case DifferenceKind::Added:
        return words.tool(*difference.to);
    case DifferenceKind::Removed:
        return words.tool(*difference.from);
    case DifferenceKind::Moved:
        return moveText(difference, words);
    case DifferenceKind::Resized:
        return resizeText(difference, words);
    case DifferenceKind::Plating:
        return words.change(words.plating(*difference.from), words.plating(*difference.to));
    case DifferenceKind::Tolerance:
        return words.withUnit(
            words.change(words.tolerance(*difference.from), words.tolerance(*difference.to)));
    case DifferenceKind::Layer:
        return words.change(spanText(*difference.from), spanText(*difference.to));
    }
    return {};
}

const ComparedTool* toolOf(const BoardDifference& difference)
{
    return difference.from ? &*difference.from : difference.to ? &*difference.to : nullptr;
}

QString countText(const BoardDifference& difference, const Words& words)
{
    const QString text = toolOf(difference)->isSlot ? words.slotPaths(difference.count)
                                                    : words.holes(difference.count);
    return difference.isWholeTool && difference.count > 1
        ? words(QT_TRANSLATE_NOOP("PlanText", "all %1")).arg(text)
        : text;
}

QString lineOf(
    const Comparison& comparison, const BoardDifference& difference, Units units, Tongue tongue)
{
    const Words words(tongue, units);
    const DifferenceTexts texts = differenceTexts(comparison, difference, units, tongue);
    const ComparedTool* tool = toolOf(difference);
    if (!tool) {
        return QStringLiteral("%1: %2").arg(texts.kind, texts.detail);
    }
    QStringList places;
    for (size_t i = 0; i < std::min(difference.places.size(), placesOfLine); ++i) {
        places << words.place(difference.places[i]);
    }
    if (difference.places.size() > placesOfLine) {
        places << QStringLiteral("...");
    }
    const bool isChange = difference.from && difference.to;
    QString what = texts.tool.isEmpty() ? QString() : QStringLiteral("T%1, ").arg(texts.tool);
    what += isChange ? words.tool(*tool) + QStringLiteral(": ") + texts.detail : texts.detail;
    return words(QT_TRANSLATE_NOOP("PlanText", "%1: %2 in %3, %4; at %5"))
        .arg(texts.kind, countText(difference, words), texts.layer, what,
            places.join(QStringLiteral("; ")));
}

QJsonObject differenceJson(
    const Comparison& comparison, const BoardDifference& difference, Units units, LongLists* lists)
{
    const DifferenceTexts texts = differenceTexts(comparison, difference, units, Tongue::English);
    QJsonArray first;
    for (size_t i = 0; i < std::min(difference.places.size(), placesOfJson); ++i) {
        first << placeJson(difference.places[i], units);
    }
    const QJsonValue places =
        lists ? QJsonValue(lists->add(&difference.places, nullptr)) : QJsonValue(first);
    return {{"kind", texts.kind}, {"layer", texts.layer},
        {"tool", texts.tool.isEmpty() ? QJsonValue() : QJsonValue(texts.tool.toInt())},
        {"count", difference.count}, {"places", places}, {"detail", texts.detail}};
}

} // namespace

DifferenceTexts differenceTexts(
    const Comparison& comparison, const BoardDifference& difference, Units units, Tongue tongue)
{
    const ComparedTool* tool = toolOf(difference);
    const Words words(tongue, units);
    return {words.word(differenceWord(difference.kind)), tool ? tool->layer : QString(),
        tool && tool->number > 0 ? QString::number(tool->number) : QString(),
        detailText(comparison, difference, words)};
}

QStringList comparisonNotes(const Comparison& comparison, Units units, Tongue tongue)
{
    const Words words(tongue, units);
    QStringList lines;
    if (comparison.copies > 1) {
        QString line = comparison.isOtherPanel
            ? words(QT_TRANSLATE_NOOP("PlanText", "%1 is %2 copies of the board"))
            : words(QT_TRANSLATE_NOOP("PlanText", "the board is %2 copies of %1"));
        line = line.arg(comparison.other, words.number(comparison.copies));
        if (comparison.turnedCopies > 0) {
            line += words(QT_TRANSLATE_NOOP("PlanText", ", turned or mirrored: %1"))
                        .arg(words.number(comparison.turnedCopies));
        }
        lines << line;
        if (!comparison.besideCopies.empty()) {
            lines << words(QT_TRANSLATE_NOOP("PlanText", "beside the copies: %1, first at %2"))
                         .arg(words.holes(qint64(comparison.besideCopies.size())),
                             words.place(comparison.besideCopies[0]));
        }
        if (comparison.isOtherPanel && comparison.differs()) {
            lines << words(QT_TRANSLATE_NOOP("PlanText", "places are those of %1"))
                         .arg(comparison.other);
        }
    }
    if (comparison.move != Place{}) {
        lines << words(QT_TRANSLATE_NOOP("PlanText", "moved by %1"))
                     .arg(words.withUnit(words.place(comparison.move)));
    }
    if (comparison.nearly) {
        lines << words(
            QT_TRANSLATE_NOOP("PlanText", "all but a few holes would be explained by: %1"))
                     .arg(wholeText(*comparison.nearly, words));
    }
    if (comparison.drilledAndFinished > 0) {
        lines << words(QT_TRANSLATE_NOOP("PlanText",
                           "drill sizes of one board are compared with finished sizes: %1"))
                     .arg(words.holes(comparison.drilledAndFinished));
    }
    if (comparison.assumedPlating > 0) {
        lines << words(QT_TRANSLATE_NOOP("PlanText",
                           "plating not compared, as one board does not specify it: %1"))
                     .arg(words.holes(comparison.assumedPlating));
    }
    return lines;
}

QString sameText(const Comparison& comparison, Tongue tongue)
{
    const Words words(tongue);
    return comparison.differs()
        ? QString()
        : words(QT_TRANSLATE_NOOP("PlanText", "no difference: %1, %2"))
              .arg(words.holes(comparison.holes), words.slotPaths(comparison.slotPaths));
}

QStringList comparisonLines(const Comparison& comparison, Units units, Tongue tongue)
{
    QStringList lines = comparisonNotes(comparison, units, tongue);
    for (const BoardDifference& difference : comparison.differences) {
        lines << lineOf(comparison, difference, units, tongue);
    }
    lines << sameText(comparison, tongue);
    lines.removeAll(QString());
    return lines;
}

QString comparisonSummary(const Comparison& comparison, Tongue tongue)
{
    const Words words(tongue);
    if (!comparison.differs()) {
        return sameText(comparison, tongue);
    }
    if (comparison.whole) {
        return wholeText(*comparison.whole, words);
    }
    QStringList kinds;
    for (const BoardDifference& difference : comparison.differences) {
        const QString kind = words.word(differenceWord(difference.kind));
        if (!kinds.contains(kind)) {
            kinds << kind;
        }
    }
    return words(QT_TRANSLATE_NOOP("PlanText", "differences: %1 (%2)"))
        .arg(words.number(qint64(comparison.differences.size())), kinds.join(QStringLiteral(", ")));
}

QString comparisonCsv(const Comparison& comparison, Units units)
{
    Table table{{{"Finding"}, {"Layer"}, {"Tool"}, {"Count"}, {"X"}, {"Y"}, {"Detail"}}, {}};
    for (const BoardDifference& difference : comparison.differences) {
        const DifferenceTexts texts =
            differenceTexts(comparison, difference, units, Tongue::English);
        const bool hasPlace = !difference.places.empty();
        table.rows << QStringList{texts.kind, texts.layer, texts.tool,
            QString::number(difference.count),
            hasPlace ? sizeText(difference.places[0].x, units) : QString(),
            hasPlace ? sizeText(difference.places[0].y, units) : QString(), texts.detail};
    }
    return csvText(table);
}

QJsonObject comparisonJson(const Comparison& comparison, Units units, LongLists* lists)
{
    QJsonArray differences;
    for (const BoardDifference& difference : comparison.differences) {
        differences << differenceJson(comparison, difference, units, lists);
    }
    QJsonArray notes =
        QJsonArray::fromStringList(comparisonNotes(comparison, units, Tongue::English));
    return {{"other", comparison.other}, {"differs", comparison.differs()},
        {"moved", placeJson(comparison.move, units)},
        {"whole", comparison.whole ? QJsonValue(wholeWord(*comparison.whole)) : QJsonValue()},
        {"copies", comparison.copies}, {"holes", comparison.holes}, {"slots", comparison.slotPaths},
        {"findings", differences}, {"notes", notes}};
}

} // namespace brox
