// SPDX-License-Identifier: MIT
#ifndef JOB_TABLE_H
#define JOB_TABLE_H

#include "drill_plan.h"

#include <QSet>
#include <QWidget>

class QTableWidget;

namespace brox {

class TableFilter;

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
