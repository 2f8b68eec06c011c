#include "app/AppDelegate.h"
#include "app/NavigationController.h"
#include "app/SceneDelegate.h"
#include "dsp/AudioSession.h"
#include "dsp/PdBase.h"
#include "support/FakeAudioBackend.h"
#include "support/Lines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <vector>

namespace veltra::test {
namespace {

using ::testing::ElementsAre;

class RecordingIdleTimer : public IdleTimer {
public:
    void setIdleTimerDisabled(bool disabled) override { calls.push_back(disabled); }
    std::vector<bool> calls;
};

struct Lifecycle : ::testing::Test {
    PdBase base;
    FakeAudioBackend backend;
    AudioSession session{backend};
    std::ostringstream console;
    int controllersMade = 0;
    bool factoryFails = false;
    double now = 100; // the watchdog's clock, moved by hand
    std::string chosenInput; // the preference, as the settings would set it
    AppDelegate app{[this]() -> std::unique_ptr<PdAudioController> {
                        ++controllersMade;
                        if (factoryFails)
                            return nullptr;
                        return std::make_unique<PdAudioController>(base, backend, session);
                    },
                    console, [this] { return now; }, [this] { return chosenInput; }};
    RecordingIdleTimer idle;
    SceneDelegate scene{&app, idle, console};

    void SetUp() override { ASSERT_FALSE(session.setPreferredIOBufferDuration(0.002).has_value()); }

    // The device delivers one buffer, as its audio thread would: with sound,
    // or digital silence.
    void deliver(float level = 0.1f)
    {
        ASSERT_NE(backend.processor, nullptr);
        std::vector<float> in(128, level), out(256);
        backend.processor->process(in.data(), out.data(), 128);
    }
};

TEST_F(Lifecycle, ConfigurationOutcomesAndTheirConsoleLines)
{
    const AudioStreamConfig asked{48000, 1, 2, 96};
    struct Case {
        const char* what;
        std::vector<FakeAudioBackend::Answer> answers;
        std::vector<std::string> expectedLog;
        std::vector<std::string> expectedConsole;
    };
    const Case cases[] = {
        {"runs as asked", {asked}, {"open 48000", "start"}, {"success"}},
        {"adapted to another rate", {FakeAudioBackend::adapted(asked, 44100)}, {"open 48000", "start"},
         {"some properties have changed to run correctly (not fatal)"}},
        {"cannot run: one retry at 44100 whatever it gives",
         {std::string("no device"), std::string("still no device")},
         {"open 48000", "open 44100", "start"},
         {"unrecoverable error: failed to initialize audio components"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        FakeAudioBackend fresh;
        fresh.answers.assign(c.answers.begin(), c.answers.end());
        std::ostringstream out;
        AppDelegate delegate([&] { return std::make_unique<PdAudioController>(base, fresh, session); }, out);
        delegate.configureAudioController();
        EXPECT_EQ(fresh.log, c.expectedLog);
        EXPECT_EQ(lines(out), c.expectedConsole);
    }
}

TEST_F(Lifecycle, LaunchStartsNoAudioAndEachActivationRestartsIt)
{
    EXPECT_TRUE(app.applicationDidFinishLaunching());
    EXPECT_EQ(controllersMade, 0);
    EXPECT_TRUE(backend.log.empty());

    scene.sceneDidBecomeActive();
    scene.sceneDidBecomeActive();
    EXPECT_EQ(controllersMade, 1);
    EXPECT_THAT(backend.log, ElementsAre("open 48000", "start", "stop", "open 48000", "start"));
    EXPECT_TRUE(app.audioController()->isActive());
    EXPECT_THAT(idle.calls, ElementsAre(true, true));

    scene.sceneWillResignActive();
    EXPECT_FALSE(app.audioController()->isActive());
    EXPECT_EQ(backend.log.back(), "stop");
    EXPECT_THAT(idle.calls, ElementsAre(true, true, false));
    EXPECT_THAT(lines(console), ElementsAre("BECAME ACTIVE", "success", "BECAME ACTIVE", "success", "RESIGNED ACTIVE"));
}

TEST_F(Lifecycle, ResignBeforeAnyControllerOnlyPrintsAndLetsTheScreenSleep)
{
    scene.sceneWillResignActive();
    EXPECT_EQ(controllersMade, 0);
    EXPECT_TRUE(backend.log.empty());
    EXPECT_THAT(idle.calls, ElementsAre(false));
    EXPECT_THAT(lines(console), ElementsAre("RESIGNED ACTIVE"));
}

TEST_F(Lifecycle, AMissingControllerIsReportedAndTriedAgainOnTheNextActivation)
{
    factoryFails = true;
    scene.sceneDidBecomeActive();
    factoryFails = false;
    scene.sceneDidBecomeActive();
    EXPECT_EQ(controllersMade, 2);
    EXPECT_THAT(lines(console),
                ElementsAre("BECAME ACTIVE", "could not get PdAudioController", "BECAME ACTIVE", "success"));
    EXPECT_TRUE(app.audioController()->isActive());
}

// A stream that fails is noticed at once and tried again, quietly, each
// time the host asks (twice a second) until one opens and delivers; the
// state says which of these the screen must show.
TEST_F(Lifecycle, ALostStreamIsOpenedAgainByTheRetries)
{
    EXPECT_EQ(app.audioState(), AudioState::Stopped);
    EXPECT_EQ(app.retryAudio(), AudioState::Stopped); // nothing wanted: nothing opened
    scene.sceneDidBecomeActive();
    EXPECT_EQ(app.checkAudio(), AudioState::Running);
    backend.log.clear();
    console.str({});

    backend.lost = true;
    EXPECT_EQ(app.checkAudio(), AudioState::NoInput);
    EXPECT_EQ(app.checkAudio(), AudioState::NoInput);
    EXPECT_THAT(backend.log, ElementsAre("stop"));
    backend.answers = {std::string("no server"), std::string("no server")};
    EXPECT_EQ(app.retryAudio(), AudioState::NoInput);
    EXPECT_THAT(backend.log, ElementsAre("stop", "open 48000", "open 44100", "start"));
    // Opened, but running again only once the first buffer comes.
    EXPECT_EQ(app.retryAudio(), AudioState::NoInput);
    EXPECT_TRUE(app.audioController()->isActive());
    EXPECT_EQ(app.retryAudio(), AudioState::NoInput);
    EXPECT_EQ(backend.log.size(), 6u); // a stream on its way is left alone
    deliver();
    EXPECT_EQ(app.checkAudio(), AudioState::Running);
    EXPECT_EQ(app.retryAudio(), AudioState::Running);
    EXPECT_EQ(backend.log.size(), 6u);
    EXPECT_THAT(lines(console), ElementsAre("audio device lost", "audio device back"));

    // Hidden, nothing is retried; shown again, it starts afresh.
    backend.lost = true;
    scene.sceneWillResignActive();
    EXPECT_EQ(app.retryAudio(), AudioState::Stopped);
    EXPECT_EQ(backend.log.back(), "stop");
    scene.sceneDidBecomeActive();
    EXPECT_EQ(app.audioState(), AudioState::Running);
}

// No buffer for a second counts as lost whatever the cause, reported or
// not: the stream is stopped and reopened through the same retries.
TEST_F(Lifecycle, AStreamThatDeliversNothingForASecondIsLost)
{
    scene.sceneDidBecomeActive();
    console.str({});
    enum Buffer { None, Sound, Zeros };
    struct Step {
        const char* what;
        double after;  // seconds since the last step
        Buffer buffer; // what the device delivers first
        bool retry;    // the host's retry timer fires, else only the frame's check
        AudioState expected;
    };
    const Step steps[] = {
        {"buffers coming", 0.6, Sound, false, AudioState::Running},
        {"a main thread late by longer finds the buffers that came", 1.5, Sound, false, AudioState::Running},
        {"quiet for less than a second", 0.9, None, false, AudioState::Running},
        {"quiet for a second: lost", 0.2, None, false, AudioState::NoInput},
        {"reopened, nothing heard yet", 0.5, None, true, AudioState::NoInput},
        {"the new stream stays silent: closed quietly", 1.0, None, false, AudioState::NoInput},
        {"reopened again", 0.5, None, true, AudioState::NoInput},
        {"its first buffer: running", 0.1, Sound, false, AudioState::Running},
        {"digital silence is no sound", 0.6, Zeros, false, AudioState::Running},
        {"nor for a second", 0.5, Zeros, false, AudioState::NoInput},
        {"reopened onto silence", 0.5, Zeros, true, AudioState::NoInput},
        {"sound again", 0.1, Sound, false, AudioState::Running},
    };
    for (const Step& step : steps) {
        SCOPED_TRACE(step.what);
        now += step.after;
        if (step.buffer != None)
            deliver(step.buffer == Sound ? 0.1f : 0.0f);
        EXPECT_EQ(step.retry ? app.retryAudio() : app.checkAudio(), step.expected);
    }
    EXPECT_EQ(std::count(backend.log.begin(), backend.log.end(), "open 48000"), 4);
    EXPECT_THAT(lines(console),
                ElementsAre("audio device lost", "audio device back", "audio device lost", "audio device back"));
}

// The chosen input is read at every opening; a new choice takes a new
// stream at the next frame's check, and its absence and return are one
// line each, however many frames see them.
TEST_F(Lifecycle, TheChosenInputIsOpenedAndItsAbsenceSaidOnce)
{
    scene.sceneDidBecomeActive();
    EXPECT_EQ(backend.chosenInput, "");
    deliver();
    EXPECT_EQ(app.checkAudio(), AudioState::Running);
    backend.log.clear();
    console.str({});

    chosenInput = "usb.monitor";
    EXPECT_EQ(app.checkAudio(), AudioState::Running);
    EXPECT_EQ(backend.chosenInput, "usb.monitor");
    EXPECT_THAT(backend.log, ElementsAre("stop", "open 48000", "start"));
    EXPECT_EQ(app.checkAudio(), AudioState::Running);
    EXPECT_EQ(backend.log.size(), 3u); // once per change, not per frame

    backend.fallback = true; // unplugged: the server moved the stream to the default
    deliver();
    EXPECT_EQ(app.checkAudio(), AudioState::Running);
    EXPECT_EQ(app.checkAudio(), AudioState::Running);
    backend.fallback = false; // back, and the stream with it
    EXPECT_EQ(app.checkAudio(), AudioState::Running);

    // Lost while away: reopened on the default, still said once.
    backend.fallback = true;
    backend.lost = true;
    EXPECT_EQ(app.checkAudio(), AudioState::NoInput);
    backend.lost = false;
    EXPECT_EQ(app.retryAudio(), AudioState::NoInput);
    EXPECT_EQ(backend.chosenInput, "usb.monitor");
    deliver();
    EXPECT_EQ(app.checkAudio(), AudioState::Running);

    chosenInput = ""; // the system default again: nothing is away
    backend.fallback = false;
    EXPECT_EQ(app.checkAudio(), AudioState::Running);
    EXPECT_EQ(backend.chosenInput, "");
    EXPECT_THAT(lines(console), ElementsAre("input usb.monitor is not there: listening to the system default",
                                            "input usb.monitor is back", "audio device lost", "audio device back",
                                            "input usb.monitor is not there: listening to the system default"));
}

// Started with no sound server (none answers, no device opens), the tuner
// waits and opens the stream with the retries once one does.
TEST_F(Lifecycle, StartedWithoutInputItListensOnceTheInputComes)
{
    backend.answers = {std::string("no server"), std::string("no server")};
    scene.sceneDidBecomeActive();
    EXPECT_EQ(app.checkAudio(), AudioState::NoInput);
    now += AppDelegate::kRetryInterval;
    backend.answers = {std::string("no server"), std::string("no server")};
    EXPECT_EQ(app.retryAudio(), AudioState::NoInput);
    EXPECT_FALSE(app.audioController()->isActive());
    now += AppDelegate::kRetryInterval;
    EXPECT_EQ(app.retryAudio(), AudioState::NoInput);
    deliver();
    EXPECT_EQ(app.checkAudio(), AudioState::Running);
    EXPECT_THAT(lines(console), ElementsAre("BECAME ACTIVE",
                                            "unrecoverable error: failed to initialize audio components",
                                            "audio device back"));
}

TEST(LifecycleDeath, ASceneWithoutApplicationDelegateIsAProgrammingError)
{
    RecordingIdleTimer idle;
    std::ostringstream console;
    SceneDelegate scene(nullptr, idle, console);
    EXPECT_DEATH(scene.sceneDidBecomeActive(), "no application delegate");
}

TEST(Navigation, TheStatusBarIsAlwaysShownAndTheRootStays)
{
    NavigationController navigation("Tuner");
    EXPECT_FALSE(navigation.prefersStatusBarHidden());
    std::vector<std::vector<std::string>> seen;
    navigation.setStackChanged([&](const auto& stack, bool) { seen.push_back(stack); });
    navigation.pushScreen("Settings");
    navigation.popScreen();
    navigation.popScreen();
    EXPECT_THAT(seen, ElementsAre(ElementsAre("Tuner", "Settings"), ElementsAre("Tuner")));
}

TEST(Navigation, ScreenBelowIsOnlyAskedOfAScreenAboveAnother)
{
    NavigationController navigation("Tuner");
    navigation.pushScreen("Settings");
    navigation.pushScreen("SelectSounds");
    EXPECT_EQ(navigation.screenBelow("SelectSounds"), "Settings");
    EXPECT_DEATH(navigation.screenBelow("Tuner"), "not above another");
    EXPECT_DEATH(navigation.screenBelow("Picker"), "not above another");
}

} // namespace
} // namespace veltra::test
