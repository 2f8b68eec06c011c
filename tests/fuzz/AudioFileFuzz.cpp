// The audio input as the commands use it: a file of any bytes is opened,
// checked against the bounds, converted where its rate asks for it, and its
// first seconds played through the patch. A crash, a leak or an endless
// loop here is one a downloaded or damaged recording could cause.
#include "AudioInput.h"
#include "Command.h"
#include "FuzzInput.h"

#include "dsp/OfflinePatch.h"

#include <cstdint>

namespace {

// Enough for the patch's analysers to fill and report, little enough that
// the fuzzer tries many files a second.
constexpr std::size_t kMostBlocks = 4;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const veltra::fuzz::MemoryFile file(data, size);
    if (!file.ok())
        return 0;
    try {
        veltra::cli::AudioInput audio(file.path());
        veltra::PdBase base;
        veltra::OfflinePatch patch(base, static_cast<int>(audio.sampleRate()));
        std::size_t blocks = 0;
        audio.stream(veltra::cli::kStreamFrames, [&](std::span<const float> block) {
            if (++blocks <= kMostBlocks)
                patch.driver().run(block);
        });
    } catch (const veltra::cli::UsageError&) {
        // A refused file is the expected outcome for most inputs.
    }
    return 0;
}
