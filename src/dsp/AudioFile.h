#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace veltra {

// Mono audio at its own sample rate.
struct AudioData {
    std::vector<float> samples;
    double sampleRate = 0;
};

// Raised with a one-line reason when a file cannot be read as audio.
class AudioFileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Reads any format libsndfile knows (WAV, FLAC, OGG, AIFF, ...); several
// channels are mixed down to mono by averaging.
AudioData readAudioFile(const std::string& path);

// Writes 32-bit float WAV; throws AudioFileError when the file cannot be written.
void writeWavFile(const std::string& path, const std::vector<float>& interleaved, int channels,
                  double sampleRate);

} // namespace veltra
