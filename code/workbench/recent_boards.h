// SPDX-License-Identifier: MIT
#ifndef RECENT_BOARDS_H
#define RECENT_BOARDS_H

#include <QList>
#include <QStringList>

namespace brox {

/** The boards that were opened last, the latest first; a board is the paths of its files. They
 *  are kept in the user's settings. */
class RecentBoards
{
public:
    static QList<QStringList> all();

    /** The latest; empty if there is none. */
    static QStringList latest() { return all().value(0); }

    /** @param paths  absolute */
    static void add(const QStringList& paths);

    static bool exists(const QStringList& paths);

    /** What the user calls a board: the name of its first file, and how many more there are. */
    static QString name(const QStringList& paths);
};

} // namespace brox

#endif
