#include "app/OfflineTuner.h"
#include "app/ReferenceCapture.h"
#include "settings/MemoryPreferenceStore.h"
#include "settings/Preferences.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

namespace veltra::test {
namespace {

constexpr int kRate = 48000;

// The reference taken from a heard A, end to end: the A played into the real
// patch, its readings to the capture beside the main screen, and the next A
// read against the new reference.
struct HeardReferenceRoad : ::testing::Test {
    MemoryPreferenceStore preferences;
    OfflineTuner tuner{preferences, kRate};
    ReferenceCapture capture{preferences};
    int changes = 0;

    void SetUp() override
    {
        CommonUtils::setDefaultPreferences(preferences);
        tuner.screen().dispatcher()->addListener(&capture, "frequency");
        capture.setChanged([this] { ++changes; });
    }
};

TEST_F(HeardReferenceRoad, AnAAt441Point3SetsTheReferenceTo441AndTheNext441HertzAReadsInTune)
{
    tuner.run(sine(441.0, 0.3, 1.0, kRate));
    EXPECT_EQ(tuner.screen().labels().deviation, "+3.9%"); // against 440 before

    capture.start();
    EXPECT_EQ(capture.message(), "Play an A and hold it for a second.");
    tuner.run(sine(441.3, 0.3, 2.0, kRate));
    EXPECT_FALSE(capture.listening());
    EXPECT_EQ(preferences.integerForKey(PreferenceKey::A4), 441);
    EXPECT_EQ(capture.message(), "Reference A set to 441 Hz.");
    EXPECT_EQ(changes, 2);

    // In tune: the patch hears this sine at 440.9999 Hz, 0.0004 cents flat,
    // which the readout, cutting to tenths away from the note, shows as
    // -0.1 (as 439.9999 Hz would against 440); never more than that.
    tuner.run(concat(silence(0.5, kRate), sine(441.0, 0.3, 2.0, kRate)));
    const auto& labels = tuner.screen().labels();
    EXPECT_EQ(labels.noteName + labels.octaveNumber, "A4");
    EXPECT_TRUE(labels.deviation == "+0.0%" || labels.deviation == "-0.1%") << labels.deviation;
    EXPECT_EQ(labels.frequency, "441.0");
}

TEST_F(HeardReferenceRoad, ANoteThatIsNoAOrSilenceLeavesTheReferenceAndSaysWhy)
{
    const struct {
        const char* what;
        std::vector<float> input;
        std::int64_t a4;
        const char* message;
    } cases[] = {
        {"A flat", sine(415.3, 0.3, 2.0, kRate), 440, "That note is 100.0 cents from an A. Play an A and try again."},
        {"an A an octave down", sine(220.5, 0.3, 2.0, kRate), 441, "Reference A set to 441 Hz."},
        {"silence", silence(11.0, kRate), 440, "No steady A heard. Play an A and hold it for a second."},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        preferences.setInteger(440, PreferenceKey::A4);
        capture.start();
        tuner.run(c.input);
        EXPECT_FALSE(capture.listening());
        EXPECT_EQ(capture.message(), c.message);
        EXPECT_EQ(preferences.integerForKey(PreferenceKey::A4), c.a4);
    }
}

} // namespace
} // namespace veltra::test
