#pragma once

#include "classify/AudioInput.h"
#include "dsp/PdAudioController.h"

#include <functional>

namespace veltra {

// The sound classifier's microphone, borrowed from the tuner's own audio
// stream: for sound systems that cannot open the input device twice.
class PdInputTap : public AudioInput, private AudioInputTap {
public:
    // The controller is looked up when the input opens: it exists once audio
    // has been started.
    explicit PdInputTap(std::function<PdAudioController*()> controller);
    ~PdInputTap() override;

    double open() override;
    void start(Callback callback) override;
    void stop() override;

private:
    void tapInput(std::span<const float> mono) noexcept override;

    std::function<PdAudioController*()> controller_;
    PdAudioController* tapped_ = nullptr;
    Callback callback_;
};

} // namespace veltra
