#pragma once

#include "dsp/AudioBackend.h"

#include <memory>

namespace veltra {

// The sound system to run on: PulseAudio (or PipeWire's PulseAudio server)
// whenever one answers, else RtAudio, which talks to ALSA or JACK directly;
// asked again at every stream opened (ServerFirstAudioBackend).
// VELTRA_AUDIO_BACKEND=rtaudio in the environment takes RtAudio only.
std::unique_ptr<AudioBackend> makeAudioBackend();

// Keeps libpulse's warnings off the user's terminal: called at the top of
// main, before any thread starts, since it sets the environment.
void quietSoundServerLog();

} // namespace veltra
