#include "ReferenceData.h"
#include "classify/LogMelFrontEnd.h"
#include "classify/Resampler.h"
#include "classify/SoundModel.h"
#include "dsp/AudioFile.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace veltra {
namespace {

std::vector<float> sine(double hz, double rate, std::size_t count, float amplitude = 0.5f)
{
    std::vector<float> x(count);
    for (std::size_t n = 0; n < count; ++n)
        x[n] = amplitude * static_cast<float>(std::sin(2.0 * std::numbers::pi * hz * double(n) / rate));
    return x;
}

std::vector<float> resampleInChunks(double rate, const std::vector<float>& input, std::size_t chunk)
{
    Resampler resampler(rate, 16000);
    std::vector<float> out;
    for (std::size_t at = 0; at < input.size(); at += chunk)
        resampler.process(std::span<const float>(input).subspan(at, std::min(chunk, input.size() - at)), out);
    return out;
}

double rms(std::span<const float> x)
{
    double sum = 0;
    for (float v : x)
        sum += double(v) * v;
    return std::sqrt(sum / double(x.size()));
}

TEST(ResamplerTest, ToneSurvivesAndStaysInTimeFromCommonRates)
{
    for (double rate : {8000.0, 22050.0, 44100.0, 48000.0, 96000.0}) {
        SCOPED_TRACE(rate);
        const auto out = resampleInChunks(rate, sine(1000, rate, std::size_t(rate)), 4096);
        const auto expected = sine(1000, 16000, out.size());
        ASSERT_GT(out.size(), 15500u);
        double worst = 0;
        // Past the filter's start-up, output n sits at input time n / 16 kHz.
        for (std::size_t n = 200; n < out.size(); ++n)
            worst = std::max(worst, double(std::abs(out[n] - expected[n])));
        EXPECT_LT(worst, 1e-3);
    }
}

TEST(ResamplerTest, OutputDoesNotDependOnHowInputIsSplit)
{
    const auto input = sine(440, 44100, 30000);
    const auto whole = resampleInChunks(44100, input, input.size());
    for (std::size_t chunk : {1u, 7u, 256u, 2048u}) {
        const auto pieces = resampleInChunks(44100, input, chunk);
        ASSERT_EQ(pieces.size(), whole.size()) << chunk;
        for (std::size_t n = 0; n < whole.size(); ++n)
            ASSERT_EQ(pieces[n], whole[n]) << "chunk " << chunk << " sample " << n;
    }
}

TEST(ResamplerTest, RemovesWhatWouldAliasAndPassesSixteenKilohertzThrough)
{
    // 11 kHz would fold onto 5 kHz at a 16 kHz rate.
    const auto out = resampleInChunks(48000, sine(11000, 48000, 48000), 48000);
    EXPECT_LT(rms(std::span<const float>(out).subspan(500)), 0.5 / std::sqrt(2.0) * 1e-3);
    const auto same = sine(300, 16000, 1000);
    EXPECT_EQ(resampleInChunks(16000, same, 333), same);
}

class FrontEndReferenceTest : public ::testing::Test {
protected:
    SoundModel model = loadSoundModel(defaultSoundModelPath());
};

TEST_F(FrontEndReferenceTest, LogMelFramesMatchTheTrainingCode)
{
    const AudioData audio = readAudioFile(test::classifyData("reference_input.wav").string());
    const auto expected = test::readFloats(test::classifyData("reference_logmel.f32"));
    const int bands = model.frontEnd.melBands;
    ASSERT_EQ(expected.size() % std::size_t(bands), 0u);

    Resampler resampler(audio.sampleRate, model.frontEnd.sampleRate);
    LogMelFrontEnd frontEnd(model.frontEnd);
    std::vector<float> resampled, frames;
    for (std::size_t at = 0; at < audio.samples.size(); at += 1000) {
        resampled.clear();
        resampler.process(std::span<const float>(audio.samples).subspan(at, std::min<std::size_t>(1000, audio.samples.size() - at)),
                          resampled);
        frontEnd.process(resampled, frames);
    }
    // The stream stops short of the file's end by the filter's reach.
    ASSERT_GE(frames.size(), expected.size() - 2 * std::size_t(bands));
    double worst = 0;
    for (std::size_t i = 0; i < std::min(frames.size(), expected.size()); ++i)
        worst = std::max(worst, double(std::abs(frames[i] - expected[i])));
    EXPECT_LT(worst, 2e-3);
}

TEST_F(FrontEndReferenceTest, ToneLightsTheMelBandAroundItsFrequency)
{
    LogMelFrontEnd frontEnd(model.frontEnd);
    std::vector<float> frames;
    frontEnd.process(sine(1000, 16000, 4000), frames);
    const int bands = model.frontEnd.melBands;
    const auto last = std::span<const float>(frames).last(std::size_t(bands));
    const auto peak = std::max_element(last.begin(), last.end()) - last.begin();
    // Band centres are even on the mel scale between 125 and 7500 Hz.
    const double mel = 1127.0 * std::log1p(1000.0 / 700.0);
    const double low = 1127.0 * std::log1p(125.0 / 700.0);
    const double high = 1127.0 * std::log1p(7500.0 / 700.0);
    const double expectedBand = (mel - low) / ((high - low) / (bands + 1)) - 1;
    EXPECT_NEAR(double(peak), expectedBand, 1.0);
}

} // namespace
} // namespace veltra
