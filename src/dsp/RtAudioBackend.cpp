#include "dsp/RtAudioBackend.h"

#include <alsa/asoundlib.h>
#include <rtaudio/RtAudio.h>

#include <algorithm>
#include <iostream>
#include <sstream>

namespace veltra {

namespace {

// RtAudio reports stream failures through a plain function without context;
// one flag per process is enough, as the tuner runs one duplex stream.
std::atomic<bool> gStreamFailed{false};

void onStreamError(RtAudioError::Type type, const std::string&)
{
    if (type != RtAudioError::WARNING && type != RtAudioError::DEBUG_WARNING)
        gStreamFailed.store(true, std::memory_order_relaxed);
}

// The rate to run at: the asked one when the device lists it, else the
// listed rate nearest to it.
unsigned chooseRate(const RtAudio::DeviceInfo& info, unsigned wanted)
{
    const auto& rates = info.sampleRates;
    if (rates.empty() || std::find(rates.begin(), rates.end(), wanted) != rates.end())
        return wanted;
    return *std::min_element(rates.begin(), rates.end(), [wanted](unsigned a, unsigned b) {
        return (a > wanted ? a - wanted : wanted - a) < (b > wanted ? b - wanted : wanted - b);
    });
}

// The shortest buffer we ask a PulseAudio server for (256 frames, 5.3 ms at
// 48 kHz: one of the patch's readings per callback). RtAudio serves a
// PulseAudio stream with blocking reads and writes, and every buffer costs
// several thread wake-ups on both sides; at the 96 frames we might
// otherwise ask for, those wake-ups cost three times the patch itself.
// The tone's start is still within about two buffers (see docs/platform.md).
constexpr unsigned kPulseMinimumBufferFrames = 256;

void ignoreAlsaError(const char*, int, const char*, int, const char*, ...) {}

// Probing for sound servers and cards that are not there makes RtAudio and
// ALSA write several lines to standard error; the program reports the
// outcome itself, in one line. Main thread only.
class QuietProbe {
public:
    QuietProbe()
        : saved_(std::cerr.rdbuf(sink_.rdbuf()))
    {
        snd_lib_error_set_handler(&ignoreAlsaError);
    }
    ~QuietProbe() { std::cerr.rdbuf(saved_); }
    QuietProbe(const QuietProbe&) = delete;
    QuietProbe& operator=(const QuietProbe&) = delete;

private:
    std::ostringstream sink_;
    std::streambuf* saved_;
};

} // namespace

RtAudioBackend::RtAudioBackend()
{
    QuietProbe quiet;
    audio_ = std::make_unique<RtAudio>();
    audio_->showWarnings(false);
}

RtAudioBackend::~RtAudioBackend()
{
    close();
}

std::vector<AudioDevice> RtAudioBackend::devices()
{
    QuietProbe quiet;
    std::vector<AudioDevice> result;
    const unsigned count = audio_->getDeviceCount();
    for (unsigned id = 0; id < count; ++id) {
        try {
            const RtAudio::DeviceInfo info = audio_->getDeviceInfo(id);
            if (!info.probed)
                continue;
            result.push_back({id, info.name, info.inputChannels, info.outputChannels, info.isDefaultInput,
                              info.isDefaultOutput, info.sampleRates, {}});
        } catch (const RtAudioError&) {
            // A device that cannot be probed is not offered.
        }
    }
    return result;
}

std::variant<AudioStreamConfig, std::string> RtAudioBackend::open(const AudioStreamConfig& wanted,
                                                                  AudioProcessor& processor)
{
    close();
    gStreamFailed.store(false);
    QuietProbe quiet;
    try {
        const auto all = devices();
        const auto input = std::find_if(all.begin(), all.end(), [](const AudioDevice& d) {
            return d.isDefaultInput && d.inputChannels > 0;
        });
        const auto anyInput = input != all.end() ? input
                                                 : std::find_if(all.begin(), all.end(), [](const AudioDevice& d) {
                                                       return d.inputChannels > 0;
                                                   });
        if (wanted.inputChannels > 0 && anyInput == all.end())
            return std::string("no audio input device");
        const auto output = std::find_if(all.begin(), all.end(), [](const AudioDevice& d) {
            return d.isDefaultOutput && d.outputChannels > 0;
        });

        AudioStreamConfig granted = wanted;
        RtAudio::StreamParameters inParams, outParams;
        if (wanted.inputChannels > 0) {
            inParams.deviceId = anyInput->id;
            granted.inputChannels = std::min<int>(wanted.inputChannels, static_cast<int>(anyInput->inputChannels));
            inParams.nChannels = static_cast<unsigned>(granted.inputChannels);
            granted.sampleRate = static_cast<int>(chooseRate(audio_->getDeviceInfo(anyInput->id),
                                                             static_cast<unsigned>(wanted.sampleRate)));
        }
        granted.outputChannels = output == all.end()
                                     ? 0
                                     : std::min<int>(wanted.outputChannels, static_cast<int>(output->outputChannels));
        if (granted.outputChannels > 0) {
            outParams.deviceId = output->id;
            outParams.nChannels = static_cast<unsigned>(granted.outputChannels);
        }

        RtAudio::StreamOptions options;
        options.flags = RTAUDIO_MINIMIZE_LATENCY | RTAUDIO_SCHEDULE_REALTIME;
        options.numberOfBuffers = 2;
        options.streamName = "Veltra";
        unsigned bufferFrames = wanted.bufferFrames;
        if (audio_->getCurrentApi() == RtAudio::LINUX_PULSE)
            bufferFrames = std::max(bufferFrames, kPulseMinimumBufferFrames);
        processor_ = &processor;
        audio_->openStream(granted.outputChannels > 0 ? &outParams : nullptr,
                           granted.inputChannels > 0 ? &inParams : nullptr, RTAUDIO_FLOAT32,
                           static_cast<unsigned>(granted.sampleRate), &bufferFrames, &RtAudioBackend::callback, this,
                           &options, &onStreamError);
        granted.bufferFrames = bufferFrames;
        granted.sampleRate = static_cast<int>(audio_->getStreamSampleRate());
        return granted;
    } catch (const RtAudioError& e) {
        processor_ = nullptr;
        return e.getMessage();
    }
}

bool RtAudioBackend::start()
{
    if (!audio_->isStreamOpen())
        return false;
    try {
        audio_->startStream();
        return true;
    } catch (const RtAudioError&) {
        return false; // the controller stays inactive; the caller reports it
    }
}

void RtAudioBackend::stop()
{
    try {
        if (audio_->isStreamRunning())
            audio_->stopStream();
    } catch (const RtAudioError&) {
        // A stream that fails to stop is closed next anyway.
    }
}

void RtAudioBackend::close()
{
    stop();
    if (audio_->isStreamOpen())
        audio_->closeStream();
    processor_ = nullptr;
}

bool RtAudioBackend::isRunning() const
{
    return audio_->isStreamRunning();
}

bool RtAudioBackend::deviceLost() const
{
    return gStreamFailed.load(std::memory_order_relaxed);
}

int RtAudioBackend::callback(void* output, void* input, unsigned frames, double, unsigned, void* self)
{
    auto* backend = static_cast<RtAudioBackend*>(self);
    backend->processor_->process(static_cast<const float*>(input), static_cast<float*>(output), frames);
    return 0;
}

} // namespace veltra
