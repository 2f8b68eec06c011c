#include "report/PracticeReport.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <sstream>

namespace veltra::report {

namespace {

// --- text -------------------------------------------------------------------

std::string escaped(const std::string& text)
{
    std::string out;
    for (const char c : text) {
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        case '\'': out += "&#39;"; break;
        default:
            // Control characters have no place in a well-formed page.
            out += static_cast<unsigned char>(c) < 0x20 && c != '\t' ? '?' : c;
        }
    }
    return out;
}

std::string fixed(double value, int decimals)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

// "7.5 s" under a minute, "12:04" from there, as a player reads a recording's clock.
std::string clockTime(double seconds)
{
    constexpr double kMinute = 60;
    if (seconds < kMinute) {
        const bool whole = std::abs(seconds - std::round(seconds)) < 1e-6;
        return fixed(seconds, whole ? 0 : 1) + "&#160;s";
    }
    const int total = static_cast<int>(std::round(seconds));
    char text[32];
    std::snprintf(text, sizeof text, "%d:%02d", total / 60, total % 60);
    return text;
}

std::string durationText(double seconds)
{
    return fixed(seconds, 1) + "&#160;s";
}

// --- palette: the app's, on paper ---------------------------------------------

constexpr const char* kInk = "#111315";       // the app's background, as text
constexpr const char* kDimInk = "#5f666d";
constexpr const char* kAccent = "#1fb08a";    // the in-tune bar
constexpr const char* kSharp = "#d9482b";     // the app's warning orange, darkened for paper
constexpr const char* kFlat = "#2f6db3";
constexpr const char* kGrid = "#d5d9dd";
constexpr const char* kAccidentalBand = "#f1f3f4";

const char* deviationColour(double cents)
{
    if (std::abs(cents) <= kInTuneCents)
        return kAccent;
    return cents > 0 ? kSharp : kFlat;
}

// --- the pitch over time ------------------------------------------------------

// Each line of the graph holds this much of the recording, like a line of a
// score; a shorter recording fills one line.
constexpr double kSecondsPerLine = 20.0;
constexpr double kChartWidth = 960;
constexpr double kNameColumn = 44;   // note names left of the graph
constexpr double kRightMargin = 16;  // room for the last time label
constexpr double kSemitoneHeight = 14;
constexpr double kTimeAxisHeight = 18;
constexpr double kLineGap = 10;
// Readings further apart than this are not joined: the patch reports every
// 5.3 ms at 48 kHz, so a longer gap is a hole in the sound.
constexpr double kLongestJoin = 0.05;
// Nor are neighbours more than a semitone apart: a lone stray reading as a
// note starts would otherwise draw a wall across the graph.
constexpr float kLongestStep = 1.0f;
// A line shows at most three octaves; wider leaps are clipped.
constexpr int kMostKeysPerLine = 37;
// Where nothing was shown, the graph centres on A4.
constexpr int kFallbackKey = 49;
constexpr int kFallbackHalfRange = 3;

class PitchChart {
public:
    PitchChart(const PracticeReport& report, const NoteNames& names)
        : report_(report)
        , names_(names)
        , pixelsPerSecond_((kChartWidth - kNameColumn - kRightMargin) /
                           std::max(std::min(report.track.seconds, kSecondsPerLine), kLongestJoin))
    {
    }

    std::string svg() const
    {
        std::ostringstream body;
        double y = 0;
        const double seconds = report_.track.seconds;
        for (double t0 = 0; t0 < seconds || t0 == 0; t0 += kSecondsPerLine) {
            y = line(body, t0, std::min(t0 + kSecondsPerLine, seconds), y);
            if (seconds <= 0)
                break;
        }
        std::ostringstream out;
        out << "<svg class=\"pitch\" viewBox=\"0 0 " << kChartWidth << ' ' << fixed(y, 0)
            << "\" role=\"img\" aria-label=\"pitch over time\">" << body.str() << "</svg>";
        return out.str();
    }

private:
    struct Range {
        int low, high; // keys, inclusive
    };

    Range keysBetween(double t0, double t1) const
    {
        int low = 0, high = 0;
        for (const Occurrence& o : report_.track.occurrences) {
            if (o.end < t0 || o.start > t1)
                continue;
            low = low ? std::min(low, o.key) : o.key;
            high = std::max(high, o.key);
        }
        if (!low)
            return {kFallbackKey - kFallbackHalfRange, kFallbackKey + kFallbackHalfRange};
        low = std::max(low - 1, high + 1 - (kMostKeysPerLine - 1));
        return {low, high + 1};
    }

    // Draws one line of the graph from its top at y; returns the next top.
    double line(std::ostream& out, double t0, double t1, double top) const
    {
        const Range keys = keysBetween(t0, t1);
        const double height = (keys.high - keys.low + 1) * kSemitoneHeight;
        const double right = kNameColumn + (t1 - t0) * pixelsPerSecond_;
        const auto x = [&](double t) { return kNameColumn + (t - t0) * pixelsPerSecond_; };
        const auto y = [&](double key) { return top + (keys.high + 0.5 - key) * kSemitoneHeight; };

        out << "<g>";
        for (int key = keys.low; key <= keys.high; ++key) {
            const std::string name = names_.note(key);
            const bool accidental = name.size() > 1 && (name[1] == '#' || name[1] == 'b');
            out << "<rect x=\"" << kNameColumn << "\" y=\"" << fixed(y(key + 0.5), 1) << "\" width=\""
                << fixed(right - kNameColumn, 1) << "\" height=\"" << kSemitoneHeight << "\" fill=\""
                << (accidental ? kAccidentalBand : "#ffffff") << "\" stroke=\"" << kGrid << "\" stroke-width=\"0.5\"/>"
                << "<text class=\"key\" x=\"" << kNameColumn - 6 << "\" y=\"" << fixed(y(key) + 4, 1)
                << "\" text-anchor=\"end\">" << withGlyphs(name) << "</text>";
        }
        for (const Occurrence& o : report_.track.occurrences) {
            if (o.end < t0 || o.start > t1 || o.key < keys.low || o.key > keys.high)
                continue;
            const double a = x(std::max(o.start, t0)), b = x(std::min(o.end, t1));
            out << "<rect class=\"" << (o.seconds() < kBriefSeconds ? "brief" : "shown") << "\" x=\"" << fixed(a, 1)
                << "\" y=\"" << fixed(y(o.key + 0.5) + 1, 1) << "\" width=\"" << fixed(std::max(b - a, 0.5), 1)
                << "\" height=\"" << kSemitoneHeight - 2 << "\"/>";
        }
        trace(out, t0, t1, keys, x, y);
        timeAxis(out, t0, t1, top + height, x);
        out << "</g>";
        return top + height + kTimeAxisHeight + kLineGap;
    }

    // The readings as a line, one point per pixel (the median of the
    // readings that fall on it), broken in silence, off the line's range and
    // at leaps.
    template <typename X, typename Y>
    void trace(std::ostream& out, double t0, double t1, Range keys, X x, Y y) const
    {
        struct Point {
            double time;
            float value; // NaN: a break
        };
        std::vector<Point> points;
        std::vector<float> pixel;
        double pixelTime = 0;
        const auto flush = [&] {
            if (pixel.empty())
                return;
            const auto middle = pixel.begin() + static_cast<std::ptrdiff_t>(pixel.size() / 2);
            std::nth_element(pixel.begin(), middle, pixel.end());
            points.push_back({pixelTime, *middle});
            pixel.clear();
        };
        for (const TracePoint& p : report_.track.trace) {
            if (p.time < t0 || p.time > t1)
                continue;
            const bool inRange = !std::isnan(p.noteNumber) && p.noteNumber > keys.low - 0.5f &&
                                 p.noteNumber < keys.high + 0.5f;
            if (!inRange || std::floor(x(p.time)) != std::floor(x(pixelTime)))
                flush();
            if (!inRange) {
                points.push_back({p.time, std::numeric_limits<float>::quiet_NaN()});
                continue;
            }
            if (pixel.empty())
                pixelTime = p.time;
            pixel.push_back(p.noteNumber);
        }
        flush();

        std::vector<Point> run;
        const auto draw = [&] {
            if (run.size() >= 2) {
                out << "<polyline class=\"trace\" points=\"";
                for (const Point& p : run)
                    out << fixed(x(p.time), 1) << ',' << fixed(y(p.value), 1) << ' ';
                out << "\"/>";
            }
            run.clear();
        };
        for (const Point& p : points) {
            const bool joins = !run.empty() && p.time - run.back().time <= kLongestJoin &&
                               std::abs(p.value - run.back().value) <= kLongestStep; // false for NaN
            if (!joins)
                draw();
            if (!std::isnan(p.value))
                run.push_back(p);
        }
        draw();
    }

    template <typename X>
    void timeAxis(std::ostream& out, double t0, double t1, double y, X x) const
    {
        // The finest step that leaves room for a label.
        constexpr double kSteps[] = {0.5, 1, 2, 5, 10, 15, 30, 60};
        constexpr double kLabelRoom = 70;
        double step = kSteps[std::size(kSteps) - 1];
        for (const double s : kSteps)
            if (s * pixelsPerSecond_ >= kLabelRoom) {
                step = s;
                break;
            }
        for (double t = std::ceil(t0 / step) * step; t <= t1 + 1e-9; t += step) {
            out << "<line x1=\"" << fixed(x(t), 1) << "\" y1=\"" << fixed(y, 1) << "\" x2=\"" << fixed(x(t), 1)
                << "\" y2=\"" << fixed(y + 4, 1) << "\" stroke=\"" << kDimInk << "\"/><text class=\"tick\" x=\""
                << fixed(x(t), 1) << "\" y=\"" << fixed(y + 14, 1) << "\" text-anchor=\"middle\">"
                << clockTime(t) << "</text>";
        }
    }

    const PracticeReport& report_;
    const NoteNames& names_;
    double pixelsPerSecond_;
};

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
    if (sharpest->medianCents > 0)
        out << "Sharpest: <b>" << withGlyphs(sharpest->name) << "</b> " << signedCents(sharpest->medianCents)
            << "&#160;¢. ";
    if (flattest->medianCents < 0)
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
.columns { display: flex; gap: 24px; align-items: flex-start; flex-wrap: wrap; }
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
        << "</span> · " << durationText(report.track.seconds) << " · " << settingsText(s) << "</p></header>";

    out << highlights(summary) << "<div class=\"facts\"><div><b>" << durationText(report.track.seconds)
        << "</b>recording</div><div><b>" << durationText(summary.soundSeconds) << "</b>sound heard</div><div><b>"
        << durationText(summary.shownSeconds) << "</b>a note shown</div><div><b>" << summary.notes.size()
        << "</b>notes measured</div></div>";

    const NoteNames names(s.sharps);
    PitchChart chart(report, names);
    out << "<section><h2>Pitch over time</h2>" << chart.svg()
        << "<p class=\"legend\">The line is every reading; <span class=\"swatch\" style=\"background:" << kAccent
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
           "readout changes or the sound stops; times is how often that happened, shown how long it lasted in all."
           "</dd>"
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
    return out.str();
}

} // namespace veltra::report
