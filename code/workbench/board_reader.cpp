// SPDX-License-Identifier: MIT
#include "board_reader.h"

#include "excellon_reader.h"
#include "ipc2581_reader.h"

#include <QFile>
#include <QFileInfo>

namespace {

constexpr int beginning = 512; ///< bytes that tell a file's kind

bool isXml(const QString& path)
{
    // A pipe gives its content only once, so there is no looking at it first.
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile()) {
        return true;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw BoardError(path, 1, file.errorString());
    }
    QByteArray start = file.read(beginning);
    if (start.startsWith("\xff\xfe") || start.startsWith("\xfe\xff")) {
        return true; // UTF-16
    }
    if (start.startsWith("\xef\xbb\xbf")) {
        start.remove(0, 3);
    }
    return start.trimmed().startsWith('<');
}

} // namespace

Board readBoard(const QStringList& paths, const Progress& progress)
{
    for (const QString& path : paths) {
        if (!isXml(path)) {
            continue;
        }
        if (paths.size() > 1) {
            throw BoardError(path, 1,
                QStringLiteral("no drill file; an IPC-2581 file is a board of its own, open it "
                               "alone"));
        }
        return readIpc2581(path, progress);
    }
    return readExcellon(paths, progress);
}
