// SPDX-License-Identifier: MIT
#ifndef BROX_TESTER_H
#define BROX_TESTER_H

#include "brox_man.h"
#include "ui_brox_tester.h"

#include <QWidget>

class QScrollBar;

/** The test bench: the user types a hole, a row for each drill type, and reads its drill size.
 *
 * It computes nothing: it announces a row's values, and the answer is written back. Sizes are in
 * host size units, the cells show the units of the step.
 */
class BroxTester : public QWidget
{
    Q_OBJECT

public:
    explicit BroxTester(QWidget* parent = nullptr, Qt::WindowFlags f = {});
    ~BroxTester() override = default;

    void setStepId(int stepId);

    /** Announces every row that holds a value. */
    void retest();

    /** Writes an answer into its row; a bit out of the tolerance range is red. */
    void setTestResult(int stepId, DrillTypeManager::DrillType type, int dhs,
        const QString& drillDes, bool outOfTolRange, bool exactMatch);

    /** Shows all sizes in the current units of the step. */
    void refreshUnits(int stepId);

    QScrollBar* testerScrollBar() const;
    void setTesterScrollValue(int value);

signals:
    void testValuesChanged(DrillTypeManager::DrillType drillType, int fhs, int minTol, int maxTol);

private slots:
    void on_testerTableWidget_itemChanged(QTableWidgetItem* item);

private:
    void initTable();
    void announceRow(int row, int fhs, int minTol, int maxTol);
    int findRow(DrillTypeManager::DrillType type) const;
    void refreshCell(int stepId, int row, int col);

    /** The size that a cell shows, or 0. */
    int cellValue(int row, int col) const;

    Ui::BroxTester ui;
    int mStepId = -1;
};

#endif
