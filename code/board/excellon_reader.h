// SPDX-License-Identifier: MIT
#ifndef EXCELLON_READER_H
#define EXCELLON_READER_H

#include "drill_canvas.h"

namespace brox {

/** Reads an Excellon or XNC drill file.
 *
 * @param name  path for messages; its last part may say the plating
 * @throws BoardError      also for a file that is cut off or has units nowhere
 * @throws BoardCancelled
 */
DrillFile readExcellon(QIODevice& device, const QString& name, const DrillOptions& options = {});

} // namespace brox

#endif
