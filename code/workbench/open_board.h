// SPDX-License-Identifier: MIT
#ifndef OPEN_BOARD_H
#define OPEN_BOARD_H

#include "reading.h"

#include <QStringList>
#include <memory>

class QWidget;

namespace brox {

/** Lets the user choose the files of a board, or an archive of them.
 *
 * @param title  of the dialog
 * @param last  those of the board before; their folder is where the dialog begins
 * @return empty if the user wants none
 */
QStringList chooseBoardFiles(QWidget* window, const QString& title, const QStringList& last);

/** The same for a folder. */
QStringList chooseBoardFolder(QWidget* window, const QString& title, const QStringList& last);

/** Reads a board while a dialog shows the progress. Where drill files specify no units, the user is
 *  asked for them, with the size that the board has in each.
 *
 * @return null if the user has broken it off
 * @throws BoardError
 */
std::optional<Board> openBoardFiles(
    QWidget* window, const QStringList& paths, const ReadOptions& options);

/** Reads a board, and compares it with drill files that came with it: its notes say whether they
 *  agree.
 *
 * @throws BoardError, BoardCancelled
 */
Board readOrder(const QStringList& paths, const ReadOptions& options);

} // namespace brox

#endif
