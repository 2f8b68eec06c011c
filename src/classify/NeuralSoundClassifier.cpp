#include "classify/NeuralSoundClassifier.h"

#include "dsp/FiniteSamples.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace veltra {

namespace {

// Audio far beyond full scale can overflow the network to infinities and
// NaN; such a window scores nothing rather than breaking the order.
float confidence(float logit)
{
    const float value = 1.0f / (1.0f + std::exp(-logit));
    return std::isnan(value) ? 0.0f : value;
}

} // namespace

NeuralSoundClassifier::NeuralSoundClassifier(std::shared_ptr<const SoundModel> model)
    : model_(std::move(model))
    , frontEnd_(model_->frontEnd)
    , network_(*model_)
    , embedding_(static_cast<std::size_t>(model_->embeddingSize()))
    , logits_(model_->labels.size())
    , recent_(model_->context, model_->headInputSize())
    , categoryConfidences_(model_->categories.size())
    , confidences_(model_->labels.size())
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
    recentCount_ = 0;
    recentNext_ = 0;
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

void NeuralSoundClassifier::runHead()
{
    const auto embedding = static_cast<Eigen::Index>(embedding_.size());
    auto row = recent_.row(recentNext_);
    row.head(embedding) = Eigen::Map<const Eigen::RowVectorXf>(embedding_.data(), embedding);
    if (model_->headInput == HeadInput::EmbeddingAndLogits)
        row.tail(static_cast<Eigen::Index>(logits_.size())) =
            Eigen::Map<const Eigen::RowVectorXf>(logits_.data(), static_cast<Eigen::Index>(logits_.size()));
    recentNext_ = (recentNext_ + 1) % recent_.rows();
    recentCount_ = std::min(recentCount_ + 1, recent_.rows());

    // While fewer windows than the context have passed, the rows filled so
    // far are the first ones.
    headValues_ = recent_.topRows(recentCount_).colwise().mean().transpose();
    for (std::size_t i = 0; i < model_->head.size(); ++i) {
        const DenseLayer& layer = model_->head[i];
        headValues_ = layer.weights * headValues_ + layer.bias;
        if (i + 1 < model_->head.size())
            headValues_ = headValues_.cwiseMax(0.0f);
    }
    for (std::size_t c = 0; c < categoryConfidences_.size(); ++c)
        categoryConfidences_[c] = confidence(headValues_[static_cast<Eigen::Index>(c)]);
}

SoundClassificationResult NeuralSoundClassifier::classifyFirstWindow()
{
    const FrontEndParameters& p = model_->frontEnd;
    network_.run(std::span<const float>(frames_.data(), static_cast<std::size_t>(p.patchFrames * p.melBands)),
                 embedding_, logits_);
    runHead();
    std::transform(logits_.begin(), logits_.end(), confidences_.begin(), confidence);
    // No label belongs to two categories, so each category's members can be
    // rewritten in place.
    for (std::size_t c = 0; c < model_->categories.size(); ++c) {
        const std::vector<int>& members = model_->categories[c];
        const int best = *std::max_element(members.begin(), members.end(), [&](int a, int b) {
            // Logits, not confidences: a sigmoid in float reaches 1.0 and ties.
            return logits_[std::size_t(a)] < logits_[std::size_t(b)];
        });
        for (int member : members) {
            float& value = confidences_[std::size_t(member)];
            value = member == best ? categoryConfidences_[c] : std::min(value, categoryConfidences_[c]);
        }
    }

    std::vector<std::size_t> order(confidences_.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return confidences_[a] > confidences_[b]; });
    SoundClassificationResult result;
    result.timeSeconds = double(windowIndex_) * p.patchHopFrames * p.hopLength / p.sampleRate;
    result.classifications.reserve(order.size());
    for (std::size_t k : order)
        result.classifications.push_back({model_->labels[k], confidences_[k]});
    return result;
}

} // namespace veltra
