#include "app/TuningSettingsController.h"

#include "app/ViewController.h"
#include "settings/Preferences.h"
#include "tuning/ScalaScale.h"
#include "tuning/Temperament.h"

#include <algorithm>
#include <array>

namespace veltra {

namespace {

// The instrument keys offered by name, as the sounding pitch of their
// written C in semitones: C, B flat (clarinet, trumpet), E flat (alto
// saxophone), F (horn).
constexpr std::array<int, 4> kKeyTranspositions{0, -2, -9, -7};

} // namespace

TuningSettingsController::TuningSettingsController(PreferenceStore& preferences)
    : preferences_(preferences)
{
}

int TuningSettingsController::temperament() const
{
    return static_cast<int>(preferences_.integerForKey(PreferenceKey::Temperament));
}

int TuningSettingsController::tonic() const
{
    return static_cast<int>(preferences_.integerForKey(PreferenceKey::Tonic));
}

int TuningSettingsController::transpose() const
{
    return static_cast<int>(preferences_.integerForKey(PreferenceKey::Transpose));
}

int TuningSettingsController::keySegment() const
{
    const auto found = std::find(kKeyTranspositions.begin(), kKeyTranspositions.end(), transpose());
    return found == kKeyTranspositions.end() ? -1 : static_cast<int>(found - kKeyTranspositions.begin());
}

bool TuningSettingsController::hasImportedScale() const
{
    return preferences_.hasValue(kScaleCentsKeys[0]);
}

void TuningSettingsController::setTemperament(int index)
{
    const bool known = index >= 0 && index < kTemperamentChoices;
    // The imported scale can be chosen again only once there is one.
    if (!known || (index == static_cast<int>(Temperament::Imported) && !hasImportedScale()))
        return;
    preferences_.setInteger(index, PreferenceKey::Temperament);
}

void TuningSettingsController::setTonic(int pitchClass)
{
    if (pitchClass >= 0 && pitchClass < 12)
        preferences_.setInteger(pitchClass, PreferenceKey::Tonic);
}

void TuningSettingsController::setTranspose(int semitones)
{
    preferences_.setInteger(std::clamp(semitones, kMinimumTranspose, kMaximumTranspose), PreferenceKey::Transpose);
}

void TuningSettingsController::setKeySegment(int segment)
{
    if (segment >= 0 && segment < static_cast<int>(kKeyTranspositions.size()))
        setTranspose(kKeyTranspositions[static_cast<std::size_t>(segment)]);
}

void TuningSettingsController::importScala(const std::filesystem::path& file)
{
    const auto scale = readScalaFile(file);
    if (const auto* why = std::get_if<std::string>(&scale)) {
        //: %1 is why, in English, as "line 4: the pitches must rise from the tonic to the octave".
        importProblem_ = fillIn(translate("TuningSettings", "This scale cannot be used: %1"), {*why});
        return;
    }
    importProblem_.clear();
    const CentsTable& cents = std::get<ScalaScale>(scale).cents;
    for (std::size_t degree = 1; degree < cents.size(); ++degree)
        preferences_.setDouble(cents[degree] + 100.0 * static_cast<double>(degree), kScaleCentsKeys[degree - 1]);
    preferences_.setInteger(static_cast<int>(Temperament::Imported), PreferenceKey::Temperament);
}

std::vector<std::string> TuningSettingsController::temperamentNames()
{
    std::vector<std::string> names;
    for (const TemperamentInfo& info : kTemperaments)
        names.push_back(translate("Temperament", info.name));
    return names;
}

std::vector<std::string> TuningSettingsController::tonicNames()
{
    // Note letters are the same in every language the tuner speaks.
    return {"C", "C\u266F/D\u266D", "D", "D\u266F/E\u266D", "E", "F", "F\u266F/G\u266D", "G", "G\u266F/A\u266D", "A",
            "A\u266F/B\u266D", "B"};
}

std::vector<std::string> TuningSettingsController::keyNames()
{
    return {translate("TuningSettings", "C (concert)"), "B\u266D", "E\u266D", "F"};
}

std::vector<std::string> TuningSettingsController::spokenKeyNames()
{
    return {translate("TuningSettings", "C (concert)"), ViewController::spokenNote("B", "b"),
            ViewController::spokenNote("E", "b"), "F"};
}

std::string TuningSettingsController::tuningFooter()
{
    return translate("TuningSettings",
                     "Equal temperament divides the octave into twelve equal semitones. A historical temperament "
                     "or just intonation gives each note of the scale on the tonic its own pitch, and the tuner "
                     "shows a note as in tune when it is in tune there; the reference A stays where it is. "
                     "Import a Scala file (.scl) of twelve notes to tune to your own table.");
}

std::string TuningSettingsController::keyFooter()
{
    return translate("TuningSettings",
                     "For transposing instruments: the tuner names the notes as they are written for an "
                     "instrument in this key, and the tone buttons play the written notes. B\u266D for clarinet "
                     "and trumpet, E\u266D for alto saxophone, F for horn; any other key as the semitones its "
                     "written C sounds from concert C.");
}

} // namespace veltra
