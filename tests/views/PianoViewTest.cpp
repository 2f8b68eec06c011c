#include "views/PianoView.h"
#include "views/RecordingCanvas.h"

#include <gtest/gtest.h>

namespace veltra {
namespace {

constexpr Rect kBounds{0.0, 0.0, 520.0, 80.0};
constexpr double kw = 520.0 / 52.0;
constexpr double bw = kw / 1.5;
constexpr Color kGreen{0.0, 1.0, 0.0, 1.0};
constexpr Color kDarkGrey{1.0 / 3.0, 1.0 / 3.0, 1.0 / 3.0, 1.0};
constexpr Color kWhiteKey{1.0, 1.0, 1.0, 0.9};

// Keys drawn filled and stroked (white keys, then a lit black key), and
// plain black keys.
std::pair<std::vector<FilledStrokedRect>, std::vector<FilledRect>> drawKeys(std::int64_t highlight)
{
    PianoView piano;
    piano.setHighlightKey(highlight);
    RecordingCanvas canvas;
    piano.draw(&canvas, kBounds);
    return {canvas.all<FilledStrokedRect>(), canvas.all<FilledRect>()};
}

TEST(PianoViewTest, UnlitKeyboardGeometry)
{
    const auto [white, black] = drawKeys(-1);
    ASSERT_EQ(white.size(), 53U); // one more than the 52 white keys
    EXPECT_EQ(white[1], (FilledStrokedRect{{kw, 0.0, kw, 80.0}, kWhiteKey, kDarkGrey, 0.75}));
    EXPECT_DOUBLE_EQ(white[52].rect.x, 520.0);

    ASSERT_EQ(black.size(), 36U);
    EXPECT_EQ(black[0], (FilledRect{{kw - bw / 2, 0.0, bw, 80.0 / 1.65}, {0.0, 0.0, 0.0, 1.0}}));
    const double boundaries[] = {1, 3, 4, 6, 7, 8, 10}; // A#, C#, D#, F#, G#, then the next group
    for (std::size_t j = 0; j < 7; ++j)
        EXPECT_DOUBLE_EQ(black[j].rect.x, boundaries[j] * kw - bw / 2) << j;
    EXPECT_DOUBLE_EQ(black[35].rect.x, 50 * kw - bw / 2);
}

TEST(PianoViewTest, LightsKeyOfEitherColour)
{
    const std::pair<std::int64_t, std::size_t> whiteRows[] = {{0, 0}, {48, 28}, {87, 51}};
    for (const auto& [key, ordinal] : whiteRows) {
        const auto [white, black] = drawKeys(key);
        for (std::size_t i = 0; i < white.size(); ++i)
            EXPECT_EQ(white[i].fill, i == ordinal ? kGreen : kWhiteKey) << key << " " << i;
        EXPECT_EQ(black.size(), 36U);
    }
    const std::pair<std::int64_t, double> blackRows[] = {{1, 1 * kw}, {85, 50 * kw}};
    for (const auto& [key, boundary] : blackRows) {
        const auto [outlined, black] = drawKeys(key);
        ASSERT_EQ(outlined.size(), 54U);
        EXPECT_EQ(black.size(), 35U);
        EXPECT_EQ(outlined.back(), (FilledStrokedRect{{boundary - bw / 2, 0.0, bw, 80.0 / 1.65}, kGreen, kDarkGrey, 1.0}));
    }
    EXPECT_EQ(drawKeys(88).first.size(), 53U); // past the last key: nothing lit
}

TEST(PianoViewTest, KeyboardNeedsABlackKey)
{
    PianoView piano;
    RecordingCanvas canvas;
    piano.setNumberOfKeys(1);
    piano.draw(&canvas, kBounds);
    EXPECT_EQ(canvas.primitives().size(), 3U); // A and its extra rectangle, A sharp
    piano.setNumberOfKeys(0);
    EXPECT_DEATH(piano.draw(&canvas, kBounds), "fatal");
    piano.setNumberOfKeys(-1);
    EXPECT_DEATH(piano.draw(&canvas, kBounds), "fatal");
}

} // namespace
} // namespace veltra
