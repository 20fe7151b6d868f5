// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>

#include <climits>
#include <optional>

/** The formula's language and the strip in which it is typed. */
class TestFormula : public QObject
{
    Q_OBJECT

private slots:
    void init() { mHost.emplace(); }
    void cleanup() { mHost.reset(); }

    void check_data()
    {
        QTest::addColumn<QString>("formula");
        QTest::addColumn<bool>("admitted");
        for (const char* formula :
            {"FHS + AMOUNT + (MAX_TOL - MIN_TOL) / 2", "TOL_MEDIAN", "100", "2*FHS", "FHS*3/2",
                "((FHS))", " FHS *\n2 ", "fhs + Amount", "-FHS", "FHS/0", "FHS2", "FHS/MIN_TOL"}) {
            QTest::newRow(formula) << formula << true;
        }
        for (const char* formula : {"", "  ", "FHS AMOUNT", "FHSAMOUNT", "FH", "_", "F2HS", "2FHS",
                 "MIN_ TOL", "FHS+", "FHS-", "FHS*", "FHS/ ", "(", "FHS(", "FHS)", "(FHS", ")FHS(",
                 "FHS)+(AMOUNT", "()", "FHS*1.5", "FHS;1", "FHS=1", "FHS^2", "FHS%2", "FHS//2",
                 "FHS,1", "\u00b5", "FHS+\u0416"}) {
            QTest::newRow(qPrintable(QString("not: %1").arg(formula))) << formula << false;
        }
    }

    void check()
    {
        QFETCH(QString, formula);
        QFETCH(bool, admitted);
        edit(formula);
        QCOMPARE(mEdit->text(), formula);
        QCOMPARE(isRed(mEdit), !admitted);
        QVERIFY(!hasChanges(mHost->viewer()));
    }

    void typing_data()
    {
        QTest::addColumn<QString>("start");
        QTest::addColumn<int>("cursor");
        QTest::addColumn<QString>("keys"); // "<" is Backspace, "~" Delete
        QTest::addColumn<QString>("text"); // "|" is the cursor, brackets hold the selection
        QTest::addColumn<bool>("admitted");
        QTest::newRow("a letter completes") << "1" << 0 << "~f"
                                            << "FHS|" << true;
        QTest::newRow("first of two names") << "1" << 0 << "~m"
                                            << "M[IN_TOL|]" << true;
        QTest::newRow("second of two names") << "1" << 0 << "~ma"
                                             << "MAX_TOL|" << true;
        QTest::newRow("first name confirmed") << "1" << 0 << "~mi"
                                              << "MIN_TOL|" << true;
        QTest::newRow("other key drops the rest") << "1" << 0 << "~m+"
                                                  << "M+|" << false;
        QTest::newRow("last name") << "1" << 1 << "+t"
                                   << "1+TOL_MEDIAN|" << true;
        QTest::newRow("no name so long") << "1" << 0 << "~fx"
                                         << "FHSX|" << false;
        QTest::newRow("digit completes nothing") << "1" << 0 << "~f1"
                                                 << "FHS1|" << true;
        QTest::newRow("only left of the cursor") << "MOUNT" << 0 << "a"
                                                 << "AMOUNT|MOUNT" << false;
        QTest::newRow("middle of a text") << "1++2" << 2 << "f"
                                          << "1+FHS|+2" << true;
        QTest::newRow("upper case, cursor stays") << "fhs+1" << 4 << "2"
                                                  << "FHS+2|1" << true;
        QTest::newRow("backspace") << "FHS + AMOUNT" << 12 << "<"
                                   << "FHS + AMOUN|" << false;
        QTest::newRow("delete") << "AMOUNT" << 5 << "~"
                                << "AMOUN|" << false;
        QTest::newRow("after backspace again") << "AMOUNT" << 6 << "<t"
                                               << "AMOUNT|" << true;
        QTest::newRow("all deleted") << "1" << 1 << "<"
                                     << "|" << false;
    }

    void typing()
    {
        QFETCH(QString, start);
        QFETCH(int, cursor);
        QFETCH(QString, keys);
        QFETCH(QString, text);
        QFETCH(bool, admitted);
        edit(start);
        mEdit->setCursorPosition(cursor);
        for (const QChar key : keys) {
            if (key == '<' || key == '~') {
                QTest::keyClick(mEdit, key == '<' ? Qt::Key_Backspace : Qt::Key_Delete);
            } else {
                QTest::keyClick(mEdit, key.toLatin1());
            }
        }
        QString shown = mEdit->text();
        shown.insert(mEdit->cursorPosition(), '|');
        if (mEdit->hasSelectedText()) {
            shown.insert(mEdit->selectionStart(), '[');
            shown.append(']');
        }
        QCOMPARE(shown, text);
        QCOMPARE(isRed(mEdit), !admitted);

        // What was refused gives way to the last formula that was not.
        const QString typed = mEdit->text();
        QTest::keyClick(mEdit, Qt::Key_Return);
        if (admitted) {
            QCOMPARE(mEdit->text(), typed);
        } else {
            QVERIFY(mEdit->text() != typed);
        }
        QVERIFY(hasChanges(mHost->viewer()) || mEdit->text() == start);
    }

    void leavingRestores_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("return") << int(Qt::Key_Return);
        QTest::newRow("tab") << int(Qt::Key_Tab);
    }

    /** The refused text is evaluated all the same, until the line edit is left. */
    void leavingRestores()
    {
        QFETCH(int, key);
        edit("FHS");
        mEdit->setFocus();
        mEdit->end(false);
        QTest::keyClicks(mEdit, "+");
        QVERIFY(isRed(mEdit));
        QVERIFY(!hasChanges(mHost->viewer()));
        QCOMPARE(mHost->drill("M", 400).size, 0);
        QTest::keyClick(mEdit, Qt::Key(key));
        QCOMPARE(mEdit->text(), QString("FHS"));
        QVERIFY(!isRed(mEdit));
        QCOMPARE(mHost->drill("M", 400).size, 400);
    }

    void pasting()
    {
        edit("1");
        mEdit->selectAll();
        QGuiApplication::clipboard()->setText("f");
        mEdit->paste(); // by mouse: no key was pressed yet
        QCOMPARE(mEdit->text(), QString("F"));
        QTest::keyClick(mEdit, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(mEdit, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(mEdit->text(), QString("FHS"));
    }

    void evaluation_data()
    {
        QTest::addColumn<QString>("formula");
        QTest::addColumn<int>("amount");
        QTest::addColumn<int>("fhs");
        QTest::addColumn<int>("minTol");
        QTest::addColumn<int>("maxTol");
        QTest::addColumn<int>("size");
        const auto row = [](const char* name, const char* formula, int amount, int fhs, int minTol,
                             int maxTol, int size) {
            QTest::newRow(name) << formula << amount << fhs << minTol << maxTol << size;
        };
        row("default", "FHS + AMOUNT + (MAX_TOL - MIN_TOL) / 2", 25, 400, 10, 30, 435);
        row("median rounds down", "TOL_MEDIAN", 0, 0, 2, 5, 1);
        row("median rounds up", "TOL_MEDIAN", 0, 0, 5, 2, -1);
        row("median of extremes", "TOL_MEDIAN", 0, 0, INT_MIN, INT_MAX, INT_MAX);
        row("negative median of extremes", "TOL_MEDIAN", 0, 0, INT_MAX, INT_MIN, -INT_MAX);
        row("each name", "AMOUNT*1000+FHS*100+MIN_TOL*10+MAX_TOL", 1, 2, 3, 4, 1234);
        row("fraction cut", "FHS/10", 0, 439, 0, 0, 43);
        row("negative fraction cut", "0-FHS/10", 0, 439, 0, 0, -43);
        row("cut once, at the end", "FHS/10*10", 0, 439, 0, 0, 439);
        row("negative amount", "FHS-AMOUNT", -5, 400, 0, 0, 405);
        row("extremes", "FHS+AMOUNT", INT_MIN, INT_MAX, 0, 0, -1);
        row("more than a size holds", "FHS*FHS", 0, INT_MAX, 0, 0, INT_MAX);
        row("less than a size holds", "FHS*FHS", INT_MIN, INT_MIN, 0, 0, INT_MAX);
        row("far less than a size holds", "0-FHS*FHS", 0, INT_MAX, 0, 0, INT_MIN);
        row("division by zero", "FHS/MIN_TOL", 0, 400, 0, 0, 0);
        row("constant", "100", 0, 0, 0, 0, 100);
        row("refused and yet a formula", "1.5*FHS", 0, 3, 0, 0, 4);
        row("no formula", "FHS+", 0, 400, 0, 0, 0);
        row("unknown name", "HOLE", 0, 400, 0, 0, 0);
        row("lower case meets no name", "fhs", 0, 400, 0, 0, 0);
        row("empty", "", 0, 400, 0, 0, 0);
    }

    void evaluation()
    {
        QFETCH(QString, formula);
        QFETCH(int, amount);
        QFETCH(int, fhs);
        QFETCH(int, minTol);
        QFETCH(int, maxTol);
        QFETCH(int, size);
        edit(formula, "<HoleType name=\"Pth\" amount=\"" + QByteArray::number(amount) + "\"/>");
        const int calls = standin_calls("zeb__bc_act");
        const auto drill = mHost->drill("M", fhs, minTol, maxTol);
        QCOMPARE(drill.status, 0);
        QCOMPARE(drill.size, size);
        QCOMPARE(standin_calls("zeb__bc_act") - calls, formula.isEmpty() ? 0 : 1);
    }

private:
    /** Shows a model with a formula. */
    void edit(const QString& formula, const QByteArray& holeTypes = {})
    {
        const QByteArray escaped = formula.toHtmlEscaped().replace('\n', "&#10;").toUtf8();
        mHost->write("brox.xml", modelsXml({modelXml("M", escaped, "no", holeTypes)}));
        mEdit = child<QLineEdit>(mHost->viewer(), "dhsLineEdit");
    }

    std::optional<Host> mHost;
    QLineEdit* mEdit = nullptr;
};

QTEST_MAIN(TestFormula)
#include "tst_formula.moc"
