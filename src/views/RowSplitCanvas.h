#pragma once

#include "views/Canvas.h"

namespace veltra {

// Sorts a view's drawing for a renderer that can fill rows in bulk. The
// leading primitives that look the same on every row of the bounds (fills
// and vertical lines reaching from the bounds' top to their bottom) go to
// `everyRow`; from the first other primitive on, everything goes
// to `rest`, so that the order of drawing is kept. The graph's band, bar,
// wash and centre line are such a prefix: drawn once as one row and copied
// down, they cost a row instead of a screen.
class RowSplitCanvas : public Canvas {
public:
    RowSplitCanvas(Canvas& everyRow, Canvas& rest, const Rect& bounds);

    void fillRect(const Rect& rect, const Color& fill) override;
    void strokeLine(Point from, Point to, const Color& stroke, double lineWidth) override;
    void fillAndStrokeRect(const Rect& rect, const Color& fill, const Color& stroke, double lineWidth) override;

private:
    bool spansBounds(double top, double bottom) const;
    Canvas& target(bool sameOnEveryRow);

    Canvas& everyRow_;
    Canvas& rest_;
    Rect bounds_;
    bool split_ = false;
};

} // namespace veltra
