#pragma once

#include <string>

namespace veltra {

// Receives the floats that the patch sends to a subscribed name.
// Always called on the main thread.
class PdListener {
public:
    virtual ~PdListener() = default;
    virtual void receiveFloat(float value, const std::string& source) = 0;
};

// What libpd hands to the program: every float of every subscribed send,
// and the lines Pd prints. Called on the main thread when messages are polled.
class PdReceiverDelegate {
public:
    virtual ~PdReceiverDelegate() = default;
    virtual void receiveFloat(float value, const std::string& source) = 0;
    virtual void receivePrint(const std::string& message) = 0;
};

} // namespace veltra
