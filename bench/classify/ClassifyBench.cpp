// Cost of the sound classifier: time per analysed window, the share of one
// core it takes while the microphone delivers 48 kHz audio in real time, and
// that cost as a ratio to the patch alone on the same ten seconds (what the
// app runs anyway while tuning), timed in the same run; on a held note (the
// regular windows alone) and on plucked notes starting every second or two
// (the extra windows at every note's start).
#include "classify/NeuralSoundClassifier.h"
#include "support/PatchRig.h"
#include "support/RatioReport.h"
#include "support/Signals.h"

#include <unistd.h>

#include <cmath>
#include <fstream>
#include <numbers>
#include <random>

namespace {

constexpr double kRate = 48000;
constexpr double kSeconds = 10.0;
// Windows start every 0.48 s; the first needs 0.975 s of audio.
constexpr int kWindows = 1 + int((kSeconds - 0.975) / 0.48);

std::vector<float> testAudio()
{
    std::mt19937 random(3);
    std::normal_distribution<float> noise(0.0f, 0.01f);
    std::vector<float> x(static_cast<std::size_t>(kRate * kSeconds));
    for (std::size_t n = 0; n < x.size(); ++n)
        x[n] = 0.3f * float(std::sin(2.0 * std::numbers::pi * 196.0 * double(n) / kRate)) + noise(random);
    return x;
}

// Plucked notes of G3, A3 and D4 after a quiet room, starting 1, 1.5 and 2 s
// apart in turn: how a player tunes string by string.
std::vector<float> notesAudio()
{
    std::mt19937 random(3);
    std::normal_distribution<float> noise(0.0f, 0.001f);
    std::vector<float> x(static_cast<std::size_t>(kRate * kSeconds));
    const double gaps[] = {1.0, 1.5, 2.0};
    const double pitches[] = {196.0, 220.0, 293.7};
    std::size_t note = 0;
    for (double start = 0.5; start < kSeconds; start += gaps[note % 3], ++note)
        for (auto n = std::size_t(start * kRate); n < x.size(); ++n) {
            const double t = double(n) / kRate - start;
            x[n] = 0.3f * float(std::exp(-2.0 * t) * std::sin(2.0 * std::numbers::pi * pitches[note % 3] * t));
        }
    for (float& sample : x)
        sample += noise(random);
    return x;
}

std::size_t onsetWindows = 0; // windows on notesAudio, counted by its benchmark

// The whole path from 2048-frame microphone buffers: resampling, log-mel
// frames, the network, the head and the sorted answer.
std::size_t classify(veltra::NeuralSoundClassifier& classifier, std::span<const float> samples)
{
    classifier.reset(kRate);
    std::size_t windows = 0;
    for (std::size_t at = 0; at < samples.size(); at += 2048)
        windows += classifier.analyze(samples.subspan(at, std::min<std::size_t>(2048, samples.size() - at))).size();
    return windows;
}

void classifyTenSeconds(benchmark::State& state)
{
    auto classifier = veltra::NeuralSoundClassifier::fromFile(veltra::defaultSoundModelPath());
    const auto audio = testAudio();
    for (auto _ : state)
        if (classify(*classifier, audio) != kWindows)
            state.SkipWithError("unexpected number of windows");
}
BENCHMARK(classifyTenSeconds)->Unit(benchmark::kMillisecond);

void classifyTenSecondsOfNotes(benchmark::State& state)
{
    auto classifier = veltra::NeuralSoundClassifier::fromFile(veltra::defaultSoundModelPath());
    const auto audio = notesAudio();
    for (auto _ : state)
        onsetWindows = classify(*classifier, audio);
}
BENCHMARK(classifyTenSecondsOfNotes)->Unit(benchmark::kMillisecond);

// The network alone on one window, to tell its share from the front end's
// and the head's.
void networkOneWindow(benchmark::State& state)
{
    const veltra::SoundModel model = veltra::loadSoundModel(veltra::defaultSoundModelPath());
    veltra::SoundNetwork network(model);
    std::vector<float> patch(static_cast<std::size_t>(model.frontEnd.patchFrames * model.frontEnd.melBands), -3.0f);
    std::vector<float> embedding(static_cast<std::size_t>(model.embeddingSize()));
    std::vector<float> logits(model.labels.size());
    for (auto _ : state) {
        network.run(patch, embedding, logits);
        benchmark::DoNotOptimize(logits.data());
    }
}
BENCHMARK(networkOneWindow)->Unit(benchmark::kMicrosecond);

// The baseline: the patch alone on ten seconds of G3, the note the
// whole-app measurement plays.
void patchTenSeconds(benchmark::State& state)
{
    veltra::test::PatchRig rig{int(kRate)};
    const auto input = veltra::test::sawtooth(196.0, 0.25, kSeconds, int(kRate));
    for (auto _ : state) {
        rig.patch.driver().run(input);
        rig.readings.clear();
    }
}
BENCHMARK(patchTenSeconds)->Unit(benchmark::kMillisecond);

// Resident memory grown by loading the classifier and running it on the
// test audio in microphone buffers: the weights as stored (mostly 8-bit),
// the front end's tables and the scratch of the forward pass.
double classifierMebibytes()
{
    auto resident = [] {
        std::ifstream statm("/proc/self/statm");
        std::size_t size = 0, pages = 0;
        statm >> size >> pages;
        return double(pages) * double(sysconf(_SC_PAGESIZE));
    };
    const auto audio = testAudio();
    const double before = resident();
    auto classifier = veltra::NeuralSoundClassifier::fromFile(veltra::defaultSoundModelPath());
    for (std::size_t at = 0; at < audio.size(); at += 2048)
        classifier->analyze(std::span<const float>(audio).subspan(at, std::min<std::size_t>(2048, audio.size() - at)));
    return (resident() - before) / double(1 << 20);
}

} // namespace

int main(int argc, char** argv)
{
    const double mebibytes = classifierMebibytes();
    return veltra::bench::RatioReport::run(argc, argv, [&](const veltra::bench::RatioReport& report) {
        const double stream = report.seconds("classifyTenSeconds");
        const double notes = report.seconds("classifyTenSecondsOfNotes");
        const double network = report.seconds("networkOneWindow");
        const double patch = report.seconds("patchTenSeconds");
        if (stream <= 0 || notes <= 0 || network <= 0 || patch <= 0)
            return;
        std::printf("classifier at %.0f Hz: %.2f ms per window (network %.2f ms), %.2f%% of one core in real time\n",
                    kRate, 1e3 * stream / kWindows, 1e3 * network, 100.0 * stream / kSeconds);
        std::printf("classifier's resident memory: %.1f MiB\n", mebibytes);
        std::printf("classifier / patch alone on the same ten seconds: %.3f (patch %.2f%% of one core)\n",
                    stream / patch, 100.0 * patch / kSeconds);
        std::printf("notes every 1 to 2 s: %zu windows (held note: %d), %.2f%% of one core, %.3f of the patch alone,"
                    " %.2f of the held note\n",
                    onsetWindows, kWindows, 100.0 * notes / kSeconds, notes / patch, notes / stream);
    });
}
