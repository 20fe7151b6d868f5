// SPDX-License-Identifier: MIT
#include "brox_dhs.h"

#include "brox_bits_table.h"
#include "brox_looks.h"
#include "brox_man.h"
#include "brox_report.h"
#include "zeb_utils.h"

#include <QKeyEvent>
#include <QRegularExpression>

namespace {

constexpr BroxSource source("brox_dhs");

const QRegularExpression notOfName("[^A-Z_]"); // and so stands between two names
const QRegularExpression notOfFormula("[^A-Z_0-9()+\\-\\*/]");

} // namespace

BroxDhsFormula::BroxDhsFormula(QWidget* parent, Qt::WindowFlags f)
    : QWidget(parent, f)
{
    ui.setupUi(this);
    mBitsTable = new BroxBitsTable(this, {});
    mVariables = {"AMOUNT", "FHS", "MIN_TOL", "MAX_TOL", "TOL_MEDIAN"};
    ui.dhsLineEdit->installEventFilter(this);
}

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
    if (!source.check(BroxSource::areValid({result, success}),
            "((ullong)(result) > 1000) && ((ullong)(success) > 1000)")) {
        return;
    }
    *result = 0;
    *success = false;

    const QString formula = ui.dhsLineEdit->text();
    if (formula.isEmpty()) {
        return;
    }
    const int tolMedian = int((qint64(maxTol) - minTol) / 2); // the difference may need 33 bits
    const QString text =
        QStringLiteral("AMOUNT=%1; FHS=%2; MIN_TOL=%3; MAX_TOL=%4; TOL_MEDIAN=%5; %6")
            .arg(amount)
            .arg(fhs)
            .arg(minTol)
            .arg(maxTol)
            .arg(tolMedian)
            .arg(formula);
    double value = 0.0;
    *success = zeb__bc_act(text.toLocal8Bit().constData(), true, 0, &value) == 0;
    *result = sizeFrom(value);
}

void BroxDhsFormula::findDrillBit(int dhs, int minTol, int maxTol, QString* drillDes, int* bitSize,
    bool useBitFile, bool* found, bool* outOfTolRange, bool* exactMatch) const
{
    if (!source.checkPointer(bitSize, "bitSize")
        || !source.check(BroxSource::areValid({found, outOfTolRange, exactMatch}),
            "((ullong)(found) > 1000) && ((ullong)(outOfTolRange) > 1000) && "
            "((ullong)(exactMatch) > 1000)")) {
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
    }
    mBitsTable->show();
}

void BroxDhsFormula::checkFormula(const QString& formula, bool* isValid) const
{
    if (!source.checkPointer(isValid, "isValid")) {
        return;
    }
    *isValid = false;
    if (formula.isEmpty()) {
        return;
    }
    const QString copy = formula.simplified().remove(' ');
    for (const QString& name : copy.split(notOfName)) {
        if (!name.isEmpty() && !mVariables.contains(name)) {
            return;
        }
    }
    const bool endsOpen = !copy.isEmpty() && QString("(+-*/").contains(copy.back());
    if (endsOpen || copy.contains(notOfFormula) || copy.count('(') != copy.count(')')) {
        return;
    }
    *isValid = zeb__bc_act(formula.toLocal8Bit().constData(), true, 0, nullptr) == 0;
}

/** Completes the name that ends at the cursor; of two names that fit, the first is offered. */
void BroxDhsFormula::completeVariable(QString& text, int cursorPos)
{
    if (!mCompletionEnabled) {
        return;
    }
    const QString token = text.left(cursorPos).section(notOfName, -1);
    if (token.isEmpty()) {
        return;
    }
    ui.dhsLineEdit->deselect();

    const QStringList hits = mVariables.filter(QRegularExpression('^' + token));
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
