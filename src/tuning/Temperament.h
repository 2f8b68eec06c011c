#pragma once

#include "settings/Localization.h"
#include "settings/Preferences.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace veltra {

// Cents from equal temperament of the twelve degrees of a scale, counted in
// semitones up from its tonic: entry 0 is the tonic itself and always 0.
using CentsTable = std::array<double, 12>;

// The tuning systems the tuner offers, in the order the settings list them.
// Every one but the last is built in; Imported is the user's own table,
// read from a Scala file. The numbers are what the Temperament preference
// stores, so their order is kept.
enum class Temperament {
    Equal,
    Pythagorean,
    QuarterCommaMeantone,
    SixthCommaMeantone,
    WerckmeisterIII,
    KirnbergerIII,
    Vallotti,
    Young,
    Just,
    Imported,
};

inline constexpr std::size_t kTemperamentCount = static_cast<std::size_t>(Temperament::Imported) + 1;
static_assert(kTemperamentCount == kTemperamentChoices, "the Temperament preference holds every choice");

struct TemperamentInfo {
    Temperament temperament;
    std::string_view id;   // what the command line takes: "quarter-comma-meantone"
    const char* name;      // what the settings show, in English (context "Temperament")
};

inline constexpr std::array<TemperamentInfo, kTemperamentCount> kTemperaments{{
    {Temperament::Equal, "equal", VELTRA_TEXT("Temperament", "Equal temperament")},
    {Temperament::Pythagorean, "pythagorean", VELTRA_TEXT("Temperament", "Pythagorean")},
    {Temperament::QuarterCommaMeantone, "quarter-comma-meantone", VELTRA_TEXT("Temperament", "Quarter-comma meantone")},
    {Temperament::SixthCommaMeantone, "sixth-comma-meantone", VELTRA_TEXT("Temperament", "Sixth-comma meantone")},
    {Temperament::WerckmeisterIII, "werckmeister-iii", VELTRA_TEXT("Temperament", "Werckmeister III")},
    {Temperament::KirnbergerIII, "kirnberger-iii", VELTRA_TEXT("Temperament", "Kirnberger III")},
    {Temperament::Vallotti, "vallotti", VELTRA_TEXT("Temperament", "Vallotti")},
    {Temperament::Young, "young", VELTRA_TEXT("Temperament", "Young (1799)")},
    {Temperament::Just, "just", VELTRA_TEXT("Temperament", "Just intonation (5-limit)")},
    {Temperament::Imported, "imported", VELTRA_TEXT("Temperament", "Imported scale")},
}};

// The temperament a command-line id names, if any.
std::optional<Temperament> temperamentForId(std::string_view id);

// The built-in table of a temperament on C. Imported has no table of its
// own and gives equal temperament's zeros.
CentsTable centsTable(Temperament temperament);

} // namespace veltra
