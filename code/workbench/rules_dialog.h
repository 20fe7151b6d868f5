// SPDX-License-Identifier: MIT
#ifndef RULES_DIALOG_H
#define RULES_DIALOG_H

#include "shop_rules.h"

#include <QDialog>
#include <QDoubleSpinBox>
#include <memory>

namespace brox {

namespace Ui {
class RulesDialog;
}

/** A field for a size. Point and comma are the decimal sign whatever the locale, and there are no
 *  group separators: a text that could be read in two ways is refused. Nothing is swallowed while
 *  it is typed; what is no size stands in red until it is entered, and then the old size is back.
 */
class SizeField : public QDoubleSpinBox
{
    Q_OBJECT

public:
    explicit SizeField(QWidget* parent = nullptr);

    /** In millimetres or mils; the size stays the same. */
    void setUnits(Units units);

    /** Makes it a field for a plain number, "value" to Qt, such as a ratio. */
    void setRatio();
    bool isRatio() const { return mIsRatio; }

    /** A size in host size units, from 0 to 1000 mm. What the field only shows is given back as it
     *  was set, however many digits are shown. */
    void setSize(Size size);
    Size size() const;

    /** A size as a field shows it, without the unit. */
    static QString shown(Size size, Units units);

    QValidator::State validate(QString& text, int& position) const override;
    double valueFromText(const QString& text) const override;
    QString textFromValue(double value) const override;
    void fixup(QString& text) const override;

signals:
    /** What was entered is no size. */
    void refused(const QString& text) const;

private:
    void showValidity();

    bool mIsRatio = false;
    Units mUnits = Units::Metric;
    Size mSize = 0;
    double mShown = 0; ///< the value that stands for mSize
};

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
