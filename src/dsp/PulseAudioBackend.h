#pragma once

#include "dsp/AudioBackend.h"

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

struct pa_context;
struct pa_stream;
struct pa_threaded_mainloop;

namespace veltra {

// The audio back end over PulseAudio's asynchronous API (also PipeWire's
// PulseAudio server): one client thread, one server connection, a record
// stream from the default source and a playback stream to the default sink.
//
// The record stream is the clock. Each captured fragment is handed to the
// processor on the client thread as it arrives, and the output is written
// to the playback stream in the same call, so one wake-up serves both
// directions. The playback queue is kept at about two buffers: output that
// finds no room is dropped rather than queued, so a sink running slower than
// the source never lets the reference tone's latency grow.
class PulseAudioBackend : public AudioBackend {
public:
    // Connects to the server the environment names, never starting one.
    // Null when no server answers within `timeoutSeconds`.
    static std::unique_ptr<PulseAudioBackend> connect(double timeoutSeconds = 1.0);
    ~PulseAudioBackend() override;
    PulseAudioBackend(const PulseAudioBackend&) = delete;
    PulseAudioBackend& operator=(const PulseAudioBackend&) = delete;

    std::vector<AudioDevice> devices() override;
    std::variant<AudioStreamConfig, std::string> open(const AudioStreamConfig& wanted,
                                                      AudioProcessor& processor) override;
    bool start() override;
    void stop() override;
    void close() override;
    bool isRunning() const override;
    bool deviceLost() const override;

    // The fewest frames a buffer holds here. Each buffer wakes the client
    // thread about twice (the fragment, the sink's request for more); below
    // this the wake-ups cost more than the patch's own work.
    static constexpr unsigned kMinimumBufferFrames = 256;

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
    static void onReadable(pa_stream* stream, std::size_t bytes, void* self);
    void processFragment(const float* input, std::size_t frames) noexcept;
    void writeOutput(std::size_t frames) noexcept;

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
    std::vector<float> silence_; // stands in for holes in the captured signal
    std::vector<float> output_;

    std::atomic<bool> running_{false};
    std::atomic<bool> lost_{false};
};

} // namespace veltra
