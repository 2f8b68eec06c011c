#pragma once

#include "app/AudioState.h"
#include "dsp/PdBase.h"
#include "dsp/PdDispatcher.h"
#include "dsp/PdListener.h"
#include "settings/Controls.h"
#include "settings/Localization.h"
#include "tone/ToneGenerator.h"
#include "tuning/Note.h"
#include "tuning/PitchSmoothing.h"
#include "views/Geometry.h"
#include "views/LiveView.h"

#include <array>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <utility>

namespace veltra {

class AudioSession;
class MoreOptionsMenu;
class NotificationCenter;
class PianoView;
class PreferenceStore;
class SoundDetection;

// A repeating timer on the main loop.
class RepeatingTimer {
public:
    virtual ~RepeatingTimer() = default;
    virtual void start(double intervalSeconds, std::function<void()> action) = 0;
    virtual void invalidate() = 0;
};

// The tuner's main screen, as logic: it hosts the patch, turns each reading
// into what the graph and the labels show, and plays reference tones. What
// the screen shows are plain properties that the view layer binds to; the
// graph and the keyboard are the view layer's, handed in as outlets. No
// toolkit types here.
class ViewController : public PdListener, public LiveViewDelegate {
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
        // Seconds on a steady clock: wall time in the app, audio time offline.
        std::function<double()> clock;
        // The sound classifier gate, created on first use; null where the
        // machine has none.
        std::function<const SoundDetection*()> soundAnalysis;
        RepeatingTimer* clockTimer = nullptr;
        // Whether a title font of that name and size is installed.
        std::function<bool(const std::string& family, double size)> fontAvailable;
        // The current time as the user's locale writes it (hours, minutes, seconds).
        std::function<std::string()> localizedTime;
        // The options menu and the review request; may be null.
        MoreOptionsMenu* moreOptions = nullptr;
    };

    struct Labels {
        std::string noteName = "-";
        std::string sharpFlat;
        std::string octaveNumber;
        std::string deviation;
        std::string frequency;
        // For a transposing instrument, the concert note that sounds the
        // written one above, spelled as it is ("Bb3"); empty at concert pitch.
        std::string concert{};

        friend bool operator==(const Labels&, const Labels&) = default;
    };
    struct Status {
        bool visible = false;
        std::string text;
        Color colour;

        friend bool operator==(const Status&, const Status&) = default;
    };

    explicit ViewController(Dependencies dependencies);
    ~ViewController() override;

    // Outlets, supplied by the view layer before viewDidLoad.
    void setLiveView(LiveView* liveView) { liveView_ = liveView; }
    void setPianoView(PianoView* pianoView, std::function<void()> redraw);

    // Start-up: defaults, permission, buffer, dispatcher, the patch file.
    void viewDidLoad();
    // Every appearance, including each return from another screen; it lays
    // the screen out again as the last layout pass did.
    void viewDidAppear();
    // Every layout pass: the keyboard's height and the clock title.
    void viewDidLayoutSubviews(DeviceIdiom idiom, SizeClass horizontalSizeClass);
    // The navigation button: settings once the microphone may be used,
    // otherwise the explanation of how to allow it.
    void accessoryTapped();

    // One float from the patch.
    void receiveFloat(float value, const std::string& source) override;
    void handlePitchReading(const std::optional<std::string>& source, float frequency);
    void didUpdateTopNote(const Note& note) override { currentLiveViewNote_ = note; }

    // Follows the audio stream: while there is no input, one line says so
    // and the readout, the graph and the keyboard show no sound (nothing
    // heard before the loss stays on screen); running again, the line goes.
    void setAudioState(AudioState state);
    // The line about the input; empty while the tuner hears it.
    const std::string& audioProblem() const { return audioProblem_; }

    void applyDisplayPreferences();
    void tick() { updateClockTitle(); }

    // The tone generator's buttons (tags 1 to 12, C to B) and octave selector.
    void btnToneDown(std::int64_t tag);
    void btnToneCancel();
    void setSelectedOctaveSegment(std::int64_t index) { selectedOctaveSegment_ = index; }

    // What the screen shows.
    const std::string& title() const { return title_; }
    const std::optional<TitleStyle>& titleStyle() const { return titleStyle_; }
    const std::string& accessoryImage() const { return accessoryImage_; }
    bool accessoryEnabled() const { return accessoryEnabled_; }
    const Labels& labels() const { return labels_; }
    // The labels as one sentence for a screen reader: "A 4, 2.0 cents sharp,
    // 440.5 hertz", and for a transposing instrument "D 4, in tune, 261.6
    // hertz, concert C 4"; empty until a note has been shown.
    static std::string spokenReadout(const Labels& labels);
    // A note's name said aloud: "A", "C sharp", "B flat" (sharpFlat "#", "b" or empty).
    static std::string spokenNote(const std::string& letter, const std::string& sharpFlat);
    // Whether the instrument key is other than C, so that the screen keeps a
    // line for the concert note; read from the preferences at each call.
    bool transposed() const;
    const Status& status() const { return status_; }
    bool pianoVisible() const { return pianoVisible_; }
    double pianoHeight() const { return pianoHeight_; }
    bool toneGeneratorVisible() const { return toneGeneratorVisible_; }
    bool segmentOctaveVisible() const { return segmentOctaveVisible_; }
    // Images of the buttons with tags 4, 9 and 11 (sharp or flat names).
    const std::array<std::string, 3>& sharpFlatButtonImages() const { return sharpFlatButtonImages_; }

    const std::optional<Note>& currentLiveViewNote() const { return currentLiveViewNote_; }
    bool liveViewNoteIsDifferent() const { return liveViewNoteIsDifferent_; }
    const PitchSmoothing& smoothing() const { return smoothing_; }
    const ToneGenerator& toneGenerator() const { return toneGenerator_; }

    // Called after any shown property changed.
    void setChangedCallback(std::function<void()> changed) { changed_ = std::move(changed); }
    // Asks the view layer to open the settings screen or to show an alert.
    void setPushSettings(std::function<void()> push) { pushSettings_ = std::move(push); }
    void setPresentAlert(std::function<void(const Alert&)> present) { presentAlert_ = std::move(present); }

    PdDispatcher* dispatcher() const { return dispatcher_.get(); }
    std::optional<PdBase::PatchHandle> patch() const { return patch_; }
    const std::filesystem::path& patchFilePath() const { return patchFilePath_; }

    static constexpr const char* kTitle = "Veltra";
    static constexpr double kPreferredIOBufferDuration = 0.002;
    static constexpr const char* kFrequencySource = "frequency";
    // Below this the patch's reading is no note a tuner is asked about (and
    // the 0 it sends for silence falls here too).
    static constexpr float kLowestFrequency = 65.0f;
    // The labels change at most this often, so they can be read while the
    // graph moves with every frame.
    static constexpr double kLabelInterval = 0.08;
    static constexpr double kClockInterval = 1.0;
    static constexpr const char* kNoInputLine = VELTRA_TEXT("Tuner", "Listening paused: no sound input");
    // What a tap on the corner button says when no microphone can be opened.
    static constexpr const char* kMicrophoneTitle = VELTRA_TEXT("Tuner", "Microphone Access Required");
    static constexpr const char* kMicrophoneMessage =
        VELTRA_TEXT("Tuner", "This app requires access to the microphone to work. Go to Settings -> Privacy -> "
                             "Microphone and enable Veltra to give access.");
    static constexpr const char* kMicrophoneDismiss = VELTRA_TEXT("Tuner", "Dismiss");

private:
    void openPatch();
    // The corner button: the settings, or, with no microphone, the way to it.
    void showRecordPermission(bool granted);
    void showSoundStatus(const SoundDetection& detection);
    void startSoundAnalysis();
    void labelPass(float x, const Note& note, std::int64_t k, float frequency);
    std::string concertNoteName(float shown) const;
    void applyClockMode(SizeClass horizontalSizeClass);
    void updateClockTitle();
    LiveView& liveView() const;
    void notifyChanged();

    Dependencies d_;
    std::unique_ptr<PdDispatcher> dispatcher_;
    std::optional<PdBase::PatchHandle> patch_;
    std::filesystem::path patchFilePath_;
    unsigned updateUIObserver_ = 0;
    LiveView* liveView_ = nullptr;
    PianoView* pianoView_ = nullptr;
    std::function<void()> redrawPiano_;

    PitchSmoothing smoothing_;
    ToneGenerator toneGenerator_;
    std::int64_t selectedOctaveSegment_ = 0;
    double lastUpdateTimeNoteName_;
    std::optional<Note> currentLiveViewNote_;
    bool liveViewNoteIsDifferent_ = false;

    std::optional<std::pair<DeviceIdiom, SizeClass>> layout_; // the last layout pass's
    std::string title_;
    std::optional<TitleStyle> titleStyle_;
    std::string accessoryImage_ = "gearshape.fill";
    bool accessoryEnabled_ = true;
    Labels labels_;
    Status status_;
    AudioState audioState_ = AudioState::Stopped;
    std::string audioProblem_;
    bool pianoVisible_ = false;
    double pianoHeight_ = 33;
    bool toneGeneratorVisible_ = true;
    bool segmentOctaveVisible_ = true;
    std::array<std::string, 3> sharpFlatButtonImages_{"FG_D_SHARP", "FG_G_SHARP", "FG_A_SHARP"};

    std::function<void()> changed_;
    std::function<void()> pushSettings_;
    std::function<void(const Alert&)> presentAlert_;
};

} // namespace veltra
