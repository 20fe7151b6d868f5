// SPDX-License-Identifier: MIT
#include "language.h"

#include "host_session.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <algorithm>
#include <numeric>
#include <vector>

namespace brox {

namespace {

constexpr char english[] = "en"; // what the sources say

/** The languages that there are catalogues for, by code, such as "de"; "en" is always one. */
QStringList languages()
{
    QStringList names = QDir(sharePath("translations")).entryList({"brox_*.qm"}, QDir::Files);
    return names.replaceInStrings("brox_", "").replaceInStrings(".qm", "") << english;
}

void install(const QString& path)
{
    auto* translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(path)) {
        QCoreApplication::installTranslator(translator);
    } else {
        delete translator;
    }
}

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

/** The one of some names that a misspelt one stands for; empty if none is near. */
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

} // namespace

QString systemLanguage()
{
    const QStringList known = languages();
    for (const QString& language : QLocale::system().uiLanguages()) {
        const QString code = language.section('-', 0, 0);
        if (known.contains(code)) {
            return code;
        }
    }
    return english;
}

QString moduleCatalogue(const QString& language)
{
    if (language.isEmpty() || language == english) {
        return {};
    }
    if (!languages().contains(language)) {
        throw HostError(HostSession::tr("no language \"%1\"; %2")
                            .arg(language, hintFor(language, languages())));
    }
    return sharePath(QStringLiteral("translations/brox_%1.qm").arg(language));
}

void speak(const QString& language)
{
    if (QLocale::system().name().section('_', 0, 0) != language) {
        QLocale::setDefault(QLocale(language)); // dates, and the digits of counts
    }
    install(QDir(QLibraryInfo::path(QLibraryInfo::TranslationsPath))
                .filePath(QStringLiteral("qtbase_%1.qm").arg(language)));
    install(sharePath(QStringLiteral("translations/workbench_%1.qm").arg(language)));
}

QString sharePath(const QString& name)
{
    const QDir program(QCoreApplication::applicationDirPath());
    const QString built = program.filePath("../share/all");
    return QDir::cleanPath(
        program.filePath((QFile::exists(built) ? "../share/" : WORKBENCH_SHARE_DIR "/") + name));
}

QString hintFor(const QString& name, const QStringList& known)
{
    const QString word = nearWord(name, known);
    return word.isEmpty() ? NearWordText::tr("there are: %1").arg(known.join(QStringLiteral(", ")))
                          : NearWordText::tr("did you mean %1?").arg(word);
}

} // namespace brox
