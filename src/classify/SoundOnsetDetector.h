#pragma once

#include <span>
#include <vector>

namespace veltra {

// Tells when a sound starts, from the log-mel frames the classifier computes
// anyway: a frame whose energy stands well above the quietest frame of the
// recent past. A plucked, struck, bowed or sung note rises by tens of
// decibels within a few frames, while a room's noise or a held note varies
// by a few. The stream's first frame is the floor, so a stream that begins
// in the middle of a sound has no onset there.
class SoundOnsetDetector {
public:
    // Frames are `frameSeconds` apart.
    explicit SoundOnsetDetector(double frameSeconds);

    void reset();

    // Takes the next frame (one log-mel row); true when a sound starts at it.
    bool isOnset(std::span<const float> logMel);

private:
    std::vector<float> energies_; // the last frames' energies, oldest overwritten first
    std::size_t next_ = 0;
    std::size_t count_ = 0;
    int sinceOnset_ = 0;
    bool armed_ = true;
    int refractoryFrames_;
};

} // namespace veltra
