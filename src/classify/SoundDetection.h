#pragma once

#include <string>

namespace veltra {

// What the readout asks the sound classifier gate, from the main thread:
// is an accepted kind of sound being heard, and which category it is.
class SoundDetection {
public:
    virtual ~SoundDetection() = default;
    virtual bool isSoundDetected() const = 0;
    virtual std::string currentSound() const = 0;
};

} // namespace veltra
