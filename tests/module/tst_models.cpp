// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QCheckBox>
#include <QDir>
#include <QDomDocument>
#include <QLineEdit>

#include <climits>
#include <memory>
#include <optional>

#include "brox_man.h"

namespace {

const char* const defaultFormula = "FHS + AMOUNT + (MAX_TOL - MIN_TOL) / 2";

/** What a models file holds, an entry for each element. */
QStringList summary(const QByteArray& xml)
{
    QStringList list;
    QDomDocument document;
    if (!document.setContent(xml)) {
        return {"no XML"};
    }
    const QDomElement root = document.documentElement();
    list.append(root.tagName());
    for (QDomElement model = root.firstChildElement(); !model.isNull();
         model = model.nextSiblingElement()) {
        list.append(model.attribute("name"));
        for (QDomElement element = model.firstChildElement(); !element.isNull();
             element = element.nextSiblingElement()) {
            const auto value = [&element](const char* name) { return element.attribute(name); };
            list.append(element.tagName() == "HoleType"
                    ? QStringList(
                        {value("name"), value("amount"), value("oversized"), value("os_amount")})
                          .join(' ')
                    : value("use_bit_file") + " " + value("text"));
        }
    }
    return list;
}

} // namespace

/** Models, the set and its rules, and the models file. */
class TestModels : public QObject
{
    Q_OBJECT

private slots:
    void init() { mHost.emplace(); }
    void cleanup() { mHost.reset(); }

    void drillTypes_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("type");
        const char* const names[] = {
            "Undefined", "Pth", "Via", "Laser", "Photo", "PressFit", "NPth"};
        for (int i = 0; i < 7; ++i) {
            QTest::newRow(names[i]) << names[i] << i - 1;
        }
    }

    void drillTypes()
    {
        QFETCH(QString, name);
        QFETCH(int, type);
        const DrillTypeManager* manager = DrillTypeManager::instance();
        QCOMPARE(manager, DrillTypeManager::instance());
        QCOMPARE(manager->drillTypeCount(), 6);
        QCOMPARE(manager->drillTypeName(DrillTypeManager::DrillType(type)), name);
        QCOMPARE(int(manager->drillTypeFromName(name)), type);
        QCOMPARE(int(manager->drillTypeFromName(name.toUpper())), -1);
        QCOMPARE(manager->drillTypeName(DrillTypeManager::DrillType(6)), QString());
    }

    void amountsRule_data()
    {
        QTest::addColumn<int>("oversized");
        QTest::addColumn<int>("fhs");
        QTest::addColumn<int>("amount");
        QTest::newRow("below the threshold") << 1000 << 999 << 100;
        QTest::newRow("at the threshold") << 1000 << 1000 << 200;
        QTest::newRow("above the threshold") << 1000 << 1001 << 200;
        QTest::newRow("no threshold") << 0 << INT_MAX << 100;
        QTest::newRow("no threshold, no size") << 0 << 0 << 100;
        QTest::newRow("negative threshold") << -5 << 1000 << 100;
        QTest::newRow("negative size") << 1 << -1 << 100;
    }

    void amountsRule()
    {
        QFETCH(int, oversized);
        QFETCH(int, fhs);
        QFETCH(int, amount);
        BroxModel model("M");
        int value = 7;
        QVERIFY(!model.amountForSize(DrillTypeManager::Via, fhs, &value));
        QCOMPARE(value, 7);
        model.setAmounts(DrillTypeManager::Pth, 1, 1, 1);
        model.setAmounts(DrillTypeManager::Via, 9, 9, 9);
        model.setAmounts(DrillTypeManager::Via, 100, oversized, 200);
        QCOMPARE(model.holeTypeCount(), 2);
        QVERIFY(model.amountForSize(DrillTypeManager::Via, fhs, &value));
        QCOMPARE(value, amount);
    }

    void renameRule_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("allowed");
        const QString longest(64, 'x');
        QTest::newRow("free name") << "C" << true;
        QTest::newRow("other case") << "a" << true;
        QTest::newRow("blanks stay") << " C " << true;
        QTest::newRow("empty") << "" << false;
        QTest::newRow("blanks only") << " \t " << false;
        QTest::newRow("64 characters") << longest << true;
        QTest::newRow("64 characters between blanks") << " " + longest + "  " << true;
        QTest::newRow("65 characters") << longest + "x" << false;
        QTest::newRow("name of another") << "A" << false;
        QTest::newRow("name of another between blanks") << " A " << false;
        QTest::newRow("own name") << "B" << false;
        QTest::newRow("trimmed name of a model that has a blank") << "D" << true;
    }

    void renameRule()
    {
        QFETCH(QString, name);
        QFETCH(bool, allowed);
        BroxModelSet set;
        set.createModel("A");
        BroxModel* model = set.createModel("B");
        set.createModel(" D");
        const QString now = allowed ? name : "B";
        QCOMPARE(model->rename(name), now);
        QCOMPARE(model->modelName(), now);
        QCOMPARE(set.findModel(now), model);
        QCOMPARE(set.modelAt(1), model);
        QCOMPARE(BroxModel("alone").rename("C"), QString("alone"));
    }

    void set()
    {
        BroxModelSet set;
        set.clear();
        for (const char* name : {"A", "B", "C", "B"}) {
            set.createModel(name);
        }
        QCOMPARE(set.findModel("B"), set.modelAt(1));
        QVERIFY(!set.findModel("b"));
        set.removeModel("b");
        set.removeModel("B");
        QCOMPARE(set.modelCount(), 3);
        QCOMPARE(set.modelAt(1)->modelName(), QString("C"));
        QCOMPARE(set.findModel("B"), set.modelAt(2)); // the second of the name
    }

    void files_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("saved");
        const auto row = [](const char* name, const QByteArray& content, QStringList saved) {
            saved.prepend("DrillToolModels");
            QTest::newRow(name) << "<DrillToolModels>" + content + "</DrillToolModels>" << saved;
        };
        const QString byDefault = QString("yes ") + defaultFormula;
        row("order of models and records",
            modelXml("b", "FHS", "yes",
                "<HoleType name='NPth' amount='1' oversized='2' os_amount='3'/>"
                "<HoleType name='Pth' os_amount='-6' oversized='-5' amount='-4'/>")
                + modelXml("a", "FHS*2", "no"),
            {"b", "NPth 1 2 3", "Pth -4 -5 -6", "yes FHS", "a", "no FHS*2"});
        row("one name twice", modelXml("a", "1") + modelXml("a", "2"), {"a", "no 1", "a", "no 2"});
        row("formula before amounts",
            "<DrillToolModel name='a'><DhsFormula text='1'/><HoleType "
            "name='Via'/></DrillToolModel>",
            {"a", "Via 0 0 0", "no 1"});
        row("without a formula", "<DrillToolModel name='a'/>", {"a", byDefault});
        row("yes in other case", modelXml("a", "1", "Yes"), {"a", "no 1"});
        row("formula without text", "<DrillToolModel name='a'><DhsFormula/></DrillToolModel>",
            {"a", "no "});
        row("second formula counts",
            "<DrillToolModel name='a'><DhsFormula text='1' use_bit_file='yes'/>"
            "<DhsFormula text='2'/></DrillToolModel>",
            {"a", "no 2"});
        row("numbers that are none",
            "<DrillToolModel name='a'><HoleType name='Pth' amount='abc' oversized='1.5'"
            " os_amount='2147483648'/></DrillToolModel>",
            {"a", "Pth 0 0 0", byDefault});
        row("greatest numbers",
            "<DrillToolModel name='a'><HoleType name='Pth' amount='2147483647'"
            " oversized='-2147483648'/></DrillToolModel>",
            {"a", "Pth 2147483647 -2147483648 0", byDefault});
        row("second record field by field",
            "<DrillToolModel name='a'><HoleType name='Pth' amount='1' oversized='2'/>"
            "<HoleType name='Via'/><HoleType name='Pth' amount='x' oversized='3' os_amount='4'/>"
            "</DrillToolModel>",
            {"a", "Pth 1 3 4", "Via 0 0 0", byDefault});
        row("unknown types are one",
            "<DrillToolModel name='a'><HoleType name='pth' amount='1'/><HoleType amount='2'/>"
            "</DrillToolModel>",
            {"a", "Undefined 2 0 0", byDefault});
        row("nameless, foreign and misspelt elements",
            "<!-- c -->text<DrillToolModel/><DrillToolModel name=''/><drilltoolmodel name='x'/>"
            "<Other name='y'/><DrillToolModel name='a'><!-- c --><holetype name='Pth'/>text"
            "</DrillToolModel>",
            {"a", byDefault});
        row("odd names and formulas",
            modelXml(
                " &quot;q&quot; &lt;b&gt; &amp;amp;&#10;line&#9;tab ", "FHS\u00b5&quot;&#13;&#10;")
                + modelXml("\u00b5\u6f22\U0001F600", "'1'"),
            {" \"q\" <b> &amp;\nline\ttab ", "no FHS\u00b5\"\r\n", "\u00b5\u6f22\U0001F600",
                "no '1'"});
    }

    /** What is read is written, and what is written is read again as it was. */
    void files()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, saved);
        mHost->write("brox.xml", content);
        change();
        click(mHost->viewer(), "saveToolButton");
        const QByteArray first = mHost->read("brox.xml");
        QCOMPARE(summary(first), saved);
        mHost->endViewer();
        change();
        click(mHost->viewer(), "saveToolButton");
        QCOMPARE(mHost->read("brox.xml"), first);
        QVERIFY(mHost->log.isEmpty());
    }

    void charactersThatXmlCannotHold_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reread");
        const QString invalid = QStringLiteral("\u0001\u001f\ufffe\uffff") + QChar(0xdc00);
        QTest::newRow("left out") << "a" + invalid + "z"
                                  << "az";
        QTest::newRow("never a model without a name") << invalid << QString(QChar(0xfffd));
    }

    void charactersThatXmlCannotHold()
    {
        QFETCH(QString, name);
        mHost->write("brox.xml", modelsXml({modelXml("a")}));
        auto* table = child<QTableWidget>(mHost->viewer(), "broxModelTableWidget");
        table->item(0, 0)->setText(name);
        click(mHost->viewer(), "saveToolButton");
        mHost->endViewer();
        QTEST(mHost->modelNames().join('|'), "reread");
    }

    void filesThatAreNone_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("condition");
        QTest::addColumn<QString>("message");
        const auto row = [](const char* name, const QByteArray& content, const char* condition,
                             const char* message) {
            QTest::newRow(name) << content << QString(condition) << QString(message);
        };
        const char* const notXml = "setContentStatus == true";
        const char* const notXmlMessage =
            "Error reading BROX XML file: %1\nparsing error message: ";
        row("empty", "", notXml, notXmlMessage);
        row("malformed", "<DrillToolModels>", notXml, notXmlMessage);
        row("nested too deeply",
            "<DrillToolModels>" + QByteArray("<a>").repeated(200000)
                + QByteArray("</a>").repeated(200000) + "</DrillToolModels>",
            notXml, notXmlMessage);
        row("other root", "<DrillSizeTable/>",
            "mainElement.tagName().compare(\"DrillToolModels\", Qt::CaseInsensitive) == 0",
            "%1 is not a legal BROX XML file.");
        row("folder", QByteArray(), "file.open(QFile::ReadOnly | QFile::Text)",
            "Error reading BROX XML file: %1");
    }

    /** At the start they leave the viewer without models; through the dialog the models stay. */
    void filesThatAreNone()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, condition);
        QFETCH(QString, message);
        const auto checkLog = [&](const QString& name) {
            QCOMPARE(mHost->log.size(), 2);
            QCOMPARE(mHost->log[0], QString("INTERNAL|(%1) at brox_viewer").arg(condition));
            const QString wanted = "ERROR|" + message.arg(mHost->path(name));
            QVERIFY2(mHost->log[1].startsWith(wanted), qPrintable(mHost->log[1]));
            QCOMPARE(standin_error_sounds(), 1);
        };
        const auto writeAs = [&](const QString& name) {
            if (content.isNull()) {
                QVERIFY(QDir().mkpath(mHost->path(name)));
            } else {
                mHost->write(name, content);
            }
        };
        writeAs("brox.xml");
        QVERIFY(child<QFrame>(mHost->viewer(), "noModelsMessageFrame")->isVisible());
        QVERIFY(mHost->modelNames().isEmpty());
        checkLog("brox.xml");
        if (content.isNull()) {
            return; // the dialog would enter the folder
        }

        mHost.emplace();
        mHost->write("brox.xml", modelsXml({modelXml("a"), modelXml("b")}));
        change();
        writeAs("other.xml");
        Answers answers{QMessageBox::Discard};
        answers.addFile(mHost->path("other.xml"));
        click(mHost->viewer(), "loadToolButton");
        checkLog("other.xml");
        QCOMPARE(mHost->modelNames(), QStringList({"a", "b"}));
        QVERIFY(!hasChanges(mHost->viewer()));
    }

    void filesThatAreMissing()
    {
        QVERIFY(mHost->modelNames().isEmpty());
        QVERIFY(mHost->log.isEmpty()); // none at the start is no failure
        Answers answers;
        answers.addFile(mHost->path("../none.xml"));
        click(mHost->viewer(), "loadToolButton");
        QCOMPARE(mHost->log.size(), 2);
        QCOMPARE(mHost->log[0], QString("INTERNAL|(fi.exists()) at brox_viewer"));
        QVERIFY(mHost->log[1].startsWith("ERROR|Unable to find BROX XML file: /"));
    }

    void rootInOtherCase()
    {
        mHost->write("brox.xml", "<drilltoolmodels><DrillToolModel name='a'/></drilltoolmodels>");
        QCOMPARE(mHost->modelNames(), QStringList("a"));
    }

    void saving_data()
    {
        QTest::addColumn<std::function<void()>>("prepare");
        QTest::addColumn<bool>("isSaved");
        QTest::addColumn<bool>("hasFile");
        QTest::addColumn<bool>("hasLog");
        using Prepare = std::function<void()>;
        QTest::newRow("folder is made") << Prepare([] {}) << true << true << false;
        QTest::newRow("host has no folder")
            << Prepare([] { standin_set_data_dir(nullptr); }) << false << false << false;
        QTest::newRow("host fails") << Prepare([] { standin_fail("zeb__sarn_get_dir", 1, 824099); })
                                    << false << false << false;
        QTest::newRow("folder can't be made") << Prepare([this] {
            mHost->write("file", "");
            standin_set_data_dir(mHost->path("file").toUtf8());
        }) << false << false << false;
        QTest::newRow("file can't be opened")
            << Prepare([this] { QDir().mkpath(mHost->path("brox.xml")); }) << true << false << true;
    }

    void saving()
    {
        QFETCH(std::function<void()>, prepare);
        QFETCH(bool, isSaved);
        QFETCH(bool, hasFile);
        QFETCH(bool, hasLog);
        click(mHost->viewer(), "saveToolButton");
        QVERIFY(!QFileInfo::exists(mHost->path("brox.xml"))); // nothing to save
        click(mHost->viewer(), "newToolButton");
        QVERIFY(hasChanges(mHost->viewer()));
        prepare();
        click(mHost->viewer(), "saveToolButton");
        QCOMPARE(hasChanges(mHost->viewer()), !isSaved);
        QCOMPARE(!mHost->read("brox.xml").isEmpty(), hasFile);
        QCOMPARE(mHost->log.filter(QRegularExpression("^ERROR\\|.")).size(), hasLog ? 1 : 0);
        QCOMPARE(mHost->log.size(), hasLog ? 1 : 0);
        if (hasFile) {
            QCOMPARE(summary(mHost->read("brox.xml")),
                QStringList({"DrillToolModels", "Model", QString("yes ") + defaultFormula}));
            QFile::remove(mHost->path("brox.xml"));
            click(mHost->viewer(), "saveToolButton");
            QVERIFY(!QFileInfo::exists(mHost->path("brox.xml")));
        }
    }

    void closing_data()
    {
        QTest::addColumn<int>("button");
        QTest::addColumn<bool>("hasFolder");
        QTest::addColumn<int>("mayClose");
        QTest::addColumn<bool>("staysChanged");
        QTest::newRow("cancel") << int(QMessageBox::Cancel) << true << 0 << true;
        QTest::newRow("discard") << int(QMessageBox::Discard) << true << 1 << true;
        QTest::newRow("save") << int(QMessageBox::Save) << true << 1 << false;
        QTest::newRow("save that can't be") << int(QMessageBox::Save) << false << 0 << true;
    }

    void closing()
    {
        QFETCH(int, button);
        QFETCH(bool, hasFolder);
        QFETCH(int, mayClose);
        QFETCH(bool, staysChanged);
        mHost->write("brox.xml", modelsXml({modelXml("a")}));
        int ok = 0;
        mHost->viewer();
        QCOMPARE(brox__proxy_can_close(mHost->step, &ok), 0); // no question
        QCOMPARE(ok, 1);
        change();
        if (!hasFolder) {
            standin_set_data_dir(nullptr);
        }
        Answers answers{QMessageBox::StandardButton(button)};
        QCOMPARE(brox__proxy_can_close(mHost->step, &ok), 0);
        QCOMPARE(ok, mayClose);
        QCOMPARE(hasChanges(mHost->viewer()), staysChanged);
        QCOMPARE(answers.seen.size(), 1);
        QCOMPARE(answers.seen[0].title, QString("Drill Tool Manager Setup"));
        QCOMPARE(answers.seen[0].text,
            QString("Unsaved data will be lost.\nClick 'Save' to save data before closing."));
        QCOMPARE(answers.seen[0].buttons,
            QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
        QCOMPARE(answers.seen[0].cursor, Qt::ArrowCursor);
        QVERIFY(!QApplication::overrideCursor());
    }

private:
    /** Makes the data count as changed, and leaves them as they are. */
    void change()
    {
        auto* box = child<QCheckBox>(mHost->viewer(), "useBitFileCheckBox");
        box->click();
        box->click();
    }

    std::optional<Host> mHost;
};

QTEST_MAIN(TestModels)
#include "tst_models.moc"
