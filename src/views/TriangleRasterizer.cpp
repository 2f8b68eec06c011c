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
    std::array<float, kChannels> colour;
};

Corner corner(const ColoredVertex& v, const Placement& at)
{
    return {v.x * at.scale + at.x, v.y * at.scale + at.y, {float(v.r), float(v.g), float(v.b), float(v.a)}};
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

// A colour interpolated in floats as one premultiplied pixel value; rounding
// may not lift a channel above the alpha.
std::uint32_t pack(const std::array<float, kChannels>& c)
{
    const auto byte = [](float v) { return static_cast<std::uint32_t>(std::min(std::max(v, 0.0f), 255.0f) + 0.5f); };
    const std::uint32_t alpha = byte(c[3]);
    return (alpha << 24) | (std::min(byte(c[0]), alpha) << 16) | (std::min(byte(c[1]), alpha) << 8) |
           std::min(byte(c[2]), alpha);
}

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

    bool flat = true;
    for (int k = 0; k < kChannels; ++k)
        flat = flat && middle.colour[k] == top.colour[k] && bottom.colour[k] == top.colour[k];
    const std::uint32_t flatColour = pack(top.colour);
    if (flat && flatColour == 0)
        return;
    // Otherwise the colour is a plane over the triangle: its value at the
    // top corner and a step per pixel across and down.
    std::array<float, kChannels> perX{}, perY{};
    if (!flat) {
        const float inverseArea = 1.0f / area;
        for (int k = 0; k < kChannels; ++k) {
            const float toMiddle = middle.colour[k] - top.colour[k];
            const float toBottom = bottom.colour[k] - top.colour[k];
            perX[k] = (toMiddle * (bottom.y - top.y) - toBottom * (middle.y - top.y)) * inverseArea;
            perY[k] = (toBottom * (middle.x - top.x) - toMiddle * (bottom.x - top.x)) * inverseArea;
        }
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
        if (flat) {
            fillSpan(pixel + first, end - first, flatColour);
            continue;
        }
        std::array<float, kChannels> colour{};
        const float dx = static_cast<float>(first) + 0.5f - top.x, dy = y - top.y;
        for (int k = 0; k < kChannels; ++k)
            colour[k] = top.colour[k] + perX[k] * dx + perY[k] * dy;
        for (int x = first; x < end; ++x) {
            pixel[x] = over(pack(colour), pixel[x]);
            for (int k = 0; k < kChannels; ++k)
                colour[k] += perX[k];
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

} // namespace veltra
