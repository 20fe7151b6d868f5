// SPDX-License-Identifier: MIT
#ifndef DEFAULT_DATA_H
#define DEFAULT_DATA_H

#include <QString>

namespace brox {

/** Puts a usable set of drill tool models and drill bits below a data folder, where there is
 *  none; a file that is there is never touched.
 *
 * @param dataDir  made if missing; the files are brox/brox.xml and brox/brox_drill_bits.xml
 * @return what went wrong, or an empty text
 */
QString createDefaultData(const QString& dataDir);

} // namespace brox

#endif
