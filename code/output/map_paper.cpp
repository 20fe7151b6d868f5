// SPDX-License-Identifier: MIT
#include "map_paper.h"

#include "map_shapes.h"
#include "reading.h"

#include <QPaintEngine>
#include <QPainter>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace brox {

namespace {

constexpr int unitsPerInch = 254;

constexpr int dotsPerUnit = 100; ///< so that a dot is a thousandth of a millimetre

/** Coordinates in dots. */
struct Dot
{
    qint64 x = 0;
    qint64 y = 0;
};

qint64 inDots(double units)
{
    return std::llround(std::clamp(units, -1e9, 1e9) * dotsPerUnit);
}

Dot dotOf(QPointF point)
{
    return {inDots(point.x()), inDots(point.y())};
}

void appendNumber(QByteArray& text, qint64 dots)
{
    char digits[24];
    char* end = digits;
    const qint64 whole = std::abs(dots) / dotsPerUnit;
    const int rest = int(std::abs(dots) % dotsPerUnit);
    if (whole > 0 || rest == 0) {
        end = std::to_chars(digits, digits + sizeof digits, whole).ptr;
    }
    if (rest > 0) {
        *end++ = '.';
        *end++ = char('0' + rest / 10);
        *end = char('0' + rest % 10);
        end += rest % 10 > 0;
    }
    if (dots < 0) {
        text += '-';
    }
    text.append(digits, end - digits);
}

void appendPoint(QByteArray& text, Dot dot)
{
    appendNumber(text, dot.x);
    text += ',';
    appendNumber(text, dot.y);
}

QString number(double units)
{
    QByteArray text;
    appendNumber(text, inDots(units));
    return QString::fromLatin1(text);
}

} // namespace

/** Takes what a painter draws apart into paths and texts. */
class SvgDevice::Engine : public QPaintEngine
{
public:
    explicit Engine(SvgDevice& device)
        : QPaintEngine(
            AllFeatures & ~(PatternBrush | PerspectiveTransform | ConicalGradientFill | PorterDuff))
        , mDevice(device)
    { }

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }
    void updateState(const QPaintEngineState&) override { } // state is read as it is needed
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override { }

    void drawPath(const QPainterPath& path) override { draw(path, state->brush()); }

    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override
    {
        QPainterPath path(points[0]);
        for (int i = 1; i < count; ++i) {
            path.lineTo(points[i]);
        }
        if (mode != PolylineMode) {
            path.closeSubpath();
        }
        draw(path, mode == PolylineMode ? QBrush() : state->brush());
    }

    void drawTextItem(const QPointF& at, const QTextItem& item) override
    {
        mDevice.writeText(
            state->transform().map(at), item.text(), item.font(), state->pen().color());
    }

private:
    void draw(const QPainterPath& path, const QBrush& brush)
    {
        QByteArray shapes;
        append(shapes, shape(state->transform().map(path)));
        mDevice.drawShapes(shapes, state->pen(), brush);
    }

    SvgDevice& mDevice;
};

SvgDevice::SvgDevice(QIODevice& file, const QSize& size, const QString& title)
    : mXml(&file)
    , mSize(size)
    , mEngine(std::make_unique<Engine>(*this))
{
    mXml.writeStartElement("svg");
    mXml.writeDefaultNamespace("http://www.w3.org/2000/svg");
    mXml.writeAttribute("width", number(size.width() / 10.0) + "mm");
    mXml.writeAttribute("height", number(size.height() / 10.0) + "mm");
    mXml.writeAttribute(
        "viewBox", QStringLiteral("0 0 %1 %2").arg(size.width()).arg(size.height()));
    mXml.writeAttribute("stroke-linecap", "round");
    mXml.writeAttribute("stroke-linejoin", "round");
    mXml.writeAttribute("xml:space", "preserve");
    mXml.writeCharacters("\n");
    mXml.writeTextElement("title", printable(title));
    mXml.writeCharacters("\n");
}

SvgDevice::~SvgDevice()
{
    mXml.writeEndElement();
    mXml.writeCharacters("\n");
}

SvgDevice::Shape SvgDevice::shape(const QPainterPath& path)
{
    Shape shape{path.elementCount() > 0 ? QPointF(path.elementAt(0)) : QPointF(), {}};
    QByteArray& way = shape.way;
    Dot at = dotOf(shape.begin); // rounded, so that errors don't add up
    const auto append = [&](const QPainterPath::Element& element) {
        const Dot dot = dotOf(element);
        appendPoint(way, {dot.x - at.x, dot.y - at.y});
        return dot;
    };
    for (int i = 1; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isCurveTo()) {
            way += 'c';
            append(element);
            way += ' ';
            append(path.elementAt(i + 1));
            way += ' ';
            at = append(path.elementAt(i + 2));
            i += 2;
        } else {
            way += element.isMoveTo() ? 'm' : 'l';
            at = append(element);
        }
    }
    return shape;
}

SvgDevice::Shape SvgDevice::circle(double radius)
{
    const qint64 reach = std::max<qint64>(1, inDots(radius));
    QByteArray half{"a"};
    appendPoint(half, {reach, reach});
    half += " 0 1 0 ";
    Shape shape{{-double(reach) / dotsPerUnit, 0}, half};
    appendPoint(shape.way, {2 * reach, 0});
    shape.way += half;
    appendPoint(shape.way, {-2 * reach, 0});
    return shape;
}

void SvgDevice::append(QByteArray& shapes, const Shape& shape, QPointF at)
{
    shapes += 'M';
    appendPoint(shapes, dotOf(at + shape.begin));
    shapes += shape.way;
}

void SvgDevice::drawShapes(const QByteArray& shapes, const QPen& pen, const QBrush& brush)
{
    mXml.writeEmptyElement("path");
    writePaint("fill", brush.style() == Qt::NoBrush ? QColor() : brush.color());
    if (pen.style() != Qt::NoPen) {
        writePaint("stroke", pen.color());
        mXml.writeAttribute("stroke-width", number(pen.widthF()));
    }
    mXml.writeAttribute("d", QString::fromLatin1(shapes));
    mXml.writeCharacters("\n");
}

void SvgDevice::writePaint(const QString& attribute, const QColor& colour)
{
    mXml.writeAttribute(attribute, colour.isValid() ? colour.name() : QStringLiteral("none"));
    if (colour.isValid() && colour.alpha() < 255) {
        mXml.writeAttribute(attribute + "-opacity", QString::number(colour.alphaF(), 'g', 2));
    }
}

void SvgDevice::writeText(QPointF at, const QString& text, const QFont& font, const QColor& colour)
{
    mXml.writeStartElement("text");
    mXml.writeAttribute("x", number(at.x()));
    mXml.writeAttribute("y", number(at.y()));
    mXml.writeAttribute("font-family", font.family() + ", sans-serif");
    mXml.writeAttribute("font-size", QString::number(font.pixelSize()));
    if (font.bold()) {
        mXml.writeAttribute("font-weight", "bold");
    }
    writePaint("fill", colour);
    mXml.writeCharacters(printable(text));
    mXml.writeEndElement();
    mXml.writeCharacters("\n");
}

QPaintEngine* SvgDevice::paintEngine() const
{
    return mEngine.get();
}

int SvgDevice::metric(PaintDeviceMetric metric) const
{
    switch (metric) {
    case PdmWidth:
        return mSize.width();
    case PdmHeight:
        return mSize.height();
    case PdmWidthMM:
        return mSize.width() / 10;
    case PdmHeightMM:
        return mSize.height() / 10;
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
        return unitsPerInch;
    case PdmDepth:
        return 24;
    case PdmDevicePixelRatio:
        return 1;
    default:
        return QPaintDevice::metric(metric);
    }
}

RowInk::RowInk(QPainter& painter, size_t look, double holeRadius, double symbolRadius)
    : mPainter(painter)
    , mSvg(dynamic_cast<SvgDevice*>(painter.device()))
    , mMostElements(painter.paintEngine()->type() == QPaintEngine::Raster ? 1000 : 100'000)
    , mOrigin(painter.transform().map(QPointF()))
    , mColour(toolColour(look, false))
    , mAreDots(areDots(symbolRadius))
    , mHoleRadius(mAreDots ? std::max(leastDot, holeRadius) : holeRadius)
    , mSymbolRadius(symbolRadius)
    , mSymbol(QTransform::fromScale(symbolRadius, symbolRadius).map(toolSymbol(look)))
    , mCircleShape(SvgDevice::circle(mHoleRadius))
    , mSymbolShape(SvgDevice::shape(mSymbol))
{
    mAreas.setFillRule(Qt::WindingFill);
}

void RowInk::addHole(QPointF at)
{
    if (mSvg) {
        SvgDevice::append(mAreaShapes, mCircleShape, mOrigin + at);
    } else if (mAreDots) {
        mDots << at;
    } else {
        mAreas.addEllipse(at, mHoleRadius, mHoleRadius);
    }
    addSymbol(at);
}

void RowInk::addSlot(const QPainterPath& area, QPointF middle)
{
    if (mSvg) {
        SvgDevice::append(mAreaShapes, SvgDevice::shape(area), mOrigin);
    } else {
        mAreas.addPath(area);
    }
    addSymbol(middle);
}

bool RowInk::isFull() const
{
    constexpr qsizetype mostShapes = 1 << 16;
    return mAreas.elementCount() + mDots.size() >= mMostElements
        || mAreaShapes.size() >= mostShapes;
}

void RowInk::paint()
{
    if (mAreDots) {
        mPainter.setPen(linePen(mColour, 2 * mHoleRadius)); // with its round cap
        mPainter.drawPoints(mDots);
        mDots.clear();
        draw(mAreas, mAreaShapes, Qt::NoPen, mColour);
        return;
    }
    const double line = std::clamp(0.16 * mSymbolRadius, 0.2, 2.5);
    QColor tint = mColour;
    tint.setAlphaF(0.18F);
    draw(mAreas, mAreaShapes, linePen(mColour, 0.6 * line), tint);
    draw(mSymbols, mSymbolShapes, linePen(mColour, line), Qt::NoBrush);
}

void RowInk::addSymbol(QPointF at)
{
    if (mAreDots) {
        return;
    }
    if (mSvg) {
        SvgDevice::append(mSymbolShapes, mSymbolShape, mOrigin + at);
    } else {
        mSymbols.addPath(mSymbol.translated(at));
    }
}

void RowInk::draw(QPainterPath& path, QByteArray& shapes, const QPen& pen, const QBrush& brush)
{
    if (!shapes.isEmpty()) {
        mSvg->drawShapes(shapes, pen, brush);
        shapes.clear();
    } else if (!path.isEmpty()) {
        mPainter.setPen(pen);
        mPainter.setBrush(brush);
        mPainter.drawPath(path);
        path.clear();
    }
}

} // namespace brox
