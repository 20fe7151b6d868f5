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

} // namespace brox

#endif
