// SPDX-License-Identifier: MIT
#include "brox_dhs.h"

#include "brox_bits_table.h"
#include "brox_local_text.h"
#include "brox_looks.h"
#include "brox_man.h"
#include "brox_report.h"
#include "zeb_utils.h"

#include <QKeyEvent>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr BroxSource source("brox_dhs");

/** (maxTol - minTol) / 2, cut toward zero; worked out in 64 bits, where it cannot overflow. */
int tolMedian(int minTol, int maxTol)
{
    return int((qint64(maxTol) - minTol) / 2);
}

/** A calculator's value as a size, cut toward zero.
 *
 * What is no number is 0, and what no size can hold is the nearest size there is: such a value
 * stands out in a table, which a wrapped one might not.
 */
int truncatedSize(double value)
{
    if (std::isnan(value)) {
        return 0;
    }
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return int(std::clamp(value, lowest, highest));
}

} // namespace

BroxDhsFormula::BroxDhsFormula(QWidget* parent, Qt::WindowFlags f)
    : QWidget(parent, f)
{
    ui.setupUi(this);
    fitCaption(ui.label, ui.label->maximumWidth());
    mBitsTable = new BroxBitsTable(this, {});
    mVariables = {"AMOUNT", "FHS", "MIN_TOL", "MAX_TOL", "TOL_MEDIAN"};
    ui.dhsLineEdit->installEventFilter(this);
}

BroxDhsFormula::~BroxDhsFormula() = default;

void BroxDhsFormula::setStepId(int stepId)
{
    mStepId = stepId;
    mBitsTable->setStepId(stepId);
}

void BroxDhsFormula::setDhsFormula(BroxModel* model)
{
    ui.dhsLineEdit->setText(model->dhsFormula());
    bool isValid = false;
    checkFormula(ui.dhsLineEdit->text().toUpper(), &isValid);
    showFormulaValidity(isValid);
}

void BroxDhsFormula::setUseBitFile(BroxModel* model)
{
    ui.useBitFileCheckBox->setCheckState(model->useBitFile() ? Qt::Checked : Qt::Unchecked);
}

void BroxDhsFormula::calculateDhs(
    int amount, int fhs, int minTol, int maxTol, int* result, bool* success) const
{
    if (!source.checkPointers({{result, "result"}, {success, "success"}})) {
        return;
    }
    *result = 0;
    *success = false;

    const QString formula = ui.dhsLineEdit->text();
    if (formula.isEmpty()) {
        return;
    }
    LocalText text;
    text << "AMOUNT=" << amount << "; FHS=" << fhs << "; MIN_TOL=" << minTol
         << "; MAX_TOL=" << maxTol << "; TOL_MEDIAN=" << tolMedian(minTol, maxTol) << "; "
         << formula;
    double value = 0.0;
    *success = zeb__bc_act(text.data(), true, 0, &value) == 0;
    *result = truncatedSize(value);
}

void BroxDhsFormula::findDrillBit(int dhs, int minTol, int maxTol, QString* drillDes, int* bitSize,
    bool useBitFile, bool* found, bool* outOfTolRange, bool* exactMatch) const
{
    if (!source.checkPointer(bitSize, "bitSize")
        || !source.checkPointers(
            {{found, "found"}, {outOfTolRange, "outOfTolRange"}, {exactMatch, "exactMatch"}})) {
        return;
    }
    *found = false;
    *outOfTolRange = false;
    *exactMatch = false;
    if (useBitFile && mBitsTable) {
        mBitsTable->findDrillBit(
            dhs, minTol, maxTol, drillDes, bitSize, found, outOfTolRange, exactMatch);
    }
}

bool BroxDhsFormula::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == ui.dhsLineEdit && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        mCompletionEnabled = key != Qt::Key_Backspace && key != Qt::Key_Delete;
    }
    return false;
}

void BroxDhsFormula::on_dhsLineEdit_editingFinished()
{
    emit dhsFormulaEditingFinished();
}

void BroxDhsFormula::on_dhsLineEdit_textEdited(QString text)
{
    const int cursorPos = ui.dhsLineEdit->cursorPosition();
    text = text.toUpper();
    ui.dhsLineEdit->setText(text);
    ui.dhsLineEdit->setCursorPosition(cursorPos);
    completeVariable(text, cursorPos);

    bool isValid = false;
    checkFormula(text, &isValid);
    showFormulaValidity(isValid);
    if (isValid) {
        emit dhsFormulaChanged(text);
    }
}

void BroxDhsFormula::on_useBitFileCheckBox_stateChanged(int state)
{
    emit useBitFileToggled(state == Qt::Checked);
}

void BroxDhsFormula::on_openBitFileToolButton_clicked(bool)
{
    if (!mBitsTable) {
        mBitsTable = new BroxBitsTable(this, {});
        mBitsTable->setStepId(mStepId);
    }
    mBitsTable->show();
    // A window that is open already may lie behind the host's.
    mBitsTable->raise();
    mBitsTable->activateWindow();
}

void BroxDhsFormula::checkFormula(const QString& formula, bool* isValid) const
{
    if (!source.checkPointer(isValid, "isValid")) {
        return;
    }
    *isValid = isAdmittedText(formula)
        && zeb__bc_act(formula.toLocal8Bit().constData(), true, 0, nullptr) == 0;
}

/** The rules that a text must meet before the calculator judges its syntax. */
bool BroxDhsFormula::isAdmittedText(const QString& formula) const
{
    static const QRegularExpression notOfName("[^A-Z_]");
    static const QRegularExpression notOfFormula("[^A-Z_0-9()+\\-\\*/]");
    static const QString operators("(+-*/");

    if (formula.isEmpty()) {
        return false;
    }
    const QString copy = formula.simplified().remove(' ');
    const QStringList names = copy.split(notOfName, Qt::SkipEmptyParts);
    const bool namesAreKnown = std::all_of(names.begin(), names.end(),
        [this](const QString& name) { return mVariables.contains(name); });
    return namesAreKnown && (copy.isEmpty() || !operators.contains(copy.back()))
        && !copy.contains(notOfFormula) && copy.count('(') == copy.count(')');
}

/** Completes the name that ends at the cursor; of two names that fit, the first is offered. */
void BroxDhsFormula::completeVariable(QString& text, int cursorPos)
{
    static const QRegularExpression notOfName("[^A-Z_]");

    if (!mCompletionEnabled) {
        return;
    }
    const QString token = text.left(cursorPos).section(notOfName, -1);
    if (token.isEmpty()) {
        return;
    }
    ui.dhsLineEdit->deselect();

    QStringList hits;
    for (const QString& variable : mVariables) {
        if (variable.startsWith(token)) {
            hits.append(variable);
        }
    }
    if (hits.isEmpty()) {
        return;
    }
    const QString& name = hits.first();
    const int start = cursorPos - int(token.length());
    text.replace(start, token.length(), name);
    ui.dhsLineEdit->setText(text);
    ui.dhsLineEdit->setCursorPosition(start + int(name.length()));
    if (hits.size() > 1) {
        // The next key replaces what was guessed.
        ui.dhsLineEdit->setSelection(cursorPos, int(name.length()) - 1);
    }
}

void BroxDhsFormula::showFormulaValidity(bool valid)
{
    QPalette palette = ui.dhsLineEdit->palette();
    palette.setColor(QPalette::Text, textColor(ui.dhsLineEdit, valid));
    ui.dhsLineEdit->setPalette(palette);
}
