// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QFile>
#include <QMainWindow>
#include <QToolButton>
#include <QXmlStreamReader>

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
        QVERIFY(file.open(QFile::ReadOnly));
        QStringList key{"", "", "GENERAL", "", ""};
        QXmlStreamReader xml(&file);
        for (; !xml.atEnd(); xml.readNext()) {
            if (!xml.isStartElement()) {
                continue;
            }
            if (xml.name() == u"name") {
                key[1] = xml.readElementText();
            } else if (xml.name() == u"source") {
                key[4] = xml.readElementText();
            } else if (xml.name() == u"comment") {
                key[3] = xml.readElementText();
            } else if (xml.name() == u"translation") {
                const auto type = xml.attributes().value("type");
                QVERIFY2(type != u"unfinished", qPrintable(key[4]));
                if (type.isEmpty()) {
                    mTranslations[key.join(separator).toUtf8()] = xml.readElementText();
                }
            }
        }
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
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

        // A text of each kind: of a form's title, a header, a tool tip, and of dialogs.
        QStringList shown{bits->windowTitle(),
            host.table("jobDrillDataTableWidget")->horizontalHeaderItem(0)->text(),
            child<QToolButton>(viewer, "saveToolButton")->toolTip()};
        for (const Answers::Seen& seen : answers.seen) {
            shown << seen.title;
        }
        QCOMPARE(shown,
            (QStringList{"Bohrertabelle bearbeiten *", "Lage", "KRV-Modelle speichern",
                "Bohrwerkzeuge einrichten", "KRV-Modell löschen",
                "Datei der Bohrwerkzeug-Modelle (XML) laden …", "Bohrerdatei (XML) laden …"}));
        for (const QByteArray& key : qAsConst(asked)) {
            QVERIFY2(mTranslations.contains(key), key);
        }
        QVERIFY(asked.size() > mTranslations.size() * 9 / 10); // all but a few failures
    }
};

QTEST_MAIN(TestCatalogue)
#include "tst_catalogue.moc"
