#include "classify/FallbackAudioInput.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace veltra {
namespace {

// An input that opens and starts, or refuses to, as scripted, and logs.
class ScriptedInput : public AudioInput {
public:
    ScriptedInput(std::string name, bool opens, bool starts, std::vector<std::string>& log)
        : name_(std::move(name)), opens_(opens), starts_(starts), log_(log)
    {
    }
    double open() override
    {
        log_.push_back(name_ + " open");
        if (!opens_)
            throw AudioInputError(name_ + " cannot open");
        return 44100;
    }
    void start(Callback) override
    {
        log_.push_back(name_ + " start");
        if (!starts_)
            throw AudioInputError(name_ + " cannot start");
    }
    void stop() override { log_.push_back(name_ + " stop"); }

private:
    std::string name_;
    bool opens_, starts_;
    std::vector<std::string>& log_;
};

TEST(FallbackAudioInput, TheTunersStreamTakesOverWhereTheDeviceIsBusy)
{
    struct Case {
        const char* what;
        bool preferredOpens, preferredStarts, fallbackOpens;
        std::vector<std::string> log;
        std::string error;
    };
    const Case cases[] = {
        {"own stream", true, true, true, {"own open", "own start"}, ""},
        {"busy at open", false, true, true, {"own open", "tap open", "tap start"}, ""},
        {"busy at start", true, false, true, {"own open", "own start", "own stop", "tap open", "tap start"}, ""},
        {"neither", false, true, false, {"own open", "tap open"}, "tap cannot open"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        std::vector<std::string> log;
        FallbackAudioInput input(std::make_unique<ScriptedInput>("own", c.preferredOpens, c.preferredStarts, log),
                                 std::make_unique<ScriptedInput>("tap", c.fallbackOpens, true, log));
        std::string error;
        try {
            EXPECT_EQ(input.open(), 44100);
            input.start([](std::span<const float>) {});
        } catch (const AudioInputError& e) {
            error = e.what();
        }
        EXPECT_EQ(log, c.log);
        EXPECT_EQ(error, c.error);
    }
}

} // namespace
} // namespace veltra
