#include "classify/RtAudioInput.h"

#include <rtaudio/RtAudio.h>

#include <algorithm>

namespace veltra {

RtAudioInput::RtAudioInput() = default;

RtAudioInput::~RtAudioInput()
{
    stop();
}

double RtAudioInput::open()
{
    try {
        audio_ = std::make_unique<RtAudio>();
        audio_->showWarnings(false);
        if (audio_->getDeviceCount() == 0)
            throw AudioInputError("no audio input device");
        const unsigned device = audio_->getDefaultInputDevice();
        const RtAudio::DeviceInfo info = audio_->getDeviceInfo(device);
        if (info.inputChannels == 0)
            throw AudioInputError("the default device has no input channels");
        RtAudio::StreamParameters parameters;
        parameters.deviceId = device;
        parameters.nChannels = std::min(info.inputChannels, 2u);
        channels_ = parameters.nChannels;
        const unsigned rate = info.preferredSampleRate != 0 ? info.preferredSampleRate : kFallbackSampleRate;
        unsigned frames = kBufferFrames;
        audio_->openStream(nullptr, &parameters, RTAUDIO_FLOAT32, rate, &frames, &RtAudioInput::onAudio, this);
        // Sized for the buffer the backend settled on, so the callback never
        // allocates; anything longer than agreed is cut.
        mono_.assign(frames, 0.0f);
        return audio_->getStreamSampleRate();
    } catch (const RtAudioError& error) {
        audio_.reset();
        throw AudioInputError(error.getMessage());
    }
}

void RtAudioInput::start(Callback callback)
{
    if (!audio_)
        throw AudioInputError("the input stream is not open");
    callback_ = std::move(callback);
    try {
        audio_->startStream();
    } catch (const RtAudioError& error) {
        throw AudioInputError(error.getMessage());
    }
}

void RtAudioInput::stop()
{
    if (!audio_)
        return;
    try {
        if (audio_->isStreamRunning())
            audio_->stopStream();
        if (audio_->isStreamOpen())
            audio_->closeStream();
    } catch (const RtAudioError&) {
        // Closing a stream whose device has gone leaves nothing to recover.
    }
    audio_.reset();
}

int RtAudioInput::onAudio(void*, void* input, unsigned frames, double, unsigned, void* user)
{
    auto* self = static_cast<RtAudioInput*>(user);
    if (input == nullptr)
        return 0;
    const auto* samples = static_cast<const float*>(input);
    frames = std::min<unsigned>(frames, static_cast<unsigned>(self->mono_.size()));
    if (self->channels_ == 1) {
        self->callback_(std::span<const float>(samples, frames));
        return 0;
    }
    for (unsigned i = 0; i < frames; ++i)
        self->mono_[i] = 0.5f * (samples[2 * i] + samples[2 * i + 1]);
    self->callback_(std::span<const float>(self->mono_.data(), frames));
    return 0;
}

} // namespace veltra
