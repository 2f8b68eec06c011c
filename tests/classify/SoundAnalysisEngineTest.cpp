#include "ClassifyDoubles.h"
#include "classify/SoundAnalysisEngine.h"
#include "settings/MemoryPreferenceStore.h"
#include "settings/Preferences.h"

#include <gtest/gtest.h>

#include <numeric>
#include <sstream>
#include <thread>

namespace veltra {
namespace {

using test::ClassifierScript;
using test::FakeAudioInput;
using test::Microphone;
using test::result;
using test::ScriptedClassifier;

class SoundAnalysisEngineTest : public ::testing::Test {
protected:
    SoundAnalysisEngineTest() { CommonUtils::setDefaultPreferences(store); }

    std::unique_ptr<SoundAnalysisEngine> makeEngine()
    {
        return std::make_unique<SoundAnalysisEngine>(store, notifications, std::make_unique<ScriptedClassifier>(classifier),
                                                     std::make_unique<FakeAudioInput>(input), console,
                                                     [this] { return now; });
    }

    MemoryPreferenceStore store;
    NotificationCenter notifications;
    std::ostringstream console;
    ClassifierScript classifier;
    Microphone input;
    double now = 50; // the input watchdog's clock, moved by hand
};

TEST_F(SoundAnalysisEngineTest, MicrophoneFailuresAreReportedAndConstructionGoesOn)
{
    struct Failure {
        std::optional<std::string> open, start;
    };
    for (const Failure& f : {Failure{"no input device", std::nullopt}, Failure{std::nullopt, "device busy"}}) {
        SCOPED_TRACE(f.open.value_or(f.start.value_or("")));
        console.str("");
        input.openError = f.open;
        input.startError = f.start;
        auto engine = makeEngine();
        EXPECT_EQ(console.str(), "Unable to start AVAudioEngine: " + f.open.value_or(f.start.value_or("")) + "\n");
        engine->processResult(result({{"guitar", 0.9}}));
        EXPECT_TRUE(engine->isSoundDetected()) << "the gate works without a microphone";
    }
}

// The gate's input has the tuner's watchdog: one that never opened, or that
// delivered no sound for a second, is opened again, quietly, at a rate
// that may differ, which the classifier then learns.
TEST_F(SoundAnalysisEngineTest, ALostOrUnopenedInputIsOpenedAgain)
{
    input.openError = "no input device";
    auto engine = makeEngine();
    console.str("");
    const std::vector<float> sound(512, 0.25f), zeros(512, 0.0f);
    struct Step {
        const char* what;
        double after;
        std::optional<std::string> openError;
        double rate;
        const std::vector<float>* delivered; // before the check; null: nothing
        int stopsAfter;
        bool listening;
    };
    const Step steps[] = {
        {"not yet a second", 0.9, std::nullopt, 48000, nullptr, 0, false},
        {"a second: opened again, at the device's rate", 0.2, std::nullopt, 44100, nullptr, 1, true},
        {"sound keeps it", 0.8, std::nullopt, 44100, &sound, 1, true},
        {"and again", 0.8, std::nullopt, 44100, &sound, 1, true},
        {"digital silence is none", 0.6, std::nullopt, 44100, &zeros, 1, true},
        {"a second of it: reopened", 0.5, std::nullopt, 44100, &zeros, 2, true},
        {"no input to open: tried later", 1.1, "gone", 44100, nullptr, 3, false},
        {"back", 1.1, std::nullopt, 44100, nullptr, 4, true},
    };
    for (const Step& step : steps) {
        SCOPED_TRACE(step.what);
        now += step.after;
        input.openError = step.openError;
        input.rate = step.rate;
        if (step.delivered && input.callback)
            input.deliver(*step.delivered);
        engine->checkInput();
        EXPECT_EQ(input.stops, step.stopsAfter);
        EXPECT_EQ(static_cast<bool>(input.callback), step.listening);
    }
    EXPECT_EQ(classifier.resetRates, (std::vector<double>{48000, 44100}));
    EXPECT_EQ(console.str(), "") << "reopening is quiet";
    engine.reset();
    EXPECT_EQ(classifier.buffers.size(), 1u) << "what came after the rate changed reached the classifier";
}

TEST_F(SoundAnalysisEngineTest, StartsNotDetectedWithTheDefaultGuitarCategory)
{
    auto engine = makeEngine();
    EXPECT_FALSE(engine->isSoundDetected());
    EXPECT_EQ(engine->currentSound(), "");
    EXPECT_EQ(console.str(), "");
    EXPECT_EQ(classifier.resetRates, std::vector<double>{48000});
    engine->processResult(result({{"piano", 0.9}}));
    EXPECT_FALSE(engine->isSoundDetected());
    engine->processResult(result({{"bass_guitar", 0.9}}));
    EXPECT_EQ(engine->currentSound(), "guitar");
}

TEST_F(SoundAnalysisEngineTest, FollowsUpdateIdentifiersNotifications)
{
    auto engine = makeEngine();
    store.setBool(true, PreferenceKey::SoundsPiano);
    engine->processResult(result({{"piano", 0.9}}));
    EXPECT_FALSE(engine->isSoundDetected()) << "preferences are applied only on notification";
    notifications.post(Notification::UpdateIdentifiers);
    engine->processResult(result({{"piano", 0.9}}));
    EXPECT_EQ(engine->currentSound(), "piano");
}

TEST_F(SoundAnalysisEngineTest, AudioReachesTheClassifierInOrderedFullBuffers)
{
    input.rate = 44100;
    classifier.steps = {{{result({{"guitar", 0.6}})}, {}}, {{}, "decoder exploded"}};
    std::vector<float> audio(4 * SoundAnalysisEngine::kBufferFrames + 1000);
    std::iota(audio.begin(), audio.end(), 0.0f);
    auto engine = makeEngine();
    std::thread audioThread([&] {
        for (std::size_t at = 0; at < audio.size(); at += 999)
            input.deliver(std::span<const float>(audio).subspan(at, std::min<std::size_t>(999, audio.size() - at)));
    });
    audioThread.join();
    engine.reset(); // drains the queue

    EXPECT_EQ(classifier.resetRates, std::vector<double>{44100});
    ASSERT_EQ(classifier.buffers.size(), 4u) << "the incomplete last buffer is not analysed";
    for (std::size_t b = 0; b < 4; ++b) {
        ASSERT_EQ(classifier.buffers[b].size(), SoundAnalysisEngine::kBufferFrames);
        EXPECT_EQ(classifier.buffers[b].front(), float(b * SoundAnalysisEngine::kBufferFrames));
        EXPECT_EQ(classifier.buffers[b].back(), float((b + 1) * SoundAnalysisEngine::kBufferFrames - 1));
    }
    EXPECT_EQ(console.str(), "guitar, confidence: 60.000000%\n"
                             "The the analysis failed: decoder exploded\n"
                             "The request completed successfully!\n");
    EXPECT_EQ(input.stops, 1);
}

TEST_F(SoundAnalysisEngineTest, WithoutAClassifierNothingIsEverDetected)
{
    auto engine = std::make_unique<SoundAnalysisEngine>(store, notifications, nullptr,
                                                        std::make_unique<FakeAudioInput>(input), console);
    std::vector<float> audio(3 * SoundAnalysisEngine::kBufferFrames);
    input.deliver(audio);
    EXPECT_FALSE(engine->isSoundDetected());
}

// Readers and identifier updates on this thread while results arrive on the
// analysis queue: meant to be run under ThreadSanitizer.
TEST_F(SoundAnalysisEngineTest, MainThreadReadsRaceFreeWithTheAnalysisQueue)
{
    store.setBool(true, PreferenceKey::SoundsPiano);
    constexpr int kBuffers = 200;
    for (int i = 0; i < kBuffers; ++i)
        classifier.steps.push_back({{result({{i % 2 ? "piano" : "guitar", 0.9}}), result({{"speech", 0.9}})}, {}});
    auto engine = makeEngine();
    std::thread audioThread([&] {
        std::vector<float> buffer(SoundAnalysisEngine::kBufferFrames);
        for (int i = 0; i < kBuffers; ++i)
            input.deliver(buffer);
    });
    for (int i = 0; i < 500; ++i) {
        store.setBool(i % 2 == 0, PreferenceKey::SoundsGuitar);
        notifications.post(Notification::UpdateIdentifiers);
        const std::string sound = engine->currentSound();
        EXPECT_TRUE(sound.empty() || sound == "guitar" || sound == "piano") << sound;
        static_cast<void>(engine->isSoundDetected());
    }
    audioThread.join();
}

TEST(SoundAnalysisEngineSharedTest, CreatedOnceOnFirstUse)
{
    static MemoryPreferenceStore store;
    static NotificationCenter notifications;
    static std::ostringstream console;
    static ClassifierScript script;
    static Microphone microphone;
    int made = 0;
    SoundAnalysisEngine::setSharedFactory([&] {
        ++made;
        return std::make_unique<SoundAnalysisEngine>(store, notifications, std::make_unique<ScriptedClassifier>(script),
                                                     std::make_unique<FakeAudioInput>(microphone), console);
    });
    EXPECT_EQ(made, 0);
    SoundAnalysisEngine& first = SoundAnalysisEngine::shared();
    EXPECT_EQ(&SoundAnalysisEngine::shared(), &first);
    EXPECT_EQ(made, 1);
    SoundAnalysisEngine::setSharedFactory(nullptr);
}

} // namespace
} // namespace veltra
