#pragma once

#include "app/ViewController.h"
#include "dsp/AudioSession.h"
#include "dsp/PatchFile.h"
#include "dsp/PdBase.h"
#include "settings/MemoryPreferenceStore.h"
#include "settings/NotificationCenter.h"
#include "support/FakeAudioBackend.h"
#include "support/ManualMainQueue.h"

#include <filesystem>
#include <sstream>

namespace veltra::test {

// Everything the main screen's logic needs, held by the test: a real libpd
// engine, a scripted sound system, an in-memory store, a main queue that
// runs when the test says, a cache directory of its own and a clock the test
// sets. Tests adjust the dependencies before making the screen.
struct ScreenRig {
    std::filesystem::path caches = std::filesystem::temp_directory_path() / ("veltra-screen-" + makeUuidString());
    PdBase base;
    FakeAudioBackend backend;
    AudioSession session{backend};
    MemoryPreferenceStore preferences;
    NotificationCenter notifications;
    ManualMainQueue mainQueue;
    std::ostringstream console, diagnostics;
    double now = 100.0;

    ~ScreenRig() { std::filesystem::remove_all(caches); }

    ViewController::Dependencies dependencies()
    {
        return {
            .preferences = preferences,
            .notifications = notifications,
            .pdBase = base,
            .audioSession = session,
            .mainQueue = [this](std::function<void()> task) { mainQueue.post(std::move(task)); },
            .console = console,
            .diagnostics = diagnostics,
            .cachesDirectory = caches,
            .clock = [this] { return now; },
            .soundAnalysis = {},
            .clockTimer = nullptr,
            .fontAvailable = {},
            .localizedTime = {},
        };
    }
};

} // namespace veltra::test
