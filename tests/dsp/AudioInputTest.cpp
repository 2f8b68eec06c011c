#include "dsp/AudioFile.h"
#include "dsp/AudioSession.h"
#include "dsp/PatchFile.h"
#include "dsp/PdAudioController.h"
#include "support/FakeAudioBackend.h"
#include "support/PatchRig.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <limits>
#include <random>

namespace veltra::test {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

bool allFinite(const std::vector<float>& samples)
{
    return std::all_of(samples.begin(), samples.end(), [](float x) { return std::isfinite(x); });
}

struct AudioFileTest : ::testing::Test {
    std::filesystem::path dir = std::filesystem::temp_directory_path() / ("veltra-audio-" + makeUuidString());
    void SetUp() override { std::filesystem::create_directories(dir); }
    void TearDown() override { std::filesystem::remove_all(dir); }
    std::string path(const std::string& name) const { return (dir / name).string(); }
};

TEST_F(AudioFileTest, NonFiniteSamplesAreReadAsSilence)
{
    // Stereo frames, mixed down by averaging with the bad channel as 0.
    writeWavFile(path("bad.wav"), {kNaN, 0.5f, kInf, -kInf, 0.25f, 0.25f, -kNaN, 1.0f}, 2, 48000);
    const AudioData audio = readAudioFile(path("bad.wav"));
    EXPECT_EQ(audio.samples, (std::vector<float>{0.25f, 0.0f, 0.25f, 0.5f}));
}

TEST_F(AudioFileTest, ReadingInBlocksOfAnySizeGivesTheWholeFile)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<float> level(-1, 1);
    std::vector<float> stereo(2 * 10007);
    std::generate(stereo.begin(), stereo.end(), [&] { return level(random); });
    writeWavFile(path("long.wav"), stereo, 2, 44100);
    const AudioData whole = readAudioFile(path("long.wav"));
    ASSERT_EQ(whole.samples.size(), 10007u);
    EXPECT_EQ(whole.sampleRate, 44100);
    EXPECT_FLOAT_EQ(whole.samples[5], (stereo[10] + stereo[11]) / 2);

    for (const std::size_t blockFrames : {1u, 63u, 4096u, 4097u, 20000u}) {
        SCOPED_TRACE(blockFrames);
        AudioFileReader reader(path("long.wav"));
        EXPECT_EQ(reader.frames(), 10007);
        std::vector<float> block(blockFrames), all;
        while (const std::size_t n = reader.read(block))
            all.insert(all.end(), block.begin(), block.begin() + static_cast<std::ptrdiff_t>(n));
        EXPECT_EQ(all, whole.samples);
        EXPECT_EQ(reader.read(block), 0u);
    }
}

// A bounded random run over damaged files in the formats people record in:
// each is either refused with an AudioFileError or read as finite audio.
TEST_F(AudioFileTest, DamagedFilesGiveAnErrorOrFiniteAudio)
{
    std::mt19937 random(11);
    const auto sine440 = sine(440, 0.5, 0.05, 48000);
    std::vector<std::vector<char>> originals;
    for (const int format : {SF_FORMAT_WAV | SF_FORMAT_FLOAT, SF_FORMAT_WAV | SF_FORMAT_PCM_16,
                             SF_FORMAT_AIFF | SF_FORMAT_PCM_24, SF_FORMAT_FLAC | SF_FORMAT_PCM_16}) {
        SF_INFO info{0, 48000, 1, format, 0, 0};
        SNDFILE* out = sf_open(path("original").c_str(), SFM_WRITE, &info);
        ASSERT_NE(out, nullptr) << sf_strerror(nullptr);
        sf_writef_float(out, sine440.data(), static_cast<sf_count_t>(sine440.size()));
        sf_close(out);
        std::ifstream in(path("original"), std::ios::binary);
        originals.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    constexpr int kFiles = 2000; // about a second
    for (int n = 0; n < kFiles; ++n) {
        std::vector<char> bytes = originals[random() % originals.size()];
        // Mostly the header, where a damaged length or format does harm.
        const std::size_t reach = random() % 2 ? std::min<std::size_t>(64, bytes.size()) : bytes.size();
        for (std::size_t flips = 1 + random() % 8; flips > 0; --flips)
            bytes[random() % reach] = static_cast<char>(random());
        if (random() % 4 == 0)
            bytes.resize(random() % bytes.size());
        std::ofstream(path("damaged"), std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        try {
            const AudioData audio = readAudioFile(path("damaged"));
            ASSERT_TRUE(allFinite(audio.samples)) << "file " << n;
        } catch (const AudioFileError&) {
            // refused in one line: what the commands report
        }
    }
}

// Every door through which audio reaches the patch: the sound card's
// callback and the offline driver behind the file commands. A tone with
// NaNs scattered through it and a burst of infinities still reads as the
// tone, and nothing the patch sends or plays is non-finite.
TEST(NonFiniteInput, ThePatchHearsSilenceAndKeepsReading)
{
    std::vector<float> input = sine(440, 0.3, 2.0, 48000);
    for (std::size_t i = 0; i < input.size(); i += 97)
        input[i] = kNaN;
    std::fill(input.begin() + 24000, input.begin() + 24512, kInf);

    const struct {
        const char* door;
        std::function<std::vector<float>(PatchRig&)> feed;
    } doors[] = {
        {"offline driver", [&](PatchRig& rig) { return rig.feed(input); }},
        {"sound card",
         [&](PatchRig& rig) {
             FakeAudioBackend backend;
             AudioSession session(backend);
             PdAudioController controller(rig.base, backend, session);
             EXPECT_EQ(controller.configurePlayback(48000, 1, true, false), PdAudioStatus::OK);
             controller.setActive(true);
             const unsigned frames = controller.stream()->bufferFrames;
             std::vector<float> out(input.size() * 2);
             for (std::size_t at = 0; at + frames <= input.size(); at += frames)
                 backend.processor->process(&input[at], &out[at * 2], frames);
             rig.base.receiveMessages();
             return out;
         }},
    };
    for (const auto& d : doors) {
        SCOPED_TRACE(d.door);
        PatchRig rig;
        const std::vector<float> out = d.feed(rig);
        EXPECT_TRUE(allFinite(out));
        ASSERT_GT(rig.readings.size(), 100u);
        for (const auto& r : rig.readings)
            ASSERT_TRUE(std::isfinite(r.frequency)) << r.time;
        EXPECT_NEAR(cents(rig.readings.back().frequency, 440), 0, 1);
    }
}

} // namespace
} // namespace veltra::test
