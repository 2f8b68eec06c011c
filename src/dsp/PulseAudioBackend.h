#pragma once

#include "dsp/AudioBackend.h"

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <pulse/def.h>

struct pa_context;
struct pa_server_info;
struct pa_source_info;
struct pa_stream;
struct pa_threaded_mainloop;

namespace veltra {

// The audio back end over PulseAudio's asynchronous API (also PipeWire's
// PulseAudio server): one client thread, one server connection, a record
// stream from the default source and a playback stream to the default sink.
//
// The record stream is the clock. Captured fragments are gathered into
// whole buffers on the client thread; each full buffer goes through the
// processor and its output is written to the playback stream in the same
// call, so one wake-up serves both directions. Writing whole buffers keeps
// the server's blocks whole too: fed back small pieces, a loopback (a
// monitor source hearing the sink) would keep splitting them and wake us
// ten times as often. The playback queue holds at most about two buffers:
// output that finds no room is dropped rather than queued, so a sink
// running slower than the source never lets the reference tone's latency
// grow.
//
// A stream that fails (the server restarts or goes away, its device is
// removed) sets deviceLost(); the owner closes and opens again, and open()
// makes a new connection each time. Streams follow the
// server's default source and sink as they change.
//
// A chosen input (chooseInput, a source's name) is recorded from while the
// server has it; the default stands in while it has not (inputFallback),
// and the record stream moves back to the chosen source when it appears.
//
// While the output is silence (no reference tone), the playback stream is
// paused (corked): a running stream costs a wake-up per half buffer for the
// server's requests, more than the record stream itself. The first buffer
// that is not silent resumes it, behind one buffer of silence, as start()
// would.
class PulseAudioBackend : public AudioBackend {
public:
    // Connects to the server the environment names, never starting one.
    // Null when no server answers within `timeoutSeconds`.
    static std::unique_ptr<PulseAudioBackend> connect(double timeoutSeconds = 1.0);
    // The same with no server needed now: every call that asks the server
    // (reachable, devices, open) connects first when it is not connected.
    // Null only when the client thread cannot start.
    static std::unique_ptr<PulseAudioBackend> make();
    ~PulseAudioBackend() override;
    PulseAudioBackend(const PulseAudioBackend&) = delete;
    PulseAudioBackend& operator=(const PulseAudioBackend&) = delete;

    bool reachable() override;
    std::vector<AudioDevice> devices() override;
    std::variant<AudioStreamConfig, std::string> open(const AudioStreamConfig& wanted,
                                                      AudioProcessor& processor) override;
    bool start() override;
    void stop() override;
    void close() override;
    bool isRunning() const override;
    bool deviceLost() const override;
    void chooseInput(const std::string& identifier) override;
    bool inputFallback() const override;

    // The fewest frames a buffer holds here (16 ms at 48 kHz): the longest
    // buffer that still brings every 60 Hz display frame its three readings,
    // so the graph redraws, and its note vote grows, as often as before. Each
    // buffer wakes the client thread, and against 384 frames this one costs
    // the audio thread a fifth to a third less; at 1024 a quarter of the
    // frames got no reading and the graph redrew 48 times a second. A
    // reference tone sounds 17 to 33 ms after the press, against 9 to 21 at
    // 384 (docs/platform.md).
    static constexpr unsigned kMinimumBufferFrames = 768;

private:
    PulseAudioBackend();

    // All below run with the client thread's lock held.
    bool connectContext(double timeoutSeconds);
    bool ensureContext();
    void dropContext();
    bool waitUntil(const std::function<bool()>& done, double timeoutSeconds);
    std::vector<AudioDevice> queryDevices();
    pa_stream* newStream(const char* name, int channels, int rate);
    void dropStream(pa_stream*& stream);
    void setCorked(bool corked);

    // Client thread.
    static void onContextState(pa_context* context, void* self);
    static void onStreamState(pa_stream* stream, void* self);
    static void onServerEvent(pa_context* context, pa_subscription_event_type_t event, uint32_t index, void* self);
    static void onServerDefaults(pa_context* context, const pa_server_info* info, void* self);
    static void onChosenSource(pa_context* context, const pa_source_info* info, int eol, void* self);
    static void onMovedToChosen(pa_context* context, int success, void* self);
    static void onReadable(pa_stream* stream, std::size_t bytes, void* self);
    void takeFragment(const float* input, std::size_t frames) noexcept;
    void primePlayback() noexcept;
    void followOutput() noexcept;
    std::size_t writeOutput(const float* samples, std::size_t frames) noexcept; // returns the frames written

    pa_threaded_mainloop* mainloop_ = nullptr;
    pa_context* context_ = nullptr;
    pa_stream* record_ = nullptr;
    pa_stream* playback_ = nullptr;

    // The open stream's shape and buffers, fixed at open().
    AudioProcessor* processor_ = nullptr;
    bool passInput_ = false; // false: the record stream is only the clock
    unsigned inChannels_ = 0;
    unsigned outChannels_ = 0;
    std::size_t chunkFrames_ = 0;
    std::vector<float> input_; // gathers fragments into whole buffers
    std::size_t filled_ = 0;
    std::vector<float> output_;
    std::vector<float> silence_;
    bool playbackCorked_ = false;
    unsigned silentBuffers_ = 0; // written since the last sound

    std::string chosenInput_; // a source's name, empty for the default
    std::atomic<bool> running_{false};
    std::atomic<bool> lost_{false};
    std::atomic<bool> fallback_{false}; // the chosen source is missing
};

} // namespace veltra
