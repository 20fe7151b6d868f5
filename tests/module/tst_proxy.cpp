// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QProcess>

namespace {

constexpr int millimeter = 400000;

/** A hole of a tool and its drill size; the formula on show is that of the first model. */
struct Hole
{
    const char* name;
    int toolType;
    int toolSubType;
    const char* model;
    int fhs;
    int size;
    QByteArray bit = {};
};

const QByteArray models = modelsXml({
    modelXml("Own", "1", "no",
        R"(<HoleType name="Pth" amount="100" oversized="1000" os_amount="200"/>
           <HoleType name="Via" amount="100" oversized="0" os_amount="200"/>
           <HoleType name="NPth" amount="100" oversized="-5" os_amount="200"/>
           <HoleType name="nPTH" amount="9"/>)"),
    modelXml("Bits", "AMOUNT + FHS", "yes",
        R"(<HoleType name="Pth" amount="4"/><HoleType name="Laser" amount="6"/>
           <HoleType name="Photo" amount="7"/>)"),
});

const std::vector<Hole> holes = {
    {"plated", 0, 0, "Bits", millimeter, millimeter + 4, "P4"},
    {"laser, whatever the type, takes no bit", 9, 1, "Bits", millimeter, millimeter + 6},
    {"photo takes no bit", 2, 2, "Bits", millimeter, millimeter + 7},
    {"press fit has no amount", 0, 3, "Bits", millimeter, millimeter, "P0"},
    {"unknown type", 3, 0, "Bits", millimeter, millimeter, "P0"},
    {"negative type, with the amount of an unknown name", -1, 0, "Own", millimeter, millimeter + 9},
    {"unknown sub type", 0, 4, "Bits", millimeter, millimeter, "P0"},
    {"name in other case", 0, 0, "bits", millimeter, 0},
    {"below the threshold", 0, 0, "Own", 999, 1099},
    {"at the threshold", 0, 0, "Own", 1000, 1200},
    {"no threshold", 2, 0, "Own", millimeter, millimeter + 100},
    {"negative threshold", 1, 0, "Own", millimeter, millimeter + 100},
};

} // namespace

/** The eight functions, as a host without a display of its own would use them. */
class TestProxy : public HostTest
{
    Q_OBJECT

private slots:
    void initTestCase() { QCOMPARE(brox__proxy_set_model_renamed_deleted_cb(nullptr), 0); }

    void onlyTheEightFunctionsAreExported()
    {
        QProcess nm;
        nm.start(NM, {"-D", "--defined-only", "--format=just-symbols", BROX_LIBRARY});
        QVERIFY(nm.waitForFinished());
        QStringList symbols = QString(nm.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
        symbols.sort();
        QCOMPARE(symbols,
            QStringList(
                {"brox__proxy_calc_drill_size", "brox__proxy_can_close", "brox__proxy_close_brox",
                    "brox__proxy_get_brox", "brox__proxy_get_model_list", "brox__proxy_open_brox",
                    "brox__proxy_set_model_renamed_deleted_cb", "brox__proxy_set_parent_viewer"}));
    }

    void lifeOfViewers()
    {
        const int step = mHost->step;
        auto* viewer = reinterpret_cast<BroxViewer*>(this);
        int ok = 0;
        QCOMPARE(brox__proxy_get_brox(step, &viewer), 0);
        QVERIFY(!viewer);
        QCOMPARE(brox__proxy_can_close(step, &ok), 0);
        QCOMPARE(ok, 1);
        QCOMPARE(brox__proxy_close_brox(step), 0);

        QCOMPARE(brox__proxy_open_brox(step), 0);
        brox__proxy_get_brox(step, &viewer);
        const QPointer<QWidget> first = reinterpret_cast<QWidget*>(viewer);
        QVERIFY(first && first->isHidden() && !first->parent());
        QCOMPARE(brox__proxy_set_parent_viewer(nullptr, this), 0);
        QCOMPARE(brox__proxy_set_parent_viewer(viewer, nullptr), 0);
        QCOMPARE(mHost->viewer(), first.get());
        QCOMPARE(brox__proxy_close_brox(step), 0);
        QVERIFY(first); // the host's to delete
        QCOMPARE(brox__proxy_get_brox(step, &viewer), 0);
        QVERIFY(!viewer);
        QVERIFY(mHost->viewer() != first);
        QVERIFY(mHost->log.isEmpty());
        delete first;
    }

    void noStep()
    {
        auto* viewer = reinterpret_cast<BroxViewer*>(this);
        auto** names = reinterpret_cast<char**>(this);
        int number = 5;
        char bit[8] = "old";
        QCOMPARE(brox__proxy_get_brox(-1, &viewer), 0);
        QVERIFY(!viewer);
        QCOMPARE(brox__proxy_can_close(-1, &number), 0);
        QCOMPARE(number, 1);
        QCOMPARE(brox__proxy_open_brox(-1), BROX_BAD_ARGUMENT);
        QCOMPARE(brox__proxy_close_brox(-1), BROX_BAD_ARGUMENT);
        QCOMPARE(brox__proxy_get_model_list(-1, &names, &number), BROX_BAD_ARGUMENT);
        QVERIFY(!names && number == 0);
        number = 5;
        QCOMPARE(brox__proxy_calc_drill_size(-1, "Own", 0, 0, 0, 0, 400, &number, bit),
            BROX_BAD_ARGUMENT);
        QVERIFY(number == 0 && !bit[0]);
        const QString report = "INTERNAL|(stpid != -1) at brox_proxy";
        const QString passedOn = "STATUS|brox_proxy";
        QCOMPARE(mHost->log, QStringList({report, report, report, passedOn, report, passedOn}));
    }

    void onlyTheFirstCallbackIsCalled()
    {
        const auto another = [](int, const char*, const char*) { QFAIL("It came second"); };
        QCOMPARE(brox__proxy_set_model_renamed_deleted_cb(another), 0);
        QCOMPARE(brox__proxy_set_model_renamed_deleted_cb(nullptr), 0);
        mHost->write("brox.xml", modelsXml({modelXml("A"), modelXml("B")}));
        Answers answers{QMessageBox::Ok, QMessageBox::Ok};
        click(mHost->viewer(), "deleteToolButton");
        QCOMPARE(mHost->heard, QStringList("0: A > -")); // the step's number, not its id
        standin_set_in_editor(mHost->step, false);
        click(mHost->viewer(), "deleteToolButton");
        QCOMPARE(mHost->heard.size(), 1);
        QVERIFY(mHost->modelNames().isEmpty());
    }

    void drillSizes_data() { addRows(holes); }

    void drillSizes()
    {
        QFETCH(Hole, data);
        mHost->write("brox.xml", models);
        mHost->write("brox_drill_bits.xml",
            bitsXml({bitXml("P0", "1"), bitXml("P4", "1.00001"), bitXml("P6", "1.000015")}));
        const Host::Drill drill =
            mHost->drill(data.model, data.fhs, 0, 0, data.toolType, data.toolSubType);
        QCOMPARE(drill.status, 0);
        QCOMPARE(drill.size, data.size);
        QCOMPARE(drill.bit, data.bit);
        QVERIFY(mHost->log.isEmpty());
    }

    void longDesignationsAreCut()
    {
        mHost->write("brox.xml", modelsXml({modelXml("Std", "FHS", "yes")}));
        mHost->write("brox_drill_bits.xml",
            bitsXml({bitXml("1234567", "1"), bitXml("12345678", "2"), bitXml("µµµµ", "3")}));
        QCOMPARE(mHost->drill("Std", millimeter).bit, QByteArray("1234567"));
        QVERIFY(mHost->log.isEmpty());
        QCOMPARE(mHost->drill("Std", 2 * millimeter).bit, QByteArray("1234567"));
        QCOMPARE(mHost->drill("Std", 3 * millimeter).bit, QByteArray("µµµµ").left(7));
        const QString report =
            "INTERNAL|(((ba.data())?(int)strlen(ba.data()):0) <= (sizeof(bit)-1)) at brox_proxy";
        QCOMPARE(mHost->log, QStringList({report, report}));
    }

    /** A step whose units can't be had takes no bit; the formula's value stands. */
    void unknownUnits()
    {
        mHost->write("brox.xml", modelsXml({modelXml("Std", "FHS", "yes")}));
        mHost->write("brox_drill_bits.xml", bitsXml({bitXml("big", "2", "2")}));
        QCOMPARE(mHost->drill("Std", millimeter).bit, QByteArray("big"));
        for (const bool isInEditor : {false, true}) {
            standin_set_in_editor(mHost->step, isInEditor);
            standin_set_units(mHost->step, 7);
            const Host::Drill drill = mHost->drill("Std", millimeter);
            QCOMPARE(drill.status, 0);
            QCOMPARE(drill.size, millimeter);
            QCOMPARE(drill.bit, QByteArray());
        }
        QVERIFY(mHost->log.isEmpty());
    }
};

QTEST_MAIN(TestProxy)
#include "tst_proxy.moc"
