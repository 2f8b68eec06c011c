#pragma once

#include "dsp/AudioBackend.h"

#include <functional>
#include <optional>
#include <string>

namespace veltra {

// The program's view of the sound system's session: whether the microphone
// may be used, and the buffer duration the audio controller aims at.
//
// Linux has no record permission to ask for; an input device that can be
// opened counts as granted, none as denied.
class AudioSession {
public:
    explicit AudioSession(AudioBackend& backend);

    // Calls back once, synchronously, with the answer.
    void requestRecordPermission(const std::function<void(bool granted)>& callback);

    // Returns the error text when the duration cannot be used.
    std::optional<std::string> setPreferredIOBufferDuration(double seconds);
    double preferredIOBufferDuration() const { return preferredIOBufferDuration_; }

private:
    AudioBackend& backend_;
    double preferredIOBufferDuration_ = kDefaultIOBufferDuration;

    // What the sound server typically runs at when the program asks nothing.
    static constexpr double kDefaultIOBufferDuration = 0.0232;
};

} // namespace veltra
