// SPDX-License-Identifier: MIT
#include "brox_editors.h"

#include <QFocusEvent>
#include <QPointer>
#include <QTableWidget>

#include <algorithm>

namespace {

constexpr char isRefused[] = "broxEntryIsRefused"; // set while an editor is made to enter

QWidget* viewerOf(QWidget* part)
{
    // By name: the classes of the viewer's parts do not know it. Above it are the host's widgets.
    while (!part->inherits("BroxViewer") && part->parentWidget()) {
        part = part->parentWidget();
    }
    return part;
}

QWidget* openEditor(const QTableWidget* table)
{
    // One that has been closed is hidden, and deleted later.
    const auto editors =
        table->viewport()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    const auto editor = std::find_if(
        editors.begin(), editors.end(), [](const QWidget* each) { return !each->isHidden(); });
    return editor == editors.end() ? nullptr : *editor;
}

/** Lets an editor lose the focus, at which its delegate takes over what it holds and closes it.
 *
 * In a window that is not the active one there is no focus to lose: it is told so.
 */
void leave(QTableWidget* table, QWidget* editor)
{
    const QPointer<QWidget> open(editor);
    table->setFocus();
    if (open && !open->isHidden()) {
        QFocusEvent focusOut(QEvent::FocusOut);
        QCoreApplication::sendEvent(open, &focusOut);
    }
}

bool enterOpenEditor(QTableWidget* table)
{
    QWidget* editor = openEditor(table);
    if (!editor) {
        return true;
    }
    table->setProperty(isRefused, false);
    leave(table, editor);
    const bool isEntered = !table->property(isRefused).toBool();
    table->setProperty(isRefused, QVariant());
    return isEntered;
}

QModelIndex editedCell(const QTableWidget* table)
{
    for (int row = 0; row < table->rowCount(); ++row) {
        for (int column = 0; column < table->columnCount(); ++column) {
            const QModelIndex index = table->model()->index(row, column);
            if (table->isPersistentEditorOpen(index)) { // or any other editor
                return index;
            }
        }
    }
    return {};
}

/** Takes away the press of the mouse that made a user's entry be refused.
 *
 * It took the focus from the editor and has yet to come to its widget. It comes before any other
 * event from outside.
 */
class PressFilter : public QObject
{
public:
    explicit PressFilter(QTableWidget* table)
        : QObject(table)
        , mViewer(viewerOf(table))
    {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (!event->spontaneous()) {
            return false;
        }
        qApp->removeEventFilter(this);
        deleteLater();
        const auto* widget = qobject_cast<QWidget*>(watched);
        return event->type() == QEvent::MouseButtonPress && widget && mViewer->isAncestorOf(widget);
    }

private:
    QWidget* mViewer; // the table's ancestor, so that it lives longer
};

} // namespace

bool enterOpenEditors(QWidget* part)
{
    const auto tables = viewerOf(part)->findChildren<QTableWidget*>();
    return std::all_of(tables.begin(), tables.end(), enterOpenEditor);
}

void enterTypedNumbers(QWidget* part, const std::function<double()>& scale)
{
    for (QTableWidget* table : part->findChildren<QTableWidget*>()) {
        if (!hasOpenEditor(table)) {
            continue;
        }
        const QPersistentModelIndex cell = editedCell(table);
        const QVariant before = cell.data(Qt::EditRole);
        enterOpenEditor(table);
        bool isNumber = false;
        const QVariant after = cell.data(Qt::EditRole);
        const double number = after.toDouble(&isNumber);
        if (isNumber && after != before) {
            table->model()->setData(cell, number * scale());
        }
    }
}

bool hasOpenEditor(const QTableWidget* table)
{
    return openEditor(table) != nullptr;
}

Entry::Entry(QTableWidget* table)
    : mTable(table)
    , mIsAsked(table->property(isRefused).isValid())
    , mIsMousePressed(QApplication::mouseButtons() != Qt::NoButton)
{ }

bool Entry::isAsked() const
{
    return mIsAsked;
}

void Entry::refuse() const
{
    if (mIsAsked) {
        mTable->setProperty(isRefused, true);
    }
    mTable->setFocus();
    if (mIsMousePressed) {
        new PressFilter(mTable);
    }
}
