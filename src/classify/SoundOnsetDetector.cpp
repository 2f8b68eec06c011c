#include "classify/SoundOnsetDetector.h"

#include <algorithm>
#include <cmath>

namespace veltra {

namespace {

// How far back the floor looks: long enough to reach back past a note's
// attack (bowed and sung notes take up to a few tenths of a second to
// swell), short enough that the decayed tail of the previous note is the
// floor a new pluck rises from.
constexpr double kFloorSeconds = 0.5;
// The rise that counts as a start, in natural-log units of the summed mel
// magnitudes: 1.4 is about 12 dB, far above a room's flutter (2–3 dB) and
// below any note played to be tuned.
constexpr float kRise = 1.4f;
// A new start at least this long after the last: the frames of one attack
// cross the threshold only once, but a rattle could cross it again.
constexpr double kRefractorySeconds = 0.12;

// The frame's energy: the log of its summed mel magnitudes (the rows are
// logs), computed from the largest band so that nothing overflows.
float energy(std::span<const float> logMel)
{
    const float top = *std::max_element(logMel.begin(), logMel.end());
    float sum = 0;
    for (float value : logMel)
        sum += std::exp(value - top);
    return top + std::log(sum);
}

} // namespace

SoundOnsetDetector::SoundOnsetDetector(double frameSeconds)
    : energies_(static_cast<std::size_t>(std::lround(kFloorSeconds / frameSeconds)))
    , refractoryFrames_(static_cast<int>(std::lround(kRefractorySeconds / frameSeconds)))
{
}

void SoundOnsetDetector::reset()
{
    next_ = 0;
    count_ = 0;
    sinceOnset_ = refractoryFrames_;
    armed_ = true;
}

bool SoundOnsetDetector::isOnset(std::span<const float> logMel)
{
    const float e = energy(logMel);
    bool onset = false;
    if (count_ > 0) {
        const float floor = *std::min_element(energies_.begin(), energies_.begin() + std::ptrdiff_t(count_));
        const bool above = e >= floor + kRise;
        // One start per rise: the frames after it stay above the floor until
        // the floor has caught up with the sound.
        onset = above && armed_ && sinceOnset_ >= refractoryFrames_;
        armed_ = !above;
    }
    sinceOnset_ = onset ? 0 : std::min(sinceOnset_ + 1, refractoryFrames_);
    energies_[next_] = e;
    next_ = (next_ + 1) % energies_.size();
    count_ = std::min(count_ + 1, energies_.size());
    return onset;
}

} // namespace veltra
