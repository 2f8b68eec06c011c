#include "support/Replay.h"
#include "views/CullingCanvas.h"

#include <gtest/gtest.h>

#include <string>

namespace veltra {
namespace {

constexpr Rect kVisible{0.0, 0.0, 100.0, 50.0};
constexpr Color kRed{1.0, 0.0, 0.0, 1.0};

// What a user would miss if the culling were too eager (a bar or a trace
// segment at the edge gone) or what it is there to drop (the history below
// the view).
TEST(CullingCanvas, PassesOnWhatCanTouchTheViewAndDropsTheRest)
{
    struct Case {
        std::string what;
        Primitive primitive;
        bool passed;
    };
    const Case cases[] = {
        {"a rect inside", FilledRect{{10, 10, 5, 5}, kRed}, true},
        {"a rect covering the whole view", FilledRect{{-10, -10, 200, 200}, kRed}, true},
        {"a rect with negative size reaching in", FilledRect{{5, 5, -10, -10}, kRed}, true},
        {"a one-row rect on the last row", FilledRect{{10, 49, 5, 1}, kRed}, true},
        {"a rect far below", FilledRect{{10, 60, 5, 1}, kRed}, false},
        {"a rect far to the left", FilledRect{{-20, 10, 5, 5}, kRed}, false},
        {"a rect whose fringe reaches the left edge", FilledRect{{-5.5, 10, 5, 5}, kRed}, true},
        {"a segment crossing the bottom edge", StrokedLine{{50, 49}, {52, 50}, kRed, 1.0}, true},
        {"a segment one row below the view", StrokedLine{{50, 52}, {52, 53}, kRed, 1.0}, false},
        {"a thick segment just below whose width reaches in", StrokedLine{{50, 53}, {50, 60}, kRed, 8.0}, true},
        {"a segment just above the view (the trace's first row)", StrokedLine{{50, -1}, {51, 0}, kRed, 1.0}, true},
        {"an outlined key inside", FilledStrokedRect{{0, 0, 10, 50}, kRed, kRed, 0.75}, true},
        {"an outlined key starting at the right edge", FilledStrokedRect{{100, 0, 10, 50}, kRed, kRed, 0.75}, true},
        {"an outlined key well beyond the right edge", FilledStrokedRect{{110, 0, 10, 50}, kRed, kRed, 0.75}, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        RecordingCanvas target;
        CullingCanvas culling(target, kVisible);
        test::replay(c.primitive, culling);
        if (c.passed) {
            ASSERT_EQ(target.primitives().size(), 1u);
            EXPECT_EQ(target.primitives()[0], c.primitive) << "passed on changed";
        } else {
            EXPECT_TRUE(target.primitives().empty());
        }
    }
}

} // namespace
} // namespace veltra
