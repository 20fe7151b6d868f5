// SPDX-License-Identifier: MIT
#include <QTest>

#include <climits>
#include <locale>
#include <string>

#include "standin.h"
#include "vex_data.h"
#include "zeb_utils.h"

namespace {

struct CommaPoint : std::numpunct<char>
{
    char do_decimal_point() const override { return ','; }
};

constexpr double none = -1.0; // instead of a value

} // namespace

class TestCalculator : public QObject
{
    Q_OBJECT

private slots:
    void evaluates_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("good"); // as a formula, whatever the values of its names
        QTest::addColumn<double>("value");
        const QByteArray values = "AMOUNT=25; FHS=400; MIN_TOL=10; MAX_TOL=30; ";
        constexpr struct
        {
            const char* formula;
            double value;
        } formulas[] = {{"FHS + AMOUNT + (MAX_TOL - MIN_TOL) / 2", 435.0}, {"7 / 2 / 2", 1.75},
            {"10 - 4 - 3", 3.0}, {"2 + 3 * 4", 14.0}, {"-AMOUNT * -2", 50.0},
            {" - 2.5 + +.5\t", -2.0}, {"A=-7; A + 10", 3.0}, {"A=1; A=2; A", 2.0},
            {"sin=4; sin / 8", 0.5}, {"sin", none}, {"_pi", none}, {"fhs", none}, {"FHS2", none},
            {"FHS + NONE * 0", none}, {"FHS / (MIN_TOL - 10)", none}, {"1 / (1 / 0)", none},
            {"0 * (1 / 0)", none}};
        for (const auto& [formula, value] : formulas)
            QTest::newRow(formula) << values + formula << true << value;

        for (const char* formula :
            {"", ";", "A=1;", "1+2; 3", "FHS=3", "A=; A", "=1; 1", "A=1.5; A", "A=B; 1", "2A=1; 1",
                "A=99999999999999999999; A", "--2", "FHS AMOUNT", "2FHS", "1 2", "1..5", ".",
                "FHS+", "()", "(FHS", "FHS)+(AMOUNT", "2(3)", "FHS(2)", "sin(1)", "max(1,2)", "1,2",
                "2^3", "1<2", "1==1", "1?2:3", "\"a\"", "1e3", "0x10", "2%3", "F\xc3\x9c"})
            QTest::newRow(formula) << values + formula << false << none;

        const auto nested = [](int depth) {
            return QByteArray(depth, '(') + '1' + QByteArray(depth, ')');
        };
        const QByteArray huge(300, '9');
        QTest::newRow("overflow") << huge + " * " + huge << true << none;
        QTest::newRow("fair nesting") << nested(500) << true << 1.0;
        QTest::newRow("deep nesting") << nested(100000) << false << none;
    }

    void evaluates()
    {
        QFETCH(QByteArray, text);
        QFETCH(double, value);
        QTEST(zeb__bc_act(text.constData(), true, 0, nullptr) == 0, "good");
        double result = none;
        QCOMPARE(zeb__bc_act(text.constData(), true, 0, &result) == 0, value != none);
        QCOMPARE(result, value);
    }

    void keepsNothingOfTheLastCall()
    {
        double result = none;
        for (const char* text : {"A=1; A", "A=5; A"})
            QCOMPARE(zeb__bc_act(text, true, 0, &result), 0);
        QCOMPARE(result, 5.0);
        QVERIFY(zeb__bc_act("A", true, 0, &result) != 0);
    }

    void knowsNoLocale()
    {
        const std::locale before =
            std::locale::global(std::locale(std::locale::classic(), new CommaPoint));
        double result = 0.0;
        const int status = zeb__bc_act("A=1000; A * 1.5", true, 0, &result);
        std::locale::global(before);
        QCOMPARE(status, 0);
        QCOMPARE(result, 1500.0);
    }

    void roundsSizes()
    {
        int number = -1;
        QCOMPARE(vex__data_stpid2vex_num(standin_add_step("step", 1), &number), 0);
        int size = 0;
        QVERIFY(vex__size_milmicron2p(number, qQNaN(), 1, &size) != 0);
        constexpr std::pair<double, int> cases[] = {
            {0.0012, 0}, {-0.0013, -1}, {0.0026, 1}, {1e9, INT_MAX}, {-1e9, INT_MIN}};
        for (const auto& [microns, expected] : cases) {
            QCOMPARE(vex__size_milmicron2p(number, microns, 1, &size), 0);
            QCOMPARE(size, expected);
        }
    }
};

QTEST_APPLESS_MAIN(TestCalculator)
#include "tst_calculator.moc"
