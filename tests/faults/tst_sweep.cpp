// SPDX-License-Identifier: MIT
#include <QLineEdit>

#include <algorithm>
#include <cstring>
#include <set>

#include "brox_proxy_internal.h"
#include "fixture.h"
#include "zeb_utils.h"

namespace {

constexpr int failedStatus = 771234;

/** An operation of the module. It gives its status and what came of it. */
struct Action
{
    const char* name;
    std::function<void(JobHost&)> prepare;
    std::function<QString(JobHost&, int* status)> act;
    QString failed = {}; ///< what comes of it if a host's status is handed on; empty: none is
};

void unedited(JobHost& host)
{
    host.viewer();
}

void edited(JobHost& host)
{
    host.set("amountsTableWidget", 0, 0, 25.0);
}

void bitsEdited(JobHost& host)
{
    click(host.viewer(), "actionAdd_Size");
}

/** An action of the user's: what came of it is the state of the viewer. */
template <typename Work>
std::function<QString(JobHost&, int*)> user(Work work)
{
    return [work](JobHost& host, int*) {
        work(host);
        return host.state();
    };
}

QString modelList(JobHost& host, int* status)
{
    char** names = nullptr;
    int count = -1;
    *status = brox__proxy_get_model_list(host.step, &names, &count);
    QStringList list(QString::number(count));
    for (int i = 0; names && i < count; ++i) {
        list.append(names[i] ? names[i] : "null");
        zeb__mem_free(names[i], 1, "test", __LINE__);
    }
    zeb__mem_free(names, 1, "test", __LINE__);
    return list.join(' ');
}

QString drillSize(JobHost& host, int* status)
{
    int size = -1;
    char bit[8] = "unread";
    *status = brox__proxy_calc_drill_size(host.step, "A", 0, 0, 4000, 4000, 196000, &size, bit);
    return QString("%1 %2").arg(size).arg(bit);
}

QString drillSizes(JobHost& host, int* status)
{
    drill_size_info* infos = nullptr;
    int count = 0;
    *status = brox__proxy_get_drill_sizes(host.step, &infos, &count);
    QStringList list;
    for (int i = 0; infos && i < count; ++i) {
        list.append(QString::number(infos[i].fhs));
    }
    zeb__mem_free(infos, 1, "test", __LINE__);
    return list.join(' ');
}

const std::vector<Action>& actions()
{
    static const std::vector<Action> all = {
        // The exported functions.
        {"open", {},
            [](JobHost& host, int* status) {
                *status = brox__proxy_open_brox(host.step);
                return host.state();
            }},
        {"model list, opening", {}, modelList},
        {"model list", unedited, modelList},
        {"drill size, opening", {}, drillSize},
        {"drill size", unedited, drillSize},
        {"can close", edited,
            [](JobHost& host, int* status) {
                int ok = -1;
                *status = brox__proxy_can_close(host.step, &ok);
                return QString::number(ok) + host.state();
            }},
        {"close", edited,
            [](JobHost& host, int* status) {
                QWidget* viewer = host.viewer();
                *status = brox__proxy_close_brox(host.step);
                delete viewer;
                return QString();
            }},
        {"refused pointer", {},
            [](JobHost& host, int* status) {
                *status = brox__proxy_get_brox(host.step, nullptr);
                return QString();
            }},
        // The routines behind them.
        {"drill sizes", {}, drillSizes, "-"},
        {"units", {},
            [](JobHost& host, int* status) {
                int units = -7;
                *status = brox__proxy_get_units(host.step, &units);
                return QString::number(units);
            },
            "-7"},
        {"units text", {},
            [](JobHost& host, int* status) {
                const char* text = "old";
                *status = brox__proxy_get_units_str(host.step, &text);
                return QString(text);
            },
            "old"},
        {"size as text", {},
            [](JobHost& host, int* status) {
                char text[112] = "old";
                *status = brox__proxy_size_to_str(host.step, 400, text);
                return QString(text);
            },
            "-"},
        {"size as number", {},
            [](JobHost& host, int* status) {
                double number = -1.0;
                *status = brox__proxy_size_to_double(host.step, 400, &number);
                return QString::number(number);
            },
            "0"},
        {"number as size", {},
            [](JobHost& host, int* status) {
                int size = -1;
                *status = brox__proxy_double_to_size(host.step, 1.0, &size);
                return QString::number(size);
            },
            "0"},
        {"tell of a rename", {},
            [](JobHost& host, int* status) {
                host.heard.clear();
                *status = brox__proxy_model_renamed_deleted(host.step, "a", "b");
                return host.heard.join(' ');
            },
            "-"},
        {"unknown step", {},
            [](JobHost&, int* status) {
                int units = 0;
                *status = brox__proxy_get_units(1, &units);
                return QString::number(units);
            },
            "0"},
        // What the user does in the viewer.
        {"select", unedited,
            user([](JobHost& host) { host.table("broxModelTableWidget")->setCurrentCell(1, 0); })},
        {"amount", unedited,
            user([](JobHost& host) { host.set("amountsTableWidget", 0, 0, 12.5); })},
        {"test values", unedited,
            user([](JobHost& host) { host.set("testerTableWidget", 0, 0, 490.0); })},
        {"formula", unedited, user([](JobHost& host) {
             auto* line = child<QLineEdit>(host.viewer(), "dhsLineEdit");
             QTest::keyClicks(line, "*2");
         })},
        {"use of bits", unedited,
            user([](JobHost& host) { click(host.viewer(), "useBitFileCheckBox"); })},
        {"recalculate", edited,
            user([](JobHost& host) { click(host.viewer(), "recalcPushButton"); })},
        {"units change", edited, user([](JobHost& host) {
             standin_set_units(host.step, 0);
             QMetaObject::invokeMethod(
                 host.viewer(), "parentViewer_unitsChanged", Q_ARG(zeb_units_enum, ZEB_UNITS_MILS));
             standin_set_units(host.step, 1);
         })},
        {"new model", unedited, user([](JobHost& host) { click(host.viewer(), "newToolButton"); })},
        {"rename", unedited, user([](JobHost& host) {
             host.table("broxModelTableWidget")->item(0, 0)->setText("renamed");
         })},
        {"delete", unedited, user([](JobHost& host) { click(host.viewer(), "deleteToolButton"); })},
        {"save", edited, user([](JobHost& host) { click(host.viewer(), "saveToolButton"); })},
        {"load", unedited, user([](JobHost& host) { click(host.viewer(), "loadToolButton"); })},
        {"load of no XML", unedited, user([](JobHost& host) {
             host.write("brox.xml", "<");
             click(host.viewer(), "loadToolButton");
         })},
        // And in the window of the bits.
        {"bits window", unedited,
            user([](JobHost& host) { click(host.viewer(), "openBitFileToolButton"); })},
        {"add a bit", unedited,
            user([](JobHost& host) { click(host.viewer(), "actionAdd_Size"); })},
        {"edit a bit", bitsEdited,
            user([](JobHost& host) { host.set("drillBitsTableWidget", 0, 1, "350"); })},
        {"delete a bit", bitsEdited,
            user([](JobHost& host) { click(host.viewer(), "actionDelete_Size"); })},
        {"save bits", bitsEdited, user([](JobHost& host) { click(host.viewer(), "actionSave"); })},
        {"close bits", bitsEdited,
            user([](JobHost& host) { click(host.viewer(), "actionClose"); })},
        {"load bits", unedited, user([](JobHost& host) { click(host.viewer(), "actionOpen"); })},
    };
    return all;
}

/** A host operation that can fail, and how that shows. */
struct Fault
{
    const char* operation;
    const char* entry; ///< what the log then holds; null: the module is silent on it
    bool harmless; ///< all goes on as if it had succeeded
};

constexpr Fault faults[] = {
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

QString failureText()
{
    return QString::fromLocal8Bit(InternalException(failedStatus).getMessage());
}

qsizetype entries(const QStringList& log, const char* start)
{
    return std::count_if(
        log.begin(), log.end(), [start](const QString& entry) { return entry.startsWith(start); });
}

/** What comes of a failure where it is neither harmless nor a status that is handed on. */
enum class Effect
{
    Undone, ///< nothing has changed, the changes are still unsaved
    Outcome, ///< a text
};

struct Special
{
    const char* action;
    const char* operation;
    Effect effect;
    QStringList outcomes = {}; ///< by number of the call
};

const Special* findSpecial(const Action& action, const Fault& fault)
{
    static const std::vector<Special> specials = {
        {"save", "zeb__sarn_get_dir", Effect::Undone},
        {"save bits", "zeb__sarn_get_dir", Effect::Undone},
        {"model list", "zeb__mem_calloc", Effect::Outcome, {"2"}},
        {"model list", "zeb__str_dup_fn", Effect::Outcome, {"2 null B", "2 A null"}},
        {"model list, opening", "zeb__sarn_get_dir", Effect::Outcome, {"2 A B", "0"}},
        {"drill size", "zeb__bc_act", Effect::Outcome, {"0 "}},
        {"drill size", "zeb__str_ncpy", Effect::Outcome, {"200000 "}},
        {"drill size", "vex__data_stpid2vex_num", Effect::Outcome, {"200000 "}},
        {"drill size", "vex__data_get_units", Effect::Outcome, {"200000 "}},
        {"drill size, opening", "zeb__sarn_get_dir", Effect::Outcome, {"200000 ", "0 "}},
        {"load", "ZExtFileDialog::getSystemFolder", Effect::Undone},
    };
    const auto special = std::find_if(specials.begin(), specials.end(), [&](const Special& each) {
        return !std::strcmp(each.action, action.name)
            && !std::strcmp(each.operation, fault.operation);
    });
    return special == specials.end() ? nullptr : &*special;
}

/** One run of an action, with a failure in it if an operation is given, and again without. */
struct Run
{
    explicit Run(const Action& action, const char* operation = nullptr, int nth = 0)
    {
        JobHost host;
        const auto prepare = [&] {
            if (action.prepare) {
                action.prepare(host);
                before = host.state();
            }
            host.heard.clear();
        };
        prepare();
        const size_t blocks = standin_live_blocks();
        host.log.clear();
        std::map<const char*, int> callsBefore;
        for (const Fault& fault : faults) {
            callsBefore[fault.operation] = standin_calls(fault.operation);
        }
        if (operation) {
            standin_fail(operation, nth, failedStatus);
        }
        outcome = action.act(host, &status);
        for (const Fault& fault : faults) {
            calls[fault.operation] = standin_calls(fault.operation) - callsBefore[fault.operation];
        }
        log = host.log;
        for (const Answers::Seen& dialog : host.dialogs.seen) {
            dialogs.append(dialog.text);
        }
        leaked = int(standin_live_blocks() - blocks);

        host.restore();
        prepare();
        next = action.act(host, &nextStatus);
    }

    QString before; ///< the state that the action met
    QString outcome;
    QString next;
    int status = 0;
    int nextStatus = 0;
    std::map<const char*, int> calls; ///< by operation, as in the table
    QStringList log;
    QStringList dialogs;
    int leaked = 0;
};

} // namespace

/** Lets every host operation fail at each of its calls in each operation of the module. */
class TestSweep : public QObject
{
    Q_OBJECT

private slots:
    void sweep_data()
    {
        QTest::addColumn<int>("action");
        for (size_t i = 0; i < actions().size(); ++i) {
            QTest::newRow(actions()[i].name) << int(i);
        }
    }

    void sweep()
    {
        QFETCH(int, action);
        const Action& act = actions()[size_t(action)];
        const Run good(act);
        QCOMPARE(good.next, good.outcome);
        QCOMPARE(good.nextStatus, good.status);
        QCOMPARE(good.leaked, 0);
        for (const Fault& fault : faults) {
            int shown = 0;
            for (int nth = 1; nth <= good.calls.at(fault.operation); ++nth) {
                ++mRuns;
                mFailed.insert(fault.operation);
                const Run run(act, fault.operation, nth);
                check(act, fault, nth, good, run);
                if (run.dialogs.contains(failureText())) {
                    // The host was not told, but what the user wanted is done.
                    ++shown;
                    QString expected = good.outcome.section('\n', 1);
                    if (!std::strcmp(act.name, "rename")) {
                        // The host is told first: the failure keeps the mark from being set.
                        expected.replace("\nunsaved\n", "\nsaved\n");
                    }
                    QCOMPARE(run.outcome, expected);
                }
                if (QTest::currentTestFailed()) {
                    QFAIL(qPrintable(QString("at call %1 of %2").arg(nth).arg(fault.operation)));
                }
            }
            const bool tellsHost =
                !std::strcmp(act.name, "rename") || !std::strcmp(act.name, "delete");
            const bool isStepNumber = !std::strcmp(fault.operation, "vex__data_stpid2vex_num");
            QCOMPARE(shown, tellsHost && isStepNumber ? 1 : 0);
        }
    }

    void badPointers_data()
    {
        QTest::addColumn<std::function<int(int, void*)>>("call");
        const auto row = [](const char* name, std::function<int(int, void*)> call) {
            QTest::newRow(name) << call;
        };
        static drill_size_info* infos;
        row("drill type",
            [](int, void* bad) { return brox__proxy_drill_type(0, 0, static_cast<int*>(bad)); });
        row("drill sizes", [](int step, void* bad) {
            int count = 5;
            const int status =
                brox__proxy_get_drill_sizes(step, static_cast<drill_size_info**>(bad), &count);
            return count == 5 ? status : -1;
        });
        row("number of drill sizes", [](int step, void* bad) {
            const int status = brox__proxy_get_drill_sizes(step, &infos, static_cast<int*>(bad));
            return infos ? -1 : status;
        });
        row("units", [](int step, void* bad) {
            return brox__proxy_get_units(step, static_cast<int*>(bad));
        });
        row("units text", [](int step, void* bad) {
            return brox__proxy_get_units_str(step, static_cast<const char**>(bad));
        });
        row("size as text", [](int step, void* bad) {
            return brox__proxy_size_to_str(step, 1, static_cast<char*>(bad));
        });
        row("size as number", [](int step, void* bad) {
            return brox__proxy_size_to_double(step, 1, static_cast<double*>(bad));
        });
        row("number as size", [](int step, void* bad) {
            return brox__proxy_double_to_size(step, 1.0, static_cast<int*>(bad));
        });
    }

    void badPointers()
    {
        using Call = std::function<int(int, void*)>;
        QFETCH(Call, call);
        JobHost host;
        for (const quintptr value : {0, 1, 1000}) {
            host.log.clear();
            QCOMPARE(call(host.step, reinterpret_cast<void*>(value)), BROX_BAD_ARGUMENT);
            QCOMPARE(host.log.size(), 1);
            QVERIFY(host.log.constFirst().contains("> 1000)) at brox_proxy"));
        }
        QCOMPARE(standin_error_sounds(), 3);
        QCOMPARE(standin_calls("vex__data_stpid2vex_num"), 0);
    }

    void everyOperationHasFailed() { QCOMPARE(mFailed.size(), std::size(faults)); }

    void cleanupTestCase() { qInfo("%d failures", mRuns); }

private:
    void check(const Action& action, const Fault& fault, int nth, const Run& good, const Run& run)
    {
        QCOMPARE(run.leaked, 0);
        QCOMPARE(run.next, good.outcome);
        QCOMPARE(run.nextStatus, good.status);
        const bool isAllocation = !std::strcmp(fault.operation, "zeb__mem_calloc");
        if (fault.entry) {
            const int own = good.status != 0 ? 1 : 0; // what fails by itself fails but once
            QVERIFY(entries(run.log, fault.entry) > entries(good.log, fault.entry) - own);
        }
        int status = good.status;
        if (!action.failed.isEmpty() && !fault.harmless && fault.entry) {
            status = isAllocation ? BROX_OUT_OF_MEMORY : failedStatus;
            QCOMPARE(run.outcome, action.failed == "-" ? QString() : action.failed);
        } else if (entries(run.log, "INTERNAL|((*models) != 0)") > 0) {
            status = BROX_OUT_OF_MEMORY;
        }
        QCOMPARE(run.status, status);
        if (fault.harmless) {
            QCOMPARE(run.outcome, good.outcome);
            QCOMPARE(run.dialogs, good.dialogs);
        }
        if (const Special* special = findSpecial(action, fault)) {
            QCOMPARE(run.outcome,
                special->effect == Effect::Undone ? run.before : special->outcomes.value(nth - 1));
        }
    }

    int mRuns = 0;
    std::set<const char*> mFailed;
};

QTEST_MAIN(TestSweep)
#include "tst_sweep.moc"
