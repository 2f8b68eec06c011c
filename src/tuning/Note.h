#pragma once

#include "settings/PreferenceStore.h"

#include <cstdint>
#include <string>

namespace veltra {

// The displayed reading: four texts, copied by value. The accidental is
// carried as plain ASCII "#" or "b" so that every screen can render it in
// its own way.
struct Note {
    std::string note;         // "A" to "G", "-" when nothing is named
    std::string sharpFlat;    // "#", "b" or empty
    std::string octaveNumber; // "0" to "8", empty above the top octave
    std::string deviation;    // sign and cents with one decimal, "+20.0%"

    // The record shown when there is no pitch to name.
    static Note noNote();

    friend bool operator==(const Note&, const Note&) = default;
};

// The continuous note number on the piano-key scale: whole numbers are in
// tune, 49 is the reference A. Every step is single precision, in the order
// division, log2, times 12, plus 49, so the readout and the graph agree on
// the last bit.
float noteNumberForFrequency(float frequencyHz, std::int64_t a4);

// Rounds halves away from zero (3.5 -> 4, -3.5 -> -4); a non-finite or
// out-of-range value is a programming error and stops the program.
std::int64_t roundHalfAwayFromZero(float x);

namespace CommonUtils {

// Names the note number x. Reads SharpsOnly from the store on every call so
// that a changed setting shows with the next reading.
Note noteForNumber(float x, const PreferenceStore& store);

// Drawing choices of the live graph, fixed at build time: the deviation band
// is drawn, the per-row orange trail is not.
inline constexpr bool orangeVerticalLine = true;
inline constexpr bool orangeFill = false;

} // namespace CommonUtils

} // namespace veltra
