#include "dsp/OfflineDriver.h"

#include "dsp/FiniteSamples.h"
#include "dsp/PdBase.h"
#include "dsp/VectorState.h"
#include "settings/Fatal.h"

#include <algorithm>
#include <array>

namespace veltra {

namespace {
constexpr int kChannelsOut = 2;
constexpr int kBlock = 64;
} // namespace

OfflineDriver::OfflineDriver(PdBase& base, int sampleRate)
    : base_(base)
    , sampleRate_(sampleRate)
{
    if (PdBase::blockSize() != kBlock)
        fatalError("libpd block size differs from the offline driver's");
    if (!base_.initAudio(1, kChannelsOut, sampleRate))
        fatalError("libpd refused the offline audio settings");
}

void OfflineDriver::run(std::span<const float> input, std::vector<float>* output)
{
    // The caller's thread may carry dirty vector state too (see VectorState.h).
    clearUpperVectorState();
    std::array<float, kBlock> in{};
    std::array<float, kBlock * kChannelsOut> out{};
    for (std::size_t start = 0; start < input.size(); start += kBlock) {
        const std::size_t n = std::min<std::size_t>(kBlock, input.size() - start);
        // Non-finite samples become silence here, as on the sound card's path.
        const auto from = input.begin() + static_cast<std::ptrdiff_t>(start);
        std::transform(from, from + static_cast<std::ptrdiff_t>(n), in.begin(), finiteOrSilence);
        std::fill(in.begin() + static_cast<std::ptrdiff_t>(n), in.end(), 0.0f);
        base_.processFloat(1, in.data(), out.data());
        frames_ += kBlock;
        if (output)
            output->insert(output->end(), out.begin(), out.end());
        base_.receiveMessages();
    }
}

} // namespace veltra
