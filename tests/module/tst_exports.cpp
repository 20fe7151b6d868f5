// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMetaType>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>

#include <dlfcn.h>

#include "brox_proxy.h"
#include "standin.h"

namespace {

const QStringList functions = {"brox__proxy_calc_drill_size", "brox__proxy_can_close",
    "brox__proxy_close_brox", "brox__proxy_get_brox", "brox__proxy_get_model_list",
    "brox__proxy_open_brox", "brox__proxy_set_model_renamed_deleted_cb",
    "brox__proxy_set_parent_viewer"};

bool isMapped()
{
    QFile maps("/proc/self/maps");
    return !maps.open(QFile::ReadOnly) || maps.readAll().contains("libbrox.so");
}

/** The first registered meta-type that lies in no loaded library: Qt would read it again. */
int danglingMetaType()
{
    for (int type = QMetaType::User; type < QMetaType::User + 1000; ++type) {
        const void* interface = QMetaType(type).iface();
        Dl_info info;
        if (interface && !dladdr(interface, &info)) {
            return type;
        }
    }
    return 0;
}

} // namespace

/** The library as a file and as a plug-in. */
class TestExports : public QObject
{
    Q_OBJECT

private slots:
    void onlyTheEightFunctionsAreExported()
    {
        QProcess nm;
        nm.start(NM, {"-D", "--defined-only", "--format=just-symbols", BROX_LIBRARY});
        QVERIFY(nm.waitForFinished());
        QCOMPARE(nm.exitCode(), 0);
        QStringList symbols = QString(nm.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
        symbols.sort();
        QCOMPARE(symbols, functions);
    }

    /** The second time shows what the first has left behind. */
    void loadsAndUnloads_data()
    {
        QTest::addColumn<QByteArray>("firstModel");
        QTest::newRow("once") << QByteArray("A");
        QTest::newRow("again") << QByteArray("B");
    }

    void loadsAndUnloads()
    {
        QFETCH(QByteArray, firstModel);
        standin_reset();
        const QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkdir("brox"));
        QFile models(folder.filePath("brox/brox.xml"));
        QVERIFY(models.open(QFile::WriteOnly));
        models.write(
            "<DrillToolModels><DrillToolModel name=\"" + firstModel + "\"/></DrillToolModels>");
        models.close();
        standin_set_data_dir(folder.path().toUtf8());
        standin_set_resource_dir(RESOURCE_DIR);
        const int step = standin_add_step("panel", 1);
        const standin_tool tool = {0, 0, 0, 0, 400000, 1};
        standin_add_tool(standin_add_layer(step, "drill"), &tool);

        QVERIFY(!isMapped());
        void* library = dlopen(BROX_LIBRARY, RTLD_NOW | RTLD_LOCAL);
        QVERIFY2(library, dlerror());
        QVERIFY(isMapped());
        const auto open = reinterpret_cast<decltype(&brox__proxy_open_brox)>(
            dlsym(library, "brox__proxy_open_brox"));
        const auto get = reinterpret_cast<decltype(&brox__proxy_get_brox)>(
            dlsym(library, "brox__proxy_get_brox"));
        const auto calculate = reinterpret_cast<decltype(&brox__proxy_calc_drill_size)>(
            dlsym(library, "brox__proxy_calc_drill_size"));
        QCOMPARE(open(step), 0);
        BroxViewer* viewer = nullptr;
        QCOMPARE(get(step, &viewer), 0);
        auto* widget = reinterpret_cast<QWidget*>(viewer);
        widget->show();
        QVERIFY(QTest::qWaitForWindowExposed(widget));
        QVERIFY(QMetaType::fromName("DrillTypeManager::DrillType").isValid());
        int size = 0;
        char bit[8];
        QCOMPARE(calculate(step, firstModel, 0, 0, 2, 4, 400, &size, bit), 0);
        QCOMPARE(size, 401);
        delete widget;
        QCOMPARE(dlclose(library), 0);

        QVERIFY(!isMapped());
        QCOMPARE(danglingMetaType(), 0);
        QVERIFY(!QMetaType::fromName("DrillTypeManager::DrillType").isValid());
        QCoreApplication::processEvents(); // nothing is left that would call into the library
        QCOMPARE(standin_live_blocks(), std::size_t(0));
        standin_reset();
    }
};

QTEST_MAIN(TestExports)
#include "tst_exports.moc"
