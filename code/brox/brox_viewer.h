// SPDX-License-Identifier: MIT
#ifndef BROX_VIEWER_H
#define BROX_VIEWER_H

#include "brox_looks.h"
#include "brox_man.h"
#include "ui_brox_viewer.h"
#include "zeb_lowlevel.h"

#include <QWidget>

class QScrollBar;

/** The Drill Tool Manager Setup widget of one job step.
 *
 * It owns the models and all other widgets. The widgets know nothing of each other: they report
 * what the user did, and the viewer applies it to the current model and lets those that depend
 * on it to compute again. Sizes are in host size units.
 */
class BroxViewer : public QWidget
{
    Q_OBJECT

public:
    BroxViewer(int stepId, QWidget* parent, Qt::WindowFlags flags);
    ~BroxViewer() override = default;

    /** May the viewer close? Asks the user if there are unsaved models. */
    bool canClose();

    /** Follows the signal unitsChanged(zeb_units_enum) of a host object. */
    void setParentViewer(QObject* parentViewer);

    int modelCount() const;
    QString modelNameAt(int index) const;

    /** Computes the drill size of a hole by a named model, with the formula that is on show.
     *
     * @param dhsValue       size of the chosen bit, or the formula's value
     * @param drillDes       the bit's designation; untouched if none was chosen
     * @param success        whether there is such a model and the formula has a value
     * @param outOfTolRange  the bit is not within the tolerance range. This and
     * @param exactMatch     are untouched if no bit was looked for
     */
    void calcDrillSize(QString modelName, DrillTypeManager::DrillType drillType, int fhs,
        int minTol, int maxTol, int* dhsValue, QString* drillDes, bool* success,
        bool* outOfTolRange, bool* exactMatch);

    /** The same by the current model. */
    void calcDrillSize(DrillTypeManager::DrillType drillType, int fhs, int minTol, int maxTol,
        int* dhsValue, QString* drillDes, bool* success, bool* outOfTolRange, bool* exactMatch);

signals:
    /** There are unsaved changes, or there are none any more. */
    void dataChanged(bool changed);

private slots:
    void on_loadToolButton_clicked(bool checked);
    void on_saveToolButton_clicked(bool checked);
    void on_newToolButton_clicked(bool checked);
    void on_renameToolButton_clicked(bool checked);
    void on_deleteToolButton_clicked(bool checked);
    void on_broxModelManagerWidget_broxModelSelected(QString broxModelName);
    void on_broxModelManagerWidget_broxModelCreated(QString broxModelName);
    void on_broxModelManagerWidget_broxModelRenameRequest(
        QString broxModelName, QString& broxModelNameApproved);
    void on_broxModelManagerWidget_broxModelDeleted(QString broxModelName);
    void on_broxAmountsWidget_amountsChanged(
        DrillTypeManager::DrillType drillType, int amount, int oversized, int osAmount);
    void on_broxDhsWidget_dhsFormulaChanged(QString dhsFormula);
    void on_broxDhsWidget_dhsFormulaEditingFinished();
    void on_broxDhsWidget_useBitFileToggled(bool useBitFile);
    void on_broxJobDataWidget_recalcRequired();
    void on_broxTesterWidget_testValuesChanged(
        DrillTypeManager::DrillType drillType, int fhs, int minTol, int maxTol);
    void parentViewer_unitsChanged(zeb_units_enum units);
    void amountsScrollBar_valueChanged(int sliderPosition);
    void testerScrollBar_valueChanged(int sliderPosition);

private:
    void initialize();
    void linkScrollBars();
    void setDataChanged(bool changed);

    bool loadDefaultModels();
    void saveDefaultModels();
    bool loadModelsFile(QString fileName);
    void saveModelsFile(QString fileName);
    void showLoadDialog();

    void selectModel(QString name);
    void resetModelManager();
    void renameCurrentModel(const QString& wantedName, QString& approvedName);
    void removeCurrentModel(const QString& name);
    void tellHost(const QString& oldName, const char* newName);
    void disableModelWidgets();
    void updateUnitsLabel();
    void updateModelNameLabel(QString name);

    Ui::BroxViewer ui;
    int mStepId;
    QString mFileName;
    BroxModelSet mBroxModelSet;
    BroxModel* mCurrentBroxModel = nullptr;
    bool mDataChanged = false;
    QScrollBar* mAmountsScrollBar = nullptr;
    QScrollBar* mTesterScrollBar = nullptr;
    int mSliderPosition = 0;
    bool mSelectingModel = false;
    BroxIcons mIcons; // the last, and so the first to go
};

#endif
