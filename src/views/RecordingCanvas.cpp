#include "views/RecordingCanvas.h"

namespace veltra {

void RecordingCanvas::fillRect(const Rect& rect, const Color& fill)
{
    primitives_.emplace_back(FilledRect{rect, fill});
}

void RecordingCanvas::strokeLine(Point from, Point to, const Color& stroke, double lineWidth)
{
    primitives_.emplace_back(StrokedLine{from, to, stroke, lineWidth});
}

void RecordingCanvas::fillAndStrokeRect(const Rect& rect, const Color& fill, const Color& stroke, double lineWidth)
{
    primitives_.emplace_back(FilledStrokedRect{rect, fill, stroke, lineWidth});
}

} // namespace veltra
