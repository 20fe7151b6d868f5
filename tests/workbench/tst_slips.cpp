// SPDX-License-Identifier: MIT
#include "bits_list.h"
#include "rules_dialog.h"
#include "viewer_tables.h"
#include "window_filter.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QTableWidget>
#include <QTest>
#include <QWheelEvent>

using namespace brox;

/** What a hand that slips must not make wrong. */
class SlipsTest : public QObject
{
    Q_OBJECT

private slots:
    void typedSize_data()
    {
        QTest::addColumn<Units>("units");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<Size>("size");
        constexpr Size former = 7; // so little that the field can't show it
        const auto row = [](const char* typed, Units units, Size size) {
            QTest::newRow(typed) << units << QString(typed) << size;
        };
        row("0.15", Units::Metric, 60'000);
        row("0,15", Units::Metric, 60'000);
        row("0.15 mm", Units::Metric, 60'000);
        row("1,500", Units::Metric, 600'000);
        row("2,5", Units::Inch, 25'400);
        row("39370", Units::Inch, 399'999'200);
        for (const char* refused :
            {"1.234,5", "1e3", "1 000", "-1", "1000.1", "0.15 mil", ".", "x"}) {
            row(refused, Units::Metric, former);
        }
    }

    void typedSize()
    {
        QFETCH(Units, units);
        QFETCH(QString, typed);
        for (const QLocale::Language language : {QLocale::English, QLocale::German}) {
            QLocale::setDefault(language);
            SizeField field;
            field.setUnits(units);
            field.setSize(7);
            auto* edit = field.findChild<QLineEdit*>();
            edit->selectAll();
            QTest::keyClicks(edit, typed);
            QCOMPARE(edit->text(), typed + field.suffix()); // nothing is swallowed
            QTest::keyClick(edit, Qt::Key_Return);
            QTEST(field.size(), "size");
        }
    }

    void keepsWhatItCannotShow()
    {
        SizeField field;
        field.setSize(18 * sizePerMil + 3);
        for (const Units units : {Units::Inch, Units::Metric}) {
            field.setUnits(units);
            QCOMPARE(field.size(), 18 * sizePerMil + 3);
        }
        QCOMPARE(field.text(), "0.4572 mm");
    }

    void wideTolerances_data()
    {
        QTest::addColumn<QString>("rules");
        QTest::addColumn<int>("doubts");
        QTest::newRow("usual") << "plated=+-0.1,nonplated=+-0.05" << 0;
        QTest::newRow("decimal sign") << "plated=-0.1/+10" << 1;
        QTest::newRow("of what is not plated") << "nonplated=+-2" << 0;
        QTest::newRow("each type") << "via=+-1.5,press-fit=-2/+0" << 2;
    }

    void wideTolerances()
    {
        QFETCH(QString, rules);
        ShopRules shop;
        shop.changeTolerances(rules);
        QTEST(int(doubtsAbout(shop, Units::Metric).size()), "doubts");
        constexpr Size half = sizePerMillimetre / 2;
        shop.tolerances = {
            {HoleType::NonPlated, 0, {0, half}}, {HoleType::NonPlated, half, {half, 0}}};
        QCOMPARE(doubtsAbout(shop, Units::Metric),
            QStringList({"Non-plated from 0.00 mm: -0.00/+0.50 mm",
                "Non-plated from 0.50 mm: -0.50/+0.00 mm"}));
    }

    void wheel()
    {
        QWidget window;
        const WindowFilter filter(&window);
        QGridLayout layout(&window);
        QComboBox list;
        list.addItems({"a", "b"});
        SizeField field;
        layout.addWidget(&list);
        layout.addWidget(&field);
        window.show();
        const auto turn = [](QWidget& widget) {
            QWheelEvent event({5, 5}, {}, {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
            QApplication::sendEvent(&widget, &event);
        };
        field.setSize(sizePerMillimetre);
        turn(list);
        turn(field);
        QCOMPARE(list.currentIndex(), 0);
        QCOMPARE(field.size(), sizePerMillimetre);
        QVERIFY(QTest::qWaitForWindowActive(&window));
        list.setFocus();
        turn(list);
        QCOMPARE(list.currentIndex(), 1);
    }

    void tables()
    {
        QWidget window;
        const WindowFilter input(&window);
        QGridLayout layout(&window);
        QTableWidget table(3, 2);
        table.setHorizontalHeaderLabels({"Layer", "Bit"});
        layout.addWidget(&table);
        constexpr const char* texts[][2] = {{"top", "1.00"}, {"slots\ttop", "#64"}, {"low", ""}};
        for (int row = 0; row < 3; ++row) {
            for (int column = 0; column < 2; ++column) {
                table.setItem(row, column, new QTableWidgetItem(texts[row][column]));
            }
        }
        TableFilter filter(&table, [](int row) { return row > 0; });
        window.show();
        QTest::keyClicks(filter.findChild<QLineEdit*>(), "TO");
        QTest::keySequence(&table, QKeySequence::SelectAll);
        QTest::keySequence(&table, QKeySequence::Copy);
        QCOMPARE(QApplication::clipboard()->text(), "Layer\tBit\ntop\t1.00\nslots top\t#64\n");
        filter.findChild<QCheckBox*>()->setChecked(true);
        QVERIFY(table.isRowHidden(0) && !table.isRowHidden(1) && table.isRowHidden(2));
        QTest::keyClick(filter.findChild<QLineEdit*>(), Qt::Key_Escape);
        QVERIFY(!table.isRowHidden(0) && !table.isRowHidden(2));
    }

    void bits()
    {
        for (const ReadySet& set : readySets()) {
            QCOMPARE(doubtsAbout(set.bits()), QStringList());
            QCOMPARE(bitsFromXml(bitsToXml(set.bits())).size(), set.bits().size());
            QCOMPARE(bitsToCsv(bitsFromCsv(bitsToCsv(set.bits()))), bitsToCsv(set.bits()));
        }
        QCOMPARE(bitsFromCsv("inch;designation\n0,1;\"a;\"\"b\"\n\n").value(0),
            DrillBit({"a;\"b", 2.54, 0.1, true}));
        QCOMPARE(bitsFromCsv("\xef\xbb\xbfMM,Inch,Approved,Designation\r\n1,0,no,x\r\n"),
            DrillBits({{"x", 1, 0, false}}));
        constexpr const char* wrong[][2] = {{"", "1: "}, {"mm,inch\n", "1: "},
            {"designation\n", "1: "}, {"designation,mm,mm\n", "1: "},
            {"designation,mm\na,1e9", "2: \"1e9\""}, {"designation,mm\na,0,1", "2: more"},
            {"designation,mm\n\na,", "3: "}, {"designation,mm,approved\na,1,x", "2: \"x\""}};
        for (const auto& [csv, error] : wrong) {
            try {
                bitsFromCsv(csv);
                QFAIL(csv);
            } catch (const BitsError& failure) {
                QVERIFY2(QString(failure.what()).startsWith(error), failure.what());
            }
        }
        QCOMPARE(doubtsAbout({{"", 1, 1}, {"a", 1, 1}, {"a", 0, 0}, {"12345678", 1, 1}}).size(), 4);
    }
};

QTEST_MAIN(SlipsTest)
#include "tst_slips.moc"
