// SPDX-License-Identifier: MIT
#include "writing.h"

#include "drill_map.h"
#include "drill_program.h"
#include "drill_report.h"
#include "file_set.h"
#include "options.h"
#include "printing.h"

namespace brox {

QStringList writeFiles(const Options& options, const DrillPlan& plan)
{
    FileSet files;
    if (options.isSet(options.drillPrograms)) {
        addDrillPrograms(plan, options.value(options.drillPrograms), files);
    }
    if (options.isSet(options.report)) {
        addDrillReport(plan, options.value(options.report), files);
    }
    if (options.isSet(options.map)) {
        addDrillMap(plan, options.value(options.map), files);
    }
    files.commit();
    for (const QString& note : files.notes()) {
        warn(note);
    }
    return files.paths();
}

} // namespace brox
