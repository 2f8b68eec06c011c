#pragma once

#include "views/Canvas.h"

#include <cstdint>
#include <vector>

namespace veltra {

// One corner of a triangle: a position in item units and a premultiplied
// colour. The layout (two floats, four bytes) is the one GPUs take as is.
struct ColoredVertex {
    float x, y;
    std::uint8_t r, g, b, a;
};

// Turns the views' primitives into one list of coloured triangles, in
// drawing order. On a GPU the whole drawing becomes one draw call that
// blends as QPainter would have; without one, TriangleRasterizer fills the
// same triangles into an image.
//
// Edges are antialiased as QPainter does it: each shape gets a fringe one
// device pixel wide across its edge whose alpha falls linearly to zero, so
// a pixel is covered in proportion to its area inside the shape. Shapes
// thinner than a pixel keep their width of fringe and lose alpha in
// proportion instead. Lines have flat, unsoftened caps, so that the trace's
// segments meet without seams.
class TriangleCanvas : public Canvas {
public:
    using Vertex = ColoredVertex;

    // devicePixel is the size of one device pixel in item units (1 / the
    // device pixel ratio).
    explicit TriangleCanvas(double devicePixel = 1.0);

    void fillRect(const Rect& rect, const Color& fill) override;
    void strokeLine(Point from, Point to, const Color& stroke, double lineWidth) override;
    void fillAndStrokeRect(const Rect& rect, const Color& fill, const Color& stroke, double lineWidth) override;

    // Starts a new frame: nothing of the previous one is kept.
    void clear();
    void setDevicePixel(double devicePixel) { devicePixel_ = devicePixel; }

    const std::vector<Vertex>& vertices() const { return vertices_; }
    const std::vector<std::uint32_t>& indices() const { return indices_; }

private:
    // A rectangle of the given length along `along` (a unit vector) and
    // half-width across it, starting at origin on its centre line.
    struct Band {
        Point origin;
        Point along;
        double length;
        double halfWidth;
        bool softEnds; // antialias the two ends as well as the sides
    };
    void addBand(const Band& band, const Color& colour);
    void addAxisRect(double left, double top, double right, double bottom, const Color& colour);

    double devicePixel_;
    std::vector<Vertex> vertices_;
    std::vector<std::uint32_t> indices_;
};

} // namespace veltra
