// SPDX-License-Identifier: MIT
#include "fuzz_host.h"

#include "standin.h"

#include <QApplication>
#include <QDirIterator>
#include <QTemporaryDir>

#include <cstdlib>

namespace {

/** Application and host, which come at the first call. */
struct FuzzHost
{
    FuzzHost()
    {
        static int count = 1;
        static char name[] = "fuzz";
        static char* arguments[] = {name, nullptr};
        qputenv("QT_QPA_PLATFORM", "offscreen");
        new QApplication(count, arguments); // outlives the widgets, which live as long as we do
        QDir(folder.path()).mkdir("brox");
        standin_set_data_dir(folder.path().toUtf8().constData());
        standin_set_log_sink([](const char*, const char*, void*) {}, nullptr);
        step = standin_add_step("step", 1);
    }

    QTemporaryDir folder;
    int step;
};

FuzzHost& host()
{
    static FuzzHost instance;
    return instance;
}

} // namespace

int fuzzStep()
{
    return host().step;
}

QString fuzzFile(const char* name, const std::uint8_t* data, std::size_t size)
{
    QFile file(host().folder.filePath(QString("brox/") + name));
    fuzzCheck(file.open(QFile::WriteOnly), "the input file opens");
    file.write(reinterpret_cast<const char*>(data), qint64(size));
    return file.fileName();
}

void fuzzCheck(bool holds, const char* what)
{
    if (!holds) {
        qCritical("does not hold: %s", what);
        std::abort();
    }
}

#ifndef BROX_FUZZ
/** Runs the inputs of a folder; fails if there are none. */
int main(int, char* argv[])
{
    int inputs = 0;
    for (QDirIterator files(argv[1], QDir::Files); files.hasNext(); ++inputs) {
        QFile file(files.next());
        qInfo("%s", qPrintable(file.fileName())); // the last one is the culprit
        fuzzCheck(file.open(QFile::ReadOnly), "the input opens");
        const QByteArray input = file.readAll();
        LLVMFuzzerTestOneInput(
            reinterpret_cast<const std::uint8_t*>(input.constData()), std::size_t(input.size()));
    }
    return inputs > 0 ? 0 : 1;
}
#endif
