// SPDX-License-Identifier: MIT
#include "brox_viewer.h"

#include "brox_dialogs.h"
#include "brox_models_file.h"
#include "brox_report.h"
#include "brox_step_data.h"

#include <QFontMetrics>
#include <QScopedValueRollback>
#include <QScrollBar>

namespace {

constexpr BroxSource source("brox_viewer");
constexpr char isCurrent[] = "this->mCurrentBroxModel != 0";
constexpr double upperShare = 0.375; // of the height: amounts, test table and formula

} // namespace

BroxViewer::BroxViewer(int stepId, QWidget* parent, Qt::WindowFlags flags)
    : QWidget(parent, flags)
    , mStepId(stepId)
{
    ui.setupUi(this);
    ui.loadToolButton->hide();
    initialize();
}

/** The order is fixed: each step relies on those before it. */
void BroxViewer::initialize()
{
    ui.broxJobDataWidget->loadDrillData(mStepId, this);
    ui.broxAmountsWidget->setStepId(mStepId);
    ui.broxTesterWidget->setStepId(mStepId);
    ui.broxDhsWidget->setStepId(mStepId);

    const bool isLoaded = loadDefaultModels();
    resetModelManager();
    ui.broxModelManagerWidget->showNoModelsMessage(!isLoaded);
    if (!isLoaded) {
        disableModelWidgets();
    }
    setDataChanged(false);
    updateUnitsLabel();

    const int upper = int(height() * upperShare);
    ui.splitter->setSizes({upper, height() - upper});
    linkScrollBars();
}

void BroxViewer::linkScrollBars()
{
    mAmountsScrollBar = ui.broxAmountsWidget->amountsScrollBar();
    mTesterScrollBar = ui.broxTesterWidget->testerScrollBar();
    if (mAmountsScrollBar && mTesterScrollBar) {
        // By signature text: so Qt calls no slot when it hides the tables of a viewer that has
        // ended.
        connect(mAmountsScrollBar, SIGNAL(valueChanged(int)), this,
            SLOT(amountsScrollBar_valueChanged(int)));
        connect(mTesterScrollBar, SIGNAL(valueChanged(int)), this,
            SLOT(testerScrollBar_valueChanged(int)));
    }
}

void BroxViewer::setDataChanged(bool changed)
{
    // Selecting a model sets widgets as a user would, and is no change.
    if (mSelectingModel) {
        return;
    }
    mDataChanged = changed;
    emit dataChanged(changed);
}

bool BroxViewer::canClose()
{
    enterOpenCell(this);
    if (!mDataChanged) {
        return true;
    }
    const int answer = askUnsaved(this, BROX_VIEWER_TEXT("Drill Tool Manager Setup", "144"),
        BROX_VIEWER_TEXT(
            "Unsaved data will be lost.\nClick 'Save' to save data before closing.", "145"));
    if (answer == QMessageBox::Save) {
        saveDefaultModels();
        return !mDataChanged;
    }
    return answer != QMessageBox::Cancel;
}

void BroxViewer::setParentViewer(QObject* parentViewer)
{
    // By signature text: the host's class is not known here.
    connect(parentViewer, SIGNAL(unitsChanged(zeb_units_enum)), this,
        SLOT(parentViewer_unitsChanged(zeb_units_enum)));
}

int BroxViewer::modelCount() const
{
    return mBroxModelSet.modelCount();
}

QString BroxViewer::modelNameAt(int index) const
{
    const BroxModel* model = mBroxModelSet.modelAt(index);
    return model ? model->modelName() : QString();
}

void BroxViewer::calcDrillSize(QString modelName, DrillTypeManager::DrillType drillType, int fhs,
    int minTol, int maxTol, int* dhsValue, QString* drillDes, bool* success, bool* outOfTolRange,
    bool* exactMatch)
{
    if (!source.checkPointer(dhsValue, "dhsValue")
        || !source.check(BroxSource::areValid({success, outOfTolRange, exactMatch}),
            "((ullong)(success) > 1000) && ((ullong)(outOfTolRange) > 1000) && "
            "((ullong)(exactMatch) > 1000)")) {
        return;
    }
    *dhsValue = 0;
    *success = false;
    const BroxModel* model = mBroxModelSet.findModel(modelName);
    if (!model) {
        return;
    }
    const bool useBitFile = model->useBitFile();
    int amount = 0; // stays so for a type that the model has no amounts for
    model->amountForSize(drillType, fhs, &amount);
    ui.broxDhsWidget->calculateDhs(amount, fhs, minTol, maxTol, dhsValue, success);
    if (!*success || drillType == DrillTypeManager::Laser || drillType == DrillTypeManager::Photo) {
        return;
    }
    int bitSize = 0;
    bool found = false;
    ui.broxDhsWidget->findDrillBit(*dhsValue, minTol, maxTol, drillDes, &bitSize, useBitFile,
        &found, outOfTolRange, exactMatch);
    if (found) {
        *dhsValue = bitSize;
    }
}

void BroxViewer::calcDrillSize(DrillTypeManager::DrillType drillType, int fhs, int minTol,
    int maxTol, int* dhsValue, QString* drillDes, bool* success, bool* outOfTolRange,
    bool* exactMatch)
{
    calcDrillSize(mCurrentBroxModel ? mCurrentBroxModel->modelName() : QString(), drillType, fhs,
        minTol, maxTol, dhsValue, drillDes, success, outOfTolRange, exactMatch);
}

void BroxViewer::on_loadToolButton_clicked(bool)
{
    command(this, [this] { showLoadDialog(); });
}

void BroxViewer::on_saveToolButton_clicked(bool)
{
    command(this, [this] { saveDefaultModels(); });
}

void BroxViewer::on_newToolButton_clicked(bool)
{
    command(this, [this] {
        ui.broxModelManagerWidget->newModel();
        ui.broxModelManagerWidget->renameModel();
    });
}

void BroxViewer::on_renameToolButton_clicked(bool)
{
    command(this, [this] { ui.broxModelManagerWidget->renameModel(); });
}

void BroxViewer::on_deleteToolButton_clicked(bool)
{
    command(this, [this] { ui.broxModelManagerWidget->deleteModel(); });
}

void BroxViewer::on_broxModelManagerWidget_broxModelSelected(QString broxModelName)
{
    selectModel(broxModelName);
}

void BroxViewer::on_broxModelManagerWidget_broxModelCreated(QString broxModelName)
{
    BroxModel* broxModel = mBroxModelSet.createModel(broxModelName);
    if (source.check(broxModel != nullptr, "broxModel != 0")) {
        mCurrentBroxModel = broxModel;
        setDataChanged(true);
    }
}

void BroxViewer::on_broxModelManagerWidget_broxModelRenameRequest(
    QString broxModelName, QString& broxModelNameApproved)
{
    guarded([&] { renameCurrentModel(broxModelName, broxModelNameApproved); });
}

void BroxViewer::on_broxModelManagerWidget_broxModelDeleted(QString broxModelName)
{
    guarded([&] { removeCurrentModel(broxModelName); });
}

void BroxViewer::on_broxAmountsWidget_amountsChanged(
    DrillTypeManager::DrillType drillType, int amount, int oversized, int osAmount)
{
    if (mCurrentBroxModel) {
        mCurrentBroxModel->setAmounts(drillType, amount, oversized, osAmount);
        ui.broxTesterWidget->retest();
        setDataChanged(true);
    }
}

void BroxViewer::on_broxDhsWidget_dhsFormulaChanged(QString dhsFormula)
{
    if (source.check(mCurrentBroxModel, isCurrent)) {
        mCurrentBroxModel->setDhsFormula(dhsFormula);
        ui.broxTesterWidget->retest();
        setDataChanged(true);
    }
}

void BroxViewer::on_broxDhsWidget_dhsFormulaEditingFinished()
{
    // A text that was refused gives way to the last formula that was admitted.
    if (source.check(mCurrentBroxModel, isCurrent)) {
        ui.broxDhsWidget->setDhsFormula(mCurrentBroxModel);
    }
}

void BroxViewer::on_broxDhsWidget_useBitFileToggled(bool useBitFile)
{
    if (!mCurrentBroxModel) {
        return;
    }
    mCurrentBroxModel->setUseBitFile(useBitFile);
    setDataChanged(true);
    ui.broxTesterWidget->retest();
}

void BroxViewer::on_broxJobDataWidget_recalcRequired()
{
    ui.broxJobDataWidget->recalculate(mStepId);
}

void BroxViewer::on_broxTesterWidget_testValuesChanged(
    DrillTypeManager::DrillType drillType, int fhs, int minTol, int maxTol)
{
    int dhsValue = 0;
    QString drillDes;
    bool success = false;
    bool outOfTolRange = false;
    bool exactMatch = false;
    calcDrillSize(drillType, fhs, minTol, maxTol, &dhsValue, &drillDes, &success, &outOfTolRange,
        &exactMatch);
    if (success) {
        ui.broxTesterWidget->setTestResult(
            mStepId, drillType, dhsValue, drillDes, outOfTolRange, exactMatch);
    }
}

void BroxViewer::parentViewer_unitsChanged(zeb_units_enum)
{
    // Each widget asks the host for the units of its step.
    updateUnitsLabel();
    ui.broxAmountsWidget->refreshUnits(mStepId);
    ui.broxTesterWidget->refreshUnits(mStepId);
    ui.broxJobDataWidget->refreshUnits(mStepId);
}

// In both slots the store comes after the move: the other bar's signal must still find the old
// value, so that its own slot runs, finds this bar where it should be, and the nesting ends.
void BroxViewer::amountsScrollBar_valueChanged(int sliderPosition)
{
    if (sliderPosition != mSliderPosition) {
        ui.broxTesterWidget->setTesterScrollValue(sliderPosition);
        mSliderPosition = sliderPosition;
    }
}

void BroxViewer::testerScrollBar_valueChanged(int sliderPosition)
{
    if (sliderPosition != mSliderPosition) {
        ui.broxAmountsWidget->setAmountsScrollValue(sliderPosition);
        mSliderPosition = sliderPosition;
    }
}

bool BroxViewer::loadDefaultModels()
{
    const QString path = modelsFile.existingPath();
    return !path.isNull() && loadModelsFile(path);
}

void BroxViewer::saveDefaultModels()
{
    if (!mDataChanged) {
        return;
    }
    const QString path = modelsFile.pathForSaving();
    if (!path.isNull()) {
        saveModelsFile(path);
        setDataChanged(false);
    }
}

bool BroxViewer::loadModelsFile(QString fileName)
{
    return readModels(fileName, &mBroxModelSet);
}

void BroxViewer::saveModelsFile(QString fileName)
{
    if (!fileName.isEmpty() && writeModels(fileName, mBroxModelSet)) {
        mFileName = fileName;
    }
}

void BroxViewer::showLoadDialog()
{
    if (mDataChanged && !canClose()) {
        return;
    }
    const QString path = chooseFileToLoad(this,
        {QStringLiteral("Drill Tool Model Manager"), BROX_VIEWER_TEXT("BROX XML File", "312"),
            BROX_VIEWER_TEXT("All Files", "313"),
            BROX_VIEWER_TEXT("Load Drill Tool Model Manager XML file...", "340")},
        modelsFile.name(), mFileName);
    if (path.isNull()) {
        return;
    }
    if (loadModelsFile(path)) {
        resetModelManager();
    }
    setDataChanged(false);
}

void BroxViewer::selectModel(QString name)
{
    BroxModel* model = mBroxModelSet.findModel(name);
    if (!model) {
        return;
    }
    const QScopedValueRollback selecting(mSelectingModel, true);
    mCurrentBroxModel = model;
    ui.broxAmountsWidget->setEnabled(true);
    ui.broxAmountsWidget->setBroxModel(model);
    updateModelNameLabel(name);
    // The formula comes before all that computes: what is evaluated is the text of the line edit.
    ui.broxDhsWidget->setEnabled(true);
    ui.broxDhsWidget->setDhsFormula(model);
    ui.broxDhsWidget->setUseBitFile(model);
    ui.broxTesterWidget->setEnabled(true);
    ui.broxTesterWidget->retest();
    ui.broxJobDataWidget->recalculate(mStepId);
}

void BroxViewer::resetModelManager()
{
    mCurrentBroxModel = nullptr; // a load has destroyed the models
    ui.broxModelManagerWidget->setModelSet(&mBroxModelSet);
}

void BroxViewer::renameCurrentModel(const QString& wantedName, QString& approvedName)
{
    if (!mCurrentBroxModel) {
        return;
    }
    const QString oldName = mCurrentBroxModel->modelName();
    approvedName = mCurrentBroxModel->rename(wantedName);
    updateModelNameLabel(approvedName);
    if (wantedName == oldName) {
        return;
    }
    if (approvedName == wantedName) {
        tellHost(oldName, wantedName.toLocal8Bit().constData());
        setDataChanged(true);
        return;
    }
    execUnderArrow(
        new QMessageBox(QMessageBox::Warning, BROX_VIEWER_TEXT("Drill Tool Manager Setup", "730"),
            BROX_VIEWER_TEXT("Rename not allowed.\nPossible causes: name exists, or name is too "
                             "long (over 64 characters).",
                "731"),
            QMessageBox::Ok, this));
}

void BroxViewer::removeCurrentModel(const QString& name)
{
    if (!source.check(mCurrentBroxModel, isCurrent)
        || !source.check(mCurrentBroxModel->modelName() == name,
            "this->mCurrentBroxModel->modelName() == broxModelName")) {
        return;
    }
    mBroxModelSet.removeModel(name);
    mCurrentBroxModel = nullptr;
    if (mBroxModelSet.modelCount() < 1) {
        disableModelWidgets();
        ui.broxModelManagerWidget->showNoModelsMessage(true);
    }
    setDataChanged(true);
    tellHost(name, nullptr);
}

/** Tells the host of a rename, or of a deletion if there is no new name. */
void BroxViewer::tellHost(const QString& oldName, const char* newName)
{
    const int status = source.checkStatus(
        brox__proxy_model_renamed_deleted(mStepId, oldName.toLocal8Bit().constData(), newName));
    if (status != 0) {
        throw InternalException(status);
    }
}

void BroxViewer::disableModelWidgets()
{
    ui.broxAmountsWidget->setEnabled(false);
    ui.broxDhsWidget->setEnabled(false);
    ui.broxTesterWidget->setEnabled(false);
}

void BroxViewer::updateUnitsLabel()
{
    const char* units = nullptr;
    if (brox__proxy_get_units_str(mStepId, &units) == 0 && units) {
        ui.unitsLabel->setText(QString::fromLocal8Bit(units));
    }
}

void BroxViewer::updateModelNameLabel(QString name)
{
    QLabel* label = ui.broxModelNameLabel;
    QString text = name.isEmpty() ? BROX_VIEWER_TEXT("<None>", "669") : name;
    label->setToolTip(text);
    const QFontMetrics metrics(label->font());
    if (metrics.horizontalAdvance(text) > label->width()) {
        text = metrics.elidedText(text, Qt::ElideRight, label->width());
    }
    label->setText(text);
}
