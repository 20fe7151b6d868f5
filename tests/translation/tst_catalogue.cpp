// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QDomDocument>
#include <QFile>

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
        click(viewer, "newToolButton");
        Answers answers{QMessageBox::Cancel, QMessageBox::NoButton};
        click(viewer, "deleteToolButton");
        QCOMPARE(answers.seen.last().title, "KRV-Modell löschen");
        QCOMPARE(answers.seen.last().text, "Bohrwerkzeug-Modell löschen: 'Model'?");
        click(viewer, "actionOpen");
        QCOMPARE(answers.seen.last().title, "Bohrerdatei (XML) laden …");
        click(viewer, "actionAdd_Size");
        // Each form has texts of its own.
        for (const auto& [object, property, text] :
            {std::tuple("saveToolButton", "toolTip", "KRV-Modelle speichern"),
                {"actionNew_Model", "text", "Neues Modell"},
                {"label_2", "text", "Lochverengung durch das Metallisieren"},
                {"label_3", "text", "Zugaben und Bohrformel erproben"},
                {"recalcPushButton", "text", "Neu berechnen"},
                {"useBitFileCheckBox", "text", "Bohrertabelle nutzen"},
                {"actionDelete_Size", "text", "Bohrer löschen"},
                {"BitsFileEditor", "windowTitle", "Bohrertabelle bearbeiten *"}}) {
            QCOMPARE(child<QObject>(viewer, object)->property(property).toString(), text);
        }
        const auto* bits = child<QTableWidget>(viewer, "drillBitsTableWidget");
        QCOMPARE(bits->horizontalHeaderItem(1)->text(), "µm");
        QVERIFY(standin_set_catalogue(nullptr));
        QCOMPARE(QString(zeb__nls_nlst("@$@#brox_viewer@$@#GENERAL@$@#278@$@#Save KRV Models")),
            "Save KRV Models");
    }
};

QTEST_MAIN(TestCatalogue)
#include "tst_catalogue.moc"
