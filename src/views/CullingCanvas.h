#pragma once

#include "views/Canvas.h"

namespace veltra {

// Passes on to another canvas only the primitives that can touch the
// visible area. The graph draws its whole history, most of it below the
// view; a drawing back end need not pay for what nobody sees.
class CullingCanvas : public Canvas {
public:
    CullingCanvas(Canvas& target, const Rect& visible);

    void fillRect(const Rect& rect, const Color& fill) override;
    void strokeLine(Point from, Point to, const Color& stroke, double lineWidth) override;
    void fillAndStrokeRect(const Rect& rect, const Color& fill, const Color& stroke, double lineWidth) override;

private:
    // Whether the box, grown by margin on every side, meets the visible area.
    bool touches(double left, double top, double right, double bottom, double margin) const;
    bool touches(const Rect& rect, double margin) const;

    Canvas& target_;
    Rect visible_;
};

} // namespace veltra
