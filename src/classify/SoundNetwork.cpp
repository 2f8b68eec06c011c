#include "classify/SoundNetwork.h"

#include "settings/Fatal.h"

#include <algorithm>
#include <cmath>

namespace veltra {

namespace {

// Unfolds the 3x3 neighbourhoods of a channels x (height * width) image into
// columns, zero beyond the edges, so the convolution becomes one product.
void im2col(const RowMatrix& image, int height, int width, RowMatrix& columns)
{
    const auto channels = static_cast<int>(image.rows());
    columns.setZero(channels * 9, height * width);
    for (int c = 0; c < channels; ++c) {
        for (int dy = 0; dy < 3; ++dy) {
            for (int dx = 0; dx < 3; ++dx) {
                float* row = columns.row(c * 9 + dy * 3 + dx).data();
                const int first = std::max(0, 1 - dx);
                const int last = std::min(width, width + 1 - dx);
                for (int y = std::max(0, 1 - dy); y < std::min(height, height + 1 - dy); ++y) {
                    const float* source = image.row(c).data() + (y + dy - 1) * width + (dx - 1);
                    std::copy(source + first, source + last, row + y * width + first);
                }
            }
        }
    }
}

void maxPool(const RowMatrix& image, int height, int width, RowMatrix& pooled)
{
    const int h = height / 2;
    const int w = width / 2;
    pooled.resize(image.rows(), h * w);
    for (Eigen::Index c = 0; c < image.rows(); ++c) {
        const float* in = image.row(c).data();
        float* out = pooled.row(c).data();
        for (int y = 0; y < h; ++y) {
            for (int x = 0; x < w; ++x) {
                const float* p = in + 2 * y * width + 2 * x;
                out[y * w + x] = std::max({p[0], p[1], p[width], p[width + 1]});
            }
        }
    }
}

} // namespace

SoundNetwork::SoundNetwork(const SoundModel& model) : model_(model), activations_(model.convs.size() + 1) {}

void SoundNetwork::run(std::span<const float> patch, std::span<float> scores)
{
    int height = model_.frontEnd.patchFrames;
    int width = model_.frontEnd.melBands;
    if (patch.size() != static_cast<std::size_t>(height * width) || scores.size() != model_.classes.size())
        fatalError("SoundNetwork::run called with a window or score buffer of the wrong size");

    RowMatrix& input = activations_[0];
    input.resize(1, height * width);
    for (int y = 0; y < height; ++y) {
        Eigen::Map<const Eigen::RowVectorXf> frame(patch.data() + y * width, width);
        input.block(0, y * width, 1, width) =
            (frame - model_.bandMean).cwiseProduct(model_.bandInverseStd);
    }
    for (std::size_t i = 0; i < model_.convs.size(); ++i) {
        const ConvLayer& layer = model_.convs[i];
        im2col(activations_[i], height, width, columns_);
        RowMatrix& out = layer.pool ? convolved_ : activations_[i + 1];
        out.noalias() = layer.weights * columns_;
        out = (out.colwise() + layer.bias).cwiseMax(0.0f);
        if (layer.pool) {
            maxPool(convolved_, height, width, activations_[i + 1]);
            height /= 2;
            width /= 2;
        }
    }
    Eigen::VectorXf v = activations_.back().rowwise().mean();
    for (std::size_t i = 0; i < model_.denses.size(); ++i) {
        v = model_.denses[i].weights * v + model_.denses[i].bias;
        if (i + 1 < model_.denses.size())
            v = v.cwiseMax(0.0f);
    }
    for (std::size_t k = 0; k < scores.size(); ++k)
        scores[k] = 1.0f / (1.0f + std::exp(-v[static_cast<Eigen::Index>(k)]));
}

} // namespace veltra
