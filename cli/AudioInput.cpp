#include "AudioInput.h"

#include "Command.h"
#include "classify/Resampler.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string_view>
#include <vector>

namespace veltra::cli {

namespace {

// libmpg123, which libsndfile decodes MP3 with, prints its notes on a
// damaged file straight to standard error, a line per bad frame. While a
// file is opened or read, standard error goes to /dev/null instead, so the
// tool's own one line is all a user sees.
class QuietStandardError {
public:
    QuietStandardError()
    {
        std::fflush(stderr);
        saved_ = ::dup(STDERR_FILENO);
        const int null = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        if (saved_ >= 0 && null >= 0)
            ::dup2(null, STDERR_FILENO);
        if (null >= 0)
            ::close(null);
    }
    ~QuietStandardError()
    {
        if (saved_ < 0)
            return;
        ::dup2(saved_, STDERR_FILENO);
        ::close(saved_);
    }
    QuietStandardError(const QuietStandardError&) = delete;
    QuietStandardError& operator=(const QuietStandardError&) = delete;

private:
    int saved_ = -1;
};

// The filter of a conversion between two odd rates can take more memory
// than the work is worth: a file at such a rate is refused instead.
constexpr std::size_t kMostResamplerCoefficients = std::size_t{1} << 20;

std::string hertz(double rate)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.0f Hz", rate);
    return text;
}

// A pipe is read only forward, and libsndfile's FLAC decoder must go back
// over the stream's start, so a FLAC on a pipe is refused by name rather
// than with the decoder's complaint. Its first bytes are looked at with
// tee(2), which copies them out of the pipe without taking them: libsndfile
// still reads the stream from its start. Standard input that is no pipe (a
// file, which can be sought) gives tee nothing to do; so does a first write
// shorter than the marker, which libsndfile then judges alone.
void refuseUnstreamable()
{
    constexpr std::string_view kFlacMarker = "fLaC";
    int copy[2];
    if (::pipe2(copy, O_CLOEXEC) < 0)
        return;
    std::string start(kFlacMarker.size(), '\0');
    const ssize_t copied = ::tee(STDIN_FILENO, copy[1], start.size(), 0);
    const ssize_t got = copied > 0 ? ::read(copy[0], start.data(), static_cast<std::size_t>(copied)) : 0;
    ::close(copy[0]);
    ::close(copy[1]);
    if (got == static_cast<ssize_t>(kFlacMarker.size()) && start == kFlacMarker)
        throw UsageError("-: FLAC cannot be read from a pipe; give it as a file");
}

AudioFileReader openReader(const std::string& path)
{
    if (path == "-")
        refuseUnstreamable();
    else
        checkInputFile(path);
    try {
        const QuietStandardError quiet;
        return AudioFileReader(path);
    } catch (const AudioFileError& e) {
        throw UsageError(e.what());
    }
}

} // namespace

void checkInputFile(const std::string& path)
{
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status))
        throw UsageError(path + ": no such file");
    if (std::filesystem::is_directory(status))
        throw UsageError(path + ": is a directory");
    if (!std::ifstream(path))
        throw UsageError(path + ": cannot be read (permission denied)");
}

AudioInput::AudioInput(const std::string& path)
    : path_(path)
    , reader_(openReader(path))
{
    const double rate = reader_.sampleRate();
    if (rate < kLowestFileRate || rate > kHighestFileRate)
        throw UsageError(path + ": a sample rate of " + hertz(rate) + " is outside " + hertz(kLowestFileRate) +
                         " to " + hertz(kHighestFileRate));
    if (reader_.channels() > kMostChannels)
        throw UsageError(path + ": " + std::to_string(reader_.channels()) + " channels, more than the " +
                         std::to_string(kMostChannels) + " that are read");
    if (reader_.frames() <= 0)
        throw UsageError(path + ": contains no audio");
    // A stream of unknown length announces the largest count there is; the
    // bound is then kept while reading.
    const bool lengthKnown = reader_.frames() != std::numeric_limits<long long>::max();
    if (lengthKnown && static_cast<double>(reader_.frames()) > kLongestSeconds * rate)
        throw UsageError(path + ": longer than the 24 hours that are read");
    if (rate >= kLowestPatchRate && rate <= kHighestPatchRate) {
        engineRate_ = static_cast<int>(rate);
        return;
    }
    engineRate_ = rate < kLowestPatchRate ? kRaisedRate : kLoweredRate;
    if (Resampler::coefficients(rate, engineRate_) > kMostResamplerCoefficients)
        throw UsageError(path + ": a sample rate of " + hertz(rate) +
                         " that cannot be converted here; convert the file to 48000 Hz first");
    resampler_ = std::make_unique<Resampler>(rate, engineRate_);
}

AudioInput::~AudioInput() = default;
AudioInput::AudioInput(AudioInput&&) noexcept = default;

double AudioInput::sampleRate() const
{
    return engineRate_;
}

void AudioInput::stream(std::size_t blockFrames, const std::function<void(std::span<const float>)>& process)
{
    std::vector<float> block(blockFrames);
    // Converted audio collects here until it fills a block.
    std::vector<float> converted;
    const auto handOn = [&](bool last) {
        std::size_t used = 0;
        while (converted.size() - used >= blockFrames || (last && used < converted.size())) {
            const std::size_t n = std::min(blockFrames, converted.size() - used);
            process(std::span<const float>(converted).subspan(used, n));
            used += n;
        }
        converted.erase(converted.begin(), converted.begin() + static_cast<std::ptrdiff_t>(used));
    };
    // A header may announce less than the file holds; the bound stands.
    const auto mostFrames = static_cast<long long>(kLongestSeconds * reader_.sampleRate());
    long long frames = 0;
    try {
        for (;;) {
            std::size_t n = 0;
            {
                const QuietStandardError quiet;
                n = reader_.read(block);
            }
            if (n == 0 || frames >= mostFrames)
                break;
            frames += static_cast<long long>(n);
            const std::span<const float> samples(block.data(), n);
            if (!resampler_) {
                process(samples);
                continue;
            }
            resampler_->process(samples, converted);
            handOn(false);
        }
    } catch (const AudioFileError& e) {
        throw UsageError(e.what());
    }
    if (resampler_) {
        // The filter's last outputs wait for input past the end: silence.
        const auto expected = static_cast<std::size_t>(static_cast<double>(frames) * engineRate_ / reader_.sampleRate());
        const std::vector<float> silence(blockFrames, 0.0f);
        while (resampler_->produced() < expected)
            resampler_->process(silence, converted);
        const std::size_t beyond = std::min(resampler_->produced() - expected, converted.size());
        converted.resize(converted.size() - beyond);
        handOn(true);
    }
    // A stream of unknown length announces the largest count there is.
    const long long announced = reader_.announcedFrames();
    if (frames < mostFrames && announced != std::numeric_limits<long long>::max() && frames < announced) {
        char told[96];
        std::snprintf(told, sizeof told, ": ends after %.1f s of the %.1f s its header declares",
                      static_cast<double>(frames) / reader_.sampleRate(), static_cast<double>(announced) / reader_.sampleRate());
        throw UsageError(path_ + told);
    }
}

} // namespace veltra::cli
