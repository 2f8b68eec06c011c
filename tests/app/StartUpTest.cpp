#include "app/ViewController.h"
#include "dsp/AudioSession.h"
#include "dsp/Patch.h"
#include "dsp/PatchFile.h"
#include "dsp/PdBase.h"
#include "settings/MemoryPreferenceStore.h"
#include "settings/NotificationCenter.h"
#include "support/Lines.h"
#include "support/ScreenRig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

namespace veltra::test {
namespace {

using ::testing::ElementsAre;

// Upper-case, hyphenated, version 4, RFC 4122 variant.
bool isCanonicalUuid(const std::string& text)
{
    if (text.size() != 36 || text[14] != '4' || std::string("89AB").find(text[19]) == std::string::npos)
        return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool hyphen = i == 8 || i == 13 || i == 18 || i == 23;
        if (hyphen ? text[i] != '-' : std::string("0123456789ABCDEF").find(text[i]) == std::string::npos)
            return false;
    }
    return true;
}

struct StartUp : ::testing::Test, ScreenRig {
    std::unique_ptr<ViewController> makeScreen(std::optional<std::filesystem::path> cacheDir)
    {
        auto d = dependencies();
        d.cachesDirectory = std::move(cacheDir);
        return std::make_unique<ViewController>(d);
    }
};

TEST_F(StartUp, EachLoadWritesANewPatchFileAndOpensIt)
{
    auto first = makeScreen(caches);
    auto second = makeScreen(caches);
    first->viewDidLoad();
    second->viewDidLoad();

    EXPECT_TRUE(first->patch().has_value());
    EXPECT_TRUE(second->patch().has_value());
    EXPECT_NE(first->patchFilePath(), second->patchFilePath());
    for (const auto* screen : {first.get(), second.get()}) {
        EXPECT_EQ(screen->patchFilePath().parent_path(), caches);
        EXPECT_TRUE(isCanonicalUuid(screen->patchFilePath().filename().string()))
            << screen->patchFilePath().filename();
        std::ifstream in(screen->patchFilePath(), std::ios::binary);
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), CommonUtils::patch);
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(caches), {}), 2);
    EXPECT_THAT(lines(console), ElementsAre("Record permission granted.", "Patch opened",
                                            "Record permission granted.", "Patch opened"));
    EXPECT_EQ(first->title(), "Veltra");
    EXPECT_EQ(preferences.integerForKey("A4"), 440); // defaults in place
    EXPECT_DOUBLE_EQ(session.preferredIOBufferDuration(), 0.002);
}

TEST_F(StartUp, AnUnwritableCacheReportsTheFailedOpenAndGoesOn)
{
    const auto blocker = caches / "not-a-directory";
    std::filesystem::create_directories(caches);
    std::ofstream(blocker) << "a file where the cache directory should be";

    auto screen = makeScreen(blocker / "veltra");
    screen->viewDidLoad();
    EXPECT_FALSE(screen->patch().has_value());
    EXPECT_THAT(lines(console), ElementsAre("Record permission granted.", "Failed to open patch!"));
    EXPECT_NE(screen->dispatcher(), nullptr);
    EXPECT_TRUE(preferences.hasValue("Latency"));
}

TEST_F(StartUp, PermissionAnswerReachesTheButtonOnTheMainQueue)
{
    struct Case {
        const char* what;
        bool hasMicrophone;
        const char* line;
        const char* image;
    };
    for (const Case c : {Case{"microphone", true, "Record permission granted.", "gearshape.fill"},
                         Case{"no microphone", false, "Record permission denied.", "mic.slash.fill"}}) {
        SCOPED_TRACE(c.what);
        console.str("");
        backend.deviceList.clear();
        if (c.hasMicrophone)
            backend.deviceList.push_back({0, "mic", 1, 0, true, false, {48000}, {}});
        auto screen = makeScreen(caches);
        int changes = 0;
        screen->setChangedCallback([&] { ++changes; });
        screen->viewDidLoad();
        EXPECT_EQ(lines(console).front(), c.line);
        const int changesBeforeMainQueue = changes;
        mainQueue.runAll();
        EXPECT_GT(changes, changesBeforeMainQueue);
        EXPECT_EQ(screen->accessoryImage(), c.image);
        EXPECT_TRUE(screen->accessoryEnabled());

        // The button opens the settings, or explains how to allow the microphone.
        int pushes = 0;
        std::vector<Alert> alerts;
        screen->setPushSettings([&] { ++pushes; });
        screen->setPresentAlert([&](const Alert& a) { alerts.push_back(a); });
        screen->accessoryTapped();
        mainQueue.runAll();
        EXPECT_EQ(pushes, c.hasMicrophone ? 1 : 0);
        ASSERT_EQ(alerts.size(), c.hasMicrophone ? 0u : 1u);
        if (!alerts.empty()) {
            EXPECT_EQ(alerts[0].title, "Microphone Access Required");
            EXPECT_EQ(alerts[0].dismissTitle, "Dismiss");
        }
    }
}

TEST_F(StartUp, AMicrophoneThatAppearsLaterTurnsTheButtonBackToSettings)
{
    backend.deviceList.clear();
    auto screen = makeScreen(caches);
    screen->viewDidLoad();
    mainQueue.runAll();
    ASSERT_EQ(screen->accessoryImage(), "mic.slash.fill");

    // The sound server comes up and the tuner's stream opens.
    screen->setAudioState(AudioState::Running);
    EXPECT_EQ(screen->accessoryImage(), "gearshape.fill");

    // Asked again, by a tap, the answer follows the devices as they are now.
    auto tapped = makeScreen(caches);
    tapped->viewDidLoad();
    mainQueue.runAll();
    backend.deviceList.push_back({0, "mic", 1, 0, true, false, {48000}, {}});
    int pushes = 0;
    tapped->setPushSettings([&] { ++pushes; });
    tapped->accessoryTapped();
    mainQueue.runAll();
    EXPECT_EQ(tapped->accessoryImage(), "gearshape.fill");
    EXPECT_EQ(pushes, 1);
}

} // namespace
} // namespace veltra::test
