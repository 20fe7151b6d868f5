// SPDX-License-Identifier: MIT
#ifndef BOARD_READER_H
#define BOARD_READER_H

#include "reading.h"

namespace brox {

/** Reads a board of whatever kind its files are, known by their content.
 *
 * @param paths  an IPC-2581 file; or all drill files of a board, each of which becomes a layer of
 *               the one step "pcb"; or archives and folders, in which these are looked for; "-" is
 *               the standard input
 * @throws BoardError      also if two files are the same
 * @throws BoardCancelled
 */
Board readBoard(const QStringList& paths, const ReadOptions& options = {});

} // namespace brox

#endif
