#pragma once

#include <Eigen/Core>

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

// A 3x3 'same' convolution with its batch normalisation folded in, then ReLU,
// then optionally 2x2 max pooling.
struct ConvLayer {
    int inChannels = 0;
    int outChannels = 0;
    bool pool = false;
    RowMatrix weights; // outChannels x (inChannels * 9), taps in [channel][row][column] order
    Eigen::VectorXf bias;
};

struct DenseLayer {
    RowMatrix weights; // outputs x inputs
    Eigen::VectorXf bias;
};

// The trained classifier as stored in its weight file: front-end settings,
// label names, input normalisation and layers.
struct SoundModel {
    FrontEndParameters frontEnd;
    std::vector<std::string> classes;
    Eigen::RowVectorXf bandMean;
    Eigen::RowVectorXf bandInverseStd;
    std::vector<ConvLayer> convs;
    std::vector<DenseLayer> denses; // ReLU between them, sigmoid after the last
};

// Reads and checks a weight file written by tools/classifier/train.py.
SoundModel loadSoundModel(const std::filesystem::path& path);

// Where the shipped weights are: beside the running program in the build
// tree, in the data directory that belongs to the program's bin/ when
// installed, else in the source tree the program was built from.
std::filesystem::path defaultSoundModelPath();

} // namespace veltra
