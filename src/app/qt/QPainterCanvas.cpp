#include "app/qt/QPainterCanvas.h"

#include <QPainter>

#include <algorithm>

namespace veltra {

namespace {

QColor toQColor(const Color& c)
{
    // The graph's wash may step a little below zero alpha; that draws nothing.
    return QColor::fromRgbF(static_cast<float>(c.red), static_cast<float>(c.green), static_cast<float>(c.blue),
                            static_cast<float>(std::clamp(c.alpha, 0.0, 1.0)));
}

QRectF toQRect(const Rect& r)
{
    return QRectF(r.x, r.y, r.width, r.height).normalized();
}

} // namespace

QPainterCanvas::QPainterCanvas(QPainter& painter)
    : painter_(painter)
{
}

void QPainterCanvas::fillRect(const Rect& rect, const Color& fill)
{
    painter_.fillRect(toQRect(rect), toQColor(fill));
}

void QPainterCanvas::strokeLine(Point from, Point to, const Color& stroke, double lineWidth)
{
    painter_.setPen(QPen(toQColor(stroke), lineWidth, Qt::SolidLine, Qt::FlatCap));
    painter_.drawLine(QPointF(from.x, from.y), QPointF(to.x, to.y));
}

void QPainterCanvas::fillAndStrokeRect(const Rect& rect, const Color& fill, const Color& stroke, double lineWidth)
{
    painter_.setPen(QPen(toQColor(stroke), lineWidth));
    painter_.setBrush(toQColor(fill));
    painter_.drawRect(toQRect(rect));
    painter_.setBrush(Qt::NoBrush);
}

} // namespace veltra
