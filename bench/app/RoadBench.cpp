// The cost of one reading on its way from the patch to the screen (note
// conversion, smoothing vote, graph feed, one graph redraw into a recording
// canvas), next to the patch's own cost for the 256 samples that produce it.
#include "app/OfflineTuner.h"
#include "settings/MemoryPreferenceStore.h"
#include "settings/Preferences.h"
#include "support/PatchRig.h"
#include "support/RatioReport.h"
#include "support/Signals.h"
#include "tuning/PitchSmoothing.h"
#include "views/LiveView.h"
#include "views/RecordingCanvas.h"

#include <cmath>

namespace {

constexpr int kRate = 48000;
constexpr int kFrameSamples = 256; // one reading per analysis frame

void patchOneFrame(benchmark::State& state)
{
    veltra::test::PatchRig rig(kRate);
    const auto input = veltra::test::sine(440.0, 0.3, 1.0, kRate);
    std::size_t position = 0;
    for (auto _ : state) {
        rig.patch.driver().run(std::span<const float>(&input[position], kFrameSamples));
        position = (position + kFrameSamples) % (input.size() - kFrameSamples);
        rig.readings.clear();
    }
}
BENCHMARK(patchOneFrame);

void roadOneReading(benchmark::State& state)
{
    using namespace veltra;
    MemoryPreferenceStore preferences;
    CommonUtils::setDefaultPreferences(preferences);
    LiveView liveView(preferences);
    PitchSmoothing smoothing;
    RecordingCanvas canvas;
    const Rect graph = OfflineTuner::kGraphRect;
    float frequency = 440.0f;
    for (auto _ : state) {
        frequency = frequency > 445.0f ? 436.0f : frequency + 0.37f; // a slightly wandering note
        const float x = noteNumberForFrequency(frequency, preferences.integerForKey(PreferenceKey::A4));
        benchmark::DoNotOptimize(CommonUtils::noteForNumber(x, preferences));
        if (const auto value = smoothing.add(x, roundHalfAwayFromZero(x)))
            liveView.addValue(*value);
        canvas.clear();
        liveView.draw(&canvas, graph);
    }
    state.counters["primitives"] = static_cast<double>(canvas.primitives().size());
}
BENCHMARK(roadOneReading);

} // namespace

int main(int argc, char** argv)
{
    return veltra::bench::RatioReport::run(argc, argv, [](const veltra::bench::RatioReport& report) {
        const double patch = report.seconds("patchOneFrame");
        const double road = report.seconds("roadOneReading");
        if (patch <= 0 || road <= 0)
            return;
        std::printf("one reading: patch %.1f us, road %.1f us (%.2fx the patch)\n", patch * 1e6, road * 1e6,
                    road / patch);
    });
}
