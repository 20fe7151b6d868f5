// SPDX-License-Identifier: MIT
#include "fuzz_host.h"

#include <QDirIterator>
#include <QFile>

#include <cstdio>

/** Runs the inputs of a folder; fails if there are none. */
int main(int argc, char* argv[])
{
    int inputs = 0;
    QDirIterator files(argc > 1 ? argv[1] : ".", QDir::Files);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QFile::ReadOnly)) {
            std::fprintf(stderr, "can't read %s\n", qPrintable(file.fileName()));
            return 1;
        }
        std::fprintf(stderr, "%s\n", qPrintable(file.fileName())); // the last one is the culprit
        const QByteArray input = file.readAll();
        LLVMFuzzerTestOneInput(
            reinterpret_cast<const std::uint8_t*>(input.constData()), std::size_t(input.size()));
        ++inputs;
    }
    std::printf("%d inputs\n", inputs);
    return inputs > 0 ? 0 : 1;
}
