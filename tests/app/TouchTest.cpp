// The main controls worked by a finger: touch points pressed, dragged and
// lifted on a touch screen, as a phone delivers them, with no mouse or key.
#include "support/Signals.h"
#include "support/UiRig.h"

#include <QPointingDevice>
#include <QtQml/QQmlExtensionPlugin>

#include <cmath>

Q_IMPORT_QML_PLUGIN(VeltraUiPlugin)

namespace veltra::test {
namespace {

class Touch : public ::testing::Test {
protected:
    static void SetUpTestSuite() { UiRig::ensureApplication(); }

    static QPointingDevice* screen()
    {
        static QPointingDevice* device = QTest::createTouchDevice(QInputDevice::DeviceType::TouchScreen);
        return device;
    }
    static QPoint centreOf(QQuickItem& item) { return item.mapToScene(item.boundingRect().center()).toPoint(); }

    // A finger down on a point; lift() ends the touch where it last was.
    void press(UiRig& rig, QPoint at)
    {
        finger_ = at;
        QTest::touchEvent(rig.window, screen()).press(0, at, rig.window);
        rig.settle(50);
    }
    // The finger moves in small steps, a frame apart, as a real one reports.
    void moveTo(UiRig& rig, QPoint to, int steps = 12)
    {
        const QPoint from = finger_;
        for (int step = 1; step <= steps; ++step) {
            finger_ = from + (to - from) * step / steps;
            QTest::touchEvent(rig.window, screen()).move(0, finger_, rig.window);
            QTest::qWait(16);
        }
    }
    void lift(UiRig& rig)
    {
        QTest::touchEvent(rig.window, screen()).release(0, finger_, rig.window);
        rig.settle(300);
    }
    void tap(UiRig& rig, QQuickItem& item)
    {
        rig.scrollIntoView(item);
        press(rig, centreOf(item));
        lift(rig);
    }
    void tap(UiRig& rig, const char* objectName)
    {
        if (QQuickItem* item = rig.item(objectName))
            tap(rig, *item);
    }

    // The patch's reference tone, with silence at the microphone: the
    // frequency of its left channel over a tenth of a second (0 when
    // silent), once a tone just started or stopped has finished its ramp
    // (50 ms up, 100 ms down).
    static double toneFrequency(UiRig& rig)
    {
        constexpr double kRamp = 0.12, kMeasured = 0.1;
        std::vector<float> stereo;
        rig.tuner->driver().run(silence(kRamp, 48000));
        rig.tuner->driver().run(silence(kMeasured, 48000), &stereo);
        int crossings = 0;
        double loudest = 0;
        for (std::size_t i = 2; i < stereo.size(); i += 2) {
            crossings += (stereo[i - 2] < 0) != (stereo[i] < 0);
            loudest = std::max(loudest, std::abs(double(stereo[i])));
        }
        return loudest < 1e-3 ? 0.0 : crossings / (2 * kMeasured);
    }

private:
    QPoint finger_;
};

QQuickItem* child(QQuickItem* root, const char* className)
{
    if (root->inherits(className))
        return root;
    for (QQuickItem* item : root->childItems())
        if (QQuickItem* found = child(item, className))
            return found;
    return nullptr;
}

// A held note button sounds its note in the octave that the segments chose,
// and lifting the finger stops it.
TEST_F(Touch, NoteButtonsSoundWhileHeldInTheOctaveTheSegmentsChose)
{
    UiRig rig({360, 720});
    struct Case {
        const char* button;
        int segment;
        double hertz;
    };
    const Case cases[] = {
        {"tone10", 0, 440.0},  // A4
        {"tone1", 1, 523.25},  // C5
        {"tone8", 3, 3135.96}, // G7
    };
    QQuickItem* octave = rig.item("octave");
    ASSERT_TRUE(octave);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.button);
        QList<QQuickItem*> segments;
        for (QQuickItem* item : octave->childItems())
            if (item->inherits("QQuickAbstractButton"))
                segments.push_back(item);
        ASSERT_EQ(segments.size(), 4);
        tap(rig, *segments[c.segment]);
        EXPECT_EQ(octave->property("currentIndex").toInt(), c.segment);

        press(rig, centreOf(*rig.item(c.button)));
        EXPECT_NEAR(toneFrequency(rig), c.hertz, c.hertz * 0.01);
        lift(rig);
        EXPECT_EQ(toneFrequency(rig), 0.0) << "the tone went on after the finger was lifted";
    }
}

// A finger that slides off a held note button, as a thumb does, still stops
// the tone when it is lifted elsewhere.
TEST_F(Touch, NoteStopsWhenTheFingerSlidesOffAndLifts)
{
    UiRig rig({360, 720});
    QQuickItem* button = rig.item("tone5");
    ASSERT_TRUE(button);
    press(rig, centreOf(*button));
    EXPECT_GT(toneFrequency(rig), 0.0);
    moveTo(rig, centreOf(*button) + QPoint(0, -200));
    lift(rig);
    EXPECT_EQ(toneFrequency(rig), 0.0);
}

TEST_F(Touch, SettingsSwitchesSegmentsAndSlidersFollowTheFinger)
{
    UiRig rig({360, 720});
    rig.screens->navigation()->push(QStringLiteral("Settings"));
    rig.settle();

    // A tap on the row or on its switch toggles the setting once.
    for (const char* row : {"toneGenerator", "greenOverlay", "pianoView", "clock"}) {
        SCOPED_TRACE(row);
        QQuickItem* item = rig.item(row);
        ASSERT_TRUE(item);
        const bool before = item->property("on").toBool();
        tap(rig, row);
        EXPECT_EQ(item->property("on").toBool(), !before);
        tap(rig, *child(item, "QQuickSwitch"));
        EXPECT_EQ(item->property("on").toBool(), before);
    }

    QQuickItem* barWidth = rig.item("centerBarWidth");
    ASSERT_TRUE(barWidth);
    for (int segment : {2, 0, 1}) {
        QQuickItem* target = nullptr;
        int index = 0;
        for (QQuickItem* item : barWidth->childItems())
            if (item->inherits("QQuickAbstractButton") && index++ == segment)
                target = item;
        ASSERT_TRUE(target);
        tap(rig, *target);
        EXPECT_EQ(rig.preferences.integerForKey(PreferenceKey::CenterBarWidth), segment);
    }

    // A slider's handle dragged to either end stores that end; the value
    // moves with the finger, not only where it lifts.
    struct Drag {
        const char* row;
        std::string_view key;
        double from, to;
    };
    for (const Drag& d : {Drag{"latency", PreferenceKey::Latency, 1, 30},
                          Drag{"lineThickness", PreferenceKey::LineThickness, 3, 12}}) {
        SCOPED_TRACE(d.row);
        QQuickItem* row = rig.item(d.row);
        ASSERT_TRUE(row);
        rig.scrollIntoView(*row);
        QQuickItem* slider = child(row, "QQuickSlider");
        ASSERT_TRUE(slider);
        auto* handle = slider->property("handle").value<QQuickItem*>();
        ASSERT_TRUE(handle);
        const QPoint grip = centreOf(*handle);
        const QPointF leftEnd = slider->mapToScene(QPointF(0, slider->height() / 2));
        const QPointF rightEnd = slider->mapToScene(QPointF(slider->width(), slider->height() / 2));

        press(rig, grip);
        moveTo(rig, rightEnd.toPoint() + QPoint(30, 0));
        EXPECT_FLOAT_EQ(rig.preferences.floatForKey(d.key), float(d.to)) << "while the finger is down";
        lift(rig);
        EXPECT_FLOAT_EQ(rig.preferences.floatForKey(d.key), float(d.to));

        press(rig, centreOf(*handle));
        moveTo(rig, leftEnd.toPoint() - QPoint(30, 0));
        lift(rig);
        EXPECT_FLOAT_EQ(rig.preferences.floatForKey(d.key), float(d.from));
    }
}

// The reference-A wheel turned by a drag stops on a row and stores it; a
// drag up goes to higher frequencies, as on every wheel.
TEST_F(Touch, WheelTurnedByAFingerStoresWhereItRests)
{
    UiRig rig({360, 720});
    rig.screens->navigation()->push(QStringLiteral("Settings"));
    rig.settle();
    tap(rig, "referenceFrequency");
    rig.settle(); // the page slides in; a stack busy sliding takes no touches
    // The rows a finger turns, inside the item the keyboard and screen
    // readers know as the wheel.
    QQuickItem* wheel = rig.item("wheelRows");
    ASSERT_TRUE(wheel);
    ASSERT_EQ(rig.preferences.integerForKey(PreferenceKey::A4), 440);
    const double rowHeight = wheel->height() / wheel->property("visibleItemCount").toInt();

    // Three rows up, slowly enough not to fling.
    const QPoint centre = centreOf(*wheel);
    press(rig, centre);
    moveTo(rig, centre - QPoint(0, int(3 * rowHeight)), 40);
    rig.settle(200);
    lift(rig);
    for (int wait = 0; wait < 40 && wheel->property("moving").toBool(); ++wait)
        rig.settle(100);
    EXPECT_EQ(rig.preferences.integerForKey(PreferenceKey::A4), 443);
    EXPECT_EQ(wheel->property("currentIndex").toInt(), 43);

    // And down again, past the start.
    press(rig, centre);
    moveTo(rig, centre + QPoint(0, int(5 * rowHeight)), 40);
    rig.settle(200);
    lift(rig);
    for (int wait = 0; wait < 40 && wheel->property("moving").toBool(); ++wait)
        rig.settle(100);
    EXPECT_EQ(rig.preferences.integerForKey(PreferenceKey::A4), 438);

    tap(rig, "reset");
    EXPECT_EQ(rig.preferences.integerForKey(PreferenceKey::A4), 440);
}

} // namespace
} // namespace veltra::test
