// SPDX-License-Identifier: MIT
#include "brox_model_manager.h"

#include "brox_editors.h"
#include "brox_man.h"
#include "brox_nls.h"
#include "brox_sorting.h"

#include <QKeyEvent>
#include <QPointer>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>

#include <functional>
#include <utility>

namespace {

/** Edits names. A tab goes on to the next name only if the one that it ends is not refused. */
class NameDelegate : public QStyledItemDelegate
{
public:
    /** @param isTyped  up while an editor hands over its name */
    NameDelegate(QObject* manager, bool& isTyped, std::function<bool()> isRefused)
        : QStyledItemDelegate(manager)
        , mIsTyped(isTyped)
        , mIsRefused(std::move(isRefused))
    { }

    void setModelData(
        QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override
    {
        const QScopedValueRollback typing(mIsTyped, true);
        QStyledItemDelegate::setModelData(editor, model, index);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent*>(event)->key();
            if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {
                return !enter(qobject_cast<QWidget*>(watched))
                    || QStyledItemDelegate::eventFilter(watched, event);
            }
        }
        return QStyledItemDelegate::eventFilter(watched, event);
    }

private:
    bool enter(QWidget* editor)
    {
        emit commitData(editor);
        if (mIsRefused() && !editor->isHidden()) {
            emit closeEditor(editor);
        }
        return !mIsRefused();
    }

    bool& mIsTyped;
    std::function<bool()> mIsRefused;
};

} // namespace

BroxModelManager::BroxModelManager(QWidget* parent, Qt::WindowFlags f)
    : QWidget(parent, f)
{
    ui.setupUi(this);
    // As a number: as a flag it would register the flag's type with Qt, which keeps pointers into
    // this library after it is unloaded.
    ui.broxModelTableWidget->horizontalHeaderItem(0)->setData(
        Qt::TextAlignmentRole, int(Qt::AlignCenter));
    ui.broxModelTableWidget->setVisible(true);
    ui.noModelsMessageFrame->setVisible(false);
    ui.broxModelTableWidget->sortByColumn(0, Qt::AscendingOrder);
    ui.broxModelTableWidget->setItemDelegate(
        new NameDelegate(this, mIsTyped, [this] { return mKept.isValid(); }));
}

BroxModelManager::~BroxModelManager() = default;

void BroxModelManager::setModelSet(BroxModelSet* modelSet)
{
    if (!modelSet) {
        return;
    }
    QTableWidget* table = ui.broxModelTableWidget;
    {
        const QScopedValueRollback updating(mUpdating, true);
        mBroxModelSet = modelSet;
        table->reset();
        table->clearContents();
        // One sort at the end: a sorted insertion of each name would take quadratic time.
        const SortingPause pause(table);
        table->setRowCount(modelSet->modelCount());
        for (int i = 0; i < modelSet->modelCount(); ++i) {
            setCell(i, modelSet->modelAt(i)->modelName());
        }
    }
    if (table->rowCount() > 0) {
        table->setCurrentItem(table->item(0, 0));
    }
}

void BroxModelManager::showNoModelsMessage(bool show)
{
    setUpdatesEnabled(false);
    ui.broxModelTableWidget->setVisible(!show);
    ui.noModelsMessageFrame->setVisible(show);
    setUpdatesEnabled(true);
}

void BroxModelManager::newModel()
{
    QTableWidget* table = ui.broxModelTableWidget;
    {
        // The new row stays at the end until it is selected. Then it takes its sorted place, where
        // the user looks for it, and stays the selected one.
        const SortingPause pause(table);
        const int row = table->rowCount();
        table->insertRow(row);
        if (row == 0) {
            showNoModelsMessage(false);
        }
        const QString name = freeModelName();
        {
            const QScopedValueRollback updating(mUpdating, true);
            setCell(row, name);
        }
        emit broxModelCreated(name);
        table->setCurrentItem(table->item(row, 0));
        table->selectRow(row);
    }
    table->scrollToItem(table->currentItem());
}

void BroxModelManager::renameModel()
{
    if (QTableWidgetItem* item = selectedItem()) {
        ui.broxModelTableWidget->editItem(item);
    }
}

void BroxModelManager::deleteModel()
{
    QTableWidgetItem* item = selectedItem();
    if (!item) {
        return;
    }
    const QString name = item->text();
    auto* box =
        new QMessageBox(QMessageBox::Question, BROX_MODEL_MANAGER_TEXT("KRV Model deletion", "159"),
            QStringLiteral("%1 '%2'?")
                .arg(BROX_MODEL_MANAGER_TEXT("Delete Drill Tool Manager Model", "160"), name),
            QMessageBox::Ok | QMessageBox::Cancel, this);
    box->setTextFormat(Qt::PlainText); // a name is no markup
    const QPersistentModelIndex cell = ui.broxModelTableWidget->indexFromItem(item);
    if (execUnderArrow(box) != QMessageBox::Ok || !cell.isValid()) {
        return;
    }
    // The host hears of it, and may take the occasion to end the viewer.
    const QPointer<BroxModelManager> alive(this);
    emit broxModelDeleted(cell.data().toString());
    if (alive) {
        ui.broxModelTableWidget->removeRow(cell.row());
    }
}

void BroxModelManager::on_broxModelTableWidget_itemChanged(QTableWidgetItem* item)
{
    if (mUpdating || !item) {
        return;
    }
    // The receiver renames the model on show, so that has to be the one of this row. The tool tip
    // still has its name.
    const bool isOther = item != selectedItem();
    if (isOther) {
        emit broxModelSelected(item->toolTip());
    }
    // The answer raises this slot once more; by then it is the model's own name, and all is quiet.
    const Entry entry(ui.broxModelTableWidget);
    const QString wanted = item->text();
    QString approved;
    emit broxModelRenameRequest(wanted, approved);
    item->setText(approved);
    item->setToolTip(approved);
    if (mIsTyped && approved != wanted) {
        ui.broxModelTableWidget->setCurrentItem(item);
        entry.refuse();
        if (!entry.isAsked()) {
            keepSelection();
        }
    } else if (isOther) {
        on_broxModelTableWidget_itemSelectionChanged();
    }
}

void BroxModelManager::on_broxModelTableWidget_itemSelectionChanged()
{
    if (mUpdating) {
        return;
    }
    if (mKept.isValid() && !ui.broxModelTableWidget->selectionModel()->isSelected(mKept)) {
        ui.broxModelTableWidget->setCurrentIndex(mKept);
        return;
    }
    // A name that is still being typed belongs to the model that was selected before, and may be
    // refused or move the rows. Qt has yet to make the row current that it has selected.
    if (hasOpenEditor(ui.broxModelTableWidget)) {
        connect(
            ui.broxModelTableWidget, &QTableWidget::currentItemChanged, this,
            [this] {
                if (QTableWidgetItem* item = selectedItem()) {
                    ui.broxModelTableWidget->setCurrentItem(item);
                }
            },
            Qt::SingleShotConnection);
    }
    if (!enterOpenEditors(this)) {
        keepSelection();
        return;
    }
    const QTableWidgetItem* item = selectedItem();
    emit broxModelSelected(item ? item->text() : QString());
}

void BroxModelManager::on_actionNew_Model_triggered()
{
    command(this, [this] {
        newModel();
        renameModel();
    });
}

void BroxModelManager::on_actionRename_triggered()
{
    command(this, [this] { renameModel(); });
}

void BroxModelManager::on_actionDelete_triggered()
{
    command(this, [this] { deleteModel(); });
}

QTableWidgetItem* BroxModelManager::selectedItem() const
{
    const QList<QTableWidgetItem*> items = ui.broxModelTableWidget->selectedItems();
    return items.size() == 1 ? items.first() : nullptr;
}

/** Leaves the selection at a name that was refused when the user was about to go on: Qt may select
 *  the other row more than once before it comes back to the event loop. */
void BroxModelManager::keepSelection()
{
    mKept = ui.broxModelTableWidget->currentIndex();
    QMetaObject::invokeMethod(
        this, [this] { mKept = QModelIndex(); }, Qt::QueuedConnection);
}

QString BroxModelManager::freeModelName() const
{
    const QString first = QStringLiteral("Model");
    QString name = first;
    for (int i = 1; mBroxModelSet && mBroxModelSet->findModel(name); ++i) {
        name = QStringLiteral("%1 + %2").arg(first).arg(i);
    }
    return name;
}

void BroxModelManager::setCell(int row, const QString& name)
{
    auto* item = new QTableWidgetItem(name);
    item->setToolTip(name);
    ui.broxModelTableWidget->setItem(row, 0, item);
}
