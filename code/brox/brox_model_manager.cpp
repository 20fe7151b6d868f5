// SPDX-License-Identifier: MIT
#include "brox_model_manager.h"

#include "brox_dialogs.h"
#include "brox_looks.h"
#include "brox_man.h"

#include <QScopedValueRollback>

BroxModelManager::BroxModelManager(QWidget* parent, Qt::WindowFlags f)
    : QWidget(parent, f)
{
    ui.setupUi(this);
    ui.broxModelTableWidget->setVisible(true);
    ui.noModelsMessageFrame->setVisible(false);
    ui.broxModelTableWidget->sortByColumn(0, Qt::AscendingOrder);
}

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
        const BroxSortingPause pause(table);
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
        const BroxSortingPause pause(table);
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
    if (execUnderArrow(box) != QMessageBox::Ok) {
        return;
    }
    const int row = item->row();
    emit broxModelDeleted(name);
    ui.broxModelTableWidget->removeRow(row);
}

void BroxModelManager::on_broxModelTableWidget_itemChanged(QTableWidgetItem* item)
{
    if (mUpdating || !item) {
        return;
    }
    // The answer raises this slot once more; by then it is the model's own name, and all is quiet.
    QString approved;
    emit broxModelRenameRequest(item->text(), approved);
    item->setText(approved);
    item->setToolTip(approved);
}

void BroxModelManager::on_broxModelTableWidget_itemSelectionChanged()
{
    if (mUpdating) {
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
