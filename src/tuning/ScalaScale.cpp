#include "tuning/ScalaScale.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <optional>

namespace veltra {

namespace {

constexpr std::size_t kNotes = 12;
constexpr double kOctaveCents = 1200.0;
// A period written in cents counts as the octave within this much; files
// round their cents to a few decimals.
constexpr double kOctaveTolerance = 1e-6;
// Scala files are a few hundred bytes; a larger file is no scale.
constexpr std::size_t kLargestFile = std::size_t{1} << 20;

using Refusal = std::string;

std::string_view trim(std::string_view s)
{
    const auto space = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f'; };
    while (!s.empty() && space(s.front()))
        s.remove_prefix(1);
    while (!s.empty() && space(s.back()))
        s.remove_suffix(1);
    return s;
}

// The first word of a line: the pitch; the rest is a comment.
std::string_view firstWord(std::string_view line)
{
    const auto end = line.find_first_of(" \t");
    return end == std::string_view::npos ? line : line.substr(0, end);
}

// What a refusal quotes of the line: printable ASCII, at most 24 characters.
std::string quoted(std::string_view word)
{
    std::string text = "'";
    for (const char c : word.substr(0, 24))
        text += (c >= 0x20 && c < 0x7f) ? c : '?';
    return text + (word.size() > 24 ? "...'" : "'");
}

std::optional<std::uint64_t> wholeNumber(std::string_view text)
{
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

// A pitch in cents above the tonic: cents when the word has a '.', else a
// ratio of two positive whole numbers (or one, over 1).
std::variant<double, Refusal> pitchCents(std::string_view word)
{
    if (word.find('.') != std::string_view::npos) {
        double value = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
        if (error != std::errc() || end != word.data() + word.size() || !std::isfinite(value))
            return quoted(word) + " is not a number of cents";
        return value;
    }
    const auto slash = word.find('/');
    const auto numerator = wholeNumber(word.substr(0, slash));
    const auto denominator = slash == std::string_view::npos ? std::optional<std::uint64_t>(1)
                                                             : wholeNumber(word.substr(slash + 1));
    if (!numerator || !denominator)
        return quoted(word) + " is neither a ratio (3/2) nor cents (701.955)";
    if (*numerator == 0 || *denominator == 0)
        return quoted(word) + " is not a ratio above zero";
    return kOctaveCents *
           (std::log2(static_cast<double>(*numerator)) - std::log2(static_cast<double>(*denominator)));
}

std::string lineRefusal(std::size_t line, std::string_view why)
{
    return "line " + std::to_string(line) + ": " + std::string(why);
}

} // namespace

std::variant<ScalaScale, std::string> parseScala(std::string_view text)
{
    ScalaScale scale;
    std::optional<std::uint64_t> count;
    bool described = false;
    std::size_t pitches = 0;
    double previous = 0;
    std::size_t lineNumber = 0;
    std::size_t lastLine = 0;

    while (!text.empty() || lineNumber == 0) {
        const auto newline = text.find('\n');
        const std::string_view raw = text.substr(0, newline);
        text.remove_prefix(newline == std::string_view::npos ? text.size() : newline + 1);
        ++lineNumber;
        if (raw.starts_with('!'))
            continue;
        const std::string_view line = trim(raw);
        if (!described) {
            // The description may be empty, or anything at all.
            scale.description = std::string(line);
            described = true;
            continue;
        }
        if (line.empty())
            continue;
        if (!count) {
            count = wholeNumber(firstWord(line));
            if (!count)
                return lineRefusal(lineNumber, quoted(firstWord(line)) + " is not a number of notes");
            if (*count != kNotes)
                return "a scale of " + std::to_string(*count) + " notes; the tuner takes scales of 12";
            continue;
        }
        if (pitches == kNotes)
            return lineRefusal(lineNumber, "more pitches than the 12 the file announces");
        const auto cents = pitchCents(firstWord(line));
        if (const auto* why = std::get_if<Refusal>(&cents))
            return lineRefusal(lineNumber, *why);
        const double value = std::get<double>(cents);
        ++pitches;
        lastLine = lineNumber;
        if (pitches == kNotes) {
            if (std::abs(value - kOctaveCents) > kOctaveTolerance)
                return lineRefusal(lineNumber, "the scale repeats at " + quoted(firstWord(line)) +
                                                   ", not at the octave (2/1 or 1200.0)");
            continue;
        }
        if (value <= previous || value >= kOctaveCents)
            return lineRefusal(lineNumber, "the pitches must rise from the tonic to the octave");
        scale.cents[pitches] = value - 100.0 * static_cast<double>(pitches);
        previous = value;
    }
    if (!count)
        return std::string("no number of notes: not a Scala file");
    if (pitches < kNotes)
        return "ends after " + std::to_string(pitches) + " of the 12 pitches" +
               (lastLine ? " (line " + std::to_string(lastLine) + ")" : std::string());
    return scale;
}

std::variant<ScalaScale, std::string> readScalaFile(const std::filesystem::path& path)
{
    const std::string name = path.string() + ": ";
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status))
        return name + "no such file";
    // A pipe or a device would never end, or end anywhere.
    if (!std::filesystem::is_regular_file(status))
        return name + "not an ordinary file";
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return name + "cannot be read";
    std::string contents(kLargestFile + 1, '\0');
    file.read(contents.data(), static_cast<std::streamsize>(contents.size()));
    if (file.bad())
        return name + "cannot be read";
    contents.resize(static_cast<std::size_t>(file.gcount()));
    if (contents.size() > kLargestFile)
        return name + "too large for a Scala file";
    auto result = parseScala(contents);
    if (auto* why = std::get_if<std::string>(&result))
        *why = name + *why;
    return result;
}

} // namespace veltra
