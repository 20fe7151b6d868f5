// SPDX-License-Identifier: MIT
#include <QTest>

#include <locale>
#include <string>

#include "zeb_utils.h"

namespace {

struct CommaPoint : std::numpunct<char>
{
    char do_decimal_point() const override { return ','; }
};

} // namespace

class TestCalculator : public QObject
{
    Q_OBJECT

private slots:
    void judges_data()
    {
        QTest::addColumn<bool>("good");
        for (const char* text :
            {"FHS + AMOUNT + (MAX_TOL - MIN_TOL) / 2", "100", " 2*FHS\t", "FHS2", "-FHS", "2*-FHS",
                "2 - -3", "FHS/MIN_TOL", "FHS/0", "FHS*1.5", "A=1; B=-2;A+B"})
            QTest::newRow(text) << true;
        for (const char* text : {"", "  ", ";", "--2", "A=1;", "FHS=3", "1+2; 3", "A=; A", "=1; 1",
                 "A=1.5; A", "A=B; 1", "2A=1; 1", "FHS AMOUNT", "MIN_ TOL", "2FHS", "1 2", "1..5",
                 ".", "FHS+", "()", "(FHS", "FHS)", "FHS)+(AMOUNT", "2(3)", "FHS(2)", "(1)(2)",
                 "sin(1)", "rnd()", "max(1,2)", "1,2", "2^3", "1<2", "1==1", "1&&1", "1?2:3",
                 "\"a\"", "1e3", "0x10", "2%3", "A=99999999999999999999; A", "F\xc3\x9c"})
            QTest::newRow(text) << false;
    }

    void judges()
    {
        QFETCH(bool, good);
        QCOMPARE(zeb__bc_act(QTest::currentDataTag(), true, 0, nullptr) == 0, good);
    }

    void evaluates_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<double>("value"); // -1: no value
        const QByteArray values = "AMOUNT=25; FHS=400; MIN_TOL=10; MAX_TOL=30; TOL_MEDIAN=10; ";
        const auto row = [&](const char* formula, double value) {
            QTest::newRow(formula) << values + formula << value;
        };
        row("FHS + AMOUNT + (MAX_TOL - MIN_TOL) / 2", 435.0);
        row("7 / 2 / 2", 1.75);
        row("10 - 4 - 3", 3.0);
        row("2 + 3 * 4", 14.0);
        row("-AMOUNT * -2", 50.0);
        row("- 2.5 + +.5", -2.0);
        row("fhs", -1.0);
        row("sin", -1.0);
        row("_pi", -1.0);
        row("FHS / 0", -1.0);
        row("FHS / (MIN_TOL - TOL_MEDIAN)", -1.0);
        row("1 / (FHS / 0)", -1.0);
        row("0 * (1 / 0)", -1.0);
        row("FHS + NONE * 0", -1.0);
        QTest::newRow("negative value") << QByteArray("A=-7; A + 10") << 3.0;
        QTest::newRow("last value counts") << QByteArray("A=1; A=2; A") << 2.0;
        QTest::newRow("other names, same formula") << QByteArray("B=1; A") << -1.0;
        QTest::newRow("name like a function") << QByteArray("sin=4; sin / 8") << 0.5;
        QTest::newRow("overflow") << QByteArray(300, '9') + " * " + QByteArray(300, '9') << -1.0;
        QTest::newRow("deep nesting")
            << QByteArray(100000, '(') + "1" + QByteArray(100000, ')') << -1.0;
        QTest::newRow("many signs") << QByteArray(100000, '-') + "1" << -1.0;
        QTest::newRow("fair nesting") << QByteArray(500, '(') + "1" + QByteArray(500, ')') << 1.0;
    }

    void evaluates()
    {
        QFETCH(QByteArray, text);
        QFETCH(double, value);
        double result = -1.0;
        for (int round = 0; round < 2; ++round) {
            QCOMPARE(zeb__bc_act(text.constData(), true, 0, &result) == 0, value != -1.0);
            QCOMPARE(result, value);
        }
    }

    void keepsNothingOfTheLastCall()
    {
        double result = -1.0;
        QCOMPARE(zeb__bc_act("A=1; A", true, 0, &result), 0);
        QCOMPARE(zeb__bc_act("A=5; A", true, 0, &result), 0);
        QCOMPARE(result, 5.0);
        QVERIFY(zeb__bc_act("A", true, 0, &result) != 0);
        QVERIFY(zeb__bc_act("A=1; A+", true, 0, &result) != 0);
        QCOMPARE(zeb__bc_act("A=6; A", true, 0, &result), 0);
        QCOMPARE(result, 6.0);
        QVERIFY(zeb__bc_act(nullptr, true, 0, &result) != 0);
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

    void exceptionHasAMessageForEachStatus()
    {
        const char* outOfMemory = InternalException(824000).getMessage();
        QVERIFY(QByteArray(outOfMemory).contains("memory"));
        QVERIFY(QByteArray(InternalException(77).getMessage()).contains("77"));
        QCOMPARE(InternalException(824000).getMessage(), outOfMemory);
        QVERIFY(*InternalException::getDefaultMsg() != '\0');
    }
};

QTEST_APPLESS_MAIN(TestCalculator)
#include "tst_calculator.moc"
