// SPDX-License-Identifier: MIT
#ifndef IPC2581_READER_H
#define IPC2581_READER_H

#include "board.h"

/** Reads the drill data of an IPC-2581 file, revision A, B or C, in one pass.
 *
 * The holes of a step are those of its own layer features and, for each step that it repeats,
 * that step's holes times the number of repeats.
 *
 * @throws BoardError      also for a file without any hole
 * @throws BoardCancelled
 */
Board readIpc2581(const QString& path, const Progress& progress = {});

#endif
