#include "dsp/AudioBackendFactory.h"

#include "dsp/PulseAudioBackend.h"
#include "dsp/RtAudioBackend.h"
#include "dsp/ServerFirstAudioBackend.h"

#include <cstdlib>
#include <string_view>

namespace veltra {

std::unique_ptr<AudioBackend> makeAudioBackend()
{
    // bench/app-cpu.sh measures the fallback next to the default this way.
    const char* forced = std::getenv("VELTRA_AUDIO_BACKEND");
    if (forced && std::string_view(forced) == "rtaudio")
        return std::make_unique<RtAudioBackend>();
    return std::make_unique<ServerFirstAudioBackend>(PulseAudioBackend::make(),
                                                     [] { return std::make_unique<RtAudioBackend>(); });
}

void quietSoundServerLog()
{
    // libpulse writes its warnings to standard error, among them a few
    // lines about its cookie file whenever the configuration directory
    // cannot be written (a read-only home, a sandbox). They say nothing a
    // tuner's user can act on, so only its errors are shown (PULSE_LOG=0),
    // unless the user has chosen a level of their own. libpulse reads the
    // variable once, at its first message; there is no public call for it.
    ::setenv("PULSE_LOG", "0", 0);
}

} // namespace veltra
