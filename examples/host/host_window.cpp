// SPDX-License-Identifier: MIT
#include "host_window.h"

#include "standin.h"
#include "zeb_lowlevel.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMainWindow>
#include <QMenuBar>

/** The host's window of a step: the parent viewer, whose units the module's viewer follows. */
class HostWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit HostWindow(int stpid)
        : mStpid(stpid)
    {
        QMenu* units = menuBar()->addMenu("&Units");
        units->addAction("&Inch", this, [this] { setUnits(0, ZEB_UNITS_MILS); });
        units->addAction("&Metric", this, [this] { setUnits(1, ZEB_UNITS_MICRONS); });
    }

signals:
    void unitsChanged(zeb_units_enum units);

protected:
    void closeEvent(QCloseEvent* event) override
    {
        int ok = 1;
        brox__proxy_can_close(mStpid, &ok);
        event->setAccepted(ok == 1);
    }

private:
    /** First the job's data, then the signal: the viewer asks for the units when it hears it. */
    void setUnits(int family, zeb_units_enum units)
    {
        standin_set_units(mStpid, family);
        emit unitsChanged(units);
    }

    int mStpid;
};

void host_start_qt(int* argc, char** argv)
{
    new QApplication(*argc, argv);
}

int host_show_viewer(int stpid)
{
    BroxViewer* viewer = nullptr;
    int status = brox__proxy_open_brox(stpid);
    if (status == 0) {
        status = brox__proxy_get_brox(stpid, &viewer);
    }
    if (status != 0) {
        return status;
    }
    HostWindow window(stpid);
    brox__proxy_set_parent_viewer(viewer, &window);
    window.setCentralWidget(reinterpret_cast<QWidget*>(viewer));
    window.show();
    QApplication::exec();
    return brox__proxy_close_brox(stpid);
}

void host_delete_viewer(BroxViewer* viewer)
{
    delete reinterpret_cast<QWidget*>(viewer);
}

void host_end_qt()
{
    delete qApp;
}

#include "host_window.moc"
