#pragma once

#include "views/Canvas.h"

class QPainter;

namespace veltra {

// Draws the views' primitives with QPainter: solid fills, butt-capped lines.
class QPainterCanvas : public Canvas {
public:
    explicit QPainterCanvas(QPainter& painter);

    void fillRect(const Rect& rect, const Color& fill) override;
    void strokeLine(Point from, Point to, const Color& stroke, double lineWidth) override;
    void fillAndStrokeRect(const Rect& rect, const Color& fill, const Color& stroke, double lineWidth) override;

private:
    QPainter& painter_;
};

} // namespace veltra
