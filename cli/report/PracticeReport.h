#pragma once

#include "report/PracticeSummary.h"
#include "report/PracticeTrack.h"

#include <cstdint>
#include <string>
#include <vector>

namespace veltra::report {

// The settings a report was made with.
struct ReportSettings {
    std::string fileName;
    double sampleRate = 0;
    std::int64_t a4 = 440;
    bool sharps = true;
    // The sounds the classification gate accepted; empty when it was off.
    std::vector<std::string> gateSounds;
};

// Everything a report shows.
struct PracticeReport {
    ReportSettings settings;
    PracticeTrack track;
    PracticeSummary summary;
};

// One self-contained HTML page: inline styles and SVG, no scripts, no
// external resource; well-formed XML too, so it can be checked as such.
std::string renderHtml(const PracticeReport& report);

// The same figures for other programs: one JSON object.
std::string renderJson(const PracticeReport& report);

// Writes text in the app's notation: "A#4" becomes "A♯4", "Bb" "B♭".
std::string withGlyphs(const std::string& name);
// Cents with a sign and one decimal ("+6.2", "−3.0" with a true minus, "0.0").
std::string signedCents(double cents);

} // namespace veltra::report
