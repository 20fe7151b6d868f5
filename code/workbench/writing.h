// SPDX-License-Identifier: MIT
#ifndef WRITING_H
#define WRITING_H

#include "drill_plan.h"

namespace brox {

struct Options;

/** Writes the files that the options ask for, all of them or none.
 *
 * @return their paths
 * @throws OutputError, PanelError
 */
QStringList writeFiles(const Options& options, const DrillPlan& plan);

} // namespace brox

#endif
