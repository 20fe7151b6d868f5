// SPDX-License-Identifier: MIT
#include "table_text.h"

#include <QHeaderView>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QTreeView>
#include <map>
#include <set>

namespace brox {

namespace {

bool isHidden(const QAbstractItemView* view, const QModelIndex& index)
{
    const auto* table = qobject_cast<const QTableView*>(view);
    return table && (table->isRowHidden(index.row()) || table->isColumnHidden(index.column()));
}

/** What a spreadsheet is to have in one cell. */
QString cellText(const QAbstractItemView* view, const QModelIndex& index)
{
    const QVariant check = index.data(Qt::CheckStateRole);
    QString text = index.data(Qt::DisplayRole).toString();
    // A cell shows a number as its delegate writes it.
    if (const auto* delegate =
            qobject_cast<QStyledItemDelegate*>(view->itemDelegateForIndex(index))) {
        text = delegate->displayText(index.data(Qt::DisplayRole), QLocale::c());
    }
    if (text.isEmpty() && check.isValid()) {
        text = check.toInt() == Qt::Checked ? QStringLiteral("yes") : QStringLiteral("no");
    }
    return text.simplified();
}

} // namespace

QString selectionText(const QAbstractItemView* view)
{
    // Rows of a tree lie below different parents: they come in the order of the view.
    std::map<std::pair<int, int>, std::map<int, QString>> rows;
    std::set<int> columns;
    if (!view->selectionModel()) {
        return {};
    }
    for (const QModelIndex& index : view->selectionModel()->selectedIndexes()) {
        if (!isHidden(view, index)) {
            const int parent = index.parent().isValid() ? index.parent().row() : -1;
            rows[{parent, index.row()}][index.column()] = cellText(view, index);
            columns.insert(index.column());
        }
    }
    QStringList lines;
    QStringList line;
    for (const int column : columns) {
        line << view->model()->headerData(column, Qt::Horizontal).toString();
    }
    if (!rows.empty()) {
        lines << line.join('\t');
    }
    for (const auto& [place, cells] : rows) {
        line.clear();
        for (const int column : columns) {
            const auto cell = cells.find(column);
            line << (cell == cells.end() ? QString() : cell->second);
        }
        lines << line.join('\t');
    }
    return lines.isEmpty() ? QString() : lines.join('\n') + '\n';
}

} // namespace brox
