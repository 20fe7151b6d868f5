// SPDX-License-Identifier: MIT
#include "options.h"

namespace brox {

Options::Options()
{
    parser.setApplicationDescription(
        "Opens a board and sets up its drill tools, or prints their drill sizes.");
    parser.addPositionalArgument("board",
        "An IPC-2581 file; or all drill files of a board, Excellon (XNC) or Gerber, each a layer "
        "then; or an archive or a folder of them; or - for the standard input.",
        "[board...]");
    parser.addOptions({table, csv, json, places, drillPrograms, report, map, strict, boards, models,
        step, model, units, fileUnits, tolerance, viasUpTo, data, language, screenshot});
}

} // namespace brox
