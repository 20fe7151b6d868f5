// SPDX-License-Identifier: MIT
#include "shop_rules.h"

#include "plan_text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>

namespace brox {

namespace {

constexpr HoleType types[] = {
    HoleType::Plated, HoleType::NonPlated, HoleType::Via, HoleType::PressFit};

constexpr double largest = 1000; ///< millimetres; far below what a size can hold

const QString tolerancesKey = QStringLiteral("tolerances");
const QString viasKey = QStringLiteral("viasUpTo");
const QString checksKey = QStringLiteral("checks");
const QString windowsKey = QStringLiteral("smallestWindow");

/** Limits that are sizes, and those that are ratios. */
const std::pair<QString, std::optional<Size> CheckLimits::*> sizeLimits[] = {
    {QStringLiteral("holeToHole"), &CheckLimits::holeToHole},
    {QStringLiteral("holeToEdge"), &CheckLimits::holeToEdge},
    {QStringLiteral("largestDrill"), &CheckLimits::largestDrill}};
const std::pair<QString, std::optional<double> CheckLimits::*> ratioLimits[] = {
    {QStringLiteral("shortestSlot"), &CheckLimits::shortestSlot},
    {QStringLiteral("aspectRatio"), &CheckLimits::aspectRatio}};
const std::pair<QString, WindowKind> windowLimits[] = {
    {QStringLiteral("plated"), WindowKind::Plated},
    {QStringLiteral("press-fit"), WindowKind::PressFit},
    {QStringLiteral("nonplated"), WindowKind::NonPlated},
    {QStringLiteral("slot"), WindowKind::Slot}};

double millimetres(Size size)
{
    return double(size) / sizePerMillimetre;
}

QString numberText(Size size)
{
    return QString::number(millimetres(size), 'g', 9);
}

/** A size of an option; "mil" behind it goes before the unit that is given. */
Size sizeOf(QString text, bool isMil)
{
    text = text.trimmed();
    if (text.endsWith("mil")) {
        isMil = true;
        text.chop(3);
    }
    bool isNumber = false;
    const double number = text.trimmed().toDouble(&isNumber);
    const double unit = isMil ? sizePerMil : sizePerMillimetre;
    if (!isNumber || !(number >= 0) || number * unit > largest * sizePerMillimetre) {
        throw RulesError(PlanText::tr("\"%1\" is no size from 0 to 1000 mm").arg(text));
    }
    return Size(std::lround(number * unit));
}

/** Such as "-0.05/+0.10", "+0.1/-0.05", "+-2mil". */
Tolerance toleranceOf(const QString& text)
{
    static const QRegularExpression form(
        QStringLiteral("^(?:\\+-|\u00b1)([^+/-]+)$|^([+-])([^+/-]+)/([+-])([^+/-]+)$"));
    const QRegularExpressionMatch match = form.match(text.trimmed());
    if (!match.hasMatch() || (match.hasCaptured(2) && match.captured(2) == match.captured(4))) {
        throw RulesError(
            PlanText::tr("\"%1\" is no tolerance such as -0.05/+0.10 or +-2mil").arg(text));
    }
    if (!match.captured(1).isEmpty()) {
        const Size both = sizeOf(match.captured(1), false);
        return {both, both};
    }
    const bool isMil = match.captured(5).trimmed().endsWith("mil");
    const Size first = sizeOf(match.captured(3), isMil);
    const Size second = sizeOf(match.captured(5), false);
    return match.captured(2) == "-" ? Tolerance{first, second} : Tolerance{second, first};
}

Size jsonSize(const QJsonValue& value, const QString& where)
{
    const double number = value.toDouble(-1);
    if (!value.isDouble() || number < 0 || number > largest) {
        throw RulesError(PlanText::tr("%1: no number of millimetres from 0 to 1000").arg(where));
    }
    return Size(std::lround(number * sizePerMillimetre));
}

void checkKeys(const QJsonObject& object, const QStringList& known, const QString& where)
{
    for (const QString& key : object.keys()) {
        if (!known.contains(key)) {
            throw RulesError(PlanText::tr("%1unknown member \"%2\"").arg(where, key));
        }
    }
}

ToleranceRule ruleOf(const QJsonValue& value, const QString& where)
{
    const QJsonObject object = value.toObject();
    checkKeys(object, {"type", "from", "minus", "plus"}, where + ": ");
    ToleranceRule rule;
    try {
        rule.type = holeTypeOf(object["type"].toString());
    } catch (const RulesError& error) {
        throw RulesError(where + ".type: " + error.message());
    }
    rule.from = object.contains("from") ? jsonSize(object["from"], where + ".from") : 0;
    rule.tolerance = {
        jsonSize(object["minus"], where + ".minus"), jsonSize(object["plus"], where + ".plus")};
    return rule;
}

template <typename List>
QStringList keysOf(const List& list)
{
    QStringList keys;
    for (const auto& [key, member] : list) {
        keys << key;
    }
    return keys;
}

CheckLimits limitsOf(const QJsonValue& value)
{
    if (!value.isObject()) {
        throw RulesError(' ' + checksKey + PlanText::tr(": no object"));
    }
    const QJsonObject object = value.toObject();
    const QString where = ' ' + checksKey + '.';
    checkKeys(object, keysOf(sizeLimits) + keysOf(ratioLimits) + QStringList{windowsKey},
        ' ' + checksKey + ": ");
    CheckLimits limits;
    for (const auto& [key, member] : sizeLimits) {
        if (object.contains(key)) {
            limits.*member = jsonSize(object[key], where + key);
        }
    }
    for (const auto& [key, member] : ratioLimits) {
        if (object.contains(key)) {
            const double ratio = object[key].toDouble(-1);
            if (!(ratio > 0 && ratio <= largest)) {
                throw RulesError(
                    PlanText::tr("%1: no number above 0, up to 1000").arg(where + key));
            }
            limits.*member = ratio;
        }
    }
    const QJsonObject windows = object[windowsKey].toObject();
    checkKeys(windows, keysOf(windowLimits), where + windowsKey + ": ");
    for (const auto& [key, kind] : windowLimits) {
        if (windows.contains(key)) {
            limits.windows[kind] = jsonSize(windows[key], where + windowsKey + '.' + key);
        }
    }
    return limits;
}

QJsonObject limitsJson(const CheckLimits& limits)
{
    QJsonObject object;
    for (const auto& [key, member] : sizeLimits) {
        if (limits.*member) {
            object[key] = millimetres(*(limits.*member));
        }
    }
    for (const auto& [key, member] : ratioLimits) {
        if (limits.*member) {
            object[key] = *(limits.*member);
        }
    }
    QJsonObject windows;
    for (const auto& [key, kind] : windowLimits) {
        if (const auto limit = limits.windows.find(kind); limit != limits.windows.end()) {
            windows[key] = millimetres(limit->second);
        }
    }
    if (!windows.isEmpty()) {
        object[windowsKey] = windows;
    }
    return object;
}

} // namespace

HoleType holeTypeOf(const QString& name)
{
    const QString word = name.trimmed().toLower().remove('-');
    for (const HoleType type : types) {
        if (word == typeKey(type).remove('-')) {
            return type;
        }
    }
    if (word == "unplated") {
        return HoleType::NonPlated;
    }
    throw RulesError(
        PlanText::tr("no type \"%1\"; there are: plated, nonplated, via, press-fit").arg(name));
}

WindowKind windowKind(HoleType type, bool isSlot)
{
    // By the enumeration.
    static constexpr WindowKind kinds[] = {
        WindowKind::Plated, WindowKind::NonPlated, WindowKind::None, WindowKind::PressFit};
    static_assert(std::size(kinds) == size_t(HoleType::PressFit) + 1);
    return isSlot ? WindowKind::Slot : kinds[size_t(type)];
}

Size sizeOf(const QString& text)
{
    return sizeOf(text, false);
}

QString toleranceText(const Tolerance& tolerance)
{
    return QStringLiteral("-%1/+%2 mm")
        .arg(numberText(tolerance.minus), numberText(tolerance.plus));
}

ShopRules ShopRules::starter()
{
    constexpr Size tenth = sizePerMillimetre / 10;
    constexpr Size twentieth = sizePerMillimetre / 20;
    ShopRules rules;
    rules.tolerances = {{HoleType::Plated, 0, {tenth, tenth}},
        {HoleType::NonPlated, 0, {twentieth, twentieth}}, {HoleType::Via, 0, {tenth, tenth}},
        {HoleType::PressFit, 0, {twentieth, twentieth}}};
    rules.checks = {sizePerMillimetre / 4, 3 * tenth, 635 * (sizePerMillimetre / 100), 2.0, 10.0,
        {{WindowKind::Plated, 3 * twentieth}, {WindowKind::PressFit, tenth},
            {WindowKind::NonPlated, tenth}, {WindowKind::Slot, 2 * tenth}}};
    return rules;
}

ShopRules ShopRules::fromJson(const QByteArray& json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError) {
        const auto line = json.left(error.offset).count('\n') + 1;
        throw RulesError(QStringLiteral("%1: %2").arg(line).arg(error.errorString()));
    }
    const QJsonObject object = document.object();
    checkKeys(object, {tolerancesKey, viasKey, checksKey}, QStringLiteral(" "));
    if (!document.isObject() || !object[tolerancesKey].isArray()) {
        throw RulesError(PlanText::tr(" no list of tolerances"));
    }
    ShopRules rules;
    const QJsonArray list = object[tolerancesKey].toArray();
    for (qsizetype i = 0; i < list.size(); ++i) {
        rules.tolerances.push_back(ruleOf(list[i], QStringLiteral(" tolerances[%1]").arg(i)));
    }
    if (object.contains(viasKey)) {
        rules.viasUpTo = jsonSize(object[viasKey], ' ' + viasKey);
    }
    // Folders from before there were limits get those of a new one.
    rules.checks = object.contains(checksKey) ? limitsOf(object[checksKey]) : starter().checks;
    rules.sort();
    return rules;
}

QByteArray ShopRules::toJson() const
{
    QJsonArray list;
    for (const ToleranceRule& rule : tolerances) {
        list << QJsonObject{{"type", typeKey(rule.type)}, {"from", millimetres(rule.from)},
            {"minus", millimetres(rule.tolerance.minus)},
            {"plus", millimetres(rule.tolerance.plus)}};
    }
    return QJsonDocument(QJsonObject{{tolerancesKey, list}, {viasKey, millimetres(viasUpTo)},
                             {checksKey, limitsJson(checks)}})
        .toJson();
}

void ShopRules::changeTolerances(const QString& text)
{
    for (const QString& part : text.split(',')) {
        const qsizetype equals = part.indexOf('=');
        if (equals < 0) {
            if (part.trimmed().toLower() != "none") {
                throw RulesError(
                    PlanText::tr("\"%1\" is neither none nor such as plated=-0.05/+0.10")
                        .arg(part));
            }
            tolerances.clear();
            continue;
        }
        const HoleType type = holeTypeOf(part.left(equals));
        std::erase_if(tolerances, [type](const ToleranceRule& rule) { return rule.type == type; });
        const QString tolerance = part.mid(equals + 1);
        if (tolerance.trimmed().toLower() != "none") {
            tolerances.push_back({type, 0, toleranceOf(tolerance)});
        }
    }
    sort();
}

void ShopRules::changeViasUpTo(const QString& text)
{
    viasUpTo = text.trimmed().toLower() == "none" ? 0 : sizeOf(text, false);
}

const ToleranceRule* ShopRules::find(HoleType type, Size finishedSize) const
{
    const ToleranceRule* found = nullptr;
    for (const ToleranceRule& rule : tolerances) {
        if (rule.type == type && rule.from <= finishedSize) {
            found = &rule;
        }
    }
    return found;
}

void ShopRules::sort()
{
    const auto key = [](const ToleranceRule& rule) { return std::pair(rule.type, rule.from); };
    std::ranges::stable_sort(tolerances, {}, key);
    const auto twin = std::ranges::adjacent_find(tolerances, {}, key);
    if (twin != tolerances.end()) {
        throw RulesError(PlanText::tr(" tolerances: two for %1 from %2 mm")
                             .arg(spoken(typeKey(twin->type)), numberText(twin->from)));
    }
}

QStringList ShopRules::lines() const
{
    QStringList lines;
    for (const ToleranceRule& rule : tolerances) {
        const QString band =
            rule.from == 0 ? QString() : PlanText::tr(" from %1 mm").arg(numberText(rule.from));
        lines << PlanText::tr("%1%2: %3 where the board specifies no tolerance")
                     .arg(spoken(typeKey(rule.type)), band, toleranceText(rule.tolerance));
    }
    if (viasUpTo > 0) {
        lines << PlanText::tr("plated up to %1 mm: vias where the board does not distinguish them")
                     .arg(numberText(viasUpTo));
    }
    return lines;
}

} // namespace brox
