#pragma once

#include "classify/AnalysisQueue.h"
#include "classify/AudioInput.h"
#include "classify/SoundClassifier.h"
#include "classify/SoundGate.h"
#include "dsp/StallWatch.h"
#include "settings/NotificationCenter.h"
#include "settings/PreferenceStore.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <iostream>
#include <memory>
#include <string>

namespace veltra {

// Listens to the microphone a second time, beside the pitch patch, and keeps
// two answers up to date for the readout: whether an accepted kind of sound
// is being heard, and which category it belongs to.
//
// Threads: the input's callback only copies into the analysis queue; the
// queue's worker runs the classifier and the gate; updateIdentifiers,
// checkInput and the readers run on the main thread.
//
// The input has the tuner's watchdog (StallWatch): one that delivers
// nothing for kInputStallTimeout, or never opened, is opened again, so the
// gate hears again whatever way its input was lost. FallbackAudioInput then
// prefers the tuner's own stream, so a gate first switched on while there
// was no input does not stay on a stream of its own.
class SoundAnalysisEngine : public SoundDetection {
public:
    // Buffer handed from the audio thread to the analysis queue.
    static constexpr std::size_t kBufferFrames = 2048;
    // About three seconds at 48 kHz: a slow classifier drops audio rather
    // than stall the audio thread.
    static constexpr std::size_t kQueueCapacitySamples = 1 << 17;
    // Assumed for the classifier when no microphone could be opened; no
    // audio arrives then, so the value only has to be valid.
    static constexpr double kNoInputSampleRate = 48000.0;

    // Starts the microphone (a failure is reported on `console` and
    // construction goes on), and follows UpdateIdentifiers from `notifications`.
    SoundAnalysisEngine(const PreferenceStore& preferences, NotificationCenter& notifications,
                        std::unique_ptr<SoundClassifier> classifier, std::unique_ptr<AudioInput> input,
                        std::ostream& console = std::cout, std::function<double()> clock = {});
    ~SoundAnalysisEngine() override;

    SoundAnalysisEngine(const SoundAnalysisEngine&) = delete;
    SoundAnalysisEngine& operator=(const SoundAnalysisEngine&) = delete;

    // The process's one engine, made by the factory on first use and kept
    // until the process ends.
    using Factory = std::function<std::unique_ptr<SoundAnalysisEngine>()>;
    static void setSharedFactory(Factory factory);
    static SoundAnalysisEngine& shared();

    // The composition root's engine: the trained classifier and the given
    // microphone.
    static std::unique_ptr<SoundAnalysisEngine> makeDefault(const PreferenceStore& preferences,
                                                            NotificationCenter& notifications,
                                                            std::unique_ptr<AudioInput> input,
                                                            std::ostream& console = std::cout);

    bool isSoundDetected() const override { return gate_.isSoundDetected(); }
    std::string currentSound() const override { return gate_.currentSound(); }

    // Main thread, every frame or so: the input watchdog. A stalled or
    // unopened input is stopped and opened again, quietly.
    void checkInput();

    // Main thread: the Sounds_ preferences changed.
    void updateIdentifiers() { gate_.updateIdentifiers(); }

    // Analysis queue: outcomes of the classification request.
    void processResult(const SoundClassificationResult& result) { gate_.processResult(result); }
    void requestDidFail(const std::string& description);
    void requestDidComplete();

private:
    void reportStartFailure(const AudioInputError& error);
    // Opens and starts the input; false (reported or not) when it fails.
    bool startInput(bool report);
    void analyze(std::span<const float> buffer);
    std::unique_ptr<AnalysisQueue> makeQueue();

    std::ostream& console_;
    SoundGate gate_;
    std::unique_ptr<SoundClassifier> classifier_;
    std::unique_ptr<AudioInput> input_;
    NotificationCenter& notifications_;
    NotificationCenter::Token observer_ = 0;
    std::function<double()> clock_;
    StallWatch watch_;
    double sampleRate_ = kNoInputSampleRate;
    std::atomic<std::uint64_t> buffersHeard_{0}; // input callbacks with sound so far
    // Last member: its worker must stop before anything it uses goes away.
    std::unique_ptr<AnalysisQueue> analysisQueue_;
};

} // namespace veltra
