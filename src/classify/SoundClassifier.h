#pragma once

#include <span>
#include <string>
#include <vector>

namespace veltra {

// One label of a classifier's answer for one analysed window.
struct SoundClassification {
    std::string identifier; // lower-case snake_case class name, e.g. "acoustic_guitar"
    double confidence = 0;  // 0 to 1
};

// The classifier's answer for one window, classifications in descending
// confidence (the classifier's own order).
struct SoundClassificationResult {
    double timeSeconds = 0; // start of the window, in seconds of input audio
    std::vector<SoundClassification> classifications;
};

// A streaming sound classifier: audio goes in as it arrives, one result comes
// out for every analysis window completed by that audio. Not thread-safe: one
// thread (the analysis queue) feeds it.
class SoundClassifier {
public:
    virtual ~SoundClassifier() = default;

    // Starts a new stream of mono audio at the given sample rate.
    virtual void reset(double inputSampleRate) = 0;

    // Appends mono samples; returns the results of the windows they complete.
    virtual std::vector<SoundClassificationResult> analyze(std::span<const float> samples) = 0;
};

} // namespace veltra
