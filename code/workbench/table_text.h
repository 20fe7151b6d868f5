// SPDX-License-Identifier: MIT
#ifndef TABLE_TEXT_H
#define TABLE_TEXT_H

#include <QString>

class QAbstractItemView;

namespace brox {

/** The selected cells of a table or list with their headers, cells parted by tabs, for a
 *  spreadsheet. Rows that a filter hides are left out, and so are columns without a selected cell.
 *
 * @return an empty text if nothing is selected
 */
QString selectionText(const QAbstractItemView* view);

} // namespace brox

#endif
