#pragma once

#include "settings/PreferenceStore.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace veltra::report {

// One reading of the patch as the screen took it.
struct TracePoint {
    double time = 0;       // seconds of audio at the end of the block that produced it
    float noteNumber = 0;  // continuous note number (49 = A4 in tune); NaN: nothing heard
};

// One stretch in which the readout showed one note while sound went on.
struct Occurrence {
    int key = 0; // piano key number of the note shown, 49 = A4
    double start = 0;
    double end = 0;
    // Cents from the shown note of every reading of that note while it was
    // shown, in order.
    std::vector<double> cents;

    double seconds() const { return end - start; }
};

// Everything the screen showed over a recording.
struct PracticeTrack {
    std::vector<TracePoint> trace;
    std::vector<Occurrence> occurrences;
    double seconds = 0; // the recording's length
};

// Sound has stopped once nothing has been heard for this long. The patch's
// own dropouts (a few stray readings as a note dies away, a bow change) are
// shorter, and must neither cut a note in two nor leave a sliver of it.
inline constexpr double kSilenceGap = 0.05;

// Follows the readout reading by reading and cuts it into occurrences: one
// starts with the first reading of the note the labels show, and ends when
// the labels change or sound stops (at the first reading of the silence).
// The deviations are the readings' own,
// never the labels' rounded text; a reading of another note (a slide the
// labels have not followed yet, an octave slip) counts for none.
class ReadoutFollower {
public:
    // The store gives the reference A and the note names, as on screen.
    explicit ReadoutFollower(const PreferenceStore& preferences);

    // One reading: the frequency the screen accepted (nullopt for silence or
    // a closed sound gate) and the note the labels show after it ("A#4";
    // "-" before the first).
    void reading(double time, std::optional<float> frequency, const std::string& shownNote);
    // Closes the last occurrence at the end of the recording.
    PracticeTrack finish(double seconds);

private:
    void close(double time);

    const PreferenceStore& preferences_;
    PracticeTrack track_;
    std::optional<Occurrence> current_;
    std::string currentName_;
    std::optional<double> silentSince_;
};

} // namespace veltra::report
