// SPDX-License-Identifier: MIT
#include "near_word.h"

#include <QCoreApplication>
#include <algorithm>
#include <numeric>
#include <vector>

namespace brox {

namespace {

class NearWordText
{
    Q_DECLARE_TR_FUNCTIONS(NearWord)
};

/** How many letters have to be put in, taken away or replaced. */
int distance(const QString& from, const QString& to)
{
    std::vector<int> row(size_t(to.size()) + 1);
    std::iota(row.begin(), row.end(), 0);
    for (qsizetype i = 0; i < from.size(); ++i) {
        int before = row[0]++;
        for (qsizetype j = 0; j < to.size(); ++j) {
            const int replaced = before + (from[i] != to[j]);
            before = row[size_t(j) + 1];
            row[size_t(j) + 1] = std::min({replaced, before + 1, row[size_t(j)] + 1});
        }
    }
    return row.back();
}

} // namespace

QString nearWord(const QString& name, const QStringList& known)
{
    QString best;
    auto least = std::max<qsizetype>(1, name.size() / 3) + 1;
    for (const QString& word : known) {
        const int letters = distance(name.toLower(), word.toLower());
        if (letters < least && letters < word.size()) {
            best = word;
            least = letters;
        }
    }
    return best;
}

QString hintFor(const QString& name, const QStringList& known)
{
    const QString word = nearWord(name, known);
    return word.isEmpty() ? NearWordText::tr("there are: %1").arg(known.join(QStringLiteral(", ")))
                          : NearWordText::tr("did you mean %1?").arg(word);
}

} // namespace brox
