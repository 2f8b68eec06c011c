#include "classify/LogMelFrontEnd.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace veltra {

namespace {

double hzToMel(double hz)
{
    return 1127.0 * std::log1p(hz / 700.0);
}

} // namespace

LogMelFrontEnd::LogMelFrontEnd(const FrontEndParameters& parameters) : p_(parameters)
{
    const int bins = p_.fftLength / 2 + 1;
    cos_.resize(p_.windowLength, bins);
    sin_.resize(p_.windowLength, bins);
    for (int n = 0; n < p_.windowLength; ++n) {
        const double window = 0.5 - 0.5 * std::cos(2.0 * std::numbers::pi * n / p_.windowLength);
        for (int k = 0; k < bins; ++k) {
            const double angle = 2.0 * std::numbers::pi * double(n) * double(k) / p_.fftLength;
            cos_(n, k) = static_cast<float>(window * std::cos(angle));
            sin_(n, k) = static_cast<float>(-window * std::sin(angle));
        }
    }
    mel_ = RowMatrix::Zero(bins, p_.melBands);
    const double lowMel = hzToMel(p_.melMinHz);
    const double highMel = hzToMel(p_.melMaxHz);
    const double step = (highMel - lowMel) / (p_.melBands + 1);
    // Bin 0 is left out: the DC bin carries no pitch information.
    for (int k = 1; k < bins; ++k) {
        const double mel = hzToMel(double(k) * p_.sampleRate / 2.0 / (bins - 1));
        for (int band = 0; band < p_.melBands; ++band) {
            const double lower = lowMel + step * band;
            const double centre = lower + step;
            const double upper = centre + step;
            const double rising = (mel - lower) / (centre - lower);
            const double falling = (upper - mel) / (upper - centre);
            mel_(k, band) = static_cast<float>(std::max(0.0, std::min(rising, falling)));
        }
    }
}

void LogMelFrontEnd::reset()
{
    pending_.clear();
}

void LogMelFrontEnd::process(std::span<const float> samples, std::vector<float>& frames, std::vector<FramePeak>* peaks)
{
    // A Hann window's main lobe is four bins of the unpadded window wide,
    // about five of the padded DFT; four either side holds all but a
    // hundred-thousandth of a sine's power, the image of a low one included.
    constexpr Eigen::Index kPeakReach = 4;
    pending_.insert(pending_.end(), samples.begin(), samples.end());
    std::size_t start = 0;
    const auto window = static_cast<std::size_t>(p_.windowLength);
    while (pending_.size() - start >= window) {
        Eigen::Map<const Eigen::RowVectorXf> frame(pending_.data() + start, p_.windowLength);
        real_.noalias() = frame * cos_;
        imaginary_.noalias() = frame * sin_;
        magnitude_ = (real_.array().square() + imaginary_.array().square()).sqrt();
        bands_.noalias() = magnitude_ * mel_;
        for (int band = 0; band < p_.melBands; ++band)
            frames.push_back(std::log(bands_[band] + p_.logOffset));
        if (peaks) {
            Eigen::Index strongest = 0;
            magnitude_.tail(magnitude_.size() - 1).maxCoeff(&strongest);
            ++strongest;
            const Eigen::Index first = std::max<Eigen::Index>(0, strongest - kPeakReach);
            const Eigen::Index last = std::min<Eigen::Index>(magnitude_.size() - 1, strongest + kPeakReach);
            const float power = magnitude_.squaredNorm();
            const float peak = magnitude_.segment(first, last - first + 1).squaredNorm();
            peaks->push_back({power, power > 0 ? peak / power : 0.0f, static_cast<int>(strongest)});
        }
        start += static_cast<std::size_t>(p_.hopLength);
    }
    pending_.erase(pending_.begin(), pending_.begin() + static_cast<std::ptrdiff_t>(start));
}

} // namespace veltra
