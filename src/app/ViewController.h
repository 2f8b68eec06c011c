#pragma once

#include "dsp/PdBase.h"
#include "dsp/PdDispatcher.h"
#include "dsp/PdListener.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

namespace veltra {

class AudioSession;
class NotificationCenter;
class PreferenceStore;

// Runs a task later on the main thread, after the current work returns.
using MainQueue = std::function<void(std::function<void()>)>;

// The tuner's main screen, as logic: it hosts the patch, receives the
// readings, and holds what the screen shows as plain properties that the
// view layer binds to. No toolkit types here.
class ViewController : public PdListener {
public:
    struct Dependencies {
        PreferenceStore& preferences;
        NotificationCenter& notifications;
        PdBase& pdBase;
        AudioSession& audioSession;
        MainQueue mainQueue;
        std::ostream& console;     // the program's fixed console lines
        std::ostream& diagnostics; // anything else worth telling a developer
        std::optional<std::filesystem::path> cachesDirectory;
    };

    explicit ViewController(Dependencies dependencies);
    ~ViewController() override;

    // Start-up: defaults, permission, buffer, dispatcher, the patch file.
    void viewDidLoad();
    // The navigation button: settings once the microphone may be used,
    // otherwise the explanation of how to allow it.
    void accessoryTapped();

    void receiveFloat(float value, const std::string& source) override;

    // What the screen shows.
    const std::string& title() const { return title_; }
    const std::string& accessoryImage() const { return accessoryImage_; }
    bool accessoryEnabled() const { return accessoryEnabled_; }

    // Called after any shown property changed.
    void setChangedCallback(std::function<void()> changed) { changed_ = std::move(changed); }
    // Asks the view layer to open the settings screen or to show an alert.
    void setPushSettings(std::function<void()> push) { pushSettings_ = std::move(push); }
    struct Alert {
        std::string title, message, dismissTitle;
    };
    void setPresentAlert(std::function<void(const Alert&)> present) { presentAlert_ = std::move(present); }

    PdDispatcher* dispatcher() const { return dispatcher_.get(); }
    std::optional<PdBase::PatchHandle> patch() const { return patch_; }
    const std::filesystem::path& patchFilePath() const { return patchFilePath_; }

    static constexpr const char* kTitle = "Veltra";
    static constexpr double kPreferredIOBufferDuration = 0.002;
    static constexpr const char* kFrequencySource = "frequency";

private:
    void openPatch();
    void notifyChanged();

    Dependencies d_;
    std::unique_ptr<PdDispatcher> dispatcher_;
    std::optional<PdBase::PatchHandle> patch_;
    std::filesystem::path patchFilePath_;
    unsigned updateUIObserver_ = 0;

    std::string title_;
    std::string accessoryImage_ = "gearshape.fill";
    bool accessoryEnabled_ = true;

    std::function<void()> changed_;
    std::function<void()> pushSettings_;
    std::function<void(const Alert&)> presentAlert_;
};

} // namespace veltra
