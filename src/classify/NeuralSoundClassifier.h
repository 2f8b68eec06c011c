#pragma once

#include "classify/LogMelFrontEnd.h"
#include "classify/Resampler.h"
#include "classify/SoundClassifier.h"
#include "classify/SoundModel.h"
#include "classify/SoundNetwork.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace veltra {

// Veltra's own sound classifier: audio is resampled to the model's rate, cut
// into log-mel windows of 0.975 s that overlap by half, and each window is
// scored by a small convolutional network with one independent (sigmoid)
// output per label, so a sound can carry several labels at once.
class NeuralSoundClassifier : public SoundClassifier {
public:
    explicit NeuralSoundClassifier(std::shared_ptr<const SoundModel> model);

    // Throws SoundModelError.
    static std::unique_ptr<NeuralSoundClassifier> fromFile(const std::filesystem::path& path);

    void reset(double inputSampleRate) override;
    std::vector<SoundClassificationResult> analyze(std::span<const float> samples) override;

    const std::vector<std::string>& labels() const { return model_->classes; }
    const FrontEndParameters& frontEnd() const { return model_->frontEnd; }

private:
    SoundClassificationResult classifyFirstWindow();

    std::shared_ptr<const SoundModel> model_;
    std::optional<Resampler> resampler_;
    LogMelFrontEnd frontEnd_;
    SoundNetwork network_;
    std::vector<float> finite_;
    std::vector<float> resampled_;
    std::vector<float> frames_; // log-mel rows not yet past the next window
    std::vector<float> scores_;
    std::size_t windowIndex_ = 0;
};

} // namespace veltra
