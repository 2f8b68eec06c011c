#include "settings/PreferenceRules.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace veltra {

namespace {

using Type = PreferenceRule::Type;

// Every key of kPreferenceDefaults, in the same order, with the values its
// control can produce.
// A4 takes exactly what the picker and the command line's --a4 offer
// (docs/platform.md says why).
constexpr std::array<PreferenceRule, kPreferenceDefaults.size()> kRules{{
    {PreferenceKey::A4, Type::WholeNumber, kMinimumA4, kMaximumA4},
    {PreferenceKey::ClockEnabled, Type::Boolean},
    {PreferenceKey::LineThickness, Type::Number, kMinimumLineThickness, kMaximumLineThickness},
    {PreferenceKey::GreenOverlay, Type::Boolean},
    {PreferenceKey::SharpsOnly, Type::Boolean},
    {PreferenceKey::ToneGenerator, Type::Boolean},
    {PreferenceKey::PianoView, Type::Boolean},
    {PreferenceKey::UseML, Type::Boolean},
    {PreferenceKey::SoundsGuitar, Type::Boolean},
    {PreferenceKey::SoundsViolin, Type::Boolean},
    {PreferenceKey::SoundsPiano, Type::Boolean},
    {PreferenceKey::SoundsVoice, Type::Boolean},
    {PreferenceKey::ContinuousDisplay, Type::Boolean},
    {PreferenceKey::Latency, Type::Number, kMinimumLatency, kMaximumLatency},
    {PreferenceKey::CenterBarWidth, Type::WholeNumber, 0, kCenterBarWidthSegments - 1},
}};

static_assert(
    [] {
        for (std::size_t i = 0; i < kRules.size(); ++i)
            if (kRules[i].key != kPreferenceDefaults[i].key)
                return false;
        return true;
    }(),
    "each rule sits beside its key's default");

bool equalsIgnoringCase(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return std::tolower(static_cast<unsigned char>(x)) == std::tolower(static_cast<unsigned char>(y));
    });
}

std::optional<bool> parseBoolean(std::string_view text)
{
    if (text == "1" || equalsIgnoringCase(text, "true"))
        return true;
    if (text == "0" || equalsIgnoringCase(text, "false"))
        return false;
    return std::nullopt;
}

// The whole of text as a finite number; from_chars knows no locale, so a
// file copied from a machine with another language reads the same.
std::optional<double> parseNumber(std::string_view text)
{
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

} // namespace

const PreferenceRule* preferenceRule(std::string_view key)
{
    const auto rule = std::find_if(kRules.begin(), kRules.end(), [key](const PreferenceRule& r) { return r.key == key; });
    return rule == kRules.end() ? nullptr : &*rule;
}

std::optional<PreferenceValue> parsePreference(const PreferenceRule& rule, std::string_view text)
{
    if (rule.type == Type::Boolean) {
        if (const auto value = parseBoolean(text))
            return *value;
        return std::nullopt;
    }
    const auto value = parseNumber(text);
    if (!value || *value < rule.minimum || *value > rule.maximum)
        return std::nullopt;
    if (rule.type == Type::Number)
        return *value;
    if (std::trunc(*value) != *value)
        return std::nullopt;
    return static_cast<std::int64_t>(*value);
}

PreferenceValue defaultValue(const PreferenceRule& rule)
{
    return kPreferenceDefaults[static_cast<std::size_t>(&rule - kRules.data())].value;
}

std::string describeRule(const PreferenceRule& rule)
{
    if (rule.type == Type::Boolean)
        return "true or false";
    char text[80];
    std::snprintf(text, sizeof text, "%s from %g to %g", rule.type == Type::WholeNumber ? "a whole number" : "a number",
                  rule.minimum, rule.maximum);
    return text;
}

} // namespace veltra
