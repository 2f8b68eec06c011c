#pragma once

#include "dsp/AudioFile.h"

#include <functional>
#include <memory>
#include <span>
#include <string>

namespace veltra {
class Resampler;
}

namespace veltra::cli {

// The bounds within which a file is taken as audio. The patch's analysers
// are laid out for 8 to 192 kHz; a rate outside that yet within the file
// bounds is converted (up to 48 kHz, down to 96 kHz) before the patch hears
// it, and a rate outside the file bounds, or more channels or a longer
// recording than these, is refused with a one-line reason.
inline constexpr double kLowestFileRate = 1000;
inline constexpr double kHighestFileRate = 768000;
inline constexpr double kLowestPatchRate = 8000;
inline constexpr double kHighestPatchRate = 192000;
inline constexpr int kRaisedRate = 48000;
inline constexpr int kLoweredRate = 96000;
inline constexpr int kMostChannels = 64;
inline constexpr double kLongestSeconds = 24 * 3600;

// An audio file opened for a command, checked against the bounds above;
// "-" is standard input, in any format that can be read as a stream.
// Any failure, on opening or later, becomes a UsageError whose one line
// names the file and the reason.
class AudioInput {
public:
    explicit AudioInput(const std::string& path);
    ~AudioInput();
    AudioInput(AudioInput&&) noexcept;

    // The rate the engine runs at: the file's own, or the one it is
    // converted to.
    double sampleRate() const;
    double fileRate() const { return reader_.sampleRate(); }

    // Hands the file to process in blocks of blockFrames (the last one
    // shorter), so a file of any length takes the same memory. A file that
    // ends before its header's length (cut off, or shrinking while read) is
    // a UsageError once what it held has been handed on.
    void stream(std::size_t blockFrames, const std::function<void(std::span<const float>)>& process);

private:
    std::string path_;
    AudioFileReader reader_;
    std::unique_ptr<Resampler> resampler_;
    int engineRate_ = 0;
};

// Audio read from a file at a time: a whole number of the patch's 64-frame
// blocks, so only the file's last block is padded.
inline constexpr std::size_t kStreamFrames = 64 * 64;

} // namespace veltra::cli
