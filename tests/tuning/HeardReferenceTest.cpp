#include "tuning/HeardReference.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace veltra {
namespace {

using Outcome = HeardReference::Outcome;

// Feeds `count` readings made by `pitch` (reading index to hertz) until the
// listening ends; the outcome and how many readings it took.
struct Heard {
    std::optional<HeardReference::Result> result;
    std::size_t readings = 0;
};

Heard listen(int a4, const std::function<float(std::size_t)>& pitch, std::size_t count = 4000)
{
    HeardReference heard;
    heard.start(a4);
    Heard out;
    while (out.readings < count && !out.result)
        out.result = heard.addReading(pitch(out.readings++));
    EXPECT_EQ(heard.listening(), !out.result);
    return out;
}

std::function<float(std::size_t)> steady(double hz)
{
    return [hz](std::size_t) { return static_cast<float>(hz); };
}

TEST(HeardReference, ASteadyAInAnyOctaveSetsTheReferenceInWholeHertz)
{
    const struct {
        const char* what;
        int a4;
        double hz;
        HeardReference::Result expected;
    } cases[] = {
        {"an A4 a little sharp", 440, 441.3, {Outcome::Set, 441, 1200 * std::log2(441.3 / 440)}},
        {"the same A an octave down", 440, 220.65, {Outcome::Set, 441, 1200 * std::log2(441.3 / 440)}},
        {"two octaves up", 440, 1765.2, {Outcome::Set, 441, 1200 * std::log2(441.3 / 440)}},
        {"a baroque A against a baroque reference", 415, 416.4, {Outcome::Set, 416, 1200 * std::log2(416.4 / 415)}},
        {"rounded to the nearer hertz", 440, 438.6, {Outcome::Set, 439, 1200 * std::log2(438.6 / 440)}},
        {"just within half a semitone", 440, 452.6, {Outcome::Set, 453, 1200 * std::log2(452.6 / 440)}},
        {"an A beyond the highest reference", 499, 510, {Outcome::OutOfRange, 510, 1200 * std::log2(510.0 / 499)}},
        {"an A below the lowest", 400, 392, {Outcome::OutOfRange, 392, 1200 * std::log2(392.0 / 400)}},
        {"A flat is not an A", 440, 415.3, {Outcome::NotAnA, 0, 1200 * std::log2(415.3 / 440)}},
        {"nor is E", 440, 329.63, {Outcome::NotAnA, 0, 1200 * std::log2(329.63 / 440)}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const Heard heard = listen(c.a4, steady(c.hz));
        ASSERT_TRUE(heard.result.has_value());
        EXPECT_EQ(heard.result->outcome, c.expected.outcome);
        EXPECT_EQ(heard.result->a4, c.expected.a4);
        EXPECT_NEAR(heard.result->cents, c.expected.cents, 0.01);
        EXPECT_EQ(heard.readings, HeardReference::kSteadyReadings); // about a second, no more
    }
}

TEST(HeardReference, OnlyANoteHeldSteadyForASecondCounts)
{
    // A slide into the A: decided a second after the pitch settles.
    const Heard slide = listen(440, [](std::size_t i) { return i < 100 ? 400.0f + 0.4f * i : 441.0f; });
    ASSERT_TRUE(slide.result.has_value());
    EXPECT_EQ(slide.result->a4, 441);
    EXPECT_GE(slide.readings, 100 + HeardReference::kSteadyReadings - 10);

    // Gaps of no pitch restart the second.
    const Heard broken = listen(440, [](std::size_t i) { return i % 150 == 149 ? 0.0f : 441.0f; }, 1000);
    EXPECT_FALSE(broken.result.has_value());

    // Vibrato of 30 cents either side is no steady note; a small wobble is.
    const auto vibrato = [](double cents) {
        return [cents](std::size_t i) { return static_cast<float>(440 * std::exp2(cents * std::sin(i * 0.2) / 1200)); };
    };
    const Heard wide = listen(440, vibrato(30));
    ASSERT_TRUE(wide.result.has_value());
    EXPECT_EQ(wide.result->outcome, Outcome::NothingHeard);
    EXPECT_EQ(wide.readings, HeardReference::kGiveUpReadings);
    const Heard narrow = listen(440, vibrato(5));
    ASSERT_TRUE(narrow.result.has_value());
    EXPECT_EQ(narrow.result->a4, 440);

    // Silence: given up after about ten seconds.
    const Heard silence = listen(440, steady(0));
    EXPECT_EQ(silence.result, (HeardReference::Result{Outcome::NothingHeard}));
}

TEST(HeardReference, NothingIsTakenUnlessListening)
{
    HeardReference heard;
    for (int i = 0; i < 400; ++i)
        EXPECT_FALSE(heard.addReading(441.0f).has_value());
    heard.start(440);
    for (int i = 0; i < 100; ++i)
        heard.addReading(441.0f);
    heard.cancel();
    EXPECT_FALSE(heard.listening());
    EXPECT_FALSE(heard.addReading(441.0f).has_value());
}

} // namespace
} // namespace veltra
