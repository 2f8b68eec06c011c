#include "views/CullingCanvas.h"

#include <algorithm>

namespace veltra {

namespace {

// Antialiased edges spread up to one device pixel beyond a shape.
constexpr double kAntialiasMargin = 1.0;

} // namespace

CullingCanvas::CullingCanvas(Canvas& target, const Rect& visible)
    : target_(target)
    , visible_(visible)
{
}

bool CullingCanvas::touches(double left, double top, double right, double bottom, double margin) const
{
    return right + margin > visible_.x && left - margin < visible_.x + visible_.width &&
           bottom + margin > visible_.y && top - margin < visible_.y + visible_.height;
}

bool CullingCanvas::touches(const Rect& rect, double margin) const
{
    const double x2 = rect.x + rect.width, y2 = rect.y + rect.height;
    return touches(std::min(rect.x, x2), std::min(rect.y, y2), std::max(rect.x, x2), std::max(rect.y, y2), margin);
}

void CullingCanvas::fillRect(const Rect& rect, const Color& fill)
{
    if (touches(rect, kAntialiasMargin))
        target_.fillRect(rect, fill);
}

void CullingCanvas::strokeLine(Point from, Point to, const Color& stroke, double lineWidth)
{
    if (touches(std::min(from.x, to.x), std::min(from.y, to.y), std::max(from.x, to.x), std::max(from.y, to.y),
                lineWidth * 0.5 + kAntialiasMargin))
        target_.strokeLine(from, to, stroke, lineWidth);
}

void CullingCanvas::fillAndStrokeRect(const Rect& rect, const Color& fill, const Color& stroke, double lineWidth)
{
    if (touches(rect, lineWidth * 0.5 + kAntialiasMargin))
        target_.fillAndStrokeRect(rect, fill, stroke, lineWidth);
}

} // namespace veltra
