// SPDX-License-Identifier: MIT
#ifndef BITS_EXCHANGE_H
#define BITS_EXCHANGE_H

#include "bits_list.h"

namespace brox {

/** Bits between a data folder and lists of the user's. */

/** Reads a list.
 *
 * @param name  a file of comma-separated values; or "ready:" with the key of a ready set
 * @throws BitsError  naming the file
 */
DrillBits readBits(const QString& name);

/** The bits of a data folder, as they were saved last.
 *
 * @throws BitsError
 */
DrillBits savedBits(const QString& dataDir);

/** Puts a list in place of a data folder's bits, which go to the backups.
 *
 * @throws BitsError  and the former bits are still there
 */
void replaceBits(const QString& dataDir, const DrillBits& bits);

} // namespace brox

#endif
