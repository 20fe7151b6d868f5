// SPDX-License-Identifier: MIT
#ifndef COMMANDS_H
#define COMMANDS_H

#include <QString>

struct Options;

/** Does what the command line asks for.
 *
 * @return the program's exit status
 * @throws BoardError, HostError
 */
int run(const Options& options);

/** Tells on standard error what is wrong; the exit status that goes with it. */
int fail(const QString& message);

#endif
