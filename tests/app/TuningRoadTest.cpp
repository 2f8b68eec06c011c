#include "app/OfflineTuner.h"
#include "settings/MemoryPreferenceStore.h"
#include "settings/Preferences.h"
#include "support/PatchRig.h"
#include "support/Signals.h"
#include "tone/ToneGenerator.h"
#include "tuning/Temperament.h"
#include "tuning/Tuning.h"

#include <gtest/gtest.h>

#include <cmath>

namespace veltra::test {
namespace {

constexpr int kRate = 48000;

MemoryPreferenceStore tuning(Temperament temperament, int tonic, int transpose)
{
    MemoryPreferenceStore preferences;
    CommonUtils::setDefaultPreferences(preferences);
    preferences.setInteger(static_cast<std::int64_t>(temperament), PreferenceKey::Temperament);
    preferences.setInteger(tonic, PreferenceKey::Tonic);
    preferences.setInteger(transpose, PreferenceKey::Transpose);
    return preferences;
}

// The frequency of the patch's tone over its steady part, from the first to
// the last rising zero crossing of the left channel.
double toneFrequency(const std::vector<float>& stereo)
{
    double first = -1;
    double last = -1;
    int crossings = 0;
    for (std::size_t f = kRate / 10; f + 1 < stereo.size() / 2; ++f) {
        const float a = stereo[2 * f];
        const float b = stereo[2 * f + 2];
        if (a < 0 && b >= 0) {
            const double t = static_cast<double>(f) + a / (a - b);
            if (first < 0)
                first = t;
            last = t;
            ++crossings;
        }
    }
    return (crossings - 1) * kRate / (last - first);
}

// What the tone button with tag plays (octave of middle C), through the
// real patch: the samples of both channels.
std::vector<float> toneOf(const PreferenceStore& preferences, std::int64_t tag, double seconds)
{
    PatchRig rig(kRate);
    ToneGenerator tone(rig.base, preferences);
    tone.btnToneDown(tag, 0);
    return rig.feed(silence(seconds, kRate));
}

// The readout's deviation, "+2.0%", as a number of cents.
double cents(const std::string& deviation)
{
    return std::stod(deviation.substr(0, deviation.size() - 1));
}

struct Reading {
    std::string note;
    std::string deviation;
    std::int64_t key;
    std::string graphNote;
    double graphX;
    std::string concert;
};

Reading readingOf(PreferenceStore& preferences, const std::vector<float>& input)
{
    OfflineTuner tuner(preferences, kRate);
    tuner.run(input);
    const auto& labels = tuner.screen().labels();
    const auto& graph = tuner.screen().currentLiveViewNote();
    return {labels.noteName + labels.sharpFlat + labels.octaveNumber, labels.deviation,
            tuner.pianoView().highlightKey(), graph ? graph->note + graph->sharpFlat + graph->octaveNumber : "",
            tuner.liveView().lastDeviationXVal(), labels.concert};
}

// A note at its place in a temperament reads in tune there, end to end:
// the tone button plays it through the patch, and the tuner hears that
// tone in tune, centred on the graph, its key lit; in equal temperament
// the same tone reads off by the table's cents. The patch hears a steady
// sine within a tenth of a cent, and the readout cuts to tenths, so a tone
// a few hundredths flat (330 Hz, Werckmeister's E) shows -0.1.
TEST(TuningRoad, ATemperedToneReadsInTuneInItsTemperament)
{
    struct Case {
        Temperament temperament;
        int tonic;
        std::int64_t tag; // C = 1
        const char* note;
        std::int64_t key;
        double equalCents; // the table's cents from equal temperament, A at 0
    };
    const Case cases[] = {
        {Temperament::WerckmeisterIII, 0, 5, "E4", 43, 1.955},         // E 390.225 c, A 888.270 c above C
        {Temperament::QuarterCommaMeantone, 2, 4, "D#4", 42, -20.53}, // on D: D sharp is its minor second
        {Temperament::Just, 0, 1, "C4", 39, 15.64},
    };
    const double centre = OfflineTuner::kGraphRect.width / 2;
    for (const Case& c : cases) {
        SCOPED_TRACE(kTemperaments[static_cast<std::size_t>(c.temperament)].id);
        MemoryPreferenceStore preferences = tuning(c.temperament, c.tonic, 0);
        const std::vector<float> stereo = toneOf(preferences, c.tag, 2.0);
        const int pc = static_cast<int>(c.tag) - 1;
        const double expected =
            440.0 * std::exp2((pc - 9 + Tuning::fromPreferences(preferences).centsOf(pc) / 100.0) / 12.0);
        EXPECT_NEAR(toneFrequency(stereo), expected, 0.01);

        std::vector<float> left(stereo.size() / 2);
        for (std::size_t f = 0; f < left.size(); ++f)
            left[f] = 0.3f * stereo[2 * f];
        const Reading tempered = readingOf(preferences, left);
        EXPECT_EQ(tempered.note, c.note);
        EXPECT_LE(std::abs(cents(tempered.deviation)), 0.1) << tempered.deviation;
        EXPECT_EQ(tempered.key, c.key);
        EXPECT_EQ(tempered.graphNote, c.note);
        EXPECT_NEAR(tempered.graphX, centre, 1.0);

        MemoryPreferenceStore equal = tuning(Temperament::Equal, 0, 0);
        EXPECT_NEAR(cents(readingOf(equal, left).deviation), c.equalCents, 0.15);
    }
}

// A B flat instrument reads written pitch: concert C4 shows as D4 with its
// key, the concert note beside it; the button for written D plays C4.
TEST(TuningRoad, ABFlatInstrumentReadsAndPlaysWrittenNotes)
{
    MemoryPreferenceStore preferences = tuning(Temperament::Equal, 0, -2);
    const Reading reading = readingOf(preferences, sine(261.63, 0.3, 2.0, kRate));
    EXPECT_EQ(reading.note, "D4");
    EXPECT_EQ(reading.deviation, "+0.0%");
    EXPECT_EQ(reading.key, 41);
    EXPECT_EQ(reading.graphNote, "D4");
    EXPECT_EQ(reading.concert, "C4");
    EXPECT_NEAR(toneFrequency(toneOf(preferences, 3, 1.0)), 261.63, 0.01);

    MemoryPreferenceStore concert = tuning(Temperament::Equal, 0, 0);
    EXPECT_EQ(readingOf(concert, sine(261.63, 0.3, 2.0, kRate)).concert, "");
}

} // namespace
} // namespace veltra::test
