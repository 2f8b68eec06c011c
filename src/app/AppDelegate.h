#pragma once

#include "app/AudioState.h"
#include "dsp/PdAudioController.h"
#include "dsp/StallWatch.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <ostream>
#include <string>

namespace veltra {

// Owns the process's one audio controller and starts it: 48000 Hz mono
// input first, one retry at 44100 Hz when that cannot run.
//
// A stream that is lost or cannot be opened is not given up: while audio is
// wanted, the host calls retryAudio() every kRetryInterval, and the same
// controller is configured afresh until a stream runs again. The controller
// object stays, so whatever listens on it (the classifier's input tap)
// follows.
//
// Lost means no input: one watchdog for every cause. While the stream is
// meant to run, a buffer must arrive at least every kStallTimeout; when none
// does (the server died, the device went away, the server stopped feeding a
// stream after a suspend, a driver hung), the stream counts as lost. The
// back end's own report of a failure (deviceLost) only says so sooner. A
// reopened stream counts as running again once its first buffer arrives,
// so a source that stays silent shows one pause, not a flicker of returns.
//
// The input is the one the user chose (read at every opening, so a choice
// made in the settings or in the file takes a new stream at the next
// check), or the system default. While the chosen input is away the default
// stands in, said in one line, and another says when it is back.
class AppDelegate {
public:
    using ControllerFactory = std::function<std::unique_ptr<PdAudioController>()>;
    using Clock = std::function<double()>; // seconds on a steady clock
    // The chosen input's identifier, empty for the system default.
    using InputChoice = std::function<std::string()>;

    AppDelegate(ControllerFactory makeController, std::ostream& console, Clock clock = {},
                InputChoice chosenInput = {});

    // Launch only succeeds; audio starts with the first activation.
    bool applicationDidFinishLaunching() { return true; }

    // Starts audio and wants it from now on.
    void configureAudioController();
    // Stops audio and no longer wants it.
    void stopAudio();
    // Main thread, cheap enough for every frame: a stream lost (or silent
    // for kStallTimeout) since the last call is stopped, and the state
    // becomes NoInput; a reopened one that has delivered becomes Running.
    AudioState checkAudio();
    // Main thread, every kRetryInterval: while the state is NoInput and no
    // reopened stream is on its way, tries to open one again, quietly.
    AudioState retryAudio();
    AudioState audioState() const { return state_; }
    PdAudioController* audioController() const { return audioController_.get(); }

    // How often the host calls retryAudio(): twice a second finds a sound
    // server that is back soon enough to read the next note within two
    // seconds of its return (half a second of waiting at most, then the
    // stream's opening and the note's own onset), and a failed attempt (a
    // refused connection) costs next to nothing.
    static constexpr double kRetryInterval = 0.5;
    static constexpr double kStallTimeout = kInputStallTimeout;

    static constexpr int kSampleRate = 48000;
    static constexpr int kFallbackSampleRate = 44100;

private:
    PdAudioStatus startStream();
    void reportInputFallback();

    ControllerFactory makeController_;
    std::ostream& console_;
    Clock clock_;
    InputChoice chosenInput_;
    std::string openedInput_;   // the choice the stream was opened with
    bool fallbackShown_ = false; // the last line said the default stands in
    std::unique_ptr<PdAudioController> audioController_;
    AudioState state_ = AudioState::Stopped;
    StallWatch watch_;
    bool reopened_ = false; // active since a retry, no buffer heard yet
};

} // namespace veltra
