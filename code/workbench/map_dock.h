// SPDX-License-Identifier: MIT
#ifndef MAP_DOCK_H
#define MAP_DOCK_H

#include "drill_plan.h"
#include "ui_map_dock.h"

#include <QDockWidget>
#include <QPointer>
#include <QTimer>

class QTableWidget;

namespace brox {

class HostSession;
class StepTabs;

/** The drill map beside the viewer, with its layers and tools to be switched on and off. What was
 *  switched off stays off while the step is the same. */
class MapDock : public QDockWidget
{
    Q_OBJECT

public:
    /** @param session, tabs  outlive the dock; it shows what is made of the step in front */
    MapDock(HostSession& session, const StepTabs& tabs, QWidget* parent);

protected:
    void changeEvent(QEvent* event) override;

private:
    void followStep();
    void showStep(size_t step);
    void showPlan(DrillPlan plan);
    void followViewer(QTableWidget* table);
    void clear(const QString& reason = {});
    void fillTree(const MapScene& scene, const QSet<size_t>& off);
    void followTree(QTreeWidgetItem* item);
    void followTable();
    void tellHole(size_t row, Place place);
    QString rowText(const PlanRow& row) const;
    QString placeText(Size size) const;

    HostSession& mSession;
    const StepTabs& mTabs;
    Ui::MapDock ui;
    QTimer mTimer; ///< many cells change at once
    std::optional<DrillPlan> mPlan; ///< null: nothing is shown
    QString mStep;
    QPointer<QTableWidget> mTable; ///< the viewer's; its rows are the plan's
};

} // namespace brox

#endif
