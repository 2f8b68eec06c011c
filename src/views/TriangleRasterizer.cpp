#include "views/TriangleRasterizer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace veltra {

namespace {

constexpr int kChannels = 4; // red, green, blue, alpha; each 0 to 255, premultiplied

struct Corner {
    float x, y;
    std::uint32_t colour; // 0xAARRGGBB, premultiplied
};

// A colour channel above the alpha is not a premultiplied colour: clamped.
Corner corner(const ColoredVertex& v, const Placement& at)
{
    const std::uint32_t alpha = v.a;
    return {v.x * at.scale + at.x, v.y * at.scale + at.y,
            (alpha << 24) | (std::min<std::uint32_t>(v.r, alpha) << 16) | (std::min<std::uint32_t>(v.g, alpha) << 8) |
                std::min<std::uint32_t>(v.b, alpha)};
}

std::array<float, kChannels> channels(std::uint32_t colour)
{
    return {float((colour >> 16) & 0xff), float((colour >> 8) & 0xff), float(colour & 0xff), float(colour >> 24)};
}

// The smallest integer not below f, for the pixel grid: std::ceil is a
// library call on baseline x86-64 and dominated the frame. Values far off
// the image (or not numbers) come back far off it too.
int ceilToInt(float f)
{
    constexpr float kFar = 1 << 24;
    if (!(f > -kFar))
        return -(1 << 24);
    if (!(f < kFar))
        return 1 << 24;
    const int truncated = static_cast<int>(f);
    return truncated + (f > static_cast<float>(truncated) ? 1 : 0);
}

// An edge from an upper corner down to a lower one, as x at a height y.
// Both triangles on a shared edge build it from the same two corners in the
// same order, so they agree to the last bit on which pixels are whose.
struct Edge {
    Edge(const Corner& upper, const Corner& lower)
        : x0(upper.x)
        , y0(upper.y)
        , slope((lower.x - upper.x) / (lower.y - upper.y))
    {
    }
    float at(float y) const { return x0 + (y - y0) * slope; }

    float x0, y0, slope;
};

// Each byte of x times alpha / 255, rounded (t + 128 + (t + 128) / 256) / 256
// being t / 255 rounded for t up to 255 * 255): two channels per multiply.
std::uint32_t scaleBytes(std::uint32_t x, std::uint32_t alpha)
{
    std::uint32_t redBlue = (x & 0x00ff00ffu) * alpha + 0x00800080u;
    redBlue = ((redBlue + ((redBlue >> 8) & 0x00ff00ffu)) >> 8) & 0x00ff00ffu;
    std::uint32_t alphaGreen = ((x >> 8) & 0x00ff00ffu) * alpha + 0x00800080u;
    alphaGreen = (alphaGreen + ((alphaGreen >> 8) & 0x00ff00ffu)) & 0xff00ff00u;
    return alphaGreen | redBlue;
}

// A premultiplied colour over a pixel. A valid premultiplied colour (no
// channel above its alpha) cannot carry into the next byte.
std::uint32_t over(std::uint32_t colour, std::uint32_t pixel)
{
    return colour + scaleBytes(pixel, 255 - (colour >> 24));
}

// Four pixels' bytes, and the same widened for arithmetic. The compiler
// maps these onto whatever vector unit the target has (SSE2, NEON) or onto
// plain integers.
using PixelBytes = std::uint8_t __attribute__((vector_size(16)));
using PixelWords = std::uint16_t __attribute__((vector_size(32)));
constexpr int kVectorPixels = 4;

// One colour over a run of pixels: the bulk of a frame (bars, bands, the
// wash), so four pixels go at a time.
void fillSpan(std::uint32_t* pixel, int count, std::uint32_t colour)
{
    if ((colour >> 24) == 255) {
        std::fill_n(pixel, count, colour);
        return;
    }
    const std::uint32_t colours[kVectorPixels] = {colour, colour, colour, colour};
    PixelBytes colourBytes;
    std::memcpy(&colourBytes, colours, sizeof colourBytes);
    const PixelWords source = __builtin_convertvector(colourBytes, PixelWords);
    const auto inverse = static_cast<std::uint16_t>(255 - (colour >> 24));
    int i = 0;
    for (; i + kVectorPixels <= count; i += kVectorPixels) {
        PixelBytes bytes;
        std::memcpy(&bytes, pixel + i, sizeof bytes);
        PixelWords t = __builtin_convertvector(bytes, PixelWords) * inverse + 128;
        t = (t + (t >> 8)) >> 8; // / 255, rounded as in scaleBytes
        bytes = __builtin_convertvector(t + source, PixelBytes);
        std::memcpy(pixel + i, &bytes, sizeof bytes);
    }
    for (; i < count; ++i)
        pixel[i] = over(colour, pixel[i]);
}

// A value rounded to a byte.
std::uint32_t byte(float v)
{
    return static_cast<std::uint32_t>(std::min(std::max(v, 0.0f), 255.0f) + 0.5f);
}

// A colour interpolated in floats as one premultiplied pixel value; rounding
// may not lift a channel above the alpha.
std::uint32_t pack(const std::array<float, kChannels>& c)
{
    const std::uint32_t alpha = byte(c[3]);
    return (alpha << 24) | (std::min(byte(c[0]), alpha) << 16) | (std::min(byte(c[1]), alpha) << 8) |
           std::min(byte(c[2]), alpha);
}

// How a triangle's colour varies. Most triangles of a frame are the cores
// of shapes (one colour) or their antialiasing fringes (one colour whose
// coverage falls to nothing across the triangle), so those two are spared
// interpolating four channels.
enum class Shading {
    Flat,     // every corner the same colour
    Coverage, // every corner either one colour or nothing
    Free,
};

void fillTriangle(std::array<Corner, 3> c, const PixelImage& image)
{
    if (c[1].y < c[0].y)
        std::swap(c[0], c[1]);
    if (c[2].y < c[1].y)
        std::swap(c[1], c[2]);
    if (c[1].y < c[0].y)
        std::swap(c[0], c[1]);
    const Corner& top = c[0];
    const Corner& middle = c[1];
    const Corner& bottom = c[2];

    // Rows whose centre lies in [top, bottom); columns whose centre lies in
    // [left edge, right edge). Most fringe triangles hold no centre at all.
    const int firstRow = std::max(0, ceilToInt(top.y - 0.5f));
    const int endRow = std::min(image.height, ceilToInt(bottom.y - 0.5f));
    const float area = (middle.x - top.x) * (bottom.y - top.y) - (bottom.x - top.x) * (middle.y - top.y);
    if (firstRow >= endRow || !std::isfinite(area) || area == 0.0f)
        return;

    const std::uint32_t colour = std::max({top.colour, middle.colour, bottom.colour});
    if (colour == 0)
        return;
    const auto isColourOrNothing = [colour](const Corner& k) { return k.colour == colour || k.colour == 0; };
    const Shading shading = top.colour == middle.colour && top.colour == bottom.colour ? Shading::Flat
                            : isColourOrNothing(top) && isColourOrNothing(middle) && isColourOrNothing(bottom)
                                ? Shading::Coverage
                                : Shading::Free;

    // A value given at the corners as a plane over the triangle: its value
    // at the top corner and its steps per pixel across and down.
    const float inverseArea = 1.0f / area;
    struct Plane {
        float atTop = 0, perX = 0, perY = 0;
        float at(float dx, float dy) const { return atTop + perX * dx + perY * dy; }
    };
    const auto plane = [&](float atTop, float atMiddle, float atBottom) {
        const float toMiddle = atMiddle - atTop, toBottom = atBottom - atTop;
        return Plane{atTop, (toMiddle * (bottom.y - top.y) - toBottom * (middle.y - top.y)) * inverseArea,
                     (toBottom * (middle.x - top.x) - toMiddle * (bottom.x - top.x)) * inverseArea};
    };
    Plane coverage;
    std::array<Plane, kChannels> free;
    if (shading == Shading::Coverage) {
        const auto full = [](const Corner& k) { return k.colour != 0 ? 255.0f : 0.0f; };
        coverage = plane(full(top), full(middle), full(bottom));
    } else if (shading == Shading::Free) {
        const auto t = channels(top.colour), m = channels(middle.colour), b = channels(bottom.colour);
        for (int k = 0; k < kChannels; ++k)
            free[k] = plane(t[k], m[k], b[k]);
    }

    const Edge along(top, bottom);
    const bool hasUpper = middle.y > top.y, hasLower = bottom.y > middle.y;
    const Edge upper = hasUpper ? Edge(top, middle) : along;
    const Edge lower = hasLower ? Edge(middle, bottom) : along;
    for (int row = firstRow; row < endRow; ++row) {
        const float y = static_cast<float>(row) + 0.5f;
        const float x1 = along.at(y);
        const float x2 = y < middle.y ? upper.at(y) : lower.at(y);
        const int first = std::max(0, ceilToInt(std::min(x1, x2) - 0.5f));
        const int end = std::min(image.width, ceilToInt(std::max(x1, x2) - 0.5f));
        if (first >= end)
            continue;
        std::uint32_t* pixel = image.pixels + static_cast<std::ptrdiff_t>(row) * image.stride;
        const float dx = static_cast<float>(first) + 0.5f - top.x, dy = y - top.y;
        switch (shading) {
        case Shading::Flat:
            fillSpan(pixel + first, end - first, colour);
            break;
        case Shading::Coverage: {
            float covered = coverage.at(dx, dy);
            for (int x = first; x < end; ++x, covered += coverage.perX)
                pixel[x] = over(scaleBytes(colour, byte(covered)), pixel[x]);
            break;
        }
        case Shading::Free: {
            std::array<float, kChannels> value{};
            for (int k = 0; k < kChannels; ++k)
                value[k] = free[k].at(dx, dy);
            for (int x = first; x < end; ++x) {
                pixel[x] = over(pack(value), pixel[x]);
                for (int k = 0; k < kChannels; ++k)
                    value[k] += free[k].perX;
            }
            break;
        }
        }
    }
}

} // namespace

void rasterizeTriangles(std::span<const ColoredVertex> vertices, std::span<const std::uint32_t> indices,
                        const PixelImage& image, Placement placement)
{
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        if (std::max({indices[i], indices[i + 1], indices[i + 2]}) >= vertices.size())
            continue;
        fillTriangle({corner(vertices[indices[i]], placement), corner(vertices[indices[i + 1]], placement),
                      corner(vertices[indices[i + 2]], placement)},
                     image);
    }
}

namespace {

PixelImage rowsOf(const PixelImage& image, int first, int end)
{
    return {image.pixels + static_cast<std::ptrdiff_t>(first) * image.stride, image.width, end - first, image.stride};
}

void draw(const TriangleCanvas& canvas, const PixelImage& image, Placement placement, int fromRow = 0)
{
    placement.y -= static_cast<float>(fromRow);
    rasterizeTriangles(canvas.vertices(), canvas.indices(), image, placement);
}

} // namespace

void rasterizeTriangles(const TriangleCanvas& everyRow, const TriangleCanvas& rest, const PixelImage& image,
                        Placement placement, RowRange alike)
{
    const int first = std::clamp(alike.first, 0, image.height);
    const int end = std::clamp(alike.end, first, image.height);
    if (end > first) {
        draw(everyRow, rowsOf(image, 0, first), placement);
        draw(everyRow, rowsOf(image, first, first + 1), placement, first);
        const std::uint32_t* model = image.pixels + static_cast<std::ptrdiff_t>(first) * image.stride;
        for (int row = first + 1; row < end; ++row)
            std::memcpy(image.pixels + static_cast<std::ptrdiff_t>(row) * image.stride, model,
                        static_cast<std::size_t>(image.width) * sizeof(std::uint32_t));
        draw(everyRow, rowsOf(image, end, image.height), placement, end);
    } else {
        draw(everyRow, image, placement);
    }
    draw(rest, image, placement);
}

} // namespace veltra
