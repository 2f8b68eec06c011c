#pragma once

#include "classify/SoundClassifier.h"
#include "classify/SoundDetection.h"
#include "settings/PreferenceStore.h"

#include <atomic>
#include <map>
#include <mutex>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace veltra {

// Decides from each classification result whether an accepted kind of sound
// is being heard. updateIdentifiers runs on the main thread, processResult
// on the analysis queue, the readers anywhere: the flag is atomic and a short
// mutex (never taken on the audio thread) guards the label list and the
// current sound.
class SoundGate : public SoundDetection {
public:
    // A label must score strictly above this to open the gate: an even
    // chance is not a detection.
    static constexpr double kConfidenceThreshold = 0.5;

    SoundGate(const PreferenceStore& preferences, std::ostream& console);

    // Rebuilds the accepted labels from the Sounds_ preferences. The current
    // detection stays as it is until the next result.
    void updateIdentifiers();

    // Searches every classification, in the classifier's order, against the
    // accepted labels; the first one above the threshold opens the gate, a
    // result without one closes it at once.
    void processResult(const SoundClassificationResult& result);

    bool isSoundDetected() const override { return isSoundDetected_.load(std::memory_order_acquire); }
    std::string currentSound() const override;
    std::vector<std::string> identifiers() const;

private:
    std::optional<SoundClassification> firstAccepted(const SoundClassificationResult& result) const;
    void startResetTimer();

    const PreferenceStore& preferences_;
    std::ostream& console_;
    mutable std::mutex mutex_;
    std::vector<std::string> identifiers_;
    // Label to category name; only ever grows, and a label always maps to
    // the same category, so stale entries are harmless.
    std::map<std::string, std::string, std::less<>> soundsDictionary_;
    std::string currentSound_;
    std::atomic<bool> isSoundDetected_{false};
};

} // namespace veltra
