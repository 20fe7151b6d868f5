// SPDX-License-Identifier: MIT
#ifndef COMPARING_H
#define COMPARING_H

#include "comparison.h"
#include "reading.h"

#include <memory>

namespace brox {

struct Options;

/** Exit status if two boards differ that are compared. */
constexpr int differStatus = 3;

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

/** The comparison that the command line asks for; null: none.
 *
 * @throws BoardError, PanelError; HostError for what is no tolerance
 */
std::shared_ptr<const Comparison> askedComparison(
    const Options& options, const Board& board, size_t step, QStringList& notes);

} // namespace brox

#endif
