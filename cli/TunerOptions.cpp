#include "TunerOptions.h"

#include "NoteName.h"

#include "settings/Preferences.h"
#include "tuning/ScalaScale.h"
#include "tuning/Temperament.h"

#include <cstdlib>

namespace veltra::cli {

namespace {

int pitchClass(const NoteName& name)
{
    return (name.semitone + 12) % 12;
}

// --tonic NOTE: a note name without an octave.
int tonicOption(const std::string& text)
{
    const NoteName name = parseNoteName(text);
    if (name.octave)
        throw UsageError("--tonic takes a note without an octave, such as D or Eb, not '" + text + "'");
    return pitchClass(name);
}

// --transpose KEY: the common instrument keys by name (the written C of a
// B flat instrument sounds the B flat below), any other as semitones.
int transposeOption(const std::string& text)
{
    char* end = nullptr;
    const long semitones = std::strtol(text.c_str(), &end, 10);
    if (!text.empty() && *end == '\0') {
        if (semitones < kMinimumTranspose || semitones > kMaximumTranspose)
            throw UsageError("--transpose must be from -12 to 12 semitones, not '" + text + "'");
        return static_cast<int>(semitones);
    }
    constexpr std::pair<int, int> kKeys[] = {{0, 0}, {10, -2}, {3, -9}, {5, -7}}; // C, Bb, Eb, F
    const std::string why = "--transpose takes C, Bb, Eb, F or semitones from -12 to 12, not '" + text + "'";
    NoteName name;
    try {
        name = parseNoteName(text);
    } catch (const UsageError&) {
        throw UsageError(why);
    }
    for (const auto& [key, transpose] : kKeys)
        if (!name.octave && pitchClass(name) == key)
            return transpose;
    throw UsageError(why);
}

} // namespace

MemoryPreferenceStore tunerPreferences(ArgReader& reader)
{
    MemoryPreferenceStore preferences;
    CommonUtils::setDefaultPreferences(preferences);
    if (const auto a4 = reader.numberOption("--a4", kMinimumA4, kMaximumA4)) {
        if (*a4 != static_cast<double>(static_cast<std::int64_t>(*a4)))
            throw UsageError("--a4 must be a whole number of hertz");
        preferences.setInteger(static_cast<std::int64_t>(*a4), PreferenceKey::A4);
    }
    if (reader.flag("--flats"))
        preferences.setBool(false, PreferenceKey::SharpsOnly);

    const auto temperamentName = reader.option("--temperament");
    const auto scalaFile = reader.option("--scala");
    if (temperamentName && scalaFile)
        throw UsageError("--temperament and --scala both choose the tuning system: give one");
    if (temperamentName) {
        const auto temperament = temperamentForId(*temperamentName);
        if (!temperament || *temperament == Temperament::Imported) {
            std::string names;
            for (const TemperamentInfo& info : kTemperaments)
                if (info.temperament != Temperament::Imported)
                    names += (names.empty() ? "" : ", ") + std::string(info.id);
            throw UsageError("--temperament takes one of " + names + ", not '" + *temperamentName + "'");
        }
        preferences.setInteger(static_cast<std::int64_t>(*temperament), PreferenceKey::Temperament);
    }
    if (scalaFile) {
        const auto scale = readScalaFile(*scalaFile);
        if (const auto* why = std::get_if<std::string>(&scale))
            throw UsageError(*why);
        const CentsTable& cents = std::get<ScalaScale>(scale).cents;
        preferences.setInteger(static_cast<std::int64_t>(Temperament::Imported), PreferenceKey::Temperament);
        for (std::size_t degree = 1; degree < cents.size(); ++degree)
            preferences.setDouble(cents[degree] + 100.0 * static_cast<double>(degree), kScaleCentsKeys[degree - 1]);
    }
    if (const auto tonic = reader.option("--tonic"))
        preferences.setInteger(tonicOption(*tonic), PreferenceKey::Tonic);
    if (const auto transpose = reader.option("--transpose"))
        preferences.setInteger(transposeOption(*transpose), PreferenceKey::Transpose);
    return preferences;
}

} // namespace veltra::cli
