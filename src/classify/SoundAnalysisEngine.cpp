#include "classify/SoundAnalysisEngine.h"

#include "classify/NeuralSoundClassifier.h"
#include "settings/Fatal.h"

#include <algorithm>
#include <exception>

namespace veltra {

namespace {

SoundAnalysisEngine::Factory& sharedFactory()
{
    static SoundAnalysisEngine::Factory factory;
    return factory;
}

} // namespace

SoundAnalysisEngine::SoundAnalysisEngine(const PreferenceStore& preferences, NotificationCenter& notifications,
                                         std::unique_ptr<SoundClassifier> classifier,
                                         std::unique_ptr<AudioInput> input, std::ostream& console,
                                         std::function<double()> clock)
    : console_(console), gate_(preferences, console), classifier_(std::move(classifier)), input_(std::move(input)),
      notifications_(notifications), clock_(clock ? std::move(clock) : std::function<double()>(&StallWatch::now))
{
    if (!input_)
        fatalError("SoundAnalysisEngine needs an audio input");
    startInput(true);
    observer_ = notifications_.addObserver(Notification::UpdateIdentifiers, [this](const void*) { updateIdentifiers(); });
    updateIdentifiers();
}

std::unique_ptr<AnalysisQueue> SoundAnalysisEngine::makeQueue()
{
    return std::make_unique<AnalysisQueue>(kBufferFrames, kQueueCapacitySamples,
                                           [this](std::span<const float> buffer) { analyze(buffer); });
}

bool SoundAnalysisEngine::startInput(bool report)
{
    watch_.restart(buffersHeard_.load(std::memory_order_relaxed), clock_());
    double sampleRate = kNoInputSampleRate;
    bool opened = false;
    try {
        sampleRate = input_->open();
        opened = true;
    } catch (const AudioInputError& error) {
        if (report)
            reportStartFailure(error);
    }
    // The classifier learns the rate before the first buffer can reach it;
    // a new rate waits until what the worker holds from the old one is done.
    // An input that did not open brings no audio and leaves the rate alone.
    if (!analysisQueue_ || (opened && sampleRate != sampleRate_)) {
        analysisQueue_.reset();
        sampleRate_ = sampleRate;
        if (classifier_)
            classifier_->reset(sampleRate);
        analysisQueue_ = makeQueue();
    }
    if (!opened)
        return false;
    try {
        input_->start([this](std::span<const float> samples) {
            // Digital silence is no input here either (PdAudioController::buffersHeard).
            if (std::any_of(samples.begin(), samples.end(), [](float s) { return s != 0.0f; }))
                buffersHeard_.fetch_add(1, std::memory_order_relaxed);
            analysisQueue_->push(samples);
        });
    } catch (const AudioInputError& error) {
        if (report)
            reportStartFailure(error);
        return false;
    }
    return true;
}

void SoundAnalysisEngine::checkInput()
{
    if (!watch_.stalled(buffersHeard_.load(std::memory_order_relaxed), clock_()))
        return;
    // No callback runs once stop() returns, so the queue may be replaced.
    input_->stop();
    startInput(false);
}

SoundAnalysisEngine::~SoundAnalysisEngine()
{
    input_->stop();
    notifications_.removeObserver(observer_);
    // Joins the worker after it has analysed every complete buffer: the
    // stream of results ends here.
    analysisQueue_.reset();
    requestDidComplete();
}

void SoundAnalysisEngine::setSharedFactory(Factory factory)
{
    sharedFactory() = std::move(factory);
}

SoundAnalysisEngine& SoundAnalysisEngine::shared()
{
    // Deliberately never destroyed: the engine lives until the process
    // ends, and no exit-time destructor has to join its threads.
    static SoundAnalysisEngine* const instance = [] {
        if (!sharedFactory())
            fatalError("SoundAnalysisEngine::shared used before setSharedFactory");
        return sharedFactory()().release();
    }();
    return *instance;
}

std::unique_ptr<SoundAnalysisEngine> SoundAnalysisEngine::makeDefault(const PreferenceStore& preferences,
                                                                      NotificationCenter& notifications,
                                                                      std::unique_ptr<AudioInput> input,
                                                                      std::ostream& console)
{
    std::unique_ptr<SoundClassifier> classifier;
    try {
        classifier = NeuralSoundClassifier::fromFile(defaultSoundModelPath());
    } catch (const std::exception& error) {
        // Without a classifier no result ever arrives and the gate stays closed.
        console << error.what() << '\n' << std::flush;
    }
    return std::make_unique<SoundAnalysisEngine>(preferences, notifications, std::move(classifier), std::move(input),
                                                 console);
}

void SoundAnalysisEngine::requestDidFail(const std::string& description)
{
    console_ << "The the analysis failed: " << description << '\n' << std::flush;
}

void SoundAnalysisEngine::requestDidComplete()
{
    console_ << "The request completed successfully!\n" << std::flush;
}

void SoundAnalysisEngine::reportStartFailure(const AudioInputError& error)
{
    console_ << "Unable to start AVAudioEngine: " << error.what() << '\n' << std::flush;
}

void SoundAnalysisEngine::analyze(std::span<const float> buffer)
{
    if (!classifier_)
        return;
    try {
        for (const SoundClassificationResult& result : classifier_->analyze(buffer))
            processResult(result);
    } catch (const std::exception& error) {
        requestDidFail(error.what());
    }
}

} // namespace veltra
