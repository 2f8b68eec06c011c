#pragma once

#include "views/Canvas.h"

#include <variant>
#include <vector>

namespace veltra {

struct FilledRect {
    Rect rect;
    Color fill;

    friend bool operator==(const FilledRect&, const FilledRect&) = default;
};

struct StrokedLine {
    Point from;
    Point to;
    Color stroke;
    double lineWidth = 0.0;

    friend bool operator==(const StrokedLine&, const StrokedLine&) = default;
};

struct FilledStrokedRect {
    Rect rect;
    Color fill;
    Color stroke;
    double lineWidth = 0.0;

    friend bool operator==(const FilledStrokedRect&, const FilledStrokedRect&) = default;
};

using Primitive = std::variant<FilledRect, StrokedLine, FilledStrokedRect>;

// Keeps what the views draw as data, in drawing order, so that a drawing can
// be inspected without a window system.
class RecordingCanvas : public Canvas {
public:
    void fillRect(const Rect& rect, const Color& fill) override;
    void strokeLine(Point from, Point to, const Color& stroke, double lineWidth) override;
    void fillAndStrokeRect(const Rect& rect, const Color& fill, const Color& stroke, double lineWidth) override;

    const std::vector<Primitive>& primitives() const { return primitives_; }
    void clear() { primitives_.clear(); }

    // All recorded primitives of one kind, in drawing order.
    template <typename Kind>
    std::vector<Kind> all() const
    {
        std::vector<Kind> found;
        for (const Primitive& p : primitives_) {
            if (const auto* k = std::get_if<Kind>(&p))
                found.push_back(*k);
        }
        return found;
    }

private:
    std::vector<Primitive> primitives_;
};

} // namespace veltra
