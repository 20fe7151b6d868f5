// SPDX-License-Identifier: MIT
#include "fuzz_host.h"

#include "standin.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace {

struct Host
{
    Host()
        : folder(QDir("/dev/shm").exists() ? "/dev/shm/brox-fuzz-XXXXXX"
                                           : QDir::tempPath() + "/brox-fuzz-XXXXXX")
    {
        // It outlives the widgets, which live as long as the process.
        new QApplication(count, arguments);
        QDir(folder.path()).mkdir("brox");
        standin_set_data_dir(folder.path().toUtf8().constData());
        standin_set_log_sink([](const char*, const char*, void*) {}, nullptr);
        step = standin_add_step("step", 1);
    }

    int count = 3;
    char name[8] = "fuzz";
    char platform[10] = "-platform";
    char offscreen[10] = "offscreen";
    char* arguments[4] = {name, platform, offscreen, nullptr};
    QTemporaryDir folder;
    int step = -1;
};

Host& host()
{
    static Host instance;
    return instance;
}

} // namespace

int fuzzStep()
{
    return host().step;
}

QString fuzzFile(const char* name)
{
    return host().folder.filePath(QString("brox/") + name);
}

void fuzzCheck(bool holds, const char* what)
{
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", what);
        std::abort();
    }
}
