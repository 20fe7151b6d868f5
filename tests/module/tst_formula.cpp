// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QLineEdit>

#include <climits>

namespace {

/** Keys pressed in a text: "|" is the cursor, brackets hold the selection. */
struct TypingCase
{
    const char* name;
    const char* before;
    const char* keys; ///< null: Delete
    const char* after;
    bool isAdmitted;
};

} // namespace

/** The formula's language and the strip in which it is typed. */
class TestFormula : public HostTest
{
    Q_OBJECT

private slots:
    void admission()
    {
        const struct
        {
            bool isAdmitted;
            bool isCalculated; ///< else the module's own rules refuse it
            QStringList formulas;
        } cases[] = {
            {true, true,
                {"FHS + AMOUNT + (MAX_TOL - MIN_TOL) / 2", "TOL_MEDIAN", "100", "((FHS))",
                    " FHS *\n2 ", "fhs + Amount", "-FHS", "FHS2", "FHS/0"}},
            {false, false,
                {"", "FHS AMOUNT", "FH", "F2HS", "FHS+", "FHS/ ", "FHS(", "(FHS", "FHS)", "FHS*1.5",
                    "FHS;1", "FHS+\u0416"}},
            {false, true, {"  ", "2FHS", "MIN_ TOL", "FHS)+(AMOUNT", "()", "FHS//2"}},
        };
        for (const auto& [isAdmitted, isCalculated, formulas] : cases) {
            for (const QString& formula : formulas) {
                const int calls = standin_calls("zeb__bc_act");
                edit(formula);
                QCOMPARE(mEdit->text(), formula);
                QVERIFY2(isRed(mEdit) != isAdmitted, formula.toUtf8());
                QVERIFY2((standin_calls("zeb__bc_act") > calls) == isCalculated, formula.toUtf8());
                QVERIFY(!hasChanges(mHost->viewer()));
            }
        }
    }

    void typing_data()
    {
        addRows<TypingCase>({
            {"a letter completes", "1|", "\bf", "FHS|", true},
            {"first of two names", "1|", "\bm", "M[IN_TOL|]", true},
            {"second of two names", "1|", "\bma", "MAX_TOL|", true},
            {"other key drops the rest", "1|", "\bm+", "M+|", false},
            {"no name so long", "1|", "\bfx", "FHSX|", false},
            {"digit completes nothing", "1|", "\bf1", "FHS1|", true},
            {"only left of the cursor", "|MOUNT", "a", "AMOUNT|MOUNT", false},
            {"middle of a text", "1+|+2", "f", "1+FHS|+2", true},
            {"upper case, cursor stays", "fhs+|1", "2", "FHS+2|1", true},
            {"backspace", "FHS + AMOUNT|", "\b", "FHS + AMOUN|", false},
            {"delete", "AMOUN|T", nullptr, "AMOUN|", false},
            {"after backspace again", "AMOUNT|", "\bt", "AMOUNT|", true},
        });
    }

    void typing()
    {
        QFETCH(TypingCase, data);
        const QString before = data.before;
        const QString start = QString(before).remove('|');
        edit(start);
        mEdit->setCursorPosition(int(before.indexOf('|')));
        if (data.keys) {
            QTest::keyClicks(mEdit, data.keys);
        } else {
            QTest::keyClick(mEdit, Qt::Key_Delete);
        }
        QString shown = mEdit->text();
        shown.insert(mEdit->cursorPosition(), '|');
        if (mEdit->hasSelectedText()) {
            shown.insert(mEdit->selectionStart(), '[').append(']');
        }
        QCOMPARE(shown, data.after);
        QCOMPARE(isRed(mEdit), !data.isAdmitted);

        // What was refused gives way to the last formula that was not.
        const QString typed = mEdit->text();
        QTest::keyClick(mEdit, Qt::Key_Return);
        QCOMPARE(mEdit->text() == typed, data.isAdmitted);
        QVERIFY(hasChanges(mHost->viewer()) || mEdit->text() == start);
    }

    void evaluation()
    {
        constexpr struct
        {
            const char* formula;
            int amount, fhs, minTol, maxTol, size;
        } cases[] = {
            {"AMOUNT*1000+FHS*100+MIN_TOL*10+MAX_TOL", 1, 2, 3, 4, 1234},
            {"TOL_MEDIAN", 0, 0, 2, 5, 1},
            {"TOL_MEDIAN", 0, 0, 5, 2, -1},
            {"TOL_MEDIAN", 0, 0, INT_MIN, INT_MAX, INT_MAX},
            {"FHS/10*10+FHS/10", 0, 439, 0, 0, 482}, // cut once, at the end
            {"0-FHS/10", 0, 439, 0, 0, -43},
            {"FHS+AMOUNT", INT_MIN, INT_MAX, 0, 0, -1},
            {"FHS*FHS", 0, INT_MAX, 0, 0, INT_MAX}, // the nearest size there is
            {"0-FHS*FHS", 0, INT_MAX, 0, 0, INT_MIN},
            {"FHS/MIN_TOL", 0, 400, 0, 0, 0},
            {"1.5*FHS", 0, 3, 0, 0, 4}, // refused and yet a formula
            {"FHS+", 0, 400, 0, 0, 0},
            {"fhs", 0, 400, 0, 0, 0},
            {"", 0, 400, 0, 0, 0},
        };
        for (const auto& [formula, amount, fhs, minTol, maxTol, size] : cases) {
            edit(formula, "<HoleType name=\"Pth\" amount=\"" + QByteArray::number(amount) + "\"/>");
            const auto drill = mHost->drill("M", fhs, minTol, maxTol);
            QCOMPARE(drill.status, 0);
            QVERIFY2(drill.size == size, QString("%1: %2").arg(formula).arg(drill.size).toUtf8());
        }
    }

private:
    /** Shows a model with a formula. */
    void edit(const QString& formula, const QByteArray& holeTypes = {})
    {
        mHost->endViewer();
        const QByteArray escaped = formula.toHtmlEscaped().replace('\n', "&#10;").toUtf8();
        mHost->write("brox.xml", modelsXml({modelXml("M", escaped, "no", holeTypes)}));
        mEdit = child<QLineEdit>(mHost->viewer(), "dhsLineEdit");
    }
    QLineEdit* mEdit = nullptr;
};

QTEST_MAIN(TestFormula)
#include "tst_formula.moc"
