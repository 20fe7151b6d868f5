// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>

#include <climits>
#include <optional>

namespace {

bool isRed(const QTableWidget* table, int row, int column)
{
    const QColor color = table->item(row, column)->foreground().color();
    if (color != Qt::red && color != QApplication::palette(table).color(QPalette::Text)) {
        qFatal("A cell's text is neither red nor normal");
    }
    return color == Qt::red;
}

} // namespace

/** The three tables of the viewer: amounts, test bench, job data. */
class TestTables : public QObject
{
    Q_OBJECT

private slots:
    void init() { mHost.emplace(); }
    void cleanup() { mHost.reset(); }

    void amountsTyped_data()
    {
        QTest::addColumn<Host::Units>("units");
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("size");
        QTest::newRow("a micron") << Host::Metric << 0 << "1" << 400;
        QTest::newRow("a mil") << Host::Inch << 0 << "1" << 10160;
        QTest::newRow("threshold") << Host::Metric << 1 << "2.5" << 1000;
        QTest::newRow("oversized amount") << Host::Inch << 2 << "0.5" << 5080;
        QTest::newRow("smallest size") << Host::Metric << 0 << "0.0025" << 1;
        QTest::newRow("holes that shrink") << Host::Metric << 0 << "-1" << -400;
        QTest::newRow("letters are no keys") << Host::Metric << 0 << "a1b2" << 4800;
    }

    /** An amount in a row that was blank; the cells beside it stay blank and count as 0. */
    void amountsTyped()
    {
        QFETCH(Host::Units, units);
        QFETCH(int, column);
        QFETCH(QString, typed);
        QFETCH(int, size);
        standin_set_units(mHost->step, units);
        show({modelXml("a")});
        typeInto(amounts(), 4, column, typed);
        QList<int> sizes = {0, 0, 0};
        sizes[column] = size;
        QCOMPARE(amounts()->item(4, column)->data(Qt::UserRole).toInt(), size);
        for (const int other : {0, 1, 2}) {
            QCOMPARE(cellText(amounts(), 4, other) == "-", other != column);
        }
        QCOMPARE(saved(),
            QStringList(QString("PressFit %1 %2 %3").arg(sizes[0]).arg(sizes[1]).arg(sizes[2])));
        typeInto(amounts(), 4, column, "");
        QCOMPARE(saved(), QStringList("PressFit 0 0 0"));
    }

    void amountsOfModels()
    {
        show({modelXml("a", "1", "no",
                  "<HoleType name='NPth' amount='400' oversized='800' os_amount='-400'/>"
                  "<HoleType name='Old' amount='7'/>"),
            modelXml("b", "1", "no", "<HoleType name='Via'/>"), modelXml("c")});
        const QStringList blank = {"-", "-", "-"};
        const QStringList rows = {"Pth", "Via", "Laser", "Photo", "PressFit", "NPth"};
        for (const auto& [model, row, texts] : {std::tuple(0, 5, QStringList{"1", "2", "-1"}),
                 std::tuple(1, 1, QStringList{"0", "0", "0"}), std::tuple(2, -1, QStringList())}) {
            models()->selectRow(model);
            QCOMPARE(amounts()->rowCount(), 6);
            for (int i = 0; i < 6; ++i) {
                QCOMPARE(amounts()->verticalHeaderItem(i)->text(), rows[i]);
                QCOMPARE(rowTexts(amounts(), i), i == row ? texts : blank);
            }
        }
        models()->selectRow(0);
        typeInto(amounts(), 0, 0, "1"); // what no row shows is kept
        QCOMPARE(saved(),
            QStringList({"NPth 400 800 -400", "Undefined 7 0 0", "Pth 400 0 0", "Via 0 0 0"}));
    }

    void unitsKeepAmounts_data()
    {
        QTest::addColumn<QList<int>>("sizes");
        QTest::newRow("whole") << QList<int>{4000, 101600, -400};
        QTest::newRow("not whole in mils") << QList<int>{400, 1, -399};
        QTest::newRow("not whole in microns") << QList<int>{10161, -10159, 3};
        QTest::newRow("extremes") << QList<int>{INT_MAX, INT_MIN + 1, INT_MAX - 1};
        QTest::newRow("one is none") << QList<int>{0, 0, 12345};
        QTest::newRow("none") << QList<int>{0, 0, 0};
    }

    void unitsKeepAmounts()
    {
        QFETCH(QList<int>, sizes);
        QByteArray types;
        QStringList wanted;
        for (const char* name : {"Pth", "Laser", "NPth"}) {
            types += QString("<HoleType name='%1' amount='%2' oversized='%3' os_amount='%4'/>")
                         .arg(name)
                         .arg(sizes[0])
                         .arg(sizes[1])
                         .arg(sizes[2])
                         .toUtf8();
            wanted.append(
                QString("%1 %2 %3 %4").arg(name).arg(sizes[0]).arg(sizes[1]).arg(sizes[2]));
        }
        show({modelXml("a", "1", "no", types)});
        const QStringList texts = rowTexts(amounts(), 0);
        const bool isVisible = sizes != QList<int>{0, 0, 0};
        mHost->changeUnits(Host::Inch);
        QCOMPARE(child<QLabel>(mViewer, "unitsLabel")->text(), QString("Mils"));
        QCOMPARE(hasChanges(mViewer), isVisible); // a number that changes counts as an edit
        QCOMPARE(rowTexts(amounts(), 0) != texts, isVisible);
        if (isVisible) {
            QCOMPARE(saved(), wanted);
        }
        mHost->changeUnits(Host::Metric);
        QCOMPARE(rowTexts(amounts(), 0), texts);
        QCOMPARE(hasChanges(mViewer), isVisible);
        if (isVisible) {
            QCOMPARE(saved(), wanted);
        }
        QVERIFY(rowTexts(amounts(), 1) == QStringList({"-", "-", "-"}));
    }

    void tester_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QStringList>("steps"); // a column and what is typed there
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<bool>("red");
        const auto row = [](const char* name, int type, const char* steps, const char* texts,
                             bool red) {
            QTest::newRow(name) << type << QString(steps).split(", ") << QString(texts).split(", ")
                                << red;
        };
        row("exact bit", 0, "0 100", "100, -, -, 101, B101", false);
        row("bit in range", 0, "0 98, 1 1, 2 3", "98, 1, 3, 101, B101", false);
        row("bit out of range", 0, "0 101", "101, -, -, 201, B201", true);
        row("in range again", 0, "0 101, 2 100", "101, -, 100, 201, B201", false);
        row("no bit so big", 0, "0 300", "300, -, -, 301, ", true);
        row("laser takes no bit", 2, "0 100", "100, -, -, 100, ", false);
        row("other type, no amount", 5, "0 101", "101, -, -, 101, B101", false);
        row("typed 0 is a hole", 5, "0 0, 2 101", "0, -, 101, 101, B101", false);
        row("tolerance alone", 5, "2 101", "-, -, 101, 101, B101", false);
        row("emptied", 0, "0 100, 0 ", ", -, -, , ", false);
        row("emptied beside a tolerance", 0, "0 100, 1 1, 0 ", ", 1, -, , ", false);
        row("retest of what is emptied", 0, "0 100, 2 101, 0 , m 0", ", -, 101, 101, B101", false);
        row("retest of nothing", 0, "0 100, 0 , m 0", ", -, -, , ", false);
        row("other model", 0, "0 100, m 1", "100, -, -, 250, ", false);
        row("model and back", 0, "0 100, m 1, m 0", "100, -, -, 101, B101", false);
        row("units", 0, "0 25.4, u 0", "1, -, -, 3.976378, B101", true);
    }

    void tester()
    {
        QFETCH(int, row);
        QFETCH(QStringList, steps);
        QFETCH(QStringList, texts);
        QFETCH(bool, red);
        mHost->write("brox_drill_bits.xml",
            bitsXml({bitXml("B101", "0.101", "0.003976378"), bitXml("B201", "0.201")}));
        show({modelXml("a", "FHS+AMOUNT", "yes", "<HoleType name='Pth' amount='400'/>"),
            modelXml("b", "100000", "no")});
        auto* table = child<QTableWidget>(mViewer, "testerTableWidget");
        for (const QString& step : steps) {
            const QString value = step.section(' ', 1);
            if (step.startsWith('m')) {
                models()->selectRow(1 - value.toInt());
                models()->selectRow(value.toInt());
            } else if (step.startsWith('u')) {
                mHost->changeUnits(Host::Units(value.toInt()));
            } else {
                typeInto(table, row, step.left(1).toInt(), value);
            }
        }
        QStringList shown = rowTexts(table, row);
        shown[3] = shown[3].isEmpty() ? "" : QString::number(shown[3].toDouble(), 'g', 7);
        QCOMPARE(shown, texts);
        QCOMPARE(isRed(table, row, 4), red);
        if (!steps.contains("u 0")) {
            QVERIFY(!hasChanges(mViewer));
        }
        for (const int column : {3, 4}) {
            table->setCurrentCell(row, column);
            QTest::keyClick(table, Qt::Key_F2);
            QVERIFY(!openEditor(table));
        }
    }

    void jobData()
    {
        fillJob();
        show({modelXml("a", "FHS+AMOUNT", "yes",
            "<HoleType name='Pth' amount='400'/><HoleType name='Laser' amount='800'/>")});
        QCOMPARE(child<QLabel>(mViewer, "jobNameLabel")->text(), QString("job"));
        QCOMPARE(child<QLabel>(mViewer, "stepNameLabel")->text(), QString("panel"));
        const QList<QStringList> rows = {
            {"top", "Pth", "5", "100", "1", "2", "101", "B101"},
            {"top", "Via", "7", "100", "0", "0", "101", "B101"},
            {"top", "Laser", "9", "100", "0", "0", "102", ""},
            {"bottom", "Undefined", "1", "0", "0", "0", "101", "B101"},
            {"bottom", "NPth", "1", "500", "0", "0", "500", ""},
            {"bottom", "PressFit", "0", "101", "0", "0", "101", "B101"},
        };
        QCOMPARE(job()->rowCount(), rows.size());
        for (int i = 0; i < rows.size(); ++i) {
            QCOMPARE(rowTexts(job(), i), rows[i]);
            // The bit is not within the tolerances, or there is none.
            QCOMPARE(isRed(job(), i, 7), i == 1 || i == 3 || i == 4);
        }
        // The step's name, and each layer's once for all of its tools.
        QCOMPARE(standin_calls("qor__data_id2name"), 3);

        mHost->changeUnits(Host::Inch);
        QCOMPARE(rowTexts(job(), 0),
            QStringList({"top", "Pth", "5", "3.937", "0.0394", "0.0787", "3.9764", "B101"}));
        mHost->changeUnits(Host::Metric);
        QCOMPARE(rowTexts(job(), 4), rows[4]);
        QTest::keyClick(job(), Qt::Key_F2);
        QVERIFY(!openEditor(job()));
    }

    void jobDataWithoutModels()
    {
        fillJob();
        show({});
        QCOMPARE(rowTexts(job(), 0), QStringList({"top", "Pth", "5", "100", "1", "2", "", ""}));
        mHost->changeUnits(Host::Inch);
        QCOMPARE(cellText(job(), 0, 6), QString());
        QVERIFY(!recalculate()->isEnabled());
    }

    void recalculating()
    {
        fillJob();
        show({modelXml("a", "FHS+AMOUNT", "no")});
        QVERIFY(!recalculate()->isEnabled());
        typeInto(amounts(), 0, 0, "1");
        QVERIFY(recalculate()->isEnabled());
        QCOMPARE(cellText(job(), 0, 6), QString("100"));
        for (int i = 0; i < 2; ++i) {
            click(mViewer, "recalcPushButton");
            QVERIFY(!recalculate()->isEnabled());
            QCOMPARE(cellText(job(), 0, 6), QString("101"));
        }
        // A formula without a value leaves no size, and no bit of an earlier one.
        auto* formula = child<QLineEdit>(mViewer, "dhsLineEdit");
        formula->setFocus();
        formula->end(false);
        QTest::keyClicks(formula, "/0");
        click(mViewer, "recalcPushButton");
        QCOMPARE(cellText(job(), 0, 6), QString("0"));
    }

    void jobThatFails_data()
    {
        QTest::addColumn<QByteArray>("operation");
        QTest::addColumn<int>("nth");
        QTest::addColumn<QStringList>("log");
        const QString status = "STATUS|brox_proxy";
        QTest::newRow("layers") << QByteArray("qor__lst_lyr_stp_ids") << 1 << QStringList(status);
        QTest::newRow("count of tools")
            << QByteArray("qor__drl_tools_get") << 2 << QStringList(status);
        QTest::newRow("tools") << QByteArray("qor__drl_tools_get") << 4 << QStringList(status);
        QTest::newRow("memory") << QByteArray("zeb__mem_calloc") << 1
                                << QStringList("INTERNAL|((drill_size_info) != 0) at brox_proxy");
    }

    void jobThatFails()
    {
        QFETCH(QByteArray, operation);
        QFETCH(int, nth);
        QFETCH(QStringList, log);
        fillJob();
        const std::size_t blocks = standin_live_blocks();
        standin_fail(operation, nth, 0);
        show({modelXml("a")});
        QCOMPARE(job()->rowCount(), 0);
        QCOMPARE(child<QLabel>(mViewer, "stepNameLabel")->text(), QString("panel"));
        QCOMPARE(mHost->log, log);
        QCOMPARE(standin_live_blocks(), blocks);
        click(mViewer, "recalcPushButton");
        QVERIFY(recalculate()->isEnabled()); // nobody tells it of changes
    }

private:
    /** Opens the viewer on some models. */
    void show(const QByteArrayList& list)
    {
        mHost->write("brox.xml", modelsXml(list));
        mViewer = mHost->viewer();
    }

    void fillJob()
    {
        mHost->write("brox_drill_bits.xml", bitsXml({bitXml("B101", "0.101")}));
        const int top = standin_add_layer(mHost->step, "top");
        const int bottom = standin_add_layer(mHost->step, "bottom");
        standin_add_layer(mHost->step, "no drill layer");
        for (const standin_tool& tool : {standin_tool{0, 0, 400, 800, 40000, 5},
                 standin_tool{2, 0, 0, 0, 40000, 7}, standin_tool{2, 1, 0, 0, 40000, 9}}) {
            standin_add_tool(top, &tool);
        }
        for (const standin_tool& tool : {standin_tool{3, 0, 0, 0, -1, 1},
                 standin_tool{1, 0, 0, 0, 200000, 1}, standin_tool{0, 3, 0, 0, 40400, 0}}) {
            standin_add_tool(bottom, &tool);
        }
    }

    /** Saves, and gives the records of amounts in the file. */
    QStringList saved()
    {
        click(mViewer, "saveToolButton");
        static const QRegularExpression record("<HoleType ([^>]*)/>");
        QStringList list;
        for (auto match = record.globalMatch(mHost->read("brox.xml")); match.hasNext();) {
            const QString attributes = match.next().captured(1);
            QStringList values;
            for (const char* name : {"name", "amount", "oversized", "os_amount"}) {
                const QRegularExpression value(QString("(^| )%1=\"([^\"]*)\"").arg(name));
                values.append(value.match(attributes).captured(2));
            }
            list.append(values.join(' '));
        }
        return list;
    }

    QTableWidget* models() const { return child<QTableWidget>(mViewer, "broxModelTableWidget"); }
    QTableWidget* amounts() const { return child<QTableWidget>(mViewer, "amountsTableWidget"); }
    QTableWidget* job() const { return child<QTableWidget>(mViewer, "jobDrillDataTableWidget"); }
    QPushButton* recalculate() const { return child<QPushButton>(mViewer, "recalcPushButton"); }

    std::optional<Host> mHost;
    QWidget* mViewer = nullptr;
};

QTEST_MAIN(TestTables)
#include "tst_tables.moc"
