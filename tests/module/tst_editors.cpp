// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QLabel>
#include <QLineEdit>

namespace {

constexpr char modelTable[] = "broxModelTableWidget";
constexpr char amountTable[] = "amountsTableWidget";
constexpr char bitTable[] = "drillBitsTableWidget";

/** A button or action while an editor is open, and what then holds.
 *
 * Models are shown in the set's order with the amount of plated holes in microns, the one on show
 * in brackets; bits with what lookups find. Unsaved changes have a star.
 */
struct Case
{
    const char* name;
    const char* table; ///< with the editor; null: none is open
    const char* typed;
    const char* pressed; ///< null: the viewer, or the window of the bits, closes
    const char* typedThen = "";
    QString outcome = {};
    QString heard = {};
    QMessageBox::StandardButton answer = QMessageBox::NoButton;
    bool hasFolder = true;
};

constexpr auto ok = QMessageBox::Ok;
constexpr auto cancel = QMessageBox::Cancel;
constexpr auto save = QMessageBox::Save;

const std::vector<Case> modelCases = {
    {"new", modelTable, "x", "newToolButton", "", "x 1, b 2, c 3, [Model 100] *", "a > x"},
    {"new by menu", amountTable, "5", "actionNew_Model", "", "a 5, b 2, c 3, [Model 100] *"},
    {"refused name", modelTable, "b", "newToolButton", "x\r", "a 1, b 2, c 3, [x 100] *",
        "Model > x", ok},
    {"rename", modelTable, "x", "renameToolButton", "y\r", "[y 1], b 2, c 3 *", "a > x, x > y"},
    {"rename by menu", modelTable, "x", "actionRename", "y\r", "[y 1], b 2, c 3 *", "a > x, x > y"},
    {"delete", modelTable, "z", "deleteToolButton", "", "b 2, [c 3] *", "a > z, z > -", ok},
    {"delete by menu", modelTable, "z", "actionDelete", "", "[z 1], b 2, c 3 *", "a > z", cancel},
    {"save", amountTable, "5", "saveToolButton", "", "[a 5], b 2, c 3"},
    {"save no number", amountTable, "-", "saveToolButton", "", "[a 1], b 2, c 3"},
    {"load", amountTable, "5", "loadToolButton", "", "[a 5], b 2, c 3 *", "", cancel},
    {"close", amountTable, "5", nullptr, "", "[a 5], b 2, c 3", "", save},
};

const std::vector<Case> bitCases = {
    {"add", bitTable, "200", "actionAdd_Size", "", "200=A 300=B *"},
    {"delete", bitTable, "200", "actionDelete_Size", "", "300=B *"},
    {"save", bitTable, "200", "actionSave", "", "200=A 300=B"},
    {"load", bitTable, "200", "actionOpen", "", "200=A 300=B *", "", cancel},
    {"saved close", bitTable, "200", "actionClose", "", "200=A 300=B closed", "", save},
    {"close in vain", bitTable, "200", "actionClose", "", "200=A 300=B *", "", save, false},
    {"window closes", bitTable, "200", nullptr, "", "200=A 300=B *", "", cancel},
    {"discarded", bitTable, "200", nullptr, "", "200=A 300=B * closed", "", QMessageBox::Discard},
};

/** Where the module waits for the user. */
const std::vector<Case> questions = {
    {"close", amountTable, "5", nullptr},
    {"delete", nullptr, "", "actionDelete"},
    {"unsaved models at a load", amountTable, "5", "loadToolButton"},
    {"models to load", nullptr, "", "loadToolButton"},
    {"unsaved bits at a load", bitTable, "200", "actionOpen"},
    {"bits to load", nullptr, "", "actionOpen"},
};

} // namespace

/** In-place editors that are open when something else happens, and viewers that end at a bad
 *  moment. */
class TestEditors : public HostTest
{
    Q_OBJECT

private slots:
    void models_data() { addRows(modelCases); }

    void models()
    {
        QFETCH(Case, data);
        open();
        act(data);
        QCOMPARE(mHost->heard.join(", ").remove("0: "), data.heard);
        QVERIFY(mHost->log.isEmpty());
        QStringList names = mHost->modelNames();
        const QString shown = child<QLabel>(mHost->viewer(), "broxModelNameLabel")->text();
        QStringList models;
        for (const QString& name : names) {
            const double microns = mHost->drill(name.toLocal8Bit(), 0).size / 400.0;
            const QString model = QString("%1 %2").arg(name).arg(microns);
            models.append(name == shown ? "[" + model + "]" : model);
        }
        const bool isUnsaved = hasChanges(mHost->viewer());
        QCOMPARE(models.join(", ") + (isUnsaved ? " *" : ""), data.outcome);
        QStringList rows = columnTexts(mHost->table(modelTable), 0);
        rows.sort();
        names.sort();
        QCOMPARE(rows, names);
        if (!isUnsaved) {
            const int size = mHost->drill("a", 0).size;
            mHost->endViewer();
            QCOMPARE(mHost->drill("a", 0).size, size);
        }
    }

    void bits_data() { addRows(bitCases); }

    void bits()
    {
        QFETCH(Case, data);
        open("yes");
        act(data);
        const auto found = [this] {
            QStringList list;
            for (const int size : {100, 200, 300}) {
                const auto drill = mHost->drill("a", (size - 1) * 400);
                if (drill.size == size * 400) {
                    list.append(QString("%1=%2").arg(QString::number(size), drill.bit));
                }
            }
            return list.join(' ');
        };
        const QWidget* window = mHost->table(bitTable)->window();
        const bool isMarked = window->windowTitle().endsWith('*');
        const QString bits = found();
        QCOMPARE(
            bits + (isMarked ? " *" : "") + (window->isVisible() ? "" : " closed"), data.outcome);
        if (!isMarked) {
            mHost->endViewer();
            QCOMPARE(found(), bits);
        }
    }

    void endOfAViewer_data() { addRows(questions); }

    /** The question goes with the viewer, and who has asked returns as if the user had cancelled.
     */
    void endOfAViewer()
    {
        QFETCH(Case, data);
        open();
        const QByteArray models = mHost->read("brox.xml");
        {
            Answers answers;
            answers.add([this](QDialog*) { mHost->endViewer(); }); // from a timer
            act(data);
        }
        for (const QWidget* widget : QApplication::topLevelWidgets()) {
            QVERIFY(!widget->isVisible());
        }
        QVERIFY(mHost->heard.isEmpty() && mHost->log.isEmpty());
        QCOMPARE(mHost->read("brox.xml"), models);
        QCOMPARE(mHost->modelNames(), QStringList({"a", "b", "c"}));
    }

private:
    /** Three models, of which the first is on show, and two bits. */
    void open(const char* useBitFile = "no")
    {
        const auto model = [=](const char* name, const char* amount) {
            return modelXml(name, "FHS + AMOUNT", useBitFile,
                QByteArray("<HoleType name='Pth' amount='") + amount + "'/>");
        };
        mHost->write(
            "brox.xml", modelsXml({model("a", "400"), model("b", "800"), model("c", "1200")}));
        mHost->write("brox_drill_bits.xml", bitsXml({bitXml("A", "0.1"), bitXml("B", "0.3")}));
        mHost->viewer();
    }

    void act(const Case& data)
    {
        Answers answers;
        if (data.answer != QMessageBox::NoButton) {
            answers.add(data.answer);
        }
        if (!data.hasFolder) {
            standin_set_data_dir(nullptr);
        }
        if (data.table) {
            openEditor(data.table);
            QTest::keyClicks(focused(), data.typed);
        }
        if (data.pressed) {
            click(mHost->viewer(), data.pressed);
        } else if (data.table == QByteArray(bitTable)) {
            mHost->table(bitTable)->window()->close();
        } else {
            int mayClose = -1;
            QCOMPARE(brox__proxy_can_close(mHost->step, &mayClose), 0);
            QCOMPARE(mayClose, data.answer == save ? 1 : 0);
        }
        if (*data.typedThen) {
            QTest::keyClicks(focused(), data.typedThen);
            QCoreApplication::processEvents(); // Return closes an editor by a queued call
        }
        QVERIFY(!QApplication::overrideCursor());
    }

    void openEditor(const char* name)
    {
        QTableWidget* table = mHost->table(name);
        table->window()->show();
        table->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), table->window());
        table->setFocus();
        table->setCurrentCell(0, name == QByteArray(bitTable) ? 1 : 0);
        QTest::keyClick(table, Qt::Key_F2);
    }

    /** What gets the keys; not every platform gives a window back what a question has taken. */
    QWidget* focused()
    {
        if (!QApplication::focusWidget()) {
            mHost->viewer()->activateWindow();
        }
        (void)QTest::qWaitFor([] { return QApplication::focusWidget() != nullptr; });
        return QApplication::focusWidget();
    }
};

QTEST_MAIN(TestEditors)
#include "tst_editors.moc"
