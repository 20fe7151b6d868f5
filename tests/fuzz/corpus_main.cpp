// SPDX-License-Identifier: MIT
#include "fuzz_host.h"

#include <QDirIterator>
#include <QFile>

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
