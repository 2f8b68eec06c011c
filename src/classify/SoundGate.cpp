#include "classify/SoundGate.h"

#include "classify/SoundCategories.h"

#include <cstdio>
#include <optional>

namespace veltra {

SoundGate::SoundGate(const PreferenceStore& preferences, std::ostream& console)
    : preferences_(preferences), console_(console)
{
}

void SoundGate::updateIdentifiers()
{
    // Preferences are read before the lock so the analysis queue never waits
    // on the store.
    std::vector<const SoundCategory*> enabled;
    for (const SoundCategory& category : kSoundCategories) {
        if (preferences_.boolForKey(category.key))
            enabled.push_back(&category);
    }
    std::lock_guard lock(mutex_);
    identifiers_.clear();
    for (const SoundCategory* category : enabled) {
        for (std::string_view label : category->labels()) {
            identifiers_.emplace_back(label);
            soundsDictionary_.insert_or_assign(std::string(label), std::string(category->name));
        }
    }
}

void SoundGate::processResult(const SoundClassificationResult& result)
{
    std::optional<SoundClassification> accepted = firstAccepted(result);
    if (!accepted) {
        startResetTimer();
        return;
    }
    char percent[64];
    std::snprintf(percent, sizeof percent, "%f", accepted->confidence * 100.0);
    console_ << accepted->identifier << ", confidence: " << percent << "%\n" << std::flush;
    {
        std::lock_guard lock(mutex_);
        auto entry = soundsDictionary_.find(accepted->identifier);
        currentSound_ = entry != soundsDictionary_.end() ? entry->second : std::string();
    }
    isSoundDetected_.store(true, std::memory_order_release);
}

std::optional<SoundClassification> SoundGate::firstAccepted(const SoundClassificationResult& result) const
{
    std::lock_guard lock(mutex_);
    for (const SoundClassification& classification : result.classifications) {
        for (const std::string& identifier : identifiers_) {
            if (classification.identifier == identifier && classification.confidence > kConfidenceThreshold)
                return classification;
        }
    }
    return std::nullopt;
}

void SoundGate::startResetTimer()
{
    // The one-second reset timer is fired by hand the moment it is made and
    // never scheduled, so a result without an accepted label clears the
    // detection at once, on the calling thread.
    std::lock_guard lock(mutex_);
    isSoundDetected_.store(false, std::memory_order_release);
    currentSound_.clear();
}

std::string SoundGate::currentSound() const
{
    std::lock_guard lock(mutex_);
    return currentSound_;
}

std::vector<std::string> SoundGate::identifiers() const
{
    std::lock_guard lock(mutex_);
    return identifiers_;
}

} // namespace veltra
