// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QMetaType>
#include <QProcess>
#include <QTest>
#include <QWidget>

#include <dlfcn.h>

#include "brox_proxy.h"
#include "standin.h"

namespace {

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

template <typename Function>
Function* resolve(void* library, const char* name)
{
    return reinterpret_cast<Function*>(dlsym(library, name));
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
        QStringList symbols = QString(nm.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
        symbols.sort();
        QCOMPARE(symbols,
            QStringList(
                {"brox__proxy_calc_drill_size", "brox__proxy_can_close", "brox__proxy_close_brox",
                    "brox__proxy_get_brox", "brox__proxy_get_model_list", "brox__proxy_open_brox",
                    "brox__proxy_set_model_renamed_deleted_cb", "brox__proxy_set_parent_viewer"}));
    }

    /** The second time shows what the first has left behind. */
    void loadsAndUnloads()
    {
        for (int time = 0; time < 2; ++time) {
            standin_reset();
            standin_set_resource_dir(RESOURCE_DIR);
            const int step = standin_add_step("panel", 1);
            const standin_tool tool = {0, 0, 0, 0, 400000, 1}; // its type is of a meta-type
            standin_add_tool(standin_add_layer(step, "drill"), &tool);

            void* library = dlopen(BROX_LIBRARY, RTLD_NOW | RTLD_LOCAL);
            QVERIFY2(library, dlerror());
            BroxViewer* viewer = nullptr;
            resolve<decltype(brox__proxy_open_brox)>(library, "brox__proxy_open_brox")(step);
            resolve<decltype(brox__proxy_get_brox)>(library, "brox__proxy_get_brox")(step, &viewer);
            auto* widget = reinterpret_cast<QWidget*>(viewer);
            widget->show();
            QVERIFY(QTest::qWaitForWindowExposed(widget));
            QVERIFY(QMetaType::fromName("DrillTypeManager::DrillType").isValid());
            delete widget;
            QCOMPARE(dlclose(library), 0);

            QVERIFY(!dlopen(BROX_LIBRARY, RTLD_NOW | RTLD_NOLOAD));
            QCOMPARE(danglingMetaType(), 0);
            QCoreApplication::processEvents(); // nothing is left that would call into the library
            QCOMPARE(standin_live_blocks(), std::size_t(0));
        }
        standin_reset();
    }
};

QTEST_MAIN(TestExports)
#include "tst_exports.moc"
