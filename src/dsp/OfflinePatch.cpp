#include "dsp/OfflinePatch.h"

#include "dsp/Patch.h"
#include "dsp/PatchFile.h"

#include <stdexcept>
#include <string>

namespace veltra {

OfflinePatch::OfflinePatch(PdBase& base, int sampleRate)
    : base_(base)
    , directory_(std::filesystem::temp_directory_path() / ("veltra-" + makeUuidString()))
    , driver_(base, sampleRate)
{
    const std::string name = makeUuidString();
    if (!writeFileAtomically(directory_ / name, std::string(CommonUtils::patch)))
        throw std::runtime_error("cannot write the patch to " + directory_.string());
    const auto patch = base_.openFile(name, directory_.string());
    std::error_code ignored;
    std::filesystem::remove_all(directory_, ignored); // libpd has read it
    if (!patch)
        throw std::runtime_error("libpd cannot open the patch");
    patch_ = *patch;
}

OfflinePatch::~OfflinePatch()
{
    base_.closeFile(patch_);
}

} // namespace veltra
