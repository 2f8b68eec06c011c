#pragma once

#include "app/ViewController.h"
#include "dsp/AudioSession.h"
#include "dsp/OfflineDriver.h"
#include "settings/NotificationCenter.h"
#include "views/LiveView.h"
#include "views/PianoView.h"
#include "views/RecordingCanvas.h"

#include <deque>
#include <filesystem>
#include <span>
#include <sstream>

namespace veltra {

// The main screen without a window or a sound card: audio held in memory
// goes through the real patch, and each reading through the same screen
// logic as in the app. Everything runs on audio time: the graph is redrawn
// at the display's 60 frames per second of audio, and the main queue runs
// after every block, so the labels change as they would on screen.
class OfflineTuner {
public:
    static constexpr double kDisplayRate = 60.0;
    // A phone-sized graph, in points.
    static constexpr Rect kGraphRect{0, 0, 350, 300};

    // notifications and moreOptions: the window's, when the screen is shown
    // in one; otherwise the tuner keeps its own broadcasts and has no menu.
    OfflineTuner(PreferenceStore& preferences, int sampleRate,
                 std::function<const SoundDetection*()> soundAnalysis = {},
                 NotificationCenter* notifications = nullptr, MoreOptionsMenu* moreOptions = nullptr);
    ~OfflineTuner();

    // Processes mono samples; afterBlock runs after each 64-frame block,
    // with the samples of that block.
    using BlockObserver = std::function<void(std::span<const float> block)>;
    void run(std::span<const float> samples, const BlockObserver& afterBlock = {});

    // The graph is also shown in a window: its redraw requests go there too.
    void alsoRedraw(std::function<void()> requestRedraw);

    double time() const { return driver_.time(); }
    ViewController& screen() { return screen_; }
    LiveView& liveView() { return liveView_; }
    PianoView& pianoView() { return pianoView_; }
    OfflineDriver& driver() { return driver_; }

private:
    // The audio being analysed stands in for the microphone.
    class FileInput : public AudioBackend {
    public:
        std::vector<AudioDevice> devices() override { return {{0, "audio file", 1, 0, true, false, {}, {}}}; }
        std::variant<AudioStreamConfig, std::string> open(const AudioStreamConfig&, AudioProcessor&) override
        {
            return std::string("an audio file is not a device");
        }
        bool start() override { return false; }
        void stop() override {}
        void close() override {}
        bool isRunning() const override { return false; }
        bool deviceLost() const override { return false; }
    };

    void refreshDisplay();

    std::filesystem::path cache_;
    std::ostringstream console_;
    PdBase pdBase_;
    FileInput input_;
    AudioSession session_{input_};
    NotificationCenter ownNotifications_;
    std::deque<std::function<void()>> mainQueue_;
    OfflineDriver driver_;
    LiveView liveView_;
    PianoView pianoView_;
    RecordingCanvas canvas_;
    bool graphNeedsDisplay_ = false;
    double nextFrameTime_ = 0;
    ViewController screen_;
};

} // namespace veltra
