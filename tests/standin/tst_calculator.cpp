// SPDX-License-Identifier: MIT
#include <QTest>

#include <climits>
#include <locale>

#include "standin.h"
#include "vex_data.h"
#include "zeb_utils.h"

namespace {

struct CommaPoint : std::numpunct<char>
{
    char do_decimal_point() const override { return ','; }
};

constexpr double none = -1.0; // instead of a value

struct Formula
{
    QByteArray text;
    double value = none;
};

} // namespace

class TestCalculator : public QObject
{
    Q_OBJECT

private slots:
    /** A text may be a formula, and yet have no value. */
    void evaluates()
    {
        const Formula formulas[] = {{"FHS + AMOUNT + (MAX_TOL - MIN_TOL) / 2", 435.0},
            {"7 / 2 / 2", 1.75}, {"10 - 4 - 3", 3.0}, {"2 + 3 * 4", 14.0}, {"-AMOUNT * -2", 50.0},
            {" - 2.5 + +.5\t", -2.0}, {"A=-7; A=2; A", 2.0}, {"sin=4; sin / 8", 0.5},
            {QByteArray(500, '(') + '1' + QByteArray(500, ')'), 1.0}, {"sin"}, {"fhs"},
            {"FHS + NONE * 0"}, {"FHS / (MIN_TOL - 10)"}, {"1 / (1 / 0)"}, {"0 * (1 / 0)"},
            {QByteArray("9").repeated(300) + '*' + QByteArray("9").repeated(300)}};
        for (const auto& [text, value] : formulas)
            check("AMOUNT=25; FHS=400; MIN_TOL=10; MAX_TOL=30; " + text, true, value);
        for (const char* text : {"", "A=1;", "1+2; 3", "A=; A", "A=1.5; A", "2A=1; 1", "--2",
                 "FHS AMOUNT", "2FHS", "1..5", "FHS+", "()", "(FHS", "2(3)", "sin(1)", "1,2", "2^3",
                 "1<2", "1?2:3", "\"a\"", "1e3", "0x10", "2%3"})
            check(text, false, none);
        check(QByteArray(100000, '(') + '1' + QByteArray(100000, ')'), false, none);
        check("AMOUNT", true, none); // no value is left of the last call
    }

    void knowsNoLocale()
    {
        const std::locale before =
            std::locale::global(std::locale(std::locale::classic(), new CommaPoint));
        check("A=1000; A * 1.5", true, 1500.0);
        std::locale::global(before);
    }

    void roundsSizes()
    {
        int number = -1;
        QCOMPARE(vex__data_stpid2vex_num(standin_add_step("step", 1), &number), 0);
        int size = 0;
        QVERIFY(vex__size_milmicron2p(number, qQNaN(), 1, &size) != 0);
        for (const auto& [microns, expected] :
            {std::pair(0.0012, 0), std::pair(-0.0013, -1), std::pair(1e9, INT_MAX)}) {
            QCOMPARE(vex__size_milmicron2p(number, microns, 1, &size), 0);
            QCOMPARE(size, expected);
        }
    }

private:
    static void check(const QByteArray& text, bool isFormula, double value)
    {
        double result = none;
        QVERIFY2((zeb__bc_act(text, true, 0, nullptr) == 0) == isFormula, text);
        QVERIFY2((zeb__bc_act(text, true, 0, &result) == 0) == (value != none), text);
        QVERIFY2(result == value, text);
    }
};

QTEST_APPLESS_MAIN(TestCalculator)
#include "tst_calculator.moc"
