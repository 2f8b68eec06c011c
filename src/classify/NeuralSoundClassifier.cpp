#include "classify/NeuralSoundClassifier.h"

#include "classify/SoundGate.h"

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

// After an onset, an extra window every 0.12 s: the first one hears 0.12 s
// of the sound, about what the tuner needs to read its pitch.
constexpr double kExtraStepSeconds = 0.12;
// A regular window that finds less of the new sound than this is scored as
// it is: too short a start, repeated, is a rattle rather than the note.
constexpr double kMinSoundingSeconds = 0.12;
// Extra windows are paid from a budget that refills at this rate up to a
// burst: an isolated note gets four, and a fast passage (or speech, whose
// syllables are onsets too) no more than three a second on top of the
// regular two, which keeps the classifier near 5 % of one core.
constexpr double kExtraPerSecond = 3.0;
constexpr double kExtraBurst = 4.0;
// A window that closes a category the previous one opened is heard again
// this much later rather than a regular window's 0.48 s later: a held
// note's score dips below 0.5 now and then (a sung note gliding into the
// next, a string's decay), and each dip closed the gate for a whole hop.
// These second looks have a budget of their own, one a second, so that they
// never take the windows of a note's start: with at most 2.1 regular, 3
// extra and 1 second look a second, the classifier stays under 3 % of a
// core here (bench_classify).
constexpr double kRecheckSeconds = 0.12;
constexpr double kRechecksPerSecond = 1.0;
constexpr double kRecheckBurst = 1.0;

// A synthetic tone (a reference tone, an electronic tuner's beep) holds one
// spectrum without the least change, which no instrument or voice does: a
// bow, a breath, vibrato, a string's decay or the room all move the loud
// bands by a few hundredths from one 10 ms frame to the next. Over the
// newest frames that carry sound (above kToneFloor in their loudest band),
// the median change of the bands within 30 dB of the loudest is measured;
// below kToneSteadiness the window is a tone. On the training corpus's real
// recordings of the four categories this marks at most 0.3 % of a source's
// windows.
constexpr std::ptrdiff_t kToneFrames = 32;
constexpr std::ptrdiff_t kToneMinimumPairs = 11; // sounding frame pairs: 0.11 s of the tone
constexpr float kToneFloor = -5.0f;     // log-mel; silence is log(0.001), about -6.9
constexpr float kToneBandRange = 3.45f; // ln(31.6): 30 dB
constexpr float kToneSteadiness = 0.003f;

// Below about C3 a sine's mel bands are its window's side lobes, which
// swing with the sine's phase from frame to frame (the lowest band starts at
// 125 Hz), so the rule above cannot see it. There the spectrum's peak
// tells instead: a sine keeps more than kSineShare of a frame's power
// within four bins of its strongest one, where an instrument's or a voice's
// harmonics, breath and the room take more. Only a nearly bare fundamental
// at the end of a low note's decay comes as close: at most 0.9 % of any
// guitar, piano or voice source's windows in the training corpus, none of
// the violins' (a Rhodes piano's soft low notes 2.6 %).
constexpr float kSineShare = 0.999f;
constexpr std::ptrdiff_t kSineHighestBin = 9; // 281 Hz at 16 kHz and 512 bins
constexpr float kSineFloor = 1e-4f;            // a frame's power: about -80 dBFS
constexpr float kSineRange = 1e-3f;            // frames within 30 dB of the loudest

double frameSeconds(const FrontEndParameters& p)
{
    return double(p.hopLength) / p.sampleRate;
}

std::ptrdiff_t frames(const FrontEndParameters& p, double seconds)
{
    return std::lround(seconds / frameSeconds(p));
}

} // namespace

NeuralSoundClassifier::NeuralSoundClassifier(std::shared_ptr<const SoundModel> model)
    : model_(std::move(model))
    , frontEnd_(model_->frontEnd)
    , network_(*model_)
    , onsets_(frameSeconds(model_->frontEnd))
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
    peaks_.clear();
    onsets_.reset();
    frameCount_ = 0;
    onsetFrame_ = -1;
    lastOnsetWindowEnd_ = 0;
    extraBudget_ = kExtraBurst;
    recheckAt_ = -1;
    recheckBudget_ = kRecheckBurst;
    wasOpen_.assign(model_->categories.size(), false);
    recentCount_ = 0;
    recentNext_ = 0;
}

std::vector<SoundClassificationResult> NeuralSoundClassifier::analyze(std::span<const float> samples)
{
    // Every microphone and file reaches the classifier here; a sample that is
    // not finite is silence, or it would stay in the resampler's filter.
    finite_.resize(samples.size());
    std::transform(samples.begin(), samples.end(), finite_.begin(), finiteOrSilence);
    resampled_.clear();
    resampler_->process(finite_, resampled_);
    newRows_.clear();
    newPeaks_.clear();
    frontEnd_.process(resampled_, newRows_, &newPeaks_);
    const auto bands = static_cast<std::size_t>(model_->frontEnd.melBands);
    std::vector<SoundClassificationResult> results;
    for (std::size_t i = 0; i < newPeaks_.size(); ++i)
        step(std::span<const float>(newRows_).subspan(i * bands, bands), newPeaks_[i], results);
    return results;
}

void NeuralSoundClassifier::step(std::span<const float> row, FramePeak peak,
                                 std::vector<SoundClassificationResult>& results)
{
    const FrontEndParameters& p = model_->frontEnd;
    const auto windowValues = static_cast<std::size_t>(p.patchFrames * p.melBands);
    if (frames_.size() == windowValues) {
        frames_.erase(frames_.begin(), frames_.begin() + p.melBands);
        peaks_.erase(peaks_.begin());
    }
    frames_.insert(frames_.end(), row.begin(), row.end());
    peaks_.push_back(peak);
    ++frameCount_;

    if (onsets_.isOnset(row)) {
        onsetFrame_ = frameCount_ - 1;
        nextExtra_ = frames(p, kExtraStepSeconds);
        // A head that reads several windows reads those of this sound only.
        recentCount_ = 0;
    }
    const std::ptrdiff_t sounding = onsetFrame_ < 0 ? p.patchFrames : frameCount_ - onsetFrame_;
    if (sounding >= p.patchFrames)
        onsetFrame_ = -1;
    extraBudget_ = std::min(kExtraBurst, extraBudget_ + kExtraPerSecond * frameSeconds(p));
    recheckBudget_ = std::min(kRecheckBurst, recheckBudget_ + kRechecksPerSecond * frameSeconds(p));

    const bool regular = frameCount_ >= p.patchFrames && (frameCount_ - p.patchFrames) % p.patchHopFrames == 0;
    const bool weighted = sounding < p.patchFrames && sounding >= frames(p, kMinSoundingSeconds);
    if (regular) {
        results.push_back(classifyWindow(weighted ? sounding : p.patchFrames));
        if (weighted)
            lastOnsetWindowEnd_ = frameCount_;
    } else if (onsetFrame_ >= 0 && sounding == nextExtra_) {
        nextExtra_ += frames(p, kExtraStepSeconds);
        // A regular window that has just heard the start counts as this one.
        const bool heardJustNow = frameCount_ - lastOnsetWindowEnd_ < frames(p, kExtraStepSeconds) / 2;
        if (extraBudget_ >= 1 && !heardJustNow) {
            extraBudget_ -= 1;
            results.push_back(classifyWindow(sounding));
            lastOnsetWindowEnd_ = frameCount_;
        }
    } else if (recheckAt_ >= 0 && frameCount_ >= recheckAt_ && recheckBudget_ >= 1 &&
               (weighted || frameCount_ >= p.patchFrames)) {
        // Due, or overdue while its budget refilled; in a stream's first
        // second only once the new sound fills a window of its own.
        recheckBudget_ -= 1;
        results.push_back(classifyWindow(weighted ? sounding : p.patchFrames));
    }
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

bool NeuralSoundClassifier::isSteadyTone()
{
    const auto bands = static_cast<std::ptrdiff_t>(model_->frontEnd.melBands);
    const auto rows = static_cast<std::ptrdiff_t>(frames_.size()) / bands;
    const std::ptrdiff_t first = std::max<std::ptrdiff_t>(0, rows - kToneFrames);
    auto frame = [&](std::ptrdiff_t r) { return frames_.begin() + r * bands; };
    auto sounds = [&](std::ptrdiff_t r) { return *std::max_element(frame(r), frame(r) + bands) > kToneFloor; };
    bandMeans_.assign(static_cast<std::size_t>(bands), 0.0f);
    for (std::ptrdiff_t r = first; r < rows; ++r)
        for (std::ptrdiff_t b = 0; b < bands; ++b)
            bandMeans_[std::size_t(b)] += frame(r)[b] / float(rows - first);
    const float loudest = *std::max_element(bandMeans_.begin(), bandMeans_.end());
    toneChanges_.clear();
    std::ptrdiff_t pairs = 0;
    for (std::ptrdiff_t r = first + 1; r < rows; ++r) {
        if (!sounds(r) || !sounds(r - 1))
            continue;
        ++pairs;
        for (std::ptrdiff_t b = 0; b < bands; ++b)
            if (bandMeans_[std::size_t(b)] > loudest - kToneBandRange)
                toneChanges_.push_back(std::abs(frame(r)[b] - frame(r - 1)[b]));
    }
    if (pairs < kToneMinimumPairs || toneChanges_.empty())
        return false;
    const auto middle = toneChanges_.begin() + std::ptrdiff_t(toneChanges_.size() / 2);
    std::nth_element(toneChanges_.begin(), middle, toneChanges_.end());
    return *middle < kToneSteadiness;
}

bool NeuralSoundClassifier::isLowSine()
{
    const auto newest = std::span<const FramePeak>(peaks_).last(std::min<std::size_t>(peaks_.size(), kToneFrames));
    float loudest = 0;
    for (const FramePeak& peak : newest)
        loudest = std::max(loudest, peak.power);
    peakShares_.clear();
    for (const FramePeak& peak : newest)
        if (peak.power > kSineFloor && peak.power > loudest * kSineRange && peak.strongestBin <= kSineHighestBin)
            peakShares_.push_back(peak.peakShare);
    if (std::ssize(peakShares_) <= kToneMinimumPairs)
        return false;
    const auto middle = peakShares_.begin() + std::ptrdiff_t(peakShares_.size() / 2);
    std::nth_element(peakShares_.begin(), middle, peakShares_.end());
    return *middle > kSineShare;
}

SoundClassificationResult NeuralSoundClassifier::classifyWindow(std::ptrdiff_t sounding)
{
    const FrontEndParameters& p = model_->frontEnd;
    const auto bands = static_cast<std::ptrdiff_t>(p.melBands);
    const auto rows = static_cast<std::ptrdiff_t>(frames_.size()) / bands;
    window_.resize(static_cast<std::size_t>(p.patchFrames * bands));
    // The last `sounding` frames stretched over the whole window, each
    // frame repeated in turn: the network hears the new sound as a longer
    // one rather than the room before it. Repeating the sound from the
    // window's end back (tiling it, plainly or mirrored) was measured too:
    // the attack, heard again every tenth of a second, scored as a
    // synthesizer and opened the gate later.
    for (std::ptrdiff_t r = 0; r < p.patchFrames; ++r) {
        const std::ptrdiff_t source = rows - sounding + r * sounding / p.patchFrames;
        std::copy_n(frames_.begin() + source * bands, bands, window_.begin() + r * bands);
    }
    network_.run(window_, embedding_, logits_);
    runHead();
    std::transform(logits_.begin(), logits_.end(), confidences_.begin(), confidence);
    // A synthetic tone is no instrument and no voice, whatever the head or
    // the network (which hears a low sawtooth as singing) make of it.
    if (isSteadyTone() || isLowSine())
        std::fill(categoryConfidences_.begin(), categoryConfidences_.end(), 0.0f);
    recheckAt_ = -1;
    // A head that reads several windows smooths the dips already, and a
    // window heard again would weigh twice in its mean.
    const bool recheck = recent_.rows() == 1;
    for (std::size_t c = 0; c < categoryConfidences_.size(); ++c) {
        const bool open = categoryConfidences_[c] > SoundGate::kConfidenceThreshold;
        if (recheck && wasOpen_[c] && !open)
            recheckAt_ = frameCount_ + frames(p, kRecheckSeconds);
        wasOpen_[c] = open;
    }
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
    // The window's nominal start: where the 0.975 s it stands for begin.
    result.timeSeconds = double(std::max<std::ptrdiff_t>(0, frameCount_ - p.patchFrames)) * frameSeconds(p);
    result.classifications.reserve(order.size());
    for (std::size_t k : order)
        result.classifications.push_back({model_->labels[k], confidences_[k]});
    return result;
}

} // namespace veltra
