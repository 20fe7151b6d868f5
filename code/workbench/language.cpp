// SPDX-License-Identifier: MIT
#include "language.h"

#include "host_session.h"
#include "near_word.h"
#include "share.h"

#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace brox {

namespace {

constexpr char english[] = "en"; // what the sources say

void install(const QString& path)
{
    auto* translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(path)) {
        QCoreApplication::installTranslator(translator);
    } else {
        delete translator;
    }
}

} // namespace

QStringList languages()
{
    QStringList names = QDir(sharePath("translations")).entryList({"brox_*.qm"}, QDir::Files);
    return names.replaceInStrings("brox_", "").replaceInStrings(".qm", "") << english;
}

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
    install(QDir(QLibraryInfo::path(QLibraryInfo::TranslationsPath))
                .filePath(QStringLiteral("qtbase_%1.qm").arg(language)));
    install(sharePath(QStringLiteral("translations/workbench_%1.qm").arg(language)));
}

} // namespace brox
