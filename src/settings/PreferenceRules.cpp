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

// Keys beyond the first-launch set; they read as empty text while absent.
constexpr std::array<PreferenceRule, 1> kTextRules{{
    {PreferenceKey::InputSource, Type::Text, 0, kLongestInputSource},
}};

// The tuning's keys (tuning/Tuning.h), which the first launch does not write
// either. A value a rule rejects falls back to what a missing key means, and
// an imported scale's degree to its equal-tempered pitch.
constexpr std::array<PreferenceDefault, 3 + kScaleCentsKeys.size()> kOptionalDefaults = [] {
    std::array<PreferenceDefault, 3 + kScaleCentsKeys.size()> defaults{{
        {PreferenceKey::Temperament, std::int64_t{0}},
        {PreferenceKey::Tonic, std::int64_t{0}},
        {PreferenceKey::Transpose, std::int64_t{0}},
    }};
    for (std::size_t i = 0; i < kScaleCentsKeys.size(); ++i)
        defaults[3 + i] = {kScaleCentsKeys[i], 100.0 * static_cast<double>(i + 1)};
    return defaults;
}();

constexpr std::array<PreferenceRule, kOptionalDefaults.size()> kOptionalRules = [] {
    std::array<PreferenceRule, kOptionalDefaults.size()> rules{{
        {PreferenceKey::Temperament, Type::WholeNumber, 0, kTemperamentChoices - 1},
        {PreferenceKey::Tonic, Type::WholeNumber, 0, 11},
        {PreferenceKey::Transpose, Type::WholeNumber, kMinimumTranspose, kMaximumTranspose},
    }};
    for (std::size_t i = 0; i < kScaleCentsKeys.size(); ++i)
        rules[3 + i] = {kScaleCentsKeys[i], Type::Number, 0, 1200};
    return rules;
}();

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

std::span<const PreferenceRule> textPreferenceRules()
{
    return kTextRules;
}

const PreferenceRule* preferenceRule(std::string_view key)
{
    for (const std::span<const PreferenceRule> rules :
         {std::span<const PreferenceRule>(kRules), std::span<const PreferenceRule>(kOptionalRules),
          textPreferenceRules()}) {
        const auto rule = std::ranges::find(rules, key, &PreferenceRule::key);
        if (rule != rules.end())
            return &*rule;
    }
    return nullptr;
}

bool acceptsText(const PreferenceRule& rule, std::string_view text)
{
    const auto control = [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; };
    return rule.type == Type::Text && static_cast<double>(text.size()) <= rule.maximum &&
           std::ranges::none_of(text, control) && (text.empty() || (text.front() != ' ' && text.back() != ' '));
}

std::optional<PreferenceValue> parsePreference(const PreferenceRule& rule, std::string_view text)
{
    if (rule.type == Type::Text)
        return std::nullopt; // no number or truth value
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
    if (&rule >= kOptionalRules.data() && &rule < kOptionalRules.data() + kOptionalRules.size())
        return kOptionalDefaults[static_cast<std::size_t>(&rule - kOptionalRules.data())].value;
    return kPreferenceDefaults[static_cast<std::size_t>(&rule - kRules.data())].value;
}

std::string describeRule(const PreferenceRule& rule)
{
    if (rule.type == Type::Boolean)
        return "true or false";
    char text[80];
    if (rule.type == Type::Text) {
        std::snprintf(text, sizeof text, "text of at most %g bytes without control characters", rule.maximum);
        return text;
    }
    std::snprintf(text, sizeof text, "%s from %g to %g", rule.type == Type::WholeNumber ? "a whole number" : "a number",
                  rule.minimum, rule.maximum);
    return text;
}

} // namespace veltra
