#pragma once

#include "settings/PreferenceStore.h"
#include "tuning/Temperament.h"

#include <cstdint>

namespace veltra {

// How the tuner names what it hears and what the tone buttons play: a
// tuning system on a tonic, and the player's instrument key.
//
// The tuning system moves each note from its equal-tempered pitch by its
// table's cents, counted from the tonic. The reference A keeps its pitch in
// every system (the table is shifted so that A's entry is 0): whoever tunes
// a temperament starts from the A of a fork or of the ensemble.
//
// The transposition is the sounding pitch of the instrument's written C in
// semitones from concert C: -2 for a B flat clarinet or trumpet (written D
// sounds C), -9 for an E flat alto saxophone, -7 for a horn in F. The
// tuner names written notes; the tuning system applies to what sounds.
//
// Equal temperament at concert pitch, the first choice of each, leaves
// every number exactly as it is.
class Tuning {
public:
    Tuning() = default;
    // tonic: 0 for C up to 11 for B; transpose from kMinimumTranspose to
    // kMaximumTranspose (settings/Preferences.h).
    Tuning(const CentsTable& table, int tonic, int transpose);

    // The tuning the preferences choose, read at the moment of use.
    static Tuning fromPreferences(const PreferenceStore& store);

    // The note number the tuner shows (Note.h's piano-key scale) for a
    // concert, equal-tempered note number: whole numbers are the written
    // notes in tune in this system. A pitch further than half a semitone from
    // every note of the system (between two notes a wide gap apart) is named
    // by the nearer one and shown 50 cents off.
    float shownNoteNumber(float concertNoteNumber) const;
    // The MIDI note whose pitch sounds written MIDI note `written` in this
    // system (concert, with the note's cents as a fraction).
    float concertMidiNote(float written) const;

    // Cents from equal temperament of concert pitch class pc (0 = C).
    double centsOf(int pitchClass) const { return offsets_[static_cast<std::size_t>(pitchClass)]; }
    int transpose() const { return transpose_; }
    bool isEqualAtConcertPitch() const { return equal_ && transpose_ == 0; }

private:
    CentsTable offsets_{}; // by concert pitch class, A at 0
    int transpose_ = 0;
    bool equal_ = true;
};

// The note number the tuner shows for a frequency heard, under the reference
// A and the tuning that the preferences choose.
float shownNoteNumber(float frequencyHz, const PreferenceStore& store);

} // namespace veltra
