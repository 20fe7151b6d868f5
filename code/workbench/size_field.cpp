// SPDX-License-Identifier: MIT
#include "size_field.h"

#include <QLineEdit>
#include <QRegularExpression>
#include <cmath>

namespace brox {

namespace {

constexpr Size largest = 1000 * sizePerMillimetre;
constexpr double mostRatio = 1000;
constexpr int digits = 4; ///< a tenth of a micron, and about a host size unit in mils

double sizePer(Units units)
{
    return units == Units::Inch ? sizePerMil : sizePerMillimetre;
}

QString numberText(double number)
{
    QString text = QString::number(number, 'f', digits);
    while (text.endsWith('0') && text[text.size() - 3] != '.') {
        text.chop(1);
    }
    return text;
}

} // namespace

SizeField::SizeField(QWidget* parent)
    : QDoubleSpinBox(parent)
{
    setDecimals(digits);
    setKeyboardTracking(false); // the former size is the one before the typing
    setUnits(Units::Metric);
    connect(lineEdit(), &QLineEdit::textChanged, this, &SizeField::showValidity);
    connect(this, &QAbstractSpinBox::editingFinished, this, &SizeField::showValidity);
}

void SizeField::showValidity()
{
    QPalette colours = palette();
    if (!hasAcceptableInput()) {
        colours.setColor(QPalette::Text, Qt::red);
    }
    lineEdit()->setPalette(colours);
}

void SizeField::setRatio()
{
    mIsRatio = true;
    setSuffix(QStringLiteral(" \u00d7"));
    setMaximum(mostRatio);
    setSingleStep(0.5);
}

void SizeField::setUnits(Units units)
{
    if (mIsRatio) {
        return;
    }
    const Size before = size();
    mUnits = units;
    setSuffix(units == Units::Inch ? QStringLiteral(" mil") : QStringLiteral(" mm"));
    setMaximum(largest / sizePer(units));
    setSingleStep(units == Units::Inch ? 0.5 : 0.01);
    setSize(before);
}

void SizeField::setSize(Size size)
{
    setValue(size / sizePer(mUnits));
    mSize = size;
    mShown = value();
}

Size SizeField::size() const
{
    return value() == mShown ? mSize : Size(std::lround(value() * sizePer(mUnits)));
}

QValidator::State SizeField::validate(QString& text, int&) const
{
    QString number = text.trimmed();
    if (number == specialValueText() && !number.isEmpty()) {
        return QValidator::Acceptable;
    }
    const QString unit = suffix().trimmed();
    while (!unit.isEmpty() && number.endsWith(unit)) { // the field's own, behind one that was typed
        number = number.chopped(unit.size()).trimmed();
    }
    static const QRegularExpression form(
        QStringLiteral("^\\s*(\\d*)(?:[.,](\\d{0,%1}))?\\s*$").arg(digits));
    const QRegularExpressionMatch match = form.match(number);
    const bool isSize = match.hasMatch() && match.capturedLength(1) + match.capturedLength(2) > 0
        && valueFromText(number) <= maximum();
    return isSize ? QValidator::Acceptable : QValidator::Intermediate;
}

void SizeField::fixup(QString& text) const
{
    emit refused(text);
}

double SizeField::valueFromText(const QString& text) const
{
    QString number = text;
    number.remove(suffix()).remove(suffix().trimmed()).replace(',', '.');
    return number.trimmed().toDouble();
}

QString SizeField::textFromValue(double value) const
{
    return numberText(value);
}

QString SizeField::shown(Size size, Units units)
{
    return numberText(size / sizePer(units));
}

} // namespace brox
