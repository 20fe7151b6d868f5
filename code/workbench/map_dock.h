// SPDX-License-Identifier: MIT
#ifndef MAP_DOCK_H
#define MAP_DOCK_H

#include "drill_plan.h"
#include "ui_map_dock.h"

#include <QDockWidget>
#include <QPointer>

class QTableWidget;

namespace brox {

class HostSession;
class LivePlan;

/** The drill map beside the viewer, with its layers and tools to be switched on and off. What was
 *  switched off stays off while the step is the same. */
class MapDock : public QDockWidget
{
    Q_OBJECT

public:
    /** @param session, plan  outlive the dock; it shows what is made of the step in front */
    MapDock(HostSession& session, LivePlan& plan, QWidget* parent);

    /** Rings places of the step in front. */
    void ring(std::vector<Place> places) { ui.mapWidget->setRings(std::move(places)); }

    /** Shows the map, and a place in its middle. */
    void showPlace(Place place);

signals:
    /** The user says whether the sizes of a layer's file are those of drills. */
    void sizesChosen(const QString& layer, bool areDrillSizes);

protected:
    void changeEvent(QEvent* event) override;

private:
    void followPlan();
    void showPlan(DrillPlan plan);
    void followViewer(QTableWidget* table);
    void clear(const QString& reason = {});
    void fillTree(const MapScene& scene, const QSet<size_t>& off);
    void followTree(QTreeWidgetItem* item);
    void selectRow(int row);
    void offerSizes(const QPoint& at);
    void followTable();
    void describeHole(size_t row, Place place);
    QString rowText(const PlanRow& row) const;
    QString placeText(Size size) const;

    HostSession& mSession;
    LivePlan& mLive;
    Ui::MapDock ui;
    std::optional<DrillPlan> mPlan; ///< null: nothing is shown
    QPointer<QTableWidget> mTable; ///< the viewer's; its rows are the plan's
};

} // namespace brox

#endif
