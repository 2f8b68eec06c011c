// How fast the patch runs offline, and what share of one core it takes
// while running live at 48 kHz: on a sawtooth (every harmonic, like a real
// string) and, for comparison, on a pure sine, the cheapest input there is;
// and what the same work costs at the live pace, a buffer at a time.
#include "dsp/PulseAudioBackend.h"
#include "support/PatchRig.h"
#include "support/RatioReport.h"
#include "support/Signals.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <thread>
#include <utility>

namespace {

constexpr int kRate = 48000;
constexpr double kSeconds = 10.0;

void runTenSeconds(benchmark::State& state, const std::vector<float>& input)
{
    veltra::test::PatchRig rig(kRate);
    for (auto _ : state) {
        rig.patch.driver().run(input);
        rig.readings.clear();
    }
}

// G3, the note the whole-app measurement plays (bench/app-cpu.sh).
void patchSawtooth(benchmark::State& state)
{
    runTenSeconds(state, veltra::test::sawtooth(196.0, 0.25, kSeconds, kRate));
}
BENCHMARK(patchSawtooth)->Unit(benchmark::kMillisecond);

void patchSine(benchmark::State& state)
{
    runTenSeconds(state, veltra::test::sine(440.0, 0.3, kSeconds, kRate));
}
BENCHMARK(patchSine)->Unit(benchmark::kMillisecond);

// The sawtooth as the live audio thread runs it: one buffer of the sound
// server's length at a time, each followed by as long a wait, with only the
// processing timed. Asleep between buffers, as live, each buffer finds the
// core cold: its caches hold others' work by then, and on a virtual machine
// the host may have run another guest on it meanwhile. Waiting busy instead
// keeps the core ours. Set against patchSawtooth, the two tell what the
// machine charges for waking up: a live tuner pays it, the offline figure
// does not. Asleep with buffers of twice the length, it tells how much of
// that charge a longer buffer, waking half as often, would save.
constexpr double kPacedSeconds = 2.0;
constexpr int kPacedRuns = 3;
constexpr auto kLiveFrames = static_cast<std::int64_t>(veltra::PulseAudioBackend::kMinimumBufferFrames);

void patchAtLivePace(benchmark::State& state, bool busy)
{
    const auto input = veltra::test::sawtooth(196.0, 0.25, kPacedSeconds, kRate);
    const auto frames = static_cast<std::size_t>(state.range(0));
    const auto wait = std::chrono::duration<double>(double(frames) / kRate);
    veltra::test::PatchRig rig(kRate);
    for (auto _ : state) {
        for (std::size_t i = 0; i + frames <= input.size(); i += frames) {
            rig.patch.driver().run(std::span<const float>(input).subspan(i, frames));
            state.PauseTiming();
            if (busy) {
                const auto until = std::chrono::steady_clock::now() + wait;
                while (std::chrono::steady_clock::now() < until) {
                }
            } else {
                std::this_thread::sleep_for(wait);
            }
            state.ResumeTiming();
        }
        rig.readings.clear();
    }
}
BENCHMARK_CAPTURE(patchAtLivePace, asleep, false)
    ->Arg(kLiveFrames)
    ->Arg(2 * kLiveFrames)
    ->Iterations(kPacedRuns)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(patchAtLivePace, busy, true)->Arg(kLiveFrames)->Iterations(kPacedRuns)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    return veltra::bench::RatioReport::run(argc, argv, [](const veltra::bench::RatioReport& report) {
        for (const char* input : {"patchSawtooth", "patchSine"}) {
            const double seconds = report.seconds(input);
            if (seconds > 0)
                std::printf("%s at %d Hz: %.0fx faster than real time, %.2f%% of one core\n", input, kRate,
                            kSeconds / seconds, 100.0 * seconds / kSeconds);
        }
        const double sawtooth = report.seconds("patchSawtooth");
        if (report.seconds("patchSine") > 0)
            std::printf("a sawtooth costs %.2fx a sine\n", sawtooth / report.seconds("patchSine"));
        // Per audio second, against the sawtooth run back to back.
        const std::pair<const char*, std::int64_t> paces[] = {
            {"asleep", kLiveFrames}, {"busy", kLiveFrames}, {"asleep", 2 * kLiveFrames}};
        for (const auto& [pace, frames] : paces) {
            const double seconds = report.seconds("patchAtLivePace/" + std::string(pace) + "/" + std::to_string(frames) +
                                                  "/iterations:" + std::to_string(kPacedRuns));
            if (seconds > 0 && sawtooth > 0)
                std::printf("the sawtooth %lld frames at a time, %s between buffers: %.2fx back to back\n",
                            static_cast<long long>(frames), pace, seconds / kPacedSeconds / (sawtooth / kSeconds));
        }
    });
}
