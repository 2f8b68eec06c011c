#pragma once

#include "settings/Preferences.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace veltra {

// What a value of a known key must be for the tuner to use it. A value from
// the preference file is the user's input: one that breaks its rule is
// replaced by the key's default instead of reaching the code that uses it.
struct PreferenceRule {
    enum class Type { Boolean, WholeNumber, Number, Text };
    std::string_view key;
    Type type;
    double minimum = 0; // inclusive bounds, for the two number types
    double maximum = 0; // for text, the most bytes it may hold
};

// The rule of a key the tuner knows, or nullptr for any other key.
const PreferenceRule* preferenceRule(std::string_view key);

// The value text spells, when the rule accepts it: "true"/"false" (any case)
// or 1/0 for a boolean; a finite decimal number within the bounds otherwise,
// with no fraction for a whole number.
std::optional<PreferenceValue> parsePreference(const PreferenceRule& rule, std::string_view text);

// The first-launch value of the rule's key, which stands in for a value the
// rule rejects. Not for text keys, whose default is the empty text.
PreferenceValue defaultValue(const PreferenceRule& rule);

// Whether a text key may hold text: at most the rule's length, no control
// characters (a line break would end the file's line), nothing that the
// file's trimming would take off either end.
bool acceptsText(const PreferenceRule& rule, std::string_view text);

// The rules of the text keys, each checked when the file is read.
std::span<const PreferenceRule> textPreferenceRules();

// What the rule expects, for a message: "a whole number from 400 to 499".
std::string describeRule(const PreferenceRule& rule);

} // namespace veltra
