#include "OfflineSoundGate.h"

#include "ClassifyCommand.h"

namespace veltra::cli {

OfflineSoundGate::OfflineSoundGate(const PreferenceStore& preferences, double sampleRate)
    : classifier_(loadClassifier(defaultSoundModelPath()))
    , gate_(preferences, log_)
{
    classifier_->reset(sampleRate);
    gate_.updateIdentifiers();
}

void OfflineSoundGate::feed(std::span<const float> block)
{
    for (const auto& result : classifier_->analyze(block))
        gate_.processResult(result);
}

} // namespace veltra::cli
