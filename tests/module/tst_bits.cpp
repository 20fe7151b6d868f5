// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QRandomGenerator>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <optional>
#include <set>

#include "brox_bits_table.h"
#include "brox_dhs.h"
#include "brox_viewer.h"

namespace {

struct Bit
{
    QString designation = "untouched";
    int size = 7;
    bool found = true;
    bool isOut = false;
    bool isExact = true;

    bool operator==(const Bit&) const = default;
};

// Outputs of calls that write nothing.
int number = 7;
bool flag = true;
QString text = "x";

/** A test's message when two lookups differ. */
QByteArray toText(const Bit& bit)
{
    return QString("%1 %2 found %3 out %4 exact %5")
        .arg(bit.designation)
        .arg(bit.size)
        .arg(bit.found)
        .arg(bit.isOut)
        .arg(bit.isExact)
        .toUtf8();
}

Bit lookUp(const BroxBitsTable& table, int dhs, int minTol, int maxTol)
{
    Bit bit;
    table.findDrillBit(
        dhs, minTol, maxTol, &bit.designation, &bit.size, &bit.found, &bit.isOut, &bit.isExact);
    return bit;
}

/** The rule, as a scan of all sizes. */
Bit scan(const std::set<int>& sizes, int dhs, int minTol, int maxTol)
{
    const qint64 lower = qint64(dhs) - minTol;
    const qint64 upper = qint64(dhs) + maxTol;
    Bit bit = {"untouched", 0, false, false, false};
    qint64 best = -1;
    bool isAbove = false;
    for (const int size : sizes) {
        const qint64 distance = std::llabs(qint64(dhs) - size);
        if (size >= lower && !isAbove && (best < 0 || distance < best)) {
            best = distance;
            bit = {QString::number(size), size, true, false, distance == 0};
        }
        isAbove = isAbove || size > upper; // one size above the range takes part
    }
    bit.isOut = bit.size < lower || bit.size > upper;
    return bit;
}

QByteArray millimeters(int size)
{
    return QByteArray::number(size / 400000.0, 'g', 15);
}

} // namespace

/** The lookup of a drill bit, and numbers as text. */
class TestBits : public QObject
{
    Q_OBJECT

private slots:
    void init() { mHost.emplace(); }
    void cleanup() { mHost.reset(); }

    void lookup_data()
    {
        QTest::addColumn<QList<int>>("sizes");
        QTest::addColumn<int>("dhs");
        QTest::addColumn<int>("minTol");
        QTest::addColumn<int>("maxTol");
        QTest::addColumn<int>("size"); // 0 if none is found
        QTest::addColumn<bool>("isOut");
        using Sizes = QList<int>;
        QTest::newRow("no bits") << Sizes() << 100 << 20 << 20 << 0 << true;
        QTest::newRow("no bits, 0 in range") << Sizes() << 100 << 100 << 0 << 0 << false;
        QTest::newRow("equally near") << Sizes{90, 110} << 100 << 20 << 20 << 90 << false;
        QTest::newRow("exact") << Sizes{99, 100, 101} << 100 << 20 << 20 << 100 << false;
        QTest::newRow("at lower end") << Sizes{80} << 100 << 20 << 20 << 80 << false;
        QTest::newRow("below lower end") << Sizes{79} << 100 << 20 << 20 << 0 << true;
        QTest::newRow("at upper end") << Sizes{120} << 100 << 20 << 20 << 120 << false;
        QTest::newRow("smaller never") << Sizes{50, 200} << 100 << 20 << 20 << 200 << true;
        QTest::newRow("above beats inside") << Sizes{55, 111} << 100 << 50 << 10 << 111 << true;
        QTest::newRow("next but one never")
            << Sizes{80, 130, 131} << 130 << 50 << -20 << 130 << true;
        QTest::newRow("no tolerance") << Sizes{99, 107} << 100 << 0 << 0 << 107 << true;
        QTest::newRow("size 0 is no bit") << Sizes{0} << 0 << 0 << 0 << 0 << false;
        QTest::newRow("greatest range") << Sizes{5} << INT_MAX << INT_MAX << INT_MAX << 5 << false;
        QTest::newRow("farther than a size") << Sizes{5} << INT_MIN << INT_MAX << 0 << 0 << true;
        QTest::newRow("above all") << Sizes{5} << INT_MAX << 0 << INT_MAX << 0 << true;
    }

    void lookup()
    {
        QFETCH(QList<int>, sizes);
        QFETCH(int, dhs);
        QFETCH(int, minTol);
        QFETCH(int, maxTol);
        QFETCH(int, size);
        QFETCH(bool, isOut);
        const auto table = tableOf(sizes);
        const bool found = size != 0;
        const Bit wanted = {
            found ? QString::number(size) : "untouched", size, found, isOut, found && size == dhs};
        const Bit bit = lookUp(*table, dhs, minTol, maxTol);
        QVERIFY2(bit == wanted, toText(bit));
    }

    void lookupLikeScan()
    {
        QRandomGenerator random(20240607);
        for (int i = 0; i < 2000; ++i) {
            QList<int> sizes;
            for (int j = random.bounded(12); j > 0; --j) {
                sizes.append(random.bounded(1, 60));
            }
            const auto table = tableOf(sizes);
            const std::set<int> sorted(sizes.begin(), sizes.end());
            for (int j = 0; j < 50; ++j) {
                const int dhs = random.bounded(-5, 70);
                const int minTol = random.bounded(25);
                const int maxTol = random.bounded(25);
                const Bit bit = lookUp(*table, dhs, minTol, maxTol);
                const Bit wanted = scan(sorted, dhs, minTol, maxTol);
                QVERIFY2(bit == wanted,
                    QString("table %1, query %2: %3, wanted %4")
                        .arg(QString::number(i), QString::number(j), toText(bit), toText(wanted))
                        .toUtf8());
            }
        }
    }

    void indices()
    {
        mHost->write("brox_drill_bits.xml",
            bitsXml({bitXml("metric", "1", "0"), bitXml("inch", "0", "1"),
                bitXml("both", "2", "2", "no"), bitXml("later", "2", "3")}));
        BroxBitsTable table(nullptr, {});
        QVERIFY(!lookUp(table, 400000, 0, 0).found); // no step yet
        table.setStepId(mHost->step);
        QCOMPARE(lookUp(table, 400000, 0, 0).designation, QString("metric"));
        QCOMPARE(lookUp(table, 800000, 0, 0).designation, QString("later"));
        standin_set_units(mHost->step, 0);
        QCOMPARE(lookUp(table, 400000, 0, 0).designation, QString("inch"));
        QCOMPARE(lookUp(table, 20320000, 0, 0).designation, QString("both"));
    }

    void numbers_data()
    {
        QTest::addColumn<QString>("numberText");
        QTest::addColumn<int>("unit");
        QTest::addColumn<int>("size");
        QTest::addColumn<QString>("back");
        const auto row = [](const char* shown, int unit, int size, const char* back = nullptr) {
            QTest::addRow("%s in unit %d", shown, unit)
                << shown << unit << size << (back ? back : shown);
        };
        row("0.0138", 0, 140208);
        row("0.35", 1, 140000);
        row("13.8", 2, 140208);
        row("350", 3, 140000);
        row("250", 2, 2540000);
        row("6.35", 1, 2540000);
        row("-0.1", 2, -1016);
        row("0.00124", 3, 0, "0"); // half a size is not reached
        row("0.00125", 3, 1, "0.0025");
        row("-0.00125", 3, -1, "-0.0025");
        row("3.0864175", 1, 1234567, "3.08642");
        row("", 3, 0, "0");
        row("abc", 3, 0, "0");
        row("1,5", 3, 0, "0");
        row("nan", 3, 0, "0");
        row("inf", 3, INT_MAX, "5.36871e+06");
        row("300000", 2, INT_MAX, "211367");
        row("-1e300", 0, INT_MIN, "-211.367");
        row("1", 4, 0, "0");
        row("1", -1, 0, "0");
    }

    void numbers()
    {
        QFETCH(QString, numberText);
        QFETCH(int, unit);
        QFETCH(int, size);
        QFETCH(QString, back);
        const BroxBitsTable table(nullptr, {});
        QCOMPARE(table.textToSize(numberText, zeb_units_enum(unit)), size);
        QString written;
        table.sizeToText(size, &written, zeb_units_enum(unit));
        QCOMPARE(written, back);
    }

    void badPointers_data()
    {
        QTest::addColumn<std::function<void()>>("call");
        QTest::addColumn<QString>("report");
        using Call = std::function<void()>;
        const auto row = [](const char* name, const char* source, const char* condition,
                             Call call) {
            QTest::newRow(name) << call << QString("INTERNAL|(%1) at %2").arg(condition, source);
        };
        const char* const bitSize = "((ullong)(bitSize) > 1000)";
        const char* const flags = "((ullong)(found) > 1000) && ((ullong)(outOfTolRange) > 1000) && "
                                  "((ullong)(exactMatch) > 1000)";
        row("bits: size", "brox_bits_table", bitSize, [] {
            BroxBitsTable(nullptr, {}).findDrillBit(1, 1, 1, &text, nullptr, nullptr, &flag, &flag);
        });
        row("bits: flag", "brox_bits_table", flags, [] {
            BroxBitsTable(nullptr, {}).findDrillBit(1, 1, 1, &text, &number, &flag, &flag, nullptr);
        });
        row("formula: size", "brox_dhs", bitSize, [] {
            BroxDhsFormula().findDrillBit(1, 1, 1, &text, nullptr, true, &flag, &flag, &flag);
        });
        row("formula: flag", "brox_dhs", flags, [] {
            BroxDhsFormula().findDrillBit(1, 1, 1, &text, &number, true, &flag, nullptr, &flag);
        });
        row("formula: success", "brox_dhs",
            "((ullong)(result) > 1000) && ((ullong)(success) > 1000)",
            [] { BroxDhsFormula().calculateDhs(1, 1, 1, 1, &number, nullptr); });
        row("viewer: value", "brox_viewer", "((ullong)(dhsValue) > 1000)", [this] {
            BroxViewer(mHost->step, nullptr, {})
                .calcDrillSize(DrillTypeManager::Pth, 1, 1, 1, nullptr, &text, &flag, &flag, &flag);
        });
        row("viewer: flag", "brox_viewer",
            "((ullong)(success) > 1000) && ((ullong)(outOfTolRange) > 1000) && "
            "((ullong)(exactMatch) > 1000)",
            [this] {
                BroxViewer(mHost->step, nullptr, {})
                    .calcDrillSize(
                        DrillTypeManager::Pth, 1, 1, 1, &number, &text, nullptr, &flag, &flag);
            });
    }

    void badPointers()
    {
        QFETCH(std::function<void()>, call);
        QFETCH(QString, report);
        call();
        QVERIFY(number == 7 && flag && text == "x"); // nothing is written
        QCOMPARE(mHost->log, QStringList(report));
        QCOMPARE(standin_error_sounds(), 1);
    }

private:
    std::unique_ptr<BroxBitsTable> tableOf(const QList<int>& sizes)
    {
        QByteArrayList bits;
        for (const int size : sizes) {
            bits.append(bitXml(QByteArray::number(size), millimeters(size)));
        }
        mHost->write("brox_drill_bits.xml", bitsXml(bits));
        auto table = std::make_unique<BroxBitsTable>(nullptr, Qt::WindowFlags());
        table->setStepId(mHost->step);
        return table;
    }

    std::optional<Host> mHost;
};

QTEST_MAIN(TestBits)
#include "tst_bits.moc"
