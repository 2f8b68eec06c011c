#include "tuning/Note.h"

#include "settings/Fatal.h"
#include "settings/Preferences.h"

#include <array>
#include <cmath>
#include <string_view>

namespace veltra {

namespace {

constexpr std::int64_t kSemitonesPerOctave = 12;
// The reference A is key 49 of the piano.
constexpr float kReferenceANoteNumber = 49.0f;

// Names by position within the octave, counted from A. With sharps off the
// scale is deliberately mixed: C and F keep their sharps, B, E and A use
// flats. The last entry also catches every position the table does not list
// (a multiple of 12, or a negative number).
constexpr std::array<std::string_view, 12> kSharpNames{
    "A", "A\u266F", "B", "C", "C\u266F", "D", "D\u266F", "E", "F", "F\u266F", "G", "G\u266F"};
constexpr std::array<std::string_view, 12> kMixedNames{
    "A", "B\u266D", "B", "C", "C\u266F", "D", "E\u266D", "E", "F", "F\u266F", "G", "A\u266D"};

constexpr std::string_view kSharpSign = "\u266F";
constexpr std::string_view kFlatSign = "\u266D";

// The octave changes between B and C: key 3.5 is the boundary between B0
// and C1, and every 12 keys later the next one. The test uses the unrounded
// number, so a value of exactly x.5 is named C but keeps the lower octave.
constexpr float kFirstOctaveTop = 3.5f;
constexpr int kHighestOctave = 8;

// Deviation works in thousandths of a note number; below half a semitone the
// pitch is above the named note, from half on it is below the next one.
constexpr std::uint64_t kThousandths = 1000;
constexpr std::uint64_t kLastSharpThousandth = 499;

std::string_view nameFor(std::int64_t n, bool sharpsOnly)
{
    const std::int64_t r = n - kSemitonesPerOctave * (n / kSemitonesPerOctave);
    const std::int64_t i = r - 1;
    const auto& names = sharpsOnly ? kSharpNames : kMixedNames;
    const auto last = static_cast<std::int64_t>(names.size()) - 1;
    return (i >= 0 && i < last) ? names[static_cast<std::size_t>(i)] : names.back();
}

std::string accidentalOf(std::string_view name)
{
    if (name.ends_with(kFlatSign))
        return "b";
    if (name.ends_with(kSharpSign))
        return "#";
    return {};
}

std::string octaveFor(float x)
{
    for (int octave = 0; octave <= kHighestOctave; ++octave) {
        if (x <= kFirstOctaveTop + static_cast<float>(kSemitonesPerOctave * octave))
            return std::string(1, static_cast<char>('0' + octave));
    }
    return {};
}

// One decimal followed by "%", rounded to the nearest tenth, without any
// locale grouping; a negative amount gets its own minus.
std::string percentText(float amount)
{
    const long long tenths = std::llround(static_cast<double>(amount) * 10.0);
    const unsigned long long magnitude =
        tenths < 0 ? 0ULL - static_cast<unsigned long long>(tenths) : static_cast<unsigned long long>(tenths);
    std::string text = tenths < 0 ? "-" : "";
    text += std::to_string(magnitude / 10);
    text += '.';
    text += static_cast<char>('0' + magnitude % 10);
    text += '%';
    return text;
}

std::string deviationFor(float x)
{
    const std::uint64_t whole = checkedTruncToUInt64(x);
    const std::uint64_t scaled = checkedTruncToUInt64(x * 1000.0f);
    // 1000 * whole cannot overflow here: it is at most 1000 * x, and a
    // product of 2^64 or more has already stopped the conversion above.
    if (scaled < kThousandths * whole)
        fatalError("negative fraction of a note number");
    const std::uint64_t d = scaled - kThousandths * whole;

    if (d <= kLastSharpThousandth)
        return "+" + percentText(static_cast<float>(d) / 10.0f);
    const std::int64_t below = static_cast<std::int64_t>(kThousandths) - static_cast<std::int64_t>(d);
    return "-" + percentText(static_cast<float>(below) / 10.0f);
}

} // namespace

Note Note::noNote()
{
    return Note{"-", "", "", ""};
}

float noteNumberForFrequency(float frequencyHz, std::int64_t a4)
{
    const float ratio = frequencyHz / static_cast<float>(a4);
    return 12.0f * std::log2(ratio) + kReferenceANoteNumber;
}

std::int64_t roundHalfAwayFromZero(float x)
{
    return checkedTruncToInt64(std::round(x));
}

namespace CommonUtils {

Note noteForNumber(float x, const PreferenceStore& store)
{
    // Rounding first makes any non-finite input fatal, whatever its sign.
    const std::int64_t n = roundHalfAwayFromZero(x);
    if (x <= 0.0f)
        return Note::noNote();
    const std::string_view name = nameFor(n, store.boolForKey(PreferenceKey::SharpsOnly));
    return Note{std::string(name.substr(0, 1)), accidentalOf(name), octaveFor(x), deviationFor(x)};
}

} // namespace CommonUtils

} // namespace veltra
