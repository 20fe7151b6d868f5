// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QAction>
#include <QFile>
#include <QMainWindow>
#include <QToolButton>
#include <QXmlStreamReader>

#include <dlfcn.h>

namespace {

QSet<QByteArray> asked;

constexpr char separator[] = "@$@#";

/** The key of a message of a catalogue. */
QByteArray keyOf(const QString& module, const QString& number, const QString& text)
{
    return (QStringList{"", module, "GENERAL", number, text}).join(separator).toUtf8();
}

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

private slots:
    void initTestCase();
    void isComplete();
    void holdsWhatTheModuleAsks();

private:
    QHash<QByteArray, QString> mTranslations; // finished ones by key
};

void TestCatalogue::initTestCase()
{
    QFile file(TS_FILE);
    QVERIFY(file.open(QFile::ReadOnly));
    QXmlStreamReader xml(&file);
    QString module, source, number;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (xml.name() == u"name") {
            module = xml.readElementText();
        } else if (xml.name() == u"source") {
            source = xml.readElementText();
        } else if (xml.name() == u"comment") {
            number = xml.readElementText();
        } else if (xml.name() == u"translation") {
            const auto type = xml.attributes().value("type");
            QVERIFY2(type != u"unfinished", qPrintable(source));
            if (type.isEmpty()) {
                mTranslations.insert(keyOf(module, number, source), xml.readElementText());
            }
        }
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
}

/** A translation whose printf conversions are not those of the default text is not taken. */
void TestCatalogue::isComplete()
{
    const Host host;
    QVERIFY(standin_set_catalogue(QM_FILE));
    QVERIFY(!mTranslations.isEmpty());
    for (auto message = mTranslations.cbegin(); message != mTranslations.cend(); ++message) {
        QVERIFY2(!message.value().isEmpty(), message.key());
        QCOMPARE(QString::fromLocal8Bit(zeb__nls_nlst(message.key())), message.value());
    }
}

void TestCatalogue::holdsWhatTheModuleAsks()
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
    const auto* jobTable = child<QTableWidget>(viewer, "jobDrillDataTableWidget");
    QCOMPARE(jobTable->horizontalHeaderItem(0)->text(), "Lage");
    QCOMPARE(child<QToolButton>(viewer, "saveToolButton")->toolTip(), "KRV-Modelle speichern");

    const auto press = [viewer](
                           const char* button) { child<QToolButton>(viewer, button)->click(); };
    const auto reject = [](QDialog* dialog) { dialog->reject(); };
    Answers answers{QMessageBox::Ok, QMessageBox::Cancel};
    typeInto(child<QTableWidget>(viewer, "broxModelTableWidget"), 0, 0, "B");
    press("deleteToolButton");
    answers.add(reject);
    press("loadToolButton");

    press("openBitFileToolButton");
    auto* bits = child<QMainWindow>(viewer, "BitsFileEditor");
    answers.add(reject);
    QMetaObject::invokeMethod(bits, "on_actionOpen_triggered"); // the action is hidden
    QCOMPARE(bits->windowTitle(), "Bohrertabelle bearbeiten");
    child<QAction>(bits, "actionAdd_Size")->trigger();
    QCOMPARE(bits->windowTitle(), "Bohrertabelle bearbeiten *");

    QStringList titles;
    for (const Answers::Seen& seen : answers.seen) {
        titles << seen.title;
    }
    QCOMPARE(titles,
        (QStringList{"Bohrwerkzeuge einrichten", "KRV-Modell löschen",
            "Datei der Bohrwerkzeug-Modelle (XML) laden …", "Bohrerdatei (XML) laden …"}));
    for (const QByteArray& key : qAsConst(asked)) {
        QVERIFY2(mTranslations.contains(key), key);
    }
    QVERIFY(asked.size() > mTranslations.size() * 9 / 10); // all but a few failures
}

QTEST_MAIN(TestCatalogue)
#include "tst_catalogue.moc"
