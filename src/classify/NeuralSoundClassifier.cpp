#include "classify/NeuralSoundClassifier.h"

#include "dsp/FiniteSamples.h"

#include <algorithm>
#include <numeric>

namespace veltra {

NeuralSoundClassifier::NeuralSoundClassifier(std::shared_ptr<const SoundModel> model)
    : model_(std::move(model)), frontEnd_(model_->frontEnd), network_(*model_), scores_(model_->classes.size())
{
    reset(model_->frontEnd.sampleRate);
}

std::unique_ptr<NeuralSoundClassifier> NeuralSoundClassifier::fromFile(const std::filesystem::path& path)
{
    return std::make_unique<NeuralSoundClassifier>(std::make_shared<const SoundModel>(loadSoundModel(path)));
}

void NeuralSoundClassifier::reset(double inputSampleRate)
{
    resampler_.emplace(inputSampleRate, model_->frontEnd.sampleRate);
    frontEnd_.reset();
    frames_.clear();
    windowIndex_ = 0;
}

std::vector<SoundClassificationResult> NeuralSoundClassifier::analyze(std::span<const float> samples)
{
    // Every microphone and file reaches the classifier here; a sample that is
    // not finite is silence, or it would stay in the resampler's filter.
    finite_.resize(samples.size());
    std::transform(samples.begin(), samples.end(), finite_.begin(), finiteOrSilence);
    resampled_.clear();
    resampler_->process(finite_, resampled_);
    frontEnd_.process(resampled_, frames_);
    const FrontEndParameters& p = model_->frontEnd;
    const auto windowValues = static_cast<std::size_t>(p.patchFrames * p.melBands);
    const auto hopValues = static_cast<std::ptrdiff_t>(p.patchHopFrames * p.melBands);
    std::vector<SoundClassificationResult> results;
    while (frames_.size() >= windowValues) {
        results.push_back(classifyFirstWindow());
        frames_.erase(frames_.begin(), frames_.begin() + hopValues);
        ++windowIndex_;
    }
    return results;
}

SoundClassificationResult NeuralSoundClassifier::classifyFirstWindow()
{
    const FrontEndParameters& p = model_->frontEnd;
    network_.run(std::span<const float>(frames_.data(), static_cast<std::size_t>(p.patchFrames * p.melBands)),
                 scores_);
    std::vector<std::size_t> order(scores_.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return scores_[a] > scores_[b]; });

    SoundClassificationResult result;
    result.timeSeconds = double(windowIndex_) * p.patchHopFrames * p.hopLength / p.sampleRate;
    result.classifications.reserve(order.size());
    for (std::size_t k : order)
        result.classifications.push_back({model_->classes[k], scores_[k]});
    return result;
}

} // namespace veltra
