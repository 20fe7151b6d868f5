// SPDX-License-Identifier: MIT
#ifndef EXCELLON_READER_H
#define EXCELLON_READER_H

#include "board.h"

#include <QStringList>

/** Reads a board's Excellon or XNC drill files, each as a layer of the one step "pcb".
 *
 * Holes are counted, repeats and step-and-repeat patterns with them; slots and routed paths are
 * left out. Whether a hole is plated is told by the tool's attribute, else by the file's, else by
 * comments, else by the file's name. The format knows no tolerances. The board has the units of
 * the first file.
 *
 * A file may be without holes, as that for unplated ones often is, but not all of them.
 *
 * @throws BoardError
 * @throws BoardCancelled
 */
Board readExcellon(const QStringList& paths, const Progress& progress = {});

#endif
