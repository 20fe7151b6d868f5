// SPDX-License-Identifier: MIT
#include <QTemporaryDir>
#include <QTest>

#include <climits>
#include <cmath>

#include "qor_data.h"
#include "standin.h"
#include "vex_data.h"
#include "zeb_lowlevel.h"

class TestHost : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        standin_reset();
        mLog.clear();
        standin_set_log_sink(
            [](const char* level, const char* text, void* log) {
                static_cast<QStringList*>(log)->append(QString("%1|%2").arg(level, text));
            },
            &mLog);
    }

    void cleanup() { standin_reset(); }

    void textsAndLog()
    {
        const char* const cases[][2] = {{"@$@#brox@$@#GENERAL@$@#12@$@#a@$@#b", "a@$@#b"},
            {"@$@#brox@$@#GENERAL@$@#12", "@$@#brox@$@#GENERAL@$@#12"},
            {"@$@#brox@$@#GENERAL@$@#x@$@#text", "@$@#brox@$@#GENERAL@$@#x@$@#text"}};
        for (const auto& [key, text] : cases) {
            QByteArray given(key);
            const char* first = zeb__nls_nlst(given.constData());
            given.fill('x');
            zeb__nls_nlst("@$@#brox@$@#GENERAL@$@#1@$@#other");
            QCOMPARE(first, text);
        }
        QVERIFY(!standin_set_catalogue("/no/such/catalogue.qm"));
        zeb__log_write("ERROR", "@$@#brox@$@#GENERAL@$@#3@$@#Can't open %s %d", "f.xml", 7);
        zeb__log_status_check("brox", 9);
        QCOMPARE(mLog.mid(1), QStringList({"ERROR|Can't open f.xml 7", "STATUS|brox 9"}));
    }

    void memory()
    {
        const size_t before = standin_live_blocks();
        auto* numbers = static_cast<int*>(zeb__mem_calloc(100, sizeof(int), 1, "test", __LINE__));
        char* text = zeb__str_dup_fn("text", "test", __LINE__);
        QCOMPARE(numbers[99], 0);
        QCOMPARE(text, "text");
        QCOMPARE(standin_live_blocks(), before + 2);
        QVERIFY(!zeb__mem_calloc(SIZE_MAX / 2 + 2, 2, 1, "test", __LINE__));
        QVERIFY(zeb__mem_free(this, 1, "test", __LINE__) != 0);
        for (void* block : {static_cast<void*>(numbers), static_cast<void*>(text)})
            QCOMPARE(zeb__mem_free(block, 1, "test", __LINE__), 0);
        QCOMPARE(standin_live_blocks(), before);
        char bit[8];
        QCOMPARE(zeb__str_ncpy(bit, "0123456789", 7), "0123456");
    }

    void folders()
    {
        QTemporaryDir dir;
        char path[513] = "";
        bool found = true;
        QVERIFY(zeb__sarn_get_dir(2, "a.xml", path, 512, &found) != 0);
        standin_set_data_dir(dir.path().toUtf8().constData());
        const int length = int(dir.path().size()) + 6;
        QVERIFY(zeb__sarn_get_dir(2, "a.xml", path, length - 1, &found) != 0);
        QCOMPARE(path, "");
        QCOMPARE(zeb__sarn_get_dir(2, "a.xml", path, length, &found), 0);
        QCOMPARE(QString(path), dir.filePath("a.xml"));
    }

    void sizes()
    {
        constexpr struct
        {
            int units;
            double number;
            int size;
            const char* text; // of the size
        } cases[] = {{0, 1.0, 10160, "1"}, {1, 200.0, 80000, "200"},
            {0, 7.874015748, 80000, "7.874"}, {1, -0.00125, -1, "-0.0025"},
            {1, 1e300, INT_MAX, "5368709.1175"}, {0, -1e300, INT_MIN, "-211366.5008"}};
        for (const auto& [units, number, size, expected] : cases) {
            int vexNum = -1;
            QCOMPARE(vex__data_stpid2vex_num(standin_add_step("step", units), &vexNum), 0);
            int converted = 0;
            QCOMPARE(vex__size_milmicron2p(vexNum, number, 1, &converted), 0);
            QCOMPARE(converted, size);
            char text[112];
            QCOMPARE(vex__size_p2s_milmicron(vexNum, size, 1, text), 0);
            QCOMPARE(text, expected);
            double shown = 0.0;
            QCOMPARE(vex__size_p2milmicron(vexNum, size, 1, &shown), 0);
            QCOMPARE(vex__size_milmicron2p(vexNum, shown, 1, &converted), 0);
            QCOMPARE(converted, size);
            QVERIFY(vex__size_milmicron2p(vexNum, NAN, 1, &converted) != 0);
        }
    }

    void job()
    {
        const int step = standin_add_step(QByteArray(100, 'n').constData(), 0);
        const int through = standin_add_layer(step, "through");
        standin_add_layer(step, "copper");
        const int blind = standin_add_layer(step, "blind");
        constexpr standin_tool tool = {1, 3, 0, 2, -1, 7};
        standin_add_tool(blind, &tool);
        standin_add_tool(through, &tool);

        char name[65];
        QCOMPARE(qor__data_id2name(step, name), 0);
        QCOMPARE(QByteArray(name), QByteArray(64, 'n'));
        int* ids = nullptr;
        int count = 0;
        QCOMPARE(qor__lst_lyr_stp_ids(step, "*", 192, 3, -1, &ids, &count), 0);
        QCOMPARE(QVector<int>(ids, ids + count), (QVector<int>{through, blind}));
        zeb__mem_free(ids, 1, "test", __LINE__);

        qor_drl_tools result = {};
        QCOMPARE(qor__drl_tools_get(through, true, &result), 0);
        QVERIFY(result.num_tools == 1 && !result.tools);
        QCOMPARE(qor__drl_tools_get(through, false, &result), 0);
        QVERIFY(result.tools[0].tool_sub_type == 3 && result.tools[0].max_tol == 2);
    }

    void failsOnce()
    {
        const int step = standin_add_step("step", 1);
        int vexNum = -7;
        standin_fail("vex__data_stpid2vex_num", 2, 55);
        QCOMPARE(vex__data_stpid2vex_num(step, &vexNum), 0);
        QCOMPARE(vex__data_stpid2vex_num(step, &vexNum), 55);
        QCOMPARE(vex__data_stpid2vex_num(step, &vexNum), 0);
        QCOMPARE(standin_calls("vex__data_stpid2vex_num"), 3);
    }

private:
    QStringList mLog;
};

QTEST_APPLESS_MAIN(TestHost)
#include "tst_host.moc"
