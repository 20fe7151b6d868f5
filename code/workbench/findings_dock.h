// SPDX-License-Identifier: MIT
#ifndef FINDINGS_DOCK_H
#define FINDINGS_DOCK_H

#include "findings.h"
#include "ui_findings_dock.h"

#include <QDockWidget>
#include <QTimer>

namespace brox {

class LivePlan;

/** What the checks find in the plan of the step in front, and what differs in the board that it is
 *  compared with. */
class FindingsDock : public QDockWidget
{
    Q_OBJECT

public:
    /** @param plan  outlives the dock */
    FindingsDock(LivePlan& plan, QWidget* parent);

signals:
    /** The findings of a plan are known, or it has gone.
     *
     * @param numbers  "2 findings (1 hard)" or the like; with a comparison what that comes to
     * @param places   of the findings
     */
    void found(const QString& numbers, const std::vector<Place>& places);

    /** The user wants to see the place of a finding. */
    void chosen(Place place);

private:
    void check();
    void fill(const DrillPlan& plan, const CheckFindings& findings);
    void addDifferences(const DrillPlan& plan);
    void addFinding(const DrillPlan& plan, const CheckFinding& finding, const QString& comment);

    QTreeWidgetItem* addRow(const QStringList& texts, const std::vector<Place>& places);

    LivePlan& mPlan;
    Ui::FindingsDock ui;
    QTimer mTimer; ///< edits follow each other, and checks of many holes take a moment
};

} // namespace brox

#endif
