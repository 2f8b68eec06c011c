#include "app/OfflineTuner.h"
#include "settings/MemoryPreferenceStore.h"
#include "settings/Preferences.h"
#include "support/QPainterCanvas.h"
#include "support/Replay.h"
#include "support/Signals.h"
#include "views/TriangleCanvas.h"
#include "views/TriangleRasterizer.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace veltra::test {
namespace {

// The panel the graph sits on.
const QColor kBackground(0x1c, 0x1f, 0x24);

// The triangles through the window's software rasteriser, on the panel.
// The rasteriser skips incomplete or out-of-range triangles, so the canvas's
// indices are checked here.
QImage rasterise(const TriangleCanvas& triangles, int width, int height)
{
    const auto& indices = triangles.indices();
    EXPECT_EQ(indices.size() % 3, 0u);
    EXPECT_TRUE(std::all_of(indices.begin(), indices.end(),
                            [&](std::uint32_t i) { return i < triangles.vertices().size(); }));
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(kBackground);
    rasterizeTriangles(triangles.vertices(), triangles.indices(),
                       {reinterpret_cast<std::uint32_t*>(image.bits()), width, height,
                        static_cast<int>(image.bytesPerLine() / 4)});
    return image;
}

QImage paintWithQPainter(const RecordingCanvas& recording, int width, int height)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(kBackground);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterCanvas canvas(painter);
    replay(recording, canvas);
    return image;
}

QImage rasterise(const RecordingCanvas& recording, int width, int height)
{
    TriangleCanvas triangles;
    replay(recording, triangles);
    return rasterise(triangles, width, height);
}

int channelDifference(const QColor& a, const QColor& b)
{
    return std::max({std::abs(a.red() - b.red()), std::abs(a.green() - b.green()), std::abs(a.blue() - b.blue())});
}

// Pixels whose colour differs by more than a rounding step's worth of
// antialiasing between the two renderings, as a fraction of all pixels.
constexpr int kVisibleDifference = 40; // of 255, in any channel
double differingFraction(const QImage& expected, const QImage& actual)
{
    int differing = 0;
    for (int y = 0; y < expected.height(); ++y)
        for (int x = 0; x < expected.width(); ++x)
            differing += channelDifference(expected.pixelColor(x, y), actual.pixelColor(x, y)) > kVisibleDifference;
    return static_cast<double>(differing) / (expected.width() * expected.height());
}

// Only antialiased edges may come out differently, never whole shapes.
constexpr double kMostDiffering = 0.01;

// The graph and the keyboard as the screen draws them, through the triangle
// path and through QPainter: the same picture, up to antialiasing.
TEST(TriangleCanvas, DrawsTheViewsAsQPainterDoes)
{
    MemoryPreferenceStore preferences;
    CommonUtils::setDefaultPreferences(preferences);
    struct Case {
        std::string what;
        bool continuous;
        double hertz; // slightly off A4 moves the trace and the deviation band
    };
    const Case cases[] = {
        {"the held-note graph, in tune", false, 440.0},
        {"the held-note graph, sharp", false, 445.0},
        {"the continuous graph, flat", true, 436.0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        preferences.setBool(c.continuous, PreferenceKey::ContinuousDisplay);
        OfflineTuner tuner(preferences, 48000);
        tuner.run(sawtooth(c.hertz, 0.3, 1.0, 48000));
        RecordingCanvas recording;
        const Rect graph = OfflineTuner::kGraphRect;
        tuner.liveView().draw(&recording, graph);
        ASSERT_FALSE(recording.primitives().empty());
        const int w = static_cast<int>(graph.width), h = static_cast<int>(graph.height);
        EXPECT_LT(differingFraction(paintWithQPainter(recording, w, h), rasterise(recording, w, h)), kMostDiffering);
    }

    for (const std::int64_t lit : {std::int64_t{48}, std::int64_t{49}}) { // a white key, a black key
        SCOPED_TRACE(lit);
        PianoView piano;
        piano.setHighlightKey(lit);
        RecordingCanvas recording;
        piano.draw(&recording, {0, 0, 400, 40});
        EXPECT_LT(differingFraction(paintWithQPainter(recording, 400, 40), rasterise(recording, 400, 40)),
                  kMostDiffering);
    }
}

// Colours come out as drawn (premultiplied correctly, translucency kept),
// edges on whole pixels stay sharp, later shapes cover earlier ones.
TEST(TriangleCanvas, FillsExactlyTheRectangleInItsColour)
{
    TriangleCanvas canvas;
    canvas.fillRect({10, 5, 10, 10}, {1.0, 0.0, 0.0, 1.0});
    canvas.fillRect({15, 5, 10, 10}, {0.0, 0.0, 1.0, 0.5}); // half over the red one
    const QImage raster = rasterise(canvas, 40, 20);
    const QColor background = kBackground;
    const QColor halfBlueOverRed = QColor::fromRgbF(0.5f, 0.0f, 0.5f);
    const QColor halfBlueOverBackground = QColor::fromRgbF(static_cast<float>(background.redF() * 0.5),
                                                           static_cast<float>(background.greenF() * 0.5),
                                                           static_cast<float>(background.blueF() * 0.5 + 0.5));
    struct Probe {
        int x, y;
        QColor expected;
    };
    const Probe probes[] = {
        {9, 10, background}, {10, 10, Qt::red},  {14, 5, Qt::red},  {14, 4, background}, {15, 10, halfBlueOverRed},
        {19, 14, halfBlueOverRed}, {20, 10, halfBlueOverBackground}, {24, 10, halfBlueOverBackground},
        {25, 10, background}, {20, 15, background},
    };
    for (const Probe& p : probes)
        EXPECT_LE(channelDifference(raster.pixelColor(p.x, p.y), p.expected), 2) << p.x << "," << p.y;
}

// Each frame is built from scratch: nothing of a previous frame's drawing
// (a bar that has moved, a trace that has gone) may stay on screen.
TEST(TriangleCanvas, KeepsNothingFromThePreviousFrame)
{
    TriangleCanvas canvas;
    canvas.fillRect({0, 0, 40, 20}, {1.0, 0.0, 0.0, 1.0});
    canvas.strokeLine({5, 0}, {5, 20}, {1.0, 1.0, 1.0, 1.0}, 2.0);
    canvas.clear();
    EXPECT_TRUE(canvas.vertices().empty());
    EXPECT_TRUE(canvas.indices().empty());

    canvas.fillRect({30, 0, 5, 20}, {0.0, 1.0, 0.0, 1.0});
    TriangleCanvas fresh;
    fresh.fillRect({30, 0, 5, 20}, {0.0, 1.0, 0.0, 1.0});
    EXPECT_EQ(canvas.indices(), fresh.indices()) << "indices must restart at the new frame's first vertex";
    const QImage raster = rasterise(canvas, 40, 20);
    EXPECT_LE(channelDifference(raster.pixelColor(10, 10), kBackground), 2) << "the old red fill is still there";
    EXPECT_LE(channelDifference(raster.pixelColor(32, 10), Qt::green), 2);
}

} // namespace
} // namespace veltra::test
