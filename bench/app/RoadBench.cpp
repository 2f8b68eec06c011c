// The cost of one reading on its way from the patch to the screen (note
// conversion, smoothing vote, graph feed, one graph redraw into a recording
// canvas), and of one frame of the graph through the window's real drawing
// paths, each next to the patch's own cost on a harmonic-rich input.
#include "app/OfflineTuner.h"
#include "settings/MemoryPreferenceStore.h"
#include "settings/Preferences.h"
#include "support/PatchRig.h"
#include "support/QPainterCanvas.h"
#include "support/RatioReport.h"
#include "support/Signals.h"
#include "tuning/PitchSmoothing.h"
#include "views/CullingCanvas.h"
#include "views/LiveView.h"
#include "views/RecordingCanvas.h"
#include "views/RowSplitCanvas.h"
#include "views/TriangleCanvas.h"
#include "views/TriangleRasterizer.h"

#include <QImage>
#include <QPainter>

#include <cmath>
#include <functional>

namespace {

using namespace veltra;

constexpr int kRate = 48000;
constexpr int kFrameSamples = 256; // one reading per analysis frame
constexpr double kReadingsPerSecond = static_cast<double>(kRate) / kFrameSamples;
constexpr double kFramesPerSecond = 60.0; // the display's refresh

void patchOneFrame(benchmark::State& state)
{
    test::PatchRig rig(kRate);
    const auto input = test::sawtooth(196.0, 0.25, 1.0, kRate);
    std::size_t position = 0;
    for (auto _ : state) {
        rig.patch.driver().run(std::span<const float>(&input[position], kFrameSamples));
        position = (position + kFrameSamples) % (input.size() - kFrameSamples);
        rig.readings.clear();
    }
}
BENCHMARK(patchOneFrame);

// A slightly wandering note near A4, one reading per call.
class WanderingNote {
public:
    explicit WanderingNote(const PreferenceStore& preferences)
        : preferences_(preferences)
    {
    }
    // Feeds the next reading; true when it reached the graph.
    bool feed(LiveView& liveView)
    {
        frequency_ = frequency_ > 445.0f ? 436.0f : frequency_ + 0.37f;
        const float x = noteNumberForFrequency(frequency_, preferences_.integerForKey(PreferenceKey::A4));
        benchmark::DoNotOptimize(CommonUtils::noteForNumber(x, preferences_));
        const auto value = smoothing_.add(x, roundHalfAwayFromZero(x));
        if (value)
            liveView.addValue(*value);
        return value.has_value();
    }

private:
    const PreferenceStore& preferences_;
    PitchSmoothing smoothing_;
    float frequency_ = 440.0f;
};

void roadOneReading(benchmark::State& state)
{
    MemoryPreferenceStore preferences;
    CommonUtils::setDefaultPreferences(preferences);
    LiveView liveView(preferences);
    WanderingNote note(preferences);
    RecordingCanvas canvas;
    for (auto _ : state) {
        note.feed(liveView);
        canvas.clear();
        liveView.draw(&canvas, OfflineTuner::kGraphRect);
    }
    state.counters["primitives"] = static_cast<double>(canvas.primitives().size());
}
BENCHMARK(roadOneReading);

// One graph frame with a full history (ten screens of a held note), drawn
// by drawFrame onto a canvas the size of the graph.
void graphFrames(benchmark::State& state, const std::function<void(LiveView&, const Rect&)>& drawFrame)
{
    MemoryPreferenceStore preferences;
    CommonUtils::setDefaultPreferences(preferences);
    LiveView liveView(preferences);
    WanderingNote note(preferences);
    const Rect graph = OfflineTuner::kGraphRect;
    RecordingCanvas warmUp;
    for (int i = 0; i < 20 * static_cast<int>(graph.height); ++i)
        if (note.feed(liveView))
            liveView.draw(&warmUp, graph);
    for (auto _ : state) {
        note.feed(liveView);
        drawFrame(liveView, graph);
    }
}

// Graph frames painted through QPainter into an image, as the window did
// before it rasterised its own triangles; with cull, only what is visible.
// Qt's painter also hands tall fills to its thread pool, a cost on the
// other threads that this timing does not see.
void paintedFrames(benchmark::State& state, bool cull)
{
    QImage image(350, 300, QImage::Format_ARGB32_Premultiplied);
    graphFrames(state, [&image, cull](LiveView& view, const Rect& r) {
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        QPainterCanvas canvas(painter);
        CullingCanvas culled(canvas, r);
        view.draw(cull ? static_cast<Canvas*>(&culled) : &canvas, r);
    });
}

// What the window did before: every primitive painted.
void graphPaintedWhole(benchmark::State& state)
{
    paintedFrames(state, false);
}
BENCHMARK(graphPaintedWhole)->Unit(benchmark::kMicrosecond);

// QPainter on the visible primitives only.
void graphPaintedVisible(benchmark::State& state)
{
    paintedFrames(state, true);
}
BENCHMARK(graphPaintedVisible)->Unit(benchmark::kMicrosecond);

// The frame's visible triangles: on a GPU the CPU's whole share (the GPU
// then draws them in one call); without one, rasterised into an image.
void triangleFrames(benchmark::State& state, bool rasterise)
{
    TriangleCanvas everyRow, rest;
    QImage image(350, 300, QImage::Format_RGB32);
    // On its opaque panel the window copies the rows between the panel's
    // rounded corners (radius 8) from one drawn row.
    constexpr RowRange kAlike{9, 300 - 9};
    graphFrames(state, [&](LiveView& view, const Rect& r) {
        everyRow.clear();
        rest.clear();
        RowSplitCanvas split(everyRow, rest, r);
        CullingCanvas culled(split, r);
        view.draw(&culled, r);
        if (!rasterise)
            return benchmark::DoNotOptimize(rest.vertices().data());
        image.fill(QColor(0x1c, 0x1f, 0x24));
        rasterizeTriangles(everyRow, rest,
                           {reinterpret_cast<std::uint32_t*>(image.bits()), image.width(), image.height(),
                            static_cast<int>(image.bytesPerLine() / 4)},
                           {}, kAlike);
        benchmark::DoNotOptimize(image.constBits());
    });
    state.counters["vertices"] = static_cast<double>(everyRow.vertices().size() + rest.vertices().size());
}

void graphTriangles(benchmark::State& state)
{
    triangleFrames(state, false);
}
BENCHMARK(graphTriangles)->Unit(benchmark::kMicrosecond);

// The software renderer's path.
void graphRasterized(benchmark::State& state)
{
    triangleFrames(state, true);
}
BENCHMARK(graphRasterized)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    return bench::RatioReport::run(argc, argv, [](const bench::RatioReport& report) {
        const double patch = report.seconds("patchOneFrame");
        if (patch <= 0)
            return;
        const double patchPerSecond = patch * kReadingsPerSecond;
        std::printf("the patch on a sawtooth: %.1f us per reading, %.2f%% of one core live\n", patch * 1e6,
                    100.0 * patchPerSecond);
        if (const double road = report.seconds("roadOneReading"); road > 0)
            std::printf("one reading's road: %.1f us (%.2fx the patch's cost for it)\n", road * 1e6, road / patch);
        for (const char* path : {"graphPaintedWhole", "graphPaintedVisible", "graphTriangles", "graphRasterized"}) {
            const double frame = report.seconds(path);
            if (frame > 0)
                std::printf("%s: %.1f us per frame; at 60 frames a second %.2f%% of one core, %.2fx the patch\n",
                            path, frame * 1e6, 100.0 * frame * kFramesPerSecond,
                            frame * kFramesPerSecond / patchPerSecond);
        }
    });
}
