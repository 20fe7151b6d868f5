// SPDX-License-Identifier: MIT
#ifndef MAP_PAPER_H
#define MAP_PAPER_H

#include <QPaintDevice>
#include <QPainterPath>
#include <QPen>
#include <QPolygonF>
#include <QXmlStreamWriter>
#include <memory>

namespace brox {

/** Writes an SVG element to a file while it is painted, whatever its size: lines, areas and texts,
 *  moved but not scaled or turned. A unit is a tenth of a millimetre.
 *
 * What is to be painted many times is cheap as a shape: it is worked out once, and takes no more
 * than its own characters each time.
 */
class SvgDevice : public QPaintDevice
{
public:
    /** @param file  outlives the device; what goes wrong with it is the file's to know */
    SvgDevice(QIODevice& file, const QSize& size, const QString& title);
    ~SvgDevice() override;
    Q_DISABLE_COPY_MOVE(SvgDevice)

    /** A path that is worked out. */
    struct Shape
    {
        QPointF begin;
        QByteArray way; ///< from there on
    };
    static Shape shape(const QPainterPath& path);
    static Shape circle(double radius); ///< about 0

    /** Adds a shape to what drawShapes() takes. */
    static void append(QByteArray& shapes, const Shape& shape, QPointF at = {});

    void drawShapes(const QByteArray& shapes, const QPen& pen, const QBrush& brush);

    QPaintEngine* paintEngine() const override;

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    class Engine;

    void writeText(QPointF at, const QString& text, const QFont& font, const QColor& colour);
    void writePaint(const QString& attribute, const QColor& colour);

    QXmlStreamWriter mXml;
    QSize mSize;
    std::unique_ptr<Engine> mEngine;
};

/** The holes and slots of a row with the symbol of their tool, on their way to the paper. Many
 *  circles are one path, and their symbols another: files stay small, and readers fast. In images
 *  a path costs more than its parts.
 *
 * Where no eye could distinguish symbols there are none: a hole is a dot in the colour of its tool
 * then, and at least so large that it can be seen.
 */
class RowInk
{
public:
    /** Whether symbols of that radius are too small for paper. */
    static bool areDots(double symbolRadius) { return symbolRadius < leastSymbol; }

    /** @param painter  outlives the ink
     *  @param look     of toolSymbol and toolColour
     */
    RowInk(QPainter& painter, size_t look, double holeRadius, double symbolRadius);

    void addHole(QPointF at);
    void addSlot(const QPainterPath& area, QPointF middle);

    /** Whether so much waits that it should be painted. */
    bool isFull() const;
    void paint();

private:
    static constexpr double leastSymbol = 1.5;
    static constexpr double leastDot = 0.3;

    void addSymbol(QPointF at);
    void draw(QPainterPath& path, QByteArray& shapes, const QPen& pen, const QBrush& brush);

    QPainter& mPainter;
    SvgDevice* mSvg; ///< null: the painter paints on something else
    int mMostElements;
    QPointF mOrigin; ///< of the painter, which shapes pass by
    QColor mColour;
    bool mAreDots;
    double mHoleRadius;
    double mSymbolRadius;
    QPainterPath mSymbol; ///< about 0
    SvgDevice::Shape mCircleShape;
    SvgDevice::Shape mSymbolShape;
    QPolygonF mDots;
    QPainterPath mAreas;
    QPainterPath mSymbols;
    QByteArray mAreaShapes;
    QByteArray mSymbolShapes;
};

} // namespace brox

#endif
