// SPDX-License-Identifier: MIT
#ifndef PRINTING_H
#define PRINTING_H

#include "host_session.h"
#include "reading.h"

class QCommandLineOption;

namespace brox {

struct Options;

/** What the command line prints, and what of its options all commands share. */

/** Exit status if strict is asked for and a tool is flagged; no file may be written then. */
constexpr int strictStatus = 2;

/** Tells on standard error what is wrong; the exit status that goes with it. */
int fail(const QString& message);

void warn(const QString& message);

/** @throws HostError  for another word than inch and metric */
Units unitsOf(const Options& options, const QCommandLineOption& option);

ReadOptions readOptions(const Options& options);

/** The step asked for; the main one if there is none.
 *
 * @throws HostError
 */
size_t chosenStep(const Options& options, const Board& board);

/** Readies a session for planOf, instead of a board. */
void openCalculator(HostSession& session);

/** The step asked for, in the units asked for.
 *
 * @throws HostError, PanelError
 */
DrillDraft draftOf(const Options& options, const Job& job);

/** What a draft comes to by the options, in a session that is ready for it.
 *
 * @throws HostError
 */
DrillPlan planOf(const Options& options, HostSession& session, const DrillDraft& draft);

/** The exit status that a plan's tools call for; what is wrong is told on standard error.
 *
 * @param name  of the board where there are several; else empty
 */
int statusOf(const Options& options, const DrillPlan& plan, const QString& name);

int printPlan(const Options& options, HostSession& session, const Job& job);
int printBoards(const Options& options, HostSession& session, const ShopRules& rules);
int printModels(HostSession& session);

} // namespace brox

#endif
