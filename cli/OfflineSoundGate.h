#pragma once

#include "classify/NeuralSoundClassifier.h"
#include "classify/SoundGate.h"
#include "settings/PreferenceStore.h"

#include <memory>
#include <span>
#include <sstream>

namespace veltra::cli {

// The classification gate fed from the recording itself, in step with the
// tuner: each block goes to the classifier as it would from the microphone.
class OfflineSoundGate {
public:
    OfflineSoundGate(const PreferenceStore& preferences, double sampleRate);

    void feed(std::span<const float> block);

    const SoundDetection* detection() const { return &gate_; }

private:
    std::unique_ptr<NeuralSoundClassifier> classifier_;
    std::ostringstream log_; // the gate's console lines are not part of the readout
    SoundGate gate_;
};

} // namespace veltra::cli
