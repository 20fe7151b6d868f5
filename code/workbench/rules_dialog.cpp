// SPDX-License-Identifier: MIT
#include "rules_dialog.h"

#include "drill_plan.h"
#include "plan_text.h"
#include "ui_rules_dialog.h"

#include <QComboBox>
#include <QDoubleSpinBox>
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

constexpr double largest = 1000; ///< millimetres, as the file of the rules has it
constexpr int decimals = 4; ///< a tenth of a micron

QDoubleSpinBox* sizeBox(Size size)
{
    auto* box = new QDoubleSpinBox;
    box->setDecimals(decimals);
    box->setSingleStep(0.01);
    box->setMaximum(largest);
    box->setFrame(false);
    box->setValue(double(size) / sizePerMillimetre);
    return box;
}

Size sizeIn(const QWidget* box)
{
    return Size(std::lround(static_cast<const QDoubleSpinBox*>(box)->value() * sizePerMillimetre));
}

} // namespace

RulesDialog::RulesDialog(const ShopRules& rules, QWidget* parent)
    : QDialog(parent)
    , mUi(std::make_unique<Ui::RulesDialog>())
    , mRules(rules)
{
    mUi->setupUi(this);
    mUi->tolerancesTable->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    connect(mUi->addButton, &QPushButton::clicked, this, [this] { addRow({}); });
    connect(mUi->removeButton, &QPushButton::clicked, this,
        [this] { mUi->tolerancesTable->removeRow(mUi->tolerancesTable->currentRow()); });
    connect(
        mUi->starterButton, &QPushButton::clicked, this, [this] { show(ShopRules::starter()); });
    show(rules);
}

RulesDialog::~RulesDialog() = default;

void RulesDialog::show(const ShopRules& rules)
{
    mUi->tolerancesTable->setRowCount(0);
    for (const ToleranceRule& rule : rules.tolerances) {
        addRow(rule);
    }
    mUi->viasUpToBox->setValue(double(rules.viasUpTo) / sizePerMillimetre);
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
    table->setCellWidget(row, FromColumn, sizeBox(rule.from));
    table->setCellWidget(row, MinusColumn, sizeBox(rule.tolerance.minus));
    table->setCellWidget(row, PlusColumn, sizeBox(rule.tolerance.plus));
    table->setCurrentCell(row, TypeColumn);
}

ShopRules RulesDialog::shown() const
{
    const QTableWidget* table = mUi->tolerancesTable;
    ShopRules rules;
    for (int row = 0; row < table->rowCount(); ++row) {
        const auto* types = static_cast<QComboBox*>(table->cellWidget(row, TypeColumn));
        rules.tolerances.push_back(
            {HoleType(types->currentData().toInt()), sizeIn(table->cellWidget(row, FromColumn)),
                {sizeIn(table->cellWidget(row, MinusColumn)),
                    sizeIn(table->cellWidget(row, PlusColumn))}});
    }
    rules.viasUpTo = sizeIn(mUi->viasUpToBox);
    rules.sort();
    return rules;
}

void RulesDialog::accept()
{
    try {
        mRules = shown();
        QDialog::accept();
    } catch (const RulesError&) { // all else the boxes see to
        mUi->errorLabel->setText(tr("There are two tolerances for one type and size."));
    }
}

} // namespace brox
