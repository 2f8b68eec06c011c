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

} // namespace veltra
