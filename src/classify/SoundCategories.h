#pragma once

#include "settings/Localization.h"
#include "settings/Preferences.h"

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

namespace veltra {

// One kind of sound the user can let through the classification gate: its
// preference key, the row title of the selection screen, the classifier
// labels it accepts and the category name the engine reports for them. The
// title and the name are English; the screens translate them (the name in
// the status line "Detected guitar sound").
struct SoundCategory {
    std::string_view key;
    std::string_view title;
    std::string_view name;
    std::array<std::string_view, 7> labelStorage;
    std::size_t labelCount;

    constexpr std::span<const std::string_view> labels() const { return {labelStorage.data(), labelCount}; }
};

// In row order of the selection screen, which is also the order in which the
// engine appends labels. Violin accepts only "violin_fiddle" (the plain
// "violin" label is not ours to accept), and the voice category reports
// "vocal", which is not itself a label.
inline constexpr std::array<SoundCategory, 4> kSoundCategories{{
    {PreferenceKey::SoundsGuitar, VELTRA_TEXT("Sounds", "Guitar"), VELTRA_TEXT("DetectedSound", "guitar"),
     {"guitar", "electric_guitar", "bass_guitar", "acoustic_guitar", "steel_guitar_slide_guitar",
      "guitar_tapping", "guitar_strum"},
     7},
    {PreferenceKey::SoundsViolin, VELTRA_TEXT("Sounds", "Violin"), VELTRA_TEXT("DetectedSound", "violin"),
     {"violin_fiddle"}, 1},
    {PreferenceKey::SoundsPiano, VELTRA_TEXT("Sounds", "Piano"), VELTRA_TEXT("DetectedSound", "piano"),
     {"piano", "electric_piano"}, 2},
    {PreferenceKey::SoundsVoice, VELTRA_TEXT("Sounds", "Voice"), VELTRA_TEXT("DetectedSound", "vocal"),
     {"singing", "humming", "whistling"}, 3},
}};

} // namespace veltra
