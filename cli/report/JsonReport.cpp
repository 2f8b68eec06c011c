#include "report/PracticeReport.h"
#include "report/Text.h"

#include <cstdio>
#include <sstream>

namespace veltra::report {

namespace {

std::string number(double value, int decimals)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    // "-0.00" is a valid JSON number, but a reader compares better without the sign.
    if (std::string(text).find_first_not_of("-0.") == std::string::npos)
        std::snprintf(text, sizeof text, "%.*f", decimals, 0.0);
    return text;
}

// Seconds to the millisecond, cents to the hundredth.
constexpr int kSecondsDecimals = 3;
constexpr int kCentsDecimals = 2;
constexpr int kShareDecimals = 3;

// A list of figures; keyName says what the number in NoteFigures::key is.
void writeFigures(std::ostream& out, const char* name, const char* keyName, const std::vector<NoteFigures>& list,
                  bool deviations)
{
    out << ",\n  " << jsonQuoted(name) << ": [";
    for (std::size_t i = 0; i < list.size(); ++i) {
        const NoteFigures& f = list[i];
        out << (i ? ",\n    " : "\n    ") << "{\"note\": " << jsonQuoted(f.name) << ", " << jsonQuoted(keyName) << ": " << f.key
            << ", \"times\": " << f.times << ", \"seconds\": " << number(f.seconds, kSecondsDecimals);
        if (deviations)
            out << ", \"readings\": " << f.readings << ", \"medianCents\": " << number(f.medianCents, kCentsDecimals)
                << ", \"spreadCents\": " << number(f.spreadCents, kCentsDecimals)
                << ", \"inTuneShare\": " << number(f.inTuneShare, kShareDecimals);
        out << '}';
    }
    out << (list.empty() ? "]" : "\n  ]");
}

} // namespace

std::string renderJson(const PracticeReport& report)
{
    const ReportSettings& s = report.settings;
    const PracticeSummary& summary = report.summary;
    std::ostringstream out;
    out << "{\n  \"file\": " << jsonQuoted(s.fileName) << ",\n  \"seconds\": " << number(report.track.seconds, kSecondsDecimals)
        << ",\n  \"settings\": {\"a4\": " << s.a4 << ", \"names\": " << jsonQuoted(s.sharps ? "sharps" : "flats")
        << ", \"soundGate\": ";
    if (s.gateSounds.empty()) {
        out << "null";
    } else {
        out << '[';
        for (std::size_t i = 0; i < s.gateSounds.size(); ++i)
            out << (i ? ", " : "") << jsonQuoted(s.gateSounds[i]);
        out << ']';
    }
    out << "},\n  \"definitions\": {\"briefSeconds\": " << kBriefSeconds << ", \"inTuneCents\": " << kInTuneCents
        << ", \"spreadQuantiles\": [" << kSpreadLowQuantile << ", " << kSpreadHighQuantile << "]},\n"
        << "  \"soundSeconds\": " << number(summary.soundSeconds, kSecondsDecimals)
        << ",\n  \"shownSeconds\": " << number(summary.shownSeconds, kSecondsDecimals);
    writeFigures(out, "notes", "key", summary.notes, true);
    writeFigures(out, "pitchClasses", "pitchClass", summary.pitchClasses, true);
    writeFigures(out, "brief", "key", summary.brief, false);
    out << "\n}\n";
    return out.str();
}

} // namespace veltra::report
