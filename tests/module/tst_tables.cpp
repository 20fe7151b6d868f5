// SPDX-License-Identifier: MIT
#include "fixture.h"

namespace {

bool isRed(const QTableWidget* table, int row, int column)
{
    return table->item(row, column)->foreground().color() == Qt::red;
}

/** What is typed into columns of the test table, and models that are selected then. */
struct Test
{
    const char* name;
    int row;
    std::vector<std::pair<int, const char*>> typed;
    QString texts; ///< of the row, afterwards
    bool isRed = false;
    QList<int> models = {};
};

} // namespace

/** The test bench and the job data. */
class TestTables : public HostTest
{
    Q_OBJECT

private slots:
    void tester_data()
    {
        addRows<Test>({
            {"bit in range", 0, {{0, "98"}, {1, "1"}, {2, "3"}}, "98, 1, 3, 101, B101"},
            {"bit out of range", 0, {{0, "101"}}, "101, -, -, 201, B201", true},
            {"in range again", 0, {{0, "101"}, {2, "100"}}, "101, -, 100, 201, B201"},
            {"no bit so big", 0, {{0, "300"}}, "300, -, -, 301, ", true},
            {"laser takes no bit", 2, {{0, "100"}}, "100, -, -, 100, "},
            {"typed 0 is a hole", 5, {{0, "0"}, {2, "101"}}, "0, -, 101, 101, B101"},
            {"tolerance alone", 5, {{2, "101"}}, "-, -, 101, 101, B101"},
            {"emptied beside a tolerance", 0, {{0, "100"}, {1, "1"}, {0, ""}}, ", 1, -, , "},
            {"retest of what is emptied", 0, {{0, "100"}, {2, "101"}, {0, ""}},
                ", -, 101, 101, B101", false, {1, 0}},
            {"retest of nothing", 0, {{0, "100"}, {0, ""}}, ", -, -, , ", false, {1, 0}},
            {"other model", 0, {{0, "100"}}, "100, -, -, 250, ", false, {1}},
            {"model and back", 0, {{0, "100"}}, "100, -, -, 101, B101", false, {1, 0}},
        });
    }

    void tester()
    {
        QFETCH(Test, data);
        mHost->write("brox_drill_bits.xml",
            bitsXml({bitXml("B101", "0.101", "0.003976378"), bitXml("B201", "0.201")}));
        mHost->write("brox.xml",
            modelsXml({modelXml("a", "FHS+AMOUNT", "yes", "<HoleType name='Pth' amount='400'/>"),
                modelXml("b", "100000")}));
        QTableWidget* table = mHost->table("testerTableWidget");
        for (const auto& [column, text] : data.typed) {
            typeInto(table, data.row, column, text);
        }
        for (const int model : data.models) {
            mHost->table("broxModelTableWidget")->selectRow(model);
        }
        QCOMPARE(rowTexts(table, data.row).join(", "), data.texts);
        QCOMPARE(isRed(table, data.row, 4), data.isRed);
        QVERIFY(!hasChanges(mHost->viewer()));
        for (const int column : {3, 4}) {
            table->setCurrentCell(data.row, column);
            QTest::keyClick(table, Qt::Key_F2);
            QVERIFY(!openEditor(table));
        }
    }

    void jobData()
    {
        mHost->write("brox.xml",
            modelsXml({modelXml("a", "FHS+AMOUNT", "yes",
                "<HoleType name='Pth' amount='400'/><HoleType name='Laser' amount='800'/>")}));
        fillJob();
        const QStringList rows = {
            "top, Pth, 5, 100, 1, 2, 101, B101",
            "top, Via, 7, 100, 0, 0, 101, B101",
            "top, Laser, 9, 100, 0, 0, 102, ",
            "bottom, Undefined, 1, 0, 0, 0, 101, B101",
            "bottom, NPth, 1, 500, 0, 0, 500, ",
            "bottom, PressFit, 0, 101, 0, 0, 101, B101",
        };
        QCOMPARE(job()->rowCount(), rows.size());
        for (int i = 0; i < rows.size(); ++i) {
            QCOMPARE(rowTexts(job(), i).join(", "), rows[i]);
            // The bit is not within the tolerances, or there is none.
            QCOMPARE(isRed(job(), i, 7), i == 1 || i == 3 || i == 4);
        }
        // The step's name, and each layer's once for all of its tools.
        QCOMPARE(standin_calls("qor__data_id2name"), 3);

        mHost->changeUnits(Host::Inch);
        QCOMPARE(rowTexts(job(), 0).join(", "),
            QString("top, Pth, 5, 3.937, 0.0394, 0.0787, 3.9764, B101"));
        mHost->changeUnits(Host::Metric);
        QCOMPARE(rowTexts(job(), 4).join(", "), rows[4]);
        QTest::keyClick(job(), Qt::Key_F2);
        QVERIFY(!openEditor(job()));
    }

    void jobDataWithoutModels()
    {
        fillJob();
        QCOMPARE(rowTexts(job(), 0).join(", "), QString("top, Pth, 5, 100, 1, 2, , "));
        mHost->changeUnits(Host::Inch);
        QCOMPARE(cellText(job(), 0, 6), QString());
    }

private:
    void fillJob()
    {
        mHost->write("brox_drill_bits.xml", bitsXml({bitXml("B101", "0.101")}));
        const int top = standin_add_layer(mHost->step, "top");
        const int bottom = standin_add_layer(mHost->step, "bottom");
        standin_add_layer(mHost->step, "no drill layer");
        for (const auto& [layer, tool] : {
                 std::pair(top, standin_tool{0, 0, 400, 800, 40000, 5}),
                 std::pair(top, standin_tool{2, 0, 0, 0, 40000, 7}),
                 std::pair(top, standin_tool{2, 1, 0, 0, 40000, 9}),
                 std::pair(bottom, standin_tool{3, 0, 0, 0, -1, 1}),
                 std::pair(bottom, standin_tool{1, 0, 0, 0, 200000, 1}),
                 std::pair(bottom, standin_tool{0, 3, 0, 0, 40400, 0}),
             }) {
            standin_add_tool(layer, &tool);
        }
    }

    QTableWidget* job() { return mHost->table("jobDrillDataTableWidget"); }
};

QTEST_MAIN(TestTables)
#include "tst_tables.moc"
