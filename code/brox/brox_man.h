// SPDX-License-Identifier: MIT
#ifndef BROX_MAN_H
#define BROX_MAN_H

#include <QList>
#include <QMetaType>
#include <QObject>
#include <QString>

/** Names the drill types. The enumerator names are what the user reads and what files hold. */
class DrillTypeManager : public QObject
{
    Q_OBJECT

public:
    /** What kind of hole a drill tool makes. Tables have a row for each from 0 on. */
    enum DrillType : int
    {
        Undefined = -1,
        Pth,
        Via,
        Laser,
        Photo,
        PressFit,
        NPth
    };
    Q_ENUM(DrillType)

    /** The one instance; it lives until the process ends. */
    static DrillTypeManager* instance();

    ~DrillTypeManager() override = default;

    /** The enumerator's name; empty for a value outside the enumeration. */
    QString drillTypeName(DrillType drillType) const;

    /** The number of real drill types: Undefined does not count. */
    int drillTypeCount() const;

    /** The drill type of a name, case included; Undefined for a name that is none. */
    DrillType drillTypeFromName(QString name) const;

private:
    DrillTypeManager() = default;
};

Q_DECLARE_METATYPE(DrillTypeManager::DrillType)

/** The amounts of one drill type in one model, in host size units. */
struct BroxHoleType
{
    explicit BroxHoleType(DrillTypeManager::DrillType drillType)
        : mDrillType(drillType)
    { }

    DrillTypeManager::DrillType drillType() const { return mDrillType; }

    /** Sets each value whose text is an integer; the others keep what they hold. */
    void setAmounts(const QString& amount, const QString& oversized, const QString& osAmount);
    void setAmounts(int amount, int oversized, int osAmount);
    void getAmounts(
        DrillTypeManager::DrillType* drillType, int* amount, int* oversized, int* osAmount) const;

    DrillTypeManager::DrillType mDrillType;
    int mAmount = 0;
    int mOversized = 0; ///< 0 or less: there is no threshold
    int mOsAmount = 0; ///< for holes at or above the threshold
};

/** A named drill tool model: by how much holes are enlarged, and how drill sizes follow. */
class BroxModel : public QObject
{
    Q_OBJECT

public:
    explicit BroxModel(QString modelName, QObject* parent = nullptr);
    ~BroxModel() override;

    QString modelName() const { return mModelName; }

    /** Asks for approval of a new name; gives the name that the model bears afterwards. */
    QString rename(QString modelName);

    /** Records stand in the order in which their drill types were first set. */
    int holeTypeCount() const { return int(mHoleTypes.size()); }
    BroxHoleType* holeType(int index) const { return mHoleTypes.at(index); }

    /** Writes a type's amounts as a file has them, or as the user edited them. */
    void setAmounts(QString drillTypeName, QString amount, QString oversized, QString osAmount);
    void setAmounts(DrillTypeManager::DrillType drillType, int amount, int oversized, int osAmount);

    QString dhsFormula() const { return mDhsFormula; }
    void setDhsFormula(QString dhsFormula) { mDhsFormula = dhsFormula; }

    bool useBitFile() const { return mUseBitFile; }
    void setUseBitFile(bool useBitFile) { mUseBitFile = useBitFile; }

    /** The amount that applies to a hole; false, and nothing written, if its type has none. */
    bool amountForSize(DrillTypeManager::DrillType drillType, int fhs, int* amount) const;

signals:
    /** The answer is read straight after the emission: connect directly. */
    void renameApprovalRequest(QString modelName, bool* renameApproved);

private:
    BroxHoleType* findHoleType(DrillTypeManager::DrillType drillType) const;
    BroxHoleType* ensureHoleType(DrillTypeManager::DrillType drillType);

    QString mModelName;
    QList<BroxHoleType*> mHoleTypes;
    QString mDhsFormula;
    bool mUseBitFile = true;
};

/** The models of one viewer, in the order of creation, and the authority on their names. */
class BroxModelSet : public QObject
{
    Q_OBJECT

public:
    explicit BroxModelSet(QObject* parent = nullptr)
        : QObject(parent)
    { }
    ~BroxModelSet() override;

    void clear();
    int modelCount() const { return int(mModels.size()); }
    BroxModel* modelAt(int index) const { return mModels.at(index); }

    /** The first model with that name, case included, or null. */
    BroxModel* findModel(QString modelName) const;

    /** Appends a model; a name that exists is the caller's business. Null if out of memory. */
    BroxModel* createModel(QString modelName);

    /** Deletes the first model with that name. */
    void removeModel(QString modelName);

private slots:
    void broxModel_renameApprovalRequest(QString modelName, bool* renameApproved);

private:
    QList<BroxModel*> mModels;
};

#endif
