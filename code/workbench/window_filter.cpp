// SPDX-License-Identifier: MIT
#include "window_filter.h"

#include "messages.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDropEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMimeData>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QToolTip>
#include <map>
#include <set>

namespace brox {

namespace {

/** A widget that the wheel would change. */
QWidget* turnable(QObject* watched)
{
    auto* widget = qobject_cast<QWidget*>(watched);
    const bool turns = qobject_cast<QAbstractSpinBox*>(widget) || qobject_cast<QComboBox*>(widget);
    return turns ? widget : nullptr;
}

/** Shows a tip that Qt would take for markup though it is none; false if there is no need. */
bool showPlainTip(const QString& tip, const QHelpEvent* event)
{
    if (!Qt::mightBeRichText(tip) || tip.startsWith("<html>")) {
        return false;
    }
    QToolTip::showText(event->globalPos(), plainTip(tip));
    return true;
}

QStringList localFiles(const QMimeData* data)
{
    QStringList paths;
    for (const QUrl& url : data->urls()) {
        if (url.isLocalFile()) {
            paths << url.toLocalFile();
        }
    }
    return paths;
}

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

/** The selected cells of a table or list with their headers, cells parted by tabs, for a
 *  spreadsheet; empty if none is selected. Rows that a filter hides are left out, and so are
 *  columns without a selected cell. */
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

bool copyOrSelect(QAbstractItemView* view, const QKeyEvent* key)
{
    if (key->matches(QKeySequence::Copy)) {
        const QString text = selectionText(view);
        if (!text.isEmpty()) {
            QApplication::clipboard()->setText(text);
        }
        return !text.isEmpty();
    }
    if (!key->matches(QKeySequence::SelectAll)) {
        return false;
    }
    if (view->selectionMode() == QAbstractItemView::SingleSelection) {
        view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    }
    view->selectAll();
    return true;
}

} // namespace

WindowFilter::WindowFilter(QWidget* window)
    : QObject(window)
    , mWindow(window)
{
    qApp->installEventFilter(this);
}

bool WindowFilter::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Polish:
        if (auto* label = qobject_cast<QLabel*>(watched);
            label && label->textFormat() == Qt::AutoText && !label->inherits("QTipLabel")) {
            label->setTextFormat(Qt::PlainText);
        }
        if (QWidget* widget = turnable(watched);
            widget && widget->focusPolicy() == Qt::WheelFocus) {
            widget->setFocusPolicy(Qt::StrongFocus); // or the first turn would give the focus
        }
        return false;
    case QEvent::ToolTip: {
        const auto* widget = qobject_cast<QWidget*>(watched);
        return widget && showPlainTip(widget->toolTip(), static_cast<QHelpEvent*>(event));
    }
    case QEvent::Wheel: {
        const QWidget* widget = turnable(watched);
        if (widget && !widget->hasFocus()) {
            event->ignore(); // so that it scrolls what the widget lies in
            return true;
        }
        return false;
    }
    case QEvent::KeyPress: {
        auto* view = qobject_cast<QAbstractItemView*>(watched);
        return view && copyOrSelect(view, static_cast<QKeyEvent*>(event));
    }
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        return takeDrop(watched, static_cast<QDropEvent*>(event));
    default:
        return false;
    }
}

bool WindowFilter::takeDrop(QObject* watched, QDropEvent* event)
{
    const auto* widget = qobject_cast<QWidget*>(watched);
    const QStringList paths = localFiles(event->mimeData());
    if (!widget || widget->window() != mWindow || paths.isEmpty()) {
        return false;
    }
    // A file manager deletes what was moved.
    const bool canCopy = event->possibleActions() & Qt::CopyAction;
    event->setDropAction(canCopy ? Qt::CopyAction : Qt::IgnoreAction);
    event->accept();
    if (event->type() == QEvent::Drop) {
        // Boxes would keep the program waiting that the files are dragged from.
        QMetaObject::invokeMethod(
            this, [this, paths] { emit dropped(paths); }, Qt::QueuedConnection);
    }
    return true;
}

} // namespace brox
