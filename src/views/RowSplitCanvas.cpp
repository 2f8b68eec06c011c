#include "views/RowSplitCanvas.h"

#include <algorithm>

namespace veltra {

RowSplitCanvas::RowSplitCanvas(Canvas& everyRow, Canvas& rest, const Rect& bounds)
    : everyRow_(everyRow)
    , rest_(rest)
    , bounds_(bounds)
{
}

bool RowSplitCanvas::spansBounds(double top, double bottom) const
{
    return top <= bounds_.y && bottom >= bounds_.y + bounds_.height;
}

Canvas& RowSplitCanvas::target(bool sameOnEveryRow)
{
    split_ = split_ || !sameOnEveryRow;
    return split_ ? rest_ : everyRow_;
}

void RowSplitCanvas::fillRect(const Rect& rect, const Color& fill)
{
    target(spansBounds(std::min(rect.y, rect.y + rect.height), std::max(rect.y, rect.y + rect.height)))
        .fillRect(rect, fill);
}

// Lines have flat ends: a vertical line spanning the bounds has no edge
// inside them but its two sides.
void RowSplitCanvas::strokeLine(Point from, Point to, const Color& stroke, double lineWidth)
{
    target(from.x == to.x && spansBounds(std::min(from.y, to.y), std::max(from.y, to.y)))
        .strokeLine(from, to, stroke, lineWidth);
}

// The outline crosses every column at the top and bottom.
void RowSplitCanvas::fillAndStrokeRect(const Rect& rect, const Color& fill, const Color& stroke, double lineWidth)
{
    target(false).fillAndStrokeRect(rect, fill, stroke, lineWidth);
}

} // namespace veltra
