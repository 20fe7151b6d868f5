// SPDX-License-Identifier: MIT
#ifndef ZEB_GUI_H
#define ZEB_GUI_H

/** Host library zeb_gui: widgets that all of the host's windows share. */

#include <QFileDialog>
#include <QString>
#include <QStyledItemDelegate>

/** Edits and shows the numbers of a table.
 *
 * A cell's Qt::DisplayRole holds the number as a double; an emptied editor empties the cell.
 */
class Q_DECL_EXPORT DoubleDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /** Numbers are mils or microns, by the units of the step that setStepId names. */
    explicit DoubleDelegate(QObject* parent = nullptr);

    /** Plain numbers.
     *
     * @param decimals  most decimals that are shown and accepted
     * @param maximum   highest number that is accepted
     */
    DoubleDelegate(QObject* parent, int decimals, double maximum);

    ~DoubleDelegate() override;

    /** @param stepId  the step whose units apply */
    void setStepId(int stepId);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(
        QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    QString displayText(const QVariant& value, const QLocale& locale) const override;

private:
    int mStepId = -1;
    int mDecimals;
    double mMaximum;
};

/** The host's file dialog, made on the stack for one dialog. */
class Q_DECL_EXPORT ZExtFileDialog : public QFileDialog
{
    Q_OBJECT

public:
    /** @param name  plain, untranslated name of what is chosen
     *  @param flag  always false
     */
    ZExtFileDialog(QWidget* parent, const QString& name, bool flag);

    ~ZExtFileDialog() override;

    /** @return true when folder now holds a host folder, below which modules have their own */
    bool getSystemFolder(QString& folder);
};

#endif
