#pragma once

#include "dsp/AudioBackend.h"

#include <memory>

namespace veltra {

// The sound system to run on: PulseAudio (or PipeWire's PulseAudio server)
// when one answers, else RtAudio, which talks to ALSA or JACK directly.
std::unique_ptr<AudioBackend> makeAudioBackend();

} // namespace veltra
