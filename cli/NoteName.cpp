#include "NoteName.h"

#include "Command.h"

#include <array>
#include <cctype>
#include <string>

namespace veltra::cli {

namespace {

// The music signs as UTF-8, the way a terminal hands them over.
constexpr std::string_view kSharpSign = "\u266F";
constexpr std::string_view kFlatSign = "\u266D";

// Two digits are enough for any octave a tone can have; more would only
// be a typing slip, and could not overflow.
constexpr std::size_t kMostOctaveDigits = 2;

// MIDI counts octaves from C-1: C4 is 60.
constexpr int kMidiOctaveOffset = 1;
constexpr int kSemitonesPerOctave = 12;

} // namespace

int NoteName::midiNote(int defaultOctave) const
{
    return (octave.value_or(defaultOctave) + kMidiOctaveOffset) * kSemitonesPerOctave + semitone;
}

NoteName parseNoteName(std::string_view text)
{
    const auto refuse = [&text]() -> NoteName {
        throw UsageError("'" + std::string(text) +
                         "' is not a note name: a letter A to G, # or b for sharp or flat, then the octave "
                         "(A4, C#2, Bb1)");
    };
    // Semitones above C of each letter from A.
    static constexpr std::array<int, 7> kLetterSemitones{9, 11, 0, 2, 4, 5, 7};
    std::string_view rest = text;
    if (rest.empty())
        return refuse();
    const char letter = static_cast<char>(std::toupper(static_cast<unsigned char>(rest[0])));
    if (letter < 'A' || letter > 'G')
        return refuse();
    rest.remove_prefix(1);

    NoteName name;
    name.semitone = kLetterSemitones[static_cast<std::size_t>(letter - 'A')];
    // After the letter nothing but an accidental can be a letter, so a
    // capital B there is a flat too (BB1 as typed with the caps lock on).
    if (rest.starts_with('#') || rest.starts_with(kSharpSign)) {
        ++name.semitone;
        rest.remove_prefix(rest[0] == '#' ? 1 : kSharpSign.size());
    } else if (rest.starts_with('b') || rest.starts_with('B') || rest.starts_with(kFlatSign)) {
        --name.semitone;
        rest.remove_prefix(rest[0] == 'b' || rest[0] == 'B' ? 1 : kFlatSign.size());
    }

    if (rest.size() > kMostOctaveDigits)
        return refuse();
    if (!rest.empty()) {
        int octave = 0;
        for (const char c : rest) {
            if (!std::isdigit(static_cast<unsigned char>(c)))
                return refuse();
            octave = octave * 10 + (c - '0');
        }
        name.octave = octave;
    }
    return name;
}

} // namespace veltra::cli
