#include "app/OfflineTuner.h"
#include "app/ViewController.h"
#include "classify/SoundDetection.h"
#include "dsp/AudioSession.h"
#include "dsp/PatchFile.h"
#include "dsp/PdBase.h"
#include "settings/MemoryPreferenceStore.h"
#include "settings/NotificationCenter.h"
#include "settings/Preferences.h"
#include "settings/Localization.h"
#include "support/ScreenRig.h"
#include "support/Signals.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

namespace veltra::test {
namespace {

using ::testing::ElementsAre;

class ScriptedDetection : public SoundDetection {
public:
    bool isSoundDetected() const override { return detected; }
    std::string currentSound() const override { return sound; }
    bool detected = false;
    std::string sound;
};

class ScriptedClockTimer : public RepeatingTimer {
public:
    void start(double interval, std::function<void()> action) override
    {
        log.push_back("start " + std::to_string(interval));
        tick = std::move(action);
    }
    void invalidate() override { log.push_back("invalidate"); }
    std::vector<std::string> log;
    std::function<void()> tick;
};

// The main screen with every collaborator in the test's hand: the clock is
// set by the test, the graph and the keyboard are real views.
struct Screen : ::testing::Test, ScreenRig {
    ScriptedDetection detection;
    ScriptedClockTimer clockTimer;
    std::vector<std::string> installedFonts;
    LiveView liveView{preferences};
    PianoView pianoView;
    int pianoRedraws = 0;
    int detectionAsked = 0;
    ViewController screen{withDoubles(dependencies())};

    ViewController::Dependencies withDoubles(ViewController::Dependencies d)
    {
        d.soundAnalysis = [this] {
            ++detectionAsked;
            return &detection;
        };
        d.clockTimer = &clockTimer;
        d.fontAvailable = [this](const std::string& family, double) {
            return std::find(installedFonts.begin(), installedFonts.end(), family) != installedFonts.end();
        };
        d.localizedTime = [] { return std::string("10:09:08 PM"); };
        return d;
    }

    void SetUp() override
    {
        screen.setLiveView(&liveView);
        screen.setPianoView(&pianoView, [this] { ++pianoRedraws; });
        CommonUtils::setDefaultPreferences(preferences);
    }

    // A reading that arrives `later` seconds after the previous one.
    void reading(float frequency, double later = 0.1, const char* source = "frequency")
    {
        now += later;
        screen.receiveFloat(frequency, source);
    }

    static float hz(float noteNumber) { return 440.0f * std::exp2((noteNumber - 49.0f) / 12.0f); }
};

TEST_F(Screen, ReadingsBelow65HzOrFromElsewhereChangeNothing)
{
    reading(0);
    reading(64.9f);
    reading(440, 0.1, "midinote");
    EXPECT_TRUE(liveView.values().empty());
    EXPECT_TRUE(screen.smoothing().noteNumbersQueue().empty());

    reading(65.0f);
    EXPECT_EQ(liveView.values().size(), 1u);
}

TEST_F(Screen, TheVoteReplacesAnOctaveGlitchWithTheLatestMajorityReading)
{
    for (const float n : {49.1f, 49.2f, 61.0f, 48.9f, 49.0f})
        reading(hz(n));
    const auto& graph = liveView.values();
    ASSERT_EQ(graph.size(), 5u);
    EXPECT_NEAR(graph[2], 49.2f, 1e-3f); // not the 61 reading
    EXPECT_NEAR(graph[3], 48.9f, 1e-3f);

    // The queues keep the last five readings, position for position.
    reading(hz(50.2f));
    EXPECT_EQ(screen.smoothing().noteNumbersQueue().size(), 5u);
    EXPECT_THAT(screen.smoothing().noteNumbersIntPartQueue(), ElementsAre(49, 61, 49, 49, 50));
}

TEST_F(Screen, LabelsFollowTheGraphsNoteAtMostEvery80ms)
{
    screen.didUpdateTopNote(CommonUtils::noteForNumber(49.0f, preferences));

    reading(hz(49.2f));
    EXPECT_EQ(screen.labels().noteName, "A");
    EXPECT_EQ(screen.labels().sharpFlat, "");
    EXPECT_EQ(screen.labels().octaveNumber, "4");
    EXPECT_EQ(screen.labels().deviation, "+20.0%");
    EXPECT_EQ(screen.labels().frequency, "445.1");
    EXPECT_EQ(pianoView.highlightKey(), -1); // posted to the main queue
    mainQueue.runAll();
    EXPECT_EQ(pianoView.highlightKey(), 48);
    EXPECT_EQ(pianoRedraws, 1);

    // 50 ms later: the graph moves, the labels do not.
    reading(hz(48.8f), 0.05);
    EXPECT_EQ(liveView.values().size(), 2u);
    EXPECT_EQ(screen.labels().deviation, "+20.0%");
    // 0.08 s after the last label pass (the 50 ms reading did not count).
    reading(hz(48.8f), 0.031);
    EXPECT_EQ(screen.labels().deviation, "-20.0%");

    // A note the graph does not show leaves the labels, and restarts the wait.
    reading(hz(52.0f), 0.1);
    EXPECT_TRUE(screen.liveViewNoteIsDifferent());
    EXPECT_EQ(screen.labels().noteName, "A");
    reading(hz(49.0f), 0.05);
    EXPECT_EQ(screen.labels().deviation, "-20.0%");
}

TEST_F(Screen, TheClassifierGateHoldsReadingsWhileNothingAcceptedIsHeard)
{
    preferences.setBool(true, PreferenceKey::UseML);
    screen.didUpdateTopNote(CommonUtils::noteForNumber(49.0f, preferences));

    reading(440);
    EXPECT_THAT(liveView.values(), ElementsAre(LiveView::kNoPitch));
    EXPECT_TRUE(screen.smoothing().noteNumbersQueue().empty());
    EXPECT_EQ(screen.labels().noteName, "-");
    EXPECT_TRUE(screen.status().visible);
    EXPECT_EQ(screen.status().text, "Listening...");
    EXPECT_EQ(screen.status().colour, (Color{0.93, 0.91, 0.71, 1.0}));

    detection.detected = true;
    detection.sound = "guitar";
    reading(440);
    EXPECT_EQ(screen.status().text, "Detected guitar sound");
    // In another language the sentence and the sound's name are translated
    // each on their own.
    installLocalization({.translate = [](const char* context,
                                         const char* text) { return "[" + std::string(context) + ":" + text + "]"; },
                         .number = {}});
    reading(440);
    installLocalization({});
    EXPECT_EQ(screen.status().text, "[Tuner:Detected [DetectedSound:guitar] sound]");
    EXPECT_EQ(screen.status().colour, (Color{0.69, 0.9, 0.58, 1.0}));
    EXPECT_EQ(screen.labels().noteName, "A");

    preferences.setBool(false, PreferenceKey::UseML);
    reading(440);
    EXPECT_FALSE(screen.status().visible);
}

// The gate's engine is made when the tuner starts to listen, or when the
// screen comes back with the gate just switched on, so it hears the first
// note from its start; with the gate off it is never made.
TEST_F(Screen, TheGateListensFromTheStreamsStartNotFromTheFirstReading)
{
    screen.setAudioState(AudioState::Running);
    screen.viewDidAppear();
    EXPECT_EQ(detectionAsked, 0);

    preferences.setBool(true, PreferenceKey::UseML);
    screen.viewDidAppear();
    EXPECT_EQ(detectionAsked, 1);
    screen.setAudioState(AudioState::NoInput);
    screen.viewDidAppear(); // no stream to listen on
    EXPECT_EQ(detectionAsked, 1);
    screen.setAudioState(AudioState::Running);
    EXPECT_EQ(detectionAsked, 2);
}

TEST_F(Screen, DisplayPreferencesApplyOnUpdateUI)
{
    screen.viewDidLoad();
    EXPECT_THAT(screen.sharpFlatButtonImages(), ElementsAre("FG_D_SHARP", "FG_G_SHARP", "FG_A_SHARP"));
    EXPECT_TRUE(screen.toneGeneratorVisible());
    EXPECT_FALSE(screen.pianoVisible());

    preferences.setBool(false, PreferenceKey::SharpsOnly);
    preferences.setBool(false, PreferenceKey::ToneGenerator);
    preferences.setBool(true, PreferenceKey::PianoView);
    notifications.post(Notification::UpdateUI);
    EXPECT_THAT(screen.sharpFlatButtonImages(), ElementsAre("FG_E_FLAT", "FG_A_FLAT", "FG_B_FLAT"));
    EXPECT_FALSE(screen.toneGeneratorVisible());
    EXPECT_FALSE(screen.segmentOctaveVisible());
    EXPECT_TRUE(screen.pianoVisible());
    EXPECT_EQ(pianoRedraws, 1);
}

TEST_F(Screen, LayoutSetsThePianoHeightAndTheClock)
{
    struct Case {
        DeviceIdiom idiom;
        SizeClass sizeClass;
        double height;
    };
    for (const Case c : {Case{DeviceIdiom::Pad, SizeClass::Regular, 54}, Case{DeviceIdiom::Pad, SizeClass::Unspecified, 54},
                         Case{DeviceIdiom::Pad, SizeClass::Compact, 33}, Case{DeviceIdiom::Phone, SizeClass::Regular, 33}}) {
        screen.viewDidLayoutSubviews(c.idiom, c.sizeClass);
        EXPECT_EQ(screen.pianoHeight(), c.height);
    }
    EXPECT_THAT(clockTimer.log, ElementsAre("invalidate", "invalidate", "invalidate", "invalidate"));
    EXPECT_EQ(screen.title(), "Veltra");

    preferences.setBool(true, PreferenceKey::ClockEnabled);
    clockTimer.log.clear();
    screen.viewDidLayoutSubviews(DeviceIdiom::Pad, SizeClass::Regular);
    EXPECT_THAT(clockTimer.log, ElementsAre("invalidate", "start 1.000000"));
    EXPECT_FALSE(screen.titleStyle().has_value()); // no "BoldHw": nothing changes
    clockTimer.tick();
    EXPECT_EQ(screen.title(), "10:09:08 PM");

    installedFonts = {"BoldHw"};
    screen.viewDidLayoutSubviews(DeviceIdiom::Pad, SizeClass::Regular);
    ASSERT_TRUE(screen.titleStyle().has_value());
    EXPECT_EQ(screen.titleStyle()->family, ""); // the bold system font
    EXPECT_EQ(screen.titleStyle()->pointSize, 34);

    preferences.setBool(false, PreferenceKey::ClockEnabled);
    screen.viewDidLayoutSubviews(DeviceIdiom::Phone, SizeClass::Compact);
    EXPECT_EQ(screen.title(), "Veltra");
}

// Coming back into view (from the settings) lays the screen out again, so a
// clock switched on or off meanwhile shows at once.
TEST_F(Screen, EachAppearanceAppliesTheClockAgain)
{
    screen.viewDidLayoutSubviews(DeviceIdiom::Phone, SizeClass::Compact);
    preferences.setBool(true, PreferenceKey::ClockEnabled);
    clockTimer.log.clear();
    screen.viewDidAppear();
    EXPECT_THAT(clockTimer.log, ElementsAre("invalidate", "start 1.000000"));
    clockTimer.tick();
    EXPECT_EQ(screen.title(), "10:09:08 PM");

    preferences.setBool(false, PreferenceKey::ClockEnabled);
    screen.viewDidAppear();
    EXPECT_EQ(screen.title(), "Veltra");
}

// While there is no input the screen says so in one line and shows no
// sound: nothing heard before the loss stays, not even a reading or a lit
// key still on its way. Back, the line goes and readings count again.
TEST_F(Screen, NoInputClearsTheReadoutUntilTheInputIsBack)
{
    const auto hearA4 = [this] {
        for (int i = 0; i < 5; ++i)
            reading(440);
        screen.didUpdateTopNote(CommonUtils::noteForNumber(49.0f, preferences));
        reading(440);
    };
    screen.setAudioState(AudioState::Running);
    hearA4();
    ASSERT_EQ(screen.labels().noteName, "A");
    ASSERT_FALSE(liveView.values().empty());
    EXPECT_EQ(screen.audioProblem(), "");

    screen.setAudioState(AudioState::NoInput);
    reading(440);  // queued before the loss
    mainQueue.runAll();
    EXPECT_EQ(screen.audioProblem(), "Listening paused: no sound input");
    EXPECT_EQ(screen.labels(), ViewController::Labels{});
    EXPECT_EQ(ViewController::spokenReadout(screen.labels()), "");
    EXPECT_TRUE(liveView.values().empty());
    EXPECT_TRUE(screen.smoothing().noteNumbersQueue().empty());
    EXPECT_FALSE(screen.currentLiveViewNote().has_value());
    EXPECT_EQ(pianoView.highlightKey(), -1);

    screen.setAudioState(AudioState::Running);
    EXPECT_EQ(screen.audioProblem(), "");
    hearA4();
    EXPECT_EQ(screen.labels().noteName, "A");
    mainQueue.runAll();
    EXPECT_EQ(pianoView.highlightKey(), 48);
}

TEST_F(Screen, ToneButtonReleasesAreCounted)
{
    screen.setSelectedOctaveSegment(1);
    screen.btnToneDown(10);
    screen.btnToneCancel();
    EXPECT_EQ(screen.toneGenerator().toneCancelIncrement(), 1);
}

// The whole road: generated audio through the real patch, the vote, the
// graph's redraws and the labels.
TEST(ReadingRoad, SteadyNotesEndOnTheRightLabels)
{
    struct Case {
        double frequency;
        std::int64_t a4;
        const char* note;
        const char* octave;
        const char* deviation;
        const char* frequencyText;
        std::int64_t key;
    };
    // 196 Hz against A4 = 442 is note number 34.9216: G3, and the thousandths
    // 921 show as 7.9 below it.
    const Case cases[] = {
        {440.0, 440, "A", "4", "+0.0%", "440.0", 48},
        {196.0, 442, "G", "3", "-7.9%", "196.0", 34},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.frequency);
        MemoryPreferenceStore preferences;
        CommonUtils::setDefaultPreferences(preferences);
        preferences.setInteger(c.a4, PreferenceKey::A4);
        OfflineTuner tuner(preferences, 48000);
        tuner.run(sine(c.frequency, 0.3, 2.0, 48000));
        const auto& labels = tuner.screen().labels();
        EXPECT_EQ(labels.noteName, c.note);
        EXPECT_EQ(labels.sharpFlat, "");
        EXPECT_EQ(labels.octaveNumber, c.octave);
        EXPECT_EQ(labels.deviation, c.deviation);
        EXPECT_EQ(labels.frequency, c.frequencyText);
        EXPECT_EQ(tuner.pianoView().highlightKey(), c.key);
    }
}

TEST(Readout, ReadsAsOneSentence)
{
    struct Case {
        ViewController::Labels labels;
        const char* spoken;
    };
    const Case cases[] = {
        {{"A", "", "4", "+2.0%", "440.5"}, "A 4, 2.0 cents sharp, 440.5 hertz"},
        {{"C", "#", "3", "-13.4%", "137.6"}, "C sharp 3, 13.4 cents flat, 137.6 hertz"},
        {{"B", "b", "2", "-0.0%", "116.5"}, "B flat 2, in tune, 116.5 hertz"},
        {{}, ""}, // nothing shown yet
    };
    for (const Case& c : cases)
        EXPECT_EQ(ViewController::spokenReadout(c.labels), c.spoken);
}

// Non-finite samples reach the road as silence: the readout, the vote and
// the graph (whose arithmetic stops on a non-finite value) carry on.
TEST(ReadingRoad, NonFiniteSamplesLeaveTheReadoutOnTheTone)
{
    std::vector<float> input = sine(440.0, 0.3, 2.0, 48000);
    for (std::size_t i = 0; i < input.size(); i += 97)
        input[i] = std::numeric_limits<float>::quiet_NaN();
    std::fill(input.begin() + 24000, input.begin() + 24512, std::numeric_limits<float>::infinity());
    MemoryPreferenceStore preferences;
    CommonUtils::setDefaultPreferences(preferences);
    OfflineTuner tuner(preferences, 48000);
    tuner.run(input);
    const auto& labels = tuner.screen().labels();
    EXPECT_EQ(labels.noteName, "A");
    EXPECT_EQ(labels.octaveNumber, "4");
    EXPECT_NEAR(std::stod(labels.frequency), 440.0, 1.0); // the dropouts bend the tone a little
}

} // namespace
} // namespace veltra::test
