#pragma once

#include <Eigen/Core>

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace veltra {

// Raised with a one-line reason when a weight file cannot be used.
class SoundModelError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// How audio becomes the network's input: log-mel frames of 16 kHz audio cut
// into overlapping windows. Fixed by training; read from the weight file.
struct FrontEndParameters {
    int sampleRate = 0;
    int windowLength = 0;
    int hopLength = 0;
    int fftLength = 0;
    int melBands = 0;
    int patchFrames = 0;
    int patchHopFrames = 0;
    float melMinHz = 0;
    float melMaxHz = 0;
    float logOffset = 0;
};

using RowMatrix = Eigen::Matrix<float, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

// A layer's weights as the file stores them: float, or 8-bit with one scale
// per output channel (the backbone's larger layers, which keeps the loaded
// model near the file's 4 MB instead of four times that).
struct StoredWeights {
    std::vector<float> values;          // when stored as float
    std::vector<std::int8_t> quantized; // when stored as 8-bit
    std::vector<float> scales;          // one per output channel, 8-bit only

    bool isQuantized() const { return !quantized.empty(); }
};

// The backbone's three kinds of layer, numbered as in the file. Each is
// followed by its bias and ReLU; padding is TensorFlow's SAME.
enum class LayerKind : std::uint32_t {
    Convolution = 0, // full 3x3, weights [out][row][column][in]
    Depthwise = 1,   // 3x3 per channel, weights [row][column][channel]
    Pointwise = 2,   // 1x1, weights [out][in]
};

struct BackboneLayer {
    LayerKind kind = LayerKind::Pointwise;
    int stride = 1;
    int inputs = 0;
    int outputs = 0;
    StoredWeights weights;
    std::vector<float> bias;
};

struct DenseLayer {
    RowMatrix weights; // outputs x inputs
    Eigen::VectorXf bias;
};

// What the gate head reads: the embedding alone, or the embedding followed
// by the classifier's logits.
enum class HeadInput : std::uint32_t { Embedding = 0, EmbeddingAndLogits = 1 };

// The classifier as stored in its weight file: an AudioSet network (a
// convolutional backbone whose channel means are the embedding, and a linear
// classifier giving one logit per label), and a small head that gives one
// calibrated logit per gate category from the mean input of the last
// `context` windows.
struct SoundModel {
    FrontEndParameters frontEnd;
    std::vector<std::string> labels;
    std::vector<BackboneLayer> backbone;
    BackboneLayer classifier; // a pointwise layer on the embedding: labels x embedding
    std::vector<std::vector<int>> categories; // member label indices; no label in two
    int context = 1;
    HeadInput headInput = HeadInput::Embedding;
    std::vector<DenseLayer> head; // ReLU between layers; one output per category

    int embeddingSize() const { return backbone.back().outputs; }
    // What the head reads: the embedding, and the logits where it is told to.
    int headInputSize() const
    {
        return embeddingSize() + (headInput == HeadInput::EmbeddingAndLogits ? static_cast<int>(labels.size()) : 0);
    }
};

// A SAME-padded layer's output size along one axis: the input size over the
// stride, rounded up.
constexpr int samePaddedSize(int size, int stride)
{
    return (size + stride - 1) / stride;
}

// Reads and checks a weight file written by tools/classifier/backbone.py.
// The file is untrusted: anything that is not a well-formed model within
// sane bounds is refused with a SoundModelError naming the file, before any
// array is allocated from its sizes.
SoundModel loadSoundModel(const std::filesystem::path& path);

// Where the shipped weights are: beside the running program in the build
// tree, in the data directory that belongs to the program's bin/ when
// installed, else in the source tree the program was built from.
std::filesystem::path defaultSoundModelPath();

} // namespace veltra
