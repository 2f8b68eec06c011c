#include "tuning/HeardReference.h"

#include "settings/Preferences.h"

#include <algorithm>
#include <cmath>

namespace veltra {

void HeardReference::start(int currentA4)
{
    listening_ = true;
    a4_ = currentA4;
    readings_ = 0;
    run_.clear();
    run_.reserve(kSteadyReadings);
    next_ = 0;
}

std::optional<HeardReference::Result> HeardReference::addReading(float frequency)
{
    if (!listening_)
        return std::nullopt;
    ++readings_;
    if (!(frequency >= kLowestFrequency)) {
        run_.clear(); // a gap ends the note
        next_ = 0;
    } else {
        const double cents = 1200.0 * std::log2(static_cast<double>(frequency) / a4_);
        // The last second's readings, oldest replaced first.
        if (run_.size() < kSteadyReadings)
            run_.push_back(cents);
        else
            run_[next_] = cents;
        next_ = (next_ + 1) % kSteadyReadings;
        const auto [low, high] = std::minmax_element(run_.begin(), run_.end());
        if (run_.size() == kSteadyReadings && *high - *low <= kSteadySpreadCents) {
            listening_ = false;
            return decide();
        }
    }
    if (readings_ >= kGiveUpReadings) {
        listening_ = false;
        return Result{Outcome::NothingHeard};
    }
    return std::nullopt;
}

// The median reading stands for the note: a stray reading at either end of
// the spread moves it least.
HeardReference::Result HeardReference::decide() const
{
    std::vector<double> sorted = run_;
    const auto middle = sorted.begin() + static_cast<std::ptrdiff_t>(sorted.size() / 2);
    std::nth_element(sorted.begin(), middle, sorted.end());
    const double octaves = std::round(*middle / 1200.0);
    const double offset = *middle - 1200.0 * octaves; // from the nearest A
    if (std::fabs(offset) > kLargestOffsetCents)
        return {Outcome::NotAnA, 0, offset};
    const int a4 = static_cast<int>(std::lround(a4_ * std::exp2(offset / 1200.0)));
    return {a4 >= kMinimumA4 && a4 <= kMaximumA4 ? Outcome::Set : Outcome::OutOfRange, a4, offset};
}

} // namespace veltra
