#include "ClassifyDoubles.h"
#include "classify/NeuralSoundClassifier.h"
#include "dsp/OfflinePatch.h"
#include "settings/MemoryPreferenceStore.h"
#include "settings/Preferences.h"
#include "tone/ToneGenerator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace veltra {
namespace {

constexpr int kRate = 48000;
constexpr std::size_t kBlock = 2048;

// Every result of `audio` through the shipped classifier and a gate with all
// four categories on: the category and the time of the first window that
// opens it, or nothing.
std::string firstOpening(NeuralSoundClassifier& classifier, const std::vector<float>& audio)
{
    test::EveryCategoryGate everyCategory;
    SoundGate& gate = everyCategory.gate;
    classifier.reset(kRate);
    for (std::size_t i = 0; i < audio.size(); i += kBlock) {
        const std::span<const float> block(audio.data() + i, std::min(kBlock, audio.size() - i));
        for (const SoundClassificationResult& result : classifier.analyze(block)) {
            gate.processResult(result);
            if (gate.isSoundDetected())
                return gate.currentSound() + " at " + std::to_string(result.timeSeconds) + " s";
        }
    }
    return {};
}

NeuralSoundClassifier& shippedClassifier()
{
    static const auto classifier = NeuralSoundClassifier::fromFile(defaultSoundModelPath());
    return *classifier;
}

// A pure tone is no instrument and no voice: the tuner's own reference
// tones, played back into the microphone, must not open the gate.
TEST(PureToneTest, NoReferenceToneOfAnyOctaveOpensTheGate)
{
    MemoryPreferenceStore preferences;
    CommonUtils::setDefaultPreferences(preferences);
    for (std::int64_t octave = 0; octave < 4; ++octave) {
        for (std::int64_t tag = 1; tag <= 12; ++tag) {
            PdBase base;
            OfflinePatch patch(base, kRate);
            ToneGenerator tone(base, preferences);
            std::vector<float> stereo;
            tone.btnToneDown(tag, octave);
            patch.driver().run(std::vector<float>(std::size_t(2 * kRate)), &stereo);
            std::vector<float> left(stereo.size() / 2);
            for (std::size_t i = 0; i < left.size(); ++i)
                left[i] = stereo[2 * i];
            EXPECT_EQ(firstOpening(shippedClassifier(), left), "")
                << "MIDI note " << ToneGenerator::toneNoteNumber(tag, octave);
        }
    }
}

// Nor a sine at any pitch the tuner reads (a reference tone from another
// device, down to a bass's lowest string), nor the square or sawtooth beep
// of an electronic tuner or a synthesiser's plain oscillator from C4 up:
// harmonics summed up to 8 kHz, as a small speaker passes them. (Lower, the
// many harmonics that share a mel band beat within each 25 ms frame, and
// the frames no longer look steady.)
TEST(PureToneTest, NoSineSquareOrSawtoothBeepOpensTheGate)
{
    struct Wave {
        const char* name;
        int harmonicStep; // 0: the fundamental alone
        int lowest, highest, step;
    };
    for (const Wave& wave : {Wave{"sine", 0, 21, 108, 1}, Wave{"square", 2, 60, 96, 3}, Wave{"sawtooth", 1, 60, 96, 3}}) {
        for (int midi = wave.lowest; midi <= wave.highest; midi += wave.step) {
            const double f0 = 440.0 * std::exp2((midi - 69) / 12.0);
            std::vector<float> audio(std::size_t(2 * kRate));
            for (std::size_t i = 0; i < audio.size(); ++i) {
                const double phase = 2 * std::numbers::pi * f0 * double(i) / kRate;
                double x = 0;
                for (int k = 1; k * f0 < 8000; k += std::max(wave.harmonicStep, 1)) {
                    x += std::sin(k * phase) / k;
                    if (wave.harmonicStep == 0)
                        break;
                }
                audio[i] = float(0.3 * x);
            }
            EXPECT_EQ(firstOpening(shippedClassifier(), audio), "") << wave.name << " at MIDI note " << midi;
        }
    }
}

} // namespace
} // namespace veltra
