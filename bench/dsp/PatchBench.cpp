// How fast the patch runs offline, and what share of one core it takes
// while running live at 48 kHz: on a sawtooth (every harmonic, like a real
// string) and, for comparison, on a pure sine, the cheapest input there is.
#include "support/PatchRig.h"
#include "support/RatioReport.h"
#include "support/Signals.h"

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
        if (report.seconds("patchSine") > 0)
            std::printf("a sawtooth costs %.2fx a sine\n", report.seconds("patchSawtooth") / report.seconds("patchSine"));
    });
}
