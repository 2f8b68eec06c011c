#pragma once

#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

struct sf_private_tag;

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

// Reads any format libsndfile knows (WAV, FLAC, OGG, AIFF, ...) a block at a
// time, so memory stays the same whatever the length. Several channels are
// mixed down to mono by averaging; a sample that is not a finite number
// (a damaged or hand-made float file) is read as silence, and one beyond
// full scale (a float file may hold any value) is clipped to it, so no
// later sum or square of it overflows.
class AudioFileReader {
public:
    // Throws AudioFileError when the file cannot be opened as audio. "-"
    // is standard input, read as a stream.
    explicit AudioFileReader(const std::string& path);
    ~AudioFileReader();
    AudioFileReader(AudioFileReader&&) noexcept;
    AudioFileReader& operator=(AudioFileReader&&) noexcept;

    double sampleRate() const { return sampleRate_; }
    int channels() const { return channels_; }
    // The length that can be read, in frames: what the header announces,
    // or less where the file holds less.
    long long frames() const { return frames_; }
    // The length the header announces, though the file may hold less (a
    // recording cut off in a copy or a crash): libsndfile reads only what
    // is there, and tells no more.
    long long announcedFrames() const { return announcedFrames_; }

    // Fills the front of out with the next mono samples and returns how many;
    // 0 at the end. Throws AudioFileError when the file breaks off unreadably.
    std::size_t read(std::span<float> out);

private:
    struct Closer {
        void operator()(sf_private_tag* file) const;
    };
    std::string path_;
    std::unique_ptr<sf_private_tag, Closer> file_;
    int channels_ = 0;
    double sampleRate_ = 0;
    long long frames_ = 0;
    long long announcedFrames_ = 0;
    std::vector<float> interleaved_;
};

// Reads a whole file into memory (for short files: tests and references).
AudioData readAudioFile(const std::string& path);

// How a WAV file holds its samples.
enum class WavSamples {
    // 32-bit float: every value kept as it is, NaN and beyond full scale
    // included (test signals). Its header, as libsndfile writes it, lacks the
    // size field that non-PCM formats carry, which some readers warn about.
    Float32,
    // 16-bit PCM with the plain 44-byte header that every reader takes;
    // samples beyond full scale are clipped.
    Pcm16,
};

// A WAV file's whole bytes.
std::string encodeWav(const std::vector<float>& interleaved, int channels, double sampleRate, WavSamples samples);

// Writes 32-bit float WAV; throws AudioFileError when the file cannot be written.
void writeWavFile(const std::string& path, const std::vector<float>& interleaved, int channels,
                  double sampleRate);

} // namespace veltra
