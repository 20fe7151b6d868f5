// SPDX-License-Identifier: MIT
#ifndef IPC2581_READER_H
#define IPC2581_READER_H

#include "reading.h"

namespace brox {

/** Reads an IPC-2581 file, revisions A to C. Panels stay panels: repeats are not spread.
 *
 * @param name  path for messages
 * @throws BoardError      also for a file without a hole, slot or contour
 * @throws BoardCancelled
 */
Board readIpc2581(QIODevice& device, const QString& name, const ReadOptions& options = {});

} // namespace brox

#endif
