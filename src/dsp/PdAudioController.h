#pragma once

#include "dsp/AudioBackend.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace veltra {

class AudioSession;
class PdBase;

// Receives the microphone signal the patch hears (mono, 64 frames at a
// time) on the audio thread; must not block, allocate or print.
class AudioInputTap {
public:
    virtual ~AudioInputTap() = default;
    virtual void tapInput(std::span<const float> mono) noexcept = 0;
};

// Outcome of configuring the audio controller.
enum class PdAudioStatus : int {
    OK = 0,              // the stream runs as asked
    PropertyChanged = 1, // it runs, with another rate, channel count or buffer
    Error = -1,          // no stream can run
};

// Runs the open patch on the sound card: a duplex stream whose callback feeds
// the microphone to libpd and plays the patch's output.
//
// The device's buffer need not be a multiple of libpd's 64-frame block: a
// one-block FIFO in each direction adapts the two, for one block of latency.
class PdAudioController : private AudioProcessor {
public:
    // Patch output channels (the reference tone is stereo).
    static constexpr int kPatchOutputChannels = 2;

    PdAudioController(PdBase& base, AudioBackend& backend, const AudioSession& session);
    ~PdAudioController() override;

    // Main thread. Stops any running stream and opens a new one.
    PdAudioStatus configurePlayback(int sampleRate, int numberChannels, bool inputEnabled, bool mixingEnabled);
    void setActive(bool active);
    bool isActive() const { return active_; }

    const std::optional<AudioStreamConfig>& stream() const { return stream_; }
    bool deviceLost() const;
    // The input the next configurePlayback records from: a device's
    // identifier, empty for the system default (AudioBackend::chooseInput).
    void chooseInput(const std::string& identifier) { backend_.chooseInput(identifier); }
    // The chosen input is not there; the default stands in.
    bool inputFallback() const { return backend_.inputFallback(); }
    // Buffers with sound delivered so far, on any stream: microphone
    // channel 1, as the patch hears it, not every sample exactly zero, or
    // while the patch plays (a tone), any buffer at all. A count that stands still while the controller is
    // active means no input arrives: no buffers, or only digital silence,
    // which no live microphone gives for long, but a muted or suspended
    // source does, and PipeWire 0.3.65 gives a stream forever once its
    // source was suspended and resumed (docs/platform.md).
    std::uint64_t buffersHeard() const { return buffersHeard_.load(std::memory_order_relaxed); }

    // Lends the microphone to another listener (the sound classifier, where
    // the device cannot be opened twice). Main thread; after setInputTap
    // returns, the previous tap is no longer called.
    void setInputTap(AudioInputTap* tap);

private:
    void process(const float* input, float* output, unsigned frames) noexcept override;

    static constexpr int kMaxBlockFrames = 64;

    PdBase& base_;
    AudioBackend& backend_;
    const AudioSession& session_;
    std::optional<AudioStreamConfig> stream_;
    bool active_ = false;

    // Block adapter state, touched only by the audio thread while running.
    std::array<float, kMaxBlockFrames> blockIn_{};
    std::array<float, kMaxBlockFrames * kPatchOutputChannels> blockOut_{};
    int blockPosition_ = 0;

    std::atomic<std::uint64_t> buffersHeard_{0};
    std::atomic<AudioInputTap*> tap_{nullptr};
    std::atomic<bool> tapping_{false}; // the audio thread is inside a tap call
};

} // namespace veltra
