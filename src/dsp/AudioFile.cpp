#include "dsp/AudioFile.h"

#include "dsp/FiniteSamples.h"

#include <sndfile.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <optional>
#include <string_view>

namespace veltra {

namespace {

// Frames asked of libsndfile at a time: big enough that the library's own
// overhead vanishes, small enough to stay in the cache.
constexpr std::size_t kReadFrames = 4096;

std::uint32_t littleEndian(const char* bytes, int size)
{
    std::uint32_t value = 0;
    for (int i = size - 1; i >= 0; --i)
        value = value << 8 | static_cast<unsigned char>(bytes[i]);
    return value;
}

// The frames a WAV file's data chunk announces, found by walking the
// chunks that lead to it; nothing when the header cannot tell (another
// format, a chunk layout past the first 64 KiB).
std::optional<long long> announcedWavFrames(const std::string& path)
{
    constexpr std::size_t kHeaderBytes = 64 * 1024;
    std::ifstream in(path, std::ios::binary);
    std::string header(kHeaderBytes, '\0');
    in.read(header.data(), static_cast<std::streamsize>(header.size()));
    header.resize(static_cast<std::size_t>(in.gcount()));
    if (header.size() < 12 || header.compare(0, 4, "RIFF") != 0 || header.compare(8, 4, "WAVE") != 0)
        return std::nullopt;
    std::uint32_t blockAlign = 0;
    for (std::size_t at = 12; at + 8 <= header.size();) {
        const std::string_view id(header.data() + at, 4);
        const std::uint32_t size = littleEndian(header.data() + at + 4, 4);
        if (id == "fmt " && at + 8 + 14 <= header.size())
            blockAlign = littleEndian(header.data() + at + 8 + 12, 2);
        if (id == "data")
            return blockAlign > 0 ? std::optional(static_cast<long long>(size / blockAlign)) : std::nullopt;
        at += 8 + std::size_t{size} + (size & 1);
    }
    return std::nullopt;
}

} // namespace

void AudioFileReader::Closer::operator()(SNDFILE* file) const
{
    sf_close(file);
}

AudioFileReader::AudioFileReader(const std::string& path)
    : path_(path)
{
    SF_INFO info{};
    file_.reset(sf_open(path.c_str(), SFM_READ, &info));
    if (!file_)
        throw AudioFileError(path + ": not an audio file that can be read (" + sf_strerror(nullptr) + ")");
    if (info.channels < 1 || info.samplerate < 1)
        throw AudioFileError(path + ": no audio channels");
    channels_ = info.channels;
    sampleRate_ = info.samplerate;
    frames_ = info.frames;
    // Standard input's header has been read by libsndfile and cannot be read again.
    const bool wavFile = path != "-" && (info.format & SF_FORMAT_TYPEMASK) == SF_FORMAT_WAV;
    announcedFrames_ = std::max(frames_, wavFile ? announcedWavFrames(path).value_or(frames_) : frames_);
    interleaved_.resize(kReadFrames * static_cast<std::size_t>(channels_));
}

AudioFileReader::~AudioFileReader() = default;
AudioFileReader::AudioFileReader(AudioFileReader&&) noexcept = default;
AudioFileReader& AudioFileReader::operator=(AudioFileReader&&) noexcept = default;

std::size_t AudioFileReader::read(std::span<float> out)
{
    std::size_t done = 0;
    while (done < out.size()) {
        const auto want = static_cast<sf_count_t>(std::min(kReadFrames, out.size() - done));
        const sf_count_t got = sf_readf_float(file_.get(), interleaved_.data(), want);
        if (got <= 0)
            break;
        for (sf_count_t i = 0; i < got; ++i) {
            float sum = 0;
            for (int c = 0; c < channels_; ++c)
                sum += std::clamp(finiteOrSilence(interleaved_[static_cast<std::size_t>(i * channels_ + c)]), -1.0f, 1.0f);
            out[done++] = sum / static_cast<float>(channels_);
        }
    }
    if (sf_error(file_.get()) != SF_ERR_NO_ERROR)
        throw AudioFileError(path_ + ": " + sf_strerror(file_.get()));
    return done;
}

AudioData readAudioFile(const std::string& path)
{
    AudioFileReader reader(path);
    AudioData data;
    data.sampleRate = reader.sampleRate();
    // The header's length is not trusted with an allocation: a damaged file
    // may announce far more than it holds.
    std::vector<float> block(kReadFrames);
    while (const std::size_t n = reader.read(block))
        data.samples.insert(data.samples.end(), block.begin(), block.begin() + static_cast<std::ptrdiff_t>(n));
    return data;
}

namespace {

// A file in memory for libsndfile to write into, seeking back to finish
// the header as it does on disk.
struct MemoryFile {
    std::string bytes;
    sf_count_t position = 0;

    static MemoryFile& of(void* user) { return *static_cast<MemoryFile*>(user); }
    static sf_count_t length(void* user) { return static_cast<sf_count_t>(of(user).bytes.size()); }
    static sf_count_t seek(sf_count_t offset, int whence, void* user)
    {
        MemoryFile& f = of(user);
        const sf_count_t base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? f.position : length(user);
        if (base + offset < 0)
            return -1;
        f.position = base + offset;
        return f.position;
    }
    static sf_count_t read(void* out, sf_count_t count, void* user)
    {
        MemoryFile& f = of(user);
        const sf_count_t n = std::clamp<sf_count_t>(length(user) - f.position, 0, count);
        std::memcpy(out, f.bytes.data() + f.position, static_cast<std::size_t>(n));
        f.position += n;
        return n;
    }
    static sf_count_t write(const void* in, sf_count_t count, void* user)
    {
        MemoryFile& f = of(user);
        const auto end = static_cast<std::size_t>(f.position + count);
        if (end > f.bytes.size())
            f.bytes.resize(end);
        std::memcpy(f.bytes.data() + f.position, in, static_cast<std::size_t>(count));
        f.position += count;
        return count;
    }
    static sf_count_t tell(void* user) { return of(user).position; }
};

} // namespace

std::string encodeWav(const std::vector<float>& interleaved, int channels, double sampleRate, WavSamples samples)
{
    SF_INFO info{};
    info.channels = channels;
    info.samplerate = static_cast<int>(sampleRate);
    info.format = SF_FORMAT_WAV | (samples == WavSamples::Pcm16 ? SF_FORMAT_PCM_16 : SF_FORMAT_FLOAT);
    SF_VIRTUAL_IO io{MemoryFile::length, MemoryFile::seek, MemoryFile::read, MemoryFile::write, MemoryFile::tell};
    MemoryFile memory;
    {
        std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> file(sf_open_virtual(&io, SFM_WRITE, &info, &memory), sf_close);
        if (!file)
            throw AudioFileError(std::string("cannot make a WAV file (") + sf_strerror(nullptr) + ")");
        // Without clipping, libsndfile wraps a sample beyond full scale
        // around to the opposite sign: a loud click.
        sf_command(file.get(), SFC_SET_CLIPPING, nullptr, SF_TRUE);
        const sf_count_t frames = static_cast<sf_count_t>(interleaved.size()) / channels;
        if (sf_writef_float(file.get(), interleaved.data(), frames) != frames)
            throw AudioFileError(std::string("cannot make a WAV file (") + sf_strerror(file.get()) + ")");
    }
    return std::move(memory.bytes);
}

void writeWavFile(const std::string& path, const std::vector<float>& interleaved, int channels,
                  double sampleRate)
{
    const std::string bytes = encodeWav(interleaved, channels, sampleRate, WavSamples::Float32);
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        throw AudioFileError(path + ": cannot be written");
}

} // namespace veltra
