#include "settings/PreferenceRules.h"

#include <gtest/gtest.h>

#include <optional>

namespace veltra {
namespace {

TEST(PreferenceRules, EveryDefaultHasARuleThatAcceptsIt)
{
    for (const PreferenceDefault& d : kPreferenceDefaults) {
        SCOPED_TRACE(d.key);
        const PreferenceRule* rule = preferenceRule(d.key);
        ASSERT_NE(rule, nullptr);
        EXPECT_EQ(defaultValue(*rule), d.value);
        const std::string text = std::visit(
            [](auto v) { return std::is_same_v<decltype(v), bool> ? std::string(v ? "true" : "false") : std::to_string(v); },
            d.value);
        EXPECT_TRUE(parsePreference(*rule, text).has_value()) << text;
    }
    EXPECT_EQ(preferenceRule("Sounds_Banjo"), nullptr);
}

// What a hand-edited file may hold, against what the tuner accepts. The
// edges of every range are the values the settings controls can write.
TEST(PreferenceRules, ValuesOutsideTheControlsOrNotNumbersAreRejected)
{
    struct Case {
        std::string_view key;
        std::string_view text;
        std::optional<PreferenceValue> expected;
    };
    const Case cases[] = {
        {PreferenceKey::A4, "440", std::int64_t{440}},
        {PreferenceKey::A4, "400", std::int64_t{400}},
        {PreferenceKey::A4, "499", std::int64_t{499}},
        {PreferenceKey::A4, "4.4e2", std::int64_t{440}},
        {PreferenceKey::A4, "0", std::nullopt},
        {PreferenceKey::A4, "-440", std::nullopt},
        {PreferenceKey::A4, "399", std::nullopt},
        {PreferenceKey::A4, "500", std::nullopt},
        {PreferenceKey::A4, "440.5", std::nullopt},
        {PreferenceKey::A4, "9223372036854775808", std::nullopt},
        {PreferenceKey::A4, "", std::nullopt},
        {PreferenceKey::A4, "440 Hz", std::nullopt},
        {PreferenceKey::A4, "0x1b8", std::nullopt},
        {PreferenceKey::Latency, "10", 10.0},
        {PreferenceKey::Latency, "1", 1.0},
        {PreferenceKey::Latency, "30", 30.0},
        {PreferenceKey::Latency, "12.5", 12.5},
        {PreferenceKey::Latency, "nan", std::nullopt},
        {PreferenceKey::Latency, "inf", std::nullopt},
        {PreferenceKey::Latency, "-inf", std::nullopt},
        {PreferenceKey::Latency, "1e40", std::nullopt},
        {PreferenceKey::Latency, "1e400", std::nullopt},
        {PreferenceKey::Latency, "0.999", std::nullopt},
        {PreferenceKey::Latency, "30.001", std::nullopt},
        {PreferenceKey::Latency, "12,5", std::nullopt}, // a decimal comma from another locale
        {PreferenceKey::LineThickness, "3", 3.0},
        {PreferenceKey::LineThickness, "12", 12.0},
        {PreferenceKey::LineThickness, "2.9", std::nullopt},
        {PreferenceKey::LineThickness, "-6", std::nullopt},
        {PreferenceKey::CenterBarWidth, "0", std::int64_t{0}},
        {PreferenceKey::CenterBarWidth, "2", std::int64_t{2}},
        {PreferenceKey::CenterBarWidth, "3", std::nullopt},
        {PreferenceKey::CenterBarWidth, "-1", std::nullopt},
        {PreferenceKey::CenterBarWidth, "1.5", std::nullopt},
        {PreferenceKey::GreenOverlay, "true", true},
        {PreferenceKey::GreenOverlay, "False", false},
        {PreferenceKey::GreenOverlay, "1", true},
        {PreferenceKey::GreenOverlay, "0", false},
        {PreferenceKey::GreenOverlay, "yes", std::nullopt},
        {PreferenceKey::GreenOverlay, "2", std::nullopt},
        {PreferenceKey::GreenOverlay, "", std::nullopt},
        {PreferenceKey::UseML, "truee", std::nullopt},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.key) + "=" + std::string(c.text));
        EXPECT_EQ(parsePreference(*preferenceRule(c.key), c.text), c.expected);
    }
}

// The input's name is written back to the file as one value: only text
// that the file reads back the same is taken.
TEST(PreferenceRules, AnInputNameIsOneLineOfPrintableText)
{
    const PreferenceRule& rule = *preferenceRule(PreferenceKey::InputSource);
    const struct {
        std::string text;
        bool accepted;
    } cases[] = {
        {"", true}, // the system default
        {"alsa_input.usb-Focusrite_Scarlett_2i2-00.analog-stereo", true},
        {"bluez_input.00:1B:66:A1:B2:C3.0", true},
        {"Gerät mit Ümlaut", true},
        {std::string(kLongestInputSource, 'x'), true},
        {std::string(kLongestInputSource + 1, 'x'), false},
        {"two\nlines", false},
        {"tab\there", false},
        {std::string("nul\0x", 5), false},
        {" padded", false},
        {"padded ", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(acceptsText(rule, c.text), c.accepted);
    }
    EXPECT_FALSE(parsePreference(rule, "1").has_value()); // no number
    EXPECT_FALSE(acceptsText(*preferenceRule(PreferenceKey::A4), "440"));
}

TEST(PreferenceRules, MessagesSayWhatIsExpected)
{
    EXPECT_EQ(describeRule(*preferenceRule(PreferenceKey::A4)), "a whole number from 400 to 499");
    EXPECT_EQ(describeRule(*preferenceRule(PreferenceKey::Latency)), "a number from 1 to 30");
    EXPECT_EQ(describeRule(*preferenceRule(PreferenceKey::SharpsOnly)), "true or false");
}

} // namespace
} // namespace veltra
