#pragma once

#include "dsp/PdAudioController.h"

#include <functional>
#include <memory>
#include <ostream>

namespace veltra {

// Owns the process's one audio controller and starts it: 48000 Hz mono
// input first, one retry at 44100 Hz when that cannot run.
class AppDelegate {
public:
    using ControllerFactory = std::function<std::unique_ptr<PdAudioController>()>;

    AppDelegate(ControllerFactory makeController, std::ostream& console);

    // Launch only succeeds; audio starts with the first activation.
    bool applicationDidFinishLaunching() { return true; }

    void configureAudioController();
    PdAudioController* audioController() const { return audioController_.get(); }

    static constexpr int kSampleRate = 48000;
    static constexpr int kFallbackSampleRate = 44100;

private:
    ControllerFactory makeController_;
    std::ostream& console_;
    std::unique_ptr<PdAudioController> audioController_;
};

} // namespace veltra
