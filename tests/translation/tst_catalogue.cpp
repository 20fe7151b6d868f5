// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QDomDocument>
#include <QFile>
#include <QToolButton>

/** The German catalogue: it is whole, and what the user reads comes from it. That all texts of the
 *  sources are in it is looked at where they are gathered. */
class TestCatalogue : public QObject
{
    Q_OBJECT

private slots:
    /** A translation whose printf conversions are not those of the default text is not taken. */
    void isWhole()
    {
        const Host host;
        QVERIFY(standin_set_catalogue(QM_FILE));
        QFile file(TS_FILE);
        QDomDocument catalogue;
        QVERIFY(file.open(QFile::ReadOnly) && catalogue.setContent(&file));
        const QDomNodeList messages = catalogue.elementsByTagName("message");
        for (int i = 0; i < messages.size(); ++i) {
            const QDomNode message = messages.at(i);
            const auto text = [](const QDomNode& of, const char* part) {
                return of.firstChildElement(part).text();
            };
            if (!message.firstChildElement("translation").hasAttribute("type")) {
                const QStringList key{"", text(message.parentNode(), "name"), "GENERAL",
                    text(message, "comment"), text(message, "source")};
                const QString own = text(message, "translation");
                QVERIFY2(!own.isEmpty(), qPrintable(key.join(' ')));
                QCOMPARE(QString(zeb__nls_nlst(key.join("@$@#").toUtf8())), own);
            }
        }
    }

    void isShown()
    {
        Host host;
        QVERIFY(standin_set_catalogue(QM_FILE));
        host.write("brox.xml", "<unfinished");
        QWidget* viewer = host.viewer();
        QVERIFY(host.log.last().contains("Fehler beim Lesen"));
        Answers answers;
        answers.add([](QDialog* dialog) { dialog->reject(); });
        click(viewer, "actionOpen");
        click(viewer, "actionAdd_Size");
        QCOMPARE(answers.seen.last().title, "Bohrerdatei (XML) laden …");
        QCOMPARE(
            child<QWidget>(viewer, "BitsFileEditor")->windowTitle(), "Bohrertabelle bearbeiten *");
        QCOMPARE(child<QToolButton>(viewer, "saveToolButton")->toolTip(), "KRV-Modelle speichern");
        QVERIFY(standin_set_catalogue(nullptr));
        QCOMPARE(QString(zeb__nls_nlst("@$@#brox_viewer@$@#GENERAL@$@#278@$@#Save KRV Models")),
            "Save KRV Models");
    }
};

QTEST_MAIN(TestCatalogue)
#include "tst_catalogue.moc"
