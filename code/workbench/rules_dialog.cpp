// SPDX-License-Identifier: MIT
#include "rules_dialog.h"

#include "drill_plan.h"
#include "messages.h"
#include "plan_text.h"
#include "ui_rules_dialog.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>

namespace brox {

namespace {

enum Column
{
    TypeColumn,
    FromColumn,
    MinusColumn,
    PlusColumn
};

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

constexpr Size widestOfPlated = sizePerMillimetre; ///< wider ones are hardly meant

/** Fields of limits; one at 0 is none. */
constexpr std::pair<SizeField * Ui::RulesDialog::*, std::optional<Size> CheckLimits::*>
    sizeLimits[] = {{&Ui::RulesDialog::holeToHoleBox, &CheckLimits::holeToHole},
        {&Ui::RulesDialog::holeToEdgeBox, &CheckLimits::holeToEdge},
        {&Ui::RulesDialog::largestDrillBox, &CheckLimits::largestDrill}};
constexpr std::pair<SizeField * Ui::RulesDialog::*, std::optional<double> CheckLimits::*>
    ratioLimits[] = {{&Ui::RulesDialog::shortestSlotBox, &CheckLimits::shortestSlot},
        {&Ui::RulesDialog::aspectRatioBox, &CheckLimits::aspectRatio}};
constexpr std::pair<SizeField * Ui::RulesDialog::*, WindowKind> windowLimits[] = {
    {&Ui::RulesDialog::platedWindowBox, WindowKind::Plated},
    {&Ui::RulesDialog::pressFitWindowBox, WindowKind::PressFit},
    {&Ui::RulesDialog::nonPlatedWindowBox, WindowKind::NonPlated},
    {&Ui::RulesDialog::slotWindowBox, WindowKind::Slot}};

SizeField* fieldIn(const QTableWidget* table, int row, int column)
{
    return static_cast<SizeField*>(table->cellWidget(row, column));
}

QString withUnit(Size size, Units units)
{
    return SizeField::shown(size, units) + (units == Units::Inch ? " mil" : " mm");
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

QStringList doubtsAbout(const ShopRules& rules, Units units)
{
    QStringList doubts;
    for (size_t i = 0; i < rules.tolerances.size(); ++i) {
        const ToleranceRule& rule = rules.tolerances[i];
        const bool hasNext =
            i + 1 < rules.tolerances.size() && rules.tolerances[i + 1].type == rule.type;
        const Size widest = std::max(rule.tolerance.minus, rule.tolerance.plus);
        // The first band has no smallest size: what it is for ends where the next begins.
        const Size band = rule.from > 0 ? rule.from : hasNext ? rules.tolerances[i + 1].from : 0;
        if ((rule.type != HoleType::NonPlated && widest > widestOfPlated)
            || (band > 0 && widest >= band)) {
            doubts << RulesDialog::tr("%1 from %2: -%3/+%4")
                          .arg(spoken(typeWord(rule.type, false)), withUnit(rule.from, units),
                              SizeField::shown(rule.tolerance.minus, units),
                              withUnit(rule.tolerance.plus, units));
        }
    }
    return doubts;
}

RulesDialog::RulesDialog(const ShopRules& rules, Units units, QWidget* parent)
    : QDialog(parent)
    , mUi(std::make_unique<Ui::RulesDialog>())
    , mRules(rules)
{
    mUi->setupUi(this);
    mUi->tolerancesTable->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    connect(mUi->addButton, &QPushButton::clicked, this, [this] { addRow({}); });
    connect(mUi->removeButton, &QPushButton::clicked, this,
        [this] { mUi->tolerancesTable->removeRow(mUi->tolerancesTable->currentRow()); });
    connect(mUi->buttonBox->button(QDialogButtonBox::RestoreDefaults), &QPushButton::clicked, this,
        [this] { show(ShopRules::starter()); });
    connect(mUi->unitsBox, &QComboBox::currentIndexChanged, this,
        [this](int index) { setUnits(index == 1 ? Units::Inch : Units::Metric); });
    for (const auto& [field, limit] : ratioLimits) {
        ((*mUi).*field)->setRatio();
    }
    for (const SizeField* field : findChildren<SizeField*>()) {
        follow(field);
    }
    show(rules);
    mUi->unitsBox->setCurrentIndex(units == Units::Inch ? 1 : 0);
    setUnits(units);
}

RulesDialog::~RulesDialog() = default;

void RulesDialog::setUnits(Units units)
{
    mUnits = units;
    for (SizeField* field : findChildren<SizeField*>()) {
        field->setUnits(units);
    }
    const QString unit = units == Units::Inch ? QStringLiteral(" [mil]") : QStringLiteral(" [mm]");
    mUi->tolerancesTable->setHorizontalHeaderLabels({tr("Type"), tr("From size") + unit,
        tr("Minus tolerance") + unit, tr("Plus tolerance") + unit});
}

void RulesDialog::show(const ShopRules& rules)
{
    mUi->tolerancesTable->setRowCount(0);
    for (const ToleranceRule& rule : rules.tolerances) {
        addRow(rule);
    }
    mUi->viasUpToBox->setSize(rules.viasUpTo);
    for (const auto& [field, limit] : sizeLimits) {
        ((*mUi).*field)->setSize((rules.checks.*limit).value_or(0));
    }
    for (const auto& [field, limit] : ratioLimits) {
        ((*mUi).*field)->setValue((rules.checks.*limit).value_or(0));
    }
    for (const auto& [field, kind] : windowLimits) {
        const auto window = rules.checks.windows.find(kind);
        ((*mUi).*field)->setSize(window == rules.checks.windows.end() ? 0 : window->second);
    }
}

void RulesDialog::addRow(const ToleranceRule& rule)
{
    QTableWidget* table = mUi->tolerancesTable;
    const int row = table->rowCount();
    table->insertRow(row);
    auto* types = new QComboBox;
    for (const HoleType type :
        {HoleType::Plated, HoleType::NonPlated, HoleType::Via, HoleType::PressFit}) {
        types->addItem(spoken(typeWord(type, false)), int(type));
    }
    types->setCurrentIndex(types->findData(int(rule.type)));
    table->setCellWidget(row, TypeColumn, types);
    types->setAccessibleName(tr("Type"));
    const auto addField = [&](int column, Size size, const QString& name) {
        auto* field = new SizeField;
        field->setFrame(false);
        field->setAutoFillBackground(true); // what is selected below does not shine through
        field->setUnits(mUnits);
        field->setSize(size);
        field->setAccessibleName(name);
        follow(field);
        table->setCellWidget(row, column, field);
    };
    addField(FromColumn, rule.from, tr("From size"));
    addField(MinusColumn, rule.tolerance.minus, tr("Minus tolerance"));
    addField(PlusColumn, rule.tolerance.plus, tr("Plus tolerance"));
    table->setCurrentCell(row, TypeColumn);
}

ShopRules RulesDialog::shown() const
{
    const QTableWidget* table = mUi->tolerancesTable;
    ShopRules rules;
    for (int row = 0; row < table->rowCount(); ++row) {
        const auto* types = static_cast<QComboBox*>(table->cellWidget(row, TypeColumn));
        const auto size = [&](int column) { return fieldIn(table, row, column)->size(); };
        rules.tolerances.push_back({HoleType(types->currentData().toInt()), size(FromColumn),
            {size(MinusColumn), size(PlusColumn)}});
    }
    rules.viasUpTo = mUi->viasUpToBox->size();
    rules.sort();
    rules.checks = shownLimits();
    return rules;
}

CheckLimits RulesDialog::shownLimits() const
{
    CheckLimits limits;
    for (const auto& [field, limit] : sizeLimits) {
        if (const Size size = ((*mUi).*field)->size(); size > 0) {
            limits.*limit = size;
        }
    }
    for (const auto& [field, limit] : ratioLimits) {
        if (const double ratio = ((*mUi).*field)->value(); ratio > 0) {
            limits.*limit = ratio;
        }
    }
    for (const auto& [field, kind] : windowLimits) {
        if (const Size size = ((*mUi).*field)->size(); size > 0) {
            limits.windows[kind] = size;
        }
    }
    return limits;
}

/** A field that loses the focus to the button "OK" has its old size back before anyone saw it. */
void RulesDialog::follow(const SizeField* field)
{
    connect(field, &SizeField::refused, this, [this, field](const QString& text) {
        mIsRefused = true;
        const QString former = field->isRatio()
            ? tr("\"%1\" is no number from 0 to 1000; the former number is back.")
            : tr("\"%1\" is no size from 0 to 1000 mm; the former size is back.");
        mUi->errorLabel->setText(former.arg(text));
    });
    connect(field->findChild<QLineEdit*>(), &QLineEdit::textEdited, this, [this] {
        mIsRefused = false;
        mUi->errorLabel->clear();
    });
}

void RulesDialog::accept()
{
    if (mIsRefused) {
        mIsRefused = false;
        return;
    }
    ShopRules rules;
    try {
        rules = shown();
    } catch (const RulesError&) { // all else the fields see to
        mUi->errorLabel->setText(tr("There are two tolerances for one type and size."));
        return;
    }
    const QStringList doubts = doubtsAbout(rules, mUnits);
    if (!doubts.isEmpty()
        && ask(tr("%n tolerance(s) are unusually wide.", "", int(doubts.size())), doubts.join('\n'),
               {tr("Use Them"), tr("Go Back")})
            != 0) {
        return;
    }
    mRules = rules;
    QDialog::accept();
}

} // namespace brox
