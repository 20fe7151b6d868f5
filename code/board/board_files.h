// SPDX-License-Identifier: MIT
#ifndef BOARD_FILES_H
#define BOARD_FILES_H

#include "file_kind.h"
#include "reading.h"

#include <QIODevice>
#include <memory>

namespace brox {

/** A file that a board is read from, wherever it lies. */
struct BoardFile
{
    QString name; ///< for messages; in an archive behind its path
    FileKind kind = FileKind::Empty;
    bool isFound = false; ///< in an archive or a folder, not named by the user
    qint64 size = 0; ///< in bytes; 0: not known
    std::function<std::shared_ptr<QIODevice>()> open; ///< from the beginning; XML only once
};

struct BoardFiles
{
    std::vector<BoardFile> taken; ///< one IPC-2581 file, or drill files; never empty
    std::vector<BoardFile> besides; ///< drill files that were found with an IPC-2581 file
    std::optional<BoardFile> outline; ///< in Gerber, found with drill files
    std::vector<BoardFile> lists; ///< of tools, for the drill files among them
    QStringList left; ///< files of archives and folders that were not taken, with the reason
    bool isSearched = false; ///< there was an archive or a folder
    qint64 totalSize = 0; ///< of the taken ones, in bytes; 0 if not known of all
};

/** Finds what a board is read from, by content. In archives and folders one IPC-2581 file goes
 *  before drill files, and Excellon files before Gerber drill files, which repeat them. Lists of
 * tools come along.
 *
 * @throws BoardError  for a named file that is none of a board, for a file named twice, and if
 *                     there is nothing to read
 */
BoardFiles findBoardFiles(const QStringList& paths);

} // namespace brox

#endif
