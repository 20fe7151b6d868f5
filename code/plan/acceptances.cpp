// SPDX-License-Identifier: MIT
#include "acceptances.h"

#include <QFile>
#include <QRegularExpression>
#include <algorithm>

namespace brox {

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
                QStringLiteral("%1:%2: %3").arg(path).arg(number).arg(QString(error.what())));
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
