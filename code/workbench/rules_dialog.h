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

/** Edits the rules of the shop. */
class RulesDialog : public QDialog
{
    Q_OBJECT

public:
    explicit RulesDialog(const ShopRules& rules, QWidget* parent = nullptr);
    ~RulesDialog() override;

    /** The rules as they were when the dialog was accepted. */
    const ShopRules& rules() const { return mRules; }

    void accept() override;

private:
    void show(const ShopRules& rules);
    void addRow(const ToleranceRule& rule);
    ShopRules shown() const;

    std::unique_ptr<Ui::RulesDialog> mUi;
    ShopRules mRules;
};

} // namespace brox

#endif
