#pragma once

#include <functional>
#include <span>
#include <stdexcept>

namespace veltra {

// Raised with a one-line reason when the microphone cannot be opened.
class AudioInputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A microphone stream. The callback runs on the audio system's thread with
// mono samples; it must not allocate, lock or log.
class AudioInput {
public:
    using Callback = std::function<void(std::span<const float> mono)>;

    virtual ~AudioInput() = default;

    // Opens the default input device; returns the stream's sample rate.
    // Throws AudioInputError.
    virtual double open() = 0;

    // Starts delivering audio of the opened stream. Throws AudioInputError.
    virtual void start(Callback callback) = 0;

    // Stops delivering; no callback runs after it returns.
    virtual void stop() = 0;
};

} // namespace veltra
