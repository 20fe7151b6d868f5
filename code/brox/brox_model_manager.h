// SPDX-License-Identifier: MIT
#ifndef BROX_MODEL_MANAGER_H
#define BROX_MODEL_MANAGER_H

#include "ui_brox_model_manager.h"

#include <QWidget>

class BroxModelSet;

/** The table of the drill tool models: select, create, rename in place, delete.
 *
 * It owns no model and changes none: it reports what the user did. Its rows are sorted by name,
 * whatever the order of the set.
 */
class BroxModelManager : public QWidget
{
    Q_OBJECT

public:
    explicit BroxModelManager(QWidget* parent = nullptr, Qt::WindowFlags f = {});
    ~BroxModelManager() override = default;

    /** Fills the table from a set, which outlives this widget, and selects its first row. */
    void setModelSet(BroxModelSet* modelSet);

    /** Shows a hint in the place of the table. */
    void showNoModelsMessage(bool show);

    /** Adds a row with a free default name and selects it. */
    void newModel();

    /** Opens the in-place editor on the selected row. */
    void renameModel();

    /** Deletes the selected row, if the user confirms. */
    void deleteModel();

signals:
    /** The name is empty if no single row is selected. */
    void broxModelSelected(QString broxModelName);
    /** The row is in place, and not yet selected. */
    void broxModelCreated(QString broxModelName);
    /** The receiver writes the name that the model bears afterwards, at once. */
    void broxModelRenameRequest(QString broxModelName, QString& broxModelNameApproved);
    /** The row is still there. */
    void broxModelDeleted(QString broxModelName);

private slots:
    void on_broxModelTableWidget_itemChanged(QTableWidgetItem* item);
    void on_broxModelTableWidget_itemSelectionChanged();
    void on_actionNew_Model_triggered();
    void on_actionRename_triggered();
    void on_actionDelete_triggered();

private:
    QTableWidgetItem* selectedItem() const;
    QString freeModelName() const;
    void setCell(int row, const QString& name);

    Ui::BroxModelManager ui;
    bool mUpdating = false;
    BroxModelSet* mBroxModelSet = nullptr;
};

#endif
