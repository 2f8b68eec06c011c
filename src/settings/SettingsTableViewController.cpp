#include "settings/SettingsTableViewController.h"

#include "settings/Localization.h"
#include "settings/Preferences.h"

#include <array>
#include <string_view>
#include <vector>

namespace veltra {

namespace {

// The footer of each section but the last, whose footer is composed.
constexpr std::array<const char*, 10> kFooters{
    VELTRA_TEXT("Settings", "The frequency of the A above middle C to be used as the reference for tuning."),
    VELTRA_TEXT("Settings", "Display a sine tone generator in the main view."),
    VELTRA_TEXT("Settings", "When enabled, the screen turns green when in tune."),
    VELTRA_TEXT("Settings", "When enabled, only the enharmonic sharps are displayed."),
    VELTRA_TEXT("Settings", "When enabled, the live graph is continuous. When disabled, the graph is plotted only "
                            "when sound is detected, similar to the older versions of Veltra."),
    VELTRA_TEXT("Settings", "The width of the center green bar that is considered in tune."),
    VELTRA_TEXT("Settings", "A lower latency works great when you need faster pitch detection (e.g. vocal "
                            "practice). By using a higher latency, pitch detection will not respond to momentary "
                            "unintended sounds and noise (ideal for instrument tuning)."),
    VELTRA_TEXT("Settings", "Highlights piano key corresponding to the current pitch."),
    VELTRA_TEXT("Settings", "Thickness of the line used in the live pitch graph."),
    VELTRA_TEXT("Settings", "This feature is very helpful for live situations where time needs to be kept track of."),
};

constexpr const char* kSoundClassificationFooter = VELTRA_TEXT(
    "Settings",
    "Use machine learning to enable pitch detection only when certain instruments or vocal sounds are detected.");

// The sound categories as the footer names them, in its order.
struct NamedSound {
    std::string_view key;
    const char* name;
};
constexpr std::array<NamedSound, 4> kNamedSounds{{
    {PreferenceKey::SoundsGuitar, VELTRA_TEXT("SoundList", "Guitar")},
    {PreferenceKey::SoundsViolin, VELTRA_TEXT("SoundList", "Violin")},
    {PreferenceKey::SoundsPiano, VELTRA_TEXT("SoundList", "Piano")},
    {PreferenceKey::SoundsVoice, VELTRA_TEXT("SoundList", "Voice")},
}};

constexpr const char* kTitleFont = "FolksHw";
constexpr double kTitleFontSize = 19;
constexpr double kTitleWhite = 0.95;

// "Guitar", "Guitar and Piano", "Guitar, Violin and Voice", each name and
// each joint in the user's language.
std::string joinNames(const std::vector<std::string>& names)
{
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i == 0)
            text = names[i];
        else if (i + 1 == names.size())
            //: The last joint of a list of sounds: "Guitar, Violin and Voice".
            text = fillIn(translate("SoundList", "%1 and %2"), {text, names[i]});
        else
            //: Every other joint of a list of sounds: "Guitar, Violin and Voice".
            text = fillIn(translate("SoundList", "%1, %2"), {text, names[i]});
    }
    return text;
}

} // namespace

SettingsTableViewController::SettingsTableViewController(Dependencies dependencies)
    : sliderLatency(static_cast<float>(kMinimumLatency), static_cast<float>(kMaximumLatency))
    , sliderLineThickness(static_cast<float>(kMinimumLineThickness), static_cast<float>(kMaximumLineThickness))
    , d_(std::move(dependencies))
{
}

void SettingsTableViewController::viewDidLoad()
{
    title_ = translate("Settings", kTitle);
    lineThicknessConstraint.constant = kPreviewInset;
}

void SettingsTableViewController::viewDidLayoutSubviews(bool isPad)
{
    PreferenceStore& store = d_.preferences;
    //: The reference frequency in whole hertz, as "440 Hz".
    lblFrequency.text =
        fillIn(translate("Settings", "%1 Hz"), {std::to_string(store.integerForKey(PreferenceKey::A4))});
    switchShowClock.on = store.boolForKey(PreferenceKey::ClockEnabled);
    sliderLineThickness.setValue(store.floatForKey(PreferenceKey::LineThickness));
    lineThicknessConstraint.constant = static_cast<double>(sliderLineThickness.value()) - kPreviewInset;
    switchGreenOverlay.on = store.boolForKey(PreferenceKey::GreenOverlay);
    switchSharpsOnly.on = store.boolForKey(PreferenceKey::SharpsOnly);
    switchML.on = store.boolForKey(PreferenceKey::UseML);
    switchToneGenerator.on = store.boolForKey(PreferenceKey::ToneGenerator);
    switchContinuousDisplay.on = store.boolForKey(PreferenceKey::ContinuousDisplay);
    switchPianoView.on = store.boolForKey(PreferenceKey::PianoView);
    sliderLatency.setValue(store.floatForKey(PreferenceKey::Latency));
    if (isPad)
        preferredContentSize_ = std::pair{kPadContentWidth, kPadContentHeight};
    segmentCenterBarWidth.selectedSegmentIndex = static_cast<int>(store.integerForKey(PreferenceKey::CenterBarWidth));
    if (d_.fontAvailable && d_.fontAvailable(kTitleFont, kTitleFontSize))
        titleStyle_ = TitleStyle{kTitleFont, kTitleFontSize, kTitleWhite};
}

int SettingsTableViewController::numberOfSections() const
{
    return d_.soundClassifierAvailable ? SoundClassification + 1 : SoundClassification;
}

int SettingsTableViewController::numberOfRowsInSection(int section) const
{
    if (section == SoundClassification)
        return d_.preferences.boolForKey(PreferenceKey::UseML) ? 2 : 1;
    return 1;
}

std::string SettingsTableViewController::titleForFooterInSection(int section) const
{
    if (section >= 0 && section < SoundClassification)
        return translate("Settings", kFooters[static_cast<std::size_t>(section)]);
    if (section != SoundClassification)
        return {};
    if (!d_.preferences.boolForKey(PreferenceKey::UseML))
        return translate("Settings", kSoundClassificationFooter);
    std::vector<std::string> names;
    for (const NamedSound& sound : kNamedSounds) {
        if (d_.preferences.boolForKey(sound.key))
            names.push_back(translate("SoundList", sound.name));
    }
    if (names.empty())
        return {};
    //: %1 is the list of the sounds chosen, as "Guitar and Piano".
    return fillIn(translate("Settings", "Selected Sounds: %1."), {joinNames(names)});
}

void SettingsTableViewController::switchToneGeneratorToggled()
{
    d_.preferences.setBool(switchToneGenerator.on, PreferenceKey::ToneGenerator);
    d_.notifications.post(Notification::UpdateUI, this);
}

void SettingsTableViewController::switchGreenOverlayToggled()
{
    d_.preferences.setBool(switchGreenOverlay.on, PreferenceKey::GreenOverlay);
}

void SettingsTableViewController::switchSharpsOnlyToggled()
{
    d_.preferences.setBool(switchSharpsOnly.on, PreferenceKey::SharpsOnly);
    d_.notifications.post(Notification::UpdateUI, this);
}

void SettingsTableViewController::switchMLToggled()
{
    d_.preferences.setBool(switchML.on, PreferenceKey::UseML);
    reloadData(); // the last section's rows and footer follow the switch
}

void SettingsTableViewController::switchPianoViewToggled()
{
    d_.preferences.setBool(switchPianoView.on, PreferenceKey::PianoView);
    d_.notifications.post(Notification::UpdateUI, this);
}

void SettingsTableViewController::continiousDisplayToggled()
{
    d_.preferences.setBool(switchContinuousDisplay.on, PreferenceKey::ContinuousDisplay);
}

void SettingsTableViewController::switchShowClockToggled()
{
    d_.preferences.setBool(switchShowClock.on, PreferenceKey::ClockEnabled);
}

void SettingsTableViewController::latencyValueChanged()
{
    d_.preferences.setFloat(sliderLatency.value(), PreferenceKey::Latency);
}

void SettingsTableViewController::lineThicknessValueChanged()
{
    lineThicknessConstraint.constant = static_cast<double>(sliderLineThickness.value()) - kPreviewInset;
    d_.preferences.setFloat(sliderLineThickness.value(), PreferenceKey::LineThickness);
}

void SettingsTableViewController::centerBarWidthValueChanged()
{
    d_.preferences.setInteger(segmentCenterBarWidth.selectedSegmentIndex, PreferenceKey::CenterBarWidth);
}

void SettingsTableViewController::reloadData()
{
    if (reloadData_)
        reloadData_();
}

} // namespace veltra
