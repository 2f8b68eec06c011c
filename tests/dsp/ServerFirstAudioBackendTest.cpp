#include "dsp/ServerFirstAudioBackend.h"

#include "support/FakeAudioBackend.h"

#include <gtest/gtest.h>

namespace veltra::test {
namespace {

struct NoProcessor : AudioProcessor {
    void process(const float*, float*, unsigned) noexcept override {}
};

// A tuner started before the sound server: the direct way finds no device;
// once the server answers, the next open (the host's retry) is the server's,
// and a server that goes away again leaves the direct way to the retries.
TEST(ServerFirstAudioBackend, EachOpenTakesTheServerWhileItAnswers)
{
    auto serverOwned = std::make_unique<FakeAudioBackend>();
    FakeAudioBackend& server = *serverOwned;
    FakeAudioBackend* direct = nullptr;
    int directsMade = 0;
    ServerFirstAudioBackend backend(std::move(serverOwned), [&] {
        ++directsMade;
        auto made = std::make_unique<FakeAudioBackend>();
        made->answers = {std::string("no device"), std::string("no device")};
        direct = made.get();
        return made;
    });
    NoProcessor processor;
    const AudioStreamConfig wanted{48000, 1, 2, 96};
    struct Step {
        const char* what;
        bool serverAnswers;
        bool opens;
        bool onServer;
    };
    const Step steps[] = {
        {"no server yet: the direct way, which finds nothing", false, false, false},
        {"still none", false, false, false},
        {"the server is up", true, true, true},
        {"the server is gone again", false, true, false},
    };
    for (const Step& step : steps) {
        SCOPED_TRACE(step.what);
        server.answering = step.serverAnswers;
        EXPECT_EQ(std::holds_alternative<AudioStreamConfig>(backend.open(wanted, processor)), step.opens);
        EXPECT_EQ(backend.current(), step.onServer ? static_cast<AudioBackend*>(&server) : direct);
        EXPECT_EQ(backend.start(), step.opens);
        EXPECT_EQ(backend.isRunning(), step.opens);
    }
    EXPECT_EQ(directsMade, 1) << "the direct back end is made once, when first needed";
    EXPECT_EQ(server.processor, nullptr) << "the server's stream was closed when the next open left it";
    ASSERT_NE(direct, nullptr);
    direct->lost = true;
    EXPECT_TRUE(backend.deviceLost());
}

TEST(ServerFirstAudioBackend, DevicesAreTheAnsweringServers)
{
    auto serverOwned = std::make_unique<FakeAudioBackend>();
    serverOwned->deviceList = {{0, "server source", 2, 0, true, false, {48000}, {}}};
    FakeAudioBackend& server = *serverOwned;
    ServerFirstAudioBackend backend(std::move(serverOwned), [] {
        auto made = std::make_unique<FakeAudioBackend>();
        made->deviceList.clear();
        return made;
    });
    ASSERT_EQ(backend.devices().size(), 1u);
    EXPECT_EQ(backend.devices()[0].name, "server source");
    server.answering = false;
    EXPECT_TRUE(backend.devices().empty());
}

} // namespace
} // namespace veltra::test
