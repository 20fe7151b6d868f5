// SPDX-License-Identifier: MIT
#include <QLineEdit>
#include <QTableWidget>
#include <QTest>

#include "standin.h"
#include "zeb_gui.h"

namespace {

enum Units
{
    Plain = -1, // numbers without a step
    Mils = 0,
    Microns = 1
};

std::unique_ptr<DoubleDelegate> makeDelegate(int units)
{
    if (units == Plain)
        return std::make_unique<DoubleDelegate>(nullptr, 6, 200000.0);
    auto delegate = std::make_unique<DoubleDelegate>(nullptr);
    delegate->setStepId(standin_add_step("step", units));
    return delegate;
}

} // namespace

class TestDoubleDelegate : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale::German); }
    void cleanup() { standin_reset(); }

    void shows()
    {
        const struct
        {
            Units units;
            QVariant value;
            const char* text;
        } cases[] = {{Mils, 80000 / 10160.0, "7.874"}, {Mils, -1 / 10160.0, "-0.0001"},
            {Microns, 0.0025, "0.003"}, {Microns, 5000000.0, "5000000"}, {Microns, -0.0, "0"},
            {Microns, {}, ""}, {Microns, "0.50", "0.50"}, {Plain, "350.100000001", "350.1"},
            {Plain, "abc", "abc"}};
        for (const auto& [units, value, text] : cases)
            QCOMPARE(makeDelegate(units)->displayText(value, QLocale()), text);
    }

    void edits_data()
    {
        QTest::addColumn<int>("units");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("typed"); // null: a backspace
        QTest::addColumn<QVariant>("stored");
        const auto row = [](const char* name, Units units, QVariant value, const char* typed,
                             QVariant stored) {
            QTest::newRow(name) << int(units) << value << QString(typed) << stored;
        };
        const double unround = 80000 / 10160.0; // shows as 7.874
        row("comma", Microns, {}, "12,3", 12.3);
        for (const char* refused : {"1a2", "1e3", "1,2.3", "1,,2", "-", "1 000"})
            row(refused, Microns, 5.0, refused, 5.0);
        row("negative", Microns, {}, "-3", -3.0);
        row("host size limit", Mils, 6.0, "211367", 6.0);
        row("looked at", Mils, unround, "", unround);
        row("emptied", Microns, 5.0, nullptr, {});
        row("plain text", Plain, "350", "351,25", 351.25);
        row("plain not negative", Plain, 4.0, "-4", 4.0);
        row("plain decimals", Plain, 1.0, "0.1234567", 1.0);
    }

    void edits()
    {
        QFETCH(int, units);
        QFETCH(QVariant, value);
        QFETCH(QString, typed);
        for (const bool byKey : {true, false}) {
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
            if (typed.isNull())
                QTest::keyClick(editor, Qt::Key_Backspace);
            QTest::keyClicks(editor, typed);
            if (byKey)
                QTest::keyClick(editor, Qt::Key_Return);
            else
                table.setCurrentCell(1, 0); // as by a click
            QCoreApplication::processEvents(); // Return commits when it is back in the event loop
            QTEST(table.item(0, 0)->data(Qt::DisplayRole), "stored");
        }
    }
};

QTEST_MAIN(TestDoubleDelegate)
#include "tst_double_delegate.moc"
