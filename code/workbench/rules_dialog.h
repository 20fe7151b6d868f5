// SPDX-License-Identifier: MIT
#ifndef RULES_DIALOG_H
#define RULES_DIALOG_H

#include "shop_rules.h"

#include <QDialog>
#include <memory>

namespace brox {

namespace Ui {
class RulesDialog;
}

class SizeField;

/** Edits the rules of the shop. */
class RulesDialog : public QDialog
{
    Q_OBJECT

public:
    /** @param units  in which sizes are shown first */
    explicit RulesDialog(
        const ShopRules& rules, Units units = Units::Metric, QWidget* parent = nullptr);
    ~RulesDialog() override;

    /** The rules as they were when the dialog was accepted. */
    const ShopRules& rules() const { return mRules; }

    /** Asks first about tolerances that can hardly be meant. */
    void accept() override;

private:
    void setUnits(Units units);
    void show(const ShopRules& rules);
    void addRow(const ToleranceRule& rule);
    ShopRules shown() const;
    CheckLimits shownLimits() const;
    void follow(const SizeField* field);

    std::unique_ptr<Ui::RulesDialog> mUi;
    ShopRules mRules;
    Units mUnits = Units::Metric;
    bool mIsRefused = false; ///< what was typed last is no size, and the user is to see it
};

/** Tolerances that look like a slip of the decimal sign, a line each: of a plated hole above 1 mm,
 *  or as large as the sizes that it is for. */
QStringList doubtsAbout(const ShopRules& rules, Units units);

} // namespace brox

#endif
