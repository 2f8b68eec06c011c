#pragma once

#include <string_view>

namespace veltra {

// Messages from the program to named receivers of the open patch.
// Safe to call from the main thread while the audio thread processes.
class PdSender {
public:
    virtual ~PdSender() = default;
    virtual void sendFloat(float value, std::string_view receiver) = 0;
    virtual void sendBang(std::string_view receiver) = 0;
};

} // namespace veltra
