// The sound model loader on a file of any bytes: it must refuse what it
// cannot use with its one error, never crash, hang or take unbounded memory.
#include "FuzzInput.h"

#include "classify/SoundModel.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const veltra::fuzz::MemoryFile file(data, size);
    if (!file.ok())
        return 0;
    try {
        veltra::loadSoundModel(file.path());
    } catch (const veltra::SoundModelError&) {
        // Refused, as a damaged or foreign file must be.
    }
    return 0;
}
