// SPDX-License-Identifier: MIT
#ifndef BROX_JOB_DATA_H
#define BROX_JOB_DATA_H

#include "ui_brox_job_data.h"

#include <QWidget>

class BroxViewer;
struct drill_size_info;

/** The drill tools of the job step, and the drill sizes that the selected model gives them.
 *
 * A preview: nothing goes back to the host. Sizes are in host size units, the cells show the
 * units of the step.
 */
class BroxJobData : public QWidget
{
    Q_OBJECT

public:
    explicit BroxJobData(QWidget* parent = nullptr, Qt::WindowFlags f = {});
    ~BroxJobData() override = default;

    /** Fills labels and table, and follows the viewer's unsaved changes. Called once. */
    void loadDrillData(int stepId, BroxViewer* viewer);

    /** Computes drill size and bit for all rows. */
    void recalculate(int stepId);

    /** Shows all sizes in the current units of the step. */
    void refreshUnits(int stepId);

signals:
    void recalcRequired();

private slots:
    void on_recalcPushButton_clicked(bool checked);
    void broxViewer_dataChanged(bool changed);

private:
    void fillTable(int stepId, const drill_size_info* infos, int count);
    void setSize(int stepId, int row, int col, int size);
    void refreshCell(int stepId, int row, int col);
    void recalculateRow(int stepId, int row);

    Ui::BroxJobData ui;
    BroxViewer* mViewer = nullptr;
};

#endif
