// SPDX-License-Identifier: MIT
#ifndef BROX_DHS_H
#define BROX_DHS_H

#include "ui_brox_dhs.h"

#include <QStringList>
#include <QWidget>

class BroxBitsTable;
class BroxModel;

/** The strip in which the Drill Hole Size formula is typed, and the formula language itself.
 *
 * The text that is evaluated is the text of the line edit. All sizes are in host size units.
 */
class BroxDhsFormula : public QWidget
{
    Q_OBJECT

public:
    explicit BroxDhsFormula(QWidget* parent = nullptr, Qt::WindowFlags f = {});
    ~BroxDhsFormula() override = default;

    void setStepId(int stepId);

    /** Shows the model's formula and judges it; emits nothing. */
    void setDhsFormula(BroxModel* model);
    void setUseBitFile(BroxModel* model);

    /** Evaluates the formula that stands in the line edit.
     *
     * @param result   the value, its fraction cut off; on failure what the calculator left
     * @param success  false if the line edit is empty or the calculator refused the formula
     */
    void calculateDhs(
        int amount, int fhs, int minTol, int maxTol, int* result, bool* success) const;

    /** Looks for the bit that serves a drill hole size; without useBitFile there is none. */
    void findDrillBit(int dhs, int minTol, int maxTol, QString* drillDes, int* bitSize,
        bool useBitFile, bool* found, bool* outOfTolRange, bool* exactMatch) const;

    /** Notes whether the last key allows that a name is completed. */
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /** The user has typed a formula that passed the check. */
    void dhsFormulaChanged(QString dhsFormula);
    void dhsFormulaEditingFinished();
    void useBitFileToggled(bool useBitFile);

private slots:
    void on_dhsLineEdit_editingFinished();
    void on_dhsLineEdit_textEdited(QString text);
    void on_useBitFileCheckBox_stateChanged(int state);
    void on_openBitFileToolButton_clicked(bool checked);

private:
    void checkFormula(const QString& formula, bool* isValid) const;
    void completeVariable(QString& text, int cursorPos);
    void showFormulaValidity(bool valid);

    Ui::BroxDhsFormula ui;
    int mStepId = -1;
    QStringList mVariables;
    BroxBitsTable* mBitsTable = nullptr;
    bool mCompletionEnabled = false;
};

#endif
