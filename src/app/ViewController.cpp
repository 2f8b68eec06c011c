#include "app/ViewController.h"

#include "classify/SoundDetection.h"
#include "dsp/AudioSession.h"
#include "dsp/Patch.h"
#include "dsp/PatchFile.h"
#include "settings/Fatal.h"
#include "settings/Localization.h"
#include "settings/NotificationCenter.h"
#include "settings/Preferences.h"
#include "share/MoreOptionsMenu.h"
#include "tuning/Tuning.h"
#include "views/PianoView.h"

#include <cstdio>

namespace veltra {

namespace {

const Color kListeningColour{0.93, 0.91, 0.71, 1.0};
const Color kDetectedColour{0.69, 0.9, 0.58, 1.0};

// Title fonts: the app's own when installed, else the toolkit's default.
constexpr const char* kTitleFont = "FolksHw";
constexpr const char* kClockFont = "BoldHw";
constexpr double kTitleFontSize = 19;
constexpr double kTitleWhite = 0.95;
constexpr double kClockWhite = 0.98;
constexpr double kLargeClockLookupSize = 36;
constexpr double kLargeClockSize = 34;

// Keyboard heights: a tablet in a wide window has room for taller keys.
constexpr double kPadPianoHeight = 54;
constexpr double kPianoHeight = 33;

} // namespace

ViewController::ViewController(Dependencies dependencies)
    : d_(std::move(dependencies))
    , toneGenerator_(d_.pdBase, d_.preferences)
    , lastUpdateTimeNoteName_(d_.clock())
{
}

ViewController::~ViewController()
{
    // The patch stays open for the life of the process; the subscriptions
    // must not call into a screen that is gone.
    if (updateUIObserver_)
        d_.notifications.removeObserver(updateUIObserver_);
    if (dispatcher_ && d_.pdBase.delegate() == dispatcher_.get())
        d_.pdBase.setDelegate(nullptr);
    if (liveView_)
        liveView_->setDelegate(nullptr);
}

void ViewController::setPianoView(PianoView* pianoView, std::function<void()> redraw)
{
    pianoView_ = pianoView;
    redrawPiano_ = std::move(redraw);
}

LiveView& ViewController::liveView() const
{
    if (!liveView_)
        fatalError("the main screen has no live view");
    return *liveView_;
}

void ViewController::viewDidLoad()
{
    CommonUtils::setDefaultPreferences(d_.preferences);
    title_ = kTitle;
    if (d_.fontAvailable && d_.fontAvailable(kTitleFont, kTitleFontSize))
        titleStyle_ = TitleStyle{kTitleFont, kTitleFontSize, kTitleWhite};

    d_.audioSession.requestRecordPermission([this](bool granted) {
        d_.console << (granted ? "Record permission granted." : "Record permission denied.") << std::endl;
        d_.mainQueue([this, granted] { showRecordPermission(granted); });
    });

    if (const auto error = d_.audioSession.setPreferredIOBufferDuration(kPreferredIOBufferDuration))
        d_.console << *error << std::endl;

    if (liveView_)
        liveView_->setDelegate(this);

    dispatcher_ = std::make_unique<PdDispatcher>(d_.pdBase, d_.diagnostics);
    dispatcher_->addListener(this, kFrequencySource);
    d_.pdBase.setDelegate(dispatcher_.get());

    openPatch();

    updateUIObserver_ =
        d_.notifications.addObserver(Notification::UpdateUI, [this](const void*) { applyDisplayPreferences(); });
    applyDisplayPreferences();
    if (d_.moreOptions)
        d_.moreOptions->setupMoreOptionsMenu();
}

void ViewController::viewDidAppear()
{
    // Coming back into view lays the screen out again, so what changed on
    // another screen meanwhile (the clock) shows at once.
    if (layout_)
        viewDidLayoutSubviews(layout_->first, layout_->second);
    if (d_.moreOptions)
        d_.moreOptions->checkRatePrompt();
    if (audioState_ == AudioState::Running)
        startSoundAnalysis(); // the gate may have been switched on meanwhile
}

void ViewController::openPatch()
{
    // A new file on every load; old ones are left to the cache's owner.
    const std::string name = makeUuidString();
    const std::filesystem::path directory = d_.cachesDirectory.value_or(std::filesystem::path());
    patchFilePath_ = directory / name;
    if (writeFileAtomically(patchFilePath_, std::string(CommonUtils::patch)))
        patch_ = d_.pdBase.openFile(name, directory.string());
    d_.console << (patch_ ? "Patch opened" : "Failed to open patch!") << std::endl;
}

std::string ViewController::spokenNote(const std::string& letter, const std::string& sharpFlat)
{
    if (sharpFlat == "#")
        //: A note's name said aloud, as in "C sharp"; %1 is its letter.
        return fillIn(translate("Readout", "%1 sharp"), {letter});
    if (sharpFlat == "b")
        //: A note's name said aloud, as in "B flat"; %1 is its letter.
        return fillIn(translate("Readout", "%1 flat"), {letter});
    return letter;
}

std::string ViewController::spokenReadout(const Labels& labels)
{
    if (labels.octaveNumber.empty() || labels.deviation.size() < 3)
        return {};
    // The deviation reads "+2.0%": a sign, the hundredths of a semitone, a per-cent sign.
    const std::string cents = labels.deviation.substr(1, labels.deviation.size() - 2);
    std::string offset;
    if (cents == "0.0")
        offset = translate("Readout", "in tune");
    else if (labels.deviation[0] == '-')
        //: How far below the note the pitch is; %1 is a number of cents, as "2.0".
        offset = fillIn(translate("Readout", "%1 cents flat"), {localNumber(cents)});
    else
        //: How far above the note the pitch is; %1 is a number of cents, as "2.0".
        offset = fillIn(translate("Readout", "%1 cents sharp"), {localNumber(cents)});
    //: The readout as a screen reader speaks it: %1 the note ("A", "C sharp"), %2 its octave,
    //: %3 how far off it is ("in tune", "2.0 cents sharp"), %4 the frequency ("440.5").
    std::string sentence = fillIn(translate("Readout", "%1 %2, %3, %4 hertz"),
                                  {spokenNote(labels.noteName, labels.sharpFlat), labels.octaveNumber, offset,
                                   localNumber(labels.frequency)});
    if (labels.concert.empty())
        return sentence;
    // The concert note is spelled as the labels are: a letter, "#" or "b", the octave.
    const std::string& concert = labels.concert;
    const std::size_t accidental = concert.size() > 1 && (concert[1] == '#' || concert[1] == 'b') ? 1 : 0;
    //: The readout of a transposing instrument's written note, then the concert note that
    //: sounds: %1 the readout as above, %2 the concert note ("C", "B flat"), %3 its octave.
    return fillIn(translate("Readout", "%1, concert %2 %3"),
                  {sentence, spokenNote(concert.substr(0, 1), concert.substr(1, accidental)),
                   concert.substr(1 + accidental)});
}

void ViewController::showRecordPermission(bool granted)
{
    accessoryImage_ = granted ? "gearshape.fill" : "mic.slash.fill";
    notifyChanged();
}

void ViewController::accessoryTapped()
{
    d_.audioSession.requestRecordPermission([this](bool granted) {
        d_.mainQueue([this, granted] {
            showRecordPermission(granted);
            if (granted) {
                if (pushSettings_)
                    pushSettings_();
            } else if (presentAlert_) {
                presentAlert_({translate("Tuner", kMicrophoneTitle), translate("Tuner", kMicrophoneMessage),
                               translate("Tuner", kMicrophoneDismiss)});
            }
        });
    });
}

void ViewController::receiveFloat(float value, const std::string& source)
{
    handlePitchReading(source, value);
}

void ViewController::handlePitchReading(const std::optional<std::string>& source, float frequency)
{
    // Readings still queued from before a loss belong to no sound heard now.
    if (frequency < kLowestFrequency || !source || *source != kFrequencySource || audioState_ == AudioState::NoInput)
        return;
    status_.visible = false;

    if (d_.preferences.boolForKey(PreferenceKey::UseML)) {
        if (const SoundDetection* detection = d_.soundAnalysis ? d_.soundAnalysis() : nullptr) {
            status_.visible = true;
            showSoundStatus(*detection);
            if (!detection->isSoundDetected()) {
                liveView().addValue(LiveView::kNoPitch);
                notifyChanged();
                return;
            }
        }
    }

    const float x = shownNoteNumber(frequency, d_.preferences);
    const Note note = CommonUtils::noteForNumber(x, d_.preferences);
    const std::int64_t k = roundHalfAwayFromZero(x);
    if (const auto graphValue = smoothing_.add(x, k))
        liveView().addValue(*graphValue);
    labelPass(x, note, k, frequency);
    notifyChanged();
}

// The gate's engine starts listening with the tuner rather than at the
// first reading: made at a reading, it would hear a note from the middle,
// where no onset marks its start, and judge it a second late.
void ViewController::startSoundAnalysis()
{
    if (d_.soundAnalysis && d_.preferences.boolForKey(PreferenceKey::UseML))
        d_.soundAnalysis();
}

void ViewController::showSoundStatus(const SoundDetection& detection)
{
    if (detection.isSoundDetected()) {
        //: %1 is the kind of sound heard: guitar, violin, piano or vocal.
        status_.text = fillIn(translate("Tuner", "Detected %1 sound"),
                              {translate("DetectedSound", detection.currentSound().c_str())});
        status_.colour = kDetectedColour;
    } else {
        status_.text = translate("Tuner", "Listening...");
        status_.colour = kListeningColour;
    }
}

void ViewController::labelPass(float x, const Note& note, std::int64_t k, float frequency)
{
    if (d_.clock() - lastUpdateTimeNoteName_ <= kLabelInterval || x < 0)
        return;
    // The labels follow the graph: a reading whose note the graph does not
    // show as stable leaves them as they are.
    const Note* shown = currentLiveViewNote_ ? &*currentLiveViewNote_ : nullptr;
    const bool different = !shown || shown->note != note.note || shown->sharpFlat != note.sharpFlat ||
                           shown->octaveNumber != note.octaveNumber;
    if (!different) {
        char text[32];
        std::snprintf(text, sizeof text, "%.1f", static_cast<double>(frequency));
        labels_ = {note.note, note.sharpFlat, note.octaveNumber, note.deviation, text, concertNoteName(x)};
        d_.mainQueue([this, key = k - 1] {
            if (!pianoView_)
                fatalError("the main screen has no piano view");
            if (audioState_ == AudioState::NoInput)
                return; // the input went away meanwhile: no key stays lit
            pianoView_->setHighlightKey(key);
            if (redrawPiano_)
                redrawPiano_();
        });
    }
    liveViewNoteIsDifferent_ = different;
    lastUpdateTimeNoteName_ = d_.clock();
}

std::string ViewController::concertNoteName(float shown) const
{
    const std::int64_t transpose = d_.preferences.integerForKey(PreferenceKey::Transpose);
    if (transpose == 0)
        return {};
    const Note concert = CommonUtils::noteForNumber(shown + static_cast<float>(transpose), d_.preferences);
    // Below the lowest A or above the top octave the concert note has no name.
    if (concert.octaveNumber.empty())
        return {};
    return concert.note + concert.sharpFlat + concert.octaveNumber;
}

bool ViewController::transposed() const
{
    return d_.preferences.integerForKey(PreferenceKey::Transpose) != 0;
}

void ViewController::setAudioState(AudioState state)
{
    if (state == audioState_)
        return;
    audioState_ = state;
    if (state == AudioState::Running)
        startSoundAnalysis();
    if (state != AudioState::NoInput) {
        audioProblem_.clear();
        // An input opened: the microphone is there now, though there was
        // none when the window first asked (started before the sound
        // server, or before the headset was plugged in).
        if (state == AudioState::Running)
            accessoryImage_ = "gearshape.fill";
        notifyChanged();
        return;
    }
    audioProblem_ = translate("Tuner", kNoInputLine);
    labels_ = {};
    status_.visible = false;
    currentLiveViewNote_.reset();
    liveViewNoteIsDifferent_ = false;
    smoothing_ = {};
    liveView().clear();
    if (pianoView_) {
        pianoView_->setHighlightKey(-1);
        if (redrawPiano_)
            redrawPiano_();
    }
    notifyChanged();
}

void ViewController::applyDisplayPreferences()
{
    pianoVisible_ = d_.preferences.boolForKey(PreferenceKey::PianoView);
    if (pianoVisible_ && redrawPiano_)
        redrawPiano_();
    if (d_.preferences.boolForKey(PreferenceKey::SharpsOnly))
        sharpFlatButtonImages_ = {"FG_D_SHARP", "FG_G_SHARP", "FG_A_SHARP"};
    else
        sharpFlatButtonImages_ = {"FG_E_FLAT", "FG_A_FLAT", "FG_B_FLAT"};
    toneGeneratorVisible_ = d_.preferences.boolForKey(PreferenceKey::ToneGenerator);
    segmentOctaveVisible_ = toneGeneratorVisible_;
    notifyChanged();
}

void ViewController::viewDidLayoutSubviews(DeviceIdiom idiom, SizeClass horizontalSizeClass)
{
    layout_ = {idiom, horizontalSizeClass};
    pianoHeight_ = idiom == DeviceIdiom::Pad && horizontalSizeClass != SizeClass::Compact ? kPadPianoHeight
                                                                                            : kPianoHeight;
    applyClockMode(horizontalSizeClass);
    notifyChanged();
}

// Recreated on every layout pass, so a layout change restarts the clock's
// one-second phase.
void ViewController::applyClockMode(SizeClass horizontalSizeClass)
{
    if (d_.clockTimer)
        d_.clockTimer->invalidate();
    const auto available = [this](const char* family, double size) {
        return d_.fontAvailable && d_.fontAvailable(family, size);
    };
    if (!d_.preferences.boolForKey(PreferenceKey::ClockEnabled)) {
        title_ = kTitle;
        if (available(kTitleFont, kTitleFontSize))
            titleStyle_ = TitleStyle{kTitleFont, kTitleFontSize, kTitleWhite};
        return;
    }
    if (d_.clockTimer)
        d_.clockTimer->start(kClockInterval, [this] { tick(); });
    if (horizontalSizeClass == SizeClass::Compact) {
        if (available(kClockFont, kTitleFontSize))
            titleStyle_ = TitleStyle{kClockFont, kTitleFontSize, kClockWhite};
    } else if (available(kClockFont, kLargeClockLookupSize)) {
        // The looked-up face only gates the change; wide windows get the
        // bold system font, which fills the wider title better.
        titleStyle_ = TitleStyle{"", kLargeClockSize, kClockWhite};
    }
}

void ViewController::updateClockTitle()
{
    title_ = d_.localizedTime ? d_.localizedTime() : std::string();
    notifyChanged();
}

void ViewController::btnToneDown(std::int64_t tag)
{
    toneGenerator_.btnToneDown(tag, selectedOctaveSegment_);
}

void ViewController::btnToneCancel()
{
    toneGenerator_.btnToneCancel();
}

void ViewController::notifyChanged()
{
    if (changed_)
        changed_();
}

} // namespace veltra
