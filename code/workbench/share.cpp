// SPDX-License-Identifier: MIT
#include "share.h"

#include <QCoreApplication>
#include <QDir>

namespace brox {

QString sharePath(const QString& name)
{
    const QDir program(QCoreApplication::applicationDirPath());
    const QString built = program.filePath("../share/all");
    return QDir::cleanPath(
        program.filePath((QFile::exists(built) ? "../share/" : WORKBENCH_SHARE_DIR "/") + name));
}

} // namespace brox
