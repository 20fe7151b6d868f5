// SPDX-License-Identifier: MIT
#ifndef COMPARING_H
#define COMPARING_H

#include "comparison.h"
#include "reading.h"

#include <memory>

namespace brox {

/** Reads a board, and compares it with drill files that came with it: its notes say whether they
 *  agree.
 *
 * @throws BoardError, BoardCancelled
 */
Board readOrder(const QStringList& paths, const ReadOptions& options);

/** Reads another board and compares the step of the same name with a step, or its main one.
 *
 * @param within  tolerance of places
 * @param notes   gets what the reader of the other board has to say
 * @throws BoardError, PanelError, BoardCancelled
 */
std::shared_ptr<const Comparison> compareWith(const Board& board, size_t step,
    const QStringList& otherPaths, const ReadOptions& options, Size within, QStringList& notes);

} // namespace brox

#endif
