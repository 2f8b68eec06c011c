#include "classify/SoundModel.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <set>
#include <system_error>

namespace veltra {

namespace {

// The file is little-endian and read by plain copies.
static_assert(std::endian::native == std::endian::little);

constexpr char kMagic[4] = {'V', 'L', 'T', 'S'};
constexpr std::uint32_t kVersion = 2;

// Bounds far above the shipped model (a 4 MB file, 1024 channels, 521
// labels) that keep a damaged or hostile file from making the loader or
// the network allocate or compute without limit.
constexpr off_t kMaxFileBytes = off_t{32} << 20;
constexpr std::uint32_t kMaxLabels = 4096;
constexpr std::uint32_t kMaxLabelBytes = 128;
constexpr std::uint32_t kMaxLayers = 64;
constexpr std::uint32_t kMaxChannels = 4096;
constexpr std::uint32_t kMaxCategories = 64;
constexpr std::uint32_t kMaxContext = 16;
constexpr std::uint32_t kMaxHeadLayers = 8;
constexpr std::size_t kMaxActivationValues = std::size_t{1} << 22;
constexpr std::size_t kMaxMultiplyAdds = std::size_t{1} << 30;
// Rates whose ratio to every common input rate keeps the resampler's
// polyphase table small.
constexpr std::array<std::uint32_t, 8> kSampleRates{8000, 11025, 16000, 22050, 24000, 32000, 44100, 48000};
// The front end evaluates its DFT as two window x bins matrices.
constexpr std::uint32_t kMaxFftLength = 2048;
constexpr std::uint32_t kMaxPatchFrames = 1024;

class Reader {
public:
    Reader(std::vector<char> data, std::string name) : data_(std::move(data)), name_(std::move(name)) {}

    std::uint32_t u32()
    {
        std::uint32_t value = 0;
        copy(&value, sizeof value);
        return value;
    }

    // A count or size that must lie in [low, high].
    std::uint32_t u32In(std::uint32_t low, std::uint32_t high, const std::string& what)
    {
        const std::uint32_t value = u32();
        if (value < low || value > high)
            fail(what + " is " + std::to_string(value) + ", outside " + std::to_string(low) + " to " +
                 std::to_string(high));
        return value;
    }

    void expect(std::uint32_t expected, const std::string& what)
    {
        if (const std::uint32_t value = u32(); value != expected)
            fail(what + " is " + std::to_string(value) + " where " + std::to_string(expected) + " fits");
    }

    float finiteFloat(const std::string& what)
    {
        float value = 0;
        copy(&value, sizeof value);
        if (!std::isfinite(value))
            fail(what + " is not a finite number");
        return value;
    }

    // Checks the size against what is left before allocating.
    std::vector<float> finiteFloats(std::size_t count, const std::string& what)
    {
        require(count, sizeof(float));
        std::vector<float> values(count);
        copy(values.data(), count * sizeof(float));
        if (!std::all_of(values.begin(), values.end(), [](float v) { return std::isfinite(v); }))
            fail(what + " holds a value that is not a finite number");
        return values;
    }

    std::vector<std::int8_t> bytes(std::size_t count)
    {
        require(count, 1);
        std::vector<std::int8_t> values(count);
        copy(values.data(), count);
        return values;
    }

    std::string text(std::size_t size)
    {
        require(size, 1);
        std::string value(size, '\0');
        copy(value.data(), size);
        return value;
    }

    bool atEnd() const { return position_ == data_.size(); }

    [[noreturn]] void fail(const std::string& reason) const { throw SoundModelError(name_ + ": " + reason); }

private:
    void require(std::size_t count, std::size_t size) const
    {
        if ((data_.size() - position_) / size < count)
            fail("file is truncated");
    }

    void copy(void* out, std::size_t size)
    {
        require(size, 1);
        std::memcpy(out, data_.data() + position_, size);
        position_ += size;
    }

    std::vector<char> data_;
    std::string name_;
    std::size_t position_ = 0;
};

// Opened without blocking and checked on the open descriptor, so that a
// FIFO, a device such as /dev/zero or a file swapped in between cannot hang
// the caller or feed it without end.
std::vector<char> readBounded(const std::filesystem::path& path)
{
    const std::string name = path.string();
    auto failure = [&](const std::string& reason) { return SoundModelError(name + ": " + reason); };
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (fd < 0)
        throw failure("cannot open: " + std::generic_category().message(errno));
    struct Closer {
        int fd;
        ~Closer() { ::close(fd); }
    } closer{fd};
    struct stat info {};
    if (::fstat(fd, &info) != 0)
        throw failure("cannot read: " + std::generic_category().message(errno));
    if (!S_ISREG(info.st_mode))
        throw failure("not a regular file");
    if (info.st_size > kMaxFileBytes)
        throw failure("larger than 32 MiB, far too large for a sound model");
    std::vector<char> data(static_cast<std::size_t>(info.st_size));
    std::size_t got = 0;
    while (got < data.size()) {
        const ssize_t n = ::read(fd, data.data() + got, data.size() - got);
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0)
            throw failure("cannot read: " + std::generic_category().message(errno));
        if (n == 0)
            break; // shrunk while read: what is there is judged as it is
        got += static_cast<std::size_t>(n);
    }
    data.resize(got);
    return data;
}

bool isPowerOfTwo(std::uint32_t value)
{
    return value != 0 && (value & (value - 1)) == 0;
}

FrontEndParameters readFrontEnd(Reader& in)
{
    FrontEndParameters p;
    const std::uint32_t rate = in.u32();
    if (std::find(kSampleRates.begin(), kSampleRates.end(), rate) == kSampleRates.end())
        in.fail("sample rate " + std::to_string(rate) + " Hz is not a common audio rate");
    p.sampleRate = static_cast<int>(rate);
    p.windowLength = static_cast<int>(in.u32In(16, kMaxFftLength, "the frame length"));
    p.hopLength = static_cast<int>(in.u32In(1, static_cast<std::uint32_t>(p.windowLength), "the frame hop"));
    const std::uint32_t fft = in.u32In(static_cast<std::uint32_t>(p.windowLength), kMaxFftLength, "the FFT length");
    if (!isPowerOfTwo(fft))
        in.fail("the FFT length " + std::to_string(fft) + " is not a power of two");
    p.fftLength = static_cast<int>(fft);
    p.melBands = static_cast<int>(in.u32In(1, fft / 2, "the number of mel bands"));
    p.patchFrames = static_cast<int>(in.u32In(1, kMaxPatchFrames, "the window's frame count"));
    p.patchHopFrames = static_cast<int>(in.u32In(1, static_cast<std::uint32_t>(p.patchFrames), "the window hop"));
    p.melMinHz = in.finiteFloat("the lowest mel frequency");
    p.melMaxHz = in.finiteFloat("the highest mel frequency");
    p.logOffset = in.finiteFloat("the log offset");
    if (!(p.melMinHz >= 0 && p.melMinHz < p.melMaxHz && p.melMaxHz <= p.sampleRate / 2.0f))
        in.fail("the mel range does not lie within 0 Hz and half the sample rate");
    if (!(p.logOffset > 0 && p.logOffset <= 1))
        in.fail("the log offset is not above 0 and at most 1");
    return p;
}

bool isValidUtf8(std::string_view text)
{
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        std::size_t length = 0;
        char32_t code = 0;
        if (lead < 0x80) {
            length = 1;
            code = lead;
        } else if ((lead & 0xE0) == 0xC0) {
            length = 2;
            code = lead & 0x1F;
        } else if ((lead & 0xF0) == 0xE0) {
            length = 3;
            code = lead & 0x0F;
        } else if ((lead & 0xF8) == 0xF0) {
            length = 4;
            code = lead & 0x07;
        } else {
            return false;
        }
        if (text.size() - i < length)
            return false;
        for (std::size_t k = 1; k < length; ++k) {
            const auto next = static_cast<unsigned char>(text[i + k]);
            if ((next & 0xC0) != 0x80)
                return false;
            code = (code << 6) | (next & 0x3F);
        }
        constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
        if (code < kSmallest[length] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
            return false; // overlong, beyond Unicode, or a surrogate
        i += length;
    }
    return true;
}

// Labels are printed one word each (classify's columns, the console line of
// the gate): valid UTF-8 without spaces or control characters, and unique.
std::vector<std::string> readLabels(Reader& in)
{
    const std::uint32_t count = in.u32In(1, kMaxLabels, "the number of labels");
    std::vector<std::string> labels;
    std::set<std::string, std::less<>> seen;
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::string where = "label " + std::to_string(i);
        std::string label = in.text(in.u32In(1, kMaxLabelBytes, "the length of " + where));
        if (!isValidUtf8(label) ||
            std::any_of(label.begin(), label.end(), [](char c) { return static_cast<unsigned char>(c) <= 0x20 || c == 0x7F; }))
            in.fail(where + " is not a word of UTF-8 text");
        if (!seen.insert(label).second)
            in.fail(where + " repeats an earlier label");
        labels.push_back(std::move(label));
    }
    return labels;
}

// Encoding, then the scales, weights and bias of a layer with `perOutput`
// weights for each of its outputs.
void readWeights(Reader& in, BackboneLayer& layer, std::size_t perOutput, const std::string& where)
{
    const std::uint32_t encoding = in.u32In(0, 1, "the encoding of " + where);
    const std::size_t count = perOutput * static_cast<std::size_t>(layer.outputs);
    if (encoding == 1) {
        layer.weights.scales = in.finiteFloats(static_cast<std::size_t>(layer.outputs), "the scales of " + where);
        layer.weights.quantized = in.bytes(count);
    } else {
        layer.weights.values = in.finiteFloats(count, "the weights of " + where);
    }
    layer.bias = in.finiteFloats(static_cast<std::size_t>(layer.outputs), "the bias of " + where);
}

// The first layer is a full convolution of the one-channel log-mel window;
// depthwise and pointwise layers follow in pairs, each taking the channels
// the layer before gives. Also bounds the largest activation.
std::vector<BackboneLayer> readBackbone(Reader& in, const FrontEndParameters& frontEnd)
{
    const std::uint32_t count = in.u32In(1, kMaxLayers, "the number of backbone layers");
    if (count % 2 != 1)
        in.fail("the backbone does not end in a pointwise layer");
    std::vector<BackboneLayer> layers;
    int channels = 1;
    int height = frontEnd.patchFrames;
    int width = frontEnd.melBands;
    std::size_t multiplyAdds = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::string where = "backbone layer " + std::to_string(i);
        BackboneLayer layer;
        const LayerKind expected = i == 0 ? LayerKind::Convolution : i % 2 == 1 ? LayerKind::Depthwise : LayerKind::Pointwise;
        in.expect(static_cast<std::uint32_t>(expected), "the kind of " + where);
        layer.kind = expected;
        layer.stride = static_cast<int>(in.u32In(1, 2, "the stride of " + where));
        if (layer.kind == LayerKind::Pointwise && layer.stride != 1)
            in.fail(where + " is pointwise with a stride of " + std::to_string(layer.stride));
        in.expect(static_cast<std::uint32_t>(channels), "the input channels of " + where);
        layer.inputs = channels;
        if (layer.kind == LayerKind::Depthwise)
            in.expect(static_cast<std::uint32_t>(channels), "the output channels of depthwise " + where);
        layer.outputs = layer.kind == LayerKind::Depthwise
                            ? channels
                            : static_cast<int>(in.u32In(1, kMaxChannels, "the output channels of " + where));
        height = samePaddedSize(height, layer.stride);
        width = samePaddedSize(width, layer.stride);
        const auto positions = static_cast<std::size_t>(height) * static_cast<std::size_t>(width);
        const std::size_t perOutput = layer.kind == LayerKind::Convolution ? 9 * static_cast<std::size_t>(channels)
                                      : layer.kind == LayerKind::Depthwise ? 9
                                                                           : static_cast<std::size_t>(channels);
        // The first layer unfolds its input into positions x taps columns.
        const std::size_t widest = std::max<std::size_t>(
            static_cast<std::size_t>(layer.outputs), layer.kind == LayerKind::Convolution ? perOutput : 1);
        if (positions * widest > kMaxActivationValues)
            in.fail(where + " would need more than " + std::to_string(kMaxActivationValues) + " activations");
        multiplyAdds += positions * perOutput * static_cast<std::size_t>(layer.outputs);
        if (multiplyAdds > kMaxMultiplyAdds)
            in.fail("the backbone would need more than " + std::to_string(kMaxMultiplyAdds) +
                    " multiply-adds per window");
        readWeights(in, layer, perOutput, where);
        channels = layer.outputs;
        layers.push_back(std::move(layer));
    }
    return layers;
}

BackboneLayer readClassifier(Reader& in, int labels, int embedding)
{
    BackboneLayer layer;
    in.expect(static_cast<std::uint32_t>(labels), "the classifier's output count");
    in.expect(static_cast<std::uint32_t>(embedding), "the classifier's input count");
    layer.inputs = embedding;
    layer.outputs = labels;
    readWeights(in, layer, static_cast<std::size_t>(embedding), "the classifier");
    return layer;
}

std::vector<std::vector<int>> readCategories(Reader& in, std::uint32_t labels)
{
    const std::uint32_t count = in.u32In(1, kMaxCategories, "the number of categories");
    std::vector<std::vector<int>> categories(count);
    std::vector<bool> used(labels);
    for (std::uint32_t c = 0; c < count; ++c) {
        const std::string where = "category " + std::to_string(c);
        const std::uint32_t members = in.u32In(1, labels, "the label count of " + where);
        for (std::uint32_t m = 0; m < members; ++m) {
            const std::uint32_t index = in.u32In(0, labels - 1, "a label index of " + where);
            if (used[index])
                in.fail(where + " names label " + std::to_string(index) + " a second time");
            used[index] = true;
            categories[c].push_back(static_cast<int>(index));
        }
    }
    return categories;
}

std::vector<DenseLayer> readHead(Reader& in, int inputs, int categories)
{
    const std::uint32_t count = in.u32In(1, kMaxHeadLayers, "the number of head layers");
    std::vector<DenseLayer> layers;
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::string where = "head layer " + std::to_string(i);
        const int outputs = static_cast<int>(
            i + 1 == count ? in.u32In(static_cast<std::uint32_t>(categories), static_cast<std::uint32_t>(categories),
                                      "the output count of the last " + where)
                           : in.u32In(1, kMaxChannels, "the output count of " + where));
        in.expect(static_cast<std::uint32_t>(inputs), "the input count of " + where);
        DenseLayer layer;
        const auto weights = in.finiteFloats(static_cast<std::size_t>(outputs) * static_cast<std::size_t>(inputs),
                                             "the weights of " + where);
        layer.weights = Eigen::Map<const RowMatrix>(weights.data(), outputs, inputs);
        const auto bias = in.finiteFloats(static_cast<std::size_t>(outputs), "the bias of " + where);
        layer.bias = Eigen::Map<const Eigen::VectorXf>(bias.data(), outputs);
        layers.push_back(std::move(layer));
        inputs = outputs;
    }
    return layers;
}

} // namespace

SoundModel loadSoundModel(const std::filesystem::path& path)
{
    Reader in(readBounded(path), path.string());
    if (in.text(sizeof kMagic) != std::string_view(kMagic, sizeof kMagic))
        in.fail("not a Veltra sound model");
    if (const std::uint32_t version = in.u32(); version != kVersion)
        in.fail("unsupported version " + std::to_string(version));

    SoundModel model;
    model.frontEnd = readFrontEnd(in);
    model.labels = readLabels(in);
    model.backbone = readBackbone(in, model.frontEnd);
    const auto labels = static_cast<int>(model.labels.size());
    model.classifier = readClassifier(in, labels, model.embeddingSize());
    model.categories = readCategories(in, static_cast<std::uint32_t>(labels));
    model.context = static_cast<int>(in.u32In(1, kMaxContext, "the context"));
    model.headInput = static_cast<HeadInput>(in.u32In(0, 1, "the head's input kind"));
    model.head = readHead(in, model.headInputSize(), static_cast<int>(model.categories.size()));
    if (!in.atEnd())
        in.fail("unexpected data after the head");
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
