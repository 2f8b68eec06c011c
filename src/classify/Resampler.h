#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace veltra {

// Streaming conversion of mono audio to a fixed output rate by a polyphase
// Kaiser-windowed sinc filter. Output sample n lies at input time
// n * inRate / outRate; the input before the stream counts as silence. The
// result does not depend on how the input is split into calls.
class Resampler {
public:
    // 16 zero crossings each side and beta 8.6 give about 80 dB of stop-band
    // rejection; the pass band keeps 90 % of the output's Nyquist band.
    static constexpr int kZeroCrossings = 16;
    static constexpr double kKaiserBeta = 8.6;
    static constexpr double kPassband = 0.9;

    Resampler(double inputRate, int outputRate);

    // Appends input and writes the outputs it completes to `out`.
    void process(std::span<const float> input, std::vector<float>& out);

    bool isIdentity() const { return up_ == down_; }
    // Output samples written so far.
    std::size_t produced() const { return next_; }

    // How many filter coefficients a conversion between these rates keeps:
    // the memory it takes, for rates a caller does not choose.
    static std::size_t coefficients(double inputRate, int outputRate);

private:
    std::size_t up_ = 1;   // output rate / gcd
    std::size_t down_ = 1; // input rate / gcd
    std::size_t halfWidth_ = 0;
    std::vector<float> table_;   // up_ rows of 2 * halfWidth_ taps
    std::vector<float> history_; // input not yet consumed, with its left context
    std::size_t historyStart_ = 0; // input index of history_[0]
    std::size_t next_ = 0;         // index of the next output sample
};

} // namespace veltra
