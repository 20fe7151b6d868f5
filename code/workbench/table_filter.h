// SPDX-License-Identifier: MIT
#ifndef TABLE_FILTER_H
#define TABLE_FILTER_H

#include <QWidget>
#include <functional>

class QCheckBox;
class QLineEdit;
class QTableWidget;

namespace brox {

/** A line above a table that hides the rows in which no cell holds a text. */
class TableFilter : public QWidget
{
    Q_OBJECT

public:
    /** Puts itself above a table, into the layout that the table is in.
     *
     * @param table      becomes a sibling
     * @param isToCheck  which rows the box "Only rows to check" leaves; none: there is no such box
     */
    explicit TableFilter(QTableWidget* table, std::function<bool(int row)> isToCheck = {});

    /** Hides and shows rows anew, after their content has changed. */
    void apply();

    /** Takes the filter away, so that a row can be seen. */
    void clear();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isShown(int row, const QStringList& words) const;

    QTableWidget* mTable;
    std::function<bool(int)> mIsToCheck;
    QLineEdit* mText;
    QCheckBox* mOnlyToCheck = nullptr;
};

} // namespace brox

#endif
