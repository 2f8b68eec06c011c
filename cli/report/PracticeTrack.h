#pragma once

#include "settings/PreferenceStore.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace veltra::report {

// One reading of the patch as the screen took it.
struct TracePoint {
    double time = 0;       // seconds of audio at the end of the block that produced it
    float noteNumber = 0;  // continuous note number (49 = A4 in tune); NaN: nothing heard
};

// The deviations of a set of readings in cents, and their quantiles. A few
// thousand are kept as they are; beyond that they are counted in bins of a
// hundredth of a cent (finer than any figure a report prints), so a note
// held for hours takes the memory of one held for a minute.
class CentsDistribution {
public:
    void add(double cents);
    void merge(const CentsDistribution& other);
    std::size_t size() const { return count_; }
    // The value below which the fraction q (0 to 1) of the readings lie,
    // interpolated linearly between neighbours in sorted order; 0 when empty.
    double quantile(double q) const;
    // How many readings lie within limit either side of zero.
    std::size_t countWithin(double limit) const;

private:
    static constexpr std::size_t kMostExact = 4096;
    static constexpr double kBinWidth = 0.01;
    static constexpr double kLowest = -50; // the farthest a reading can be from its note
    static constexpr std::size_t kBins = 10001;
    void toBins();
    // The value of the i-th smallest reading.
    double nth(std::size_t i) const;

    std::vector<double> exact_; // while there are few
    std::vector<std::uint32_t> bins_;
    std::size_t count_ = 0;
};

// One stretch in which the readout showed one note while sound went on.
struct Occurrence {
    int key = 0; // piano key number of the note shown, 49 = A4
    double start = 0;
    double end = 0;
    // Readings of that note while it was shown.
    std::size_t readings = 0;

    double seconds() const { return end - start; }
};

// Everything the screen showed over a recording.
struct PracticeTrack {
    // The readings for the pitch chart: beyond the first line of the chart
    // (which a shorter recording fills at a finer scale), one point per
    // pixel of the chart, the median of the readings on it, and one for a
    // stretch of silence, so the trace grows with the chart, not the rate.
    std::vector<TracePoint> trace;
    std::vector<Occurrence> occurrences;
    double seconds = 0;      // the recording's length
    double soundSeconds = 0; // time with a reading the screen took
    // Per note as the labels name it ("A4"), the time with readings of that
    // note, shown or not: how long it sounded. The labels keep a note
    // through the silence after it; this does not.
    std::map<std::string, double> soundedSeconds;
};

// The pitch chart's scale once a recording fills a line of it: 20 s in 900
// pixels (PitchChart.cpp).
inline constexpr double kFullLineSeconds = 20.0;
inline constexpr double kPixelsPerSecond = 45.0;

// Sound has stopped once nothing has been heard for this long. The patch's
// own dropouts (a few stray readings as a note dies away, a bow change) are
// shorter, and must neither cut a note in two nor leave a sliver of it.
inline constexpr double kSilenceGap = 0.05;

// Follows the readout reading by reading and cuts it into occurrences: one
// starts with the first reading of the note the labels show, and ends when
// the labels change or sound stops (at the first reading of the silence).
// The deviations are the readings' own,
// never the labels' rounded text; a reading of another note (a slide the
// labels have not followed yet, an octave slip) counts for none. Each
// occurrence's deviations go to onOccurrence as it closes and are not kept.
class ReadoutFollower {
public:
    using OccurrenceSink = std::function<void(const Occurrence&, const CentsDistribution&)>;
    // The store gives the reference A and the note names, as on screen.
    // Without a trace, the track keeps no readings (a report without a chart).
    explicit ReadoutFollower(const PreferenceStore& preferences, OccurrenceSink onOccurrence = {},
                             bool keepTrace = true);

    // One reading: the frequency the screen accepted (nullopt for silence or
    // a closed sound gate) and the note the labels show after it ("A#4";
    // "-" before the first).
    void reading(double time, std::optional<float> frequency, const std::string& shownNote);
    // Closes the last occurrence at the end of the recording.
    PracticeTrack finish(double seconds);

private:
    void close(double time);
    void trace(double time, float noteNumber);

    const PreferenceStore& preferences_;
    OccurrenceSink onOccurrence_;
    bool keepTrace_;
    PracticeTrack track_;
    std::optional<Occurrence> current_;
    CentsDistribution currentCents_;
    std::optional<double> lastReading_;
    std::vector<float> pixel_; // the readings on the trace's last point
    std::string currentName_;
    std::optional<double> silentSince_;
};

} // namespace veltra::report
