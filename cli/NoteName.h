#pragma once

#include <optional>
#include <string_view>

namespace veltra::cli {

// A note as musicians write it, in scientific pitch notation: a letter A to
// G, then a sharp (# or ♯) or a flat (b or ♭), then the octave, C4 being
// middle C. Letters may be in either case and both the accidental and the
// octave may be left out: "A4", "c#", "Bb1", "F♯3", "e♭".
struct NoteName {
    int semitone = 0; // above the octave's C, the accidental included: -1 (Cb) to 12 (B#)
    std::optional<int> octave;

    // The MIDI note (A4 is 69) in the note's own octave, else in `octave`.
    // As written, Cb4 is the B below middle C and B#3 is middle C.
    int midiNote(int octave) const;
};

// Throws UsageError naming the text when it is no such note.
NoteName parseNoteName(std::string_view text);

} // namespace veltra::cli
