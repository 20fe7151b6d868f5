// SPDX-License-Identifier: MIT
#ifndef COMMANDS_H
#define COMMANDS_H

#include <QString>

namespace brox {

struct Options;

/** Does what the command line asks for.
 *
 * @return the program's exit status
 * @throws BoardError, HostError, PanelError, RulesError
 */
int run(const Options& options);

/** Says on standard error what is wrong.
 *
 * @return the exit status that goes with it
 */
int fail(const QString& message);

} // namespace brox

#endif
