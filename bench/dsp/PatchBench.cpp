// How fast the patch runs offline, and what share of one core it takes
// while running live at 48 kHz.
#include "support/PatchRig.h"
#include "support/RatioReport.h"
#include "support/Signals.h"

namespace {

constexpr int kRate = 48000;
constexpr double kSeconds = 10.0;

void patchTenSeconds(benchmark::State& state)
{
    veltra::test::PatchRig rig(kRate);
    const auto input = veltra::test::sine(440.0, 0.3, kSeconds, kRate);
    for (auto _ : state) {
        rig.patch.driver().run(input);
        rig.readings.clear();
    }
}
BENCHMARK(patchTenSeconds)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    return veltra::bench::RatioReport::run(argc, argv, [](const veltra::bench::RatioReport& report) {
        const double seconds = report.seconds("patchTenSeconds");
        if (seconds <= 0)
            return;
        std::printf("patch at %d Hz: %.0fx faster than real time, %.2f%% of one core\n", kRate, kSeconds / seconds,
                    100.0 * seconds / kSeconds);
    });
}
