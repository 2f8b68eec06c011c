#include "settings/MemoryPreferenceStore.h"
#include "settings/Preferences.h"
#include "views/LiveView.h"
#include "views/RecordingCanvas.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace veltra {
namespace {

constexpr Rect kBounds{0.0, 0.0, 300.0, 100.0};
constexpr Color kWhite{1.0, 1.0, 1.0, 1.0};

// Keeps each note as "G#5", or "-" for the no-note record.
class RecordingDelegate : public LiveViewDelegate {
public:
    void didUpdateTopNote(const Note& n) override { shown.push_back(n.note + n.sharpFlat + n.octaveNumber); }
    std::vector<std::string> shown{"none"};
};

class LiveViewTest : public ::testing::Test {
protected:
    LiveViewTest()
    {
        CommonUtils::setDefaultPreferences(store);
        view.setDelegate(&delegate);
    }
    void useContinuous(float latency)
    {
        store.setBool(true, PreferenceKey::ContinuousDisplay);
        store.setFloat(latency, PreferenceKey::Latency);
    }
    void redraw(LiveView& v, const Rect& r = kBounds)
    {
        canvas.clear();
        v.draw(&canvas, r);
    }
    // One frame as the screen runs it: a value, then a redraw.
    void feed(float value, LiveView* v = nullptr)
    {
        LiveView& target = v ? *v : view;
        target.addValue(value);
        redraw(target);
    }
    const std::string& shown() const { return delegate.shown.back(); }
    std::vector<StrokedLine> trace() const
    {
        std::vector<StrokedLine> lines = canvas.all<StrokedLine>();
        std::erase_if(lines, [](const StrokedLine& l) { return l.stroke != kWhite; });
        return lines;
    }

    MemoryPreferenceStore store;
    RecordingCanvas canvas;
    RecordingDelegate delegate;
    LiveView view{store};
};

void expectSegment(const StrokedLine& line, double x1, double y1, double x2, double y2)
{
    EXPECT_NEAR(line.from.x, x1, 1e-3);
    EXPECT_NEAR(line.to.x, x2, 1e-3);
    EXPECT_EQ(line.from.y, y1);
    EXPECT_EQ(line.to.y, y2);
}

TEST_F(LiveViewTest, SettingsAreReadEvenWhenNothingIsDrawn)
{
    struct Row {
        DeviceIdiom idiom;
        SizeClass sizeClass;
        bool continuous;
        double lineWidth;
        std::int64_t stability;
    };
    const Row rows[] = {{DeviceIdiom::Pad, SizeClass::Regular, true, 5.5, 7},
                        {DeviceIdiom::Pad, SizeClass::Unspecified, true, 5.5, 7},
                        {DeviceIdiom::Pad, SizeClass::Compact, false, 1.5, 20},
                        {DeviceIdiom::Phone, SizeClass::Regular, false, 1.5, 20}};
    store.setFloat(3.0f, PreferenceKey::LineThickness);
    store.setFloat(7.9f, PreferenceKey::Latency);
    for (const Row& row : rows) {
        store.setBool(row.continuous, PreferenceKey::ContinuousDisplay);
        view.setDeviceIdiom(row.idiom);
        view.setHorizontalSizeClass(row.sizeClass);
        redraw(view);
        EXPECT_TRUE(canvas.primitives().empty());
        EXPECT_EQ(view.lineWidth(), row.lineWidth);
        EXPECT_EQ(view.stabilityFactor(), row.stability);
    }
    view.addValue(69.0f);
    view.draw(nullptr, kBounds);
    EXPECT_TRUE(view.lastNotesArray().empty());
    EXPECT_EQ(shown(), "none");
}

// Only no-pitch markers: no vote, no delegate call, just bar and centre line.
TEST_F(LiveViewTest, MarkersDrawOnlyBarOfSetWidthAndCentreLine)
{
    const std::pair<std::int64_t, double> rows[] = {{0, 72.0}, {1, 48.0}, {2, 24.0}, {5, 48.0}};
    for (const auto& [setting, width] : rows) {
        store.setInteger(setting, PreferenceKey::CenterBarWidth);
        feed(LiveView::kNoPitch);
        ASSERT_EQ(canvas.primitives().size(), 2U);
        EXPECT_EQ(std::get<FilledRect>(canvas.primitives()[0]),
                  (FilledRect{{150.0 - width / 2, 0.0, width, 100.0}, {0.12, 0.69, 0.54, 0.9}}));
        EXPECT_EQ(std::get<StrokedLine>(canvas.primitives()[1]),
                  (StrokedLine{{150.0, 0.0}, {150.0, 100.0}, {0.8, 1.0, 0.8, 0.65}, 3.0}));
    }
    EXPECT_TRUE(view.lastNotesArray().empty());
    EXPECT_EQ(shown(), "none");
}

// Top note 68 on 300 points: 0.1w is 50 cents flat, 0.9w 50 cents sharp.
// Primitives: band, its edge line (outside the band), bar, wash, centre line.
TEST_F(LiveViewTest, DeviationBandSpansCentreToValue)
{
    useContinuous(1.0f);
    const std::pair<float, double> rows[] = {{69.0f, 150.0}, {68.5f, 30.0}, {69.49f, 267.6}};
    for (const auto& [value, x] : rows) {
        LiveView v{store};
        feed(value, &v);
        EXPECT_NEAR(v.lastDeviationXVal(), x, 1e-3) << value;
        const auto& p = canvas.primitives();
        ASSERT_EQ(p.size(), 5U);
        const Rect band = std::get<FilledRect>(p[0]).rect;
        EXPECT_NEAR(band.x, std::min(x, 150.0), 1e-3);
        EXPECT_NEAR(band.x + band.width, std::max(x, 150.0), 1e-3);
        EXPECT_NEAR(std::get<StrokedLine>(p[1]).from.x, x < 150.0 ? x - 1.5 : x + 1.5, 1e-3);
        EXPECT_EQ(std::get<FilledRect>(p[2]).rect, (Rect{126.0, 0.0, 48.0, 100.0}));
        EXPECT_EQ(std::get<FilledRect>(p[3]).rect, kBounds);
    }
    // The product is single precision, the sum double: on 301 points this
    // differs from an all-double or all-float result.
    LiveView v{store};
    v.addValue(69.49f);
    redraw(v, {0.0, 0.0, 301.0, 100.0});
    EXPECT_EQ(v.lastDeviationXVal(), 268.49149475097659);
}

// Latency 4 needs 3 equal indices. A note that wins while it is the newest
// value leaves the fallback alone; one that takes over sets it.
TEST_F(LiveViewTest, VoteAndFallbackToLastTakeover)
{
    useContinuous(4.0f);
    const std::tuple<float, const char*, float> steps[] = {
        {60.0f, "-", -1500.0f}, {60.0f, "-", -1500.0f}, {60.0f, "G#5", -1500.0f}, {62.0f, "G#5", 59.0f},
        {62.0f, "G#5", 59.0f},  {62.0f, "A#5", 59.0f},  {64.0f, "A#5", 61.0f},
    };
    for (const auto& [value, note, fallback] : steps) {
        feed(value);
        EXPECT_EQ(shown(), note);
        EXPECT_EQ(view.lastTopValueIntegerPart(), fallback);
    }
    EXPECT_EQ(delegate.shown.size(), 8U); // called on every redraw
}

// The majority is measured against the vote length (20), not the entries so
// far; a tie after Latency is lowered goes to the index seen first.
TEST_F(LiveViewTest, MajorityOfVoteLengthAndTieBreak)
{
    for (int i = 0; i < 10; ++i)
        feed(60.0f);
    EXPECT_EQ(shown(), "-");
    feed(60.0f);
    EXPECT_EQ(shown(), "G#5");

    LiveView v{store};
    v.setDelegate(&delegate);
    useContinuous(10.0f);
    for (const float value : {64.0f, 62.0f, 60.0f, 62.0f, 60.0f, 62.0f, 60.0f, 62.0f, 60.0f})
        feed(value, &v);
    EXPECT_EQ(shown(), "-");
    store.setFloat(2.0f, PreferenceKey::Latency);
    feed(LiveView::kNoPitch, &v); // drops the 63: four 61 and four 59 remain
    EXPECT_EQ(shown(), "A#5");
}

// Silence keeps the note while the vote holds; with no deviation stored yet
// the band reaches from the left edge, and the wash is left alone.
TEST_F(LiveViewTest, SilenceKeepsTopNoteWhileMajorityHolds)
{
    useContinuous(4.0f);
    feed(69.0f);
    feed(69.0f);
    store.setFloat(3.0f, PreferenceKey::Latency);
    feed(LiveView::kNoPitch);
    EXPECT_EQ(shown(), "F6"); // index 68 is the band of note number 69
    EXPECT_EQ(view.lastNotesArray().size(), 2U);
    EXPECT_EQ(std::get<FilledRect>(canvas.primitives()[0]).rect, (Rect{0.0, 0.0, 150.0, 100.0}));
    EXPECT_EQ(view.greenOverlayAlpha(), 0.0);
    EXPECT_EQ(trace().size(), 1U); // the jump to the marker is cut
}

TEST_F(LiveViewTest, NonContinuousDropsNewestValuesOffTheTopNote)
{
    for (const float v : {LiveView::kNoPitch, LiveView::kNoPitch, 60.0f, 60.2f})
        view.addValue(v);
    redraw(view);
    EXPECT_EQ(view.values(), (std::deque<float>{-1500.0f, -1500.0f}));
    EXPECT_EQ(view.valuesForLegacyGraph(), (std::vector<float>{-1500.0f, -1500.0f}));

    LiveView v{store};
    v.addValue(60.0f);
    v.addValue(60.2f);
    redraw(v);
    EXPECT_EQ(v.values().size(), 2U); // never cut below two
    EXPECT_TRUE(v.valuesForLegacyGraph().empty());
}

// Each value is placed by its fraction within its own note; fmod keeps the
// sign, so 0.2 lands left of the band.
TEST_F(LiveViewTest, NonContinuousTraceUsesFractionOnly)
{
    for (int i = 0; i < 11; ++i)
        feed(60.0f); // until the 11th wins, the history is held at two values
    feed(62.0f);
    EXPECT_EQ(view.values(), (std::deque<float>{60.0f, 60.0f, 60.0f}));
    for (const float v : {62.25f, 0.2f, 60.0f})
        view.addValue(v);
    redraw(view);
    const auto lines = trace();
    ASSERT_EQ(lines.size(), 5U);
    expectSegment(lines[0], 150.0, -1.0, -42.0, 0.0);
    expectSegment(lines[1], -42.0, 0.0, 210.0, 1.0);
    expectSegment(lines[2], 210.0, 1.0, 150.0, 2.0);
}

TEST_F(LiveViewTest, ContinuousTraceStartsAboveViewAndCutsJumps)
{
    useContinuous(1.0f);
    view.addValue(60.0f);
    feed(60.1f);
    EXPECT_TRUE(trace().empty());
    feed(60.3f);
    ASSERT_EQ(trace().size(), 2U);
    expectSegment(trace()[0], 222.0, -1.0, 174.0, 0.0);
    expectSegment(trace()[1], 174.0, 0.0, 150.0, 1.0);

    LiveView v{store};
    v.addValue(60.0f);
    v.addValue(60.2f);
    feed(61.2f, &v);
    ASSERT_EQ(trace().size(), 1U); // 198 -> -42 is cut
    expectSegment(trace()[0], -42.0, 0.0, -90.0, 1.0);
}

// Up 0.05 per in-bar frame, down 0.1 per out-of-bar frame, never clamped.
TEST_F(LiveViewTest, WashAlphaStepsWithoutClamping)
{
    useContinuous(1.0f);
    for (int i = 0; i < 15; ++i)
        feed(69.0f);
    EXPECT_EQ(view.greenOverlayAlpha(), 0.7000000000000001);
    for (int i = 0; i < 9; ++i)
        feed(69.45f); // x = 258, outside the bar
    EXPECT_NEAR(view.greenOverlayAlpha(), -0.1, 1e-9);
    EXPECT_EQ(canvas.all<FilledRect>()[2], (FilledRect{kBounds, {0.8, 0.99, 0.44, view.greenOverlayAlpha()}}));

    LiveView v{store};
    feed(69.0f, &v);
    feed(69.45f, &v);
    EXPECT_NEAR(v.greenOverlayAlpha(), -0.05, 1e-9);

    store.setBool(false, PreferenceKey::GreenOverlay);
    feed(69.0f, &v);
    EXPECT_NEAR(v.greenOverlayAlpha(), -0.05, 1e-9);
    EXPECT_EQ(canvas.all<FilledRect>().size(), 2U); // band and bar only
}

TEST_F(LiveViewTest, HistoryIsTrimmedByOneOnceHeightIsKnown)
{
    int requests = 0;
    view.setRedrawRequest([&requests] { ++requests; });
    for (int i = 0; i < 50; ++i)
        view.addValue(60.0f + static_cast<float>(i) / 100.0f);
    EXPECT_EQ(view.values().size(), 50U);
    EXPECT_EQ(requests, 50);

    view.draw(nullptr, Rect{0.0, 0.0, 300.0, 10.0});
    view.addValue(70.0f); // cap 100 without ContinuousDisplay
    EXPECT_EQ(view.values().size(), 51U);
    store.setBool(true, PreferenceKey::ContinuousDisplay);
    view.addValue(70.0f); // cap 12, but only the oldest value goes
    EXPECT_EQ(view.values().size(), 51U);
    EXPECT_EQ(view.values().front(), 60.01f);
}

TEST_F(LiveViewTest, NonFiniteSettingOrValueIsFatal)
{
    store.setFloat(std::nanf(""), PreferenceKey::Latency);
    EXPECT_DEATH(redraw(view), "fatal");
    store.setFloat(10.0f, PreferenceKey::Latency);
    view.addValue(std::nanf(""));
    EXPECT_DEATH(redraw(view), "fatal");
}

} // namespace
} // namespace veltra
