#include "dsp/AudioBackendFactory.h"
#include "dsp/PulseAudioBackend.h"
#include "dsp/ServerFirstAudioBackend.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <list>
#include <map>
#include <numbers>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

namespace veltra::test {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kRate = 48000;
constexpr double kToneHz = 440; // a period of 109.09 frames: no buffer holds whole periods
constexpr float kToneLevel = 0.5f;
const std::string kScript = VELTRA_TEST_SOURCE_DIR "/tools/virtual-microphone.sh";

bool waitFor(const std::function<bool()>& done, double seconds)
{
    const auto end = Clock::now() + std::chrono::duration<double>(seconds);
    while (!done() && Clock::now() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    return done();
}

// Sets environment variables for the test's lifetime.
class ScopedEnvironment {
public:
    void set(const std::string& name, const std::string& value)
    {
        if (!saved_.contains(name)) {
            const char* old = std::getenv(name.c_str());
            saved_[name] = old ? std::optional<std::string>(old) : std::nullopt;
        }
        setenv(name.c_str(), value.c_str(), 1);
    }
    ~ScopedEnvironment()
    {
        for (const auto& [name, value] : saved_)
            value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
    }

private:
    std::map<std::string, std::optional<std::string>> saved_;
};

// A private server from tools/virtual-microphone.sh: its default source is
// the monitor of its null sink, so whatever the back end plays it hears.
class PrivateSoundServer {
public:
    // Empty when the server runs, else why it does not.
    std::string start()
    {
        if (std::system("command -v pulseaudio >/dev/null 2>&1") != 0)
            return "pulseaudio is not installed";
        if (!runScript("start"))
            return "the private sound server did not start";
        // The client keeps its cookie under HOME: the server's directory.
        environment_.set("HOME", std::getenv("XDG_RUNTIME_DIR"));
        started_ = true;
        return {};
    }

    // Only the server's directory and address: serve() starts it.
    std::string prepare()
    {
        if (std::system("command -v pulseaudio >/dev/null 2>&1") != 0)
            return "pulseaudio is not installed";
        if (!runScript("prepare", false))
            return "the private sound server's directory was not made";
        environment_.set("HOME", std::getenv("XDG_RUNTIME_DIR"));
        started_ = true;
        return {};
    }

    // Kills the server, as a crash would, and waits until it is gone.
    void crash() { ASSERT_TRUE(runScript("crash")); }
    // Starts the server again, with the same address and devices.
    void serve() { ASSERT_TRUE(runScript("serve")); }
    ~PrivateSoundServer()
    {
        if (started_ && std::system((kScript + " stop").c_str()) != 0)
            ADD_FAILURE() << "the private sound server did not stop";
    }

private:
    // Runs the script's command and takes the variables it prints; true
    // when it succeeded and (unless told otherwise) a server runs.
    bool runScript(const std::string& command, bool serverRuns = true)
    {
        FILE* script = popen((kScript + " " + command).c_str(), "r");
        if (!script)
            return false;
        char line[512];
        while (std::fgets(line, sizeof line, script)) {
            // Lines read: export NAME='value'
            const std::string text(line);
            const auto equals = text.find('=');
            const auto open = text.find('\'');
            const auto close = text.rfind('\'');
            if (text.rfind("export ", 0) == 0 && equals != std::string::npos && close > open)
                environment_.set(text.substr(7, equals - 7), text.substr(open + 1, close - open - 1));
        }
        return pclose(script) == 0 && (!serverRuns || std::getenv("VELTRA_VMIC_PID"));
    }

    ScopedEnvironment environment_;
    bool started_ = false;
};

// Stands in for the patch: plays a steady sine once `playing` is set and
// keeps what it hears, on the client thread, without allocating.
class LoopbackProbe : public AudioProcessor {
public:
    explicit LoopbackProbe(double seconds)
        : heard(static_cast<std::size_t>(seconds * kRate))
    {
    }

    void process(const float* input, float* output, unsigned frames) noexcept override
    {
        const int channels = inputChannels.load();
        for (unsigned f = 0; f < frames; ++f) {
            const std::size_t at = framesSeen.load(std::memory_order_relaxed);
            if (at < heard.size())
                heard[at] = input ? input[f * static_cast<unsigned>(channels)] : 0.0f;
            if (playing.load(std::memory_order_relaxed) && startFrame < 0)
                startFrame = static_cast<long>(at);
            const float sample = startFrame >= 0 ? kToneLevel * static_cast<float>(std::sin(phase)) : 0.0f;
            if (startFrame >= 0)
                phase = std::fmod(phase + 2 * std::numbers::pi * kToneHz / kRate, 2 * std::numbers::pi);
            if (output) {
                output[2 * f] = sample;
                output[2 * f + 1] = sample;
            }
            framesSeen.store(at + 1, std::memory_order_release);
        }
        largestCall = std::max(largestCall, frames);
    }

    // The first frame heard above half the tone's level, from `from` on.
    std::optional<std::size_t> onset(std::size_t from = 0) const
    {
        const std::size_t end = std::min(framesSeen.load(), heard.size());
        for (std::size_t i = from; i < end; ++i)
            if (std::abs(heard[i]) > kToneLevel / 2)
                return i;
        return std::nullopt;
    }

    std::atomic<bool> playing{false};
    std::atomic<int> inputChannels{1};
    std::atomic<std::size_t> framesSeen{0};
    long startFrame = -1; // the frame at which the tone began
    unsigned largestCall = 0;
    std::vector<float> heard;

private:
    double phase = 0;
};

// The spans between upward zero crossings of `samples`, in frames.
std::vector<double> periods(const std::vector<float>& samples, std::size_t from, std::size_t to)
{
    std::vector<double> result;
    double last = -1;
    for (std::size_t i = from + 1; i < to; ++i) {
        if (samples[i - 1] < 0 && samples[i] >= 0) {
            const double crossing = static_cast<double>(i - 1) + samples[i - 1] / (samples[i - 1] - samples[i]);
            if (last >= 0)
                result.push_back(crossing - last);
            last = crossing;
        }
    }
    return result;
}

struct PulseAudioBackendTest : ::testing::Test {
    PrivateSoundServer server;
    // The probes outlive the back end, whose streams may call them until it
    // is gone.
    std::list<LoopbackProbe> probes;
    std::unique_ptr<PulseAudioBackend> backend;

    LoopbackProbe& newProbe(double seconds) { return probes.emplace_back(seconds); }

    void SetUp() override
    {
        if (const std::string why = server.start(); !why.empty())
            GTEST_SKIP() << why;
        backend = PulseAudioBackend::connect();
        ASSERT_NE(backend, nullptr);
    }

    // Opens the loopback stream as the tuner does, and starts it.
    AudioStreamConfig run(LoopbackProbe& probe, unsigned bufferFrames = 96)
    {
        const auto opened = backend->open({kRate, 1, 2, bufferFrames}, probe);
        EXPECT_TRUE(std::holds_alternative<AudioStreamConfig>(opened));
        if (!std::holds_alternative<AudioStreamConfig>(opened))
            return {};
        EXPECT_TRUE(backend->start());
        return std::get<AudioStreamConfig>(opened);
    }
};

TEST_F(PulseAudioBackendTest, DevicesAreTheServersSourcesAndSinks)
{
    const auto devices = backend->devices();
    ASSERT_EQ(devices.size(), 2u);
    const AudioDevice& monitor = devices[0].inputChannels ? devices[0] : devices[1];
    const AudioDevice& sink = devices[0].inputChannels ? devices[1] : devices[0];
    EXPECT_TRUE(monitor.isDefaultInput);
    EXPECT_FALSE(monitor.isDefaultOutput);
    EXPECT_EQ(monitor.outputChannels, 0u);
    EXPECT_TRUE(sink.isDefaultOutput);
    EXPECT_EQ(sink.outputChannels, 2u);
    EXPECT_EQ(sink.sampleRates, std::vector<unsigned>{kRate});
    EXPECT_NE(monitor.id, sink.id);
}

// The processor hears its own tone at the stream's rate, in whole buffers,
// with no gap or jump once it is under way. The buffers are long enough
// that a test machine busy with other work does not make the queue run dry:
// what is checked is how fragments become buffers and buffers output.
TEST_F(PulseAudioBackendTest, HearsWhatItPlaysAtTheRightRateWithoutGaps)
{
    LoopbackProbe& probe = newProbe(6);
    const AudioStreamConfig granted = run(probe, 1024);
    EXPECT_EQ(granted.sampleRate, kRate);
    EXPECT_EQ(granted.bufferFrames, 1024u);
    EXPECT_TRUE(backend->isRunning());
    probe.playing = true;

    ASSERT_TRUE(waitFor([&] { return probe.framesSeen > kRate / 2; }, 5));
    const std::size_t frames0 = probe.framesSeen;
    const auto time0 = Clock::now();
    std::this_thread::sleep_for(std::chrono::seconds(2));
    const double rate = static_cast<double>(probe.framesSeen - frames0) /
                        std::chrono::duration<double>(Clock::now() - time0).count();
    backend->close();
    EXPECT_NEAR(rate, kRate, kRate * 0.05);
    EXPECT_EQ(probe.largestCall, granted.bufferFrames);

    // The first few buffers may catch the queue filling; from a tenth of a
    // second after the tone arrives, every period must be whole.
    const auto onset = probe.onset();
    ASSERT_TRUE(onset.has_value());
    const std::size_t from = *onset + kRate / 10;
    const std::size_t to = std::min(probe.framesSeen.load(), probe.heard.size());
    ASSERT_GT(to, from + kRate);
    const auto spans = periods(probe.heard, from, to);
    EXPECT_GT(spans.size(), static_cast<std::size_t>((to - from) / (kRate / kToneHz)) - 2);
    const double period = kRate / kToneHz;
    for (std::size_t i = 0; i < spans.size(); ++i)
        ASSERT_NEAR(spans[i], period, 0.5) << "period " << i << " of " << spans.size();
    float peak = 0;
    for (std::size_t i = from; i < to; ++i)
        peak = std::max(peak, std::abs(probe.heard[i]));
    EXPECT_NEAR(peak, kToneLevel, 0.02);
}

// The reference tone's path: from the buffer the processor starts it in to
// the buffer that hears it is a few buffers, not a growing queue.
TEST_F(PulseAudioBackendTest, ThePlayedToneComesBackWithinMilliseconds)
{
    LoopbackProbe& probe = newProbe(4);
    run(probe);
    ASSERT_TRUE(waitFor([&] { return probe.framesSeen > kRate / 2; }, 5));
    probe.playing = true;
    ASSERT_TRUE(waitFor([&] { return probe.onset().has_value(); }, 2));
    backend->close();
    const double milliseconds = 1000.0 * static_cast<double>(*probe.onset() - probe.startFrame) / kRate;
    RecordProperty("round_trip_ms", std::to_string(milliseconds));
    EXPECT_GT(milliseconds, 0);
    EXPECT_LT(milliseconds, 60);
}

// What the server says of our playback stream: "yes" while it is paused.
std::string playbackCorked()
{
    FILE* pactl = popen("pactl list sink-inputs 2>/dev/null", "r");
    if (!pactl)
        return {};
    std::string corked;
    char line[512];
    constexpr std::string_view kField = "Corked: ";
    while (std::fgets(line, sizeof line, pactl)) {
        const std::string text(line);
        if (const auto at = text.find(kField); corked.empty() && at != std::string::npos)
            corked = text.substr(at + kField.size(), text.find_first_of("\r\n", at) - at - kField.size());
    }
    pclose(pactl);
    return corked;
}

// Silence pauses the playback stream, so the server can let the output
// device sleep; the first sound resumes it.
TEST_F(PulseAudioBackendTest, PlaybackPausesInSilenceAndResumesForSound)
{
    LoopbackProbe& probe = newProbe(4);
    run(probe);
    ASSERT_TRUE(waitFor([&] { return probe.framesSeen > kRate / 4; }, 5));
    EXPECT_TRUE(waitFor([] { return playbackCorked() == "yes"; }, 1));
    probe.playing = true;
    EXPECT_TRUE(waitFor([] { return playbackCorked() == "no"; }, 2));
    ASSERT_TRUE(waitFor([&] { return probe.onset().has_value(); }, 2));
}

TEST_F(PulseAudioBackendTest, StopsStartsClosesAndReopens)
{
    LoopbackProbe& probe = newProbe(10);
    run(probe);
    ASSERT_TRUE(waitFor([&] { return probe.framesSeen > kRate / 10; }, 5));

    backend->stop();
    EXPECT_FALSE(backend->isRunning());
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    const std::size_t stoppedAt = probe.framesSeen;
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_EQ(probe.framesSeen, stoppedAt);

    ASSERT_TRUE(backend->start());
    EXPECT_TRUE(backend->isRunning());
    probe.playing = true;
    ASSERT_TRUE(waitFor([&] { return probe.onset(stoppedAt).has_value(); }, 2)) << "nothing heard after a restart";

    backend->close();
    const std::size_t closedAt = probe.framesSeen;
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_EQ(probe.framesSeen, closedAt) << "the processor was called after close()";
    EXPECT_FALSE(backend->isRunning());
    EXPECT_FALSE(backend->start());
    backend->close();

    LoopbackProbe& again = newProbe(10);
    again.inputChannels = 2;
    const auto opened = backend->open({kRate, 2, 2, 1024}, again);
    ASSERT_TRUE(std::holds_alternative<AudioStreamConfig>(opened));
    EXPECT_EQ(std::get<AudioStreamConfig>(opened).bufferFrames, 1024u);
    ASSERT_TRUE(backend->start());
    again.playing = true;
    EXPECT_TRUE(waitFor([&] { return again.onset().has_value(); }, 2)) << "nothing heard after reopening";
    EXPECT_EQ(again.largestCall, 1024u);
}

TEST_F(PulseAudioBackendTest, AServerThatDiesIsALostDevice)
{
    LoopbackProbe& probe = newProbe(10);
    run(probe);
    ASSERT_TRUE(waitFor([&] { return probe.framesSeen > kRate / 10; }, 5));
    EXPECT_FALSE(backend->deviceLost());

    server.crash();
    EXPECT_TRUE(waitFor([&] { return backend->deviceLost(); }, 5));
    EXPECT_FALSE(backend->isRunning());
    const auto closing = Clock::now();
    backend->close();
    EXPECT_LT(Clock::now() - closing, std::chrono::seconds(1));

    const auto reopened = backend->open({kRate, 1, 2, 96}, probe);
    ASSERT_TRUE(std::holds_alternative<std::string>(reopened));
    EXPECT_EQ(std::get<std::string>(reopened).find('\n'), std::string::npos);
    EXPECT_TRUE(backend->devices().empty());
}

// The owner of a lost stream closes it and opens again: the same back end
// makes a new connection once the server is back, and hears as before.
TEST_F(PulseAudioBackendTest, AServerThatComesBackIsHeardAgainAfterReopening)
{
    LoopbackProbe& probe = newProbe(10);
    run(probe);
    ASSERT_TRUE(waitFor([&] { return probe.framesSeen > kRate / 10; }, 5));
    server.crash();
    ASSERT_TRUE(waitFor([&] { return backend->deviceLost(); }, 2));
    backend->close();
    server.serve();

    probe.playing = true;
    const std::size_t reopenedAt = probe.framesSeen;
    run(probe);
    EXPECT_FALSE(backend->deviceLost());
    // The restarted server's null sink is new, and a new one renders up to
    // two seconds ahead before its monitor hears what is played.
    EXPECT_TRUE(waitFor([&] { return probe.onset(reopenedAt).has_value(); }, 3)) << "nothing heard after the return";
    EXPECT_EQ(backend->devices().size(), 2u);
}

// Runs a pactl command on the private server.
void pactl(const std::string& arguments)
{
    ASSERT_EQ(std::system(("pactl " + arguments + " >/dev/null").c_str()), 0) << "pactl " << arguments;
}

// The streams follow the server's default source and sink: moved to another
// source alone, the probe no longer hears its own tone (the new source is
// silent); with the sink moved too, it hears it again.
TEST_F(PulseAudioBackendTest, StreamsFollowTheDefaultSourceAndSink)
{
    pactl("load-module module-null-sink sink_name=other rate=48000");
    LoopbackProbe& probe = newProbe(20);
    run(probe);
    probe.playing = true;
    ASSERT_TRUE(waitFor([&] { return probe.onset().has_value(); }, 2));

    const auto silentFrom = [&probe](std::size_t from) {
        // A tenth of a second with nothing above half the tone's level.
        const std::size_t seen = probe.framesSeen;
        return seen > from + kRate / 10 && !probe.onset(seen - kRate / 10).has_value();
    };
    const std::size_t movedAt = probe.framesSeen;
    pactl("set-default-source other.monitor");
    // "other" is a new null sink, whose monitor starts up to two seconds
    // ahead of what it renders.
    EXPECT_TRUE(waitFor([&] { return silentFrom(movedAt); }, 3)) << "the record stream stayed on the old source";

    const std::size_t sinkMovedAt = probe.framesSeen;
    pactl("set-default-sink other");
    EXPECT_TRUE(waitFor([&] { return probe.onset(sinkMovedAt).has_value(); }, 2))
        << "the playback stream stayed on the old sink";
    EXPECT_FALSE(backend->deviceLost());
}

TEST_F(PulseAudioBackendTest, TheFactorysBackEndRunsOnTheServerWhenItAnswers)
{
    const auto chosen = makeAudioBackend();
    LoopbackProbe& probe = newProbe(1);
    ASSERT_TRUE(std::holds_alternative<AudioStreamConfig>(chosen->open({kRate, 1, 2, 96}, probe)));
    const auto* serverFirst = dynamic_cast<const ServerFirstAudioBackend*>(chosen.get());
    ASSERT_NE(serverFirst, nullptr);
    EXPECT_NE(dynamic_cast<const PulseAudioBackend*>(serverFirst->current()), nullptr);
    chosen->close();
}

TEST(AudioBackendFactory, AMissingServerFailsAtOnce)
{
    ScopedEnvironment environment;
    environment.set("PULSE_SERVER", "unix:/nonexistent/veltra-test/native");
    const auto start = Clock::now();
    EXPECT_EQ(PulseAudioBackend::connect(), nullptr);
    const auto unconnected = PulseAudioBackend::make();
    ASSERT_NE(unconnected, nullptr);
    EXPECT_FALSE(unconnected->reachable());
    EXPECT_LT(Clock::now() - start, std::chrono::milliseconds(500)) << "a missing server must fail at once";
}

// Made before the server runs (a tuner started at login), the factory's back
// end opens nothing, and opens on the server once it is up: no new back end
// is needed, only another open(), as the retries make.
TEST(AudioBackendFactory, ABackEndMadeBeforeTheServerUsesItOnceItRuns)
{
    PrivateSoundServer server;
    if (const std::string why = server.prepare(); !why.empty())
        GTEST_SKIP() << why;
    const auto backend = makeAudioBackend();
    LoopbackProbe early(1);
    EXPECT_FALSE(std::holds_alternative<AudioStreamConfig>(backend->open({kRate, 1, 2, 96}, early)));
    backend->close();
    server.serve();
    std::list<LoopbackProbe> probes; // outlives the back end's streams
    LoopbackProbe& probe = probes.emplace_back(1);
    ASSERT_TRUE(std::holds_alternative<AudioStreamConfig>(backend->open({kRate, 1, 2, 96}, probe)));
    ASSERT_TRUE(backend->start());
    probe.playing.store(true);
    EXPECT_TRUE(waitFor([&] { return probe.onset(0).has_value(); }, 3)) << "the loopback was not heard";
    backend->close();
}

} // namespace
} // namespace veltra::test
