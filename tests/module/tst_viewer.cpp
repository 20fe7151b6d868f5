// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>

#include <optional>

#include "zeb_utils.h"

namespace {

/** What the host does when it hears of a rename or a deletion. */
std::function<void(const QString&)> hear;

void onRenamedDeleted(int, const char* oldName, const char* newName)
{
    hear(QString("%1 -> %2").arg(oldName, newName ? newName : "gone"));
}

} // namespace

/** The viewer: its models table, and what follows what. */
class TestViewer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { brox__proxy_set_model_renamed_deleted_cb(onRenamedDeleted); }

    void init()
    {
        mHost.emplace();
        mHeard.clear();
        hear = [this](const QString& what) {
            mHeard.append(what + (hasChanges(mHost->viewer()) ? ", changed" : ", unchanged"));
        };
    }

    void cleanup() { mHost.reset(); }

    void start_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("isLoaded");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("formula");
        QTest::newRow("no file") << QByteArray() << false << "<None>"
                                 << "";
        QTest::newRow("bad file") << QByteArray("<x") << false << "<None>"
                                  << "";
        QTest::newRow("no models") << modelsXml({}) << true << "<None>"
                                   << "";
        QTest::newRow("models") << modelsXml({modelXml("b", "1", "yes"), modelXml("a", "2")})
                                << true << "a"
                                << "2";
    }

    void start()
    {
        QFETCH(QByteArray, content);
        QFETCH(bool, isLoaded);
        QFETCH(QString, label);
        QFETCH(QString, formula);
        if (!content.isNull()) {
            mHost->write("brox.xml", content);
        }
        show();
        QCOMPARE(mModels->isVisible(), isLoaded);
        QCOMPARE(child<QFrame>(mViewer, "noModelsMessageFrame")->isVisible(), !isLoaded);
        for (const char* name : {"broxAmountsWidget", "broxDhsWidget", "broxTesterWidget"}) {
            QCOMPARE(child<QWidget>(mViewer, name)->isEnabled(), isLoaded);
        }
        QCOMPARE(nameLabel()->text(), label);
        QCOMPARE(child<QLineEdit>(mViewer, "dhsLineEdit")->text(), formula);
        QCOMPARE(child<QLabel>(mViewer, "unitsLabel")->text(), QString("Microns"));
        QVERIFY(!hasChanges(mViewer));
        QVERIFY(child<QWidget>(mViewer, "loadToolButton")->isHidden());
        QCOMPARE(mHost->log.isEmpty(), content != "<x");
    }

    void selectingIsNoChange()
    {
        mHost->write("brox.xml",
            modelsXml(
                {modelXml("a", "1", "yes"), modelXml("b", "2", "no"), modelXml("c", "3", "yes")}));
        show();
        auto* useBitFile = child<QCheckBox>(mViewer, "useBitFileCheckBox");
        for (const bool changed : {false, true}) {
            for (const int row : {1, 2, 0}) {
                mModels->selectRow(row);
                QCOMPARE(nameLabel()->text(), QString("abc").mid(row, 1));
                QCOMPARE(
                    child<QLineEdit>(mViewer, "dhsLineEdit")->text(), QString::number(row + 1));
                QCOMPARE(useBitFile->isChecked(), row != 1);
                QCOMPARE(hasChanges(mViewer), changed);
            }
            mModels->clearSelection();
            QCOMPARE(nameLabel()->text(), QString("a"));
            useBitFile->click();
            useBitFile->click();
        }
    }

    void newModels()
    {
        mHost->write(
            "brox.xml", modelsXml({modelXml("MODEL"), modelXml("N"), modelXml("Model + 1")}));
        show();
        for (const char* name : {"Model", "Model + 2", "Model + 3"}) {
            click(mViewer, "newToolButton");
            QLineEdit* editor = openEditor(mModels);
            QVERIFY(editor);
            QCOMPARE(editor->text(), QString(name));
            QTest::keyClick(editor, Qt::Key_Escape);
            QCOMPARE(mModels->currentItem()->text(), QString(name));
            QCOMPARE(mModels->currentItem()->toolTip(), QString(name));
            QCOMPARE(nameLabel()->text(), QString(name));
            QCOMPARE(child<QLineEdit>(mViewer, "dhsLineEdit")->text(),
                QString("FHS + AMOUNT + (MAX_TOL - MIN_TOL) / 2"));
        }
        QVERIFY(hasChanges(mViewer));
        QStringList sorted = columnTexts(mModels, 0);
        sorted.sort();
        QCOMPARE(columnTexts(mModels, 0), sorted);
        QCOMPARE(mHost->modelNames(),
            QStringList({"MODEL", "N", "Model + 1", "Model", "Model + 2", "Model + 3"}));
        QVERIFY(mHeard.isEmpty());
    }

    void firstModel()
    {
        show();
        click(mViewer, "newToolButton");
        QVERIFY(mModels->isVisible());
        QVERIFY(child<QFrame>(mViewer, "noModelsMessageFrame")->isHidden());
        QLineEdit* editor = openEditor(mModels);
        QVERIFY(editor);
        editor->selectAll();
        QTest::keyClicks(editor, "Own");
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();
        QCOMPARE(nameLabel()->text(), QString("Own"));
        QCOMPARE(mHeard, QStringList("Model -> Own, changed"));
        QVERIFY(child<QWidget>(mViewer, "broxAmountsWidget")->isEnabled());
    }

    void renames_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("warnings");
        const QString longest(64, 'W');
        QTest::newRow("free name") << "c"
                                   << "c" << 0;
        QTest::newRow("other case") << "B"
                                    << "B" << 0;
        QTest::newRow("blanks are kept") << " c "
                                         << " c " << 0;
        QTest::newRow("moves to its place") << "0"
                                            << "0" << 0;
        QTest::newRow("longest") << longest << longest << 0;
        QTest::newRow("too long") << longest + "W"
                                  << "b" << 1;
        QTest::newRow("name of another") << "a"
                                         << "b" << 1;
        QTest::newRow("name of another between blanks") << " a"
                                                        << "b" << 1;
        QTest::newRow("empty") << ""
                               << "b" << 1;
        QTest::newRow("unchanged") << "b"
                                   << "b" << 0;
    }

    void renames()
    {
        QFETCH(QString, typed);
        QFETCH(QString, name);
        QFETCH(int, warnings);
        mHost->write("brox.xml", modelsXml({modelXml("b"), modelXml("a")}));
        show();
        mModels->selectRow(1);
        Answers answers;
        if (warnings) {
            answers.add([](QDialog* dialog) { dialog->reject(); });
        }
        click(mViewer, "renameToolButton");
        QVERIFY(openEditor(mModels));
        typeInto(mModels, 1, 0, typed);
        QCOMPARE(mModels->currentItem()->text(), name);
        QCOMPARE(mModels->currentItem()->toolTip(), name);
        QCOMPARE(nameLabel()->toolTip(), name);
        QCOMPARE(nameLabel()->text() == name, name.size() < 64);
        QCOMPARE(nameLabel()->width(), 130);
        QCOMPARE(mHost->modelNames(), QStringList({name, "a"}));
        const bool isRenamed = name != "b";
        // The host hears of it before the data count as changed.
        QCOMPARE(mHeard, isRenamed ? QStringList("b -> " + name + ", unchanged") : QStringList());
        QCOMPARE(hasChanges(mViewer), isRenamed);
        QCOMPARE(answers.seen.size(), warnings);
        if (warnings) {
            QCOMPARE(answers.seen[0].title, QString("Drill Tool Manager Setup"));
            QCOMPARE(answers.seen[0].text,
                QString("Rename not allowed.\nPossible causes: name exists, or name is too long "
                        "(over 64 characters)."));
            QCOMPARE(answers.seen[0].buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
            QCOMPARE(answers.seen[0].cursor, Qt::ArrowCursor);
        }
    }

    void deletions()
    {
        mHost->write("brox.xml", modelsXml({modelXml("b"), modelXml("a")}));
        show();
        hear = [this](const QString& what) {
            // All has been done by then, but for the row, which goes last.
            mHeard.append(QString("%1, %2 in set, %3 rows%4")
                              .arg(what, mHost->modelNames().join(' '))
                              .arg(mModels->rowCount())
                              .arg(hasChanges(mViewer) ? ", changed" : ""));
        };
        Answers answers{QMessageBox::Cancel, QMessageBox::Ok, QMessageBox::Ok};
        click(mViewer, "deleteToolButton");
        QCOMPARE(answers.seen[0].title, QString("KRV Model deletion"));
        QCOMPARE(answers.seen[0].text, QString("Delete Drill Tool Manager Model 'a'?"));
        QCOMPARE(answers.seen[0].buttons, QMessageBox::Ok | QMessageBox::Cancel);
        QCOMPARE(mHost->modelNames(), QStringList({"b", "a"}));
        QVERIFY(!hasChanges(mViewer));

        click(mViewer, "deleteToolButton");
        QCOMPARE(mHeard, QStringList("a -> gone, b in set, 2 rows, changed"));
        QCOMPARE(columnTexts(mModels, 0), QStringList("b"));
        QCOMPARE(nameLabel()->text(), QString("b")); // the neighbour is selected

        mHeard.clear();
        click(mViewer, "deleteToolButton");
        QCOMPARE(mHeard, QStringList("b -> gone,  in set, 1 rows, changed"));
        QVERIFY(child<QFrame>(mViewer, "noModelsMessageFrame")->isVisible());
        QVERIFY(!mModels->isVisible());
        QVERIFY(!child<QWidget>(mViewer, "broxDhsWidget")->isEnabled());
        QCOMPARE(nameLabel()->text(), QString("b"));
        for (const char* button : {"renameToolButton", "deleteToolButton"}) {
            click(mViewer, button); // there is nothing to act on
        }
        QCOMPARE(mHost->drill("b", 400).size, 0);
    }

    void failures_data()
    {
        QTest::addColumn<bool>("isDeletion");
        QTest::newRow("rename") << false;
        QTest::newRow("delete") << true;
    }

    /** What was done before the host failed stays done. */
    void failures()
    {
        QFETCH(bool, isDeletion);
        mHost->write("brox.xml", modelsXml({modelXml("a"), modelXml("b")}));
        show();
        QApplication::setOverrideCursor(Qt::WaitCursor);
        QApplication::setOverrideCursor(Qt::BusyCursor);
        standin_fail("vex__data_stpid2vex_num", 1, 824099);
        Answers answers;
        if (isDeletion) {
            answers.add([](QDialog* dialog) {
                QTest::keyClick(
                    qobject_cast<QMessageBox*>(dialog)->button(QMessageBox::Ok), Qt::Key_Space);
            });
        }
        answers.add([](QDialog* dialog) { dialog->reject(); });
        if (isDeletion) {
            click(mViewer, "deleteToolButton");
        } else {
            mModels->item(0, 0)->setText("c");
        }
        const Answers::Seen failure = answers.seen.last();
        QCOMPARE(failure.text, QString(InternalException(824099).getMessage()));
        QCOMPARE(failure.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
        QCOMPARE(failure.cursor, Qt::ArrowCursor);
        // The busy cursor of the work that failed is gone, and no more.
        QVERIFY(QApplication::overrideCursor());
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
        QApplication::restoreOverrideCursor();
        QVERIFY(!QApplication::overrideCursor());
        QCOMPARE(mHost->modelNames(), isDeletion ? QStringList("b") : QStringList({"c", "b"}));
        QCOMPARE(columnTexts(mModels, 0), isDeletion ? QStringList("b") : QStringList({"b", "c"}));
        QCOMPARE(hasChanges(mViewer), isDeletion);
        QCOMPARE(mHost->log, QStringList({"STATUS|brox_proxy", "STATUS|brox_viewer"}));
        QVERIFY(mHeard.isEmpty());
    }

    void computing_data()
    {
        QTest::addColumn<std::function<void()>>("act");
        QTest::addColumn<QString>("test"); // drill hole sizes afterwards, in microns
        QTest::addColumn<QString>("job");
        QTest::addColumn<bool>("canRecalculate");
        const auto row = [](const char* name, const char* test, const char* job,
                             bool canRecalculate, std::function<void()> act) {
            QTest::newRow(name) << act << test << job << canRecalculate;
        };
        row("nothing", "101", "1001", false, [] {});
        row("amounts", "103", "1001", true, [this] { typeInto(amounts(), 0, 0, "3"); });
        row("formula", "111", "1001", true, [this] { typeFormula("+4000"); });
        row("refused formula", "101", "1001", false, [this] { typeFormula("+"); });
        row("formula without a value", "101", "1001", true, [this] { typeFormula("1"); });
        row("use of bits", "2000", "1001", true,
            [this] { child<QCheckBox>(mViewer, "useBitFileCheckBox")->click(); });
        row("test row", "201", "1001", false, [this] { typeInto(tester(), 0, 0, "200"); });
        row("recalculate", "103", "1003", false, [this] {
            typeInto(amounts(), 0, 0, "3");
            click(mViewer, "recalcPushButton");
        });
        row("save", "103", "1001", false, [this] {
            typeInto(amounts(), 0, 0, "3");
            click(mViewer, "saveToolButton");
        });
        row("other model", "2", "2", false, [this] { mModels->selectRow(1); });
        row("rename", "101", "1001", true, [this] { mModels->item(0, 0)->setText("c"); });
        row("new model", "2000", "2000", false, [this] { click(mViewer, "newToolButton"); });
        row("units", "3.976378", "39.4094", true, [this] { mHost->changeUnits(Host::Inch); });
    }

    void computing()
    {
        QFETCH(std::function<void()>, act);
        QFETCH(QString, test);
        QFETCH(QString, job);
        QFETCH(bool, canRecalculate);
        mHost->write("brox.xml",
            modelsXml(
                {modelXml("a", "FHS + AMOUNT", "no", R"(<HoleType name="Pth" amount="400"/>)"),
                    modelXml("b", "800", "no")}));
        mHost->write("brox_drill_bits.xml", bitsXml({bitXml("big", "2", "2")}));
        const standin_tool tool = {0, 0, 0, 0, 400000, 1};
        standin_add_tool(standin_add_layer(mHost->step, "drill"), &tool);
        show();
        typeInto(tester(), 0, 0, "100");
        act();
        const auto number = [](const QString& text) {
            return QString::number(text.toDouble(), 'g', 8);
        };
        QCOMPARE(number(cellText(tester(), 0, 3)), test);
        QCOMPARE(
            number(cellText(child<QTableWidget>(mViewer, "jobDrillDataTableWidget"), 0, 6)), job);
        QCOMPARE(child<QWidget>(mViewer, "recalcPushButton")->isEnabled(), canRecalculate);
    }

    void scrollLink()
    {
        mHost->write("brox.xml", modelsXml({modelXml("a")}));
        show();
        amounts()->setFixedHeight(90);
        tester()->setFixedHeight(70);
        QCoreApplication::processEvents();
        QScrollBar* first = amounts()->verticalScrollBar();
        QScrollBar* second = tester()->verticalScrollBar();
        QVERIFY(first->maximum() > 1 && second->maximum() >= first->maximum());
        for (const auto& [bar, other, value] :
            {std::tuple(first, second, 1), std::tuple(second, first, 2),
                std::tuple(second, first, 0), std::tuple(first, second, first->maximum())}) {
            bar->setValue(value);
            QCOMPARE(bar->value(), value);
            QCOMPARE(other->value(), value);
        }
        // A place that the other can't reach is none for both.
        for (const auto& [bar, other] : {std::pair(second, first), std::pair(first, second)}) {
            const int reachable = other->maximum();
            bar->setValue(0);
            bar->setMaximum(reachable + 3);
            bar->setValue(bar->maximum());
            QCOMPARE(other->value(), reachable);
            QCOMPARE(bar->value(), reachable);
            bar->setMaximum(reachable);
        }
    }

    void ending_data()
    {
        QTest::addColumn<std::function<void()>>("act");
        using Act = std::function<void()>;
        const auto edit = [](QTableWidget* table) {
            table->setCurrentCell(0, 0);
            table->setFocus();
            QTest::keyClick(table, Qt::Key_F2);
            QTest::keyClicks(openEditor(table), "12");
        };
        QTest::newRow("name open") << Act([=, this] { edit(mModels); });
        QTest::newRow("amount open") << Act([=, this] { edit(amounts()); });
        QTest::newRow("test value open") << Act([=, this] { edit(tester()); });
        QTest::newRow("formula refused") << Act([this] { typeFormula("+"); });
    }

    /** The host may delete a viewer in the middle of the user's work. */
    void ending()
    {
        QFETCH(std::function<void()>, act);
        mHost->write("brox.xml", modelsXml({modelXml("a"), modelXml("b")}));
        show();
        act();
        mHost->endViewer();
        QVERIFY(mHeard.isEmpty());
        QVERIFY(mHost->log.isEmpty());
    }

    void loading_data()
    {
        QTest::addColumn<int>("question"); // 0: there are no changes to be asked for
        QTest::addColumn<bool>("isAccepted");
        QTest::addColumn<bool>("isLoaded");
        QTest::newRow("accepted") << 0 << true << true;
        QTest::newRow("rejected") << 0 << false << false;
        QTest::newRow("changes discarded") << int(QMessageBox::Discard) << true << true;
        QTest::newRow("changes kept") << int(QMessageBox::Cancel) << true << false;
    }

    void loading()
    {
        QFETCH(int, question);
        QFETCH(bool, isAccepted);
        QFETCH(bool, isLoaded);
        mHost->write("brox.xml", modelsXml({modelXml("a")}));
        mHost->write("other.xml", modelsXml({modelXml("y", "2"), modelXml("x", "1")}));
        standin_set_system_dir(mHost->path("..").toUtf8());
        show();
        Answers answers;
        QString folder;
        QStringList filters;
        if (question != 0) {
            mModels->item(0, 0)->setText("b");
            answers.add([question](QDialog* dialog) {
                auto* box = qobject_cast<QMessageBox*>(dialog);
                box->button(QMessageBox::StandardButton(question))->click();
            });
        }
        if (question != QMessageBox::Cancel) {
            answers.add([&](QDialog* dialog) {
                auto* files = qobject_cast<QFileDialog*>(dialog);
                folder = files->directory().canonicalPath();
                filters = files->nameFilters();
                chooseFile(dialog, mHost->path("other.xml"));
                QTest::keyClick(child<QLineEdit>(dialog, "fileNameEdit"),
                    isAccepted ? Qt::Key_Return : Qt::Key_Escape);
            });
        }
        click(mViewer, "loadToolButton");
        const QString before = question != 0 ? "b" : "a";
        QCOMPARE(mHost->modelNames(), isLoaded ? QStringList({"y", "x"}) : QStringList(before));
        QCOMPARE(nameLabel()->text(), isLoaded ? QString("x") : before);
        QCOMPARE(hasChanges(mViewer), !isLoaded && question != 0);
        if (question != QMessageBox::Cancel) {
            QCOMPARE(
                answers.seen.last().title, QString("Load Drill Tool Model Manager XML file..."));
            QCOMPARE(folder, QFileInfo(mHost->path(".")).canonicalFilePath());
            QCOMPARE(filters, QStringList({"BROX XML File (brox.xml)", "All Files (*)"}));
        }
    }

private:
    void show()
    {
        mViewer = mHost->viewer();
        mModels = child<QTableWidget>(mViewer, "broxModelTableWidget");
    }

    QLabel* nameLabel() const { return child<QLabel>(mViewer, "broxModelNameLabel"); }
    QTableWidget* amounts() const { return child<QTableWidget>(mViewer, "amountsTableWidget"); }
    QTableWidget* tester() const { return child<QTableWidget>(mViewer, "testerTableWidget"); }

    void typeFormula(const QString& keys)
    {
        auto* edit = child<QLineEdit>(mViewer, "dhsLineEdit");
        edit->setFocus();
        edit->end(false);
        QTest::keyClicks(edit, keys);
    }

    std::optional<Host> mHost;
    QStringList mHeard;
    QWidget* mViewer = nullptr;
    QTableWidget* mModels = nullptr;
};

QTEST_MAIN(TestViewer)
#include "tst_viewer.moc"
