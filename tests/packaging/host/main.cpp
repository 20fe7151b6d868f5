// SPDX-License-Identifier: MIT
#include <QApplication>
#include <brox_proxy.h>
#include <standin.h>
int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    standin_set_data_dir("/nonexistent");
    standin_set_job("job");
    const int step = standin_add_step("board", 1);
    int status = brox__proxy_open_brox(step);
    BroxViewer* viewer = nullptr;
    brox__proxy_get_brox(step, &viewer);
    brox__proxy_close_brox(step);
    delete reinterpret_cast<QObject*>(viewer);
    return status;
}
