#pragma once

#include <string>
#include <variant>
#include <vector>

namespace veltra {

struct AudioDevice {
    unsigned id = 0;
    std::string name;
    unsigned inputChannels = 0;
    unsigned outputChannels = 0;
    bool isDefaultInput = false;
    bool isDefaultOutput = false;
    std::vector<unsigned> sampleRates;
    // The name the sound system knows the device by (a PulseAudio source's
    // or sink's name): unlike `id` or `name`, the same after a restart or a
    // replug, so a choice is remembered by it. Empty where there is none.
    std::string identifier;
};

// The shape of a duplex stream: what is asked for, or what a device granted.
struct AudioStreamConfig {
    int sampleRate = 0;
    int inputChannels = 0;
    int outputChannels = 0;
    unsigned bufferFrames = 0;

    bool operator==(const AudioStreamConfig&) const = default;
};

// Called on the audio thread with interleaved float frames; input is null
// when the stream has no input side, output when it has no output side.
// Must not block, allocate or print.
class AudioProcessor {
public:
    virtual ~AudioProcessor() = default;
    virtual void process(const float* input, float* output, unsigned frames) noexcept = 0;
};

// The sound system under the program: lists devices and runs one duplex
// stream on the default input (or the chosen one) and output. PulseAudio or
// RtAudio on a real machine (makeAudioBackend); a scripted double in tests.
class AudioBackend {
public:
    virtual ~AudioBackend() = default;

    // Whether the sound system can be asked at all now: a sound server that
    // is not running (not yet, or no longer) cannot.
    virtual bool reachable() { return true; }
    virtual std::vector<AudioDevice> devices() = 0;
    // Opens a stream as close to `wanted` as the devices allow. Returns the
    // granted shape, or a one-line reason why no stream can run.
    virtual std::variant<AudioStreamConfig, std::string> open(const AudioStreamConfig& wanted,
                                                              AudioProcessor& processor) = 0;
    virtual bool start() = 0;
    virtual void stop() = 0;
    virtual void close() = 0;
    virtual bool isRunning() const = 0;
    // True once the running stream's device failed (unplugged, server gone).
    virtual bool deviceLost() const = 0;

    // The input the next open() records from: a device's identifier, or
    // empty for the system default. A back end that cannot choose (RtAudio,
    // whose device numbers change as devices come and go) records from the
    // default.
    virtual void chooseInput(const std::string& /*identifier*/) {}
    // True while the chosen input is not there and the stream records from
    // the default instead; it turns false when the chosen one returns and
    // the stream is back on it.
    virtual bool inputFallback() const { return false; }
};

} // namespace veltra
