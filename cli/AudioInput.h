#pragma once

#include "dsp/AudioFile.h"

#include <string>

namespace veltra::cli {

// Reads an audio file for a command; any failure becomes a UsageError whose
// one line names the file and the reason.
AudioData loadAudio(const std::string& path);

} // namespace veltra::cli
