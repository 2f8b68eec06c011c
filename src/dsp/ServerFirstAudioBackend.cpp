#include "dsp/ServerFirstAudioBackend.h"

namespace veltra {

ServerFirstAudioBackend::ServerFirstAudioBackend(std::unique_ptr<AudioBackend> server, Factory makeDirect)
    : server_(std::move(server))
    , makeDirect_(std::move(makeDirect))
{
}

AudioBackend& ServerFirstAudioBackend::chosen()
{
    if (server_ && server_->reachable())
        return *server_;
    if (!direct_)
        direct_ = makeDirect_();
    return *direct_;
}

std::vector<AudioDevice> ServerFirstAudioBackend::devices()
{
    return chosen().devices();
}

std::variant<AudioStreamConfig, std::string> ServerFirstAudioBackend::open(const AudioStreamConfig& wanted,
                                                                           AudioProcessor& processor)
{
    close();
    current_ = &chosen();
    return current_->open(wanted, processor);
}

bool ServerFirstAudioBackend::start()
{
    return current_ && current_->start();
}

void ServerFirstAudioBackend::stop()
{
    if (current_)
        current_->stop();
}

void ServerFirstAudioBackend::close()
{
    if (current_)
        current_->close();
}

bool ServerFirstAudioBackend::isRunning() const
{
    return current_ && current_->isRunning();
}

bool ServerFirstAudioBackend::deviceLost() const
{
    return current_ && current_->deviceLost();
}

// Only the server knows inputs by a lasting name; the direct way records
// from the default.
void ServerFirstAudioBackend::chooseInput(const std::string& identifier)
{
    if (server_)
        server_->chooseInput(identifier);
}

bool ServerFirstAudioBackend::inputFallback() const
{
    return current_ && current_->inputFallback();
}

} // namespace veltra
