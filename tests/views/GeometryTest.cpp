#include "views/Geometry.h"
#include "views/PaddingLabel.h"

#include <gtest/gtest.h>

namespace veltra {
namespace {

// The graph's in-tune test hinges on this: a value exactly on the bar's
// right edge is outside, one on its left edge inside.
TEST(RectTest, ContainsMinimumEdgesButNotMaximumEdges)
{
    const Rect bar{126.0, 0.0, 48.0, 100.0};
    const std::pair<Point, bool> rows[] = {{{126.0, 0.0}, true},   {{173.9, 99.9}, true},  {{174.0, 0.0}, false},
                                           {{125.9, 0.0}, false},  {{150.0, 100.0}, false}};
    for (const auto& [point, inside] : rows)
        EXPECT_EQ(bar.contains(point), inside) << point.x << "," << point.y;
}

TEST(PaddingLabelTest, InsetsTextEightPointsEachSide)
{
    const std::pair<Rect, Rect> rows[] = {
        {{0.0, 0.0, 100.0, 40.0}, {8.0, 0.0, 84.0, 40.0}},
        {{5.0, 3.0, 100.0, 20.0}, {13.0, 3.0, 84.0, 20.0}},
        {{0.0, 0.0, 10.0, 20.0}, {8.0, 0.0, -6.0, 20.0}}, // negative width passed on
    };
    for (const auto& [bounds, text] : rows)
        EXPECT_EQ(PaddingLabel::textRect(bounds), text);
}

} // namespace
} // namespace veltra
