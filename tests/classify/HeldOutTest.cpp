// The shipped model on audio it never trained on: notes rendered here, at
// test time, from the TimGM6mb soundfont (training used FluidR3 and
// MuseScore General), plus generated noise.
#include "classify/NeuralSoundClassifier.h"
#include "classify/SoundCategories.h"
#include "classify/SoundGate.h"
#include "dsp/AudioFile.h"
#include "settings/MemoryPreferenceStore.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <sstream>

namespace veltra {
namespace {

constexpr const char* kSoundfont = "/usr/share/sounds/sf2/TimGM6mb.sf2";
constexpr double kSlotSeconds = 2.5;
constexpr double kOnsetSeconds = 0.05;
constexpr double kNoteSeconds = 2.2;
constexpr int kNotesPerProgram = 4;

// Floors and ceilings on shares of windows. They sit below what
// tools/classifier/evaluate.py measures on a larger held-out set (see
// docs/classifier.md, which also names where the model falls short), so the
// test catches a broken model or front end rather than the noise of a few
// dozen windows.
const std::map<std::string, double, std::less<>> kMinAcceptance{
    {"Guitar", 0.85}, {"Violin", 0.7}, {"Piano", 0.6}, {"Voice", 0.4}};
// Other instruments, with the default gate (guitar) and with every category
// on: the plucked ones (harp, koto, banjo) are the model's weak spot, and the
// calibration lets a share of other instruments through to accept more of
// the enabled ones.
constexpr double kMaxOtherInstrumentsOpeningGuitar = 0.2;
constexpr double kMaxOtherInstruments = 0.45;
// Noise and silence: the target for what must never open the gate.
constexpr double kMaxNoise = 0.05;

struct Instrument {
    const char* name;
    int program;
    int lowKey;
    int highKey;
    const char* category; // the gate row that must accept it, or nullptr
};

const Instrument kInstruments[] = {
    {"nylon guitar", 24, 45, 69, "Guitar"},  {"steel guitar", 25, 45, 69, "Guitar"},
    {"clean guitar", 27, 45, 72, "Guitar"},  {"finger bass", 33, 31, 50, "Guitar"},
    {"violin", 40, 62, 88, "Violin"},        {"grand piano", 0, 40, 84, "Piano"},
    {"rhodes", 4, 45, 79, "Piano"},          {"choir", 52, 55, 72, "Voice"},
    {"whistle", 78, 76, 91, "Voice"},        {"trumpet", 56, 58, 77, nullptr},
    {"flute", 73, 65, 89, nullptr},          {"church organ", 19, 45, 79, nullptr},
    {"cello", 42, 40, 64, nullptr},          {"clarinet", 71, 55, 79, nullptr},
    {"alto sax", 65, 55, 76, nullptr},       {"harpsichord", 6, 48, 79, nullptr},
};

// A one-track Standard MIDI File: per instrument, held notes one slot apart.
std::string heldNotesMidi()
{
    constexpr int kTicksPerSecond = 960; // 480 per quarter at 120 bpm
    std::vector<std::pair<int, std::vector<std::uint8_t>>> events;
    int slot = 0;
    for (const Instrument& instrument : kInstruments) {
        for (int n = 0; n < kNotesPerProgram; ++n, ++slot) {
            const int start = int((slot * kSlotSeconds + kOnsetSeconds) * kTicksPerSecond);
            const auto key = std::uint8_t(instrument.lowKey + (instrument.highKey - instrument.lowKey) * n / (kNotesPerProgram - 1));
            events.push_back({start - 1, {0xC0, std::uint8_t(instrument.program)}});
            events.push_back({start, {0x90, key, 100}});
            events.push_back({start + int(kNoteSeconds * kTicksPerSecond), {0x80, key, 0}});
        }
    }
    std::string track;
    int last = 0;
    for (const auto& [tick, bytes] : events) {
        int delta = tick - last;
        last = tick;
        std::string vlq(1, char(delta & 0x7F));
        while (delta >>= 7)
            vlq.insert(vlq.begin(), char((delta & 0x7F) | 0x80));
        track += vlq + std::string(bytes.begin(), bytes.end());
    }
    track += std::string("\x00\xFF\x2F\x00", 4);
    auto be = [](std::uint32_t v, int bytes) {
        std::string s;
        for (int i = bytes - 1; i >= 0; --i)
            s += char((v >> (8 * i)) & 0xFF);
        return s;
    };
    return "MThd" + be(6, 4) + be(0, 2) + be(1, 2) + be(kTicksPerSecond / 2, 2) + "MTrk" + be(std::uint32_t(track.size()), 4) +
           track;
}

// Share of windows that open a gate with the given rows enabled.
class GateCounter {
public:
    explicit GateCounter(std::initializer_list<std::string_view> titles)
    {
        for (const SoundCategory& category : kSoundCategories)
            store_.setBool(std::find(titles.begin(), titles.end(), category.title) != titles.end(), category.key);
        gate_.updateIdentifiers();
    }

    void add(const SoundClassificationResult& result)
    {
        gate_.processResult(result);
        ++windows_;
        opened_ += gate_.isSoundDetected() ? 1 : 0;
    }

    double share() const { return windows_ ? double(opened_) / windows_ : 0.0; }
    int windows() const { return windows_; }

private:
    MemoryPreferenceStore store_;
    std::ostringstream console_;
    SoundGate gate_{store_, console_};
    int windows_ = 0;
    int opened_ = 0;
};

class HeldOutTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!std::filesystem::exists(kSoundfont) || std::system("command -v fluidsynth > /dev/null 2>&1") != 0)
            GTEST_SKIP() << "needs fluidsynth and timgm6mb-soundfont";
    }

    std::vector<SoundClassificationResult> classify(const AudioData& audio)
    {
        classifier_->reset(audio.sampleRate);
        return classifier_->analyze(audio.samples);
    }

    std::unique_ptr<NeuralSoundClassifier> classifier_ = NeuralSoundClassifier::fromFile(defaultSoundModelPath());
};

TEST_F(HeldOutTest, HeldNotesOpenTheirOwnGateAndOtherInstrumentsDoNot)
{
    const auto dir = std::filesystem::temp_directory_path();
    const auto midi = dir / "veltra-heldout.mid";
    const auto wav = dir / "veltra-heldout.wav";
    std::ofstream(midi, std::ios::binary) << heldNotesMidi();
    const std::string command = "fluidsynth -ni -q -R 0 -C 0 -g 0.6 -r 44100 -F '" + wav.string() + "' " + kSoundfont +
                                " '" + midi.string() + "' > /dev/null 2>&1";
    ASSERT_EQ(std::system(command.c_str()), 0);
    const AudioData audio = readAudioFile(wav.string());
    std::filesystem::remove(midi);
    std::filesystem::remove(wav);

    std::map<std::string, GateCounter> own;
    GateCounter othersOpeningGuitar({"Guitar"});
    GateCounter others({"Guitar", "Violin", "Piano", "Voice"});
    const double window = 0.975;
    for (const SoundClassificationResult& result : classify(audio)) {
        const int slot = int(result.timeSeconds / kSlotSeconds);
        const double into = result.timeSeconds - slot * kSlotSeconds;
        if (slot >= int(std::size(kInstruments)) * kNotesPerProgram || into < kOnsetSeconds ||
            into + window > kOnsetSeconds + kNoteSeconds)
            continue; // only windows wholly inside a held note
        const Instrument& instrument = kInstruments[slot / kNotesPerProgram];
        if (instrument.category)
            own.try_emplace(instrument.category, std::initializer_list<std::string_view>{instrument.category})
                .first->second.add(result);
        else {
            othersOpeningGuitar.add(result);
            others.add(result);
        }
    }
    for (const SoundCategory& category : kSoundCategories) {
        const GateCounter& counter = own.at(std::string(category.title));
        EXPECT_GE(counter.windows(), 2 * kNotesPerProgram);
        EXPECT_GE(counter.share(), kMinAcceptance.find(category.title)->second) << category.title;
    }
    EXPECT_GT(others.windows(), 20);
    EXPECT_LE(othersOpeningGuitar.share(), kMaxOtherInstrumentsOpeningGuitar) << "other instruments, guitar enabled";
    EXPECT_LE(others.share(), kMaxOtherInstruments) << "other instruments with every category enabled";
}

TEST_F(HeldOutTest, NoiseAndSilenceKeepEveryGateClosed)
{
    std::mt19937 random(5);
    std::normal_distribution<float> normal(0.0f, 1.0f);
    AudioData noise{std::vector<float>(16000 * 20), 16000};
    float brown = 0;
    for (std::size_t n = 0; n < noise.samples.size(); ++n) {
        const float white = normal(random);
        brown = 0.99f * brown + 0.1f * white;
        // Four five-second stretches: loud white, quiet white, brown, near silence.
        const std::size_t part = n / 80000;
        noise.samples[n] = part == 0 ? 0.1f * white : part == 1 ? 0.003f * white : part == 2 ? 0.05f * brown : 1e-5f * white;
    }
    GateCounter all({"Guitar", "Violin", "Piano", "Voice"});
    for (const auto& result : classify(noise))
        all.add(result);
    EXPECT_GT(all.windows(), 30);
    EXPECT_LE(all.share(), kMaxNoise);
}

// Real speech, recorded: the spoken channel names that alsa-utils ships
// ("Front Left", "Rear Center"...), and its noise file. Few windows, so
// none may open a gate.
TEST_F(HeldOutTest, RecordedSpeechKeepsEveryGateClosed)
{
    const std::filesystem::path prompts = "/usr/share/sounds/alsa";
    if (!std::filesystem::is_directory(prompts))
        GTEST_SKIP() << "needs alsa-utils";
    GateCounter all({"Guitar", "Violin", "Piano", "Voice"});
    for (const auto& entry : std::filesystem::directory_iterator(prompts)) {
        if (entry.path().extension() != ".wav")
            continue;
        for (const auto& result : classify(readAudioFile(entry.path().string())))
            all.add(result);
    }
    EXPECT_GT(all.windows(), 5);
    EXPECT_EQ(all.share(), 0.0);
}

} // namespace
} // namespace veltra
