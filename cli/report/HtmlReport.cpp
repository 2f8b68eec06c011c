#include "report/PracticeReport.h"

#include "report/HtmlParts.h"
#include "report/PitchChart.h"

#include <algorithm>
#include <cmath>
#include <sstream>
#include <utility>

namespace veltra::report {

namespace {

using namespace html;

// --- the deviations chart -----------------------------------------------------

constexpr double kRowHeight = 22;
constexpr double kDeviationLabels = 60; // note names
constexpr double kDeviationFigures = 140; // "+6.2 ¢ ± 4.0" on the right
constexpr double kScaleTop = 20;
// The scale reaches the largest deviation plus its spread, in steps of ten
// cents, no narrower than ±20 and no wider than the ±50 a note can be off.
constexpr double kScaleStep = 10;
constexpr double kNarrowestScale = 20;
constexpr double kWidestScale = 50;

// "+10", "0", "−20"
std::string scaleLabel(double cents)
{
    const int whole = static_cast<int>(std::lround(cents));
    return (whole > 0 ? "+" : whole < 0 ? "\u2212" : "") + std::to_string(std::abs(whole));
}

std::string deviationChart(const std::vector<NoteFigures>& figures, const char* label)
{
    if (figures.empty())
        return "<p class=\"note\">Nothing shown long enough to measure.</p>";
    double reach = 0;
    for (const NoteFigures& f : figures)
        reach = std::max(reach, std::abs(f.medianCents) + f.spreadCents);
    const double scale = std::clamp(std::ceil(reach / kScaleStep) * kScaleStep, kNarrowestScale, kWidestScale);
    const double left = kDeviationLabels, right = kChartWidth - kDeviationFigures;
    const auto x = [&](double cents) {
        return (left + right) / 2 + std::clamp(cents, -scale, scale) / scale * (right - left) / 2;
    };
    const double height = kScaleTop + kRowHeight * static_cast<double>(figures.size()) + 4;

    std::ostringstream out;
    out << "<svg class=\"deviations\" viewBox=\"0 0 " << kChartWidth << ' ' << fixed(height, 0)
        << "\" role=\"img\" aria-label=\"" << label << "\">"
        << "<rect class=\"bar\" x=\"" << fixed(x(-kInTuneCents), 1) << "\" y=\"" << kScaleTop - 4 << "\" width=\""
        << fixed(x(kInTuneCents) - x(-kInTuneCents), 1) << "\" height=\"" << fixed(height - kScaleTop + 4, 1)
        << "\"/>";
    for (double c = -scale; c <= scale + 1e-9; c += kScaleStep) {
        out << "<line x1=\"" << fixed(x(c), 1) << "\" y1=\"" << kScaleTop - 4 << "\" x2=\"" << fixed(x(c), 1)
            << "\" y2=\"" << fixed(height, 1) << "\" stroke=\"" << (c == 0 ? kInk : kGrid) << "\" stroke-width=\""
            << (c == 0 ? 1 : 0.5) << "\"/><text class=\"tick\" x=\"" << fixed(x(c), 1)
            << "\" y=\"11\" text-anchor=\"middle\">" << scaleLabel(c) << "</text>";
    }
    double y = kScaleTop + kRowHeight / 2;
    for (const NoteFigures& f : figures) {
        const char* colour = deviationColour(f.medianCents);
        out << "<text class=\"name\" x=\"" << left - 10 << "\" y=\"" << fixed(y + 4, 1) << "\" text-anchor=\"end\">"
            << withGlyphs(f.name) << "</text><line x1=\"" << fixed(x(f.medianCents - f.spreadCents), 1) << "\" y1=\""
            << fixed(y, 1) << "\" x2=\"" << fixed(x(f.medianCents + f.spreadCents), 1) << "\" y2=\"" << fixed(y, 1)
            << "\" stroke=\"" << colour << "\" stroke-width=\"4\" stroke-linecap=\"round\" opacity=\"0.45\"/>"
            << "<circle cx=\"" << fixed(x(f.medianCents), 1) << "\" cy=\"" << fixed(y, 1) << "\" r=\"5\" fill=\""
            << colour << "\"/><text class=\"figure\" x=\"" << right + 12 << "\" y=\"" << fixed(y + 4, 1) << "\">"
            << signedCents(f.medianCents) << "&#160;¢ ±&#160;" << fixed(f.spreadCents, 1) << "</text>";
        y += kRowHeight;
    }
    out << "</svg>";
    return out.str();
}

// --- tables and text ------------------------------------------------------------

std::string figuresTable(const std::vector<NoteFigures>& figures, const char* id, const char* noteHeading)
{
    std::ostringstream out;
    out << "<table id=\"" << id << "\"><thead><tr><th>" << noteHeading
        << "</th><th>times</th><th>shown</th><th>median</th><th>spread</th><th>in tune</th></tr></thead><tbody>";
    for (const NoteFigures& f : figures) {
        out << "<tr data-key=\"" << f.key << "\"><th>" << withGlyphs(f.name) << "</th><td>" << f.times << "</td><td>"
            << durationText(f.seconds) << "</td><td style=\"color:" << deviationColour(f.medianCents) << "\">"
            << signedCents(f.medianCents) << "&#160;¢</td><td>±" << fixed(f.spreadCents, 1) << "&#160;¢</td><td>"
            << fixed(100 * f.inTuneShare, 0) << "&#160;%</td></tr>";
    }
    out << "</tbody></table>";
    return out.str();
}

std::string briefTable(const std::vector<NoteFigures>& brief)
{
    if (brief.empty())
        return "<p class=\"note\">None: every note was held long enough to count.</p>";
    std::ostringstream out;
    out << "<table id=\"brief\"><thead><tr><th>note</th><th>times</th><th>shown</th></tr></thead><tbody>";
    for (const NoteFigures& f : brief)
        out << "<tr data-key=\"" << f.key << "\"><th>" << withGlyphs(f.name) << "</th><td>" << f.times << "</td><td>"
            << durationText(f.seconds) << "</td></tr>";
    out << "</tbody></table>";
    return out.str();
}

std::string highlights(const PracticeSummary& summary)
{
    if (summary.notes.empty())
        return "<p class=\"lead\">No note was shown long enough to measure.</p>";
    const auto [flattest, sharpest] = std::minmax_element(
        summary.notes.begin(), summary.notes.end(),
        [](const NoteFigures& a, const NoteFigures& b) { return a.medianCents < b.medianCents; });
    std::ostringstream out;
    out << "<p class=\"lead\">" << summary.notes.size() << (summary.notes.size() == 1 ? " note" : " notes")
        << " measured. ";
    // Only deviations that show as such at one decimal.
    if (std::round(sharpest->medianCents * 10) > 0)
        out << "Sharpest: <b>" << withGlyphs(sharpest->name) << "</b> " << signedCents(sharpest->medianCents)
            << "&#160;¢. ";
    if (std::round(flattest->medianCents * 10) < 0)
        out << "Flattest: <b>" << withGlyphs(flattest->name) << "</b> " << signedCents(flattest->medianCents)
            << "&#160;¢.";
    out << "</p>";
    return out.str();
}

std::string settingsText(const ReportSettings& s)
{
    std::string gate = "off";
    if (!s.gateSounds.empty()) {
        gate = "on, accepting ";
        for (std::size_t i = 0; i < s.gateSounds.size(); ++i)
            gate += (i ? ", " : "") + escaped(s.gateSounds[i]);
    }
    return "A4&#160;=&#160;" + std::to_string(s.a4) + "&#160;Hz · names: " +
           (s.sharps ? withGlyphs("sharps (C# D# F# G# A#)") : withGlyphs("flats where usual (C# Eb F# Ab Bb)")) +
           " · sound gate: " + gate;
}

constexpr const char* kStyle = R"(
:root { --ink: #111315; --dim: #5f666d; --accent: #1fb08a; --rule: #d5d9dd; }
* { box-sizing: border-box; }
body { margin: 0; background: #eceeef; color: var(--ink);
  font: 15px/1.45 "DejaVu Sans", "Noto Sans", system-ui, sans-serif; }
main { max-width: 1000px; margin: 0 auto; background: #ffffff; padding: 0 20px 24px; }
header { background: var(--ink); color: #f2f2f2; margin: 0 -20px 18px; padding: 18px 20px 14px;
  border-bottom: 4px solid var(--accent); }
header h1 { margin: 0; font-size: 24px; font-weight: 600; letter-spacing: 0.01em; }
header p { margin: 4px 0 0; color: #9aa0a6; }
header .file { color: #f2f2f2; font-weight: 600; }
h2 { font-size: 17px; margin: 26px 0 6px; padding-bottom: 3px; border-bottom: 1px solid var(--rule); }
.lead { font-size: 17px; margin: 6px 0 12px; }
.facts { display: flex; gap: 28px; flex-wrap: wrap; margin: 0 0 6px; color: var(--dim); }
.facts b { color: var(--ink); font-size: 18px; font-weight: 600; display: block; }
svg { width: 100%; height: auto; display: block; }
svg text { font-family: "DejaVu Sans", "Noto Sans", sans-serif; fill: var(--ink); }
svg .key, svg .tick { font-size: 10px; fill: var(--dim); }
svg .name { font-size: 13px; font-weight: 600; }
svg .figure { font-size: 12px; }
svg .shown { fill: var(--accent); fill-opacity: 0.28; }
svg .brief { fill: var(--dim); fill-opacity: 0.22; }
svg .bar { fill: var(--accent); fill-opacity: 0.13; }
svg .trace { fill: none; stroke: var(--ink); stroke-width: 1.3; stroke-linejoin: round; }
.legend { color: var(--dim); font-size: 13px; margin: 4px 0 0; }
.swatch { display: inline-block; width: 22px; height: 10px; vertical-align: middle; margin: 0 4px 0 10px; }
table { border-collapse: collapse; margin: 10px 0 0; font-variant-numeric: tabular-nums; }
th, td { padding: 3px 14px 3px 0; text-align: right; border-bottom: 1px solid #eceeef; }
thead th { color: var(--dim); font-weight: normal; font-size: 13px; border-bottom: 1px solid var(--rule); }
tbody th { text-align: left; font-weight: 600; }
thead th:first-child { text-align: left; }
.note { color: var(--dim); font-size: 13px; }
dl { margin: 8px 0 0; font-size: 13px; }
dt { font-weight: 600; float: left; clear: left; width: 110px; }
dd { margin: 0 0 5px 120px; color: #33383d; }
@media print {
  @page { margin: 12mm; }
  body { background: #ffffff; font-size: 11pt; }
  main { max-width: none; padding: 0; }
  header { background: none; color: var(--ink); margin: 0 0 12px; padding: 0 0 6px; }
  header p, header .file { color: var(--ink); }
  section { break-inside: avoid; }
  * { print-color-adjust: exact; -webkit-print-color-adjust: exact; }
}
)";

} // namespace

std::string withGlyphs(const std::string& name)
{
    std::string out;
    for (std::size_t i = 0; i < name.size(); ++i) {
        // An accidental follows a note letter; any other '#' or 'b' is text.
        const bool afterLetter = i > 0 && name[i - 1] >= 'A' && name[i - 1] <= 'G';
        if (afterLetter && name[i] == '#')
            out += "\u266F";
        else if (afterLetter && name[i] == 'b')
            out += "\u266D";
        else
            out += name[i];
    }
    return out;
}

std::string signedCents(double cents)
{
    const double tenths = std::round(cents * 10);
    if (tenths == 0)
        return "0.0";
    return (tenths > 0 ? "+" : "\u2212") + fixed(std::abs(tenths) / 10, 1);
}

std::string renderHtml(const PracticeReport& report)
{
    const ReportSettings& s = report.settings;
    const PracticeSummary& summary = report.summary;
    std::ostringstream out;
    out << "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\"/>"
        << "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>"
        << "<title>Practice report: " << escaped(s.fileName) << "</title><style>" << kStyle << "</style></head>"
        << "<body><main><header><h1>Practice report</h1><p><span class=\"file\">" << escaped(s.fileName)
        << "</span> · " << clockTime(report.track.seconds) << " · " << settingsText(s) << "</p></header>";

    out << highlights(summary) << "<div class=\"facts\"><div><b>" << clockTime(report.track.seconds)
        << "</b>recording</div><div><b>" << durationText(summary.soundSeconds) << "</b>sound heard</div><div><b>"
        << durationText(summary.shownSeconds) << "</b>a note shown</div><div><b>" << summary.notes.size()
        << "</b>notes measured</div></div>";

    out << "<section><h2>Pitch over time</h2>";
    pitchChart(out, report, NoteNames(s.sharps));
    out << "<p class=\"legend\">The line is every reading; <span class=\"swatch\" style=\"background:" << kAccent
        << ";opacity:0.4\"></span>the note the readout showed<span class=\"swatch\" style=\"background:" << kDimInk
        << ";opacity:0.3\"></span>shown only briefly; blank where nothing was heard.</p></section>";

    out << "<section><h2>Note by note</h2><p class=\"note\">Largest deviation first. Dot: median; bar: spread; "
           "green band: ±"
        << kInTuneCents << "&#160;cents.</p>" << deviationChart(summary.notes, "median deviation per note")
        << figuresTable(summary.notes, "notes", "note") << "</section>";

    out << "<section><h2>Across octaves</h2><p class=\"note\">Each pitch class with its readings from every "
           "octave pooled: a habit on one note shows here whatever the register.</p>"
        << deviationChart(summary.pitchClasses, "median deviation per pitch class")
        << figuresTable(summary.pitchClasses, "pitch-classes", "pitch class") << "</section>";

    out << "<section><h2>Brief notes</h2><p class=\"note\">Shown for less than " << kBriefSeconds
        << "&#160;s at a time and kept out of the figures above.</p>" << briefTable(summary.brief) << "</section>";

    out << "<section><h2>How the figures are made</h2><dl>"
        << "<dt>reading</dt><dd>The tuner's pitch estimate, one every 256 samples (5.3&#160;ms at 48&#160;kHz), "
           "taken only where the tuner hears sound"
        << (s.gateSounds.empty() ? "" : " and the sound gate is open") << ".</dd>"
        << "<dt>cents</dt><dd>Hundredths of an equal-tempered semitone from the note, with A4 at " << s.a4
        << "&#160;Hz: + is sharp, " << "\u2212" << " is flat.</dd>"
        << "<dt>times, shown</dt><dd>A note counts from its first reading while the readout shows it until the "
           "readout changes or the sound stops (nothing heard for "
        << kSilenceGap << "&#160;s); times is how often that happened, shown how long it lasted in all.</dd>"
        << "<dt>median</dt><dd>The middle deviation of the readings of that note while it was shown; readings of "
           "another note in that time (a slide, an octave slip) count for none.</dd>"
        << "<dt>spread</dt><dd>Half the width of the middle 68&#160;% of those readings: one standard deviation "
           "either side for evenly scattered playing, not thrown by a stray reading.</dd>"
        << "<dt>in tune</dt><dd>The share of those readings within ±" << kInTuneCents
        << "&#160;cents, the app's green centre bar at its default width.</dd>"
        << "<dt>brief</dt><dd>Shown for less than " << kBriefSeconds
        << "&#160;s at a time (a sixteenth note at 75 beats a minute): passing notes or the readout catching a "
           "slide, listed apart.</dd>"
        << "</dl><p class=\"note\">Made by veltra-cli report with the engine of the Veltra tuner.</p></section>"
        << "</main></body></html>\n";
    // The page's text moves out of the stream: a long recording's page is
    // tens of megabytes, held once.
    return std::move(out).str();
}

} // namespace veltra::report
