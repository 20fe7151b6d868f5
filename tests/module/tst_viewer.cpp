// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSplitter>

#include "zeb_utils.h"

namespace {

struct Rename
{
    const char* name;
    QString typed;
    QString approved;
    bool isRefused = false;
};

/** What an action computes, and what it leaves for Recalculate. */
struct Computing
{
    const char* name;
    QString test; ///< drill hole size in the test table afterwards, in microns or mils
    QString job;
    bool canRecalculate;
    std::vector<std::function<void()>> acts;
};

} // namespace

/** The viewer: its models table, and what follows what. */
class TestViewer : public HostTest
{
    Q_OBJECT

private slots:
    void selectingIsNoChange()
    {
        const QByteArray types = "<HoleType name='NPth' amount='400'/>";
        show({modelXml("a", "1", "yes", types), modelXml("b", "2"), modelXml("c", "3", "yes")});
        for (const bool changed : {false, true}) {
            for (const int row : {1, 2, 0}) {
                models()->selectRow(row);
                QCOMPARE(nameLabel()->text(), QString("abc").mid(row, 1));
                QCOMPARE(formula()->text(), QString::number(row + 1));
                QCOMPARE(in<QCheckBox>("useBitFileCheckBox")->isChecked(), row != 1);
                QCOMPARE(rowTexts(amounts(), 0), QStringList({"-", "-", "-"}));
                QCOMPARE(rowTexts(amounts(), 5).join(' '), row == 0 ? "1 0 0" : "- - -");
                QCOMPARE(hasChanges(mHost->viewer()), changed);
            }
            models()->clearSelection();
            QCOMPARE(nameLabel()->text(), QString("a"));
            click(mHost->viewer(), "useBitFileCheckBox");
            click(mHost->viewer(), "useBitFileCheckBox");
        }
    }

    void newModels()
    {
        const char* const parts[] = {"broxAmountsWidget", "broxDhsWidget", "broxTesterWidget"};
        QVERIFY(models()->isHidden() && in<QWidget>("noModelsMessageFrame")->isVisible());
        for (const char* part : parts) {
            QVERIFY(!in<QWidget>(part)->isEnabled());
        }
        QCOMPARE(nameLabel()->text(), QString("<None>"));
        QCOMPARE(in<QLabel>("unitsLabel")->text(), QString("Microns"));
        QVERIFY(in<QWidget>("loadToolButton")->isHidden());
        models()->setMaximumHeight(50);
        const QList<int> heights = in<QSplitter>("splitter")->sizes();
        QVERIFY(heights[0] < heights[1]);
        for (const char* name : {"Model", "Model + 1", "Model + 2"}) {
            click(mHost->viewer(), "newToolButton");
            QVERIFY(models()->isVisible() && in<QWidget>("noModelsMessageFrame")->isHidden());
            for (const char* part : parts) {
                QVERIFY(in<QWidget>(part)->isEnabled());
            }
            QLineEdit* editor = openEditor(models());
            QVERIFY(editor);
            QCOMPARE(editor->text(), QString(name));
            QVERIFY(models()->viewport()->rect().contains(editor->geometry().center()));
            QTest::keyClick(editor, Qt::Key_Escape);
            QCOMPARE(nameLabel()->text(), QString(name));
            QCOMPARE(formula()->text(), QString("FHS + AMOUNT + (MAX_TOL - MIN_TOL) / 2"));
            QVERIFY(hasChanges(mHost->viewer()));
        }
        typeInto(models(), 1, 0, "0");
        QCOMPARE(columnTexts(models(), 0), QStringList({"0", "Model", "Model + 2"}));
        QCOMPARE(mHost->modelNames(), QStringList({"Model", "0", "Model + 2"}));
        QCOMPARE(mHost->heard, QStringList("0: Model + 1 > 0"));
    }

    void renames_data()
    {
        const QString longest = 'X' + QString(63, 'W');
        addRows<Rename>({
            {"other case", "B", "B"},
            {"blanks are kept", " c ", " c "},
            {"longest", longest, longest},
            {"longest between blanks", " " + longest + " ", " " + longest + " "},
            {"too long", longest + "W", "b", true},
            {"name of another between blanks", " a ", "b", true},
            {"empty", "", "b", true},
            {"unchanged", "b", "b"},
        });
    }

    void renames()
    {
        QFETCH(Rename, data);
        show({modelXml("b"), modelXml("a")});
        models()->selectRow(1);
        bool wasChanged = false; // when the host hears of it
        mHost->onHeard = [&] { wasChanged = hasChanges(mHost->viewer()); };
        Answers answers;
        if (data.isRefused) {
            answers.add([](QDialog* dialog) { dialog->reject(); });
        }
        click(mHost->viewer(), "renameToolButton");
        QVERIFY(openEditor(models()));
        typeInto(models(), 1, 0, data.typed);
        const QString name = data.approved;
        QCOMPARE(models()->currentItem()->text(), name);
        QCOMPARE(models()->currentItem()->toolTip(), name);
        QCOMPARE(nameLabel()->toolTip(), name);
        QCOMPARE(nameLabel()->text() == name, name.size() < 64);
        QCOMPARE(nameLabel()->text().at(0), name.at(0));
        QCOMPARE(mHost->modelNames(), QStringList({name, "a"}));
        const bool isRenamed = name != "b";
        QCOMPARE(mHost->heard, isRenamed ? QStringList("0: b > " + name) : QStringList());
        QCOMPARE(hasChanges(mHost->viewer()), isRenamed);
        QVERIFY(!wasChanged);
    }

    void deletions()
    {
        show({modelXml("b"), modelXml("a"), modelXml("b")});
        // All has been done when the host hears of it, but for the row, which goes last.
        mHost->onHeard = [&] {
            QCOMPARE(models()->rowCount(), mHost->modelNames().size() + 1);
            QVERIFY(hasChanges(mHost->viewer()));
        };
        Answers answers{QMessageBox::Cancel, QMessageBox::Ok, QMessageBox::Ok, QMessageBox::Ok};
        click(mHost->viewer(), "deleteToolButton");
        QCOMPARE(mHost->modelNames(), QStringList({"b", "a", "b"}));
        QVERIFY(!hasChanges(mHost->viewer()));

        click(mHost->viewer(), "deleteToolButton");
        QCOMPARE(columnTexts(models(), 0), QStringList({"b", "b"}));
        QCOMPARE(nameLabel()->text(), QString("b")); // the neighbour is selected
        click(mHost->viewer(), "deleteToolButton"); // one of two of a name
        QCOMPARE(mHost->modelNames(), QStringList("b"));
        click(mHost->viewer(), "deleteToolButton");
        QCOMPARE(mHost->heard, QStringList({"0: a > -", "0: b > -", "0: b > -"}));
        QVERIFY(in<QWidget>("noModelsMessageFrame")->isVisible());
        QVERIFY(!models()->isVisible());
        QVERIFY(!in<QWidget>("broxDhsWidget")->isEnabled());
        for (const char* button : {"renameToolButton", "deleteToolButton"}) {
            click(mHost->viewer(), button); // there is nothing to act on
        }
        QCOMPARE(mHost->drill("b", 400).size, 0);
    }

    /** The user reads of a failure; the busy cursor of the work goes, what was done stays. */
    void failures()
    {
        show({modelXml("a"), modelXml("b")});
        for (const bool isDeletion : {false, true}) {
            QApplication::setOverrideCursor(Qt::WaitCursor);
            QApplication::setOverrideCursor(Qt::BusyCursor);
            standin_fail("vex__data_stpid2vex_num", 1, 824099);
            Answers answers;
            answers.agree();
            if (isDeletion) {
                click(mHost->viewer(), "deleteToolButton");
            } else {
                models()->item(0, 0)->setText("c");
            }
            QCOMPARE(answers.seen.last().text, QString(InternalException(824099).getMessage()));
            QCOMPARE(answers.seen.last().cursor, Qt::ArrowCursor);
            QVERIFY(QString(InternalException(1).getMessage()) != answers.seen.last().text);
            QVERIFY(QApplication::overrideCursor());
            QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
            QApplication::restoreOverrideCursor();
            QVERIFY(!QApplication::overrideCursor());
            const QStringList names = isDeletion ? QStringList("b") : QStringList({"b", "c"});
            QCOMPARE(columnTexts(models(), 0), names);
            QCOMPARE(mHost->modelNames().size(), names.size());
            QCOMPARE(hasChanges(mHost->viewer()), isDeletion);
        }
        QVERIFY(mHost->heard.isEmpty());
    }

    void computing_data()
    {
        const auto press = [this](const char* name) {
            return [=, this] { click(mHost->viewer(), name); };
        };
        const auto amount = [this] { typeInto(amounts(), 0, 0, "3"); };
        const auto type = [this](const char* keys) {
            return [=, this] { QTest::keyClicks(formula(), keys); };
        };
        addRows<Computing>({
            {"nothing", "101", "1001", false, {}},
            {"amount", "103", "1001", true, {amount}},
            {"formula", "111", "1001", true, {type("+4000")}},
            {"refused formula", "101", "1001", false, {type("+")}},
            {"formula without a value", "101", "1001", true, {type("1")}},
            {"use of bits", "2000", "1001", true, {press("useBitFileCheckBox")}},
            {"test row", "201", "1001", false, {[this] { typeInto(tester(), 0, 0, "200"); }}},
            {"recalculate", "103", "1003", false, {amount, press("recalcPushButton")}},
            {"recalculate in vain", "101", "0", false, {type("1"), press("recalcPushButton")}},
            {"save", "103", "1001", false, {amount, press("saveToolButton")}},
            {"other model", "2", "2", false, {[this] { models()->selectRow(1); }}},
            {"rename", "101", "1001", true, {[this] { models()->item(0, 0)->setText("c"); }}},
            {"new model", "2000", "2000", false, {press("newToolButton")}},
            {"units", "3.976378", "39.4094", true, {[this] { mHost->changeUnits(Host::Inch); }}},
        });
    }

    void computing()
    {
        QFETCH(Computing, data);
        mHost->write("brox_drill_bits.xml", bitsXml({bitXml("big", "2", "2")}));
        const standin_tool tool = {0, 0, 0, 0, 400000, 1};
        standin_add_tool(standin_add_layer(mHost->step, "drill"), &tool);
        show({modelXml("a", "FHS + AMOUNT", "no", R"(<HoleType name="Pth" amount="400"/>)"),
            modelXml("b", "800")});
        typeInto(tester(), 0, 0, "100");
        for (const auto& act : data.acts) {
            act();
        }
        const auto number = [](const QString& text) {
            return QString::number(text.toDouble(), 'g', 8);
        };
        QCOMPARE(number(cellText(tester(), 0, 3)), data.test);
        QCOMPARE(number(cellText(mHost->table("jobDrillDataTableWidget"), 0, 6)), data.job);
        QCOMPARE(in<QWidget>("recalcPushButton")->isEnabled(), data.canRecalculate);
    }

    void scrollLink()
    {
        show({modelXml("a")});
        amounts()->setFixedHeight(90);
        tester()->setFixedHeight(70);
        QCoreApplication::processEvents();
        QScrollBar* first = amounts()->verticalScrollBar();
        QScrollBar* second = tester()->verticalScrollBar();
        QVERIFY(first->maximum() > 1 && second->maximum() >= first->maximum());
        for (const auto& [bar, other] : {std::pair(first, second), std::pair(second, first)}) {
            for (const int value : {1, 2, 0}) {
                bar->setValue(value);
                QCOMPARE(bar->value(), value);
                QCOMPARE(other->value(), value);
            }
            // A place that the other can't reach is none for both.
            const int reachable = other->maximum();
            bar->setMaximum(reachable + 3);
            bar->setValue(bar->maximum());
            QCOMPARE(other->value(), reachable);
            QCOMPARE(bar->value(), reachable);
            bar->setMaximum(reachable);
            bar->setValue(0);
        }
    }

    void loading()
    {
        show({modelXml("a"), modelXml("z")});
        mHost->write("other.xml", modelsXml({modelXml("y", "2"), modelXml("x", "1")}));
        models()->item(0, 0)->setText("b");
        models()->selectRow(1);
        using Buttons = std::initializer_list<QMessageBox::StandardButton>;
        const auto load = [&](Buttons buttons, const char* file) {
            Answers answers(buttons); // a button that a dialog lacks rejects it
            if (file) {
                answers.addFile(mHost->path(file));
            }
            click(mHost->viewer(), "loadToolButton");
            return mHost->modelNames().join(' ') + (hasChanges(mHost->viewer()) ? "*" : "");
        };
        QCOMPARE(load({QMessageBox::Cancel}, nullptr), QString("b z*"));
        QCOMPARE(load({QMessageBox::Discard, QMessageBox::NoButton}, nullptr), QString("b z*"));
        QVERIFY(mHost->log.isEmpty());
        QCOMPARE(load({QMessageBox::Discard}, "../none.xml"), QString("b z"));
        QCOMPARE(nameLabel()->text(), QString("z"));
        QCOMPARE(mHost->log.value(0), QString("INTERNAL|(fi.exists()) at brox_viewer"));
        QCOMPARE(mHost->log.filter("ERROR|Unable to find BROX XML file: /").size(), 1);
        standin_set_system_dir(mHost->path("..").toUtf8());
        {
            Answers answers;
            answers.add([](QDialog* dialog) {
                auto* files = qobject_cast<QFileDialog*>(dialog);
                QCOMPARE(files->directory().dirName(), "brox");
                QCOMPARE(files->nameFilters(),
                    QStringList({"BROX XML File (brox.xml)", "All Files (*)"}));
                dialog->reject();
            });
            click(mHost->viewer(), "loadToolButton");
        }
        QCOMPARE(load({}, "other.xml"), QString("y x"));
        QCOMPARE(nameLabel()->text(), QString("x"));
    }

private:
    void show(const QByteArrayList& list)
    {
        mHost->write("brox.xml", modelsXml(list));
        mHost->viewer();
    }

    template <typename Child>
    Child* in(const char* name)
    {
        return child<Child>(mHost->viewer(), name);
    }

    QTableWidget* models() { return mHost->table("broxModelTableWidget"); }
    QTableWidget* amounts() { return mHost->table("amountsTableWidget"); }
    QTableWidget* tester() { return mHost->table("testerTableWidget"); }
    QLabel* nameLabel() { return in<QLabel>("broxModelNameLabel"); }
    QLineEdit* formula() { return in<QLineEdit>("dhsLineEdit"); }
};

QTEST_MAIN(TestViewer)
#include "tst_viewer.moc"
