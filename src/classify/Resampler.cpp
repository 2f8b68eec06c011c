#include "classify/Resampler.h"

#include "settings/Fatal.h"

#include <cmath>
#include <numbers>
#include <numeric>

namespace veltra {

namespace {

double sinc(double x)
{
    if (x == 0.0)
        return 1.0;
    return std::sin(std::numbers::pi * x) / (std::numbers::pi * x);
}

struct Ratio {
    std::size_t up, down;
};

Ratio ratio(double inputRate, int outputRate)
{
    const std::int64_t in = checkedTruncToInt64(std::round(inputRate));
    if (in <= 0 || outputRate <= 0)
        fatalError("resampler rates must be positive");
    const auto g = std::gcd(in, std::int64_t{outputRate});
    return {static_cast<std::size_t>(outputRate / g), static_cast<std::size_t>(in / g)};
}

double cutoffFor(Ratio r)
{
    return Resampler::kPassband * std::min(1.0, double(r.up) / double(r.down));
}

std::size_t halfWidthFor(Ratio r)
{
    return static_cast<std::size_t>(std::ceil(Resampler::kZeroCrossings / cutoffFor(r)));
}

} // namespace

std::size_t Resampler::coefficients(double inputRate, int outputRate)
{
    const Ratio r = ratio(inputRate, outputRate);
    return r.up == r.down ? 0 : r.up * 2 * halfWidthFor(r);
}

Resampler::Resampler(double inputRate, int outputRate)
{
    const Ratio r = ratio(inputRate, outputRate);
    up_ = r.up;
    down_ = r.down;
    if (isIdentity())
        return;
    const double cutoff = cutoffFor(r);
    halfWidth_ = halfWidthFor(r);
    const std::size_t taps = 2 * halfWidth_;
    table_.resize(up_ * taps);
    const double norm = std::cyl_bessel_i(0.0, kKaiserBeta);
    const auto half = static_cast<double>(halfWidth_);
    for (std::size_t p = 0; p < up_; ++p) {
        for (std::size_t t = 0; t < taps; ++t) {
            // Tap t weighs input x[i + k] with k = t - halfWidth + 1.
            const double u = double(p) / double(up_) - (double(t) - half + 1.0);
            const double r = std::max(0.0, 1.0 - (u / half) * (u / half));
            const double window = std::cyl_bessel_i(0.0, kKaiserBeta * std::sqrt(r)) / norm;
            table_[p * taps + t] = static_cast<float>(cutoff * sinc(cutoff * u) * window);
        }
    }
    history_.assign(halfWidth_, 0.0f); // silence before the stream
}

void Resampler::process(std::span<const float> input, std::vector<float>& out)
{
    if (isIdentity()) {
        out.insert(out.end(), input.begin(), input.end());
        return;
    }
    history_.insert(history_.end(), input.begin(), input.end());
    const std::size_t taps = 2 * halfWidth_;
    // history_[j] holds input index historyStart_ + j - halfWidth_.
    for (;;) {
        const std::size_t base = next_ * down_ / up_;
        const std::size_t phase = next_ * down_ % up_;
        const std::size_t first = base + 1; // history index of x[base - halfWidth + 1]
        if (first - historyStart_ + taps > history_.size())
            break;
        const float* x = history_.data() + (first - historyStart_);
        const float* h = table_.data() + phase * taps;
        float sum = 0.0f;
        for (std::size_t t = 0; t < taps; ++t)
            sum += x[t] * h[t];
        out.push_back(sum);
        ++next_;
    }
    // Drop input that no future output can reach.
    const std::size_t keepFrom = next_ * down_ / up_ + 1;
    if (keepFrom > historyStart_) {
        history_.erase(history_.begin(), history_.begin() + static_cast<std::ptrdiff_t>(keepFrom - historyStart_));
        historyStart_ = keepFrom;
    }
}

} // namespace veltra
