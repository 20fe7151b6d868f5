// SPDX-License-Identifier: MIT
#ifndef COMMANDS_H
#define COMMANDS_H

#include "shop_rules.h"

namespace brox {

struct Board;
struct Options;
class HostSession;

/** What the command line asks for that needs no window. Each command prints on standard output,
 *  writes files, and says on standard error what is to be known of them; it returns the program's
 *  exit status, and throws BitsError, BoardError, HostError, PanelError or RulesError. */

/** The table, comparison, findings and files of a board. */
int printPlan(const Options& options, HostSession& session, Board board, const ShopRules& rules);

/** Boards one after the other. Sizes are printed in the units of the first, or those asked for, so
 *  that a column has one unit; each board is calculated in its own. */
int printBoards(const Options& options, HostSession& session, const ShopRules& rules);

int printModels(HostSession& session);

/** Bits into the data folder, or out of it. */
int exchangeBits(const Options& options, const QString& dataDir);

/** A line on standard error for the user to know. */
void warn(const QString& message);

/** What is wrong, on standard error: each line begins with the name of the program. */
void complain(const QString& message);

/** The same.
 *
 * @return the exit status that goes with it
 */
int fail(const QString& message);

} // namespace brox

#endif
