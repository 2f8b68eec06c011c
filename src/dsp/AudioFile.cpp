#include "dsp/AudioFile.h"

#include <sndfile.h>

#include <memory>

namespace veltra {

namespace {

struct SndfileCloser {
    void operator()(SNDFILE* f) const { sf_close(f); }
};
using SndfilePtr = std::unique_ptr<SNDFILE, SndfileCloser>;

} // namespace

AudioData readAudioFile(const std::string& path)
{
    SF_INFO info{};
    SndfilePtr file(sf_open(path.c_str(), SFM_READ, &info));
    if (!file)
        throw AudioFileError(path + ": not an audio file that can be read (" + sf_strerror(nullptr) + ")");
    if (info.channels < 1 || info.samplerate < 1)
        throw AudioFileError(path + ": no audio channels");

    AudioData data;
    data.sampleRate = info.samplerate;
    data.samples.reserve(static_cast<std::size_t>(info.frames));
    constexpr sf_count_t kChunkFrames = 4096;
    std::vector<float> chunk(static_cast<std::size_t>(kChunkFrames * info.channels));
    for (;;) {
        const sf_count_t frames = sf_readf_float(file.get(), chunk.data(), kChunkFrames);
        if (frames <= 0)
            break;
        for (sf_count_t i = 0; i < frames; ++i) {
            float sum = 0;
            for (int c = 0; c < info.channels; ++c)
                sum += chunk[static_cast<std::size_t>(i * info.channels + c)];
            data.samples.push_back(sum / static_cast<float>(info.channels));
        }
    }
    if (sf_error(file.get()) != SF_ERR_NO_ERROR)
        throw AudioFileError(path + ": " + sf_strerror(file.get()));
    return data;
}

void writeWavFile(const std::string& path, const std::vector<float>& interleaved, int channels,
                  double sampleRate)
{
    SF_INFO info{};
    info.channels = channels;
    info.samplerate = static_cast<int>(sampleRate);
    info.format = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    SndfilePtr file(sf_open(path.c_str(), SFM_WRITE, &info));
    if (!file)
        throw AudioFileError(path + ": cannot be written (" + sf_strerror(nullptr) + ")");
    const sf_count_t frames = static_cast<sf_count_t>(interleaved.size()) / channels;
    if (sf_writef_float(file.get(), interleaved.data(), frames) != frames)
        throw AudioFileError(path + ": " + sf_strerror(file.get()));
}

} // namespace veltra
