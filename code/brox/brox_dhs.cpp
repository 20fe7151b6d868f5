// SPDX-License-Identifier: MIT
#include "brox_dhs.h"

#include "brox_bits_table.h"
#include "brox_editors.h"
#include "brox_looks.h"
#include "brox_man.h"
#include "brox_report.h"
#include "brox_size.h"
#include "zeb_utils.h"

#include <QKeyEvent>
#include <QRegularExpression>
#include <QStringConverter>
#include <QVarLengthArray>

#include <algorithm>
#include <charconv>
#include <limits>

namespace {

constexpr BroxSource source("brox_dhs");

/** (maxTol - minTol) / 2, cut toward zero; worked out in 64 bits, where it cannot overflow. */
int tolMedian(int minTol, int maxTol)
{
    return int((qint64(maxTol) - minTol) / 2);
}

/** What can be no part of a variable's name, and so stands between two of them. */
const QRegularExpression& notOfName()
{
    static const QRegularExpression expression("[^A-Z_]");
    return expression;
}

/** A text for the host in its 8-bit encoding, put together piece by piece.
 *
 * Strings become the bytes of QString::toLocal8Bit. These texts are made for each hole of a job,
 * so one of usual length lies on the stack.
 */
class LocalText
{
public:
    template <std::size_t Size>
    LocalText& operator<<(const char (&literal)[Size])
    {
        mChars.append(literal, Size - 1);
        return *this;
    }

    LocalText& operator<<(int number)
    {
        char digits[std::numeric_limits<int>::digits10 + 2]; // one more digit, and the sign
        const char* end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
        mChars.append(digits, end - digits);
        return *this;
    }

    LocalText& operator<<(const QString& text)
    {
        QStringEncoder encoder(QStringEncoder::System, QStringEncoder::Flag::Stateless);
        const auto size = mChars.size();
        mChars.resize(size + encoder.requiredSpace(text.size()));
        mChars.resize(encoder.appendToBuffer(mChars.data() + size, text) - mChars.data());
        return *this;
    }

    /** Valid until the text changes. */
    const char* data()
    {
        mChars.append('\0');
        mChars.removeLast();
        return mChars.constData();
    }

private:
    QVarLengthArray<char, 512> mChars;
};

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
    *result = sizeFrom(value);
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
    command(this, [this] {
        if (!mBitsTable) {
            mBitsTable = new BroxBitsTable(this, {});
            mBitsTable->setStepId(mStepId);
        }
        mBitsTable->show();
        // A window that is open already may lie behind the host's.
        mBitsTable->raise();
        mBitsTable->activateWindow();
    });
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
    static const QRegularExpression notOfFormula("[^A-Z_0-9()+\\-\\*/]");
    static const QString operators("(+-*/");

    if (formula.isEmpty()) {
        return false;
    }
    const QString copy = formula.simplified().remove(' ');
    const QStringList names = copy.split(notOfName(), Qt::SkipEmptyParts);
    const bool namesAreKnown = std::all_of(names.begin(), names.end(),
        [this](const QString& name) { return mVariables.contains(name); });
    return namesAreKnown && (copy.isEmpty() || !operators.contains(copy.back()))
        && !copy.contains(notOfFormula) && copy.count('(') == copy.count(')');
}

/** Completes the name that ends at the cursor; of two names that fit, the first is offered. */
void BroxDhsFormula::completeVariable(QString& text, int cursorPos)
{
    if (!mCompletionEnabled) {
        return;
    }
    const QString token = text.left(cursorPos).section(notOfName(), -1);
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
