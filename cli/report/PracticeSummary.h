#pragma once

#include "report/PracticeTrack.h"

#include "settings/MemoryPreferenceStore.h"

#include <map>
#include <string>
#include <vector>

namespace veltra::report {

// Occurrences shorter than this (a fifth of a second, a sixteenth note at
// 75 beats a minute) are passing notes or the readout catching a slide: too
// short to hear and correct, so they are listed apart and left out of the
// deviation figures.
inline constexpr double kBriefSeconds = 0.2;
// A reading counts as in tune within this many cents: the app's centre bar
// at its default (medium) width.
inline constexpr double kInTuneCents = 10.0;
// The spread is half the width of the middle 68.27 % of the readings, from
// the 15.87th to the 84.13th percentile: one standard deviation either side
// for normally scattered readings, yet not thrown by a stray one.
inline constexpr double kSpreadLowQuantile = 0.158655;
inline constexpr double kSpreadHighQuantile = 0.841345;

// The figures of one note (or one pitch class across octaves).
struct NoteFigures {
    int key = 0; // piano key (49 = A4), or pitch class from C = 0
    std::string name; // "F#4" or "F#", as the labels spell it
    int times = 0;       // occurrences
    double seconds = 0;  // time shown, summed
    std::size_t readings = 0;
    double medianCents = 0;
    double spreadCents = 0;
    double inTuneShare = 0; // of the readings, 0 to 1
};

struct PracticeSummary {
    double soundSeconds = 0; // time with a reading the screen took
    double shownSeconds = 0; // time in occurrences of any length
    // Largest median deviation first, sharp or flat.
    std::vector<NoteFigures> notes;
    std::vector<NoteFigures> pitchClasses;
    // Notes shown only briefly, from the lowest; deviation figures unset.
    std::vector<NoteFigures> brief;
};

// Names notes as the labels do: with sharps, or with the usual flats.
class NoteNames {
public:
    explicit NoteNames(bool sharps);
    // "A#4" for key 50 with sharps, "Bb4" with flats.
    std::string note(int key) const;
    // Pitch classes count from C = 0: "C#" for 1 either way.
    std::string pitchClass(int pitchClass) const;

private:
    MemoryPreferenceStore store_;
};

// The figures per note and per pitch class, gathered occurrence by
// occurrence as the readout follower closes them: the summary of a
// recording of any length keeps no more than a distribution per note.
class SummaryBuilder {
public:
    void add(const Occurrence& occurrence, const CentsDistribution& cents);
    PracticeSummary finish(double soundSeconds, const NoteNames& names) const;

private:
    // Readings and occurrences gathered for one note or pitch class.
    struct Pool {
        int times = 0;
        double seconds = 0;
        CentsDistribution cents;
    };
    std::map<int, Pool> notes_, pitchClasses_, brief_;
    double shownSeconds_ = 0;
};

} // namespace veltra::report
