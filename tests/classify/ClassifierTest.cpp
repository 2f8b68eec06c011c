#include "ClassifyDoubles.h"
#include "ReferenceData.h"
#include "classify/NeuralSoundClassifier.h"
#include "classify/SoundCategories.h"
#include "classify/SoundGate.h"
#include "dsp/AudioFile.h"
#include "settings/MemoryPreferenceStore.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numbers>
#include <optional>
#include <random>
#include <sstream>

namespace veltra {
namespace {

// Reference values per window, rows of `width` values.
struct Reference {
    std::vector<float> values;
    std::size_t width;

    std::size_t rows() const { return values.size() / width; }
    float at(std::size_t row, std::size_t column) const { return values[row * width + column]; }
};

Reference reference(const char* name, std::size_t width)
{
    Reference r{test::readFloats(test::classifyData(name)), width};
    EXPECT_EQ(r.values.size() % width, 0u) << name;
    return r;
}

std::shared_ptr<const SoundModel> shippedModel()
{
    static const auto model = std::make_shared<const SoundModel>(loadSoundModel(defaultSoundModelPath()));
    return model;
}

std::vector<SoundClassificationResult> classify(SoundClassifier& classifier, const AudioData& audio, std::size_t chunk)
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

AudioData referenceInput()
{
    return readAudioFile(test::classifyData("reference_input.wav").string());
}

std::map<std::string, double> byLabel(const SoundClassificationResult& result)
{
    std::map<std::string, double> confidences;
    for (const auto& c : result.classifications)
        confidences[c.identifier] = c.confidence;
    return confidences;
}

double sigmoid(double x)
{
    return 1.0 / (1.0 + std::exp(-x));
}

// The network alone, on the log-mel windows the Python conversion cut: the
// same embeddings and logits as YAMNet run in PyTorch.
TEST(SoundNetworkTest, EmbeddingsAndLogitsMatchTheConversion)
{
    const SoundModel& model = *shippedModel();
    const std::size_t bands = std::size_t(model.frontEnd.melBands);
    const Reference frames = reference("reference_logmel.f32", bands);
    const Reference embeddings = reference("reference_embeddings.f32", std::size_t(model.embeddingSize()));
    const Reference logits = reference("reference_logits.f32", model.labels.size());
    ASSERT_GE(embeddings.rows(), 3u);
    ASSERT_EQ(logits.rows(), embeddings.rows());

    SoundNetwork network(model);
    std::vector<float> embedding(embeddings.width), logit(logits.width);
    double worstEmbedding = 0, worstLogit = 0;
    for (std::size_t w = 0; w < embeddings.rows(); ++w) {
        const std::size_t first = w * std::size_t(model.frontEnd.patchHopFrames) * bands;
        network.run(std::span<const float>(frames.values).subspan(first, std::size_t(model.frontEnd.patchFrames) * bands),
                    embedding, logit);
        for (std::size_t k = 0; k < embedding.size(); ++k)
            worstEmbedding = std::max(worstEmbedding, double(std::abs(embedding[k] - embeddings.at(w, k))));
        for (std::size_t k = 0; k < logit.size(); ++k)
            worstLogit = std::max(worstLogit, double(std::abs(logit[k] - logits.at(w, k))));
    }
    EXPECT_LT(worstEmbedding, 1e-4);
    EXPECT_LT(worstLogit, 1e-4);
}

// The whole path from a 22.05 kHz file: the 521 confidences per window that
// tools/classifier/backbone.py's head_scores gives for the shipped head.
TEST(NeuralSoundClassifierTest, ConfidencesMatchTheConversion)
{
    NeuralSoundClassifier classifier(shippedModel());
    const Reference expected = reference("reference_scores.f32", classifier.labels().size());
    auto results = classify(classifier, referenceInput(), 2048);
    std::erase_if(results, [](const SoundClassificationResult& r) { return !test::onRegularGrid(r.timeSeconds); });
    ASSERT_EQ(results.size(), expected.rows());
    double worst = 0;
    for (std::size_t w = 0; w < results.size(); ++w) {
        EXPECT_DOUBLE_EQ(results[w].timeSeconds, 0.48 * double(w));
        const auto& got = results[w].classifications;
        ASSERT_EQ(got.size(), classifier.labels().size());
        EXPECT_TRUE(std::is_sorted(got.begin(), got.end(),
                                   [](const auto& a, const auto& b) { return a.confidence > b.confidence; }));
        const auto confidences = byLabel(results[w]);
        for (std::size_t k = 0; k < expected.width; ++k)
            worst = std::max(worst, std::abs(confidences.at(classifier.labels()[k]) - expected.at(w, k)));
    }
    EXPECT_LT(worst, 1e-4);
}

TEST(NeuralSoundClassifierTest, ResetStartsAFreshStreamAndChunkingDoesNotMatter)
{
    NeuralSoundClassifier classifier(shippedModel());
    const AudioData audio = referenceInput();
    const auto first = classify(classifier, audio, 2048);
    const auto second = classify(classifier, audio, 333);
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
    NeuralSoundClassifier classifier(shippedModel());
    AudioData damaged = referenceInput();
    AudioData zeroed = damaged;
    const float bad[] = {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                         -std::numeric_limits<float>::infinity()};
    for (std::size_t i = 0; i < damaged.samples.size(); i += 331) {
        damaged.samples[i] = bad[i % 3];
        zeroed.samples[i] = 0;
    }
    const auto got = classify(classifier, damaged, 2048);
    const auto expected = classify(classifier, zeroed, 2048);
    ASSERT_EQ(got.size(), expected.size());
    ASSERT_FALSE(got.empty());
    for (std::size_t w = 0; w < got.size(); ++w)
        for (std::size_t k = 0; k < got[w].classifications.size(); ++k) {
            EXPECT_TRUE(std::isfinite(got[w].classifications[k].confidence));
            EXPECT_EQ(got[w].classifications[k].confidence, expected[w].classifications[k].confidence);
        }
}

// The shipped model with its head replaced by one linear layer, so that
// what the head reads can be told from its answer.
std::shared_ptr<const SoundModel> withLinearHead(std::vector<std::vector<int>> categories, int context, HeadInput input,
                                                 const Eigen::MatrixXf& weights, const Eigen::VectorXf& bias)
{
    SoundModel model = *shippedModel();
    model.categories = std::move(categories);
    model.context = context;
    model.headInput = input;
    model.head = {DenseLayer{weights, bias}};
    return std::make_shared<const SoundModel>(std::move(model));
}

// A single-label category shows the head's confidence as it is: the head's
// input is the mean over the last `context` windows, fewer at a stream's
// start, and a reset forgets the windows before it.
TEST(NeuralSoundClassifierTest, TheHeadReadsTheMeanOfTheLastWindows)
{
    const SoundModel& shipped = *shippedModel();
    const int violin = int(std::find(shipped.labels.begin(), shipped.labels.end(), "violin_fiddle") - shipped.labels.begin());
    const auto embeddingSize = Eigen::Index(shipped.embeddingSize());
    const auto labels = Eigen::Index(shipped.labels.size());
    const Reference embeddings = reference("reference_embeddings.f32", std::size_t(embeddingSize));
    const Reference logits = reference("reference_logits.f32", std::size_t(labels));
    struct Case {
        const char* name;
        HeadInput input;
        const Reference& read; // the part of the input the head's weights pick
        Eigen::Index offset;
    };
    for (const Case& c : {Case{"embedding", HeadInput::Embedding, embeddings, 0},
                          Case{"logits", HeadInput::EmbeddingAndLogits, logits, embeddingSize}}) {
        SCOPED_TRACE(c.name);
        // The head's logit is a scaled sum of the part it reads, spread
        // over the sigmoid's steep middle.
        std::vector<double> sums(c.read.rows());
        for (std::size_t w = 0; w < sums.size(); ++w)
            for (std::size_t k = 0; k < c.read.width; ++k)
                sums[w] += c.read.at(w, k);
        const auto [low, high] = std::minmax_element(sums.begin(), sums.end());
        const double scale = 4.0 / (*high - *low);
        const double shift = -(*high + *low) / 2 * scale;
        const Eigen::Index inputs = embeddingSize + (c.input == HeadInput::EmbeddingAndLogits ? labels : 0);
        Eigen::MatrixXf weights = Eigen::MatrixXf::Zero(1, inputs);
        weights.block(0, c.offset, 1, Eigen::Index(c.read.width)).setConstant(float(scale));
        for (int context : {1, 3}) {
            SCOPED_TRACE(context);
            NeuralSoundClassifier classifier(
                withLinearHead({{violin}}, context, c.input, weights, Eigen::VectorXf::Constant(1, float(shift))));
            for (int stream = 0; stream < 2; ++stream) {
                // The reference's windows are the regular ones; a one-window
                // head also hears again what its scores close.
                auto results = classify(classifier, referenceInput(), 4096);
                std::erase_if(results,
                              [](const SoundClassificationResult& r) { return !test::onRegularGrid(r.timeSeconds); });
                ASSERT_EQ(results.size(), sums.size());
                for (std::size_t w = 0; w < results.size(); ++w) {
                    const std::size_t first = w + 1 >= std::size_t(context) ? w + 1 - std::size_t(context) : 0;
                    double mean = 0;
                    for (std::size_t m = first; m <= w; ++m)
                        mean += sums[m] / double(w + 1 - first);
                    EXPECT_NEAR(byLabel(results[w]).at("violin_fiddle"), sigmoid(scale * mean + shift), 1e-4)
                        << "window " << w;
                }
            }
        }
    }
}

// Whatever the network's own scores, a category opens the gate exactly when
// its calibrated confidence does: its best member carries that confidence,
// the others are capped at it, and labels outside the categories keep the
// network's scores.
TEST(NeuralSoundClassifierTest, ACategoryOpensTheGateExactlyWhenItsConfidenceDoes)
{
    const SoundModel& shipped = *shippedModel();
    const Reference logits = reference("reference_logits.f32", shipped.labels.size());
    const auto inputs = Eigen::Index(shipped.embeddingSize());
    std::vector<bool> inCategory(shipped.labels.size());
    for (const auto& members : shipped.categories)
        for (int member : members)
            inCategory[std::size_t(member)] = true;

    for (float headLogit : {-3.0f, 3.0f}) {
        SCOPED_TRACE(headLogit);
        const auto categories = Eigen::Index(shipped.categories.size());
        NeuralSoundClassifier classifier(withLinearHead(shipped.categories, 1, HeadInput::Embedding,
                                                        Eigen::MatrixXf::Zero(categories, inputs),
                                                        Eigen::VectorXf::Constant(categories, headLogit)));
        const auto calibrated = float(sigmoid(headLogit));
        test::EveryCategoryGate everyCategory;
        SoundGate& gate = everyCategory.gate;
        const auto results = classify(classifier, referenceInput(), 2048);
        ASSERT_EQ(results.size(), logits.rows());
        for (std::size_t w = 0; w < results.size(); ++w) {
            const auto confidences = byLabel(results[w]);
            for (const auto& members : shipped.categories) {
                const int best = *std::max_element(members.begin(), members.end(), [&](int a, int b) {
                    return logits.at(w, std::size_t(a)) < logits.at(w, std::size_t(b));
                });
                for (int member : members) {
                    const double got = confidences.at(shipped.labels[std::size_t(member)]);
                    if (member == best)
                        EXPECT_FLOAT_EQ(float(got), calibrated);
                    else
                        EXPECT_NEAR(got, std::min<double>(calibrated, sigmoid(logits.at(w, std::size_t(member)))), 1e-4);
                    EXPECT_LE(got, calibrated);
                }
            }
            for (std::size_t k = 0; k < shipped.labels.size(); ++k) {
                if (!inCategory[k]) {
                    EXPECT_NEAR(confidences.at(shipped.labels[k]), sigmoid(logits.at(w, k)), 1e-4) << shipped.labels[k];
                }
            }
            gate.processResult(results[w]);
            EXPECT_EQ(gate.isSoundDetected(), calibrated > 0.5f) << "window " << w;
        }
    }
}

// Synthetic takes at 48 kHz, the microphone's rate: a room (quiet noise)
// and notes (a harmonic tone of G3) in turn.
constexpr double kRate = 48000;
constexpr double kWindowSeconds = 0.975;

struct Part {
    double seconds;
    double level; // the tone's amplitude; 0 is the room alone
};

AudioData take(const std::vector<Part>& parts, unsigned seed = 1)
{
    std::mt19937 random(seed);
    std::normal_distribution<float> room(0.0f, 0.001f);
    AudioData audio;
    audio.sampleRate = kRate;
    for (const Part& part : parts)
        for (std::size_t n = 0; n < std::size_t(part.seconds * kRate); ++n) {
            double tone = 0;
            for (int k = 1; k <= 8; ++k)
                tone += std::sin(2 * std::numbers::pi * 196.0 * k * double(n) / kRate) / k;
            audio.samples.push_back(float(part.level * tone / 3) + room(random));
        }
    return audio;
}

// Where each window ends, in seconds of the take.
std::vector<double> windowEnds(const std::vector<SoundClassificationResult>& results)
{
    std::vector<double> ends;
    for (const auto& result : results)
        ends.push_back(std::max(result.timeSeconds + kWindowSeconds, 0.0));
    return ends;
}

// A note after the room is judged within about a tenth of a second of its
// start, not at the next of the windows every 0.48 s; a take that only
// grows a little louder, or begins in the middle of a note, keeps the
// regular windows alone.
TEST(NeuralSoundClassifierTest, ANoteIsJudgedSoonAfterItStarts)
{
    struct Case {
        const char* name;
        std::vector<Part> parts;
        std::optional<double> onset; // seconds; none for no extra windows
    };
    // 1.5 s of the room puts the onset 0.045 s after a regular window, as
    // late for the regular rhythm as a note can start.
    const std::vector<Case> cases{
        {"a note after the room", {{1.5, 0}, {2.5, 0.3}}, 1.5},
        {"a quiet note after the room", {{1.5, 0}, {2.5, 0.03}}, 1.5},
        {"a second note, much louder, while the first still sounds", {{1.5, 0.02}, {2.5, 0.3}}, 1.5},
        {"the same note a little louder", {{1.5, 0.2}, {2.5, 0.3}}, std::nullopt},
        {"a take that begins inside a note", {{4.0, 0.3}}, std::nullopt},
    };
    NeuralSoundClassifier classifier(shippedModel());
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const auto ends = windowEnds(classify(classifier, take(c.parts), 2048));
        std::vector<double> extra;
        for (double end : ends)
            if (!test::onRegularGrid(end - kWindowSeconds))
                extra.push_back(end);
        if (!c.onset) {
            EXPECT_TRUE(extra.empty()) << extra.size() << " extra windows";
            continue;
        }
        const auto first = std::find_if(ends.begin(), ends.end(), [&](double end) { return end > *c.onset + 0.05; });
        ASSERT_NE(first, ends.end());
        EXPECT_LE(*first, *c.onset + 0.15);
    }
}

// Once a note has started, its windows hear only the note: two takes that
// differ only in the room before the note answer alike until a window
// reaches back past the note's start.
TEST(NeuralSoundClassifierTest, WindowsAfterAnOnsetHearOnlyTheNewSound)
{
    NeuralSoundClassifier classifier(shippedModel());
    const AudioData note = take({{1.5, 0}, {2.5, 0.3}});
    AudioData louderRoom = note;
    // Up to 30 ms before the note, the span of the frame that hears it start.
    std::mt19937 random(2);
    std::normal_distribution<float> room(0.0f, 0.004f);
    std::generate_n(louderRoom.samples.begin(), std::size_t((1.5 - 0.03) * kRate), [&] { return room(random); });
    const auto quiet = classify(classifier, note, 2048);
    const auto other = classify(classifier, louderRoom, 2048);
    ASSERT_EQ(quiet.size(), other.size());
    int compared = 0;
    for (std::size_t w = 0; w < quiet.size(); ++w) {
        const double end = quiet[w].timeSeconds + kWindowSeconds;
        if (end < 1.5 + 0.1 || end > 1.5 + kWindowSeconds - 0.05)
            continue;
        SCOPED_TRACE(end);
        ++compared;
        const auto a = byLabel(quiet[w]);
        const auto b = byLabel(other[w]);
        for (const auto& [label, confidence] : a)
            EXPECT_NEAR(confidence, b.at(label), 0.02) << label;
    }
    EXPECT_GE(compared, 4);
}

// What onsets may cost: steady sound keeps the regular windows every
// 0.48 s; notes add extra windows, every note some, but never more than a
// burst of four and three a second after it, however many notes start, and
// one second look a second at what a window closed.
TEST(NeuralSoundClassifierTest, OnsetsCostABoundedNumberOfWindows)
{
    NeuralSoundClassifier classifier(shippedModel());
    const auto regular = [](double seconds) { return 1 + int((seconds - kWindowSeconds) / 0.48); };

    const auto steady = classify(classifier, take({{6.0, 0.3}}), 2048);
    ASSERT_EQ(int(steady.size()), regular(6.0));
    for (std::size_t w = 0; w < steady.size(); ++w)
        EXPECT_NEAR(steady[w].timeSeconds, 0.48 * double(w), 1e-9);

    std::vector<Part> spaced, quick;
    for (int note = 0; note < 4; ++note)
        spaced.insert(spaced.end(), {{1.0, 0}, {0.5, 0.3}});
    for (int note = 0; note < 24; ++note)
        quick.insert(quick.end(), {{0.15, 0}, {0.1, 0.3}});
    struct Case {
        const char* name;
        std::vector<Part> parts;
        double seconds;
        int notes;
    };
    for (const Case& c : {Case{"a note every 1.5 s", spaced, 6.0, 4}, Case{"a note every 0.25 s", quick, 6.0, 24}}) {
        SCOPED_TRACE(c.name);
        const auto results = classify(classifier, take(c.parts), 2048);
        const int extra = int(results.size()) - regular(c.seconds);
        EXPECT_GE(extra, std::min(c.notes, 4));
        EXPECT_LE(extra, 4 + 3 * int(c.seconds) + 1 + int(c.seconds));
    }
}

// A window that closes what the one before opened is heard again about
// 0.12 s later instead of at the next regular window, once: here the head
// opens every category for noise, and the tone rule closes them all once a
// quieter steady tone follows.
TEST(NeuralSoundClassifierTest, AClosingWindowIsHeardAgainSoonAfter)
{
    const SoundModel& shipped = *shippedModel();
    const auto categories = Eigen::Index(shipped.categories.size());
    NeuralSoundClassifier classifier(withLinearHead(shipped.categories, 1, HeadInput::Embedding,
                                                    Eigen::MatrixXf::Zero(categories, Eigen::Index(shipped.embeddingSize())),
                                                    Eigen::VectorXf::Constant(categories, 3.0f)));
    std::mt19937 random(3);
    std::normal_distribution<float> noise(0.0f, 0.1f);
    AudioData audio;
    audio.sampleRate = kRate;
    for (std::size_t n = 0; n < std::size_t(3.0 * kRate); ++n)
        audio.samples.push_back(noise(random));
    for (std::size_t n = 0; n < std::size_t(3.0 * kRate); ++n)
        audio.samples.push_back(float(0.02 * std::sin(2 * std::numbers::pi * 523.25 * double(n) / kRate)));

    const auto results = classify(classifier, audio, 2048);
    const auto ends = windowEnds(results);
    const auto open = [&](std::size_t w) {
        const auto confidences = byLabel(results[w]);
        return std::any_of(shipped.categories[0].begin(), shipped.categories[0].end(),
                           [&](int member) { return confidences.at(shipped.labels[std::size_t(member)]) > 0.5; });
    };
    std::size_t closing = 0;
    while (closing < results.size() && open(closing))
        ++closing;
    ASSERT_GT(closing, 0u);
    ASSERT_LT(closing + 2, results.size());
    EXPECT_NEAR(ends[closing + 1] - ends[closing], 0.12, 0.011);
    EXPECT_FALSE(open(closing + 1));
    // Still closed: the regular windows again, and no more heard twice.
    for (std::size_t w = closing + 2; w < results.size(); ++w)
        EXPECT_TRUE(test::onRegularGrid(ends[w] - kWindowSeconds)) << "window " << w << " ends at " << ends[w];
}

} // namespace
} // namespace veltra
