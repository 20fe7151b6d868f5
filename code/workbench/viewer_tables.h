// SPDX-License-Identifier: MIT
#ifndef VIEWER_TABLES_H
#define VIEWER_TABLES_H

#include "drill_plan.h"

#include <QSet>
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
    void changeEvent(QEvent* event) override;

private:
    void followPalette();
    bool isShown(int row, const QStringList& words) const;

    QTableWidget* mTable;
    std::function<bool(int)> mIsToCheck;
    QLineEdit* mText;
    QCheckBox* mOnlyToCheck = nullptr;
};

/** What the workbench adds to a viewer's table of tools: marks of what was assumed, and a menu by
 *  which a tool gets another type. Lives as long as the viewer. */
class JobTable : public QObject
{
    Q_OBJECT

public:
    /**
     * @param viewer  becomes the parent
     * @param draft   the tools in the order of the table's rows; lives longer than the viewer
     */
    JobTable(QWidget* viewer, const DrillDraft& draft);

    /** Marks the rows that are to be checked before drilling. */
    void follow(const DrillPlan& plan);

    /** Selects the next row to check below the current one, or the first. */
    void goToNextToCheck();

signals:
    /** The user wants another type for the tool of a row; null: the board's own again. */
    void typeChosen(const QString& layer, const Tool& tool, std::optional<HoleType> type);

private:
    void mark();
    void offerTypes(const QPoint& at);

    const DrillDraft& mDraft;
    QTableWidget* mTable;
    TableFilter* mFilter = nullptr; ///< null for a table of another kind
    QSet<int> mToCheck;
};

} // namespace brox

#endif
