#include "app/PdInputTap.h"

namespace veltra {

PdInputTap::PdInputTap(std::function<PdAudioController*()> controller)
    : controller_(std::move(controller))
{
}

PdInputTap::~PdInputTap()
{
    stop();
}

double PdInputTap::open()
{
    PdAudioController* controller = controller_ ? controller_() : nullptr;
    if (!controller || !controller->stream() || controller->stream()->inputChannels < 1)
        throw AudioInputError("the tuner's own audio stream has no microphone");
    return controller->stream()->sampleRate;
}

void PdInputTap::start(Callback callback)
{
    PdAudioController* controller = controller_ ? controller_() : nullptr;
    if (!controller)
        throw AudioInputError("the tuner's own audio stream is not running");
    stop();
    callback_ = std::move(callback);
    tapped_ = controller;
    tapped_->setInputTap(this);
}

void PdInputTap::stop()
{
    if (tapped_)
        tapped_->setInputTap(nullptr);
    tapped_ = nullptr;
}

void PdInputTap::tapInput(std::span<const float> mono) noexcept
{
    callback_(mono);
}

} // namespace veltra
