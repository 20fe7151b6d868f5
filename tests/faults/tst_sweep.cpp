// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QLineEdit>

#include <algorithm>
#include <cstring>
#include <optional>
#include <set>

#include "brox_step_data.h"

namespace {

constexpr int failedStatus = 771234;

using Prepare = void (*)(JobHost&);
using Act = std::function<int(JobHost&, QStringList& outputs)>;

/** An operation of the module, which gives its status. */
struct Action
{
    const char* name;
    Prepare prepare; ///< the viewer
    Act act;
    std::optional<QString> failed = {}; ///< the outputs when it hands a host's status on
};

constexpr Prepare closed = [](JobHost&) {};
constexpr Prepare opened = [](JobHost& host) { host.viewer(); };
constexpr Prepare edited = [](JobHost& host) { host.set("amountsTableWidget", 0, 0, 25.0); };
constexpr Prepare bitsEdited = [](JobHost& host) { click(host.viewer(), "actionAdd_Size"); };

Act user(std::function<void(JobHost&)> work)
{
    return [=](JobHost& host, QStringList&) {
        work(host);
        return 0;
    };
}

Act press(const char* name)
{
    return user([=](JobHost& host) { click(host.viewer(), name); });
}

Act enter(const char* table, int row, int column, const QVariant& value)
{
    return user([=](JobHost& host) { host.set(table, row, column, value); });
}

/** A function of a step that has one output. */
template <typename Output>
Act single(Output before, std::function<int(int step, Output*)> call)
{
    return [=](JobHost& host, QStringList& outputs) {
        Output output = before;
        const int status = call(host.step, &output);
        outputs.append(QString("%1").arg(output));
        return status;
    };
}

int modelList(JobHost& host, QStringList& outputs)
{
    char** names = nullptr;
    int count = -1;
    const int status = brox__proxy_get_model_list(host.step, &names, &count);
    outputs.append(QString::number(count));
    for (int i = 0; names && i < count; ++i) {
        outputs.append(names[i] ? names[i] : "null");
        zeb__mem_free(names[i], 1, "test", __LINE__);
    }
    zeb__mem_free(names, 1, "test", __LINE__);
    return status;
}

int drillSize(JobHost& host, QStringList& outputs)
{
    const Host::Drill drill = host.drill("A", 196000, 4000, 4000);
    outputs << QString::number(drill.size) << drill.bit;
    return drill.status;
}

int drillSizes(JobHost& host, QStringList& outputs)
{
    drill_size_info* infos = nullptr;
    int count = 0;
    const int status = brox__proxy_get_drill_sizes(host.step, &infos, &count);
    for (int i = 0; infos && i < count; ++i) {
        outputs.append(QString::number(infos[i].fhs));
    }
    zeb__mem_free(infos, 1, "test", __LINE__);
    return status;
}

int sizeToText(int step, const char** text)
{
    static char buffer[112];
    std::strcpy(buffer, *text);
    *text = buffer;
    return brox__proxy_size_to_str(step, 400, buffer);
}

int sizeToNumber(int step, double* number)
{
    return brox__proxy_size_to_double(step, 400, number);
}

int numberToSize(int step, int* size)
{
    return brox__proxy_double_to_size(step, 1.0, size);
}

int tellOfRename(JobHost& host, QStringList& outputs)
{
    const int status = brox__proxy_model_renamed_deleted(host.step, "a", "b");
    outputs = host.heard;
    return status;
}

const std::vector<Action> actions = {
    // The exported functions.
    {"open", closed, [](JobHost& host, auto&) { return brox__proxy_open_brox(host.step); }},
    {"model list, opening", closed, modelList},
    {"model list", opened, modelList},
    {"drill size, opening", closed, drillSize},
    {"drill size", opened, drillSize},
    {"can close", edited, single<int>(-1, brox__proxy_can_close)},
    {"close", edited, user([](JobHost& host) { host.endViewer(); })},
    {"refused pointer", closed,
        [](JobHost& host, auto&) { return brox__proxy_get_brox(host.step, nullptr); }},
    // The routines behind them.
    {"drill sizes", closed, drillSizes, ""},
    {"units", closed, single<int>(-7, brox__proxy_get_units), "-7"},
    {"units text", closed, single<const char*>("old", brox__proxy_get_units_str), "old"},
    {"size as text", closed, single<const char*>("old", sizeToText), ""},
    {"size as number", closed, single<double>(-1.0, sizeToNumber), "0"},
    {"number as size", closed, single<int>(-1, numberToSize), "0"},
    {"tell of a rename", closed, tellOfRename, ""},
    {"unknown step", closed,
        single<int>(0, [](int, int* units) { return brox__proxy_get_units(1, units); }), "0"},
    // What the user does in the viewer.
    {"select", opened,
        user([](JobHost& host) { host.table("broxModelTableWidget")->setCurrentCell(1, 0); })},
    {"amount", opened, enter("amountsTableWidget", 0, 0, 12.5)},
    {"test values", opened, enter("testerTableWidget", 0, 0, 490.0)},
    {"formula", opened, user([](JobHost& host) {
         QTest::keyClicks(child<QLineEdit>(host.viewer(), "dhsLineEdit"), "*2");
     })},
    {"use of bits", opened, press("useBitFileCheckBox")},
    {"recalculate", edited, press("recalcPushButton")},
    {"units change", edited, user([](JobHost& host) { host.changeUnits(Host::Inch); })},
    {"new model", opened, press("newToolButton")},
    {"rename", opened, enter("broxModelTableWidget", 0, 0, "renamed")},
    {"delete", opened, press("deleteToolButton")},
    {"save", edited, press("saveToolButton")},
    {"load", opened, press("loadToolButton")},
    {"load of no XML", opened, user([](JobHost& host) {
         host.write("brox.xml", "<");
         click(host.viewer(), "loadToolButton");
     })},
    // And in the window of the bits.
    {"bits window", opened, press("openBitFileToolButton")},
    {"add a bit", opened, press("actionAdd_Size")},
    {"edit a bit", bitsEdited, enter("drillBitsTableWidget", 0, 1, "350")},
    {"delete a bit", bitsEdited, press("actionDelete_Size")},
    {"save bits", bitsEdited, press("actionSave")},
    {"close bits", bitsEdited, press("actionClose")},
    {"load bits", opened, press("actionOpen")},
};

/** A host operation that can fail, and how that shows. */
struct Fault
{
    QByteArray operation;
    const char* entry; ///< what the log then holds; null: the module is silent on it
    bool harmless; ///< all goes on as if it had succeeded
};

const std::vector<Fault> faults = {
    {"vex__data_stpid2vex_num", "STATUS|brox_proxy", false},
    {"vex__data_get_units", "STATUS|brox_proxy", false},
    {"vex__size_p2milmicron", "STATUS|brox_proxy", false},
    {"vex__size_p2s_milmicron", "STATUS|brox_proxy", false},
    {"vex__size_milmicron2p", "STATUS|brox_proxy", false},
    {"qor__lst_lyr_stp_ids", "STATUS|brox_proxy", false},
    {"qor__drl_tools_get", "STATUS|brox_proxy", false},
    {"qor__data_id2parent", nullptr, false},
    {"qor__data_id2name", nullptr, false},
    {"zeb__mem_calloc", "INTERNAL|(", false},
    {"zeb__mem_free", nullptr, true},
    {"zeb__str_dup_fn", nullptr, false},
    {"zeb__str_ncpy", nullptr, false},
    {"zeb__sarn_get_dir", nullptr, false},
    {"zeb__sarn_get_epath", "ERROR|Unable to load BROX resource file", true},
    {"zeb__sarn_get_Units_str", nullptr, false},
    {"zeb__bc_act", nullptr, false},
    {"zeb__nls_nlst", nullptr, true},
    {"zeb__log_write", nullptr, true},
    {"zeb__log_status_check", nullptr, true},
    {"zeb__err_sound", nullptr, true},
    {"ZExtFileDialog::getSystemFolder", nullptr, false},
};

/** What comes of a failure where it is neither harmless nor a status that is handed on. */
struct Special
{
    QByteArray action;
    QByteArray operation;
    QStringList outputs; ///< by number of the call
};

const std::vector<Special> specials = {
    {"model list", "zeb__mem_calloc", {"2"}},
    {"model list", "zeb__str_dup_fn", {"2 null B", "2 A null"}},
    {"model list, opening", "zeb__sarn_get_dir", {"2 A B", "0"}},
    {"drill size", "zeb__bc_act", {"0 "}},
    {"drill size", "zeb__str_ncpy", {"200000 "}},
    {"drill size", "vex__data_stpid2vex_num", {"200000 "}},
    {"drill size", "vex__data_get_units", {"200000 "}},
    {"drill size, opening", "zeb__sarn_get_dir", {"200000 ", "0 "}},
};

qsizetype entries(const QStringList& log, const char* start)
{
    return std::count_if(
        log.begin(), log.end(), [start](const QString& entry) { return entry.startsWith(start); });
}

/** What came of an operation. */
struct Outcome
{
    int status;
    QString outputs;
    QString state;

    bool operator==(const Outcome&) const = default;
};

/** One run of an action, with a failure in it if an operation is given, and again without. */
struct Run
{
    explicit Run(const Action& action, const QByteArray& operation = {}, int nth = 0)
    {
        JobHost host;
        const auto act = [&] {
            host.heard.clear();
            QStringList outputs;
            const int status = action.act(host, outputs);
            return Outcome{status, outputs.join(' '), {}};
        };
        action.prepare(host);
        host.log.clear();
        const size_t blocks = standin_live_blocks();
        for (const Fault& fault : faults) {
            calls[fault.operation] = -standin_calls(fault.operation);
        }
        if (nth > 0) {
            standin_fail(operation, nth, failedStatus);
        }
        outcome = act();
        for (const Fault& fault : faults) {
            calls[fault.operation] += standin_calls(fault.operation);
        }
        leaked = int(standin_live_blocks() - blocks);
        log = host.log;
        dialogs = host.dialogs.seen.size();
        outcome.state = host.state();

        host.restore();
        action.prepare(host);
        next = act();
        next.state = host.state();
    }

    Outcome outcome;
    Outcome next;
    std::map<QByteArray, int> calls; ///< by operation
    int leaked;
    QStringList log;
    qsizetype dialogs;
};

/** A pointer to anything. */
struct Any
{
    void* value;

    template <typename Target>
    operator Target*() const
    {
        return static_cast<Target*>(value);
    }
};

struct PointerCase
{
    const char* name; ///< of the argument
    int (*call)(Any bad, Any good);
};

int drillSize(const char* model, int* size, char* bit)
{
    return brox__proxy_calc_drill_size(1, model, 0, 0, 0, 0, 1, size, bit);
}

const std::vector<PointerCase> pointerCases = {
    {"ok", [](Any bad, Any) { return brox__proxy_can_close(1, bad); }},
    {"brox", [](Any bad, Any) { return brox__proxy_get_brox(1, bad); }},
    {"models", [](Any bad, Any good) { return brox__proxy_get_model_list(1, bad, good); }},
    {"num_models", [](Any bad, Any good) { return brox__proxy_get_model_list(1, good, bad); }},
    {"model_name", [](Any bad, Any good) { return drillSize(bad, good, good); }},
    {"drill_size", [](Any bad, Any good) { return drillSize("A", bad, good); }},
    {"bit", [](Any bad, Any good) { return drillSize("A", good, bad); }},
    {"brox_drill_type", [](Any bad, Any) { return brox__proxy_drill_type(0, 0, bad); }},
    {"drill_sizes", [](Any bad, Any good) { return brox__proxy_get_drill_sizes(1, bad, good); }},
    {"drill_size_num", [](Any bad, Any good) { return brox__proxy_get_drill_sizes(1, good, bad); }},
    {"units", [](Any bad, Any) { return brox__proxy_get_units(1, bad); }},
    {"units_str", [](Any bad, Any) { return brox__proxy_get_units_str(1, bad); }},
    {"val_str", [](Any bad, Any) { return brox__proxy_size_to_str(1, 1, bad); }},
    {"dval", [](Any bad, Any) { return brox__proxy_size_to_double(1, 1, bad); }},
    {"val", [](Any bad, Any) { return brox__proxy_double_to_size(1, 1.0, bad); }},
};

} // namespace

/** Lets every host operation fail at each of its calls in each operation of the module. */
class TestSweep : public QObject
{
    Q_OBJECT

private slots:
    void sweep_data() { addRows(actions); }

    void sweep()
    {
        QFETCH(Action, data);
        const Run good(data);
        QVERIFY(good.next == good.outcome);
        QCOMPARE(good.leaked, 0);
        for (const Fault& fault : faults) {
            for (int nth = 1; nth <= good.calls.at(fault.operation); ++nth) {
                ++mRuns;
                mFailed.insert(fault.operation);
                const Run run(data, fault.operation, nth);
                check(data, fault, nth, good, run);
                if (QTest::currentTestFailed()) {
                    QFAIL("at call " + QByteArray::number(nth) + " of " + fault.operation);
                }
            }
        }
    }

    void everyOperationHasFailed()
    {
        for (const Fault& fault : faults) {
            QVERIFY2(mFailed.count(fault.operation), fault.operation);
        }
        qInfo("%d failures", mRuns);
    }

    /** Bad pointers are refused, and nothing is written to the good ones. */
    void badPointers_data() { addRows(pointerCases); }

    void badPointers()
    {
        QFETCH(PointerCase, data);
        JobHost host;
        const QByteArray untouched(128, 'x');
        QByteArray memory = untouched;
        for (const quintptr bad : {0, 1, 1000}) {
            host.log.clear();
            QCOMPARE(data.call({reinterpret_cast<void*>(bad)}, {memory.data()}), BROX_BAD_ARGUMENT);
            QCOMPARE(host.log,
                QStringList(
                    QString("INTERNAL|(((ullong)(%1) > 1000)) at brox_proxy").arg(data.name)));
            QCOMPARE(memory, untouched);
        }
        QCOMPARE(standin_error_sounds(), 3);
        QCOMPARE(standin_calls("vex__data_stpid2vex_num"), 0);
    }

private:
    static void check(
        const Action& action, const Fault& fault, int nth, const Run& good, const Run& run)
    {
        QCOMPARE(run.leaked, 0);
        QCOMPARE(entries(run.log, "INTERNAL|No block"), 0); // none is freed twice
        QVERIFY(run.next == good.outcome);
        if (fault.entry) {
            const int own = good.outcome.status != 0 ? 1 : 0; // what fails by itself fails but once
            QVERIFY(entries(run.log, fault.entry) > entries(good.log, fault.entry) - own);
        }
        int status = good.outcome.status;
        if (action.failed && fault.entry && !fault.harmless) {
            status = fault.operation == "zeb__mem_calloc" ? BROX_OUT_OF_MEMORY : failedStatus;
            QCOMPARE(run.outcome.outputs, *action.failed);
        } else if (entries(run.log, "INTERNAL|((*models) != 0)") > 0) {
            status = BROX_OUT_OF_MEMORY;
        }
        QCOMPARE(run.outcome.status, status);
        if (fault.harmless) {
            QVERIFY(run.outcome == good.outcome);
            QCOMPARE(run.dialogs, good.dialogs);
        }
        for (const Special& special : specials) {
            if (special.action == action.name && special.operation == fault.operation) {
                QCOMPARE(run.outcome.outputs, special.outputs.value(nth - 1));
            }
        }
    }

    int mRuns = 0;
    std::set<QByteArray> mFailed;
};

QTEST_MAIN(TestSweep)
#include "tst_sweep.moc"
