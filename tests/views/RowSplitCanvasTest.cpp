#include "views/RecordingCanvas.h"
#include "views/RowSplitCanvas.h"
#include "views/TriangleCanvas.h"
#include "views/TriangleRasterizer.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

namespace veltra::test {
namespace {

constexpr Rect kBounds{0, 0, 40, 30};
constexpr Color kRed{1, 0, 0, 1};
constexpr Color kWash{0.8, 0.99, 0.44, 0.35};

// How many primitives went to each side, for a drawing made in order.
TEST(RowSplitCanvas, SendsTheLeadingPrimitivesAlikeOnEveryRowToTheirOwnCanvas)
{
    struct Case {
        std::string what;
        std::function<void(Canvas&)> draw;
        std::size_t everyRow, rest;
    };
    const Case cases[] = {
        {"fills from top to bottom, and beyond",
         [](Canvas& c) {
             c.fillRect({5, 0, 10, 30}, kRed);
             c.fillRect({0, -3, 40, 40}, kWash);
             c.fillRect({8, 30, 4, -30}, kRed); // negative height, same rows
         },
         3, 0},
        {"vertical lines as tall as the bounds", [](Canvas& c) { c.strokeLine({20, 30}, {20, 0}, kRed, 2); }, 1, 0},
        {"a fill that stops short, and all after it",
         [](Canvas& c) {
             c.fillRect({5, 0, 10, 30}, kRed);
             c.fillRect({5, 1, 10, 29}, kRed);
             c.fillRect({0, 0, 40, 30}, kWash);
         },
         1, 2},
        {"a slanted line", [](Canvas& c) { c.strokeLine({20, 0}, {21, 30}, kRed, 2); }, 0, 1},
        {"a short vertical line", [](Canvas& c) { c.strokeLine({20, 0}, {20, 29}, kRed, 2); }, 0, 1},
        {"an outlined rectangle", [](Canvas& c) { c.fillAndStrokeRect({0, 0, 40, 30}, kRed, kWash, 1); }, 0, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        RecordingCanvas everyRow, rest;
        RowSplitCanvas split(everyRow, rest, kBounds);
        c.draw(split);
        EXPECT_EQ(everyRow.primitives().size(), c.everyRow);
        EXPECT_EQ(rest.primitives().size(), c.rest);
    }
}

// Drawn on one row and copied, the rows come out as if each were drawn:
// a graph's layers, then its trace and a one-row mark over them.
TEST(RowSplitCanvas, CopiedRowsLookAsIfDrawnOneByOne)
{
    const auto draw = [](Canvas& c) {
        c.fillRect({3.5, 0, 9.25, 30}, {1.0, 0.42, 0.32, 1.0});
        c.fillRect({16.3, 0, 7.4, 30}, {0.12, 0.69, 0.54, 0.9});
        c.fillRect(kBounds, kWash);
        c.strokeLine({20, 0}, {20, 30}, {0.8, 1.0, 0.8, 0.65}, 1.5);
        for (int row = 0; row < 30; ++row)
            c.strokeLine({18.0 + row % 4, row - 1.0}, {18.0 + (row + 1) % 4, double(row)}, {1, 1, 1, 1}, 1.5);
        c.fillRect({2, 12, 10, 1}, kRed);
    };
    const std::uint32_t background = 0xff1c1f24u;
    std::vector<std::uint32_t> expected(40 * 30, background), copied = expected;

    TriangleCanvas whole;
    draw(whole);
    rasterizeTriangles(whole.vertices(), whole.indices(), {expected.data(), 40, 30, 40});

    TriangleCanvas everyRow, rest;
    RowSplitCanvas split(everyRow, rest, kBounds);
    draw(split);
    ASSERT_FALSE(everyRow.indices().empty());
    ASSERT_FALSE(rest.indices().empty());
    rasterizeTriangles(everyRow, rest, {copied.data(), 40, 30, 40}, {}, {2, 28});

    for (int i = 0; i < 40 * 30; ++i)
        for (int shift = 0; shift < 32; shift += 8)
            ASSERT_LE(std::abs(int((expected[i] >> shift) & 0xff) - int((copied[i] >> shift) & 0xff)), 1)
                << "pixel " << i % 40 << "," << i / 40;
}

} // namespace
} // namespace veltra::test
