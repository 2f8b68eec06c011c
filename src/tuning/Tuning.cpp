#include "tuning/Tuning.h"

#include "settings/Preferences.h"
#include "tuning/Note.h"

#include <algorithm>
#include <cmath>

namespace veltra {

namespace {

constexpr int kPitchClasses = 12;
constexpr int kPitchClassOfA = 9;
// Key 49 of the piano scale is the reference A.
constexpr int kKeyOfA = 49;
// Every note of a twelve-note table lies less than an octave from its
// equal-tempered pitch, so the nearest note is within this many keys.
constexpr int kSearchKeys = kPitchClasses + 1;
// The largest deviation the readout can show above a note: +49.9 cents;
// from +50.0 on the next note is named.
constexpr double kHighestShownDeviation = 0.499;
constexpr double kLowestShownDeviation = -0.5;

int pitchClassOfKey(std::int64_t key)
{
    const auto fromA = static_cast<int>((key - kKeyOfA) % kPitchClasses);
    return (kPitchClassOfA + fromA + kPitchClasses) % kPitchClasses;
}

int wrap(int pitchClass)
{
    return ((pitchClass % kPitchClasses) + kPitchClasses) % kPitchClasses;
}

} // namespace

Tuning::Tuning(const CentsTable& table, int tonic, int transpose)
    : transpose_(transpose)
    , equal_(std::all_of(table.begin(), table.end(), [](double c) { return c == 0.0; }))
{
    const double atA = table[static_cast<std::size_t>(wrap(kPitchClassOfA - tonic))];
    for (int pc = 0; pc < kPitchClasses; ++pc)
        offsets_[static_cast<std::size_t>(pc)] = table[static_cast<std::size_t>(wrap(pc - tonic))] - atA;
}

Tuning Tuning::fromPreferences(const PreferenceStore& store)
{
    const auto temperament = store.integerForKey(PreferenceKey::Temperament);
    const auto tonic = static_cast<int>(store.integerForKey(PreferenceKey::Tonic));
    const auto transpose = static_cast<int>(store.integerForKey(PreferenceKey::Transpose));
    CentsTable table{};
    if (temperament == static_cast<std::int64_t>(Temperament::Imported)) {
        for (std::size_t degree = 1; degree < table.size(); ++degree)
            table[degree] = store.doubleForKey(kScaleCentsKeys[degree - 1]) - 100.0 * static_cast<double>(degree);
    } else if (temperament > 0 && temperament < static_cast<std::int64_t>(kTemperamentCount)) {
        table = centsTable(static_cast<Temperament>(temperament));
    }
    return Tuning(table, wrap(tonic), std::clamp(transpose, kMinimumTranspose, kMaximumTranspose));
}

float Tuning::shownNoteNumber(float concertNoteNumber) const
{
    if (isEqualAtConcertPitch() || !std::isfinite(concertNoteNumber))
        return concertNoteNumber;
    const double x = concertNoteNumber;
    const std::int64_t nearestEqual = std::llround(x);
    std::int64_t key = nearestEqual;
    double deviation = x - static_cast<double>(key);
    if (!equal_) {
        double best = INFINITY;
        for (std::int64_t k = nearestEqual - kSearchKeys; k <= nearestEqual + kSearchKeys; ++k) {
            const double d = x - (static_cast<double>(k) + centsOf(pitchClassOfKey(k)) / 100.0);
            if (std::abs(d) < best) {
                best = std::abs(d);
                key = k;
                deviation = d;
            }
        }
    }
    deviation = std::clamp(deviation, kLowestShownDeviation, kHighestShownDeviation);
    return static_cast<float>(static_cast<double>(key - transpose_) + deviation);
}

float Tuning::concertMidiNote(float written) const
{
    if (isEqualAtConcertPitch())
        return written;
    const double concert = static_cast<double>(written) + transpose_;
    const auto pitchClass = wrap(static_cast<int>(std::llround(concert)));
    return static_cast<float>(concert + centsOf(pitchClass) / 100.0);
}

float shownNoteNumber(float frequencyHz, const PreferenceStore& store)
{
    const float x = noteNumberForFrequency(frequencyHz, store.integerForKey(PreferenceKey::A4));
    return Tuning::fromPreferences(store).shownNoteNumber(x);
}

} // namespace veltra
