#pragma once

// Pieces shared by the report page's writers: text in HTML, the palette.

#include "report/PracticeSummary.h"
#include "report/Text.h"

#include <cmath>
#include <cstdio>
#include <string>

namespace veltra::report::html {

inline std::string escaped(const std::string& text)
{
    std::string out;
    for (const char c : validUtf8(text)) {
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

inline std::string fixed(double value, int decimals)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

// "7.5 s" under a minute, "12:04" from there, as a player reads a recording's clock.
inline std::string clockTime(double seconds)
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

// "7.3 s": seconds to the tenth.
inline std::string durationText(double seconds)
{
    return fixed(seconds, 1) + "&#160;s";
}

// The app's palette, on paper.
inline constexpr const char* kInk = "#111315";       // the app's background, as text
inline constexpr const char* kDimInk = "#5f666d";
inline constexpr const char* kAccent = "#1fb08a";    // the in-tune bar
inline constexpr const char* kSharp = "#d9482b";     // the app's warning orange, darkened for paper
inline constexpr const char* kFlat = "#2f6db3";
inline constexpr const char* kGrid = "#d5d9dd";
inline constexpr const char* kAccidentalBand = "#f1f3f4";

inline const char* deviationColour(double cents)
{
    if (std::abs(cents) <= kInTuneCents)
        return kAccent;
    return cents > 0 ? kSharp : kFlat;
}

// The width of every chart, in the SVG's own units.
inline constexpr double kChartWidth = 960;

} // namespace veltra::report::html
