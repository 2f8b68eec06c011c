#include "classify/SoundNetwork.h"

#include "settings/Fatal.h"

#include <algorithm>

namespace veltra {

namespace {

using ColumnMatrix = Eigen::Matrix<float, Eigen::Dynamic, Eigen::Dynamic, Eigen::ColMajor>;

// TensorFlow's SAME padding puts half the padding before the input, the odd
// row or column after it: a stride of 2 on an even size pads only the end.
int paddingBefore(int size, int stride)
{
    return std::max((samePaddedSize(size, stride) - 1) * stride + 3 - size, 0) / 2;
}

struct Shape {
    int height;
    int width;
    int channels;

    std::size_t values() const { return std::size_t(height) * std::size_t(width) * std::size_t(channels); }
};

Shape outputShape(const Shape& in, const BackboneLayer& layer)
{
    return {samePaddedSize(in.height, layer.stride), samePaddedSize(in.width, layer.stride), layer.outputs};
}

// Copies the 3x3 neighbourhood of every output position into one row of
// `columns`, taps in [row][column][channel] order as the weights store them,
// zero outside the input.
void unfold(const float* in, const Shape& shape, int stride, float* columns)
{
    const int top = paddingBefore(shape.height, stride);
    const int left = paddingBefore(shape.width, stride);
    const auto channels = static_cast<std::size_t>(shape.channels);
    float* tap = columns;
    for (int y = 0; y < samePaddedSize(shape.height, stride); ++y) {
        for (int x = 0; x < samePaddedSize(shape.width, stride); ++x) {
            for (int dy = 0; dy < 3; ++dy) {
                const int iy = y * stride + dy - top;
                for (int dx = 0; dx < 3; ++dx, tap += channels) {
                    const int ix = x * stride + dx - left;
                    if (iy < 0 || iy >= shape.height || ix < 0 || ix >= shape.width)
                        std::fill(tap, tap + channels, 0.0f);
                    else
                        std::copy_n(in + (std::size_t(iy) * std::size_t(shape.width) + std::size_t(ix)) * channels,
                                    channels, tap);
                }
            }
        }
    }
}

// One 3x3 filter per channel, then bias and ReLU. The inner loops run along
// the channels, which lie next to each other in both input and weights.
void depthwise(const float* in, const Shape& shape, int stride, const float* weights, const float* bias, float* out)
{
    const int top = paddingBefore(shape.height, stride);
    const int left = paddingBefore(shape.width, stride);
    const auto channels = static_cast<std::size_t>(shape.channels);
    for (int y = 0; y < samePaddedSize(shape.height, stride); ++y) {
        for (int x = 0; x < samePaddedSize(shape.width, stride); ++x, out += channels) {
            std::copy_n(bias, channels, out);
            for (int dy = 0; dy < 3; ++dy) {
                const int iy = y * stride + dy - top;
                if (iy < 0 || iy >= shape.height)
                    continue;
                for (int dx = 0; dx < 3; ++dx) {
                    const int ix = x * stride + dx - left;
                    if (ix < 0 || ix >= shape.width)
                        continue;
                    const float* source = in + (std::size_t(iy) * std::size_t(shape.width) + std::size_t(ix)) * channels;
                    const float* w = weights + std::size_t(dy * 3 + dx) * channels;
                    for (std::size_t c = 0; c < channels; ++c)
                        out[c] += w[c] * source[c];
                }
            }
            for (std::size_t c = 0; c < channels; ++c)
                out[c] = std::max(out[c], 0.0f);
        }
    }
}

// Output channels per matrix product: 8-bit weights are expanded one such
// block at a time, so the scratch stays at a block of the widest layer.
constexpr Eigen::Index kOutputBlock = 128;
// Up to this many positions (YAMNet's last seven layers have 24 or 6, and
// the classifier 1) a layer runs one output channel at a time.
constexpr Eigen::Index kFewPositions = 32;

void relu(float* values, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        values[i] = std::max(values[i], 0.0f);
}

} // namespace

SoundNetwork::SoundNetwork(const SoundModel& model) : model_(model)
{
    // Every buffer at its largest once, so that run() never allocates.
    Shape shape{model.frontEnd.patchFrames, model.frontEnd.melBands, 1};
    std::size_t activations = shape.values();
    // Expanded weights: a depthwise layer's, a block of rows, or one row.
    auto scratch = [](const BackboneLayer& layer) {
        if (layer.kind == LayerKind::Depthwise)
            return layer.weights.quantized.size();
        const auto inputs = std::size_t(layer.inputs) * (layer.kind == LayerKind::Convolution ? 9 : 1);
        const std::size_t rows = layer.weights.isQuantized() ? std::min(std::size_t(layer.outputs), std::size_t(kOutputBlock)) : 1;
        return inputs * rows;
    };
    std::size_t weights = scratch(model.classifier);
    for (const BackboneLayer& layer : model.backbone) {
        const Shape out = outputShape(shape, layer);
        if (layer.kind == LayerKind::Convolution)
            columns_.resize(std::max(columns_.size(), std::size_t(out.height) * std::size_t(out.width) * 9 *
                                                          std::size_t(shape.channels)));
        activations = std::max(activations, out.values());
        weights = std::max(weights, scratch(layer));
        shape = out;
    }
    input_.resize(activations);
    output_.resize(activations);
    weights_.resize(weights);
    perPosition_.resize(std::size_t(kFewPositions));
}

const float* SoundNetwork::depthwiseWeights(const BackboneLayer& layer)
{
    const StoredWeights& stored = layer.weights;
    if (!stored.isQuantized())
        return stored.values.data();
    // [row][column][channel]: the channel, which owns the scale, varies fastest.
    const auto channels = static_cast<std::size_t>(layer.outputs);
    for (std::size_t i = 0; i < stored.quantized.size(); i += channels)
        for (std::size_t c = 0; c < channels; ++c)
            weights_[i + c] = float(stored.quantized[i + c]) * stored.scales[c];
    return weights_.data();
}

// Expands `count` rows of `inputs` 8-bit weights, from row `first` on, into
// `out`, each with its output channel's scale.
void expandRows(const StoredWeights& stored, Eigen::Index first, Eigen::Index count, Eigen::Index inputs, float* out)
{
    for (Eigen::Index o = first; o < first + count; ++o) {
        const std::int8_t* row = stored.quantized.data() + o * inputs;
        const float scale = stored.scales[std::size_t(o)];
        for (Eigen::Index k = 0; k < inputs; ++k)
            *out++ = float(row[k]) * scale;
    }
}

void SoundNetwork::product(const BackboneLayer& layer, const float* in, Eigen::Index positions, float* out)
{
    const StoredWeights& stored = layer.weights;
    const auto outputs = static_cast<Eigen::Index>(layer.outputs);
    const auto inputs = Eigen::Index(layer.inputs) * (layer.kind == LayerKind::Convolution ? 9 : 1);
    const Eigen::Map<const RowMatrix> x(in, positions, inputs);
    Eigen::Map<RowMatrix> y(out, positions, outputs);
    if (positions <= kFewPositions) {
        // Each weight serves only a few positions: packing a block for a
        // matrix product would cost about as much as using it, so each
        // output channel's row is expanded once and multiplied by all
        // positions at once.
        Eigen::Map<Eigen::VectorXf> row(weights_.data(), inputs);
        Eigen::Map<Eigen::VectorXf> column(perPosition_.data(), positions);
        for (Eigen::Index o = 0; o < outputs; ++o) {
            if (stored.isQuantized())
                expandRows(stored, o, 1, inputs, row.data());
            else
                row = Eigen::Map<const Eigen::VectorXf>(stored.values.data() + o * inputs, inputs);
            column.noalias() = x * row;
            y.col(o) = column;
        }
    } else {
        for (Eigen::Index first = 0; first < outputs; first += kOutputBlock) {
            const Eigen::Index count = std::min(kOutputBlock, outputs - first);
            const float* weights = weights_.data();
            if (stored.isQuantized())
                expandRows(stored, first, count, inputs, weights_.data());
            else
                weights = stored.values.data() + first * inputs;
            // Rows of outputs x inputs, row-major, are their transpose column-major.
            y.middleCols(first, count).noalias() = x * Eigen::Map<const ColumnMatrix>(weights, inputs, count);
        }
    }
    y.rowwise() += Eigen::Map<const Eigen::RowVectorXf>(layer.bias.data(), outputs);
}

void SoundNetwork::run(std::span<const float> patch, std::span<float> embedding, std::span<float> logits)
{
    Shape shape{model_.frontEnd.patchFrames, model_.frontEnd.melBands, 1};
    if (patch.size() != shape.values() || embedding.size() != std::size_t(model_.embeddingSize()) ||
        logits.size() != model_.labels.size())
        fatalError("SoundNetwork::run called with a window or output buffer of the wrong size");

    std::copy(patch.begin(), patch.end(), input_.begin());
    for (const BackboneLayer& layer : model_.backbone) {
        const Shape out = outputShape(shape, layer);
        const auto positions = static_cast<Eigen::Index>(out.height) * out.width;
        switch (layer.kind) {
        case LayerKind::Convolution:
            unfold(input_.data(), shape, layer.stride, columns_.data());
            product(layer, columns_.data(), positions, output_.data());
            relu(output_.data(), out.values());
            break;
        case LayerKind::Depthwise:
            depthwise(input_.data(), shape, layer.stride, depthwiseWeights(layer), layer.bias.data(), output_.data());
            break;
        case LayerKind::Pointwise:
            product(layer, input_.data(), positions, output_.data());
            relu(output_.data(), out.values());
            break;
        }
        std::swap(input_, output_);
        shape = out;
    }

    const auto channels = static_cast<Eigen::Index>(shape.channels);
    Eigen::Map<Eigen::RowVectorXf> mean(embedding.data(), channels);
    mean = Eigen::Map<const RowMatrix>(input_.data(), Eigen::Index(shape.height) * shape.width, channels).colwise().mean();
    product(model_.classifier, embedding.data(), 1, logits.data());
}

} // namespace veltra
