#include "classify/FallbackAudioInput.h"

namespace veltra {

FallbackAudioInput::FallbackAudioInput(std::unique_ptr<AudioInput> preferred, std::unique_ptr<AudioInput> fallback)
    : preferred_(std::move(preferred))
    , fallback_(std::move(fallback))
{
}

double FallbackAudioInput::open()
{
    try {
        const double rate = preferred_->open();
        opened_ = preferred_.get();
        return rate;
    } catch (const AudioInputError&) {
        const double rate = fallback_->open();
        opened_ = fallback_.get();
        return rate;
    }
}

void FallbackAudioInput::start(Callback callback)
{
    if (!opened_)
        throw AudioInputError("the input was not opened");
    if (opened_ == fallback_.get()) {
        fallback_->start(std::move(callback));
        return;
    }
    try {
        preferred_->start(callback);
    } catch (const AudioInputError&) {
        // Opened but would not run: the device is busy after all.
        preferred_->stop();
        fallback_->open();
        opened_ = fallback_.get();
        fallback_->start(std::move(callback));
    }
}

void FallbackAudioInput::stop()
{
    if (opened_)
        opened_->stop();
}

} // namespace veltra
