#pragma once

#include "classify/LogMelFrontEnd.h"
#include "classify/Resampler.h"
#include "classify/SoundClassifier.h"
#include "classify/SoundModel.h"
#include "classify/SoundNetwork.h"
#include "classify/SoundOnsetDetector.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace veltra {

// Veltra's sound classifier: audio is resampled to the model's rate, cut
// into log-mel windows of 0.975 s that overlap by half, and each window is
// scored by an AudioSet network with one independent (sigmoid) output per
// label, so that a sound can carry several labels at once.
//
// When a sound starts, a window of the last 0.975 s would mostly hold the
// room before it, and the tuner reads a note within a third of a second.
// So for the first 0.975 s after an onset, every window holds only the
// audio since the onset, stretched to the window's length, and extra windows
// are scored every 0.12 s between the regular ones, at most a few per
// second (see kExtraPerSecond), so that the cost stays bounded whatever
// the audio. A window that would close a category that the last one
// opened is heard again soon after, from a budget of its own (see
// kRecheckSeconds). The gate's
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
    // Takes the front end's new rows one at a time and scores the windows
    // they complete.
    void step(std::span<const float> row, FramePeak peak, std::vector<SoundClassificationResult>& results);
    // The window ending at the newest frame, made of its last `sounding`
    // frames only.
    SoundClassificationResult classifyWindow(std::ptrdiff_t sounding);
    // Whether the newest frames hold a synthetic tone's unchanging spectrum.
    bool isSteadyTone();
    // Whether the newest frames hold a low sine, all its power in one peak.
    bool isLowSine();
    // The head on the mean of the remembered windows: one confidence per
    // category in categoryConfidences_.
    void runHead();

    std::shared_ptr<const SoundModel> model_;
    std::optional<Resampler> resampler_;
    LogMelFrontEnd frontEnd_;
    SoundNetwork network_;
    std::vector<float> finite_;
    std::vector<float> resampled_;
    std::vector<float> newRows_;
    std::vector<FramePeak> newPeaks_;
    std::vector<float> frames_; // the last window's log-mel rows, oldest first
    std::vector<FramePeak> peaks_; // their spectra's peaks
    std::vector<float> bandMeans_;   // isSteadyTone's scratch
    std::vector<float> toneChanges_;
    std::vector<float> peakShares_; // isLowSine's scratch
    std::vector<float> window_;
    SoundOnsetDetector onsets_;
    std::ptrdiff_t frameCount_ = 0;         // frames since reset
    std::ptrdiff_t onsetFrame_ = -1;        // the sound's first frame while it is younger than a window
    std::ptrdiff_t nextExtra_ = 0;          // frames after the onset when the next extra window is due
    std::ptrdiff_t lastOnsetWindowEnd_ = 0; // frameCount_ after the last window scored from an onset
    double extraBudget_ = 0;                // extra windows that may be scored now
    std::ptrdiff_t recheckAt_ = -1;         // frameCount_ when a closing window is heard again
    double recheckBudget_ = 0;              // second looks that may be taken now
    std::vector<bool> wasOpen_;             // each category above the gate's threshold in the last window
    std::vector<float> embedding_;
    std::vector<float> logits_;
    // The head's input of the last `context` windows, oldest overwritten first.
    RowMatrix recent_;
    Eigen::Index recentCount_ = 0;
    Eigen::Index recentNext_ = 0;
    Eigen::VectorXf headValues_;
    std::vector<float> categoryConfidences_;
    std::vector<float> confidences_;
};

} // namespace veltra
