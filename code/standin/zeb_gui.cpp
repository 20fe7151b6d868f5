// SPDX-License-Identifier: MIT
#include "zeb_gui.h"

#include "operation.h"
#include "vex_data.h"

#include <QDoubleValidator>
#include <QLineEdit>
#include <climits>
#include <cmath>

using namespace brox;

namespace {

const Operation systemFolderGet("ZExtFileDialog::getSystemFolder");

QString systemDir; ///< null when there is none
const AtReset reset([] { systemDir = {}; });

constexpr int mostDecimals = 6;

/** Numbers with a decimal point whatever the locale, for which a comma may be typed.
 *
 * Nothing is swallowed while it is typed: "1e3" without its letter would be another number. What is
 * no number, or lies beyond the range, stays in red, and is refused when it is entered.
 */
class NumberValidator : public QDoubleValidator
{
public:
    /** @param old  what stands in the cell, and stands there again after a refusal */
    NumberValidator(double bottom, double top, int decimals, const QString& old, QObject* parent)
        : QDoubleValidator(bottom, top, decimals, parent)
        , mOld(old)
    {
        setNotation(StandardNotation);
        QLocale plain = QLocale::c();
        plain.setNumberOptions(QLocale::RejectGroupSeparator);
        setLocale(plain);
    }

    State validate(QString& input, int& position) const override
    {
        if (input.isEmpty() || input == mOld) {
            return Acceptable;
        }
        QString number = input;
        number.replace(',', '.');
        const bool isNumber = QDoubleValidator::validate(number, position) == Acceptable;
        return isNumber ? Acceptable : Intermediate;
    }

    /** A refusal: the view asks for this when the text is entered as it is. */
    void fixup(QString& input) const override { input = mOld; }

private:
    QString mOld;
};

/** Host sizes to the number's unit; a step without units counts in microns. */
double sizesPerUnitOfStep(int stepId)
{
    const Uncounted quiet;
    int number = -1;
    int units = 1;
    if (vex__data_stpid2vex_num(stepId, &number) == 0 && number >= 0) {
        vex__data_get_units(number, &units);
    }
    return sizesPerUnit(units);
}

/** The shortest text that means the same host size. */
QString sizeText(double number, double perUnit)
{
    for (int decimals = 0; decimals < mostDecimals; ++decimals) {
        const QString text = QString::fromStdString(decimalText(number, decimals));
        if (std::round(text.toDouble() * perUnit) == std::round(number * perUnit)) {
            return text;
        }
    }
    return QString::fromStdString(decimalText(number, mostDecimals));
}

} // namespace

// A maximum of 0 stands for what a host size can hold in the units of the step.
DoubleDelegate::DoubleDelegate(QObject* parent)
    : QStyledItemDelegate(parent)
    , mDecimals(mostDecimals)
    , mMaximum(0.0)
{ }

DoubleDelegate::DoubleDelegate(QObject* parent, int decimals, double maximum)
    : QStyledItemDelegate(parent)
    , mDecimals(decimals)
    , mMaximum(maximum)
{ }

DoubleDelegate::~DoubleDelegate() = default;

void DoubleDelegate::setStepId(int stepId)
{
    mStepId = stepId;
}

QWidget* DoubleDelegate::createEditor(
    QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const
{
    // Amounts may shrink a hole, so step sizes may be negative; plain numbers are bit sizes.
    const bool plain = mMaximum > 0.0;
    const double top = plain ? mMaximum : INT_MAX / sizesPerUnitOfStep(mStepId);
    auto* editor = new QLineEdit(parent);
    editor->setFrame(false);
    editor->setValidator(new NumberValidator(plain ? 0.0 : -top, top, mDecimals,
        displayText(index.data(Qt::EditRole), QLocale::c()), editor));
    QObject::connect(editor, &QLineEdit::textChanged, editor, [editor] {
        QPalette colours = editor->parentWidget()->palette();
        if (!editor->hasAcceptableInput()) {
            colours.setColor(QPalette::Text, Qt::red);
        }
        editor->setPalette(colours);
    });
    return editor;
}

void DoubleDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    if (auto* line = qobject_cast<QLineEdit*>(editor)) {
        line->setText(displayText(index.data(Qt::EditRole), QLocale::c()));
    }
}

void DoubleDelegate::setModelData(
    QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    const auto* line = qobject_cast<QLineEdit*>(editor);
    // A number that was only looked at must not take on the rounding of its text.
    if (!line || line->text() == displayText(index.data(Qt::EditRole), QLocale::c())) {
        return;
    }
    if (line->text().isEmpty()) {
        model->setData(index, QVariant(), Qt::EditRole);
    } else if (line->hasAcceptableInput()) {
        model->setData(index, line->text().replace(',', '.').toDouble(), Qt::EditRole);
    }
}

QString DoubleDelegate::displayText(const QVariant& value, const QLocale& locale) const
{
    const bool isText = value.userType() == QMetaType::QString;
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    // In a table of step sizes numbers are doubles, and a text such as "0.50" is a designation.
    if (!isNumber || !std::isfinite(number) || (isText && mMaximum <= 0.0)) {
        return QStyledItemDelegate::displayText(value, locale);
    }
    return mMaximum > 0.0 ? QString::fromStdString(decimalText(number, mDecimals))
                          : sizeText(number, sizesPerUnitOfStep(mStepId));
}

ZExtFileDialog::ZExtFileDialog(QWidget* parent, const QString& name, bool)
    : QFileDialog(parent, name)
{
    setOption(DontUseNativeDialog);
}

ZExtFileDialog::~ZExtFileDialog() = default;

bool ZExtFileDialog::getSystemFolder(QString& folder)
{
    if (systemFolderGet.enter() != 0 || systemDir.isNull()) {
        return false;
    }
    folder = systemDir;
    return true;
}

void standin_set_system_dir(const char* path)
{
    systemDir = path ? QString::fromUtf8(path) : QString();
}
