#pragma once

#include "classify/AudioInput.h"
#include "classify/SoundCategories.h"
#include "classify/SoundClassifier.h"
#include "classify/SoundGate.h"
#include "settings/MemoryPreferenceStore.h"

#include <deque>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace veltra::test {

// The gate as a musician sets it who lets all four kinds of sound through;
// its log lines are kept apart.
struct EveryCategoryGate {
    MemoryPreferenceStore store;
    std::ostringstream console;
    SoundGate gate{store, console};

    EveryCategoryGate()
    {
        for (const SoundCategory& category : kSoundCategories)
            store.setBool(true, category.key);
        gate.updateIdentifiers();
    }
};

// What a scripted classifier is told to answer and what it was fed. Owned
// by the test, so it outlives the engine that owns the classifier.
struct ClassifierScript {
    struct Step {
        std::vector<SoundClassificationResult> results;
        std::optional<std::string> failure;
    };
    std::deque<Step> steps;
    std::vector<double> resetRates;
    std::vector<std::vector<float>> buffers;
};

// Each analyze() call returns the next scripted results, or throws when the
// script says so.
class ScriptedClassifier : public SoundClassifier {
public:
    explicit ScriptedClassifier(ClassifierScript& script) : script_(script) {}

    void reset(double rate) override { script_.resetRates.push_back(rate); }

    std::vector<SoundClassificationResult> analyze(std::span<const float> samples) override
    {
        script_.buffers.emplace_back(samples.begin(), samples.end());
        if (script_.steps.empty())
            return {};
        ClassifierScript::Step step = script_.steps.front();
        script_.steps.pop_front();
        if (step.failure)
            throw std::runtime_error(*step.failure);
        return step.results;
    }

private:
    ClassifierScript& script_;
};

// A microphone a test drives by hand. Owned by the test; the engine gets a
// FakeAudioInput that forwards to it.
struct Microphone {
    // Plays the audio thread.
    void deliver(std::span<const float> samples) const { callback(samples); }

    double rate = 48000;
    std::optional<std::string> openError;
    std::optional<std::string> startError;
    AudioInput::Callback callback;
    int stops = 0;
};

class FakeAudioInput : public AudioInput {
public:
    explicit FakeAudioInput(Microphone& microphone) : microphone_(microphone) {}

    double open() override
    {
        if (microphone_.openError)
            throw AudioInputError(*microphone_.openError);
        return microphone_.rate;
    }

    void start(Callback callback) override
    {
        if (microphone_.startError)
            throw AudioInputError(*microphone_.startError);
        microphone_.callback = std::move(callback);
    }

    void stop() override
    {
        ++microphone_.stops;
        microphone_.callback = nullptr;
    }

private:
    Microphone& microphone_;
};

inline SoundClassificationResult result(std::vector<SoundClassification> classifications)
{
    return SoundClassificationResult{0.0, std::move(classifications)};
}

} // namespace veltra::test
