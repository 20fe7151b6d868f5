// SPDX-License-Identifier: MIT
#ifndef BITS_LIST_H
#define BITS_LIST_H

#include "board.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace brox {

/** A drill bit as the file of bits has it. The two sizes are separate numbers; 0 keeps the bit out
 *  of jobs in those units. */
struct DrillBit
{
    QString designation;
    double millimetres = 0;
    double inches = 0;
    bool approved = true;
    bool operator==(const DrillBit&) const = default;
};

using DrillBits = QList<DrillBit>;

/** A list of bits that can't be read, in one line. */
class BitsError : public Error
{
    using Error::Error;
};

/** The module's file of bits. Elements that are no bits are left out. */
DrillBits bitsFromXml(const QByteArray& xml);
QByteArray bitsToXml(const DrillBits& bits);

/** Comma-separated values with the header "designation,mm,inch,approved".
 *
 * Columns are found by their names, in any order; "mm" or "inch" and "approved" may be missing. A
 * size that is missing is converted from the other. Where semicolons part the cells, as in the
 * spreadsheets of many countries, a comma is a decimal point.
 *
 * @throws BitsError  "line: what"
 */
DrillBits bitsFromCsv(const QByteArray& csv);
QByteArray bitsToCsv(const DrillBits& bits);

/** What a user should know of a list: empty and repeated designations, those that a host cuts, bits
 *  that no job uses. A line each. */
QStringList doubtsAbout(const DrillBits& bits);

/** Bits to start with or to choose. */
struct ReadySet
{
    const char* key; ///< on the command line
    const char* name; ///< to be translated in the context "ReadySet"
    DrillBits (*bits)();
};

/** The first is that of a new data folder. */
const QList<ReadySet>& readySets();

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
