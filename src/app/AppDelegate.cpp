#include "app/AppDelegate.h"

namespace veltra {

namespace {
constexpr int kChannels = 1;
constexpr bool kInputEnabled = true;
constexpr bool kMixingEnabled = false;
} // namespace

AppDelegate::AppDelegate(ControllerFactory makeController, std::ostream& console, Clock clock, InputChoice chosenInput)
    : makeController_(std::move(makeController))
    , console_(console)
    , clock_(clock ? std::move(clock) : Clock(&StallWatch::now))
    , chosenInput_(std::move(chosenInput))
{
}

void AppDelegate::configureAudioController()
{
    if (!audioController_) {
        audioController_ = makeController_();
        if (!audioController_) {
            console_ << "could not get PdAudioController" << std::endl;
            return;
        }
    }
    const PdAudioStatus status = startStream();
    if (status == PdAudioStatus::OK)
        console_ << "success" << std::endl;
    else if (status == PdAudioStatus::Error)
        console_ << "unrecoverable error: failed to initialize audio components" << std::endl;
    else
        console_ << "some properties have changed to run correctly (not fatal)" << std::endl;
    reopened_ = false;
    state_ = audioController_->isActive() ? AudioState::Running : AudioState::NoInput;
}

// The first attempt's outcome; whatever the one retry yields, the
// controller is activated. The watchdog's time starts with the stream.
PdAudioStatus AppDelegate::startStream()
{
    if (const std::string chosen = chosenInput_ ? chosenInput_() : std::string(); chosen != openedInput_) {
        openedInput_ = chosen;
        fallbackShown_ = false;
    }
    audioController_->chooseInput(openedInput_);
    const PdAudioStatus status =
        audioController_->configurePlayback(kSampleRate, kChannels, kInputEnabled, kMixingEnabled);
    if (status == PdAudioStatus::Error)
        audioController_->configurePlayback(kFallbackSampleRate, kChannels, kInputEnabled, kMixingEnabled);
    audioController_->setActive(true);
    watch_.restart(audioController_->buffersHeard(), clock_());
    return status;
}

void AppDelegate::stopAudio()
{
    if (audioController_)
        audioController_->setActive(false);
    reopened_ = false;
    state_ = AudioState::Stopped;
}

AudioState AppDelegate::checkAudio()
{
    if (state_ == AudioState::Stopped || !audioController_)
        return state_;
    // Another input chosen: a stream on it now, quietly; while there is no
    // input the next retry opens it anyway.
    if (state_ == AudioState::Running && chosenInput_ && chosenInput_() != openedInput_)
        startStream();
    if (!audioController_->isActive())
        return state_;
    const std::uint64_t heard = audioController_->buffersHeard();
    const double now = clock_();
    const bool advanced = watch_.advanced(heard, now);
    const bool lost = audioController_->deviceLost() || (!advanced && watch_.stalled(heard, now));
    if (state_ == AudioState::Running && lost) {
        audioController_->setActive(false);
        state_ = AudioState::NoInput;
        console_ << "audio device lost" << std::endl;
    } else if (reopened_ && lost) {
        // Opened, but nothing came: tried again with the next retry.
        audioController_->setActive(false);
        reopened_ = false;
    } else if (reopened_ && advanced) {
        reopened_ = false;
        state_ = AudioState::Running;
        console_ << "audio device back" << std::endl;
    }
    if (state_ == AudioState::Running)
        reportInputFallback();
    return state_;
}

void AppDelegate::reportInputFallback()
{
    const bool fallback = audioController_->inputFallback();
    if (fallback == fallbackShown_)
        return;
    fallbackShown_ = fallback;
    if (fallback)
        console_ << "input " << openedInput_ << " is not there: listening to the system default" << std::endl;
    else
        console_ << "input " << openedInput_ << " is back" << std::endl;
}

AudioState AppDelegate::retryAudio()
{
    if (checkAudio() == AudioState::NoInput && !audioController_->isActive()) {
        startStream();
        reopened_ = audioController_->isActive();
    }
    return state_;
}

} // namespace veltra
