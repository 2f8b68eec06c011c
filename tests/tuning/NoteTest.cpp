#include "settings/MemoryPreferenceStore.h"
#include "settings/Preferences.h"
#include "tuning/Note.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace veltra {
namespace {

class NoteForNumberTest : public ::testing::Test {
protected:
    NoteForNumberTest() { CommonUtils::setDefaultPreferences(store); }
    Note noteFor(float x, bool sharpsOnly = true)
    {
        store.setBool(sharpsOnly, PreferenceKey::SharpsOnly);
        return CommonUtils::noteForNumber(x, store);
    }
    MemoryPreferenceStore store;
};

// One octave from A in both modes: the mixed table keeps C and F sharp but
// flattens B, E and A. The setting is read anew on every call.
TEST_F(NoteForNumberTest, NamesEveryPitchClassInBothModes)
{
    const char* sharps[] = {"A", "A#", "B", "C", "C#", "D", "D#", "E", "F", "F#", "G", "G#"};
    const char* mixed[] = {"A", "Bb", "B", "C", "C#", "D", "Eb", "E", "F", "F#", "G", "Ab"};
    for (int i = 0; i < 12; ++i) {
        const float x = 37.0f + static_cast<float>(i);
        const Note s = noteFor(x, true);
        const Note m = noteFor(x, false);
        EXPECT_EQ(s.note + s.sharpFlat, sharps[i]) << x;
        EXPECT_EQ(m.note + m.sharpFlat, mixed[i]) << x;
    }
}

// Name from the rounded number, octave from the unrounded one (so 3.5 is C
// in octave 0); deviation in truncated thousandths (49.0996 is 99, not 100),
// up to 499 above the rounded note and from 500 below the next one.
TEST_F(NoteForNumberTest, OctaveAndDeviation)
{
    const std::tuple<float, const char*, const char*, const char*> rows[] = {
        {3.0f, "B", "0", "+0.0%"},      {3.5f, "C", "0", "-50.0%"},     {3.6f, "C", "1", "-40.0%"},
        {12.0f, "G#", "1", "+0.0%"},    {51.5f, "C", "4", "-50.0%"},    {99.5f, "C", "8", "-50.0%"},
        {99.6f, "C", "", "-40.0%"},     {49.2f, "A", "4", "+20.0%"},    {48.8f, "A", "4", "-20.0%"},
        {49.4999f, "A", "4", "+49.9%"}, {49.5f, "A#", "4", "-50.0%"},   {49.0996f, "A", "4", "+9.9%"},
        {48.9996f, "A", "4", "-0.1%"},  {0.5f, "A", "0", "-50.0%"},     {1234.56f, "G", "", "-44.0%"},
    };
    for (const auto& [x, name, octave, deviation] : rows) {
        const Note n = noteFor(x);
        EXPECT_EQ(n.note + n.sharpFlat + "|" + n.octaveNumber + "|" + n.deviation,
                  std::string(name) + "|" + octave + "|" + deviation);
    }
}

TEST_F(NoteForNumberTest, FromFrequency)
{
    EXPECT_EQ(noteFor(noteNumberForFrequency(440.0f, 440)), (Note{"A", "", "4", "+0.0%"}));
    EXPECT_EQ(noteFor(noteNumberForFrequency(261.63f, 440)).octaveNumber, "4");
    EXPECT_EQ(noteNumberForFrequency(880.0f, 440), 61.0f);
    EXPECT_EQ(noteNumberForFrequency(216.0f, 432), 37.0f);
    EXPECT_NEAR(noteNumberForFrequency(261.63f, 440), 40.0f, 1e-3f);
}

TEST_F(NoteForNumberTest, NonPositiveGiveNoNoteNonFiniteIsFatal)
{
    for (const float x : {0.0f, -0.0f, -0.4f, -1499.0f})
        EXPECT_EQ(noteFor(x), (Note{"-", "", "", ""})) << x;
    for (const float x : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                          -std::numeric_limits<float>::infinity(), 1e19f})
        EXPECT_DEATH(noteFor(x), "fatal") << x;
}

TEST(RoundingTest, HalvesAwayFromZero)
{
    const std::pair<float, std::int64_t> rows[] = {{3.5f, 4}, {-3.5f, -4}, {2.5f, 3}, {-2.5f, -3}, {2.49f, 2}};
    for (const auto& [x, expected] : rows)
        EXPECT_EQ(roundHalfAwayFromZero(x), expected) << x;
}

} // namespace
} // namespace veltra
