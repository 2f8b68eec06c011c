#pragma once

#include "settings/PreferenceStore.h"

#include <array>
#include <string_view>
#include <variant>

namespace veltra {

// The preference keys of the tuner.
namespace PreferenceKey {
inline constexpr std::string_view A4 = "A4";
inline constexpr std::string_view ClockEnabled = "ClockEnabled";
inline constexpr std::string_view LineThickness = "LineThickness";
inline constexpr std::string_view GreenOverlay = "GreenOverlay";
inline constexpr std::string_view SharpsOnly = "SharpsOnly";
inline constexpr std::string_view ToneGenerator = "ToneGenerator";
inline constexpr std::string_view PianoView = "PianoView";
inline constexpr std::string_view UseML = "UseML";
inline constexpr std::string_view SoundsGuitar = "Sounds_Guitar";
inline constexpr std::string_view SoundsViolin = "Sounds_Violin";
inline constexpr std::string_view SoundsPiano = "Sounds_Piano";
inline constexpr std::string_view SoundsVoice = "Sounds_Voice";
inline constexpr std::string_view ContinuousDisplay = "ContinuousDisplay";
inline constexpr std::string_view Latency = "Latency";
inline constexpr std::string_view CenterBarWidth = "CenterBarWidth";
// Keys the first launch does not write: each reads as its default until the
// user makes that choice, so the file of a tuner left at those defaults
// holds the same keys as ever.
// The sound input to listen to: a PulseAudio source's name, which stays the
// same across restarts and replugging, unlike its index or its description;
// empty for the system default.
inline constexpr std::string_view InputSource = "InputSource";
// The tuning system, its tonic and the instrument's transposition
// (tuning/Tuning.h): 0 is equal temperament, C and concert pitch.
inline constexpr std::string_view Temperament = "Temperament";
inline constexpr std::string_view Tonic = "Tonic";
inline constexpr std::string_view Transpose = "Transpose";
} // namespace PreferenceKey

// The imported scale's degrees 1 to 11 in cents above its tonic, written
// when a Scala file is imported.
inline constexpr std::array<std::string_view, 11> kScaleCentsKeys{
    "ScaleCents1", "ScaleCents2", "ScaleCents3", "ScaleCents4", "ScaleCents5", "ScaleCents6",
    "ScaleCents7", "ScaleCents8", "ScaleCents9", "ScaleCents10", "ScaleCents11"};

// PulseAudio's longest object name is 128 bytes; PipeWire allows more, and a
// name a server gives is taken as long as any real one is.
inline constexpr int kLongestInputSource = 255;

// The reference A the user may choose, in whole hertz.
inline constexpr int kMinimumA4 = 400;
inline constexpr int kMaximumA4 = 499;

// The ranges the settings screen's controls offer (docs/platform.md says why).
// Latency is the graph's note vote in redraws (1/60 s each); it is used as a
// whole number, so the slider moves in whole steps.
inline constexpr double kMinimumLatency = 1.0;
inline constexpr double kMaximumLatency = 30.0;
// The graph's line is half the thickness wide; the preview line is the
// thickness less 2, so the thinnest choice still shows a 1-point preview.
inline constexpr double kMinimumLineThickness = 3.0;
inline constexpr double kMaximumLineThickness = 12.0;
// CenterBarWidth segments: 0 wide (+-15 cents), 1 medium (+-10), 2 narrow (+-5).
inline constexpr int kCenterBarWidthSegments = 3;
// Temperament: the tuning systems of tuning/Temperament.h, 0 to 9.
inline constexpr int kTemperamentChoices = 10;
// Transpose: the instrument's key in semitones from concert pitch.
inline constexpr int kMinimumTranspose = -12;
inline constexpr int kMaximumTranspose = 12;

// A preference value; its type selects the setter (integer, double or
// boolean) that writes it.
using PreferenceValue = std::variant<std::int64_t, double, bool>;

// One first-launch default: the key and its value.
struct PreferenceDefault {
    std::string_view key;
    PreferenceValue value;
};

// The first-launch defaults, in the order in which they are registered.
inline constexpr std::array<PreferenceDefault, 15> kPreferenceDefaults{{
    {PreferenceKey::A4, std::int64_t{440}},
    {PreferenceKey::ClockEnabled, false},
    {PreferenceKey::LineThickness, 6.0},
    {PreferenceKey::GreenOverlay, true},
    {PreferenceKey::SharpsOnly, true},
    {PreferenceKey::ToneGenerator, true},
    {PreferenceKey::PianoView, false},
    {PreferenceKey::UseML, false},
    {PreferenceKey::SoundsGuitar, true},
    {PreferenceKey::SoundsViolin, false},
    {PreferenceKey::SoundsPiano, false},
    {PreferenceKey::SoundsVoice, false},
    {PreferenceKey::ContinuousDisplay, false},
    {PreferenceKey::Latency, 10.0},
    {PreferenceKey::CenterBarWidth, std::int64_t{1}},
}};

class NotificationCenter;

// Takes the changes made to the store from outside (another instance, an
// edit by hand) and tells the program's parts as the settings screens do
// when the user changes the same keys: UpdateUI for the keys the main
// screen lays itself out by, UpdateIdentifiers for the accepted sounds.
// Every other reader reads at the moment of use and needs no telling.
void applyOutsideChanges(PreferenceStore& store, NotificationCenter& notifications);

namespace CommonUtils {

// Writes every default whose key holds no value yet; a stored value, of any
// type, is never touched. Runs on every launch before any key is read.
void setDefaultPreferences(PreferenceStore& store);

} // namespace CommonUtils

} // namespace veltra
