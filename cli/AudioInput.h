#pragma once

#include "dsp/AudioFile.h"

#include <functional>
#include <span>
#include <string>

namespace veltra::cli {

// Opens an audio file for a command; any failure becomes a UsageError whose
// one line names the file and the reason.
AudioFileReader openAudio(const std::string& path);

// Audio read from a file at a time: a whole number of the patch's 64-frame
// blocks, so only the file's last block is padded.
inline constexpr std::size_t kStreamFrames = 64 * 64;

// Hands the rest of the file to process in blocks of blockFrames (the last
// one shorter), so a file of any length takes the same memory.
void streamAudio(AudioFileReader& reader, std::size_t blockFrames,
                 const std::function<void(std::span<const float>)>& process);

} // namespace veltra::cli
