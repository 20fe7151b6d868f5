// SPDX-License-Identifier: MIT
#ifndef MAP_WIDGET_H
#define MAP_WIDGET_H

#include "map_scene.h"

#include <QSet>
#include <QWidget>
#include <memory>
#include <optional>
#include <vector>

namespace brox {

/** A drill map to look around in: the wheel zooms about the pointer, dragging pans, a click picks
 *  a hole. With the keyboard: + and -, the arrows, and Home to see all. */
class MapWidget : public QWidget
{
    Q_OBJECT

public:
    explicit MapWidget(QWidget* parent = nullptr);
    ~MapWidget() override;

    /** Shows another scene, or null: nothing.
     *
     * @param keepsPlace  the same part of the board stays in view
     */
    void setScene(std::unique_ptr<MapScene> scene, bool keepsPlace);

    void setShown(size_t row, bool isShown);
    void highlight(const QSet<size_t>& rows);

    /** Draws rings about places, of the same size however far one has zoomed. */
    void setRings(std::vector<Place> places);

    QSize sizeHint() const override { return {420, 320}; }

public slots:
    /** Brings a place into the middle, near enough to see what is about it. */
    void showPlace(Place place);

    /** Shows all of the board. */
    void fit();

signals:
    /** A hole, or the start of a slot, was clicked at. */
    void picked(size_t row, Place place);

    /** A click met nothing. */
    void missed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void paintRings(QPainter& painter) const;
    void zoom(QPointF about, double factor);
    void pan(QPointF by);
    void pick(QPointF at);
    MapColours colours() const;

    std::unique_ptr<MapScene> mScene;
    std::vector<Place> mRings;
    std::optional<Place> mShownPlace; ///< has a thicker ring
    MapView mView;
    double mFitScale = 1;
    bool mIsFitted = true; ///< until the user has zoomed or panned
    QPointF mPressed;
    QPointF mLast;
    bool mIsDragged = false;
    QImage mImage;
};

} // namespace brox

#endif
