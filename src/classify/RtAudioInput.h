#pragma once

#include "classify/AudioInput.h"

#include <memory>
#include <vector>

class RtAudio;

namespace veltra {

// The default input device through RtAudio: a stream of its own, beside the
// one that feeds the pitch patch.
class RtAudioInput : public AudioInput {
public:
    // The rate asked for when the device does not name a preferred one.
    static constexpr unsigned kFallbackSampleRate = 48000;
    // Frames per callback asked of the device; the classifier takes whatever
    // size arrives, this only keeps wake-ups rare.
    static constexpr unsigned kBufferFrames = 2048;

    RtAudioInput();
    ~RtAudioInput() override;

    double open() override;
    void start(Callback callback) override;
    void stop() override;

private:
    static int onAudio(void* output, void* input, unsigned frames, double time, unsigned status, void* user);

    std::unique_ptr<RtAudio> audio_;
    Callback callback_;
    unsigned channels_ = 1;
    std::vector<float> mono_;
};

} // namespace veltra
