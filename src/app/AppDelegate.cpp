#include "app/AppDelegate.h"

namespace veltra {

namespace {
constexpr int kChannels = 1;
constexpr bool kInputEnabled = true;
constexpr bool kMixingEnabled = false;
} // namespace

AppDelegate::AppDelegate(ControllerFactory makeController, std::ostream& console)
    : makeController_(std::move(makeController))
    , console_(console)
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
    const PdAudioStatus status =
        audioController_->configurePlayback(kSampleRate, kChannels, kInputEnabled, kMixingEnabled);
    if (status == PdAudioStatus::OK) {
        console_ << "success" << std::endl;
    } else if (status == PdAudioStatus::Error) {
        console_ << "unrecoverable error: failed to initialize audio components" << std::endl;
        // The only recovery; whatever it yields, the controller is activated.
        audioController_->configurePlayback(kFallbackSampleRate, kChannels, kInputEnabled, kMixingEnabled);
    } else {
        console_ << "some properties have changed to run correctly (not fatal)" << std::endl;
    }
    audioController_->setActive(true);
}

} // namespace veltra
