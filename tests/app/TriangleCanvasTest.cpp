#include "app/OfflineTuner.h"
#include "app/qt/QPainterCanvas.h"
#include "app/qt/TriangleCanvas.h"
#include "settings/MemoryPreferenceStore.h"
#include "settings/Preferences.h"
#include "support/Replay.h"
#include "support/Signals.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace veltra::test {
namespace {

// The panel the graph sits on.
const QColor kBackground(0x1c, 0x1f, 0x24);

using Pixel = std::array<double, 4>; // premultiplied red, green, blue, alpha

// Renders the triangles as a GPU would: colours interpolated across each
// triangle, sampled at pixel centres, blended premultiplied "over" in
// order. The sample point is nudged off the half-pixel grid so that a centre
// never falls exactly on an edge two triangles share.
class Raster {
public:
    Raster(int width, int height)
        : width_(width)
        , height_(height)
        , pixels_(static_cast<std::size_t>(width * height),
                  Pixel{kBackground.redF(), kBackground.greenF(), kBackground.blueF(), 1.0})
    {
    }

    void draw(const TriangleCanvas& canvas)
    {
        const auto& v = canvas.vertices();
        const auto& idx = canvas.indices();
        ASSERT_EQ(idx.size() % 3, 0u);
        for (std::size_t i = 0; i < idx.size(); i += 3) {
            ASSERT_LT(std::max({idx[i], idx[i + 1], idx[i + 2]}), v.size());
            triangle(v[idx[i]], v[idx[i + 1]], v[idx[i + 2]]);
        }
    }

    QColor at(int x, int y) const
    {
        const Pixel& p = pixels_[static_cast<std::size_t>(y * width_ + x)];
        return QColor::fromRgbF(static_cast<float>(p[0]), static_cast<float>(p[1]), static_cast<float>(p[2]));
    }

private:
    void triangle(const TriangleCanvas::Vertex& a, const TriangleCanvas::Vertex& b, const TriangleCanvas::Vertex& c)
    {
        const double area = (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
        if (area == 0.0)
            return;
        const int x0 = std::max(0, static_cast<int>(std::floor(std::min({a.x, b.x, c.x}))));
        const int x1 = std::min(width_ - 1, static_cast<int>(std::ceil(std::max({a.x, b.x, c.x}))));
        const int y0 = std::max(0, static_cast<int>(std::floor(std::min({a.y, b.y, c.y}))));
        const int y1 = std::min(height_ - 1, static_cast<int>(std::ceil(std::max({a.y, b.y, c.y}))));
        for (int y = y0; y <= y1; ++y)
            for (int x = x0; x <= x1; ++x) {
                const double px = x + 0.5 + 1.3e-4, py = y + 0.5 + 0.7e-4;
                const double wa = ((b.x - px) * (c.y - py) - (c.x - px) * (b.y - py)) / area;
                const double wb = ((c.x - px) * (a.y - py) - (a.x - px) * (c.y - py)) / area;
                const double wc = 1.0 - wa - wb;
                if (wa < 0 || wb < 0 || wc < 0)
                    continue;
                const auto mix = [&](unsigned char ca, unsigned char cb, unsigned char cc) {
                    return (wa * ca + wb * cb + wc * cc) / 255.0;
                };
                const Pixel src{mix(a.r, b.r, c.r), mix(a.g, b.g, c.g), mix(a.b, b.b, c.b), mix(a.a, b.a, c.a)};
                Pixel& dst = pixels_[static_cast<std::size_t>(y * width_ + x)];
                for (std::size_t k = 0; k < 4; ++k)
                    dst[k] = src[k] + dst[k] * (1.0 - src[3]);
            }
    }

    int width_, height_;
    std::vector<Pixel> pixels_;
};

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

Raster rasterise(const RecordingCanvas& recording, int width, int height)
{
    TriangleCanvas triangles;
    replay(recording, triangles);
    Raster raster(width, height);
    raster.draw(triangles);
    return raster;
}

int channelDifference(const QColor& a, const QColor& b)
{
    return std::max({std::abs(a.red() - b.red()), std::abs(a.green() - b.green()), std::abs(a.blue() - b.blue())});
}

// Pixels whose colour differs by more than a rounding step's worth of
// antialiasing between the two renderings, as a fraction of all pixels.
constexpr int kVisibleDifference = 40; // of 255, in any channel
double differingFraction(const QImage& expected, const Raster& actual)
{
    int differing = 0;
    for (int y = 0; y < expected.height(); ++y)
        for (int x = 0; x < expected.width(); ++x)
            differing += channelDifference(expected.pixelColor(x, y), actual.at(x, y)) > kVisibleDifference;
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
    Raster raster(40, 20);
    raster.draw(canvas);
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
        EXPECT_LE(channelDifference(raster.at(p.x, p.y), p.expected), 2) << p.x << "," << p.y;
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
    Raster raster(40, 20);
    raster.draw(canvas);
    EXPECT_LE(channelDifference(raster.at(10, 10), kBackground), 2) << "the old red fill is still there";
    EXPECT_LE(channelDifference(raster.at(32, 10), Qt::green), 2);
}

} // namespace
} // namespace veltra::test
