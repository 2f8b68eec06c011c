#pragma once

#include "views/Canvas.h"

#include <QPainter>

#include <algorithm>

namespace veltra {

// Draws the views' primitives with QPainter (solid fills, butt-capped lines):
// the reference the window's own rasteriser is compared with, and the
// baseline of the graph benchmarks.
class QPainterCanvas : public Canvas {
public:
    explicit QPainterCanvas(QPainter& painter)
        : painter_(painter)
    {
    }

    void fillRect(const Rect& rect, const Color& fill) override { painter_.fillRect(toQRect(rect), toQColor(fill)); }

    void strokeLine(Point from, Point to, const Color& stroke, double lineWidth) override
    {
        painter_.setPen(QPen(toQColor(stroke), lineWidth, Qt::SolidLine, Qt::FlatCap));
        painter_.drawLine(QPointF(from.x, from.y), QPointF(to.x, to.y));
    }

    void fillAndStrokeRect(const Rect& rect, const Color& fill, const Color& stroke, double lineWidth) override
    {
        painter_.setPen(QPen(toQColor(stroke), lineWidth));
        painter_.setBrush(toQColor(fill));
        painter_.drawRect(toQRect(rect));
        painter_.setBrush(Qt::NoBrush);
    }

private:
    static QColor toQColor(const Color& c)
    {
        // The graph's wash may step a little below zero alpha; that draws nothing.
        return QColor::fromRgbF(static_cast<float>(c.red), static_cast<float>(c.green), static_cast<float>(c.blue),
                                static_cast<float>(std::clamp(c.alpha, 0.0, 1.0)));
    }
    static QRectF toQRect(const Rect& r) { return QRectF(r.x, r.y, r.width, r.height).normalized(); }

    QPainter& painter_;
};

} // namespace veltra
