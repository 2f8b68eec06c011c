#include "dsp/AudioSession.h"

#include <algorithm>
#include <cmath>

namespace veltra {

namespace {
// A buffer duration outside this range is no sensible request for live audio.
constexpr double kShortestIOBufferDuration = 0.0005;
constexpr double kLongestIOBufferDuration = 0.5;
} // namespace

AudioSession::AudioSession(AudioBackend& backend)
    : backend_(backend)
{
}

void AudioSession::requestRecordPermission(const std::function<void(bool granted)>& callback)
{
    const auto devices = backend_.devices();
    callback(std::any_of(devices.begin(), devices.end(), [](const AudioDevice& d) { return d.inputChannels > 0; }));
}

std::optional<std::string> AudioSession::setPreferredIOBufferDuration(double seconds)
{
    if (!std::isfinite(seconds) || seconds < kShortestIOBufferDuration || seconds > kLongestIOBufferDuration)
        return "buffer duration " + std::to_string(seconds) + " s is out of range";
    preferredIOBufferDuration_ = seconds;
    return std::nullopt;
}

} // namespace veltra
