#pragma once

#include "classify/SoundModel.h"

#include <Eigen/Core>

#include <span>
#include <vector>

namespace veltra {

// Turns a stream of audio at the model's rate into log-mel frames: a Hann
// window, the magnitude of a real DFT, triangular filters on the HTK mel
// scale, and log(x + offset).
class LogMelFrontEnd {
public:
    explicit LogMelFrontEnd(const FrontEndParameters& parameters);

    void reset();

    // Appends samples; each completed frame is appended to `frames` as one
    // row of melBands values.
    void process(std::span<const float> samples, std::vector<float>& frames);

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
