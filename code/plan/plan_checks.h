// SPDX-License-Identifier: MIT
#ifndef PLAN_CHECKS_H
#define PLAN_CHECKS_H

#include "findings.h"

namespace brox {

/** How many findings of one check are listed. Those beyond are counted. */
constexpr size_t mostListed = 10'000;

/** Checks what a plan drills against the limits that it was made with, and sets apart what is
 *  accepted. All distances are between edges as drilled, those of copies of steps included, and
 *  between layers only where their spans meet.
 *
 * @param today  by which acceptances expire
 * @throws PanelError
 */
CheckFindings checkPlan(const DrillPlan& plan, QDate today = QDate::currentDate());

} // namespace brox

#endif
