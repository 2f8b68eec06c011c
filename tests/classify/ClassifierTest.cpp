#include "ReferenceData.h"
#include "classify/NeuralSoundClassifier.h"
#include "classify/SoundCategories.h"
#include "dsp/AudioFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>
#include <map>

namespace veltra {
namespace {

std::vector<char> modelBytes()
{
    std::ifstream in(defaultSoundModelPath(), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

TEST(SoundModelTest, ShippedModelKnowsEveryAcceptedLabelAndWhatMustBeRejected)
{
    const SoundModel model = loadSoundModel(defaultSoundModelPath());
    auto has = [&](std::string_view label) {
        return std::find(model.classes.begin(), model.classes.end(), label) != model.classes.end();
    };
    for (const SoundCategory& category : kSoundCategories)
        for (std::string_view label : category.labels())
            EXPECT_TRUE(has(label)) << label;
    for (std::string_view label : {"speech", "music", "silence", "noise", "cello", "flute", "trumpet", "organ", "drum"})
        EXPECT_TRUE(has(label)) << label;
    EXPECT_FALSE(has("violin")) << "only violin_fiddle may stand for the violin";
    for (const std::string& label : model.classes)
        EXPECT_TRUE(std::all_of(label.begin(), label.end(), [](char c) { return (c >= 'a' && c <= 'z') || c == '_'; }))
            << label;
    EXPECT_EQ(model.frontEnd.sampleRate, 16000);
    EXPECT_EQ(model.frontEnd.patchFrames, 96);
    EXPECT_EQ(model.frontEnd.patchHopFrames, 48);
    EXPECT_EQ(model.frontEnd.melBands, 64);
}

TEST(SoundModelTest, DamagedFilesAreRejectedWithTheirName)
{
    const std::vector<char> good = modelBytes();
    ASSERT_GT(good.size(), 1000u);
    struct Case {
        const char* name;
        std::vector<char> bytes;
        const char* reason;
    };
    std::vector<char> badMagic = good;
    badMagic[0] = 'X';
    std::vector<char> badVersion = good;
    badVersion[4] = 9;
    std::vector<char> trailing = good;
    trailing.push_back(0);
    const Case cases[] = {
        {"empty", {}, "truncated"},
        {"magic", badMagic, "not a Veltra sound model"},
        {"version", badVersion, "unsupported version 9"},
        {"header only", std::vector<char>(good.begin(), good.begin() + 40), "truncated"},
        {"last weight missing", std::vector<char>(good.begin(), good.end() - 4), "truncated"},
        {"trailing byte", trailing, "unexpected data"},
    };
    const auto path = std::filesystem::temp_directory_path() / "veltra-damaged-model.bin";
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        std::ofstream(path, std::ios::binary).write(c.bytes.data(), std::streamsize(c.bytes.size()));
        try {
            loadSoundModel(path);
            ADD_FAILURE() << "loaded";
        } catch (const SoundModelError& error) {
            EXPECT_NE(std::string(error.what()).find(path.string()), std::string::npos) << error.what();
            EXPECT_NE(std::string(error.what()).find(c.reason), std::string::npos) << error.what();
        }
    }
    std::filesystem::remove(path);
    EXPECT_THROW(loadSoundModel(path), SoundModelError);
}

std::vector<SoundClassificationResult> classify(NeuralSoundClassifier& classifier, const AudioData& audio,
                                                std::size_t chunk)
{
    classifier.reset(audio.sampleRate);
    std::vector<SoundClassificationResult> results;
    const std::span<const float> samples(audio.samples);
    for (std::size_t at = 0; at < samples.size(); at += chunk) {
        auto more = classifier.analyze(samples.subspan(at, std::min(chunk, samples.size() - at)));
        results.insert(results.end(), more.begin(), more.end());
    }
    return results;
}

TEST(NeuralSoundClassifierTest, ScoresMatchTheTrainingCode)
{
    auto classifier = NeuralSoundClassifier::fromFile(defaultSoundModelPath());
    const AudioData audio = readAudioFile(test::classifyData("reference_input.wav").string());
    const auto expected = test::readFloats(test::classifyData("reference_scores.f32"));
    const std::size_t classes = classifier->labels().size();
    ASSERT_EQ(expected.size() % classes, 0u);

    const auto results = classify(*classifier, audio, 2048);
    ASSERT_EQ(results.size(), expected.size() / classes);
    for (std::size_t w = 0; w < results.size(); ++w) {
        EXPECT_DOUBLE_EQ(results[w].timeSeconds, 0.48 * double(w));
        const auto& got = results[w].classifications;
        ASSERT_EQ(got.size(), classes);
        EXPECT_TRUE(std::is_sorted(got.begin(), got.end(),
                                   [](const auto& a, const auto& b) { return a.confidence > b.confidence; }));
        std::map<std::string, double> byLabel;
        for (const auto& c : got)
            byLabel[c.identifier] = c.confidence;
        for (std::size_t k = 0; k < classes; ++k)
            EXPECT_NEAR(byLabel[classifier->labels()[k]], expected[w * classes + k], 2e-4)
                << "window " << w << " " << classifier->labels()[k];
    }
}

TEST(NeuralSoundClassifierTest, ResetStartsAFreshStreamAndChunkingDoesNotMatter)
{
    auto classifier = NeuralSoundClassifier::fromFile(defaultSoundModelPath());
    const AudioData audio = readAudioFile(test::classifyData("reference_input.wav").string());
    const auto first = classify(*classifier, audio, 2048);
    const auto second = classify(*classifier, audio, 333);
    ASSERT_EQ(first.size(), second.size());
    for (std::size_t w = 0; w < first.size(); ++w) {
        EXPECT_EQ(first[w].timeSeconds, second[w].timeSeconds);
        for (std::size_t k = 0; k < first[w].classifications.size(); ++k)
            EXPECT_NEAR(first[w].classifications[k].confidence, second[w].classifications[k].confidence, 1e-6);
    }
}

// Samples that are not numbers, from a damaged file or a faulty driver,
// count as silence: the scores equal those of the same audio with zeros
// there, and later windows are not poisoned.
TEST(NeuralSoundClassifierTest, NonFiniteSamplesScoreAsSilence)
{
    auto classifier = NeuralSoundClassifier::fromFile(defaultSoundModelPath());
    AudioData damaged = readAudioFile(test::classifyData("reference_input.wav").string());
    AudioData zeroed = damaged;
    const float bad[] = {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                         -std::numeric_limits<float>::infinity()};
    for (std::size_t i = 0; i < damaged.samples.size(); i += 331) {
        damaged.samples[i] = bad[i % 3];
        zeroed.samples[i] = 0;
    }
    const auto got = classify(*classifier, damaged, 2048);
    const auto expected = classify(*classifier, zeroed, 2048);
    ASSERT_EQ(got.size(), expected.size());
    ASSERT_FALSE(got.empty());
    for (std::size_t w = 0; w < got.size(); ++w)
        for (std::size_t k = 0; k < got[w].classifications.size(); ++k) {
            EXPECT_TRUE(std::isfinite(got[w].classifications[k].confidence));
            EXPECT_EQ(got[w].classifications[k].confidence, expected[w].classifications[k].confidence);
        }
}

} // namespace
} // namespace veltra
