#include "classify/SoundModel.h"

#include <bit>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <system_error>

namespace veltra {

namespace {

// The file is little-endian and read by plain copies.
static_assert(std::endian::native == std::endian::little);

constexpr char kMagic[4] = {'V', 'L', 'T', 'S'};
constexpr std::uint32_t kVersion = 1;
// Far above anything trained here; rejects a corrupt size before it allocates.
constexpr std::uint32_t kMaxDimension = 1u << 16;

class Reader {
public:
    Reader(std::vector<char> data, std::string name) : data_(std::move(data)), name_(std::move(name)) {}

    std::uint32_t u32()
    {
        std::uint32_t value = 0;
        copy(&value, sizeof value);
        return value;
    }

    std::uint32_t dimension()
    {
        const std::uint32_t value = u32();
        if (value == 0 || value > kMaxDimension)
            fail("implausible size " + std::to_string(value));
        return value;
    }

    float f32()
    {
        float value = 0;
        copy(&value, sizeof value);
        return value;
    }

    void floats(float* out, std::size_t count) { copy(out, count * sizeof(float)); }
    void bytes(char* out, std::size_t count) { copy(out, count); }

    std::string text()
    {
        std::string value(dimension(), '\0');
        copy(value.data(), value.size());
        return value;
    }

    bool atEnd() const { return position_ == data_.size(); }

    [[noreturn]] void fail(const std::string& reason) const
    {
        throw SoundModelError(name_ + ": " + reason);
    }

private:
    void copy(void* out, std::size_t size)
    {
        if (data_.size() - position_ < size)
            fail("file is truncated");
        std::memcpy(out, data_.data() + position_, size);
        position_ += size;
    }

    std::vector<char> data_;
    std::string name_;
    std::size_t position_ = 0;
};

RowMatrix readMatrix(Reader& in, int rows, int columns)
{
    RowMatrix m(rows, columns);
    in.floats(m.data(), static_cast<std::size_t>(m.size()));
    return m;
}

Eigen::VectorXf readVector(Reader& in, int size)
{
    Eigen::VectorXf v(size);
    in.floats(v.data(), static_cast<std::size_t>(size));
    return v;
}

FrontEndParameters readFrontEnd(Reader& in)
{
    FrontEndParameters p;
    for (int* field : {&p.sampleRate, &p.windowLength, &p.hopLength, &p.fftLength, &p.melBands, &p.patchFrames,
                       &p.patchHopFrames})
        *field = static_cast<int>(in.dimension());
    p.melMinHz = in.f32();
    p.melMaxHz = in.f32();
    p.logOffset = in.f32();
    if (p.windowLength > p.fftLength || p.patchHopFrames > p.patchFrames || !(p.melMaxHz > p.melMinHz) ||
        !(p.logOffset > 0))
        in.fail("inconsistent front-end parameters");
    return p;
}

} // namespace

SoundModel loadSoundModel(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw SoundModelError(path.string() + ": cannot open");
    Reader in(std::vector<char>(std::istreambuf_iterator<char>(file), {}), path.string());
    char magic[sizeof kMagic];
    in.bytes(magic, sizeof magic);
    if (std::memcmp(magic, kMagic, sizeof kMagic) != 0)
        in.fail("not a Veltra sound model");
    if (const std::uint32_t version = in.u32(); version != kVersion)
        in.fail("unsupported version " + std::to_string(version));

    SoundModel model;
    model.frontEnd = readFrontEnd(in);
    const int bands = model.frontEnd.melBands;
    for (std::uint32_t i = 0, n = in.dimension(); i < n; ++i)
        model.classes.push_back(in.text());
    model.bandMean = readVector(in, bands).transpose();
    model.bandInverseStd = readVector(in, bands).transpose();

    int channels = 1;
    for (std::uint32_t i = 0, n = in.dimension(); i < n; ++i) {
        ConvLayer layer;
        layer.outChannels = static_cast<int>(in.dimension());
        layer.inChannels = static_cast<int>(in.dimension());
        if (layer.inChannels != channels || in.dimension() != 3 || in.dimension() != 3)
            in.fail("convolution " + std::to_string(i) + " does not fit its input");
        layer.pool = in.u32() != 0;
        layer.weights = readMatrix(in, layer.outChannels, layer.inChannels * 9);
        layer.bias = readVector(in, layer.outChannels);
        channels = layer.outChannels;
        model.convs.push_back(std::move(layer));
    }
    int inputs = channels;
    for (std::uint32_t i = 0, n = in.dimension(); i < n; ++i) {
        DenseLayer layer;
        const int outputs = static_cast<int>(in.dimension());
        if (static_cast<int>(in.dimension()) != inputs)
            in.fail("dense layer " + std::to_string(i) + " does not fit its input");
        layer.weights = readMatrix(in, outputs, inputs);
        layer.bias = readVector(in, outputs);
        inputs = outputs;
        model.denses.push_back(std::move(layer));
    }
    if (inputs != static_cast<int>(model.classes.size()))
        in.fail("the network has " + std::to_string(inputs) + " outputs for " +
                std::to_string(model.classes.size()) + " classes");
    if (!in.atEnd())
        in.fail("unexpected data after the last layer");
    return model;
}

std::filesystem::path defaultSoundModelPath()
{
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (!error) {
        const auto bin = program.parent_path();
        for (const auto& candidate : {bin / "sounds.bin", bin / VELTRA_SOUND_MODEL_FROM_PROGRAM})
            if (std::filesystem::exists(candidate, error))
                return candidate.lexically_normal();
    }
    return VELTRA_SOUND_MODEL_PATH;
}

} // namespace veltra
