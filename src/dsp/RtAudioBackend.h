#pragma once

#include "dsp/AudioBackend.h"

#include <atomic>
#include <memory>

class RtAudio;

namespace veltra {

// The audio back end over RtAudio: duplex stream on the default devices,
// float samples, the shortest buffer the device accepts near the request.
class RtAudioBackend : public AudioBackend {
public:
    RtAudioBackend();
    ~RtAudioBackend() override;

    std::vector<AudioDevice> devices() override;
    std::variant<AudioStreamConfig, std::string> open(const AudioStreamConfig& wanted,
                                                      AudioProcessor& processor) override;
    bool start() override;
    void stop() override;
    void close() override;
    bool isRunning() const override;
    bool deviceLost() const override;

private:
    static int callback(void* output, void* input, unsigned frames, double streamTime, unsigned status,
                        void* self);

    std::unique_ptr<RtAudio> audio_;
    AudioProcessor* processor_ = nullptr;
};

} // namespace veltra
