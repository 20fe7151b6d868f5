// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QPointer>
#include <QPushButton>

#include <climits>
#include <optional>

namespace {

void* const badPointers[] = {nullptr, reinterpret_cast<void*>(1), reinterpret_cast<void*>(1000)};

template <typename Pointer>
Pointer bad(int i)
{
    return static_cast<Pointer>(badPointers[i]);
}

} // namespace

/** The eight functions, as a host without a display of its own would use them. */
class TestProxy : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QCOMPARE(brox__proxy_set_model_renamed_deleted_cb(nullptr), 0); }
    void init() { mHost.emplace(); }
    void cleanup() { mHost.reset(); }

    void lifeOfViewers()
    {
        const int step = mHost->step;
        BroxViewer* viewer = reinterpret_cast<BroxViewer*>(this);
        int ok = 0;
        QCOMPARE(brox__proxy_get_brox(step, &viewer), 0);
        QVERIFY(!viewer);
        QCOMPARE(brox__proxy_can_close(step, &ok), 0);
        QCOMPARE(ok, 1);
        QCOMPARE(brox__proxy_close_brox(step), 0);
        QCOMPARE(brox__proxy_close_brox(step), 0);

        const QPointer<QWidget> first = mHost->viewer();
        QVERIFY(first);
        QCOMPARE(mHost->viewer(), first.get());
        QCOMPARE(brox__proxy_close_brox(step), 0);
        QVERIFY(first); // the host's to delete
        QCOMPARE(brox__proxy_get_brox(step, &viewer), 0);
        QVERIFY(!viewer);
        QVERIFY(mHost->viewer() != first);
        QVERIFY(mHost->log.isEmpty());
        delete first;
    }

    void viewersAreHidden()
    {
        QCOMPARE(brox__proxy_open_brox(mHost->step), 0);
        BroxViewer* viewer = nullptr;
        brox__proxy_get_brox(mHost->step, &viewer);
        QVERIFY(!reinterpret_cast<QWidget*>(viewer)->isVisible());
        QVERIFY(!reinterpret_cast<QWidget*>(viewer)->parentWidget());
        mHost->endViewer();
    }

    void noStep()
    {
        BroxViewer* viewer = reinterpret_cast<BroxViewer*>(this);
        int number = 5;
        char** names = reinterpret_cast<char**>(this);
        char bit[8] = "old";
        QCOMPARE(brox__proxy_get_brox(-1, &viewer), 0);
        QVERIFY(!viewer);
        QCOMPARE(brox__proxy_can_close(-1, &number), 0);
        QCOMPARE(number, 1);
        QVERIFY(mHost->log.isEmpty());

        const QString report = "INTERNAL|(stpid != -1) at brox_proxy";
        QCOMPARE(brox__proxy_open_brox(-1), BROX_BAD_ARGUMENT);
        QCOMPARE(brox__proxy_close_brox(-1), BROX_BAD_ARGUMENT);
        QCOMPARE(mHost->log, QStringList({report, report}));
        QCOMPARE(standin_error_sounds(), 2);

        const QStringList passedOn = {report, "STATUS|brox_proxy"};
        mHost->log.clear();
        QCOMPARE(brox__proxy_get_model_list(-1, &names, &number), BROX_BAD_ARGUMENT);
        QVERIFY(!names);
        QCOMPARE(number, 0);
        QCOMPARE(mHost->log, passedOn);
        mHost->log.clear();
        number = 5;
        QCOMPARE(brox__proxy_calc_drill_size(-1, "Std", 0, 0, 0, 0, 400, &number, bit),
            BROX_BAD_ARGUMENT);
        QCOMPARE(number, 0);
        QCOMPARE(bit[0], '\0');
        QCOMPARE(mHost->log, passedOn);
    }

    void badPointers_data()
    {
        QTest::addColumn<std::function<int(int)>>("call");
        QTest::addColumn<QString>("argument");
        const auto row = [](const char* name, const char* argument, std::function<int(int)> call) {
            QTest::newRow(name) << call << QString(argument);
        };
        static int number;
        static char** names;
        row("can_close", "ok", [](int i) { return brox__proxy_can_close(1, bad<int*>(i)); });
        row("get_brox", "brox",
            [](int i) { return brox__proxy_get_brox(1, bad<BroxViewer**>(i)); });
        row("get_model_list names", "models",
            [](int i) { return brox__proxy_get_model_list(1, bad<char***>(i), bad<int*>(i)); });
        row("get_model_list number", "num_models",
            [](int i) { return brox__proxy_get_model_list(1, &names, bad<int*>(i)); });
        row("calc_drill_size model", "model_name", [](int i) {
            return brox__proxy_calc_drill_size(
                1, bad<char*>(i), 0, 0, 0, 0, 1, bad<int*>(i), bad<char*>(i));
        });
        row("calc_drill_size size", "drill_size", [](int i) {
            return brox__proxy_calc_drill_size(
                1, "Std", 0, 0, 0, 0, 1, bad<int*>(i), bad<char*>(i));
        });
        row("calc_drill_size bit", "bit", [](int i) {
            return brox__proxy_calc_drill_size(1, "Std", 0, 0, 0, 0, 1, &number, bad<char*>(i));
        });
    }

    void badPointers()
    {
        QFETCH(std::function<int(int)>, call);
        QFETCH(QString, argument);
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(call(i), BROX_BAD_ARGUMENT);
            QCOMPARE(mHost->log,
                QStringList(
                    QString("INTERNAL|(((ullong)(%1) > 1000)) at brox_proxy").arg(argument)));
            QCOMPARE(standin_error_sounds(), i + 1);
            mHost->log.clear();
        }
    }

    void onlyTheFirstCallbackIsCalled()
    {
        mHost->write("brox.xml", modelsXml({modelXml("A"), modelXml("B")}));
        const auto remove = [&](const char* name) {
            auto* table = child<QTableWidget>(mHost->viewer(), "broxModelTableWidget");
            table->selectRow(findRow(table, 0, name));
            Answers answers{QMessageBox::Ok};
            click(mHost->viewer(), "deleteToolButton");
        };
        const auto another = [](int, const char*, const char*) { QFAIL("It came second"); };
        QCOMPARE(brox__proxy_set_model_renamed_deleted_cb(another), 0);
        QCOMPARE(brox__proxy_set_model_renamed_deleted_cb(nullptr), 0);
        remove("A");
        QCOMPARE(mHost->heard, QStringList("0: A > -")); // the step's number, not its id
        standin_set_in_editor(mHost->step, false);
        remove("B");
        QCOMPARE(mHost->heard.size(), 1);
        QVERIFY(mHost->modelNames().isEmpty());
    }

    void noParentViewer()
    {
        auto* viewer = reinterpret_cast<BroxViewer*>(mHost->viewer());
        QCOMPARE(brox__proxy_set_parent_viewer(nullptr, this), 0);
        QCOMPARE(brox__proxy_set_parent_viewer(viewer, nullptr), 0);
    }

    void modelList()
    {
        char** names = reinterpret_cast<char**>(this);
        int count = 5;
        QCOMPARE(brox__proxy_get_model_list(mHost->step, &names, &count), 0);
        QVERIFY(!names);
        QCOMPARE(count, 0);
        mHost->endViewer();

        // The order is that of the file, not that of the table.
        const QStringList inFile = {"b", "a", "C", "b"};
        mHost->write(
            "brox.xml", modelsXml({modelXml("b"), modelXml("a"), modelXml("C"), modelXml("b")}));
        const std::size_t blocks = standin_live_blocks();
        QCOMPARE(mHost->modelNames(), inFile);
        QCOMPARE(standin_live_blocks(), blocks);

        standin_fail("zeb__mem_calloc", 1, 0);
        QCOMPARE(brox__proxy_get_model_list(mHost->step, &names, &count), BROX_OUT_OF_MEMORY);
        QVERIFY(!names);
        QCOMPARE(count, 4);
        QCOMPARE(mHost->log, QStringList("INTERNAL|((*models) != 0) at brox_proxy"));
    }

    void drillSizes_data()
    {
        QTest::addColumn<int>("toolType");
        QTest::addColumn<int>("toolSubType");
        QTest::addColumn<QByteArray>("model");
        QTest::addColumn<int>("size");
        QTest::addColumn<QByteArray>("bit");
        const auto row = [](const char* name, int type, int subType, const char* model, int size,
                             const char* bit) {
            QTest::newRow(name) << type << subType << QByteArray(model) << size << QByteArray(bit);
        };
        // The hole is 1 mm; amounts of "Bits" are 4 to 9 sizes by type; bits are at 1 mm + 4 ...
        row("plated", 0, 0, "Bits", 400004, "P4");
        row("non-plated", 1, 0, "Bits", 400009, "P9");
        row("via", 2, 0, "Bits", 400005, "P5");
        row("unknown type has no amount", 3, 0, "Bits", 400000, "P0");
        row("negative type", -1, 0, "Bits", 400000, "P0");
        row("laser takes no bit", 0, 1, "Bits", 400006, "");
        row("laser, whatever the type", 9, 1, "Bits", 400006, "");
        row("photo takes no bit", 2, 2, "Bits", 400007, "");
        row("press fit", 0, 3, "Bits", 400008, "P8");
        row("unknown sub type", 0, 4, "Bits", 400000, "P0");
        row("negative sub type", 0, -1, "Bits", 400000, "P0");
        row("no such model", 0, 0, "bits", 0, "");
        row("no name", 0, 0, "", 0, "");
        // The formula on show is that of "Bits"; of "Own" it would be 1.
        row("other model, formula on show", 0, 0, "Own", 400100, "");
        row("type without amounts", 1, 0, "Own", 400000, "");
    }

    void drillSizes()
    {
        QFETCH(int, toolType);
        QFETCH(int, toolSubType);
        QFETCH(QByteArray, model);
        QFETCH(int, size);
        QFETCH(QByteArray, bit);
        mHost->write("brox.xml",
            modelsXml({modelXml("Own", "1", "no", R"(<HoleType name="Pth" amount="100"/>)"),
                modelXml("Bits", "AMOUNT + FHS", "yes", R"(<HoleType name="Pth" amount="4"/>
                    <HoleType name="Via" amount="5"/><HoleType name="Laser" amount="6"/>
                    <HoleType name="Photo" amount="7"/><HoleType name="PressFit" amount="8"/>
                    <HoleType name="NPth" amount="9"/>)")}));
        QByteArrayList bits;
        for (const int i : {0, 4, 5, 6, 7, 8, 9}) {
            bits.append(bitXml(
                "P" + QByteArray::number(i), QByteArray::number((400000 + i) / 400000.0, 'g', 12)));
        }
        mHost->write("brox_drill_bits.xml", bitsXml(bits));
        const auto drill = mHost->drill(model, 400000, 0, 0, toolType, toolSubType);
        QCOMPARE(drill.status, 0);
        QCOMPARE(drill.size, size);
        QCOMPARE(drill.bit, bit);
        QVERIFY(mHost->log.isEmpty());
    }

    void designationsAreCut_data()
    {
        QTest::addColumn<QByteArray>("designation");
        QTest::addColumn<QByteArray>("bit");
        QTest::newRow("7 bytes") << QByteArray("1234567") << QByteArray("1234567");
        QTest::newRow("8 bytes") << QByteArray("12345678") << QByteArray("1234567");
        QTest::newRow("4 characters of 2 bytes") << QByteArray("\u00b5\u00b5\u00b5\u00b5")
                                                 << QByteArray("\u00b5\u00b5\u00b5\u00b5").left(7);
    }

    void designationsAreCut()
    {
        QFETCH(QByteArray, designation);
        QFETCH(QByteArray, bit);
        mHost->write("brox.xml", modelsXml({modelXml("Std", "FHS", "yes")}));
        mHost->write("brox_drill_bits.xml", bitsXml({bitXml(designation, "1")}));
        const auto drill = mHost->drill("Std", 400000);
        QCOMPARE(drill.status, 0);
        QCOMPARE(drill.size, 400000);
        QCOMPARE(drill.bit, bit);
        const QStringList report(
            "INTERNAL|(((ba.data())?(int)strlen(ba.data()):0) <= (sizeof(bit)-1)) at brox_proxy");
        QCOMPARE(mHost->log, designation.size() > 7 ? report : QStringList());
    }

    void aViewerIsMadeToCompute()
    {
        mHost->write("brox.xml", modelsXml({modelXml("Std", "FHS + 1")}));
        int size = 0;
        char bit[8];
        QCOMPARE(brox__proxy_calc_drill_size(mHost->step, "Std", 0, 0, 0, 0, 9, &size, bit), 0);
        QCOMPARE(size, 10);
        BroxViewer* viewer = nullptr;
        brox__proxy_get_brox(mHost->step, &viewer);
        QVERIFY(viewer);
        QCOMPARE(mHost->viewer(), reinterpret_cast<QWidget*>(viewer));
    }

    void unknownUnits_data()
    {
        QTest::addColumn<std::function<void(int)>>("spoil");
        QTest::addColumn<QStringList>("log");
        using Spoil = std::function<void(int)>;
        QTest::newRow("step not in the editor")
            << Spoil([](int step) { standin_set_in_editor(step, false); }) << QStringList();
        QTest::newRow("foreign units")
            << Spoil([](int step) { standin_set_units(step, 7); }) << QStringList();
        QTest::newRow("no step number")
            << Spoil([](int) { standin_fail("vex__data_stpid2vex_num", 1, 824099); })
            << QStringList("STATUS|brox_proxy");
        QTest::newRow("no units") << Spoil([](int) {
            standin_fail("vex__data_get_units", 1, 824099);
        }) << QStringList("STATUS|brox_proxy");
    }

    /** A step whose units can't be had takes no bit; the formula's value stands. */
    void unknownUnits()
    {
        QFETCH(std::function<void(int)>, spoil);
        QFETCH(QStringList, log);
        mHost->write("brox.xml", modelsXml({modelXml("Std", "FHS", "yes")}));
        mHost->write("brox_drill_bits.xml", bitsXml({bitXml("big", "2", "2")}));
        QCOMPARE(mHost->drill("Std", 400000).bit, QByteArray("big"));
        spoil(mHost->step);
        const auto drill = mHost->drill("Std", 400000);
        QCOMPARE(drill.status, 0);
        QCOMPARE(drill.size, 400000);
        QCOMPARE(drill.bit, QByteArray());
        QCOMPARE(mHost->log, log);
    }

private:
    std::optional<Host> mHost;
};

QTEST_MAIN(TestProxy)
#include "tst_proxy.moc"
