#include "views/TriangleCanvas.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace veltra {

namespace {

// One extent of a shape along an axis, as the fringe sees it: the outer
// edges (alpha 0) half a pixel outside the shape, the inner edges (full
// alpha) half a pixel inside, or meeting in the middle with reduced alpha
// when the shape is thinner than a pixel.
struct Extent {
    double outerLow, innerLow, innerHigh, outerHigh;
    double coverage; // alpha factor at the inner edges
};

Extent softExtent(double low, double high, double pixel)
{
    const double half = pixel * 0.5;
    const double size = high - low;
    if (size >= pixel)
        return {low - half, low + half, high - half, high + half, 1.0};
    const double middle = (low + high) * 0.5;
    return {middle - pixel, middle, middle, middle + pixel, size / pixel};
}

Extent hardExtent(double low, double high)
{
    return {low, low, high, high, 1.0};
}

unsigned char channel(double premultiplied)
{
    // Rounded half up: the value is not negative, and std::lround is a
    // library call that showed in every frame.
    return static_cast<unsigned char>(std::clamp(premultiplied, 0.0, 1.0) * 255.0 + 0.5);
}

// The eight corners of a band (outer ring first, then inner) make a core
// quad and four fringe quads; each quad is two triangles. The two fringes
// across the ends come last: a band with hard ends leaves them out, since
// they have no area.
constexpr std::array<std::uint32_t, 30> kBandIndices{
    4, 5, 6, 4, 6, 7,                 // core
    0, 1, 5, 0, 5, 4,                 // side, low across
    2, 3, 7, 2, 7, 6,                 // side, high across
    1, 2, 6, 1, 6, 5,                 // end, high along
    3, 0, 4, 3, 4, 7,                 // end, low along
};
constexpr std::size_t kHardBandIndices = 18;

} // namespace

TriangleCanvas::TriangleCanvas(double devicePixel)
    : devicePixel_(devicePixel)
{
}

void TriangleCanvas::clear()
{
    vertices_.clear();
    indices_.clear();
}

void TriangleCanvas::addBand(const Band& band, const Color& colour)
{
    const Extent along = band.softEnds ? softExtent(0.0, band.length, devicePixel_) : hardExtent(0.0, band.length);
    const Extent across = softExtent(-band.halfWidth, band.halfWidth, devicePixel_);
    // The graph's wash may step a little below zero alpha; that draws nothing.
    const double alpha = std::clamp(colour.alpha, 0.0, 1.0) * along.coverage * across.coverage;
    if (alpha <= 0.0)
        return;
    const Point normal{-band.along.y, band.along.x};
    // The outer ring fades to nothing, the inner one has the colour: each
    // worked out once per band, not per corner (the trace has thousands).
    const auto premultiplied = [&colour](double a) {
        return Vertex{0.0f, 0.0f, channel(colour.red * a), channel(colour.green * a), channel(colour.blue * a),
                      channel(a)};
    };
    const Vertex faded = premultiplied(0.0), full = premultiplied(alpha);
    const auto base = vertices_.size();
    vertices_.resize(base + 8);
    Vertex* v = vertices_.data() + base;
    const auto corner = [&](double s, double t, const Vertex& shade) {
        *v = shade;
        v->x = static_cast<float>(band.origin.x + band.along.x * s + normal.x * t);
        v->y = static_cast<float>(band.origin.y + band.along.y * s + normal.y * t);
        ++v;
    };
    corner(along.outerLow, across.outerLow, faded);
    corner(along.outerHigh, across.outerLow, faded);
    corner(along.outerHigh, across.outerHigh, faded);
    corner(along.outerLow, across.outerHigh, faded);
    corner(along.innerLow, across.innerLow, full);
    corner(along.innerHigh, across.innerLow, full);
    corner(along.innerHigh, across.innerHigh, full);
    corner(along.innerLow, across.innerHigh, full);
    const std::size_t count = band.softEnds ? kBandIndices.size() : kHardBandIndices;
    const auto first = static_cast<std::uint32_t>(base);
    const auto at = indices_.size();
    indices_.resize(at + count);
    for (std::size_t i = 0; i < count; ++i)
        indices_[at + i] = first + kBandIndices[i];
}

void TriangleCanvas::addAxisRect(double left, double top, double right, double bottom, const Color& colour)
{
    if (right <= left || bottom <= top)
        return;
    const double middle = (top + bottom) * 0.5;
    addBand({{left, middle}, {1.0, 0.0}, right - left, (bottom - top) * 0.5, true}, colour);
}

void TriangleCanvas::fillRect(const Rect& rect, const Color& fill)
{
    addAxisRect(std::min(rect.x, rect.x + rect.width), std::min(rect.y, rect.y + rect.height),
                std::max(rect.x, rect.x + rect.width), std::max(rect.y, rect.y + rect.height), fill);
}

void TriangleCanvas::strokeLine(Point from, Point to, const Color& stroke, double lineWidth)
{
    const double dx = to.x - from.x, dy = to.y - from.y;
    // Not std::hypot: its care against overflow is a library call per
    // segment, and a length that overflows draws nothing either way.
    const double length = std::sqrt(dx * dx + dy * dy);
    if (!(length > 0.0) || !(lineWidth > 0.0))
        return;
    addBand({from, {dx / length, dy / length}, length, lineWidth * 0.5, false}, stroke);
}

// The fill, then the outline centred on the rectangle's edges: two full-width
// strokes along the top and bottom and two between them on the sides, so
// that no part of the outline is blended twice.
void TriangleCanvas::fillAndStrokeRect(const Rect& rect, const Color& fill, const Color& stroke, double lineWidth)
{
    fillRect(rect, fill);
    const double left = std::min(rect.x, rect.x + rect.width), right = std::max(rect.x, rect.x + rect.width);
    const double top = std::min(rect.y, rect.y + rect.height), bottom = std::max(rect.y, rect.y + rect.height);
    const double h = lineWidth * 0.5;
    addAxisRect(left - h, top - h, right + h, top + h, stroke);
    addAxisRect(left - h, bottom - h, right + h, bottom + h, stroke);
    addAxisRect(left - h, top + h, left + h, bottom - h, stroke);
    addAxisRect(right - h, top + h, right + h, bottom - h, stroke);
}

} // namespace veltra
