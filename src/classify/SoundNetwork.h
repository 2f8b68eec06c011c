#pragma once

#include "classify/SoundModel.h"

#include <span>
#include <vector>

namespace veltra {

// The forward pass of a SoundModel on one log-mel window. Keeps its scratch
// matrices between calls, so one instance serves one thread.
class SoundNetwork {
public:
    explicit SoundNetwork(const SoundModel& model);

    // patch: patchFrames x melBands, row-major. Writes one sigmoid score per
    // class to `scores`.
    void run(std::span<const float> patch, std::span<float> scores);

private:
    const SoundModel& model_;
    std::vector<RowMatrix> activations_; // one per conv layer's input, then the last output
    RowMatrix columns_;
    RowMatrix convolved_;
};

} // namespace veltra
