#include "app/OfflineTuner.h"

#include "dsp/PatchFile.h"

#include <iostream>

namespace veltra {

OfflineTuner::OfflineTuner(PreferenceStore& preferences, int sampleRate,
                           std::function<const SoundDetection*()> soundAnalysis, NotificationCenter* notifications,
                           MoreOptionsMenu* moreOptions)
    : cache_(std::filesystem::temp_directory_path() / ("veltra-offline-" + makeUuidString()))
    , driver_(pdBase_, sampleRate)
    , liveView_(preferences)
    , screen_({
          .preferences = preferences,
          .notifications = notifications ? *notifications : ownNotifications_,
          .pdBase = pdBase_,
          .audioSession = session_,
          .mainQueue = [this](std::function<void()> task) { mainQueue_.push_back(std::move(task)); },
          .console = console_,
          .diagnostics = std::cerr,
          .cachesDirectory = cache_,
          .clock = [this] { return driver_.time(); },
          .soundAnalysis = std::move(soundAnalysis),
          .clockTimer = nullptr,
          .fontAvailable = {},
          .localizedTime = {},
          .moreOptions = moreOptions,
      })
{
    liveView_.setRedrawRequest([this] { graphNeedsDisplay_ = true; });
    screen_.setLiveView(&liveView_);
    screen_.setPianoView(&pianoView_, {});
    screen_.viewDidLoad();
    std::error_code ignored;
    std::filesystem::remove_all(cache_, ignored); // libpd has read the patch
    if (!screen_.patch())
        throw std::runtime_error("the patch could not be opened");
}

OfflineTuner::~OfflineTuner()
{
    if (const auto patch = screen_.patch())
        pdBase_.closeFile(*patch);
}

void OfflineTuner::run(std::span<const float> samples, const BlockObserver& afterBlock)
{
    constexpr std::size_t kBlock = 64;
    for (std::size_t start = 0; start < samples.size(); start += kBlock) {
        const auto block = samples.subspan(start, std::min(kBlock, samples.size() - start));
        driver_.run(block);
        while (!mainQueue_.empty()) {
            auto task = std::move(mainQueue_.front());
            mainQueue_.pop_front();
            task();
        }
        refreshDisplay();
        if (afterBlock)
            afterBlock(block);
    }
}

void OfflineTuner::alsoRedraw(std::function<void()> requestRedraw)
{
    liveView_.setRedrawRequest([this, requestRedraw = std::move(requestRedraw)] {
        graphNeedsDisplay_ = true;
        requestRedraw();
    });
}

void OfflineTuner::refreshDisplay()
{
    if (driver_.time() < nextFrameTime_)
        return;
    nextFrameTime_ += 1.0 / kDisplayRate;
    if (!graphNeedsDisplay_)
        return;
    graphNeedsDisplay_ = false;
    canvas_.clear();
    liveView_.draw(&canvas_, kGraphRect);
}

} // namespace veltra
