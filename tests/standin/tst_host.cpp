// SPDX-License-Identifier: MIT
#include <QTemporaryDir>
#include <QTest>

#include <climits>
#include <cmath>

#include "standin.h"
#include "vex_data.h"
#include "zeb_lowlevel.h"

class TestHost : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { standin_reset(); }

    void writesWithinLimits()
    {
        char bit[8];
        QCOMPARE(zeb__str_ncpy(bit, "0123456789", 7), "0123456");
        QTemporaryDir dir;
        standin_set_data_dir(dir.path().toUtf8().constData());
        const int length = int(dir.path().size()) + 6;
        char path[513] = "";
        bool found = true;
        QVERIFY(zeb__sarn_get_dir(2, "a.xml", path, length - 1, &found) != 0);
        QCOMPARE(path, "");
        QCOMPARE(zeb__sarn_get_dir(2, "a.xml", path, length, &found), 0);
        QCOMPARE(QString(path), dir.filePath("a.xml"));
    }

    void convertsSizes()
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
};

QTEST_APPLESS_MAIN(TestHost)
#include "tst_host.moc"
