#include "views/TriangleCanvas.h"
#include "views/TriangleRasterizer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace veltra::test {
namespace {

constexpr std::uint32_t kBackground = 0xff202020u;
constexpr std::uint32_t kGuard = 0x12345678u; // memory beside the image

// An image inside a larger buffer, so that writes beside it show up.
class GuardedImage {
public:
    GuardedImage(int width, int height)
        : width_(width)
        , height_(height)
        , buffer_(static_cast<std::size_t>((width + 2 * kMargin) * (height + 2 * kMargin)), kGuard)
    {
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                at(x, y) = kBackground;
    }

    PixelImage image()
    {
        return {&at(0, 0), width_, height_, width_ + 2 * kMargin};
    }
    std::uint32_t& at(int x, int y)
    {
        return buffer_[static_cast<std::size_t>((y + kMargin) * (width_ + 2 * kMargin) + x + kMargin)];
    }
    // Pixels of the buffer outside the image that were written to.
    int guardsTouched() const
    {
        int touched = 0;
        const int stride = width_ + 2 * kMargin;
        for (int y = -kMargin; y < height_ + kMargin; ++y)
            for (int x = -kMargin; x < width_ + kMargin; ++x) {
                const bool inside = x >= 0 && x < width_ && y >= 0 && y < height_;
                touched += !inside &&
                           buffer_[static_cast<std::size_t>((y + kMargin) * stride + x + kMargin)] != kGuard;
            }
        return touched;
    }

private:
    static constexpr int kMargin = 4;
    int width_, height_;
    std::vector<std::uint32_t> buffer_;
};

void draw(const TriangleCanvas& canvas, GuardedImage& image, float scale = 1.0f)
{
    rasterizeTriangles(canvas.vertices(), canvas.indices(), image.image(), {scale});
}

// A translucent fill made of many triangles (core and fringe) must come out
// even: a pixel blended twice along an edge two triangles share, or missed
// between them, shows as a line across the rectangle.
TEST(TriangleRasterizer, BlendsEveryPixelOfAMeshExactlyOnce)
{
    struct Case {
        std::string what;
        Rect rect;
    };
    const Case cases[] = {
        {"on whole pixels", {4, 3, 20, 11}},
        {"on fractional edges", {4.3, 2.6, 19.55, 11.2}},
        {"one pixel tall", {2, 7, 25, 1}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        TriangleCanvas canvas;
        canvas.fillRect(c.rect, {1.0, 0.0, 0.0, 0.5});
        GuardedImage image(32, 18);
        draw(canvas, image);
        // Every pixel wholly inside carries exactly half red over the background.
        std::set<std::uint32_t> interior;
        for (int y = static_cast<int>(std::ceil(c.rect.y)); y + 1 <= c.rect.y + c.rect.height; ++y)
            for (int x = static_cast<int>(std::ceil(c.rect.x)); x + 1 <= c.rect.x + c.rect.width; ++x)
                interior.insert(image.at(x, y));
        ASSERT_EQ(interior.size(), 1u);
        const std::uint32_t pixel = *interior.begin();
        EXPECT_EQ(pixel >> 24, 255u);
        EXPECT_NEAR((pixel >> 16) & 0xff, 128 + 16, 1); // red: 0.5 + 0x20 * 0.5
        EXPECT_NEAR(pixel & 0xff, 16, 1);
        // Outside, one pixel beyond the fringe, nothing changed.
        EXPECT_EQ(image.at(0, 0), kBackground);
        EXPECT_EQ(image.at(31, 17), kBackground);
    }
}

// Shapes reaching past the image (the graph's trace runs off its top; a
// stroke may be wider than the view) are cut at its edges.
TEST(TriangleRasterizer, DrawsNothingOutsideTheImage)
{
    TriangleCanvas canvas;
    canvas.fillRect({-50, -50, 200, 200}, {0.0, 0.0, 1.0, 1.0});
    canvas.strokeLine({-10, 5}, {60, 9}, {1.0, 1.0, 1.0, 0.7}, 6.0);
    canvas.strokeLine({3, -40}, {3, 40}, {0.0, 1.0, 0.0, 1.0}, 3.0);
    GuardedImage image(24, 16);
    draw(canvas, image);
    EXPECT_EQ(image.guardsTouched(), 0);
    EXPECT_EQ(image.at(20, 14), 0xff0000ffu) << "the blue fill covers the image";
    EXPECT_EQ(image.at(3, 14), 0xff00ff00u) << "the green line crosses it";
}

// At a device pixel ratio of 2 a shape covers twice the pixels each way,
// with its fringe still one device pixel wide.
TEST(TriangleRasterizer, ScalesToDevicePixels)
{
    TriangleCanvas canvas(0.5);
    canvas.fillRect({2, 2, 4, 3}, {0.0, 1.0, 0.0, 1.0});
    GuardedImage image(16, 12);
    draw(canvas, image, 2.0f);
    int green = 0;
    for (int y = 0; y < 12; ++y)
        for (int x = 0; x < 16; ++x)
            green += image.at(x, y) == 0xff00ff00u;
    EXPECT_EQ(green, 8 * 6);
    EXPECT_EQ(image.at(4, 4), 0xff00ff00u);
    EXPECT_EQ(image.at(3, 4), kBackground);
    EXPECT_EQ(image.at(12, 4), kBackground);
}

// Drawing into part of a larger image: the placement's offset moves the
// whole drawing, pixel for pixel.
TEST(TriangleRasterizer, PlacesTheDrawingAtItsOffset)
{
    TriangleCanvas canvas;
    canvas.fillRect({2.5, 1.25, 6, 4}, {0.0, 1.0, 0.0, 0.8});
    canvas.strokeLine({1, 2}, {9, 7}, {1.0, 1.0, 1.0, 0.9}, 1.5);
    GuardedImage atOrigin(16, 12), moved(16, 12);
    draw(canvas, atOrigin);
    rasterizeTriangles(canvas.vertices(), canvas.indices(), moved.image(), {1.0f, 5.0f, 3.0f});
    for (int y = 0; y < 12; ++y)
        for (int x = 0; x < 16; ++x) {
            const bool inside = x >= 5 && y >= 3;
            ASSERT_EQ(moved.at(x, y), inside ? atOrigin.at(x - 5, y - 3) : kBackground) << x << "," << y;
        }
    EXPECT_EQ(moved.guardsTouched(), 0);
}

} // namespace
} // namespace veltra::test
