// SPDX-License-Identifier: MIT
#include "map_widget.h"

#include "map_shapes.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace brox {

namespace {

constexpr double margin = 12; ///< around the board when all of it is shown
constexpr double keyZoom = 1.5;
constexpr double keyPan = 60;
constexpr double pickReach = 4;
constexpr double ringRadius = 10;
constexpr QColor findingColour(0xe0, 0x20, 0x20);
constexpr double closeScale = 60; ///< at which a finding is seen, dots to the millimetre
constexpr double mostScale = 20'000; ///< dots to the millimetre

} // namespace

MapWidget::MapWidget(QWidget* parent)
    : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(120, 90);
    setCursor(Qt::CrossCursor);
}

MapWidget::~MapWidget() = default;

void MapWidget::setScene(std::unique_ptr<MapScene> scene, bool keepsPlace)
{
    const bool isFirst = !mScene;
    mScene = std::move(scene);
    if (!keepsPlace || isFirst || mIsFitted) {
        fit();
    }
    update();
}

void MapWidget::setShown(size_t row, bool isShown)
{
    if (mScene && row < mScene->rowCount()) {
        mScene->setShown(row, isShown);
        update();
    }
}

void MapWidget::highlight(const QSet<size_t>& rows)
{
    for (size_t row = 0; mScene && row < mScene->rowCount(); ++row) {
        mScene->setHighlighted(row, rows.contains(row));
    }
    update();
}

void MapWidget::setRings(std::vector<Place> places)
{
    mRings = std::move(places);
    mShownPlace.reset();
    update();
}

void MapWidget::showPlace(Place place)
{
    mShownPlace = place;
    mView.scale = std::max(mView.scale, closeScale);
    mView.origin = rect().center() - mView.scale * toMap(place);
    mIsFitted = false;
    update();
}

void MapWidget::paintRings(QPainter& painter) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    const QRectF seen =
        QRectF(rect()).marginsAdded({ringRadius, ringRadius, ringRadius, ringRadius});
    const auto paintRing = [&](Place place, double lineWidth) {
        const QPointF at = mView.toImage(toMap(place));
        if (seen.contains(at)) {
            painter.setPen(QPen(findingColour, lineWidth));
            painter.drawEllipse(at, ringRadius, ringRadius);
        }
    };
    for (const Place& place : mRings) {
        paintRing(place, 1.2);
    }
    if (mShownPlace) {
        paintRing(*mShownPlace, 3);
    }
}

void MapWidget::fit()
{
    mIsFitted = true;
    if (mScene) {
        const QRectF extent = mScene->extent();
        mFitScale = std::min((width() - 2 * margin) / std::max(extent.width(), 1e-3),
            (height() - 2 * margin) / std::max(extent.height(), 1e-3));
        mView.scale = std::clamp(mFitScale, 1e-6, mostScale);
        mView.origin = rect().center() - mView.scale * extent.center();
    }
    update();
}

void MapWidget::zoom(QPointF about, double factor)
{
    const double scale =
        std::clamp(mView.scale * factor, std::min(mFitScale / 4, mostScale), mostScale);
    mView.origin = about + (mView.origin - about) * (scale / mView.scale);
    mView.scale = scale;
    mIsFitted = false;
    update();
}

void MapWidget::pan(QPointF by)
{
    mView.origin += by;
    mIsFitted = false;
    update();
}

MapColours MapWidget::colours() const
{
    const QColor paper = palette().color(QPalette::Base);
    const bool isDark = paper.lightness() < 128;
    const QColor ink = palette().color(QPalette::Text);
    const auto mixed = [](int a, int b) { return (a + b) / 2; };
    const QColor outline(mixed(paper.red(), ink.red()), mixed(paper.green(), ink.green()),
        mixed(paper.blue(), ink.blue()));
    return {paper, outline, palette().color(QPalette::Highlight),
        isDark ? QColor(0xff, 0xb0, 0x20) : QColor(0xc0, 0x70, 0x00), isDark};
}

void MapWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (!mScene) {
        painter.fillRect(rect(), palette().base());
        return;
    }
    const double ratio = devicePixelRatioF();
    const QSize size = (QSizeF(width(), height()) * ratio).toSize();
    if (mImage.size() != size) {
        mImage = QImage(size, QImage::Format_RGB32);
    }
    mScene->paint(mImage, {mView.scale * ratio, mView.origin * ratio}, colours());
    painter.drawImage(QRectF(rect()), mImage);
    paintRings(painter);
    if (hasFocus()) {
        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void MapWidget::resizeEvent(QResizeEvent*)
{
    if (mIsFitted) {
        fit();
    }
}

void MapWidget::wheelEvent(QWheelEvent* event)
{
    zoom(event->position(), std::pow(2, event->angleDelta().y() / 240.0));
    event->accept();
}

void MapWidget::mousePressEvent(QMouseEvent* event)
{
    mPressed = mLast = event->position();
    mIsDragged = false;
}

void MapWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() == Qt::NoButton) {
        return;
    }
    const QPointF way = event->position() - mPressed;
    mIsDragged = mIsDragged || way.manhattanLength() >= QApplication::startDragDistance();
    if (mIsDragged) {
        pan(event->position() - mLast);
        mLast = event->position();
    }
}

void MapWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (!mIsDragged && event->button() == Qt::LeftButton) {
        pick(event->position());
    }
}

void MapWidget::pick(QPointF at)
{
    const auto hit = mScene ? mScene->hitAt(mView.toMap(at), pickReach / mView.scale)
                            : std::optional<MapScene::Hit>();
    hit ? emit picked(hit->row, hit->place) : emit missed();
}

void MapWidget::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        return zoom(rect().center(), keyZoom);
    case Qt::Key_Minus:
        return zoom(rect().center(), 1 / keyZoom);
    case Qt::Key_Left:
        return pan({keyPan, 0});
    case Qt::Key_Right:
        return pan({-keyPan, 0});
    case Qt::Key_Up:
        return pan({0, keyPan});
    case Qt::Key_Down:
        return pan({0, -keyPan});
    case Qt::Key_Home:
        return fit();
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace brox
