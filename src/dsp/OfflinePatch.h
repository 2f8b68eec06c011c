#pragma once

#include "dsp/OfflineDriver.h"
#include "dsp/PdBase.h"

#include <filesystem>

namespace veltra {

// The tuner's patch opened from a private temporary file and driven
// offline at a given rate. Throws std::runtime_error when it cannot be
// written or opened.
class OfflinePatch {
public:
    OfflinePatch(PdBase& base, int sampleRate);
    ~OfflinePatch();
    OfflinePatch(const OfflinePatch&) = delete;
    OfflinePatch& operator=(const OfflinePatch&) = delete;

    OfflineDriver& driver() { return driver_; }

private:
    PdBase& base_;
    std::filesystem::path directory_;
    PdBase::PatchHandle patch_ = nullptr;
    OfflineDriver driver_;
};

} // namespace veltra
