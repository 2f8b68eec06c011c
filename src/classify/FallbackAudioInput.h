#pragma once

#include "classify/AudioInput.h"

#include <memory>

namespace veltra {

// The first of two inputs that opens: where the sound system cannot open the
// microphone a second time, the second input (a tap on the tuner's own
// stream) takes over. When neither opens, the second one's reason is given.
class FallbackAudioInput : public AudioInput {
public:
    FallbackAudioInput(std::unique_ptr<AudioInput> preferred, std::unique_ptr<AudioInput> fallback);

    double open() override;
    void start(Callback callback) override;
    void stop() override;

private:
    std::unique_ptr<AudioInput> preferred_;
    std::unique_ptr<AudioInput> fallback_;
    AudioInput* opened_ = nullptr;
};

} // namespace veltra
