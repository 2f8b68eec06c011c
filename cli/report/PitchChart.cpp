#include "report/PitchChart.h"

#include "report/HtmlParts.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>
#include <vector>

namespace veltra::report {

namespace {

using namespace html;

// Each line of the graph holds this much of the recording, like a line of a
// score; a shorter recording fills one line.
constexpr double kSecondsPerLine = 20.0;
constexpr double kNameColumn = 44;   // note names left of the graph
constexpr double kRightMargin = 16;  // room for the last time label
constexpr double kSemitoneHeight = 14;
constexpr double kTimeAxisHeight = 18;
constexpr double kLineGap = 10;
// The trace is kept at the resolution of a full line.
static_assert(kSecondsPerLine == kFullLineSeconds &&
              (kChartWidth - kNameColumn - kRightMargin) / kSecondsPerLine == kPixelsPerSecond);
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

    // Writes the chart straight into out: a long recording's chart is the
    // bulk of its page, and is not copied on the way.
    void svg(std::ostream& out) const
    {
        const double seconds = report_.track.seconds;
        std::vector<std::pair<double, Range>> lines; // each line's start and keys
        double height = 0;
        for (double t0 = 0; t0 < seconds || t0 == 0; t0 += kSecondsPerLine) {
            const Range keys = keysBetween(t0, std::min(t0 + kSecondsPerLine, seconds));
            lines.emplace_back(t0, keys);
            height += lineHeight(keys);
            if (seconds <= 0)
                break;
        }
        out << "<svg class=\"pitch\" viewBox=\"0 0 " << kChartWidth << ' ' << fixed(height, 0)
            << "\" role=\"img\" aria-label=\"pitch over time\">";
        double y = 0;
        for (const auto& [t0, keys] : lines)
            y = line(out, t0, std::min(t0 + kSecondsPerLine, seconds), keys, y);
        out << "</svg>";
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

    static double lineHeight(Range keys)
    {
        return (keys.high - keys.low + 1) * kSemitoneHeight + kTimeAxisHeight + kLineGap;
    }

    // Draws one line of the graph from its top at y; returns the next top.
    double line(std::ostream& out, double t0, double t1, Range keys, double top) const
    {
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
        return top + lineHeight(keys);
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

} // namespace

void pitchChart(std::ostream& out, const PracticeReport& report, const NoteNames& names)
{
    PitchChart(report, names).svg(out);
}

} // namespace veltra::report
