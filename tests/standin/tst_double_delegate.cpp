// SPDX-License-Identifier: MIT
#include <QLineEdit>
#include <QTableWidget>
#include <QTest>

#include "standin.h"
#include "zeb_gui.h"

/** A table with one number, edited by keys. */
class TestDoubleDelegate : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale::German); }
    void cleanup() { standin_reset(); }

    void shows_data()
    {
        QTest::addColumn<int>("units"); // -1: plain numbers
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("text");
        const auto row = [](const char* name, int units, QVariant value, const char* text) {
            QTest::newRow(name) << units << value << QString(text);
        };
        row("200 microns in mils", 0, 80000 / 10160.0, "7.874");
        row("smallest in mils", 0, -1 / 10160.0, "-0.0001");
        row("as few decimals as mean the size", 1, 0.0025, "0.003");
        row("whole", 1, 200.0, "200");
        row("no exponent", 1, 5000000.0, "5000000");
        row("no negative zero", 1, -0.0, "0");
        row("empty", 1, QVariant(), "");
        row("designation", 1, "0.50", "0.50");
        row("plain text", -1, "350.100000001", "350.1");
        row("plain number", -1, 200000.0, "200000");
        row("no number", -1, "abc", "abc");
    }

    void shows()
    {
        QFETCH(int, units);
        QFETCH(QVariant, value);
        const auto delegate = makeDelegate(units);
        QTEST(delegate->displayText(value, QLocale()), "text");
    }

    void edits_data()
    {
        QTest::addColumn<int>("units");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("typed"); // "<" deletes the last character
        QTest::addColumn<QVariant>("stored");
        const auto row = [](const char* name, int units, QVariant value, const char* typed,
                             QVariant stored) {
            QTest::newRow(name) << units << value << QString(typed) << stored;
        };
        const double rounded = 80000 / 10160.0;
        row("number", 1, QVariant(), "12.5", 12.5);
        row("letters are refused", 1, QVariant(), "1a2,e3", 123.0);
        row("negative", 1, QVariant(), "-3", -3.0);
        row("host size limit", 0, QVariant(), "211367", 21136.0);
        row("looked at", 0, rounded, "", rounded);
        row("typed anew", 0, rounded, "7.874", rounded);
        row("emptied", 1, 5.0, "<", QVariant());
        row("sign only", 1, 5.0, "-", 5.0);
        row("plain text", -1, "350", "351.25", 351.25);
        row("plain text looked at", -1, "350", "", "350");
        row("plain maximum", -1, QVariant(), "200001", 20000.0);
        row("plain maximum itself", -1, QVariant(), "200000", 200000.0);
        row("plain not negative", -1, QVariant(), "-4", 4.0);
        row("plain decimals", -1, QVariant(), "0.1234567", 0.123456);
    }

    void edits()
    {
        QFETCH(int, units);
        QFETCH(QVariant, value);
        QFETCH(QString, typed);
        for (const Qt::Key leave : {Qt::Key_Return, Qt::Key_Tab, Qt::Key(0)}) {
            const auto delegate = makeDelegate(units);
            QTableWidget table(2, 1);
            table.setItemDelegate(delegate.get());
            table.setItem(0, 0, new QTableWidgetItem);
            table.item(0, 0)->setData(Qt::DisplayRole, value);
            table.show();
            table.activateWindow();
            table.setCurrentCell(0, 0);
            table.editItem(table.item(0, 0));
            auto* editor = table.findChild<QLineEdit*>();
            QVERIFY(editor);
            for (const QChar c : typed) {
                if (c == '<')
                    QTest::keyClick(editor, Qt::Key_Backspace);
                else
                    QTest::keyClicks(editor, QString(c));
            }
            if (leave == Qt::Key(0))
                table.setCurrentCell(1, 0); // as by a click
            else
                QTest::keyClick(editor, leave);
            QCoreApplication::processEvents(); // Return commits when it is back in the event loop
            QTEST(table.item(0, 0)->data(Qt::DisplayRole), "stored");
        }
    }

    void dialogKnowsTheSystemFolder()
    {
        QString folder = "before";
        ZExtFileDialog dialog(nullptr, "Models", false);
        QVERIFY(!dialog.getSystemFolder(folder));
        QCOMPARE(folder, "before");
        standin_set_system_dir("/system");
        QVERIFY(dialog.getSystemFolder(folder));
        QCOMPARE(folder, "/system");
    }

private:
    static std::unique_ptr<DoubleDelegate> makeDelegate(int units)
    {
        if (units < 0)
            return std::make_unique<DoubleDelegate>(nullptr, 6, 200000.0);
        auto delegate = std::make_unique<DoubleDelegate>(nullptr);
        delegate->setStepId(standin_add_step("step", units));
        return delegate;
    }
};

QTEST_MAIN(TestDoubleDelegate)
#include "tst_double_delegate.moc"
