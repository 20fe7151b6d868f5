// SPDX-License-Identifier: MIT
#ifndef BROX_AMOUNTS_H
#define BROX_AMOUNTS_H

#include "brox_man.h"
#include "ui_brox_amounts.h"

#include <QHash>
#include <QWidget>

class QScrollBar;

/** The table in which a model's amounts are edited, a row for each drill type.
 *
 * It holds no model: it shows one, and reports each edit with the whole row. Sizes are in host
 * size units, the cells show the units of the step.
 */
class BroxAmounts : public QWidget
{
    Q_OBJECT

public:
    explicit BroxAmounts(QWidget* parent = nullptr, Qt::WindowFlags f = {});
    ~BroxAmounts() override = default;

    void setStepId(int stpid);
    void setBroxModel(BroxModel* model);

    /** Shows all sizes in the current units of the step. */
    void refreshUnits(int stpid);

    QScrollBar* amountsScrollBar() const;
    void setAmountsScrollValue(int value);

signals:
    void amountsChanged(
        DrillTypeManager::DrillType drillType, int amount, int oversized, int osAmount);

private slots:
    void on_amountsTableWidget_itemChanged(QTableWidgetItem* item);

private:
    void initTable();
    void setCell(int row, int column, int value);
    void refreshCell(int stpid, int row, int column);

    /** The size that a cell shows, or 0. */
    int cellValue(int row, int column) const;

    Ui::BroxAmounts ui;
    int mStepId = -1;
    bool mUpdating = false;
    QHash<DrillTypeManager::DrillType, int> mDrillTypeRows;
};

#endif
