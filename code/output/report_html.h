// SPDX-License-Identifier: MIT
#ifndef REPORT_HTML_H
#define REPORT_HTML_H

#include "drill_plan.h"

namespace brox {

/** The body of a report up to the maps, in the HTML that browsers and text documents share.
 *  What needs a look is red, and bold for those who print it in black. */
QString reportHtml(const DrillPlan& plan);

} // namespace brox

#endif
