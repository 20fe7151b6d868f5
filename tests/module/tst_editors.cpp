// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>

namespace {

using Buttons = std::vector<QMessageBox::StandardButton>;
constexpr auto ok = QMessageBox::Ok;
constexpr auto cancel = QMessageBox::Cancel;

/** What a user does, in the words of TestEditors::act, and what then holds.
 *
 * Models are shown in the set's order with the amount of plated holes in microns, the one on show
 * in brackets and unsaved changes with a star; bits with what lookups find, and their mark.
 */
struct Case
{
    const char* name;
    QString acts;
    QString outcome;
    QString heard = {};
    Buttons answers = {};
    QString asked = {}; ///< in the last question
};

const std::vector<Case> viewerCases = {
    {"new, new", "newToolButton, HASL, newToolButton, ENIG, Return",
        "a 1, b 2, c 3, HASL 100, [ENIG 100] *", "Model > HASL, Model > ENIG"},
    {"name, new", "F2, x, newToolButton", "x 1, b 2, c 3, [Model 100] *", "a > x"},
    {"name, menu", "F2, x, actionNew_Model", "x 1, b 2, c 3, [Model 100] *", "a > x"},
    {"refused, new", "F2, b, newToolButton, x, Return", "a 1, b 2, c 3, [x 100] * bits",
        "Model > x", {ok}},
    {"name, rename", "F2, x, renameToolButton, y, Return", "[y 1], b 2, c 3 *", "a > x, x > y"},
    {"name, delete", "F2, z, deleteToolButton", "b 2, [c 3] *", "a > z, z > -", {ok}, "'z'?"},
    {"name, delete by menu", "F2, z, actionDelete", "[z 1], b 2, c 3 *", "a > z", {cancel}, "'z'?"},
    {"name, save", "newToolButton, x, saveToolButton", "a 1, b 2, c 3, [x 100] bits", "Model > x"},
    {"amount, save", "amount, 5, saveToolButton", "[a 5], b 2, c 3"},
    {"amount, close", "amount, 5, close", "[a 5], b 2, c 3 * kept", "", {cancel}, "Unsaved"},
    {"amount, saved close", "amount, 5, close", "[a 5], b 2, c 3", "", {QMessageBox::Save}},
    {"amount, load", "amount, 5, loadToolButton", "[a 5], b 2, c 3 *", "", {cancel}, "Unsaved"},
    {"amount, new", "amount, 5, newToolButton", "a 5, b 2, c 3, [Model 100] *"},
    {"amount, menu", "amount, 5, actionNew_Model", "a 5, b 2, c 3, [Model 100] *"},
    {"amount, other row", "amount, 5, row 2", "a 5, b 2, [c 3] *"},
    {"name, other row", "F2, bb, row 2", "bb 1, b 2, [c 3] *", "a > bb"},
    {"name moves rows, next", "F2, x, Down, F2, y, Return", "x 1, [y 2], c 3 *", "a > x, b > y"},
    {"name, Tab", "F2, aa, Tab, bb, Return", "aa 1, [bb 2], c 3 *", "a > aa, b > bb"},
    {"amount, recalculate", "amount, 4, Return, amount, 5, recalcPushButton", "[a 5], b 2, c 3 *"},
    {"no number, save", "amount, -, saveToolButton", "[a 1], b 2, c 3"},
};

const std::vector<Case> bitsCases = {
    {"size, add", "size, 200, actionAdd_Size", "200=A 300=B *"},
    {"size, delete", "size, 200, actionDelete_Size", "300=B *"},
    {"size, save", "size, 200, actionSave", "200=A 300=B"},
    {"size, close", "size, 200, actionClose", "200=A 300=B *", "", {cancel}, "Unsaved"},
    {"size, saved close", "size, 200, actionClose", "200=A 300=B closed", "", {QMessageBox::Save}},
    {"size, window closes", "size, 200, shut", "200=A 300=B *", "", {cancel}, "Unsaved"},
    {"size, discarded close", "size, 200, actionClose", "200=A 300=B * closed", "",
        {QMessageBox::Discard}},
    {"size, no folder", "no folder, size, 200, actionClose", "200=A 300=B *", "",
        {QMessageBox::Save}},
    {"unsaved bits, viewer closes", "actionAdd_Size, close", "100=A 300=B *"},
    {"size, load", "size, 200, actionOpen", "200=A 300=B *", "", {cancel}, "Unsaved"},
    {"size, save by key", "size, 200, Ctrl+S", "200=A 300=B"},
};

/** Where the host may delete a viewer while the module waits for the user. */
struct Question
{
    const char* name;
    QString acts;
};

const std::vector<Question> questions = {
    {"close", "amount, 5, close"},
    {"delete", "actionDelete"},
    {"unsaved models at a load", "amount, 5, loadToolButton"},
    {"models to load", "loadToolButton"},
    {"unsaved bits at a load", "actionAdd_Size, actionOpen"},
    {"bits to load", "actionOpen"},
};

} // namespace

/** In-place editors that are open when something else happens, and viewers that end at a bad
 *  moment. */
class TestEditors : public HostTest
{
    Q_OBJECT

private slots:
    void viewer_data() { addRows(viewerCases); }

    void viewer()
    {
        QFETCH(Case, data);
        open();
        run(data);
        auto names = mHost->modelNames();
        QStringList models;
        for (const QString& name : names) {
            const double amount = mHost->drill(name.toLocal8Bit(), 0).size / 400.0;
            const QString model = QString("%1 %2").arg(name).arg(amount);
            const bool isOnShow =
                name == child<QLabel>(mHost->viewer(), "broxModelNameLabel")->text();
            models.append(isOnShow ? "[" + model + "]" : model);
        }
        QString outcome = models.join(", ") + (hasChanges(mHost->viewer()) ? " *" : "");
        outcome += mMayClose ? "" : " kept";
        outcome += child<QCheckBox>(mHost->viewer(), "useBitFileCheckBox")->isChecked()
                && mModels->currentItem()->text().size() == 1
            ? " bits"
            : "";
        QCOMPARE(outcome, data.outcome);
        names.sort();
        QStringList rows = columnTexts(mModels, 0);
        rows.sort();
        QCOMPARE(rows, names);
        QVERIFY(mHost->log.isEmpty());
        if (!hasChanges(mHost->viewer())) { // the file holds what is on show
            mHost->endViewer();
            QVERIFY(mHost->modelNames().size() == names.size());
        }
    }

    void bits_data() { addRows(bitsCases); }

    void bits()
    {
        QFETCH(Case, data);
        open("yes");
        click(mHost->viewer(), "openBitFileToolButton");
        run(data);
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
        const bool isMarked = mBits->window()->windowTitle().endsWith('*');
        const QString bits = found();
        QCOMPARE(
            bits + (isMarked ? " *" : "") + (mBits->isVisible() ? "" : " closed"), data.outcome);
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
        QFETCH(Question, data);
        open();
        const QByteArray models = mHost->read("brox.xml");
        {
            Answers answers;
            answers.add([this](QDialog*) { mHost->endViewer(); }); // from a timer
            act(data.acts);
        }
        QVERIFY(data.name != QByteArray("close") || !mMayClose);
        for (const QWidget* widget : QApplication::topLevelWidgets()) {
            QVERIFY(!widget->isVisible());
        }
        QVERIFY(!QApplication::overrideCursor());
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
        mModels = mHost->table("broxModelTableWidget");
        mBits = mHost->table("drillBitsTableWidget");
        mModels->setFocus();
        mMayClose = true;
    }

    void run(const Case& data)
    {
        Answers answers;
        for (const auto button : data.answers) {
            answers.add([button](QDialog* dialog) {
                QTest::mouseClick(
                    qobject_cast<QMessageBox*>(dialog)->button(button), Qt::LeftButton);
            });
        }
        act(data.acts);
        QCOMPARE(answers.seen.size(), data.answers.size());
        QVERIFY(data.asked.isEmpty() || answers.seen.last().text.contains(data.asked));
        QCOMPARE(mHost->heard.join(", ").remove("0: "), data.heard);
        QVERIFY(!QApplication::overrideCursor());
    }

    void act(const QString& acts)
    {
        static const std::map<QString, Qt::Key> keys = {{"F2", Qt::Key_F2}, {"Down", Qt::Key_Down},
            {"Tab", Qt::Key_Tab}, {"Return", Qt::Key_Return}};
        for (const QString& what : acts.split(", ")) {
            if (const auto key = keys.find(what); key != keys.end()) {
                QTest::keyClick(focused(), key->second);
                QCoreApplication::processEvents(); // Return closes an editor by a queued call
            } else if (what == "Ctrl+S") {
                QTest::keyClick(focused(), Qt::Key_S, Qt::ControlModifier);
            } else if (what == "amount") {
                edit(mHost->table("amountsTableWidget"), 0);
            } else if (what == "size") {
                edit(mBits, 1);
            } else if (what.startsWith("row ")) {
                const QTableWidgetItem* item = mModels->item(what.right(1).toInt(), 0);
                QTest::mouseClick(mModels->viewport(), Qt::LeftButton, {},
                    mModels->visualItemRect(item).topLeft() + QPoint(3, 3));
            } else if (what == "close") {
                int mayClose = 1;
                QCOMPARE(brox__proxy_can_close(mHost->step, &mayClose), 0);
                mMayClose = mayClose;
            } else if (what == "no folder") {
                standin_set_data_dir(nullptr);
            } else if (what == "shut") {
                mBits->window()->close();
            } else if (mHost->viewer()->findChild<QObject*>(what)) {
                click(mHost->viewer(), what.toUtf8());
            } else {
                QTest::keyClicks(focused(), what);
            }
        }
    }

    void edit(QTableWidget* table, int column)
    {
        table->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), table->window());
        table->setFocus();
        table->setCurrentCell(0, column);
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

    QTableWidget* mModels = nullptr;
    QTableWidget* mBits = nullptr;
    bool mMayClose = true;
};

QTEST_MAIN(TestEditors)
#include "tst_editors.moc"
