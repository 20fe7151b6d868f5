// SPDX-License-Identifier: MIT
#include "findings.h"

#include <QFile>
#include <QRegularExpression>
#include <algorithm>

namespace brox {

namespace {

struct CheckNature
{
    const char* word;
    const char* text;
    bool isHard = false;
    bool measuresSizes = true;
};

/** By the enumeration. */
constexpr CheckNature natures[] = {
    {QT_TRANSLATE_NOOP("PlanText", "same-place"),
        QT_TRANSLATE_NOOP("PlanText", "different tools at one place"), true},
    {QT_TRANSLATE_NOOP("PlanText", "overlap"),
        QT_TRANSLATE_NOOP("PlanText", "drilled areas overlap"), true},
    {QT_TRANSLATE_NOOP("PlanText", "too-near"),
        QT_TRANSLATE_NOOP("PlanText", "too near to each other")},
    {QT_TRANSLATE_NOOP("PlanText", "outside"),
        QT_TRANSLATE_NOOP("PlanText", "not within the outline"), true},
    {QT_TRANSLATE_NOOP("PlanText", "edge"), QT_TRANSLATE_NOOP("PlanText", "too near to the edge")},
    {QT_TRANSLATE_NOOP("PlanText", "too-large"), QT_TRANSLATE_NOOP("PlanText", "drill too large")},
    {QT_TRANSLATE_NOOP("PlanText", "short-slot"),
        QT_TRANSLATE_NOOP("PlanText", "slot too short for its width"), false, false},
    {QT_TRANSLATE_NOOP("PlanText", "aspect"),
        QT_TRANSLATE_NOOP("PlanText", "hole too deep for its drill"), false, false},
    {QT_TRANSLATE_NOOP("PlanText", "window"),
        QT_TRANSLATE_NOOP("PlanText", "tolerance too narrow")},
    {QT_TRANSLATE_NOOP("PlanText", "closing"),
        QT_TRANSLATE_NOOP("PlanText", "drill smaller than the plated hole")},
    {QT_TRANSLATE_NOOP("PlanText", "count"),
        QT_TRANSLATE_NOOP("PlanText", "other number of hits than a comment"), true, false},
    {QT_TRANSLATE_NOOP("PlanText", "scale"),
        QT_TRANSLATE_NOOP("PlanText", "other scale than the other files"), true, false},
};
static_assert(std::size(natures) == size_t(lastCheck) + 1);

} // namespace

QString checkWord(Check check)
{
    return QString::fromLatin1(natures[size_t(check)].word);
}

QString checkText(Check check)
{
    return PlanText::tr(natures[size_t(check)].text);
}

bool isHard(Check check)
{
    return natures[size_t(check)].isHard;
}

bool measuresSizes(Check check)
{
    return natures[size_t(check)].measuresSizes;
}

qsizetype CheckFindings::hardCount() const
{
    return std::ranges::count_if(
        list, [](const CheckFinding& finding) { return isHard(finding.check); });
}

QString measureText(Check check, double value, Units units)
{
    if (measuresSizes(check)) {
        return sizeText(Size(std::clamp(value, -2e9, 2e9)), units);
    }
    return QString::number(value, 'g', check == Check::Count ? 12 : 4);
}

QString findingTools(const DrillPlan& plan, const CheckFinding& finding)
{
    QStringList tools;
    for (const size_t index : finding.rows) {
        const PlanRow& row = plan.rows[index];
        const QString number = QString::number(row.programTool);
        tools << (row.layer == finding.layer
                ? number
                : QStringLiteral("%1/%2").arg(plan.layers[row.layer].name, number));
    }
    return tools.join(' ');
}

Acceptances Acceptances::load(const QString& path)
{
    QFile file(path);
    if (!file.open(QFile::ReadOnly)) {
        throw RulesError(QStringLiteral("%1: %2").arg(path, file.errorString()));
    }
    Acceptances acceptances;
    int number = 0;
    for (const QByteArray& bytes : file.readAll().split('\n')) {
        ++number;
        const QString line = QString::fromUtf8(bytes).trimmed();
        if (line.isEmpty() || line.startsWith('#')) {
            continue;
        }
        try {
            acceptances.mLines.push_back(parsed(line));
        } catch (const RulesError& error) {
            throw RulesError(
                QStringLiteral("%1:%2: %3").arg(path).arg(number).arg(error.message()));
        }
    }
    return acceptances;
}

Acceptances::Line Acceptances::parsed(const QString& line)
{
    static const QRegularExpression form(
        QStringLiteral("^\"?([\\w-]+)\"?[\\s,;]+(\\S.*?)[\\s,;]+\"?(\\d{4}-\\d{2}-\\d{2})\"?$"));
    const QRegularExpressionMatch match = form.match(line);
    const QDate until = QDate::fromString(match.captured(3), Qt::ISODate);
    if (!match.hasMatch() || !until.isValid()) {
        throw RulesError(PlanText::tr("no id, reason and day such as 2026-12-31"));
    }
    QString reason = match.captured(2);
    if (reason.size() > 1 && reason.startsWith('"') && reason.endsWith('"')) {
        reason = reason.sliced(1).chopped(1);
    }
    return {match.captured(1), reason, until};
}

void Acceptances::apply(CheckFindings& findings, QDate today) const
{
    for (const Line& line : mLines) {
        const auto isMeant = [&](const CheckFinding& finding) { return finding.id == line.id; };
        const auto found = std::ranges::find_if(findings.list, isMeant);
        if (found == findings.list.end()) {
            const bool isTwice = std::ranges::any_of(findings.accepted,
                [&](const AcceptedFinding& accepted) { return isMeant(accepted.finding); });
            findings.notes << (isTwice ? PlanText::tr("accepted twice: %1").arg(line.id)
                                       : PlanText::tr("accepted, but not found: %1").arg(line.id));
        } else if (line.until < today) {
            findings.notes << PlanText::tr("accepted until %1, no longer: %2")
                                  .arg(line.until.toString(Qt::ISODate), line.id);
        } else {
            findings.accepted.push_back({std::move(*found), line.reason, line.until});
            findings.list.erase(found);
        }
    }
}

} // namespace brox
