#pragma once

#include "classify/SoundModel.h"

#include <Eigen/Core>

#include <span>
#include <vector>

namespace veltra {

// How one frame's power is spread: a pure tone puts nearly all of it in
// the few bins of its window's main lobe, whatever its pitch (even below
// the lowest mel band); an instrument spreads it over its harmonics.
struct FramePeak {
    float power = 0;     // the frame's summed squared magnitudes
    float peakShare = 0; // the share of it within four bins of the strongest bin above DC
    int strongestBin = 0;
};

// Turns a stream of audio at the model's rate into log-mel frames: a Hann
// window, the magnitude of a real DFT, triangular filters on the HTK mel
// scale, and log(x + offset).
class LogMelFrontEnd {
public:
    explicit LogMelFrontEnd(const FrontEndParameters& parameters);

    void reset();

    // Appends samples; each completed frame is appended to `frames` as one
    // row of melBands values, and its spectrum's peak to `peaks` if given.
    void process(std::span<const float> samples, std::vector<float>& frames, std::vector<FramePeak>* peaks = nullptr);

    // The filters, bins x bands, for tests of the mel scale.
    const RowMatrix& melFilters() const { return mel_; }

private:
    FrontEndParameters p_;
    RowMatrix cos_; // window x bins, Hann window folded in
    RowMatrix sin_;
    RowMatrix mel_; // bins x bands
    std::vector<float> pending_;
    Eigen::RowVectorXf real_, imaginary_, magnitude_, bands_;
};

} // namespace veltra
