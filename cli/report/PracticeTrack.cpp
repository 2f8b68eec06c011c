#include "report/PracticeTrack.h"

#include "tuning/Note.h"
#include "tuning/Tuning.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace veltra::report {

namespace {

constexpr double kCentsPerSemitone = 100.0;

std::string fullName(const Note& note)
{
    return note.note + note.sharpFlat + note.octaveNumber;
}

} // namespace

void CentsDistribution::add(double cents)
{
    ++count_;
    if (bins_.empty()) {
        exact_.push_back(cents);
        if (exact_.size() > kMostExact)
            toBins();
        return;
    }
    const double bin = std::round((std::clamp(cents, kLowest, -kLowest) - kLowest) / kBinWidth);
    ++bins_[static_cast<std::size_t>(bin)];
}

void CentsDistribution::merge(const CentsDistribution& other)
{
    if (other.bins_.empty()) {
        for (const double c : other.exact_)
            add(c);
        return;
    }
    if (bins_.empty())
        toBins();
    for (std::size_t i = 0; i < kBins; ++i)
        bins_[i] += other.bins_[i];
    count_ += other.count_;
}

void CentsDistribution::toBins()
{
    bins_.assign(kBins, 0);
    count_ = 0;
    std::vector<double> values;
    values.swap(exact_);
    for (const double c : values)
        add(c);
}

double CentsDistribution::nth(std::size_t i) const
{
    std::size_t below = 0;
    for (std::size_t b = 0; b < kBins; ++b) {
        below += bins_[b];
        if (below > i)
            return kLowest + static_cast<double>(b) * kBinWidth;
    }
    return -kLowest;
}

double CentsDistribution::quantile(double q) const
{
    if (count_ == 0)
        return 0;
    const double position = q * static_cast<double>(count_ - 1);
    const auto below = static_cast<std::size_t>(std::floor(position));
    const std::size_t above = std::min(below + 1, count_ - 1);
    const double fraction = position - static_cast<double>(below);
    if (!bins_.empty())
        return nth(below) + fraction * (nth(above) - nth(below));
    std::vector<double> sorted = exact_;
    std::sort(sorted.begin(), sorted.end());
    return sorted[below] + fraction * (sorted[above] - sorted[below]);
}

std::size_t CentsDistribution::countWithin(double limit) const
{
    if (bins_.empty())
        return static_cast<std::size_t>(
            std::count_if(exact_.begin(), exact_.end(), [&](double c) { return std::abs(c) <= limit; }));
    std::size_t n = 0;
    for (std::size_t b = 0; b < kBins; ++b)
        if (std::abs(kLowest + static_cast<double>(b) * kBinWidth) <= limit + kBinWidth / 4)
            n += bins_[b];
    return n;
}

ReadoutFollower::ReadoutFollower(const PreferenceStore& preferences, OccurrenceSink onOccurrence, bool keepTrace)
    : preferences_(preferences)
    , onOccurrence_(std::move(onOccurrence))
    , keepTrace_(keepTrace)
{
}

void ReadoutFollower::trace(double time, float noteNumber)
{
    if (!keepTrace_)
        return;
    auto& points = track_.trace;
    if (std::isnan(noteNumber)) {
        pixel_.clear();
        // A stretch of silence is one break in the line.
        if (points.empty() || !std::isnan(points.back().noteNumber))
            points.push_back({time, noteNumber});
        return;
    }
    // Past the first line the chart draws a pixel's median: so is it kept.
    const auto pixel = [](double t) { return std::floor(t * kPixelsPerSecond); };
    if (time >= kFullLineSeconds && !pixel_.empty() && pixel(time) == pixel(points.back().time)) {
        // Only the median is ever read back, so the readings may be
        // reordered in place.
        pixel_.push_back(noteNumber);
        const auto middle = pixel_.begin() + static_cast<std::ptrdiff_t>(pixel_.size() / 2);
        std::nth_element(pixel_.begin(), middle, pixel_.end());
        points.back().noteNumber = *middle;
        return;
    }
    pixel_.assign(1, noteNumber);
    points.push_back({time, noteNumber});
}

void ReadoutFollower::reading(double time, std::optional<float> frequency, const std::string& shownNote)
{
    // Each reading stands for the time since the one before it.
    const double since = lastReading_ ? time - *lastReading_ : 0;
    if (frequency)
        track_.soundSeconds += since;
    lastReading_ = time;
    if (!frequency) {
        trace(time, std::numeric_limits<float>::quiet_NaN());
        if (!silentSince_)
            silentSince_ = time;
        if (time - *silentSince_ >= kSilenceGap)
            close(*silentSince_);
        return;
    }
    silentSince_.reset();
    const float x = shownNoteNumber(*frequency, preferences_);
    trace(time, x);
    if (current_ && currentName_ != shownNote)
        close(time);
    if (x <= 0)
        return; // below the lowest key: nothing a label can name
    const std::string readingNote = fullName(CommonUtils::noteForNumber(x, preferences_));
    track_.soundedSeconds[readingNote] += since;
    if (readingNote != shownNote)
        return;
    const auto key = roundHalfAwayFromZero(x);
    if (!current_) {
        current_ = Occurrence{static_cast<int>(key), time, time, 0};
        currentName_ = shownNote;
        currentCents_ = {};
    }
    ++current_->readings;
    currentCents_.add(kCentsPerSemitone * (static_cast<double>(x) - static_cast<double>(key)));
}

PracticeTrack ReadoutFollower::finish(double seconds)
{
    close(silentSince_.value_or(seconds));
    track_.seconds = seconds;
    return std::move(track_);
}

void ReadoutFollower::close(double time)
{
    if (!current_)
        return;
    current_->end = time;
    if (onOccurrence_)
        onOccurrence_(*current_, currentCents_);
    track_.occurrences.push_back(*current_);
    current_.reset();
}

} // namespace veltra::report
