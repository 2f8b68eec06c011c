#pragma once

#include "views/TriangleCanvas.h"

#include <cstdint>
#include <span>

namespace veltra {

// A block of 32-bit pixels holding 0xAARRGGBB, premultiplied, in native byte
// order (what QImage calls ARGB32_Premultiplied); rows lie `stride` pixels
// apart.
struct PixelImage {
    std::uint32_t* pixels = nullptr;
    int width = 0;
    int height = 0;
    int stride = 0;
};

// Where a vertex lands: pixel = vertex * scale + (x, y). The offset lets a
// drawing go straight into part of a larger image, such as the window's.
struct Placement {
    float scale = 1.0f;
    float x = 0.0f;
    float y = 0.0f;
};

// Fills coloured triangles into an image as a GPU draws them: every pixel is
// sampled at its centre, colours are interpolated across the triangle, and
// each triangle is blended premultiplied "over" what lies beneath, in order.
// A pixel centre on an edge that two triangles share belongs to exactly one
// of them (left and top edges count as inside, right and bottom ones not),
// so a mesh blends without seams or double-blended edges. `placement` takes
// the vertices' units to pixels. Whatever lies outside the image is dropped.
//
// This is the window's drawing path where no GPU is available: Qt's own
// painter would cost more in thread hand-overs than in drawing.
void rasterizeTriangles(std::span<const ColoredVertex> vertices, std::span<const std::uint32_t> indices,
                        const PixelImage& image, Placement placement = {});

// Rows [first, end) of an image.
struct RowRange {
    int first = 0;
    int end = 0;
};

// Draws `everyRow` and then `rest` as above, for an image whose rows in
// `alike` hold the same pixels and a first drawing that looks the same on
// each of those rows (see RowSplitCanvas): there it is drawn on one row and
// copied to the others.
void rasterizeTriangles(const TriangleCanvas& everyRow, const TriangleCanvas& rest, const PixelImage& image,
                        Placement placement, RowRange alike);

} // namespace veltra
