#pragma once

#include "views/Geometry.h"

namespace veltra {

// The drawing surface of our views. Each call draws one path on its own, so
// a back end never has to join or reorder them; fills use the non-zero
// winding rule.
class Canvas {
public:
    virtual ~Canvas() = default;

    virtual void fillRect(const Rect& rect, const Color& fill) = 0;
    virtual void strokeLine(Point from, Point to, const Color& stroke, double lineWidth) = 0;
    // One rectangular path, filled first and then stroked along its outline.
    virtual void fillAndStrokeRect(const Rect& rect, const Color& fill, const Color& stroke, double lineWidth) = 0;
};

} // namespace veltra
