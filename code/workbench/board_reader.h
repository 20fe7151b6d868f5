// SPDX-License-Identifier: MIT
#ifndef BOARD_READER_H
#define BOARD_READER_H

#include "board.h"

#include <QStringList>

/** Reads a board from one IPC-2581 file or from drill files; which it is, is seen from the content.
 *
 * @param paths  at least one
 * @throws BoardError
 * @throws BoardCancelled
 */
Board readBoard(const QStringList& paths, const Progress& progress = {});

#endif
