#include "ReadingTap.h"

namespace veltra::cli {

ReadingTap::ReadingTap(OfflineTuner& tuner, const std::optional<OfflineSoundGate>& gate,
                       report::ReadoutFollower& follower)
    : tuner_(tuner)
    , gate_(gate)
    , follower_(follower)
{
    tuner_.screen().dispatcher()->addListener(this, ViewController::kFrequencySource);
}

void ReadingTap::receiveFloat(float frequency, const std::string&)
{
    // The screen takes a reading above its lowest note while the gate,
    // when there is one, hears an accepted sound.
    const bool heard =
        frequency >= ViewController::kLowestFrequency && (!gate_ || gate_->detection()->isSoundDetected());
    const auto& labels = tuner_.screen().labels();
    follower_.reading(tuner_.time(), heard ? std::optional(frequency) : std::nullopt,
                      labels.noteName + labels.sharpFlat + labels.octaveNumber);
}

} // namespace veltra::cli
