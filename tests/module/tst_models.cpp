// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QDomDocument>
#include <QLineEdit>

namespace {

const QByteArray defaultFormula = "FHS + AMOUNT + (MAX_TOL - MIN_TOL) / 2";

/** What a models file holds, an entry for each element. */
QStringList summary(const QByteArray& xml)
{
    QDomDocument document;
    if (!document.setContent(xml)) {
        return {"no XML"};
    }
    QStringList list;
    for (QDomElement model = document.documentElement().firstChildElement(); !model.isNull();
         model = model.nextSiblingElement()) {
        list.append(model.attribute("name"));
        for (QDomElement element = model.firstChildElement(); !element.isNull();
             element = element.nextSiblingElement()) {
            QStringList values;
            for (const char* name :
                {"name", "amount", "oversized", "os_amount", "use_bit_file", "text"}) {
                if (element.hasAttribute(name)) {
                    values.append(element.attribute(name));
                }
            }
            list.append(values.join(' '));
        }
    }
    return list;
}

struct File
{
    const char* name;
    QByteArray models;
    QStringList saved; ///< the elements in it after a save
};

QByteArray modelA(const QByteArray& inner)
{
    return "<DrillToolModel name='a'>" + inner + "</DrillToolModel>";
}

const QString byDefault = "yes " + defaultFormula;

const std::vector<File> files = {
    {"order of models and records",
        modelXml("b", "FHS", "yes",
            "<HoleType name='NPth' amount='1' oversized='2' os_amount='3'/>"
            "<HoleType name='PressFit'/><HoleType name='Photo'/><HoleType name='Laser'/>"
            "<HoleType name='Pth' os_amount='-6' oversized='-5' amount='-4'/>")
            + modelXml("a", "FHS*2"),
        {"b", "NPth 1 2 3", "PressFit 0 0 0", "Photo 0 0 0", "Laser 0 0 0", "Pth -4 -5 -6",
            "yes FHS", "a", "no FHS*2"}},
    {"one name twice", modelXml("a", "1") + modelXml("a", "2"), {"a", "no 1", "a", "no 2"}},
    {"formula before amounts", modelA("<DhsFormula text='1'/><HoleType name='Via'/>"),
        {"a", "Via 0 0 0", "no 1"}},
    {"without a formula", modelA(""), {"a", byDefault}},
    {"yes in other case", modelXml("a", "1", "Yes"), {"a", "no 1"}},
    {"formula without text", modelA("<DhsFormula/>"), {"a", "no "}},
    {"second formula counts",
        modelA("<DhsFormula text='1' use_bit_file='yes'/><DhsFormula text='2'/>"), {"a", "no 2"}},
    {"numbers that are none",
        modelA("<HoleType name='Pth' amount='abc' oversized='1.5' os_amount='2147483648'/>"),
        {"a", "Pth 0 0 0", byDefault}},
    {"greatest numbers",
        modelA("<HoleType name='Pth' amount='2147483647' oversized='-2147483648'/>"),
        {"a", "Pth 2147483647 -2147483648 0", byDefault}},
    {"second record field by field",
        modelA("<HoleType name='Pth' amount='1' oversized='2'/><HoleType name='Via'/>"
               "<HoleType name='Pth' amount='x' oversized='3' os_amount='4'/>"),
        {"a", "Pth 1 3 4", "Via 0 0 0", byDefault}},
    {"unknown types are one", modelA("<HoleType name='pth' amount='1'/><HoleType amount='2'/>"),
        {"a", "Undefined 2 0 0", byDefault}},
    {"nameless, foreign and misspelt elements",
        "<!-- c -->text<DrillToolModel/><DrillToolModel name=''/><drilltoolmodel name='x'/>"
        "<Other name='y'/>"
            + modelA("<!-- c --><holetype name='Pth'/>text"),
        {"a", byDefault}},
    {"odd names and formulas",
        modelXml(" &quot;q&quot; &lt;b&gt; &amp;amp;&#10;line&#9;tab ", "FHSµ&quot;&#13;&#10;")
            + modelXml("µ漢\U0001F600", "'1'"),
        {" \"q\" <b> &amp;\nline\ttab ", "no FHSµ\"\r\n", "µ漢\U0001F600", "no '1'"}},
};

} // namespace

/** What models hold: the file and the table of amounts. */
class TestModels : public HostTest
{
    Q_OBJECT

private slots:
    void file_data() { addRows(files); }

    /** What is read is written, and what is written is read again as it was. */
    void file()
    {
        QFETCH(File, data);
        show({data.models});
        change();
        QCOMPARE(saved(), data.saved);
        const QByteArray first = mHost->read("brox.xml");
        mHost->endViewer();
        change();
        saved();
        QCOMPARE(mHost->read("brox.xml"), first);
        QVERIFY(mHost->log.isEmpty());
    }

    /** Characters that XML cannot hold are left out; never is a model without a name. */
    void oddCharacters()
    {
        const QString invalid = QStringLiteral("\u0001\u001f\ufffe\uffff") + QChar(0xdc00);
        show({modelXml("b"), modelXml("c")});
        mHost->table("broxModelTableWidget")->item(0, 0)->setText("a" + invalid + "z");
        mHost->table("broxModelTableWidget")->setCurrentCell(1, 0);
        mHost->table("broxModelTableWidget")->item(1, 0)->setText(invalid);
        saved();
        mHost->endViewer();
        QCOMPARE(mHost->modelNames(), QStringList({"a\ufffdz", "\ufffd"}));
    }

    void closing()
    {
        show({modelXml("a")});
        int ok = 0;
        click(mHost->viewer(), "actionAdd_Size"); // unsaved bits are not asked about
        auto* formula = child<QLineEdit>(mHost->viewer(), "dhsLineEdit");
        formula->setFocus();
        QTest::keyClicks(formula, "+"); // nor is a refused formula, which stays
        click(mHost->viewer(), "saveToolButton");
        QCOMPARE(brox__proxy_can_close(mHost->step, &ok), 0);
        QCOMPARE(ok, 1);
        QVERIFY(formula->hasFocus() && formula->text().endsWith('+'));
        change();
        standin_set_data_dir(nullptr); // nothing can be saved
        for (const auto& [button, mayClose] : {std::pair(QMessageBox::Cancel, 0),
                 std::pair(QMessageBox::Save, 0), std::pair(QMessageBox::Discard, 1)}) {
            Answers answers{button};
            QCOMPARE(brox__proxy_can_close(mHost->step, &ok), 0);
            QCOMPARE(ok, mayClose);
            QVERIFY(hasChanges(mHost->viewer()));
        }
        standin_set_data_dir(mHost->path("..").toUtf8());
        Answers answers{QMessageBox::Save};
        QCOMPARE(brox__proxy_can_close(mHost->step, &ok), 0);
        QCOMPARE(ok, 1);
        QVERIFY(!hasChanges(mHost->viewer()));
    }

    /** An amount in a row that was blank; the cells beside it stay blank and count as 0. */
    void amountsTyped()
    {
        standin_set_units(mHost->step, Host::Inch);
        show({modelXml("a")});
        typeInto(amounts(), 4, 1, "-0.5");
        QCOMPARE(rowTexts(amounts(), 4), QStringList({"-", "-0.5", "-"}));
        QCOMPARE(saved()[1], QString("PressFit 0 -5080 0"));
        typeInto(amounts(), 4, 1, "");
        QCOMPARE(saved()[1], QString("PressFit 0 0 0"));
    }

    /** Units there and back lose nothing, however the numbers are rounded on show. */
    void unitsKeepAmounts()
    {
        const QByteArray types =
            "<HoleType name='Pth' amount='400' oversized='1' os_amount='-399'/>"
            "<HoleType name='Laser' amount='10161' oversized='-10159' os_amount='0'/>"
            "<HoleType name='NPth' amount='2147483647' oversized='-2147483647' os_amount='3'/>";
        show({modelXml("a", "1", "no", types)});
        const QStringList records = summary(mHost->read("brox.xml"));
        const QStringList texts = rowTexts(amounts(), 0);
        mHost->changeUnits(Host::Inch);
        QVERIFY(rowTexts(amounts(), 0) != texts);
        QVERIFY(hasChanges(mHost->viewer())); // a number that changes counts as an edit
        QCOMPARE(saved(), records);
        mHost->changeUnits(Host::Metric);
        QCOMPARE(rowTexts(amounts(), 0), texts);
        QCOMPARE(rowTexts(amounts(), 1), QStringList({"-", "-", "-"}));
        QCOMPARE(saved(), records);
    }

private:
    void show(const QByteArrayList& models)
    {
        mHost->write("brox.xml", modelsXml(models));
        mHost->viewer();
    }

    /** Makes the data count as changed, and leaves them as they are. */
    void change()
    {
        click(mHost->viewer(), "useBitFileCheckBox");
        click(mHost->viewer(), "useBitFileCheckBox");
    }

    QStringList saved()
    {
        click(mHost->viewer(), "saveToolButton");
        return summary(mHost->read("brox.xml"));
    }

    QTableWidget* amounts() { return mHost->table("amountsTableWidget"); }
};

QTEST_MAIN(TestModels)
#include "tst_models.moc"
