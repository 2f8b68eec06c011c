#pragma once

#include "classify/SoundModel.h"

#include <span>
#include <vector>

namespace veltra {

// The forward pass of a SoundModel's backbone and classifier on one log-mel
// window: a MobileNet of depthwise-separable convolutions (TensorFlow's SAME
// padding, ReLU after each), the mean over positions of its last layer (the
// embedding) and one logit per label. Activations are positions x channels,
// so that pointwise layers are one matrix product each and depthwise layers
// run along contiguous channels. 8-bit layers are expanded into one reused
// buffer as they run, a block of output channels at a time, which keeps the
// model compact in memory. Keeps its scratch between calls, so one instance
// serves one thread.
class SoundNetwork {
public:
    explicit SoundNetwork(const SoundModel& model);

    // patch: patchFrames x melBands, row-major. Writes the embedding
    // (embeddingSize values) and the classifier's logits (one per label).
    void run(std::span<const float> patch, std::span<float> embedding, std::span<float> logits);

private:
    // A depthwise layer's weights as floats: the stored ones, or expanded
    // into weights_ with their scales.
    const float* depthwiseWeights(const BackboneLayer& layer);
    // out (positions x outputs) = in (positions x inputs) * weightsᵀ + bias,
    // for a convolution's unfolded input, a pointwise layer or the classifier.
    void product(const BackboneLayer& layer, const float* in, Eigen::Index positions, float* out);

    const SoundModel& model_;
    std::vector<float> input_;
    std::vector<float> output_;
    std::vector<float> columns_; // the first layer's unfolded 3x3 neighbourhoods
    std::vector<float> weights_;
    std::vector<float> perPosition_; // one output channel of a layer with few positions
};

} // namespace veltra
