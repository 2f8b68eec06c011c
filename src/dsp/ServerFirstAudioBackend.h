#pragma once

#include "dsp/AudioBackend.h"

#include <functional>
#include <memory>

namespace veltra {

// The sound server while one answers, else the direct way to the sound card,
// chosen afresh at every open(). A tuner started before the server (at
// login, before the session's server is up; after a crash) so moves onto it
// once it runs, through the same retries that reopen a lost stream, instead
// of staying with the direct way that found nothing. A direct stream that
// does run is kept until it is closed.
class ServerFirstAudioBackend : public AudioBackend {
public:
    using Factory = std::function<std::unique_ptr<AudioBackend>()>;

    // The direct back end is made the first time the server does not answer.
    ServerFirstAudioBackend(std::unique_ptr<AudioBackend> server, Factory makeDirect);

    std::vector<AudioDevice> devices() override;
    std::variant<AudioStreamConfig, std::string> open(const AudioStreamConfig& wanted,
                                                      AudioProcessor& processor) override;
    bool start() override;
    void stop() override;
    void close() override;
    bool isRunning() const override;
    bool deviceLost() const override;
    void chooseInput(const std::string& identifier) override;
    bool inputFallback() const override;

    // The back end the last open() used; null before the first.
    const AudioBackend* current() const { return current_; }

private:
    AudioBackend& chosen();

    std::unique_ptr<AudioBackend> server_;
    Factory makeDirect_;
    std::unique_ptr<AudioBackend> direct_;
    AudioBackend* current_ = nullptr;
};

} // namespace veltra
