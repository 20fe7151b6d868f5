// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QDomDocument>
#include <QFile>
#include <QMainWindow>
#include <QToolButton>

#include <dlfcn.h>

namespace {

QSet<QByteArray> asked;

constexpr char separator[] = "@$@#";

} // namespace

// The module's questions pass through here on their way to the host's library.

extern "C" __attribute__((visibility("default"))) const char* zeb__nls_nlst(const char* key)
{
    static const auto next =
        reinterpret_cast<decltype(zeb__nls_nlst)*>(dlsym(RTLD_NEXT, "zeb__nls_nlst"));
    asked.insert(key);
    return next(key);
}

extern "C" __attribute__((visibility("default"))) int zeb__log_write(
    const char*, const char* format, ...)
{
    if (QByteArray(format).startsWith(separator)) {
        asked.insert(format);
    }
    return 0;
}

/** The German catalogue: all that the module asks for is in it, and it says it in German. */
class TestCatalogue : public QObject
{
    Q_OBJECT

private:
    QHash<QByteArray, QString> mTranslations; // finished ones by key

private slots:
    void initTestCase()
    {
        QFile file(TS_FILE);
        QDomDocument catalogue;
        QVERIFY(file.open(QFile::ReadOnly) && catalogue.setContent(&file));
        const QDomNodeList messages = catalogue.elementsByTagName("message");
        for (int i = 0; i < messages.size(); ++i) {
            const QDomNode message = messages.at(i);
            const auto text = [](const QDomNode& of, const char* part) {
                return of.firstChildElement(part).text();
            };
            const QString type = message.firstChildElement("translation").attribute("type");
            QVERIFY2(type != "unfinished", qPrintable(text(message, "source")));
            if (type.isEmpty()) {
                const QStringList key{"", text(message.parentNode(), "name"), "GENERAL",
                    text(message, "comment"), text(message, "source")};
                mTranslations[key.join(separator).toUtf8()] = text(message, "translation");
            }
        }
    }

    /** A translation whose printf conversions are not those of the default text is not taken. */
    void isTaken()
    {
        const Host host;
        QVERIFY(standin_set_catalogue(QM_FILE));
        for (auto message = mTranslations.cbegin(); message != mTranslations.cend(); ++message) {
            QVERIFY2(!message.value().isEmpty(), message.key());
            QCOMPARE(QString::fromLocal8Bit(zeb__nls_nlst(message.key())), message.value());
        }
    }

    void holdsWhatTheModuleAsks()
    {
        asked.clear();
        for (const char* file : {"brox.xml", "brox_drill_bits.xml"}) {
            for (const char* content : {"<unfinished", "<Other/>"}) {
                Host host;
                host.write(file, content);
                host.viewer();
            }
        }
        Host host;
        QVERIFY(standin_set_catalogue(QM_FILE));
        host.write("brox.xml", modelsXml({modelXml("A"), modelXml("B")}));
        host.write("brox_drill_bits.xml", bitsXml({bitXml("0.30", "0.3")}));
        QWidget* viewer = host.viewer();
        const auto reject = [](QDialog* dialog) { dialog->reject(); };
        Answers answers{QMessageBox::Ok, QMessageBox::Cancel};
        typeInto(host.table("broxModelTableWidget"), 0, 0, "B");
        click(viewer, "deleteToolButton");
        answers.add(reject);
        click(viewer, "loadToolButton");

        click(viewer, "openBitFileToolButton");
        auto* bits = child<QMainWindow>(viewer, "BitsFileEditor");
        answers.add(reject);
        QMetaObject::invokeMethod(bits, "on_actionOpen_triggered"); // the action is hidden
        click(bits, "actionAdd_Size");

        QCOMPARE(bits->windowTitle(), "Bohrertabelle bearbeiten *");
        QCOMPARE(child<QToolButton>(viewer, "saveToolButton")->toolTip(), "KRV-Modelle speichern");
        QCOMPARE(answers.seen.last().title, "Bohrerdatei (XML) laden …");
        for (const QByteArray& key : qAsConst(asked)) {
            QVERIFY2(mTranslations.contains(key), key);
        }
        QVERIFY(asked.size() > mTranslations.size() * 9 / 10); // all but a few failures
    }
};

QTEST_MAIN(TestCatalogue)
#include "tst_catalogue.moc"
