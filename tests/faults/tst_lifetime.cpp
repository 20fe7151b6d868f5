// SPDX-License-Identifier: MIT
#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>

#include "fixture.h"

namespace {

struct Moment
{
    const char* name;
    void (*prepare)(JobHost&);
};

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
    {"scrolled", scroll},
    {"a name is typed", [](JobHost& host) { click(host.viewer(), "newToolButton"); }},
    {"bits open and unsaved",
        [](JobHost& host) {
            click(host.viewer(), "openBitFileToolButton");
            click(host.viewer(), "actionAdd_Size");
        }},
    {"in a window of the host's", putIntoWindow},
    {"after its parent viewer", outliveParentViewer},
};

} // namespace

class TestLifetime : public QObject
{
    Q_OBJECT

private slots:
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
};

QTEST_MAIN(TestLifetime)
#include "tst_lifetime.moc"
