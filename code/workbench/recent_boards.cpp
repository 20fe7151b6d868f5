// SPDX-License-Identifier: MIT
#include "recent_boards.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSettings>
#include <algorithm>

namespace brox {

namespace {

constexpr qsizetype maxBoards = 8;
const char key[] = "recentBoards";

} // namespace

QList<QStringList> RecentBoards::all()
{
    QList<QStringList> boards;
    const QVariantList stored = QSettings().value(key).toList();
    for (const QVariant& board : stored) {
        if (!board.toStringList().isEmpty()) {
            boards << board.toStringList();
        }
    }
    return boards;
}

void RecentBoards::add(const QStringList& paths)
{
    QList<QStringList> boards = all();
    boards.removeAll(paths);
    boards.prepend(paths);
    QVariantList stored;
    for (const QStringList& board : boards.first(std::min(boards.size(), maxBoards))) {
        stored << board;
    }
    QSettings().setValue(key, stored);
}

bool RecentBoards::exists(const QStringList& paths)
{
    return !paths.isEmpty() && std::all_of(paths.begin(), paths.end(), [](const QString& path) {
        return QFileInfo::exists(path); // a board may be a folder
    });
}

QString RecentBoards::name(const QStringList& paths)
{
    const QString first = QFileInfo(paths.value(0)).fileName();
    return paths.size() < 2 ? first
                            : QCoreApplication::translate("RecentBoards", "%1 and %2 more")
                                  .arg(first)
                                  .arg(paths.size() - 1);
}

} // namespace brox
