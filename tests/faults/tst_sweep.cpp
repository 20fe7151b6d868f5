// SPDX-License-Identifier: MIT
#include "fixture.h"

#include <QAction>
#include <QLineEdit>
#include <QRegularExpression>
#include <QScopedValueRollback>

#include <set>

namespace {

constexpr int failedStatus = 771234;

/** An operation of the module; gives its status, and behind it what it puts out. */
struct Action
{
    QString name;
    std::function<QString(JobHost&)> act;
    bool isInViewer = true; ///< that is there, with unsaved models and bits
};

Action user(const QString& name, const std::function<void(JobHost&)>& work)
{
    return {name, [=](JobHost& host) {
                work(host);
                return QString("0");
            }};
}

QString modelList(JobHost& host)
{
    int status = -1;
    const QString names = host.modelNames(&status).join(' ');
    return QString("%1 %2").arg(QString::number(status), names);
}

QString drillSize(JobHost& host)
{
    const Host::Drill drill = host.drill("A", 196000, 4000, 4000);
    return QString("%1 %2 ").arg(drill.status).arg(drill.size) + drill.bit;
}

QString load(JobHost& host)
{
    click(host.viewer(), "loadToolButton");
    return "0";
}

QString drillSizeOfNoStep(JobHost& host)
{
    const QScopedValueRollback none(host.step, -1);
    return drillSize(host);
}

/** The exported functions, an edit of each table, and all that can be pressed in the viewer and in
 *  the window of the bits. */
std::vector<Action> allActions()
{
    std::vector<Action> actions = {
        {"open", [](JobHost& host) { return QString::number(brox__proxy_open_brox(host.step)); },
            false},
        {"model list, opening", modelList, false},
        {"drill size, opening", drillSize, false},
        {"drill size of no step", drillSizeOfNoStep, false},
        {"load, opening", load, false},
        {"model list", modelList},
        {"drill size", drillSize},
        user("select", [](JobHost& host) { host.table("broxModelTableWidget")->selectRow(1); }),
        user("formula",
            [](JobHost& host) {
                QTest::keyClicks(child<QLineEdit>(host.viewer(), "dhsLineEdit"), "*2");
            }),
        user("units", [](JobHost& host) { host.changeUnits(Host::Inch); }),
        user("close",
            [](JobHost& host) {
                int mayClose = 0;
                brox__proxy_can_close(host.step, &mayClose);
                host.endViewer();
            }),
    };
    JobHost own;
    for (const auto* table : own.viewer()->findChildren<QTableWidget*>()) {
        const QByteArray name = table->objectName().toLatin1();
        const int column = table->columnCount() / 2;
        actions.push_back(user(name, [=](JobHost& host) { host.set(name, 0, column, "12.5"); }));
    }
    static const QRegularExpression pressed("^action|(Tool|Push)Button$|CheckBox$");
    for (const auto* button : own.viewer()->findChildren<QObject*>(pressed)) {
        const QByteArray name = button->objectName().toLatin1();
        actions.push_back(user(name, [=](JobHost& host) { click(host.viewer(), name); }));
    }
    return actions;
}

/** A host operation that can fail, and how that shows. */
struct Fault
{
    QByteArray operation;
    const char* entry = nullptr; ///< what the log then holds; null: the module is silent on it
    bool isHarmless = false; ///< all goes on as if it had succeeded
};

const std::vector<Fault> faults = {
    {"vex__data_stpid2vex_num", "STATUS|brox_proxy"},
    {"vex__data_get_units", "STATUS|brox_proxy"},
    {"vex__size_p2milmicron", "STATUS|brox_proxy"},
    {"vex__size_p2s_milmicron", "STATUS|brox_proxy"},
    {"vex__size_milmicron2p", "STATUS|brox_proxy"},
    {"qor__lst_lyr_stp_ids", "STATUS|brox_proxy"},
    {"qor__drl_tools_get", "STATUS|brox_proxy"},
    {"qor__data_id2parent"},
    {"qor__data_id2name"},
    {"zeb__mem_calloc", "INTERNAL|("},
    {"zeb__mem_free", nullptr, true},
    {"zeb__str_dup_fn"},
    {"zeb__str_ncpy"},
    {"zeb__sarn_get_dir"},
    {"zeb__sarn_get_epath", "ERROR|Unable to load BROX resource file", true},
    {"zeb__sarn_get_Units_str"},
    {"zeb__bc_act"},
    {"zeb__nls_nlst", nullptr, true},
    {"zeb__log_write", nullptr, true},
    {"zeb__log_status_check", nullptr, true},
    {"zeb__err_sound", nullptr, true},
    {"ZExtFileDialog::getSystemFolder"},
};

/** One run of an action, with a failure in it if an operation is given, and again without. */
struct Run
{
    explicit Run(const Action& action, const QByteArray& operation = {}, int nth = 0)
    {
        JobHost host;
        prepare(action, host);
        const size_t blocks = standin_live_blocks();
        for (const Fault& fault : faults) {
            calls[fault.operation] = -standin_calls(fault.operation);
        }
        if (nth > 0) {
            standin_fail(operation, nth, failedStatus);
        }
        outcome = action.act(host);
        for (const Fault& fault : faults) {
            calls[fault.operation] += standin_calls(fault.operation);
        }
        leaked = int(standin_live_blocks() - blocks);
        log = host.log.join('\n');
        outcome += '\n' + host.state();

        host.restore();
        prepare(action, host);
        next = action.act(host) + '\n' + host.state();
    }

    int entries(const char* text) const { return int(log.count(text)); }

    QString outcome; ///< status, outputs, what is shown, files, and what the callback was given
    QString next;
    QString log;
    std::map<QByteArray, int> calls; ///< by operation
    int leaked;

private:
    static void prepare(const Action& action, JobHost& host)
    {
        if (action.isInViewer) {
            host.set("amountsTableWidget", 0, 0, 25.0);
            click(host.viewer(), "actionAdd_Size");
        }
        host.log.clear();
        host.heard.clear();
    }
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
};

} // namespace

/** Lets every host operation fail at each of its calls in each operation of the module. */
class TestSweep : public QObject
{
    Q_OBJECT

private slots:
    void sweep_data()
    {
        QTest::addColumn<Action>("data");
        for (const Action& action : allActions()) {
            QTest::addRow("%s", qPrintable(action.name)) << action;
        }
    }

    void sweep()
    {
        QFETCH(Action, data);
        const Run good(data);
        QCOMPARE(good.leaked, 0);
        ++mActions;
        for (const Fault& fault : faults) {
            for (int nth = 1; nth <= good.calls.at(fault.operation); ++nth) {
                ++mRuns;
                mFailed.insert(fault.operation);
                check(fault, good, Run(data, fault.operation, nth));
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
        qInfo("%d failures in %d operations", mRuns, mActions);
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
    static void check(const Fault& fault, const Run& good, const Run& run)
    {
        QCOMPARE(run.leaked, 0);
        QCOMPARE(run.entries("INTERNAL|No block"), 0); // none is freed twice
        QCOMPARE(run.next, good.next);
        QVERIFY(!fault.entry || run.entries(fault.entry) > good.entries(fault.entry));
        const bool isForHost = run.entries("INTERNAL|((*models) != 0)") > 0;
        const QString status = isForHost ? QString::number(BROX_OUT_OF_MEMORY)
                                         : good.outcome.section(QRegularExpression("\\s"), 0, 0);
        QVERIFY(run.outcome.startsWith(status));
        QVERIFY(!fault.isHarmless || run.outcome == good.outcome);
    }

    int mActions = 0;
    int mRuns = 0;
    std::set<QByteArray> mFailed;
};

QTEST_MAIN(TestSweep)
#include "tst_sweep.moc"
