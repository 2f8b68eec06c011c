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

// Veltra's sound classifier: audio is resampled to the model's rate, cut
// into log-mel windows of 0.975 s that overlap by half, and each window is
// scored by an AudioSet network with one independent (sigmoid) output per
// label, so that a sound can carry several labels at once. The gate's
// categories get their confidence from a head calibrated for the gate,
// which reads the mean embedding of the last few windows: the member label
// the network ranks first carries it, and the category's other members are
// capped at it, so that a category opens the gate exactly when its
// calibrated confidence does.
class NeuralSoundClassifier : public SoundClassifier {
public:
    explicit NeuralSoundClassifier(std::shared_ptr<const SoundModel> model);

    // Throws SoundModelError.
    static std::unique_ptr<NeuralSoundClassifier> fromFile(const std::filesystem::path& path);

    void reset(double inputSampleRate) override;
    std::vector<SoundClassificationResult> analyze(std::span<const float> samples) override;

    const std::vector<std::string>& labels() const { return model_->labels; }
    const FrontEndParameters& frontEnd() const { return model_->frontEnd; }

private:
    SoundClassificationResult classifyFirstWindow();
    // The head on the mean of the remembered windows: one confidence per
    // category in categoryConfidences_.
    void runHead();

    std::shared_ptr<const SoundModel> model_;
    std::optional<Resampler> resampler_;
    LogMelFrontEnd frontEnd_;
    SoundNetwork network_;
    std::vector<float> finite_;
    std::vector<float> resampled_;
    std::vector<float> frames_; // log-mel rows not yet past the next window
    std::vector<float> embedding_;
    std::vector<float> logits_;
    // The head's input of the last `context` windows, oldest overwritten first.
    RowMatrix recent_;
    Eigen::Index recentCount_ = 0;
    Eigen::Index recentNext_ = 0;
    Eigen::VectorXf headValues_;
    std::vector<float> categoryConfidences_;
    std::vector<float> confidences_;
    std::size_t windowIndex_ = 0;
};

} // namespace veltra
