#include "support/PatchRig.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace veltra::test {
namespace {

constexpr int kRate = 48000;

TEST(PatchBehaviour, QuietInputSendsZeroOncePer256Samples)
{
    struct Case {
        const char* what;
        std::vector<float> input;
    };
    const Case cases[] = {
        {"silence", silence(1.0, kRate)},
        {"a sine under the 50 dB gate", sine(440, amplitudeForPdDb(45), 1.0, kRate)},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        PatchRig rig(kRate);
        rig.feed(c.input);
        // The long analyser reports once its 4096-point window is full, then
        // every 256 samples to the end.
        ASSERT_FALSE(rig.readings.empty());
        EXPECT_LE(rig.readings.front().time, (4096.0 + 256.0) / kRate);
        EXPECT_GT(rig.readings.back().time, static_cast<double>(c.input.size() - 256) / kRate);
        for (std::size_t i = 0; i < rig.readings.size(); ++i) {
            EXPECT_EQ(rig.readings[i].frequency, 0.0f);
            if (i > 0) {
                EXPECT_NEAR(rig.readings[i].time - rig.readings[i - 1].time, 256.0 / kRate, 1e-9);
            }
        }
    }
}

TEST(PatchBehaviour, SettledSineReadsWithinATenthOfACent)
{
    for (const int rate : {48000, 44100}) {
        for (const double frequency : {82.41, 196.0, 440.0, 1318.5}) {
            SCOPED_TRACE(testing::Message() << frequency << " Hz at " << rate);
            PatchRig rig(rate);
            rig.feed(sine(frequency, 0.3, 1.5, rate));
            const auto settled = std::find_if(rig.readings.begin(), rig.readings.end(),
                                              [](const auto& r) { return r.time > 0.5; });
            ASSERT_NE(settled, rig.readings.end());
            for (auto it = settled; it != rig.readings.end(); ++it)
                EXPECT_NEAR(cents(it->frequency, frequency), 0.0, 0.1) << "at " << it->time;
        }
    }
}

// Which analyser answers shows in how fast the reading follows a jump in
// pitch: the 2048-point window forgets the old note 2048 samples sooner.
double settleTimeAfterJump(double amplitude)
{
    PatchRig rig(kRate);
    const double jumpAt = 1.0;
    rig.feed(concat(sine(440, amplitude, jumpAt, kRate), sine(660, amplitude, 1.0, kRate)));
    for (const auto& r : rig.readings)
        if (r.time > jumpAt && std::abs(cents(r.frequency, 660)) < 5)
            return r.time - jumpAt;
    return 1e9;
}

TEST(PatchBehaviour, LoudNotesUseTheShortAnalyserAndMediumOnesTheLong)
{
    const double loud = settleTimeAfterJump(amplitudeForPdDb(85));  // short analyser above 65 dB
    const double medium = settleTimeAfterJump(amplitudeForPdDb(58)); // between 50 and 65 dB
    EXPECT_LT(loud, 2048.0 / kRate);
    EXPECT_GT(medium, 2048.0 / kRate);
    EXPECT_GE(medium - loud, 1024.0 / kRate);
}

TEST(PatchBehaviour, ToneFollowsMidinoteTriggerAndStop)
{
    PatchRig rig(kRate);
    auto peakIn = [](const std::vector<float>& stereo, std::size_t fromFrame, std::size_t toFrame) {
        float peak = 0;
        for (std::size_t f = fromFrame; f < toFrame; ++f)
            peak = std::max({peak, std::abs(stereo[2 * f]), std::abs(stereo[2 * f + 1])});
        return peak;
    };

    // A note without a trigger changes the pitch silently.
    rig.base.sendFloat(69, "midinote");
    auto out = rig.feed(silence(0.1, kRate));
    EXPECT_EQ(peakIn(out, 0, out.size() / 2), 0.0f);

    // Attack: a linear ramp to full amplitude in 50 ms, on both channels.
    rig.base.sendBang("trigger");
    out = rig.feed(silence(0.5, kRate));
    EXPECT_LT(peakIn(out, 0, 480), 0.25f);                  // first 10 ms
    EXPECT_GT(peakIn(out, 2400 - 480, 2400), 0.8f);          // around 50 ms
    EXPECT_NEAR(peakIn(out, 4800, 24000), 1.0f, 1e-3f);     // full scale after the ramp
    std::size_t crossings = 0;
    for (std::size_t f = 4800; f + 1 < 4800 + kRate / 4; ++f)
        crossings += (out[2 * f] <= 0) != (out[2 * f + 2] <= 0);
    EXPECT_NEAR(crossings / 2.0 / 0.25, 440.0, 8.0); // ~440 Hz over a quarter second
    for (std::size_t f = 0; f < out.size() / 2; ++f)
        ASSERT_EQ(out[2 * f], out[2 * f + 1]);

    // Release: down to silence within 100 ms, and a second stop keeps it there.
    rig.base.sendBang("stop");
    out = rig.feed(silence(0.2, kRate));
    EXPECT_GT(peakIn(out, 0, 480), 0.8f);
    EXPECT_LT(peakIn(out, 4800 - 96, 4800), 0.03f);
    EXPECT_EQ(peakIn(out, 4800 + 64, out.size() / 2), 0.0f);
    rig.base.sendBang("stop");
    out = rig.feed(silence(0.2, kRate));
    EXPECT_EQ(peakIn(out, 0, out.size() / 2), 0.0f);
}

} // namespace
} // namespace veltra::test
