// SPDX-License-Identifier: MIT
#include "brox_man.h"

#include <QMetaEnum>

#include <algorithm>
#include <new>
#include <utility>

namespace {

constexpr int maxModelNameLength = 64;

const QString defaultDhsFormula = QStringLiteral("FHS + AMOUNT + (MAX_TOL - MIN_TOL) / 2");

QMetaEnum drillTypeEnum(const QObject* manager)
{
    const QMetaObject* metaObject = manager->metaObject();
    return metaObject->enumerator(metaObject->indexOfEnumerator("DrillType"));
}

void takeNumber(const QString& text, int* value)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber, 10);
    if (isNumber) {
        *value = number;
    }
}

} // namespace

DrillTypeManager* DrillTypeManager::instance()
{
    static DrillTypeManager* const manager = new (std::nothrow) DrillTypeManager;
    return manager;
}

QString DrillTypeManager::drillTypeName(DrillType drillType) const
{
    return QString::fromLatin1(drillTypeEnum(this).valueToKey(drillType));
}

int DrillTypeManager::drillTypeCount() const
{
    return drillTypeEnum(this).keyCount() - 1;
}

DrillTypeManager::DrillType DrillTypeManager::drillTypeFromName(QString name) const
{
    return DrillType(drillTypeEnum(this).keyToValue(name.toLocal8Bit().constData()));
}

void BroxHoleType::setAmounts(
    const QString& amount, const QString& oversized, const QString& osAmount)
{
    takeNumber(amount, &mAmount);
    takeNumber(oversized, &mOversized);
    takeNumber(osAmount, &mOsAmount);
}

void BroxHoleType::setAmounts(int amount, int oversized, int osAmount)
{
    mAmount = amount;
    mOversized = oversized;
    mOsAmount = osAmount;
}

void BroxHoleType::getAmounts(
    DrillTypeManager::DrillType* drillType, int* amount, int* oversized, int* osAmount) const
{
    *drillType = mDrillType;
    *amount = mAmount;
    *oversized = mOversized;
    *osAmount = mOsAmount;
}

BroxModel::BroxModel(QString modelName, QObject* parent)
    : QObject(parent)
    , mModelName(std::move(modelName))
    , mDhsFormula(defaultDhsFormula)
{ }

BroxModel::~BroxModel()
{
    qDeleteAll(mHoleTypes);
}

QString BroxModel::rename(QString modelName)
{
    bool approved = false;
    emit renameApprovalRequest(modelName, &approved);
    if (approved) {
        mModelName = modelName;
    }
    return mModelName;
}

void BroxModel::setAmounts(
    QString drillTypeName, QString amount, QString oversized, QString osAmount)
{
    const auto drillType = DrillTypeManager::instance()->drillTypeFromName(drillTypeName);
    ensureHoleType(drillType)->setAmounts(amount, oversized, osAmount);
}

void BroxModel::setAmounts(
    DrillTypeManager::DrillType drillType, int amount, int oversized, int osAmount)
{
    ensureHoleType(drillType)->setAmounts(amount, oversized, osAmount);
}

bool BroxModel::amountForSize(DrillTypeManager::DrillType drillType, int fhs, int* amount) const
{
    const BroxHoleType* record = findHoleType(drillType);
    if (!record) {
        return false;
    }
    const bool isOversized = record->mOversized > 0 && fhs >= record->mOversized;
    *amount = isOversized ? record->mOsAmount : record->mAmount;
    return true;
}

BroxHoleType* BroxModel::findHoleType(DrillTypeManager::DrillType drillType) const
{
    const auto record = std::find_if(mHoleTypes.begin(), mHoleTypes.end(),
        [drillType](const BroxHoleType* each) { return each->drillType() == drillType; });
    return record == mHoleTypes.end() ? nullptr : *record;
}

BroxHoleType* BroxModel::ensureHoleType(DrillTypeManager::DrillType drillType)
{
    BroxHoleType* record = findHoleType(drillType);
    if (!record) {
        record = new BroxHoleType(drillType);
        mHoleTypes.append(record);
    }
    return record;
}

BroxModelSet::~BroxModelSet()
{
    clear();
}

void BroxModelSet::clear()
{
    qDeleteAll(mModels);
    mModels.clear();
}

BroxModel* BroxModelSet::findModel(QString modelName) const
{
    const auto model = std::find_if(mModels.begin(), mModels.end(),
        [&modelName](const BroxModel* each) { return each && each->modelName() == modelName; });
    return model == mModels.end() ? nullptr : *model;
}

BroxModel* BroxModelSet::createModel(QString modelName)
{
    auto* model = new (std::nothrow) BroxModel(modelName);
    if (model) {
        connect(model, &BroxModel::renameApprovalRequest, this,
            &BroxModelSet::broxModel_renameApprovalRequest);
        mModels.append(model);
    }
    return model;
}

void BroxModelSet::removeModel(QString modelName)
{
    if (BroxModel* model = findModel(modelName)) {
        mModels.removeOne(model);
        delete model;
    }
}

void BroxModelSet::broxModel_renameApprovalRequest(QString modelName, bool* renameApproved)
{
    if (!renameApproved) {
        return;
    }
    *renameApproved = false;
    // The trimmed name is judged, but the model stores what the user typed.
    modelName = modelName.trimmed();
    if (modelName.isEmpty() || modelName.length() > maxModelNameLength) {
        return;
    }
    *renameApproved = !findModel(modelName);
}
