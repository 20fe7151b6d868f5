// SPDX-License-Identifier: MIT
#include <QAbstractButton>
#include <QDir>
#include <QPointer>
#include <QScrollBar>

#include <memory>
#include <new>

#include "fixture.h"

namespace {

int newsLeft = 0; ///< objects that may still be made before one fails, 0 for no failure

int residentPages()
{
    QFile file("/proc/self/statm");
    return file.open(QFile::ReadOnly) ? file.readAll().split(' ').value(1).toInt() : 0;
}

} // namespace

/** The module asks for its own objects this way where it can do without. */
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    if (newsLeft > 0 && --newsLeft == 0) {
        return nullptr;
    }
    try {
        return ::operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

namespace {

/** Whether that function is the one that is called: a memory checker puts its own in its place. */
bool newCanFail()
{
    newsLeft = 1;
    void* memory = ::operator new(1, std::nothrow);
    ::operator delete(memory);
    return !memory;
}

} // namespace

class TestLifetime : public QObject
{
    Q_OBJECT

private slots:
    void noMemoryForAViewer_data()
    {
        QTest::addColumn<std::function<int(int)>>("call");
        const auto row = [](const char* name, std::function<int(int)> call) {
            QTest::newRow(name) << call;
        };
        row("open", brox__proxy_open_brox);
        row("model list", [](int step) {
            char** names = reinterpret_cast<char**>(&names);
            int count = -1;
            const int status = brox__proxy_get_model_list(step, &names, &count);
            return !names && count == 0 ? status : -1;
        });
        row("drill size", [](int step) {
            int size = -1;
            char bit[8] = "old";
            const int status = brox__proxy_calc_drill_size(step, "A", 0, 0, 0, 0, 1, &size, bit);
            return size == 0 && !bit[0] ? status : -1;
        });
    }

    void noMemoryForAViewer()
    {
        QFETCH(std::function<int(int)>, call);
        if (!newCanFail()) {
            QSKIP("memory is another's matter");
        }
        JobHost host;
        newsLeft = 1;
        QCOMPARE(call(host.step), BROX_BAD_ARGUMENT);
        QCOMPARE(newsLeft, 0);
        QCOMPARE(host.log.value(0), QString("INTERNAL|(((ullong)(brox) > 1000)) at brox_proxy"));
        QCOMPARE(host.modelNames(), QStringList({"A", "B"}));
    }

    void noMemoryForAModel()
    {
        if (!newCanFail()) {
            QSKIP("memory is another's matter");
        }
        JobHost host;
        host.viewer();
        newsLeft = 1;
        click(host.viewer(), "newToolButton");
        QCOMPARE(host.log, QStringList("INTERNAL|(broxModel != 0) at brox_viewer"));
        QCOMPARE(host.modelNames(), QStringList({"A", "B"}));

        // One that is missing in memory does not keep the others from being read.
        newsLeft = 1;
        click(host.viewer(), "loadToolButton");
        QCOMPARE(host.modelNames(), QStringList("B"));
    }

    /** A viewer ends when the host likes, once the module has been told. */
    void endOfAViewer_data()
    {
        QTest::addColumn<std::function<void(JobHost&)>>("before");
        const auto row = [](const char* name, std::function<void(JobHost&)> before) {
            QTest::newRow(name) << before;
        };
        row("untouched", [](JobHost&) {});
        row("shown", [](JobHost& host) { host.viewer()->show(); });
        row("unsaved", [](JobHost& host) { host.set("amountsTableWidget", 0, 0, 25.0); });
        row("scrolled", [](JobHost& host) {
            // There is room for all rows, so hiding the tables scrolls them back.
            host.viewer()->resize(1000, 1200);
            host.viewer()->show();
            QCoreApplication::processEvents();
            for (const char* name : {"amountsTableWidget", "testerTableWidget"}) {
                QScrollBar* bar = host.table(name)->verticalScrollBar();
                bar->setRange(0, 3);
                bar->setValue(2);
            }
        });
        row("a name is typed", [](JobHost& host) { click(host.viewer(), "newToolButton"); });
        row("a cell is typed", [](JobHost& host) {
            host.table("amountsTableWidget")->setCurrentCell(0, 0);
            host.table("amountsTableWidget")
                ->edit(host.table("amountsTableWidget")->currentIndex());
        });
        row("bits open and unsaved", [](JobHost& host) {
            click(host.viewer(), "openBitFileToolButton");
            click(host.viewer(), "actionAdd_Size");
        });
        row("no model left", [](JobHost& host) {
            click(host.viewer(), "deleteToolButton");
            click(host.viewer(), "deleteToolButton");
        });
        row("in a window of the host's", [](JobHost& host) {
            static QWidget* window;
            window = new QWidget;
            host.viewer()->setParent(window);
            QObject::connect(host.viewer(), &QObject::destroyed, window, &QObject::deleteLater);
        });
        row("files gone", [](JobHost& host) { QDir(host.path({})).removeRecursively(); });
    }

    void endOfAViewer()
    {
        QFETCH(std::function<void(JobHost&)>, before);
        for (const bool later : {false, true}) {
            JobHost host;
            host.viewer();
            before(host);
            const QPointer<QWidget> viewer = host.viewer();
            const QByteArray models = host.read("brox.xml");
            QCOMPARE(brox__proxy_close_brox(host.step), 0);
            if (later) {
                viewer->deleteLater();
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            } else {
                delete viewer;
            }
            QVERIFY(!viewer);
            QCoreApplication::processEvents();
            QCOMPARE(host.read("brox.xml"), models); // nothing is saved
            QCOMPARE(brox__proxy_open_brox(host.step), 0);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }

    /** What follows the units ends with either side. */
    void endOfAParentViewer()
    {
        JobHost host;
        auto parent = std::make_unique<UnitsSource>();
        BroxViewer* brox = nullptr;
        host.viewer();
        brox__proxy_get_brox(host.step, &brox);
        brox__proxy_set_parent_viewer(brox, parent.get());
        emit parent->unitsChanged(ZEB_UNITS_MILS);
        host.endViewer();
        emit parent->unitsChanged(ZEB_UNITS_MILS);

        host.viewer();
        brox__proxy_get_brox(host.step, &brox);
        brox__proxy_set_parent_viewer(brox, parent.get());
        parent.reset();
        QCOMPARE(host.modelNames(), QStringList({"A", "B"}));
    }

    /** Two steps share the files only: each keeps what it has read, and the later save wins. */
    void twoViewers()
    {
        JobHost host;
        const int other = standin_add_step("other", 0);
        brox__proxy_open_brox(other);
        BroxViewer* brox = nullptr;
        brox__proxy_get_brox(other, &brox);
        auto* second = reinterpret_cast<QWidget*>(brox);
        host.table("broxModelTableWidget")->item(0, 0)->setText("first");
        child<QTableWidget>(second, "broxModelTableWidget")->setCurrentCell(1, 0);
        child<QTableWidget>(second, "broxModelTableWidget")->item(1, 0)->setText("second");

        for (int turn = 0; turn < 3; ++turn) {
            host.set("amountsTableWidget", 0, 0, 30.0 + turn);
            click(host.viewer(), "saveToolButton");
            const QByteArray firstFile = host.read("brox.xml");
            QVERIFY(firstFile.contains("first") && !firstFile.contains("second"));
            auto* amounts = child<QTableWidget>(second, "amountsTableWidget")->model();
            amounts->setData(amounts->index(0, 0), 3.0 + turn);
            child<QAbstractButton>(second, "saveToolButton")->click();
            const QByteArray secondFile = host.read("brox.xml");
            QVERIFY(secondFile.contains("second") && !secondFile.contains("first"));
        }
        brox__proxy_close_brox(other);
        delete second;
        host.endViewer();
        QVERIFY(host.modelNames().contains("second"));
    }

    /** Thousands of steps, each with a viewer for a while. */
    void manySteps()
    {
        JobHost host;
        const auto openAndClose = [&](int step) {
            brox__proxy_open_brox(step);
            BroxViewer* brox = nullptr;
            brox__proxy_get_brox(step, &brox);
            char** names = nullptr;
            int count = 0;
            brox__proxy_get_model_list(step, &names, &count);
            for (int i = 0; i < count; ++i) {
                zeb__mem_free(names[i], 1, "test", __LINE__);
            }
            zeb__mem_free(names, 1, "test", __LINE__);
            brox__proxy_close_brox(step);
            delete reinterpret_cast<QWidget*>(brox);
        };
        const auto steps = [&](int count) {
            for (int i = 0; i < count; ++i) {
                openAndClose(i % 2 ? standin_add_step("step", i % 4 / 2) : host.step);
            }
        };
        steps(isSlowRun() ? 20 : 200); // what the libraries keep for good is there then
        const size_t blocks = standin_live_blocks();
        const auto widgets = QApplication::allWidgets().size();
        const int pages = residentPages();
        steps(isSlowRun() ? 20 : 2000);
        QCOMPARE(standin_live_blocks(), blocks);
        QCOMPARE(QApplication::allWidgets().size(), widgets);
        // Of a viewer that leaked 2000 times, hundreds of megabytes would be left.
        const int growth = residentPages() - pages;
        qInfo("%d pages more than %d", growth, pages);
        QVERIFY(isSlowRun() || growth < 4000);
    }
};

QTEST_MAIN(TestLifetime)
#include "tst_lifetime.moc"
