// SPDX-License-Identifier: MIT
#include <QDir>
#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>

#include <cstdlib>
#include <new>

#include "brox_man.h"
#include "fixture.h"

namespace {

int newsLeft = 0; ///< objects that may still be made before one fails, 0 for no failure

int residentPages()
{
    QFile file("/proc/self/statm");
    return file.open(QFile::ReadOnly) ? file.readAll().split(' ').value(1).toInt() : 0;
}

} // namespace

void* operator new(std::size_t size)
{
    void* memory = newsLeft > 0 && --newsLeft == 0 ? nullptr : std::malloc(size);
    return memory ? memory : throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace {

struct Moment
{
    const char* name;
    void (*prepare)(JobHost&);
};

void edit(QTableWidget* table)
{
    table->setCurrentCell(0, 0);
    table->edit(table->currentIndex());
}

/** Scrolls where there is room for all rows: hiding the tables will scroll them back. */
void scroll(JobHost& host)
{
    host.viewer()->resize(1000, 1200);
    host.viewer()->show();
    QCoreApplication::processEvents();
    for (const char* name : {"amountsTableWidget", "testerTableWidget"}) {
        QScrollBar* bar = host.table(name)->verticalScrollBar();
        bar->setRange(0, 3);
        bar->setValue(2);
    }
}

void putIntoWindow(JobHost& host)
{
    auto* window = new QWidget;
    host.viewer()->setParent(window);
    QObject::connect(host.viewer(), &QObject::destroyed, window, &QObject::deleteLater);
}

void outliveParentViewer(JobHost& host)
{
    UnitsSource parent;
    brox__proxy_set_parent_viewer(reinterpret_cast<BroxViewer*>(host.viewer()), &parent);
    emit parent.unitsChanged(ZEB_UNITS_MILS);
}

const std::vector<Moment> moments = {
    {"untouched", [](JobHost&) {}},
    {"shown", [](JobHost& host) { host.viewer()->show(); }},
    {"unsaved", [](JobHost& host) { host.set("amountsTableWidget", 0, 0, 25.0); }},
    {"scrolled", scroll},
    {"a name is typed", [](JobHost& host) { click(host.viewer(), "newToolButton"); }},
    {"an amount is typed", [](JobHost& host) { edit(host.table("amountsTableWidget")); }},
    {"a test value is typed", [](JobHost& host) { edit(host.table("testerTableWidget")); }},
    {"the formula is refused",
        [](JobHost& host) {
            QTest::keyClicks(child<QLineEdit>(host.viewer(), "dhsLineEdit"), "+");
        }},
    {"bits open and unsaved",
        [](JobHost& host) {
            click(host.viewer(), "openBitFileToolButton");
            click(host.viewer(), "actionAdd_Size");
        }},
    {"no model left",
        [](JobHost& host) {
            click(host.viewer(), "deleteToolButton");
            click(host.viewer(), "deleteToolButton");
        }},
    {"in a window of the host's", putIntoWindow},
    {"after its parent viewer", outliveParentViewer},
    {"files gone", [](JobHost& host) { QDir(host.path({})).removeRecursively(); }},
};

} // namespace

class TestLifetime : public QObject
{
    Q_OBJECT

private slots:
    /** No viewer or no model comes of it, and all is well the next time. */
    void noMemory()
    {
        BroxModelSet models;
        int failures = 0;
        do {
            newsLeft = ++failures;
        } while (!models.createModel("a"));
        newsLeft = 0;
        QCOMPARE(models.modelCount(), 1);
        if (failures == 1) {
            QSKIP("a memory checker has put its own allocation in the place of this one");
        }
        QVERIFY(failures > 3); // the model, what Qt makes for it, the connection

        JobHost host;
        newsLeft = 1;
        QCOMPARE(brox__proxy_open_brox(host.step), BROX_BAD_ARGUMENT); // no viewer
        newsLeft = 1;
        QCOMPARE(brox__proxy_open_brox(host.step + 1), BROX_OUT_OF_MEMORY); // no entry for one
        QCOMPARE(host.log,
            QStringList({"INTERNAL|(((ullong)(brox) > 1000)) at brox_proxy",
                "INTERNAL|(std::bad_alloc) at brox_proxy"}));
        QCOMPARE(host.modelNames(), QStringList({"A", "B"}));
    }

    void endOfAViewer_data() { addRows(moments); }

    /** A viewer ends when the host likes, once the module has been told. Nothing is saved. */
    void endOfAViewer()
    {
        QFETCH(Moment, data);
        for (const bool later : {false, true}) {
            JobHost host;
            data.prepare(host);
            const QPointer<QWidget> viewer = host.viewer();
            const QByteArray models = host.read("brox.xml");
            host.heard.clear();
            QCOMPARE(brox__proxy_close_brox(host.step), 0);
            if (later) {
                viewer->deleteLater();
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            } else {
                delete viewer;
            }
            QVERIFY(!viewer);
            QCoreApplication::processEvents();
            host.changeUnits(Host::Inch); // nobody hears of it any more
            QCOMPARE(host.read("brox.xml"), models);
            QVERIFY(host.heard.isEmpty() && host.log.isEmpty());
            QCOMPARE(brox__proxy_open_brox(host.step), 0);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }

    /** Two steps share the files only: each keeps what it has read, and the later save wins. */
    void twoViewers()
    {
        JobHost host;
        const int other = standin_add_step("other", 0);
        QWidget* const viewers[] = {host.viewer(), host.viewer(other)};
        const char* const names[] = {"first", "second"};
        for (int i : {0, 1}) {
            auto* models = child<QTableWidget>(viewers[i], "broxModelTableWidget");
            models->setCurrentCell(i, 0);
            models->item(i, 0)->setText(names[i]);
        }
        for (int turn = 0; turn < 6; ++turn) {
            QWidget* viewer = viewers[turn % 2];
            auto* amounts = child<QTableWidget>(viewer, "amountsTableWidget")->model();
            amounts->setData(amounts->index(0, 0), 30.0 + turn);
            click(viewer, "saveToolButton");
            const QByteArray file = host.read("brox.xml");
            QVERIFY(file.contains(names[turn % 2]) && !file.contains(names[1 - turn % 2]));
        }
        host.endViewer();
        QVERIFY(host.modelNames().contains("second"));
    }

    /** Thousands of steps, each with a viewer for a while. */
    void manySteps()
    {
        JobHost host;
        const auto openAndClose = [&host](int count) {
            for (int i = 0; i < count; ++i) {
                host.step = standin_add_step("step", i % 2);
                QCOMPARE(host.modelNames().size(), 2);
                host.endViewer();
            }
        };
        openAndClose(isSlowRun() ? 20 : 200); // what the libraries keep for good is there then
        const size_t blocks = standin_live_blocks();
        const auto widgets = QApplication::allWidgets().size();
        const int pages = residentPages();
        openAndClose(isSlowRun() ? 20 : 2000);
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
