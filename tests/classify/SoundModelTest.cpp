// The weight file is untrusted input: a small well-formed model written here
// field by field, then spoilt one field, one cut or one byte at a time, must
// always give a SoundModelError naming the file, and never a crash. The
// same small model, in another shape, runs through the classifier.
#include "classify/NeuralSoundClassifier.h"
#include "classify/SoundCategories.h"
#include "classify/SoundModel.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <fstream>
#include <limits>
#include <map>
#include <set>
#include <variant>

namespace veltra {
namespace {

// A model of three labels on a four- and five-channel backbone, in the
// layout tools/classifier/backbone.py writes; `at` holds the offset of each
// named field.
struct ModelFile {
    std::vector<char> bytes;
    std::map<std::string, std::size_t> at;

    // A window of patchFrames x melBands; the last layer's weights 8-bit or float.
    explicit ModelFile(std::uint32_t patchFrames = 96, std::uint32_t melBands = 64, bool quantizedLast = true)
    {
        text("VLTS");
        u32(2, "version");
        for (auto [value, name] : {std::pair{16000u, "sampleRate"}, {400u, "windowLength"}, {160u, "hopLength"},
                                   {512u, "fftLength"}, {melBands, "melBands"}, {patchFrames, "patchFrames"},
                                   {patchFrames / 2, "patchHopFrames"}})
            u32(value, name);
        f32(125, "melMinHz");
        f32(7500, "melMaxHz");
        f32(0.001f, "logOffset");
        u32(3, "labelCount");
        for (const char* label : {"aaaa", "aaab", "c"}) {
            u32(std::uint32_t(std::strlen(label)), label == std::string("aaaa") ? "labelLength" : "");
            text(label, label == std::string("aaab") ? "label1" : nullptr);
        }
        u32(3, "layerCount");
        layer("0", 0, 2, 1, 4, false);
        layer("1", 1, 2, 4, 4, true);
        layer("2", 2, 1, 4, 5, quantizedLast);
        u32(3, "classifierOutputs");
        u32(5, "classifierInputs");
        u32(0, "classifierEncoding");
        floats(15, "classifierWeight");
        floats(3, "classifierBias");
        u32(2, "categoryCount");
        u32(2, "members0");
        u32(0);
        u32(1, "member1");
        u32(1);
        u32(2, "member2");
        u32(2, "context");
        u32(1, "headInput");
        u32(2, "headLayerCount");
        u32(4, "headOutputs0");
        u32(8, "headInputs0");
        floats(32, "headWeight0");
        floats(4);
        u32(2, "headOutputs1");
        u32(4);
        floats(8);
        floats(2, "headBias1");
    }

    void layer(const std::string& n, std::uint32_t kind, std::uint32_t stride, std::uint32_t inputs,
               std::uint32_t outputs, bool quantized)
    {
        u32(kind, "kind" + n);
        u32(stride, "stride" + n);
        u32(inputs, "inputs" + n);
        u32(outputs, "outputs" + n);
        u32(quantized ? 1 : 0, "encoding" + n);
        const std::uint32_t count = outputs * (kind == 0 ? 9 * inputs : kind == 1 ? 9 : inputs);
        if (quantized) {
            floats(outputs, "scale" + n);
            for (std::uint32_t i = 0; i < count; ++i)
                bytes.push_back(char(i * 37 % 255 - 127));
        } else {
            floats(count, "weight" + n);
        }
        floats(outputs, "bias" + n);
    }

    void mark(const std::string& name)
    {
        if (!name.empty())
            at[name] = bytes.size();
    }
    void text(const char* value, const char* name = nullptr)
    {
        mark(name ? name : "");
        bytes.insert(bytes.end(), value, value + std::strlen(value));
    }
    void u32(std::uint32_t value, const std::string& name = {})
    {
        mark(name);
        const auto raw = std::bit_cast<std::array<char, 4>>(value);
        bytes.insert(bytes.end(), raw.begin(), raw.end());
    }
    void f32(float value, const std::string& name = {}) { u32(std::bit_cast<std::uint32_t>(value), name); }
    void floats(std::uint32_t count, const std::string& name = {})
    {
        mark(name);
        for (std::uint32_t i = 0; i < count; ++i)
            f32(0.01f * float(i % 17) - 0.05f);
    }

    std::vector<char> with(const std::string& field, std::uint32_t value) const
    {
        std::vector<char> spoilt = bytes;
        const auto raw = std::bit_cast<std::array<char, 4>>(value);
        std::copy(raw.begin(), raw.end(), spoilt.begin() + std::ptrdiff_t(at.at(field)));
        return spoilt;
    }
    std::vector<char> with(const std::string& field, float value) const
    {
        return with(field, std::bit_cast<std::uint32_t>(value));
    }
    std::vector<char> with(const std::string& field, const std::string& replacement) const
    {
        std::vector<char> spoilt = bytes;
        std::copy(replacement.begin(), replacement.end(), spoilt.begin() + std::ptrdiff_t(at.at(field)));
        return spoilt;
    }
};

class SoundModelFileTest : public ::testing::Test {
protected:
    void SetUp() override { std::filesystem::create_directories(dir_); }
    void TearDown() override { std::filesystem::remove_all(dir_); }

    std::filesystem::path write(const std::vector<char>& bytes) const
    {
        std::ofstream(path_, std::ios::binary | std::ios::trunc).write(bytes.data(), std::streamsize(bytes.size()));
        return path_;
    }

    // The one-line message, or "" when the file loaded.
    static std::string refusal(const std::filesystem::path& path)
    {
        try {
            loadSoundModel(path);
            return "";
        } catch (const SoundModelError& error) {
            return error.what();
        }
    }

    void expectRefused(const std::filesystem::path& path, const std::string& reason) const
    {
        const std::string message = refusal(path);
        EXPECT_EQ(message.rfind(path.string() + ": ", 0), 0u) << message;
        EXPECT_NE(message.find(reason), std::string::npos) << message;
        EXPECT_EQ(message.find('\n'), std::string::npos) << message;
    }

    std::filesystem::path dir_ = std::filesystem::temp_directory_path() / ("veltra-model-" + std::to_string(::getpid()));
    std::filesystem::path path_ = dir_ / "sounds.bin";
    ModelFile good_;
};

TEST_F(SoundModelFileTest, TheWellFormedFileLoadsAsWritten)
{
    const SoundModel model = loadSoundModel(write(good_.bytes));
    EXPECT_EQ(model.frontEnd.fftLength, 512);
    EXPECT_FLOAT_EQ(model.frontEnd.logOffset, 0.001f);
    EXPECT_EQ(model.labels, (std::vector<std::string>{"aaaa", "aaab", "c"}));
    ASSERT_EQ(model.backbone.size(), 3u);
    EXPECT_EQ(model.backbone[1].kind, LayerKind::Depthwise);
    EXPECT_EQ(model.backbone[1].weights.quantized.size(), 36u);
    EXPECT_TRUE(model.backbone[1].weights.values.empty());
    EXPECT_EQ(model.backbone[0].weights.values.size(), 36u);
    EXPECT_EQ(model.embeddingSize(), 5);
    EXPECT_EQ(model.classifier.outputs, 3);
    EXPECT_EQ(model.categories, (std::vector<std::vector<int>>{{0, 1}, {2}}));
    EXPECT_EQ(model.context, 2);
    EXPECT_EQ(model.headInput, HeadInput::EmbeddingAndLogits);
    ASSERT_EQ(model.head.size(), 2u);
    EXPECT_EQ(model.head[0].weights.cols(), 8);
    EXPECT_EQ(model.head[1].weights.rows(), 2);
}

// The paths the shipped model does not take: odd sizes, and float weights
// where few positions are left.
TEST_F(SoundModelFileTest, ASmallModelOfAnotherShapeClassifies)
{
    NeuralSoundClassifier classifier(std::make_shared<const SoundModel>(loadSoundModel(write(ModelFile(13, 7, false).bytes))));
    std::vector<float> noise(16000);
    std::uint32_t state = 1;
    for (float& x : noise) {
        state = state * 1664525u + 1013904223u;
        x = float(state >> 8) / 8388608.0f - 1.0f;
    }
    const auto results = classifier.analyze(noise);
    EXPECT_GT(results.size(), 10u);
    for (const auto& result : results) {
        const auto& got = result.classifications;
        ASSERT_EQ(got.size(), 3u);
        EXPECT_TRUE(std::is_sorted(got.begin(), got.end(), [](auto& a, auto& b) { return a.confidence > b.confidence; }));
        for (const auto& c : got)
            EXPECT_TRUE(c.confidence >= 0 && c.confidence <= 1) << c.confidence;
    }
}

TEST_F(SoundModelFileTest, EveryFieldOutOfRangeOrInconsistentIsRefused)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    struct Case {
        std::string field;
        std::variant<std::uint32_t, float, std::string> value;
        std::string reason;
    };
    const Case cases[] = {
        {"version", 1u, "unsupported version 1"},
        {"sampleRate", 16001u, "not a common audio rate"},
        {"windowLength", 4096u, "the frame length"},
        {"hopLength", 0u, "the frame hop"},
        {"hopLength", 401u, "the frame hop"},
        {"fftLength", 256u, "the FFT length"},
        {"fftLength", 500u, "not a power of two"},
        {"fftLength", 1u << 20, "the FFT length"},
        {"melBands", 0u, "mel bands"},
        {"melBands", 257u, "mel bands"},
        {"patchFrames", 0u, "frame count"},
        {"patchFrames", 5000u, "frame count"},
        {"patchHopFrames", 97u, "window hop"},
        {"melMinHz", 8000.0f, "mel range"},
        {"melMinHz", -1.0f, "mel range"},
        {"melMaxHz", 9000.0f, "mel range"},
        {"melMaxHz", nan, "not a finite number"},
        {"logOffset", 0.0f, "log offset"},
        {"logOffset", inf, "not a finite number"},
        {"labelCount", 0u, "number of labels"},
        {"labelCount", 1u << 30, "number of labels"},
        {"labelLength", 0u, "length of label 0"},
        {"labelLength", 1u << 31, "length of label 0"},
        {"label1", "aa b", "not a word of UTF-8"},
        {"label1", "aa\nb", "not a word of UTF-8"},
        {"label1", "aa\x7f", "not a word of UTF-8"},
        {"label1", "aa\xff" "b", "not a word of UTF-8"},         // never starts a character
        {"label1", "aa\xc3" "b", "not a word of UTF-8"},         // a character cut short
        {"label1", "aa\xc1\x81", "not a word of UTF-8"},       // 'A' in two bytes
        {"label1", "a\xed\xa0\x80", "not a word of UTF-8"},   // a surrogate
        {"label1", "\xf4\x90\x80\x80", "not a word of UTF-8"}, // beyond U+10FFFF
        {"label1", "aaaa", "repeats an earlier label"},
        {"layerCount", 0u, "number of backbone layers"},
        {"layerCount", 2u, "does not end in a pointwise layer"},
        {"layerCount", 1001u, "number of backbone layers"},
        {"kind0", 2u, "the kind of backbone layer 0"},
        {"kind1", 2u, "the kind of backbone layer 1"},
        {"kind2", 7u, "the kind of backbone layer 2"},
        {"stride0", 3u, "the stride of backbone layer 0"},
        {"stride1", 0u, "the stride of backbone layer 1"},
        {"stride2", 2u, "pointwise with a stride of 2"},
        {"inputs0", 2u, "the input channels of backbone layer 0"},
        {"inputs2", 5u, "the input channels of backbone layer 2"},
        {"outputs0", 0u, "the output channels of backbone layer 0"},
        {"outputs0", 1u << 24, "the output channels of backbone layer 0"},
        {"outputs0", 4096u, "activations"},
        {"outputs1", 5u, "depthwise backbone layer 1"},
        {"encoding0", 2u, "the encoding of backbone layer 0"},
        {"weight0", nan, "the weights of backbone layer 0"},
        {"scale1", inf, "the scales of backbone layer 1"},
        {"bias2", nan, "the bias of backbone layer 2"},
        {"classifierOutputs", 4u, "the classifier's output count"},
        {"classifierInputs", 4u, "the classifier's input count"},
        {"classifierEncoding", 9u, "the encoding of the classifier"},
        {"classifierWeight", -inf, "the weights of the classifier"},
        {"classifierBias", nan, "the bias of the classifier"},
        {"categoryCount", 0u, "the number of categories"},
        {"categoryCount", 65u, "the number of categories"},
        {"members0", 0u, "the label count of category 0"},
        {"members0", 4u, "the label count of category 0"},
        {"member1", 3u, "a label index of category 0"},
        {"member1", 0u, "names label 0 a second time"},
        {"member2", 1u, "names label 1 a second time"},
        {"context", 0u, "the context"},
        {"context", 17u, "the context"},
        {"headInput", 2u, "input kind"},
        {"headInput", 0u, "the input count of head layer 0"},
        {"headLayerCount", 0u, "the number of head layers"},
        {"headLayerCount", 9u, "the number of head layers"},
        {"headLayerCount", 1u, "the output count of the last head layer 0"},
        {"headOutputs0", 1u << 20, "the output count of head layer 0"},
        {"headInputs0", 5u, "the input count of head layer 0"},
        {"headOutputs1", 3u, "the output count of the last head layer 1"},
        {"headWeight0", nan, "the weights of head layer 0"},
        {"headBias1", inf, "the bias of head layer 1"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.field + " -> " + c.reason);
        std::visit([&](auto value) { expectRefused(write(good_.with(c.field, value)), c.reason); }, c.value);
    }
}

TEST_F(SoundModelFileTest, EveryCutAndTrailingDataAreRefused)
{
    for (std::size_t size = 0; size < good_.bytes.size(); ++size) {
        SCOPED_TRACE(size);
        expectRefused(write(std::vector<char>(good_.bytes.begin(), good_.bytes.begin() + std::ptrdiff_t(size))),
                      "file is truncated");
    }
    std::vector<char> trailing = good_.bytes;
    trailing.push_back(0);
    expectRefused(write(trailing), "unexpected data after the head");
    std::vector<char> magic = good_.bytes;
    magic[1] = 'X';
    expectRefused(write(magic), "not a Veltra sound model");
}

// Whatever a single damaged byte does, the answer is a model or a refusal
// (under the sanitizers, also no read out of bounds).
TEST_F(SoundModelFileTest, AnyDamagedByteLoadsOrIsRefused)
{
    for (std::size_t i = 0; i < good_.bytes.size(); ++i) {
        std::vector<char> spoilt = good_.bytes;
        spoilt[i] = char(~spoilt[i]);
        try {
            loadSoundModel(write(spoilt));
        } catch (const SoundModelError& error) {
            ASSERT_EQ(std::string(error.what()).rfind(path_.string() + ": ", 0), 0u) << error.what();
        }
    }
}

TEST_F(SoundModelFileTest, WhatIsNotARegularFileOfSaneSizeIsRefusedWithoutReadingIt)
{
    expectRefused(dir_ / "missing.bin", "cannot open");
    expectRefused(dir_, "not a regular file");
    expectRefused("/dev/zero", "not a regular file");
    const auto fifo = dir_ / "fifo";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    expectRefused(fifo, "not a regular file"); // opening must not wait for a writer
    expectRefused(write({}), "file is truncated");
    // Sparse: no disk space is used.
    write(good_.bytes);
    std::filesystem::resize_file(path_, (std::uintmax_t{32} << 20) + 1);
    expectRefused(path_, "larger than 32 MiB");
}

TEST(ShippedSoundModelTest, IsYamnetWithTheGateCategoriesAndEveryAcceptedLabel)
{
    const SoundModel model = loadSoundModel(defaultSoundModelPath());
    EXPECT_EQ(model.labels.size(), 521u);
    EXPECT_EQ(model.embeddingSize(), 1024);
    EXPECT_EQ(model.backbone.size(), 27u);
    EXPECT_EQ(model.frontEnd.sampleRate, 16000);
    EXPECT_EQ(model.frontEnd.patchFrames, 96);
    EXPECT_EQ(model.frontEnd.patchHopFrames, 48);
    EXPECT_EQ(model.frontEnd.melBands, 64);
    auto index = [&](std::string_view label) {
        return int(std::find(model.labels.begin(), model.labels.end(), label) - model.labels.begin());
    };
    // Each row of the selection screen is one head category with exactly
    // the labels the gate accepts for it (the head may have more).
    std::set<std::set<int>> categories;
    for (const auto& members : model.categories)
        categories.emplace(members.begin(), members.end());
    for (const SoundCategory& category : kSoundCategories) {
        std::set<int> labels;
        for (std::string_view label : category.labels())
            labels.insert(index(label));
        EXPECT_TRUE(categories.count(labels)) << category.title;
    }
    // What the gate must tell apart from its categories is named too.
    for (std::string_view label : {"speech", "music", "silence", "noise", "cello", "flute", "trumpet", "organ", "drum"})
        EXPECT_LT(index(label), int(model.labels.size())) << label;
    EXPECT_EQ(index("speech"), 0);
    EXPECT_EQ(index("violin"), int(model.labels.size())) << "only violin_fiddle stands for the violin";
    // Labels are what the command line prints and preferences may hold:
    // lower-case snake_case only.
    for (const std::string& label : model.labels)
        EXPECT_TRUE(std::all_of(label.begin(), label.end(), [](char c) { return (c >= 'a' && c <= 'z') || c == '_'; }))
            << label;
}

} // namespace
} // namespace veltra
